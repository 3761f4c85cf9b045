// DEV_LOCATION_DESC: one location (a kind of site) of a device's basic info, a handle over
// DEV_LOCATION_DESC_BODY: BOOL, INT and STRING attributes and the location's id (its
// position among the basic info's locations). INT key 0 is its DEV_LOCATION_ENUM, STRING
// key 0 its name, STRING keys 3 and 4 alternative names.
#ifndef VELCORA_DEV_LOCATION_DESC_H
#define VELCORA_DEV_LOCATION_DESC_H

#include <cstdint>
#include <string>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/dev_location_enum.h"

#define DEV_LOCATION_DESC_BODY_PDB_FIELDS(F)                                                         \
    F(m_bool_data) F(m_int_data) F(m_string_data) F(m_id) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) \
        F(m_string_enum_is_valid)

class DEV_EXPORT DEV_LOCATION_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_LOCATION_DESC_BOOL_DATA_ENUM, DEV_LOCATION_DESC_INT_DATA_ENUM,
                                 DEV_LOCATION_DESC_STRING_DATA_ENUM> {
public:
    int32_t get_id() const { return m_id; }
    void set_id(int32_t id) { m_id = id; }
    // INT key 0 (DEV_LOCATION_INVALID when unset) and STRING key 0 ("" when unset).
    DEV_LOCATION_ENUM get_location_enum() const;
    const std::string& get_name() const;
    // Equal attributes (the id is the record's position, not its content).
    bool operator==(const DEV_LOCATION_DESC_BODY& other) const { return attributes_equal(other); }
    bool operator!=(const DEV_LOCATION_DESC_BODY& other) const { return !(*this == other); }

    DEV_PDB_FRIEND(DEV_LOCATION_DESC_BODY)

private:
    int32_t m_id = -1;
};

class DEV_EXPORT DEV_LOCATION_DESC : public DEV_HANDLE<DEV_LOCATION_DESC_BODY> {
public:
    // A location with an empty body.
    static DEV_LOCATION_DESC* create() { return new DEV_LOCATION_DESC(new DEV_LOCATION_DESC_BODY); }
    // Takes ownership of `body` (a null body is reported, "body != 0").
    explicit DEV_LOCATION_DESC(DEV_LOCATION_DESC_BODY* body) : DEV_HANDLE(body) {}
    // Without a body (the persistent store reads it).
    DEV_LOCATION_DESC() = default;

    int32_t get_id() const { return forward_or(-1, &DEV_LOCATION_DESC_BODY::get_id); }
    DEV_LOCATION_ENUM get_location_enum() const { return forward(&DEV_LOCATION_DESC_BODY::get_location_enum); }
    const std::string& get_name() const { return forward(&DEV_LOCATION_DESC_BODY::get_name); }

    // The persistent store's auto-match hook; not generated for this class (reports so).
    static bool is_auto_match_pdb_xfr(DEV_LOCATION_DESC* object, PDB_MATCH_DATA* data);
};

#endif
