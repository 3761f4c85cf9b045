// DEV_PART_MANAGER: operating points of timing models, voltages, temperatures (with their
// per-part cached lists) and the best-matching timing corner.
#include <climits>
#include <cstdint>

#include "dev_family_info_mgr_body.h"
#include "dev_part_manager.h"
#include "dev_part_manager_cache.h"
#include "host/msg.h"

namespace {

// The one family whose parts' voltage lists leave out the device's own voltage: its
// devices are run at their corners' voltages only.
constexpr DEV_FAMILY_ENUM FAMILY_WITHOUT_DEVICE_VOLTAGE = DEV_FAMILY_CORVANE6;
static_assert(FAMILY_WITHOUT_DEVICE_VOLTAGE == 41, "the family whose voltage lists leave out the device voltage");
// The family trait saying that a part's temperatures come from its timing corners.
static_assert(DEV_FAMILY_TRAIT_TEMPERATURE_FROM_TIMING_CORNERS == 151, "temperatures from timing corners");
// Fallbacks where the family gives no range for the part's grade (they differ on purpose).
constexpr int FALLBACK_MAX_TEMP = 85;
constexpr int FALLBACK_MIN_TEMP = 0;
// The default voltage when nothing else gives one.
constexpr DEV_VOLTAGE_ENUM FALLBACK_VOLTAGE = DEV_VOLTAGE_5_0V;
static_assert(FALLBACK_VOLTAGE == 24, "the default voltage when nothing else gives one");

int corner_temperature(DEV_TIMING_MODEL_ENUM corner) {
    return DEV_PART_MANAGER::get_temperature_from_timing_model_enum(corner);
}

// Looks `part` up in a list cache, computing and storing the list on the first query.
template <typename T, typename COMPUTE>
const std::vector<T>& cached_list(VTL_HASH<DEV_PART_ENUM, std::shared_ptr<const std::vector<T>>>& cache,
                                  DEV_PART_ENUM part, COMPUTE compute) {
    static const std::vector<T> none;
    if (const auto* hit = cache.find(part)) return **hit;
    bool ok = false;
    auto list = std::make_shared<const std::vector<T>>(compute(ok));
    if (!ok) return none;  // no record: nothing to keep, a later load may supply it
    cache.set(part, list);
    return *list;
}

}  // namespace

// ---- operating points of timing models ----------------------------------------------------

void DEV_PART_MANAGER::get_vt_from_timing_model_enum(DEV_TIMING_MODEL_ENUM model, DEV_VOLTAGE_ENUM* return_voltage,
                                                     int* return_temp) {
    DEV_ASSERT_TEXT(return_voltage != 0, "return_voltage != 0");
    DEV_ASSERT_TEXT(return_temp != 0, "return_temp != 0");
    DEV_VOLTAGE_ENUM voltage = DEV_VOLTAGE_INVALID;
    int temperature = DEV_NO_TEMPERATURE;
    if (model == DEV_TIMING_MODEL_INVALID || model == DEV_TIMING_MODEL_GENERIC || model == DEV_TIMING_MODEL_MAX)
        DEV_INTERNAL_ERROR("Illegal TIMING_MODEL_ENUM");
    else
        dstr_get_timing_model_operating_point(model, &voltage, &temperature);  // untouched when unknown
    if (return_voltage) *return_voltage = voltage;
    if (return_temp) *return_temp = temperature;
}

DEV_VOLTAGE_ENUM DEV_PART_MANAGER::get_voltage_from_timing_model_enum(DEV_TIMING_MODEL_ENUM model) {
    DEV_VOLTAGE_ENUM voltage;
    int temperature;
    get_vt_from_timing_model_enum(model, &voltage, &temperature);
    return voltage;
}

int DEV_PART_MANAGER::get_temperature_from_timing_model_enum(DEV_TIMING_MODEL_ENUM model) {
    DEV_VOLTAGE_ENUM voltage;
    int temperature;
    get_vt_from_timing_model_enum(model, &voltage, &temperature);
    return temperature;
}

DEV_TIMING_MODEL_ENUM DEV_PART_MANAGER::get_timing_model_enum_from_vt(DEV_VOLTAGE_ENUM voltage, int temperature) {
    return dstr_get_timing_model_by_operating_point(voltage, temperature);
}

// ---- voltages -----------------------------------------------------------------------------

int DEV_PART_MANAGER::voltage_enum_to_mv(DEV_VOLTAGE_ENUM voltage) {
    if (!DEV_ASSERT_TEXT(voltage > DEV_VOLTAGE_INVALID && voltage < DEV_VOLTAGE_GENERIC, "voltage > DEV_VOLTAGE_INVALID && voltage < DEV_VOLTAGE_GENERIC")) return -1;
    const int millivolts = dstr_get_voltage_millivolts(voltage);
    if (millivolts == -1) {
        DEV_INTERNAL_ERROR("Invalid DEV_VOLTAGE_ENUM specified. Please update this switch statement.");
        return -1;
    }
    return millivolts;
}

