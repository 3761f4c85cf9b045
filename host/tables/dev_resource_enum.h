// DEV_RESOURCE_ENUM: the resources counted per part. The members are defined in
// host/tables/dev_resource_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_RESOURCE_ENUM_H
#define VELCORA_HOST_TABLES_DEV_RESOURCE_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_resource_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_RESOURCE_INVALID == -1, "fixed by the data files and the code that reads them");
static_assert(DEV_RESOURCE_END == 26, "resources with a count");
static_assert(DEV_RESOURCE_MAX == 27, "entries of a part's resource vector");

#endif
