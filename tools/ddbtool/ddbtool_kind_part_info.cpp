// The part-info kind: PART_INFO text and its persistent form, per part.
#include <cstdio>

#include "dev_part_info.h"
#include "dev_path.h"
#include "ddbtool_device_kind.h"
#include "host/tables/dev_part_enum.h"

namespace {

std::string counts_of(const DEV_PART_INFO_BODY& body) {
    char text[64];
    std::snprintf(text, sizeof text, "%zu power supplies", body.get_power_supply_desc_vec().size());
    return text;
}

class PART_INFO_DATA : public DDBTOOL_DEVICE_DATA {
public:
    bool read(const FIO_PATH& path) override {
        if (DEV_PATH::is_pdb_file(path)) {
            m_body.reset(DEV_PART_INFO_BODY::load_from_pdb(path));
            return m_body != nullptr;
        }
        m_body.reset(new DEV_PART_INFO_BODY);
        return m_body->read_ascii_file(path);
    }
    bool write_pdb(const FIO_PATH& path, int compression_level) override {
        return m_body->write_to_pdb(path, compression_level);
    }
    bool write_dump(const FIO_PATH& path) override { return m_body->write_ascii_file(path, 0); }
    std::string counts() const override { return counts_of(*m_body); }

private:
    std::unique_ptr<DEV_PART_INFO_BODY> m_body;
};

class PART_INFO_KIND : public DDBTOOL_DEVICE_KIND {
public:
    const char* type() const override { return "part_info"; }
    const char* description() const override { return "part info"; }
    std::unique_ptr<DDBTOOL_DEVICE_DATA> create() const override { return std::make_unique<PART_INFO_DATA>(); }
    // Per part: without a part there is none.
    bool locate(DEV_DEVICE_ENUM, DEV_PART_ENUM part, FIO_PATH* path) const override {
        return part != DEV_PART_INVALID && DEV_PATH::get_existing_device_file_path(part, "part_info", path);
    }
    std::string describe(const DEV_DEVICE& device) const override {
        const DEV_PART_INFO* info = device.get_part_info();
        return info && info->get_body() ? counts_of(*info->get_body()) : std::string();
    }
};

}  // namespace

const DDBTOOL_DEVICE_KIND& ddbtool_kind_part_info() {
    static const PART_INFO_KIND kind;
    return kind;
}
