// Number, boolean and letter conversions, the line reader, list parsers and the value
// converters over symbolic value names.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_utility.h"
#include "host/astr_value_names.h"

namespace {

TEST(DevStrings, LettersNumbersAndBooleans) {
    const char* expected[][2] = {{"A", "0"}, {"Z", "25"}, {"AA", "26"}, {"AZ", "51"}, {"BA", "52"}, {"BZ", "77"}};
    for (auto& e : expected) EXPECT_STREQ(dev_number_to_letters(std::atoi(e[1])), e[0]);
    for (int n = 0; n < 78; ++n) EXPECT_EQ(dev_letters_to_number(dev_number_to_letters(n)), n + 1);
    EXPECT_EQ(dev_letters_to_number("ab"), 28);
    EXPECT_EQ(dev_letters_to_number("1"), -15);

    for (const char* s : {"", "-12", "5-3", "--", "12-"}) EXPECT_TRUE(dev_string_is_integer(s)) << s;
    for (const char* s : {"+3", "1.0", " 1"}) EXPECT_FALSE(dev_string_is_integer(s)) << s;
    int v = 99;
    EXPECT_TRUE(dev_string_to_int("12-", v));
    EXPECT_EQ(v, 12);
    EXPECT_FALSE(dev_string_to_int("+3", v));
    EXPECT_EQ(v, 12);

    bool b = false;
    EXPECT_TRUE(dev_string_to_bool("true", b) && b);
    EXPECT_TRUE(dev_string_to_bool("false", b) && !b);
    for (const char* s : {"TRUE", "1", ""}) EXPECT_FALSE(dev_string_to_bool(s, b)) << s;
}

TEST(DevStrings, FloatStateMachine) {
    for (const char* s : {"1.5", "-2", "+7", "1e5", "1.E-3", "3D2", "2d+1", " \t7  ", "1.5  "})
        EXPECT_TRUE(dev_string_is_float(s)) << s;
    for (const char* s : {"", "+", "1.", ".5", "1e", "1e+", "1.5x", "1 2", "1.2.3", "1e5.0"})
        EXPECT_FALSE(dev_string_is_float(s)) << s;
}

TEST(DevStrings, ChompAndGetline) {
    std::string s = "a\n\nb\n\n\n";
    dev_string_chomp(s, '\n');
    EXPECT_EQ(s, "a\n\nb");
    FILE* f = std::tmpfile();
    ASSERT_NE(f, nullptr);
    std::fputs("one\n\ntwo", f);
    std::rewind(f);
    std::vector<std::string> lines;
    while (dev_getline(s, f, '\n')) lines.push_back(s);
    std::fclose(f);
    EXPECT_EQ(lines, (std::vector<std::string>{"one\n", "\n", "two"}));
}

TEST(DevStrings, ListParsers) {
    std::vector<double> d;
    EXPECT_TRUE(dev_string_to_vec_double("{1.5, 2, 3e2}", d));
    EXPECT_EQ(d, (std::vector<double>{1.5, 2, 300}));
    EXPECT_FALSE(dev_string_to_vec_double("1 x 3", d));
    EXPECT_EQ(d, (std::vector<double>{1, -1.0}));

    std::vector<int> v;
    EXPECT_TRUE(dev_string_to_vec_int("{1, -2 3}", v));
    EXPECT_EQ(v, (std::vector<int>{1, -2, 3}));
    EXPECT_FALSE(dev_string_to_vec_int("{1, 2.5, 3}", v));
    EXPECT_EQ(v, (std::vector<int>{1}));

    using V = std::vector<std::string>;
    V s;
    EXPECT_TRUE(dev_string_to_vec_string(R"({"a, b", c, "{x}", ""})", s));
    EXPECT_EQ(s, (V{"a, b", "c", "{x}", ""}));
    EXPECT_TRUE(dev_string_to_vec_string("a b", s));  // the last element needs a closer
    EXPECT_EQ(s, (V{"a"}));
    EXPECT_FALSE(dev_string_to_vec_string(R"({"a, b})", s));
}

// Key 3 names FAST = 2; key 7 names LOW = 0 at (0, 1) and HIGH = 9 at (1, 0) only.
class TestNames : public ASTR_NO_VALUE_NAMES {
    using CELL = std::vector<int>;
    std::map<std::string, CELL> m_names{{"FAST", {3, -1, -1, 2}}, {"LOW", {7, 0, 1, 0}}, {"HIGH", {7, 1, 0, 9}}};

