// Data-file searches on a scratch installation: the catalogue comes from a small family-info
// fixture read by the store's text reader; each case creates the files it needs.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_basic_info_body.h"
#include "dev_family_info_mgr_body.h"
#include "dev_basic_info.h"
#include "dev_path.h"
#include "host/cfg.h"
#include "host/gen.h"

namespace {

// OSTREL (folder "ostrel") holds device LM1C032, whose base device LM1C064 is in CORVANE
// (folder "corvane"). LUMIO3 (folder "lumio3") uses CORVANE's data (trait 41). The parts
// all lie on LM1C032 in FBGA 484: D40C5 plain with a package suffix, D40C7 with
// part-specific names, D40C9 an engineering sample, D40I7 both.
const char* const FIXTURE =
    "family OSTREL\nend\n"
    "family CORVANE\nend\n"
    "family LUMIO3\n\tBASE_FAMILY_ID = CORVANE\n\tTRAITS = USES_BASE_FAMILY_DATA\nend\n"
    "family LUMIO4\n\tBASE_FAMILY_ID = CORVANE\nend\n"
    "device LM1C032\n\tFAMILY = OSTREL\n\tBASE_DEVICE = LM1C064\n\tFILE_NAME = \"Own_File.Dev\"\nend\n"
    "device LM1C064\n\tFAMILY = CORVANE\n\tFILE_NAME = \"ddb_lm1c064.device\"\nend\n"
    "part LM1C032D40C5\n\tDEVICE = LM1C032\n\tFAMILY = OSTREL\n\tPACKAGE = FBGA\n\tPIN_COUNT = 484\n"
    "\tPACKAGE_DDB_FILE_NAME_SUFFIX = \"_Lf\"\nend\n"
    "part LM1C032D40C7\n\tDEVICE = LM1C032\n\tFAMILY = OSTREL\n\tPACKAGE = FBGA\n\tPIN_COUNT = 484\n"
    "\tTRAITS = PART_SPECIFIC_DATA_FILES\nend\n"
    "part LM1C032D40C9\n\tDEVICE = LM1C032\n\tFAMILY = OSTREL\n\tPACKAGE = FBGA\n\tPIN_COUNT = 484\n"
    "\tTRAITS = ENGINEERING_SAMPLE\nend\n"
    "part LM1C032D40I7\n\tDEVICE = LM1C032\n\tFAMILY = OSTREL\n\tPACKAGE = FBGA\n\tPIN_COUNT = 484\n"
    "\tTRAITS = ENGINEERING_SAMPLE\n\tTRAITS = PART_SPECIFIC_DATA_FILES\nend\n";

const DEV_DEVICE_ENUM D = DEV_DEVICE_LM1C032;
const DEV_DEVICE_ENUM BASE = DEV_DEVICE_LM1C064;
const DEV_PART_ENUM PLAIN = DEV_PART_LM1C032D40C5;
const DEV_PART_ENUM OWN_NAME = DEV_PART_LM1C032D40C7;
const DEV_PART_ENUM ES = DEV_PART_LM1C032D40C9;
const DEV_PART_ENUM ES_OWN_NAME = DEV_PART_LM1C032D40I7;

class DevPathTest : public CaptureTest {
protected:
    static void SetUpTestSuite() { DEV_FAMILY_INFO_MGR_BODY::get_instance(); }

    void SetUp() override {
        CaptureTest::SetUp();
        gen_set_velcora_path(root.path());
        // Fresh records for the fixture's members, whatever the store held before.
        DEV_FAMILY_INFO_MGR_BODY& store = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
        for (DEV_FAMILY_ENUM f : {DEV_FAMILY_OSTREL, DEV_FAMILY_CORVANE, DEV_FAMILY_LUMIO3, DEV_FAMILY_LUMIO4})
            store.take_desc(new DEV_FAMILY_DESC(f), true);
        for (DEV_DEVICE_ENUM d : {D, BASE}) store.take_desc(new DEV_DEVICE_DESC(d), true);
        for (DEV_PART_ENUM p : {PLAIN, OWN_NAME, ES, ES_OWN_NAME}) store.take_desc(new DEV_PART_DESC(p), true);
        ASSERT_TRUE(store.read_family_data(FIO_PATH(root.write("fixture.txt", FIXTURE))));
        ASSERT_EQ(errors(), std::vector<std::string>());
        clear_reports();
    }
    void TearDown() override {
        gen_set_velcora_path("");
        CaptureTest::TearDown();
    }

