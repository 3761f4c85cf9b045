// The PART_INFO reader and dump: blocks that reopen, the messages in both forms, includes and
// the dump written after each file, and the dump that reads back with its INT keys named by
// themselves.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_part_info.h"
#include "host/cfg.h"
#include "host/dstr.h"

namespace {

class PartInfoReader : public CaptureTest {
protected:
    bool read(const std::string& text, const std::string& name = "part.part_info") {
        m_path = m_dir.write(name, text);
        return m_body.read_ascii_file(FIO_PATH(m_path));
    }
    std::string dump(const DEV_PART_INFO_BODY& body, const std::string& name = "dump.part_info") {
        const std::string path = m_dir.file(name);
        EXPECT_TRUE(body.write_ascii_file(FIO_PATH(path), 0));
        return read_file(path);
    }
    // The located note of an error at line `line` of the file read, with its message.
    bool has_located(int line, const std::string& message) {
        const std::string form = "Error at ddb/dev/dev_part_info_parser, line [0-9]+ parsing file " + m_path +
                                 ", line number " + std::to_string(line) + " - (.*)";
        for (const std::string& note : notes()) {
            std::smatch m;
            if (std::regex_match(note, m, std::regex(form)) && m[1] == message) return true;
        }
        return false;
    }
    const DEV_POWER_SUPPLY_DESC_BODY& supply(DEV_POWER_SUPPLY_ENUM s) {
        const DEV_POWER_SUPPLY_DESC* desc = m_body.get_power_supply_desc(s);
        EXPECT_NE(desc, nullptr);
        return *desc->get_body();
    }

