// What every harness shares: a private scratch directory for the files a harness writes,
// silenced library reports, and the check that turns a broken property into a crash
// report for libFuzzer.
#ifndef VELCORA_FUZZ_SUPPORT_H
#define VELCORA_FUZZ_SUPPORT_H

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

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

}  // namespace fuzz

#endif
