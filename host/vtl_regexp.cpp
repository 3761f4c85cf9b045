// PCRE2 engine behind VTL_REGEXP. Each pattern is compiled twice on demand: once anchored
// (for match, so the JIT code serves anchored matches; PCRE2 refuses JIT for an anchoring
// option given at match time) and once unanchored (for search).
#define PCRE2_CODE_UNIT_WIDTH 8
#include "host/vtl_regexp.h"

#include <pcre2.h>

#include <string>

#include "host/msg.h"

namespace {

// One JIT stack for every pattern: large enough for lazy repetitions over very long lines.
pcre2_match_context* shared_match_context() {
    static pcre2_match_context* ctx = [] {
        pcre2_match_context* c = pcre2_match_context_create(nullptr);
        pcre2_jit_stack* stack = pcre2_jit_stack_create(32 * 1024, 16 * 1024 * 1024, nullptr);
        if (c && stack) pcre2_jit_stack_assign(c, nullptr, stack);
        return c;
    }();
    return ctx;
}

pcre2_code* compile(const std::string& text, uint32_t options, bool report, bool* jit = nullptr) {
    int error = 0;
    PCRE2_SIZE offset = 0;
    pcre2_code* code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(),
                                     options, &error, &offset, nullptr);
    if (!code) {
        if (report) {
            PCRE2_UCHAR buf[256];
            pcre2_get_error_message(error, buf, sizeof buf);
            std::string msg = "Invalid regular expression \"" + text + "\" at offset " +
                              std::to_string(offset) + ": " + reinterpret_cast<char*>(buf);
            MSG_INTERNAL_ERROR_report(msg.c_str(), "VTL", msg_source_name(__FILE__).c_str(), __LINE__);
        }
        return nullptr;
    }
    // Falls back to the interpreter when refused.
    bool jit_ok = pcre2_jit_compile(code, PCRE2_JIT_COMPLETE) == 0;
    if (jit) *jit = jit_ok;
    return code;
}

}  // namespace

struct VTL_REGEXP::CODE {
    std::string text;
    pcre2_code* anchored = nullptr;
    pcre2_code* unanchored = nullptr;
    bool valid = false;
    bool anchored_jit = false;  // the anchored code runs through the JIT fast path
    uint32_t capture_count = 0;
    ~CODE() {
        pcre2_code_free(anchored);
        pcre2_code_free(unanchored);
    }
    pcre2_code* get_unanchored() {
        if (!unanchored && valid) unanchored = compile(text, 0, false);
        return unanchored;
    }
};

VTL_REGEXP::VTL_REGEXP() = default;

VTL_REGEXP::VTL_REGEXP(const std::string& p, bool extended) { pattern(p, extended); }

VTL_REGEXP::VTL_REGEXP(const VTL_REGEXP& other) : m_code(other.m_code) { alloc_match_data(); }

VTL_REGEXP& VTL_REGEXP::operator=(const VTL_REGEXP& other) {
    if (this != &other) {
        m_code = other.m_code;
        alloc_match_data();
    }
    return *this;
}

VTL_REGEXP::~VTL_REGEXP() { pcre2_match_data_free(static_cast<pcre2_match_data*>(m_match_data)); }

void VTL_REGEXP::alloc_match_data() {
    pcre2_match_data_free(static_cast<pcre2_match_data*>(m_match_data));
    m_match_data = nullptr;
    m_matched = false;
    if (m_code && m_code->valid)
        m_match_data = pcre2_match_data_create(m_code->capture_count + 1, nullptr);
}

bool VTL_REGEXP::pattern(const std::string& text, bool /*extended*/) {
    auto code = std::make_shared<CODE>();
    code->text = text;
    code->anchored = compile(text, PCRE2_ANCHORED, true, &code->anchored_jit);
    code->valid = code->anchored != nullptr;
    if (code->valid) pcre2_pattern_info(code->anchored, PCRE2_INFO_CAPTURECOUNT, &code->capture_count);
    m_code = code;
    alloc_match_data();
    return code->valid;
}

const std::string& VTL_REGEXP::pattern_text() const {
    static const std::string empty;
    return m_code ? m_code->text : empty;
}

bool VTL_REGEXP::is_valid() const { return m_code && m_code->valid; }

int VTL_REGEXP::match(const char* subject, size_t begin, size_t end, size_t subject_length) {
    m_matched = false;
    // Per-line hot path: the code is tested directly, and JIT-compiled code is run through
    // pcre2_jit_match, which skips the argument checks that are made here already.
    if (!m_code || !m_code->valid || !subject) return -1;
    size_t length = subject_length;
    if (length == VTL_RANGE::npos) length = std::char_traits<char>::length(subject);
    if (end == VTL_RANGE::npos || end > length) end = length;
    if (begin > end) return -1;
    auto* md = static_cast<pcre2_match_data*>(m_match_data);
    auto* s = reinterpret_cast<PCRE2_SPTR>(subject);
    int rc = m_code->anchored_jit
                 ? pcre2_jit_match(m_code->anchored, s, end, begin, 0, md, shared_match_context())
                 : pcre2_match(m_code->anchored, s, end, begin, 0, md, shared_match_context());
    if (rc < 0) return -1;
    m_matched = true;
    PCRE2_SIZE* ov = pcre2_get_ovector_pointer(md);
    return static_cast<int>(ov[1] - ov[0]);
}

int VTL_REGEXP::match(const std::string& subject, size_t begin, size_t end) {
    return match(subject.data(), begin, end, subject.size());
}

VTL_RANGE VTL_REGEXP::search(const std::string& subject, size_t begin, size_t end) {
    m_matched = false;
    if (!is_valid()) return VTL_RANGE();
    pcre2_code* code = m_code->get_unanchored();
    if (!code) return VTL_RANGE();
    if (end == VTL_RANGE::npos || end > subject.size()) end = subject.size();
    if (begin > end) return VTL_RANGE();
    auto* md = static_cast<pcre2_match_data*>(m_match_data);
    int rc = pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(subject.data()), end, begin, 0, md,
                         shared_match_context());
    if (rc < 0) return VTL_RANGE();
    m_matched = true;
    PCRE2_SIZE* ov = pcre2_get_ovector_pointer(md);
    return VTL_RANGE(ov[0], ov[1]);
}

VTL_RANGE VTL_REGEXP::group(size_t i) const {
    if (!m_matched || !m_match_data || i > m_code->capture_count) return VTL_RANGE();
    auto* md = static_cast<pcre2_match_data*>(m_match_data);
    if (i >= pcre2_get_ovector_count(md)) return VTL_RANGE();
    PCRE2_SIZE* ov = pcre2_get_ovector_pointer(md);
    if (ov[2 * i] == PCRE2_UNSET) return VTL_RANGE();
    return VTL_RANGE(ov[2 * i], ov[2 * i + 1]);
}

size_t VTL_REGEXP::groups() const { return m_code && m_code->valid ? m_code->capture_count : 0; }
