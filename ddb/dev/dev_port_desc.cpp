// DEV_PORT_DESC_BODY: the keys with a fixed meaning.
#include "dev_port_desc.h"

const std::string& DEV_PORT_DESC_BODY::get_debug_name() const {
    return is_valid_string_enum(DEV_PORT_DESC_STRING_DEBUG_NAME) ? get_string_data(DEV_PORT_DESC_STRING_DEBUG_NAME)
                                                                 : dev_attribute_default<std::string>();
}

DB_INPUT_PORT_TYPE DEV_PORT_DESC_BODY::get_input_port_type() const {
    int type = DB_INPUT_PORT_INVALID;
    get_int_data(DEV_PORT_DESC_INT_INPUT_PORT_TYPE, &type);
    return static_cast<DB_INPUT_PORT_TYPE>(type);
}

DB_OUTPUT_PORT_TYPE DEV_PORT_DESC_BODY::get_output_port_type() const {
    int type = DB_OUTPUT_PORT_INVALID;
    get_int_data(DEV_PORT_DESC_INT_OUTPUT_PORT_TYPE, &type);
    return static_cast<DB_OUTPUT_PORT_TYPE>(type);
}
