// Device commands: `device compile` writes a text file's persistent form, `device dump` the
// ASCII dump of either form, `device info` what the library finds of a device or part.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "ddbtool.h"
#include "ddbtool_device_kind.h"
#include "dev_asm_info.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "host/dstr.h"
#include "host/gen.h"

namespace {

const char DEVICE_USAGE[] =
    "usage: ddbtool device compile [--level N] IN OUT.ddb\n"
    "       ddbtool device dump [--kind TYPE] IN OUT\n"
    "       ddbtool device info DEVICE|PART\n"
    "       ddbtool device pins PART [--svg FILE]\n\n"
    "compile reads the text file IN and writes its persistent form to OUT.ddb at compression\n"
    "level N (1 to 9, default 9); dump reads IN in either form and writes its ASCII dump to\n"
    "OUT; the kind of data is known from IN's name (the text extension, or a persistent file\n"
    "ending in _<type>.ddb) or given with --kind (kinds below).\n"
    "info opens a device (or the device of a part) as the library does and prints, for each\n"
    "aspect, the file it came from and what it holds.\n"
    "pins lists the pins of the part's package, one a line: name, pin id, the pad ids it is\n"
    "bonded to and their pad names; --svg FILE also draws the package's ball map (one ball per\n"
    "pin at its grid position, coloured by kind, user I/O by bank) to FILE.\n";

// The kinds of device data, in the order the tools list them.
const std::vector<const DDBTOOL_DEVICE_KIND*>& kinds() {
    static const std::vector<const DDBTOOL_DEVICE_KIND*> table = {
        &ddbtool_kind_hdr(),
        &ddbtool_kind_pad(),
        &ddbtool_kind_pkg(),
        &ddbtool_kind_part_info(),
        &ddbtool_kind_rsi(),
    };
    return table;
}

}  // namespace

void ddbtool_print_device_kinds(std::FILE* out) {
    std::fputs("\nKinds of device data:\n", out);
    for (const DDBTOOL_DEVICE_KIND* kind : kinds()) std::fprintf(out, "  %-12s %s\n", kind->type(), kind->description());
}

namespace {

struct OPTIONS {
    int level = 9;
    std::string kind;
    std::vector<std::string> files;
};

bool parse_options(const std::vector<std::string>& args, OPTIONS& o) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--level" || a == "--kind") {
            if (i + 1 == args.size()) {
                ddbtool_error("device", a + " needs a value");
                return false;
            }
            const std::string& value = args[++i];
            if (a == "--kind") {
                o.kind = value;
                continue;
            }
            char* end = nullptr;
            const long n = std::strtol(value.c_str(), &end, 10);
            if (value.empty() || *end || n < 1 || n > 9) {
                ddbtool_error("device", "compression level must be 1 to 9, not \"" + value + "\"");
                return false;
            }
            o.level = static_cast<int>(n);
        } else if (a.size() > 1 && a[0] == '-') {
            ddbtool_error("device", "unknown option \"" + a + "\"");
            return false;
        } else {
            o.files.push_back(a);
        }
    }
    return true;
}

// The kind of `in`, or of --kind; reported when neither tells.
const DDBTOOL_DEVICE_KIND* kind_for(const OPTIONS& o, const std::string& in) {
    const DDBTOOL_DEVICE_KIND* kind = o.kind.empty() ? ddbtool_device_kind_of(FIO_PATH(in)) : ddbtool_device_kind_named(o.kind);
    if (!kind)
        ddbtool_error("device", o.kind.empty() ? in + ": the kind of data is not known from the name (use --kind)"
                                               : "unknown kind \"" + o.kind + "\"");
    return kind;
}

// Reads IN with its kind; null (reported) when it cannot be read.
std::unique_ptr<DDBTOOL_DEVICE_DATA> read_input(const DDBTOOL_DEVICE_KIND& kind, const std::string& in) {
    if (!FIO_FILE_SYSTEM::exists(in) || FIO_FILE_SYSTEM::is_directory(in)) {
        ddbtool_error("device", in + ": no such file");
        return nullptr;
    }
    std::unique_ptr<DDBTOOL_DEVICE_DATA> data = kind.create();
    if (!data->read(FIO_PATH(in))) {
        ddbtool_error("device", in + ": cannot be read as " + kind.description());
        return nullptr;
    }
    return data;
}

int compile(const OPTIONS& o) {
    if (o.files.size() != 2) {
        ddbtool_error("device", "compile expects IN and OUT.ddb");
        return 2;
    }
    const DDBTOOL_DEVICE_KIND* kind = kind_for(o, o.files[0]);
    if (!kind) return 2;
    std::unique_ptr<DDBTOOL_DEVICE_DATA> data = read_input(*kind, o.files[0]);
    if (!data) return 1;
    if (!data->write_pdb(FIO_PATH(o.files[1]), o.level)) {
        ddbtool_error("device", o.files[1] + ": cannot be written");
        return 1;
    }
    return 0;
}

int dump(const OPTIONS& o) {
    if (o.files.size() != 2) {
        ddbtool_error("device", "dump expects IN and OUT");
        return 2;
    }
    const DDBTOOL_DEVICE_KIND* kind = kind_for(o, o.files[0]);
    if (!kind) return 2;
    std::unique_ptr<DDBTOOL_DEVICE_DATA> data = read_input(*kind, o.files[0]);
    if (!data) return 1;
    if (!data->write_dump(FIO_PATH(o.files[1]))) {
        ddbtool_error("device", o.files[1] + ": cannot be written");
        return 1;
    }
    return 0;
}

