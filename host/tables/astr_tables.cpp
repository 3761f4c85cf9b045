// Expands every attribute-key definition into its ASTR_KEY_TABLE and its astr_* functions.
// The value tables name the product-line enumerations only by their table functions.
#include "host/astr.h"
#include "host/dstr_fwd.h"
#include "host/tables/cdb_re_type.h"
#include "host/tables/db_input_port_type.h"
#include "host/tables/db_output_port_type.h"
#include "host/tables/dev_current_strength_enum.h"
#include "host/tables/dev_device_trait_enum.h"
#include "host/tables/dev_element_enum.h"
#include "host/tables/dev_family_trait_enum.h"
#include "host/tables/dev_family_variant_enum.h"
#include "host/tables/dev_grade_revision_enum.h"
#include "host/tables/dev_io_rule_enum.h"
#include "host/tables/dev_io_standard_enum.h"
#include "host/tables/dev_location_enum.h"
#include "host/tables/dev_part_trait_enum.h"
#include "host/tables/dev_pass_tree_enum.h"
#include "host/tables/dev_power_model_status_enum.h"
#include "host/tables/dev_power_supply_enum.h"
#include "host/tables/dev_resource_enum.h"
#include "host/tables/dev_routing_switch_enum.h"
#include "host/tables/dev_temperature_enum.h"
#include "host/tables/dev_timing_model_enum.h"
#include "host/tables/dev_voltage_enum.h"

// Value-name rows of the definition files (see astr_macros.h).
#define ASTR_NUMBERS nullptr
#define ASTR_ENUM(stem) \
    [](int, int) -> const DSTR_TABLE* { return &dstr_table_##stem(); }
#define ASTR_COLUMN(c, stem) \
    [](int, int column) -> const DSTR_TABLE* { return column == (c) ? &dstr_table_##stem() : nullptr; }
#define ASTR_ROW(r, stem) \
    [](int row, int) -> const DSTR_TABLE* { return row == (r) ? &dstr_table_##stem() : nullptr; }

#define ASTR_EXPAND "host/tables/astr_expand_define.inc"
#include "host/tables/astr_record_kinds.inc"
#undef ASTR_EXPAND

bool astr_exists_dev_power_supply_enum_by_string(const std::string& name) {
    return dstr_exists_dev_power_supply_enum_by_string(name);
}

DEV_POWER_SUPPLY_ENUM astr_get_dev_power_supply_enum_by_string(const std::string& name) {
    return dstr_get_dev_power_supply_enum_by_string(name);
}

const char* astr_get_debug_string(DEV_POWER_SUPPLY_ENUM supply) {
    return dstr_get_debug_string(supply);
}

const char* astr_get_user_string(DEV_POWER_SUPPLY_ENUM supply) {
    return dstr_get_user_string(supply);
}
