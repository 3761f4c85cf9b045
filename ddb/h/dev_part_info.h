// DEV_PART_INFO: the data of one orderable part, its power supplies among them, a handle over
// DEV_PART_INFO_BODY. A part info may be built without a body, which its loader creates.
#ifndef VELCORA_DEV_PART_INFO_H
#define VELCORA_DEV_PART_INFO_H

#include "dev_export.h"
#include "dev_handle.h"
#include "host/astr.h"

class DEV_EXPORT DEV_PART_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PART_INFO_BOOL_DATA_ENUM, DEV_PART_INFO_INT_DATA_ENUM, DEV_PART_INFO_ENUM_DATA_ENUM,
                                 DEV_PART_INFO_STRING_DATA_ENUM, DEV_PART_INFO_2D_INT_DATA_ENUM> {};

class DEV_EXPORT DEV_PART_INFO : public DEV_HANDLE<DEV_PART_INFO_BODY> {
public:
    DEV_PART_INFO() = default;
    explicit DEV_PART_INFO(DEV_PART_INFO_BODY* body) : DEV_HANDLE(body) {}
};

#endif
