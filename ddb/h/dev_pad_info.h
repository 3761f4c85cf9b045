// DEV_PAD_INFO: one device's pads, I/O standard descriptors and I/O rules, a handle over
// DEV_PAD_INFO_BODY.
#ifndef VELCORA_DEV_PAD_INFO_H
#define VELCORA_DEV_PAD_INFO_H

#include "dev_export.h"
#include "dev_handle.h"
#include "host/astr.h"

class DEV_EXPORT DEV_PAD_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PAD_INFO_BOOL_DATA_ENUM, DEV_PAD_INFO_INT_DATA_ENUM, DEV_PAD_INFO_STRING_DATA_ENUM,
                                 DEV_PAD_INFO_2D_INT_DATA_ENUM, DEV_PAD_INFO_VEC_STRING_DATA_ENUM> {};

class DEV_EXPORT DEV_PAD_INFO : public DEV_HANDLE<DEV_PAD_INFO_BODY> {
public:
    explicit DEV_PAD_INFO(DEV_PAD_INFO_BODY* body) : DEV_HANDLE(body) {}
};

#endif
