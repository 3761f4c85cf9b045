// DEV_PART_MANAGER: selection of parts by family, device, package, pin count and speed
// grade, and the test whether a device's data are installed.
#include <cstdlib>

#include "dev_family_info_mgr_body.h"
#include "dev_part_manager.h"
#include "dev_path_search.h"
#include "host/gen.h"
#include "host/msg.h"

namespace {

bool is_any(const std::string& text) { return gen_stricmp(text.c_str(), "any") == 0; }

// One name criterion of the filter: "any", a value of the criterion's own enumeration, a
// part trait standing in for it, or an unknown name that no part meets.
struct NAME_CRITERION {
    enum KIND { ANY, VALUE, TRAIT, NOTHING } kind = ANY;
    int value = 0;
};

NAME_CRITERION name_criterion(const std::string& text, const DSTR_TABLE& names, bool trait_allowed) {
    NAME_CRITERION c;
    if (is_any(text)) return c;
    if (names.exists_by_string(text)) {
        c.kind = NAME_CRITERION::VALUE;
        c.value = names.get_by_string(text);
    } else if (trait_allowed && dstr_exists_dev_part_trait_enum_by_string(text)) {
        c.kind = NAME_CRITERION::TRAIT;
        c.value = dstr_get_dev_part_trait_enum_by_string(text);
    } else {
        c.kind = NAME_CRITERION::NOTHING;
    }
    return c;
}

bool meets(const NAME_CRITERION& c, int value, const DEV_PART_DESC& part) {
    switch (c.kind) {
        case NAME_CRITERION::ANY: return true;
        case NAME_CRITERION::VALUE: return value == c.value;
        case NAME_CRITERION::TRAIT: return part.has_trait(static_cast<DEV_PART_TRAIT_ENUM>(c.value));
        default: return false;
    }
}

}  // namespace

void DEV_PART_MANAGER::filter_part_list(std::vector<DEV_PART_ENUM>* parts, const std::string& family,
                                        const std::string& device, const std::string& package,
                                        const std::string& pin_count, const std::string& speed) const {
    DEV_DEBUG("==> FILTER: family = %s, device = %s, package = %s, pin_count = %s, speed = %s", family.c_str(),
              device.c_str(), package.c_str(), pin_count.c_str(), speed.c_str());
    if (!DEV_ASSERT(parts != NULL) || !m_store) return;

    const NAME_CRITERION family_c = name_criterion(family, dstr_table_dev_family_enum(), false);
    const NAME_CRITERION device_c = name_criterion(device, dstr_table_dev_device_enum(), false);
    const NAME_CRITERION package_c = name_criterion(package, dstr_table_dev_pkg_enum(), true);
    const NAME_CRITERION speed_c = name_criterion(speed, dstr_table_dev_speed_enum(), true);
    const int pins = is_any(pin_count) ? 0 : std::atoi(pin_count.c_str());

    // Whether each device is installed, asked once per device in this selection.
    std::vector<signed char> installed(DEV_DEVICE_MAX, -1);
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_MAX; ++p) {
        if (p == DEV_PART_GENERIC) continue;
        const DEV_PART_DESC* d = m_store->find_desc_of(static_cast<DEV_PART_ENUM>(p));
        if (!d) continue;
        if (!meets(family_c, d->get_family(), *d) || !meets(device_c, d->get_device(), *d)) continue;
        if (pins > 0 && d->get_pin_count() != pins) continue;
        if (!meets(package_c, d->get_package(), *d) || !meets(speed_c, d->get_speed_grade(), *d)) continue;
        const DEV_DEVICE_ENUM dev = d->get_device();
        if (dev <= DEV_DEVICE_INVALID || dev >= DEV_DEVICE_MAX) continue;
        if (installed[dev] < 0) installed[dev] = device_is_installed(dev) ? 1 : 0;
        if (installed[dev]) parts->push_back(static_cast<DEV_PART_ENUM>(p));
    }
}

bool DEV_PART_MANAGER::device_is_installed(DEV_DEVICE_ENUM device) const {
    const DEV_DEVICE_DESC* d = device_desc(device);
    if (!d) return false;
    FIO_PATH path;
    if (!dev_path_find_file(*m_store, device, "device", &path)) return false;
    const DEV_FAMILY_DESC* family = m_store->find_desc_of(d->get_family());
    if (family && (family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT) || family->has_trait(DEV_FAMILY_TRAIT_REQUIRES_HDR_DATA)))
        return dev_path_find_file(*m_store, device, "hdr", &path);
    return true;
}
