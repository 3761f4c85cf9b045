// DEV_BASIC_INFO: loading the device's basic info, and its enumerators.
#include "dev_basic_info.h"

#include "dev_path.h"
#include "host/msg.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_part_enum.h"

bool DEV_BASIC_INFO::load_data() {
    const BODY* body = body_to_read();
    if (!body) return false;
    const DEV_DEVICE_ENUM device = body->get_device_enum();
    const DEV_FAMILY_ENUM family = body->get_family_enum();
    m_loaded_path = FIO_PATH();
    FIO_PATH path;
    const bool found = device == DEV_DEVICE_GENERIC ? DEV_PATH::get_existing_device_file_path(family, "hdr", &path)
                                                    : DEV_PATH::get_existing_device_file_path(device, "hdr", &path);
    if (!found) {
        DEV_INTERNAL_ERROR("BASIC_INFO's HDR file " + path.full_path() + " not installed");
        return m_body != nullptr;
    }
    DEV_DEBUG("Loading HDR file: %s", path.full_path().c_str());
    m_loaded_path = path;
    if (DEV_PATH::is_pdb_file(path)) {
        set_body(BODY::load_hdr_from_pdb(path));
    } else if (DEV_ASSERT_TEXT(m_body != 0, "m_body != 0")) {
        m_body->read_hdr_file(path);
    }
    return m_body != nullptr;
}

DEV_DEVICE_ENUM DEV_BASIC_INFO::get_device_enum() const { return forward_or(DEV_DEVICE_INVALID, &BODY::get_device_enum); }

DEV_FAMILY_ENUM DEV_BASIC_INFO::get_family_enum() const { return forward_or(DEV_FAMILY_INVALID, &BODY::get_family_enum); }

DEV_PART_ENUM DEV_BASIC_INFO::get_part_enum() const { return forward_or(DEV_PART_INVALID, &BODY::get_part_enum); }