DEV_VOLTAGE_ENUM DEV_PART_MANAGER::voltage_mv_to_enum(int millivolts) {
    return dstr_get_voltage_by_millivolts(millivolts);
}

DEV_VOLTAGE_ENUM DEV_PART_MANAGER::get_default_voltage(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    if (!d) return DEV_VOLTAGE_INVALID;
    if (d->get_default_voltage() != DEV_VOLTAGE_INVALID) return d->get_default_voltage();
    const DEV_TIMING_MODEL_ENUM default_slow_corner = get_default_slow_timing_corner(part);
    if (DEV_ASSERT_TEXT(default_slow_corner != DEV_TIMING_MODEL_INVALID, "default_slow_corner != DEV_TIMING_MODEL_INVALID")) {
        const DEV_VOLTAGE_ENUM voltage = get_voltage_from_timing_model_enum(default_slow_corner);
        if (voltage != DEV_VOLTAGE_INVALID) return voltage;
    }
    const DEV_DEVICE_DESC* device = device_desc(d->get_device());
    if (device && device->get_voltage() != DEV_VOLTAGE_INVALID) return device->get_voltage();
    return FALLBACK_VOLTAGE;
}

const std::vector<DEV_VOLTAGE_ENUM>& DEV_PART_MANAGER::get_voltage_list(DEV_PART_ENUM part) const {
    static const std::vector<DEV_VOLTAGE_ENUM> none;
    if (!DEV_ASSERT_TEXT(part > DEV_PART_INVALID && part < DEV_PART_GENERIC, "part > DEV_PART_INVALID && part < DEV_PART_GENERIC") || !m_store) return none;
    return cached_list(m_store->get_derived_lists().m_voltage_lists, part, [&](bool& ok) {
        std::vector<DEV_VOLTAGE_ENUM> list;
        const DEV_PART_DESC* d = part_desc(part);
        if (!(ok = d != nullptr)) return list;
        const DEV_DEVICE_DESC* device = device_desc(d->get_device());
        const DEV_VOLTAGE_ENUM device_voltage = device ? device->get_voltage() : DEV_VOLTAGE_INVALID;
        DEV_ASSERT_TEXT(device_voltage != DEV_VOLTAGE_INVALID, "device_voltage != DEV_VOLTAGE_INVALID");
        if (d->get_family() != FAMILY_WITHOUT_DEVICE_VOLTAGE && device_voltage != DEV_VOLTAGE_INVALID)
            list.push_back(device_voltage);
        const std::vector<DEV_TIMING_MODEL_ENUM> corner_list = corner_list_of(*d, DAT_SLOW_MODEL);
        for (size_t i = 0; i < corner_list.size(); ++i) {
            if (!DEV_ASSERT_TEXT(corner_list[i] != DEV_TIMING_MODEL_INVALID, "corner_list[i] != DEV_TIMING_MODEL_INVALID")) continue;
            const DEV_VOLTAGE_ENUM voltage = get_voltage_from_timing_model_enum(corner_list[i]);
            if (voltage != DEV_VOLTAGE_INVALID) dev_add_unique(list, voltage);
        }
        return list;
    });
}

bool DEV_PART_MANAGER::has_selectable_core_voltage(DEV_PART_ENUM part) const {
    return get_voltage_list(part).size() > 1;
}

bool DEV_PART_MANAGER::test_voltage_of(DEV_PART_ENUM part, DEV_VOLTAGE_ENUM voltage) const {
    if (!DEV_ASSERT_TEXT(voltage > DEV_VOLTAGE_INVALID && voltage < DEV_VOLTAGE_GENERIC, "voltage > DEV_VOLTAGE_INVALID && voltage < DEV_VOLTAGE_GENERIC")) return false;
    for (DEV_VOLTAGE_ENUM v : get_voltage_list(part))
        if (v == voltage) return true;
    return false;
}

// ---- temperatures -------------------------------------------------------------------------

std::vector<DEV_TIMING_MODEL_ENUM> DEV_PART_MANAGER::corner_list_of(const DEV_PART_DESC& part,
                                                                    dat_timing_models model) const {
    return corner_list(model == DAT_FAST_MODEL ? part.get_fast_timing_corners() : part.get_slow_timing_corners());
}

bool DEV_PART_MANAGER::family_has_corner_temperatures(const DEV_PART_DESC& part) const {
    const DEV_FAMILY_DESC* family = family_desc_of(part);
    return family && family->has_trait(DEV_FAMILY_TRAIT_TEMPERATURE_FROM_TIMING_CORNERS);
}

