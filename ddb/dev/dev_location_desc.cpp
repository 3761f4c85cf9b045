// DEV_LOCATION_DESC_BODY: the keys with a fixed meaning.
#include "dev_location_desc.h"

DEV_LOCATION_ENUM DEV_LOCATION_DESC_BODY::get_location_enum() const {
    int location = DEV_LOCATION_INVALID;
    get_int_data(DEV_LOCATION_DESC_INT_LOCATION, &location);
    return static_cast<DEV_LOCATION_ENUM>(location);
}

const std::string& DEV_LOCATION_DESC_BODY::get_name() const {
    return is_valid_string_enum(DEV_LOCATION_DESC_STRING_NAME) ? get_string_data(DEV_LOCATION_DESC_STRING_NAME)
                                                               : dev_attribute_default<std::string>();
}
