// Serialisers of the catalogue's stored classes: written and read back equal, field by
// field; the auto-match hooks report that they are not generated.
#include <gtest/gtest.h>

#include <string>

#include "capture_fixture.h"
#include "ddb_dev__pdb.h"

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

DEV_FAMILY_DESC* sample_family(int n) {
    auto* f = new DEV_FAMILY_DESC(static_cast<DEV_FAMILY_ENUM>(n));
    f->set_bak_version(static_cast<uint8_t>(n + 1));
    f->set_encryption_id(200);
    f->set_base_family_id(static_cast<DEV_FAMILY_ENUM>(n + 2));
    f->set_kx_library_family(static_cast<DEV_FAMILY_ENUM>(n + 3));
    f->traits().set(static_cast<DEV_FAMILY_TRAIT_ENUM>(151));
    f->traits().set(DEV_FAMILY_TRAIT_HAS_PLL);
    f->set_max_nominal_core_supply_voltage(static_cast<DEV_VOLTAGE_ENUM>(4));
    f->set_min_nominal_core_supply_voltage(static_cast<DEV_VOLTAGE_ENUM>(2));
    f->set_config_devices("CFG_A CFG_B ");
    f->set_migration_families("ALPHA BETA ");
    f->set_unified_suffix("_u");
    f->set_max_automotive_temp(125);
    f->set_min_military_temp(-55);
    f->set_max_industrial_temp(100);
    return f;
}

DEV_PART_DESC* sample_part(int n) {
    auto* p = new DEV_PART_DESC(static_cast<DEV_PART_ENUM>(n));
    p->set_device(static_cast<DEV_DEVICE_ENUM>(n / 2 + 1));
    p->set_family(static_cast<DEV_FAMILY_ENUM>(3));
    p->traits().set(DEV_PART_TRAIT_FASTEST_SPEED_GRADE);
    p->set_package(static_cast<DEV_PKG_ENUM>(n % 5 + 1));
    p->set_speed_grade(static_cast<DEV_SPEED_ENUM>(n % 3 + 1));
    p->set_temperature_grade(DEV_TEMPERATURE_COMMERCIAL);
    p->set_ordering_code("VX" + std::to_string(n) + "C6");
    p->set_slow_timing_corners("SLOW_A ");
    p->set_pin_count(256 + n);
    p->set_num_of_io(-1);
    p->dev_resources()[16] = 180 + n;
    return p;
}

TEST_F(PdbCatalogueTest, StoreRootRoundTripsEveryRecordFieldByField) {
    DEV_FAMILY_INFO in;
    in.set_owns_records(true);
    in.m_family_data = {sample_family(3), sample_family(41)};
    auto* d = new DEV_DEVICE_DESC(static_cast<DEV_DEVICE_ENUM>(7));
    d->set_bak_version(9);
    d->set_base_device(static_cast<DEV_DEVICE_ENUM>(6));
    d->traits().set(DEV_DEVICE_TRAIT_ENGINEERING_SAMPLE_ONLY);
    d->set_family(static_cast<DEV_FAMILY_ENUM>(3));
    d->set_voltage(static_cast<DEV_VOLTAGE_ENUM>(3));
    d->set_file_name("d7");
    d->set_migration_devices("D6 D8 ");
    d->set_migration_devices_exclude("D9 ");
    in.m_device_data = {d, new DEV_DEVICE_DESC(static_cast<DEV_DEVICE_ENUM>(8))};
    in.m_part_data = {sample_part(1), sample_part(2), sample_part(30)};

    DEV_FAMILY_INFO out;
    round_trip(in, out);
    EXPECT_TRUE(out.owns_records());
    ASSERT_EQ(out.m_family_data.size(), 2u);
    ASSERT_EQ(out.m_device_data.size(), 2u);
    ASSERT_EQ(out.m_part_data.size(), 3u);
    for (size_t i = 0; i < 2; ++i) EXPECT_TRUE(*out.m_family_data[i] == *in.m_family_data[i]) << i;
    for (size_t i = 0; i < 2; ++i) EXPECT_TRUE(*out.m_device_data[i] == *in.m_device_data[i]) << i;
    for (size_t i = 0; i < 3; ++i) EXPECT_TRUE(*out.m_part_data[i] == *in.m_part_data[i]) << i;
    EXPECT_EQ(out.m_family_data[1]->get_min_military_temp(), -55);
    EXPECT_EQ(out.m_part_data[2]->get_dev_resources()[16], 210);
    EXPECT_EQ(out.m_device_data[0]->get_migration_devices_exclude(), "D9 ");
}

