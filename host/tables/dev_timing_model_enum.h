// DEV_TIMING_MODEL_ENUM: the timing models (corners), with their operating points. The members are defined in
// host/tables/dev_timing_model_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_TIMING_MODEL_ENUM_H
#define VELCORA_HOST_TABLES_DEV_TIMING_MODEL_ENUM_H

#include "host/host_export.h"

#include "host/dstr_declare.h"
#include "host/tables/dev_voltage_enum.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_timing_model_enum.def"
#include "host/dstr_undef.h"

// The data column of the timing-model rows: "no temperature".
constexpr int DEV_NO_TEMPERATURE = 2147483647;

// The operating point of a timing model: its voltage (DEV_VOLTAGE_INVALID when it has
// none) and its temperature in degrees Celsius (DEV_NO_TEMPERATURE when it has none).
// False, with the outputs untouched, for a value that names no timing model
// (host/tables/dstr_operating_points.cpp).
HOST_EXPORT bool dstr_get_timing_model_operating_point(int model, DEV_VOLTAGE_ENUM* voltage, int* temperature);
// The first timing model of that operating point; DEV_TIMING_MODEL_INVALID when none.
HOST_EXPORT DEV_TIMING_MODEL_ENUM dstr_get_timing_model_by_operating_point(DEV_VOLTAGE_ENUM voltage, int temperature);

static_assert(DEV_TIMING_MODEL_GENERIC == 57, "fixed by the data files and the code that reads them");
static_assert(DEV_TIMING_MODEL_MAX == 58, "fixed by the data files and the code that reads them");

#endif