    std::string in(const std::string& folder, const std::string& name) const {
        return root.path() + "/ddb/" + folder + "/" + name;
    }
    // Creates (or removes) the file `name` in the family folder `folder`; returns its path.
    std::string make(const std::string& folder, const std::string& name) const {
        std::filesystem::create_directories(root.path() + "/ddb/" + folder);
        std::ofstream(in(folder, name)) << "x\n";
        return in(folder, name);
    }
    void remove(const std::string& folder, const std::string& name) const {
        std::filesystem::remove(in(folder, name));
    }
    static void debug_path(bool on) { cfg_set_value("dev_debug_path", on ? "1" : "0"); }

    template <typename E>
    std::string found(E what, const char* type, DEV_BASIC_INFO* info = nullptr) {
        FIO_PATH path;
        return search(what, type, &path, info) ? path.full_path() : "not found: " + path.full_path();
    }
    static bool search(DEV_FAMILY_ENUM f, const char* type, FIO_PATH* p, DEV_BASIC_INFO*) {
        return DEV_PATH::get_existing_device_file_path(f, type, p);
    }
    static bool search(DEV_DEVICE_ENUM d, const char* type, FIO_PATH* p, DEV_BASIC_INFO* info) {
        return DEV_PATH::get_existing_device_file_path(d, type, p, info);
    }
    static bool search(DEV_PART_ENUM part, const char* type, FIO_PATH* p, DEV_BASIC_INFO*) {
        return DEV_PATH::get_existing_device_file_path(part, type, p);
    }
    static std::string missing(const std::string& path) { return "not found: " + path; }

