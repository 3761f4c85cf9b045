// The family-info text: reading every key kind and the awkward lines, the exact notes and
// errors, and dump -> read giving the same records.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "capture_fixture.h"
#include "dev_family_info_mgr_body.h"
#include "host/gen.h"

namespace {

class FamilyInfoTextTest : public CaptureTest {
protected:
    bool read(DEV_FAMILY_INFO_MGR_BODY& store, const std::string& name, const std::string& text) {
        return store.read_family_data(FIO_PATH(dir.write(name, text)));
    }
    size_t count_notes_starting(const std::string& prefix) const {
        std::vector<std::string> n = notes();
        return std::count_if(n.begin(), n.end(), [&](const std::string& s) { return s.rfind(prefix, 0) == 0; });
    }
    // Every record of the first store is in the second, equal, and the other way round.
    static void expect_same_records(const DEV_FAMILY_INFO_MGR_BODY& a, const DEV_FAMILY_INFO_MGR_BODY& b) {
        for (int f = 1; f < DEV_FAMILY_MAX; ++f) {
            const DEV_FAMILY_DESC* x = a.find_desc_of(DEV_FAMILY_ENUM(f));
            const DEV_FAMILY_DESC* y = b.find_desc_of(DEV_FAMILY_ENUM(f));
            ASSERT_EQ(x == nullptr, y == nullptr) << f;
            if (x) {
                EXPECT_TRUE(*x == *y) << dstr_get_debug_string(DEV_FAMILY_ENUM(f));
            }
        }
        for (int d = 1; d < DEV_DEVICE_GENERIC; ++d) {
            const DEV_DEVICE_DESC* x = a.find_desc_of(DEV_DEVICE_ENUM(d));
            const DEV_DEVICE_DESC* y = b.find_desc_of(DEV_DEVICE_ENUM(d));
            ASSERT_EQ(x == nullptr, y == nullptr) << d;
            if (x) {
                EXPECT_TRUE(*x == *y) << dstr_get_debug_string(DEV_DEVICE_ENUM(d));
            }
        }
        for (int p = 1; p < DEV_PART_GENERIC; ++p) {
            const DEV_PART_DESC* x = a.find_desc_of(DEV_PART_ENUM(p));
            const DEV_PART_DESC* y = b.find_desc_of(DEV_PART_ENUM(p));
            ASSERT_EQ(x == nullptr, y == nullptr) << p;
            if (x) {
                EXPECT_TRUE(*x == *y) << dstr_get_debug_string(DEV_PART_ENUM(p));
            }
        }
    }

