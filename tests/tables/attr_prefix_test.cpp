// Line matching that does without the regular-expression engine (lines whose first word lacks
// a kind's key prefix; lines of 2D tables) must give the plain pattern's outcome on any line.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "ddb/dev/dev_attribute_syntax.h"
#include "dev_utility.h"

TEST(AttributeLinePrefix, SameOutcomeAsThePatternOnAnyLine) {
    const std::vector<std::string> pieces = {" ", "\t", "\f", "\v", "\r", "\n", "BOOL_", "INT_", "ENUM_",
                                             "STRING_", "2D_INT_", "VEC_INT_", "VEC_DOUBLE_", "VEC_STRING_",
                                             "X", "=", "true", "\"s\"", "{1, 2}", "7", "VEC_", "2D_", "_"};
    std::mt19937 rng(7);
    std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> count(0, 8);
    const DEV_ATTRIBUTE_FORMAT* formats[] = {&DEV_ATTRIBUTE_FORMAT::hdr(), &DEV_ATTRIBUTE_FORMAT::pad(),
                                             &DEV_ATTRIBUTE_FORMAT::pkg(), &DEV_ATTRIBUTE_FORMAT::part_info()};
    for (const DEV_ATTRIBUTE_FORMAT* format : formats) {
        DEV_ATTRIBUTE_SYNTAX syntax(*format);
        std::vector<DEV_REGEXP> plain(ASTR_KIND_COUNT);
        for (int k = 0; k < ASTR_KIND_COUNT; ++k)
            if (format->pattern[k]) plain[k].pattern(format->pattern[k]);
        int matched = 0;
        for (int round = 0; round < 20000; ++round) {
            std::string line;
            for (int n = count(rng); n > 0; --n) line += pieces[pick(rng)];
            if (round % 3 == 0) line += " = 1";
            for (int k = 0; k < ASTR_KIND_COUNT; ++k) {
                if (!format->pattern[k]) continue;
                const bool expected = plain[k].match(line);
                ASSERT_EQ(syntax.match(static_cast<ASTR_KIND>(k), line), expected)
                    << "kind " << k << " line [" << line << "]";
                matched += expected;
            }
        }
        EXPECT_GT(matched, 100);  // the random lines do reach the patterns
    }
}

// Lines of a 2D table are matched without the engine; group and outcome must be the pattern's.
TEST(AttributeLinePrefix, ContinuationLinesAsThePatternOnAnyLine) {
    const std::vector<std::string> pieces = {" ", "\t", "\f", "\v", "\r", "\n", "{", "}", "{{", "}}", "1", "a", ", "};
    std::mt19937 rng(11);
    std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> count(0, 9);
    DEV_REGEXP pattern(DEV_2D_CONTINUATION_PATTERN);
    int matched = 0;
    for (int round = 0; round < 50000; ++round) {
        std::string line;
        for (int n = count(rng); n > 0; --n) line += pieces[pick(rng)];
        size_t begin = 0, end = 0;
        const bool expected = pattern.match(line);
        ASSERT_EQ(dev_2d_continuation_group(line, &begin, &end), expected) << "[" << line << "]";
        if (!expected) continue;
        ++matched;
        ASSERT_EQ(begin, pattern.group_begin(1)) << "[" << line << "]";
        ASSERT_EQ(end, pattern.group_end(1)) << "[" << line << "]";
    }
    EXPECT_GT(matched, 1000);
}
