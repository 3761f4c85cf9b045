// Host bit vector: a fixed number of bits, set once at construction or by resize.
#ifndef VELCORA_HOST_VTL_BOOL_VECTOR_H
#define VELCORA_HOST_VTL_BOOL_VECTOR_H

#include "host/host_export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class HOST_EXPORT VTL_BOOL_VECTOR {
public:
    VTL_BOOL_VECTOR() = default;
    explicit VTL_BOOL_VECTOR(size_t size) { resize(size); }

    size_t size() const { return m_size; }
    void resize(size_t size) {
        m_size = size;
        m_words.assign((size + 63) / 64, 0);
    }
    // Bits outside the vector read as false; writes outside it are ignored.
    bool get_value(size_t i) const {
        return i < m_size && ((m_words[i >> 6] >> (i & 63)) & 1u);
    }
    void set_value(size_t i, bool value) {
        if (i >= m_size) return;
        uint64_t bit = uint64_t(1) << (i & 63);
        if (value) m_words[i >> 6] |= bit; else m_words[i >> 6] &= ~bit;
    }
    bool operator[](size_t i) const { return get_value(i); }
    void clear_all() { for (auto& w : m_words) w = 0; }
    size_t count() const {
        size_t n = 0;
        for (uint64_t w : m_words) n += static_cast<size_t>(__builtin_popcountll(w));
        return n;
    }
    bool any() const {
        for (uint64_t w : m_words) if (w) return true;
        return false;
    }
    bool operator==(const VTL_BOOL_VECTOR& o) const { return m_size == o.m_size && m_words == o.m_words; }
    bool operator!=(const VTL_BOOL_VECTOR& o) const { return !(*this == o); }
    const std::vector<uint64_t>& words() const { return m_words; }
    // Sets the 64 bits of word `w` at once (bits past the size are dropped).
    void set_word(size_t w, uint64_t bits) {
        if (w >= m_words.size()) return;
        const size_t used = m_size - 64 * w;
        m_words[w] = used >= 64 ? bits : bits & ((uint64_t(1) << used) - 1);
    }

private:
    size_t m_size = 0;
    std::vector<uint64_t> m_words;
};

#endif
