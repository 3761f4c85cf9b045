// The RSI reader and dump: blocks by name, the MCF-string table, the set-once rule and the
// conflicting STRING, includes beside the including file, messages in both forms, and the
// dump with its date, its debug lines and what it leaves out.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_routing_switch_info_body.h"
#include "host/cfg.h"
#include "host/dstr.h"

namespace {

class RsiReader : public CaptureTest {
protected:
    bool read(const std::string& text, const std::string& name = "dev.rsi") {
        m_path = m_dir.write(name, text);
        return m_body.read_rsi_file(FIO_PATH(m_path));
    }
    std::string dump(const DEV_ROUTING_SWITCH_INFO_BODY& body, const std::string& name = "dump.rsi") {
        const std::string path = m_dir.file(name);
        EXPECT_TRUE(body.write_rsi_file(FIO_PATH(path), 0));
        return read_file(path);
    }
    bool has_located(int line, const std::string& message) {
        const std::string form = "Error at ddb/dev/dev_rsi_parser, line [0-9]+ parsing file " + m_path +
                                 ", line number " + std::to_string(line) + " - (.*)";
        for (const std::string& note : notes()) {
            std::smatch m;
            if (std::regex_match(note, m, std::regex(form)) && m[1] == message) return true;
        }
        return false;
    }
    const DEV_ROUTING_SWITCH_DESC_BODY& body_of(DEV_ROUTING_SWITCH_ENUM e) {
        return *m_body.get_routing_switch_by_enum(e)->get_body();
    }