    TempDir dir;
};

const char* const FIXTURE =
    "# catalogue fixture\n"
    "/ a slash comment\n"
    "  | a bar comment\n"
    "\n"
    "family LUMIO\n"
    "\tBAK_VERSION = 300\n"
    "\tENCRYPTION_ID = 7\n"
    "\tBASE_FAMILY_ID = LUMIO2\n"
    "\tKX_LIBRARY_FAMILY = TESSALY\n"
    "\tTRAITS = HAS_DSP_BLOCKS\n"
    "\tTRAITS = NOT_LISTED\n"
    "\tTRAITS = HAS_DSP_BLOCKS\n"
    "\tMAX_NOMINAL_CORE_SUPPLY_VOLTAGE = 0_75V\n"
    "\tMIN_NOMINAL_CORE_SUPPLY_VOLTAGE = 0_6V\n"
    "\tCONFIG_DEVICES = \"LM1C064\"\n"
    "\tMIGRATION_FAMILIES = \"LUMIO2\"\n"
    "\tMIGRATION_FAMILIES = \"TESSALY\"\n"
    "\tUNIFIED_SUFFIX = \"_u\"\n"
    "\tMAX_AUTOMOTIVE_TEMP = 125\n\tMAX_COMMERCIAL_TEMP = 85\n\tMAX_EXTENDED_TEMP = 100\n"
    "\tMAX_INDUSTRIAL_TEMP = 100\n\tMAX_MILITARY_TEMP = 125\n"
    "\tMIN_AUTOMOTIVE_TEMP = -40\n\tMIN_COMMERCIAL_TEMP = 0\n\tMIN_EXTENDED_TEMP = -40\n"
    "\tMIN_INDUSTRIAL_TEMP = -40\n\tMIN_MILITARY_TEMP = -55\n"
    "\tMAX_COMMERCIAL_TEMP = 90\n"
    "end\n"
    "device LM1C032\n"
    "\tBAK_VERSION = 2\n"
    "\tBASE_DEVICE = LM1C064\n"
    "\tTRAITS = NO_HDR_DATA\n"
    "\tFAMILY = LUMIO\n"
    "\tVOLTAGE = 0_75V\n"
    "\tFILE_NAME = \"lm1c032\"\n"
    "\tMIGRATION_DEVICES = \"LM1C064\"\n"
    "\tMIGRATION_DEVICES_EXCLUDE = \"LM1C032\"\n"
    "\tFAMILY = LUMIO2\n"
    "end\n"
    "part LM1C032D40C5\n"
    "\tDEVICE = LM1C032\n"
    "\tFAMILY = LUMIO\n"
    "\tFAMILY_VARIANT = LOW_POWER\n"
    "\tFAST_GRADE_REVISION = REV_B\n"
    "\tGRADE_REVISION = REV_A\n"
    "\tTRAITS = LEAD_FREE\n"
    "\tPACKAGE = PLCC\n"
    "\tPOWER_MODEL_STATUS = FINAL\n"
    "\tFAST_CORNER_GRADE = SG1\n"
    "\tSPEED_GRADE = SG2\n"
    "\tMAX_POWER_CHARACTERISTICS_TEMP_GRADE = INDUSTRIAL\n"
    "\tTEMPERATURE_GRADE = COMMERCIAL\n"
    "\tDEFAULT_VOLTAGE = 0_75V\n"
    "\tFAST_TIMING_CORNERS = \"FAST\"\n"
    "\tSLOW_TIMING_CORNERS = \"SLOW\"\n"
    "\tSLOW_TIMING_CORNERS = \"TYPICAL\"\n"
    "\tMIGRATION_DEVICES = \"LM1C064\"\n"
    "\tMIGRATION_PARTS = \"LM1C032D40C7\"\n"
    "\tORDERING_CODE = \"LM1C032-D40C5\"\n"
    "\tPACKAGE_DDB_FILE_NAME_SUFFIX = \"_d40\"\n"
    "\tNUM_OF_IO = 30\n"
    "\tNUM_OF_LCELLS = 320\n"
    "\tPIN_COUNT = 40\n"
    "\tPIN_COUNT = 44\n"
    "\tPACKAGE = DIP\n"
    "\tORDERING_CODE = \"LM1C032-D44C5\"\n"
    "\tDEV_RESOURCES = {\n"
    "\t\t\"Configuration bits\" = 4096\n"
    "\t}\n"
    "end\n"
    "part LM1C032D40C5\n"
    "\tTRAITS = FASTEST_SPEED_GRADE\n"
    "end\n";

TEST_F(FamilyInfoTextTest, ReadsEveryKeyWithOverwritesAndMergedBlocks) {
    DEV_FAMILY_INFO_MGR_BODY store;
    dir.write("extra.part", "part LM1C032D40C7\n\tFAMILY = LUMIO\n\tDEVICE = LM1C032\nend\n");
    std::string text = std::string("include \"") + dir.file("extra.part") + "\"\n" + FIXTURE;
    ASSERT_TRUE(read(store, "fixture.part", text));
    EXPECT_TRUE(errors().empty()) << errors()[0];

    const DEV_FAMILY_DESC* f = store.find_desc_of(DEV_FAMILY_LUMIO);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(f->get_bak_version(), 300 & 0xFF);
    EXPECT_EQ(f->get_encryption_id(), 7);
    EXPECT_EQ(f->get_base_family_id(), DEV_FAMILY_LUMIO2);
    EXPECT_EQ(f->get_traits().count(), 2u);
    EXPECT_EQ(f->get_migration_families(), "LUMIO2 TESSALY ");
    EXPECT_EQ(f->get_min_military_temp(), -55);
    EXPECT_EQ(f->get_max_commercial_temp(), 90);

    const DEV_PART_DESC* p = store.find_desc_of(DEV_PART_LM1C032D40C5);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->get_pin_count(), 44);
    EXPECT_EQ(p->get_package(), DEV_PKG_DIP);
    EXPECT_EQ(p->get_slow_timing_corners(), "SLOW TYPICAL ");
    EXPECT_TRUE(p->has_trait(DEV_PART_TRAIT_LEAD_FREE));
    EXPECT_TRUE(p->has_trait(DEV_PART_TRAIT_FASTEST_SPEED_GRADE));
    EXPECT_EQ(p->get_dev_resources()[DEV_RESOURCE_CONFIG_BITS], 4096);
    EXPECT_EQ(p->get_dev_resources()[DEV_RESOURCE_ADC_BLOCKS], -1);
    // Two blocks of one part count once; the included part counts too.
    EXPECT_EQ(store.get_part_count(DEV_FAMILY_LUMIO), 2);
    EXPECT_EQ(store.get_device_count(DEV_FAMILY_LUMIO2), 1);

