// Expands every enumeration definition into its DSTR_TABLE and its dstr_* functions.
#include "host/dstr.h"

// Row macros for the tables: one DSTR_ENTRY per member that has strings, followed by a
// terminating entry so that an enumeration with no named member still has an array.
#define DSTR_ENUM_BEGIN(TYPE, name) \
    namespace {                     \
    const DSTR_ENTRY k_##name##_entries[] = {
#define DSTR_INVALID(ID, value)
#define DSTR_MEMBER(ID, value, debug, user, ...) {ID, #ID, debug, user},
#define DSTR_GENERIC(ID, value, debug, user) {ID, #ID, debug, user},
#define DSTR_BOUND(ID, value)
#define DSTR_ENUM_END(TYPE, name, INVALID, BOUND)                                                  \
    {0, nullptr, nullptr, nullptr}};                                                               \
    }                                                                                              \
    const DSTR_TABLE& dstr_table_##name() {                                                        \
        static const DSTR_TABLE table(#TYPE, k_##name##_entries,                                   \
                                      sizeof(k_##name##_entries) / sizeof(DSTR_ENTRY) - 1,         \
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
