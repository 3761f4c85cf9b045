// The HDR reader and dump: block rules, indexes filled from the text, messages in both of
// their forms, 2D continuation, includes, and the dump that reads back to itself.
#include <gtest/gtest.h>

#include <string>
#include <unistd.h>

#include "capture_fixture.h"
#include "dev_basic_info_body.h"
#include "dev_element_desc.h"
#include "dev_location_desc.h"
#include "dev_port_desc.h"
#include "host/cfg.h"
#include "host/tables/cdb_re_type.h"
#include "host/tables/dev_family_enum.h"

namespace {

class HdrReader : public CaptureTest {
protected:
    // Reads `text` as the file NAME in the scratch directory.
    bool read(const std::string& text, const std::string& name = "dev.hdr") {
        m_path = m_dir.write(name, text);
        return m_body.read_hdr_file(FIO_PATH(m_path));
    }
    std::string dump() {
        const std::string path = m_dir.file("dump.hdr");
        EXPECT_TRUE(m_body.write_hdr_file(FIO_PATH(path), 0));
        return read_file(path);
    }
    // The located debug note of an error or warning at HDR line `line` of the file read:
    // "<what> at ddb/dev/dev_hdr_parser, line <n> parsing file <path>, line number <line> - <message>".
    bool has_located(const char* what, int line, const std::string& message) {
        const std::string head = std::string(what) + " at ddb/dev/dev_hdr_parser, line ";
        const std::string tail = " parsing file " + m_path + ", line number " + std::to_string(line) + " - " + message;
        for (const std::string& note : notes())
            if (note.rfind(head, 0) == 0 && note.size() > head.size() + tail.size() &&
                note.compare(note.size() - tail.size(), tail.size(), tail) == 0 &&
                note.find_first_not_of("0123456789", head.size()) == note.size() - tail.size())
                return true;
        return false;
    }

    TempDir m_dir;
    std::string m_path;
    DEV_BASIC_INFO_BODY m_body;
};

const char DEVICE_TEXT[] =
    "# a device\n"
    "INT_NUM_LABS = 4\n"
    "\n"
    "location LAB\n"
    "\tINT_NUM_SUB_LOCS = 10\n"
    "\tSTRING_ALT_NAME = \"LOGIC_BLOCK\"\n"
    "end\n"
    "location RAM_S\n"
    "end\n"
    "location LAB\n"  // reopened: adds to the first
    "\tBOOL_IS_IO = false\n"
    "end\n"
    "port LUT_A\n"
    "\tINT_INPUT_PORT_TYPE = IN_A\n"
    "end\n"
    "port LUT_Q\n"
    "\tINT_OUTPUT_PORT_TYPE = LUT_OUT\n"
    "end\n"
    "element LOGIC_LUT\n"
    "\tLOCATIONS = RAM_S, LAB\n"
    "\tPORTS = LUT_Q LUT_A,,LUT_Q\n"
    "\tINT_CDB_RE_TYPE = LOGIC_LUT\n"
    "\tSTRING_SHORT_NAME = \"LUT\"\n"
    "\t2D_INT_MODE_TABLE = {{1, 2}, {3, 4}}\n"
    "end\n";

TEST_F(HdrReader, BlocksFillTheRecordsAndEveryIndex) {
    ASSERT_TRUE(read(DEVICE_TEXT));
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(m_body.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS), 4);

    // Locations by id, enumerator and every name; the reopened one is not duplicated.
    ASSERT_EQ(m_body.get_location_descs().size(), 2u);
    DEV_LOCATION_DESC* lab = m_body.get_location_by_id(0);
    EXPECT_EQ(lab, m_body.get_location_by_enum(DEV_LOCATION_LAB));
    EXPECT_EQ(lab, m_body.get_location_by_string("LAB"));
    EXPECT_EQ(lab, m_body.get_location_by_string("LOGIC_BLOCK"));
    EXPECT_EQ(lab->get_body()->get_int_data(DEV_LOCATION_DESC_INT_NUM_SUB_LOCS), 10);
    EXPECT_TRUE(lab->get_body()->is_valid_bool_enum(DEV_LOCATION_DESC_BOOL_IS_IO));
    EXPECT_EQ(m_body.get_location_enums(), (std::vector<DEV_LOCATION_ENUM>{DEV_LOCATION_LAB, DEV_LOCATION_RAM_S}));

    // Ports are named by their block and found by name only.
    DEV_PORT_DESC* a = m_body.get_port_by_string("LUT_A");
    DEV_PORT_DESC* q = m_body.get_port_by_string("LUT_Q");
    ASSERT_TRUE(a && q);
    EXPECT_EQ(a->get_debug_name(), "LUT_A");

