// DEV_FAMILY_ENUM: the device families (members written by the catalogue generator). The members are defined in
// host/tables/dev_family_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_FAMILY_ENUM_H
#define VELCORA_HOST_TABLES_DEV_FAMILY_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_family_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_FAMILY_INVALID == 0, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_GENERIC == 48, "stands for all families");
static_assert(DEV_FAMILY_MAX == 49, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_CORVANE6 == 41, "the family whose voltage lists leave out the device voltage");

#endif
