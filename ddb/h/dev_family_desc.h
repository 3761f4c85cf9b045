// DEV_FAMILY_DESC: the catalogue record of one family. Enumerated fields hold 0 when not
// set, list strings hold member names each followed by one blank.
#ifndef VELCORA_DEV_FAMILY_DESC_H
#define VELCORA_DEV_FAMILY_DESC_H

#include "dev_export.h"

#include <cstdint>
#include <string>

#include "dev_desc_field.h"
#include "dev_enum_flag.h"
#include "host/dstr.h"

struct PDB_MATCH_DATA;

// The fields in stored order (see dev_desc_field.h).
#define DEV_FAMILY_DESC_FIELD_LIST(F)                                                                            \
    F(DEV_FAMILY_ENUM, family, DEV_FAMILY_INVALID, NONE, "", nullptr)                                            \
    F(uint8_t, bak_version, 0, INT, "BAK_VERSION", nullptr)                                                      \
    F(uint8_t, encryption_id, 0, INT, "ENCRYPTION_ID", nullptr)                                                  \
    F(DEV_FAMILY_ENUM, base_family_id, DEV_FAMILY_INVALID, ENUM, "BASE_FAMILY_ID", &dstr_table_dev_family_enum)  \
    F(DEV_FAMILY_ENUM, kx_library_family, DEV_FAMILY_INVALID, ENUM, "KX_LIBRARY_FAMILY",                        \
      &dstr_table_dev_family_enum)                                                                               \
    F(DEV_FAMILY_TRAIT_FLAG, traits, {}, TRAIT, "TRAITS", &dstr_table_dev_family_trait_enum)                     \
    F(DEV_VOLTAGE_ENUM, max_nominal_core_supply_voltage, DEV_VOLTAGE_INVALID, ENUM,                              \
      "MAX_NOMINAL_CORE_SUPPLY_VOLTAGE", &dstr_table_dev_voltage_enum)                                           \
    F(DEV_VOLTAGE_ENUM, min_nominal_core_supply_voltage, DEV_VOLTAGE_INVALID, ENUM,                              \
      "MIN_NOMINAL_CORE_SUPPLY_VOLTAGE", &dstr_table_dev_voltage_enum)                                           \
    F(std::string, config_devices, {}, LIST, "CONFIG_DEVICES", &dstr_table_dev_device_enum)                      \
    F(std::string, migration_families, {}, LIST, "MIGRATION_FAMILIES", &dstr_table_dev_family_enum)              \
    F(std::string, unified_suffix, {}, STRING, "UNIFIED_SUFFIX", nullptr)                                        \
    F(int32_t, max_automotive_temp, 0, INT, "MAX_AUTOMOTIVE_TEMP", nullptr)                                      \
    F(int32_t, max_commercial_temp, 0, INT, "MAX_COMMERCIAL_TEMP", nullptr)                                      \
    F(int32_t, max_extended_temp, 0, INT, "MAX_EXTENDED_TEMP", nullptr)                                          \
    F(int32_t, max_industrial_temp, 0, INT, "MAX_INDUSTRIAL_TEMP", nullptr)                                      \
    F(int32_t, max_military_temp, 0, INT, "MAX_MILITARY_TEMP", nullptr)                                          \
    F(int32_t, min_automotive_temp, 0, INT, "MIN_AUTOMOTIVE_TEMP", nullptr)                                      \
    F(int32_t, min_commercial_temp, 0, INT, "MIN_COMMERCIAL_TEMP", nullptr)                                      \
    F(int32_t, min_extended_temp, 0, INT, "MIN_EXTENDED_TEMP", nullptr)                                          \
    F(int32_t, min_industrial_temp, 0, INT, "MIN_INDUSTRIAL_TEMP", nullptr)                                      \
    F(int32_t, min_military_temp, 0, INT, "MIN_MILITARY_TEMP", nullptr)

class DEV_EXPORT DEV_FAMILY_DESC {
public:
    explicit DEV_FAMILY_DESC(DEV_FAMILY_ENUM family = DEV_FAMILY_INVALID) : m_family(family) {}

    DEV_DESC_FIELDS(DEV_FAMILY_DESC, DEV_FAMILY_DESC_FIELD_LIST)

public:
    // Mutable access for the readers (traits are set bit by bit, lists appended to).
    DEV_FAMILY_TRAIT_FLAG& traits() { return m_traits; }
    bool has_trait(DEV_FAMILY_TRAIT_ENUM trait) const { return m_traits.test(trait); }
    // The family's maximum (minimum) temperature of a temperature grade; 0 after the internal
    // error "Illegal value (%d) of temprerature grade argument in get_max_temperature_of"
    // (get_min_temperature_of) for a value that names no grade.
    int get_grade_temperature(DEV_TEMPERATURE_ENUM grade, bool maximum) const;

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_FAMILY_DESC* object, PDB_MATCH_DATA* data);
};

#endif
