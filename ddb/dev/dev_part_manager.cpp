// DEV_PART_MANAGER: handles on the store, plain record queries, names, traits, resources and
// timing-corner lists. Voltages, temperatures and the best-match rule are in
// dev_part_manager_corners.cpp; the part filter in dev_part_manager_filter.cpp.
#include "dev_part_manager.h"

#include <cstdlib>

#include "dev_family_info_mgr_body.h"
#include "dev_part_manager_cache.h"
#include "host/msg.h"

DEV_PART_MANAGER::DEV_PART_MANAGER() : m_store(DEV_FAMILY_INFO_MGR_BODY::get_instance()) {
    DEV_ASSERT_TEXT(m_store != NULL, "dev_family_info_mgr_body != NULL");
}

DEV_PART_MANAGER::DEV_PART_MANAGER(DEV_FAMILY_INFO_MGR_BODY* store) : m_store(store) {
    DEV_ASSERT_TEXT(m_store != NULL, "dev_family_info_mgr_body != NULL");
}

// ---- record access ------------------------------------------------------------------------

const DEV_PART_DESC* DEV_PART_MANAGER::part_desc(DEV_PART_ENUM part) const {
    if (!DEV_ASSERT_TEXT(part > DEV_PART_INVALID && part < DEV_PART_GENERIC, "part > DEV_PART_INVALID && part < DEV_PART_GENERIC") || !m_store) return nullptr;
    return m_store->get_desc_of(part);
}

const DEV_DEVICE_DESC* DEV_PART_MANAGER::device_desc(DEV_DEVICE_ENUM device) const {
    return m_store ? m_store->get_desc_of(device) : nullptr;
}

const DEV_FAMILY_DESC* DEV_PART_MANAGER::family_desc_of(const DEV_PART_DESC& part) const {
    return m_store ? m_store->get_desc_of(part.get_family()) : nullptr;
}

// ---- plain record queries -----------------------------------------------------------------

DEV_FAMILY_ENUM DEV_PART_MANAGER::get_family_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_family() : DEV_FAMILY_INVALID;
}
DEV_FAMILY_ENUM DEV_PART_MANAGER::get_family_of(DEV_DEVICE_ENUM device) const {
    const DEV_DEVICE_DESC* d = device_desc(device);
    return d ? d->get_family() : DEV_FAMILY_INVALID;
}
DEV_DEVICE_ENUM DEV_PART_MANAGER::get_device_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_device() : DEV_DEVICE_INVALID;
}
DEV_PKG_ENUM DEV_PART_MANAGER::get_pkg_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_package() : DEV_PKG_INVALID;
}
DEV_SPEED_ENUM DEV_PART_MANAGER::get_speed_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_speed_grade() : DEV_SPEED_INVALID;
}
DEV_SPEED_ENUM DEV_PART_MANAGER::get_fast_corner_speed_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_fast_corner_grade() : DEV_SPEED_INVALID;
}
DEV_GRADE_REVISION_ENUM DEV_PART_MANAGER::get_grade_revision_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_grade_revision() : DEV_GRADE_REVISION_INVALID;
}
DEV_GRADE_REVISION_ENUM DEV_PART_MANAGER::get_fast_grade_revision_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_fast_grade_revision() : DEV_GRADE_REVISION_INVALID;
}
DEV_FAMILY_VARIANT_ENUM DEV_PART_MANAGER::get_family_variant_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_family_variant() : DEV_FAMILY_VARIANT_INVALID;
}
DEV_TEMPERATURE_ENUM DEV_PART_MANAGER::get_temperature_grade_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_temperature_grade() : DEV_TEMPERATURE_INVALID;
}
DEV_TEMPERATURE_ENUM DEV_PART_MANAGER::get_max_power_characteristics_temperature_grade_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_max_power_characteristics_temp_grade() : DEV_TEMPERATURE_INVALID;
}
DEV_POWER_MODEL_STATUS_ENUM DEV_PART_MANAGER::get_power_model_status(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_power_model_status() : DEV_POWER_MODEL_STATUS_INVALID;
}
int DEV_PART_MANAGER::get_pin_count_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_pin_count() : 0;
}
int DEV_PART_MANAGER::get_io_count_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_num_of_io() : 0;
}
int DEV_PART_MANAGER::get_lcell_count_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_num_of_lcells() : 0;
}
std::string DEV_PART_MANAGER::get_ordering_code_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_ordering_code() : std::string();
}
std::string DEV_PART_MANAGER::get_ddb_package_file_suffix_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? d->get_package_ddb_file_name_suffix() : std::string();
}
DEV_VOLTAGE_ENUM DEV_PART_MANAGER::get_voltage_of(DEV_DEVICE_ENUM device) const {
    const DEV_DEVICE_DESC* d = device_desc(device);
    return d ? d->get_voltage() : DEV_VOLTAGE_INVALID;
}
DEV_VOLTAGE_ENUM DEV_PART_MANAGER::get_voltage_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? get_voltage_of(d->get_device()) : DEV_VOLTAGE_INVALID;
}
int DEV_PART_MANAGER::get_bak_version_of(DEV_DEVICE_ENUM device) const {
    const DEV_DEVICE_DESC* d = device_desc(device);
    return d ? d->get_bak_version() : 0;
}
DEV_DEVICE_ENUM DEV_PART_MANAGER::get_base_device_of(DEV_DEVICE_ENUM device) const {
    const DEV_DEVICE_DESC* d = device_desc(device);
    return d ? d->get_base_device() : DEV_DEVICE_INVALID;
}

