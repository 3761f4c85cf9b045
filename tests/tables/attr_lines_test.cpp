// Attribute lines: reading every kind through each format's syntax, the formats' error
// wording, and round trips line -> record -> dump -> record.
#include <cmath>
#include <string>
#include <vector>

#include "host/tables/dev_io_standard_enum.h"
#include "host/tables/dev_temperature_enum.h"
#include "host/tables/dev_voltage_enum.h"
#include "capture_fixture.h"
#include "ddb/dev/dev_attribute_io.h"

namespace {

// A record with every kind, declared through the generic table.
class TEST_RECORD
    : public DEV_ATTRIBUTE_TABLE<DEV_BASIC_INFO_BOOL_DATA_ENUM, DEV_BASIC_INFO_INT_DATA_ENUM,
                                 DEV_BASIC_INFO_ENUM_DATA_ENUM, DEV_BASIC_INFO_STRING_DATA_ENUM,
                                 DEV_BASIC_INFO_2D_INT_DATA_ENUM, DEV_PIN_VEC_INT_DATA_ENUM,
                                 DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM, DEV_PAD_INFO_VEC_STRING_DATA_ENUM> {};

// Reads a whole text the way a block-less reader would: one line at a time, a 2D value
// "{" gathering its continuation lines. Returns the messages of bad lines and
// "unmatched: <line>" for lines that are no attribute line.
std::vector<std::string> read_text(const DEV_ATTRIBUTE_FORMAT& format, const std::string& text,
                                   TEST_RECORD& record) {
    std::vector<std::string> lines;
    for (size_t begin = 0; begin < text.size();) {
        size_t end = text.find('\n', begin);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    size_t next = 0;
    auto next_line = [&](std::string& line) {
        if (next >= lines.size()) return false;
        line = lines[next++];
        return true;
    };
    DEV_ATTRIBUTE_SYNTAX syntax(format);
    std::vector<std::string> problems;
    std::string line, pending, message;
    bool has_pending = false;
    while (has_pending || next_line(line)) {
        if (has_pending) line.swap(pending);
        if (line.find_first_not_of(" \t") == std::string::npos) {
            has_pending = false;
            continue;
        }
        switch (dev_attribute_read_any(syntax, line, record, &message, next_line, &pending, &has_pending)) {
        case DEV_ATTRIBUTE_NO_MATCH: problems.push_back("unmatched: " + line); break;
        case DEV_ATTRIBUTE_ERROR: problems.push_back(message); break;
        case DEV_ATTRIBUTE_STORED: break;
        }
    }
    return problems;
}

std::string dump(const TEST_RECORD& record, const char* indent = "") {
    std::string out;
    dev_attribute_write(record, indent, &out);
    return out;
}

const char* name_of(const DSTR_TABLE& table, size_t i) { return table.entry(i).debug; }

class AttrLines : public CaptureTest {};

TEST_F(AttrLines, EveryKindRoundTripsThroughItsDumpWithSymbolicNames) {
    const DSTR_TABLE& volts = dstr_table_dev_voltage_enum();
    const DSTR_TABLE& stds = dstr_table_dev_io_standard_enum();
    const DSTR_TABLE& grades = dstr_table_dev_temperature_enum();
    const std::string text = std::string() +
        "BOOL_HAS_PLL = true\n"
        "  BOOL_IS_LOW_POWER\t=   false  \n"
        "INT_NUM_LABS = -42\n"
        "INT_CORE_VOLTAGE = " + name_of(volts, 2) + "\n"
        "INT_IDCODE = 2147483647\n"
        "ENUM_SPEED_GRADE = 2\n"
        "ENUM_TEMPERATURE = " + name_of(grades, 3) + "\n"
        "STRING_COMMENT = \"a, b  # not a comment\"\n"
        "STRING_GENERATOR = \"\"\n"
        "2D_INT_IO_BANK_VCCIO = {\n"
        "\t{ 1 " + name_of(volts, 0) + " }\n"
        "\t{ -2, " + name_of(volts, 1) + ", 7 }}\n"
        "2D_INT_PLL_LOCATIONS = {{3, -4}, {}, {5}}\n"
        "2D_INT_DSP_COLUMNS = {}\n"
        "VEC_INT_IO_STANDARDS = {" + name_of(stds, 0) + ", 500 -1}\n"
        "VEC_DOUBLE_ROW_OFFSETS_MM = {1.5, -2, 3e2, 0.125, -1e999}\n"
        "VEC_STRING_BANK_NAMES = {\"bank 3A, left\", plain, \"x\"}\n";
    TEST_RECORD first;
    EXPECT_EQ(std::vector<std::string>(), read_text(DEV_ATTRIBUTE_FORMAT::hdr(), text, first));

    EXPECT_TRUE(first.get_bool_data(DEV_BASIC_INFO_BOOL_HAS_PLL));
    EXPECT_FALSE(first.get_bool_data(DEV_BASIC_INFO_BOOL_IS_LOW_POWER));
    EXPECT_EQ(-42, first.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS));
    EXPECT_EQ(volts.entry(2).value, first.get_int_data(DEV_BASIC_INFO_INT_CORE_VOLTAGE));
    EXPECT_EQ(grades.entry(3).value, first.get_enum_data(DEV_BASIC_INFO_ENUM_TEMPERATURE));
    EXPECT_EQ("a, b  # not a comment", first.get_string_data(DEV_BASIC_INFO_STRING_COMMENT));
    EXPECT_TRUE(first.is_valid_string_enum(DEV_BASIC_INFO_STRING_GENERATOR));
    EXPECT_EQ((DEV_2D_INT_ARRAY{{1, volts.entry(0).value}, {-2, volts.entry(1).value, 7}}),
              first.get_2d_int_data(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO));
    EXPECT_EQ((DEV_2D_INT_ARRAY{{3, -4}, {}, {5}}), first.get_2d_int_data(DEV_BASIC_INFO_2D_INT_PLL_LOCATIONS));
    EXPECT_TRUE(first.get_2d_int_data(DEV_BASIC_INFO_2D_INT_DSP_COLUMNS).empty());
    EXPECT_EQ((std::vector<int>{stds.entry(0).value, 500, -1}),
              first.get_vec_int_data(DEV_PIN_VEC_INT_IO_STANDARDS));
    EXPECT_EQ((std::vector<double>{1.5, -2, 300, 0.125, -HUGE_VAL}),
              first.get_vec_double_data(DEV_PKG_INFO_VEC_DOUBLE_ROW_OFFSETS_MM));
    EXPECT_EQ((std::vector<std::string>{"bank 3A, left", "plain", "x"}),
              first.get_vec_string_data(DEV_PAD_INFO_VEC_STRING_BANK_NAMES));

    // The dump: kinds in order, keys in order, names where the key has them, 2D rows on
    // their own lines one tab deeper than the key.
    const std::string expected = std::string() +
        "BOOL_HAS_PLL = true\n"
        "BOOL_IS_LOW_POWER = false\n"
        "INT_NUM_LABS = -42\n"
        "INT_IDCODE = 2147483647\n"
        "INT_CORE_VOLTAGE = " + name_of(volts, 2) + "\n"
        "ENUM_SPEED_GRADE = " + astr_get_enum_data_debug_string(DEV_BASIC_INFO_ENUM_SPEED_GRADE, 2) + "\n"
        "ENUM_TEMPERATURE = " + name_of(grades, 3) + "\n"
        "STRING_GENERATOR = \"\"\n"
        "STRING_COMMENT = \"a, b  # not a comment\"\n"
        "2D_INT_IO_BANK_VCCIO = {\n"
        "\t{ 1 " + name_of(volts, 0) + " }\n"
        "\t{ -2 " + name_of(volts, 1) + " 7 }}\n"
        "2D_INT_PLL_LOCATIONS = {\n\t{ 3 -4 }\n\t{ }\n\t{ 5 }}\n"
        "2D_INT_DSP_COLUMNS = {}\n"
        "VEC_INT_IO_STANDARDS = {" + name_of(stds, 0) + ", 500, -1}\n"
        "VEC_DOUBLE_ROW_OFFSETS_MM = {1.5, -2, 300, 0.125, -1e999}\n"
        "VEC_STRING_BANK_NAMES = {\"bank 3A, left\", \"plain\", \"x\"}\n";
    const std::string written = dump(first);
    EXPECT_EQ(expected, written);

    // Read back, top level and inside a block (one tab, 2D rows two tabs): the same record.
    for (const char* indent : {"", "\t"}) {
        TEST_RECORD second;
        EXPECT_EQ(std::vector<std::string>(),
                  read_text(DEV_ATTRIBUTE_FORMAT::hdr(), dump(first, indent), second));
        EXPECT_EQ(written, dump(second));
    }
    EXPECT_TRUE(errors().empty());
}

TEST_F(AttrLines, DumpsWriteOnlyValidKeysInKindAndKeyOrder) {
    TEST_RECORD record;
    record.set_vec_string_data(DEV_PAD_INFO_VEC_STRING_CONFIG_PAD_NAMES, {"nCONFIG"});
    record.set_2d_int_data(DEV_BASIC_INFO_2D_INT_RESERVED_AREAS, {{0}});
    record.set_string_data(DEV_BASIC_INFO_STRING_DEVICE_NAME, "VX200");
    record.set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, 999999);  // no name: written as a number
    record.set_int_data(DEV_BASIC_INFO_INT_BOOT_TIME_US, 7);
    record.set_int_data(DEV_BASIC_INFO_INT_NUM_LABS, 8);
    record.set_bool_data(DEV_BASIC_INFO_BOOL_USE_UNIFIED_RAM_NAMES, true);
    record.set_bool_data(DEV_BASIC_INFO_BOOL_HAS_PLL, false);
    EXPECT_EQ("\tBOOL_HAS_PLL = false\n"
              "\tBOOL_USE_UNIFIED_RAM_NAMES = true\n"
              "\tINT_NUM_LABS = 8\n"
              "\tINT_BOOT_TIME_US = 7\n"
              "\tENUM_DEVICE = 999999\n"
              "\tSTRING_DEVICE_NAME = \"VX200\"\n"
              "\t2D_INT_RESERVED_AREAS = {\n\t\t{ 0 }}\n"
              "\tVEC_STRING_CONFIG_PAD_NAMES = {\"nCONFIG\"}\n",
              dump(record, "\t"));
    EXPECT_EQ("", dump(TEST_RECORD()));
}

