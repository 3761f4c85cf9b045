// What every harness shares: a private scratch directory for the files a harness writes,
// silenced library reports, and the check that turns a broken property into a crash
// report for libFuzzer.
#ifndef VELCORA_FUZZ_SUPPORT_H
#define VELCORA_FUZZ_SUPPORT_H

#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <zlib.h>

#include "host/msg.h"

// A broken property: reported and aborted, so libFuzzer keeps the input as a crash.
#define FUZZ_CHECK(cond, what)                                                                            \
    do {                                                                                                  \
        if (!(cond)) {                                                                                    \
            std::fprintf(stderr, "fuzz property broken at %s:%d: %s\n  (%s)\n", __FILE__, __LINE__, what, \
                         #cond);                                                                          \
            std::abort();                                                                                 \
        }                                                                                                 \
    } while (0)

namespace fuzz {

// Where scratch directories go: memory when the system offers it (every write the library
// makes is synced to disk, which on a disk costs more than the rest of a harness run).
inline std::filesystem::path scratch_parent() {
    if (access("/dev/shm", W_OK) == 0) return "/dev/shm";
    return std::filesystem::temp_directory_path();
}

// A directory of unguessable name, removed at exit. Inputs cannot name the files in it (a
// family-info include of its own file, say). (Never destroyed: the exit handler that
// removes the directory still needs its name.)
inline const std::string& scratch_directory() {
    static const std::string* path = [] {
        auto* pattern = new std::string((scratch_parent() / "velcora_fuzz_XXXXXX").string());
        if (!mkdtemp(&(*pattern)[0])) {
            std::perror("mkdtemp");
            std::abort();
        }
        std::atexit([] {
            std::error_code ec;
            std::filesystem::remove_all(scratch_directory(), ec);
        });
        return pattern;
    }();
    return *path;
}

inline std::string scratch_file(const std::string& name) { return scratch_directory() + "/" + name; }

inline void write_file(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    FUZZ_CHECK(out.good(), "the scratch file could not be written");
}

inline std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The library reports bad input through the host's messages; a harness keeps them quiet
// (and bounded) by capturing them and forgetting them after every input.
inline MSG_CAPTURE& quiet_reports() {
    static MSG_CAPTURE* capture = new MSG_CAPTURE(false);
    return *capture;
}

// The bundled installation of the build tree, unless the environment names another.
inline void use_bundled_installation() { setenv("VELCORA_ROOTDIR", VELCORA_BUNDLED_ROOT, 0); }

inline void put_le(std::string& out, uint64_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

// The segment's header as the persistent store writes it: "VDDB", format version 1, two
// reserved bytes, the payload length (8 bytes) and its CRC-32, little endian.
inline std::string persistent_segment(const std::string& payload) {
    std::string out("VDDB");
    put_le(out, 1, 2);
    put_le(out, 0, 2);
    put_le(out, payload.size(), 8);
    put_le(out, crc32(0L, reinterpret_cast<const Bytef*>(payload.data()), static_cast<uInt>(payload.size())),
           4);
    return out + payload;
}

inline std::string compressed(const std::string& bytes, int level) {
    uLongf size = compressBound(bytes.size());
    std::string out(size, '\0');
    FUZZ_CHECK(compress2(reinterpret_cast<Bytef*>(&out[0]), &size, reinterpret_cast<const Bytef*>(bytes.data()),
                         bytes.size(), level) == Z_OK,
               "zlib could not compress the segment");
    out.resize(size);
    return out;
}

// The persistent file a harness of a .ddb reader reads. Byte 0 of the input picks the form
// (mod 3): 0 the rest of the input as the file; 1 the rest as a segment payload under a valid
// header (magic, version, length, checksum), so mutations reach the object decoder instead of
// dying at the checksum; 2 that segment compressed as one zlib stream at level byte 1 (mod 9,
// plus 1). Byte 1 is skipped in every form. False for inputs shorter than two bytes.
inline bool persistent_file_from(const uint8_t* data, size_t size, std::string& file) {
    if (size < 2) return false;
    const std::string rest(reinterpret_cast<const char*>(data) + 2, size - 2);
    switch (data[0] % 3) {
    case 0: file = rest; break;
    case 1: file = persistent_segment(rest); break;
    default: file = compressed(persistent_segment(rest), data[1] % 9 + 1); break;
    }
    return true;
}

}  // namespace fuzz

#endif
