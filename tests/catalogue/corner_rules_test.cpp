// The voltage, temperature and best-match rules at their boundaries, on a small catalogue
// written by the test and read through the store's text reader.
#include <gtest/gtest.h>

#include <climits>

#include "capture_fixture.h"
#include "dev_family_info_mgr_body.h"
#include "dev_part_manager.h"

namespace {

std::string family_name(int v) { return dstr_get_debug_string(static_cast<DEV_FAMILY_ENUM>(v)); }
std::string device_name(int v) { return dstr_get_debug_string(static_cast<DEV_DEVICE_ENUM>(v)); }
DEV_PART_ENUM P(int v) { return static_cast<DEV_PART_ENUM>(v); }
DEV_TIMING_MODEL_ENUM M(const char* name) { return dstr_get_dev_timing_model_enum_by_string(name); }
DEV_VOLTAGE_ENUM V(const char* name) { return dstr_get_dev_voltage_enum_by_string(name); }

// Families: 1 takes temperatures from its grades, 2 from its timing corners, 41 is the family
// whose voltage lists leave out the device voltage.
std::string family_block(int f, const std::string& body) {
    return "family " + family_name(f) + "\n\tBAK_VERSION = 1\n" + body + "end\n";
}
std::string device_block(int d, int f, const char* voltage) {
    return "device " + device_name(d) + "\n\tFAMILY = " + family_name(f) + "\n" +
           (voltage ? std::string("\tVOLTAGE = ") + voltage + "\n" : "") + "end\n";
}
std::string part_block(int p, int f, int d, const std::string& grade, const char* default_voltage,
                       const std::vector<std::string>& slow, const std::vector<std::string>& fast) {
    std::string s = "part " + std::string(dstr_get_debug_string(P(p))) + "\n\tFAMILY = " + family_name(f) +
                    "\n\tDEVICE = " + device_name(d) + "\n\tORDERING_CODE = \"FX-" + std::to_string(p) + "\"\n";
    if (!grade.empty()) s += "\tTEMPERATURE_GRADE = " + grade + "\n";
    if (default_voltage) s += std::string("\tDEFAULT_VOLTAGE = ") + default_voltage + "\n";
    for (const std::string& c : slow) s += "\tSLOW_TIMING_CORNERS = \"" + c + "\"\n";
    for (const std::string& c : fast) s += "\tFAST_TIMING_CORNERS = \"" + c + "\"\n";
    return s + "end\n";
}

struct FIXTURE {
    TempDir dir;
    DEV_FAMILY_INFO_MGR_BODY store;
    bool ok = false;
    FIXTURE() {
        const std::string corner_trait = dstr_get_debug_string(static_cast<DEV_FAMILY_TRAIT_ENUM>(151));
        std::string t;
        t += family_block(1, "\tMAX_COMMERCIAL_TEMP = 100\n\tMIN_COMMERCIAL_TEMP = 0\n"
                             "\tMAX_INDUSTRIAL_TEMP = 100\n\tMIN_INDUSTRIAL_TEMP = -40\n"
                             "\tMAX_EXTENDED_TEMP = 0\n\tMIN_EXTENDED_TEMP = 0\n");
        t += family_block(2, "\tTRAITS = " + corner_trait + "\n\tMAX_COMMERCIAL_TEMP = 70\n");
        t += family_block(41, "\tMAX_COMMERCIAL_TEMP = 85\n");
        t += device_block(1, 1, "1_2V") + device_block(2, 1, nullptr) + device_block(3, 2, "1_2V") +
             device_block(4, 41, "1_2V") + device_block(5, 1, "3_3V");
        const std::string C = "COMMERCIAL";
        t += part_block(1, 1, 1, C, "1_2V", {"1200MV_125C", "1200MV_100C"}, {"1200MV_0C", "1200MV_N40C"});
        t += part_block(2, 1, 1, C, "1_2V", {"1100MV_100C", "1200MV_0C"}, {});
        t += part_block(3, 1, 1, C, "1_2V", {"SLOW", "1200MV_100C"}, {});
        t += part_block(4, 1, 1, C, "1_2V", {"1200MV_100C", "SLOW"}, {});
        t += part_block(5, 1, 1, C, "1_2V", {"1100MV_85C", "1000MV_85C"}, {});
        t += part_block(6, 1, 1, C, "1_2V", {"1000MV_85C", "1100MV_85C"}, {});
        t += part_block(7, 1, 2, C, nullptr, {"SLOW"}, {});
        t += part_block(8, 1, 1, C, nullptr, {"1100MV_85C"}, {});
        t += part_block(9, 1, 5, C, nullptr, {"SLOW"}, {});
        t += part_block(10, 1, 5, C, nullptr, {}, {});
        t += part_block(11, 1, 1, "EXTENDED", "1_2V", {"SLOW"}, {"FAST"});
        t += part_block(12, 1, 1, "", "1_2V", {"SLOW"}, {"FAST"});
        t += part_block(13, 1, 1, "INDUSTRIAL", "1_2V", {"SLOW"}, {"FAST"});
        t += part_block(14, 2, 3, C, "1_2V", {"1200MV_0C", "1200MV_100C", "1200MV_125C", "SLOW"},
                        {"1200MV_N40C", "1200MV_0C"});
        t += part_block(15, 2, 3, C, "1_2V", {"1200MV_0C", "1200MV_N40C"}, {"1200MV_85C"});
        t += part_block(16, 2, 3, C, "1_2V", {}, {});
        t += part_block(17, 41, 4, C, "0_9V", {"900MV_85C", "900MV_100C"}, {"900MV_0C"});
        t += part_block(18, 1, 1, C, "1_2V", {"1200MV_85C"}, {});
        MSG_CAPTURE quiet;
        ok = store.read_family_data(FIO_PATH(dir.write("fixture.part", t)));
        // A corner name the text reader would refuse, as a damaged persistent file could hold.
        if (ok) store.get_desc_of(P(18))->set_slow_timing_corners("BOGUS 1200MV_85C ");
    }
};

FIXTURE& fixture() {
    static FIXTURE f;
    return f;
}

class CornerRules : public CaptureTest {
protected:
    void SetUp() override {
        CaptureTest::SetUp();
        ASSERT_TRUE(fixture().ok);
    }
    DEV_PART_MANAGER pm{&fixture().store};
    DEV_TIMING_MODEL_ENUM slow(int p, const char* v, int t) {
        return pm.get_best_match_timing_model_enum(P(p), DAT_SLOW_MODEL, V(v), t);
    }
    DEV_TIMING_MODEL_ENUM fast(int p, const char* v, int t) {
        return pm.get_best_match_timing_model_enum(P(p), DAT_FAST_MODEL, V(v), t);
    }
};

}  // namespace