    TempDir root;
};

TEST_F(DevPathTest, FamilySearchPersistentFirstThenTextThenFirstCandidate) {
    EXPECT_EQ(found(DEV_FAMILY_OSTREL, "rsi"), missing(in("ostrel", "ddb_ostrel_rsi.ddb")));
    make("ostrel", "ddb_ostrel.rsi");
    EXPECT_EQ(found(DEV_FAMILY_OSTREL, "rsi"), in("ostrel", "ddb_ostrel.rsi"));
    make("ostrel", "ddb_ostrel_rsi.ddb");
    EXPECT_EQ(found(DEV_FAMILY_OSTREL, "RSI"), in("ostrel", "ddb_ostrel_rsi.ddb"));
    for (const char* type : {"hdr", "pad", "lei", "pwr", "blkrba", "part_info"})
        EXPECT_EQ(found(DEV_FAMILY_OSTREL, type), missing(in("ostrel", std::string("ddb_ostrel_") + type + ".ddb")));
    EXPECT_EQ(errors(), std::vector<std::string>());
}

TEST_F(DevPathTest, FamilyWithTrait41UsesItsBaseFamily) {
    make("lumio3", "ddb_lumio3_hdr.ddb");
    EXPECT_EQ(found(DEV_FAMILY_LUMIO3, "hdr"), missing(in("corvane", "ddb_corvane_hdr.ddb")));
    make("corvane", "ddb_corvane.hdr");
    EXPECT_EQ(found(DEV_FAMILY_LUMIO3, "hdr"), in("corvane", "ddb_corvane.hdr"));
    // A base family without the trait changes nothing.
    EXPECT_EQ(found(DEV_FAMILY_LUMIO4, "hdr"), missing(in("lumio4", "ddb_lumio4_hdr.ddb")));
}

TEST_F(DevPathTest, DeviceFileIsOnlyTheCatalogueFileName) {
    make("ostrel", "ddb_lm1c032_device.ddb");
    make("ostrel", "ddb_lm1c032.device");
    // Not there: the base device's file answers.
    make("corvane", "ddb_lm1c064.device");
    EXPECT_EQ(found(D, "device"), in("corvane", "ddb_lm1c064.device"));
    remove("corvane", "ddb_lm1c064.device");
    EXPECT_EQ(found(D, "device"), missing(in("ostrel", "Own_File.Dev")));
    make("ostrel", "Own_File.Dev");
    EXPECT_EQ(found(D, "Device"), in("ostrel", "Own_File.Dev"));
}

TEST_F(DevPathTest, DeviceSearchPersistentFirstAndBaseDeviceFallbackExceptForHdr) {
    make("corvane", "ddb_lm1c064.pad");
    make("corvane", "ddb_lm1c064_hdr.ddb");
    EXPECT_EQ(found(D, "pad"), in("corvane", "ddb_lm1c064.pad"));
    EXPECT_EQ(found(D, "hdr"), missing(in("ostrel", "ddb_lm1c032_hdr.ddb")));
    make("ostrel", "ddb_lm1c032.pad");
    EXPECT_EQ(found(D, "pad"), in("ostrel", "ddb_lm1c032.pad"));
    make("ostrel", "ddb_lm1c032_pad.ddb");
    EXPECT_EQ(found(D, "pad"), in("ostrel", "ddb_lm1c032_pad.ddb"));
    // Nothing for either device: the device's own first candidate, never the base's.
    EXPECT_EQ(found(D, "pwr", nullptr), missing(in("ostrel", "ddb_lm1c032_pwr.ddb")));
    EXPECT_EQ(errors(), std::vector<std::string>({"basic_info"}));
}

TEST_F(DevPathTest, PwrTriesTheDataFileStemAfterTheDeviceName) {
    DEV_BASIC_INFO info(new DEV_BASIC_INFO_BODY);
    EXPECT_EQ(found(D, "pwr", &info), missing(in("ostrel", "ddb_lm1c032_pwr.ddb")));
    EXPECT_EQ(errors(), std::vector<std::string>());
    info.get_body()->set_string_data(DEV_BASIC_INFO_STRING_DATA_FILE_STEM, "Shared_Die");
    make("ostrel", "ddb_shared_die.pwr");
    EXPECT_EQ(found(D, "pwr", &info), in("ostrel", "ddb_shared_die.pwr"));
    make("ostrel", "ddb_shared_die_pwr.ddb");
    EXPECT_EQ(found(D, "pwr", &info), in("ostrel", "ddb_shared_die_pwr.ddb"));
    make("ostrel", "ddb_lm1c032.pwr");
    EXPECT_EQ(found(D, "pwr", &info), in("ostrel", "ddb_lm1c032.pwr"));
    // The stem is tried only for "pwr".
    remove("ostrel", "ddb_lm1c032.pwr");
    make("ostrel", "ddb_shared_die_pad.ddb");
    EXPECT_EQ(found(D, "pad", &info), missing(in("ostrel", "ddb_lm1c032_pad.ddb")));
    EXPECT_EQ(errors(), std::vector<std::string>());
}

TEST_F(DevPathTest, RsiAndPartInfoFallBackToTheFamilyFileBeforeTheBaseDevice) {
    make("corvane", "ddb_lm1c064_rsi.ddb");
    make("ostrel", "ddb_ostrel.rsi");
    EXPECT_EQ(found(D, "rsi"), in("ostrel", "ddb_ostrel.rsi"));
    make("ostrel", "ddb_lm1c032.rsi");
    EXPECT_EQ(found(D, "rsi"), in("ostrel", "ddb_lm1c032.rsi"));
    EXPECT_EQ(found(D, "part_info"), missing(in("ostrel", "ddb_lm1c032_part_info.ddb")));
    make("corvane", "ddb_corvane.part_info");
    EXPECT_EQ(found(D, "part_info"), in("corvane", "ddb_corvane.part_info"));
}

TEST_F(DevPathTest, UnsupportedTypesAreReportedAndNothingIsTried) {
    debug_path(true);
    FIO_PATH path("/stale/path");
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(DEV_FAMILY_OSTREL, "device", &path));
    EXPECT_TRUE(path.empty());
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(D, "pkg", &path));
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(PLAIN, "rsi", &path));
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(PLAIN, "device", &path));
    EXPECT_EQ(errors(), std::vector<std::string>({
                            "device device file type not supported by get_existing_device_file_path for family",
                            "pkg device file type not supported by get_existing_device_file_path for device",
                            "rsi device file type not supported by get_existing_device_file_path for part",
                            "device device file type not supported by get_existing_device_file_path for part",
                        }));
    EXPECT_EQ(notes(), std::vector<std::string>());
}

