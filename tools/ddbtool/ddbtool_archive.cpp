// Archive commands: `cat` prints the text of plain or compressed files, `pack` writes a
// file's bytes through the archive at a chosen compression level.
#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "ddbtool.h"
#include "dev_archive_export.h"
#include "host/fio.h"

namespace {

constexpr size_t kChunk = 64 * 1024;

const char kCatUsage[] =
    "usage: ddbtool cat FILE...\n\n"
    "Prints the text of each FILE, plain or compressed, as the device database reads it.\n"
    "A missing, empty, binary or damaged file is reported and makes the exit status 1.\n";

const char kPackUsage[] =
    "usage: ddbtool pack [--level N] IN OUT\n\n"
    "Writes the bytes of IN to OUT through the archive stream. N is the compression\n"
    "level: 0 writes plain text, 1 to 9 a compressed stream (default 9).\n";

// Checks that `path` names a readable, non-empty regular file; reports why not.
bool check_input(const char* command, const std::string& path) {
    struct stat st;
    if (::stat(path.c_str(), &st) != 0) {
        ddbtool_error(command, path + ": no such file");
        return false;
    }
    if (!S_ISREG(st.st_mode)) {
        ddbtool_error(command, path + ": not a regular file");
        return false;
    }
    if (st.st_size == 0) {
        ddbtool_error(command, path + ": file is empty");
        return false;
    }
    return true;
}

bool put_text(const char* command, const std::string& path, const char* data, size_t size) {
    if (std::memchr(data, '\0', size)) {
        ddbtool_error(command, path + ": binary content, not a text file");
        return false;
    }
    std::fwrite(data, 1, size, stdout);
    return true;
}

bool cat_one(const std::string& path) {
    if (!check_input("cat", path)) return false;
    DEV_ARCHIVE archive;
    if (!archive.open(FIO_PATH(path), DEV_ARCHIVE::READ) || !archive.is_open()) {
        archive.close(true);
        ddbtool_error("cat", path + ": cannot open");
        return false;
    }
    std::vector<char> buffer(kChunk);
    bool ok = true;
    size_t n = archive.read(buffer.data(), buffer.size());
    const bool compressed = archive.compression_level() != ZLIB_NO_COMPRESSION;
    std::string inflated;
    if (!compressed && n < buffer.size() &&
        DEV_ARCHIVE::inflate_buffer(buffer.data(), n, inflated)) {
        // A compressed stream short enough to end in its first block reads as plain.
        ok = put_text("cat", path, inflated.data(), inflated.size());
        n = 0;
    }
    while (ok && n != 0) {
        ok = put_text("cat", path, buffer.data(), n);
        n = archive.read(buffer.data(), buffer.size());
    }
    if (ok && compressed && !archive.reached_stream_end()) {
        ddbtool_error("cat", path + ": compressed stream is truncated or corrupt");
        ok = false;
    }
    archive.close(true);
    return ok;
}

bool same_file(const std::string& a, const std::string& b) {
    struct stat sa, sb;
    return ::stat(a.c_str(), &sa) == 0 && ::stat(b.c_str(), &sb) == 0 && sa.st_dev == sb.st_dev &&
           sa.st_ino == sb.st_ino;
}

bool parse_level(const std::string& text, int& level) {
    if (text.size() != 1 || text[0] < '0' || text[0] > '9') {
        ddbtool_error("pack", "compression level must be a number from 0 to 9, got \"" + text + "\"");
        return false;
    }
    level = text[0] - '0';
    return true;
}

}  // namespace

int ddbtool_cat(const std::vector<std::string>& args) {
    if (args.empty()) {
        ddbtool_error("cat", "no file given");
        std::fputs(kCatUsage, stderr);
        return 2;
    }
    int status = 0;
    for (const std::string& path : args)
        if (!cat_one(path)) status = 1;
    return status;
}

int ddbtool_pack(const std::vector<std::string>& args) {
    int level = ZLIB_BEST_COMPRESSION;
    std::vector<std::string> files;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--level") {
            if (i + 1 == args.size()) {
                ddbtool_error("pack", "--level needs a value");
                return 2;
            }
            if (!parse_level(args[++i], level)) return 2;
        } else if (a.compare(0, 8, "--level=") == 0) {
            if (!parse_level(a.substr(8), level)) return 2;
        } else if (a.size() > 1 && a[0] == '-') {
            ddbtool_error("pack", "unknown option \"" + a + "\"");
            return 2;
        } else {
            files.push_back(a);
        }
    }
    if (files.size() != 2) {
        ddbtool_error("pack", "expected IN and OUT");
        std::fputs(kPackUsage, stderr);
        return 2;
    }
    const std::string& in_path = files[0];
    const std::string& out_path = files[1];
    if (!check_input("pack", in_path)) return 1;
    if (same_file(in_path, out_path)) {
        ddbtool_error("pack", in_path + ": input and output are the same file");
        return 1;
    }
    std::FILE* in = std::fopen(in_path.c_str(), "rb");
    if (!in) {
        ddbtool_error("pack", in_path + ": cannot open");
        return 1;
    }
    // OUT is replaced only by a complete file: any failure leaves it as it was.
    DEV_ARCHIVE archive(level);
    archive.open(FIO_PATH(out_path), DEV_ARCHIVE::WRITE);
    std::vector<char> buffer(kChunk);
    size_t n;
    while (archive.write_ok() && (n = std::fread(buffer.data(), 1, buffer.size(), in)) != 0)
        archive.write(buffer.data(), n);
    const bool read_failed = std::ferror(in) != 0;
    std::fclose(in);
    if (read_failed && archive.write_ok()) {
        archive.discard();
        ddbtool_error("pack", in_path + ": read error");
        return 1;
    }
    archive.close(true);
    if (!archive.write_ok()) {
        ddbtool_error("pack", out_path + ": " + archive.write_error());
        return 1;
    }
    std::printf("%s: %lld bytes -> %s: %lld bytes (level %d)\n", in_path.c_str(),
                FIO_FILE_SYSTEM::file_size(in_path), out_path.c_str(),
                FIO_FILE_SYSTEM::file_size(out_path), level);
    return 0;
}

const DDBTOOL_COMMAND DDBTOOL_CAT = {"cat", "print the text of plain or compressed files",
                                     kCatUsage, ddbtool_cat};
const DDBTOOL_COMMAND DDBTOOL_PACK = {"pack", "write a file through the archive at a compression level",
                                      kPackUsage, ddbtool_pack};
