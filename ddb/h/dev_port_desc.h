// DEV_PORT_DESC: one port of a device's element types, a handle over DEV_PORT_DESC_BODY:
// BOOL, INT and STRING attributes and the port's id (its position among the basic info's
// ports). INT key 0 is INT_INPUT_PORT_TYPE (a DB_INPUT_PORT_TYPE), INT key 1
// INT_OUTPUT_PORT_TYPE (a DB_OUTPUT_PORT_TYPE); a port has exactly one of them. STRING key 0
// is its DEBUG_NAME, the name of its port block.
#ifndef VELCORA_DEV_PORT_DESC_H
#define VELCORA_DEV_PORT_DESC_H

#include <cstdint>
#include <string>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/db_input_port_type.h"
#include "host/tables/db_output_port_type.h"

#define DEV_PORT_DESC_BODY_PDB_FIELDS(F)                                                             \
    F(m_bool_data) F(m_int_data) F(m_string_data) F(m_id) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) \
        F(m_string_enum_is_valid)

class DEV_EXPORT DEV_PORT_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PORT_DESC_BOOL_DATA_ENUM, DEV_PORT_DESC_INT_DATA_ENUM,
                                 DEV_PORT_DESC_STRING_DATA_ENUM> {
public:
    int32_t get_id() const { return m_id; }
    void set_id(int32_t id) { m_id = id; }
    // STRING key 0 ("" when unset).
    const std::string& get_debug_name() const;
    // INT keys 0 and 1: the port's types, or the invalid type when the key is unset.
    DB_INPUT_PORT_TYPE get_input_port_type() const;
    DB_OUTPUT_PORT_TYPE get_output_port_type() const;
    bool operator==(const DEV_PORT_DESC_BODY& other) const { return attributes_equal(other); }
    bool operator!=(const DEV_PORT_DESC_BODY& other) const { return !(*this == other); }

    DEV_PDB_FRIEND(DEV_PORT_DESC_BODY)

private:
    int32_t m_id = -1;
};

class DEV_EXPORT DEV_PORT_DESC : public DEV_HANDLE<DEV_PORT_DESC_BODY> {
public:
    static DEV_PORT_DESC* create() { return new DEV_PORT_DESC(new DEV_PORT_DESC_BODY); }
    explicit DEV_PORT_DESC(DEV_PORT_DESC_BODY* body) : DEV_HANDLE(body) {}
    DEV_PORT_DESC() = default;

    int32_t get_id() const { return forward_or(-1, &DEV_PORT_DESC_BODY::get_id); }
    const std::string& get_debug_name() const { return forward(&DEV_PORT_DESC_BODY::get_debug_name); }
    DB_INPUT_PORT_TYPE get_input_port_type() const { return forward(&DEV_PORT_DESC_BODY::get_input_port_type); }
    DB_OUTPUT_PORT_TYPE get_output_port_type() const { return forward(&DEV_PORT_DESC_BODY::get_output_port_type); }

    static bool is_auto_match_pdb_xfr(DEV_PORT_DESC* object, PDB_MATCH_DATA* data);
};

#endif
