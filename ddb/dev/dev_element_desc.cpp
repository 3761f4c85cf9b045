// DEV_ELEMENT_DESC_BODY: the keys with a fixed meaning, locations, ports and the look-up of ports
// by type.
#include "dev_element_desc.h"

void DEV_ELEMENT_DESC_BODY::add_location(DEV_LOCATION_DESC* location) {
    if (!location) return;
    m_locations.push_back(location);
    m_location_enums.push_back(location->get_location_enum());
}

void DEV_ELEMENT_DESC_BODY::add_port(DEV_PORT_DESC* port) {
    if (port) m_ports.push_back(port);
}

DEV_PORT_DESC* DEV_ELEMENT_DESC_BODY::get_port_by_input_type(DB_INPUT_PORT_TYPE type) const {
    for (DEV_PORT_DESC* port : m_ports)
        if (port->get_input_port_type() == type) return port;
    return nullptr;
}

DEV_PORT_DESC* DEV_ELEMENT_DESC_BODY::get_port_by_output_type(DB_OUTPUT_PORT_TYPE type) const {
    for (DEV_PORT_DESC* port : m_ports)
        if (port->get_output_port_type() == type) return port;
    return nullptr;
}

DEV_PORT_DESC* DEV_ELEMENT_DESC_BODY::get_port_by_input_type_str(const std::string& type) const {
    return dstr_exists_db_input_port_type_by_string(type)
               ? get_port_by_input_type(dstr_get_db_input_port_type_by_string(type))
               : nullptr;
}

DEV_PORT_DESC* DEV_ELEMENT_DESC_BODY::get_port_by_output_type_str(const std::string& type) const {
    return dstr_exists_db_output_port_type_by_string(type)
               ? get_port_by_output_type(dstr_get_db_output_port_type_by_string(type))
               : nullptr;
}

namespace {

// The same records, by id, in the same order.
template <typename T>
bool same_ids(const std::vector<T*>& a, const std::vector<T*>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if ((a[i] ? a[i]->get_id() : -1) != (b[i] ? b[i]->get_id() : -1)) return false;
    return true;
}

}  // namespace

bool DEV_ELEMENT_DESC_BODY::operator==(const DEV_ELEMENT_DESC_BODY& other) const {
    return attributes_equal(other) && m_location_enums == other.m_location_enums &&
           same_ids(m_locations, other.m_locations) && same_ids(m_ports, other.m_ports);
}

DEV_ELEMENT_ENUM DEV_ELEMENT_DESC_BODY::get_element_enum() const {
    int element = DEV_ELEMENT_INVALID;
    get_int_data(DEV_ELEMENT_DESC_INT_ELEMENT, &element);
    return static_cast<DEV_ELEMENT_ENUM>(element);
}

CDB_RE_TYPE DEV_ELEMENT_DESC_BODY::get_cdb_re_type() const {
    int re = CDB_RE_INVALID;
    get_int_data(DEV_ELEMENT_DESC_INT_CDB_RE_TYPE, &re);
    return static_cast<CDB_RE_TYPE>(re);
}

const std::string& DEV_ELEMENT_DESC_BODY::get_name() const {
    return is_valid_string_enum(DEV_ELEMENT_DESC_STRING_NAME) ? get_string_data(DEV_ELEMENT_DESC_STRING_NAME)
                                                              : dev_attribute_default<std::string>();
}
