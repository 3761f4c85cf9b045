// DEV_BASIC_INFO_BODY: the data of a device's basic info, its resource model. Global
// attributes live in the typed attribute tables of the five kinds BOOL, INT, ENUM, STRING
// and 2D_INT; the body owns the device's locations, element types and ports and indexes them
// by enumerator, by id (their position), by name and, for elements, by netlist resource type.
//
// Conflicts keep the first binding and are internal errors: a name bound to another record
// ("A different location with key <name> already exists in the hash table!", and likewise
// for ports and elements), a resource type bound to another element. Look-ups by
// enumerator, type or id report an argument out of range and answer null; look-ups by name
// never report.
//
// The body is filled from an HDR text (read_hdr_file) or read whole from a persistent file
// (load_hdr_from_pdb), and written to either (write_hdr_file, write_hdr_to_pdb).
#ifndef VELCORA_DEV_BASIC_INFO_BODY_H
#define VELCORA_DEV_BASIC_INFO_BODY_H

#include <cstdint>
#include <string>
#include <vector>

#include "dev_attribute_table.h"
#include "dev_element_desc.h"
#include "dev_export.h"
#include "dev_location_desc.h"
#include "dev_owned_vector.h"
#include "dev_persistent.h"
#include "dev_port_desc.h"
#include "host/astr.h"
#include "host/dstr_fwd.h"
#include "host/fio.h"
#include "host/vtl_hash.h"

// The ports of a basic info by name. The table owns its ports (it is the only list of them;
// a port's id is its position in that list); elements point at them.
class DEV_EXPORT DEV_PORT_TABLE {
public:
    typedef VTL_HASH<std::string, DEV_PORT_DESC*> BY_NAME;

    // Binds `name` to `port` (see the body's add_to_ports_by_string_hash) and takes the
    // port into the table unless it holds it already.
    void add(const std::string& name, DEV_PORT_DESC* port);
    DEV_PORT_DESC* find(const std::string& name) const;
    const BY_NAME& by_name() const { return m_by_name; }
    const std::vector<DEV_PORT_DESC*>& ports() const { return m_ports; }

    DEV_PDB_FRIEND(DEV_PORT_TABLE)

private:
    DEV_OWNED_VECTOR<DEV_PORT_DESC> m_ports;
    BY_NAME m_by_name;
};

#define DEV_BASIC_INFO_BODY_PDB_FIELDS(F)                                                               \
    F(m_bool_data) F(m_enum_data) F(m_int_data) F(m_string_data) F(m_2d_int_data) F(m_locations) F(m_elements) \
        F(m_locations_by_enum) F(m_elements_by_enum) F(m_elements_by_cdb_re_type) F(m_locations_by_string)     \
            F(m_elements_by_string) F(m_ports_by_string) F(m_location_enums) F(m_element_enums)                \
                F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_enum_enum_is_valid)                          \
                    F(m_string_enum_is_valid) F(m_2d_int_enum_is_valid)

