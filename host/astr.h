// Attribute-key string tables: for every record and value kind of the device database
// (the INT keys of basic info, the BOOL keys of a pad, ...) the key enumeration
// DEV_<R>_<K>_DATA_ENUM with its bound DEV_<R>_<K>_DATA_MAX, the key names (debug string:
// the name data files write, kind prefix included; user string), look-up by name, and
// the symbolic value names of each key (a key holding an enumerated value reads and
// writes that enumeration's names; 2D keys may name values per row and column).
//
// Every record and kind is defined once, in host/tables/<r>_<k>_data.def; the list of
// record kinds is host/tables/astr_record_kinds.inc. Per record R and kind K:
//   enum DEV_<R>_<K>_DATA_ENUM : int { DEV_<R>_<K>_<NAME>, ..., DEV_<R>_<K>_DATA_MAX };
//   const ASTR_KEY_TABLE& astr_table_dev_<r>_<k>_data();
//   bool astr_exists_dev_<r>_<k>_data_enum_by_string(name);
//   DEV_<R>_<K>_DATA_ENUM astr_get_dev_<r>_<k>_data_enum_by_string(name)  (MAX when unknown)
//   ASTR_KEY_TRAITS<DEV_<R>_<K>_DATA_ENUM>                                (astr_key_table.h)
// and for every key enumeration the overloads below.
#ifndef VELCORA_HOST_ASTR_H
#define VELCORA_HOST_ASTR_H

#include "host/host_export.h"

#include <string>
#include <type_traits>

#include "host/astr_key_table.h"
#include "host/tables/dev_power_supply_enum.h"
#include "host/tables/astr_macros.h"

#define ASTR_EXPAND "host/tables/astr_expand_declare.inc"
#include "host/tables/astr_record_kinds.inc"
#undef ASTR_EXPAND

// Enabled for the key enumerations only.
template <typename KEY>
using astr_if_key = typename std::enable_if<ASTR_KEY_TRAITS<KEY>::is_key, int>::type;

// The key's name in data files ("INT_DEFAULT_IO_STANDARD"); "" out of range.
template <typename KEY, astr_if_key<KEY> = 0>
const char* astr_get_debug_string(KEY key) {
    return ASTR_KEY_TRAITS<KEY>::table().debug_string(key);
}
// The key's readable name ("default io standard"); "" out of range.
template <typename KEY, astr_if_key<KEY> = 0>
const char* astr_get_user_string(KEY key) {
    return ASTR_KEY_TRAITS<KEY>::table().user_string(key);
}

// Symbolic values of a whole key (INT and ENUM keys).
template <typename KEY, astr_if_key<KEY> = 0>
bool astr_exists_enum_data_by_string(KEY key, const std::string& name) {
    return ASTR_KEY_TRAITS<KEY>::table().exists_enum_data_by_string(key, name);
}
template <typename KEY, astr_if_key<KEY> = 0>
int astr_get_enum_data_by_string(KEY key, const std::string& name) {
    return ASTR_KEY_TRAITS<KEY>::table().get_enum_data_by_string(key, name);
}
// The value's symbolic name where the key has one, else the decimal number.
template <typename KEY, astr_if_key<KEY> = 0>
std::string astr_get_enum_data_debug_string(KEY key, int value) {
    std::string name = ASTR_KEY_TRAITS<KEY>::table().get_enum_data_name(key, value);
    return name.empty() ? std::to_string(value) : name;
}

// Symbolic values of one element of a 2D key (row, column) or of a vector key (row 0,
// column = position).
template <typename KEY, astr_if_key<KEY> = 0>
bool astr_exists_enum_data_by_string(KEY key, int row, int column, const std::string& name) {
    return ASTR_KEY_TRAITS<KEY>::table().exists_enum_data_by_string(key, row, column, name);
}
template <typename KEY, astr_if_key<KEY> = 0>
int astr_get_enum_data_by_string(KEY key, int row, int column, const std::string& name) {
    return ASTR_KEY_TRAITS<KEY>::table().get_enum_data_by_string(key, row, column, name);
}
template <typename KEY, astr_if_key<KEY> = 0>
std::string astr_get_enum_data_debug_string(KEY key, int row, int column, int value) {
    std::string name = ASTR_KEY_TRAITS<KEY>::table().get_enum_data_name(key, row, column, value);
    return name.empty() ? std::to_string(value) : name;
}

// Power supplies are named through the attribute tables too (power_supply blocks of
// PART_INFO files): look-up by name (DEV_POWER_SUPPLY_INVALID when unknown) and back.
HOST_EXPORT bool astr_exists_dev_power_supply_enum_by_string(const std::string& name);
HOST_EXPORT DEV_POWER_SUPPLY_ENUM astr_get_dev_power_supply_enum_by_string(const std::string& name);
HOST_EXPORT const char* astr_get_debug_string(DEV_POWER_SUPPLY_ENUM supply);
HOST_EXPORT const char* astr_get_user_string(DEV_POWER_SUPPLY_ENUM supply);

#endif
