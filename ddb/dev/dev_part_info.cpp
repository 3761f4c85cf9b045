// DEV_PART_INFO: loading a part's power-supply data, and the handle's own members.
#include "dev_part_info.h"

#include "dev_path.h"
#include "host/msg.h"
#include "host/tables/dev_part_enum.h"

bool DEV_PART_INFO::load_data(DEV_DEVICE* device, DEV_PART_ENUM part) {
    if (!DEV_ASSERT_TEXT(dstr_is_valid_dev_part_enum(part), "dstr_is_valid_dev_part_enum(part)")) return m_body != nullptr;
    DEV_ASSERT_TEXT(m_body == NULL, "m_body == NULL");
    FIO_PATH path;
    if (!DEV_PATH::get_existing_device_file_path(part, "part_info", &path)) {
        DEV_DEBUG("%s", (std::string("PART_INFO file for ") + dstr_get_debug_string(part) + " not installed").c_str());
        return m_body != nullptr;
    }
    DEV_DEBUG("Loading PART_INFO file: %s", path.full_path().c_str());
    if (DEV_PATH::is_pdb_file(path)) {
        set_body(BODY::load_from_pdb(path));
    } else {
        set_body(new BODY);
        m_body->read_ascii_file(path);
    }
    if (m_body) {
        m_body->set_part(part);
        m_body->set_device(device);
    }
    return m_body != nullptr;
}

bool DEV_PART_INFO::load_from_ascii(const FIO_PATH& path) {
    if (!m_body) set_body(new BODY);
    return m_body->read_ascii_file(path);
}

DEV_DEVICE* DEV_PART_INFO::get_device() const {
    DEV_ASSERT_TEXT(is_initialized(), "is_initialized()");
    return m_body ? m_body->get_device() : nullptr;
}

DEV_PART_ENUM DEV_PART_INFO::get_part() const { return forward_or(DEV_PART_INVALID, &BODY::get_part); }

void DEV_PART_INFO::add_power_supply(DEV_POWER_SUPPLY_DESC* desc) {
    if (BODY* body = body_to_write())
        body->add_power_supply(desc);
    else
        delete desc;
}