class DEV_EXPORT DEV_BASIC_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_BASIC_INFO_BOOL_DATA_ENUM, DEV_BASIC_INFO_INT_DATA_ENUM,
                                 DEV_BASIC_INFO_ENUM_DATA_ENUM, DEV_BASIC_INFO_STRING_DATA_ENUM,
                                 DEV_BASIC_INFO_2D_INT_DATA_ENUM> {
public:
    DEV_BASIC_INFO_BODY();
    ~DEV_BASIC_INFO_BODY();
    DEV_BASIC_INFO_BODY(const DEV_BASIC_INFO_BODY&) = delete;
    DEV_BASIC_INFO_BODY& operator=(const DEV_BASIC_INFO_BODY&) = delete;

    // ENUM key 0: reports "this->is_valid_enum_enum(key)" when unset, returns the slot.
    DEV_DEVICE_ENUM get_device_enum() const;
    // ENUM key 1, alike.
    DEV_FAMILY_ENUM get_family_enum() const;
    // ENUM key 2: DEV_PART_INVALID when unset, without a report.
    DEV_PART_ENUM get_part_enum() const;

    // ---- adding (the HDR reader) ----------------------------------------------------------
    // Takes ownership of the record: its id becomes its position; unless its enumerator is 0
    // or generic it takes the enumerator's slot (a later record with the same enumerator
    // takes it over) and its enumerator is listed; its name (STRING key 0), when set, is
    // entered in the name table.
    void add_location(DEV_LOCATION_DESC* location);
    void add_element(DEV_ELEMENT_DESC* element);
    void add_to_locations_by_string_hash(const std::string& name, DEV_LOCATION_DESC* location);
    // Also takes the port into the body's port table (the table owns every port given to it).
    void add_to_ports_by_string_hash(const std::string& name, DEV_PORT_DESC* port);
    void add_to_elements_by_string_hash(const std::string& name, DEV_ELEMENT_DESC* element);
    void add_to_elements_by_cdb_re_type(CDB_RE_TYPE re, DEV_ELEMENT_DESC* element);

    // ---- look-ups ---------------------------------------------------------------------------
    DEV_LOCATION_DESC* get_location_by_enum(DEV_LOCATION_ENUM location) const;
    DEV_ELEMENT_DESC* get_element_by_enum(DEV_ELEMENT_ENUM element) const;
    DEV_ELEMENT_DESC* get_element_by_cdb_re_type(CDB_RE_TYPE re) const;
    DEV_LOCATION_DESC* get_location_by_id(int id) const;
    DEV_ELEMENT_DESC* get_element_by_id(int id) const;
    DEV_LOCATION_DESC* get_location_by_string(const std::string& name) const;
    DEV_PORT_DESC* get_port_by_string(const std::string& name) const;
    DEV_ELEMENT_DESC* get_element_by_string(const std::string& name) const;
    const std::vector<DEV_LOCATION_ENUM>& get_location_enums() const { return m_location_enums; }
    const std::vector<DEV_ELEMENT_ENUM>& get_element_enums() const { return m_element_enums; }
    const std::vector<DEV_LOCATION_DESC*>& get_location_descs() const { return m_locations; }
    const std::vector<DEV_ELEMENT_DESC*>& get_element_descs() const { return m_elements; }
    // Every port, by name (the only list of all ports); in id order through get_port_descs.
    const DEV_PORT_TABLE::BY_NAME& get_port_hash() const { return m_ports_by_string.by_name(); }
    const std::vector<DEV_PORT_DESC*>& get_port_descs() const { return m_ports_by_string.ports(); }
    int get_total_locations() const { return static_cast<int>(m_locations.size()); }

    void set_initialized(bool initialized) { m_initialized = initialized; }
    bool is_initialized() const { return m_initialized; }

    // ---- files --------------------------------------------------------------------------------
    // Reads an HDR text file (and its includes) into this body; false when the file could
    // not be read.
    bool read_hdr_file(const FIO_PATH& path);
    // Writes the ASCII dump, which read_hdr_file reads back; `compression_level` 0 writes
    // plain text.
    bool write_hdr_file(const FIO_PATH& path, int compression_level) const;
    // The persistent form: written at a level of 1 to 9 to a ".ddb" path; read into a new
    // body (null on failure).
    bool write_hdr_to_pdb(const FIO_PATH& path, int compression_level);
    static DEV_BASIC_INFO_BODY* load_hdr_from_pdb(const FIO_PATH& path);

    // The same attributes, records (by content and id) and indexes.
    bool operator==(const DEV_BASIC_INFO_BODY& other) const;
    bool operator!=(const DEV_BASIC_INFO_BODY& other) const { return !(*this == other); }
    // A body read from a file holds a consistent structure: every table of its size, ids
    // equal to positions, indexes pointing at its own records. False with the reason.
    bool check_structure(std::string* problem) const;

    DEV_PDB_FRIEND(DEV_BASIC_INFO_BODY)

private:
    DEV_OWNED_VECTOR<DEV_LOCATION_DESC> m_locations;
    DEV_OWNED_VECTOR<DEV_ELEMENT_DESC> m_elements;
    std::vector<DEV_LOCATION_DESC*> m_locations_by_enum;     // DEV_LOCATION_GENERIC + 1 slots
    std::vector<DEV_ELEMENT_DESC*> m_elements_by_enum;       // DEV_ELEMENT_GENERIC + 1 slots
    std::vector<DEV_ELEMENT_DESC*> m_elements_by_cdb_re_type;  // CDB_RE_ILLEGAL_TYPE slots
    VTL_HASH<std::string, DEV_LOCATION_DESC*> m_locations_by_string;
    VTL_HASH<std::string, DEV_ELEMENT_DESC*> m_elements_by_string;
    DEV_PORT_TABLE m_ports_by_string;
    std::vector<DEV_LOCATION_ENUM> m_location_enums;
    std::vector<DEV_ELEMENT_ENUM> m_element_enums;
    bool m_initialized = false;
};

#endif
