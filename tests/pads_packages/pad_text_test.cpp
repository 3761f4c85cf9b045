// The PAD reader and dump: blocks, special keys, messages in both forms, includes, the 2D
// continuation, and the dump's asymmetries read back to a fixed point.
#include <gtest/gtest.h>

#include "host/cfg.h"
#include "pads_fixture.h"

namespace {

// Two descriptors of LVTTL (one the default), a rule, a default pad and three pads.
const char* const SMALL_FILE = R"(INT_NUM_PADS = 3
INT_DEFAULT_IO_STANDARD = LVTTL
BOOL_HAS_DIFF_PAIRS = true
VEC_STRING_BANK_NAMES = {"1", "2"}
io_standard LVTTL_A
	CURRENT_SET = 4MA, 8MA
	REAL_VCC_CURRENT[4MA] = 10
	REAL_GND_CURRENT[8MA] = -20
	INT_IO_STANDARD = LVTTL
	BOOL_IS_DEFAULT = true
	STRING_INTERNAL_NAME = "OTHER"
end
io_standard LVTTL_B
	INT_IO_STANDARD = 1
end
io_rule VREF_MATCH
	INT_RULE_VALUE = 5
end
default_pad
	BOOL_IS_USER_IO = true
	BOOL_IS_BIDIR = false
	INT_IO_BANK = 7
	STRING_BANK_NAME = "B"
end
pad 0
	IO_STANDARDS = LVTTL_A, LVTTL_B
	INT_GLOBAL_ID = 1024
	BOOL_IS_BIDIR = true
	STRING_PAD_NAMES = "IO1_0,DIFF1_0P"
end
pad 1
	INT_GLOBAL_ID = 1025
	INT_GLOBAL_ID = 2048
	STRING_PAD_NAMES = "IO1_1/CFG_D1"
	BOOL_IS_USER_IO = true
end
pad 2
	INT_GLOBAL_ID = -1
	STRING_PAD_NAMES = "io1_0"
end
)";

}  // namespace

TEST_F(PadTextTest, BlocksBuildPadsDescriptorsAndRules) {
    DEV_PAD_INFO_BODY& pads = read(SMALL_FILE);
    EXPECT_EQ(errors(), std::vector<std::string>{"Attempt to assign 2nd IO std desc to existing IO std enum on pad"});
    ASSERT_EQ(pads.get_number_of_pads(), 3u);
    EXPECT_TRUE(has_note("Allocating 3 PADS"));

    // Descriptors: the name of the io_standard line stays; currents per strength.
    ASSERT_EQ(pads.get_total_io_standards(), 2);
    DEV_IO_STANDARD_DESC* a = pads.get_io_standard_by_string("LVTTL_A");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->get_name(), "LVTTL_A");
    EXPECT_TRUE(has_note("PAD parser ignoring I/O std STRING_INTERNAL_NAME assignment, using io_standard declaration instead."));
    EXPECT_EQ(pads.get_io_standard_by_string("lvttl_a"), nullptr);
    EXPECT_EQ(a->get_current_set(), (std::vector<DEV_CURRENT_STRENGTH_ENUM>{DEV_CURRENT_STRENGTH_MA_4, DEV_CURRENT_STRENGTH_MA_8}));
    EXPECT_EQ(a->get_real_vcc_current(DEV_CURRENT_STRENGTH_MA_4), 10);
    EXPECT_EQ(a->get_real_gnd_current(DEV_CURRENT_STRENGTH_MA_8), -20);
    EXPECT_EQ(pads.get_default_desc_for_io_standard(DEV_IO_STANDARD_LVTTL), a);
    EXPECT_EQ(pads.get_io_standard_enums(), std::vector<DEV_IO_STANDARD_ENUM>{DEV_IO_STANDARD_LVTTL});
    EXPECT_EQ(pads.get_default_io_standard_enum(), DEV_IO_STANDARD_LVTTL);

    // The rule's generated name: the value as written, "_" and its enumerator plus one.
    DEV_IO_RULE* rule = pads.get_io_rule_by_enum(DEV_IO_RULE_VREF_MATCH);
    ASSERT_NE(rule, nullptr);
    EXPECT_EQ(rule->get_string_data(DEV_IO_RULE_STRING_NAME), "5_000002");

    // Pads inherit from the default pad; a pad's own value wins.
    const DEV_PAD& pad0 = *pads.get_pad(0);
    EXPECT_TRUE(pad0.get_bool_data(DEV_PAD_BOOL_IS_BIDIR));
    EXPECT_FALSE(pads.get_pad(2)->get_bool_data(DEV_PAD_BOOL_IS_BIDIR));
    EXPECT_EQ(pads.get_pad(2)->get_int_data(DEV_PAD_INT_IO_BANK), 7);
    // Both descriptors listed; the second of one standard takes the slot, reported.
    EXPECT_EQ(pad0.get_io_standard_descs().size(), 2u);
    EXPECT_EQ(pad0.get_io_standard_desc_by_enum(DEV_IO_STANDARD_LVTTL), pads.get_io_standard_by_string("LVTTL_B"));
    EXPECT_TRUE(has_error("Attempt to assign 2nd IO std desc to existing IO std enum on pad"));
}

