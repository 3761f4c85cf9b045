// DEV_ENUM_FLAG: a fixed-size bit set with one bit per enumerator of an enumeration; bit n
// stands for the enumerator of value n. The trait sets of families, devices and parts are
// instances. A value outside 0..BITS-1 is an internal error and the operation does nothing
// (a test answers false).
#ifndef VELCORA_DEV_ENUM_FLAG_H
#define VELCORA_DEV_ENUM_FLAG_H

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "host/tables/dev_device_trait_enum.h"
#include "host/tables/dev_family_trait_enum.h"
#include "host/tables/dev_part_trait_enum.h"
#include "host/msg.h"

template <typename ENUM, unsigned BITS>
class DEV_ENUM_FLAG {
public:
    typedef uint64_t WORD;
    typedef ENUM value_type;
    static constexpr unsigned WORD_BITS = 64;
    static constexpr unsigned WORDS = (BITS + WORD_BITS - 1) / WORD_BITS;

    DEV_ENUM_FLAG() = default;

    static constexpr unsigned size() { return BITS; }

    void set(ENUM value) {
        if (in_range(value)) m_words[word_of(value)] |= mask_of(value);
    }
    void clear(ENUM value) {
        if (in_range(value)) m_words[word_of(value)] &= ~mask_of(value);
    }
    bool test(ENUM value) const {
        return in_range(value) && (m_words[word_of(value)] & mask_of(value)) != 0;
    }
    void clear_all() {
        for (WORD& w : m_words) w = 0;
    }

    bool any() const {
        for (WORD w : m_words)
            if (w) return true;
        return false;
    }
    bool none() const { return !any(); }
    unsigned count() const {
        unsigned n = 0;
        for (WORD w : m_words) n += static_cast<unsigned>(__builtin_popcountll(w));
        return n;
    }
    // True when every bit set in `other` is set here.
    bool contains(const DEV_ENUM_FLAG& other) const {
        for (unsigned i = 0; i < WORDS; ++i)
            if ((m_words[i] & other.m_words[i]) != other.m_words[i]) return false;
        return true;
    }

    DEV_ENUM_FLAG& operator|=(const DEV_ENUM_FLAG& other) {
        for (unsigned i = 0; i < WORDS; ++i) m_words[i] |= other.m_words[i];
        return *this;
    }
    DEV_ENUM_FLAG& operator&=(const DEV_ENUM_FLAG& other) {
        for (unsigned i = 0; i < WORDS; ++i) m_words[i] &= other.m_words[i];
        return *this;
    }
    bool operator==(const DEV_ENUM_FLAG& other) const {
        for (unsigned i = 0; i < WORDS; ++i)
            if (m_words[i] != other.m_words[i]) return false;
        return true;
    }
    bool operator!=(const DEV_ENUM_FLAG& other) const { return !(*this == other); }

    // Raw words for the persistent store; bits at or above BITS are dropped when set.
    static constexpr unsigned word_count() { return WORDS; }
    WORD get_word(unsigned i) const { return i < WORDS ? m_words[i] : 0; }
    void set_word(unsigned i, WORD w) {
        if (i >= WORDS) return;
        if (i == WORDS - 1 && BITS % WORD_BITS) w &= (WORD(1) << (BITS % WORD_BITS)) - 1;
        m_words[i] = w;
    }

    // Iteration over the set bits in ascending order, as enumerators.
    class const_iterator {
    public:
        typedef std::forward_iterator_tag iterator_category;
        typedef ENUM value_type;
        typedef std::ptrdiff_t difference_type;
        typedef const ENUM* pointer;
        typedef ENUM reference;

        const_iterator(const DEV_ENUM_FLAG* flag, unsigned bit) : m_flag(flag), m_bit(flag->next_set(bit)) {}
        ENUM operator*() const { return static_cast<ENUM>(m_bit); }
        const_iterator& operator++() {
            m_bit = m_flag->next_set(m_bit + 1);
            return *this;
        }
        const_iterator operator++(int) {
            const_iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const const_iterator& o) const { return m_bit == o.m_bit; }
        bool operator!=(const const_iterator& o) const { return m_bit != o.m_bit; }

    private:
        const DEV_ENUM_FLAG* m_flag;
        unsigned m_bit;
    };
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, BITS); }

private:
    WORD m_words[WORDS] = {};

    static bool in_range(ENUM value) {
        return DEV_ASSERT_TEXT(static_cast<long long>(value) >= 0 && static_cast<long long>(value) < BITS,
                               "value >= 0 && value < BITS");
    }
    static unsigned word_of(ENUM value) { return static_cast<unsigned>(value) / WORD_BITS; }
    static WORD mask_of(ENUM value) { return WORD(1) << (static_cast<unsigned>(value) % WORD_BITS); }
    // The first set bit at or after `bit`, or BITS when there is none.
    unsigned next_set(unsigned bit) const {
        while (bit < BITS) {
            WORD w = m_words[bit / WORD_BITS] >> (bit % WORD_BITS);
            if (w) {
                unsigned found = bit + static_cast<unsigned>(__builtin_ctzll(w));
                return found < BITS ? found : BITS;
            }
            bit = (bit / WORD_BITS + 1) * WORD_BITS;
        }
        return BITS;
    }
};

// The trait sets of the catalogue records: one bit per trait value, the generic bound
// included.
typedef DEV_ENUM_FLAG<DEV_FAMILY_TRAIT_ENUM, 163> DEV_FAMILY_TRAIT_FLAG;
typedef DEV_ENUM_FLAG<DEV_DEVICE_TRAIT_ENUM, 13> DEV_DEVICE_TRAIT_FLAG;
typedef DEV_ENUM_FLAG<DEV_PART_TRAIT_ENUM, 35> DEV_PART_TRAIT_FLAG;
static_assert(DEV_FAMILY_TRAIT_GENERIC + 1 == 163, "family trait set covers every trait value");
static_assert(DEV_DEVICE_TRAIT_GENERIC + 1 == 13, "device trait set covers every trait value");
static_assert(DEV_PART_TRAIT_GENERIC + 1 == 35, "part trait set covers every trait value");

#endif
