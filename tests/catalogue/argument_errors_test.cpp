// Out-of-range arguments and null outputs: the exact internal-error texts, and the defaults
// the queries return afterwards. Also the fixed tables of voltages and timing models.
#include <gtest/gtest.h>

#include "capture_fixture.h"
#include "dev_family_info_mgr_body.h"
#include "dev_family_manager.h"
#include "dev_part_manager.h"
#include "expectation.h"

namespace {

const char* const kPartRange = "part > DEV_PART_INVALID && part < DEV_PART_GENERIC";

class ArgumentErrors : public CaptureTest {
protected:
    DEV_FAMILY_INFO_MGR_BODY store;  // empty: every record is absent
    DEV_PART_MANAGER pm{&store};
    DEV_FAMILY_MANAGER fm{&store};
    std::vector<std::string> take() {
        std::vector<std::string> e = errors();
        clear_reports();
        return e;
    }
};

}  // namespace

TEST_F(ArgumentErrors, PartQueriesOutsideTheRange) {
    for (int bad : {0, static_cast<int>(DEV_PART_GENERIC), -7, 100000}) {
        const DEV_PART_ENUM p = static_cast<DEV_PART_ENUM>(bad);
        EXPECT_EQ(pm.get_family_of(p), DEV_FAMILY_INVALID);
        EXPECT_EQ(pm.get_pin_count_of(p), 0);
        EXPECT_EQ(pm.get_ordering_code_of(p), "");
        EXPECT_STREQ(pm.get_user_string_name(p), "");
        EXPECT_TRUE(pm.get_voltage_list(p).empty());
        EXPECT_TRUE(pm.get_max_temp_list(p).empty());
        EXPECT_EQ(pm.get_default_voltage(p), DEV_VOLTAGE_INVALID);
        EXPECT_EQ(pm.get_default_max_temp(p), 0);
        EXPECT_EQ(pm.get_device_resource_count_of(p, static_cast<DEV_RESOURCE_ENUM>(0)), -1);
        EXPECT_EQ(pm.get_best_match_timing_model_enum(p, DAT_SLOW_MODEL, DEV_VOLTAGE_1_2V, 85), DEV_TIMING_MODEL_INVALID);
        EXPECT_EQ(take(), std::vector<std::string>(10, kPartRange)) << bad;
    }
    // In range but not loaded: the store's message, once per query.
    EXPECT_EQ(pm.get_speed_of(static_cast<DEV_PART_ENUM>(1)), DEV_SPEED_INVALID);
    EXPECT_EQ(take(), std::vector<std::string>{std::string("Failed obtaining data for part ") +
                                               dstr_get_debug_string(static_cast<DEV_PART_ENUM>(1))});
}

TEST_F(ArgumentErrors, TraitCornerAndResourceBounds) {
    const DEV_PART_ENUM p = static_cast<DEV_PART_ENUM>(1);
    for (int t : {0, 34}) EXPECT_FALSE(pm.test_part_trait_of(p, static_cast<DEV_PART_TRAIT_ENUM>(t)));
    EXPECT_EQ(take(), std::vector<std::string>(2, "(trait < DEV_PART_TRAIT_GENERIC) && (trait > DEV_PART_TRAIT_INVALID)"));
    for (int t : {0, 12})
        EXPECT_FALSE(pm.test_device_trait_of(static_cast<DEV_DEVICE_ENUM>(1), static_cast<DEV_DEVICE_TRAIT_ENUM>(t)));
    EXPECT_EQ(take(),
              std::vector<std::string>(2, "(trait < DEV_DEVICE_TRAIT_GENERIC) && (trait > DEV_DEVICE_TRAIT_INVALID)"));
    for (int c : {0, 57}) EXPECT_FALSE(pm.test_slow_timing_corner_of(p, static_cast<DEV_TIMING_MODEL_ENUM>(c)));
    EXPECT_EQ(take(), std::vector<std::string>(2, "corner > DEV_TIMING_MODEL_INVALID && corner < DEV_TIMING_MODEL_GENERIC"));
    for (int r : {-1, 26, 27}) EXPECT_EQ(pm.get_device_resource_count_of(p, static_cast<DEV_RESOURCE_ENUM>(r)), -1);
    EXPECT_EQ(take(), std::vector<std::string>(3, "(resource < DEV_RESOURCE_MAX) && (resource > DEV_RESOURCE_INVALID)"));
    EXPECT_FALSE(pm.test_voltage_of(p, static_cast<DEV_VOLTAGE_ENUM>(28)));
    EXPECT_EQ(take(), std::vector<std::string>{"voltage > DEV_VOLTAGE_INVALID && voltage < DEV_VOLTAGE_GENERIC"});
    pm.filter_part_list(nullptr, "any", "any", "any", "any", "any");
    EXPECT_EQ(take(), std::vector<std::string>{"parts != NULL"});
}

