// DEV_DEVICE_DESC: the catalogue record of one device. Fields in stored order; enumerated
// fields hold 0 when not set, list strings hold member names each followed by one blank.
#ifndef VELCORA_DEV_DEVICE_DESC_H
#define VELCORA_DEV_DEVICE_DESC_H

#include <cstdint>
#include <string>

#include "dev_desc_field.h"
#include "dev_enum_flag.h"
#include "host/dstr.h"

struct PDB_MATCH_DATA;

class DEV_DEVICE_DESC {
public:
    explicit DEV_DEVICE_DESC(DEV_DEVICE_ENUM device = DEV_DEVICE_INVALID) : m_device(device) {}

    DEV_DESC_FIELD(DEV_DEVICE_ENUM, device, DEV_DEVICE_INVALID)
    DEV_DESC_FIELD(uint8_t, bak_version, 0)
    DEV_DESC_FIELD(DEV_DEVICE_ENUM, base_device, DEV_DEVICE_INVALID)
    DEV_DESC_FIELD(DEV_DEVICE_TRAIT_FLAG, traits, {})
    DEV_DESC_FIELD(DEV_FAMILY_ENUM, family, DEV_FAMILY_INVALID)
    DEV_DESC_FIELD(DEV_VOLTAGE_ENUM, voltage, DEV_VOLTAGE_INVALID)
    DEV_DESC_FIELD(std::string, file_name, {})
    DEV_DESC_FIELD(std::string, migration_devices, {})
    DEV_DESC_FIELD(std::string, migration_devices_exclude, {})

public:
    DEV_DEVICE_TRAIT_FLAG& traits() { return m_traits; }
    bool has_trait(DEV_DEVICE_TRAIT_ENUM trait) const { return m_traits.test(trait); }

    // Calls visitor(field name, member) for every field in stored order.
    template <typename VISITOR>
    void visit_fields(VISITOR&& v) {
        v("device", m_device);
        v("bak_version", m_bak_version);
        v("base_device", m_base_device);
        v("traits", m_traits);
        v("family", m_family);
        v("voltage", m_voltage);
        v("file_name", m_file_name);
        v("migration_devices", m_migration_devices);
        v("migration_devices_exclude", m_migration_devices_exclude);
    }

    bool operator==(const DEV_DEVICE_DESC& o) const;
    bool operator!=(const DEV_DEVICE_DESC& o) const { return !(*this == o); }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_DEVICE_DESC* object, PDB_MATCH_DATA* data);
};

#endif