// The assembler data: no text form, only the die file the basic info names.
void print_asm_info(const DEV_DEVICE* opened) {
    const char* const what = "assembler data";
    FIO_PATH die;
    const DEV_ASM_INFO* info = opened ? opened->get_asm_info() : nullptr;
    if (!DEV_ASM_INFO::get_die_file_path(opened ? opened->get_basic_info() : nullptr, &die))
        std::printf("  %-20s unknown without the basic info\n", what);
    else if (!FIO_FILE_SYSTEM::exists(die))
        std::printf("  %-20s not installed (%s)\n", what, die.full_path().c_str());
    else if (!info || !info->get_asmdb_die())
        std::printf("  %-20s %s: could not be read\n", what, die.full_path().c_str());
    else
        std::printf("  %-20s %s: die%s\n", what, die.full_path().c_str(),
                    info->get_asmdb_dirt() ? " and routing description" : "");
}

int info(const OPTIONS& o) {
    if (o.files.size() != 1) {
        ddbtool_error("device", "info expects one DEVICE or PART");
        return 2;
    }
    const std::string& name = o.files[0];
    DEV_DEVICE_ENUM device = dstr_get_dev_device_enum_by_string(name);
    DEV_PART_ENUM part = DEV_PART_INVALID;
    if (device == DEV_DEVICE_INVALID) {
        part = dstr_get_dev_part_enum_by_string(name);
        if (part == DEV_PART_INVALID) {
            ddbtool_error("device", "\"" + name + "\" names no device and no part");
            return 1;
        }
        const DEV_PART_DESC* record = DEV_FAMILY_INFO_MGR_BODY::get_instance()->find_desc_of(part);
        device = record ? record->get_device() : DEV_DEVICE_INVALID;
    }
    const DEV_DEVICE_DESC* record = DEV_FAMILY_INFO_MGR_BODY::get_instance()->find_desc_of(device);
    if (!record) {
        ddbtool_error("device", "the catalogue has no record of \"" + name + "\"");
        return 1;
    }
    std::unique_ptr<DEV_DEVICE> opened(part != DEV_PART_INVALID
                                           ? DEV_DEVICE_FACTORY::create_for_part(part, DEV_DEVICE_FACTORY::ALL)
                                           : DEV_DEVICE_FACTORY::create(device, DEV_DEVICE_FACTORY::ALL));
    if (part != DEV_PART_INVALID) std::printf("part %s of ", dstr_get_debug_string(part));
    std::printf("device %s, family %s\n", dstr_get_debug_string(device), dstr_get_debug_string(record->get_family()));
    for (const DDBTOOL_DEVICE_KIND* kind : kinds()) {
        FIO_PATH path;
        const bool found = kind->locate(device, part, &path);
        const std::string held = opened ? kind->describe(*opened) : std::string();
        if (!found && path.full_path().empty())
            std::printf("  %-20s none for a device alone\n", kind->description());
        else if (!found)
            std::printf("  %-20s not installed (%s)\n", kind->description(), path.full_path().c_str());
        else if (held.empty())
            std::printf("  %-20s %s: could not be read\n", kind->description(), path.full_path().c_str());
        else
            std::printf("  %-20s %s: %s\n", kind->description(), path.full_path().c_str(), held.c_str());
    }
    print_asm_info(opened.get());
    return 0;
}

}  // namespace

const std::vector<const DDBTOOL_DEVICE_KIND*>& ddbtool_device_kinds() { return kinds(); }

const DDBTOOL_DEVICE_KIND* ddbtool_device_kind_named(const std::string& type) {
    for (const DDBTOOL_DEVICE_KIND* kind : kinds())
        if (gen_stricmp(type.c_str(), kind->type()) == 0) return kind;
    return nullptr;
}

const DDBTOOL_DEVICE_KIND* ddbtool_device_kind_of(const FIO_PATH& path) {
    for (const DDBTOOL_DEVICE_KIND* kind : kinds()) {
        if (gen_stricmp(path.extension().c_str(), kind->type()) == 0) return kind;
        const std::string ending = std::string("_") + kind->type();
        const std::string& base = path.base_name();
        if (gen_stricmp(path.extension().c_str(), "ddb") == 0 && base.size() > ending.size() &&
            gen_stricmp(base.c_str() + base.size() - ending.size(), ending.c_str()) == 0)
            return kind;
    }
    return nullptr;
}

int ddbtool_device(const std::vector<std::string>& args) {
    const std::string sub = args.empty() ? std::string() : args[0];
    if (sub == "pins") return ddbtool_device_pins(std::vector<std::string>(args.begin() + 1, args.end()));
    if (sub != "compile" && sub != "dump" && sub != "info") {
        ddbtool_error("device", sub.empty() ? "no subcommand given" : "unknown subcommand \"" + sub + "\"");
        std::fputs(DEVICE_USAGE, stderr);
        ddbtool_print_device_kinds(stderr);
        return 2;
    }
    OPTIONS o;
    if (!parse_options(std::vector<std::string>(args.begin() + 1, args.end()), o)) return 2;
    if (sub == "compile") return compile(o);
    if (sub == "dump") return dump(o);
    return info(o);
}

const DDBTOOL_COMMAND DDBTOOL_DEVICE = {"device", "compile, dump and describe device data files", DEVICE_USAGE,
                                        ddbtool_device, ddbtool_print_device_kinds};
