// DEV_PKG_INFO_BODY: the data of one device package: its attributes (BOOL, INT, STRING,
// 2D_INT and VEC_DOUBLE; INT key 0 the package's DEV_PKG_ENUM), its pins (owned, indexed by
// pin id) and the pin names (upper-cased, to pin id; look-up ignores letter case).
//
// Pin keys are set through the package info (set_pin_<k>_data), which also records that
// some pin has the key: the package-level getters (get_pin_<k>_data) read any pin's stored
// value once some pin has set the key, and report "Key not defined in data file: <key>"
// while none has.
//
// The body is filled from a PKG text (read_pkg_file) or read whole from a persistent file
// (load_pkg_from_pdb), and written to either (write_pkg_file, write_pkg_to_pdb).
#ifndef VELCORA_DEV_PKG_INFO_BODY_H
#define VELCORA_DEV_PKG_INFO_BODY_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "dev_attribute_table.h"
#include "dev_export.h"
#include "dev_owned_vector.h"
#include "dev_persistent.h"
#include "dev_pin.h"
#include "host/astr.h"
#include "host/fio.h"
#include "host/vtl_hash.h"
#include "host/tables/dev_pkg_enum.h"

class DEV_DEVICE;

#define DEV_PKG_INFO_BODY_PDB_FIELDS(F)                                                                        \
    F(m_pin_list) F(m_bool_data) F(m_int_data) F(m_string_data) F(m_2d_int_data) F(m_vec_double_data)       \
        F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_string_enum_is_valid) F(m_2d_int_enum_is_valid)  \
            F(m_vec_double_enum_is_valid) F(m_pin_bool_enum_is_valid) F(m_pin_int_enum_is_valid)             \
                F(m_pin_string_enum_is_valid) F(m_pin_vec_int_enum_is_valid) F(m_ids_by_string)