    EXPECT_TRUE(capture().has_debug("LUMIO: overwriting previous value 85 of MAX_COMMERCIAL_TEMP by 90"));
    EXPECT_TRUE(capture().has_debug("LM1C032: overwriting previous value LUMIO of FAMILY by LUMIO2"));
    EXPECT_TRUE(capture().has_debug("LM1C032D40C5: overwriting previous value 40 of PIN_COUNT by 44"));
    EXPECT_TRUE(capture().has_debug("LM1C032D40C5: overwriting previous value PLCC of PACKAGE by DIP"));
    EXPECT_TRUE(capture().has_debug(
        "LM1C032D40C5: overwriting previous value LM1C032-D40C5 of ORDERING_CODE by LM1C032-D44C5"));
    // Replacing 0 and repeating a trait are silent; comments and blank lines give no note.
    EXPECT_EQ(count_notes_starting("LUMIO: overwriting"), 1u);
    EXPECT_EQ(count_notes_starting("Syntax error"), 0u);

    // Dump and read back: the same records, one note per family for the folder line.
    const std::string dump = dir.file("dump.txt");
    ASSERT_TRUE(store.write_family_data(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, FIO_PATH(dump), 0));
    EXPECT_TRUE(capture().has_debug("Wrote ASCII file " + dump));
    const std::string written = read_file(dump);
    EXPECT_EQ(written.rfind("#######################################################\n"
                            "### Family/device/part info - ASCII dump by DEV\n", 0), 0u);
    EXPECT_NE(written.find("family\tLUMIO\n######\t(User name - Lumio)\n\tDEVICES_FOLDER = legacy\n"
                           "\tBAK_VERSION = 44\n\tBASE_FAMILY_ID = LUMIO2\n"), std::string::npos);
    EXPECT_NE(written.find("\tDEV_RESOURCES = {\n\t\t\"Configuration bits\" = 4096\n\t}\nend\n"), std::string::npos);
    clear_reports();
    DEV_FAMILY_INFO_MGR_BODY again;
    ASSERT_TRUE(again.read_family_data(FIO_PATH(dump)));
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(count_notes_starting("Syntax error in file dump.txt"), 1u);
    EXPECT_EQ(count_notes_starting("Syntax error in file dump.txt, line 8: \tDEVICES_FOLDER = legacy"), 1u);
    expect_same_records(store, again);

    // A compressed dump reads back the same.
    const std::string packed = dir.file("dump.ddb");
    ASSERT_TRUE(store.write_family_data(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, FIO_PATH(packed), 9));
    DEV_FAMILY_INFO_MGR_BODY third;
    ASSERT_TRUE(third.read_family_data(FIO_PATH(packed)));
    expect_same_records(store, third);
}

TEST_F(FamilyInfoTextTest, BadValuesAreLocatedErrorsAndTheReadGoesOn) {
    DEV_FAMILY_INFO_MGR_BODY store;
    const std::string path = dir.file("bad.part");
    read(store, "bad.part",
         "family LUMIO\n"
         "\tMIN_COMMERCIAL_TEMP = 0x28\n"
         "\tMIGRATION_FAMILIES = \"LUMIO2 TESSALY\"\n"
         "\tTRAITS = NO_SUCH_TRAIT\n"
         "\tKX_LIBRARY_FAMILY = NOWHERE\n"
         "\tUNIFIED_SUFFIX = \"\"\n"
         "\tTRAITS = lower case value\n"
         "end\n"
         "device NOT_A_DEVICE\n"
         "\tFAMILY = LUMIO\n"
         "end\n"
         "device LM1C064\n"
         "\tBAK_VERSION = 1\n"
         "end\n"
         "part LM1C032D40C7\n"
         "end\n"
         "end\n");
    EXPECT_EQ(errors(), (std::vector<std::string>{
                            "Parsing family info: Invalid MIN_COMMERCIAL_TEMP string 0x28",
                            "Parsing family info: Invalid MIGRATION_FAMILIES string LUMIO2 TESSALY",
                            "Parsing family info: Invalid TRAITS string NO_SUCH_TRAIT",
                            "Parsing family info: Invalid KX_LIBRARY_FAMILY string NOWHERE",
                            "Parsing family info: Invalid UNIFIED_SUFFIX string ",
                            "Error: Invalid device string NOT_A_DEVICE",
                            "Missing family name in file bad.part, line 14: end",
                            "m_part_descriptors[part_enum] != NULL",
                        }));
    EXPECT_TRUE(capture().has_debug("Error at ddb/dev/dev_family_info_reader, line " +
                                    std::to_string(capture().records()[1].line) + " parsing file " + path +
                                    ", line number 2 - Parsing family info: Invalid MIN_COMMERCIAL_TEMP string 0x28"));
    EXPECT_TRUE(capture().has_debug("Syntax error in file bad.part, line 7: \tTRAITS = lower case value"));
    EXPECT_TRUE(capture().has_debug("Syntax error in file bad.part, line 17: end"));
    EXPECT_EQ(store.find_desc_of(DEV_FAMILY_LUMIO)->get_min_commercial_temp(), 0);
    EXPECT_EQ(store.get_device_count(DEV_FAMILY_LUMIO), 0);
}

