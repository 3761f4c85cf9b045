// DEV_FAMILY_MANAGER: the family-level queries of the catalogue, a cheap handle on the same
// process-wide store as DEV_PART_MANAGER. Family arguments must lie strictly between
// DEV_FAMILY_INVALID and DEV_FAMILY_GENERIC; a bad argument or an absent record is reported
// as an internal error and the query returns its default (0, false, empty).
#ifndef VELCORA_DEV_FAMILY_MANAGER_H
#define VELCORA_DEV_FAMILY_MANAGER_H

#include "dev_export.h"

#include <string>
#include <vector>

#include "host/dstr_fwd.h"
#include "host/tables/dev_family_trait_enum.h"
#include "host/tables/dev_temperature_enum.h"
#include "host/tables/dev_voltage_enum.h"

class DEV_FAMILY_INFO_MGR_BODY;
class DEV_FAMILY_DESC;

class DEV_EXPORT DEV_FAMILY_MANAGER {
public:
    // A handle on the process-wide store (created, and the catalogue loaded, on first use).
    DEV_FAMILY_MANAGER();
    // A handle on a store of the caller's own; the store must outlive the handle.
    explicit DEV_FAMILY_MANAGER(DEV_FAMILY_INFO_MGR_BODY* store);

    DEV_FAMILY_INFO_MGR_BODY* get_store() const { return m_store; }

    // ---- names ----------------------------------------------------------------------------
    DEV_FAMILY_ENUM get_family_enum_by_string(const std::string& name) const;
    bool exists_family_enum_by_string(const std::string& name) const;
    const char* get_user_string_name(DEV_FAMILY_ENUM family) const;

    // ---- record queries -------------------------------------------------------------------
    bool test_trait_of(DEV_FAMILY_ENUM family, DEV_FAMILY_TRAIT_ENUM trait) const;
    int get_bak_version_of(DEV_FAMILY_ENUM family) const;
    int get_encryption_id_of(DEV_FAMILY_ENUM family) const;
    DEV_FAMILY_ENUM get_base_family_enum(DEV_FAMILY_ENUM family) const;
    DEV_FAMILY_ENUM get_kx_library_family_of(DEV_FAMILY_ENUM family) const;
    // False (and `suffix` cleared) when the family has no unified suffix.
    bool get_unified_suffix_of(DEV_FAMILY_ENUM family, std::string& suffix) const;
    DEV_VOLTAGE_ENUM get_max_nominal_core_supply_voltage_enum_of(DEV_FAMILY_ENUM family) const;
    DEV_VOLTAGE_ENUM get_min_nominal_core_supply_voltage_enum_of(DEV_FAMILY_ENUM family) const;
    // The family's maximum (minimum) temperature of a grade: 1 commercial, 2 industrial,
    // 3 extended, 4 automotive, 5 military; 0 after an illegal grade.
    int get_max_temperature_of(DEV_FAMILY_ENUM family, DEV_TEMPERATURE_ENUM grade) const;
    int get_min_temperature_of(DEV_FAMILY_ENUM family, DEV_TEMPERATURE_ENUM grade) const;
    // Appends the family's configuration devices ("CONFIG_DEVICES"), in list order.
    void add_configuration_devices_of(DEV_FAMILY_ENUM family, std::vector<DEV_DEVICE_ENUM>* devices) const;
    // The family's "MIGRATION_FAMILIES", in list order (replaces the vector's contents).
    void get_tech_migration_families_of(DEV_FAMILY_ENUM family, std::vector<DEV_FAMILY_ENUM>* families) const;
    // The full directory of the family's data (the device-database root and its folder).
    void get_ddb_fullpath_of(DEV_FAMILY_ENUM family, std::string& path) const;
    // The family carries trait 8 (its device data come in the current persistent forms).
    bool has_new_ddb_support(DEV_FAMILY_ENUM family) const;

    // ---- selection ------------------------------------------------------------------------
    // Replaces `families` by the families with a catalogue record, in enumerator order, that
    // are `family` (every family for DEV_FAMILY_GENERIC) and carry every trait of `traits`
    // (null or empty: no trait required). With `skip_unavailable` set, families marked
    // NOT_LISTED, NOT_INSTALLED or NO_COMPILER_SUPPORT (family traits 4, 7, 5) are left out.
    void filter_family_list(std::vector<DEV_FAMILY_ENUM>* families, DEV_FAMILY_ENUM family,
                            const std::vector<DEV_FAMILY_TRAIT_ENUM>* traits, bool skip_unavailable) const;

private:
    const DEV_FAMILY_DESC* family_desc(DEV_FAMILY_ENUM family) const;

    DEV_FAMILY_INFO_MGR_BODY* m_store = nullptr;
};

#endif
