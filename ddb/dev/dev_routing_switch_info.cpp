// DEV_ROUTING_SWITCH_INFO: loading a device's routing switches.
#include "dev_routing_switch_info.h"

#include "dev_path.h"
#include "host/msg.h"

bool DEV_ROUTING_SWITCH_INFO::load_data(DEV_DEVICE_ENUM device) {
    m_loaded_path = FIO_PATH();
    FIO_PATH path;
    if (!DEV_PATH::get_existing_device_file_path(device, "rsi", &path)) {
        DEV_INTERNAL_ERROR("ROUTING_SWITCH_INFO's RSI file " + path.full_path() + " not installed");
        return is_data_loaded();
    }
    DEV_DEBUG("Loading RSI file: %s", path.full_path().c_str());
    m_loaded_path = path;
    if (DEV_PATH::is_pdb_file(path)) {
        DEV_DEVICE* const owner = m_body ? m_body->get_device() : nullptr;
        set_body(BODY::load_rsi_from_pdb(path));
        if (m_body) m_body->set_device(owner);
    }
    // A persistent file that could not be read leaves no body.
    if (!DEV_ASSERT_TEXT(m_body != 0, "m_body != 0")) return false;
    const bool loaded = DEV_PATH::is_pdb_file(path) || m_body->read_rsi_file(path);
    m_body->set_initialized(loaded);
    return loaded;
}

void DEV_ROUTING_SWITCH_INFO::destroy_data() {
    if (m_body) m_body->destroy_data();
}

DEV_ROUTING_SWITCH_ENUM DEV_ROUTING_SWITCH_INFO::get_routing_switch_enum_by_mcf_string(const char* text) const {
    return forward_or(DEV_ROUTING_SWITCH_INVALID, &BODY::get_routing_switch_enum_by_mcf_string, text);
}