TEST_F(FamilyInfoTextTest, ResourceListsAdvanceTheLineCounterAndEndChecked) {
    DEV_FAMILY_INFO_MGR_BODY store;
    read(store, "res.part",
         "part LM1C032D40C5\n"
         "\tFAMILY = LUMIO\n"
         "\tDEV_RESOURCES = {\n"
         "\t\t\"Configuration bits\" = 12\n"
         "\t\t\"Flux capacitors\" = 3\n"
         "\tDEV_RESOURCES = {\n"
         "\t}\n"
         "\tDEV_RESOURCES = {\n"
         "\t\t\"Configuration bits\" = 99999999999\n"
         "\tDEV_RESOURCES = {\n"
         "\tjunk\n"
         "\tgarbage\n"
         "end\n");
    const DEV_PART_DESC* p = store.find_desc_of(DEV_PART_LM1C032D40C5);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->get_dev_resources()[DEV_RESOURCE_CONFIG_BITS], 12);
    EXPECT_TRUE(capture().has_debug("Bad device resource line \t\t\"Flux capacitors\" = 3"));
    EXPECT_TRUE(capture().has_debug("Bad resource count 99999999999 on line \t\t\"Configuration bits\" = 99999999999"));
    // The failing entry is then an ordinary block line; the counter moved by 27 per list.
    EXPECT_TRUE(capture().has_debug("Syntax error in file res.part, line 30: \t\t\"Flux capacitors\" = 3"));
    EXPECT_EQ(errors(), std::vector<std::string>{"Bad hash entry or ending: \tjunk"});
    EXPECT_TRUE(capture().has_debug("Syntax error in file res.part, line 115: \tgarbage"));
}

TEST_F(FamilyInfoTextTest, EmptyFilesAndFailedIncludesDecideTheResult) {
    DEV_FAMILY_INFO_MGR_BODY store;
    const std::string empty = dir.write("empty.part", "");
    EXPECT_FALSE(read(store, "outer.part", "family LUMIO\n\tBAK_VERSION = 1\nend\ninclude \"" + empty + "\"\n"));
    EXPECT_TRUE(capture().has_debug("Failed loading included file " + empty));
    EXPECT_NE(store.find_desc_of(DEV_FAMILY_LUMIO), nullptr);
    // The last include decides: a good one after the failed one makes the read succeed.
    const std::string good = dir.write("good.part", "# nothing\n");
    EXPECT_TRUE(read(store, "outer2.part", "include \"" + empty + "\"\ninclude \"" + good + "\"\n"));

    clear_reports();
    EXPECT_FALSE(store.read_family_data(FIO_PATH(dir.file("missing.part"))));
    EXPECT_EQ(errors(), std::vector<std::string>{"Failed opening data file for DEV_PART_MANAGER"});
}

