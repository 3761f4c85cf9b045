// What the pad and package tests share: devices that stand in for a real one (their basic
// info holds only the enumerators the PAD reader asks for), reading texts written to a
// temporary directory, and the bundled installation's files.
#ifndef VELCORA_TESTS_PADS_FIXTURE_H
#define VELCORA_TESTS_PADS_FIXTURE_H

#include <algorithm>
#include <memory>
#include <string>

#include "capture_fixture.h"
#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pad_info.h"
#include "dev_pkg_info.h"
#include "host/dstr.h"

// A device of a family with the new-format pad names, and one without.
inline const char* const NEW_FORMAT_DEVICE = "OS6G2700";
inline const char* const OLD_FORMAT_DEVICE = "CV2E004";

inline std::unique_ptr<DEV_DEVICE> stand_in_device(const char* name) {
    const DEV_DEVICE_ENUM device = dstr_get_dev_device_enum_by_string(name);
    auto* basic = new DEV_BASIC_INFO_BODY;
    basic->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, device);
    basic->set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY,
                         DEV_FAMILY_INFO_MGR_BODY::get_instance()->find_desc_of(device)->get_family());
    auto* body = new DEV_DEVICE_BODY;
    body->set_ace_info(nullptr);
    body->set_part_info(nullptr);
    body->set_basic_info(new DEV_BASIC_INFO(basic));
    return std::make_unique<DEV_DEVICE>(body);
}

class PadTextTest : public CaptureTest {
protected:
    // Reads `text` (written as NAME) into a fresh pad info of the device.
    DEV_PAD_INFO_BODY& read(const std::string& text, const char* device = NEW_FORMAT_DEVICE,
                            const std::string& name = "pads.pad") {
        m_device = stand_in_device(device);
        m_pads = std::make_unique<DEV_PAD_INFO_BODY>();
        m_pads->set_device(m_device.get());
        m_pads->read_pad_file(FIO_PATH(m_dir.write(name, text)));
        return *m_pads;
    }
    DEV_PKG_INFO_BODY& read_pkg(const std::string& text, const std::string& name = "pins.pkg") {
        m_pkg = std::make_unique<DEV_PKG_INFO_BODY>();
        m_pkg->read_pkg_file(FIO_PATH(m_dir.write(name, text)));
        return *m_pkg;
    }
    bool has_error(const std::string& text) const {
        const std::vector<std::string> all = errors();
        return std::find(all.begin(), all.end(), text) != all.end();
    }
    // A report that begins with `prefix` and holds `part`.
    static bool any_like(const std::vector<std::string>& texts, const std::string& prefix, const std::string& part) {
        return std::any_of(texts.begin(), texts.end(), [&](const std::string& t) {
            return t.rfind(prefix, 0) == 0 && t.find(part) != std::string::npos;
        });
    }
    bool has_note(const std::string& text) const {
        const std::vector<std::string> all = notes();
        return std::find(all.begin(), all.end(), text) != all.end();
    }

    TempDir m_dir;
    std::unique_ptr<DEV_DEVICE> m_device;
    std::unique_ptr<DEV_PAD_INFO_BODY> m_pads;
    std::unique_ptr<DEV_PKG_INFO_BODY> m_pkg;
};

#endif
