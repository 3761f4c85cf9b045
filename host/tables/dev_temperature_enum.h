// DEV_TEMPERATURE_ENUM: the temperature grades. The members are defined in
// host/tables/dev_temperature_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_TEMPERATURE_ENUM_H
#define VELCORA_HOST_TABLES_DEV_TEMPERATURE_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_temperature_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_TEMPERATURE_COMMERCIAL == 1, "fixed by the data files and the code that reads them");
static_assert(DEV_TEMPERATURE_INDUSTRIAL == 2, "fixed by the data files and the code that reads them");
static_assert(DEV_TEMPERATURE_EXTENDED == 3, "fixed by the data files and the code that reads them");
static_assert(DEV_TEMPERATURE_AUTOMOTIVE == 4, "fixed by the data files and the code that reads them");
static_assert(DEV_TEMPERATURE_MILITARY == 5, "fixed by the data files and the code that reads them");

#endif