TEST_F(AttrLines, BadLinesGiveTheFormatsWordingAndLeaveTheRecordAlone) {
    struct CASE {
        const char* line;
        const char* hdr;        // canonical wording
        const char* pad;        // PAD wording ("" where PAD reads no such kind)
        const char* pkg;        // PKG wording
    } cases[] = {
        {"BOOL_NO_SUCH = true", "Invalid boolean key: BOOL_NO_SUCH", "Invalid boolean key: BOOL_NO_SUCH",
         "Invalid bool key: BOOL_NO_SUCH"},
        // Where the value is checked first, a bad key with a bad value reports the value.
        {"BOOL_NO_SUCH = maybe", "Invalid boolean key: BOOL_NO_SUCH", "Invalid boolean value: maybe",
         "Invalid bool value: maybe"},
        {"BOOL_HAS_PLL = TRUE", "Invalid boolean value: TRUE", "Invalid boolean value: TRUE",
         "Invalid bool value: TRUE"},
        {"BOOL_HAS_PLL = 1", "Invalid boolean value: 1", "Invalid boolean value: 1", "Invalid bool value: 1"},
        {"INT_NO_SUCH = 5", "Invalid int key: INT_NO_SUCH", "Invalid int key: INT_NO_SUCH",
         "Invalid int key: INT_NO_SUCH"},
        {"INT_NUM_LABS = 0x10", "Invalid int value: 0x10", "Invalid int value: \"0x10\"", "Invalid int value: 0x10"},
        {"INT_NUM_LABS = 5 # five", "Invalid int value: 5 # five", "Invalid int value: \"5 # five\"",
         "Invalid int value: 5 # five"},
        {"ENUM_NO_SUCH = 1", "Invalid int key: ENUM_NO_SUCH", "", ""},
        {"ENUM_FAMILY = NO_SUCH_FAMILY", "Invalid int value: NO_SUCH_FAMILY", "", ""},
        {"STRING_NO_SUCH = \"x\"", "Invalid string key: STRING_NO_SUCH", "Invalid string key: STRING_NO_SUCH",
         "Invalid string key: STRING_NO_SUCH"},
        {"2D_INT_NO_SUCH = {{1}}", "Invalid 2D_INT key: 2D_INT_NO_SUCH", "Invalid 2D_INT key: 2D_INT_NO_SUCH",
         "Invalid 2D_INT key: 2D_INT_NO_SUCH"},
        {"2D_INT_PLL_LOCATIONS = {{1, x}}", "Invalid 2D_INT value: {{1, x}}", "Invalid 2D_INT value: {{1, x}}",
         "Invalid 2D_INT value: {{1, x}}"},
        {"VEC_INT_NO_SUCH = {1}", "Invalid string key: VEC_INT_NO_SUCH", "", "Invalid string key: VEC_INT_NO_SUCH"},
        {"VEC_INT_NEIGHBOUR_PINS = {1, LVDS_X, 2}", "Invalid VEC_INT value: {1, LVDS_X, 2}", "",
         "Invalid VEC_INT value: {1, LVDS_X, 2}"},
        {"VEC_DOUBLE_NO_SUCH = {1}", "Invalid string key: VEC_DOUBLE_NO_SUCH", "",
         "Invalid string key: VEC_DOUBLE_NO_SUCH"},
        {"VEC_DOUBLE_ROW_OFFSETS_MM = {1., 2}", "Invalid VEC_DOUBLE value: {1., 2}", "",
         "Invalid VEC_DOUBLE value: {1., 2}"},
        {"VEC_STRING_NO_SUCH = {a}", "Invalid string key: VEC_STRING_NO_SUCH", "Invalid string key: VEC_STRING_NO_SUCH",
         ""},
        {"VEC_STRING_BANK_NAMES = {\"open, b}", "Invalid VEC_STRING value: {\"open, b}",
         "Invalid VEC_STRING value: {\"open, b}", ""},
        // Lines that are no attribute line of any kind.
        {"STRING_COMMENT = \"say \"hi\"\"", "unmatched", "unmatched", "unmatched"},
        {"VEC_STRING_BANK_NAMES = a, b", "unmatched", "unmatched", "unmatched"},
        {"BOOL_HAS_PLL = true extra", "unmatched", "unmatched", "unmatched"},
    };
    for (const CASE& c : cases) {
        const char* wording[] = {c.hdr, c.pad, c.pkg};
        const DEV_ATTRIBUTE_FORMAT* formats[] = {&DEV_ATTRIBUTE_FORMAT::hdr(), &DEV_ATTRIBUTE_FORMAT::pad(),
                                                 &DEV_ATTRIBUTE_FORMAT::pkg()};
        for (int f = 0; f < 3; ++f) {
            SCOPED_TRACE(std::string(c.line) + " / format " + std::to_string(f));
            TEST_RECORD record;
            std::vector<std::string> problems = read_text(*formats[f], c.line, record);
            ASSERT_EQ(1u, problems.size());
            const std::string expected = wording[f];
            if (expected.empty() || expected == "unmatched")
                EXPECT_EQ(std::string("unmatched: ") + c.line, problems[0]);
            else
                EXPECT_EQ(expected, problems[0]);
            EXPECT_EQ("", dump(record));
        }
    }
    EXPECT_TRUE(errors().empty());  // the readers, not the tables, report these
}

