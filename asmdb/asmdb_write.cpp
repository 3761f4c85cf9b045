// asmdb_write: writes the assembler data of the installation (VELCORA_ROOTDIR), the build's
// last step of the bundled device data.
//
//   asmdb_write [--family FAMILY]... [--stamp FILE]
//
// For every installed device with basic info of the families with the new database (or of
// the families named), opens the basic info and routing switches as the library does, builds
// the die and routing descriptions (asmdb_build_die, asmdb_build_dirt) and writes them
// through DEV_ASM_INFO to the die file the basic info names, once per die file (devices
// that share a die share its files). Die and routing files of those folders that no device
// names any more are removed. Prints the counts; exit status 1 when a device could not be
// opened or a file not written.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "asmdb.h"
#include "dev_asm_info.h"
#include "dev_basic_info.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_path.h"
#include "dev_routing_switch_info.h"
#include "host/dstr.h"
#include "host/msg.h"

namespace {

struct TOTALS {
    int devices = 0, dies = 0, failures = 0;
    uintmax_t bytes = 0;
};

uintmax_t size_of(const std::string& path) {
    std::error_code ec;
    const uintmax_t n = std::filesystem::file_size(path, ec);
    return ec ? 0 : n;
}

// Writes the files of one device (unless its die's are written already); false on failure.
bool write_device(DEV_DEVICE_ENUM device, std::set<std::string>& written, TOTALS& totals) {
    std::unique_ptr<DEV_DEVICE> opened(
        DEV_DEVICE_FACTORY::create(device, DEV_DEVICE_FACTORY::BASIC_INFO | DEV_DEVICE_FACTORY::ROUTING_SWITCH_INFO));
    const DEV_BASIC_INFO* basic_info = opened ? opened->get_basic_info() : nullptr;
    const DEV_ROUTING_SWITCH_INFO* routing = opened ? opened->get_routing_switch_info() : nullptr;
    FIO_PATH path;
    if (!routing || !routing->get_body() || !DEV_ASM_INFO::get_die_file_path(basic_info, &path)) {
        std::fprintf(stderr, "asmdb_write: %s: no basic info or routing switches\n", dstr_get_debug_string(device));
        return false;
    }
    ++totals.devices;
    if (!written.insert(path.full_path()).second) return true;
    DEV_ASM_INFO info;
    ASMDB_DIE* die = asmdb_build_die(*basic_info->get_body());
    info.set_asmdb_die(die);
    if (basic_info->is_valid_string_enum(DEV_BASIC_INFO_STRING_ROUTING_DESCRIPTION_FILE))
        info.set_asmdb_dirt(asmdb_build_dirt(*die, *routing->get_body()));
    if (!info.write_data_to_pdb(path)) {
        std::fprintf(stderr, "asmdb_write: %s: cannot be written\n", path.full_path().c_str());
        return false;
    }
    ++totals.dies;
    totals.bytes += size_of(path.full_path()) + size_of(asmdb_dirt_path(path.full_path()));
    written.insert(asmdb_dirt_path(path.full_path()));
    return true;
}

bool ends_with(const std::string& text, const char* end) {
    const size_t n = std::strlen(end);
    return text.size() >= n && text.compare(text.size() - n, n, end) == 0;
}

// Removes the die and routing files of `folder` that were not written now.
int remove_stale(const std::string& folder, const std::set<std::string>& written) {
    int removed = 0;
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ec)) {
        const std::string name = entry.path().filename().string();
        const bool ours = name.rfind("ddb_", 0) == 0 && (ends_with(name, "_die.ddb") || ends_with(name, "_dirt.ddb"));
        if (ours && !written.count(entry.path().string()) && std::filesystem::remove(entry.path(), ec)) ++removed;
    }
    return removed;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> families;
    const char* stamp = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--family") == 0 && i + 1 < argc) {
            families.push_back(argv[++i]);
        } else if (std::strcmp(argv[i], "--stamp") == 0 && i + 1 < argc) {
            stamp = argv[++i];
        } else {
            std::fprintf(stderr, "usage: asmdb_write [--family FAMILY]... [--stamp FILE]\n");
            return 2;
        }
    }
    const std::clock_t start = std::clock();
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    TOTALS totals;
    std::set<std::string> written, folders;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        const DEV_DEVICE_DESC* device = catalogue.find_desc_of(DEV_DEVICE_ENUM(d));
        const DEV_FAMILY_DESC* family = device ? catalogue.find_desc_of(device->get_family()) : nullptr;
        if (!family || family->has_trait(DEV_FAMILY_TRAIT_NOT_INSTALLED) || device->has_trait(DEV_DEVICE_TRAIT_NO_HDR_DATA))
            continue;
        const std::string name = dstr_get_debug_string(device->get_family());
        const bool named = families.empty() ? family->has_trait(DEV_FAMILY_TRAIT_NEW_DDB_SUPPORT)
                                            : std::find(families.begin(), families.end(), name) != families.end();
        if (!named) continue;
        FIO_PATH folder;
        DEV_PATH::get_ddb_path_of(device->get_family(), &folder);
        folders.insert(folder.directory());
        if (!write_device(DEV_DEVICE_ENUM(d), written, totals)) ++totals.failures;
    }
    int removed = 0;
    for (const std::string& folder : folders) removed += remove_stale(folder, written);
    char summary[256];
    std::snprintf(summary, sizeof summary,
                  "%d die and routing descriptions of %d devices, %ju bytes, %d removed, %.1f s of processor time\n",
                  totals.dies, totals.devices, totals.bytes, removed, double(std::clock() - start) / CLOCKS_PER_SEC);
    std::printf("asmdb_write: %s", summary);
    if (totals.failures) {
        std::fprintf(stderr, "asmdb_write: %d devices failed\n", totals.failures);
        return 1;
    }
    if (stamp) {
        std::FILE* f = std::fopen(stamp, "w");
        if (!f || std::fputs(summary, f) < 0 || std::fclose(f) != 0) return 1;
    }
    return msg_internal_error_count() ? 1 : 0;
}
