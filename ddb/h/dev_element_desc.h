// DEV_ELEMENT_DESC: one element type of a device's basic info, a handle over
// DEV_ELEMENT_DESC_BODY: BOOL, INT, STRING and 2D_INT attributes, its id (its position among
// the basic info's elements), the locations it may be placed in and its ports (both lists
// point at records the basic info owns, in the order the HDR text names them). INT key 0 is
// its DEV_ELEMENT_ENUM, INT key 14 its CDB_RE_TYPE, STRING key 0 its name, STRING keys 3 and
// 4 alternative names.
#ifndef VELCORA_DEV_ELEMENT_DESC_H
#define VELCORA_DEV_ELEMENT_DESC_H

#include <cstdint>
#include <string>
#include <vector>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_location_desc.h"
#include "dev_persistent.h"
#include "dev_port_desc.h"
#include "host/astr.h"
#include "host/tables/cdb_re_type.h"
#include "host/tables/dev_element_enum.h"

#define DEV_ELEMENT_DESC_BODY_PDB_FIELDS(F)                                                                \
    F(m_bool_data) F(m_int_data) F(m_string_data) F(m_2d_int_data) F(m_locations) F(m_location_enums) F(m_ports) \
        F(m_id) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_string_enum_is_valid) F(m_2d_int_enum_is_valid)

class DEV_EXPORT DEV_ELEMENT_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_ELEMENT_DESC_BOOL_DATA_ENUM, DEV_ELEMENT_DESC_INT_DATA_ENUM,
                                 DEV_ELEMENT_DESC_STRING_DATA_ENUM, DEV_ELEMENT_DESC_2D_INT_DATA_ENUM> {
public:
    int32_t get_id() const { return m_id; }
    void set_id(int32_t id) { m_id = id; }
    // INT key 0 (DEV_ELEMENT_INVALID when unset), INT key 14 (CDB_RE_INVALID when unset) and
    // STRING key 0 ("" when unset).
    DEV_ELEMENT_ENUM get_element_enum() const;
    CDB_RE_TYPE get_cdb_re_type() const;
    const std::string& get_name() const;

    // Appends a location (and its enumerator) or a port; the records stay the basic info's.
    void add_location(DEV_LOCATION_DESC* location);
    void add_port(DEV_PORT_DESC* port);
    const std::vector<DEV_LOCATION_DESC*>& get_location_descs() const { return m_locations; }
    const std::vector<DEV_LOCATION_ENUM>& get_location_enums() const { return m_location_enums; }
    const std::vector<DEV_PORT_DESC*>& get_port_descs() const { return m_ports; }

    // The first port of the element with that input (output) port type, or null; the _str
    // forms take the type's name.
    DEV_PORT_DESC* get_port_by_input_type(DB_INPUT_PORT_TYPE type) const;
    DEV_PORT_DESC* get_port_by_output_type(DB_OUTPUT_PORT_TYPE type) const;
    DEV_PORT_DESC* get_port_by_input_type_str(const std::string& type) const;
    DEV_PORT_DESC* get_port_by_output_type_str(const std::string& type) const;

    // Equal attributes, and locations and ports with the same ids in the same order.
    bool operator==(const DEV_ELEMENT_DESC_BODY& other) const;
    bool operator!=(const DEV_ELEMENT_DESC_BODY& other) const { return !(*this == other); }

    DEV_PDB_FRIEND(DEV_ELEMENT_DESC_BODY)

private:
    std::vector<DEV_LOCATION_DESC*> m_locations;
    std::vector<DEV_LOCATION_ENUM> m_location_enums;
    std::vector<DEV_PORT_DESC*> m_ports;
    int32_t m_id = -1;
};

class DEV_EXPORT DEV_ELEMENT_DESC : public DEV_HANDLE<DEV_ELEMENT_DESC_BODY> {
public:
    static DEV_ELEMENT_DESC* create() { return new DEV_ELEMENT_DESC(new DEV_ELEMENT_DESC_BODY); }
    explicit DEV_ELEMENT_DESC(DEV_ELEMENT_DESC_BODY* body) : DEV_HANDLE(body) {}
    DEV_ELEMENT_DESC() = default;

    typedef DEV_ELEMENT_DESC_BODY BODY;
    int32_t get_id() const { return forward_or(-1, &BODY::get_id); }
    DEV_ELEMENT_ENUM get_element_enum() const { return forward(&BODY::get_element_enum); }
    CDB_RE_TYPE get_cdb_re_type() const { return forward(&BODY::get_cdb_re_type); }
    const std::string& get_name() const { return forward(&BODY::get_name); }
    const std::vector<DEV_LOCATION_DESC*>& get_location_descs() const { return forward(&BODY::get_location_descs); }
    const std::vector<DEV_LOCATION_ENUM>& get_location_enums() const { return forward(&BODY::get_location_enums); }
    const std::vector<DEV_PORT_DESC*>& get_port_descs() const { return forward(&BODY::get_port_descs); }
    DEV_PORT_DESC* get_port_by_input_type(DB_INPUT_PORT_TYPE type) const {
        return forward(&BODY::get_port_by_input_type, type);
    }
    DEV_PORT_DESC* get_port_by_output_type(DB_OUTPUT_PORT_TYPE type) const {
        return forward(&BODY::get_port_by_output_type, type);
    }
    DEV_PORT_DESC* get_port_by_input_type_str(const std::string& type) const {
        return forward(&BODY::get_port_by_input_type_str, type);
    }
    DEV_PORT_DESC* get_port_by_output_type_str(const std::string& type) const {
        return forward(&BODY::get_port_by_output_type_str, type);
    }

    static bool is_auto_match_pdb_xfr(DEV_ELEMENT_DESC* object, PDB_MATCH_DATA* data);
};

#endif