    TempDir m_dir;
    std::string m_path;
    DEV_ROUTING_SWITCH_INFO_BODY m_body;
};

const char RSI_TEXT[] =
    "# routing\n"
    "global_info\n"
    "\tINT_NUM_PASS_TREES = 2\n"
    "\tINT_DEFAULT_SWITCH = H4_TO_V4\n"
    "end\n"
    "pass_tree H4_TREE\n"
    "\tINT_NUM_LEVELS = 2\n"
    "2D_INT_LEVEL_SIZES = {\n"
    "\t{ 0 4 }\n"
    "\t{ 1 4 }}\n"
    "end\n"
    "routing_switch H4_TO_V4\n"
    "\tPASS_TREES = H4_TREE, V4_TREE\n"
    "\tSTRING_NLSPC_NAME = \"h4_to_v4\"\n"
    "\tSTRING_MCF_NAME = \"rs:h4>v4\"\n"
    "\tINT_LOCATION = LAB\n"
    "\tBOOL_IS_BUFFERED = true\n"
    "end\n"
    "pass_tree V4_TREE\n"
    "end\n"
    "routing_switch LOCAL_TO_LCELL_IN\n"
    "\tSTRING_DESCRIPTION = \"local\"\n"
    "end\n"
    "routing_switch H4_TO_V4\n"  // reopened
    "\tSTRING_COMMENT = \"again\"\n"
    "end\n";

TEST_F(RsiReader, BlocksFillRecordsByNameAndTheMcfStringGoesToItsTable) {
    ASSERT_TRUE(read(RSI_TEXT));
    EXPECT_TRUE(errors().empty());
    ASSERT_NE(m_body.get_global_info(), nullptr);
    EXPECT_EQ(m_body.get_global_info()->get_int_data(DEV_ROUTING_GLOBAL_INT_DEFAULT_SWITCH), DEV_ROUTING_SWITCH_H4_TO_V4);

    ASSERT_EQ(m_body.get_total_routing_switches(), 2);
    ASSERT_EQ(m_body.get_total_pass_trees(), 2);
    DEV_ROUTING_SWITCH_DESC* h4 = m_body.get_routing_switch_by_id(0);
    EXPECT_EQ(h4, m_body.get_routing_switch_by_enum(DEV_ROUTING_SWITCH_H4_TO_V4));
    EXPECT_EQ(h4, m_body.get_routing_switch_by_string("H4_TO_V4"));
    EXPECT_EQ(m_body.get_pass_tree_by_id(1), m_body.get_pass_tree_by_enum(DEV_PASS_TREE_V4_TREE));
    EXPECT_EQ(h4->get_pass_tree_enums(), (std::vector<DEV_PASS_TREE_ENUM>{DEV_PASS_TREE_H4_TREE, DEV_PASS_TREE_V4_TREE}));
    EXPECT_EQ(m_body.get_routing_switch_enums(),
              (std::vector<DEV_ROUTING_SWITCH_ENUM>{DEV_ROUTING_SWITCH_H4_TO_V4, DEV_ROUTING_SWITCH_LOCAL_TO_LCELL_IN}));
    EXPECT_EQ(m_body.get_pass_tree_by_string("H4_TREE")->get_body()->get_2d_int_data(DEV_PASS_TREE_DESC_2D_INT_LEVEL_SIZES),
              (DEV_2D_INT_ARRAY{{0, 4}, {1, 4}}));
    EXPECT_TRUE(body_of(DEV_ROUTING_SWITCH_H4_TO_V4).get_bool_data(DEV_ROUTING_SWITCH_DESC_BOOL_IS_BUFFERED));
    EXPECT_EQ(body_of(DEV_ROUTING_SWITCH_H4_TO_V4).get_string_data(DEV_ROUTING_SWITCH_DESC_STRING_COMMENT), "again");

    // STRING key 2 lives in the MCF table only.
    EXPECT_FALSE(body_of(DEV_ROUTING_SWITCH_H4_TO_V4).is_valid_string_enum(DEV_ROUTING_SWITCH_DESC_STRING_MCF_NAME));
    EXPECT_EQ(m_body.get_routing_switch_enum_by_mcf_string("rs:h4>v4"), DEV_ROUTING_SWITCH_H4_TO_V4);
    EXPECT_EQ(m_body.get_routing_switch_enum_by_mcf_string("RS:H4>V4"), DEV_ROUTING_SWITCH_INVALID);
    EXPECT_TRUE(capture().has_debug("Adding to list rs:h4>v4 at spot " + std::to_string(DEV_ROUTING_SWITCH_H4_TO_V4)));
}

TEST_F(RsiReader, StringListsHoldEveryKeyOfEverySwitchOrNull) {
    ASSERT_TRUE(read(RSI_TEXT));
    const char* const* nlspc = m_body.get_nlspc_string_list();
    for (int e = 0; e < DEV_ROUTING_SWITCH_MAX; ++e)
        EXPECT_EQ(nlspc[e] != nullptr, e == DEV_ROUTING_SWITCH_H4_TO_V4) << e;
    EXPECT_STREQ(nlspc[DEV_ROUTING_SWITCH_H4_TO_V4], "h4_to_v4");
    EXPECT_STREQ(m_body.get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_H4_TO_V4), "h4_to_v4");
    EXPECT_FALSE(m_body.has_nlspc_string_by_enum(DEV_ROUTING_SWITCH_LOCAL_TO_LCELL_IN));
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(m_body.get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_LOCAL_TO_LCELL_IN), nullptr);
    EXPECT_EQ(m_body.get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_H4_TO_H4), nullptr);
    EXPECT_EQ(errors(), (std::vector<std::string>{"This is not a valid data entry for the switch.", "routing_switch != NULL"}));

    // The six lists are allocated once and refilled on every call.
    const char* const* const* lists = m_body.get_all_string_lists();
    EXPECT_STREQ(lists[DEV_ROUTING_SWITCH_DESC_STRING_DESCRIPTION][DEV_ROUTING_SWITCH_LOCAL_TO_LCELL_IN], "local");
    EXPECT_EQ(lists[DEV_ROUTING_SWITCH_DESC_STRING_MCF_NAME][DEV_ROUTING_SWITCH_H4_TO_V4], nullptr);
    m_body.get_routing_switch_by_enum(DEV_ROUTING_SWITCH_LOCAL_TO_LCELL_IN)
        ->get_body()
        ->set_string_data(DEV_ROUTING_SWITCH_DESC_STRING_POWER_MODEL, "p");
    EXPECT_EQ(m_body.get_all_string_lists(), lists);
    EXPECT_STREQ(lists[DEV_ROUTING_SWITCH_DESC_STRING_POWER_MODEL][DEV_ROUTING_SWITCH_LOCAL_TO_LCELL_IN], "p");
}