TEST_F(PadTextTest, GlobalIdsAndNames) {
    DEV_PAD_INFO_BODY& pads = read(SMALL_FILE);
    EXPECT_EQ(pads.get_pad_id_by_global_id(1024), 0u);
    EXPECT_EQ(pads.get_pad_by_global_id(2048), pads.get_pad(1));
    EXPECT_EQ(pads.get_pad_id_by_global_id(7), DEV_ILLEGAL_PAD_ID);
    std::vector<uint32_t> gids{99};
    pads.get_pad_gids(1, &gids);
    EXPECT_EQ(gids, (std::vector<uint32_t>{2048, 1025}));  // bucket order: 2048 % 61 = 35, 1025 % 61 = 49
    pads.get_pad_gids(2, &gids);
    EXPECT_TRUE(gids.empty());  // -1 is kept on the pad but names no pad
    EXPECT_EQ(pads.get_pad(2)->get_int_data(DEV_PAD_INT_GLOBAL_ID), -1);
    pads.get_pad_gids(DEV_ILLEGAL_PAD_ID, &gids);
    EXPECT_TRUE(gids.empty());

    // "A,B" names the pad by the whole value and A; "X/Y" by the value, X and Y; the first
    // claim stays; letter case is ignored.
    EXPECT_EQ(pads.get_pad_id_by_string("IO1_0,DIFF1_0P"), 0u);
    EXPECT_EQ(pads.get_pad_id_by_string("io1_0"), 0u);
    EXPECT_EQ(pads.get_pad_id_by_string("DIFF1_0P"), DEV_ILLEGAL_PAD_ID);
    EXPECT_EQ(pads.get_pad_id_by_string("IO1_1/CFG_D1"), 1u);
    EXPECT_EQ(pads.get_pad_id_by_string("cfg_d1"), 1u);
    EXPECT_EQ(pads.get_pad_by_string("IO1_1"), pads.get_pad(1));

    // Without the new-format support no name is registered.
    DEV_PAD_INFO_BODY& old = read(SMALL_FILE, OLD_FORMAT_DEVICE);
    EXPECT_EQ(old.get_pad_id_by_string("IO1_0,DIFF1_0P"), DEV_ILLEGAL_PAD_ID);
}

TEST_F(PadTextTest, ErrorsAreReportedInBothFormsAndReadingGoesOn) {
    read("BOOL_NO_SUCH = maybe\n"
         "BOOL_NO_SUCH = true\n"
         "INT_NUM_IO_BANKS = 0x10\n"
         "pad 0\n"
         "end\n"
         "INT_NUM_PADS = 3\n"
         "pad 3\n"
         "pad x1\n"
         "io_rule NO_SUCH_RULE\n"
         "\tINT_SEVERITY = 2\n"
         "end\n"
         "io_standard S\n"
         "\tCURRENT_SET = 4MA, 99XA\n"
         "\tREAL_VCC_CURRENT[XA] = 1\n"
         "pad 1\n"
         "\tIO_STANDARDS = S, T\n"
         "\tBOOL_IS_BIDIR = true \n"
         "\tnonsense\n"
         "end\n"
         "end\n"
         "INT_NUM_PADS = 1\n");
    const std::string file = m_dir.file("pads.pad");
    // Key and value errors: the located debug note, then the internal error. A BOOL value
    // is checked before its key; INT values are quoted.
    EXPECT_TRUE(has_error("Invalid boolean value: maybe"));
    EXPECT_TRUE(has_error("Invalid boolean key: BOOL_NO_SUCH"));
    EXPECT_TRUE(has_error("Invalid int value: \"0x10\""));
    EXPECT_TRUE(any_like(notes(), "Error at ddb/dev/dev_pad_parser, line ",
                         " parsing file " + file + ", line number 3 - Invalid int value: \"0x10\""));

    // Pad labels before the pads exist, past them and not numbers: raised directly.
    EXPECT_TRUE(has_error("ERROR: Ignoring pad 0 as PAD_INFO only has 0 pads"));
    EXPECT_TRUE(has_error("ERROR: Ignoring pad 3 as PAD_INFO only has 3 pads"));
    EXPECT_TRUE(has_error("ERROR: pad label should be an integer number!"));
    EXPECT_TRUE(has_error("Embedded definitions not allowed!"));
    EXPECT_TRUE(has_error("::dstr_exists_dev_io_rule_enum_by_string(name.c_str())"));
    EXPECT_TRUE(has_error("Invalid current value: 99XA"));
    EXPECT_TRUE(has_error("Invalid current value: XA"));
    EXPECT_TRUE(has_error("Invalid IO standard type: T"));
    EXPECT_TRUE(has_error("Syntax error in file pads.pad, line 18: \tnonsense"));
    // "end" at top level is a syntax error; a second pad count appends pads.
    EXPECT_TRUE(has_error("Syntax error in file pads.pad, line 20: end"));
    EXPECT_TRUE(has_error("new_id == pad->get_id()"));
    EXPECT_EQ(m_pads->get_number_of_pads(), 4u);
    // What was read before and after the errors stays.
    EXPECT_TRUE(m_pads->get_pad(1)->get_bool_data(DEV_PAD_BOOL_IS_BIDIR));
    EXPECT_EQ(m_pads->get_pad(1)->get_io_standard_descs().size(), 1u);
}

