// DEV_PATH: which file on disk holds a given kind of data for a family, a device or a part.
//
// A file type is a short word ("hdr", "pad", "pkg", "part_info", "rsi", "pwr", "lei",
// "blkrba", "device") compared without regard to case; it doubles as the extension of the
// text form. Every base name is "ddb_" followed by the debug string of an enumerator,
// lower-cased; each base name is tried in its persistent form {base}_{type}.ddb before its
// text form {base}.{type}, in the data folder of the family. All operations are static.
//
// The switch "dev_debug_path" (read once, cached by the host) makes every candidate tried
// show on the debug channel.
#ifndef VELCORA_DEV_PATH_H
#define VELCORA_DEV_PATH_H

#include "dev_export.h"

#include <string>

#include "host/dstr_fwd.h"
#include "host/fio.h"

class DEV_BASIC_INFO;

class DEV_EXPORT DEV_PATH {
public:
    // The family's data directory.
    static void get_ddb_path_of(DEV_FAMILY_ENUM family, FIO_PATH* ret_path);
    // The family directory, the base name "ddb_" + `name` lower-cased and, when `persistent`,
    // the extension "ddb" (for writers that create files).
    static void build_device_file_path(DEV_FAMILY_ENUM family, const std::string& name, FIO_PATH* ret_path,
                                       bool persistent);

    // Each search returns true with `ret_path` naming an existing file, or false with
    // `ret_path` naming the first candidate it built.
    // Family level: "hdr", "pad", "rsi", "lei", "pwr", "blkrba", "part_info"; a family with
    // family trait 41 and a base family is searched under the base family.
    static bool get_existing_device_file_path(DEV_FAMILY_ENUM family, const char* file_type_str,
                                              FIO_PATH* ret_path);
    // Device level: "device", "hdr", "pad", "pwr", "rsi", "part_info", with the fallback to
    // the catalogue's base device for every type but "hdr". `basic_info` supplies the data
    // file stem (STRING key 13) that "pwr" also tries.
    static bool get_existing_device_file_path(DEV_DEVICE_ENUM device, const char* file_type_str,
                                              FIO_PATH* ret_path, DEV_BASIC_INFO* basic_info = nullptr);
    // Part level: "hdr" (the device's file), "pad", "pkg", "part_info".
    static bool get_existing_device_file_path(DEV_PART_ENUM part, const char* file_type_str,
                                              FIO_PATH* ret_path);

    // True when the path's extension is "ddb" in any case (the persistent form).
    static bool is_pdb_file(const FIO_PATH& path);
};

#endif
