// DEV_PIN: one pin of a device package, a plain record (no body): its id (its position among
// the package's pins), BOOL, INT, STRING and VEC_INT attributes, and the ids of the pads it
// is bonded to, in the order added (duplicates kept). STRING key 0 is the pin's name. A new
// pin has BOOL key 0 (IS_BONDED) valid and false. The getters report a key that the pin
// does not set as "Key not defined in data file: <key>".
#ifndef VELCORA_DEV_PIN_H
#define VELCORA_DEV_PIN_H

#include <cstdint>
#include <string>
#include <vector>

#include "dev_attribute_table.h"
#include "dev_export.h"
#include "dev_persistent.h"
#include "host/astr.h"

// A pin id that names no pin.
constexpr uint32_t DEV_ILLEGAL_PIN_ID = 0xFFFFFFFFu;

#define DEV_PIN_PDB_FIELDS(F)                                                                              \
    F(m_id) F(m_bool_data) F(m_int_data) F(m_string_data) F(m_vec_int_data) F(m_bool_enum_is_valid)      \
        F(m_int_enum_is_valid) F(m_string_enum_is_valid) F(m_vec_int_enum_is_valid) F(m_pad_id_list)

class DEV_EXPORT DEV_PIN : public DEV_ATTRIBUTE_TABLE<DEV_PIN_BOOL_DATA_ENUM, DEV_PIN_INT_DATA_ENUM,
                                                      DEV_PIN_STRING_DATA_ENUM, DEV_PIN_VEC_INT_DATA_ENUM> {
public:
    DEV_PIN() { set_bool_data(DEV_PIN_BOOL_IS_BONDED, false); }

    uint32_t get_id() const { return m_id; }
    void set_id(uint32_t id) { m_id = id; }
    const std::vector<uint32_t>& get_list_of_pad_ids() const { return m_pad_id_list; }
    void add_pad_id_to_pin(uint32_t pad_id) { m_pad_id_list.push_back(pad_id); }
    // Removes every occurrence.
    void remove_pad_id_from_pin(uint32_t pad_id);
    // STRING key 0 ("" when unset).
    const std::string& get_name() const;

    bool get_bool_data(DEV_PIN_BOOL_DATA_ENUM key) const { return defined(key); }
    int get_int_data(DEV_PIN_INT_DATA_ENUM key) const { return defined(key); }
    const std::string& get_string_data(DEV_PIN_STRING_DATA_ENUM key) const { return defined(key); }
    const DEV_INT_VECTOR& get_vec_int_data(DEV_PIN_VEC_INT_DATA_ENUM key) const { return defined(key); }
    using DEV_BOOL_ATTRIBUTES<DEV_PIN_BOOL_DATA_ENUM>::get_bool_data;
    using DEV_INT_ATTRIBUTES<DEV_PIN_INT_DATA_ENUM>::get_int_data;
    using DEV_STRING_ATTRIBUTES<DEV_PIN_STRING_DATA_ENUM>::get_string_data;
    using DEV_VEC_INT_ATTRIBUTES<DEV_PIN_VEC_INT_DATA_ENUM>::get_vec_int_data;

    // The stored slot of a key in range, set or not (the kind's default when unset).
    bool stored(DEV_PIN_BOOL_DATA_ENUM key) const { return dev_attribute_slot(m_bool_data, key); }
    int stored(DEV_PIN_INT_DATA_ENUM key) const { return dev_attribute_slot(m_int_data, key); }
    const std::string& stored(DEV_PIN_STRING_DATA_ENUM key) const { return dev_attribute_slot(m_string_data, key); }
    const DEV_INT_VECTOR& stored(DEV_PIN_VEC_INT_DATA_ENUM key) const { return dev_attribute_slot(m_vec_int_data, key); }

    bool operator==(const DEV_PIN& other) const {
        return m_id == other.m_id && attributes_equal(other) && m_pad_id_list == other.m_pad_id_list;
    }

    static bool is_auto_match_pdb_xfr(DEV_PIN* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_PIN)

private:
    template <typename KEY>
    DEV_ATTRIBUTE_KEY_RESULT<KEY> defined(KEY key) const {
        typedef typename DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::value_type VALUE;
        const bool in_range = DEV_ATTRIBUTE_KEY<KEY>::in_range(key);
        const auto& own = static_cast<const DEV_ATTRIBUTE_KIND_TABLE<KEY>&>(*this);
        return dev_attribute_defined_value(key, in_range && DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::is_valid(own, key),
                                           in_range ? stored(key) : dev_attribute_default<VALUE>());
    }

    uint32_t m_id = DEV_ILLEGAL_PIN_ID;
    std::vector<uint32_t> m_pad_id_list;
};

#endif
