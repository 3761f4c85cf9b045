// Persistent files through the archive stream.
//
// The archive's probe judges a compressed file whose whole zlib stream ends inside the first
// 1024-byte block to be plain and then delivers the zlib bytes as they are. The reader
// therefore looks at the first bytes: the segment magic goes straight to the segment; a zlib
// header is inflated here (bounded) and the result handed to the segment.
#include "dev_pdb_file.h"

#include "dev_pdb_object.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "host/msg.h"

namespace {

constexpr size_t kMagicSize = 4;
const char kMagic[kMagicSize] = {'V', 'D', 'D', 'B'};
// A raw zlib stream only reaches us when it ended inside the archive's first block, so its
// input is small; anything larger than this is not such a stream.
constexpr size_t kMaxRawInput = 64 * 1024;
// Deflate cannot expand by more than about 1032:1; a larger output is a corrupted stream.
constexpr size_t kMaxExpansion = 1032;

bool looks_like_zlib(const unsigned char* p, size_t n) {
    if (n < 2) return false;
    return (p[0] & 0x0F) == Z_DEFLATED && (p[0] >> 4) <= 7 && ((p[0] << 8) | p[1]) % 31 == 0;
}

// Replays the first bytes already taken from the archive, then continues with the archive.
class PREFIXED_STREAM : public PDB_STREAM {
public:
    // `bound`: the most bytes the file can deliver.
    PREFIXED_STREAM(const std::string& prefix, DEV_ARCHIVE& archive, uint64_t bound)
        : m_prefix(prefix), m_archive(archive), m_bound(bound) {}
    uint64_t size_bound() const override { return m_bound; }
    bool write(const void*, size_t) override { return false; }
    size_t read(void* data, size_t size) override {
        size_t n = std::min(size, m_prefix.size() - m_pos);
        std::memcpy(data, m_prefix.data() + m_pos, n);
        m_pos += n;
        if (n < size) n += m_archive.read(static_cast<char*>(data) + n, size - n);
        return n;
    }

private:
    const std::string& m_prefix;
    DEV_ARCHIVE& m_archive;
    uint64_t m_bound;
    size_t m_pos = 0;
};

// Inflates exactly one complete zlib stream of `input` into `output`, producing at most
// `limit` bytes. False with a reason otherwise.
bool inflate_bounded(const std::string& input, size_t limit, std::string& output, std::string& reason) {
    output.clear();
    z_stream s;
    std::memset(&s, 0, sizeof s);
    if (inflateInit(&s) != Z_OK) {
        reason = "zlib initialisation failed";
        return false;
    }
    s.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    s.avail_in = static_cast<uInt>(input.size());
    unsigned char chunk[16 * 1024];
    int result = Z_OK;
    while (result == Z_OK) {
        s.next_out = chunk;
        s.avail_out = sizeof chunk;
        result = inflate(&s, Z_NO_FLUSH);
        const size_t produced = sizeof chunk - s.avail_out;
        if (output.size() + produced > limit) {
            inflateEnd(&s);
            output.clear();
            reason = "corrupted: the compressed data expands beyond " + std::to_string(limit) + " bytes";
            return false;
        }
        output.append(reinterpret_cast<char*>(chunk), produced);
        if (result == Z_BUF_ERROR && s.avail_in == 0) break;
    }
    inflateEnd(&s);
    if (result == Z_STREAM_END) return true;
    output.clear();
    reason = (result == Z_OK || result == Z_BUF_ERROR) ? "truncated: the compressed data ends early"
                                                       : "corrupted: the compressed data is invalid";
    return false;
}

}  // namespace

