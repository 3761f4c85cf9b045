// DB_OUTPUT_PORT_TYPE: the output port types. The members are defined in
// host/tables/db_output_port_type.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DB_OUTPUT_PORT_TYPE_H
#define VELCORA_HOST_TABLES_DB_OUTPUT_PORT_TYPE_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/db_output_port_type.def"
#include "host/dstr_undef.h"

static_assert(DB_OUTPUT_PORT_INVALID == 0, "fixed by the data files and the code that reads them");

#endif
