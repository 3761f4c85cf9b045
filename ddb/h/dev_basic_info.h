// DEV_BASIC_INFO: the basic info of one device, a handle (DEV_HANDLE) over its owned body
// DEV_BASIC_INFO_BODY, which holds the typed attribute tables of the five kinds BOOL, INT,
// ENUM, STRING and 2D_INT. Reads forward to the body; writing is done on the body
// (get_body()).
#ifndef VELCORA_DEV_BASIC_INFO_H
#define VELCORA_DEV_BASIC_INFO_H

#include "dev_export.h"

#include "dev_basic_info_body.h"
#include "dev_handle.h"

class DEV_EXPORT DEV_BASIC_INFO : public DEV_HANDLE<DEV_BASIC_INFO_BODY> {
public:
    // Takes ownership of `body`; a null body is reported ("body != 0") but the handle is built.
    explicit DEV_BASIC_INFO(DEV_BASIC_INFO_BODY* body) : DEV_HANDLE(body) {}

    // ENUM keys 0, 1 and 2: the device, family and part the data belong to (the invalid
    // enumerator, after the missing-body report, without a body).
    DEV_DEVICE_ENUM get_device_enum() const;
    DEV_FAMILY_ENUM get_family_enum() const;
    DEV_PART_ENUM get_part_enum() const;
};

#endif