int DEV_PART_MANAGER::family_grade_temperature(const DEV_PART_DESC& part, bool maximum) const {
    const DEV_TEMPERATURE_ENUM grade = part.get_temperature_grade();
    const int fallback = maximum ? FALLBACK_MAX_TEMP : FALLBACK_MIN_TEMP;
    if (grade == DEV_TEMPERATURE_INVALID) return fallback;
    const DEV_FAMILY_DESC* family = m_store ? m_store->get_desc_of(part.get_family()) : nullptr;
    const int max_temp = family ? family->get_grade_temperature(grade, true) : 0;
    const int min_temp = family ? family->get_grade_temperature(grade, false) : 0;
    if (max_temp == min_temp) return fallback;  // the family gives no range for this grade
    return maximum ? max_temp : min_temp;
}

int DEV_PART_MANAGER::default_max_temp(const DEV_PART_DESC& part) const {
    if (!family_has_corner_temperatures(part)) return family_grade_temperature(part, true);
    // The first slow corner above room temperature; corners without a temperature of their
    // own say nothing about the part's range and are passed over.
    const std::vector<DEV_TIMING_MODEL_ENUM> slow_tim_corner_list = corner_list_of(part, DAT_SLOW_MODEL);
    int highest = INT_MIN;
    for (size_t i = 0; i < slow_tim_corner_list.size(); ++i) {
        if (!DEV_ASSERT_TEXT(slow_tim_corner_list[i] != DEV_TIMING_MODEL_INVALID, "slow_tim_corner_list[i] != DEV_TIMING_MODEL_INVALID")) continue;
        const int temperature = corner_temperature(slow_tim_corner_list[i]);
        if (temperature == DEV_NO_TEMPERATURE) continue;
        if (temperature > ROOM_TEMPERATURE) return temperature;
        if (temperature > highest) highest = temperature;
    }
    DEV_DEBUG("Warning: No temperature above %dc is found in the slow_timing_corners list for part %s",
              ROOM_TEMPERATURE, part.get_ordering_code().c_str());
    return highest;
}

int DEV_PART_MANAGER::default_min_temp(const DEV_PART_DESC& part) const {
    if (!family_has_corner_temperatures(part)) return family_grade_temperature(part, false);
    const std::vector<DEV_TIMING_MODEL_ENUM> fast_tim_corner_list = corner_list_of(part, DAT_FAST_MODEL);
    const DEV_TIMING_MODEL_ENUM first = fast_tim_corner_list.empty() ? DEV_TIMING_MODEL_INVALID : fast_tim_corner_list[0];
    if (!DEV_ASSERT_TEXT(first != DEV_TIMING_MODEL_INVALID, "fast_tim_corner_list[0] != DEV_TIMING_MODEL_INVALID"))
        return FALLBACK_MIN_TEMP;
    const int result = corner_temperature(first);
    DEV_ASSERT_TEXT(result < ROOM_TEMPERATURE, "result < ROOM_TEMPERATURE");
    return result;
}

int DEV_PART_MANAGER::get_default_max_temp(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? default_max_temp(*d) : 0;
}

int DEV_PART_MANAGER::get_default_min_temp(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* d = part_desc(part);
    return d ? default_min_temp(*d) : 0;
}

std::vector<int> DEV_PART_MANAGER::temperature_list(const DEV_PART_DESC& part, bool maximum) const {
    std::vector<int> list;
    if (!family_has_corner_temperatures(part)) {
        list.push_back(family_grade_temperature(part, maximum));
        return list;
    }
    const std::vector<DEV_TIMING_MODEL_ENUM> corner_list = corner_list_of(part, maximum ? DAT_SLOW_MODEL : DAT_FAST_MODEL);
    for (size_t i = 0; i < corner_list.size(); ++i) {
        if (!DEV_ASSERT_TEXT(corner_list[i] != DEV_TIMING_MODEL_INVALID, "corner_list[i] != DEV_TIMING_MODEL_INVALID")) continue;
        const int temperature = corner_temperature(corner_list[i]);
        if (temperature != DEV_NO_TEMPERATURE) dev_add_unique(list, temperature);
    }
    return list;
}

const std::vector<int>& DEV_PART_MANAGER::cached_temperature_list(DEV_PART_ENUM part, bool maximum) const {
    static const std::vector<int> none;
    if (!DEV_ASSERT_TEXT(part > DEV_PART_INVALID && part < DEV_PART_GENERIC, "part > DEV_PART_INVALID && part < DEV_PART_GENERIC") || !m_store) return none;
    DEV_PART_LIST_CACHE& lists = m_store->get_derived_lists();
    return cached_list(maximum ? lists.m_max_temp_lists : lists.m_min_temp_lists, part, [&](bool& ok) {
        const DEV_PART_DESC* d = part_desc(part);
        ok = d != nullptr;
        return d ? temperature_list(*d, maximum) : std::vector<int>();
    });
}

