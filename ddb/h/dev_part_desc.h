// DEV_PART_DESC: the catalogue record of one orderable part. Fields in stored order;
// enumerated fields hold 0 when not set, list strings hold member names each followed by one
// blank, resource counts are -1 where not given.
#ifndef VELCORA_DEV_PART_DESC_H
#define VELCORA_DEV_PART_DESC_H

#include <cstdint>
#include <string>
#include <vector>

#include "dev_desc_field.h"
#include "dev_enum_flag.h"
#include "host/dstr.h"

struct PDB_MATCH_DATA;

class DEV_PART_DESC {
public:
    explicit DEV_PART_DESC(DEV_PART_ENUM part = DEV_PART_INVALID) : m_part(part) {}

    DEV_DESC_FIELD(DEV_PART_ENUM, part, DEV_PART_INVALID)
    DEV_DESC_FIELD(DEV_DEVICE_ENUM, device, DEV_DEVICE_INVALID)
    DEV_DESC_FIELD(DEV_FAMILY_ENUM, family, DEV_FAMILY_INVALID)
    DEV_DESC_FIELD(DEV_FAMILY_VARIANT_ENUM, family_variant, DEV_FAMILY_VARIANT_INVALID)
    DEV_DESC_FIELD(DEV_GRADE_REVISION_ENUM, fast_grade_revision, DEV_GRADE_REVISION_INVALID)
    DEV_DESC_FIELD(DEV_GRADE_REVISION_ENUM, grade_revision, DEV_GRADE_REVISION_INVALID)
    DEV_DESC_FIELD(DEV_PART_TRAIT_FLAG, traits, {})
    DEV_DESC_FIELD(DEV_PKG_ENUM, package, DEV_PKG_INVALID)
    DEV_DESC_FIELD(DEV_POWER_MODEL_STATUS_ENUM, power_model_status, DEV_POWER_MODEL_STATUS_INVALID)
    DEV_DESC_FIELD(DEV_SPEED_ENUM, fast_corner_grade, DEV_SPEED_INVALID)
    DEV_DESC_FIELD(DEV_SPEED_ENUM, speed_grade, DEV_SPEED_INVALID)
    DEV_DESC_FIELD(DEV_TEMPERATURE_ENUM, max_power_characteristics_temp_grade, DEV_TEMPERATURE_INVALID)
    DEV_DESC_FIELD(DEV_TEMPERATURE_ENUM, temperature_grade, DEV_TEMPERATURE_INVALID)
    DEV_DESC_FIELD(DEV_VOLTAGE_ENUM, default_voltage, DEV_VOLTAGE_INVALID)
    DEV_DESC_FIELD(std::string, fast_timing_corners, {})
    DEV_DESC_FIELD(std::string, migration_devices, {})
    DEV_DESC_FIELD(std::string, migration_parts, {})
    DEV_DESC_FIELD(std::string, ordering_code, {})
    DEV_DESC_FIELD(std::string, package_ddb_file_name_suffix, {})
    DEV_DESC_FIELD(std::string, slow_timing_corners, {})
    DEV_DESC_FIELD(int32_t, num_of_io, 0)
    DEV_DESC_FIELD(int32_t, num_of_lcells, 0)
    DEV_DESC_FIELD(int32_t, pin_count, 0)
    DEV_DESC_FIELD(std::vector<int32_t>, dev_resources, std::vector<int32_t>(DEV_RESOURCE_MAX, -1))

public:
    DEV_PART_TRAIT_FLAG& traits() { return m_traits; }
    bool has_trait(DEV_PART_TRAIT_ENUM trait) const { return m_traits.test(trait); }
    std::vector<int32_t>& dev_resources() { return m_dev_resources; }

    // Calls visitor(field name, member) for every field in stored order.
    template <typename VISITOR>
    void visit_fields(VISITOR&& v) {
        v("part", m_part);
        v("device", m_device);
        v("family", m_family);
        v("family_variant", m_family_variant);
        v("fast_grade_revision", m_fast_grade_revision);
        v("grade_revision", m_grade_revision);
        v("traits", m_traits);
        v("package", m_package);
        v("power_model_status", m_power_model_status);
        v("fast_corner_grade", m_fast_corner_grade);
        v("speed_grade", m_speed_grade);
        v("max_power_characteristics_temp_grade", m_max_power_characteristics_temp_grade);
        v("temperature_grade", m_temperature_grade);
        v("default_voltage", m_default_voltage);
        v("fast_timing_corners", m_fast_timing_corners);
        v("migration_devices", m_migration_devices);
        v("migration_parts", m_migration_parts);
        v("ordering_code", m_ordering_code);
        v("package_ddb_file_name_suffix", m_package_ddb_file_name_suffix);
        v("slow_timing_corners", m_slow_timing_corners);
        v("num_of_io", m_num_of_io);
        v("num_of_lcells", m_num_of_lcells);
        v("pin_count", m_pin_count);
        v("dev_resources", m_dev_resources);
    }

    bool operator==(const DEV_PART_DESC& o) const;
    bool operator!=(const DEV_PART_DESC& o) const { return !(*this == o); }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_PART_DESC* object, PDB_MATCH_DATA* data);
};

#endif
