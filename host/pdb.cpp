#include "host/pdb.h"

#include <algorithm>

#include <zlib.h>

#include <cmath>
#include <cstring>

#include "host/msg.h"

namespace {

const char MAGIC[4] = {'V', 'D', 'D', 'B'};
constexpr size_t HEADER_SIZE = 4 + 2 + 2 + 8 + 4;  // magic, version, reserved, length, crc
constexpr size_t READ_CHUNK = 64 * 1024;
constexpr uint64_t RESERVE_LIMIT = 1u << 30;

uint32_t crc_of(const std::string& s) {
    uLong crc = crc32(0L, Z_NULL, 0);
    size_t done = 0;
    while (done < s.size()) {
        uInt n = static_cast<uInt>(std::min<size_t>(s.size() - done, 1u << 30));
        crc = crc32(crc, reinterpret_cast<const Bytef*>(s.data() + done), n);
        done += n;
    }
    return static_cast<uint32_t>(crc);
}

void put_le(std::string& out, uint64_t v, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
}

uint64_t get_le(const unsigned char* p, int bytes) {
    uint64_t v = 0;
    for (int i = 0; i < bytes; ++i) v |= static_cast<uint64_t>(p[i]) << (8 * i);
    return v;
}

uint32_t name_tag(const char* name) {
    uint32_t h = 2166136261u;
    for (const char* p = name ? name : ""; *p; ++p) {
        h ^= static_cast<unsigned char>(*p);
        h *= 16777619u;
    }
    return h;
}

}  // namespace

PDB_STREAM::~PDB_STREAM() = default;

uint64_t PDB_STREAM::size_bound() const { return UINT64_MAX; }

PDB_CLASS_INFO::PDB_CLASS_INFO(const char* class_name) : m_name(class_name), m_tag(name_tag(class_name)) {}

void pdb_internal_error(const char* message) {
    MSG_INTERNAL_ERROR_report(message, "PDB", msg_source_name(__FILE__).c_str(), __LINE__);
}

PDB_SEGMENT::PDB_SEGMENT(bool writing) : m_writing(writing) {}

void PDB_SEGMENT::fail(const std::string& message) {
    if (!m_error.empty()) return;
    m_error = message;
    if (field().field) m_error += std::string(" (field ") + field().field + ")";
}

std::string PDB_SEGMENT::bytes() const {
    std::string out(MAGIC, 4);
    put_le(out, FORMAT_VERSION, 2);
    put_le(out, 0, 2);
    put_le(out, m_payload.size(), 8);
    put_le(out, crc_of(m_payload), 4);
    out += m_payload;
    return out;
}

bool PDB_SEGMENT::save(PDB_STREAM& stream) {
    if (failed()) return false;
    std::string header = bytes();
    header.resize(HEADER_SIZE);
    if (!stream.write(header.data(), header.size()) ||
        (!m_payload.empty() && !stream.write(m_payload.data(), m_payload.size()))) {
        fail("write error");
        return false;
    }
    return true;
}

bool PDB_SEGMENT::load(PDB_STREAM& stream) {
    unsigned char header[HEADER_SIZE];
    size_t got = stream.read(header, HEADER_SIZE);
    if (got < 4 || std::memcmp(header, MAGIC, 4) != 0) {
        fail("not a persistent database file");
        return false;
    }
    if (got < HEADER_SIZE) {
        fail("truncated header");
        return false;
    }
    uint64_t version = get_le(header + 4, 2);
    if (version != FORMAT_VERSION) {
        fail("format version " + std::to_string(version) + " is not supported (expected " +
             std::to_string(FORMAT_VERSION) + ")");
        return false;
    }
    uint64_t length = get_le(header + 8, 8);
    uint32_t crc = static_cast<uint32_t>(get_le(header + 16, 4));
    m_payload.clear();
    m_pos = 0;
    // Grow only as bytes really arrive. Room for the payload is reserved once when the stream
    // can hold it, which saves copying the payload as it grows.
    if (length <= stream.size_bound()) m_payload.reserve(static_cast<size_t>(std::min(length, RESERVE_LIMIT)));
    while (m_payload.size() < length) {
        size_t want = static_cast<size_t>(std::min<uint64_t>(READ_CHUNK, length - m_payload.size()));
        size_t old = m_payload.size();
        m_payload.resize(old + want);
        size_t n = stream.read(&m_payload[old], want);
        m_payload.resize(old + n);
        if (n < want) {
            fail("truncated: " + std::to_string(m_payload.size()) + " of " + std::to_string(length) +
                 " payload bytes");
            m_payload.clear();
            return false;
        }
    }
    if (crc_of(m_payload) != crc) {
        fail("corrupted: checksum mismatch");
        m_payload.clear();
        return false;
    }
    return true;
}

