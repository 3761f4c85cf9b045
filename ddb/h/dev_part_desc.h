// DEV_PART_DESC: the catalogue record of one orderable part. Enumerated fields hold 0 when
// not set, list strings hold member names each followed by one blank, resource counts are
// -1 where not given.
#ifndef VELCORA_DEV_PART_DESC_H
#define VELCORA_DEV_PART_DESC_H

#include "dev_export.h"

#include <cstdint>
#include <string>
#include <vector>

#include "dev_desc_field.h"
#include "dev_enum_flag.h"
#include "host/dstr.h"

struct PDB_MATCH_DATA;

// The fields in stored order (see dev_desc_field.h). The resource counts are read from a
// "DEV_RESOURCES" block of their own.
#define DEV_PART_DESC_FIELD_LIST(F)                                                                           \
    F(DEV_PART_ENUM, part, DEV_PART_INVALID, NONE, "", nullptr)                                               \
    F(DEV_DEVICE_ENUM, device, DEV_DEVICE_INVALID, ENUM, "DEVICE", &dstr_table_dev_device_enum)               \
    F(DEV_FAMILY_ENUM, family, DEV_FAMILY_INVALID, ENUM, "FAMILY", &dstr_table_dev_family_enum)               \
    F(DEV_FAMILY_VARIANT_ENUM, family_variant, DEV_FAMILY_VARIANT_INVALID, ENUM, "FAMILY_VARIANT",            \
      &dstr_table_dev_family_variant_enum)                                                                    \
    F(DEV_GRADE_REVISION_ENUM, fast_grade_revision, DEV_GRADE_REVISION_INVALID, ENUM, "FAST_GRADE_REVISION",  \
      &dstr_table_dev_grade_revision_enum)                                                                    \
    F(DEV_GRADE_REVISION_ENUM, grade_revision, DEV_GRADE_REVISION_INVALID, ENUM, "GRADE_REVISION",            \
      &dstr_table_dev_grade_revision_enum)                                                                    \
    F(DEV_PART_TRAIT_FLAG, traits, {}, TRAIT, "TRAITS", &dstr_table_dev_part_trait_enum)                      \
    F(DEV_PKG_ENUM, package, DEV_PKG_INVALID, ENUM, "PACKAGE", &dstr_table_dev_pkg_enum)                      \
    F(DEV_POWER_MODEL_STATUS_ENUM, power_model_status, DEV_POWER_MODEL_STATUS_INVALID, ENUM,                  \
      "POWER_MODEL_STATUS", &dstr_table_dev_power_model_status_enum)                                          \
    F(DEV_SPEED_ENUM, fast_corner_grade, DEV_SPEED_INVALID, ENUM, "FAST_CORNER_GRADE", &dstr_table_dev_speed_enum) \
    F(DEV_SPEED_ENUM, speed_grade, DEV_SPEED_INVALID, ENUM, "SPEED_GRADE", &dstr_table_dev_speed_enum)        \
    F(DEV_TEMPERATURE_ENUM, max_power_characteristics_temp_grade, DEV_TEMPERATURE_INVALID, ENUM,              \
      "MAX_POWER_CHARACTERISTICS_TEMP_GRADE", &dstr_table_dev_temperature_enum)                               \
    F(DEV_TEMPERATURE_ENUM, temperature_grade, DEV_TEMPERATURE_INVALID, ENUM, "TEMPERATURE_GRADE",            \
      &dstr_table_dev_temperature_enum)                                                                       \
    F(DEV_VOLTAGE_ENUM, default_voltage, DEV_VOLTAGE_INVALID, ENUM, "DEFAULT_VOLTAGE", &dstr_table_dev_voltage_enum) \
    F(std::string, fast_timing_corners, {}, LIST, "FAST_TIMING_CORNERS", &dstr_table_dev_timing_model_enum)   \
    F(std::string, migration_devices, {}, LIST, "MIGRATION_DEVICES", &dstr_table_dev_device_enum)             \
    F(std::string, migration_parts, {}, LIST, "MIGRATION_PARTS", &dstr_table_dev_part_enum)                   \
    F(std::string, ordering_code, {}, STRING, "ORDERING_CODE", nullptr)                                       \
    F(std::string, package_ddb_file_name_suffix, {}, STRING, "PACKAGE_DDB_FILE_NAME_SUFFIX", nullptr)          \
    F(std::string, slow_timing_corners, {}, LIST, "SLOW_TIMING_CORNERS", &dstr_table_dev_timing_model_enum)   \
    F(int32_t, num_of_io, 0, INT, "NUM_OF_IO", nullptr)                                                       \
    F(int32_t, num_of_lcells, 0, INT, "NUM_OF_LCELLS", nullptr)                                               \
    F(int32_t, pin_count, 0, INT, "PIN_COUNT", nullptr)                                                       \
    F(std::vector<int32_t>, dev_resources, std::vector<int32_t>(DEV_RESOURCE_MAX, -1), NONE, "", nullptr)

class DEV_EXPORT DEV_PART_DESC {
public:
    explicit DEV_PART_DESC(DEV_PART_ENUM part = DEV_PART_INVALID) : m_part(part) {}

    DEV_DESC_FIELDS(DEV_PART_DESC, DEV_PART_DESC_FIELD_LIST)

public:
    DEV_PART_TRAIT_FLAG& traits() { return m_traits; }
    bool has_trait(DEV_PART_TRAIT_ENUM trait) const { return m_traits.test(trait); }
    std::vector<int32_t>& dev_resources() { return m_dev_resources; }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_PART_DESC* object, PDB_MATCH_DATA* data);
};

#endif
