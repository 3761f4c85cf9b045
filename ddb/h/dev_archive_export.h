// DEV_ARCHIVE: the byte stream under the library's ".ddb" files. A file is either plain
// text or exactly one zlib stream (no header of our own); the reader finds out which when it
// opens the file. Text is read byte by byte or line by line and written with printf-style
// calls; raw `write`/`read` carry the persistent store's binary encoding through the same
// paths. Every byte passes unchanged. Misuse is reported as an internal error (module "DEV")
// and the call goes on or answers false; progress notes go to the debug channel.
#ifndef VELCORA_DEV_ARCHIVE_EXPORT_H
#define VELCORA_DEV_ARCHIVE_EXPORT_H

#include "dev_export.h"

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "host/fio.h"

constexpr int ZLIB_NO_COMPRESSION = 0;
constexpr int ZLIB_BEST_COMPRESSION = 9;

class DEV_EXPORT DEV_ARCHIVE {
public:
    enum IO_TYPE : uint32_t { CLOSED = 0, READ = 1, WRITE = 2 };
    static constexpr unsigned COMPRESSED_BUFFER_SIZE = 1024;

    // `compression_level` 0 writes plain text, 1 to 9 a zlib stream of that level.
    explicit DEV_ARCHIVE(int compression_level = ZLIB_BEST_COMPRESSION);
    ~DEV_ARCHIVE();
    DEV_ARCHIVE(const DEV_ARCHIVE&) = delete;
    DEV_ARCHIVE& operator=(const DEV_ARCHIVE&) = delete;

    // Opens `path` for READ or WRITE. False only when a file to be read does not exist or
    // the type is illegal. Reading replaces the level: 9 for a compressed file, else 0.
    // Writing never touches `path` before `close`: the bytes go to a new file beside it.
    bool open(const FIO_PATH& path, int io_type);
    // Flushes and closes; notes the time spent unless `quiet`. The archive can be reopened.
    // A write is made durable and then renamed over the path in one step; when any step
    // failed the path keeps its previous content and the file beside it is removed.
    void close(bool quiet = false);
    // Ends a write without touching the path (its previous content stays); for a writer
    // that gives up part of the way.
    void discard();
    // True while open and the underlying file could be opened.
    bool is_open() const;
    // Writing: false once a step has failed; after `close`, true exactly when the new
    // content is in place. `write_error` then names the first failed step and the system's
    // reason, as "open failed: ...", "write failed: ..." or "rename failed: ...".
    bool write_ok() const { return !m_write_failed; }
    const std::string& write_error() const { return m_write_error; }

    // Reading. `get` fills `c` with the next byte (0xFF on a compressed stream when nothing
    // is left). `getline` answers false when the stream ends during the line; the line read
    // so far is still filled in. On a compressed stream the stream's very last byte is
    // consumed without being delivered by `getline`.
    DEV_ARCHIVE& get(char& c);
    inline bool getline(std::string& line, char delimiter = '\n', bool keep_delimiter = false);
    bool eof() const;
    bool good() const;
    // Copies up to `size` bytes, the same bytes successive `get` calls would deliver;
    // answers the number copied (less than `size` only at the end of the stream).
    size_t read(void* data, size_t size);

    // Writing. `sprintf` formats and appends; `write` appends bytes as they are and answers
    // false when the file could not take them. `flush` finishes the compressed stream.
    void sprintf(const char* format, ...) __attribute__((format(printf, 2, 3)));
    bool write(const void* data, size_t size);
    void flush();

    // The probe `open` uses. A compressed file whose whole stream ends inside the first
    // 1024-byte block is judged plain; an empty file is judged compressed.
    static bool is_file_compressed(const FIO_PATH& path);
    // Inflates `data` into `text` when it is exactly one complete zlib stream (used for small
    // compressed files that the probe judges plain); false otherwise.
    static bool inflate_buffer(const void* data, size_t size, std::string& text);

    int compression_level() const { return m_compression_level; }
    uint32_t io_type() const { return m_io_type; }
    const FIO_PATH& path() const { return m_path; }
    // Reading a compressed file: true once inflate has reported the end of the zlib stream
    // (false for a truncated or corrupted stream).
    bool reached_stream_end() const { return m_stream_end_seen; }

private:
    void reset_output();
    void reset_closed();
    void write_failed(const char* step, const std::string& reason);
    void finish_write(bool keep);
    void write_output(size_t count);
    void write_block(const void* data, size_t size);
    bool deflate_bytes(const void* data, size_t size);
    size_t read_input();
    bool refill();
    bool last_ready_byte_ends_stream() const;
    bool reading_or_report(const char* write_text) const;
    bool getline_across_blocks(std::string& line, char delimiter, bool keep_delimiter);
    size_t available() const { return m_produced - m_read_position; }
    bool file_at_end() const { return m_input_at_end; }

    int32_t m_compression_level;
    uint32_t m_io_type = CLOSED;
    uint32_t m_read_position = 0;
    bool m_end_reached = false;
    std::FILE* m_output_file = nullptr;
    std::FILE* m_input_file = nullptr;
    int64_t m_start_time = 0;
    unsigned char m_output_buffer[COMPRESSED_BUFFER_SIZE];
    unsigned char m_input_buffer[COMPRESSED_BUFFER_SIZE];
    std::string m_format_buffer;
    z_stream m_compressor;
    FIO_PATH m_path;

    // Reading state shared by both forms: bytes [m_read_position, m_produced) of the output
    // buffer are ready (a compressed stream produces 1024 - avail_out, a plain file what the
    // last raw read returned). The file flags mirror a stream's end and failure bits.
    uint32_t m_produced = 0;
    bool m_input_at_end = false;     // end bit: plain, a read past the end; compressed, a short block
    bool m_input_failed = false;     // fail bit: set with the end bit, or when the file did not open
    bool m_input_bad = false;        // bad bit: a read error
    bool m_exhausted = false;        // compressed: a byte was asked for after the stream ended
    bool m_stream_end_seen = false;
    bool m_write_failed = false;
    std::string m_write_error;
    // Writing: the file beside the path that receives the bytes (empty when the path is a
    // device or pipe written in place).
    std::string m_temporary_path;
};

// Common case inline: the whole line lies among the ready bytes (so the stream is good and
// has not ended) and its delimiter is not the stream's final byte.
inline bool DEV_ARCHIVE::getline(std::string& line, char delimiter, bool keep_delimiter) {
    const size_t n = available();
    if (n != 0 && m_io_type == READ && !m_input_bad) {
        const char* begin = reinterpret_cast<const char*>(m_output_buffer) + m_read_position;
        const char* hit = static_cast<const char*>(std::memchr(begin, delimiter, n));
        if (hit) {
            const size_t length = static_cast<size_t>(hit - begin);
            if (length + 1 < n || !last_ready_byte_ends_stream()) {
                line.clear();
                line.append(begin, keep_delimiter ? length + 1 : length);
                m_read_position += static_cast<uint32_t>(length + 1);
                return true;
            }
        }
    }
    return getline_across_blocks(line, delimiter, keep_delimiter);
}

#endif
