// Every bound, count and fixed value of the enumerations, against the numbers that the
// readers, the part manager and the data files rely on.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "dev_element_code.h"
#include "host/dstr.h"

namespace {

struct FIXED {
    const char* name;
    long long actual;
    long long expected;
};

TEST(EnumValues, FixedBoundsAndMembers) {
    const FIXED fixed[] = {
        {"DEV_FAMILY_INVALID", DEV_FAMILY_INVALID, 0},
        {"DEV_FAMILY_GENERIC", DEV_FAMILY_GENERIC, 48},
        {"DEV_FAMILY_MAX", DEV_FAMILY_MAX, 49},
        {"DEV_DEVICE_GENERIC", DEV_DEVICE_GENERIC, 323},
        {"DEV_PART_INVALID", DEV_PART_INVALID, 0},
        {"DEV_SPEED_GENERIC", DEV_SPEED_GENERIC, 16},
        {"DEV_PKG_GENERIC", DEV_PKG_GENERIC, 31},
        {"DEV_FAMILY_TRAIT_NOT_LISTED", DEV_FAMILY_TRAIT_NOT_LISTED, 4},
        {"DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT", DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT, 5},
        {"DEV_FAMILY_TRAIT_NOT_INSTALLED", DEV_FAMILY_TRAIT_NOT_INSTALLED, 7},
        {"DEV_FAMILY_TRAIT_FITTER_ECO", DEV_FAMILY_TRAIT_FITTER_ECO, 51},
        {"DEV_FAMILY_TRAIT_GENERIC", DEV_FAMILY_TRAIT_GENERIC, 162},
        {"DEV_DEVICE_TRAIT_GENERIC", DEV_DEVICE_TRAIT_GENERIC, 12},
        {"DEV_PART_TRAIT_NO_POF", DEV_PART_TRAIT_NO_POF, 4},
        {"DEV_PART_TRAIT_NOT_LISTED", DEV_PART_TRAIT_NOT_LISTED, 7},
        {"DEV_PART_TRAIT_NO_PIN_OUT", DEV_PART_TRAIT_NO_PIN_OUT, 9},
        {"DEV_PART_TRAIT_ADVANCED_INFO", DEV_PART_TRAIT_ADVANCED_INFO, 18},
        {"DEV_PART_TRAIT_GENERIC", DEV_PART_TRAIT_GENERIC, 34},
        {"DEV_VOLTAGE_GENERIC", DEV_VOLTAGE_GENERIC, 28},
        {"DEV_TIMING_MODEL_GENERIC", DEV_TIMING_MODEL_GENERIC, 57},
        {"DEV_TIMING_MODEL_MAX", DEV_TIMING_MODEL_MAX, 58},
        {"DEV_TEMPERATURE_COMMERCIAL", DEV_TEMPERATURE_COMMERCIAL, 1},
        {"DEV_TEMPERATURE_INDUSTRIAL", DEV_TEMPERATURE_INDUSTRIAL, 2},
        {"DEV_TEMPERATURE_EXTENDED", DEV_TEMPERATURE_EXTENDED, 3},
        {"DEV_TEMPERATURE_AUTOMOTIVE", DEV_TEMPERATURE_AUTOMOTIVE, 4},
        {"DEV_TEMPERATURE_MILITARY", DEV_TEMPERATURE_MILITARY, 5},
        {"DEV_RESOURCE_INVALID", DEV_RESOURCE_INVALID, -1},
        {"DEV_RESOURCE_USER_IO", DEV_RESOURCE_USER_IO, 16},
        {"DEV_RESOURCE_END", DEV_RESOURCE_END, 26},
        {"DEV_RESOURCE_MAX", DEV_RESOURCE_MAX, 27},
        {"DEV_LOCATION_GENERIC", DEV_LOCATION_GENERIC, 23},
        {"DEV_ELEMENT_GENERIC", DEV_ELEMENT_GENERIC, 795},
        {"CDB_RE_ILLEGAL_TYPE", CDB_RE_ILLEGAL_TYPE, 891},
        {"DEV_IO_STANDARD_INVALID", DEV_IO_STANDARD_INVALID, 0},
        {"DEV_IO_STANDARD_MAX", DEV_IO_STANDARD_MAX, 84},
        {"DEV_IO_RULE_INVALID", DEV_IO_RULE_INVALID, -1},
        {"DEV_IO_RULE_MAX", DEV_IO_RULE_MAX, 50},
        {"DEV_CURRENT_STRENGTH_MAX", DEV_CURRENT_STRENGTH_MAX, 18},
        {"DEV_POWER_SUPPLY_INVALID", DEV_POWER_SUPPLY_INVALID, -1},
        {"DEV_POWER_SUPPLY_MAX", DEV_POWER_SUPPLY_MAX, 28},
        {"DEV_ROUTING_SWITCH_INVALID", DEV_ROUTING_SWITCH_INVALID, -1},
        {"DEV_ROUTING_SWITCH_BEGIN", DEV_ROUTING_SWITCH_BEGIN, 0},
        {"DEV_ROUTING_SWITCH_MAX", DEV_ROUTING_SWITCH_MAX, 340},
        {"DEV_PASS_TREE_INVALID", DEV_PASS_TREE_INVALID, -1},
        {"DEV_PASS_TREE_BEGIN", DEV_PASS_TREE_BEGIN, 0},
        {"DEV_PASS_TREE_MAX", DEV_PASS_TREE_MAX, 26},
        {"DDB_CODE::COMPONENT_GENERIC", DDB_CODE::COMPONENT_GENERIC, 795},
    };
    for (const FIXED& f : fixed) EXPECT_EQ(f.actual, f.expected) << f.name;
}

// Enumerations whose every value strictly between the invalid member and the bound is a
// named, valid member.
struct DENSE {
    const DSTR_TABLE& table;
    int invalid;
    int bound;
    int first;
    int last;
};

TEST(EnumValues, DenseRangesAreValidExactlyInside) {
    const DENSE dense[] = {
        {dstr_table_dev_device_trait_enum(), 0, 12, 1, 11},
        {dstr_table_dev_part_trait_enum(), 0, 34, 1, 33},
        {dstr_table_dev_voltage_enum(), 0, 28, 1, 27},
        {dstr_table_dev_timing_model_enum(), 0, 57, 1, 56},
        {dstr_table_dev_temperature_enum(), 0, 6, 1, 5},
        {dstr_table_dev_resource_enum(), -1, 26, 0, 25},
        {dstr_table_dev_location_enum(), 0, 23, 1, 22},
        {dstr_table_dev_element_enum(), 0, 795, 1, 794},
        {dstr_table_cdb_re_type(), 0, 891, 1, 890},
        {dstr_table_dev_io_standard_enum(), 0, 84, 1, 83},
        {dstr_table_dev_io_rule_enum(), -1, 50, 0, 49},
        {dstr_table_dev_current_strength_enum(), -1, 18, 0, 17},
        {dstr_table_dev_power_supply_enum(), -1, 28, 0, 27},
        {dstr_table_dev_routing_switch_enum(), -1, 340, 0, 339},
        {dstr_table_dev_pass_tree_enum(), -1, 26, 0, 25},
    };
    for (const DENSE& d : dense) {
        SCOPED_TRACE(d.table.enum_name());
        EXPECT_EQ(d.table.invalid_value(), d.invalid);
        EXPECT_EQ(d.table.bound_value(), d.bound);
        for (int v = d.invalid - 1; v <= d.bound + 1; ++v) {
            bool inside = v >= d.first && v <= d.last;
            EXPECT_EQ(d.table.is_valid(v), inside) << v;
            if (inside) {
                EXPECT_STRNE(d.table.debug_string(v), "") << v;
            }
        }
    }
}

TEST(EnumValues, TraitNamesAndFamilyTraitGaps) {
    // The names the reports print for these traits.
    const struct {
        const DSTR_TABLE& table;
        int value;
        const char* name;
    } named[] = {{dstr_table_dev_family_trait_enum(), 4, "NOT_LISTED"},
                 {dstr_table_dev_family_trait_enum(), 5, "NO_COMPILER_SUPPORT"},
                 {dstr_table_dev_family_trait_enum(), 7, "NOT_INSTALLED"},
                 {dstr_table_dev_family_trait_enum(), 51, "FITTER_ECO"},
                 {dstr_table_dev_part_trait_enum(), 4, "NO_POF"},
                 {dstr_table_dev_part_trait_enum(), 7, "NOT_LISTED"},
                 {dstr_table_dev_part_trait_enum(), 9, "NO_PIN_OUT"},
                 {dstr_table_dev_part_trait_enum(), 18, "ADVANCED_INFO"}};
    for (const auto& n : named) EXPECT_STREQ(n.table.debug_string(n.value), n.name) << n.value;
    for (int v : {8, 9, 13, 18, 23, 41, 151}) EXPECT_TRUE(dstr_is_valid_dev_family_trait_enum(v)) << v;
    for (int v : {-1, 0, 162, 163}) EXPECT_FALSE(dstr_is_valid_dev_family_trait_enum(v)) << v;
    int gaps = 0;
    for (int v = 1; v < 162; ++v) {
        bool named_value = *dstr_get_debug_string(static_cast<DEV_FAMILY_TRAIT_ENUM>(v)) != '\0';
        EXPECT_EQ(dstr_is_valid_dev_family_trait_enum(v), named_value) << v;
        gaps += !named_value;
    }
    EXPECT_GT(gaps, 0);
}

TEST(EnumValues, VoltageMillivolts) {
    const int mv[] = {0, 600, 750, 800, 900, 950, 1000, 1050, 1075, 1100, 1125, 1200,
                      1250, 1320, 1400, 1500, 1800, 2000, 2100, 2500, 3000, 3300, 3900, 5000};
    for (int v = 1; v <= 24; ++v) {
        EXPECT_EQ(dstr_get_voltage_millivolts(v), mv[v - 1]) << v;
        EXPECT_EQ(dstr_get_voltage_by_millivolts(mv[v - 1]), v);
    }
    for (int v = 25; v <= 27; ++v) EXPECT_EQ(dstr_get_voltage_millivolts(v), INT_MAX) << v;
    for (int v : {-1, 0, 28, 29}) EXPECT_EQ(dstr_get_voltage_millivolts(v), -1) << v;
    EXPECT_EQ(dstr_get_voltage_by_millivolts(1234), DEV_VOLTAGE_INVALID);
    EXPECT_EQ(dstr_get_voltage_by_millivolts(INT_MAX), DEV_VOLTAGE_INVALID);
}

TEST(EnumValues, TimingModelOperatingPoints) {
    struct GROUP {
        int first;
        int voltage;
        std::vector<int> temperatures;
    };
    const std::vector<int> six = {125, 100, 85, 0, -40, -55};
    const std::vector<int> seven = {125, 110, 100, 85, 0, -40, -55};
    const GROUP groups[] = {{1, 0, std::vector<int>(6, INT_MAX)},
                            {7, 12, six}, {13, 11, six}, {19, 10, six}, {25, 9, six},
                            {31, 8, six}, {37, 7, six}, {43, 6, seven}, {50, 5, seven}};
    int next = 1;
    for (const GROUP& g : groups) {
        ASSERT_EQ(g.first, next);
        for (size_t i = 0; i < g.temperatures.size(); ++i, ++next) {
            DEV_VOLTAGE_ENUM voltage = DEV_VOLTAGE_GENERIC;
            int temperature = 0;
            ASSERT_TRUE(dstr_get_timing_model_operating_point(next, &voltage, &temperature)) << next;
            EXPECT_EQ(voltage, g.voltage) << next;
            EXPECT_EQ(temperature, g.temperatures[i]) << next;
            if (g.voltage != 0) {
                EXPECT_EQ(dstr_get_timing_model_by_operating_point(voltage, temperature), next);
            }
        }
    }
    EXPECT_EQ(next, 57);
    DEV_VOLTAGE_ENUM voltage = DEV_VOLTAGE_GENERIC;
    int temperature = 7;
    for (int v : {0, 57, 58, -1}) {
        EXPECT_FALSE(dstr_get_timing_model_operating_point(v, &voltage, &temperature)) << v;
        EXPECT_EQ(voltage, DEV_VOLTAGE_GENERIC);
        EXPECT_EQ(temperature, 7);
    }
    EXPECT_EQ(dstr_get_timing_model_by_operating_point(DEV_VOLTAGE_1_2V, 25), DEV_TIMING_MODEL_INVALID);
}

TEST(EnumValues, ElementCodesShareTheElementNumbering) {
    for (int v = DEV_ELEMENT_INVALID; v <= DEV_ELEMENT_GENERIC; ++v) {
        DEV_ELEMENT_ENUM element = static_cast<DEV_ELEMENT_ENUM>(v);
        DDB_CODE::_COMPONENT code = dev_get_ddb_code_by_element(element);
        EXPECT_EQ(static_cast<int>(code), v);
        EXPECT_EQ(dev_get_element_by_ddb_code(code), element);
    }
}

}  // namespace
