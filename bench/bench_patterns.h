// The bare-matching baseline of the text readers: a reader's line patterns compiled for
// PCRE2's JIT and matched anchored, without copying any group; a reader's rules of which
// patterns a line is tried with stay in its benchmark.
#ifndef VELCORA_BENCH_PATTERNS_H
#define VELCORA_BENCH_PATTERNS_H

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <string>
#include <vector>

namespace bench {

class BARE_PATTERNS {
public:
    explicit BARE_PATTERNS(const std::vector<const char*>& patterns) {
        for (const char* text : patterns) {
            int error;
            PCRE2_SIZE offset;
            pcre2_code* code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text), PCRE2_ZERO_TERMINATED,
                                             PCRE2_ANCHORED, &error, &offset, nullptr);
            pcre2_jit_compile(code, PCRE2_JIT_COMPLETE);
            m_code.push_back(code);
        }
        m_data = pcre2_match_data_create(4, nullptr);
    }
    ~BARE_PATTERNS() {
        for (pcre2_code* c : m_code) pcre2_code_free(c);
        pcre2_match_data_free(m_data);
    }
    BARE_PATTERNS(const BARE_PATTERNS&) = delete;
    BARE_PATTERNS& operator=(const BARE_PATTERNS&) = delete;

    bool match(size_t pattern, const std::string& line) {
        return pcre2_jit_match(m_code[pattern], reinterpret_cast<PCRE2_SPTR>(line.data()), line.size(), 0, 0, m_data,
                               nullptr) > 0;
    }
    // The value group (2) of the last match is exactly "{".
    bool value_opens_table(const std::string& line) const {
        const PCRE2_SIZE* v = pcre2_get_ovector_pointer(m_data);
        return v[5] - v[4] == 1 && line[v[4]] == '{';
    }

private:
    std::vector<pcre2_code*> m_code;
    pcre2_match_data* m_data;
};

// The lines of a text, without their line ends.
inline std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t at = 0, next; at < text.size(); at = next + 1) {
        next = text.find('\n', at);
        if (next == std::string::npos) next = text.size();
        lines.emplace_back(text, at, next - at);
    }
    return lines;
}

}  // namespace bench

#endif
