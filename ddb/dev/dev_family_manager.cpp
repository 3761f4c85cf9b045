// DEV_FAMILY_MANAGER: family-level queries over the catalogue store.
#include "dev_family_manager.h"

#include "dev_family_info_mgr_body.h"
#include "dev_part_manager_cache.h"
#include "host/msg.h"

namespace {

// The traits that keep a family out of the user's lists when asked to.
bool unavailable(const DEV_FAMILY_DESC& d) {
    return d.has_trait(DEV_FAMILY_TRAIT_NOT_LISTED) || d.has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED) ||
           d.has_trait(DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT);
}

}  // namespace

DEV_FAMILY_MANAGER::DEV_FAMILY_MANAGER() : m_store(DEV_FAMILY_INFO_MGR_BODY::get_instance()) {
    DEV_ASSERT_TEXT(m_store != NULL, "dev_family_info_mgr_body != NULL");
}

DEV_FAMILY_MANAGER::DEV_FAMILY_MANAGER(DEV_FAMILY_INFO_MGR_BODY* store) : m_store(store) {
    DEV_ASSERT_TEXT(m_store != NULL, "dev_family_info_mgr_body != NULL");
}

const DEV_FAMILY_DESC* DEV_FAMILY_MANAGER::family_desc(DEV_FAMILY_ENUM family) const {
    return m_store ? m_store->get_desc_of(family) : nullptr;
}

// ---- names --------------------------------------------------------------------------------

DEV_FAMILY_ENUM DEV_FAMILY_MANAGER::get_family_enum_by_string(const std::string& name) const {
    return dstr_get_dev_family_enum_by_string(name);
}
bool DEV_FAMILY_MANAGER::exists_family_enum_by_string(const std::string& name) const {
    return dstr_exists_dev_family_enum_by_string(name);
}
const char* DEV_FAMILY_MANAGER::get_user_string_name(DEV_FAMILY_ENUM family) const {
    return dstr_get_user_string(family);
}

// ---- record queries -----------------------------------------------------------------------

bool DEV_FAMILY_MANAGER::test_trait_of(DEV_FAMILY_ENUM family, DEV_FAMILY_TRAIT_ENUM trait) const {
    if (!DEV_ASSERT((trait < DEV_FAMILY_TRAIT_GENERIC) && (trait > DEV_FAMILY_TRAIT_INVALID))) return false;
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d && d->has_trait(trait);
}
int DEV_FAMILY_MANAGER::get_bak_version_of(DEV_FAMILY_ENUM family) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_bak_version() : 0;
}
int DEV_FAMILY_MANAGER::get_encryption_id_of(DEV_FAMILY_ENUM family) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_encryption_id() : 0;
}
DEV_FAMILY_ENUM DEV_FAMILY_MANAGER::get_base_family_enum(DEV_FAMILY_ENUM family) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_base_family_id() : DEV_FAMILY_INVALID;
}
DEV_FAMILY_ENUM DEV_FAMILY_MANAGER::get_kx_library_family_of(DEV_FAMILY_ENUM family) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_kx_library_family() : DEV_FAMILY_INVALID;
}
bool DEV_FAMILY_MANAGER::get_unified_suffix_of(DEV_FAMILY_ENUM family, std::string& suffix) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    suffix = d ? d->get_unified_suffix() : std::string();
    return !suffix.empty();
}
DEV_VOLTAGE_ENUM DEV_FAMILY_MANAGER::get_max_nominal_core_supply_voltage_enum_of(DEV_FAMILY_ENUM family) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_max_nominal_core_supply_voltage() : DEV_VOLTAGE_INVALID;
}
DEV_VOLTAGE_ENUM DEV_FAMILY_MANAGER::get_min_nominal_core_supply_voltage_enum_of(DEV_FAMILY_ENUM family) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_min_nominal_core_supply_voltage() : DEV_VOLTAGE_INVALID;
}

