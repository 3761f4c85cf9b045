// DEV_FAMILY_TRAIT_ENUM: the traits of a family. The members are defined in
// host/tables/dev_family_trait_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_FAMILY_TRAIT_ENUM_H
#define VELCORA_HOST_TABLES_DEV_FAMILY_TRAIT_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_family_trait_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_FAMILY_TRAIT_NOT_LISTED == 4, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT == 5, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_NOT_INSTALLED == 7, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT == 8, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_REQUIRES_HDR_DATA == 9, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_USES_BASE_FAMILY_DATA == 41, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_TEMPERATURE_FROM_TIMING_CORNERS == 151, "fixed by the data files and the code that reads them");
static_assert(DEV_FAMILY_TRAIT_GENERIC == 162, "the trait sets hold 163 bits");

#endif
