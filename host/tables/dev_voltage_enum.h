// DEV_VOLTAGE_ENUM: the core supply voltages, with their millivolts. The members are defined in
// host/tables/dev_voltage_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_VOLTAGE_ENUM_H
#define VELCORA_HOST_TABLES_DEV_VOLTAGE_ENUM_H

#include "host/host_export.h"

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_voltage_enum.def"
#include "host/dstr_undef.h"

// The data column of the voltage rows: "no numeric value".
constexpr int DEV_NO_MILLIVOLTS = 2147483647;

// The nominal millivolts of a voltage; DEV_NO_MILLIVOLTS for a voltage without a numeric
// value; -1 for a value that names no voltage (host/tables/dstr_operating_points.cpp).
HOST_EXPORT int dstr_get_voltage_millivolts(int voltage);
// The first voltage of exactly `millivolts`; DEV_VOLTAGE_INVALID when none has it.
HOST_EXPORT DEV_VOLTAGE_ENUM dstr_get_voltage_by_millivolts(int millivolts);

static_assert(DEV_VOLTAGE_GENERIC == 28, "fixed by the data files and the code that reads them");
static_assert(DEV_VOLTAGE_5_0V == 24, "the part voltage when nothing else gives one");

#endif