namespace {
class STRING_STREAM : public PDB_STREAM {
public:
    explicit STRING_STREAM(const std::string& s) : m_s(s) {}
    bool write(const void*, size_t) override { return false; }
    size_t read(void* data, size_t size) override {
        size_t n = std::min(size, m_s.size() - m_pos);
        std::memcpy(data, m_s.data() + m_pos, n);
        m_pos += n;
        return n;
    }

private:
    const std::string& m_s;
    size_t m_pos = 0;
};
}  // namespace

bool PDB_SEGMENT::load_bytes(const std::string& bytes) {
    STRING_STREAM s(bytes);
    return load(s);
}

void PDB_SEGMENT::put(const void* data, size_t size) {
    m_payload.append(static_cast<const char*>(data), size);
}

bool PDB_SEGMENT::take(void* data, size_t size) {
    if (failed()) {
        std::memset(data, 0, size);
        return false;
    }
    if (m_payload.size() - m_pos < size) {
        fail("truncated: the data ends inside a value");
        std::memset(data, 0, size);
        return false;
    }
    std::memcpy(data, m_payload.data() + m_pos, size);
    m_pos += size;
    return true;
}

#define PDB_XFR_FIXED(TYPE, BYTES)                                        \
    void PDB_SEGMENT::xfr(TYPE& v) {                                      \
        unsigned char b[BYTES];                                           \
        if (m_writing) {                                                  \
            uint64_t u = static_cast<uint64_t>(v);                        \
            for (int i = 0; i < BYTES; ++i) b[i] = (u >> (8 * i)) & 0xFF; \
            put(b, BYTES);                                                \
        } else if (!take_in_place(v)) {                                   \
            v = take(b, BYTES) ? static_cast<TYPE>(get_le(b, BYTES)) : TYPE(); \
        }                                                                 \
    }
PDB_XFR_FIXED(int32_t, 4)
PDB_XFR_FIXED(uint32_t, 4)
PDB_XFR_FIXED(int64_t, 8)
PDB_XFR_FIXED(uint64_t, 8)
PDB_XFR_FIXED(uint8_t, 1)
#undef PDB_XFR_FIXED

void PDB_SEGMENT::xfr(bool& v) {
    uint8_t b = v ? 1 : 0;
    xfr(b);
    if (m_writing) return;
    if (b > 1) fail("corrupted: a boolean holds " + std::to_string(b));
    v = b == 1;
}

void PDB_SEGMENT::xfr(double& v) {
    uint64_t u;
    std::memcpy(&u, &v, sizeof u);
    xfr(u);
    if (m_writing) return;
    std::memcpy(&v, &u, sizeof v);
    // No reader of text makes a NaN, so none is written: one read is corruption (and would
    // make a model unequal to itself).
    if (std::isnan(v)) fail("corrupted: a number holds no value (NaN)");
}

void PDB_SEGMENT::xfr(std::string& v) {
    // Reading a well-formed length and its bytes in place; anything else takes the checked
    // path from the length on.
    uint32_t length;
    if (take_in_place(length)) {
        if (length < PDB_MAX_COLLECTION_SIZE && length <= m_payload.size() - m_pos) {
            v.assign(m_payload.data() + m_pos, length);
            m_pos += length;
            return;
        }
        m_pos -= sizeof length;
    }
    size_t n = v.size();
    if (!xfr_count(n, 1)) {
        if (!m_writing) v.clear();
        return;
    }
    if (m_writing) {
        put(v.data(), n);
    } else {
        v.assign(m_payload.data() + m_pos, n);
        m_pos += n;
    }
}

