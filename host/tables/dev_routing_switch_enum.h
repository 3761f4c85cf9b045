// DEV_ROUTING_SWITCH_ENUM: the routing switch kinds. The members are defined in
// host/tables/dev_routing_switch_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_ROUTING_SWITCH_ENUM_H
#define VELCORA_HOST_TABLES_DEV_ROUTING_SWITCH_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_routing_switch_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_ROUTING_SWITCH_INVALID == -1, "fixed by the data files and the code that reads them");
static_assert(DEV_ROUTING_SWITCH_BEGIN == 0, "fixed by the data files and the code that reads them");
static_assert(DEV_ROUTING_SWITCH_MAX == 340, "fixed by the data files and the code that reads them");

#endif
