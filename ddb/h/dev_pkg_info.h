// DEV_PKG_INFO: one device package's pins and the pads they are bonded to, a handle over
// DEV_PKG_INFO_BODY.
#ifndef VELCORA_DEV_PKG_INFO_H
#define VELCORA_DEV_PKG_INFO_H

#include "dev_export.h"
#include "dev_handle.h"
#include "host/astr.h"

class DEV_EXPORT DEV_PKG_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PKG_INFO_BOOL_DATA_ENUM, DEV_PKG_INFO_INT_DATA_ENUM, DEV_PKG_INFO_STRING_DATA_ENUM,
                                 DEV_PKG_INFO_2D_INT_DATA_ENUM, DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM> {};

class DEV_EXPORT DEV_PKG_INFO : public DEV_HANDLE<DEV_PKG_INFO_BODY> {
public:
    explicit DEV_PKG_INFO(DEV_PKG_INFO_BODY* body) : DEV_HANDLE(body) {}
};

#endif