bool PDB_SEGMENT::xfr_count(size_t& count, size_t min_element_size) {
    if (m_writing) {
        if (count > UINT32_MAX) {
            pdb_internal_error("stsize <= UINT_MAX");
            fail("collection too large");
            return false;
        }
        if (count >= PDB_MAX_COLLECTION_SIZE) {
            pdb_internal_error("size < PDB_MAX_COLLECTION_SIZE");
            fail("collection too large");
            return false;
        }
        uint32_t n = static_cast<uint32_t>(count);
        xfr(n);
        return true;
    }
    uint32_t n = 0;
    if (!take_in_place(n)) xfr(n);
    count = 0;
    if (failed()) return false;
    if (n >= PDB_MAX_COLLECTION_SIZE) {
        pdb_internal_error("size < PDB_MAX_COLLECTION_SIZE");
        fail("corrupted: collection of " + std::to_string(n) + " elements");
        return false;
    }
    if (min_element_size && static_cast<uint64_t>(n) * min_element_size > m_payload.size() - m_pos) {
        fail("corrupted: collection of " + std::to_string(n) + " elements exceeds the data");
        return false;
    }
    count = n;
    return true;
}

void PDB_SEGMENT_BASE::serialize_begin(PDB_SEGMENT& seg, const PDB_CLASS_INFO& info, const void*) {
    uint32_t tag = info.tag();
    seg.xfr(tag);
    if (seg.is_reading() && !seg.failed() && tag != info.tag())
        seg.fail(std::string("class mismatch: expected ") + info.name());
}

void PDB_SEGMENT_BASE::serialize_end(PDB_SEGMENT& seg) {}

uint32_t PDB_SEGMENT::object_number(const void* object) {
    if (!object) return 0;
    auto inserted = m_numbers.emplace(object, static_cast<uint32_t>(m_numbers.size() + 1));
    return inserted.first->second;
}

void PDB_SEGMENT::register_object(uint32_t number, const void* type, void* object) {
    if (failed()) return;
    // The writer numbers objects 1, 2, 3, ... and every stored object takes more than four
    // bytes (its number and its class), so no number exceeds a quarter of the payload: the
    // table stays within a few times the file's size.
    const size_t bound = m_payload.size() / 4;
    if (number == 0 || number > bound) {
        fail("corrupted: an object stored under number " + std::to_string(number));
        return;
    }
    if (number >= m_objects.size())
        m_objects.resize(std::min(bound + 1, std::max<size_t>(number + 1, 2 * m_objects.size())));
    if (m_objects[number].type) {
        fail("corrupted: an object stored under number " + std::to_string(number) + " twice or under 0");
        return;
    }
    m_objects[number] = STORED_OBJECT{type, object};
}

void PDB_SEGMENT::link(uint32_t number, const void* type, void* slot, PDB_ASSIGN assign) {
    assign(slot, nullptr);
    if (number == 0 || failed()) return;
    // A link takes four bytes of the payload: room for a sixteenth of what it can hold
    // saves the first doublings without reserving beyond the file.
    if (m_links.empty()) m_links.reserve(m_payload.size() / 64);
    m_links.push_back(PENDING_LINK{number, type, slot, assign});
}

bool PDB_SEGMENT::resolve_links() {
    for (const PENDING_LINK& l : m_links) {
        if (failed()) break;
        if (l.number >= m_objects.size() || !m_objects[l.number].type || m_objects[l.number].type != l.type) {
            fail("corrupted: a link to object " + std::to_string(l.number) + " that is not stored");
            break;
        }
        l.assign(l.slot, m_objects[l.number].object);
    }
    m_links.clear();
    if (!failed())
        for (const std::function<void()>& action : m_after_links) action();
    m_after_links.clear();
    return !failed();
}

void PDB_SEGMENT::after_links(std::function<void()> action) {
    if (!failed()) m_after_links.push_back(std::move(action));
}
