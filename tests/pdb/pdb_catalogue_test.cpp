// Serialisers of the catalogue's stored classes: written and read back equal, field by
// field; the auto-match hooks report that they are not generated.
#include <gtest/gtest.h>

#include <string>

#include "capture_fixture.h"
#include "ddb/dev/ddb_dev__pdb.h"

namespace {

class PdbCatalogueTest : public CaptureTest {
protected:
    template <typename T>
    static void round_trip(T& in, T& out) {
        PDB_DDB_SEGMENT w(true);
        w << in;
        ASSERT_FALSE(w.failed()) << w.error();
        PDB_DDB_SEGMENT r(false);
        ASSERT_TRUE(r.load_bytes(w.bytes())) << r.error();
        r << out;
        ASSERT_FALSE(r.failed()) << r.error();
        EXPECT_TRUE(r.at_end());
    }
};

TEST_F(PdbCatalogueTest, ValueHoldersRoundTripAndRefuseEachOther) {
    DEV_INT_VALUE i(-123456), i2;
    DEV_QWORD_VALUE q(INT64_C(-9000000000000)), q2;
    DEV_BOOL_VALUE b(true), b2;
    DEV_STRING_VALUE s(std::string("a\0b\xff", 4)), s2;
    round_trip(i, i2);
    round_trip(q, q2);
    round_trip(b, b2);
    round_trip(s, s2);
    EXPECT_EQ(i, i2);
    EXPECT_EQ(q, q2);
    EXPECT_EQ(b, b2);
    EXPECT_EQ(s, s2);

    // The class identity is part of the image: an integer holder is not a qword holder.
    PDB_DDB_SEGMENT w(true);
    w << i;
    PDB_DDB_SEGMENT r(false);
    ASSERT_TRUE(r.load_bytes(w.bytes()));
    r << q2;
    EXPECT_TRUE(r.failed());
    EXPECT_NE(r.error().find("DEV_QWORD_VALUE"), std::string::npos) << r.error();
}

TEST_F(PdbCatalogueTest, TraitFlagTransfersItsWordsAndChecksTheirCount) {
    DEV_PART_TRAIT_FLAG in, out;
    in.set(DEV_PART_TRAIT_FASTEST_SPEED_GRADE);
    in.set_word(0, in.get_word(0) | (UINT64_C(1) << 20));
    out.set(static_cast<DEV_PART_TRAIT_ENUM>(3));
    PDB_DDB_SEGMENT w(true);
    pdb_xfr(w, in);
    PDB_DDB_SEGMENT r(false);
    ASSERT_TRUE(r.load_bytes(w.bytes()));
    pdb_xfr(r, out);
    ASSERT_FALSE(r.failed());
    EXPECT_TRUE(out == in);

    // A family trait flag has more words than a part trait flag.
    DEV_FAMILY_TRAIT_FLAG family;
    PDB_DDB_SEGMENT r2(false);
    ASSERT_TRUE(r2.load_bytes(w.bytes()));
    pdb_xfr(r2, family);
    EXPECT_TRUE(r2.failed());
    EXPECT_NE(r2.error().find("trait flag of 1 words where 3 are expected"), std::string::npos) << r2.error();
}

TEST_F(PdbCatalogueTest, AutoMatchIsNotGenerated) {
    DEV_STRING_VALUE s;
    EXPECT_FALSE(DEV_STRING_VALUE::is_auto_match_pdb_xfr(&s, nullptr));
    EXPECT_FALSE(DEV_INT_VALUE::is_auto_match_pdb_xfr(nullptr, nullptr));
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "Auto-generation of DEV_STRING_VALUE::is_auto_match_pdb_xfr is not enabled",
                            "Auto-generation of DEV_INT_VALUE::is_auto_match_pdb_xfr is not enabled"}));
}

}  // namespace
