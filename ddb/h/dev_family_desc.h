// DEV_FAMILY_DESC: the catalogue record of one family. Fields in stored order; enumerated
// fields hold 0 when not set, list strings hold member names each followed by one blank.
#ifndef VELCORA_DEV_FAMILY_DESC_H
#define VELCORA_DEV_FAMILY_DESC_H

#include <cstdint>
#include <string>

#include "dev_desc_field.h"
#include "dev_enum_flag.h"
#include "host/dstr.h"

struct PDB_MATCH_DATA;

class DEV_FAMILY_DESC {
public:
    explicit DEV_FAMILY_DESC(DEV_FAMILY_ENUM family = DEV_FAMILY_INVALID) : m_family(family) {}

    DEV_DESC_FIELD(DEV_FAMILY_ENUM, family, DEV_FAMILY_INVALID)
    DEV_DESC_FIELD(uint8_t, bak_version, 0)
    DEV_DESC_FIELD(uint8_t, encryption_id, 0)
    DEV_DESC_FIELD(DEV_FAMILY_ENUM, base_family_id, DEV_FAMILY_INVALID)
    DEV_DESC_FIELD(DEV_FAMILY_ENUM, kx_library_family, DEV_FAMILY_INVALID)
    DEV_DESC_FIELD(DEV_FAMILY_TRAIT_FLAG, traits, {})
    DEV_DESC_FIELD(DEV_VOLTAGE_ENUM, max_nominal_core_supply_voltage, DEV_VOLTAGE_INVALID)
    DEV_DESC_FIELD(DEV_VOLTAGE_ENUM, min_nominal_core_supply_voltage, DEV_VOLTAGE_INVALID)
    DEV_DESC_FIELD(std::string, config_devices, {})
    DEV_DESC_FIELD(std::string, migration_families, {})
    DEV_DESC_FIELD(std::string, unified_suffix, {})
    DEV_DESC_FIELD(int32_t, max_automotive_temp, 0)
    DEV_DESC_FIELD(int32_t, max_commercial_temp, 0)
    DEV_DESC_FIELD(int32_t, max_extended_temp, 0)
    DEV_DESC_FIELD(int32_t, max_industrial_temp, 0)
    DEV_DESC_FIELD(int32_t, max_military_temp, 0)
    DEV_DESC_FIELD(int32_t, min_automotive_temp, 0)
    DEV_DESC_FIELD(int32_t, min_commercial_temp, 0)
    DEV_DESC_FIELD(int32_t, min_extended_temp, 0)
    DEV_DESC_FIELD(int32_t, min_industrial_temp, 0)
    DEV_DESC_FIELD(int32_t, min_military_temp, 0)

public:
    // Mutable access for the readers (traits are set bit by bit, lists appended to).
    DEV_FAMILY_TRAIT_FLAG& traits() { return m_traits; }
    bool has_trait(DEV_FAMILY_TRAIT_ENUM trait) const { return m_traits.test(trait); }

    // Calls visitor(field name, member) for every field in stored order.
    template <typename VISITOR>
    void visit_fields(VISITOR&& v) {
        v("family", m_family);
        v("bak_version", m_bak_version);
        v("encryption_id", m_encryption_id);
        v("base_family_id", m_base_family_id);
        v("kx_library_family", m_kx_library_family);
        v("traits", m_traits);
        v("max_nominal_core_supply_voltage", m_max_nominal_core_supply_voltage);
        v("min_nominal_core_supply_voltage", m_min_nominal_core_supply_voltage);
        v("config_devices", m_config_devices);
        v("migration_families", m_migration_families);
        v("unified_suffix", m_unified_suffix);
        v("max_automotive_temp", m_max_automotive_temp);
        v("max_commercial_temp", m_max_commercial_temp);
        v("max_extended_temp", m_max_extended_temp);
        v("max_industrial_temp", m_max_industrial_temp);
        v("max_military_temp", m_max_military_temp);
        v("min_automotive_temp", m_min_automotive_temp);
        v("min_commercial_temp", m_min_commercial_temp);
        v("min_extended_temp", m_min_extended_temp);
        v("min_industrial_temp", m_min_industrial_temp);
        v("min_military_temp", m_min_military_temp);
    }

    bool operator==(const DEV_FAMILY_DESC& o) const;
    bool operator!=(const DEV_FAMILY_DESC& o) const { return !(*this == o); }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_FAMILY_DESC* object, PDB_MATCH_DATA* data);
};

#endif
