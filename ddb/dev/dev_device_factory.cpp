// DEV_DEVICE_FACTORY: the table of aspect loaders and the opening of a device.
#include "dev_device_factory.h"

#include "dev_asm_info.h"
#include "dev_basic_info.h"
#include "dev_family_desc.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pad_info.h"
#include "dev_part_info.h"
#include "dev_pkg_info.h"
#include "dev_routing_switch_info.h"
#include "host/msg.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_part_enum.h"

namespace {

// What the loaders know of the device being opened.
struct OPENING {
    DEV_DEVICE* device;
    DEV_DEVICE_BODY* body;
    DEV_DEVICE_ENUM device_enum;
    DEV_FAMILY_ENUM family;
    DEV_PART_ENUM part;  // DEV_PART_INVALID when opened for a device
    const DEV_DEVICE_DESC* record;  // the device's catalogue record (null when unknown)
    const DEV_FAMILY_DESC* family_record;  // its family's record (null when unknown)
};

// The catalogue says which families have no data of a kind: nothing to look for then. A
// family the catalogue does not know is looked for all the same, so that the loader reports.
bool family_lacks(const OPENING& o, DEV_FAMILY_TRAIT_ENUM has_data) {
    return o.family_record && !o.family_record->has_trait(has_data);
}

// A device without basic info (trait NO_HDR_DATA) has no per-device data files at all.
bool has_device_data(const OPENING& o) { return !(o.record && o.record->has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA)); }

void load_basic_info(OPENING& o) {
    if (!has_device_data(o)) return;
    auto* body = new DEV_BASIC_INFO_BODY;
    body->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, o.device_enum);
    body->set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY, o.family);
    if (o.part != DEV_PART_INVALID) body->set_enum_data(DEV_BASIC_INFO_ENUM_PART, o.part);
    auto* basic_info = new DEV_BASIC_INFO(body);
    // A missing file is reported by the loader, which keeps the empty body: no aspect then.
    if (!basic_info->load_data() || basic_info->get_loaded_path().full_path().empty()) {
        delete basic_info;
        return;
    }
    basic_info->get_body()->set_initialized(true);
    o.body->set_basic_info(basic_info);
}

void load_pad_info(OPENING& o) {
    if (!has_device_data(o) || family_lacks(o, DEV_FAMILY_TRAIT_HAS_PAD_DATA)) return;
    auto* pad_info = new DEV_PAD_INFO(new DEV_PAD_INFO_BODY);
    pad_info->get_body()->set_device(o.device);
    if (!pad_info->load_data(o.part)) {
        delete pad_info;
        return;
    }
    o.body->set_pad_info(pad_info);
}

// A package belongs to a part.
void load_pkg_info(OPENING& o) {
    if (o.part == DEV_PART_INVALID || !has_device_data(o) || family_lacks(o, DEV_FAMILY_TRAIT_HAS_PACKAGE_DATA)) return;
    auto* pkg_info = new DEV_PKG_INFO(new DEV_PKG_INFO_BODY);
    pkg_info->get_body()->set_device(o.device);
    if (!pkg_info->load_data(o.part)) {
        delete pkg_info;
        return;
    }
    o.body->set_pkg_info(pkg_info);
}

void load_part_info(OPENING& o) {
    if (o.part == DEV_PART_INVALID || !has_device_data(o)) return;
    auto* part_info = new DEV_PART_INFO;
    if (!part_info->load_data(o.device, o.part)) {
        delete part_info;
        return;
    }
    o.body->set_part_info(part_info);
}

// The generic device stands for its family and has no routing switches of its own.
void load_routing_switch_info(OPENING& o) {
    if (!has_device_data(o) || o.device_enum == DEV_DEVICE_GENERIC) return;
    auto* body = new DEV_ROUTING_SWITCH_INFO_BODY;
    body->set_device(o.device);
    auto* info = new DEV_ROUTING_SWITCH_INFO(body);
    if (!info->load_data(o.device_enum)) {
        delete info;
        return;
    }
    o.body->set_routing_switch_info(info);
}

// The basic info names the die file; a device whose die file is not installed has no
// assembler data (and the module is not loaded for it).
void load_asm_info(OPENING& o) {
    DEV_BASIC_INFO* basic_info = o.body->get_basic_info();
    FIO_PATH die;
    if (!DEV_ASM_INFO::get_die_file_path(basic_info, &die) || !FIO_FILE_SYSTEM::exists(die)) return;
    auto* asm_info = new DEV_ASM_INFO;
    asm_info->load_data_from_pdb(basic_info);
    if (!asm_info->get_asmdb_die()) {
        delete asm_info;
        return;
    }
    o.body->set_asm_info(asm_info);
}

struct ASPECT_LOADER {
    unsigned aspect;
    void (*load)(OPENING&);
};

// In the order of DEV_DEVICE_FACTORY::ASPECT.
const ASPECT_LOADER LOADERS[] = {
    {DEV_DEVICE_FACTORY::BASIC_INFO, load_basic_info},
    {DEV_DEVICE_FACTORY::PAD_INFO, load_pad_info},
    {DEV_DEVICE_FACTORY::PKG_INFO, load_pkg_info},
    {DEV_DEVICE_FACTORY::PART_INFO, load_part_info},
    {DEV_DEVICE_FACTORY::ROUTING_SWITCH_INFO, load_routing_switch_info},
    {DEV_DEVICE_FACTORY::ASM_INFO, load_asm_info},
};

DEV_DEVICE* open(DEV_DEVICE_ENUM device, DEV_PART_ENUM part, unsigned aspects) {
    const DEV_FAMILY_INFO_MGR_BODY& store = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    const DEV_DEVICE_DESC* record = store.find_desc_of(device);
    auto* body = new DEV_DEVICE_BODY;
    body->set_ace_info(nullptr);
    body->set_part_info(nullptr);
    const DEV_FAMILY_ENUM family = record ? record->get_family() : DEV_FAMILY_INVALID;
    OPENING o{new DEV_DEVICE(body), body, device, family, part, record, store.find_desc_of(family)};
    // The PAD reader asks the basic info for the device's family.
    if (aspects & DEV_DEVICE_FACTORY::PAD_INFO) aspects |= DEV_DEVICE_FACTORY::BASIC_INFO;
    for (const ASPECT_LOADER& loader : LOADERS)
        if (aspects & loader.aspect) loader.load(o);
    return o.device;
}

}  // namespace

DEV_DEVICE* DEV_DEVICE_FACTORY::create(DEV_DEVICE_ENUM device, unsigned aspects) {
    if (!DEV_ASSERT_TEXT(device > DEV_DEVICE_INVALID && device <= DEV_DEVICE_GENERIC,
                         "device > DEV_DEVICE_INVALID && device <= DEV_DEVICE_GENERIC"))
        return nullptr;
    return open(device, DEV_PART_INVALID, aspects);
}

DEV_DEVICE* DEV_DEVICE_FACTORY::create_for_part(DEV_PART_ENUM part, unsigned aspects) {
    if (!DEV_ASSERT_TEXT(part > DEV_PART_INVALID && part < DEV_PART_GENERIC, "part > DEV_PART_INVALID && part < DEV_PART_GENERIC"))
        return nullptr;
    const DEV_PART_DESC* record = DEV_FAMILY_INFO_MGR_BODY::get_instance()->get_desc_of(part);
    if (!record || record->get_device() <= DEV_DEVICE_INVALID || record->get_device() >= DEV_DEVICE_GENERIC) return nullptr;
    return open(record->get_device(), part, aspects);
}