TEST_F(PadTextTest, PadCountBeyondWhatAFileDescribesIsRefused) {
    read("INT_NUM_PADS = 2000000000\n");
    EXPECT_EQ(m_pads->get_number_of_pads(), 0u);
    EXPECT_TRUE(has_error("INT_NUM_PADS = 2000000000 refused: a PAD file allocates at most 1000000 pads"));
    // Each count adds pads: the bound is on the total, which the dump writes as one count.
    cfg_set_value("dev_max_pad_count", "5");
    read("INT_NUM_PADS = 3\nINT_NUM_PADS = 3\n");
    cfg_unset_value("dev_max_pad_count");
    EXPECT_EQ(m_pads->get_number_of_pads(), 3u);
    EXPECT_TRUE(has_error("INT_NUM_PADS = 3 refused: a PAD file allocates at most 5 pads (3 already)"));
}

TEST_F(PadTextTest, StandardsWithoutDefaultAndTwoDimensionalRows) {
    read("INT_NUM_PADS = 1\n"
         "io_standard S\n"
         "\tINT_IO_STANDARD = LVCMOS33\n"
         "\t2D_INT_CURRENT_STRENGTH_TABLE = {\n"
         "\t\t{ 1 2 }\n"
         "\t\t{ 3 4 }}\n"
         "\tBOOL_IS_DEFAULT = false\n"
         "end\n"
         "io_standard s\n"
         "\tINT_IO_STANDARD = LVCMOS33\n"
         "end\n");
    EXPECT_TRUE(has_error("IO standard LVCMOS33 does not have a default descriptor!"));
    EXPECT_EQ(m_pads->get_total_io_standards(), 2);  // names are case-sensitive
    const DEV_IO_STANDARD_DESC& s = *m_pads->get_io_standard_by_string("S");
    EXPECT_EQ(s.get_2d_int_data(DEV_IO_STANDARD_DESC_2D_INT_CURRENT_STRENGTH_TABLE),
              (DEV_2D_INT_ARRAY{{1, 2}, {3, 4}}));
    // The line after the rows was read as a line of its own.
    EXPECT_TRUE(s.is_valid_bool_enum(DEV_IO_STANDARD_DESC_BOOL_IS_DEFAULT));
}

