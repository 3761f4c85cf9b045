// The package kind: PKG text and its persistent form.
#include <cstdio>

#include "ddbtool_device_kind.h"
#include "dev_path.h"
#include "dev_pkg_info.h"
#include "host/tables/dev_part_enum.h"

namespace {

std::string counts_of(const DEV_PKG_INFO_BODY& body) {
    size_t bonded = 0;
    for (const DEV_PIN* pin : body.get_pins()) bonded += !pin->get_list_of_pad_ids().empty();
    char text[128];
    std::snprintf(text, sizeof text, "%u pins, %zu of them bonded to pads", body.get_number_of_pins(), bonded);
    return text;
}

class PKG_DATA : public DDBTOOL_DEVICE_DATA {
public:
    bool read(const FIO_PATH& path) override {
        if (DEV_PATH::is_pdb_file(path)) {
            m_body.reset(DEV_PKG_INFO_BODY::load_pkg_from_pdb(path));
            return m_body != nullptr;
        }
        m_body.reset(new DEV_PKG_INFO_BODY);
        return m_body->read_pkg_file(path);
    }
    bool write_pdb(const FIO_PATH& path, int compression_level) override {
        return m_body->write_pkg_to_pdb(path, compression_level);
    }
    bool write_dump(const FIO_PATH& path) override { return m_body->write_pkg_file(path, 0); }
    std::string counts() const override { return counts_of(*m_body); }

private:
    std::unique_ptr<DEV_PKG_INFO_BODY> m_body;
};

class PKG_KIND : public DDBTOOL_DEVICE_KIND {
public:
    const char* type() const override { return "pkg"; }
    const char* description() const override { return "package pins"; }
    std::unique_ptr<DDBTOOL_DEVICE_DATA> create() const override { return std::make_unique<PKG_DATA>(); }
    // A package belongs to a part; a device alone has none.
    bool locate(DEV_DEVICE_ENUM, DEV_PART_ENUM part, FIO_PATH* path) const override {
        return part != DEV_PART_INVALID && DEV_PATH::get_existing_device_file_path(part, "pkg", path);
    }
    std::string describe(const DEV_DEVICE& device) const override {
        const DEV_PKG_INFO* info = device.get_pkg_info();
        return info && info->get_body() ? counts_of(*info->get_body()) : std::string();
    }
};

}  // namespace

const DDBTOOL_DEVICE_KIND& ddbtool_kind_pkg() {
    static const PKG_KIND kind;
    return kind;
}
