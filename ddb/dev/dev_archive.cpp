// The archive stream under ".ddb" files: plain text or one zlib stream, decided on opening.
#include "dev_archive_export.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "host/msg.h"

namespace {

constexpr size_t kBlock = DEV_ARCHIVE::COMPRESSED_BUFFER_SIZE;
// Large stdio buffers keep the system-call count low under the 1024-byte block reads.
constexpr size_t kStdioBuffer = 64 * 1024;

voidpf dev_archive_zalloc(voidpf, uInt items, uInt size) { return std::calloc(items, size); }
void dev_archive_zfree(voidpf, voidpf address) { std::free(address); }

void init_zstream(z_stream& s) {
    std::memset(&s, 0, sizeof s);
    s.zalloc = dev_archive_zalloc;
    s.zfree = dev_archive_zfree;
    s.opaque = Z_NULL;
}

std::FILE* open_file(const std::string& name, const char* mode) {
    std::FILE* f = std::fopen(name.c_str(), mode);
    if (f) std::setvbuf(f, nullptr, _IOFBF, kStdioBuffer);
    return f;
}

// The system's reason for the last failed call.
std::string last_reason() { return errno != 0 ? std::strerror(errno) : "input/output error"; }

int64_t now_seconds() { return static_cast<int64_t>(std::time(nullptr)); }

}  // namespace

DEV_ARCHIVE::DEV_ARCHIVE(int compression_level) : m_compression_level(compression_level) {
    DEV_ASSERT_TEXT((m_compression_level >= ZLIB_NO_COMPRESSION) &&
                        (m_compression_level <= ZLIB_BEST_COMPRESSION),
                    "(m_compression_level >= ZLIB_NO_COMPRESSION) && "
                    "(m_compression_level <= ZLIB_BEST_COMPRESSION)");
    init_zstream(m_compressor);
    reset_output();
}

DEV_ARCHIVE::~DEV_ARCHIVE() { close(false); }

void DEV_ARCHIVE::reset_output() {
    m_compressor.next_out = m_output_buffer;
    m_compressor.avail_out = kBlock;
    m_read_position = 0;
    m_produced = 0;
}

bool DEV_ARCHIVE::is_open() const {
    return (m_io_type == READ && m_input_file) || (m_io_type == WRITE && m_output_file);
}

// ---------------------------------------------------------------------------------------
// Opening and closing

bool DEV_ARCHIVE::open(const FIO_PATH& path, int io_type) {
    if (m_io_type != CLOSED) {
        DEV_INTERNAL_ERROR("DEV_ARCHIVE is already openned. Please call close().");
        close(true);  // release the previous file before going on
    }
    m_io_type = static_cast<uint32_t>(io_type);
    m_path = path;
    m_start_time = now_seconds();
    const std::string full = m_path.full_path();

    m_write_failed = false;
    m_write_error.clear();
    if (io_type == WRITE) {
        std::string reason;
        m_output_file = FIO_FILE_SYSTEM::create_beside(full, m_temporary_path, reason);
        if (m_output_file)
            std::setvbuf(m_output_file, nullptr, _IOFBF, kStdioBuffer);
        else
            write_failed("open", reason);
        if (m_compression_level == ZLIB_NO_COMPRESSION) return true;
        m_compressor.next_in = Z_NULL;
        m_compressor.avail_in = 0;
        reset_output();
        if (deflateInit(&m_compressor, m_compression_level) != Z_OK)
            DEV_DEBUG("zlib_deflateInit() failed.");
        return true;
    }
    if (io_type == READ) {
        if (!FIO_FILE_SYSTEM::exists(m_path)) {
            DEV_DEBUG("File %s does not exist.", full.c_str());
            // Like a file stream that failed to open: not good, so readers stop at once.
            m_input_file = nullptr;
            m_input_failed = true;
            return false;
        }
        m_end_reached = false;
        m_exhausted = false;
        m_stream_end_seen = false;
        m_input_at_end = false;
        m_input_failed = false;
        m_input_bad = false;
        reset_output();
        m_compression_level = is_file_compressed(m_path) ? ZLIB_BEST_COMPRESSION : ZLIB_NO_COMPRESSION;
        m_input_file = open_file(full, "rb");
        if (!m_input_file) m_input_failed = true;
        if (m_compression_level != ZLIB_NO_COMPRESSION && m_input_file) {
            read_input();
            reset_output();
            if (inflateInit(&m_compressor) != Z_OK) DEV_DEBUG("zlib_inflateInit() failed.");
        }
        return true;
    }
    DEV_INTERNAL_ERROR("Illegal io type encounter.");
    return false;
}

