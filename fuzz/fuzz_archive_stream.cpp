// The archive stream over plain, compressed and truncated files.
//
// Input: byte 0 picks the file (mod 3: 0 the payload as it is, 1 the payload as one zlib
// stream, 2 that stream cut short), byte 1 the compression level (mod 10), bytes 2-3 the
// cut (little endian, taken modulo the stream's length) and the size of the pieces that are
// written; the rest is the payload.
//
// Properties: reading by line and by character yields the same bytes; reading in blocks
// yields those bytes too, plus the stream's last byte on a compressed file (which getline
// and get consume without delivering); a complete stream yields the payload (or, when the
// probe judges it plain, the zlib bytes that inflate to the payload). Writing the payload
// through the archive at the level, in pieces through both writing calls (write and
// sprintf), and reading it back gives the payload.
#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "dev_archive_export.h"
#include "fuzz_support.h"

namespace {

// Generous: no reader gets near it, a reader that never ends does.
constexpr size_t kMaxDelivered = size_t(1) << 26;

struct READ_BACK {
    std::string blocks, characters, lines;
    bool compressed = false;
    bool stream_end = false;
};

std::string zlib_stream(const std::string& payload, int level) {
    uLongf size = compressBound(payload.size());
    std::string out(size, '\0');
    const int result = compress2(reinterpret_cast<Bytef*>(&out[0]), &size,
                                 reinterpret_cast<const Bytef*>(payload.data()), payload.size(), level);
    FUZZ_CHECK(result == Z_OK, "zlib could not compress the payload");
    out.resize(size);
    return out;
}

READ_BACK read_three_ways(const std::string& path) {
    READ_BACK r;
    DEV_ARCHIVE archive;
    FUZZ_CHECK(archive.open(FIO_PATH(path), DEV_ARCHIVE::READ), "an existing file did not open");
    r.compressed = archive.compression_level() != ZLIB_NO_COMPRESSION;
    char block[777];  // not a divisor of the archive's block, so reads straddle its refills
    size_t n;
    while ((n = archive.read(block, sizeof block)) != 0) {
        r.blocks.append(block, n);
        FUZZ_CHECK(r.blocks.size() < kMaxDelivered, "block reads do not end");
    }
    r.stream_end = archive.reached_stream_end();
    archive.close(true);

    FUZZ_CHECK(archive.open(FIO_PATH(path), DEV_ARCHIVE::READ), "an existing file did not reopen");
    for (;;) {
        char c = 0;
        archive.get(c);
        if (archive.eof()) break;
        r.characters += c;
        FUZZ_CHECK(r.characters.size() < kMaxDelivered, "character reads do not end");
    }
    archive.close(true);

    FUZZ_CHECK(archive.open(FIO_PATH(path), DEV_ARCHIVE::READ), "an existing file did not reopen");
    std::string line;
    for (;;) {
        const bool more = archive.getline(line, '\n', true);
        r.lines += line;
        // With the delimiter kept, only the end of the stream gives an empty line.
        if (!more || line.empty()) break;
        FUZZ_CHECK(r.lines.size() < kMaxDelivered, "line reads do not end");
    }
    archive.close(true);
    return r;
}

// The bytes a complete file must deliver: the payload, or the zlib stream the probe took
// for plain text.
bool delivers(const READ_BACK& r, const std::string& payload) {
    if (r.blocks == payload) return true;
    std::string inflated;
    return !r.compressed && DEV_ARCHIVE::inflate_buffer(r.blocks.data(), r.blocks.size(), inflated) &&
           inflated == payload;
}

void check_consistent(const READ_BACK& r) {
    FUZZ_CHECK(r.lines == r.characters, "getline and get deliver different bytes");
    if (!r.compressed || r.characters.size() == r.blocks.size()) {
        FUZZ_CHECK(r.characters == r.blocks, "get and read deliver different bytes");
    } else {
        FUZZ_CHECK(r.characters.size() + 1 == r.blocks.size() &&
                       r.blocks.compare(0, r.characters.size(), r.characters) == 0,
                   "get misses more than the compressed stream's last byte");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 4) return 0;
    fuzz::quiet_reports().clear();
    const int mode = data[0] % 3;
    const int level = data[1] % 10;
    const size_t cut = data[2] | (size_t(data[3]) << 8);
    const std::string payload(reinterpret_cast<const char*>(data) + 4, size - 4);
    const std::string path = fuzz::scratch_file("stream.ddb");

    // Reading what another writer produced.
    std::string file = payload;
    if (mode != 0) file = zlib_stream(payload, level);
    if (mode == 2) file.resize(cut % (file.size() + 1));
    fuzz::write_file(path, file);
    const READ_BACK given = read_three_ways(path);
    check_consistent(given);
    if (mode == 0 && !given.compressed) FUZZ_CHECK(given.blocks == payload, "a plain file reads changed");
    if (mode == 1) FUZZ_CHECK(delivers(given, payload), "a complete zlib stream reads wrong");

    // Writing through the archive and reading back.
    DEV_ARCHIVE writer(level);
    writer.open(FIO_PATH(path), DEV_ARCHIVE::WRITE);
    const size_t piece = cut % 1500 + 1;
    for (size_t at = 0, turn = 0; at < payload.size(); at += piece, ++turn) {
        const std::string part = payload.substr(at, piece);
        if (turn % 3 == 1 && part.find('\0') == std::string::npos)
            writer.sprintf("%s", part.c_str());
        else
            writer.write(part.data(), part.size());
    }
    writer.close(true);
    FUZZ_CHECK(writer.write_ok(), "writing to the scratch directory failed");
    if (level == ZLIB_NO_COMPRESSION)
        FUZZ_CHECK(fuzz::read_file(path) == payload, "a plain write changed the bytes");
    const READ_BACK written = read_three_ways(path);
    check_consistent(written);
    // A plain payload that is itself a zlib stream reads as that stream's content: the
    // archive cannot tell them apart.
    if (level != ZLIB_NO_COMPRESSION || !written.compressed)
        FUZZ_CHECK(delivers(written, payload), "written bytes do not read back");
    if (level != ZLIB_NO_COMPRESSION && written.compressed)
        FUZZ_CHECK(written.stream_end, "a written compressed stream does not end properly");
    return 0;
}
