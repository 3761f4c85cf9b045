// The enumeration tables' look-ups: validity of sparse enumerations and the operating-point
// columns read both ways. (Bounds and fixed members are pinned by static_asserts beside the
// tables.)
#include <gtest/gtest.h>

#include <climits>

#include "host/dstr.h"

namespace {

TEST(EnumValues, SparseFamilyTraitsAreValidExactlyWhereNamed) {
    for (int v : {-1, 0, 162, 163}) EXPECT_FALSE(dstr_is_valid_dev_family_trait_enum(v)) << v;
    int gaps = 0;
    for (int v = 1; v < DEV_FAMILY_TRAIT_GENERIC; ++v) {
        const bool named = *dstr_get_debug_string(static_cast<DEV_FAMILY_TRAIT_ENUM>(v)) != '\0';
        EXPECT_EQ(dstr_is_valid_dev_family_trait_enum(v), named) << v;
        gaps += !named;
    }
    EXPECT_GT(gaps, 0);
}

TEST(EnumValues, OperatingPointsReadBothWays) {
    for (int v = DEV_VOLTAGE_INVALID + 1; v < DEV_VOLTAGE_GENERIC; ++v) {
        const int mv = dstr_get_voltage_millivolts(v);
        if (mv != DEV_NO_MILLIVOLTS) {
            EXPECT_EQ(dstr_get_voltage_by_millivolts(mv), v);
        }
    }
    EXPECT_EQ(dstr_get_voltage_millivolts(DEV_VOLTAGE_1_2V), 1200);
    for (int v : {-1, 0, 28, 29}) EXPECT_EQ(dstr_get_voltage_millivolts(v), -1) << v;
    EXPECT_EQ(dstr_get_voltage_by_millivolts(1234), DEV_VOLTAGE_INVALID);
    EXPECT_EQ(dstr_get_voltage_by_millivolts(INT_MAX), DEV_VOLTAGE_INVALID);

    for (int m = DEV_TIMING_MODEL_INVALID + 1; m < DEV_TIMING_MODEL_GENERIC; ++m) {
        DEV_VOLTAGE_ENUM voltage = DEV_VOLTAGE_GENERIC;
        int temperature = 0;
        ASSERT_TRUE(dstr_get_timing_model_operating_point(m, &voltage, &temperature)) << m;
        if (voltage != DEV_VOLTAGE_INVALID) {
            EXPECT_EQ(dstr_get_timing_model_by_operating_point(voltage, temperature), m) << m;
        }
    }
    DEV_VOLTAGE_ENUM voltage = DEV_VOLTAGE_GENERIC;
    int temperature = 7;
    for (int v : {0, 57, 58, -1}) EXPECT_FALSE(dstr_get_timing_model_operating_point(v, &voltage, &temperature)) << v;
    EXPECT_EQ(voltage, DEV_VOLTAGE_GENERIC);
    EXPECT_EQ(temperature, 7);
    EXPECT_EQ(dstr_get_timing_model_by_operating_point(DEV_VOLTAGE_1_2V, 25), DEV_TIMING_MODEL_INVALID);
}

}  // namespace
