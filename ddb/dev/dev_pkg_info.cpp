// DEV_PKG_INFO: loading a part's package pins.
#include "dev_pkg_info.h"

#include "dev_path.h"
#include "host/msg.h"

bool DEV_PKG_INFO::load_data(DEV_PART_ENUM part) {
    DEV_DEVICE* device = m_body ? m_body->get_device() : nullptr;
    FIO_PATH path;
    if (!DEV_PATH::get_existing_device_file_path(part, "pkg", &path)) {
        DEV_INTERNAL_ERROR("PKG file " + path.full_path() + " not installed");
        return m_body != nullptr;
    }
    DEV_DEBUG("Loading PKG file: %s", path.full_path().c_str());
    if (DEV_PATH::is_pdb_file(path)) {
        set_body(BODY::load_pkg_from_pdb(path));
        if (m_body) m_body->set_device(device);
    } else if (DEV_ASSERT_TEXT(m_body != NULL, "m_body != NULL")) {
        m_body->read_pkg_file(path);
    }
    return m_body != nullptr;
}