TEST_F(CornerRules, BestMatchTakesTheClosestCornerOnTheSafeSide) {
    EXPECT_EQ(slow(1, "1_2V", 85), M("1200MV_100C"));   // 100 is closer than 125
    EXPECT_EQ(slow(1, "1_2V", 100), M("1200MV_100C"));  // exact
    EXPECT_EQ(slow(1, "1_2V", 125), M("1200MV_125C"));
    EXPECT_EQ(slow(1, "1_2V", 130), M("1200MV_125C"));  // none above: the default corner
    EXPECT_EQ(fast(1, "1_2V", 25), M("1200MV_0C"));     // fast corners lie at or below
    EXPECT_EQ(fast(1, "1_2V", -40), M("1200MV_N40C"));
    EXPECT_EQ(fast(1, "1_2V", -55), M("1200MV_0C"));    // none below: the default corner
    // Only a corner below the requested temperature at that voltage: the default corner.
    EXPECT_EQ(slow(2, "1_2V", 85), M("1100MV_100C"));
    EXPECT_TRUE(errors().empty());
}

TEST_F(CornerRules, BestMatchTiesFallbacksAndEmptyLists) {
    // A corner without an operating point stands at the device voltage and the default
    // maximum temperature (100 here); of two equally close corners the first wins.
    EXPECT_EQ(slow(3, "1_2V", 85), M("SLOW"));
    EXPECT_EQ(slow(4, "1_2V", 85), M("1200MV_100C"));
    // No corner at the voltage: the corner at the temperature with the highest voltage.
    EXPECT_EQ(slow(5, "1_2V", 85), M("1100MV_85C"));
    EXPECT_EQ(slow(6, "1_2V", 85), M("1100MV_85C"));
    EXPECT_EQ(slow(6, "1_2V", 100), M("1000MV_85C"));  // nothing fits: the default corner
    EXPECT_EQ(slow(10, "3_3V", 85), DEV_TIMING_MODEL_INVALID);
    EXPECT_EQ(fast(2, "1_2V", 0), DEV_TIMING_MODEL_INVALID);
    EXPECT_TRUE(errors().empty());

    EXPECT_EQ(pm.get_best_match_timing_model_enum(P(1), static_cast<dat_timing_models>(2), V("1_2V"), 85),
              DEV_TIMING_MODEL_INVALID);
    EXPECT_EQ(slow(1, "NOT_A_VOLTAGE", 85), M("1200MV_125C"));
    EXPECT_EQ(errors(), (std::vector<std::string>{"This function only accepts DAT_SLOW_MODEL or DAT_FAST_MODEL",
                                                  "voltage != DEV_VOLTAGE_INVALID"}));
}