TEST_F(PadTextTest, IncludesBesideTheIncludingFileInsideBlocks) {
    m_dir.write("sub/pads_of_bank.pad", "BOOL_IS_BIDIR = true\nINT_NUM_IO_BANKS = 3\n");
    m_dir.write("sub/main.pad", "INT_NUM_PADS = 1\npad 0\ninclude \"pads_of_bank.pad\"\n\tBOOL_IS_USER_IO = true\nend\n"
                                "include \"main.pad\"\n");
    m_device = stand_in_device(NEW_FORMAT_DEVICE);
    m_pads = std::make_unique<DEV_PAD_INFO_BODY>();
    m_pads->set_device(m_device.get());
    m_pads->read_pad_file(FIO_PATH(m_dir.file("sub/main.pad")));
    // The included file starts at top level (its BOOL key is no pad info key); the block
    // goes on after it.
    EXPECT_TRUE(has_error("Invalid boolean key: BOOL_IS_BIDIR"));
    EXPECT_EQ(m_pads->get_int_data(DEV_PAD_INFO_INT_NUM_IO_BANKS), 3);
    EXPECT_TRUE(m_pads->get_pad(0)->get_body()->sets(DEV_PAD_BOOL_IS_USER_IO));
    EXPECT_TRUE(has_note("directory " + m_dir.file("sub")));
    EXPECT_TRUE(has_note("File " + m_dir.file("sub/main.pad") + "'s relative include file pads_of_bank.pad resolved to " +
                         m_dir.file("sub/pads_of_bank.pad")));
    // A file that includes itself is refused with the chain.
    EXPECT_TRUE(any_like(errors(), "Refused to include " + m_dir.file("sub/main.pad"), "already being read"));

    // A missing file in the format's words.
    clear_reports();
    m_pads->read_pad_file(FIO_PATH(m_dir.file("none.pad")));
    EXPECT_TRUE(has_error("File: " + m_dir.file("none.pad") + " does not exist!"));
    EXPECT_TRUE(has_error("input.good()"));
}

TEST_F(PadTextTest, DumpLeavesInheritedBoolsOutWritesInheritedValuesAndReadsBack) {
    DEV_PAD_INFO_BODY& pads = read(SMALL_FILE);
    const std::string first = m_dir.file("first.pad");
    ASSERT_TRUE(pads.write_pad_file(FIO_PATH(first), 0));
    const std::string dump = read_file(first);
    EXPECT_EQ(dump.rfind("#######################################################\n### PAD info - ASCII dump by DEV\n", 0), 0u);
    // Pad 2: BOOL_IS_BIDIR equals the default pad's and is left out; the inherited INT and
    // STRING are written.
    const size_t pad2 = dump.find("pad 2\n");
    ASSERT_NE(pad2, std::string::npos);
    const std::string block = dump.substr(pad2, dump.find("end\n", pad2) - pad2);
    EXPECT_EQ(block.find("BOOL_IS_BIDIR"), std::string::npos);
    EXPECT_NE(block.find("\tINT_IO_BANK = 7\n"), std::string::npos);
    EXPECT_NE(block.find("\tSTRING_BANK_NAME = \"B\"\n"), std::string::npos);
    EXPECT_NE(dump.find("\tIO_STANDARDS = LVTTL_A, LVTTL_B\n"), std::string::npos);
    EXPECT_NE(dump.find("\tCURRENT_SET = 4MA, 8MA\n\tREAL_VCC_CURRENT[4MA] = 10\n\tREAL_GND_CURRENT[4MA] = 0\n"),
              std::string::npos);
    EXPECT_NE(dump.find("VEC_STRING_BANK_NAMES = {\"1\", \"2\"}\n"), std::string::npos);
    EXPECT_NE(dump.find("# GIDs -> pad_id map for your reference\n# { 1024 } -> 0\n# { 2048 1025 } -> 1\n"),
              std::string::npos);
    EXPECT_TRUE(any_like(notes(), "Spent ", " secs writing \"" + first + "\""));


    // Read back, the dump loses only what the format cannot say (pad 1's first global id,
    // kept in the comment map alone); from there it is a fixed point.
    DEV_PAD_INFO_BODY& again = read(dump, NEW_FORMAT_DEVICE, "again.pad");
    const std::string second = m_dir.file("second.pad");
    ASSERT_TRUE(again.write_pad_file(FIO_PATH(second), 0));
    const std::string second_dump = read_file(second);
    EXPECT_EQ(second_dump.substr(0, second_dump.find("# GIDs")), dump.substr(0, dump.find("# GIDs")));
    EXPECT_NE(second_dump.find("# { 2048 } -> 1\n"), std::string::npos);
    EXPECT_EQ(again.get_pad_id_by_string("cfg_d1"), 1u);
    EXPECT_EQ(again.get_io_rule_by_enum(DEV_IO_RULE_VREF_MATCH)->get_string_data(DEV_IO_RULE_STRING_NAME), "5_000002");
    DEV_PAD_INFO_BODY& third = read(second_dump, NEW_FORMAT_DEVICE, "third.pad");
    ASSERT_TRUE(third.write_pad_file(FIO_PATH(m_dir.file("third_dump.pad")), 0));
    EXPECT_EQ(read_file(m_dir.file("third_dump.pad")), second_dump);
}
