// The basic-info kind: HDR text and its persistent form.
#include <cstdio>

#include "dev_basic_info.h"
#include "dev_path.h"
#include "ddbtool_device_kind.h"
#include "host/tables/dev_device_enum.h"

namespace {

std::string counts_of(const DEV_BASIC_INFO_BODY& body) {
    char text[128];
    std::snprintf(text, sizeof text, "%zu locations, %zu elements, %zu ports", body.get_location_descs().size(),
                  body.get_element_descs().size(), body.get_port_descs().size());
    return text;
}

class BASIC_INFO_DATA : public DDBTOOL_DEVICE_DATA {
public:
    bool read(const FIO_PATH& path) override {
        if (DEV_PATH::is_pdb_file(path)) {
            m_body.reset(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(path));
            return m_body != nullptr;
        }
        m_body.reset(new DEV_BASIC_INFO_BODY);
        return m_body->read_hdr_file(path);
    }
    bool write_pdb(const FIO_PATH& path, int compression_level) override {
        return m_body->write_hdr_to_pdb(path, compression_level);
    }
    bool write_dump(const FIO_PATH& path) override { return m_body->write_hdr_file(path, 0); }
    std::string counts() const override { return counts_of(*m_body); }

private:
    std::unique_ptr<DEV_BASIC_INFO_BODY> m_body;
};

class BASIC_INFO_KIND : public DDBTOOL_DEVICE_KIND {
public:
    const char* type() const override { return "hdr"; }
    const char* description() const override { return "basic info"; }
    std::unique_ptr<DDBTOOL_DEVICE_DATA> create() const override { return std::make_unique<BASIC_INFO_DATA>(); }
    bool locate(DEV_DEVICE_ENUM device, DEV_PART_ENUM, FIO_PATH* path) const override {
        return DEV_PATH::get_existing_device_file_path(device, "hdr", path);
    }
    std::string describe(const DEV_DEVICE& device) const override {
        const DEV_BASIC_INFO* info = device.get_basic_info();
        return info && info->get_body() ? counts_of(*info->get_body()) : std::string();
    }
};

}  // namespace

const DDBTOOL_DEVICE_KIND& ddbtool_kind_hdr() {
    static const BASIC_INFO_KIND kind;
    return kind;
}
