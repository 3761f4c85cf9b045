// The routing-switch kind: RSI text and its persistent form.
#include <cstdio>

#include "dev_path.h"
#include "dev_routing_switch_info.h"
#include "ddbtool_device_kind.h"

namespace {

std::string counts_of(const DEV_ROUTING_SWITCH_INFO_BODY& body) {
    char text[96];
    std::snprintf(text, sizeof text, "%d routing switches, %d pass trees", body.get_total_routing_switches(),
                  body.get_total_pass_trees());
    return text;
}

class RSI_DATA : public DDBTOOL_DEVICE_DATA {
public:
    bool read(const FIO_PATH& path) override {
        if (DEV_PATH::is_pdb_file(path)) {
            m_body.reset(DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(path));
            return m_body != nullptr;
        }
        m_body.reset(new DEV_ROUTING_SWITCH_INFO_BODY);
        return m_body->read_rsi_file(path);
    }
    bool write_pdb(const FIO_PATH& path, int compression_level) override {
        return m_body->write_rsi_to_pdb(path, compression_level);
    }
    bool write_dump(const FIO_PATH& path) override { return m_body->write_rsi_file(path, 0); }
    std::string counts() const override { return counts_of(*m_body); }

private:
    std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY> m_body;
};

class RSI_KIND : public DDBTOOL_DEVICE_KIND {
public:
    const char* type() const override { return "rsi"; }
    const char* description() const override { return "routing switches"; }
    std::unique_ptr<DDBTOOL_DEVICE_DATA> create() const override { return std::make_unique<RSI_DATA>(); }
    bool locate(DEV_DEVICE_ENUM device, DEV_PART_ENUM, FIO_PATH* path) const override {
        return DEV_PATH::get_existing_device_file_path(device, "rsi", path);
    }
    std::string describe(const DEV_DEVICE& device) const override {
        const DEV_ROUTING_SWITCH_INFO* info = device.get_routing_switch_info();
        return info && info->is_data_loaded() ? counts_of(*info->get_body()) : std::string();
    }
};

}  // namespace

const DDBTOOL_DEVICE_KIND& ddbtool_kind_rsi() {
    static const RSI_KIND kind;
    return kind;
}