TEST_F(CornerRules, DefaultVoltageRulesInOrder) {
    EXPECT_EQ(pm.get_default_voltage(P(1)), V("1_2V"));  // the part's own
    EXPECT_EQ(pm.get_default_voltage(P(8)), V("1_1V"));  // its default slow corner's
    EXPECT_EQ(pm.get_default_voltage(P(9)), V("3_3V"));  // the device's
    EXPECT_EQ(pm.get_default_voltage(P(7)), V("5_0V"));  // nothing gives one
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(pm.get_default_voltage(P(10)), V("3_3V"));
    EXPECT_EQ(errors(), std::vector<std::string>{"default_slow_corner != DEV_TIMING_MODEL_INVALID"});
}

TEST_F(CornerRules, VoltageLists) {
    auto sorted = [](std::vector<DEV_VOLTAGE_ENUM> v) {
        std::sort(v.begin(), v.end());
        return v;
    };
    EXPECT_EQ(sorted(pm.get_voltage_list(P(8))), (std::vector<DEV_VOLTAGE_ENUM>{V("1_1V"), V("1_2V")}));
    EXPECT_TRUE(pm.has_selectable_core_voltage(P(8)));
    EXPECT_EQ(pm.get_voltage_list(P(1)), std::vector<DEV_VOLTAGE_ENUM>{V("1_2V")});  // each voltage once
    EXPECT_FALSE(pm.has_selectable_core_voltage(P(1)));
    EXPECT_EQ(pm.get_voltage_list(P(17)), std::vector<DEV_VOLTAGE_ENUM>{V("0_9V")});  // family 41
    EXPECT_TRUE(errors().empty());
    EXPECT_TRUE(pm.get_voltage_list(P(7)).empty());  // no device voltage, corners without one
    EXPECT_EQ(errors(), std::vector<std::string>{"device_voltage != DEV_VOLTAGE_INVALID"});
}

TEST_F(CornerRules, TemperaturesFromTheFamilyGrades) {
    EXPECT_EQ(pm.get_default_max_temp(P(13)), 100);
    EXPECT_EQ(pm.get_default_min_temp(P(13)), -40);
    // A grade whose range is empty, and no grade at all: 85 and 0.
    for (int p : {11, 12}) {
        EXPECT_EQ(pm.get_default_max_temp(P(p)), 85) << p;
        EXPECT_EQ(pm.get_default_min_temp(P(p)), 0) << p;
        EXPECT_EQ(pm.get_max_temp_list(P(p)), std::vector<int>{85});
        EXPECT_EQ(pm.get_min_temp_list(P(p)), std::vector<int>{0});
        EXPECT_FALSE(pm.has_selectable_temperature_range(P(p)));
    }
    EXPECT_TRUE(pm.test_temp_range_of(P(13), -40, 100));
    EXPECT_FALSE(pm.test_temp_range_of(P(13), 0, 100));
    EXPECT_TRUE(errors().empty());
}

