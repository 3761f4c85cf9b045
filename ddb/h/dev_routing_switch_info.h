// DEV_ROUTING_SWITCH_INFO: a device's routing switches, pass trees and global routing data,
// a handle over DEV_ROUTING_SWITCH_INFO_BODY. Reads forward to the body; writing is done on
// the body (get_body()).
#ifndef VELCORA_DEV_ROUTING_SWITCH_INFO_H
#define VELCORA_DEV_ROUTING_SWITCH_INFO_H

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_routing_switch_info_body.h"
#include "host/dstr_fwd.h"

class DEV_EXPORT DEV_ROUTING_SWITCH_INFO : public DEV_HANDLE<DEV_ROUTING_SWITCH_INFO_BODY> {
public:
    typedef DEV_ROUTING_SWITCH_INFO_BODY BODY;

    // Takes ownership of `body`; a null body is reported ("body != 0") but the handle is built.
    explicit DEV_ROUTING_SWITCH_INFO(DEV_ROUTING_SWITCH_INFO_BODY* body) : DEV_HANDLE(body) {}

    // Loads the device's "rsi" file that DEV_PATH finds: a persistent file replaces the body,
    // a text file is read into it ("m_body != 0"); either way the body is then initialized. A
    // missing file is the internal error "ROUTING_SWITCH_INFO's RSI file <path> not
    // installed". True when the data are loaded afterwards.
    bool load_data(DEV_DEVICE_ENUM device);
    // The file the last load_data read (empty when it found none).
    const FIO_PATH& get_loaded_path() const { return m_loaded_path; }
    bool is_data_loaded() const { return m_body && m_body->is_initialized(); }
    void destroy_data();

    DEV_ROUTING_GLOBAL_INFO* get_global_info() const { return forward(&BODY::get_global_info); }
    DEV_ROUTING_SWITCH_DESC* get_routing_switch_by_enum(DEV_ROUTING_SWITCH_ENUM key) const {
        return forward(&BODY::get_routing_switch_by_enum, key);
    }
    DEV_ROUTING_SWITCH_DESC* get_routing_switch_by_string(const char* name) const {
        return forward(&BODY::get_routing_switch_by_string, name);
    }
    DEV_PASS_TREE_DESC* get_pass_tree_by_enum(DEV_PASS_TREE_ENUM key) const {
        return forward(&BODY::get_pass_tree_by_enum, key);
    }
    DEV_PASS_TREE_DESC* get_pass_tree_by_string(const char* name) const {
        return forward(&BODY::get_pass_tree_by_string, name);
    }
    DEV_ROUTING_SWITCH_ENUM get_routing_switch_enum_by_mcf_string(const char* text) const;
    const char* get_nlspc_string_by_enum(DEV_ROUTING_SWITCH_ENUM key) const {
        return forward(&BODY::get_nlspc_string_by_enum, key);
    }
    bool has_nlspc_string_by_enum(DEV_ROUTING_SWITCH_ENUM key) const {
        return forward(&BODY::has_nlspc_string_by_enum, key);
    }
    const char* const* get_nlspc_string_list() const { return forward(&BODY::get_nlspc_string_list); }
    const char* const* const* get_all_string_lists() const { return forward(&BODY::get_all_string_lists); }

private:
    FIO_PATH m_loaded_path;
};

#endif
