// DEV_REGEXP: escape translation, anchored match and groups, search, replace.
#include <gtest/gtest.h>

#include <string>

#include "capture_fixture.h"
#include "dev_utility.h"

namespace {

const size_t npos = std::string::npos;

std::string group(const DEV_REGEXP& re, int i) {
    std::string out = "stale";
    re.group(i, out);
    return out;
}

TEST(DevRegexp, TranslationOutsideAndInsideBrackets) {
    EXPECT_EQ(DEV_REGEXP(R"(\d\D\w\W\s\S\(\)\\\.)").engine_pattern(),
              std::string("[0-9][^0-9][a-zA-Z0-9_][^a-zA-Z0-9_][ \t\n\r\f][^ \t\n\r\f]()") + R"(\\\.)");
    EXPECT_EQ(DEV_REGEXP(R"(\d+)", false).engine_pattern(), R"(\d+)");
    // In brackets classes lose their brackets, negations vanish; "]" ends the bracket,
    // an escaped "]" does not.
    EXPECT_EQ(DEV_REGEXP(R"([\d\D\w\W\s\S\(\\])").engine_pattern(),
              std::string("[0-9a-zA-Z0-9_ \t\n\r\f(") + R"(\\])");
    EXPECT_EQ(DEV_REGEXP(R"([\]\d]\d)").engine_pattern(), R"([\]0-9][0-9])");

    DEV_REGEXP space_only(R"([\s\S]+)");  // the dropped "\S" leaves white space only
    EXPECT_TRUE(space_only.match(" \t"));
    EXPECT_FALSE(space_only.match("x"));
    DEV_REGEXP grouping(R"(\(\w+\)=(\d+))");  // "\(" groups like "("
    ASSERT_TRUE(grouping.match("ab=12"));
    EXPECT_EQ(grouping.groups(), 2u);
    EXPECT_EQ(group(grouping, 1), "ab");
}

TEST(DevRegexp, AnchoredMatchAndGroups) {
    DEV_REGEXP re(R"(^\s*(INT_\w+)\s*=\s*(.+?)\s*$)");
    std::string line = "  INT_WIDTH = 42  ";
    ASSERT_TRUE(re.match(line));
    EXPECT_EQ(re.characters_matched(), 18);
    line.assign("changed by the caller");  // groups are cut from the stored copy
    EXPECT_EQ(group(re, 1), "INT_WIDTH");
    EXPECT_EQ(group(re, 2), "42");
    EXPECT_EQ(re.group_begin(2), 14u);
    EXPECT_EQ(re.group_end(2), 16u);
    EXPECT_EQ(re.group_size(1), 9u);
    EXPECT_FALSE(re.match("# INT_WIDTH = 1"));
    EXPECT_EQ(re.characters_matched(), -1);
    EXPECT_EQ(group(re, 1), "");

    DEV_REGEXP word(R"(\w+)");  // anchored at `begin`, limited by `end`
    EXPECT_FALSE(word.match("  abc", 0));
    ASSERT_TRUE(word.match("  abc", 2, 4));
    EXPECT_EQ(word.characters_matched(), 2);

    DEV_REGEXP optional("(a)(b)?c");  // a group that took no part
    ASSERT_TRUE(optional.match("ac"));
    EXPECT_EQ(group(optional, 2), "");
    EXPECT_EQ(optional.group_begin(2), npos);
    EXPECT_EQ(optional.group_end(2), npos);
    EXPECT_EQ(optional.group_size(2), 0u);

    DEV_REGEXP copy(re);  // a copy keeps its own groups
    ASSERT_TRUE(copy.match("INT_A = 7"));
    EXPECT_FALSE(re.match("x"));
    EXPECT_EQ(group(copy, 1), "INT_A");
}

class DevRegexpSearch : public CaptureTest {};

TEST_F(DevRegexpSearch, FindsFixesGroupsAndIgnoresEmptyMatches) {
    DEV_REGEXP re(R"((\d+)-(\d+))");
    std::string matched;
    ASSERT_TRUE(re.search("pins 12-34 here", matched));
    EXPECT_EQ(matched, "12-34");
    EXPECT_EQ(re.characters_matched(), 5);
    EXPECT_EQ(re.group_begin(1), 5u);
    EXPECT_EQ(group(re, 2), "34");
    EXPECT_FALSE(re.search("pins 12-34 here", 11));
    EXPECT_EQ(re.characters_matched(), -1);

    DEV_REGEXP empty_only("x*");
    EXPECT_FALSE(empty_only.search("abc"));
    EXPECT_EQ(empty_only.characters_matched(), -1);
    EXPECT_TRUE(errors().empty());
}

TEST_F(DevRegexpSearch, FailedRematchIsReported) {
    // "a$" is found within [0, 1) but does not match at 0 in the whole string.
    DEV_REGEXP re("a$");
    EXPECT_TRUE(re.search("ab", 0, 1));
    EXPECT_EQ(errors(), std::vector<std::string>{"this->match(s, r.begin())"});
}

TEST(DevRegexp, ReplaceWithGroupsRegionAndGlobalFlag) {
    DEV_REGEXP re(R"((\w+)=(\d+))");
    std::string s = "a=1, b=22, c=3";
    EXPECT_EQ(re.replace(s, 0, npos, R"(\2:\1)", true), 3);
    EXPECT_EQ(s, "1:a, 22:b, 3:c");
    s = "a=1, b=22, c=3";
    EXPECT_EQ(re.replace(s, 0, npos, std::string(R"(\2:\1)"), false), 1);
    EXPECT_EQ(s, "1:a, b=22, c=3");
    s = "a=1, b=22, c=3";  // only "b=22" lies inside [5, 10)
    EXPECT_EQ(re.replace(s, 5, 5, "<\\1>", true), 1);
    EXPECT_EQ(s, "a=1, <b>, c=3");
    // "\\" stays doubled, other escapes are kept, a missing group is empty.
    s = "k=5";
    EXPECT_EQ(re.replace(s, 0, npos, R"(\\|\t|\7|\)", true), 1);
    EXPECT_EQ(s, R"(\\|\t||\)");
    s = "none";
    EXPECT_EQ(re.replace(s, 0, npos, "x", true), 0);
    EXPECT_EQ(s, "none");
}

}  // namespace
