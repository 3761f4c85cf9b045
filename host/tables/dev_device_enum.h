// DEV_DEVICE_ENUM: the devices (members written by the catalogue generator). The members are defined in
// host/tables/dev_device_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_DEVICE_ENUM_H
#define VELCORA_HOST_TABLES_DEV_DEVICE_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_device_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_DEVICE_INVALID == 0, "fixed by the data files and the code that reads them");
static_assert(DEV_DEVICE_GENERIC == 323, "the generic device, whose basic info is the family's");
static_assert(DEV_DEVICE_MAX == 324, "fixed by the data files and the code that reads them");

#endif