bool dev_pdb_write_file(PDB_DDB_SEGMENT& segment, const FIO_PATH& path, int compression_level,
                        std::string& error) {
    const std::string full = path.full_path();
    if (!DEV_ASSERT_TEXT(segment.is_writing(), "segment.is_writing()")) {
        error = full + ": the segment is not a writing segment";
        return false;
    }
    if (compression_level < ZLIB_NO_COMPRESSION || compression_level > ZLIB_BEST_COMPRESSION) {
        error = full + ": compression level " + std::to_string(compression_level) + " is out of range";
        return false;
    }
    if (segment.failed()) {
        error = full + ": " + segment.error();
        return false;
    }
    DEV_ARCHIVE archive(compression_level);
    archive.open(path, DEV_ARCHIVE::WRITE);
    if (!archive.is_open()) {
        error = full + ": " + archive.write_error();
        archive.close(true);
        return false;
    }
    DEV_PDB_ARCHIVE_STREAM stream(archive);
    if (!segment.save(stream) && archive.write_ok()) {
        archive.discard();
        error = full + ": " + segment.error();
        return false;
    }
    // The file replaces the previous one only when complete; a failed step leaves it as it was.
    archive.close();
    if (!archive.write_ok()) error = full + ": " + archive.write_error();
    return archive.write_ok();
}

bool dev_pdb_read_file(const FIO_PATH& path, PDB_DDB_SEGMENT& segment, std::string& error) {
    const std::string full = path.full_path();
    if (!DEV_ASSERT_TEXT(segment.is_reading(), "segment.is_reading()")) {
        error = full + ": the segment is not a reading segment";
        return false;
    }
    if (!FIO_FILE_SYSTEM::exists(path) || FIO_FILE_SYSTEM::is_directory(full)) {
        error = full + ": the file does not exist";
        return false;
    }
    DEV_ARCHIVE archive(ZLIB_NO_COMPRESSION);
    if (!archive.open(path, DEV_ARCHIVE::READ) || !archive.is_open()) {
        error = full + ": cannot be opened for reading";
        archive.close(true);
        return false;
    }
    std::string head(kMagicSize, '\0');
    head.resize(archive.read(&head[0], kMagicSize));
    const auto* bytes = reinterpret_cast<const unsigned char*>(head.data());
    bool ok;
    if (archive.compression_level() == ZLIB_NO_COMPRESSION && head.compare(0, std::string::npos, kMagic, kMagicSize) != 0 &&
        looks_like_zlib(bytes, head.size())) {
        // A small compressed file delivered raw: take it whole (bounded) and inflate it.
        std::string input = head;
        char chunk[4096];
        size_t n;
        while (input.size() <= kMaxRawInput && (n = archive.read(chunk, sizeof chunk)) != 0) input.append(chunk, n);
        std::string text;
        std::string reason;
        if (input.size() > kMaxRawInput) {
            ok = false;
            segment.fail("not a persistent database file");
        } else if (!inflate_bounded(input, input.size() * kMaxExpansion, text, reason)) {
            ok = false;
            segment.fail(reason);
        } else {
            ok = segment.load_bytes(text);
        }
    } else {
        // A plain file delivers its bytes; a compressed one at most zlib's greatest expansion.
        const long long file_size = FIO_FILE_SYSTEM::file_size(full);
        const uint64_t bound = file_size < 0 ? 0
                               : static_cast<uint64_t>(file_size) *
                                     (archive.compression_level() == ZLIB_NO_COMPRESSION ? 1 : kMaxExpansion);
        PREFIXED_STREAM stream(head, archive, bound);
        ok = segment.load(stream);
        // The segment must be the whole file and a compressed stream must end properly
        // (its checksum trailer is only checked once inflate reaches the end).
        char extra;
        if (ok && archive.read(&extra, 1) != 0) {
            ok = false;
            segment.fail("corrupted: data follows the end of the stored objects");
        } else if (ok && archive.compression_level() != ZLIB_NO_COMPRESSION && !archive.reached_stream_end()) {
            ok = false;
            segment.fail("truncated or corrupted: the compressed stream does not end properly");
        }
    }
    archive.close(true);
    if (!ok) error = full + ": " + segment.error();
    return ok;
}

// ---------------------------------------------------------------------------------------
// Timing notes of the persistent device-data files (dev_pdb_object.h).

double dev_pdb_seconds_since(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void dev_pdb_note_timing(const DEV_PDB_WORDING& wording, bool writing, double seconds, const std::string& path) {
    const char* format = writing ? wording.write_timing : wording.read_timing;
    if (wording.timing_in_whole_seconds)
        DEV_DEBUG(format, static_cast<int>(seconds), path.c_str());
    else
        DEV_DEBUG(format, seconds, path.c_str());
}