    // The element lists its locations and ports in the order written, repeats included,
    // and is indexed by enumerator, names and netlist type.
    DEV_ELEMENT_DESC* lut = m_body.get_element_by_enum(DEV_ELEMENT_LOGIC_LUT);
    ASSERT_NE(lut, nullptr);
    EXPECT_EQ(lut, m_body.get_element_by_string("LUT"));
    EXPECT_EQ(lut, m_body.get_element_by_cdb_re_type(CDB_RE_LOGIC_LUT));
    EXPECT_EQ(lut->get_location_descs(), (std::vector<DEV_LOCATION_DESC*>{m_body.get_location_by_id(1), lab}));
    EXPECT_EQ(lut->get_port_descs(), (std::vector<DEV_PORT_DESC*>{q, a, q}));
    EXPECT_EQ(lut->get_port_by_input_type_str("IN_A"), a);
    EXPECT_EQ(lut->get_body()->get_2d_int_data(DEV_ELEMENT_DESC_2D_INT_MODE_TABLE),
              (std::vector<std::vector<int>>{{1, 2}, {3, 4}}));
}

TEST_F(HdrReader, ErrorsAndWarningsInBothFormsReadingGoesOn) {
    read("bogus line\n"
         "BOOL_NO_SUCH_KEY = true\n"
         "location LAB\n"
         "\tINT_NUM_SUB_LOCS = ten\n"
         "\telement LOGIC_FF\n"       // embedded: opened, but the location block keeps the lines
         "\tINT_WIDTH = 2\n"
         "end\n"
         "end\n"
         "port P\n"
         "\tSTRING_DEBUG_NAME = \"x\"\n"
         "end\n"
         "port P\n"
         "\tINT_INPUT_PORT_TYPE = IN_A\n"
         "\tINT_OUTPUT_PORT_TYPE = LUT_OUT\n"
         "end\n"
         "element LOGIC_LUT\n"
         "\tLOCATIONS = LAB, NOWHERE\n"
         "\tPORTS = NO_PORT\n"
         "end\n"
         "end\n"
         "location GENERIC_LOCATION\n"
         "end\n");
    const std::vector<std::string> expected_errors = {
        "Syntax error in file dev.hdr, line 1: bogus line",
        "Invalid boolean key: BOOL_NO_SUCH_KEY",
        "Invalid int value: ten",
        "Embedded definitions not allowed!",
        "Missing port type. Either INT_INPUT_PORT_TYPE xor INT_OUTPUT_PORT_TYPE is required",
        "INT_INPUT_PORT_TYPE and INT_OUTPUT_PORT_TYPE are mutually exlusive. Set only one.",
        "Invalid location type: NOWHERE",
        "Invalid port type: NO_PORT",
        "Syntax error in file dev.hdr, line 20: end",
    };
    EXPECT_EQ(errors(), expected_errors);
    EXPECT_TRUE(has_located("Error", 4, "Invalid int value: ten"));
    EXPECT_TRUE(has_located("Error", 11, expected_errors[4]));
    EXPECT_TRUE(has_located("Warning", 10, "Ignored DEBUG_NAME of x - debug names set automatically only"));
    EXPECT_TRUE(has_located("Warning", 12, "Warning: overwriting (or adding to) the previous data for port P"));
    EXPECT_TRUE(has_located("Warning", 21, "Warning: found a generic location type GENERIC_LOCATION!"));

    // The location block takes precedence over the embedded element; the element exists.
    EXPECT_EQ(m_body.get_location_by_enum(DEV_LOCATION_LAB)->get_body()->get_int_data(DEV_LOCATION_DESC_INT_WIDTH), 2);
    EXPECT_NE(m_body.get_element_by_enum(DEV_ELEMENT_LOGIC_FF), nullptr);
    // The ignored debug name left the block's name; the unknown names were skipped.
    EXPECT_EQ(m_body.get_port_by_string("P")->get_debug_name(), "P");
    EXPECT_EQ(m_body.get_element_by_enum(DEV_ELEMENT_LOGIC_LUT)->get_location_descs().size(), 1u);
    // A generic location is listed by id and name, not by enumerator.
    EXPECT_NE(m_body.get_location_by_string("GENERIC_LOCATION"), nullptr);
    EXPECT_EQ(m_body.get_location_enums(), std::vector<DEV_LOCATION_ENUM>{DEV_LOCATION_LAB});
}