TEST_F(DevPathTest, BadArgumentsAreReported) {
    FIO_PATH path;
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(DEV_FAMILY_INVALID, "hdr", &path));
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(DEV_FAMILY_GENERIC, nullptr, nullptr));
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(DEV_DEVICE_GENERIC, "hdr", &path));
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(DEV_PART_INVALID, "pkg", &path));
    DEV_PATH::get_ddb_path_of(DEV_FAMILY_OSTREL, nullptr);
    EXPECT_EQ(errors(), std::vector<std::string>({"family > DEV_FAMILY_INVALID", "family < DEV_FAMILY_GENERIC",
                                                  "ret_path != NULL", "file_type_str != NULL",
                                                  "device < DEV_DEVICE_GENERIC", "part > DEV_PART_INVALID",
                                                  "ret_path != NULL"}));
}

TEST_F(DevPathTest, PartBaseNameIsDevicePackagePinsWithPackageSuffixForPkg) {
    EXPECT_EQ(found(PLAIN, "pkg"), missing(in("ostrel", "ddb_lm1c032fbga484_lf_pkg.ddb")));
    make("ostrel", "ddb_lm1c032fbga484_lf.pkg");
    make("ostrel", "ddb_lm1c032fbga484.pad");
    EXPECT_EQ(found(PLAIN, "pkg"), in("ostrel", "ddb_lm1c032fbga484_lf.pkg"));
    EXPECT_EQ(found(PLAIN, "pad"), in("ostrel", "ddb_lm1c032fbga484.pad"));
    make("ostrel", "ddb_lm1c032fbga484_lf_pkg.ddb");
    EXPECT_EQ(found(PLAIN, "pkg"), in("ostrel", "ddb_lm1c032fbga484_lf_pkg.ddb"));
    // Without its own pkg file, the base device's in the same package.
    make("corvane", "ddb_lm1c064fbga484_lf.pkg");
    remove("ostrel", "ddb_lm1c032fbga484_lf.pkg");
    remove("ostrel", "ddb_lm1c032fbga484_lf_pkg.ddb");
    EXPECT_EQ(found(PLAIN, "pkg"), in("corvane", "ddb_lm1c064fbga484_lf.pkg"));
}

TEST_F(DevPathTest, PartTrait30NamesFilesAfterThePart) {
    make("ostrel", "ddb_lm1c032fbga484.pkg");
    EXPECT_EQ(found(OWN_NAME, "pkg"), missing(in("ostrel", "ddb_lm1c032d40c7_pkg.ddb")));
    make("ostrel", "ddb_lm1c032d40c7.pkg");
    EXPECT_EQ(found(OWN_NAME, "pkg"), in("ostrel", "ddb_lm1c032d40c7.pkg"));
}

