// DEV_FAMILY_INFO_MGR_BODY: the process-wide store of the catalogue records. It owns one
// table of records per kind, indexed by enumerator (a null slot where nothing is known),
// counts per family the devices and parts the text reader defined, knows each family's data
// folder and keeps the part manager's lists derived from the records (emptied whenever a
// record changes). Reading and dumping the family-info text and the persistent files are
// units of their own over this interface (DEV_FAMILY_INFO_READER, DEV_FAMILY_INFO_WRITER,
// DEV_FAMILY_INFO_PDB); the members named after them below forward to them.
#ifndef VELCORA_DEV_FAMILY_INFO_MGR_BODY_H
#define VELCORA_DEV_FAMILY_INFO_MGR_BODY_H

#include "dev_export.h"

#include <memory>
#include <string>
#include <vector>

#include "dev_device_desc.h"
#include "dev_family_desc.h"
#include "dev_part_desc.h"
#include "host/dstr.h"
#include "host/fio.h"

class DEV_ARCHIVE;
class DEV_FAMILY_INFO;
struct DEV_PART_LIST_CACHE;

// Which records a load or a write concerns.
enum DEV_FAMILY_DATA_TYPE : int {
    DEV_FAMILY_DATA_TYPE_INVALID = 0,
    DEV_FAMILY_DATA_TYPE_FAMILY = 1,
    DEV_FAMILY_DATA_TYPE_DEVICE = 2,
    DEV_FAMILY_DATA_TYPE_PART = 3,
    DEV_FAMILY_DATA_TYPE_INFO = 4  // all three
};

class DEV_EXPORT DEV_FAMILY_INFO_MGR_BODY {
public:
    // The one store of the process, created on first call; creating it loads the whole
    // catalogue (load_installed_catalogue).
    static DEV_FAMILY_INFO_MGR_BODY* get_instance();
    // Loads every family: the cumulative persistent file of the installation when there is
    // one, else the installation's text catalogue; with neither, a debug note and nothing.
    bool load_installed_catalogue();
    // Forgets every record and count (the folder table stays). For tools that check files
    // one by one and for tests that fill the store with their own records.
    void clear();

    // An empty store (tests and tools may keep stores of their own).
    DEV_FAMILY_INFO_MGR_BODY();
    ~DEV_FAMILY_INFO_MGR_BODY();
    DEV_FAMILY_INFO_MGR_BODY(const DEV_FAMILY_INFO_MGR_BODY&) = delete;
    DEV_FAMILY_INFO_MGR_BODY& operator=(const DEV_FAMILY_INFO_MGR_BODY&) = delete;

    // ---- records -------------------------------------------------------------------------
    // The record, after the range check; an absent record is an internal error (null).
    DEV_FAMILY_DESC* get_desc_of(DEV_FAMILY_ENUM family) const;
    DEV_DEVICE_DESC* get_desc_of(DEV_DEVICE_ENUM device) const;
    DEV_PART_DESC* get_desc_of(DEV_PART_ENUM part) const;
    // The record or null, without reports (out-of-range values give null).
    DEV_FAMILY_DESC* find_desc_of(DEV_FAMILY_ENUM family) const;
    DEV_DEVICE_DESC* find_desc_of(DEV_DEVICE_ENUM device) const;
    DEV_PART_DESC* find_desc_of(DEV_PART_ENUM part) const;
    // The record's family (DEV_FAMILY_INVALID when the record is absent).
    DEV_FAMILY_ENUM get_family_of(DEV_DEVICE_ENUM device) const;
    DEV_FAMILY_ENUM get_family_of(DEV_PART_ENUM part) const;

    // Takes ownership of `record` into its slot when the slot is empty or `replace` is set
    // (the previous record is then deleted); otherwise deletes `record`. False when the record
    // was dropped (its enumerator out of range, or the slot taken and `replace` clear).
    bool take_desc(DEV_FAMILY_DESC* record, bool replace);
    bool take_desc(DEV_DEVICE_DESC* record, bool replace);
    bool take_desc(DEV_PART_DESC* record, bool replace);

    // Devices and parts defined for a family by the text reader (0 outside the range).
    int get_device_count(DEV_FAMILY_ENUM family) const;
    int get_part_count(DEV_FAMILY_ENUM family) const;
    // Counts one more device (or part) record of `family` that a text block defined.
    void count_new_record(DEV_FAMILY_ENUM family, bool part);

