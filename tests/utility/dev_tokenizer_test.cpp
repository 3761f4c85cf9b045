// DEV_TOKENIZER flags and DEV_STRTOK with and without merging of delimiters.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dev_utility.h"

namespace {

using V = std::vector<std::string>;

V tokens(DEV_TOKENIZER& t) {
    V out;
    std::string token;
    while (t(token)) out.push_back(token);
    EXPECT_EQ(token, "");  // cleared by the failing call
    return out;
}

TEST(DevTokenizer, FlagsAndRestart) {
    DEV_TOKENIZER t;
    t.init(std::string(",a,,b,"), std::string(","), false, false);
    EXPECT_EQ(tokens(t), (V{"a", "b"}));
    t.restart();
    EXPECT_EQ(tokens(t), (V{"a", "b"}));
    // Empty tokens between delimiters, none after the final delimiter.
    t.init(",a,,b,", ",", true, false);
    EXPECT_EQ(tokens(t), (V{"", "a", "", "b"}));
    // The closing delimiter stays on the token; the last token has none.
    t.init(std::string("a,,b;c"), ",;", true, true);
    EXPECT_EQ(tokens(t), (V{"a,", ",", "b;", "c"}));
    t.init("a,,b", ",", false, true);
    EXPECT_EQ(tokens(t), (V{"a,", "b"}));
    t.init("   ", " ", false, false);
    EXPECT_TRUE(tokens(t).empty());
}

V strtok_all(DEV_STRTOK& t, char* s) {
    V out;
    t.set_string(s);
    for (char* token = t.get_token(); token; token = t.get_token()) out.push_back(token);
    return out;
}

TEST(DevStrtok, MergingAndEmptyTokens) {
    DEV_STRTOK single(", ", false);
    char text[] = ",a,,b c";
    EXPECT_EQ(strtok_all(single, text), (V{"", "a", "", "b", "c"}));
    EXPECT_EQ(std::string(text, sizeof text - 1), std::string("\0a\0\0b\0c", 7));
    char trailing[] = "a,,";  // an empty token at the end ends the scan
    EXPECT_EQ(strtok_all(single, trailing), (V{"a"}));

    DEV_STRTOK merged(", ", true);
    char text2[] = ",a, ,b,";
    EXPECT_EQ(strtok_all(merged, text2), (V{"", "a", "b"}));

    DEV_STRTOK high("\xE9,", false);  // only 7-bit characters can be delimiters
    char text3[] = "a\xE9" "b,c";
    EXPECT_EQ(strtok_all(high, text3), (V{"a\xE9" "b", "c"}));
}

}  // namespace
