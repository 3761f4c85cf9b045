// DEV_PART_TRAIT_ENUM: the traits of a part. The members are defined in
// host/tables/dev_part_trait_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_PART_TRAIT_ENUM_H
#define VELCORA_HOST_TABLES_DEV_PART_TRAIT_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_part_trait_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_PART_TRAIT_NO_POF == 4, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_NOT_LISTED == 7, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_NO_PIN_OUT == 9, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_ADVANCED_INFO == 18, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_ENGINEERING_SAMPLE == 20, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_NO_USER_IO_COUNT == 22, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_PART_SPECIFIC_DATA_FILES == 30, "fixed by the data files and the code that reads them");
static_assert(DEV_PART_TRAIT_GENERIC == 34, "the trait sets hold 35 bits");

#endif
