// The HDR reader matches some lines without the regular-expression engine (a line whose first
// word lacks a kind's key prefix is refused at once; the lines of a 2D table are checked by
// hand). On any line the outcome must be the plain patterns' one.
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_basic_info_body.h"
#include "dev_utility.h"

namespace {

using HdrLineMatching = CaptureTest;

std::string random_line(std::mt19937& rng, const std::vector<std::string>& pieces, int most) {
    std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
    std::string line;
    for (int n = std::uniform_int_distribution<int>(0, most)(rng); n > 0; --n) line += pieces[pick(rng)];
    return line;
}

// Outside blocks a line that none of the attribute, comment and blank patterns matches is a
// syntax error, and only such a line.
TEST_F(HdrLineMatching, TopLevelLinesAreSyntaxErrorsExactlyWhenNoPatternMatches) {
    const std::vector<std::string> pieces = {" ", "\t", "\f", "\v", "\r", "BOOL_", "INT_", "ENUM_", "STRING_",
                                             "2D_INT_", "X", "=", "true", "\"s\"", "{1, 2}", "7", "2D_", "_"};
    std::vector<DEV_REGEXP> patterns;
    for (const char* p : {R"P(^\s*(BOOL_\w+)\s*=\s*(\w+)\s*$)P", R"P(^\s*(STRING_\w+)\s*=\s*"([^"]*)"\s*$)P",
                          R"P(^\s*(INT_\w+)\s*=\s*(.+?)\s*$)P", R"P(^\s*(ENUM_\w+)\s*=\s*(.+?)\s*$)P",
                          R"P(^\s*(2D_INT_\w+)\s*=\s*(.+?)\s*$)P", R"P(^\s*#.*$)P", R"P(^\s*$)P"})
        patterns.emplace_back(p);
    std::mt19937 rng(7);
    std::string text;
    std::set<int> unmatched;
    const int lines = 20000;
    for (int n = 1; n <= lines; ++n) {
        std::string line = random_line(rng, pieces, 8);
        if (n % 3 == 0) line += " = 1";
        bool matched = false;
        for (DEV_REGEXP& pattern : patterns) matched = matched || pattern.match(line);
        if (!matched) unmatched.insert(n);
        text += line + "\n";
    }
    TempDir dir;
    DEV_BASIC_INFO_BODY body;
    body.read_hdr_file(FIO_PATH(dir.write("lines.hdr", text)));
    std::set<int> syntax_errors;
    const std::string prefix = "Syntax error in file lines.hdr, line ";
    for (const std::string& error : errors())
        if (error.rfind(prefix, 0) == 0) syntax_errors.insert(std::stoi(error.substr(prefix.size())));
    EXPECT_EQ(syntax_errors, unmatched);
    EXPECT_GT(lines - static_cast<int>(unmatched.size()), 1000);  // the lines do reach the patterns
}

// A 2D value written as "{" gathers the next line when the continuation pattern matches it,
// with the pattern's group; otherwise the line is read on its own.
TEST_F(HdrLineMatching, TableLinesAreGatheredExactlyAsThePatternSays) {
    const std::vector<std::string> pieces = {" ", "\t", "\f", "\v", "\r", "{", "}", "{{", "}}", "1", "a", ", "};
    const std::vector<std::string> blanks = {" ", "\t", "\f", "\v", "\r"};
    DEV_REGEXP continuation(R"P(^\s*(\{\{?.+\}\}?)\s*$)P");
    std::mt19937 rng(11);
    TempDir dir;
    int gathered = 0;
    for (int round = 0; round < 2000; ++round) {
        // Every other line is shaped like a table row, so that many do continue the value.
        std::string line = random_line(rng, pieces, 9);
        if (round % 2 == 0) line = random_line(rng, blanks, 2) + "{" + line + "}" + random_line(rng, blanks, 2);
        // A last line that always continues the value and makes it invalid, so that the
        // report shows what was gathered.
        const std::string path = dir.write("table.hdr", "2D_INT_CONFIG_FRAME_MAP = {\n" + line + "\n{ x }}\n");
        clear_reports();
        DEV_BASIC_INFO_BODY body;
        body.read_hdr_file(FIO_PATH(path));
        std::string value_error;
        for (const std::string& error : errors())
            if (error.rfind("Invalid 2D_INT value: ", 0) == 0) value_error = error;
        if (continuation.match(line)) {
            std::string group;
            continuation.group(1, group);
            EXPECT_EQ(value_error, "Invalid 2D_INT value: {" + group + "{ x }}") << "[" << line << "]";
            ++gathered;
        } else {
            EXPECT_EQ(value_error.find("x }}"), std::string::npos) << "[" << line << "]";
        }
    }
    EXPECT_GT(gathered, 500);
}

}  // namespace
