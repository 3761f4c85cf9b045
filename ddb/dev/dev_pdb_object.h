// The persistent file of one root object of device data (a basic info, pad info, package
// info, part info or routing-switch info body): written whole to a ".ddb" file and read whole
// into a new object. Each class keeps its own report texts (DEV_PDB_WORDING).
//
// Writing: a path whose extension is not "ddb" (in any case) is reported with
// `write_extension` and the extension replaced; a level of 0 is reported with
// "compression_level != 0" (and written plain) unless the class allows plain files; a
// file that cannot be written is reported with "archive.is_open()". Reading: a path whose
// extension is not "ddb" is reported with `read_extension`; a file that is missing,
// foreign, truncated or corrupted, or whose structure does not hold together (the root's
// check_structure), gives a debug note naming the file and the reason, and no object. Both
// note their time with the class's texts.
#ifndef VELCORA_DEV_PDB_OBJECT_H
#define VELCORA_DEV_PDB_OBJECT_H

#include <chrono>
#include <memory>
#include <new>
#include <string>

#include "ddb_dev__pdb.h"
#include "dev_pdb_file.h"
#include "host/fio.h"
#include "host/gen.h"
#include "host/msg.h"

struct DEV_PDB_WORDING {
    const char* write_extension;  // the report of a wrong extension when writing
    const char* read_extension;   // ... when reading
    const char* write_timing;     // "Spent %.0f seconds writing HDR info to PDB: %s"
    const char* read_timing;      // "Spent %.0f seconds loading HDR info from PDB: %s"
    bool timing_in_whole_seconds;  // the timing texts take the seconds as an int ("%d")
    bool plain_allowed = false;    // a level of 0 (plain) is written without a report
};

double dev_pdb_seconds_since(std::chrono::steady_clock::time_point start);
void dev_pdb_note_timing(const DEV_PDB_WORDING& wording, bool writing, double seconds, const std::string& path);

template <typename ROOT>
bool dev_pdb_write_root(ROOT& root, FIO_PATH path, int compression_level, const DEV_PDB_WORDING& wording) {
    const auto start = std::chrono::steady_clock::now();
    if (gen_stricmp("ddb", path.extension().c_str()) != 0) {
        DEV_INTERNAL_ERROR(wording.write_extension);
        path.set_extension("ddb");
    }
    DEV_ASSERT_TEXT(compression_level != 0 || wording.plain_allowed, "compression_level != 0");
    std::string error;
    bool ok;
    try {
        PDB_DDB_SEGMENT segment(true);
        segment << root;
        ok = dev_pdb_write_file(segment, path, compression_level, error);
    } catch (const std::bad_alloc&) {
        ok = false;
        error = path.full_path() + ": out of memory";
    }
    if (!ok) {
        DEV_DEBUG("%s", error.c_str());
        DEV_INTERNAL_ERROR("archive.is_open()");
    }
    dev_pdb_note_timing(wording, true, dev_pdb_seconds_since(start), path.full_path());
    return ok;
}

template <typename ROOT>
ROOT* dev_pdb_read_root(const FIO_PATH& path, const DEV_PDB_WORDING& wording) {
    const auto start = std::chrono::steady_clock::now();
    if (gen_stricmp("ddb", path.extension().c_str()) != 0) DEV_INTERNAL_ERROR(wording.read_extension);
    std::unique_ptr<ROOT> root;
    std::string error;
    try {
        PDB_DDB_SEGMENT segment(false);
        if (dev_pdb_read_file(path, segment, error)) {
            root.reset(new ROOT());
            segment << *root;
            segment.resolve_links();
            std::string problem;
            if (segment.failed())
                error = path.full_path() + ": " + segment.error();
            else if (!segment.at_end())
                error = path.full_path() + ": corrupted: data follows the stored object";
            else if (!root->check_structure(&problem))
                error = path.full_path() + ": corrupted: " + problem;
        }
    } catch (const std::bad_alloc&) {
        error = path.full_path() + ": out of memory";
    }
    if (!error.empty()) {
        DEV_DEBUG("%s", error.c_str());
        root.reset();
    }
    dev_pdb_note_timing(wording, false, dev_pdb_seconds_since(start), path.full_path());
    return root.release();
}

#endif
