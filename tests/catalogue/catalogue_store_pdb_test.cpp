// The catalogue store's persistent files on a temporary installation: file names, each
// fallback of loading with its notes, the merge rule, refusal of bad files, writing, and
// the derived part traits.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "capture_fixture.h"
#include "dev_family_info.h"
#include "dev_family_info_mgr_body.h"
#include "host/cfg.h"
#include "host/fio.h"
#include "host/gen.h"

namespace {

const DEV_FAMILY_ENUM kFamily = DEV_FAMILY_TESSALY;

class CatalogueStorePdbTest : public CaptureTest {
protected:
    void SetUp() override {
        CaptureTest::SetUp();
        gen_set_velcora_path(root.path());
        DEV_FAMILY_INFO_MGR_BODY probe;
        probe.get_ddb_fullpath_of(kFamily, family_dir);
        std::filesystem::create_directories(family_dir);
        ddb_root = gen_get_ddb_root();
        fill(source);
    }
    void TearDown() override {
        gen_set_velcora_path("");
        CaptureTest::TearDown();
    }

    // One family with two devices and three parts of one device, package and temperature.
    static void fill(DEV_FAMILY_INFO_MGR_BODY& store) {
        auto* f = new DEV_FAMILY_DESC(kFamily);
        f->set_unified_suffix("_t");
        store.take_desc(f, true);
        for (int d = 1; d <= 2; ++d) {
            auto* dev = new DEV_DEVICE_DESC(static_cast<DEV_DEVICE_ENUM>(d));
            dev->set_family(kFamily);
            dev->set_file_name("dev" + std::to_string(d));
            store.take_desc(dev, true);
        }
        const DEV_SPEED_ENUM grades[] = {DEV_SPEED_SG2L, DEV_SPEED_SG3, DEV_SPEED_SG4};
        for (int p = 1; p <= 3; ++p) {
            auto* part = new DEV_PART_DESC(static_cast<DEV_PART_ENUM>(p));
            part->set_device(static_cast<DEV_DEVICE_ENUM>(1));
            part->set_family(kFamily);
            part->set_package(static_cast<DEV_PKG_ENUM>(1));
            part->set_temperature_grade(DEV_TEMPERATURE_COMMERCIAL);
            part->set_speed_grade(grades[p - 1]);
            part->set_ordering_code("TS" + std::to_string(p));
            store.take_desc(part, true);
        }
        store.generate_part_support_traits();
        store.generate_fastest_part_traits();
    }
    static void expect_same_records(DEV_FAMILY_INFO_MGR_BODY& a, DEV_FAMILY_INFO_MGR_BODY& b) {
        ASSERT_TRUE(a.find_desc_of(kFamily) && b.find_desc_of(kFamily));
        EXPECT_TRUE(*a.find_desc_of(kFamily) == *b.find_desc_of(kFamily));
        for (int d = 1; d <= 2; ++d) {
            auto e = static_cast<DEV_DEVICE_ENUM>(d);
            ASSERT_TRUE(b.find_desc_of(e));
            EXPECT_TRUE(*a.find_desc_of(e) == *b.find_desc_of(e));
        }
        for (int p = 1; p <= 3; ++p) {
            auto e = static_cast<DEV_PART_ENUM>(p);
            ASSERT_TRUE(b.find_desc_of(e));
            EXPECT_TRUE(*a.find_desc_of(e) == *b.find_desc_of(e));
        }
    }
    bool has_note_containing(const std::string& text) const {
        for (const std::string& n : notes())
            if (n.find(text) != std::string::npos) return true;
        return false;
    }

