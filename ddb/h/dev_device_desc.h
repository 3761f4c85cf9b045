// DEV_DEVICE_DESC: the catalogue record of one device. Enumerated fields hold 0 when not
// set, list strings hold member names each followed by one blank.
#ifndef VELCORA_DEV_DEVICE_DESC_H
#define VELCORA_DEV_DEVICE_DESC_H

#include "dev_export.h"

#include <cstdint>
#include <string>

#include "dev_desc_field.h"
#include "dev_enum_flag.h"
#include "host/dstr.h"

struct PDB_MATCH_DATA;

// The fields in stored order (see dev_desc_field.h).
#define DEV_DEVICE_DESC_FIELD_LIST(F)                                                                         \
    F(DEV_DEVICE_ENUM, device, DEV_DEVICE_INVALID, NONE, "", nullptr)                                         \
    F(uint8_t, bak_version, 0, INT, "BAK_VERSION", nullptr)                                                   \
    F(DEV_DEVICE_ENUM, base_device, DEV_DEVICE_INVALID, ENUM, "BASE_DEVICE", &dstr_table_dev_device_enum)     \
    F(DEV_DEVICE_TRAIT_FLAG, traits, {}, TRAIT, "TRAITS", &dstr_table_dev_device_trait_enum)                  \
    F(DEV_FAMILY_ENUM, family, DEV_FAMILY_INVALID, ENUM, "FAMILY", &dstr_table_dev_family_enum)               \
    F(DEV_VOLTAGE_ENUM, voltage, DEV_VOLTAGE_INVALID, ENUM, "VOLTAGE", &dstr_table_dev_voltage_enum)          \
    F(std::string, file_name, {}, STRING, "FILE_NAME", nullptr)                                               \
    F(std::string, migration_devices, {}, LIST, "MIGRATION_DEVICES", &dstr_table_dev_device_enum)            \
    F(std::string, migration_devices_exclude, {}, LIST, "MIGRATION_DEVICES_EXCLUDE", &dstr_table_dev_device_enum)

class DEV_EXPORT DEV_DEVICE_DESC {
public:
    explicit DEV_DEVICE_DESC(DEV_DEVICE_ENUM device = DEV_DEVICE_INVALID) : m_device(device) {}

    DEV_DESC_FIELDS(DEV_DEVICE_DESC, DEV_DEVICE_DESC_FIELD_LIST)

public:
    DEV_DEVICE_TRAIT_FLAG& traits() { return m_traits; }
    bool has_trait(DEV_DEVICE_TRAIT_ENUM trait) const { return m_traits.test(trait); }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_DEVICE_DESC* object, PDB_MATCH_DATA* data);
};

#endif