TEST_F(AttrLines, FormatPatternVariants) {
    TEST_RECORD record;
    // PKG allows no blanks after a BOOL value; the other formats do.
    EXPECT_EQ(std::vector<std::string>{"unmatched: BOOL_HAS_PLL = true "},
              read_text(DEV_ATTRIBUTE_FORMAT::pkg(), "BOOL_HAS_PLL = true ", record));
    EXPECT_TRUE(read_text(DEV_ATTRIBUTE_FORMAT::pkg(), "  BOOL_HAS_PLL =true", record).empty());
    EXPECT_TRUE(read_text(DEV_ATTRIBUTE_FORMAT::pad(), "  BOOL_HAS_DLL = false  ", record).empty());
    EXPECT_TRUE(read_text(DEV_ATTRIBUTE_FORMAT::part_info(), "ENUM_TEMPERATURE = 4", record).empty());
    EXPECT_EQ("BOOL_HAS_PLL = true\nBOOL_HAS_DLL = false\nENUM_TEMPERATURE = " +
                  std::string(dstr_table_dev_temperature_enum().debug_string(4)) + "\n",
              dump(record));
    // Formats without a kind do not read it: PAD has no ENUM lines, RSI no vectors.
    EXPECT_EQ(std::vector<std::string>{"unmatched: ENUM_FAMILY = 4"},
              read_text(DEV_ATTRIBUTE_FORMAT::pad(), "ENUM_FAMILY = 4", record));
    EXPECT_EQ(std::vector<std::string>{"unmatched: VEC_INT_NEIGHBOUR_PINS = {1}"},
              read_text(DEV_ATTRIBUTE_FORMAT::rsi(), "VEC_INT_NEIGHBOUR_PINS = {1}", record));
    // A later line with the same key overwrites the value.
    EXPECT_TRUE(read_text(DEV_ATTRIBUTE_FORMAT::hdr(), "INT_NUM_LABS = 1\nINT_NUM_LABS = 2", record).empty());
    EXPECT_EQ(2, record.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS));
}