// ---- names --------------------------------------------------------------------------------

const char* DEV_PART_MANAGER::get_user_string_name(DEV_PART_ENUM part) const {
    if (!DEV_ASSERT_TEXT(part > DEV_PART_INVALID && part < DEV_PART_GENERIC, "part > DEV_PART_INVALID && part < DEV_PART_GENERIC")) return "";
    return dstr_get_user_string(part);
}
DEV_PART_ENUM DEV_PART_MANAGER::get_part_enum_by_string(const std::string& name) const {
    return dstr_get_dev_part_enum_by_string(name);
}
bool DEV_PART_MANAGER::exists_part_enum_by_string(const std::string& name) const {
    return dstr_exists_dev_part_enum_by_string(name);
}
int DEV_PART_MANAGER::temperature_str_to_int(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}
std::string DEV_PART_MANAGER::temperature_int_to_str(int temperature) {
    return std::to_string(temperature);
}

// ---- traits -------------------------------------------------------------------------------

bool DEV_PART_MANAGER::test_part_trait_of(DEV_PART_ENUM part, DEV_PART_TRAIT_ENUM trait) const {
    if (!DEV_ASSERT_TEXT((trait < DEV_PART_TRAIT_GENERIC) && (trait > DEV_PART_TRAIT_INVALID), "(trait < DEV_PART_TRAIT_GENERIC) && (trait > DEV_PART_TRAIT_INVALID)")) return false;
    const DEV_PART_DESC* d = part_desc(part);
    return d && d->has_trait(trait);
}

bool DEV_PART_MANAGER::test_device_trait_of(DEV_DEVICE_ENUM device, DEV_DEVICE_TRAIT_ENUM trait) const {
    if (!DEV_ASSERT((trait < DEV_DEVICE_TRAIT_GENERIC) && (trait > DEV_DEVICE_TRAIT_INVALID))) return false;
    const DEV_DEVICE_DESC* d = device_desc(device);
    return d && d->has_trait(trait);
}

bool DEV_PART_MANAGER::trait_matches_test_value_for_all_parts_in_list(
    DEV_PART_TRAIT_ENUM trait, bool value, const std::vector<DEV_PART_ENUM>& parts) const {
    for (DEV_PART_ENUM part : parts)
        if (test_part_trait_of(part, trait) != value) return false;
    return true;
}

bool DEV_PART_MANAGER::trait_matches_test_value_for_any_part_in_list(
    DEV_PART_TRAIT_ENUM trait, bool value, const std::vector<DEV_PART_ENUM>& parts) const {
    for (DEV_PART_ENUM part : parts)
        if (test_part_trait_of(part, trait) == value) return true;
    return false;
}

// ---- resources ----------------------------------------------------------------------------

int DEV_PART_MANAGER::get_device_resource_count_of(DEV_PART_ENUM part, DEV_RESOURCE_ENUM resource) const {
    // Counts exist for the resources before DEV_RESOURCE_END; the vector's last slot is spare.
    if (!DEV_ASSERT_TEXT(resource < DEV_RESOURCE_END && resource > DEV_RESOURCE_INVALID,
                         "(resource < DEV_RESOURCE_MAX) && (resource > DEV_RESOURCE_INVALID)"))
        return -1;
    const DEV_PART_DESC* d = part_desc(part);
    if (!d) return -1;
    const std::vector<int32_t>& counts = d->get_dev_resources();
    return static_cast<size_t>(resource) < counts.size() ? counts[resource] : -1;
}

