// The persistent store on top of the archive stream: a segment is written to a ".ddb" file
// through DEV_ARCHIVE (plain at level 0, one zlib stream at levels 1 to 9) and read back
// from any file the writer produces.
#ifndef VELCORA_DEV_PDB_FILE_H
#define VELCORA_DEV_PDB_FILE_H

#include "dev_export.h"

#include <string>

#include "dev_archive_export.h"
#include "host/fio.h"
#include "host/pdb.h"

// The segment's byte stream over an open archive (raw write/read).
class DEV_EXPORT DEV_PDB_ARCHIVE_STREAM : public PDB_STREAM {
public:
    explicit DEV_PDB_ARCHIVE_STREAM(DEV_ARCHIVE& archive) : m_archive(archive) {}
    bool write(const void* data, size_t size) override { return m_archive.write(data, size); }
    size_t read(void* data, size_t size) override { return m_archive.read(data, size); }

private:
    DEV_ARCHIVE& m_archive;
};

// Writes the (writing) segment to `path` at `compression_level` (0 to 9). The previous file
// is replaced only by a complete new one. False with a message naming the file and the
// failed step in `error` ("<path>: write failed: <system's reason>"; "open" and "rename"
// likewise) when the file cannot be written.
DEV_EXPORT bool dev_pdb_write_file(PDB_DDB_SEGMENT& segment, const FIO_PATH& path, int compression_level,
                        std::string& error);

// Reads `path` into the (reading) segment. False with a message naming the file in `error`
// when the file is missing, foreign, of another format version, truncated or corrupted.
DEV_EXPORT bool dev_pdb_read_file(const FIO_PATH& path, PDB_DDB_SEGMENT& segment, std::string& error);

#endif