// The closing note: `bytes` of text against `packed` bytes in the file.
static void note_timing(const char* verb, double seconds, const std::string& path, bool compressed,
                        uLong bytes, uLong packed) {
    if (!compressed) {
        DEV_DEBUG("Spent %.0f secs %s \"%s\"", seconds, verb, path.c_str());
        return;
    }
    DEV_DEBUG("Spent %.0f secs %s \"%s\": %d bytes (%d compressed) (%1.1fx compression)", seconds,
              verb, path.c_str(), static_cast<int>(bytes), static_cast<int>(packed),
              static_cast<double>(bytes) / static_cast<double>(packed));
}

void DEV_ARCHIVE::close(bool quiet) {
    const double seconds = static_cast<double>(now_seconds() - m_start_time);
    const bool compressed = m_compression_level != ZLIB_NO_COMPRESSION;
    if (m_io_type == WRITE) {
        flush();
        finish_write(true);
        if (compressed) deflateEnd(&m_compressor);
        if (!quiet)
            note_timing("writing", seconds, m_path.full_path(), compressed, m_compressor.total_in,
                        m_compressor.total_out);
    } else if (m_io_type == READ) {
        if (m_input_file) std::fclose(m_input_file);
        m_input_file = nullptr;
        if (compressed) inflateEnd(&m_compressor);
        if (!quiet)
            note_timing("reading", seconds, m_path.full_path(), compressed, m_compressor.total_out,
                        m_compressor.total_in);
    } else if (m_io_type != CLOSED) {
        DEV_INTERNAL_ERROR("Illegal io type encounter.");
    }
    reset_closed();
}

void DEV_ARCHIVE::reset_closed() {
    m_path.clear();
    m_io_type = CLOSED;
    m_end_reached = false;
    m_exhausted = false;
    init_zstream(m_compressor);
    reset_output();
}

void DEV_ARCHIVE::discard() {
    if (m_io_type != WRITE) {
        close(true);
        return;
    }
    finish_write(false);
    if (m_compression_level != ZLIB_NO_COMPRESSION) deflateEnd(&m_compressor);
    reset_closed();
}

// Ends the write: the finished file is made durable and renamed over the path when `keep`
// is set and every step so far succeeded; otherwise the file beside the path is removed.
void DEV_ARCHIVE::finish_write(bool keep) {
    if (!m_output_file) return;
    std::string reason;
    if (keep && !m_write_failed && !FIO_FILE_SYSTEM::sync(m_output_file, reason)) write_failed("write", reason);
    errno = 0;
    if (std::fclose(m_output_file) != 0 && keep) write_failed("write", last_reason());
    m_output_file = nullptr;
    if (m_temporary_path.empty()) return;
    if (keep && !m_write_failed && !FIO_FILE_SYSTEM::rename_over(m_temporary_path, m_path.full_path(), reason))
        write_failed("rename", reason);
    if (!keep || m_write_failed) FIO_FILE_SYSTEM::remove(m_temporary_path);
    m_temporary_path.clear();
}

void DEV_ARCHIVE::write_failed(const char* step, const std::string& reason) {
    if (!m_write_failed) m_write_error = std::string(step) + " failed: " + reason;
    m_write_failed = true;
}

// ---------------------------------------------------------------------------------------
// The probe

