// DEV_DEVICE_TRAIT_ENUM: the traits of a device. The members are defined in
// host/tables/dev_device_trait_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_DEVICE_TRAIT_ENUM_H
#define VELCORA_HOST_TABLES_DEV_DEVICE_TRAIT_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_device_trait_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_DEVICE_TRAIT_GENERIC == 12, "the trait sets hold 13 bits");

#endif
