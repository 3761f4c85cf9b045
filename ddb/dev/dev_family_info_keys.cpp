// The key tables of the family-info text, in the order the key parsers try them.
#include "dev_family_info_keys.h"

#define FI_FIELD_TYPE(FIELD) std::decay_t<decltype(d.get_##FIELD())>
#define FI_NUMBER(D, KEY, KIND, TABLE, FIELD)                                                  \
    {KEY, KIND, TABLE, [](const D& d) { return static_cast<int>(d.get_##FIELD()); },           \
     [](D& d, int v) { d.set_##FIELD(static_cast<FI_FIELD_TYPE(FIELD)>(v)); }, nullptr,       \
     nullptr, nullptr}
#define FI_ENUM(D, KEY, FIELD, TABLE) FI_NUMBER(D, KEY, DEV_FI_ENUM, &dstr_table_##TABLE, FIELD)
#define FI_INT(D, KEY, FIELD) FI_NUMBER(D, KEY, DEV_FI_INT, nullptr, FIELD)
#define FI_TEXT(D, KEY, KIND, TABLE, FIELD)                                                    \
    {KEY, KIND, TABLE, nullptr, nullptr, nullptr,                                              \
     [](const D& d) -> const std::string& { return d.get_##FIELD(); },                        \
     [](D& d, const std::string& v) { d.set_##FIELD(v); }}
#define FI_STRING(D, KEY, FIELD) FI_TEXT(D, KEY, DEV_FI_STRING, nullptr, FIELD)
#define FI_LIST(D, KEY, FIELD, TABLE) FI_TEXT(D, KEY, DEV_FI_LIST, &dstr_table_##TABLE, FIELD)
#define FI_TRAITS(D, TRAIT_ENUM, TABLE)                                                        \
    {"TRAITS", DEV_FI_TRAIT, &dstr_table_##TABLE, nullptr,                                     \
     [](D& d, int v) { d.traits().set(static_cast<TRAIT_ENUM>(v)); },                          \
     [](const D& d, int v) { return d.has_trait(static_cast<TRAIT_ENUM>(v)); }, nullptr, nullptr}

namespace {

typedef DEV_FAMILY_DESC F;
const DEV_FAMILY_INFO_KEY<F> FAMILY_KEYS[] = {
    FI_STRING(F, "UNIFIED_SUFFIX", unified_suffix),
    FI_TRAITS(F, DEV_FAMILY_TRAIT_ENUM, dev_family_trait_enum),
    FI_ENUM(F, "MIN_NOMINAL_CORE_SUPPLY_VOLTAGE", min_nominal_core_supply_voltage, dev_voltage_enum),
    FI_INT(F, "MIN_MILITARY_TEMP", min_military_temp),
    FI_INT(F, "MIN_INDUSTRIAL_TEMP", min_industrial_temp),
    FI_INT(F, "MIN_EXTENDED_TEMP", min_extended_temp),
    FI_INT(F, "MIN_COMMERCIAL_TEMP", min_commercial_temp),
    FI_INT(F, "MIN_AUTOMOTIVE_TEMP", min_automotive_temp),
    FI_LIST(F, "MIGRATION_FAMILIES", migration_families, dev_family_enum),
    FI_ENUM(F, "MAX_NOMINAL_CORE_SUPPLY_VOLTAGE", max_nominal_core_supply_voltage, dev_voltage_enum),
    FI_INT(F, "MAX_MILITARY_TEMP", max_military_temp),
    FI_INT(F, "MAX_INDUSTRIAL_TEMP", max_industrial_temp),
    FI_INT(F, "MAX_EXTENDED_TEMP", max_extended_temp),
    FI_INT(F, "MAX_COMMERCIAL_TEMP", max_commercial_temp),
    FI_INT(F, "MAX_AUTOMOTIVE_TEMP", max_automotive_temp),
    FI_ENUM(F, "KX_LIBRARY_FAMILY", kx_library_family, dev_family_enum),
    FI_INT(F, "ENCRYPTION_ID", encryption_id),
    FI_LIST(F, "CONFIG_DEVICES", config_devices, dev_device_enum),
    FI_ENUM(F, "BASE_FAMILY_ID", base_family_id, dev_family_enum),
    FI_INT(F, "BAK_VERSION", bak_version),
};

typedef DEV_DEVICE_DESC D;
const DEV_FAMILY_INFO_KEY<D> DEVICE_KEYS[] = {
    FI_ENUM(D, "VOLTAGE", voltage, dev_voltage_enum),
    FI_TRAITS(D, DEV_DEVICE_TRAIT_ENUM, dev_device_trait_enum),
    FI_LIST(D, "MIGRATION_DEVICES_EXCLUDE", migration_devices_exclude, dev_device_enum),
    FI_LIST(D, "MIGRATION_DEVICES", migration_devices, dev_device_enum),
    FI_STRING(D, "FILE_NAME", file_name),
    FI_ENUM(D, "FAMILY", family, dev_family_enum),
    FI_ENUM(D, "BASE_DEVICE", base_device, dev_device_enum),
    FI_INT(D, "BAK_VERSION", bak_version),
};

typedef DEV_PART_DESC P;
const DEV_FAMILY_INFO_KEY<P> PART_KEYS[] = {
    FI_TRAITS(P, DEV_PART_TRAIT_ENUM, dev_part_trait_enum),
    FI_ENUM(P, "TEMPERATURE_GRADE", temperature_grade, dev_temperature_enum),
    FI_ENUM(P, "SPEED_GRADE", speed_grade, dev_speed_enum),
    FI_LIST(P, "SLOW_TIMING_CORNERS", slow_timing_corners, dev_timing_model_enum),
    FI_ENUM(P, "POWER_MODEL_STATUS", power_model_status, dev_power_model_status_enum),
    FI_INT(P, "PIN_COUNT", pin_count),
    FI_STRING(P, "PACKAGE_DDB_FILE_NAME_SUFFIX", package_ddb_file_name_suffix),
    FI_ENUM(P, "PACKAGE", package, dev_pkg_enum),
    FI_STRING(P, "ORDERING_CODE", ordering_code),
    FI_INT(P, "NUM_OF_LCELLS", num_of_lcells),
    FI_INT(P, "NUM_OF_IO", num_of_io),
    FI_LIST(P, "MIGRATION_PARTS", migration_parts, dev_part_enum),
    FI_LIST(P, "MIGRATION_DEVICES", migration_devices, dev_device_enum),
    FI_ENUM(P, "MAX_POWER_CHARACTERISTICS_TEMP_GRADE", max_power_characteristics_temp_grade, dev_temperature_enum),
    FI_ENUM(P, "GRADE_REVISION", grade_revision, dev_grade_revision_enum),
    FI_LIST(P, "FAST_TIMING_CORNERS", fast_timing_corners, dev_timing_model_enum),
    FI_ENUM(P, "FAST_GRADE_REVISION", fast_grade_revision, dev_grade_revision_enum),
    FI_ENUM(P, "FAST_CORNER_GRADE", fast_corner_grade, dev_speed_enum),
    FI_ENUM(P, "FAMILY_VARIANT", family_variant, dev_family_variant_enum),
    FI_ENUM(P, "FAMILY", family, dev_family_enum),
    FI_ENUM(P, "DEVICE", device, dev_device_enum),
    FI_ENUM(P, "DEFAULT_VOLTAGE", default_voltage, dev_voltage_enum),
};

}  // namespace

const DEV_FAMILY_INFO_KEY_TABLE<DEV_FAMILY_DESC>& dev_family_info_keys(const DEV_FAMILY_DESC*) {
    static const DEV_FAMILY_INFO_KEY_TABLE<DEV_FAMILY_DESC> table{
        FAMILY_KEYS, sizeof FAMILY_KEYS / sizeof FAMILY_KEYS[0], "family"};
    return table;
}
const DEV_FAMILY_INFO_KEY_TABLE<DEV_DEVICE_DESC>& dev_family_info_keys(const DEV_DEVICE_DESC*) {
    static const DEV_FAMILY_INFO_KEY_TABLE<DEV_DEVICE_DESC> table{
        DEVICE_KEYS, sizeof DEVICE_KEYS / sizeof DEVICE_KEYS[0], "device"};
    return table;
}
const DEV_FAMILY_INFO_KEY_TABLE<DEV_PART_DESC>& dev_family_info_keys(const DEV_PART_DESC*) {
    static const DEV_FAMILY_INFO_KEY_TABLE<DEV_PART_DESC> table{
        PART_KEYS, sizeof PART_KEYS / sizeof PART_KEYS[0], "part"};
    return table;
}
