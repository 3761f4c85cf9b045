// DEV_IO_STANDARD_DESC: one descriptor of an I/O standard in a device's pad info, a handle
// over DEV_IO_STANDARD_DESC_BODY: BOOL, INT, STRING and 2D_INT attributes and the drive
// currents. INT keys 0 to 2 are the voltage, VIO voltage and VREF voltage (DEV_VOLTAGE_ENUM),
// INT key 3 the descriptor's I/O standard, STRING key 0 its name and BOOL key 0 says that it
// is the default descriptor of its standard.
//
// Currents: the current set lists drive strengths in the order added (duplicates kept), each
// marked valid; the real VCC and GND currents are kept per strength. Setting a current does
// not mark its strength valid, and reading one requires the strength to be in the set.
#ifndef VELCORA_DEV_IO_STANDARD_DESC_H
#define VELCORA_DEV_IO_STANDARD_DESC_H

#include <cstdint>
#include <string>
#include <vector>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/dev_current_strength_enum.h"
#include "host/tables/dev_io_standard_enum.h"
#include "host/tables/dev_voltage_enum.h"

#define DEV_IO_STANDARD_DESC_BODY_PDB_FIELDS(F)                                                             \
    F(m_bool_data) F(m_int_data) F(m_string_data) F(m_2d_int_data) F(m_current_set) F(m_real_gnd_current) \
        F(m_real_vcc_current) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_string_enum_is_valid)   \
            F(m_current_enum_is_valid) F(m_2d_int_enum_is_valid)

class DEV_EXPORT DEV_IO_STANDARD_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_IO_STANDARD_DESC_BOOL_DATA_ENUM, DEV_IO_STANDARD_DESC_INT_DATA_ENUM,
                                 DEV_IO_STANDARD_DESC_STRING_DATA_ENUM, DEV_IO_STANDARD_DESC_2D_INT_DATA_ENUM> {
public:
    DEV_IO_STANDARD_DESC_BODY();

    // INT keys 3, 0, 1 and 2; 0 when the key is unset, without a report.
    DEV_IO_STANDARD_ENUM get_io_standard_enum() const;
    DEV_VOLTAGE_ENUM get_voltage_enum() const;
    DEV_VOLTAGE_ENUM get_vio_voltage_enum() const;
    DEV_VOLTAGE_ENUM get_vref_voltage_enum() const;
    // STRING key 0 ("" when unset).
    const std::string& get_name() const;
    // BOOL key 0 set and true.
    bool is_default() const;

    // Each strength must lie in 0..17 ("current_enum >= 0 && current_enum <
    // DEV_CURRENT_STRENGTH_MAX"); a current is read only for a strength of the set.
    void add_current_enum(DEV_CURRENT_STRENGTH_ENUM current_enum);
    const std::vector<DEV_CURRENT_STRENGTH_ENUM>& get_current_set() const { return m_current_set; }
    bool is_valid_current_enum(DEV_CURRENT_STRENGTH_ENUM current_enum) const;
    void set_real_vcc_current(DEV_CURRENT_STRENGTH_ENUM current_enum, int value);
    void set_real_gnd_current(DEV_CURRENT_STRENGTH_ENUM current_enum, int value);
    int get_real_vcc_current(DEV_CURRENT_STRENGTH_ENUM current_enum) const;
    int get_real_gnd_current(DEV_CURRENT_STRENGTH_ENUM current_enum) const;

    // The same attributes, current set and currents.
    bool operator==(const DEV_IO_STANDARD_DESC_BODY& other) const;
    // Tables of their sizes (a body read from a file may not have them).
    bool is_sized() const;

    DEV_PDB_FRIEND(DEV_IO_STANDARD_DESC_BODY)

private:
    std::vector<DEV_CURRENT_STRENGTH_ENUM> m_current_set;
    int32_t m_real_gnd_current[DEV_CURRENT_STRENGTH_MAX] = {};
    int32_t m_real_vcc_current[DEV_CURRENT_STRENGTH_MAX] = {};
    VTL_BOOL_VECTOR m_current_enum_is_valid;
};

class DEV_EXPORT DEV_IO_STANDARD_DESC : public DEV_HANDLE<DEV_IO_STANDARD_DESC_BODY> {
public:
    typedef DEV_IO_STANDARD_DESC_BODY BODY;
    static DEV_IO_STANDARD_DESC* create() { return new DEV_IO_STANDARD_DESC(new BODY); }
    explicit DEV_IO_STANDARD_DESC(BODY* body) : DEV_HANDLE(body) {}
    DEV_IO_STANDARD_DESC() = default;

    DEV_IO_STANDARD_ENUM get_io_standard_enum() const { return forward(&BODY::get_io_standard_enum); }
    DEV_VOLTAGE_ENUM get_voltage_enum() const { return forward(&BODY::get_voltage_enum); }
    DEV_VOLTAGE_ENUM get_vio_voltage_enum() const { return forward(&BODY::get_vio_voltage_enum); }
    DEV_VOLTAGE_ENUM get_vref_voltage_enum() const { return forward(&BODY::get_vref_voltage_enum); }
    const std::string& get_name() const { return forward(&BODY::get_name); }
    bool is_default() const { return forward(&BODY::is_default); }
    const std::vector<DEV_CURRENT_STRENGTH_ENUM>& get_current_set() const { return forward(&BODY::get_current_set); }
    bool is_valid_current_enum(DEV_CURRENT_STRENGTH_ENUM c) const { return forward(&BODY::is_valid_current_enum, c); }
    int get_real_vcc_current(DEV_CURRENT_STRENGTH_ENUM c) const { return forward(&BODY::get_real_vcc_current, c); }
    int get_real_gnd_current(DEV_CURRENT_STRENGTH_ENUM c) const { return forward(&BODY::get_real_gnd_current, c); }

    static bool is_auto_match_pdb_xfr(DEV_IO_STANDARD_DESC* object, PDB_MATCH_DATA* data);
};

#endif
