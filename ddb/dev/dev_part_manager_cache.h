// Internals shared by the catalogue store, DEV_PART_MANAGER and DEV_FAMILY_MANAGER: the
// per-part list caches and the splitting of catalogue list strings.
#ifndef VELCORA_DEV_PART_MANAGER_CACHE_H
#define VELCORA_DEV_PART_MANAGER_CACHE_H

#include <memory>
#include <string>
#include <vector>

#include "dev_utility.h"
#include "host/dstr.h"
#include "host/vtl_hash.h"

// The voltage, maximum-temperature and minimum-temperature lists of each part, computed on
// the first query and kept by the catalogue store until its records change. The lists are
// held through pointers so that references handed out stay valid while the tables grow.
struct DEV_PART_LIST_CACHE {
    VTL_HASH<DEV_PART_ENUM, std::shared_ptr<const std::vector<DEV_VOLTAGE_ENUM>>> m_voltage_lists;
    VTL_HASH<DEV_PART_ENUM, std::shared_ptr<const std::vector<int>>> m_max_temp_lists;
    VTL_HASH<DEV_PART_ENUM, std::shared_ptr<const std::vector<int>>> m_min_temp_lists;

    void clear() {
        m_voltage_lists.clear();
        m_max_temp_lists.clear();
        m_min_temp_lists.clear();
    }
};

// Calls f(name) for every member of a list string (names separated by blanks).
template <typename F>
void dev_for_each_list_member(const std::string& list, F f) {
    DEV_TOKENIZER tokenizer;
    tokenizer.init(list, " \t", false, false);
    std::string name;
    while (tokenizer.get_token(name)) f(name);
}

// Appends `value` unless the list holds it already (the lists are small sets).
template <typename T>
void dev_add_unique(std::vector<T>& list, T value) {
    for (const T& v : list)
        if (v == value) return;
    list.push_back(value);
}

#endif
