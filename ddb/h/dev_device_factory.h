// DEV_DEVICE_FACTORY: opens a device with the aspects asked for. It creates the device body,
// sets the basic info's enumerators (device, family, and the part when opened for a part),
// calls each requested aspect's loader in the order below and installs what they loaded,
// and always assigns the drawing-info and part-info fields. A missing aspect file is
// reported by the aspect's loader and leaves that aspect null; the device is returned all
// the same, and the caller deletes it. Only an enumerator out of range gives null. An aspect
// that the catalogue says the device has none of (a device with the trait NO_HDR_DATA has
// no basic info; a family without HAS_PAD_DATA, HAS_PACKAGE_DATA, ... has no pads,
// packages, ...) is not looked for and stays null without a report.
//
// Aspects, in the order they are loaded (bits of `aspects`):
//   BASIC_INFO           the device's HDR data ("hdr" file, DEV_BASIC_INFO::load_data)
//   PAD_INFO             the device's pads ("pad" file; brings the basic info along, which
//                        the PAD reader asks for the device's family)
//   PKG_INFO             the part's package pins ("pkg" file; parts only), whose
//                        get_device is the opened device
//   PART_INFO            the part's power supplies ("part_info" file; parts only; a part
//                        without one is noted, not reported)
//   ROUTING_SWITCH_INFO  the device's routing switches ("rsi" file; none for the generic device)
//   ASM_INFO             the assembler's die data, read through the assembler-database
//                        module, for the devices whose die file is installed; the basic info
//                        names that file, so this aspect comes only with BASIC_INFO
// Devices without basic info have none of the other aspects either.
#ifndef VELCORA_DEV_DEVICE_FACTORY_H
#define VELCORA_DEV_DEVICE_FACTORY_H

#include "dev_device.h"
#include "dev_export.h"
#include "host/dstr_fwd.h"

class DEV_EXPORT DEV_DEVICE_FACTORY {
public:
    enum ASPECT : unsigned {
        BASIC_INFO = 1u << 0,
        PAD_INFO = 1u << 1,
        PKG_INFO = 1u << 2,
        PART_INFO = 1u << 3,
        ROUTING_SWITCH_INFO = 1u << 4,
        ASM_INFO = 1u << 5,
        ALL = BASIC_INFO | PAD_INFO | PKG_INFO | PART_INFO | ROUTING_SWITCH_INFO | ASM_INFO
    };

    static DEV_DEVICE* create(DEV_DEVICE_ENUM device, unsigned aspects);
    static DEV_DEVICE* create_for_part(DEV_PART_ENUM part, unsigned aspects);
};

#endif
