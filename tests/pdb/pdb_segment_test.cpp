// The persistent-object store: round trips, and refusal of foreign, truncated and
// corrupted data without crashes or unbounded allocation.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "host/pdb.h"
#include "host/pdb_stl.h"

namespace {

enum SAMPLE_ENUM { SAMPLE_A = 1, SAMPLE_B = 7 };

struct LEAF {
    int32_t value = 0;
    std::string name;
    bool operator==(const LEAF& o) const { return value == o.value && name == o.name; }
};

const PDB_CLASS_INFO LEAF_INFO("LEAF");
const PDB_CLASS_INFO SAMPLE_INFO("SAMPLE");

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, LEAF& leaf) {
    PDB_SEGMENT_BASE::serialize_begin(seg, LEAF_INFO, &leaf);
    PDB_FIELD(seg, leaf.value);
    PDB_FIELD(seg, leaf.name);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

struct SAMPLE {
    int32_t i = 0;
    int64_t q = 0;
    uint8_t small = 0;
    bool flag = false;
    double d = 0;
    SAMPLE_ENUM e = SAMPLE_A;
    std::string s;
    std::vector<int32_t> ints;
    std::vector<std::vector<int32_t>> rows;
    std::vector<std::string> strings;
    VTL_BOOL_VECTOR bits;
    VTL_HASH<std::string, uint32_t> by_name{61};
    std::map<int32_t, LEAF> leaves;
    LEAF* owned = nullptr;
    LEAF* absent = nullptr;
    std::vector<LEAF*> owned_list;
    int32_t fixed[5] = {0, 0, 0, 0, 0};
    ~SAMPLE() {
        delete owned;
        delete absent;
        for (LEAF* l : owned_list) delete l;
    }
};

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, SAMPLE& x) {
    PDB_SEGMENT_BASE::serialize_begin(seg, SAMPLE_INFO, &x);
    PDB_FIELD(seg, x.i);
    PDB_FIELD(seg, x.q);
    PDB_FIELD(seg, x.small);
    PDB_FIELD(seg, x.flag);
    PDB_FIELD(seg, x.d);
    PDB_FIELD(seg, x.e);
    PDB_FIELD(seg, x.s);
    PDB_FIELD(seg, x.ints);
    PDB_FIELD(seg, x.rows);
    PDB_FIELD(seg, x.strings);
    PDB_FIELD(seg, x.bits);
    PDB_FIELD(seg, x.by_name);
    PDB_FIELD(seg, x.leaves);
    pdb_xfr_owned(seg, x.owned);
    pdb_xfr_owned(seg, x.absent);
    pdb_xfr_owned(seg, x.owned_list);
    pdb_xfr_array(seg, x.fixed, 5);
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}

void fill(SAMPLE& x) {
    x.i = -5;
    x.q = 1LL << 40;
    x.small = 200;
    x.flag = true;
    x.d = -2.5e-3;
    x.e = SAMPLE_B;
    x.s = std::string("with\0nul", 8);
    x.ints = {1, -2, 2147483647};
    x.rows = {{1, 2, 3}, {}, {4}};
    x.strings = {"", "a b", "{x}"};
    x.bits.resize(130);
    x.bits.set_value(0, true);
    x.bits.set_value(129, true);
    x.by_name.set("PIN_A1", 3);
    x.by_name.set("PIN_B2", 0);
    x.leaves[4] = LEAF{4, "four"};
    x.owned = new LEAF{9, "nine"};
    x.owned_list = {new LEAF{1, "one"}, nullptr, new LEAF{2, "two"}};
    for (int k = 0; k < 5; ++k) x.fixed[k] = k * k;
}

std::string write_sample() {
    SAMPLE x;
    fill(x);
    PDB_DDB_SEGMENT out(true);
    out << x;
    EXPECT_FALSE(out.failed());
    return out.bytes();
}

}  // namespace

using PdbSegment = CaptureTest;

TEST_F(PdbSegment, RoundTripKeepsEveryField) {
    std::string bytes = write_sample();
    PDB_DDB_SEGMENT in(false);
    ASSERT_TRUE(in.load_bytes(bytes)) << in.error();
    SAMPLE y;
    in << y;
    ASSERT_FALSE(in.failed()) << in.error();
    EXPECT_TRUE(in.at_end());
    SAMPLE x;
    fill(x);
    EXPECT_EQ(y.i, x.i);
    EXPECT_EQ(y.q, x.q);
    EXPECT_EQ(y.small, x.small);
    EXPECT_EQ(y.flag, x.flag);
    EXPECT_EQ(y.d, x.d);
    EXPECT_EQ(y.e, x.e);
    EXPECT_EQ(y.s, x.s);
    EXPECT_EQ(y.ints, x.ints);
    EXPECT_EQ(y.rows, x.rows);
    EXPECT_EQ(y.strings, x.strings);
    EXPECT_EQ(y.bits, x.bits);
    ASSERT_NE(y.by_name.find("PIN_A1"), nullptr);
    EXPECT_EQ(*y.by_name.find("PIN_A1"), 3u);
    EXPECT_EQ(y.by_name.size(), 2u);
    EXPECT_EQ(y.leaves, x.leaves);
    ASSERT_NE(y.owned, nullptr);
    EXPECT_EQ(*y.owned, *x.owned);
    EXPECT_EQ(y.absent, nullptr);
    ASSERT_EQ(y.owned_list.size(), 3u);
    EXPECT_EQ(*y.owned_list[0], *x.owned_list[0]);
    EXPECT_EQ(y.owned_list[1], nullptr);
    EXPECT_EQ(*y.owned_list[2], *x.owned_list[2]);
    EXPECT_EQ(std::vector<int>(y.fixed, y.fixed + 5), std::vector<int>(x.fixed, x.fixed + 5));
    EXPECT_TRUE(errors().empty());
}