TEST_F(RsiReader, KeysAreSetOnceAStringTwiceIsAConflictThatKeepsTheLaterValue) {
    read("routing_switch H4_TO_H4\n"
         "\tSTRING_NLSPC_NAME = \"a\"\n"
         "\tINT_MUX_SIZE = 4\n"
         "\tINT_MUX_SIZE = 8\n"
         "end\n"
         "routing_switch H4_TO_H4\n"
         "\tSTRING_NLSPC_NAME = \"b\"\n"
         "\tINT_ROUTING_SWITCH = H4_TO_H4\n"  // set by the block's opener already
         "end\n");
    EXPECT_EQ(errors(), (std::vector<std::string>{"!this->m_int_enum_is_valid.get_value(key)",
                                                  "Conflicting entries in RSI file",
                                                  "!this->m_int_enum_is_valid.get_value(key)"}));
    EXPECT_TRUE(capture().has_debug("Error: routing string H4_TO_H4 STRING_NLSPC_NAME b"));
    EXPECT_STREQ(m_body.get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_H4_TO_H4), "b");
    EXPECT_EQ(body_of(DEV_ROUTING_SWITCH_H4_TO_H4).get_int_data(DEV_ROUTING_SWITCH_DESC_INT_MUX_SIZE), 8);
}

TEST_F(RsiReader, ErrorsInBothFormsAndReadingGoesOn) {
    read("INT_NUM_PASS_TREES = 1\n"                 // 1: outside any block
         "end\n"                                    // 2
         "global_info\n"                            // 3
         "\tBOOL_IS_BUFFERED = true\n"              // 4: not a global kind
         "\tINT_NO_SUCH_KEY = 1\n"                  // 5
         "routing_switch H8_TO_H8\n"                // 6: embedded
         "\tPASS_TREES = H8_TREE, NO_TREE\n"        // 7
         "\tBOOL_IS_GLOBAL = yes\n"                 // 8
         "\tSTRING_COMMENT = \"a \"quoted\" word\"\n"  // 9: a quote inside
         "\t2D_INT_DELAY_TABLE = {{1, fast}}\n"     // 10
         "end\n"                                    // 11
         "pass_tree NO_TREE\n"                      // 12: created, but names no pass tree
         "end\n");                                  // 13
    const std::vector<std::pair<int, std::string>> expected = {
        {1, "Syntax error in file dev.rsi, line 1: INT_NUM_PASS_TREES = 1"},
        {2, "Syntax error in file dev.rsi, line 2: end"},
        {4, "Syntax error in file dev.rsi, line 4: \tBOOL_IS_BUFFERED = true"},
        {5, "Invalid int key: INT_NO_SUCH_KEY"},
        {6, "Embedded definitions not allowed!"},
        {7, "Invalid string key: H8_TREE, NO_TREE"},
        {8, "Invalid boolean value: yes"},
        {9, "Syntax error in file dev.rsi, line 9: \tSTRING_COMMENT = \"a \"quoted\" word\""},
        {10, "Invalid 2D_INT value: {{1, fast}}"},
    };
    std::vector<std::string> messages;
    for (const auto& e : expected) {
        EXPECT_TRUE(has_located(e.first, e.second)) << e.second;
        messages.push_back(e.second);
    }
    messages.push_back("pass_tree_enum > DEV_PASS_TREE_INVALID && pass_tree_enum < DEV_PASS_TREE_MAX");
    EXPECT_EQ(errors(), messages);
    EXPECT_EQ(body_of(DEV_ROUTING_SWITCH_H8_TO_H8).get_pass_tree_enums(), std::vector<DEV_PASS_TREE_ENUM>{DEV_PASS_TREE_H8_TREE});
    EXPECT_NE(m_body.get_pass_tree_by_string("NO_TREE"), nullptr);

    clear_reports();
    EXPECT_FALSE(m_body.read_rsi_file(FIO_PATH(m_dir.file("missing.rsi"))));
    EXPECT_EQ(errors(), (std::vector<std::string>{"File " + m_dir.file("missing.rsi") + " does not exist", "input.good()"}));
}

