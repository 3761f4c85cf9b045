// The catalogue store: record tables, per-family counts, the family folders, the lists
// derived from the records, the gathering of records for output and the derived part traits.
#include "dev_family_info_mgr_body.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

#include "dev_family_info.h"
#include "dev_part_manager_cache.h"
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

void DEV_FAMILY_INFO_MGR_BODY::clear() {
    for (auto& d : m_family_descriptors) d.reset();
    for (auto& d : m_device_descriptors) d.reset();
    for (auto& d : m_part_descriptors) d.reset();
    std::fill(m_device_count.begin(), m_device_count.end(), 0);
    std::fill(m_part_count.begin(), m_part_count.end(), 0);
    m_loaded_data_type = DEV_FAMILY_DATA_TYPE_INVALID;
    invalidate_derived_lists();
}

DEV_FAMILY_INFO_MGR_BODY::DEV_FAMILY_INFO_MGR_BODY()
    : m_family_descriptors(DEV_FAMILY_MAX),
      m_device_descriptors(DEV_DEVICE_GENERIC + 1),
      m_part_descriptors(DEV_PART_GENERIC + 1),
      m_device_count(DEV_FAMILY_MAX, 0),
      m_part_count(DEV_FAMILY_MAX, 0),
      m_devices_folder(DEV_FAMILY_MAX),
      m_derived_lists(new DEV_PART_LIST_CACHE) {
    init_devices_folder_by_family_enum();
}

DEV_FAMILY_INFO_MGR_BODY::~DEV_FAMILY_INFO_MGR_BODY() = default;

DEV_PART_LIST_CACHE& DEV_FAMILY_INFO_MGR_BODY::get_derived_lists() const { return *m_derived_lists; }

void DEV_FAMILY_INFO_MGR_BODY::invalidate_derived_lists() { m_derived_lists->clear(); }

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
    if (!DEV_ASSERT_TEXT((family < DEV_FAMILY_GENERIC) && (family > DEV_FAMILY_INVALID), "(family < DEV_FAMILY_GENERIC) && (family > DEV_FAMILY_INVALID)")) return nullptr;
    DEV_FAMILY_DESC* desc = find_desc_of(family);
    if (!desc) DEV_INTERNAL_ERROR(std::string("Failed obtaining data for family ") + dstr_get_debug_string(family));
    return desc;
}
DEV_DEVICE_DESC* DEV_FAMILY_INFO_MGR_BODY::get_desc_of(DEV_DEVICE_ENUM device) const {
    if (!DEV_ASSERT_TEXT((device < DEV_DEVICE_GENERIC) && (device > DEV_DEVICE_INVALID), "(device < DEV_DEVICE_GENERIC) && (device > DEV_DEVICE_INVALID)")) return nullptr;
    DEV_DEVICE_DESC* desc = find_desc_of(device);
    if (!desc) DEV_INTERNAL_ERROR(std::string("Failed obtaining data for device ") + dstr_get_debug_string(device));
    return desc;
}
DEV_PART_DESC* DEV_FAMILY_INFO_MGR_BODY::get_desc_of(DEV_PART_ENUM part) const {
    if (!DEV_ASSERT_TEXT((part < DEV_PART_GENERIC) && (part > DEV_PART_INVALID), "(part < DEV_PART_GENERIC) && (part > DEV_PART_INVALID)")) return nullptr;
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
    const bool taken = take_into(m_family_descriptors, record ? record->get_family() : 0, record, replace);
    if (taken) invalidate_derived_lists();
    return taken;
}
bool DEV_FAMILY_INFO_MGR_BODY::take_desc(DEV_DEVICE_DESC* record, bool replace) {
    const bool taken = take_into(m_device_descriptors, record ? record->get_device() : 0, record, replace);
    if (taken) invalidate_derived_lists();
    return taken;
}
bool DEV_FAMILY_INFO_MGR_BODY::take_desc(DEV_PART_DESC* record, bool replace) {
    const bool taken = take_into(m_part_descriptors, record ? record->get_part() : 0, record, replace);
    if (taken) invalidate_derived_lists();
    return taken;
}

