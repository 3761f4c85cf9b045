// Umbrella header of the Velcora device database library: includes every public header.
#ifndef VELCORA_DEV_DDB_H
#define VELCORA_DEV_DDB_H

#include "dev_archive_export.h"
#include "dev_basic_info.h"
#include "dev_element_code.h"
#include "dev_enum_flag.h"
#include "dev_family_manager.h"
#include "dev_part_manager.h"
#include "dev_path.h"
#include "dev_smart_value.h"
#include "dev_utility.h"

#endif
