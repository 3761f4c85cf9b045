// DEV_ENUM_FLAG: bits across word boundaries, iteration, comparison and bad values.
#include <gtest/gtest.h>

#include <vector>

#include "capture_fixture.h"
#include "dev_enum_flag.h"

namespace {

using FLAG = DEV_FAMILY_TRAIT_FLAG;

std::vector<int> bits_of(const FLAG& f) {
    std::vector<int> out;
    for (DEV_FAMILY_TRAIT_ENUM t : f) out.push_back(t);
    return out;
}

FLAG with(std::initializer_list<int> bits) {
    FLAG f;
    for (int b : bits) f.set(static_cast<DEV_FAMILY_TRAIT_ENUM>(b));
    return f;
}

TEST(EnumFlag, SetTestClearAcrossWords) {
    FLAG f = with({0, 63, 64, 127, 128, 162});
    EXPECT_EQ(bits_of(f), (std::vector<int>{0, 63, 64, 127, 128, 162}));
    EXPECT_EQ(f.count(), 6u);
    EXPECT_FALSE(f.test(DEV_FAMILY_TRAIT_FITTER_ECO));
    f.set(DEV_FAMILY_TRAIT_FITTER_ECO);
    f.set(DEV_FAMILY_TRAIT_FITTER_ECO);
    EXPECT_TRUE(f.test(DEV_FAMILY_TRAIT_FITTER_ECO));
    EXPECT_EQ(f.count(), 7u);
    f.clear(static_cast<DEV_FAMILY_TRAIT_ENUM>(64));
    EXPECT_FALSE(f.test(static_cast<DEV_FAMILY_TRAIT_ENUM>(64)));
    EXPECT_TRUE(f.test(static_cast<DEV_FAMILY_TRAIT_ENUM>(63)));
    EXPECT_EQ(bits_of(f), (std::vector<int>{0, 51, 63, 127, 128, 162}));
    f.clear_all();
    EXPECT_TRUE(f.none());
    EXPECT_TRUE(bits_of(f).empty());
}

TEST(EnumFlag, ComparisonAndCombination) {
    FLAG a = with({4, 151}), b = with({151, 4}), c = with({4});
    EXPECT_EQ(a, b);
    EXPECT_NE(a, c);
    EXPECT_TRUE(a.contains(c));
    EXPECT_FALSE(c.contains(a));
    c |= with({100});
    EXPECT_EQ(bits_of(c), (std::vector<int>{4, 100}));
    c &= a;
    EXPECT_EQ(c, with({4}));
}

TEST(EnumFlag, WordsRoundTripAndDropBitsBeyondTheSize) {
    FLAG f = with({1, 70, 162});
    FLAG g;
    for (unsigned i = 0; i < FLAG::word_count(); ++i) g.set_word(i, f.get_word(i));
    EXPECT_EQ(f, g);
    g.set_word(FLAG::word_count() - 1, ~uint64_t(0));
    EXPECT_EQ(g.count(), 2u + (163 - 128));
    EXPECT_EQ(bits_of(g).back(), 162);
}

class EnumFlagReports : public CaptureTest {};

TEST_F(EnumFlagReports, ValueOutsideTheSetIsReportedAndIgnored) {
    DEV_PART_TRAIT_FLAG f;
    f.set(static_cast<DEV_PART_TRAIT_ENUM>(35));
    f.set(static_cast<DEV_PART_TRAIT_ENUM>(-1));
    EXPECT_FALSE(f.test(static_cast<DEV_PART_TRAIT_ENUM>(35)));
    EXPECT_TRUE(f.none());
    EXPECT_EQ(errors(), std::vector<std::string>(3, "value >= 0 && value < BITS"));
    f.set(DEV_PART_TRAIT_GENERIC);  // the last bit of the set
    EXPECT_TRUE(f.test(DEV_PART_TRAIT_GENERIC));
    EXPECT_EQ(errors().size(), 3u);
}

}  // namespace
