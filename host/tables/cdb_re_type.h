// CDB_RE_TYPE: the netlist resource types. The members are defined in
// host/tables/cdb_re_type.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_CDB_RE_TYPE_H
#define VELCORA_HOST_TABLES_CDB_RE_TYPE_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/cdb_re_type.def"
#include "host/dstr_undef.h"

static_assert(CDB_RE_INVALID == 0, "fixed by the data files and the code that reads them");
static_assert(CDB_RE_ILLEGAL_TYPE == 891, "fixed by the data files and the code that reads them");

#endif
