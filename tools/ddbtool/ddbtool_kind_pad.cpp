// The pad kind: PAD text and its persistent form. A PAD text is read for its device (the
// reader asks the device's family whether pad names come in the new-format lists), which
// the file's name gives: ddb_<device>.pad, or ddb_<device>_pad.ddb.
#include <cctype>
#include <cstdio>

#include "ddbtool.h"
#include "ddbtool_device_kind.h"
#include "dev_basic_info.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pad_info.h"
#include "dev_path.h"
#include "host/dstr.h"

namespace {

std::string counts_of(const DEV_PAD_INFO_BODY& body) {
    char text[160];
    std::snprintf(text, sizeof text, "%u pads, %d I/O standards, %d I/O rules", body.get_number_of_pads(),
                  body.get_total_io_standards(), body.get_total_io_rules());
    return text;
}

// The device of a file named ddb_<device>.pad or ddb_<device>_pad.ddb (DEV_DEVICE_INVALID
// when the name gives none).
DEV_DEVICE_ENUM device_of(const FIO_PATH& path) {
    std::string name = path.base_name();
    if (DEV_PATH::is_pdb_file(path) && name.size() > 4 && name.compare(name.size() - 4, 4, "_pad") == 0)
        name.resize(name.size() - 4);
    if (name.compare(0, 4, "ddb_") != 0) return DEV_DEVICE_INVALID;
    name.erase(0, 4);
    for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return dstr_get_dev_device_enum_by_string(name);
}

// A device with only its basic info's enumerators, as the PAD reader needs it.
DEV_DEVICE* stand_in_device(DEV_DEVICE_ENUM device) {
    auto* basic = new DEV_BASIC_INFO_BODY;
    const DEV_DEVICE_DESC* record = DEV_FAMILY_INFO_MGR_BODY::get_instance()->find_desc_of(device);
    basic->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, device);
    if (record) basic->set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY, record->get_family());
    auto* body = new DEV_DEVICE_BODY;
    body->set_ace_info(nullptr);
    body->set_part_info(nullptr);
    body->set_basic_info(new DEV_BASIC_INFO(basic));
    return new DEV_DEVICE(body);
}

class PAD_DATA : public DDBTOOL_DEVICE_DATA {
public:
    bool read(const FIO_PATH& path) override {
        if (DEV_PATH::is_pdb_file(path)) {
            m_body.reset(DEV_PAD_INFO_BODY::load_pad_from_pdb(path));
            return m_body != nullptr;
        }
        const DEV_DEVICE_ENUM device = device_of(path);
        if (device == DEV_DEVICE_INVALID) {
            ddbtool_error("device", path.full_path() + ": the device is not known from the name (ddb_<device>.pad)");
            return false;
        }
        m_device.reset(stand_in_device(device));
        m_body.reset(new DEV_PAD_INFO_BODY);
        m_body->set_device(m_device.get());
        return m_body->read_pad_file(path);
    }
    bool write_pdb(const FIO_PATH& path, int compression_level) override {
        return m_body->write_pad_to_pdb(path, compression_level);
    }
    bool write_dump(const FIO_PATH& path) override { return m_body->write_pad_file(path, 0); }
    std::string counts() const override { return counts_of(*m_body); }

private:
    std::unique_ptr<DEV_DEVICE> m_device;
    std::unique_ptr<DEV_PAD_INFO_BODY> m_body;
};

class PAD_KIND : public DDBTOOL_DEVICE_KIND {
public:
    const char* type() const override { return "pad"; }
    const char* description() const override { return "pads"; }
    std::unique_ptr<DDBTOOL_DEVICE_DATA> create() const override { return std::make_unique<PAD_DATA>(); }
    bool locate(DEV_DEVICE_ENUM device, DEV_PART_ENUM part, FIO_PATH* path) const override {
        return part != DEV_PART_INVALID ? DEV_PATH::get_existing_device_file_path(part, "pad", path)
                                        : DEV_PATH::get_existing_device_file_path(device, "pad", path);
    }
    std::string describe(const DEV_DEVICE& device) const override {
        const DEV_PAD_INFO* info = device.get_pad_info();
        return info && info->get_body() ? counts_of(*info->get_body()) : std::string();
    }
};

}  // namespace

const DDBTOOL_DEVICE_KIND& ddbtool_kind_pad() {
    static const PAD_KIND kind;
    return kind;
}
