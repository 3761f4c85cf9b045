// Enumeration string tables: every named enumeration of the device database with its
// members, bounds, debug strings (the names written in data files) and user strings.
//
// Each enumeration is defined once, in host/tables/<name>.def, by these row macros:
//   DSTR_ENUM_BEGIN(TYPE, name)                 opens enumeration TYPE; `name` is the
//                                               lower-case stem of its functions
//   DSTR_INVALID(ID, value)                     the "not set" member (no string)
//   DSTR_MEMBER(ID, value, "debug", "user"...)  a named member; further columns carry
//                                               data of that enumeration (for example
//                                               the millivolts of a voltage)
//   DSTR_GENERIC(ID, value, "debug", "user")    the named bound ("all" / generic)
//   DSTR_BOUND(ID, value)                       a bound without a string (_MAX, _END, ...)
//   DSTR_ENUM_END(TYPE, name, INVALID, BOUND)   closes it; a member is valid when it lies
//                                               strictly between INVALID and BOUND
// This header expands them into the C++ enums and the function declarations below;
// host/tables/dstr_tables.cpp expands them into the DSTR_TABLEs.
//
// Per enumeration TYPE with stem `name`:
//   const DSTR_TABLE& dstr_table_<name>();
//   bool dstr_exists_<name>_by_string(name);   TYPE dstr_get_<name>_by_string(name)
//     (the INVALID member when unknown);       bool dstr_is_valid_<name>(int value);
//   const char* dstr_get_debug_string(TYPE);   const char* dstr_get_user_string(TYPE)
//     ("" for a value without a string).
#ifndef VELCORA_HOST_DSTR_H
#define VELCORA_HOST_DSTR_H

#include <string>

#include "host/dstr_table.h"

// Data columns of the voltage and timing-model rows: "no numeric value".
constexpr int DEV_NO_MILLIVOLTS = 2147483647;
constexpr int DEV_NO_TEMPERATURE = 2147483647;

#define DSTR_DECLARE_FUNCTIONS(TYPE, name)                           \
    const DSTR_TABLE& dstr_table_##name();                           \
    bool dstr_exists_##name##_by_string(const char* text);           \
    bool dstr_exists_##name##_by_string(const std::string& text);    \
    TYPE dstr_get_##name##_by_string(const char* text);              \
    TYPE dstr_get_##name##_by_string(const std::string& text);       \
    bool dstr_is_valid_##name(int value);                            \
    const char* dstr_get_debug_string(TYPE value);                   \
    const char* dstr_get_user_string(TYPE value);

#define DSTR_ENUM_BEGIN(TYPE, name) enum TYPE : int {
#define DSTR_INVALID(ID, value) ID = value,
#define DSTR_MEMBER(ID, value, debug, user, ...) ID = value,
#define DSTR_GENERIC(ID, value, debug, user) ID = value,
#define DSTR_BOUND(ID, value) ID = value,
#define DSTR_ENUM_END(TYPE, name, INVALID, BOUND) }; DSTR_DECLARE_FUNCTIONS(TYPE, name)
#include "host/tables/dstr_enums.inc"
#include "host/dstr_undef.h"

// ---------------------------------------------------------------------------------------
// Data carried by the voltage and timing-model rows (host/tables/dstr_operating_points.cpp).

// The nominal millivolts of a voltage; DEV_NO_MILLIVOLTS for a voltage without a numeric
// value; -1 for a value that names no voltage.
int dstr_get_voltage_millivolts(int voltage);
// The first voltage of exactly `millivolts`; DEV_VOLTAGE_INVALID when none has it.
DEV_VOLTAGE_ENUM dstr_get_voltage_by_millivolts(int millivolts);
// The operating point of a timing model: its voltage (DEV_VOLTAGE_INVALID when it has
// none) and its temperature in degrees Celsius (DEV_NO_TEMPERATURE when it has none).
// False, with the outputs untouched, for a value that names no timing model.
bool dstr_get_timing_model_operating_point(int model, DEV_VOLTAGE_ENUM* voltage, int* temperature);
// The first timing model of that operating point; DEV_TIMING_MODEL_INVALID when none.
DEV_TIMING_MODEL_ENUM dstr_get_timing_model_by_operating_point(DEV_VOLTAGE_ENUM voltage,
                                                               int temperature);

#endif
