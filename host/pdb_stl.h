// Transfers of collections, owned pointers, enumerations and bit vectors through a segment.
// Every collection transfers its count first; reading clears the container and refills
// it. Class-type elements go through the class's own `operator<<(PDB_DDB_SEGMENT&, T&)`.
#ifndef VELCORA_HOST_PDB_STL_H
#define VELCORA_HOST_PDB_STL_H

#include <list>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "host/pdb.h"
#include "host/vtl_bool_vector.h"
#include "host/vtl_hash.h"

// Scalars: integers, enumerations (as 32-bit), booleans, doubles, strings.
// Integers are read in place when they can be (the common case of a load), else through the
// segment's checked transfer, which also writes.
template <typename T>
inline typename std::enable_if<std::is_integral<T>::value && !std::is_same<T, bool>::value>::type pdb_xfr(
    PDB_DDB_SEGMENT& seg, T& v) {
    if (!seg.take_in_place(v)) seg.xfr(v);
}
template <typename T>
typename std::enable_if<std::is_enum<T>::value>::type pdb_xfr(PDB_DDB_SEGMENT& seg, T& v) {
    int32_t i = static_cast<int32_t>(v);
    pdb_xfr(seg, i);
    if (seg.is_reading()) v = static_cast<T>(i);
}
inline void pdb_xfr(PDB_DDB_SEGMENT& seg, bool& v) { seg.xfr(v); }
inline void pdb_xfr(PDB_DDB_SEGMENT& seg, double& v) { seg.xfr(v); }
inline void pdb_xfr(PDB_DDB_SEGMENT& seg, std::string& v) { seg.xfr(v); }

// Class-type values: their own serialiser.
template <typename T>
typename std::enable_if<std::is_class<T>::value>::type pdb_xfr(PDB_DDB_SEGMENT& seg, T& v) {
    seg << v;
}

// An owned pointer: a presence flag, then the object (created when reading).
template <typename T>
void pdb_xfr_owned(PDB_DDB_SEGMENT& seg, T*& p) {
    bool present = p != nullptr;
    seg.xfr(present);
    if (seg.is_reading()) {
        delete p;
        p = nullptr;
        if (!present || seg.failed()) return;
        p = new T();
    } else if (!present) {
        return;
    }
    pdb_xfr(seg, *p);
}

// A class's identity for links between stored objects.
template <typename T>
const void* pdb_type_key() {
    static const char key = 0;
    return &key;
}

// A link: a pointer to an object that another field owns, stored as the object's number.
template <typename T>
typename std::enable_if<std::is_class<T>::value>::type pdb_xfr(PDB_DDB_SEGMENT& seg, T*& p) {
    uint32_t number = seg.is_writing() ? seg.object_number(p) : 0;
    pdb_xfr(seg, number);
    if (!seg.is_reading()) return;
    // Null links (most slots of the tables keyed by an enumeration) need no resolving.
    if (number == 0) {
        p = nullptr;
        return;
    }
    seg.link(number, pdb_type_key<T>(), &p, [](void* slot, void* object) {
        *static_cast<T**>(slot) = static_cast<T*>(object);
    });
}

// How a stored object is created when read (specialised for classes without a default
// constructor the store may call).
template <typename T>
struct PDB_NEW {
    static T* make() { return new T(); }
};

// An owned pointer that links may point at: its number, then the object (created when
// reading; 0 stands for null).
template <typename T>
void pdb_xfr_numbered(PDB_DDB_SEGMENT& seg, T*& p) {
    uint32_t number = seg.is_writing() ? seg.object_number(p) : 0;
    pdb_xfr(seg, number);
    if (seg.is_reading()) {
        delete p;
        p = nullptr;
        if (number == 0 || seg.failed()) return;
        p = PDB_NEW<T>::make();
        seg.register_object(number, pdb_type_key<T>(), p);
    } else if (!p) {
        return;
    }
    pdb_xfr(seg, *p);
}

// Minimum bytes one element occupies, for the count check of reading.
template <typename T>
constexpr size_t pdb_min_size() {
    return std::is_arithmetic<T>::value || std::is_enum<T>::value ? (sizeof(T) < 4 ? 1 : 4) : 1;
}

template <typename T>
void pdb_xfr(PDB_DDB_SEGMENT& seg, std::vector<T>& v) {
    size_t n = v.size();
    if (!seg.xfr_count(n, pdb_min_size<T>())) {
        if (seg.is_reading()) v.clear();
        return;
    }
    PDB_SEGMENT_BASE::stl_begin(seg);
    if (seg.is_reading()) {
        v.clear();
        v.resize(n);
        // Integer elements in one piece.
        if constexpr (std::is_integral<T>::value && !std::is_same<T, bool>::value)
            if (seg.take_in_place(v.data(), n)) return;
    }
    for (size_t i = 0; i < n && !seg.failed(); ++i) {
        if constexpr (std::is_same<T, bool>::value) {
            bool b = v[i];
            seg.xfr(b);
            v[i] = b;
        } else {
            pdb_xfr(seg, v[i]);
        }
    }
    if (seg.failed() && seg.is_reading()) v.clear();
}