TEST_F(AttrLines, TwoDimensionalContinuationEndsAtTheFirstOtherLine) {
    TEST_RECORD record;
    // "{" followed directly by a line that does not continue it: an empty array, and the
    // line is read normally.
    EXPECT_TRUE(read_text(DEV_ATTRIBUTE_FORMAT::hdr(), "2D_INT_PLL_LOCATIONS = {\nINT_NUM_LABS = 3", record)
                    .empty());
    EXPECT_TRUE(record.is_valid_2d_int_enum(DEV_BASIC_INFO_2D_INT_PLL_LOCATIONS));
    EXPECT_TRUE(record.get_2d_int_data(DEV_BASIC_INFO_2D_INT_PLL_LOCATIONS).empty());
    EXPECT_EQ(3, record.get_int_data(DEV_BASIC_INFO_INT_NUM_LABS));
    // Rows up to the end of the input; a bad element reports the gathered text.
    EXPECT_EQ(std::vector<std::string>{"Invalid 2D_INT value: {{ 1 }{ q }}"},
              read_text(DEV_ATTRIBUTE_FORMAT::hdr(), "2D_INT_DLL_LOCATIONS = {\n{ 1 }\n  { q }}", record));
    EXPECT_FALSE(record.is_valid_2d_int_enum(DEV_BASIC_INFO_2D_INT_DLL_LOCATIONS));
    EXPECT_TRUE(read_text(DEV_ATTRIBUTE_FORMAT::hdr(), "2D_INT_DLL_LOCATIONS = {\n{ 1 }\n  { 2 3 }}", record)
                    .empty());
    EXPECT_EQ((DEV_2D_INT_ARRAY{{1}, {2, 3}}), record.get_2d_int_data(DEV_BASIC_INFO_2D_INT_DLL_LOCATIONS));
}

}  // namespace