int DEV_FAMILY_MANAGER::get_max_temperature_of(DEV_FAMILY_ENUM family, DEV_TEMPERATURE_ENUM grade) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_grade_temperature(grade, true) : 0;
}

int DEV_FAMILY_MANAGER::get_min_temperature_of(DEV_FAMILY_ENUM family, DEV_TEMPERATURE_ENUM grade) const {
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d ? d->get_grade_temperature(grade, false) : 0;
}

void DEV_FAMILY_MANAGER::add_configuration_devices_of(DEV_FAMILY_ENUM family,
                                                      std::vector<DEV_DEVICE_ENUM>* devices) const {
    if (!DEV_ASSERT(devices != NULL)) return;
    const DEV_FAMILY_DESC* d = family_desc(family);
    if (!d) return;
    dev_for_each_list_member(d->get_config_devices(), [devices](const std::string& name) {
        const DEV_DEVICE_ENUM device = dstr_get_dev_device_enum_by_string(name);
        if (device != DEV_DEVICE_INVALID) devices->push_back(device);
    });
}

void DEV_FAMILY_MANAGER::get_tech_migration_families_of(DEV_FAMILY_ENUM family,
                                                        std::vector<DEV_FAMILY_ENUM>* families) const {
    if (!DEV_ASSERT(families != NULL)) return;
    families->clear();
    const DEV_FAMILY_DESC* d = family_desc(family);
    if (!d) return;
    dev_for_each_list_member(d->get_migration_families(), [families](const std::string& name) {
        const DEV_FAMILY_ENUM f = dstr_get_dev_family_enum_by_string(name);
        if (f != DEV_FAMILY_INVALID) families->push_back(f);
    });
}

void DEV_FAMILY_MANAGER::get_ddb_fullpath_of(DEV_FAMILY_ENUM family, std::string& path) const {
    path.clear();
    if (!DEV_ASSERT_TEXT((family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX), "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)") || !m_store) return;
    m_store->get_ddb_fullpath_of(family, path);
}

bool DEV_FAMILY_MANAGER::has_new_ddb_support(DEV_FAMILY_ENUM family) const {
    if (!DEV_ASSERT_TEXT(family > DEV_FAMILY_INVALID, "family > DEV_FAMILY_INVALID") || !DEV_ASSERT_TEXT(family < DEV_FAMILY_GENERIC, "family < DEV_FAMILY_GENERIC")) return false;
    const DEV_FAMILY_DESC* d = family_desc(family);
    return d && d->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT);
}

// ---- selection ----------------------------------------------------------------------------

void DEV_FAMILY_MANAGER::filter_family_list(std::vector<DEV_FAMILY_ENUM>* families, DEV_FAMILY_ENUM family,
                                            const std::vector<DEV_FAMILY_TRAIT_ENUM>* traits,
                                            bool skip_unavailable) const {
    if (!DEV_ASSERT(families != NULL)) return;
    families->clear();
    if (!DEV_ASSERT_TEXT((family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX), "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)") || !m_store) return;
    if (traits)
        for (DEV_FAMILY_TRAIT_ENUM trait : *traits)
            if (!DEV_ASSERT((trait < DEV_FAMILY_TRAIT_GENERIC) && (trait > DEV_FAMILY_TRAIT_INVALID))) return;
    for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f) {
        if (family != DEV_FAMILY_GENERIC && f != family) continue;
        const DEV_FAMILY_DESC* d = m_store->find_desc_of(static_cast<DEV_FAMILY_ENUM>(f));
        if (!d || (skip_unavailable && unavailable(*d))) continue;
        bool carries_all = true;
        if (traits)
            for (DEV_FAMILY_TRAIT_ENUM trait : *traits) carries_all = carries_all && d->has_trait(trait);
        if (carries_all) families->push_back(static_cast<DEV_FAMILY_ENUM>(f));
    }
}