TEST_F(ArgumentErrors, FamilyQueries) {
    const DEV_FAMILY_ENUM f = static_cast<DEV_FAMILY_ENUM>(1);
    EXPECT_FALSE(fm.has_new_ddb_support(DEV_FAMILY_INVALID));
    EXPECT_FALSE(fm.has_new_ddb_support(DEV_FAMILY_GENERIC));
    EXPECT_EQ(take(), (std::vector<std::string>{"family > DEV_FAMILY_INVALID", "family < DEV_FAMILY_GENERIC"}));
    EXPECT_FALSE(fm.test_trait_of(f, static_cast<DEV_FAMILY_TRAIT_ENUM>(162)));
    EXPECT_EQ(take(), std::vector<std::string>{"(trait < DEV_FAMILY_TRAIT_GENERIC) && (trait > DEV_FAMILY_TRAIT_INVALID)"});
    EXPECT_EQ(fm.get_bak_version_of(DEV_FAMILY_GENERIC), 0);
    EXPECT_EQ(take(), std::vector<std::string>{"(family < DEV_FAMILY_GENERIC) && (family > DEV_FAMILY_INVALID)"});

    // Grades are checked against a loaded record.
    DEV_FAMILY_INFO_MGR_BODY one;
    TempDir dir;
    ASSERT_TRUE(one.read_family_data(FIO_PATH(dir.write("f.part", "family " + std::string(dstr_get_debug_string(f)) +
                                                                      "\n\tMAX_MILITARY_TEMP = 125\nend\n"))));
    DEV_FAMILY_MANAGER fm1(&one);
    EXPECT_EQ(fm1.get_max_temperature_of(f, DEV_TEMPERATURE_MILITARY), 125);
    EXPECT_EQ(fm1.get_max_temperature_of(f, static_cast<DEV_TEMPERATURE_ENUM>(0)), 0);
    EXPECT_EQ(fm1.get_min_temperature_of(f, static_cast<DEV_TEMPERATURE_ENUM>(6)), 0);
    EXPECT_EQ(take(), (std::vector<std::string>{
                          "Illegal value (0) of temprerature grade argument in get_max_temperature_of",
                          "Illegal value (6) of temprerature grade argument in get_min_temperature_of"}));
    std::vector<DEV_FAMILY_ENUM> families{f};
    fm1.filter_family_list(&families, DEV_FAMILY_INVALID, nullptr, false);
    EXPECT_TRUE(families.empty());
    EXPECT_EQ(take(), std::vector<std::string>{"(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)"});
}

TEST_F(ArgumentErrors, VoltageTable) {
    for (int v = 1; v <= 27; ++v) EXPECT_EQ(DEV_PART_MANAGER::voltage_enum_to_mv(static_cast<DEV_VOLTAGE_ENUM>(v)),
                                            expect::millivolts(v)) << v;
    for (int v = 1; v <= 24; ++v)
        EXPECT_EQ(DEV_PART_MANAGER::voltage_mv_to_enum(expect::millivolts(v)), v) << v;
    EXPECT_EQ(DEV_PART_MANAGER::voltage_mv_to_enum(1200), DEV_VOLTAGE_1_2V);
    EXPECT_EQ(DEV_PART_MANAGER::voltage_mv_to_enum(1234), DEV_VOLTAGE_INVALID);
    EXPECT_EQ(DEV_PART_MANAGER::voltage_mv_to_enum(2147483647), DEV_VOLTAGE_INVALID);
    EXPECT_TRUE(errors().empty());
    EXPECT_EQ(DEV_PART_MANAGER::voltage_enum_to_mv(DEV_VOLTAGE_INVALID), -1);
    EXPECT_EQ(DEV_PART_MANAGER::voltage_enum_to_mv(DEV_VOLTAGE_GENERIC), -1);
    EXPECT_EQ(take(), std::vector<std::string>(2, "voltage > DEV_VOLTAGE_INVALID && voltage < DEV_VOLTAGE_GENERIC"));
}

TEST_F(ArgumentErrors, TimingModelTable) {
    for (int m = -3; m <= 62; ++m) {
        const DEV_TIMING_MODEL_ENUM model = static_cast<DEV_TIMING_MODEL_ENUM>(m);
        DEV_VOLTAGE_ENUM v = DEV_VOLTAGE_5_0V;
        int t = 1;
        DEV_PART_MANAGER::get_vt_from_timing_model_enum(model, &v, &t);
        EXPECT_EQ(std::make_pair(static_cast<int>(v), t), expect::operating_point(m)) << m;
        EXPECT_EQ(DEV_PART_MANAGER::get_voltage_from_timing_model_enum(model), v);
        EXPECT_EQ(DEV_PART_MANAGER::get_temperature_from_timing_model_enum(model), t);
        const bool illegal = m == 0 || m == 57 || m == 58;
        EXPECT_EQ(take(), std::vector<std::string>(illegal ? 3 : 0, "Illegal TIMING_MODEL_ENUM")) << m;
        // The inverse look-up finds every model with an operating point of its own.
        if (m >= 7 && m <= 56) {
            EXPECT_EQ(DEV_PART_MANAGER::get_timing_model_enum_from_vt(v, t), model);
        }
    }
    EXPECT_EQ(DEV_PART_MANAGER::get_timing_model_enum_from_vt(DEV_VOLTAGE_1_2V, 110), DEV_TIMING_MODEL_INVALID);
    DEV_VOLTAGE_ENUM v;
    int t;
    DEV_PART_MANAGER::get_vt_from_timing_model_enum(static_cast<DEV_TIMING_MODEL_ENUM>(9), nullptr, &t);
    DEV_PART_MANAGER::get_vt_from_timing_model_enum(static_cast<DEV_TIMING_MODEL_ENUM>(9), &v, nullptr);
    EXPECT_EQ(t, 85);
    EXPECT_EQ(v, DEV_VOLTAGE_1_2V);
    EXPECT_EQ(take(), (std::vector<std::string>{"return_voltage != 0", "return_temp != 0"}));
}
