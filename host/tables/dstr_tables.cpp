// Expands every enumeration definition into its DSTR_TABLE and its dstr_* functions.
#include "host/dstr.h"

// Row macros for the tables: one DSTR_ENTRY per member that has strings, followed by a
// terminating entry so that an enumeration with no named member still has an array.
#define DSTR_ENUM_BEGIN(TYPE, name) \
    namespace {                     \
    constexpr DSTR_ENTRY DSTR_ENTRIES_##name[] = {
#define DSTR_INVALID(ID, value)
#define DSTR_MEMBER(ID, value, debug, user, ...) {ID, #ID, debug, user},
#define DSTR_GENERIC(ID, value, debug, user) {ID, #ID, debug, user},
#define DSTR_BOUND(ID, value)
#define DSTR_ENUM_END(TYPE, name, INVALID, BOUND)                                                  \
    {0, nullptr, nullptr, nullptr}};                                                               \
    }                                                                                              \
    const DSTR_TABLE& dstr_table_##name() {                                                        \
        static const DSTR_TABLE table(#TYPE, DSTR_ENTRIES_##name,                                   \
                                      sizeof(DSTR_ENTRIES_##name) / sizeof(DSTR_ENTRY) - 1,         \
                                      INVALID, BOUND);                                             \
        return table;                                                                              \
    }                                                                                              \
    bool dstr_exists_##name##_by_string(const std::string& text) {                                 \
        return dstr_table_##name().exists_by_string(text);                                         \
    }                                                                                              \
    bool dstr_exists_##name##_by_string(const char* text) {                                        \
        return text && dstr_table_##name().exists_by_string(text);                                 \
    }                                                                                              \
    TYPE dstr_get_##name##_by_string(const std::string& text) {                                    \
        return static_cast<TYPE>(dstr_table_##name().get_by_string(text));                         \
    }                                                                                              \
    TYPE dstr_get_##name##_by_string(const char* text) {                                           \
        return text ? dstr_get_##name##_by_string(std::string(text)) : INVALID;                    \
    }                                                                                              \
    bool dstr_is_valid_##name(int value) { return dstr_table_##name().is_valid(value); }          \
    const char* dstr_get_debug_string(TYPE value) { return dstr_table_##name().debug_string(value); } \
    const char* dstr_get_user_string(TYPE value) { return dstr_table_##name().user_string(value); }

#include "host/tables/dstr_enums.inc"
#include "host/dstr_undef.h"

// Enumerations whose every value strictly between the invalid member and the bound is named,
// once and in order: readers and loops over them take any such value as a member.
namespace {

template <size_t N>
constexpr bool dense(const DSTR_ENTRY (&entries)[N], int invalid, int bound) {
    int next = invalid + 1;
    for (size_t i = 0; i + 1 < N; ++i) {  // the last entry ends the array
        if (entries[i].value >= bound) continue;  // the generic member
        if (entries[i].value != next) return false;
        ++next;
    }
    return next == bound;
}

#define DSTR_DENSE(name, INVALID, BOUND) \
    static_assert(dense(DSTR_ENTRIES_##name, INVALID, BOUND), #name " names every value of its range");
DSTR_DENSE(dev_device_trait_enum, DEV_DEVICE_TRAIT_INVALID, DEV_DEVICE_TRAIT_GENERIC)
DSTR_DENSE(dev_part_trait_enum, DEV_PART_TRAIT_INVALID, DEV_PART_TRAIT_GENERIC)
DSTR_DENSE(dev_voltage_enum, DEV_VOLTAGE_INVALID, DEV_VOLTAGE_GENERIC)
DSTR_DENSE(dev_timing_model_enum, DEV_TIMING_MODEL_INVALID, DEV_TIMING_MODEL_GENERIC)
DSTR_DENSE(dev_temperature_enum, DEV_TEMPERATURE_INVALID, DEV_TEMPERATURE_GENERIC)
DSTR_DENSE(dev_resource_enum, DEV_RESOURCE_INVALID, DEV_RESOURCE_END)
DSTR_DENSE(dev_location_enum, DEV_LOCATION_INVALID, DEV_LOCATION_GENERIC)
DSTR_DENSE(dev_element_enum, DEV_ELEMENT_INVALID, DEV_ELEMENT_GENERIC)
DSTR_DENSE(cdb_re_type, CDB_RE_INVALID, CDB_RE_ILLEGAL_TYPE)
DSTR_DENSE(dev_io_standard_enum, DEV_IO_STANDARD_INVALID, DEV_IO_STANDARD_MAX)
DSTR_DENSE(dev_io_rule_enum, DEV_IO_RULE_INVALID, DEV_IO_RULE_MAX)
DSTR_DENSE(dev_current_strength_enum, DEV_CURRENT_STRENGTH_INVALID, DEV_CURRENT_STRENGTH_MAX)
DSTR_DENSE(dev_power_supply_enum, DEV_POWER_SUPPLY_INVALID, DEV_POWER_SUPPLY_MAX)
DSTR_DENSE(dev_routing_switch_enum, DEV_ROUTING_SWITCH_INVALID, DEV_ROUTING_SWITCH_MAX)
DSTR_DENSE(dev_pass_tree_enum, DEV_PASS_TREE_INVALID, DEV_PASS_TREE_MAX)
#undef DSTR_DENSE

}  // namespace
