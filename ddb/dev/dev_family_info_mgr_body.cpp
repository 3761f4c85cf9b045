// The catalogue store: record tables, per-family counts, the family folders and the
// gathering of records for output.
#include "dev_family_info_mgr_body.h"

#include <algorithm>

#include "dev_family_info.h"
#include "host/fio.h"
#include "host/gen.h"
#include "host/msg.h"

namespace {

template <typename TABLE>
auto slot_of(const TABLE& table, int index) -> decltype(table[0].get()) {
    if (index <= 0 || static_cast<size_t>(index) >= table.size()) return nullptr;
    return table[static_cast<size_t>(index)].get();
}

template <typename TABLE, typename DESC>
bool take_into(TABLE& table, int index, DESC* record, bool replace) {
    if (!record) return false;
    if (index <= 0 || static_cast<size_t>(index) >= table.size() || (table[index] && !replace)) {
        delete record;
        return false;
    }
    table[index].reset(record);
    return true;
}

}  // namespace

DEV_FAMILY_INFO_MGR_BODY* DEV_FAMILY_INFO_MGR_BODY::get_instance() {
    static DEV_FAMILY_INFO_MGR_BODY instance;
    // The load runs after construction, so queries made while loading (derived traits ask
    // the part manager) find the store instead of re-entering its initialisation.
    static bool load_started = false;
    if (!load_started) {
        load_started = true;
        instance.load_installed_catalogue();
    }
    return &instance;
}

bool DEV_FAMILY_INFO_MGR_BODY::load_installed_catalogue() {
    FIO_PATH cumulative;
    if (generate_pdb_path(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, nullptr, &cumulative) &&
        FIO_FILE_SYSTEM::exists(cumulative))
        return load_family_data(DEV_FAMILY_GENERIC);
    const std::string text = gen_get_velcora_path() + "h/dev_part_manager_auto.part";
    if (FIO_FILE_SYSTEM::exists(text)) return read_default_family_data();
    DEV_DEBUG("No device catalogue is installed under %s", gen_get_velcora_path().c_str());
    return false;
}

void DEV_FAMILY_INFO_MGR_BODY::clear() {
    for (auto& d : m_family_descriptors) d.reset();
    for (auto& d : m_device_descriptors) d.reset();
    for (auto& d : m_part_descriptors) d.reset();
    std::fill(m_device_count.begin(), m_device_count.end(), 0);
    std::fill(m_part_count.begin(), m_part_count.end(), 0);
    m_loaded_data_type = DEV_FAMILY_DATA_TYPE_INVALID;
}

DEV_FAMILY_INFO_MGR_BODY::DEV_FAMILY_INFO_MGR_BODY()
    : m_family_descriptors(DEV_FAMILY_MAX),
      m_device_descriptors(DEV_DEVICE_GENERIC + 1),
      m_part_descriptors(DEV_PART_GENERIC + 1),
      m_device_count(DEV_FAMILY_MAX, 0),
      m_part_count(DEV_FAMILY_MAX, 0),
      m_devices_folder(DEV_FAMILY_MAX) {
    init_devices_folder_by_family_enum();
}

DEV_FAMILY_INFO_MGR_BODY::~DEV_FAMILY_INFO_MGR_BODY() = default;

DEV_FAMILY_DESC* DEV_FAMILY_INFO_MGR_BODY::find_desc_of(DEV_FAMILY_ENUM family) const {
    return slot_of(m_family_descriptors, family);
}
DEV_DEVICE_DESC* DEV_FAMILY_INFO_MGR_BODY::find_desc_of(DEV_DEVICE_ENUM device) const {
    return slot_of(m_device_descriptors, device);
}
DEV_PART_DESC* DEV_FAMILY_INFO_MGR_BODY::find_desc_of(DEV_PART_ENUM part) const {
    return slot_of(m_part_descriptors, part);
}

DEV_FAMILY_DESC* DEV_FAMILY_INFO_MGR_BODY::get_desc_of(DEV_FAMILY_ENUM family) const {
    if (!DEV_ASSERT((family < DEV_FAMILY_GENERIC) && (family > DEV_FAMILY_INVALID))) return nullptr;
    DEV_FAMILY_DESC* desc = find_desc_of(family);
    if (!desc) DEV_INTERNAL_ERROR(std::string("Failed obtaining data for family ") + dstr_get_debug_string(family));
    return desc;
}
DEV_DEVICE_DESC* DEV_FAMILY_INFO_MGR_BODY::get_desc_of(DEV_DEVICE_ENUM device) const {
    if (!DEV_ASSERT((device < DEV_DEVICE_GENERIC) && (device > DEV_DEVICE_INVALID))) return nullptr;
    DEV_DEVICE_DESC* desc = find_desc_of(device);
    if (!desc) DEV_INTERNAL_ERROR(std::string("Failed obtaining data for device ") + dstr_get_debug_string(device));
    return desc;
}
DEV_PART_DESC* DEV_FAMILY_INFO_MGR_BODY::get_desc_of(DEV_PART_ENUM part) const {
    if (!DEV_ASSERT((part < DEV_PART_GENERIC) && (part > DEV_PART_INVALID))) return nullptr;
    DEV_PART_DESC* desc = find_desc_of(part);
    if (!desc) DEV_INTERNAL_ERROR(std::string("Failed obtaining data for part ") + dstr_get_debug_string(part));
    return desc;
}

