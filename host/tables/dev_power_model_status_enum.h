// DEV_POWER_MODEL_STATUS_ENUM: the states of a part's power model. The members are defined in
// host/tables/dev_power_model_status_enum.def; this header expands them into the enum and its string-table
// functions (see host/dstr.h), and pins the numbers that data files and code rely on.
#ifndef VELCORA_HOST_TABLES_DEV_POWER_MODEL_STATUS_ENUM_H
#define VELCORA_HOST_TABLES_DEV_POWER_MODEL_STATUS_ENUM_H

#include "host/dstr_declare.h"

#include "host/dstr_expand_enum.inc"
#include "host/tables/dev_power_model_status_enum.def"
#include "host/dstr_undef.h"

static_assert(DEV_POWER_MODEL_STATUS_INVALID == 0, "fixed by the data files and the code that reads them");

#endif
