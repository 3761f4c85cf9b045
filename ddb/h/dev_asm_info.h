// DEV_ASM_INFO: the data of the bit-stream assembler for one device: its die description
// (ASMDB_DIE) and, for some devices, its routing description (ASMDB_DIRT). Both are objects
// of the assembler database; this library owns them, finds their file and calls the
// assembler-database module to read, write and delete them. The module is a shared library
// loaded on first need through the host's dynamic-module service: the configuration value
// "dev_asmdb_module" names it, else the installed module beside this library
// (libvelcora_asmdb.so). A module or function that cannot be found is reported as an
// internal error with the host's error text, and the call goes on without it.
//
// The module exports, with C linkage (paths are full paths; the writers answer non-zero on
// success, the readers null on failure):
//   ASMDB_DIE*  asmdb_pdb_read_die(const char* path);
//   ASMDB_DIRT* asmdb_pdb_read_dirt(const char* path);
//   int  asmdb_pdb_write_die(const ASMDB_DIE* die, const char* path, int compression_level);
//   int  asmdb_pdb_write_dirt(const ASMDB_DIRT* dirt, const char* path, int compression_level);
//   void asmdb_delete_die(ASMDB_DIE* die);
//   void asmdb_delete_dirt(ASMDB_DIRT* dirt);
// Both kinds of object are read and written under the die file's path: where the routing
// description lies beside it is the module's matter.
#ifndef VELCORA_DEV_ASM_INFO_H
#define VELCORA_DEV_ASM_INFO_H

#include "dev_export.h"
#include "host/fio.h"

// The assembler database's objects, opaque to this library.
struct ASMDB_DIE;
struct ASMDB_DIRT;

class DEV_BASIC_INFO;

class DEV_EXPORT DEV_ASM_INFO {
public:
    DEV_ASM_INFO();
    // Deletes what it holds (purge_data).
    ~DEV_ASM_INFO();
    DEV_ASM_INFO(const DEV_ASM_INFO&) = delete;
    DEV_ASM_INFO& operator=(const DEV_ASM_INFO&) = delete;

    ASMDB_DIE* get_asmdb_die() const { return m_asmdb_die; }
    ASMDB_DIRT* get_asmdb_dirt() const { return m_asmdb_dirt; }
    // The slot must be empty ("m_asmdb_die == NULL", "m_asmdb_dirt == NULL"); a held object
    // is overwritten without being deleted.
    void set_asmdb_die(ASMDB_DIE* die);
    void set_asmdb_dirt(ASMDB_DIRT* dirt);

    // The die file of a device: in its family's data folder, "ddb_" followed by the basic
    // info's STRING key 10, else its STRING key 13, else the device's name, lower-cased, with
    // the extension "ddb". False (and no path) without a basic info.
    static bool get_die_file_path(const DEV_BASIC_INFO* basic_info, FIO_PATH* path);
    // Reads the die file of the basic info's device, and the routing description (which the
    // module keeps beside the die file) when STRING key 9 is set. Both slots must be empty
    // ("m_asmdb_die == NULL", "m_asmdb_dirt == NULL"); when either is not, nothing is read and
    // the result is false. True when everything asked for was read.
    bool load_data_from_pdb(DEV_BASIC_INFO* basic_info);
    // Writes what is held to `path` at the level "ddb_compression_level" (9 when unset).
    bool write_data_to_pdb(const FIO_PATH& path);
    // Deletes both objects.
    void purge_data();

private:
    ASMDB_DIE* m_asmdb_die;
    ASMDB_DIRT* m_asmdb_dirt;
};

#endif
