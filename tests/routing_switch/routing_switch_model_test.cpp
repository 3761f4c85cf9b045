// The routing-switch model: look-ups and their bound reports, the name and MCF tables'
// conflicts, the loader, and the persistent form (links to the owned records, whole-second
// notes, damaged files).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "capture_fixture.h"
#include "dev_path.h"
#include "dev_routing_switch_info.h"
#include "host/dstr.h"

namespace {

using RoutingSwitchModel = CaptureTest;

// Two switches, a pass tree and a global record, as the reader would leave them.
void fill(DEV_ROUTING_SWITCH_INFO_BODY& body) {
    auto* global_info = DEV_ROUTING_GLOBAL_INFO::create();
    global_info->get_body()->set_2d_int_data(DEV_ROUTING_GLOBAL_2D_INT_SWITCH_PAIRS,
                                            DEV_2D_INT_ARRAY{{DEV_ROUTING_SWITCH_H4_TO_V4, 1}});
    body.set_global_info(global_info);
    for (DEV_ROUTING_SWITCH_ENUM e : {DEV_ROUTING_SWITCH_V4_TO_H4, DEV_ROUTING_SWITCH_H4_TO_V4}) {
        DEV_ROUTING_SWITCH_DESC* s = DEV_ROUTING_SWITCH_DESC::create(e);
        s->get_body()->set_string_data(DEV_ROUTING_SWITCH_DESC_STRING_NLSPC_NAME, dstr_get_debug_string(e));
        s->get_body()->add_pass_tree_enum(DEV_PASS_TREE_V4_TREE);
        body.add_routing_switch(s);
        body.add_to_routing_switches_by_string_hash(dstr_get_debug_string(e), s);
        body.add_to_routing_switch_enums_by_mcf_string_hash(std::string("mcf:") + dstr_get_debug_string(e), e);
    }
    DEV_PASS_TREE_DESC* tree = DEV_PASS_TREE_DESC::create(DEV_PASS_TREE_V4_TREE);
    body.add_pass_tree(tree);
    body.add_to_pass_trees_by_string_hash("V4_TREE", tree);
}

TEST_F(RoutingSwitchModel, LookUpsReportEachBrokenBoundAndConflictsKeepTheFirstBinding) {
    DEV_ROUTING_SWITCH_INFO_BODY body;
    fill(body);
    clear_reports();
    EXPECT_EQ(body.get_routing_switch_by_enum(DEV_ROUTING_SWITCH_INVALID), nullptr);
    EXPECT_EQ(body.get_routing_switch_by_enum(DEV_ROUTING_SWITCH_MAX), nullptr);
    EXPECT_EQ(body.get_pass_tree_by_enum(DEV_PASS_TREE_MAX), nullptr);
    EXPECT_EQ(body.get_routing_switch_by_id(2), nullptr);
    EXPECT_EQ(body.get_pass_tree_by_id(-1), nullptr);
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "key >= DEV_ROUTING_SWITCH_BEGIN", "key != DEV_ROUTING_SWITCH_INVALID",
                            "key < DEV_ROUTING_SWITCH_MAX", "key < DEV_PASS_TREE_MAX",
                            "id >= 0 && id < static_cast<int>(this->m_routing_switches.size())",
                            "id >= 0 && id < static_cast<int>(this->m_pass_trees.size())"}));
    clear_reports();

    DEV_ROUTING_SWITCH_DESC* first = body.get_routing_switch_by_id(0);
    body.add_to_routing_switches_by_string_hash("V4_TO_H4", body.get_routing_switch_by_id(1));
    body.add_to_pass_trees_by_string_hash("V4_TREE", nullptr);
    body.add_to_routing_switch_enums_by_mcf_string_hash("mcf:V4_TO_H4", DEV_ROUTING_SWITCH_V4_TO_H4);  // the same: quiet
    body.add_to_routing_switch_enums_by_mcf_string_hash("mcf:V4_TO_H4", DEV_ROUTING_SWITCH_H4_TO_V4);
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "A different routing switch with key V4_TO_H4 already exists in the hash table!",
                            "A different pass tree with key V4_TREE already exists in the hash table!",
                            "A different switch_enum with key mcf:V4_TO_H4 already exists in the hash table!"}));
    EXPECT_EQ(body.get_routing_switch_by_string("V4_TO_H4"), first);
    EXPECT_EQ(body.get_routing_switch_enum_by_mcf_string("mcf:V4_TO_H4"), DEV_ROUTING_SWITCH_V4_TO_H4);
    EXPECT_EQ(body.get_routing_switch_by_string(nullptr), nullptr);
}