bool DEV_ARCHIVE::is_file_compressed(const FIO_PATH& path) {
    std::FILE* file = open_file(path.full_path(), "rb");
    if (!file) return false;
    unsigned char input[kBlock];
    unsigned char output[kBlock];
    z_stream s;
    init_zstream(s);
    s.next_in = input;
    s.avail_in = static_cast<uInt>(std::fread(input, 1, kBlock, file));
    s.next_out = output;
    s.avail_out = kBlock;
    if (inflateInit(&s) != Z_OK) {
        DEV_DEBUG("zlib_inflateInit() failed.");
        std::fclose(file);
        return false;
    }
    bool compressed = true;
    if (s.avail_in != 0) {
        int result = Z_OK;
        bool produced = false;
        do {
            if (result != Z_OK) break;
            if (s.avail_out < kBlock) {
                produced = true;
                break;
            }
            result = inflate(&s, Z_SYNC_FLUSH);
            if (s.avail_in == 0 && !std::feof(file)) {
                s.next_in = input;
                s.avail_in = static_cast<uInt>(std::fread(input, 1, kBlock, file));
            }
        } while (s.avail_in != 0);
        // Z_DATA_ERROR, Z_STREAM_END (a stream complete in the first block) and any other
        // failure all mean plain.
        compressed = produced || result == Z_OK;
    }
    inflateEnd(&s);
    std::fclose(file);
    return compressed;
}

bool DEV_ARCHIVE::inflate_buffer(const void* data, size_t size, std::string& text) {
    text.clear();
    if (size == 0 || size > UINT32_MAX) return false;
    z_stream s;
    init_zstream(s);
    s.next_in = static_cast<Bytef*>(const_cast<void*>(data));
    s.avail_in = static_cast<uInt>(size);
    if (inflateInit(&s) != Z_OK) return false;
    unsigned char chunk[16 * 1024];
    int result;
    do {
        s.next_out = chunk;
        s.avail_out = sizeof chunk;
        result = inflate(&s, Z_NO_FLUSH);
        text.append(reinterpret_cast<char*>(chunk), sizeof chunk - s.avail_out);
    } while (result == Z_OK);
    const bool whole = result == Z_STREAM_END && s.avail_in == 0;
    inflateEnd(&s);
    if (!whole) text.clear();
    return whole;
}

// ---------------------------------------------------------------------------------------
// Reading

size_t DEV_ARCHIVE::read_input() {
    size_t n = std::fread(m_input_buffer, 1, kBlock, m_input_file);
    if (n < kBlock) {
        m_input_at_end = true;
        m_input_failed = true;
        if (std::ferror(m_input_file)) m_input_bad = true;
    }
    m_compressor.next_in = m_input_buffer;
    m_compressor.avail_in = static_cast<uInt>(n);
    return n;
}

// Makes more bytes available once every produced byte has been consumed; false at the end
// of the stream. Plain files behave as a stream's get: a read past the end sets its end
// and failure flags. Compressed streams inflate the next block.
bool DEV_ARCHIVE::refill() {
    if (m_compression_level == ZLIB_NO_COMPRESSION) {
        if (!m_input_file || m_input_failed || m_input_bad) {
            m_input_failed = true;
            return false;
        }
        size_t n = std::fread(m_output_buffer, 1, kBlock, m_input_file);
        m_read_position = 0;
        m_produced = static_cast<uint32_t>(n);
        if (n == 0) {
            m_input_at_end = true;
            m_input_failed = true;
            if (std::ferror(m_input_file)) m_input_bad = true;
            return false;
        }
        return true;
    }
    // Once the stream has ended (or failed) nothing more comes out of it; a dead stream
    // must not be inflated again, or a reader would see errors or filler forever.
    if (!m_end_reached) {
        reset_output();
        int result;
        do {
            if (m_compressor.avail_in == 0 && !file_at_end() && m_input_file) read_input();
            result = inflate(&m_compressor, Z_SYNC_FLUSH);
        } while (result == Z_OK && m_compressor.avail_out == kBlock);
        m_produced = kBlock - m_compressor.avail_out;
        if (result == Z_STREAM_END) m_stream_end_seen = true;
        if (result != Z_OK) m_end_reached = true;
        if (result < 0 && result == Z_BUF_ERROR && m_compressor.avail_in == 0 && m_produced == 0) {
            DEV_DEBUG("zlib_inflat() normal cond to indicate no data.");
        } else if (result != Z_OK && result != Z_STREAM_END) {
            DEV_DEBUG("zlib_inflate() returned error: %d", result);
            DEV_INTERNAL_ERROR("encounter error.");
        }
        if (m_produced != 0) return true;
    }
    m_exhausted = true;
    m_input_at_end = true;
    m_input_failed = true;
    return false;
}

