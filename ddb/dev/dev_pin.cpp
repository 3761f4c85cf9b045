// DEV_PIN: a pin's pad ids and name.
#include "dev_pin.h"

#include <algorithm>

void DEV_PIN::remove_pad_id_from_pin(uint32_t pad_id) {
    m_pad_id_list.erase(std::remove(m_pad_id_list.begin(), m_pad_id_list.end(), pad_id), m_pad_id_list.end());
}

const std::string& DEV_PIN::get_name() const {
    return is_valid_string_enum(DEV_PIN_STRING_PIN_NAME) ? stored(DEV_PIN_STRING_PIN_NAME)
                                                         : dev_attribute_default<std::string>();
}