class DEV_EXPORT DEV_PKG_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PKG_INFO_BOOL_DATA_ENUM, DEV_PKG_INFO_INT_DATA_ENUM, DEV_PKG_INFO_STRING_DATA_ENUM,
                                 DEV_PKG_INFO_2D_INT_DATA_ENUM, DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM> {
public:
    DEV_PKG_INFO_BODY();
    DEV_PKG_INFO_BODY(const DEV_PKG_INFO_BODY&) = delete;
    DEV_PKG_INFO_BODY& operator=(const DEV_PKG_INFO_BODY&) = delete;

    // The device the package belongs to (not owned; not stored in the persistent form).
    void set_device(DEV_DEVICE* device) { m_device = device; }
    DEV_DEVICE* get_device() const { return m_device; }
    // INT key 0; DEV_PKG_INVALID when unset.
    DEV_PKG_ENUM get_package_enum() const;

    // ---- pins --------------------------------------------------------------------------------------
    uint32_t get_number_of_pins() const { return static_cast<uint32_t>(m_pin_list.size()); }
    const std::vector<DEV_PIN*>& get_pins() const { return m_pin_list; }
    DEV_PIN* get_pin(uint32_t pin_id) const { return pin_id < m_pin_list.size() ? m_pin_list[pin_id] : nullptr; }
    // Takes ownership of the pin, whose id becomes the number of pins before it.
    void add_pin(DEV_PIN* pin);
    void add_pad_id_to_pin(uint32_t pin_id, uint32_t pad_id);
    // The pin's pad ids (empty for an unknown pin).
    const std::vector<uint32_t>& get_list_of_pad_ids(uint32_t pin_id) const;

    // ---- pin names ---------------------------------------------------------------------------------
    // Binds the upper-cased name to the pin when it is unbound or bound to pin 0; bound to
    // another pin it is the conflict report and stays.
    void add_to_ids_by_string_hash(const std::string& name, uint32_t pin_id);
    // DEV_ILLEGAL_PIN_ID when unknown.
    uint32_t get_pin_id_by_string(const std::string& name) const {
        const uint32_t* pin_id = m_pins_by_folded_name.find(name);
        return pin_id ? *pin_id : DEV_ILLEGAL_PIN_ID;
    }
    const std::map<std::string, uint32_t>& get_ids_by_string() const { return m_ids_by_string; }

    // ---- pin keys through the package --------------------------------------------------------------
    void set_pin_bool_data(uint32_t id, DEV_PIN_BOOL_DATA_ENUM key, bool value) { set_pin_data(id, key, value); }
    void set_pin_int_data(uint32_t id, DEV_PIN_INT_DATA_ENUM key, int value) { set_pin_data(id, key, value); }
    void set_pin_string_data(uint32_t id, DEV_PIN_STRING_DATA_ENUM key, const std::string& value) {
        set_pin_data(id, key, value);
    }
    void set_pin_vec_int_data(uint32_t id, DEV_PIN_VEC_INT_DATA_ENUM key, const DEV_INT_VECTOR& value) {
        set_pin_data(id, key, value);
    }
    // The setters above for any pin key kind (the readers' form).
    template <typename KEY, typename VALUE>
    void set_pin_data(uint32_t id, KEY key, const VALUE& value) {
        if (!DEV_ATTRIBUTE_KEY<KEY>::check_range(key)) return;
        DEV_PIN* pin = checked_pin(id, "this->m_pin_list[id] != 0");
        if (!pin) return;
        DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::set(*pin, key, value);
        keys_of(key).set_value(key, true);
    }
    bool get_pin_bool_data(uint32_t id, DEV_PIN_BOOL_DATA_ENUM key) const { return pin_value(id, key); }
    int get_pin_int_data(uint32_t id, DEV_PIN_INT_DATA_ENUM key) const { return pin_value(id, key); }
    const std::string& get_pin_string_data(uint32_t id, DEV_PIN_STRING_DATA_ENUM key) const { return pin_value(id, key); }
    const DEV_INT_VECTOR& get_pin_vec_int_data(uint32_t id, DEV_PIN_VEC_INT_DATA_ENUM key) const {
        return pin_value(id, key);
    }
    // Whether some pin has the key; whether pin `id` has it.
    bool is_valid_pin_bool_enum(DEV_PIN_BOOL_DATA_ENUM key) const { return some_pin_has(key); }
    bool is_valid_pin_int_enum(DEV_PIN_INT_DATA_ENUM key) const { return some_pin_has(key); }
    bool is_valid_pin_string_enum(DEV_PIN_STRING_DATA_ENUM key) const { return some_pin_has(key); }
    bool is_valid_pin_vec_int_enum(DEV_PIN_VEC_INT_DATA_ENUM key) const { return some_pin_has(key); }
    bool is_valid_pin_bool_enum(uint32_t id, DEV_PIN_BOOL_DATA_ENUM key) const { return pin_has(id, key); }
    bool is_valid_pin_int_enum(uint32_t id, DEV_PIN_INT_DATA_ENUM key) const { return pin_has(id, key); }
    bool is_valid_pin_string_enum(uint32_t id, DEV_PIN_STRING_DATA_ENUM key) const { return pin_has(id, key); }
    bool is_valid_pin_vec_int_enum(uint32_t id, DEV_PIN_VEC_INT_DATA_ENUM key) const { return pin_has(id, key); }

    // ---- files -------------------------------------------------------------------------------------
    // Reads a PKG text (and its includes, paths as written) into this body; false when the
    // file could not be read.
    bool read_pkg_file(const FIO_PATH& path);
    // The ASCII dump, which read_pkg_file reads back; `compression` 0 writes plain text.
    bool write_pkg_file(const FIO_PATH& path, int compression) const;
    bool write_pkg_to_pdb(const FIO_PATH& path, int compression_level);
    static DEV_PKG_INFO_BODY* load_pkg_from_pdb(const FIO_PATH& path);
    // Frees the pins and forgets their names and keys.
    void destroy_data();

    bool operator==(const DEV_PKG_INFO_BODY& other) const;
    bool operator!=(const DEV_PKG_INFO_BODY& other) const { return !(*this == other); }
    // A body read from a file holds together (tables of their sizes, pin ids equal to
    // positions). False with the reason.
    bool check_structure(std::string* problem) const;

    DEV_PDB_FRIEND(DEV_PKG_INFO_BODY)

private:
    // The package-level bit vector of a pin key kind.
    VTL_BOOL_VECTOR& keys_of(DEV_PIN_BOOL_DATA_ENUM) { return m_pin_bool_enum_is_valid; }
    VTL_BOOL_VECTOR& keys_of(DEV_PIN_INT_DATA_ENUM) { return m_pin_int_enum_is_valid; }
    VTL_BOOL_VECTOR& keys_of(DEV_PIN_STRING_DATA_ENUM) { return m_pin_string_enum_is_valid; }
    VTL_BOOL_VECTOR& keys_of(DEV_PIN_VEC_INT_DATA_ENUM) { return m_pin_vec_int_enum_is_valid; }
    const VTL_BOOL_VECTOR& keys_of(DEV_PIN_BOOL_DATA_ENUM) const { return m_pin_bool_enum_is_valid; }
    const VTL_BOOL_VECTOR& keys_of(DEV_PIN_INT_DATA_ENUM) const { return m_pin_int_enum_is_valid; }
    const VTL_BOOL_VECTOR& keys_of(DEV_PIN_STRING_DATA_ENUM) const { return m_pin_string_enum_is_valid; }
    const VTL_BOOL_VECTOR& keys_of(DEV_PIN_VEC_INT_DATA_ENUM) const { return m_pin_vec_int_enum_is_valid; }

    // The pin `id` after the checks "this->m_pin_list[id] != 0" (and the range check), or null.
    DEV_PIN* checked_pin(uint32_t id, const char* text) const;

    template <typename KEY>
    bool some_pin_has(KEY key) const {
        return DEV_ATTRIBUTE_KEY<KEY>::in_range(key) && key < static_cast<int>(keys_of(key).size()) &&
               keys_of(key).get_value(key);
    }
    template <typename KEY>
    bool pin_has(uint32_t id, KEY key) const {
        const DEV_PIN* pin = get_pin(id);
        return pin && DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::is_valid(*pin, key);
    }
    // Any pin's stored value once some pin has the key.
    template <typename KEY>
    DEV_ATTRIBUTE_KEY_RESULT<KEY> pin_value(uint32_t id, KEY key) const;

    // Rebuilds the look-up index of the pin names from the map (after a persistent load).
    void index_pin_names();

    DEV_DEVICE* m_device = nullptr;
    DEV_OWNED_VECTOR<DEV_PIN> m_pin_list;
    VTL_BOOL_VECTOR m_pin_bool_enum_is_valid;
    VTL_BOOL_VECTOR m_pin_int_enum_is_valid;
    VTL_BOOL_VECTOR m_pin_string_enum_is_valid;
    VTL_BOOL_VECTOR m_pin_vec_int_enum_is_valid;
    std::map<std::string, uint32_t> m_ids_by_string;
    // The same names hashed without regard to letter case, for look-ups: not stored, kept in
    // step with the map by every add and rebuilt from it when a persistent load completes.
    VTL_HASH<std::string, uint32_t, VTL_HASH_NOCASE> m_pins_by_folded_name;
};

template <typename KEY>
DEV_ATTRIBUTE_KEY_RESULT<KEY> DEV_PKG_INFO_BODY::pin_value(uint32_t id, KEY key) const {
    typedef typename DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::value_type VALUE;
    if (!DEV_ATTRIBUTE_KEY<KEY>::check_range(key)) return dev_attribute_default<VALUE>();
    if (!some_pin_has(key)) dev_report_key_not_defined(ASTR_KEY_TRAITS<KEY>::table().debug_string(key));
    dev_attribute_check(id < this->m_pin_list.size(), "id < this->m_pin_list.size()");
    const DEV_PIN* pin = checked_pin(id, "this->m_pin_list[id] != 0");
    return pin ? pin->stored(key) : dev_attribute_default<VALUE>();
}

#endif