TEST_F(DevPathTest, PadFallsBackToTheDeviceThenTheBaseDevice) {
    make("corvane", "ddb_lm1c064fbga484_pad.ddb");
    make("corvane", "ddb_lm1c064.pad");
    EXPECT_EQ(found(OWN_NAME, "pad"), in("corvane", "ddb_lm1c064.pad"));
    EXPECT_EQ(found(PLAIN, "pad"), in("corvane", "ddb_lm1c064fbga484_pad.ddb"));
    make("ostrel", "ddb_lm1c032.pad");
    EXPECT_EQ(found(PLAIN, "pad"), in("ostrel", "ddb_lm1c032.pad"));
    EXPECT_EQ(found(OWN_NAME, "pad"), in("ostrel", "ddb_lm1c032.pad"));
    // "hdr" is the device's file, without base-device fallback.
    make("corvane", "ddb_lm1c064.hdr");
    EXPECT_EQ(found(PLAIN, "hdr"), missing(in("ostrel", "ddb_lm1c032_hdr.ddb")));
    make("ostrel", "ddb_lm1c032.hdr");
    EXPECT_EQ(found(PLAIN, "hdr"), in("ostrel", "ddb_lm1c032.hdr"));
}

TEST_F(DevPathTest, EngineeringSamplesTryTheEsFileFirst) {
    make("ostrel", "ddb_lm1c032fbga484.pkg");
    EXPECT_EQ(found(ES, "pkg"), in("ostrel", "ddb_lm1c032fbga484.pkg"));
    EXPECT_EQ(notes(), std::vector<std::string>());
    make("ostrel", "ddb_lm1c032fbga484es.pkg");  // the ES file exists only in persistent form
    EXPECT_EQ(found(ES, "pkg"), in("ostrel", "ddb_lm1c032fbga484.pkg"));
    make("ostrel", "ddb_lm1c032fbga484es_pkg.ddb");
    EXPECT_EQ(found(ES, "pkg"), in("ostrel", "ddb_lm1c032fbga484es_pkg.ddb"));
    EXPECT_EQ(notes(), std::vector<std::string>({"Using ES modifier for pkg file"}));
    EXPECT_EQ(found(PLAIN, "pkg"), missing(in("ostrel", "ddb_lm1c032fbga484_lf_pkg.ddb")));
    make("ostrel", "ddb_lm1c032d40i7es_pad.ddb");
    EXPECT_EQ(found(ES_OWN_NAME, "pad"), in("ostrel", "ddb_lm1c032d40i7es_pad.ddb"));
    // A missing ES part file: its first candidate is the ES one.
    EXPECT_EQ(found(ES, "pad"), missing(in("ostrel", "ddb_lm1c032fbga484es_pad.ddb")));
}

TEST_F(DevPathTest, PartInfoTriesThePartNameAheadOfTheEsFile) {
    EXPECT_EQ(found(ES, "part_info"), missing(in("ostrel", "ddb_lm1c032d40c9_part_info.ddb")));
    make("ostrel", "ddb_ostrel_part_info.ddb");
    EXPECT_EQ(found(ES, "part_info"), in("ostrel", "ddb_ostrel_part_info.ddb"));
    make("ostrel", "ddb_lm1c032.part_info");
    EXPECT_EQ(found(ES, "part_info"), in("ostrel", "ddb_lm1c032.part_info"));
    make("ostrel", "ddb_lm1c032fbga484.part_info");
    EXPECT_EQ(found(ES, "part_info"), in("ostrel", "ddb_lm1c032fbga484.part_info"));
    make("ostrel", "ddb_lm1c032fbga484es_part_info.ddb");
    EXPECT_EQ(found(ES, "part_info"), in("ostrel", "ddb_lm1c032fbga484es_part_info.ddb"));
    make("ostrel", "ddb_lm1c032d40c9.part_info");
    EXPECT_EQ(found(ES, "part_info"), in("ostrel", "ddb_lm1c032d40c9.part_info"));
}

