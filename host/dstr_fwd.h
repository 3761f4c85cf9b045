// Opaque declarations of the product-line enumerations (families, devices, parts, packages,
// speed grades), whose members change whenever the product line is regenerated. A header
// that only names these types includes this instead of their headers, so that a new product
// line recompiles only the code that uses their members (host/tables/<name>.h).
#ifndef VELCORA_HOST_DSTR_FWD_H
#define VELCORA_HOST_DSTR_FWD_H

#include "host/host_export.h"

enum DEV_FAMILY_ENUM : int;
enum DEV_DEVICE_ENUM : int;
enum DEV_PART_ENUM : int;
enum DEV_PKG_ENUM : int;
enum DEV_SPEED_ENUM : int;

// Their string tables (host/tables/dstr_tables.cpp).
class DSTR_TABLE;
HOST_EXPORT const DSTR_TABLE& dstr_table_dev_family_enum();
HOST_EXPORT const DSTR_TABLE& dstr_table_dev_device_enum();
HOST_EXPORT const DSTR_TABLE& dstr_table_dev_part_enum();
HOST_EXPORT const DSTR_TABLE& dstr_table_dev_pkg_enum();
HOST_EXPORT const DSTR_TABLE& dstr_table_dev_speed_enum();

#endif
