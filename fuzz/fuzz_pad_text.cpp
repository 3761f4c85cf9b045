// The PAD text reader on arbitrary text.
//
// Input: the text of a PAD file, read for a device of a family with the new-format pad names
// (so pad-name lists are split and entered).
//
// Property: whatever the reader takes from the text, its ASCII dump read back reaches a fixed
// point after one round: the second dump read back dumps to the same text and an equal model.
// (The first round may lose what the format cannot say: a pad's global ids but the last, a
// second pad count, a rule renumbered to a value without a name.)
#include <cstdint>
#include <memory>
#include <string>

#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pad_info.h"
#include "fuzz_support.h"
#include "host/cfg.h"
#include "host/dstr.h"

namespace {

// A device of the bundled catalogue whose family has the new-format pad names; its basic
// info holds only the enumerators the reader asks for.
DEV_DEVICE* new_format_device() {
    fuzz::use_bundled_installation();
    const DEV_DEVICE_ENUM device = dstr_get_dev_device_enum_by_string("OS6G2700");
    auto* basic = new DEV_BASIC_INFO_BODY;
    basic->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, device);
    basic->set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY,
                         DEV_FAMILY_INFO_MGR_BODY::get_instance()->find_desc_of(device)->get_family());
    auto* body = new DEV_DEVICE_BODY;
    body->set_ace_info(nullptr);
    body->set_part_info(nullptr);
    body->set_basic_info(new DEV_BASIC_INFO(basic));
    return new DEV_DEVICE(body);
}

DEV_DEVICE& device() {
    static DEV_DEVICE* const device = [] {
        // Allocating pads is the reader's right; a few thousand keep an input fast.
        cfg_set_value("dev_max_pad_count", "1000");
        return new_format_device();
    }();
    return *device;
}

std::unique_ptr<DEV_PAD_INFO_BODY> read(const std::string& path) {
    auto body = std::make_unique<DEV_PAD_INFO_BODY>();
    body->set_device(&device());
    body->read_pad_file(FIO_PATH(path));
    return body;
}

std::string dump_of(const DEV_PAD_INFO_BODY& body, const std::string& path) {
    FUZZ_CHECK(body.write_pad_file(FIO_PATH(path), 0), "the dump could not be written");
    return fuzz::read_file(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    device();
    fuzz::quiet_reports().clear();
    const std::string input = fuzz::scratch_file("input.pad");
    fuzz::write_file(input, std::string(reinterpret_cast<const char*>(data), size));

    dump_of(*read(input), fuzz::scratch_file("first_dump.pad"));
    std::unique_ptr<DEV_PAD_INFO_BODY> once = read(fuzz::scratch_file("first_dump.pad"));
    const std::string second = dump_of(*once, fuzz::scratch_file("second_dump.pad"));
    std::unique_ptr<DEV_PAD_INFO_BODY> twice = read(fuzz::scratch_file("second_dump.pad"));
    FUZZ_CHECK(dump_of(*twice, fuzz::scratch_file("third_dump.pad")) == second, "the second dump read back dumps differently");
    std::unique_ptr<DEV_PAD_INFO_BODY> thrice = read(fuzz::scratch_file("third_dump.pad"));
    FUZZ_CHECK(*thrice == *twice, "the second dump read back twice holds another model");
    return 0;
}