    const CELL* find(const std::string& name, int key, int row, int column) const {
        auto it = m_names.find(name);
        if (it == m_names.end()) return nullptr;
        const CELL& c = it->second;
        return c[0] == key && c[1] == row && c[2] == column ? &c : nullptr;
    }

public:
    bool exists_enum_data_by_string(int key, const std::string& n) const override { return find(n, key, -1, -1); }
    int get_enum_data_by_string(int key, const std::string& n) const override { return find(n, key, -1, -1)->at(3); }
    bool exists_enum_data_by_string(int key, int row, int col, const std::string& n) const override {
        return find(n, key, row, col);
    }
    int get_enum_data_by_string(int key, int row, int col, const std::string& n) const override {
        return find(n, key, row, col)->at(3);
    }
    std::string get_enum_data_name(int key, int row, int col, int value) const override {
        for (const auto& e : m_names)
            if (find(e.first, key, row, col) && e.second[3] == value) return e.first;
        return "";
    }
};

TEST(DevValueConverters, IntOrEnum) {
    TestNames names;
    int v = 5;
    EXPECT_TRUE(dev_string_to_int_or_enum(names, 3, "-12", &v));
    EXPECT_EQ(v, -12);
    EXPECT_TRUE(dev_string_to_int_or_enum(names, 3, "FAST", &v));
    EXPECT_EQ(v, 2);
    EXPECT_FALSE(dev_string_to_int_or_enum(names, 4, "FAST", &v));
    EXPECT_EQ(v, 2);
}

TEST(DevValueConverters, TwoDimensionalParseAndPrint) {
    TestNames names;
    DEV_2D_INT_ARRAY a;
    EXPECT_TRUE(dev_string_to_2d_int(names, 7, "{{1, 2, 3}, {4, 5}}", &a));
    EXPECT_EQ(a, (DEV_2D_INT_ARRAY{{1, 2, 3}, {4, 5}}));
    std::string text;
    dev_2d_int_to_string(names, 7, a, " ", &text);
    EXPECT_EQ(text, "{ { 1 2 3 } { 4 5 }}");
    EXPECT_TRUE(dev_string_to_2d_int(names, 7, text, &a));
    EXPECT_EQ(a, (DEV_2D_INT_ARRAY{{1, 2, 3}, {4, 5}}));

    // Names hold per row and column, in both directions.
    const DEV_2D_INT_ARRAY named{{1, 0}, {9, 9}, {}};
    dev_2d_int_to_string(names, 7, named, "\t", &text);
    EXPECT_EQ(text, "{\t{ 1 LOW }\t{ HIGH 9 }\t{ }}");
    EXPECT_TRUE(dev_string_to_2d_int(names, 7, text, &a));
    EXPECT_EQ(a, named);

    EXPECT_TRUE(dev_string_to_2d_int(names, 7, "{1, 2}", &a));  // one brace level
    EXPECT_TRUE(a.empty());
    // HIGH is no name at (0, 1): the row ends with -1, later rows stay unparsed.
    EXPECT_FALSE(dev_string_to_2d_int(names, 7, "{{2, HIGH, 3}, {1}}", &a));
    EXPECT_EQ(a, (DEV_2D_INT_ARRAY{{2, -1}, {}}));
}

class DevUtilityErrors : public CaptureTest {};

TEST_F(DevUtilityErrors, InternalErrorTexts) {
    TestNames names;
    EXPECT_STREQ(dev_number_to_letters(78), "A");  // indexed modulo the table size
    EXPECT_STREQ(dev_number_to_letters(-1), "BZ");
    EXPECT_FALSE(dev_string_to_int_or_enum(names, 3, "1", nullptr));
    EXPECT_FALSE(dev_string_to_2d_int(names, 7, "{{1}}", nullptr));
    std::string text;
    dev_2d_int_to_string(names, 7, DEV_2D_INT_ARRAY{}, nullptr, &text);
    EXPECT_EQ(errors(), (std::vector<std::string>{"number >=0 && number < 78", "number >=0 && number < 78",
                                                  "int_value != NULL", "int_2d_result != NULL",
                                                  "space_str != NULL && str_result != NULL"}));
    EXPECT_EQ(capture().records().at(0).source, "ddb/dev/dev_utility");
}

}  // namespace
