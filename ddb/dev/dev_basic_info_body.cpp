// DEV_BASIC_INFO_BODY: the enumerators the basic info belongs to.
#include "dev_basic_info_body.h"

#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_part_enum.h"

DEV_DEVICE_ENUM DEV_BASIC_INFO_BODY::get_device_enum() const {
    return static_cast<DEV_DEVICE_ENUM>(get_enum_data(DEV_BASIC_INFO_ENUM_DEVICE));
}

DEV_FAMILY_ENUM DEV_BASIC_INFO_BODY::get_family_enum() const {
    return static_cast<DEV_FAMILY_ENUM>(get_enum_data(DEV_BASIC_INFO_ENUM_FAMILY));
}

DEV_PART_ENUM DEV_BASIC_INFO_BODY::get_part_enum() const {
    int part = DEV_PART_INVALID;
    get_enum_data(DEV_BASIC_INFO_ENUM_PART, &part);
    return static_cast<DEV_PART_ENUM>(part);
}