    TempDir root;
    std::string family_dir;
    std::string ddb_root;
    DEV_FAMILY_INFO_MGR_BODY source;
};

TEST_F(CatalogueStorePdbTest, FileNamesFollowFamilyAndDataType) {
    FIO_PATH path;
    ASSERT_TRUE(source.generate_pdb_path(kFamily, DEV_FAMILY_DATA_TYPE_DEVICE, nullptr, &path));
    EXPECT_EQ(path.full_path(), family_dir + "/ddb_tessaly_devices.ddb");
    source.generate_pdb_path(kFamily, DEV_FAMILY_DATA_TYPE_FAMILY, nullptr, &path);
    EXPECT_EQ(path.file_name(), "ddb_tessaly_family.ddb");
    source.generate_pdb_path(kFamily, DEV_FAMILY_DATA_TYPE_PART, nullptr, &path);
    EXPECT_EQ(path.file_name(), "ddb_tessaly_parts.ddb");
    source.generate_pdb_path(DEV_FAMILY_GENERIC, static_cast<DEV_FAMILY_DATA_TYPE>(7), nullptr, &path);
    EXPECT_EQ(path.file_name(), "ddb_cumulative_info.ddb");
    const FIO_PATH explicit_path("/some/Where/X.DDB");
    source.generate_pdb_path(kFamily, DEV_FAMILY_DATA_TYPE_PART, &explicit_path, &path);
    EXPECT_EQ(path.full_path(), "/some/Where/X.DDB");
    EXPECT_TRUE(errors().empty());

    EXPECT_FALSE(source.generate_pdb_path(DEV_FAMILY_INVALID, DEV_FAMILY_DATA_TYPE_INFO, nullptr, &path));
    EXPECT_FALSE(source.generate_pdb_path(kFamily, DEV_FAMILY_DATA_TYPE_INFO, nullptr, nullptr));
    EXPECT_EQ(errors(), (std::vector<std::string>{"(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)",
                                                  "pdb_path != NULL"}));
}

TEST_F(CatalogueStorePdbTest, FamilyFileRoundTripsWithItsNotes) {
    cfg_set_value("dev_debug_family_info", "on");
    ASSERT_TRUE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, nullptr, 9));
    EXPECT_TRUE(has_note_containing("Spent 0 seconds writing Tessaly family info data to PDB: " + family_dir +
                                    "/ddb_tessaly_info.ddb"));
    clear_reports();
    DEV_FAMILY_INFO_MGR_BODY loaded;
    ASSERT_TRUE(loaded.load_family_data(kFamily));
    expect_same_records(source, loaded);
    EXPECT_TRUE(capture().has_debug("Loading info for Tessaly family"));
    EXPECT_TRUE(has_note_containing("family info from PDB: " + family_dir + "/ddb_tessaly_info.ddb"));
    EXPECT_TRUE(capture().has_debug("Now maintaining info about 0 devices and 0 parts of Tessaly"));
    EXPECT_FALSE(has_note_containing("Whoops"));
    EXPECT_TRUE(errors().empty());
}

TEST_F(CatalogueStorePdbTest, FallsBackToCumulativeThenFamilyInfoThenRoot) {
    // The cumulative file of the same kind, no "Whoops".
    std::filesystem::create_directories(ddb_root);
    FIO_PATH cumulative;
    source.generate_pdb_path(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_PART, nullptr, &cumulative);
    std::filesystem::create_directories(cumulative.directory());
    ASSERT_TRUE(source.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_PART, nullptr, 1));
    DEV_FAMILY_INFO_MGR_BODY a;
    ASSERT_TRUE(a.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_PART, nullptr));
    EXPECT_TRUE(a.find_desc_of(static_cast<DEV_PART_ENUM>(2)));
    EXPECT_FALSE(a.find_desc_of(kFamily));
    EXPECT_TRUE(capture().has_debug("Family data is not available!"));
    EXPECT_TRUE(capture().has_debug("Device data is not available!"));
    EXPECT_FALSE(has_note_containing("Whoops"));

    // The family's own complete file for a kind without a file.
    ASSERT_TRUE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, nullptr, 9));
    DEV_FAMILY_INFO_MGR_BODY b;
    ASSERT_TRUE(b.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_DEVICE, nullptr));
    expect_same_records(source, b);
    EXPECT_EQ(b.get_loaded_data_type(), DEV_FAMILY_DATA_TYPE_DEVICE);
    std::filesystem::remove(family_dir + "/ddb_tessaly_info.ddb");

    // The root's complete cumulative file, with the test-settings bookkeeping.
    ASSERT_TRUE(source.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO,
                                         nullptr, 9));
    FIO_PATH root_file(ddb_root + "/ddb_cumulative_info.ddb");
    if (!FIO_FILE_SYSTEM::exists(root_file)) {
        const FIO_PATH p(root_file);
        ASSERT_TRUE(source.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &p, 9));
    }
    tst_set_value("General Section", "DEV_FAMILY_INFO_FILE", "unused");
    DEV_FAMILY_INFO_MGR_BODY c;
    ASSERT_TRUE(c.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_FAMILY, nullptr));
    EXPECT_TRUE(c.find_desc_of(kFamily));
    EXPECT_EQ(tst_get_value("General Section", "DEV_FAMILY_INFO_FILE"), "Full cumulative data loaded for TESSALY");
}