TEST_F(FamilyInfoTextTest, LookupsCheckRangeAndPresence) {
    DEV_FAMILY_INFO_MGR_BODY store;
    EXPECT_EQ(store.get_desc_of(DEV_FAMILY_GENERIC), nullptr);
    EXPECT_EQ(store.get_desc_of(DEV_PART_LM1C032D40C5), nullptr);
    EXPECT_EQ(store.get_family_of(DEV_DEVICE_LM1C032), DEV_FAMILY_INVALID);
    EXPECT_FALSE(store.write_family_data(DEV_FAMILY_INVALID, DEV_FAMILY_DATA_TYPE_INFO, FIO_PATH(dir.file("x")), 0));
    EXPECT_EQ(errors(), (std::vector<std::string>{"(family < DEV_FAMILY_GENERIC) && (family > DEV_FAMILY_INVALID)",
                                                  "Failed obtaining data for part LM1C032D40C5",
                                                  "Failed obtaining data for device LM1C032",
                                                  "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)"}));
    std::string folder;
    store.get_ddb_fullpath_of(DEV_FAMILY_OSTREL, folder);
    EXPECT_EQ(folder, gen_get_ddb_root() + "/ostrel");

    clear_reports();
    const std::string none = dir.file("none.txt");
    ASSERT_TRUE(store.write_family_data(DEV_FAMILY_LUMIO, DEV_FAMILY_DATA_TYPE_PART, FIO_PATH(none), 0));
    EXPECT_NE(read_file(none).find("\n### (none of the requested data was loaded - nothing to write) ###\n"),
              std::string::npos);
    EXPECT_TRUE(capture().has_debug("FAMILY_DATA_MGR has no part information for LUMIO family"));
}

TEST_F(FamilyInfoTextTest, BundledCatalogueReadsCleanlyAndItsDumpReadsBackEqual) {
    const std::string catalogue = std::string(VELCORA_SOURCE_DIR) + "/data/h/dev_part_manager_auto.part";
    DEV_FAMILY_INFO_MGR_BODY store;
    ASSERT_TRUE(store.read_family_data(FIO_PATH(catalogue)));
    EXPECT_TRUE(errors().empty()) << errors().front();
    EXPECT_EQ(count_notes_starting("Syntax error"), 0u);
    int parts = 0;
    for (int f = 1; f < DEV_FAMILY_GENERIC; ++f) parts += store.get_part_count(DEV_FAMILY_ENUM(f));
    EXPECT_GT(parts, 1000);

    const std::string dump = dir.file("all.txt");
    ASSERT_TRUE(store.write_family_data(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, FIO_PATH(dump), 0));
    DEV_FAMILY_INFO_MGR_BODY again;
    ASSERT_TRUE(again.read_family_data(FIO_PATH(dump)));
    EXPECT_TRUE(errors().empty());
    expect_same_records(store, again);
}

// An include that would read a file already being read, or that nests too deep, is refused
// with one error naming the chain of files; the including file is read on.
TEST_F(FamilyInfoTextTest, IncludeCyclesAndRunawayNestingAreRefused) {
    DEV_FAMILY_INFO_MGR_BODY store;
    const std::string self = dir.file("self.part");
    const std::string family = "family LUMIO\n\tBAK_VERSION = 3\nend\n";
    EXPECT_FALSE(read(store, "self.part", "include \"" + self + "\"\n" + family));
    EXPECT_EQ(errors(), std::vector<std::string>{"Refused to include " + self + ": it is already being read (" + self +
                                                 " -> " + self + ")"});
    EXPECT_TRUE(capture().has_debug("Failed loading included file " + self));
    ASSERT_TRUE(store.find_desc_of(DEV_FAMILY_LUMIO));
    EXPECT_EQ(store.find_desc_of(DEV_FAMILY_LUMIO)->get_bak_version(), 3);

    clear_reports();
    const std::string a = dir.file("a.part"), b = dir.file("b.part");
    dir.write("b.part", "include \"" + dir.path() + "/./a.part\"\n");
    EXPECT_FALSE(read(store, "a.part", "include \"" + b + "\"\n"));
    EXPECT_EQ(errors(), std::vector<std::string>{"Refused to include " + dir.path() + "/./a.part" +
                                                 ": it is already being read (" + a + " -> " + b + " -> " +
                                                 dir.path() + "/./a.part)"});

    // A chain of distinct files deeper than the limit: the first include past it is refused.
    clear_reports();
    const int files = 64 + 5;
    for (int i = files; i-- > 0;)
        dir.write("n" + std::to_string(i) + ".part",
                  i + 1 < files ? "include \"" + dir.file("n" + std::to_string(i + 1) + ".part") + "\"\n" : family);
    EXPECT_FALSE(store.read_family_data(FIO_PATH(dir.file("n0.part"))));
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_EQ(errors()[0].rfind("Refused to include " + dir.file("n64.part") + ": includes nest deeper than 64 files (" +
                                    dir.file("n0.part") + " -> ",
                                0),
              0u)
        << errors()[0];
}

}  // namespace