// A vector of owned pointers.
template <typename T>
void pdb_xfr_owned(PDB_DDB_SEGMENT& seg, std::vector<T*>& v) {
    size_t n = v.size();
    if (!seg.xfr_count(n, 1)) return;
    PDB_SEGMENT_BASE::stl_begin(seg);
    if (seg.is_reading()) v.assign(n, nullptr);
    for (size_t i = 0; i < n && !seg.failed(); ++i) pdb_xfr_owned(seg, v[i]);
}

// A fixed array keyed by an enumeration: its size is transferred and must match.
template <typename T>
void pdb_xfr_array(PDB_DDB_SEGMENT& seg, T* a, size_t size) {
    size_t n = size;
    if (!seg.xfr_count(n, 0)) return;
    if (n != size) {
        seg.fail("array of " + std::to_string(n) + " slots where " + std::to_string(size) + " are expected");
        return;
    }
    for (size_t i = 0; i < n && !seg.failed(); ++i) pdb_xfr(seg, a[i]);
}

inline void pdb_xfr(PDB_DDB_SEGMENT& seg, VTL_BOOL_VECTOR& v) {
    size_t bits = v.size();
    if (!seg.xfr_count(bits, 0)) return;
    size_t words = (bits + 63) / 64;
    if (seg.is_reading()) {
        if (words * 8 > seg.remaining()) {
            seg.fail("corrupted: bit vector exceeds the data");
            return;
        }
        v.resize(bits);
        for (size_t w = 0; w < words && !seg.failed(); ++w) {
            uint64_t x = 0;
            if (!seg.take_in_place(x)) seg.xfr(x);
            v.set_word(w, x);
        }
    } else {
        for (size_t w = 0; w < words; ++w) {
            uint64_t x = v.words()[w];
            seg.xfr(x);
        }
    }
}

// A hash table: its bucket count, its entries in iteration order. Read back, the table is
// rebuilt with the same bucket count, so that it iterates in the same order; a table of
// links is filled once every link is (PDB_SEGMENT::resolve_links).
template <typename K, typename V, typename H>
void pdb_xfr(PDB_DDB_SEGMENT& seg, VTL_HASH<K, V, H>& h) {
    size_t buckets = h.bucket_count();
    if (!seg.xfr_count(buckets, 0)) return;
    size_t n = h.size();
    if (!seg.xfr_count(n, 1)) return;
    PDB_SEGMENT_BASE::stl_begin(seg);
    if (seg.is_writing()) {
        h.for_each([&](const K& k, V& v) {
            K key = k;
            pdb_xfr(seg, key);
            pdb_xfr(seg, v);
        });
        return;
    }
    // A table of n entries never holds more than 2n + 61 buckets.
    if (buckets == 0 || buckets > 2 * n + 61) {
        seg.fail("corrupted: hash table of " + std::to_string(n) + " entries in " + std::to_string(buckets) +
                 " buckets");
        return;
    }
    h = VTL_HASH<K, V, H>(buckets);
    auto entries = std::make_shared<std::vector<std::pair<K, V>>>(n);
    for (size_t i = 0; i < n && !seg.failed(); ++i) {
        pdb_xfr(seg, (*entries)[i].first);
        pdb_xfr(seg, (*entries)[i].second);
    }
    auto fill = [&h, entries]() {
        for (const std::pair<K, V>& e : *entries) h.insert(e.first, e.second);
    };
    // Links are filled once every object is read; other values are there already.
    if (std::is_pointer<V>::value)
        seg.after_links(fill);
    else if (!seg.failed())
        fill();
}

template <typename K, typename V>
void pdb_xfr(PDB_DDB_SEGMENT& seg, std::map<K, V>& m) {
    size_t n = m.size();
    if (!seg.xfr_count(n, 1)) return;
    PDB_SEGMENT_BASE::stl_begin(seg);
    if (seg.is_writing()) {
        for (auto& kv : m) {
            K key = kv.first;
            pdb_xfr(seg, key);
            pdb_xfr(seg, kv.second);
        }
        return;
    }
    m.clear();
    for (size_t i = 0; i < n && !seg.failed(); ++i) {
        K key{};
        V value{};
        pdb_xfr(seg, key);
        pdb_xfr(seg, value);
        if (!seg.failed()) m[key] = value;
    }
}

// Transfers one field with its context set for messages.
#define PDB_FIELD(seg, member) \
    do { \
        PDB_FIELD_SCOPE pdb_scope_((seg), #member, "", __FILE__, __LINE__); \
        pdb_xfr((seg), (member)); \
    } while (0)

#endif
