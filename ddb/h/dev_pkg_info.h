// DEV_PKG_INFO: one device package's pins and the pads they are bonded to, a handle over
// DEV_PKG_INFO_BODY. Reads forward to the body; writing is done on the body (get_body()).
#ifndef VELCORA_DEV_PKG_INFO_H
#define VELCORA_DEV_PKG_INFO_H

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_pkg_info_body.h"
#include "host/dstr_fwd.h"

class DEV_EXPORT DEV_PKG_INFO : public DEV_HANDLE<DEV_PKG_INFO_BODY> {
public:
    typedef DEV_PKG_INFO_BODY BODY;
    explicit DEV_PKG_INFO(DEV_PKG_INFO_BODY* body) : DEV_HANDLE(body) {}

    // Loads the part's package pins: the "pkg" file that DEV_PATH finds for the part. A
    // persistent file replaces the body (the device pointer carried over); a text file is
    // read into it. A missing file is the internal error "PKG file <path> not installed".
    // True when a body exists afterwards.
    bool load_data(DEV_PART_ENUM part);

    DEV_DEVICE* get_device() const { return forward(&BODY::get_device); }
    DEV_PKG_ENUM get_package_enum() const { return forward(&BODY::get_package_enum); }
    uint32_t get_number_of_pins() const { return forward(&BODY::get_number_of_pins); }
    uint32_t get_pin_id_by_string(const std::string& name) const {
        return forward_or(DEV_ILLEGAL_PIN_ID, &BODY::get_pin_id_by_string, name);
    }
    const std::vector<uint32_t>& get_list_of_pad_ids(uint32_t pin_id) const {
        return forward(&BODY::get_list_of_pad_ids, pin_id);
    }
    bool get_pin_bool_data(uint32_t id, DEV_PIN_BOOL_DATA_ENUM key) const {
        return forward(&BODY::get_pin_bool_data, id, key);
    }
    int get_pin_int_data(uint32_t id, DEV_PIN_INT_DATA_ENUM key) const { return forward(&BODY::get_pin_int_data, id, key); }
    const std::string& get_pin_string_data(uint32_t id, DEV_PIN_STRING_DATA_ENUM key) const {
        return forward(&BODY::get_pin_string_data, id, key);
    }
    const DEV_INT_VECTOR& get_pin_vec_int_data(uint32_t id, DEV_PIN_VEC_INT_DATA_ENUM key) const {
        return forward(&BODY::get_pin_vec_int_data, id, key);
    }
    // Whether some pin has the key; whether pin `id` has it (false without a body).
    bool is_valid_pin_bool_enum(DEV_PIN_BOOL_DATA_ENUM key) const { return m_body && m_body->is_valid_pin_bool_enum(key); }
    bool is_valid_pin_int_enum(DEV_PIN_INT_DATA_ENUM key) const { return m_body && m_body->is_valid_pin_int_enum(key); }
    bool is_valid_pin_string_enum(DEV_PIN_STRING_DATA_ENUM key) const {
        return m_body && m_body->is_valid_pin_string_enum(key);
    }
    bool is_valid_pin_vec_int_enum(DEV_PIN_VEC_INT_DATA_ENUM key) const {
        return m_body && m_body->is_valid_pin_vec_int_enum(key);
    }
    bool is_valid_pin_bool_enum(uint32_t id, DEV_PIN_BOOL_DATA_ENUM key) const {
        return m_body && m_body->is_valid_pin_bool_enum(id, key);
    }
    bool is_valid_pin_int_enum(uint32_t id, DEV_PIN_INT_DATA_ENUM key) const {
        return m_body && m_body->is_valid_pin_int_enum(id, key);
    }
    bool is_valid_pin_string_enum(uint32_t id, DEV_PIN_STRING_DATA_ENUM key) const {
        return m_body && m_body->is_valid_pin_string_enum(id, key);
    }
    bool is_valid_pin_vec_int_enum(uint32_t id, DEV_PIN_VEC_INT_DATA_ENUM key) const {
        return m_body && m_body->is_valid_pin_vec_int_enum(id, key);
    }
};

#endif