// The stored image follows the field order of the record, read back here by hand.
TEST_F(PdbCatalogueTest, DeviceRecordImageIsInFieldOrder) {
    DEV_DEVICE_DESC d(static_cast<DEV_DEVICE_ENUM>(12));
    d.set_bak_version(4);
    d.set_base_device(static_cast<DEV_DEVICE_ENUM>(11));
    d.traits().set(DEV_DEVICE_TRAIT_ENGINEERING_SAMPLE_ONLY);
    d.set_family(static_cast<DEV_FAMILY_ENUM>(5));
    d.set_voltage(static_cast<DEV_VOLTAGE_ENUM>(2));
    d.set_file_name("f");
    d.set_migration_devices("m ");
    d.set_migration_devices_exclude("x ");
    PDB_DDB_SEGMENT w(true);
    w << d;
    PDB_DDB_SEGMENT r(false);
    ASSERT_TRUE(r.load_bytes(w.bytes()));
    uint32_t tag = 0;
    int32_t device = 0, base = 0, family = 0, voltage = 0;
    uint8_t bak = 0;
    DEV_DEVICE_TRAIT_FLAG traits;
    std::string file, mig, excl;
    r.xfr(tag);
    EXPECT_EQ(tag, PDB_CLASS_INFO("DEV_DEVICE_DESC").tag());
    r.xfr(device);
    r.xfr(bak);
    r.xfr(base);
    pdb_xfr(r, traits);
    r.xfr(family);
    r.xfr(voltage);
    r.xfr(file);
    r.xfr(mig);
    r.xfr(excl);
    ASSERT_FALSE(r.failed()) << r.error();
    EXPECT_TRUE(r.at_end());
    EXPECT_EQ(device, 12);
    EXPECT_EQ(bak, 4);
    EXPECT_EQ(base, 11);
    EXPECT_TRUE(traits.test(DEV_DEVICE_TRAIT_ENGINEERING_SAMPLE_ONLY));
    EXPECT_EQ(family, 5);
    EXPECT_EQ(voltage, 2);
    EXPECT_EQ(file + "|" + mig + "|" + excl, "f|m |x ");
}

TEST_F(PdbCatalogueTest, CorruptedRecordNamesTheField) {
    DEV_PART_DESC p(static_cast<DEV_PART_ENUM>(1));
    PDB_DDB_SEGMENT w(true);
    w << p;
    // The same bytes with the resource list cut off, behind a fresh valid header.
    std::string payload = w.bytes().substr(20);
    PDB_DDB_SEGMENT cut(true);
    for (size_t i = 0; i + 4 < payload.size(); ++i) {
        uint8_t b = static_cast<uint8_t>(payload[i]);
        cut.xfr(b);
    }
    PDB_DDB_SEGMENT r(false);
    ASSERT_TRUE(r.load_bytes(cut.bytes()));
    DEV_PART_DESC q;
    r << q;
    EXPECT_TRUE(r.failed());
    EXPECT_NE(r.error().find("(field dev_resources)"), std::string::npos) << r.error();
}

TEST_F(PdbCatalogueTest, AutoMatchIsNotGenerated) {
    DEV_STRING_VALUE s;
    EXPECT_FALSE(DEV_STRING_VALUE::is_auto_match_pdb_xfr(&s, nullptr));
    EXPECT_FALSE(DEV_INT_VALUE::is_auto_match_pdb_xfr(nullptr, nullptr));
    EXPECT_FALSE(DEV_PART_DESC::is_auto_match_pdb_xfr(nullptr, nullptr));
    EXPECT_FALSE(DEV_FAMILY_INFO::is_auto_match_pdb_xfr(nullptr, nullptr));
    EXPECT_FALSE(DEV_FAMILY_DESC::is_auto_match_pdb_xfr(nullptr, nullptr));
    EXPECT_FALSE(DEV_DEVICE_DESC::is_auto_match_pdb_xfr(nullptr, nullptr));
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "Auto-generation of DEV_STRING_VALUE::is_auto_match_pdb_xfr is not enabled",
                            "Auto-generation of DEV_INT_VALUE::is_auto_match_pdb_xfr is not enabled",
                            "Auto-generation of DEV_PART_DESC::is_auto_match_pdb_xfr is not enabled",
                            "Auto-generation of DEV_FAMILY_INFO::is_auto_match_pdb_xfr is not enabled",
                            "Auto-generation of DEV_FAMILY_DESC::is_auto_match_pdb_xfr is not enabled",
                            "Auto-generation of DEV_DEVICE_DESC::is_auto_match_pdb_xfr is not enabled"}));
}

}  // namespace
