// Catalogue commands: `catalogue compile` turns the family-info text into persistent ".ddb"
// files (one family or all, one data type or every one); `catalogue dump` writes the ASCII
// dump of a text or persistent catalogue file.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "dev_family_info_mgr_body.h"
#include "ddbtool.h"
#include "dev_archive_export.h"
#include "host/fio.h"
#include "host/gen.h"

namespace {

const char kCatalogueUsage[] =
    "usage: ddbtool catalogue compile [--root DIR] [--text FILE] [--family NAME|all]\n"
    "                                 [--type family|devices|parts|info|every] [--level N]\n"
    "                                 [--out FILE.ddb]\n"
    "       ddbtool catalogue dump [--family NAME|all] [--type TYPE] IN OUT\n\n"
    "compile reads the family-info text (FILE, or the installation's default catalogue) and\n"
    "writes the persistent files of one family or of all families (then also the cumulative\n"
    "files) below DIR/ddb (DIR defaults to the installation root), or to FILE.ddb for one\n"
    "family and type. N is the compression level, 1 to 9 (default 9).\n"
    "dump reads IN (family-info text, or a \".ddb\" file) and writes its ASCII dump to OUT.\n";

struct OPTIONS {
    std::string root, text, out;
    std::string family = "all";
    std::string type = "info";
    int level = ZLIB_BEST_COMPRESSION;
    std::vector<std::string> files;
};

// Parses "--name value" and "--name=value" options; false (reported) on a bad option.
bool parse_options(const char* command, const std::vector<std::string>& args, OPTIONS& o) {
    for (size_t i = 0; i < args.size(); ++i) {
        std::string a = args[i];
        std::string value;
        const size_t eq = a.find('=');
        const bool is_option = a.size() > 2 && a.compare(0, 2, "--") == 0;
        if (is_option && eq != std::string::npos) {
            value = a.substr(eq + 1);
            a = a.substr(0, eq);
        } else if (is_option) {
            if (i + 1 == args.size()) {
                ddbtool_error(command, a + " needs a value");
                return false;
            }
            value = args[++i];
        }
        if (!is_option) {
            if (a.size() > 1 && a[0] == '-') {
                ddbtool_error(command, "unknown option \"" + a + "\"");
                return false;
            }
            o.files.push_back(a);
        } else if (a == "--root") {
            o.root = value;
        } else if (a == "--text") {
            o.text = value;
        } else if (a == "--out") {
            o.out = value;
        } else if (a == "--family") {
            o.family = value;
        } else if (a == "--type") {
            o.type = value;
        } else if (a == "--level") {
            char* end = nullptr;
            long n = std::strtol(value.c_str(), &end, 10);
            if (value.empty() || *end || n < 1 || n > 9) {
                ddbtool_error(command, "compression level must be 1 to 9, not \"" + value + "\"");
                return false;
            }
            o.level = static_cast<int>(n);
        } else {
            ddbtool_error(command, "unknown option \"" + a + "\"");
            return false;
        }
    }
    return true;
}

bool parse_family(const char* command, const std::string& name, DEV_FAMILY_ENUM& family) {
    if (name == "all") {
        family = DEV_FAMILY_GENERIC;
        return true;
    }
    for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f)
        if (gen_stricmp(dstr_get_debug_string(static_cast<DEV_FAMILY_ENUM>(f)), name.c_str()) == 0) {
            family = static_cast<DEV_FAMILY_ENUM>(f);
            return true;
        }
    ddbtool_error(command, "unknown family \"" + name + "\"");
    return false;
}

// The data types named by `name` ("every" is all four).
bool parse_types(const char* command, const std::string& name, std::vector<DEV_FAMILY_DATA_TYPE>& types) {
    static const char* const kNames[] = {"family", "devices", "parts", "info"};
    for (int t = 1; t <= 4; ++t)
        if (name == kNames[t - 1] || name == std::to_string(t)) {
            types = {static_cast<DEV_FAMILY_DATA_TYPE>(t)};
            return true;
        }
    if (name == "every") {
        types = {DEV_FAMILY_DATA_TYPE_FAMILY, DEV_FAMILY_DATA_TYPE_DEVICE, DEV_FAMILY_DATA_TYPE_PART,
                 DEV_FAMILY_DATA_TYPE_INFO};
        return true;
    }
    ddbtool_error(command, "unknown data type \"" + name + "\"");
    return false;
}

// Options, family and data types of either subcommand.
bool parse_all(const std::vector<std::string>& args, OPTIONS& o, DEV_FAMILY_ENUM& family,
               std::vector<DEV_FAMILY_DATA_TYPE>& types) {
    return parse_options("catalogue", args, o) && parse_family("catalogue", o.family, family) &&
           parse_types("catalogue", o.type, types);
}

