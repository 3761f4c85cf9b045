// DEV_POWER_SUPPLY_DESC: one power supply of an orderable part (its levels, currents and
// tables), a handle over DEV_POWER_SUPPLY_DESC_BODY: BOOL, INT, ENUM, STRING and 2D_INT
// attributes and the supply's DEV_POWER_SUPPLY_ENUM (DEV_POWER_SUPPLY_INVALID until set).
// Unlike most handles it also exposes the body's setters.
#ifndef VELCORA_DEV_POWER_SUPPLY_DESC_H
#define VELCORA_DEV_POWER_SUPPLY_DESC_H

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/dev_power_supply_enum.h"

#define DEV_POWER_SUPPLY_DESC_BODY_PDB_FIELDS(F)                                                            \
    F(m_bool_data) F(m_int_data) F(m_enum_data) F(m_string_data) F(m_2d_int_data) F(m_power_supply_enum)      \
        F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_enum_enum_is_valid) F(m_string_enum_is_valid)      \
            F(m_2d_int_enum_is_valid)

class DEV_EXPORT DEV_POWER_SUPPLY_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_POWER_SUPPLY_DESC_BOOL_DATA_ENUM, DEV_POWER_SUPPLY_DESC_INT_DATA_ENUM,
                                 DEV_POWER_SUPPLY_DESC_ENUM_DATA_ENUM, DEV_POWER_SUPPLY_DESC_STRING_DATA_ENUM,
                                 DEV_POWER_SUPPLY_DESC_2D_INT_DATA_ENUM> {
public:
    DEV_POWER_SUPPLY_ENUM get_power_supply_enum() const { return m_power_supply_enum; }
    void set_power_supply_enum(DEV_POWER_SUPPLY_ENUM supply) { m_power_supply_enum = supply; }

    // The same supply and attributes.
    bool operator==(const DEV_POWER_SUPPLY_DESC_BODY& other) const {
        return m_power_supply_enum == other.m_power_supply_enum && attributes_equal(other);
    }
    bool operator!=(const DEV_POWER_SUPPLY_DESC_BODY& other) const { return !(*this == other); }

    static bool is_auto_match_pdb_xfr(DEV_POWER_SUPPLY_DESC_BODY* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_POWER_SUPPLY_DESC_BODY)

private:
    DEV_POWER_SUPPLY_ENUM m_power_supply_enum = DEV_POWER_SUPPLY_INVALID;
};

class DEV_EXPORT DEV_POWER_SUPPLY_DESC : public DEV_HANDLE<DEV_POWER_SUPPLY_DESC_BODY>,
                                         public DEV_HANDLE_SETTERS<DEV_POWER_SUPPLY_DESC> {
public:
    typedef DEV_POWER_SUPPLY_DESC_BODY BODY;

    // A descriptor of `supply` with an empty body.
    static DEV_POWER_SUPPLY_DESC* create(DEV_POWER_SUPPLY_ENUM supply);
    // Takes ownership of `body` (a null body is reported, "body != 0").
    explicit DEV_POWER_SUPPLY_DESC(DEV_POWER_SUPPLY_DESC_BODY* body) : DEV_HANDLE(body) {}
    // Without a body (the persistent store reads it).
    DEV_POWER_SUPPLY_DESC() = default;

    DEV_POWER_SUPPLY_ENUM get_power_supply_enum() const {
        return forward_or(DEV_POWER_SUPPLY_INVALID, &BODY::get_power_supply_enum);
    }
    void set_power_supply_enum(DEV_POWER_SUPPLY_ENUM supply);

    static bool is_auto_match_pdb_xfr(DEV_POWER_SUPPLY_DESC* object, PDB_MATCH_DATA* data);
};

#endif
