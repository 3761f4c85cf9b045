// Host persistent-object store: serialisation of objects into a byte stream that the
// library writes and reads through its archive stream.
//
// A segment is a self-describing payload: "VDDB", a format version, the payload length
// and its CRC-32, then the payload. Objects are bracketed by serialize_begin/serialize_end,
// which record the class identity (so a file holding another class is refused) and each
// field goes through one primitive transfer per type. Writing collects the payload in
// memory; reading takes the whole payload into memory first (growing as bytes really
// arrive, so a lying length never allocates more than the file delivers) and then checks
// every count and length against what remains: a truncated or corrupted file is an error,
// never a crash or a huge allocation. After the first error the segment stays failed and
// every further read yields defaults.
#ifndef VELCORA_HOST_PDB_H
#define VELCORA_HOST_PDB_H

#include "host/host_export.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

// Collections hold fewer than this many elements.
constexpr uint32_t PDB_MAX_COLLECTION_SIZE = 0x3FFFFFFF;

// The byte stream under a segment (the library's archive stream supplies one).
class HOST_EXPORT PDB_STREAM {
public:
    virtual ~PDB_STREAM();
    virtual bool write(const void* data, size_t size) = 0;
    // Bytes delivered; fewer than asked only at the end of the stream.
    virtual size_t read(void* data, size_t size) = 0;
    // The most bytes the stream can deliver, when it knows (a bound, not a promise).
    virtual uint64_t size_bound() const;
};

// Identity of a stored class: its name and a stable 32-bit tag derived from it.
class HOST_EXPORT PDB_CLASS_INFO {
public:
    explicit PDB_CLASS_INFO(const char* class_name);
    const char* name() const { return m_name; }
    uint32_t tag() const { return m_tag; }

private:
    const char* m_name;
    uint32_t m_tag;
};

// Data handed to auto-match hooks; unused by the classes of this library.
struct HOST_EXPORT PDB_MATCH_DATA {
    const void* other = nullptr;
};

// The field being transferred, for error messages.
struct HOST_EXPORT PDB_FIELD_CONTEXT {
    const char* field = nullptr;
    const char* module = nullptr;
    const char* source = nullptr;
    int line = 0;
    const char* type = nullptr;
};

class HOST_EXPORT PDB_SEGMENT {
public:
    static constexpr uint16_t FORMAT_VERSION = 1;

    // A segment for writing, or for reading a payload already taken with load().
    explicit PDB_SEGMENT(bool writing);
    virtual ~PDB_SEGMENT() = default;

    bool is_writing() const { return m_writing; }
    bool is_reading() const { return !m_writing; }
    bool failed() const { return !m_error.empty(); }
    const std::string& error() const { return m_error; }

    // Writes header and payload to the stream.
    bool save(PDB_STREAM& stream);
    // Reads header and payload from the stream; false (with error()) when it is not a
    // segment of this format, of another version, truncated or corrupted.
    bool load(PDB_STREAM& stream);
    // Takes a payload (with header) from memory.
    bool load_bytes(const std::string& bytes);
    // The bytes save() writes (header and payload).
    std::string bytes() const;
    // True when every payload byte was consumed (reading).
    bool at_end() const { return m_pos == m_payload.size(); }

    // Primitive transfers: write the value when writing, read it when reading.
    virtual void xfr(int32_t& v);
    virtual void xfr(uint32_t& v);
    virtual void xfr(int64_t& v);
    virtual void xfr(uint64_t& v);
    virtual void xfr(bool& v);
    virtual void xfr(uint8_t& v);
    virtual void xfr(double& v);
    virtual void xfr(std::string& v);

    // The reading fast path of the fixed-size integer transfers: takes the little-endian
    // value straight from the payload when the segment is reading, has not failed and holds
    // enough bytes. Otherwise false with nothing consumed, and the checked xfr reports.
    template <typename T>
    bool take_in_place(T& v) {
        static_assert(std::is_integral<T>::value && !std::is_same<T, bool>::value, "integers only");
        if (m_writing || !m_error.empty() || m_payload.size() - m_pos < sizeof(T)) return false;
        const unsigned char* p = reinterpret_cast<const unsigned char*>(m_payload.data()) + m_pos;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
        std::memcpy(&v, p, sizeof(T));
#else
        uint64_t u = 0;
        for (size_t i = 0; i < sizeof(T); ++i) u |= static_cast<uint64_t>(p[i]) << (8 * i);
        v = static_cast<T>(u);
#endif
        m_pos += sizeof(T);
        return true;
    }

    // The same for `n` consecutive integers (a collection's elements), all or nothing.
    template <typename T>
    bool take_in_place(T* v, size_t n) {
        static_assert(std::is_integral<T>::value && !std::is_same<T, bool>::value, "integers only");
        if (m_writing || !m_error.empty() || (m_payload.size() - m_pos) / sizeof(T) < n) return false;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
        if (n) std::memcpy(v, m_payload.data() + m_pos, n * sizeof(T));
        m_pos += n * sizeof(T);
#else
        for (size_t i = 0; i < n; ++i) take_in_place(v[i]);
#endif
        return true;
    }