    TempDir m_dir;
    std::string m_path;
    DEV_PART_INFO_BODY m_body;
};

const char PART_TEXT[] =
    "# a part\n"
    "BOOL_HAS_POWER_DATA = true\n"
    "INT_MAX_JUNCTION_TEMP = 100\n"
    "ENUM_TEMPERATURE_GRADE = INDUSTRIAL\n"
    "STRING_ORDERING_CODE = \"X-1\"\n"
    "2D_INT_THERMAL_LIMITS = {\n"
    "\t{ INDUSTRIAL -40 100 }}\n"
    "power_supply VCCINT\n"
    "\tINT_NOMINAL_MV = 900\n"
    "\tENUM_VOLTAGE = 0_9V\n"
    "2D_INT_STATIC_CURRENT_TABLE = {{25, 10}, {100, 80}}\n"
    "end\n"
    "\n"
    "power_supply VCCIO1\n"
    "\tBOOL_IS_IO = true\n"
    "end\n"
    "power_supply VCCINT\n"  // the same supply again: one descriptor
    "\tSTRING_NAME = \"core\"\n"
    "end\n";

TEST_F(PartInfoReader, BlocksOfOneSupplyFillOneDescriptorInOrderOfFirstMention) {
    ASSERT_TRUE(read(PART_TEXT));
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(m_body.is_initialized());
    EXPECT_TRUE(m_body.get_bool_data(DEV_PART_INFO_BOOL_HAS_POWER_DATA));
    EXPECT_EQ(m_body.get_int_data(DEV_PART_INFO_INT_MAX_JUNCTION_TEMP), 100);
    EXPECT_EQ(m_body.get_enum_data(DEV_PART_INFO_ENUM_TEMPERATURE_GRADE), DEV_TEMPERATURE_INDUSTRIAL);
    EXPECT_EQ(m_body.get_2d_int_data(DEV_PART_INFO_2D_INT_THERMAL_LIMITS),
              (DEV_2D_INT_ARRAY{{DEV_TEMPERATURE_INDUSTRIAL, -40, 100}}));

    const std::vector<DEV_POWER_SUPPLY_DESC*>& supplies = m_body.get_power_supply_desc_vec();
    ASSERT_EQ(supplies.size(), 2u);
    EXPECT_EQ(supplies[0], m_body.get_power_supply_desc(DEV_POWER_SUPPLY_VCCINT));
    EXPECT_EQ(supplies[1]->get_power_supply_enum(), DEV_POWER_SUPPLY_VCCIO1);
    EXPECT_EQ(supply(DEV_POWER_SUPPLY_VCCINT).get_int_data(DEV_POWER_SUPPLY_DESC_INT_NOMINAL_MV), 900);
    EXPECT_EQ(supply(DEV_POWER_SUPPLY_VCCINT).get_enum_data(DEV_POWER_SUPPLY_DESC_ENUM_VOLTAGE), DEV_VOLTAGE_0_9V);
    EXPECT_EQ(supply(DEV_POWER_SUPPLY_VCCINT).get_string_data(DEV_POWER_SUPPLY_DESC_STRING_NAME), "core");
    EXPECT_EQ(supply(DEV_POWER_SUPPLY_VCCINT).get_2d_int_data(DEV_POWER_SUPPLY_DESC_2D_INT_STATIC_CURRENT_TABLE),
              (DEV_2D_INT_ARRAY{{25, 10}, {100, 80}}));
    EXPECT_TRUE(supply(DEV_POWER_SUPPLY_VCCIO1).get_bool_data(DEV_POWER_SUPPLY_DESC_BOOL_IS_IO));
}

TEST_F(PartInfoReader, ErrorsInBothFormsAndReadingGoesOn) {
    read("end\n"                                   // 1: no block to close
         "BOOL_NO_SUCH_KEY = maybe\n"              // 2: the value is tested before the key
         "BOOL_NO_SUCH_KEY = true\n"               // 3
         "INT_MAX_JUNCTION_TEMP = 0x10\n"          // 4
         "ENUM_NO_SUCH_KEY = INDUSTRIAL\n"         // 5: ENUM keys in the int wording
         "ENUM_TEMPERATURE_GRADE = LUKEWARM\n"     // 6: not a temperature grade
         "STRING_NO_SUCH_KEY = \"x\"\n"            // 7
         "2D_INT_NO_SUCH_KEY = {{1}}\n"            // 8
         "2D_INT_THERMAL_LIMITS = {{1, hot}}\n"    // 9
         "power_supply VCCAUX\n"                   // 10
         "power_supply VCC_RAM\n"                  // 11: embedded, opened all the same
         "\tINT_MAX_MV = 1300\n"                   // 12
         "\tbogus\n"                               // 13
         "end\n"                                   // 14
         "power_supply NO_SUCH_SUPPLY\n"           // 15
         "\tINT_MAX_MV = 1\n"                      // 16: nowhere to go
         "end\n"                                   // 17
         "INT_MIN_JUNCTION_TEMP = -5\n");          // 18
    const std::vector<std::pair<int, std::string>> expected = {
        {1, "Syntax error in file part.part_info, line 1: end"},
        {2, "Invalid boolean value: maybe"},
        {3, "Invalid boolean key: BOOL_NO_SUCH_KEY"},
        {4, "Invalid int value: 0x10"},
        {5, "Invalid int key: ENUM_NO_SUCH_KEY"},
        {6, "Invalid int value: LUKEWARM"},
        {7, "Invalid string key: STRING_NO_SUCH_KEY"},
        {8, "Invalid 2D_INT key: 2D_INT_NO_SUCH_KEY"},
        {9, "Invalid 2D_INT value: {{1, hot}}"},
        {11, "Embedded definitions not allowed!"},
        {13, "Syntax error in file part.part_info, line 13: \tbogus"},
        {15, "power_supply != DEV_POWER_SUPPLY_INVALID"},
        {16, "power_supply_desc != NULL"},
    };
    std::vector<std::string> messages;
    for (const auto& e : expected) {
        EXPECT_TRUE(has_located(e.first, e.second)) << e.second;
        messages.push_back(e.second);
    }
    EXPECT_EQ(errors(), messages);
    // Both blocks were opened; the lines after the errors were read.
    EXPECT_EQ(supply(DEV_POWER_SUPPLY_VCC_RAM).get_int_data(DEV_POWER_SUPPLY_DESC_INT_MAX_MV), 1300);
    EXPECT_TRUE(m_body.is_valid_power_supply_enum(DEV_POWER_SUPPLY_VCCAUX));
    EXPECT_EQ(m_body.get_int_data(DEV_PART_INFO_INT_MIN_JUNCTION_TEMP), -5);
    EXPECT_EQ(m_body.get_power_supply_desc_vec().size(), 2u);
}

TEST_F(PartInfoReader, IncludesAsWrittenEachFileDumpedAfterItIsRead) {
    const std::string included = m_dir.write("more.txt", "power_supply VREF\nend\n");
    cfg_set_value("dev_dump_part_info_after_read", "on");
    ASSERT_TRUE(read("power_supply VCCINT\ninclude \"" + included + "\"\nINT_NOMINAL_MV = 1\nend\n", "a.part_info"));
    // The include is read at once, into no block of its own: the line after it is still in
    // the VCCINT block.
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(supply(DEV_POWER_SUPPLY_VCCINT).is_valid_int_enum(DEV_POWER_SUPPLY_DESC_INT_NOMINAL_MV));
    EXPECT_TRUE(m_body.is_valid_power_supply_enum(DEV_POWER_SUPPLY_VREF));
    // The included file's dump holds what was read by then; the including file's holds all.
    const std::string inner = read_file(m_dir.file("more_verify.txt"));
    const std::string outer = read_file(m_dir.file("a_verify.part_info"));
    EXPECT_NE(inner.find("power_supply VREF"), std::string::npos);
    EXPECT_EQ(inner.find("INT_NOMINAL_MV"), std::string::npos);
    EXPECT_EQ(outer, dump(m_body));
}

TEST_F(PartInfoReader, DumpWritesIntKeysByNameAndReadsBackWithOneReportEach) {
    ASSERT_TRUE(read(PART_TEXT));
    m_body.set_int_data(DEV_PART_INFO_INT_NUM_POWER_SUPPLIES, 2);
    const std::string text = dump(m_body);
    EXPECT_EQ(text.substr(0, 56 * 2 + 55),
              "#######################################################\n"
              "### PART_INFO info (PART_INFO file) - ASCII dump by DEV\n"
              "#######################################################");
    EXPECT_NE(text.find("\nINT_MAX_JUNCTION_TEMP = INT_MAX_JUNCTION_TEMP\n"), std::string::npos);
    EXPECT_NE(text.find("power_supply VCCINT\n\tINT_NOMINAL_MV = 900\n\tENUM_VOLTAGE = 0_9V\n"
                        "\tSTRING_NAME = \"core\"\n2D_INT_STATIC_CURRENT_TABLE = {\n\t{ 25 10 }\n\t{ 100 80 }}\nend\n\n"),
              std::string::npos);

    clear_reports();
    DEV_PART_INFO_BODY again;
    ASSERT_TRUE(again.read_ascii_file(FIO_PATH(m_dir.write("again.part_info", text))));
    EXPECT_EQ(errors(), (std::vector<std::string>{"Invalid int value: INT_MAX_JUNCTION_TEMP",
                                                  "Invalid int value: INT_NUM_POWER_SUPPLIES"}));
    // Everything else came back; the INT keys of the part are lost, its supplies' are not.
    EXPECT_FALSE(again.is_valid_int_enum(DEV_PART_INFO_INT_MAX_JUNCTION_TEMP));
    DEV_PART_INFO_BODY without_ints;
    ASSERT_TRUE(without_ints.read_ascii_file(FIO_PATH(m_dir.write("no_ints.part_info",
                                                                  std::regex_replace(text, std::regex("\nINT_[^\n]*"), "")))));
    EXPECT_TRUE(without_ints == again);
    EXPECT_EQ(dump(again, "second.part_info"), dump(without_ints, "third.part_info"));
}

}  // namespace