TEST_F(PdbSegment, RefusesForeignVersionTruncatedAndCorruptedData) {
    std::string bytes = write_sample();
    {
        PDB_DDB_SEGMENT in(false);
        EXPECT_FALSE(in.load_bytes("family F1\nend\n"));
        EXPECT_EQ(in.error(), "not a persistent database file");
    }
    {
        std::string v2 = bytes;
        v2[4] = 2;
        PDB_DDB_SEGMENT in(false);
        EXPECT_FALSE(in.load_bytes(v2));
        EXPECT_EQ(in.error(), "format version 2 is not supported (expected 1)");
    }
    // Every cut point: refused at load, never a crash.
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        PDB_DDB_SEGMENT in(false);
        EXPECT_FALSE(in.load_bytes(bytes.substr(0, cut))) << cut;
    }
    // Every flipped payload byte: the checksum refuses it.
    for (size_t at = 20; at < bytes.size(); ++at) {
        std::string bad = bytes;
        bad[at] = static_cast<char>(bad[at] ^ 0x5A);
        PDB_DDB_SEGMENT in(false);
        EXPECT_FALSE(in.load_bytes(bad)) << at;
        EXPECT_EQ(in.error(), "corrupted: checksum mismatch");
    }
}

TEST_F(PdbSegment, LyingCountsAndLengthsFailWithoutAllocating) {
    // A payload whose counts claim far more than the data holds, with a valid checksum.
    PDB_DDB_SEGMENT out(true);
    uint32_t tag = SAMPLE_INFO.tag();
    out.xfr(tag);
    uint32_t huge = 0x3FFFFFFE;
    out.xfr(huge);  // the count of a vector of ints with no elements behind it
    PDB_DDB_SEGMENT in(false);
    ASSERT_TRUE(in.load_bytes(out.bytes()));
    uint32_t t = 0;
    in.xfr(t);
    std::vector<int32_t> v;
    pdb_xfr(in, v);
    EXPECT_TRUE(in.failed());
    EXPECT_TRUE(v.empty());
    EXPECT_EQ(in.error(), "corrupted: collection of 1073741822 elements exceeds the data");

    // A NaN, which no text reader makes, is refused rather than stored.
    PDB_DDB_SEGMENT nan_out(true);
    double nan = std::nan("");
    nan_out.xfr(nan);
    PDB_DDB_SEGMENT nan_in(false);
    ASSERT_TRUE(nan_in.load_bytes(nan_out.bytes()));
    double read_back = 0;
    nan_in.xfr(read_back);
    EXPECT_EQ(nan_in.error(), "corrupted: a number holds no value (NaN)");

    // A header claiming a huge payload that is not there.
    std::string bytes = write_sample();
    for (int i = 8; i < 16; ++i) bytes[i] = static_cast<char>(0x7F);
    PDB_DDB_SEGMENT in2(false);
    EXPECT_FALSE(in2.load_bytes(bytes));
    EXPECT_EQ(in2.error().rfind("truncated:", 0), 0u) << in2.error();
}

TEST_F(PdbSegment, CollectionSizeLimitAndClassIdentity) {
    PDB_DDB_SEGMENT out(true);
    size_t ok = 0x3FFFFFFE;
    EXPECT_TRUE(out.xfr_count(ok));
    EXPECT_TRUE(errors().empty());
    size_t too_many = 0x3FFFFFFF;
    EXPECT_FALSE(out.xfr_count(too_many));
    EXPECT_EQ(errors(), std::vector<std::string>{"size < PDB_MAX_COLLECTION_SIZE"});
    clear_reports();
    PDB_DDB_SEGMENT out2(true);
    size_t wide = size_t(1) << 33;
    EXPECT_FALSE(out2.xfr_count(wide));
    EXPECT_EQ(errors(), std::vector<std::string>{"stsize <= UINT_MAX"});

    // A leaf read where a sample is expected.
    PDB_DDB_SEGMENT leaf_out(true);
    LEAF leaf{1, "x"};
    leaf_out << leaf;
    PDB_DDB_SEGMENT in(false);
    ASSERT_TRUE(in.load_bytes(leaf_out.bytes()));
    SAMPLE s;
    in << s;
    EXPECT_TRUE(in.failed());
    EXPECT_EQ(in.error(), "class mismatch: expected SAMPLE");
}
