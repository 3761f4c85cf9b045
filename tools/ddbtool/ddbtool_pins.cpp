// `ddbtool device pins PART [--svg FILE]`: the pins of a part's package, one a line (name,
// pin id, the pad ids it is bonded to and their pad names), and on request the package's
// ball map as SVG (ddbtool_ball_map.cpp).
#include <cctype>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "ddbtool.h"
#include "ddbtool_ball_map.h"
#include "ddbtool_device_kind.h"
#include "dev_device_factory.h"
#include "dev_pad_info.h"
#include "dev_pkg_info.h"
#include "host/dstr.h"

namespace {

// The pad's name: its STRING key 0, else its name list, else "?".
std::string pad_name(const DEV_PAD_INFO* pad_info, uint32_t pad_id) {
    const DEV_PAD* pad = pad_info ? pad_info->get_pad(pad_id) : nullptr;
    if (!pad) return "?";
    if (pad->is_valid_string_enum(DEV_PAD_STRING_PAD_NAME)) return pad->get_string_data(DEV_PAD_STRING_PAD_NAME);
    if (pad->is_valid_string_enum(DEV_PAD_STRING_PAD_NAMES)) return pad->get_string_data(DEV_PAD_STRING_PAD_NAMES);
    return "?";
}

std::string joined(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : ",") + item;
    return text.empty() ? "-" : text;
}

DEV_PART_ENUM part_named(const std::string& name) {
    DEV_PART_ENUM part = dstr_get_dev_part_enum_by_string(name);
    if (part != DEV_PART_INVALID) return part;
    std::string upper = name;
    for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return dstr_get_dev_part_enum_by_string(upper);
}

}  // namespace

int ddbtool_device_pins(const std::vector<std::string>& args) {
    std::string part_name, svg;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--svg" && i + 1 < args.size()) {
            svg = args[++i];
        } else if (args[i].size() > 1 && args[i][0] == '-') {
            ddbtool_error("device", args[i] == "--svg" ? "--svg needs a file" : "unknown option \"" + args[i] + "\"");
            return 2;
        } else if (part_name.empty()) {
            part_name = args[i];
        } else {
            ddbtool_error("device", "pins expects one PART");
            return 2;
        }
    }
    if (part_name.empty()) {
        ddbtool_error("device", "pins expects one PART");
        return 2;
    }
    const DEV_PART_ENUM part = part_named(part_name);
    if (part == DEV_PART_INVALID) {
        ddbtool_error("device", "\"" + part_name + "\" names no part");
        return 1;
    }
    std::unique_ptr<DEV_DEVICE> device(
        DEV_DEVICE_FACTORY::create_for_part(part, DEV_DEVICE_FACTORY::PAD_INFO | DEV_DEVICE_FACTORY::PKG_INFO));
    const DEV_PKG_INFO* pkg = device ? device->get_pkg_info() : nullptr;
    if (!pkg || !pkg->get_body() || pkg->get_number_of_pins() == 0) {
        ddbtool_error("device", "no package pins are installed for " + part_name);
        return 1;
    }
    const DEV_PAD_INFO* pads = device->get_pad_info();
    const DEV_PKG_INFO_BODY& body = *pkg->get_body();
    std::printf("# %s: %u pins (name, pin id, pad ids, pad names)\n", dstr_get_debug_string(part),
                body.get_number_of_pins());
    for (const DEV_PIN* pin : body.get_pins()) {
        std::vector<std::string> ids, names;
        for (uint32_t pad_id : pin->get_list_of_pad_ids()) {
            ids.push_back(std::to_string(pad_id));
            names.push_back(pad_name(pads, pad_id));
        }
        std::printf("%s\t%u\t%s\t%s\n", pin->get_name().empty() ? "-" : pin->get_name().c_str(), pin->get_id(),
                    joined(ids).c_str(), joined(names).c_str());
    }
    if (!svg.empty() && !ddbtool_write_ball_map(body, dstr_get_debug_string(part), svg)) {
        ddbtool_error("device", svg + ": cannot be written");
        return 1;
    }
    return 0;
}
