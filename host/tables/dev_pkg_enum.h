// DEV_PKG_ENUM: the packages (members written by the catalogue generator). The members are defined in
// host/tables/dev_pkg_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_PKG_ENUM_H
#define VELCORA_HOST_TABLES_DEV_PKG_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_pkg_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_PKG_INVALID == 0, "fixed by the data files and the code that reads them");
static_assert(DEV_PKG_GENERIC == 31, "the package key of basic info left out of dumps when generic");

#endif
