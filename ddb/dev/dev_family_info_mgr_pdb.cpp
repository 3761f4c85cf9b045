// The catalogue store's persistent side: file names, loading with its fallbacks, writing,
// the default text catalogue, and the part traits derived after every load.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <tuple>
#include <vector>

#include "ddb_dev__pdb.h"
#include "dev_family_info.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pdb_file.h"
#include "host/cfg.h"
#include "host/gen.h"
#include "host/msg.h"

namespace {

const char* const kTestSection = "General Section";
const char* const kTestKey = "DEV_FAMILY_INFO_FILE";

double now_seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

std::string lower(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

// The family's name in the test-settings bookkeeping.
std::string bookkeeping_name(DEV_FAMILY_ENUM family) {
    if (family == DEV_FAMILY_GENERIC) return "GENERIC_FAMILY";
    if (family <= DEV_FAMILY_INVALID || family >= DEV_FAMILY_GENERIC) return "INVALID_FAMILY";
    return dstr_get_debug_string(family);
}

const char* suffix_of(DEV_FAMILY_DATA_TYPE type) {
    switch (type) {
        case DEV_FAMILY_DATA_TYPE_FAMILY: return "_family.ddb";
        case DEV_FAMILY_DATA_TYPE_DEVICE: return "_devices.ddb";
        case DEV_FAMILY_DATA_TYPE_PART: return "_parts.ddb";
        default: return "_info.ddb";
    }
}

bool has_ddb_extension(const FIO_PATH& path) {
    if (gen_stricmp(path.extension().c_str(), "ddb") == 0) return true;
    DEV_INTERNAL_ERROR("PDB files must have extension \"ddb\"");
    return false;
}

// Every record of a storage read from a file must name a slot of the store's tables.
bool records_in_range(const DEV_FAMILY_INFO& storage, std::string& problem) {
    for (const DEV_FAMILY_DESC* d : storage.m_family_data)
        if (d && (d->get_family() <= DEV_FAMILY_INVALID || d->get_family() >= DEV_FAMILY_GENERIC)) {
            problem = "family record " + std::to_string(d->get_family()) + " is out of range";
            return false;
        }
    for (const DEV_DEVICE_DESC* d : storage.m_device_data)
        if (d && (d->get_device() <= DEV_DEVICE_INVALID || d->get_device() >= DEV_DEVICE_GENERIC)) {
            problem = "device record " + std::to_string(d->get_device()) + " is out of range";
            return false;
        }
    for (const DEV_PART_DESC* d : storage.m_part_data)
        if (d && (d->get_part() <= DEV_PART_INVALID || d->get_part() >= DEV_PART_GENERIC)) {
            problem = "part record " + std::to_string(d->get_part()) + " is out of range";
            return false;
        }
    return true;
}

// Moves the storage's records into the store: empty slots are filled; an existing record
// is kept unless `replace`.
template <typename DESC>
void take_all(DEV_FAMILY_INFO_MGR_BODY& store, std::vector<DESC*>& records, bool replace) {
    for (DESC*& d : records) {
        if (!d) continue;
        store.take_desc(d, replace);  // takes ownership either way
        d = nullptr;
    }
}

}  // namespace

bool DEV_FAMILY_INFO_MGR_BODY::load_family_data(DEV_FAMILY_ENUM family) {
    return load_data_from_pdb(family, DEV_FAMILY_DATA_TYPE_INFO, nullptr);
}

bool DEV_FAMILY_INFO_MGR_BODY::generate_pdb_path(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                 const FIO_PATH* explicit_path, FIO_PATH* pdb_path) const {
    if (!DEV_ASSERT_TEXT((family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX),
                         "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)"))
        return false;
    if (!DEV_ASSERT_TEXT(pdb_path != NULL, "pdb_path != NULL")) return false;
    if (explicit_path) {
        *pdb_path = *explicit_path;
        return true;
    }
    std::string directory;
    get_ddb_fullpath_of(family, directory);
    std::string base = family == DEV_FAMILY_GENERIC ? std::string("ddb_cumulative")
                                                    : std::string("ddb_") + dstr_get_debug_string(family);
    pdb_path->set_full_path(directory + "/" + lower(base + suffix_of(type)));
    return true;
}

bool DEV_FAMILY_INFO_MGR_BODY::load_data_from_pdb(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                  const FIO_PATH* explicit_path) {
    const bool from_ascii = cfg_is_on("dev_load_hdr_info_from_ascii", false);
    const bool debug = cfg_is_on("dev_debug_family_info", false);
    const double start = now_seconds();
    m_loaded_data_type = type;

    FIO_PATH path;
    if (!generate_pdb_path(family, type, explicit_path, &path)) return false;
    bool exists = FIO_FILE_SYSTEM::exists(path);
    if (!exists) {
        if (explicit_path) {
            DEV_DEBUG("ERROR: PDB file %s with the family info does not exist!", path.full_path().c_str());
            return false;
        }
        // The cumulative file of the same kind, the family's own complete file, then the
        // complete cumulative file at the root of the device database.
        FIO_PATH candidate;
        if (generate_pdb_path(DEV_FAMILY_GENERIC, type, nullptr, &candidate) && FIO_FILE_SYSTEM::exists(candidate)) {
            path = candidate;
            exists = true;
        } else if (type != DEV_FAMILY_DATA_TYPE_INFO &&
                   generate_pdb_path(family, DEV_FAMILY_DATA_TYPE_INFO, nullptr, &candidate) &&
                   FIO_FILE_SYSTEM::exists(candidate)) {
            path = candidate;
            type = DEV_FAMILY_DATA_TYPE_INFO;
            exists = true;
        } else {
            path.set_full_path(gen_get_ddb_root() + "/" + "ddb_cumulative" + suffix_of(DEV_FAMILY_DATA_TYPE_INFO));
            type = DEV_FAMILY_DATA_TYPE_INFO;
            exists = FIO_FILE_SYSTEM::exists(path);
            if (exists && tst_has_value(kTestSection, kTestKey))
                tst_set_value(kTestSection, kTestKey, "Full cumulative data loaded for " + bookkeeping_name(family));
        }
    }
    const std::string full = path.full_path();
    if ((exists || explicit_path) && debug) {
        if (family == DEV_FAMILY_GENERIC)
            DEV_DEBUG("Loading info for all families");
        else
            DEV_DEBUG("Loading info for %s family", dstr_get_user_string(family));
    }

    bool ok;
    if (!exists) {
        DEV_DEBUG("Whoops, %s is not available! Trying to read from ASCII", full.c_str());
        if (!tst_has_value(kTestSection, kTestKey)) {
            DEV_INTERNAL_ERROR((std::string("Required file not installed, ") + full).c_str());
            return false;
        }
        const std::string text_file = tst_get_value(kTestSection, kTestKey);
        tst_set_value(kTestSection, kTestKey, "ASCII data loaded for " + bookkeeping_name(family));
        ok = read_family_data(FIO_PATH(text_file));
    } else if (from_ascii) {
        DEV_DEBUG("ASCII mode. Reading from %s (assumed text file)", full.c_str());
        ok = read_family_data(path);
    } else {
        if (!has_ddb_extension(path)) return false;
        // Read into a storage of its own first: a failed load leaves the store unchanged.
        DEV_FAMILY_INFO storage(true);
        PDB_DDB_SEGMENT segment(false);
        std::string error;
        ok = dev_pdb_read_file(path, segment, error);
        if (ok) {
            segment << storage;
            if (segment.failed())
                error = full + ": " + segment.error();
            else if (!segment.at_end())
                error = full + ": corrupted: data follows the stored catalogue";
            else if (records_in_range(storage, error))
                error.clear();
            else
                error = full + ": corrupted: " + error;
            ok = error.empty();
        }
        if (!ok) {
            DEV_DEBUG("%s", error.c_str());
            DEV_DEBUG("Failed loading family info from PDB: %s", full.c_str());
            return false;
        }
        if (storage.m_family_data.empty()) DEV_DEBUG("Family data is not available!");
        if (storage.m_device_data.empty()) DEV_DEBUG("Device data is not available!");
        if (storage.m_part_data.empty()) DEV_DEBUG("Part data is not available!");
        const bool replace = explicit_path != nullptr;
        take_all(*this, storage.m_family_data, replace);
        take_all(*this, storage.m_device_data, replace);
        take_all(*this, storage.m_part_data, replace);
    }
    if (debug) {
        const double seconds = now_seconds() - start;
        if (family == DEV_FAMILY_GENERIC)
            DEV_DEBUG("Spent %.0f seconds loading all families info from PDB: %s", seconds, full.c_str());
        else
            DEV_DEBUG("Spent %.0f seconds loading %s family info from PDB: %s", seconds,
                      dstr_get_user_string(family), full.c_str());
    }
    if (ok) {
        generate_part_support_traits();
        generate_fastest_part_traits();
        if (cfg_is_on("dev_dump_part_data", false)) {
            FIO_PATH dump = path;
            dump.set_extension("txt");
            write_family_data(family, type, dump, ZLIB_NO_COMPRESSION);
        }
        if (debug) {
            if (family == DEV_FAMILY_GENERIC)
                DEV_DEBUG("Now maintaining info about all device families");
            else
                DEV_DEBUG("Now maintaining info about %d devices and %d parts of %s", get_device_count(family),
                          get_part_count(family), dstr_get_user_string(family));
        }
    }
    return ok;
}

bool DEV_FAMILY_INFO_MGR_BODY::read_default_family_data() {
    const std::string file = gen_get_velcora_path() + "h" + "/" + "dev_part_manager_auto.part";
    if (!read_family_data(FIO_PATH(file))) {
        DEV_INTERNAL_ERROR((std::string("Failed reading FGEN-generated ASCII family info data ") + file).c_str());
        return false;
    }
    m_loaded_data_type = DEV_FAMILY_DATA_TYPE_INFO;
    generate_part_support_traits();
    generate_fastest_part_traits();
    return true;
}

bool DEV_FAMILY_INFO_MGR_BODY::write_data_to_pdb(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                 const FIO_PATH* explicit_path, int compression_level) {
    if (!DEV_ASSERT_TEXT(compression_level != 0, "compression_level != 0")) return false;
    const double start = now_seconds();
    std::unique_ptr<DEV_FAMILY_INFO> storage(new DEV_FAMILY_INFO(false));
    if (!DEV_ASSERT_TEXT(storage != NULL, "storage != NULL")) return false;
    FIO_PATH path;
    if (!generate_pdb_path(family, type, explicit_path, &path)) return false;
    if (!has_ddb_extension(path)) return false;
    const std::string full = path.full_path();
    prepare_output(family, type, storage.get());
    PDB_DDB_SEGMENT segment(true);
    segment << *storage;
    std::string error;
    m_write_error.clear();
    if (!dev_pdb_write_file(segment, path, compression_level, error)) {
        DEV_DEBUG("%s", error.c_str());
        m_write_error = error;
        // A file that could not be created is "Failed opening"; a later step names itself.
        const bool at_open = error.find(": open failed: ") == full.size();
        DEV_INTERNAL_ERROR(at_open ? "Failed opening " + full : "Failed writing " + error);
        return false;
    }
    if (cfg_is_on("dev_debug_family_info", false)) {
        const double seconds = now_seconds() - start;
        if (family == DEV_FAMILY_GENERIC)
            DEV_DEBUG("Spent %.0f seconds writing combined info data to PDB: %s", seconds, full.c_str());
        else
            DEV_DEBUG("Spent %.0f seconds writing %s family info data to PDB: %s", seconds,
                      dstr_get_user_string(family), full.c_str());
    }
    return true;
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