    DEV_FAMILY_DATA_TYPE get_loaded_data_type() const { return m_loaded_data_type; }
    void set_loaded_data_type(DEV_FAMILY_DATA_TYPE type) { m_loaded_data_type = type; }

    // ---- lists derived from the records ----------------------------------------------------
    // The part manager's per-part voltage and temperature lists, computed on first query.
    DEV_PART_LIST_CACHE& get_derived_lists() const;
    // Forgets them; called whenever a record is taken in, the store cleared or records are
    // read, and by anyone who changes a record in place.
    void invalidate_derived_lists();

    // ---- folders -------------------------------------------------------------------------
    // Fills the family-to-folder table from the product-line definition.
    void init_devices_folder_by_family_enum();
    // The lower-case folder name of a family ("" outside the range or when it has none).
    const std::string& get_devices_folder(DEV_FAMILY_ENUM family) const;
    // The device-database root joined with the family's folder.
    void get_ddb_fullpath_of(DEV_FAMILY_ENUM family, std::string& path) const;

    // ---- output --------------------------------------------------------------------------
    // Gathers the records of `family` (every family for DEV_FAMILY_GENERIC) of the kinds
    // `type` asks for into `storage`, which borrows them; notes what was found per kind.
    void prepare_output(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, DEV_FAMILY_INFO* storage) const;

    // ---- derived part traits ---------------------------------------------------------------
    void generate_part_support_traits();
    void generate_fastest_part_traits();

    // ---- persistent files (DEV_FAMILY_INFO_PDB) --------------------------------------------
    // Loads every record of a family (all families for DEV_FAMILY_GENERIC).
    bool load_family_data(DEV_FAMILY_ENUM family);
    // Loads from the family's persistent file with the fallbacks to cumulative files and text.
    bool load_data_from_pdb(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH* explicit_path);
    // Reads the whole catalogue from the installation's default text file.
    bool read_default_family_data();
    // The persistent file of a family (or of all families) and data type.
    bool generate_pdb_path(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH* explicit_path,
                           FIO_PATH* pdb_path) const;
    bool write_data_to_pdb(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH* explicit_path,
                           int compression_level);
    // After a failed write_data_to_pdb or write_family_data: the file and the failed step
    // with the system's reason ("<path>: write failed: No space left on device"); the
    // previous file is then unchanged. Empty after a successful write.
    const std::string& last_write_error() const { return m_write_error; }
    void set_last_write_error(const std::string& error) { m_write_error = error; }

    // ---- family-info text (DEV_FAMILY_INFO_READER, DEV_FAMILY_INFO_WRITER) -------------------
    bool read_family_data(const FIO_PATH& path);
    bool parse_family_data(const std::string& line, DEV_FAMILY_ENUM family_enum);
    bool parse_device_data(const std::string& line, DEV_DEVICE_ENUM device_enum);
    bool parse_part_data(const std::string& line, DEV_PART_ENUM part_enum);

    bool write_family_data(DEV_FAMILY_ENUM family, DEV_FAMILY_DATA_TYPE type, const FIO_PATH& path,
                           int compression_level);
    void write_family_desc(DEV_ARCHIVE* archive, DEV_FAMILY_DESC* desc);
    void write_device_desc(DEV_ARCHIVE* archive, DEV_DEVICE_DESC* desc);
    void write_part_desc(DEV_ARCHIVE* archive, DEV_PART_DESC* desc);

private:
    std::vector<std::unique_ptr<DEV_FAMILY_DESC>> m_family_descriptors;
    std::vector<std::unique_ptr<DEV_DEVICE_DESC>> m_device_descriptors;
    std::vector<std::unique_ptr<DEV_PART_DESC>> m_part_descriptors;
    std::vector<int> m_device_count;  // per family
    std::vector<int> m_part_count;    // per family
    std::vector<std::string> m_devices_folder;  // per family
    DEV_FAMILY_DATA_TYPE m_loaded_data_type = DEV_FAMILY_DATA_TYPE_INVALID;
    mutable std::unique_ptr<DEV_PART_LIST_CACHE> m_derived_lists;
    std::string m_write_error;
};

#endif