// ---- timing corners -----------------------------------------------------------------------

std::vector<DEV_TIMING_MODEL_ENUM> DEV_PART_MANAGER::corner_list(const std::string& list) const {
    std::vector<DEV_TIMING_MODEL_ENUM> corners;
    dev_for_each_list_member(list, [&corners](const std::string& enum_string) {
        // An unknown name is kept as the invalid model so that positions stay as written.
        DEV_ASSERT_TEXT(::dstr_exists_dev_timing_model_enum_by_string(enum_string.c_str()), "::dstr_exists_dev_timing_model_enum_by_string(enum_string.c_str())");
        corners.push_back(dstr_get_dev_timing_model_enum_by_string(enum_string));
    });
    return corners;
}

std::vector<DEV_TIMING_MODEL_ENUM> DEV_PART_MANAGER::get_slow_timing_corner_list(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? corner_list(d->get_slow_timing_corners()) : std::vector<DEV_TIMING_MODEL_ENUM>();
}
std::vector<DEV_TIMING_MODEL_ENUM> DEV_PART_MANAGER::get_fast_timing_corner_list(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? corner_list(d->get_fast_timing_corners()) : std::vector<DEV_TIMING_MODEL_ENUM>();
}

namespace {

bool list_holds(const std::vector<DEV_TIMING_MODEL_ENUM>& list, DEV_TIMING_MODEL_ENUM corner) {
    for (DEV_TIMING_MODEL_ENUM c : list)
        if (c == corner) return true;
    return false;
}

std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR> operating_points(const std::vector<DEV_TIMING_MODEL_ENUM>& corners) {
    std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR> pairs;
    for (DEV_TIMING_MODEL_ENUM corner : corners) {
        if (corner == DEV_TIMING_MODEL_INVALID) continue;  // reported when the list was read
        DEV_VOLTAGE_TEMPERATURE_PAIR vt(DEV_VOLTAGE_INVALID, DEV_NO_TEMPERATURE);
        DEV_PART_MANAGER::get_vt_from_timing_model_enum(corner, &vt.first, &vt.second);
        pairs.push_back(vt);
    }
    return pairs;
}

}  // namespace

bool DEV_PART_MANAGER::test_slow_timing_corner_of(DEV_PART_ENUM part, DEV_TIMING_MODEL_ENUM corner) const {
    if (!DEV_ASSERT_TEXT(corner > DEV_TIMING_MODEL_INVALID && corner < DEV_TIMING_MODEL_GENERIC, "corner > DEV_TIMING_MODEL_INVALID && corner < DEV_TIMING_MODEL_GENERIC")) return false;
    return list_holds(get_slow_timing_corner_list(part), corner);
}
bool DEV_PART_MANAGER::test_fast_timing_corner_of(DEV_PART_ENUM part, DEV_TIMING_MODEL_ENUM corner) const {
    if (!DEV_ASSERT_TEXT(corner > DEV_TIMING_MODEL_INVALID && corner < DEV_TIMING_MODEL_GENERIC, "corner > DEV_TIMING_MODEL_INVALID && corner < DEV_TIMING_MODEL_GENERIC")) return false;
    return list_holds(get_fast_timing_corner_list(part), corner);
}

DEV_TIMING_MODEL_ENUM DEV_PART_MANAGER::get_default_slow_timing_corner(DEV_PART_ENUM part) const {
    std::vector<DEV_TIMING_MODEL_ENUM> corners = get_slow_timing_corner_list(part);
    return corners.empty() ? DEV_TIMING_MODEL_INVALID : corners[0];
}
DEV_TIMING_MODEL_ENUM DEV_PART_MANAGER::get_default_fast_timing_corner(DEV_PART_ENUM part) const {
    std::vector<DEV_TIMING_MODEL_ENUM> corners = get_fast_timing_corner_list(part);
    return corners.empty() ? DEV_TIMING_MODEL_INVALID : corners[0];
}

std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR> DEV_PART_MANAGER::get_slow_corner_voltage_temperature_pairs(
    DEV_PART_ENUM part) const {
    return operating_points(get_slow_timing_corner_list(part));
}
std::vector<DEV_VOLTAGE_TEMPERATURE_PAIR> DEV_PART_MANAGER::get_fast_corner_voltage_temperature_pairs(
    DEV_PART_ENUM part) const {
    return operating_points(get_fast_timing_corner_list(part));
}
