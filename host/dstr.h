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
// One header per enumeration, host/tables/<name>.h, expands its definition into the C++ enum
// and the function declarations below and pins the numbers that data files and code rely
// on; this header includes them all. host/tables/dstr_tables.cpp expands the definitions
// into the DSTR_TABLEs. Code includes the headers of the enumerations it uses, so that
// regenerating the product line (families, devices, parts, packages, speed grades)
// recompiles only what uses those.
//
// Per enumeration TYPE with stem `name`:
//   const DSTR_TABLE& dstr_table_<name>();
//   bool dstr_exists_<name>_by_string(name);   TYPE dstr_get_<name>_by_string(name)
//     (the INVALID member when unknown);       bool dstr_is_valid_<name>(int value);
//   const char* dstr_get_debug_string(TYPE);   const char* dstr_get_user_string(TYPE)
//     ("" for a value without a string).
#ifndef VELCORA_HOST_DSTR_H
#define VELCORA_HOST_DSTR_H

#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_part_enum.h"
#include "host/tables/dev_pkg_enum.h"
#include "host/tables/dev_speed_enum.h"
#include "host/tables/dev_family_trait_enum.h"
#include "host/tables/dev_device_trait_enum.h"
#include "host/tables/dev_part_trait_enum.h"
#include "host/tables/dev_family_variant_enum.h"
#include "host/tables/dev_grade_revision_enum.h"
#include "host/tables/dev_power_model_status_enum.h"
#include "host/tables/dev_temperature_enum.h"
#include "host/tables/dev_voltage_enum.h"
#include "host/tables/dev_timing_model_enum.h"
#include "host/tables/dev_resource_enum.h"
#include "host/tables/dev_location_enum.h"
#include "host/tables/dev_element_enum.h"
#include "host/tables/cdb_re_type.h"
#include "host/tables/db_input_port_type.h"
#include "host/tables/db_output_port_type.h"
#include "host/tables/dev_io_standard_enum.h"
#include "host/tables/dev_io_rule_enum.h"
#include "host/tables/dev_current_strength_enum.h"
#include "host/tables/dev_power_supply_enum.h"
#include "host/tables/dev_routing_switch_enum.h"
#include "host/tables/dev_pass_tree_enum.h"

#endif