bool read_text(const char* command, DEV_FAMILY_INFO_MGR_BODY& store, const std::string& text) {
    const bool ok = text.empty() ? store.read_default_family_data() : store.read_family_data(FIO_PATH(text));
    if (!ok) ddbtool_error(command, (text.empty() ? std::string("the default catalogue") : text) + ": cannot be read");
    return ok;
}

// What failed in the store's last write: the path, the step (open, write or rename) and the
// system's reason. The previous file is then unchanged.
std::string write_failure(const DEV_FAMILY_INFO_MGR_BODY& store, const FIO_PATH& path) {
    const std::string& error = store.last_write_error();
    return error.empty() ? path.full_path() + ": cannot be written" : error;
}

// Writes one persistent file (to `out` when given), creating its directory.
bool compile_one(DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                 const std::string& out, int level) {
    FIO_PATH path;
    const FIO_PATH explicit_path(out);
    if (!store.generate_pdb_path(family, type, out.empty() ? nullptr : &explicit_path, &path)) return false;
    if (!path.directory().empty()) FIO_FILE_SYSTEM::create_directories(path.directory());
    if (!store.write_data_to_pdb(family, type, &path, level)) {
        ddbtool_error("catalogue", write_failure(store, path));
        return false;
    }
    std::printf("%s\n", path.full_path().c_str());
    return true;
}

int compile(const std::vector<std::string>& args) {
    const char* command = "catalogue";
    OPTIONS o;
    DEV_FAMILY_ENUM family;
    std::vector<DEV_FAMILY_DATA_TYPE> types;
    if (!parse_all(args, o, family, types)) return 2;
    if (!o.files.empty()) {
        ddbtool_error(command, "unexpected argument \"" + o.files[0] + "\"");
        return 2;
    }
    if (!o.out.empty() && types.size() != 1) {
        ddbtool_error(command, "--out needs a single data type");
        return 2;
    }
    if (!o.root.empty()) gen_set_velcora_path(o.root);
    DEV_FAMILY_INFO_MGR_BODY store;
    if (!read_text(command, store, o.text)) return 1;
    bool ok = true;
    for (DEV_FAMILY_DATA_TYPE type : types) {
        if (family != DEV_FAMILY_GENERIC || !o.out.empty()) {
            ok = compile_one(store, family, type, o.out, o.level) && ok;
            continue;
        }
        // Every family with records, then the cumulative file.
        for (int f = DEV_FAMILY_INVALID + 1; f < DEV_FAMILY_GENERIC; ++f)
            if (store.find_desc_of(static_cast<DEV_FAMILY_ENUM>(f)))
                ok = compile_one(store, static_cast<DEV_FAMILY_ENUM>(f), type, "", o.level) && ok;
        ok = compile_one(store, DEV_FAMILY_GENERIC, type, "", o.level) && ok;
    }
    return ok ? 0 : 1;
}

int dump(const std::vector<std::string>& args) {
    const char* command = "catalogue";
    OPTIONS o;
    DEV_FAMILY_ENUM family;
    std::vector<DEV_FAMILY_DATA_TYPE> types;
    if (!parse_all(args, o, family, types)) return 2;
    if (o.files.size() != 2 || types.size() != 1) {
        ddbtool_error(command, "dump expects one data type, IN and OUT");
        std::fputs(kCatalogueUsage, stderr);
        return 2;
    }
    const FIO_PATH in(o.files[0]);
    if (!FIO_FILE_SYSTEM::exists(in)) {
        ddbtool_error(command, o.files[0] + ": no such file");
        return 1;
    }
    DEV_FAMILY_INFO_MGR_BODY store;
    const bool ok = gen_stricmp(in.extension().c_str(), "ddb") == 0
                        ? store.load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &in)
                        : store.read_family_data(in);
    if (!ok) {
        ddbtool_error(command, o.files[0] + ": cannot be read");
        return 1;
    }
    // A text gets the derived traits a persistent file was written with, so both forms of
    // one catalogue dump alike.
    store.generate_part_support_traits();
    store.generate_fastest_part_traits();
    if (!store.write_family_data(family, types[0], FIO_PATH(o.files[1]), ZLIB_NO_COMPRESSION)) {
        ddbtool_error(command, write_failure(store, FIO_PATH(o.files[1])));
        return 1;
    }
    return 0;
}

}  // namespace

int ddbtool_catalogue(const std::vector<std::string>& args) {
    if (args.empty() || (args[0] != "compile" && args[0] != "dump")) {
        ddbtool_error("catalogue", args.empty() ? "no subcommand given" : "unknown subcommand \"" + args[0] + "\"");
        std::fputs(kCatalogueUsage, stderr);
        return 2;
    }
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    return args[0] == "compile" ? compile(rest) : dump(rest);
}

const DDBTOOL_COMMAND DDBTOOL_CATALOGUE = {"catalogue", "compile the catalogue text to .ddb files, or dump it",
                                           kCatalogueUsage, ddbtool_catalogue};
