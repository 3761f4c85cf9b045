#include "dev_basic_info.h"

#include "dev_basic_info_body.h"
#include "host/msg.h"


DEV_BASIC_INFO::DEV_BASIC_INFO(DEV_BASIC_INFO_BODY* body) : m_body(body) {
    DEV_ASSERT_TEXT(body != 0, "body != 0");
}

DEV_BASIC_INFO::~DEV_BASIC_INFO() {
    delete m_body;
    m_body = nullptr;
}

void DEV_BASIC_INFO::set_body(DEV_BASIC_INFO_BODY* body) {
    if (body == m_body) return;
    delete m_body;
    m_body = body;
}

// Every read goes to the body; without one the read is reported and gives the default.
#define DEV_BASIC_INFO_READ(DEFAULT, CALL)   \
    if (!m_body) {                                   \
        DEV_INTERNAL_ERROR("m_body != 0");           \
        return DEFAULT;                              \
    }                                                \
    return m_body->CALL;

bool DEV_BASIC_INFO::is_valid_bool_enum(DEV_BASIC_INFO_BOOL_DATA_ENUM key) const {
    return m_body && m_body->is_valid_bool_enum(key);
}
bool DEV_BASIC_INFO::get_bool_data(DEV_BASIC_INFO_BOOL_DATA_ENUM key) const {
    DEV_BASIC_INFO_READ(false, get_bool_data(key))
}
bool DEV_BASIC_INFO::is_valid_int_enum(DEV_BASIC_INFO_INT_DATA_ENUM key) const {
    return m_body && m_body->is_valid_int_enum(key);
}
int DEV_BASIC_INFO::get_int_data(DEV_BASIC_INFO_INT_DATA_ENUM key) const {
    DEV_BASIC_INFO_READ(0, get_int_data(key))
}
bool DEV_BASIC_INFO::get_int_data(DEV_BASIC_INFO_INT_DATA_ENUM key, int* value) const {
    return m_body && m_body->get_int_data(key, value);
}
bool DEV_BASIC_INFO::is_valid_enum_enum(DEV_BASIC_INFO_ENUM_DATA_ENUM key) const {
    return m_body && m_body->is_valid_enum_enum(key);
}
int DEV_BASIC_INFO::get_enum_data(DEV_BASIC_INFO_ENUM_DATA_ENUM key) const {
    DEV_BASIC_INFO_READ(0, get_enum_data(key))
}
bool DEV_BASIC_INFO::is_valid_string_enum(DEV_BASIC_INFO_STRING_DATA_ENUM key) const {
    return m_body && m_body->is_valid_string_enum(key);
}
const std::string& DEV_BASIC_INFO::get_string_data(DEV_BASIC_INFO_STRING_DATA_ENUM key) const {
    DEV_BASIC_INFO_READ(dev_attribute_default<std::string>(), get_string_data(key))
}
bool DEV_BASIC_INFO::get_string_data(DEV_BASIC_INFO_STRING_DATA_ENUM key, std::string* value) const {
    return m_body && m_body->get_string_data(key, value);
}
bool DEV_BASIC_INFO::is_valid_2d_int_enum(DEV_BASIC_INFO_2D_INT_DATA_ENUM key) const {
    return m_body && m_body->is_valid_2d_int_enum(key);
}
const DEV_2D_INT_ARRAY& DEV_BASIC_INFO::get_2d_int_data(DEV_BASIC_INFO_2D_INT_DATA_ENUM key) const {
    DEV_BASIC_INFO_READ(dev_attribute_default<DEV_2D_INT_ARRAY>(), get_2d_int_data(key))
}

DEV_DEVICE_ENUM DEV_BASIC_INFO::get_device_enum() const {
    DEV_BASIC_INFO_READ(DEV_DEVICE_INVALID, get_device_enum())
}
DEV_FAMILY_ENUM DEV_BASIC_INFO::get_family_enum() const {
    DEV_BASIC_INFO_READ(DEV_FAMILY_INVALID, get_family_enum())
}
DEV_PART_ENUM DEV_BASIC_INFO::get_part_enum() const {
    DEV_BASIC_INFO_READ(DEV_PART_INVALID, get_part_enum())
}
#undef DEV_BASIC_INFO_READ