int DEV_FAMILY_INFO_MGR_BODY::get_device_count(DEV_FAMILY_ENUM family) const {
    return family > DEV_FAMILY_INVALID && family < DEV_FAMILY_MAX ? m_device_count[family] : 0;
}
int DEV_FAMILY_INFO_MGR_BODY::get_part_count(DEV_FAMILY_ENUM family) const {
    return family > DEV_FAMILY_INVALID && family < DEV_FAMILY_MAX ? m_part_count[family] : 0;
}
void DEV_FAMILY_INFO_MGR_BODY::count_new_record(DEV_FAMILY_ENUM family, bool part) {
    if (family > DEV_FAMILY_INVALID && family < DEV_FAMILY_MAX) ++(part ? m_part_count : m_device_count)[family];
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
    if (!DEV_ASSERT_TEXT(storage != NULL, "storage != NULL")) return;
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

// A part is supported by the compiler when its family record is known and marked neither
// NO_COMPILER_SUPPORT nor NOT_INSTALLED; the part's COMPILER_SUPPORTED trait is set or
// cleared accordingly (parts of families not loaded are left as they are).
void DEV_FAMILY_INFO_MGR_BODY::generate_part_support_traits() {
    for (auto& p : m_part_descriptors) {
        if (!p) continue;
        const DEV_FAMILY_DESC* f = find_desc_of(p->get_family());
        if (!f) continue;
        const bool supported =
            !f->has_trait(DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT) && !f->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED);
        if (supported)
            p->traits().set(DEV_PART_TRAIT_COMPILER_SUPPORTED);
        else
            p->traits().clear(DEV_PART_TRAIT_COMPILER_SUPPORTED);
    }
}

// Parts of one device in one package at one temperature grade differ only by speed grade.
// A speed grade's number is the leading number of its name ("2" for "2L"); a lower number is
// faster. In each such group the parts with the lowest number get FASTEST_SPEED_GRADE and
// those with the highest number SLOWEST_SPEED_GRADE (a group of one grade gets both). Parts
// without a speed grade take no part and keep their traits.
void DEV_FAMILY_INFO_MGR_BODY::generate_fastest_part_traits() {
    // Each grade's number once; then the graded parts sorted by group, each group a run.
    std::vector<long> number_of(DEV_SPEED_GENERIC, 0);
    for (int s = DEV_SPEED_INVALID + 1; s < DEV_SPEED_GENERIC; ++s)
        number_of[s] = std::strtol(dstr_get_user_string(static_cast<DEV_SPEED_ENUM>(s)), nullptr, 10);
    struct GRADED {
        std::tuple<int, int, int> group;  // device, package, temperature grade
        long number;
        DEV_PART_DESC* part;
    };
    std::vector<GRADED> graded;
    for (auto& p : m_part_descriptors)
        if (p && p->get_speed_grade() > DEV_SPEED_INVALID && p->get_speed_grade() < DEV_SPEED_GENERIC)
            graded.push_back({std::make_tuple(static_cast<int>(p->get_device()), static_cast<int>(p->get_package()),
                                              static_cast<int>(p->get_temperature_grade())),
                              number_of[p->get_speed_grade()], p.get()});
    std::sort(graded.begin(), graded.end(), [](const GRADED& a, const GRADED& b) { return a.group < b.group; });
    for (size_t first = 0, end; first < graded.size(); first = end) {
        long lowest = graded[first].number, highest = lowest;
        for (end = first + 1; end < graded.size() && graded[end].group == graded[first].group; ++end) {
            lowest = std::min(lowest, graded[end].number);
            highest = std::max(highest, graded[end].number);
        }
        for (size_t i = first; i < end; ++i) {
            DEV_PART_TRAIT_FLAG& traits = graded[i].part->traits();
            traits.clear(DEV_PART_TRAIT_FASTEST_SPEED_GRADE);
            traits.clear(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE);
            if (graded[i].number == lowest) traits.set(DEV_PART_TRAIT_FASTEST_SPEED_GRADE);
            if (graded[i].number == highest) traits.set(DEV_PART_TRAIT_SLOWEST_SPEED_GRADE);
        }
    }
}
