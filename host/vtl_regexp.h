// Host regular-expression engine: PCRE2 (8-bit) with JIT compilation when available.
//
// The compiled code is shared between copies; each object keeps its own match data, so
// the groups of one object are never disturbed by another's matches.
#ifndef VELCORA_HOST_VTL_REGEXP_H
#define VELCORA_HOST_VTL_REGEXP_H

#include "host/host_export.h"

#include <cstddef>
#include <memory>
#include <string>

// A half-open range [begin, end) of a subject; both are npos when empty/unset.
class HOST_EXPORT VTL_RANGE {
public:
    static constexpr size_t npos = static_cast<size_t>(-1);
    VTL_RANGE() = default;
    VTL_RANGE(size_t b, size_t e) : m_begin(b), m_end(e) {}
    size_t begin() const { return m_begin; }
    size_t end() const { return m_end; }
    bool empty() const { return m_begin == npos || m_end == npos || m_end <= m_begin; }
    size_t size() const { return empty() ? 0 : m_end - m_begin; }

private:
    size_t m_begin = npos;
    size_t m_end = npos;
};

class HOST_EXPORT VTL_REGEXP {
public:
    VTL_REGEXP();
    VTL_REGEXP(const std::string& pattern, bool extended = true);
    VTL_REGEXP(const VTL_REGEXP& other);
    VTL_REGEXP& operator=(const VTL_REGEXP& other);
    ~VTL_REGEXP();

    // Compiles the pattern (PCRE2 syntax; `extended` is accepted for interface
    // compatibility and selects the same syntax). Returns false and reports the
    // position and reason of a syntax error.
    bool pattern(const std::string& pattern, bool extended = true);
    const std::string& pattern_text() const;
    bool is_valid() const;

    // Anchored match at `begin`, looking no further than `end` (npos: end of the text).
    // Returns the length of the match, or -1.
    int match(const char* subject, size_t begin, size_t end, size_t subject_length = VTL_RANGE::npos);
    int match(const std::string& subject, size_t begin = 0, size_t end = VTL_RANGE::npos);
    // Unanchored search within [begin, end). Returns the matched range, empty when none.
    VTL_RANGE search(const std::string& subject, size_t begin = 0, size_t end = VTL_RANGE::npos);

    // Range of group i of the last successful match (0 is the whole match); empty when the
    // group did not take part or i is out of range.
    VTL_RANGE group(size_t i) const;
    // Number of capturing groups of the pattern.
    size_t groups() const;

private:
    struct CODE;
    std::shared_ptr<CODE> m_code;
    void* m_match_data = nullptr;  // pcre2_match_data*
    bool m_matched = false;
    void alloc_match_data();
};

#endif