TEST_F(RoutingSwitchModel, PersistentFormPointsAtTheOwnedRecordsAndNotesWholeSeconds) {
    TempDir dir;
    DEV_ROUTING_SWITCH_INFO_BODY body;
    fill(body);
    const FIO_PATH path(dir.file("d_rsi.ddb"));
    ASSERT_TRUE(body.write_rsi_to_pdb(path, 9));
    std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY> loaded(DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(path));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == body);
    // Tables that do not own their records point at the owned ones, not at copies.
    EXPECT_EQ(loaded->get_routing_switch_by_enum(DEV_ROUTING_SWITCH_H4_TO_V4), loaded->get_routing_switch_by_id(1));
    EXPECT_EQ(loaded->get_routing_switch_by_string("V4_TO_H4"), loaded->get_routing_switch_by_id(0));
    EXPECT_EQ(loaded->get_pass_tree_by_string("V4_TREE"), loaded->get_pass_tree_by_enum(DEV_PASS_TREE_V4_TREE));
    EXPECT_EQ(loaded->get_routing_switch_enum_by_mcf_string("mcf:H4_TO_V4"), DEV_ROUTING_SWITCH_H4_TO_V4);
    EXPECT_TRUE(capture().has_debug("Spent 0 seconds writing RSI info to PDB: " + path.full_path()));
    EXPECT_TRUE(capture().has_debug("Spent 0 seconds loading RSI info from PDB: " + path.full_path()));
    EXPECT_TRUE(errors().empty());

    body.write_rsi_to_pdb(FIO_PATH(dir.file("plain_rsi.ddb")), 0);
    EXPECT_EQ(errors(), std::vector<std::string>{"compression_level != 0"});

    // A cut anywhere is refused; a flipped byte is refused or loads a body that holds together.
    const std::string whole = read_file(path.full_path());
    for (size_t cut = 0; cut < whole.size(); cut += 5)
        EXPECT_EQ(std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY>(DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(
                      FIO_PATH(dir.write("cut_rsi.ddb", whole.substr(0, cut))))),
                  nullptr)
            << cut;
    const std::string plain = read_file(dir.file("plain_rsi.ddb"));
    for (size_t at = 0; at < plain.size(); at += 11) {
        std::string flipped = plain;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x21);
        std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY> odd(
            DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(FIO_PATH(dir.write("flip_rsi.ddb", flipped))));
        std::string problem;
        EXPECT_TRUE(!odd || odd->check_structure(&problem)) << at;
    }
}

TEST_F(RoutingSwitchModel, LoadDataReportsAMissingFileAndDestroyDataEmptiesTheBody) {
    DEV_ROUTING_SWITCH_INFO info(new DEV_ROUTING_SWITCH_INFO_BODY);
    // The first device of an uninstalled family has no file.
    DEV_DEVICE_ENUM uninstalled = DEV_DEVICE_INVALID;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC && uninstalled == DEV_DEVICE_INVALID; ++d) {
        FIO_PATH p;
        if (!DEV_PATH::get_existing_device_file_path(DEV_DEVICE_ENUM(d), "device", &p)) uninstalled = DEV_DEVICE_ENUM(d);
    }
    ASSERT_NE(uninstalled, DEV_DEVICE_INVALID);
    EXPECT_FALSE(info.load_data(uninstalled));
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_EQ(errors()[0].rfind("ROUTING_SWITCH_INFO's RSI file /", 0), 0u) << errors()[0];
    EXPECT_NE(errors()[0].find(" not installed"), std::string::npos);

    fill(*info.get_body());
    info.destroy_data();
    EXPECT_EQ(info.get_body()->get_total_routing_switches(), 0);
    EXPECT_EQ(info.get_global_info(), nullptr);
    EXPECT_FALSE(info.is_data_loaded());
}

}  // namespace
