// Attribute-key tables: well-formed key names and their look-up, and the symbolic value names
// of keys. (Key counts and fixed positions are pinned by static_asserts in the definitions.)
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/dstr.h"
#include "host/astr.h"

namespace {

// Every record's key table of every kind.
std::vector<const ASTR_KEY_TABLE*> all_kinds() {
    return {
        &astr_table_dev_basic_info_bool_data(),
        &astr_table_dev_basic_info_int_data(),
        &astr_table_dev_basic_info_enum_data(),
        &astr_table_dev_basic_info_string_data(),
        &astr_table_dev_basic_info_2d_int_data(),
        &astr_table_dev_location_desc_bool_data(),
        &astr_table_dev_location_desc_int_data(),
        &astr_table_dev_location_desc_string_data(),
        &astr_table_dev_port_desc_bool_data(),
        &astr_table_dev_port_desc_int_data(),
        &astr_table_dev_port_desc_string_data(),
        &astr_table_dev_element_desc_bool_data(),
        &astr_table_dev_element_desc_int_data(),
        &astr_table_dev_element_desc_string_data(),
        &astr_table_dev_element_desc_2d_int_data(),
        &astr_table_dev_pad_info_bool_data(),
        &astr_table_dev_pad_info_int_data(),
        &astr_table_dev_pad_info_string_data(),
        &astr_table_dev_pad_info_2d_int_data(),
        &astr_table_dev_pad_info_vec_string_data(),
        &astr_table_dev_pad_bool_data(),
        &astr_table_dev_pad_int_data(),
        &astr_table_dev_pad_string_data(),
        &astr_table_dev_pad_2d_int_data(),
        &astr_table_dev_io_standard_desc_bool_data(),
        &astr_table_dev_io_standard_desc_int_data(),
        &astr_table_dev_io_standard_desc_string_data(),
        &astr_table_dev_io_standard_desc_2d_int_data(),
        &astr_table_dev_io_rule_bool_data(),
        &astr_table_dev_io_rule_int_data(),
        &astr_table_dev_io_rule_string_data(),
        &astr_table_dev_pkg_info_bool_data(),
        &astr_table_dev_pkg_info_int_data(),
        &astr_table_dev_pkg_info_string_data(),
        &astr_table_dev_pkg_info_2d_int_data(),
        &astr_table_dev_pkg_info_vec_double_data(),
        &astr_table_dev_pin_bool_data(),
        &astr_table_dev_pin_int_data(),
        &astr_table_dev_pin_string_data(),
        &astr_table_dev_pin_vec_int_data(),
        &astr_table_dev_part_info_bool_data(),
        &astr_table_dev_part_info_int_data(),
        &astr_table_dev_part_info_enum_data(),
        &astr_table_dev_part_info_string_data(),
        &astr_table_dev_part_info_2d_int_data(),
        &astr_table_dev_power_supply_desc_bool_data(),
        &astr_table_dev_power_supply_desc_int_data(),
        &astr_table_dev_power_supply_desc_enum_data(),
        &astr_table_dev_power_supply_desc_string_data(),
        &astr_table_dev_power_supply_desc_2d_int_data(),
        &astr_table_dev_routing_switch_desc_bool_data(),
        &astr_table_dev_routing_switch_desc_int_data(),
        &astr_table_dev_routing_switch_desc_string_data(),
        &astr_table_dev_routing_switch_desc_2d_int_data(),
        &astr_table_dev_routing_global_int_data(),
        &astr_table_dev_routing_global_2d_int_data(),
        &astr_table_dev_pass_tree_desc_int_data(),
        &astr_table_dev_pass_tree_desc_2d_int_data(),
    };
}

TEST(AttrKeys, EveryKindHasWellFormedUniqueNames) {
    for (const ASTR_KEY_TABLE* kind : all_kinds()) {
        const ASTR_KEY_TABLE& table = *kind;
        SCOPED_TRACE(table.enum_name());
        // The bound's name is the enumeration's name with DATA_MAX for DATA_ENUM.
        std::string bound = table.enum_name();
        bound.replace(bound.size() - 4, 4, "MAX");
        EXPECT_EQ(bound, table.bound_name());
        const std::string record = bound.substr(0, bound.size() - std::string("DATA_MAX").size());
        const std::string prefix = astr_kind_prefix(table.kind());
        for (int key = 0; key < table.count(); ++key) {
            const std::string debug = table.debug_string(key);
            SCOPED_TRACE(debug);
            // "INT_NUM_PADS" for DEV_PAD_INFO_INT_NUM_PADS: the kind prefix, then the name.
            EXPECT_EQ(0u, debug.rfind(prefix, 0));
            EXPECT_GT(debug.size(), prefix.size());
            EXPECT_EQ(record.substr(0, record.size() - prefix.size()) + debug, table.entry(key).enumerator);
            EXPECT_NE(std::string(), table.user_string(key));
            // Look-up by name finds each key (and so no two keys share a name).
            EXPECT_TRUE(table.exists_by_string(debug));
            EXPECT_EQ(key, table.get_by_string(debug));
        }
        EXPECT_FALSE(table.exists_by_string(prefix + "NO_SUCH_KEY"));
        EXPECT_EQ(table.count(), table.get_by_string(prefix + "NO_SUCH_KEY"));
        EXPECT_STREQ("", table.debug_string(-1));
        EXPECT_STREQ("", table.debug_string(table.count()));
    }
}

TEST(AttrKeys, KeysNameTheEnumerationsOfTheirValues) {
    // Keys holding enumerated values, with the bound of the enumeration they name.
    struct NAMED {
        const ASTR_KEY_TABLE& table;
        int key;
        int row, column;  // -1 for the whole key
        const DSTR_TABLE& values;
    } named[] = {
        {astr_table_dev_location_desc_int_data(), 0, -1, -1, dstr_table_dev_location_enum()},
        {astr_table_dev_element_desc_int_data(), 0, -1, -1, dstr_table_dev_element_enum()},
        {astr_table_dev_element_desc_int_data(), 14, -1, -1, dstr_table_cdb_re_type()},
        {astr_table_dev_port_desc_int_data(), 0, -1, -1, dstr_table_db_input_port_type()},
        {astr_table_dev_port_desc_int_data(), 1, -1, -1, dstr_table_db_output_port_type()},
        {astr_table_dev_io_standard_desc_int_data(), 0, -1, -1, dstr_table_dev_voltage_enum()},
        {astr_table_dev_io_standard_desc_int_data(), 1, -1, -1, dstr_table_dev_voltage_enum()},
        {astr_table_dev_io_standard_desc_int_data(), 2, -1, -1, dstr_table_dev_voltage_enum()},
        {astr_table_dev_io_standard_desc_int_data(), 3, -1, -1, dstr_table_dev_io_standard_enum()},
        {astr_table_dev_pad_info_int_data(), 3, -1, -1, dstr_table_dev_io_standard_enum()},
        {astr_table_dev_io_rule_int_data(), 0, -1, -1, dstr_table_dev_io_rule_enum()},
        {astr_table_dev_basic_info_enum_data(), 0, -1, -1, dstr_table_dev_device_enum()},
        {astr_table_dev_basic_info_enum_data(), 1, -1, -1, dstr_table_dev_family_enum()},
        {astr_table_dev_basic_info_enum_data(), 2, -1, -1, dstr_table_dev_part_enum()},
        {astr_table_dev_basic_info_enum_data(), 3, -1, -1, dstr_table_dev_speed_enum()},
        {astr_table_dev_basic_info_enum_data(), 4, -1, -1, dstr_table_dev_pkg_enum()},
        {astr_table_dev_part_info_enum_data(), 0, -1, -1, dstr_table_dev_temperature_enum()},
        {astr_table_dev_pkg_info_int_data(), 0, -1, -1, dstr_table_dev_pkg_enum()},
        {astr_table_dev_routing_switch_desc_int_data(), 0, -1, -1, dstr_table_dev_routing_switch_enum()},
        {astr_table_dev_pass_tree_desc_int_data(), 0, -1, -1, dstr_table_dev_pass_tree_enum()},
        {astr_table_dev_basic_info_2d_int_data(), 0, 2, 1, dstr_table_dev_voltage_enum()},
        {astr_table_dev_pin_vec_int_data(), 0, 0, 3, dstr_table_dev_io_standard_enum()},
    };
    for (const NAMED& n : named) {
        SCOPED_TRACE(std::string(n.table.debug_string(n.key)) + " / " + n.values.enum_name());
        EXPECT_EQ(&n.values, n.table.value_table(n.key, n.row, n.column));
    }
    // A 2D key names only the column it says; a plain key names nothing.
    EXPECT_EQ(nullptr, astr_table_dev_basic_info_2d_int_data().value_table(0, 2, 0));
    EXPECT_EQ(nullptr, astr_table_dev_basic_info_int_data().value_table(DEV_BASIC_INFO_INT_NUM_LABS, -1, -1));
}

TEST(AttrKeys, PerRecordLookUpAndSymbolicValues) {
    EXPECT_TRUE(astr_exists_dev_pad_string_data_enum_by_string("STRING_PAD_NAMES"));
    EXPECT_EQ(DEV_PAD_STRING_PAD_NAMES, astr_get_dev_pad_string_data_enum_by_string("STRING_PAD_NAMES"));
    // A key name of another kind or record is unknown here.
    EXPECT_FALSE(astr_exists_dev_pad_string_data_enum_by_string("INT_GLOBAL_ID"));
    EXPECT_EQ(DEV_PAD_STRING_DATA_MAX, astr_get_dev_pad_string_data_enum_by_string("PAD_NAMES"));
    EXPECT_EQ(DEV_ROUTING_GLOBAL_2D_INT_DATA_MAX,
              astr_get_dev_routing_global_2d_int_data_enum_by_string("2D_INT_NOPE"));
    EXPECT_STREQ("input port type", astr_get_user_string(DEV_PORT_DESC_INT_INPUT_PORT_TYPE));

    // A location key reads and writes the location names; other values stay numbers.
    const DSTR_ENTRY& lab = dstr_table_dev_location_enum().entry(0);
    const auto location = static_cast<DEV_LOCATION_DESC_INT_DATA_ENUM>(0);
    EXPECT_TRUE(astr_exists_enum_data_by_string(location, lab.debug));
    EXPECT_EQ(lab.value, astr_get_enum_data_by_string(location, lab.debug));
    EXPECT_EQ(lab.debug, astr_get_enum_data_debug_string(location, lab.value));
    EXPECT_EQ("-7", astr_get_enum_data_debug_string(location, -7));
    EXPECT_FALSE(astr_exists_enum_data_by_string(DEV_LOCATION_DESC_INT_NUM_SUB_LOCS, lab.debug));
    EXPECT_EQ("12", astr_get_enum_data_debug_string(DEV_LOCATION_DESC_INT_NUM_SUB_LOCS, 12));

    // Per row and column: column 1 of the bank VCCIO table holds voltages, column 0 not.
    const DSTR_ENTRY& volt = dstr_table_dev_voltage_enum().entry(0);
    EXPECT_TRUE(astr_exists_enum_data_by_string(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO, 5, 1, volt.debug));
    EXPECT_FALSE(astr_exists_enum_data_by_string(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO, 5, 0, volt.debug));
    EXPECT_EQ(volt.debug, astr_get_enum_data_debug_string(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO, 0, 1, volt.value));
    EXPECT_EQ(std::to_string(volt.value),
              astr_get_enum_data_debug_string(DEV_BASIC_INFO_2D_INT_IO_BANK_VCCIO, 0, 0, volt.value));
}

TEST(AttrKeys, PowerSuppliesAreNamedThroughTheAttributeTables) {
    const DSTR_ENTRY& first = dstr_table_dev_power_supply_enum().entry(0);
    EXPECT_TRUE(astr_exists_dev_power_supply_enum_by_string(first.debug));
    EXPECT_EQ(first.value, astr_get_dev_power_supply_enum_by_string(first.debug));
    EXPECT_STREQ(first.user, astr_get_user_string(static_cast<DEV_POWER_SUPPLY_ENUM>(first.value)));
    EXPECT_STREQ(first.debug, astr_get_debug_string(static_cast<DEV_POWER_SUPPLY_ENUM>(first.value)));
    EXPECT_FALSE(astr_exists_dev_power_supply_enum_by_string("NO_SUCH_SUPPLY"));
    EXPECT_EQ(DEV_POWER_SUPPLY_INVALID, astr_get_dev_power_supply_enum_by_string("NO_SUCH_SUPPLY"));
}

}  // namespace
