// DEV_BASIC_INFO: the enumerators of the basic info, read through the body.
#include "dev_basic_info.h"

#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_part_enum.h"

DEV_DEVICE_ENUM DEV_BASIC_INFO::get_device_enum() const {
    const DEV_BASIC_INFO_BODY* body = body_to_read();
    return body ? body->get_device_enum() : DEV_DEVICE_INVALID;
}

DEV_FAMILY_ENUM DEV_BASIC_INFO::get_family_enum() const {
    const DEV_BASIC_INFO_BODY* body = body_to_read();
    return body ? body->get_family_enum() : DEV_FAMILY_INVALID;
}

DEV_PART_ENUM DEV_BASIC_INFO::get_part_enum() const {
    const DEV_BASIC_INFO_BODY* body = body_to_read();
    return body ? body->get_part_enum() : DEV_PART_INVALID;
}
