// The data-file searches of DEV_PATH over a given catalogue store. DEV_PATH's static members
// search the process-wide store; the part manager searches the store it is a handle on.
#ifndef VELCORA_DEV_PATH_SEARCH_H
#define VELCORA_DEV_PATH_SEARCH_H

#include "host/dstr_fwd.h"
#include "host/fio.h"

class DEV_BASIC_INFO;
class DEV_FAMILY_INFO_MGR_BODY;

bool dev_path_find_file(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family, const char* file_type_str,
                        FIO_PATH* ret_path);
bool dev_path_find_file(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_DEVICE_ENUM device, const char* file_type_str,
                        FIO_PATH* ret_path, DEV_BASIC_INFO* basic_info = nullptr);
bool dev_path_find_file(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_PART_ENUM part, const char* file_type_str,
                        FIO_PATH* ret_path);

#endif
