// Answers the Tcl tests' questions straight from the part and family managers, so that the
// tests compare each command of ::velcora::device with the C++ queries it stands on.
// Reads one question per line on stdin and writes one Tcl list per line on stdout:
//   families                     {debug user no_compiler_support ddb_fullpath {migration user strings}} ...
//   filter F D P N S             debug names of filter_part_list(F, D, P, N, S)
//   part P                       user strings of family device package, suffix, pins, user
//                                strings of speed voltage temperature-grade variant ("" when
//                                invalid), default max, default min, {max list} {min list}
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "host/dstr.h"
#include "dev_family_manager.h"
#include "dev_part_manager.h"

namespace {

// A list element in Tcl's canonical form (catalogue names hold no braces or backslashes).
std::string element(const std::string& text) {
    if (!text.empty() && text.find_first_of(" \t\n{}[]$\";\\") == std::string::npos) return text;
    return "{" + text + "}";
}

std::string list_of(const std::vector<std::string>& values) {
    std::string out;
    for (const std::string& v : values) out += (out.empty() ? "" : " ") + element(v);
    return out;
}

std::vector<std::string> words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> out;
    for (std::string w; in >> w;) out.push_back(w);
    return out;
}

std::string families() {
    DEV_FAMILY_MANAGER fm;
    std::vector<DEV_FAMILY_ENUM> list;
    fm.filter_family_list(&list, DEV_FAMILY_GENERIC, nullptr, false);
    std::vector<std::string> rows;
    for (DEV_FAMILY_ENUM f : list) {
        std::string path;
        fm.get_ddb_fullpath_of(f, path);
        std::vector<DEV_FAMILY_ENUM> migration;
        fm.get_tech_migration_families_of(f, &migration);
        std::vector<std::string> names;
        for (DEV_FAMILY_ENUM m : migration) names.push_back(dstr_get_user_string(m));
        rows.push_back(list_of({dstr_get_debug_string(f), dstr_get_user_string(f),
                                fm.test_trait_of(f, static_cast<DEV_FAMILY_TRAIT_ENUM>(5)) ? "1" : "0", path,
                                list_of(names)}));
    }
    return list_of(rows);
}

std::string part(const std::string& name) {
    DEV_PART_MANAGER pm;
    DEV_PART_ENUM p = dstr_get_dev_part_enum_by_string(name);
    auto to_strings = [](const std::vector<int>& v) {
        std::vector<std::string> s;
        for (int t : v) s.push_back(std::to_string(t));
        return s;
    };
    DEV_FAMILY_VARIANT_ENUM variant = pm.get_family_variant_of(p);
    std::vector<std::string> fields = {dstr_get_user_string(pm.get_family_of(p)),
                                       dstr_get_user_string(pm.get_device_of(p)),
                                       dstr_get_user_string(pm.get_pkg_of(p)),
                                       pm.get_ddb_package_file_suffix_of(p),
                                       std::to_string(pm.get_pin_count_of(p)),
                                       dstr_get_user_string(pm.get_speed_of(p)),
                                       dstr_get_user_string(pm.get_default_voltage(p)),
                                       dstr_get_user_string(pm.get_temperature_grade_of(p)),
                                       dstr_is_valid_dev_family_variant_enum(variant) ? dstr_get_user_string(variant) : "",
                                       std::to_string(pm.get_default_max_temp(p)),
                                       std::to_string(pm.get_default_min_temp(p)),
                                       list_of(to_strings(pm.get_max_temp_list(p))),
                                       list_of(to_strings(pm.get_min_temp_list(p)))};
    return list_of(fields);
}

}  // namespace

int main() {
    for (std::string line; std::getline(std::cin, line);) {
        std::vector<std::string> w = words(line);
        if (w.empty()) continue;
        if (w[0] == "families") {
            std::cout << families() << "\n";
        } else if (w[0] == "filter" && w.size() == 6) {
            std::vector<DEV_PART_ENUM> parts;
            DEV_PART_MANAGER().filter_part_list(&parts, w[1], w[2], w[3], w[4], w[5]);
            std::vector<std::string> names;
            for (DEV_PART_ENUM p : parts) names.push_back(dstr_get_debug_string(p));
            std::cout << list_of(names) << "\n";
        } else if (w[0] == "part" && w.size() == 2) {
            std::cout << part(w[1]) << "\n";
        } else {
            std::cout << "{unknown question}\n";
        }
    }
    return 0;
}