TEST_F(CatalogueStorePdbTest, NoFileAtAllReadsTheTextNamedInTheTestSettings) {
    const std::string text = root.write("family.txt", "family\tTESSALY\n\tUNIFIED_SUFFIX = _t\nend\n");
    DEV_FAMILY_INFO_MGR_BODY a;
    EXPECT_FALSE(a.load_family_data(kFamily));
    EXPECT_TRUE(capture().has_debug("Whoops, " + ddb_root + "/ddb_cumulative_info.ddb is not available! Trying to read from ASCII"));
    EXPECT_EQ(errors(), std::vector<std::string>{"Required file not installed, " + ddb_root + "/ddb_cumulative_info.ddb"});

    clear_reports();
    tst_set_value("General Section", "DEV_FAMILY_INFO_FILE", text);
    DEV_FAMILY_INFO_MGR_BODY b;
    ASSERT_TRUE(b.load_family_data(kFamily));
    EXPECT_TRUE(b.find_desc_of(kFamily));
    EXPECT_EQ(tst_get_value("General Section", "DEV_FAMILY_INFO_FILE"), "ASCII data loaded for TESSALY");
}

TEST_F(CatalogueStorePdbTest, ExplicitFilesReplaceOthersFillEmptySlots) {
    const FIO_PATH file(root.file("mine.DDB"));
    ASSERT_TRUE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &file, 9));
    ASSERT_TRUE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, nullptr, 9));
    DEV_FAMILY_INFO_MGR_BODY store;
    auto* own = new DEV_DEVICE_DESC(static_cast<DEV_DEVICE_ENUM>(1));
    own->set_file_name("kept");
    store.take_desc(own, true);
    ASSERT_TRUE(store.load_family_data(kFamily));
    EXPECT_EQ(store.find_desc_of(static_cast<DEV_DEVICE_ENUM>(1))->get_file_name(), "kept");
    EXPECT_EQ(store.find_desc_of(static_cast<DEV_DEVICE_ENUM>(2))->get_file_name(), "dev2");
    ASSERT_TRUE(store.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &file));
    EXPECT_EQ(store.find_desc_of(static_cast<DEV_DEVICE_ENUM>(1))->get_file_name(), "dev1");

    const FIO_PATH absent(root.file("absent.ddb"));
    EXPECT_FALSE(store.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &absent));
    EXPECT_TRUE(capture().has_debug("ERROR: PDB file " + absent.full_path() + " with the family info does not exist!"));
    const FIO_PATH other(root.write("mine.bin", "x"));
    EXPECT_FALSE(store.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &other));
    EXPECT_EQ(errors(), std::vector<std::string>{"PDB files must have extension \"ddb\""});
}

TEST_F(CatalogueStorePdbTest, BadFilesLeaveTheStoreAsItWas) {
    const FIO_PATH file(root.file("whole.ddb"));
    ASSERT_TRUE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &file, 9));
    const std::string raw = read_file(file.full_path());
    DEV_FAMILY_INFO_MGR_BODY store;
    auto* own = new DEV_DEVICE_DESC(static_cast<DEV_DEVICE_ENUM>(1));
    own->set_file_name("kept");
    store.take_desc(own, true);
    for (size_t cut = 0; cut < raw.size(); cut += 7) {
        const FIO_PATH bad(root.write("bad.ddb", raw.substr(0, cut)));
        EXPECT_FALSE(store.load_data_from_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &bad)) << cut;
        EXPECT_TRUE(capture().has_debug("Failed loading family info from PDB: " + bad.full_path()));
        EXPECT_EQ(store.find_desc_of(static_cast<DEV_DEVICE_ENUM>(1))->get_file_name(), "kept");
        EXPECT_FALSE(store.find_desc_of(static_cast<DEV_DEVICE_ENUM>(2)));
        EXPECT_FALSE(store.find_desc_of(kFamily));
    }
}

TEST_F(CatalogueStorePdbTest, WritingChecksLevelAndTarget) {
    EXPECT_FALSE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, nullptr, 0));
    const FIO_PATH nowhere(root.file("no/dir/x.ddb"));
    EXPECT_FALSE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, &nowhere, 9));
    EXPECT_EQ(errors(), (std::vector<std::string>{"compression_level != 0", "Failed opening " + nowhere.full_path()}));
}

