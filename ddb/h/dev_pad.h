// DEV_PAD: one pad (an I/O site of the die) of a device's pad info, a handle over
// DEV_PAD_BODY: BOOL, INT, STRING and 2D_INT attributes, the pad's id (its position among
// the pad info's pads), the I/O standard descriptors the pad supports (they belong to the
// pad info) and, per I/O standard, the pad's descriptor of it. INT key 0 is the pad's
// global id, STRING key 4 its name list.
//
// Every pad inherits from the pad info's default pad: a key is valid on a pad when the pad
// or its default pad sets it, and reads give the pad's own value, else the default pad's.
// A key that neither sets is reported as "Key not defined in data file: <key>". The default
// pad itself has no parent.
#ifndef VELCORA_DEV_PAD_H
#define VELCORA_DEV_PAD_H

#include <cstdint>
#include <vector>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_io_standard_desc.h"
#include "dev_persistent.h"
#include "host/astr.h"

// A pad id that names no pad.
constexpr uint32_t DEV_ILLEGAL_PAD_ID = 0xFFFFFFFFu;

#define DEV_PAD_BODY_PDB_FIELDS(F)                                                                            \
    F(m_id) F(m_default_pad_body) F(m_bool_data) F(m_int_data) F(m_string_data) F(m_2d_int_data)             \
        F(m_bool_enum_is_valid) F(m_int_enum_is_valid) F(m_string_enum_is_valid) F(m_2d_int_enum_is_valid) \
            F(m_io_standards) F(m_io_standards_by_enum)

class DEV_EXPORT DEV_PAD_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PAD_BOOL_DATA_ENUM, DEV_PAD_INT_DATA_ENUM, DEV_PAD_STRING_DATA_ENUM,
                                 DEV_PAD_2D_INT_DATA_ENUM> {
public:
    // A pad whose parent is `default_pad` (null: the default pad itself).
    explicit DEV_PAD_BODY(DEV_PAD_BODY* default_pad = nullptr) : m_default_pad_body(default_pad) {}

    uint32_t get_id() const { return m_id; }
    void set_id(uint32_t id) { m_id = id; }
    DEV_PAD_BODY* get_default_pad_body() const { return m_default_pad_body; }

    // ---- attributes, inherited from the default pad ------------------------------------------
    bool is_valid_bool_enum(DEV_PAD_BOOL_DATA_ENUM key) const { return defines(key); }
    bool is_valid_int_enum(DEV_PAD_INT_DATA_ENUM key) const { return defines(key); }
    bool is_valid_string_enum(DEV_PAD_STRING_DATA_ENUM key) const { return defines(key); }
    bool is_valid_2d_int_enum(DEV_PAD_2D_INT_DATA_ENUM key) const { return defines(key); }
    bool get_bool_data(DEV_PAD_BOOL_DATA_ENUM key) const { return inherited(key); }
    int get_int_data(DEV_PAD_INT_DATA_ENUM key) const { return inherited(key); }
    const std::string& get_string_data(DEV_PAD_STRING_DATA_ENUM key) const { return inherited(key); }
    const DEV_2D_INT_ARRAY& get_2d_int_data(DEV_PAD_2D_INT_DATA_ENUM key) const { return inherited(key); }
    bool get_bool_data(DEV_PAD_BOOL_DATA_ENUM key, bool* value) const { return inherited(key, value); }
    bool get_int_data(DEV_PAD_INT_DATA_ENUM key, int* value) const { return inherited(key, value); }
    bool get_string_data(DEV_PAD_STRING_DATA_ENUM key, std::string* value) const { return inherited(key, value); }
    bool get_2d_int_data(DEV_PAD_2D_INT_DATA_ENUM key, DEV_2D_INT_ARRAY* value) const {
        return inherited(key, value);
    }
    // The pad's own setting of a key (not the default pad's).
    template <typename KEY>
    bool sets(KEY key) const {
        return DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::is_valid(own(key), key);
    }

    // ---- I/O standards -------------------------------------------------------------------------
    // Appends the descriptor, then takes its standard's slot; a slot already taken is
    // reported ("Attempt to assign 2nd IO std desc to existing IO std enum on pad") and
    // taken over. The list keeps both descriptors.
    void add_io_standard(DEV_IO_STANDARD_DESC* desc);
    // Removes the descriptor's first occurrence from the list and clears its standard's slot
    // (and any other slot that still holds it).
    void remove_io_standard(DEV_IO_STANDARD_DESC* desc);
    void remove_all_io_standards();
    const std::vector<DEV_IO_STANDARD_DESC*>& get_io_standard_descs() const { return m_io_standards; }
    // The pad's descriptor of the standard, or null (the standard must lie in 1..83).
    DEV_IO_STANDARD_DESC* get_io_standard_desc_by_enum(DEV_IO_STANDARD_ENUM io_standard_enum) const;

    // The same own attributes; the descriptors compared by `same_desc`.
    template <typename SAME_DESC>
    bool equals(const DEV_PAD_BODY& other, SAME_DESC same_desc) const;
    bool is_sized() const { return attributes_sized(); }

    DEV_PDB_FRIEND(DEV_PAD_BODY)

private:
    template <typename KEY>
    const DEV_ATTRIBUTE_KIND_TABLE<KEY>& own(KEY) const {
        return *this;
    }
    template <typename KEY>
    static bool sets_in(const DEV_PAD_BODY* body, KEY key) {
        return body && DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::is_valid(body->own(key), key);
    }
    template <typename KEY>
    bool defines(KEY key) const {
        return sets_in(this, key) || sets_in(m_default_pad_body, key);
    }
    // The body that holds the key: this pad, else its default pad, else null.
    template <typename KEY>
    const DEV_PAD_BODY* holder(KEY key) const {
        return sets_in(this, key) ? this : sets_in(m_default_pad_body, key) ? m_default_pad_body : nullptr;
    }
    template <typename KEY>
    DEV_ATTRIBUTE_KEY_RESULT<KEY> inherited(KEY key) const {
        typedef DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind> ACCESS;
        const DEV_PAD_BODY* body = holder(key);
        return dev_attribute_defined_value(
            key, body != nullptr,
            body ? ACCESS::get(body->own(key), key) : dev_attribute_default<typename ACCESS::value_type>());
    }
    template <typename KEY, typename VALUE>
    bool inherited(KEY key, VALUE* value) const {
        const DEV_PAD_BODY* body = holder(key);
        return body && value && DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::get_into(body->own(key), key, value);
    }

    uint32_t m_id = DEV_ILLEGAL_PAD_ID;
    DEV_PAD_BODY* m_default_pad_body;  // not owned
    std::vector<DEV_IO_STANDARD_DESC*> m_io_standards;  // not owned
    DEV_IO_STANDARD_DESC* m_io_standards_by_enum[DEV_IO_STANDARD_MAX] = {};
};