TEST_F(DevPathTest, DebugSwitchAnnouncesEveryCandidate) {
    FIO_PATH path;
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(D, "hdr", &path));
    EXPECT_EQ(notes(), std::vector<std::string>());
    debug_path(true);
    make("corvane", "ddb_lm1c064.pad");
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(DEV_FAMILY_LUMIO3, "hdr", &path));
    EXPECT_TRUE(DEV_PATH::get_existing_device_file_path(D, "pad", &path));
    auto checking = [](const std::string& p, const char* type) {
        return "Checking if " + p + " exists for " + type + "-type file";
    };
    EXPECT_EQ(notes(), std::vector<std::string>({
                           checking(in("corvane", "ddb_corvane_hdr.ddb"), "hdr"),
                           checking(in("corvane", "ddb_corvane.hdr"), "hdr"),
                           "None of the legal hdr files for " + std::string(dstr_get_user_string(DEV_FAMILY_CORVANE)) +
                               " is installed",
                           checking(in("ostrel", "ddb_lm1c032_pad.ddb"), "pad"),
                           checking(in("ostrel", "ddb_lm1c032.pad"), "pad"),
                           "Trying base device LM1C064",
                           checking(in("corvane", "ddb_lm1c064_pad.ddb"), "pad"),
                           checking(in("corvane", "ddb_lm1c064.pad"), "pad"),
                       }));
    clear_reports();
    EXPECT_FALSE(DEV_PATH::get_existing_device_file_path(OWN_NAME, "pkg", &path));
    EXPECT_EQ(notes().back(), "None of the legal pkg files for LM1C032D40C7 is installed");
}

TEST_F(DevPathTest, PathBuildersAndPersistentTest) {
    FIO_PATH path;
    DEV_PATH::get_ddb_path_of(DEV_FAMILY_TESSALY3GX, &path);
    EXPECT_EQ(path.full_path(), root.path() + "/ddb/tessaly3");
    DEV_PATH::build_device_file_path(DEV_FAMILY_OSTREL, "LM1C032_Pad", &path, true);
    EXPECT_EQ(path.full_path(), in("ostrel", "ddb_lm1c032_pad.ddb"));
    EXPECT_TRUE(DEV_PATH::is_pdb_file(path));
    DEV_PATH::build_device_file_path(DEV_FAMILY_OSTREL, "LM1C032", &path, false);
    EXPECT_EQ(path.full_path(), in("ostrel", "ddb_lm1c032"));
    EXPECT_FALSE(DEV_PATH::is_pdb_file(path));
    EXPECT_TRUE(DEV_PATH::is_pdb_file(FIO_PATH("/a/b.DdB")));
    EXPECT_FALSE(DEV_PATH::is_pdb_file(FIO_PATH("/a/b.ddb.hdr")));
    EXPECT_FALSE(DEV_PATH::is_pdb_file(FIO_PATH("/a/ddb")));
}

}  // namespace

// The handle reports a missing body in its class's wording and reads the kind's default.
TEST(DevHandle, MissingBodyIsReportedAndReadsGiveDefaults) {
    MSG_CAPTURE capture;
    DEV_BASIC_INFO info(nullptr);
    EXPECT_EQ(capture.internal_errors(), std::vector<std::string>{"body != 0"});
    capture.clear();
    EXPECT_FALSE(info.is_valid_int_enum(DEV_BASIC_INFO_INT_DATA_ENUM(0)));
    int value = 7;
    EXPECT_FALSE(info.get_int_data(DEV_BASIC_INFO_INT_DATA_ENUM(0), &value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(capture.internal_errors().empty());
    EXPECT_EQ(info.get_int_data(DEV_BASIC_INFO_INT_DATA_ENUM(0)), 0);
    EXPECT_EQ(info.get_string_data(DEV_BASIC_INFO_STRING_DATA_ENUM(0)), "");
    EXPECT_EQ(info.get_device_enum(), DEV_DEVICE_INVALID);
    EXPECT_EQ(capture.internal_errors(), (std::vector<std::string>{"m_body != 0", "m_body != 0", "m_body != 0"}));

    auto* body = new DEV_BASIC_INFO_BODY;
    body->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, 5);
    info.set_body(body);
    EXPECT_EQ(info.get_device_enum(), DEV_DEVICE_ENUM(5));
    EXPECT_EQ(info.get_body(), body);
}
