// DEV_PATH: the data-file searches by family, device and part.
//
// Every search collects its candidates in one DEV_PATH_CANDIDATES: the first path built is
// remembered so that a failed search can hand it back (the caller names the missing file
// after it), and with "dev_debug_path" on each candidate is announced before it is tested.
//
// Part-level candidates, in order (base = "ddb_" + device + package + pin count, or the
// part's own name with part trait 30; for "pkg" the package suffix is appended):
//   "part_info" only, without part trait 30: the part's own name, ddb_{part}_part_info.ddb
//       then ddb_{part}.part_info. A file made for exactly this orderable part is the most
//       specific one, so it goes ahead of the engineering-sample file of the die/package.
//   with part trait 20: {base}es_{type}.ddb;
//   {base}_{type}.ddb, {base}.{type};
//   "pad" and "part_info": then the device's own files, as the device-level search tries
//       them (pads are a property of the die, so a part without a package-specific pad file
//       uses its device's; part info falls back to the device's and then the family's file).
// When all of these fail, the same list is built again for the device's base device (in
// the base device's family folder), leaving out the candidates named after the part alone,
// which do not depend on the device and were tried already.
#include "dev_path.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <initializer_list>
#include <string>

#include "dev_basic_info.h"
#include "dev_family_info_mgr_body.h"
#include "dev_path_search.h"
#include "host/cfg.h"
#include "host/gen.h"
#include "host/msg.h"