TEST_F(CornerRules, TemperaturesFromTheTimingCorners) {
    EXPECT_EQ(pm.get_default_max_temp(P(14)), 100);  // the first corner above room temperature
    EXPECT_EQ(pm.get_default_min_temp(P(14)), -40);  // the first fast corner
    auto sorted = [](std::vector<int> v) {
        std::sort(v.begin(), v.end());
        return v;
    };
    EXPECT_EQ(sorted(pm.get_max_temp_list(P(14))), (std::vector<int>{0, 100, 125}));  // SLOW left out
    EXPECT_EQ(sorted(pm.get_min_temp_list(P(14))), (std::vector<int>{-40, 0}));
    EXPECT_TRUE(pm.has_selectable_temperature_range(P(14)));
    EXPECT_TRUE(pm.test_temp_range_of(P(14), 0, 125));
    EXPECT_FALSE(pm.test_temp_range_of(P(14), -40, 85));
    // The corner without an operating point takes the default maximum temperature.
    EXPECT_EQ(pm.get_best_match_timing_model_enum(P(14), DAT_SLOW_MODEL, V("1_2V"), 100), M("1200MV_100C"));
    EXPECT_TRUE(errors().empty() && notes().empty());

    EXPECT_EQ(pm.get_default_max_temp(P(15)), 0);  // none above 25: the highest seen
    EXPECT_EQ(notes(), std::vector<std::string>{
                           "Warning: No temperature above 25c is found in the slow_timing_corners list for part FX-15"});
    EXPECT_EQ(pm.get_default_min_temp(P(15)), 85);
    EXPECT_EQ(errors(), std::vector<std::string>{"result < ROOM_TEMPERATURE"});
    clear_reports();
    EXPECT_EQ(pm.get_default_max_temp(P(16)), INT_MIN);
    EXPECT_EQ(pm.get_default_min_temp(P(16)), 0);
    EXPECT_EQ(errors(), std::vector<std::string>{"fast_tim_corner_list[0] != DEV_TIMING_MODEL_INVALID"});
    EXPECT_TRUE(pm.get_max_temp_list(P(16)).empty());
}

TEST_F(CornerRules, UnknownCornerNamesAreReportedAndSkipped) {
    const std::vector<DEV_TIMING_MODEL_ENUM> list = pm.get_slow_timing_corner_list(P(18));
    EXPECT_EQ(list, (std::vector<DEV_TIMING_MODEL_ENUM>{DEV_TIMING_MODEL_INVALID, M("1200MV_85C")}));
    EXPECT_EQ(errors(), std::vector<std::string>{"::dstr_exists_dev_timing_model_enum_by_string(enum_string.c_str())"});
    clear_reports();
    EXPECT_EQ(pm.get_voltage_list(P(18)), std::vector<DEV_VOLTAGE_ENUM>{V("1_2V")});
    EXPECT_EQ(errors(), (std::vector<std::string>{"::dstr_exists_dev_timing_model_enum_by_string(enum_string.c_str())",
                                                  "corner_list[i] != DEV_TIMING_MODEL_INVALID"}));
    clear_reports();
    EXPECT_EQ(slow(18, "1_2V", 85), M("1200MV_85C"));
    EXPECT_EQ(pm.get_slow_corner_voltage_temperature_pairs(P(18)),
              (std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR>{{V("1_2V"), 85}}));
    EXPECT_EQ(pm.get_default_slow_timing_corner(P(18)), DEV_TIMING_MODEL_INVALID);
}

// The lists are derived from the records: replacing a record or clearing the store must not
// leave an answer computed from the old record.
TEST_F(CornerRules, DerivedListsFollowTheRecords) {
    DEV_FAMILY_INFO_MGR_BODY store;
    {
        MSG_CAPTURE quiet;
        ASSERT_TRUE(store.read_family_data(
            FIO_PATH(fixture().dir.write("small.part", family_block(1, "\tMAX_COMMERCIAL_TEMP = 100\n") +
                                                           device_block(1, 1, "1_2V") +
                                                           part_block(1, 1, 1, "COMMERCIAL", "1_2V",
                                                                      {"1200MV_125C", "1100MV_100C"}, {})))));
    }
    const DEV_PART_MANAGER own(&store);
    EXPECT_EQ(own.get_voltage_list(P(1)).size(), 2u);
    EXPECT_EQ(own.get_max_temp_list(P(1)), std::vector<int>{100});

    auto* replacement = new DEV_PART_DESC(*store.get_desc_of(P(1)));
    replacement->set_slow_timing_corners("1200MV_125C ");
    replacement->set_temperature_grade(DEV_TEMPERATURE_INVALID);
    ASSERT_TRUE(store.take_desc(replacement, true));
    EXPECT_EQ(own.get_voltage_list(P(1)), std::vector<DEV_VOLTAGE_ENUM>{V("1_2V")});
    EXPECT_EQ(own.get_max_temp_list(P(1)), std::vector<int>{85});

    store.clear();
    EXPECT_TRUE(own.get_voltage_list(P(1)).empty());
    EXPECT_TRUE(own.get_min_temp_list(P(1)).empty());
}
