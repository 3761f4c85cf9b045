// DEV_IO_STANDARD_DESC_BODY: the keys with a fixed meaning and the drive currents.
#include "dev_io_standard_desc.h"

#include <algorithm>

#include "host/msg.h"

namespace {

bool check_current(int current_enum) {
    return DEV_ASSERT_TEXT(current_enum >= 0 && current_enum < DEV_CURRENT_STRENGTH_MAX,
                           "current_enum >= 0 && current_enum < DEV_CURRENT_STRENGTH_MAX");
}

}  // namespace

DEV_IO_STANDARD_DESC_BODY::DEV_IO_STANDARD_DESC_BODY() : m_current_enum_is_valid(DEV_CURRENT_STRENGTH_MAX) {}

namespace {
template <typename ENUM>
ENUM int_key_or_zero(const DEV_IO_STANDARD_DESC_BODY& body, DEV_IO_STANDARD_DESC_INT_DATA_ENUM key) {
    int value = 0;
    body.get_int_data(key, &value);
    return static_cast<ENUM>(value);
}
}  // namespace

DEV_IO_STANDARD_ENUM DEV_IO_STANDARD_DESC_BODY::get_io_standard_enum() const {
    return int_key_or_zero<DEV_IO_STANDARD_ENUM>(*this, DEV_IO_STANDARD_DESC_INT_IO_STANDARD);
}
DEV_VOLTAGE_ENUM DEV_IO_STANDARD_DESC_BODY::get_voltage_enum() const {
    return int_key_or_zero<DEV_VOLTAGE_ENUM>(*this, DEV_IO_STANDARD_DESC_INT_VOLTAGE);
}
DEV_VOLTAGE_ENUM DEV_IO_STANDARD_DESC_BODY::get_vio_voltage_enum() const {
    return int_key_or_zero<DEV_VOLTAGE_ENUM>(*this, DEV_IO_STANDARD_DESC_INT_VIO_VOLTAGE);
}
DEV_VOLTAGE_ENUM DEV_IO_STANDARD_DESC_BODY::get_vref_voltage_enum() const {
    return int_key_or_zero<DEV_VOLTAGE_ENUM>(*this, DEV_IO_STANDARD_DESC_INT_VREF_VOLTAGE);
}

const std::string& DEV_IO_STANDARD_DESC_BODY::get_name() const {
    return is_valid_string_enum(DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME)
               ? get_string_data(DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME)
               : dev_attribute_default<std::string>();
}

bool DEV_IO_STANDARD_DESC_BODY::is_default() const {
    bool value = false;
    return get_bool_data(DEV_IO_STANDARD_DESC_BOOL_IS_DEFAULT, &value) && value;
}

void DEV_IO_STANDARD_DESC_BODY::add_current_enum(DEV_CURRENT_STRENGTH_ENUM current_enum) {
    if (!check_current(current_enum)) return;
    m_current_set.push_back(current_enum);
    m_current_enum_is_valid.set_value(current_enum, true);
}

bool DEV_IO_STANDARD_DESC_BODY::is_valid_current_enum(DEV_CURRENT_STRENGTH_ENUM current_enum) const {
    return current_enum >= 0 && current_enum < DEV_CURRENT_STRENGTH_MAX &&
           static_cast<size_t>(current_enum) < m_current_enum_is_valid.size() &&
           m_current_enum_is_valid.get_value(current_enum);
}

void DEV_IO_STANDARD_DESC_BODY::set_real_vcc_current(DEV_CURRENT_STRENGTH_ENUM current_enum, int value) {
    if (check_current(current_enum)) m_real_vcc_current[current_enum] = value;
}

void DEV_IO_STANDARD_DESC_BODY::set_real_gnd_current(DEV_CURRENT_STRENGTH_ENUM current_enum, int value) {
    if (check_current(current_enum)) m_real_gnd_current[current_enum] = value;
}

int DEV_IO_STANDARD_DESC_BODY::get_real_vcc_current(DEV_CURRENT_STRENGTH_ENUM current_enum) const {
    if (!check_current(current_enum)) return 0;
    DEV_ASSERT_TEXT(this->is_valid_current_enum(current_enum), "this->is_valid_current_enum(current_enum)");
    return m_real_vcc_current[current_enum];
}

int DEV_IO_STANDARD_DESC_BODY::get_real_gnd_current(DEV_CURRENT_STRENGTH_ENUM current_enum) const {
    if (!check_current(current_enum)) return 0;
    DEV_ASSERT_TEXT(this->is_valid_current_enum(current_enum), "this->is_valid_current_enum(current_enum)");
    return m_real_gnd_current[current_enum];
}

bool DEV_IO_STANDARD_DESC_BODY::operator==(const DEV_IO_STANDARD_DESC_BODY& other) const {
    return attributes_equal(other) && m_current_set == other.m_current_set &&
           std::equal(std::begin(m_real_gnd_current), std::end(m_real_gnd_current), other.m_real_gnd_current) &&
           std::equal(std::begin(m_real_vcc_current), std::end(m_real_vcc_current), other.m_real_vcc_current) &&
           m_current_enum_is_valid == other.m_current_enum_is_valid;
}

bool DEV_IO_STANDARD_DESC_BODY::is_sized() const {
    if (!attributes_sized() || m_current_enum_is_valid.size() != static_cast<size_t>(DEV_CURRENT_STRENGTH_MAX))
        return false;
    for (DEV_CURRENT_STRENGTH_ENUM c : m_current_set)
        if (c < 0 || c >= DEV_CURRENT_STRENGTH_MAX) return false;
    return true;
}
