// What the part manager should answer, recomputed in the test from the catalogue text and
// the operating-point tables written out here as the product documentation gives them.
#ifndef VELCORA_TESTS_PART_MANAGER_EXPECTATION_H
#define VELCORA_TESTS_PART_MANAGER_EXPECTATION_H

#include <climits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "catalogue_text.h"
#include "host/dstr.h"

namespace expect {

constexpr int NONE = 2147483647;

// Millivolts of voltage enumerators 1..27.
inline int millivolts(int voltage) {
    static const int mv[] = {-1,   0,    600,  750,  800,  900,  950,  1000, 1050, 1075, 1100, 1125, 1200, 1250,
                             1320, 1400, 1500, 1800, 2000, 2100, 2500, 3000, 3300, 3900, 5000, NONE, NONE, NONE};
    return voltage >= 1 && voltage <= 27 ? mv[voltage] : -1;
}

// (voltage enumerator, temperature) of timing models 1..56; (0, NONE) otherwise.
inline std::pair<int, int> operating_point(int model) {
    static const int six[] = {125, 100, 85, 0, -40, -55};
    static const int seven[] = {125, 110, 100, 85, 0, -40, -55};
    if (model >= 7 && model <= 42) return {12 - (model - 7) / 6, six[(model - 7) % 6]};
    if (model >= 43 && model <= 56) return {6 - (model - 43) / 7, seven[(model - 43) % 7]};
    return {0, NONE};
}

inline int model_of(const std::string& name) { return dstr_get_dev_timing_model_enum_by_string(name); }

struct PART_EXPECTATION {
    std::set<int> voltages, max_temps, min_temps;
    int default_voltage = 0, default_max = 0, default_min = 0;
    int default_slow = 0, default_fast = 0;
};

// Recomputes one part's voltages and temperatures from its text block and those of its
// device and family.
inline PART_EXPECTATION compute(const TEXT_CATALOGUE& cat, const std::string& part_name) {
    PART_EXPECTATION e;
    const TEXT_BLOCK& part = cat.parts.at(part_name);
    const TEXT_BLOCK& device = cat.devices.at(part.one("DEVICE"));
    const TEXT_BLOCK& family = cat.families.at(part.one("FAMILY"));
    const std::vector<std::string>& slow = part.all("SLOW_TIMING_CORNERS");
    const std::vector<std::string>& fast = part.all("FAST_TIMING_CORNERS");
    e.default_slow = slow.empty() ? 0 : model_of(slow[0]);
    e.default_fast = fast.empty() ? 0 : model_of(fast[0]);

    const int device_voltage = dstr_get_dev_voltage_enum_by_string(device.one("VOLTAGE"));
    if (dstr_get_dev_family_enum_by_string(part.one("FAMILY")) != 41) e.voltages.insert(device_voltage);
    for (const std::string& c : slow)
        if (operating_point(model_of(c)).first != 0) e.voltages.insert(operating_point(model_of(c)).first);

    if (!part.one("DEFAULT_VOLTAGE").empty())
        e.default_voltage = dstr_get_dev_voltage_enum_by_string(part.one("DEFAULT_VOLTAGE"));
    else if (e.default_slow && operating_point(e.default_slow).first)
        e.default_voltage = operating_point(e.default_slow).first;
    else
        e.default_voltage = device_voltage ? device_voltage : 24;

    const std::string corner_trait = dstr_get_debug_string(static_cast<DEV_FAMILY_TRAIT_ENUM>(151));
    if (family.has("TRAITS", corner_trait)) {
        e.default_max = INT_MIN;
        bool found = false;
        for (const std::string& c : slow) {
            int t = operating_point(model_of(c)).second;
            if (t == NONE) continue;
            e.max_temps.insert(t);
            if (!found && t > 25) { e.default_max = t; found = true; }
            if (!found && t > e.default_max) e.default_max = t;
        }
        for (const std::string& c : fast)
            if (operating_point(model_of(c)).second != NONE) e.min_temps.insert(operating_point(model_of(c)).second);
        e.default_min = operating_point(e.default_fast).second;
    } else {
        const std::string grade = part.one("TEMPERATURE_GRADE");
        const std::string hi = grade.empty() ? "" : family.one("MAX_" + grade + "_TEMP");
        const std::string lo = grade.empty() ? "" : family.one("MIN_" + grade + "_TEMP");
        const bool range = !grade.empty() && std::stoi(hi.empty() ? "0" : hi) != std::stoi(lo.empty() ? "0" : lo);
        e.default_max = range ? std::stoi(hi) : 85;
        e.default_min = range ? std::stoi(lo) : 0;
        e.max_temps.insert(e.default_max);
        e.min_temps.insert(e.default_min);
    }
    return e;
}

}  // namespace expect

#endif