    // A collection's element count: written as 32 bits; refused at PDB_MAX_COLLECTION_SIZE
    // or above ("size < PDB_MAX_COLLECTION_SIZE") and, when reading, when fewer than
    // `count * min_element_size` bytes remain.
    bool xfr_count(size_t& count, size_t min_element_size = 1);

    // Field context for messages: the innermost PDB_FIELD_SCOPE's, else the one set here.
    void set_field(const PDB_FIELD_CONTEXT& f) { m_field = f; }
    const PDB_FIELD_CONTEXT& field() const { return m_field_scope ? *m_field_scope : m_field; }

    // Marks the segment failed (first message wins) and reports it.
    void fail(const std::string& message);

    size_t payload_size() const { return m_payload.size(); }
    // Payload bytes not yet read.
    size_t remaining() const { return m_payload.size() - m_pos; }

    // Links between stored objects. An object that others point at is stored once, where it
    // is owned, under a number; a pointer to it is stored as that number (0 for null).
    // Writing: the number of `object`, given on first sight (0 for null).
    uint32_t object_number(const void* object);
    // Reading: `object`, of the class `type`, was read under `number`. A number used twice
    // fails the segment.
    void register_object(uint32_t number, const void* type, void* object);
    // Reading: the pointer at `slot` is to point at the object of class `type` stored under
    // `number` (null for 0); `assign(slot, object)` stores it, once resolve_links runs.
    typedef void (*PDB_ASSIGN)(void* slot, void* object);
    void link(uint32_t number, const void* type, void* slot, PDB_ASSIGN assign);
    // Reading: `action` runs once every link is filled (for tables that are built from their
    // linked entries).
    void after_links(std::function<void()> action);
    // Reading: fills every linked slot once all objects are read, then runs the actions.
    // False, failing the segment, when a number names no object or an object of another
    // class.
    bool resolve_links();

private:
    friend class PDB_SEGMENT_BASE;
    bool take(void* data, size_t size);
    void put(const void* data, size_t size);

    bool m_writing;
    std::string m_payload;
    size_t m_pos = 0;
    std::string m_error;
    PDB_FIELD_CONTEXT m_field;
    // The context of the innermost open PDB_FIELD_SCOPE (it lives on that scope's stack).
    const PDB_FIELD_CONTEXT* m_field_scope = nullptr;
    friend class PDB_FIELD_SCOPE;

    struct STORED_OBJECT {
        const void* type;
        void* object;
    };
    struct PENDING_LINK {
        uint32_t number;
        const void* type;
        void* slot;
        PDB_ASSIGN assign;
    };
    std::unordered_map<const void*, uint32_t> m_numbers;         // writing
    // Reading: the objects by number (numbers run from 1 as the writer gave them; an empty
    // slot has no type). A number is at most a quarter of the payload's size.
    std::vector<STORED_OBJECT> m_objects;
    std::vector<PENDING_LINK> m_links;                            // reading
    std::vector<std::function<void()>> m_after_links;            // reading
};

// The name the library's serialisers use for the segment type they write to.
struct PDB_DDB_SEG_BASE {};
template <typename BASE>
class PDB_SEGMENT_TEMPLATE : public PDB_SEGMENT {
public:
    using PDB_SEGMENT::PDB_SEGMENT;
};
typedef PDB_SEGMENT_TEMPLATE<PDB_DDB_SEG_BASE> PDB_DDB_SEGMENT;

class HOST_EXPORT PDB_SEGMENT_BASE {
public:
    // Brackets one object: records (writing) or checks (reading) the class tag.
    static void serialize_begin(PDB_SEGMENT& seg, const PDB_CLASS_INFO& info, const void* object);
    static void serialize_end(PDB_SEGMENT& seg);
    // Opens a collection after its count was transferred.
    static void stl_begin(PDB_SEGMENT& seg) {}
};

// Sets the field context for one field and restores the previous one afterwards. Every
// field of every object opens one, so it only links its context in and out.
class HOST_EXPORT PDB_FIELD_SCOPE {
public:
    PDB_FIELD_SCOPE(PDB_SEGMENT& seg, const char* field, const char* type, const char* source, int line)
        : m_seg(seg), m_context{field, "DEV", source, line, type}, m_saved(seg.m_field_scope) {
        seg.m_field_scope = &m_context;
    }
    ~PDB_FIELD_SCOPE() { m_seg.m_field_scope = m_saved; }
    PDB_FIELD_SCOPE(const PDB_FIELD_SCOPE&) = delete;
    PDB_FIELD_SCOPE& operator=(const PDB_FIELD_SCOPE&) = delete;

private:
    PDB_SEGMENT& m_seg;
    const PDB_FIELD_CONTEXT m_context;
    const PDB_FIELD_CONTEXT* m_saved;
};

// Reports a broken invariant of the store.
HOST_EXPORT void pdb_internal_error(const char* message);

#endif
