// Umbrella header of the Velcora device database library: includes every public header.
#ifndef VELCORA_DEV_DDB_H
#define VELCORA_DEV_DDB_H

#include "ddb_dev__pdb.h"
#include "dev_archive_export.h"
#include "dev_attribute_table.h"
#include "dev_basic_info.h"
#include "dev_basic_info_body.h"
#include "dev_desc_field.h"
#include "dev_device_desc.h"
#include "dev_element_code.h"
#include "dev_enum_flag.h"
#include "dev_export.h"
#include "dev_family_desc.h"
#include "dev_family_info.h"
#include "dev_family_info_mgr_body.h"
#include "dev_family_manager.h"
#include "dev_handle.h"
#include "dev_part_desc.h"
#include "dev_part_manager.h"
#include "dev_path.h"
#include "dev_pdb_file.h"
#include "dev_smart_value.h"
#include "dev_tcl.h"
#include "dev_tcl_args_auto.h"
#include "dev_utility.h"

#endif
