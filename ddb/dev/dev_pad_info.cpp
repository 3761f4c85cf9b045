// DEV_PAD_INFO: loading a device's pads.
#include "dev_pad_info.h"

#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_path.h"
#include "host/cfg.h"
#include "host/msg.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_part_enum.h"

namespace {
// "dev_load_pad_info_from_ascii": load_data(path) reads the text beside the persistent file.
const CFG_SWITCH LOAD_PAD_INFO_FROM_ASCII("dev_load_pad_info_from_ascii", false);
}  // namespace

bool DEV_PAD_INFO::load_data(DEV_PART_ENUM part) {
    DEV_DEVICE* device = m_body ? m_body->get_device() : nullptr;
    FIO_PATH path;
    bool found;
    if (part != DEV_PART_INVALID) {
        found = DEV_PATH::get_existing_device_file_path(part, "pad", &path);
    } else {
        // Opened for a device: the device's own file, the device known from its basic info.
        DEV_BASIC_INFO* basic_info = device ? device->get_basic_info() : nullptr;
        const DEV_DEVICE_ENUM device_enum = basic_info ? basic_info->get_device_enum() : DEV_DEVICE_INVALID;
        found = device_enum > DEV_DEVICE_INVALID && device_enum < DEV_DEVICE_GENERIC &&
                DEV_PATH::get_existing_device_file_path(device_enum, "pad", &path, basic_info);
    }
    if (!found) {
        DEV_INTERNAL_ERROR("PAD file " + path.full_path() + " not installed");
        return m_body != nullptr;
    }
    DEV_DEBUG("Loading PAD file: %s", path.full_path().c_str());
    if (DEV_PATH::is_pdb_file(path)) {
        set_body(BODY::load_pad_from_pdb(path));
        if (m_body) m_body->set_device(device);
    } else if (DEV_ASSERT_TEXT(m_body != NULL, "m_body != NULL")) {
        m_body->read_pad_file(path);
    }
    return m_body != nullptr;
}

bool DEV_PAD_INFO::load_data(const FIO_PATH& path) {
    DEV_DEVICE* device = m_body ? m_body->get_device() : nullptr;
    if (!LOAD_PAD_INFO_FROM_ASCII.is_on()) {
        set_body(BODY::load_pad_from_pdb(path));
        if (m_body) m_body->set_device(device);
    } else if (m_body) {
        FIO_PATH text = path;
        text.set_extension("pad");
        m_body->read_pad_file(text);
    }
    return m_body != nullptr;
}