template <typename SAME_DESC>
bool DEV_PAD_BODY::equals(const DEV_PAD_BODY& other, SAME_DESC same_desc) const {
    if (m_id != other.m_id || !attributes_equal(other) || m_io_standards.size() != other.m_io_standards.size())
        return false;
    for (size_t i = 0; i < m_io_standards.size(); ++i)
        if (!same_desc(m_io_standards[i], other.m_io_standards[i])) return false;
    for (int s = 0; s < DEV_IO_STANDARD_MAX; ++s)
        if (!same_desc(m_io_standards_by_enum[s], other.m_io_standards_by_enum[s])) return false;
    return true;
}

class DEV_EXPORT DEV_PAD : public DEV_HANDLE<DEV_PAD_BODY> {
public:
    explicit DEV_PAD(DEV_PAD_BODY* body) : DEV_HANDLE(body) {}
    DEV_PAD() = default;

    uint32_t get_id() const { return forward_or(DEV_ILLEGAL_PAD_ID, &DEV_PAD_BODY::get_id); }
    const std::vector<DEV_IO_STANDARD_DESC*>& get_io_standard_descs() const {
        return forward(&DEV_PAD_BODY::get_io_standard_descs);
    }
    DEV_IO_STANDARD_DESC* get_io_standard_desc_by_enum(DEV_IO_STANDARD_ENUM io_standard_enum) const {
        return forward(&DEV_PAD_BODY::get_io_standard_desc_by_enum, io_standard_enum);
    }

    static bool is_auto_match_pdb_xfr(DEV_PAD* object, PDB_MATCH_DATA* data);
};

#endif