namespace {

// "dev_debug_path": read once and cached; the host re-reads it when a test changes it.
const CFG_SWITCH DEBUG_PATH_SWITCH("dev_debug_path", false);

enum DEV_PATH_FILE_TYPE {
    DEV_PATH_TYPE_HDR,
    DEV_PATH_TYPE_PAD,
    DEV_PATH_TYPE_PKG,
    DEV_PATH_TYPE_PART_INFO,
    DEV_PATH_TYPE_RSI,
    DEV_PATH_TYPE_PWR,
    DEV_PATH_TYPE_LEI,
    DEV_PATH_TYPE_BLKRBA,
    DEV_PATH_TYPE_DEVICE,
    DEV_PATH_TYPE_UNKNOWN
};

// The canonical (lower-case) word of each type: it is the text form's extension.
const char* const FILE_TYPE_NAMES[] = {"hdr", "pad", "pkg", "part_info", "rsi",
                                    "pwr", "lei", "blkrba", "device"};

DEV_PATH_FILE_TYPE file_type_of(const char* text) {
    for (int t = 0; t < DEV_PATH_TYPE_UNKNOWN; ++t)
        if (gen_stricmp(text, FILE_TYPE_NAMES[t]) == 0) return static_cast<DEV_PATH_FILE_TYPE>(t);
    return DEV_PATH_TYPE_UNKNOWN;
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// Reports "<type> device file type not supported by get_existing_device_file_path for <level>".
void report_unsupported(const char* file_type_str, const char* level) {
    std::string text = std::string(file_type_str) +
                       " device file type not supported by get_existing_device_file_path for " + level;
    DEV_INTERNAL_ERROR(text.c_str());
}

// The checks every search starts with: the enumerator's two bounds (conditions and their
// texts), the output, the type text, then the type against those the level accepts. Returns
// the type, or DEV_PATH_TYPE_UNKNOWN, with `ret_path` cleared, when the search cannot go on.
DEV_PATH_FILE_TYPE checked_type(bool above, const char* above_text, bool below, const char* below_text,
                                const char* file_type_str, FIO_PATH* ret_path, const char* level,
                                std::initializer_list<DEV_PATH_FILE_TYPE> accepted) {
    bool valid = DEV_ASSERT_TEXT(above, above_text);
    valid &= DEV_ASSERT_TEXT(below, below_text);
    valid &= DEV_ASSERT_TEXT(ret_path != NULL, "ret_path != NULL");
    valid &= DEV_ASSERT_TEXT(file_type_str != NULL, "file_type_str != NULL");
    DEV_PATH_FILE_TYPE type = valid ? file_type_of(file_type_str) : DEV_PATH_TYPE_UNKNOWN;
    if (valid && std::find(accepted.begin(), accepted.end(), type) == accepted.end()) {
        report_unsupported(file_type_str, level);
        type = DEV_PATH_TYPE_UNKNOWN;
    }
    if (type == DEV_PATH_TYPE_UNKNOWN && ret_path) ret_path->clear();
    return type;
}

void note_none_installed(const char* type, const char* user_name) {
    if (DEBUG_PATH_SWITCH.is_on()) DEV_DEBUG("None of the legal %s files for %s is installed", type, user_name);
}

std::string family_directory(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family) {
    std::string directory;
    if (DEV_ASSERT_TEXT((family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX), "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)")) store.get_ddb_fullpath_of(family, directory);
    return directory;
}

// The candidates of one search, in the order they were tried.
class DEV_PATH_CANDIDATES {
public:
    explicit DEV_PATH_CANDIDATES(const char* type) : m_type(type) {}

    const char* type() const { return m_type; }

    // Tries directory/base_name.extension.
    bool try_file(const std::string& directory, const std::string& base_name, const std::string& extension) {
        FIO_PATH path(directory, base_name, extension);
        if (!m_has_first) {
            m_first = path;
            m_has_first = true;
        }
        if (DEBUG_PATH_SWITCH.is_on()) DEV_DEBUG("Checking if %s exists for %s-type file", path.full_path().c_str(), m_type);
        if (!FIO_FILE_SYSTEM::exists(path)) return false;
        m_found = path;
        return true;
    }
    // The persistent form {base}_{type}.ddb, then the text form {base}.{type}.
    bool try_forms(const std::string& directory, const std::string& base) {
        return try_file(directory, base + "_" + m_type, "ddb") || try_file(directory, base, m_type);
    }

    // True with `ret_path` on the file found, or false with `ret_path` on the first
    // candidate (cleared when none was built).
    bool finish(bool found, FIO_PATH* ret_path) const {
        if (found)
            *ret_path = m_found;
        else if (m_has_first)
            *ret_path = m_first;
        else
            ret_path->clear();
        return found;
    }

private:
    const char* m_type;
    FIO_PATH m_first;
    FIO_PATH m_found;
    bool m_has_first = false;
};

// The family whose files a family-level search looks for: its base family when it has family
// trait 41 and one.
DEV_FAMILY_ENUM data_family_of(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family) {
    const DEV_FAMILY_DESC* desc = store.get_desc_of(family);
    if (!desc || !desc->has_trait(DEV_FAMILY_TRAIT_USES_BASE_FAMILY_DATA)) return family;
    const DEV_FAMILY_ENUM base = desc->get_base_family_id();
    return base != DEV_FAMILY_INVALID ? base : family;
}

// Steps 2 to 4 of the family-level search (the type is known to be accepted).
bool search_family(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family, DEV_PATH_CANDIDATES& candidates) {
    family = data_family_of(store, family);
    return candidates.try_forms(family_directory(store, family), "ddb_" + lower(dstr_get_debug_string(family)));
}

// The inner device-level search: the candidates of the type's row, in column order.
bool search_device(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_DEVICE_ENUM device, DEV_PATH_FILE_TYPE type,
                   DEV_BASIC_INFO* basic_info, DEV_PATH_CANDIDATES& candidates) {
    const DEV_FAMILY_ENUM family = store.get_family_of(device);
    if (family == DEV_FAMILY_INVALID) return false;
    const std::string directory = family_directory(store, family);
    if (type == DEV_PATH_TYPE_DEVICE) {
        // The catalogue's FILE_NAME is read from the record itself (no query names it).
        const DEV_DEVICE_DESC* desc = store.find_desc_of(device);
        if (!desc || desc->get_file_name().empty()) return false;
        const std::string& file_name = desc->get_file_name();
        FIO_PATH name;
        name.set_file_name(file_name);
        return candidates.try_file(directory, name.base_name(), name.extension());
    }
    if (candidates.try_forms(directory, "ddb_" + lower(dstr_get_debug_string(device)))) return true;
    if (type == DEV_PATH_TYPE_PWR && basic_info) {
        std::string stem;
        if (basic_info->get_string_data(DEV_BASIC_INFO_STRING_DATA_FILE_STEM, &stem) && !stem.empty() &&
            candidates.try_forms(directory, "ddb_" + lower(stem)))
            return true;
    }
    if (type == DEV_PATH_TYPE_RSI || type == DEV_PATH_TYPE_PART_INFO)
        return search_family(store, family, candidates);
    return false;
}

// The catalogue's base device of a device, announced (debug switch on); DEV_DEVICE_INVALID
// when it has none.
DEV_DEVICE_ENUM next_base_device(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_DEVICE_ENUM device) {
    const DEV_DEVICE_DESC* desc = store.get_desc_of(device);
    const DEV_DEVICE_ENUM base = desc ? desc->get_base_device() : DEV_DEVICE_INVALID;
    if (base <= DEV_DEVICE_INVALID || base >= DEV_DEVICE_GENERIC) return DEV_DEVICE_INVALID;
    if (DEBUG_PATH_SWITCH.is_on()) DEV_DEBUG("Trying base device %s", dstr_get_debug_string(base));
    return base;
}

// The part-level candidates for `part` built on `device` (see the head of this file).
// `first_pass` is false for the base device's pass.
bool search_part(const DEV_FAMILY_INFO_MGR_BODY& store, const DEV_PART_DESC& desc, DEV_DEVICE_ENUM device,
                 DEV_PATH_FILE_TYPE type, bool first_pass, DEV_PATH_CANDIDATES& candidates) {
    const DEV_PART_ENUM part = desc.get_part();
    const bool own_name = desc.has_trait(DEV_PART_TRAIT_PART_SPECIFIC_DATA_FILES);
    const std::string directory =
        family_directory(store, first_pass ? desc.get_family() : store.get_family_of(device));
    const std::string part_base = "ddb_" + lower(dstr_get_debug_string(part));
    std::string base = part_base;
    if (!own_name) {
        char text[256];
        std::snprintf(text, sizeof text, "%s%s%s%d", "ddb_", dstr_get_debug_string(device),
                      dstr_get_debug_string(desc.get_package()), desc.get_pin_count());
        base = text;
        if (type == DEV_PATH_TYPE_PKG) base += desc.get_package_ddb_file_name_suffix();
        base = lower(base);
    }
    if (first_pass || !own_name) {
        if (type == DEV_PATH_TYPE_PART_INFO && first_pass && !own_name &&
            candidates.try_forms(directory, part_base))
            return true;
        if (desc.has_trait(DEV_PART_TRAIT_ENGINEERING_SAMPLE) &&
            candidates.try_file(directory, base + "es_" + candidates.type(), "ddb")) {
            DEV_DEBUG("Using ES modifier for %s file", candidates.type());
            return true;
        }
        if (candidates.try_forms(directory, base)) return true;
    }
    if (type == DEV_PATH_TYPE_PAD || type == DEV_PATH_TYPE_PART_INFO)
        return search_device(store, device, type, nullptr, candidates);
    return false;
}

}  // namespace

void DEV_PATH::get_ddb_path_of(DEV_FAMILY_ENUM family, FIO_PATH* ret_path) {
    if (!DEV_ASSERT_TEXT(ret_path != NULL, "ret_path != NULL")) return;
    ret_path->clear();
    ret_path->set_directory(family_directory(*DEV_FAMILY_INFO_MGR_BODY::get_instance(), family));
}

void DEV_PATH::build_device_file_path(DEV_FAMILY_ENUM family, const std::string& name, FIO_PATH* ret_path,
                                      bool persistent) {
    if (!DEV_ASSERT_TEXT(ret_path != NULL, "ret_path != NULL")) return;
    *ret_path = FIO_PATH(family_directory(*DEV_FAMILY_INFO_MGR_BODY::get_instance(), family), "ddb_" + lower(name),
                         persistent ? "ddb" : "");
}

bool DEV_PATH::get_existing_device_file_path(DEV_FAMILY_ENUM family, const char* file_type_str,
                                             FIO_PATH* ret_path) {
    return dev_path_find_file(*DEV_FAMILY_INFO_MGR_BODY::get_instance(), family, file_type_str, ret_path);
}

bool DEV_PATH::get_existing_device_file_path(DEV_DEVICE_ENUM device, const char* file_type_str,
                                             FIO_PATH* ret_path, DEV_BASIC_INFO* basic_info) {
    return dev_path_find_file(*DEV_FAMILY_INFO_MGR_BODY::get_instance(), device, file_type_str, ret_path,
                              basic_info);
}

bool DEV_PATH::get_existing_device_file_path(DEV_PART_ENUM part, const char* file_type_str, FIO_PATH* ret_path) {
    return dev_path_find_file(*DEV_FAMILY_INFO_MGR_BODY::get_instance(), part, file_type_str, ret_path);
}

bool DEV_PATH::is_pdb_file(const FIO_PATH& path) { return gen_stricmp("ddb", path.extension().c_str()) == 0; }

// ---------------------------------------------------------------------------------------
// The searches over a given store

bool dev_path_find_file(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family, const char* file_type_str,
                        FIO_PATH* ret_path) {
    const DEV_PATH_FILE_TYPE type =
        checked_type(family > DEV_FAMILY_INVALID, "family > DEV_FAMILY_INVALID", family < DEV_FAMILY_GENERIC,
                     "family < DEV_FAMILY_GENERIC", file_type_str, ret_path, "family",
                     {DEV_PATH_TYPE_HDR, DEV_PATH_TYPE_PAD, DEV_PATH_TYPE_RSI, DEV_PATH_TYPE_LEI, DEV_PATH_TYPE_PWR,
                      DEV_PATH_TYPE_BLKRBA, DEV_PATH_TYPE_PART_INFO});
    if (type == DEV_PATH_TYPE_UNKNOWN) return false;
    DEV_PATH_CANDIDATES candidates(FILE_TYPE_NAMES[type]);
    const bool found = search_family(store, family, candidates);
    if (!found) note_none_installed(candidates.type(), dstr_get_user_string(data_family_of(store, family)));
    return candidates.finish(found, ret_path);
}

bool dev_path_find_file(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_DEVICE_ENUM device, const char* file_type_str,
                        FIO_PATH* ret_path, DEV_BASIC_INFO* basic_info) {
    const DEV_PATH_FILE_TYPE type =
        checked_type(device > DEV_DEVICE_INVALID, "device > DEV_DEVICE_INVALID", device < DEV_DEVICE_GENERIC,
                     "device < DEV_DEVICE_GENERIC", file_type_str, ret_path, "device",
                     {DEV_PATH_TYPE_DEVICE, DEV_PATH_TYPE_HDR, DEV_PATH_TYPE_PAD, DEV_PATH_TYPE_PWR,
                      DEV_PATH_TYPE_RSI, DEV_PATH_TYPE_PART_INFO});
    if (type == DEV_PATH_TYPE_UNKNOWN) return false;
    // The data-file stem candidates need the basic info (reported once, for both devices).
    if (type == DEV_PATH_TYPE_PWR && !basic_info) DEV_INTERNAL_ERROR("basic_info");
    DEV_PATH_CANDIDATES candidates(FILE_TYPE_NAMES[type]);
    bool found = search_device(store, device, type, basic_info, candidates);
    if (!found && type != DEV_PATH_TYPE_HDR) {
        const DEV_DEVICE_ENUM base = next_base_device(store, device);
        if (base != DEV_DEVICE_INVALID) found = search_device(store, base, type, basic_info, candidates);
    }
    if (!found) note_none_installed(candidates.type(), dstr_get_user_string(device));
    return candidates.finish(found, ret_path);
}

bool dev_path_find_file(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_PART_ENUM part, const char* file_type_str,
                        FIO_PATH* ret_path) {
    const DEV_PATH_FILE_TYPE type =
        checked_type(part > DEV_PART_INVALID, "part > DEV_PART_INVALID", part < DEV_PART_GENERIC,
                     "part < DEV_PART_GENERIC", file_type_str, ret_path, "part",
                     {DEV_PATH_TYPE_HDR, DEV_PATH_TYPE_PAD, DEV_PATH_TYPE_PKG, DEV_PATH_TYPE_PART_INFO});
    if (type == DEV_PATH_TYPE_UNKNOWN) return false;
    const DEV_PART_DESC* desc = store.get_desc_of(part);
    const DEV_DEVICE_ENUM device = desc ? desc->get_device() : DEV_DEVICE_INVALID;
    if (device == DEV_DEVICE_INVALID) {
        ret_path->clear();
        return false;
    }
    if (type == DEV_PATH_TYPE_HDR) return dev_path_find_file(store, device, file_type_str, ret_path);
    DEV_PATH_CANDIDATES candidates(FILE_TYPE_NAMES[type]);
    bool found = search_part(store, *desc, device, type, true, candidates);
    if (!found) {
        const DEV_DEVICE_ENUM base = next_base_device(store, device);
        if (base != DEV_DEVICE_INVALID) found = search_part(store, *desc, base, type, false, candidates);
    }
    if (!found) note_none_installed(candidates.type(), dstr_get_user_string(part));
    return candidates.finish(found, ret_path);
}