TEST_F(HdrReader, TwoDimensionalContinuationKeepsThePendingLine) {
    ASSERT_TRUE(read("2D_INT_CONFIG_FRAME_MAP = {\n"
                     "\t{ 1 2 3 }\n"
                     "\t{ 4 5 6 }}\n"
                     "INT_NUM_LABS = 7\n"  // ends the value and is read as itself
                     "element LOGIC_LUT\n"
                     "\t2D_INT_MODE_TABLE = {\n"
                     "\t\t{ 9 }}\n"
                     "end\n"
                     "2D_INT_IO_ROWS = {\n"
                     "{1, 2}}"));  // the end of the file ends the value too
    EXPECT_TRUE(errors().empty()) << ::testing::PrintToString(errors());
    EXPECT_EQ(m_body.get_2d_int_data(DEV_BASIC_INFO_2D_INT_CONFIG_FRAME_MAP),
              (std::vector<std::vector<int>>{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(m_body.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS), 7);
    EXPECT_EQ(m_body.get_element_by_enum(DEV_ELEMENT_LOGIC_LUT)->get_body()->get_2d_int_data(DEV_ELEMENT_DESC_2D_INT_MODE_TABLE),
              (std::vector<std::vector<int>>{{9}}));
    EXPECT_EQ(m_body.get_2d_int_data(DEV_BASIC_INFO_2D_INT_IO_ROWS), (std::vector<std::vector<int>>{{1, 2}}));
}

TEST_F(HdrReader, IncludesAreTakenAsWrittenEvenInsideBlocks) {
    // Relative to the working directory, not to the including file.
    m_dir.write("ports.hdr", "port P\n\tINT_INPUT_PORT_TYPE = IN_A\nend\n");
    m_dir.write("sub/ports.hdr", "port WRONG\n\tINT_INPUT_PORT_TYPE = IN_A\nend\n");
    const std::string sub_main = m_dir.write("sub/main.hdr", "element LOGIC_LUT\n\tinclude \"ports.hdr\"\n\tPORTS = P\nend\n");
    char cwd[4096];
    ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
    ASSERT_EQ(chdir(m_dir.path().c_str()), 0);
    const bool was_read = m_body.read_hdr_file(FIO_PATH(sub_main));
    ASSERT_EQ(chdir(cwd), 0);
    EXPECT_TRUE(was_read);
    EXPECT_TRUE(errors().empty()) << ::testing::PrintToString(errors());
    EXPECT_EQ(m_body.get_port_by_string("WRONG"), nullptr);
    EXPECT_EQ(m_body.get_element_by_enum(DEV_ELEMENT_LOGIC_LUT)->get_port_descs().size(), 1u);

    // A missing include and a cycle are reported; the rest of the file is read.
    clear_reports();
    const std::string loop = m_dir.file("loop.hdr");
    read("include \"" + m_dir.file("absent.hdr") + "\"\ninclude \"" + loop + "\"\nINT_NUM_LABS = 3\n", "loop.hdr");
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "input.good()",
                            "Refused to include " + loop + ": it is already being read (" + loop + " -> " + loop + ")"}));
    EXPECT_EQ(m_body.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS), 3);
}

TEST_F(HdrReader, DumpReadsBackToItself) {
    ASSERT_TRUE(read(DEVICE_TEXT));
    m_body.set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY, DEV_FAMILY_GENERIC);  // generic: left out
    const std::string first = dump();
    EXPECT_EQ(first.rfind("#######################################################\n"
                          "### Basic info (HDR file) - ASCII dump by DEV\n"
                          "#######################################################\n"
                          "INT_NUM_LABS = 4\n"
                          "location LAB\n",
                          0),
              0u)
        << first;
    EXPECT_EQ(first.find("ENUM_FAMILY"), std::string::npos);
    EXPECT_NE(first.find("element LOGIC_LUT\n"
                         "\tLOCATIONS = RAM_S, LAB\n"
                         "\tPORTS = LUT_Q, LUT_A, LUT_Q\n"),
              std::string::npos)
        << first;
    EXPECT_NE(first.find("\t2D_INT_MODE_TABLE = {\n\t\t{ 1 2 }\n\t\t{ 3 4 }}\n"), std::string::npos) << first;

    DEV_BASIC_INFO_BODY again;
    ASSERT_TRUE(again.read_hdr_file(FIO_PATH(m_dir.file("dump.hdr"))));
    EXPECT_TRUE(errors().empty()) << ::testing::PrintToString(errors());
    const std::string second_path = m_dir.file("second.hdr");
    ASSERT_TRUE(again.write_hdr_file(FIO_PATH(second_path), 0));
    EXPECT_EQ(read_file(second_path), first);

    // With "dev_dump_hdr_read" on, every file read leaves its verify dump beside it.
    cfg_set_value("dev_dump_hdr_read", "on");
    DEV_BASIC_INFO_BODY verified;
    ASSERT_TRUE(verified.read_hdr_file(FIO_PATH(m_path)));
    EXPECT_EQ(read_file(m_dir.file("devverify.hdr")).substr(0, 100), first.substr(0, 100));
}

}  // namespace
