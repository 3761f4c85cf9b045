// DEV_FAMILY_INFO_PDB: the catalogue store's persistent side, over the store's public
// interface: file names, loading with its fallbacks, writing, the default text catalogue and
// the installed catalogue that the process-wide store starts with. The store's members of
// the same names forward here.
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

const char* const TEST_SECTION = "General Section";
const char* const TEST_KEY = "DEV_FAMILY_INFO_FILE";

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

// The persistent file of a family (or of all families) and data type.
bool generate_pdb_path_of(const DEV_FAMILY_INFO_MGR_BODY& store, DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                          const FIO_PATH* explicit_path, FIO_PATH* pdb_path) {
    if (!DEV_ASSERT_TEXT((family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX),
                         "(family > DEV_FAMILY_INVALID) && (family < DEV_FAMILY_MAX)"))
        return false;
    if (!DEV_ASSERT_TEXT(pdb_path != NULL, "pdb_path != NULL")) return false;
    if (explicit_path) {
        *pdb_path = *explicit_path;
        return true;
    }
    std::string directory;
    store.get_ddb_fullpath_of(family, directory);
    std::string base = family == DEV_FAMILY_GENERIC ? std::string("ddb_cumulative")
                                                    : std::string("ddb_") + dstr_get_debug_string(family);
    pdb_path->set_full_path(directory + "/" + lower(base + suffix_of(type)));
    return true;
}

// The persistent side of one store.
class DEV_FAMILY_INFO_PDB {
public:
    explicit DEV_FAMILY_INFO_PDB(DEV_FAMILY_INFO_MGR_BODY& store) : m_store(store) {}
    bool generate_path(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH* explicit_path,
                       FIO_PATH* pdb_path) const {
        return generate_pdb_path_of(m_store, family, type, explicit_path, pdb_path);
    }
    bool load(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH* explicit_path);
    bool read_default();
    bool write(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH* explicit_path,
               int compression_level);
    bool load_installed();

private:
    DEV_FAMILY_INFO_MGR_BODY& m_store;
};

