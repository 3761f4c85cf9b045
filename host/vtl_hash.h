// Host hash table: separate chaining over a bucket array, created with a starting bucket
// count. Iteration visits the buckets in order and each chain in the order of its keys' hash
// values (then of the keys), so two tables that hold the same keys in the same number of
// buckets iterate alike, whatever the order of insertion: a table rebuilt from another's
// entries (a dump read back) iterates as the original. When the table holds more than two
// entries per bucket it grows to 2n+1 buckets.
//
// Integer keys hash to themselves (bucket = key modulo the bucket count); string keys use
// FNV-1a, optionally folding ASCII case (VTL_HASH_NOCASE).
#ifndef VELCORA_HOST_VTL_HASH_H
#define VELCORA_HOST_VTL_HASH_H

#include "host/host_export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

struct HOST_EXPORT VTL_HASH_DEFAULT {
    template <typename K, typename std::enable_if<std::is_integral<K>::value || std::is_enum<K>::value, int>::type = 0>
    size_t hash(K key) const { return static_cast<size_t>(static_cast<uint64_t>(key)); }
    size_t hash(const std::string& key) const {
        uint64_t h = 1469598103934665603ULL;
        for (unsigned char c : key) { h ^= c; h *= 1099511628211ULL; }
        return static_cast<size_t>(h);
    }
    template <typename K>
    bool equal(const K& a, const K& b) const { return a == b; }
};

struct HOST_EXPORT VTL_HASH_NOCASE {
    static unsigned char fold(unsigned char c) { return (c >= 'a' && c <= 'z') ? c - 32 : c; }
    size_t hash(const std::string& key) const {
        uint64_t h = 1469598103934665603ULL;
        for (unsigned char c : key) { h ^= fold(c); h *= 1099511628211ULL; }
        return static_cast<size_t>(h);
    }
    bool equal(const std::string& a, const std::string& b) const {
        if (a.size() != b.size()) return false;
        for (size_t i = 0; i < a.size(); ++i)
            if (fold(static_cast<unsigned char>(a[i])) != fold(static_cast<unsigned char>(b[i]))) return false;
        return true;
    }
};

template <typename K, typename V, typename H = VTL_HASH_DEFAULT>
class VTL_HASH {
    static constexpr uint32_t NONE = 0xFFFFFFFFu;
    struct NODE {
        K key;
        V value;
        size_t hash;
        uint32_t next;
        bool live;
    };

public:
    explicit VTL_HASH(size_t buckets = 61) : m_buckets(buckets ? buckets : 1, NONE) {}

    size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    size_t bucket_count() const { return m_buckets.size(); }

    V* find(const K& key) {
        uint32_t n = find_node(key);
        return n == NONE ? nullptr : &m_nodes[n].value;
    }
    const V* find(const K& key) const {
        uint32_t n = find_node(key);
        return n == NONE ? nullptr : &m_nodes[n].value;
    }
    bool contains(const K& key) const { return find_node(key) != NONE; }

    // Inserts when the key is absent; returns false (and changes nothing) when present.
    bool insert(const K& key, const V& value) {
        if (find_node(key) != NONE) return false;
        add_node(key, value);
        return true;
    }
    // Inserts or overwrites.
    void set(const K& key, const V& value) {
        uint32_t n = find_node(key);
        if (n != NONE) m_nodes[n].value = value; else add_node(key, value);
    }
    V& operator[](const K& key) {
        uint32_t n = find_node(key);
        if (n == NONE) n = add_node(key, V());
        return m_nodes[n].value;
    }
    bool erase(const K& key) {
        size_t b = bucket_of(key);
        uint32_t* link = &m_buckets[b];
        while (*link != NONE) {
            NODE& node = m_nodes[*link];
            if (m_hasher.equal(node.key, key)) {
                uint32_t dead = *link;
                *link = node.next;
                node.live = false;
                node.next = m_free;
                node.value = V();
                m_free = dead;
                --m_size;
                return true;
            }
            link = &node.next;
        }
        return false;
    }
    void clear() {
        for (auto& b : m_buckets) b = NONE;
        m_nodes.clear();
        m_free = NONE;
        m_size = 0;
    }
    // Calls f(key, value) for every entry, bucket by bucket, each chain in insertion order.
    template <typename F>
    void for_each(F f) const {
        for (uint32_t head : m_buckets)
            for (uint32_t n = head; n != NONE; n = m_nodes[n].next) f(m_nodes[n].key, m_nodes[n].value);
    }
    template <typename F>
    void for_each(F f) {
        for (uint32_t head : m_buckets)
            for (uint32_t n = head; n != NONE; n = m_nodes[n].next) f(m_nodes[n].key, m_nodes[n].value);
    }

private:
    size_t bucket_of(const K& key) const { return m_hasher.hash(key) % m_buckets.size(); }
    // Chain order: by hash value, then by key.
    static bool before(const NODE& a, const NODE& b) {
        return a.hash != b.hash ? a.hash < b.hash : a.key < b.key;
    }
    uint32_t find_node(const K& key) const {
        for (uint32_t n = m_buckets[bucket_of(key)]; n != NONE; n = m_nodes[n].next)
            if (m_hasher.equal(m_nodes[n].key, key)) return n;
        return NONE;
    }
    uint32_t add_node(const K& key, const V& value) {
        if (m_size + 1 > 2 * m_buckets.size()) grow();
        uint32_t n;
        if (m_free != NONE) {
            n = m_free;
            m_free = m_nodes[n].next;
            m_nodes[n] = NODE{key, value, m_hasher.hash(key), NONE, true};
        } else {
            n = static_cast<uint32_t>(m_nodes.size());
            m_nodes.push_back(NODE{key, value, m_hasher.hash(key), NONE, true});
        }
        link_in_order(n);
        ++m_size;
        return n;
    }
    void link_in_order(uint32_t n) {
        uint32_t* link = &m_buckets[m_nodes[n].hash % m_buckets.size()];
        while (*link != NONE && before(m_nodes[*link], m_nodes[n])) link = &m_nodes[*link].next;
        m_nodes[n].next = *link;
        *link = n;
    }
    void grow() {
        std::vector<uint32_t> live;
        live.reserve(m_size);
        for (uint32_t head : m_buckets)
            for (uint32_t n = head; n != NONE; n = m_nodes[n].next) live.push_back(n);
        m_buckets.assign(2 * m_buckets.size() + 1, NONE);
        for (uint32_t n : live) link_in_order(n);
    }

    std::vector<uint32_t> m_buckets;
    std::vector<NODE> m_nodes;
    uint32_t m_free = NONE;
    size_t m_size = 0;
    H m_hasher;
};

#endif