const std::vector<int>& DEV_PART_MANAGER::get_max_temp_list(DEV_PART_ENUM part) const {
    return cached_temperature_list(part, true);
}

const std::vector<int>& DEV_PART_MANAGER::get_min_temp_list(DEV_PART_ENUM part) const {
    return cached_temperature_list(part, false);
}

bool DEV_PART_MANAGER::has_selectable_temperature_range(DEV_PART_ENUM part) const {
    return get_max_temp_list(part).size() > 1 || get_min_temp_list(part).size() > 1;
}

bool DEV_PART_MANAGER::test_temp_range_of(DEV_PART_ENUM part, int min_temp, int max_temp) const {
    bool min_found = false, max_found = false;
    for (int t : get_min_temp_list(part)) min_found = min_found || t == min_temp;
    for (int t : get_max_temp_list(part)) max_found = max_found || t == max_temp;
    return min_found && max_found;
}

// ---- best-matching timing model -----------------------------------------------------------

DEV_TIMING_MODEL_ENUM DEV_PART_MANAGER::get_best_match_timing_model_enum(DEV_PART_ENUM part, dat_timing_models model,
                                                                         DEV_VOLTAGE_ENUM voltage,
                                                                         int temperature) const {
    if (model != DAT_SLOW_MODEL && model != DAT_FAST_MODEL) {
        DEV_INTERNAL_ERROR("This function only accepts DAT_SLOW_MODEL or DAT_FAST_MODEL");
        return DEV_TIMING_MODEL_INVALID;
    }
    const DEV_PART_DESC* d = part_desc(part);
    if (!d) return DEV_TIMING_MODEL_INVALID;
    const bool slow = model == DAT_SLOW_MODEL;
    const std::vector<DEV_TIMING_MODEL_ENUM> corners = corner_list_of(*d, model);
    const DEV_TIMING_MODEL_ENUM default_corner = corners.empty() ? DEV_TIMING_MODEL_INVALID : corners[0];
    if (!DEV_ASSERT_TEXT(voltage != DEV_VOLTAGE_INVALID, "voltage != DEV_VOLTAGE_INVALID")) return default_corner;

    DEV_TIMING_MODEL_ENUM best = DEV_TIMING_MODEL_INVALID;
    int64_t best_distance = DEV_NO_TEMPERATURE;
    DEV_TIMING_MODEL_ENUM fallback = DEV_TIMING_MODEL_INVALID;
    int fallback_mv = 0;
    const int target_mv = voltage_enum_to_mv(voltage);
    // Computed once, for corners without an operating point of their own.
    DEV_VOLTAGE_ENUM device_voltage = DEV_VOLTAGE_INVALID;
    bool have_device_voltage = false;
    int default_temperature = 0;
    bool have_default_temperature = false;

    for (DEV_TIMING_MODEL_ENUM corner : corners) {
        if (corner == DEV_TIMING_MODEL_INVALID) continue;  // reported when the list was read
        DEV_VOLTAGE_ENUM v;
        int t;
        get_vt_from_timing_model_enum(corner, &v, &t);
        if (v == DEV_VOLTAGE_INVALID) {
            if (!have_device_voltage) {
                const DEV_DEVICE_DESC* device = device_desc(d->get_device());
                device_voltage = device ? device->get_voltage() : DEV_VOLTAGE_INVALID;
                have_device_voltage = true;
            }
            v = device_voltage;
        }
        if (t == DEV_NO_TEMPERATURE) {
            if (!have_default_temperature) {
                default_temperature = slow ? default_max_temp(*d) : default_min_temp(*d);
                have_default_temperature = true;
            }
            t = default_temperature;
        }
        if (t == temperature) {
            const int mv = voltage_enum_to_mv(v);
            if (mv == target_mv || mv > fallback_mv) {
                fallback = corner;
                fallback_mv = mv;
            }
        }
        if (v == voltage) {
            const int64_t distance = static_cast<int64_t>(t) - temperature;
            const bool qualifies = slow ? distance >= 0 : distance <= 0;
            const int64_t magnitude = distance < 0 ? -distance : distance;
            if (qualifies && magnitude < best_distance) {  // strictly closer: the first of a tie stays
                best = corner;
                best_distance = magnitude;
            }
        }
    }
    if (best != DEV_TIMING_MODEL_INVALID) return best;
    if (fallback != DEV_TIMING_MODEL_INVALID) return fallback;
    return default_corner;
}
