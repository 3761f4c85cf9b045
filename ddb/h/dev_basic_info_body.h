// DEV_BASIC_INFO_BODY: the data of a device's basic info. Its global attributes live in the
// typed attribute tables of the five kinds (members m_bool_data, m_int_data, m_enum_data,
// m_string_data, m_2d_int_data and their m_<k>_enum_is_valid bits).
#ifndef VELCORA_DEV_BASIC_INFO_BODY_H
#define VELCORA_DEV_BASIC_INFO_BODY_H

#include "dev_export.h"

#include "dev_attribute_table.h"
#include "host/astr.h"
#include "host/dstr_fwd.h"

class DEV_EXPORT DEV_BASIC_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_BASIC_INFO_BOOL_DATA_ENUM, DEV_BASIC_INFO_INT_DATA_ENUM,
                                 DEV_BASIC_INFO_ENUM_DATA_ENUM, DEV_BASIC_INFO_STRING_DATA_ENUM,
                                 DEV_BASIC_INFO_2D_INT_DATA_ENUM> {
public:
    DEV_BASIC_INFO_BODY() = default;

    // ENUM key 0: reports "this->is_valid_enum_enum(key)" when unset, returns the slot.
    DEV_DEVICE_ENUM get_device_enum() const;
    // ENUM key 1, alike.
    DEV_FAMILY_ENUM get_family_enum() const;
    // ENUM key 2: DEV_PART_INVALID when unset, without a report.
    DEV_PART_ENUM get_part_enum() const;
};

#endif
