// Hash table, bit vector and regular-expression engine of the host.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/vtl_bool_vector.h"
#include "host/vtl_hash.h"
#include "host/vtl_regexp.h"

TEST(VtlHash, IntegerKeysIterateInBucketOrderAndSurviveGrowth) {
    VTL_HASH<unsigned, int> h(61);
    // 1 and 62 share bucket 1; 2 lies in bucket 2: iteration is bucket by bucket, each chain
    // by hash value, whatever the order of insertion.
    EXPECT_TRUE(h.insert(62, 620));
    EXPECT_TRUE(h.insert(2, 20));
    EXPECT_TRUE(h.insert(1, 10));
    EXPECT_FALSE(h.insert(1, 11));
    std::vector<unsigned> order;
    h.for_each([&](unsigned k, int) { order.push_back(k); });
    EXPECT_EQ(order, (std::vector<unsigned>{1, 62, 2}));
    EXPECT_EQ(*h.find(1), 10);
    VTL_HASH<unsigned, int> other(61);
    for (unsigned k : {2u, 1u, 62u}) other.insert(k, 0);
    std::vector<unsigned> other_order;
    other.for_each([&](unsigned k, int) { other_order.push_back(k); });
    EXPECT_EQ(other_order, order);

    for (unsigned k = 100; k < 1100; ++k) h.set(k, static_cast<int>(k) * 2);
    EXPECT_GT(h.bucket_count(), 61u);
    EXPECT_EQ(h.size(), 1003u);
    for (unsigned k = 100; k < 1100; ++k) ASSERT_EQ(*h.find(k), static_cast<int>(k) * 2);
    EXPECT_EQ(*h.find(62), 620);
}

TEST(VtlHash, EraseReusesNodesAndKeepsOtherEntries) {
    VTL_HASH<std::string, int> h(7);
    for (int i = 0; i < 50; ++i) h.set("k" + std::to_string(i), i);
    for (int i = 0; i < 50; i += 2) EXPECT_TRUE(h.erase("k" + std::to_string(i)));
    EXPECT_FALSE(h.erase("k0"));
    EXPECT_EQ(h.size(), 25u);
    for (int i = 0; i < 50; ++i) EXPECT_EQ(h.contains("k" + std::to_string(i)), i % 2 == 1) << i;
    h["fresh"] = 7;
    EXPECT_EQ(*h.find("fresh"), 7);
    int count = 0;
    h.for_each([&](const std::string&, int) { ++count; });
    EXPECT_EQ(count, 26);
}

TEST(VtlHash, NoCaseKeys) {
    VTL_HASH<std::string, unsigned, VTL_HASH_NOCASE> h(61);
    EXPECT_TRUE(h.insert("Pin_A1", 3));
    EXPECT_FALSE(h.insert("PIN_a1", 4));
    ASSERT_NE(h.find("pin_a1"), nullptr);
    EXPECT_EQ(*h.find("PIN_A1"), 3u);
    EXPECT_EQ(h.find("PIN_A2"), nullptr);
}

TEST(VtlBoolVector, BitsAcrossWordsAndOutOfRange) {
    VTL_BOOL_VECTOR v(130);
    v.set_value(0, true);
    v.set_value(63, true);
    v.set_value(64, true);
    v.set_value(129, true);
    v.set_value(130, true);  // outside: ignored
    EXPECT_TRUE(v.get_value(63));
    EXPECT_TRUE(v.get_value(64));
    EXPECT_FALSE(v.get_value(65));
    EXPECT_FALSE(v.get_value(130));
    EXPECT_FALSE(v.get_value(static_cast<size_t>(-1)));
    EXPECT_EQ(v.count(), 4u);
    v.set_value(63, false);
    EXPECT_EQ(v.count(), 3u);
    VTL_BOOL_VECTOR w(130);
    EXPECT_NE(v, w);
    w.set_value(0, true);
    w.set_value(64, true);
    w.set_value(129, true);
    EXPECT_EQ(v, w);
}

TEST(VtlRegexp, AnchoredMatchSearchAndGroups) {
    VTL_REGEXP re("(\\w+)\\s*=\\s*(\\d+)?");
    ASSERT_TRUE(re.is_valid());
    EXPECT_EQ(re.groups(), 2u);
    EXPECT_EQ(re.match(std::string("abc = 12 rest")), 8);
    EXPECT_EQ(re.group(1).begin(), 0u);
    EXPECT_EQ(re.group(1).end(), 3u);
    EXPECT_EQ(re.group(2).begin(), 6u);
    // Anchored: no match when the text starts elsewhere.
    EXPECT_EQ(re.match(std::string("  abc = 1")), -1);
    EXPECT_TRUE(re.group(1).empty());
    // Anchored at a start offset, bounded by an end offset.
    EXPECT_EQ(re.match(std::string("  abc = 123"), 2, 10), 8);  // "abc = 12"
    VTL_RANGE r = re.search(std::string("-- key=5 --"));
    EXPECT_EQ(r.begin(), 3u);
    EXPECT_EQ(r.end(), 8u);
    // A group that did not take part is empty.
    EXPECT_EQ(re.match(std::string("x=")), 2);
    EXPECT_TRUE(re.group(2).empty());
    EXPECT_TRUE(re.group(7).empty());
}

TEST(VtlRegexp, CopiesKeepTheirOwnGroups) {
    VTL_REGEXP a("(a+)");
    VTL_REGEXP b(a);
    EXPECT_EQ(a.match(std::string("aaa")), 3);
    EXPECT_EQ(b.match(std::string("a")), 1);
    EXPECT_EQ(a.group(1).size(), 3u);
    EXPECT_EQ(b.group(1).size(), 1u);
}

TEST(VtlRegexp, LongLinesAndBadPatterns) {
    std::string line = "INT_X = " + std::string(200000, '7') + "   ";
    VTL_REGEXP re("^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$");
    EXPECT_EQ(re.match(line), static_cast<int>(line.size()));
    EXPECT_EQ(re.group(2).size(), 200000u);

    VTL_REGEXP bad;
    EXPECT_FALSE(bad.pattern("(unclosed"));
    EXPECT_FALSE(bad.is_valid());
    EXPECT_EQ(bad.match(std::string("unclosed")), -1);
    EXPECT_TRUE(bad.search(std::string("(unclosed")).empty());
}
