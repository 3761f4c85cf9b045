// The declarations shared by every enumeration header (host/tables/<name>.h): the runtime
// table and the functions each enumeration gets (see host/dstr.h).
#ifndef VELCORA_HOST_DSTR_DECLARE_H
#define VELCORA_HOST_DSTR_DECLARE_H

#include <string>

#include "host/dstr_table.h"
#include "host/host_export.h"

#define DSTR_DECLARE_FUNCTIONS(TYPE, name)                                     \
    HOST_EXPORT const DSTR_TABLE& dstr_table_##name();                         \
    HOST_EXPORT bool dstr_exists_##name##_by_string(const char* text);         \
    HOST_EXPORT bool dstr_exists_##name##_by_string(const std::string& text);  \
    HOST_EXPORT TYPE dstr_get_##name##_by_string(const char* text);            \
    HOST_EXPORT TYPE dstr_get_##name##_by_string(const std::string& text);     \
    HOST_EXPORT bool dstr_is_valid_##name(int value);                          \
    HOST_EXPORT const char* dstr_get_debug_string(TYPE value);                 \
    HOST_EXPORT const char* dstr_get_user_string(TYPE value);

#endif