DEV_ARCHIVE& DEV_ARCHIVE::get(char& c) {
    if (m_compression_level != ZLIB_NO_COMPRESSION) {
        DEV_ASSERT_TEXT(m_compressor.avail_out <= DEV_ARCHIVE::COMPRESSED_BUFFER_SIZE,
                        "m_compressor.avail_out <= DEV_ARCHIVE::COMPRESSED_BUFFER_SIZE");
        if (available() == 0 && !refill()) {
            c = static_cast<char>(0xFF);
            return *this;
        }
    } else if (available() == 0 && !refill()) {
        return *this;  // a failed stream get leaves the character as it was
    }
    c = static_cast<char>(m_output_buffer[m_read_position++]);
    return *this;
}

size_t DEV_ARCHIVE::read(void* data, size_t size) {
    if (!DEV_ASSERT_TEXT(DEV_ARCHIVE::READ == m_io_type, "DEV_ARCHIVE::READ == m_io_type")) return 0;
    unsigned char* out = static_cast<unsigned char*>(data);
    size_t done = 0;
    while (done < size) {
        if (available() == 0 && !refill()) break;
        size_t n = std::min(available(), size - done);
        std::memcpy(out + done, m_output_buffer + m_read_position, n);
        m_read_position += static_cast<uint32_t>(n);
        done += n;
    }
    return done;
}

bool DEV_ARCHIVE::reading_or_report(const char* write_text) const {
    if (m_io_type == WRITE) {
        DEV_INTERNAL_ERROR(write_text);
        return false;
    }
    if (m_io_type != READ) {
        DEV_INTERNAL_ERROR("Illegal io type encounter.");
        return false;
    }
    return true;
}

bool DEV_ARCHIVE::eof() const {
    if (!reading_or_report("Illega call to eof() for write operation.")) return false;
    if (m_compression_level == ZLIB_NO_COMPRESSION) return m_input_at_end;
    if (m_exhausted) return true;
    if (!file_at_end() || m_compressor.avail_in != 0) return false;
    return available() == 0 && m_end_reached;
}

bool DEV_ARCHIVE::good() const {
    if (!reading_or_report("Illega call to good() for write operation.")) return false;
    const bool file_good = !m_input_bad && !m_input_failed && !m_input_at_end;
    if (file_good || m_compression_level == ZLIB_NO_COMPRESSION) return file_good;
    return !m_input_bad && m_input_at_end && !eof();
}

bool DEV_ARCHIVE::last_ready_byte_ends_stream() const {
    return m_compression_level != ZLIB_NO_COMPRESSION && m_end_reached && file_at_end() &&
           m_compressor.avail_in == 0;
}

bool DEV_ARCHIVE::getline_across_blocks(std::string& line, char delimiter, bool keep_delimiter) {
    line.clear();
    // Ready bytes mean a good stream that has not ended; only check otherwise.
    if (m_io_type != READ || available() == 0 || m_input_bad) {
        if (!good()) return false;
        if (eof()) return true;
    }
    for (;;) {
        if (available() == 0) {
            // One byte through get, which refills the buffer (or finds the end).
            char c = 0;
            get(c);
            if (eof()) return false;
            if (c == delimiter) {
                if (keep_delimiter) line += c;
                return true;
            }
            line += c;
            continue;
        }
        // Bulk scan of the ready bytes. Consuming a ready byte can only end the stream when
        // it is the last one of a stream whose input is all used up; that byte is consumed
        // but not delivered.
        const bool last_is_final = last_ready_byte_ends_stream();
        const char* begin = reinterpret_cast<const char*>(m_output_buffer) + m_read_position;
        const size_t n = available();
        const char* hit = static_cast<const char*>(std::memchr(begin, delimiter, n));
        size_t take = hit ? static_cast<size_t>(hit - begin) + 1 : n;
        const bool ends_stream = last_is_final && take == n;
        m_read_position += static_cast<uint32_t>(take);
        if (ends_stream) {
            line.append(begin, take - 1);
            return false;
        }
        if (hit) {
            line.append(begin, keep_delimiter ? take : take - 1);
            return true;
        }
        line.append(begin, take);
    }
}