DEV_FAMILY_ENUM DEV_FAMILY_INFO_MGR_BODY::get_family_of(DEV_DEVICE_ENUM device) const {
    const DEV_DEVICE_DESC* desc = get_desc_of(device);
    return desc ? desc->get_family() : DEV_FAMILY_INVALID;
}
DEV_FAMILY_ENUM DEV_FAMILY_INFO_MGR_BODY::get_family_of(DEV_PART_ENUM part) const {
    const DEV_PART_DESC* desc = get_desc_of(part);
    return desc ? desc->get_family() : DEV_FAMILY_INVALID;
}

bool DEV_FAMILY_INFO_MGR_BODY::take_desc(DEV_FAMILY_DESC* record, bool replace) {
    return take_into(m_family_descriptors, record ? record->get_family() : 0, record, replace);
}
bool DEV_FAMILY_INFO_MGR_BODY::take_desc(DEV_DEVICE_DESC* record, bool replace) {
    return take_into(m_device_descriptors, record ? record->get_device() : 0, record, replace);
}
bool DEV_FAMILY_INFO_MGR_BODY::take_desc(DEV_PART_DESC* record, bool replace) {
    return take_into(m_part_descriptors, record ? record->get_part() : 0, record, replace);
}

int DEV_FAMILY_INFO_MGR_BODY::get_device_count(DEV_FAMILY_ENUM family) const {
    return family > DEV_FAMILY_INVALID && family < DEV_FAMILY_MAX ? m_device_count[family] : 0;
}
int DEV_FAMILY_INFO_MGR_BODY::get_part_count(DEV_FAMILY_ENUM family) const {
    return family > DEV_FAMILY_INVALID && family < DEV_FAMILY_MAX ? m_part_count[family] : 0;
}

void DEV_FAMILY_INFO_MGR_BODY::init_devices_folder_by_family_enum() {
#define DEV_FAMILY_FOLDER(ENUMERATOR, FOLDER) m_devices_folder[ENUMERATOR] = FOLDER;
#include "host/tables/dev_family_folder.def"
#undef DEV_FAMILY_FOLDER
}

const std::string& DEV_FAMILY_INFO_MGR_BODY::get_devices_folder(DEV_FAMILY_ENUM family) const {
    static const std::string none;
    return family > DEV_FAMILY_INVALID && family < DEV_FAMILY_MAX ? m_devices_folder[family] : none;
}

void DEV_FAMILY_INFO_MGR_BODY::get_ddb_fullpath_of(DEV_FAMILY_ENUM family, std::string& path) const {
    path = gen_get_ddb_root();
    path += '/';
    path += get_devices_folder(family);
}

void DEV_FAMILY_INFO_MGR_BODY::prepare_output(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                              DEV_FAMILY_INFO* storage) const {
    if (!DEV_ASSERT(storage != NULL)) return;
    const bool all = family == DEV_FAMILY_GENERIC;
    const char* name = dstr_get_debug_string(family);
    const bool any_type = type != DEV_FAMILY_DATA_TYPE_FAMILY && type != DEV_FAMILY_DATA_TYPE_DEVICE &&
                          type != DEV_FAMILY_DATA_TYPE_PART;
    if (type == DEV_FAMILY_DATA_TYPE_FAMILY || any_type) {
        for (const auto& d : m_family_descriptors)
            if (d && (all || d->get_family() == family)) storage->m_family_data.push_back(d.get());
        if (storage->m_family_data.empty())
            DEV_DEBUG("FAMILY_DATA_MGR no family information for %s family", name);
        else
            DEV_DEBUG("Family info manager is preparing FAMILY DATA output for %s family", name);
    }
    if (type == DEV_FAMILY_DATA_TYPE_DEVICE || any_type) {
        for (const auto& d : m_device_descriptors)
            if (d && (all || d->get_family() == family)) storage->m_device_data.push_back(d.get());
        if (storage->m_device_data.empty())
            DEV_DEBUG("FAMILY_DATA_MGR has no device information for %s family", name);
        else
            DEV_DEBUG("Family info manager is preparing DEVICE DATA output for %s family", name);
    }
    if (type == DEV_FAMILY_DATA_TYPE_PART || any_type) {
        for (const auto& d : m_part_descriptors)
            if (d && (all || d->get_family() == family)) storage->m_part_data.push_back(d.get());
        if (storage->m_part_data.empty())
            DEV_DEBUG("FAMILY_DATA_MGR has no part information for %s family", name);
        else
            DEV_DEBUG("Family info manager is preparing PART DATA output for %s family", name);
    }
}