TEST_F(RsiReader, IncludesAreResolvedBesideTheIncludingFileAndEachFileIsDumped) {
    m_dir.write("sub/trees.rsi", "pass_tree GCLK_TREE\nend\ninclude \"../more/switch.rsi\"\n");
    m_dir.write("more/switch.rsi", "routing_switch GCLK_TO_GCLK\nend\n");
    cfg_set_value("dev_dump_rsi_read", "1");
    ASSERT_TRUE(read("include \"sub/trees.rsi\"\n", "top.rsi"));
    EXPECT_TRUE(errors().empty());
    EXPECT_NE(m_body.get_pass_tree_by_enum(DEV_PASS_TREE_GCLK_TREE), nullptr);
    EXPECT_NE(m_body.get_routing_switch_by_enum(DEV_ROUTING_SWITCH_GCLK_TO_GCLK), nullptr);
    EXPECT_TRUE(capture().has_debug("File " + m_dir.file("sub/trees.rsi") + "'s relative include file ../more/switch.rsi resolved to " +
                                    m_dir.file("more/switch.rsi")));
    for (const char* verify : {"topverify.rsi", "sub/treesverify.rsi", "more/switchverify.rsi"})
        EXPECT_NE(read_file(m_dir.file(verify)).find("### Information written on "), std::string::npos) << verify;
}

TEST_F(RsiReader, DumpStatesItsDateAndLeavesOutTheGlobalHeadingAndSwitchBooleans) {
    ASSERT_TRUE(read(RSI_TEXT));
    m_body.set_initialized(true);
    cfg_set_value("dev_debug_rsi_parser", "on");
    const std::string text = dump(m_body);
    EXPECT_TRUE(std::regex_search(text, std::regex("^#{55}\n### Information written on [A-Z][a-z]{2} [A-Z][a-z]{2} "
                                                   "[0-9]{2} [0-9:]{8} [0-9]{4}\n#{55}\n"
                                                   "is_initialized: 1\nnum switches: 2\nnum pass_trees: 2\n"
                                                   "routing switches:\nglobal_data\n\tINT_NUM_PASS_TREES = 2\n")));
    EXPECT_NE(text.find("routing_switch H4_TO_V4\n\tINT_ROUTING_SWITCH = H4_TO_V4\n\tINT_LOCATION = LAB\n"
                        "\tSTRING_NLSPC_NAME = \"h4_to_v4\"\n\tSTRING_COMMENT = \"again\"\n"
                        "\tPASS_TREES = H4_TREE, V4_TREE\nend\n\n"),
              std::string::npos);
    EXPECT_NE(text.find("routing_switch LOCAL_TO_LCELL_IN\n\tINT_ROUTING_SWITCH = LOCAL_TO_LCELL_IN\n"
                        "\tSTRING_DESCRIPTION = \"local\"\n\nend\n\n"),
              std::string::npos);
    EXPECT_NE(text.find("pass_tree H4_TREE\nINT_PASS_TREE = H4_TREE\nINT_NUM_LEVELS = 2\n2D_INT_LEVEL_SIZES = {\n"),
              std::string::npos);
    EXPECT_EQ(text.find("BOOL_"), std::string::npos);

    // Read back, the global block is not one; what stays is a fixed point from there on.
    cfg_set_value("dev_debug_rsi_parser", "off");
    DEV_ROUTING_SWITCH_INFO_BODY again, third;
    again.read_rsi_file(FIO_PATH(m_dir.write("again.rsi", dump(m_body))));
    EXPECT_EQ(again.get_global_info(), nullptr);
    EXPECT_EQ(again.get_total_routing_switches(), 2);
    third.read_rsi_file(FIO_PATH(m_dir.write("third.rsi", dump(again, "second.rsi"))));
    EXPECT_TRUE(third == again);
}

}  // namespace