bool DEV_FAMILY_INFO_PDB::load(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                  const FIO_PATH* explicit_path) {
    const bool from_ascii = cfg_is_on("dev_load_hdr_info_from_ascii", false);
    const bool debug = cfg_is_on("dev_debug_family_info", false);
    const double start = now_seconds();
    m_store.set_loaded_data_type(type);

    FIO_PATH path;
    if (!generate_path(family, type, explicit_path, &path)) return false;
    bool exists = FIO_FILE_SYSTEM::exists(path);
    if (!exists) {
        if (explicit_path) {
            DEV_DEBUG("ERROR: PDB file %s with the family info does not exist!", path.full_path().c_str());
            return false;
        }
        // The cumulative file of the same kind, the family's own complete file, then the
        // complete cumulative file at the root of the device database.
        FIO_PATH candidate;
        if (generate_path(DEV_FAMILY_GENERIC, type, nullptr, &candidate) && FIO_FILE_SYSTEM::exists(candidate)) {
            path = candidate;
            exists = true;
        } else if (type != DEV_FAMILY_DATA_TYPE_INFO &&
                   generate_path(family, DEV_FAMILY_DATA_TYPE_INFO, nullptr, &candidate) &&
                   FIO_FILE_SYSTEM::exists(candidate)) {
            path = candidate;
            type = DEV_FAMILY_DATA_TYPE_INFO;
            exists = true;
        } else {
            path.set_full_path(gen_get_ddb_root() + "/" + "ddb_cumulative" + suffix_of(DEV_FAMILY_DATA_TYPE_INFO));
            type = DEV_FAMILY_DATA_TYPE_INFO;
            exists = FIO_FILE_SYSTEM::exists(path);
            if (exists && tst_has_value(TEST_SECTION, TEST_KEY))
                tst_set_value(TEST_SECTION, TEST_KEY, "Full cumulative data loaded for " + bookkeeping_name(family));
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
        if (!tst_has_value(TEST_SECTION, TEST_KEY)) {
            DEV_INTERNAL_ERROR((std::string("Required file not installed, ") + full).c_str());
            return false;
        }
        const std::string text_file = tst_get_value(TEST_SECTION, TEST_KEY);
        tst_set_value(TEST_SECTION, TEST_KEY, "ASCII data loaded for " + bookkeeping_name(family));
        ok = m_store.read_family_data(FIO_PATH(text_file));
    } else if (from_ascii) {
        DEV_DEBUG("ASCII mode. Reading from %s (assumed text file)", full.c_str());
        ok = m_store.read_family_data(path);
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
        take_all(m_store, storage.m_family_data, replace);
        take_all(m_store, storage.m_device_data, replace);
        take_all(m_store, storage.m_part_data, replace);
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
        m_store.generate_part_support_traits();
        m_store.generate_fastest_part_traits();
        if (cfg_is_on("dev_dump_part_data", false)) {
            FIO_PATH dump = path;
            dump.set_extension("txt");
            m_store.write_family_data(family, type, dump, ZLIB_NO_COMPRESSION);
        }
        if (debug) {
            if (family == DEV_FAMILY_GENERIC)
                DEV_DEBUG("Now maintaining info about all device families");
            else
                DEV_DEBUG("Now maintaining info about %d devices and %d parts of %s", m_store.get_device_count(family),
                          m_store.get_part_count(family), dstr_get_user_string(family));
        }
    }
    return ok;
}

bool DEV_FAMILY_INFO_PDB::read_default() {
    const std::string file = gen_get_velcora_path() + "h" + "/" + "dev_part_manager_auto.part";
    if (!m_store.read_family_data(FIO_PATH(file))) {
        DEV_INTERNAL_ERROR((std::string("Failed reading FGEN-generated ASCII family info data ") + file).c_str());
        return false;
    }
    m_store.set_loaded_data_type(DEV_FAMILY_DATA_TYPE_INFO);
    m_store.generate_part_support_traits();
    m_store.generate_fastest_part_traits();
    return true;
}

bool DEV_FAMILY_INFO_PDB::write(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                 const FIO_PATH* explicit_path, int compression_level) {
    if (!DEV_ASSERT_TEXT(compression_level != 0, "compression_level != 0")) return false;
    const double start = now_seconds();
    std::unique_ptr<DEV_FAMILY_INFO> storage(new DEV_FAMILY_INFO(false));
    if (!DEV_ASSERT_TEXT(storage != NULL, "storage != NULL")) return false;
    FIO_PATH path;
    if (!generate_path(family, type, explicit_path, &path)) return false;
    if (!has_ddb_extension(path)) return false;
    const std::string full = path.full_path();
    m_store.prepare_output(family, type, storage.get());
    PDB_DDB_SEGMENT segment(true);
    segment << *storage;
    std::string error;
    m_store.set_last_write_error("");
    if (!dev_pdb_write_file(segment, path, compression_level, error)) {
        DEV_DEBUG("%s", error.c_str());
        m_store.set_last_write_error(error);
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

bool DEV_FAMILY_INFO_PDB::load_installed() {
    FIO_PATH cumulative;
    if (generate_path(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, nullptr, &cumulative) &&
        FIO_FILE_SYSTEM::exists(cumulative))
        return load(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, nullptr);
    const std::string text = gen_get_velcora_path() + "h/dev_part_manager_auto.part";
    if (FIO_FILE_SYSTEM::exists(text)) return read_default();
    DEV_DEBUG("No device catalogue is installed under %s", gen_get_velcora_path().c_str());
    return false;
}

}  // namespace

// ---------------------------------------------------------------------------------------
// The store's persistent members

DEV_FAMILY_INFO_MGR_BODY* DEV_FAMILY_INFO_MGR_BODY::get_instance() {
    static DEV_FAMILY_INFO_MGR_BODY instance;
    // The load runs after construction, so queries made while loading find the store
    // instead of re-entering its initialisation.
    static bool load_started = false;
    if (!load_started) {
        load_started = true;
        instance.load_installed_catalogue();
    }
    return &instance;
}

bool DEV_FAMILY_INFO_MGR_BODY::load_installed_catalogue() { return DEV_FAMILY_INFO_PDB(*this).load_installed(); }

bool DEV_FAMILY_INFO_MGR_BODY::load_family_data(DEV_FAMILY_ENUM family) {
    return load_data_from_pdb(family, DEV_FAMILY_DATA_TYPE_INFO, nullptr);
}

bool DEV_FAMILY_INFO_MGR_BODY::generate_pdb_path(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                 const FIO_PATH* explicit_path, FIO_PATH* pdb_path) const {
    return generate_pdb_path_of(*this, family, type, explicit_path, pdb_path);
}

bool DEV_FAMILY_INFO_MGR_BODY::load_data_from_pdb(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                  const FIO_PATH* explicit_path) {
    return DEV_FAMILY_INFO_PDB(*this).load(family, type, explicit_path);
}

bool DEV_FAMILY_INFO_MGR_BODY::read_default_family_data() { return DEV_FAMILY_INFO_PDB(*this).read_default(); }

bool DEV_FAMILY_INFO_MGR_BODY::write_data_to_pdb(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type,
                                                 const FIO_PATH* explicit_path, int compression_level) {
    return DEV_FAMILY_INFO_PDB(*this).write(family, type, explicit_path, compression_level);
}