// ---------------------------------------------------------------------------------------
// Writing

void DEV_ARCHIVE::write_block(const void* data, size_t size) {
    // After a failure nothing more is written: the file beside the path will be removed.
    if (size == 0 || m_write_failed) return;
    if (!m_output_file) {
        write_failed("write", "the file is not open");
        return;
    }
    errno = 0;
    if (std::fwrite(data, 1, size, m_output_file) != size) write_failed("write", last_reason());
}

void DEV_ARCHIVE::write_output(size_t count) {
    write_block(m_output_buffer, count);
    m_compressor.next_out = m_output_buffer;
    m_compressor.avail_out = kBlock;
}

bool DEV_ARCHIVE::deflate_bytes(const void* data, size_t size) {
    const Bytef* next = static_cast<const Bytef*>(data);
    while (size != 0) {
        const uInt part = static_cast<uInt>(std::min<size_t>(size, 1u << 30));
        m_compressor.next_in = const_cast<Bytef*>(next);
        m_compressor.avail_in = part;
        while (m_compressor.avail_in != 0) {
            int result = deflate(&m_compressor, Z_NO_FLUSH);
            if (m_compressor.avail_out == 0) write_output(kBlock);
            if (result != Z_OK) {
                // Only a stream that was never set up or already finished gets here.
                DEV_DEBUG("zlib_deflate() returned error: %d", result);
                m_compressor.avail_in = 0;
                write_failed("write", "compression error " + std::to_string(result));
                return false;
            }
        }
        if (m_compressor.avail_out == 0) write_output(kBlock);
        next += part;
        size -= part;
    }
    return true;
}

bool DEV_ARCHIVE::write(const void* data, size_t size) {
    if (!DEV_ASSERT_TEXT(DEV_ARCHIVE::WRITE == m_io_type, "DEV_ARCHIVE::WRITE == m_io_type"))
        return false;
    if (m_compression_level == ZLIB_NO_COMPRESSION)
        write_block(data, size);
    else
        deflate_bytes(data, size);
    return !m_write_failed;
}

void DEV_ARCHIVE::sprintf(const char* format, ...) {
    if (!DEV_ASSERT_TEXT(DEV_ARCHIVE::WRITE == m_io_type, "DEV_ARCHIVE::WRITE == m_io_type")) return;
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    if (m_format_buffer.size() < 256) m_format_buffer.resize(256);
    int n = std::vsnprintf(&m_format_buffer[0], m_format_buffer.size(), format, args);
    va_end(args);
    if (n >= 0 && static_cast<size_t>(n) >= m_format_buffer.size()) {
        m_format_buffer.resize(static_cast<size_t>(n) + 1);
        std::vsnprintf(&m_format_buffer[0], m_format_buffer.size(), format, again);
    }
    va_end(again);
    if (n <= 0) return;
    if (m_compression_level == ZLIB_NO_COMPRESSION)
        write_block(m_format_buffer.data(), static_cast<size_t>(n));
    else
        deflate_bytes(m_format_buffer.data(), static_cast<size_t>(n));
}

void DEV_ARCHIVE::flush() {
    if (!DEV_ASSERT_TEXT(DEV_ARCHIVE::WRITE == m_io_type, "DEV_ARCHIVE::WRITE == m_io_type")) return;
    if (m_compression_level == ZLIB_NO_COMPRESSION) return;
    if (m_compressor.avail_out < kBlock) write_output(kBlock - m_compressor.avail_out);
    int result;
    do {
        result = deflate(&m_compressor, Z_FINISH);
        write_output(kBlock - m_compressor.avail_out);
        if (result < 0) {
            DEV_DEBUG("zlib_deflate() returned error: %d", result);
            write_failed("write", "compression error " + std::to_string(result));
            break;
        }
    } while (result != Z_STREAM_END);
}