TEST_F(CatalogueStorePdbTest, DumpSwitchWritesTextBesideTheFile) {
    ASSERT_TRUE(source.write_data_to_pdb(kFamily, DEV_FAMILY_DATA_TYPE_INFO, nullptr, 9));
    cfg_set_value("dev_dump_part_data", "on");
    DEV_FAMILY_INFO_MGR_BODY store;
    ASSERT_TRUE(store.load_family_data(kFamily));
    EXPECT_TRUE(FIO_FILE_SYSTEM::exists(family_dir + "/ddb_tessaly_info.txt"));
}

TEST_F(CatalogueStorePdbTest, DerivedTraitsMarkFastestAndSlowestGradeAndSupport) {
    auto part = [&](int p) { return source.find_desc_of(static_cast<DEV_PART_ENUM>(p)); };
    // Grades 2L, 3 and 4 of one device, package and temperature grade.
    EXPECT_TRUE(part(1)->has_trait(DEV_PART_TRAIT_FASTEST_SPEED_GRADE));
    EXPECT_FALSE(part(1)->has_trait(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE));
    EXPECT_FALSE(part(2)->has_trait(DEV_PART_TRAIT_FASTEST_SPEED_GRADE));
    EXPECT_FALSE(part(2)->has_trait(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE));
    EXPECT_TRUE(part(3)->has_trait(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE));
    EXPECT_TRUE(part(3)->has_trait(DEV_PART_TRAIT_COMPILER_SUPPORTED));
    // Another package makes part 3 a group of its own: fastest and slowest.
    part(3)->set_package(static_cast<DEV_PKG_ENUM>(2));
    source.find_desc_of(kFamily)->traits().set(DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT);
    source.generate_part_support_traits();
    source.generate_fastest_part_traits();
    EXPECT_TRUE(part(3)->has_trait(DEV_PART_TRAIT_FASTEST_SPEED_GRADE));
    EXPECT_TRUE(part(3)->has_trait(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE));
    EXPECT_TRUE(part(2)->has_trait(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE));
    EXPECT_FALSE(part(3)->has_trait(DEV_PART_TRAIT_COMPILER_SUPPORTED));
}

}  // namespace

namespace {

// Every slot below `bound` holds equal records in both stores (or is empty in both);
// answers the number of records.
template <typename ENUM>
int compare_slots(DEV_FAMILY_INFO_MGR_BODY& a, DEV_FAMILY_INFO_MGR_BODY& b, int bound) {
    int records = 0;
    for (int i = 1; i < bound; ++i) {
        const auto* x = a.find_desc_of(static_cast<ENUM>(i));
        const auto* y = b.find_desc_of(static_cast<ENUM>(i));
        EXPECT_EQ(!x, !y) << i;
        if (x && y) {
            EXPECT_TRUE(*x == *y) << i;
        }
        records += x != nullptr;
    }
    return records;
}

int compare_stores(DEV_FAMILY_INFO_MGR_BODY& a, DEV_FAMILY_INFO_MGR_BODY& b) {
    return compare_slots<DEV_FAMILY_ENUM>(a, b, DEV_FAMILY_GENERIC) +
           compare_slots<DEV_DEVICE_ENUM>(a, b, DEV_DEVICE_GENERIC) +
           compare_slots<DEV_PART_ENUM>(a, b, DEV_PART_GENERIC);
}

TEST_F(CaptureTest, BundledCatalogueLoadsEquallyFromTextAndFromItsCumulativeFile) {
    DEV_FAMILY_INFO_MGR_BODY text;
    ASSERT_TRUE(text.read_default_family_data());
    TempDir dir;
    for (int level : {1, 9}) {
        const FIO_PATH file(dir.file("all" + std::to_string(level) + ".ddb"));
        ASSERT_TRUE(text.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &file, level));
        DEV_FAMILY_INFO_MGR_BODY stored;
        ASSERT_TRUE(stored.load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &file));
        EXPECT_GT(compare_stores(text, stored), 1000);
    }
    // The bundled installation's own cumulative file, compiled at build time.
    const FIO_PATH bundled(gen_get_ddb_root() + "/ddb_cumulative_info.ddb");
    ASSERT_TRUE(FIO_FILE_SYSTEM::exists(bundled)) << bundled.full_path();
    DEV_FAMILY_INFO_MGR_BODY installed;
    ASSERT_TRUE(installed.load_family_data(DEV_FAMILY_GENERIC));
    EXPECT_GT(compare_stores(text, installed), 1000);
    EXPECT_TRUE(errors().empty());
}

}  // namespace
