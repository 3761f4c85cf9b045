// Attribute-line syntax of the data files: per-format patterns and wording, matching,
// the 2D continuation rule, and the text conversions of attribute values.
#include "dev_attribute_syntax.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "host/msg.h"

namespace {

// The canonical patterns, in kind order.
const char* const CANONICAL_PATTERNS[ASTR_KIND_COUNT] = {
    R"P(^\s*(BOOL_\w+)\s*=\s*(\w+)\s*$)P",
    R"P(^\s*(INT_\w+)\s*=\s*(.+?)\s*$)P",
    R"P(^\s*(ENUM_\w+)\s*=\s*(.+?)\s*$)P",
    R"P(^\s*(STRING_\w+)\s*=\s*"([^"]*)"\s*$)P",
    R"P(^\s*(2D_INT_\w+)\s*=\s*(.+?)\s*$)P",
    R"P(^\s*(VEC_INT_\w+)\s*=\s*(.+?)\s*$)P",
    R"P(^\s*(VEC_DOUBLE_\w+)\s*=\s*(.+?)\s*$)P",
    R"P(^\s*(VEC_STRING_\w+)\s*=\s*(\{.+\})\s*$)P",
};

DEV_ATTRIBUTE_FORMAT canonical_format() {
    DEV_ATTRIBUTE_FORMAT f = {
        {},
        {"Invalid boolean key: ", "Invalid int key: ", "Invalid int key: ", "Invalid string key: ",
         "Invalid 2D_INT key: ", "Invalid string key: ", "Invalid string key: ", "Invalid string key: "},
        {"Invalid boolean value: ", "Invalid int value: ", "Invalid int value: ", "",
         "Invalid 2D_INT value: ", "Invalid VEC_INT value: ", "Invalid VEC_DOUBLE value: ",
         "Invalid VEC_STRING value: "},
        {"", "", "", "", "", "", "", ""},
        false};
    for (int k = 0; k < ASTR_KIND_COUNT; ++k) f.pattern[k] = CANONICAL_PATTERNS[k];
    return f;
}

// The canonical lines of the listed kinds only, BOOL values checked before their keys.
DEV_ATTRIBUTE_FORMAT value_first_format(std::initializer_list<ASTR_KIND> kinds) {
    DEV_ATTRIBUTE_FORMAT f = canonical_format();
    const char* keep[ASTR_KIND_COUNT] = {};
    for (ASTR_KIND k : kinds) keep[k] = f.pattern[k];
    for (int k = 0; k < ASTR_KIND_COUNT; ++k) f.pattern[k] = keep[k];
    f.bool_value_first = true;
    return f;
}

}  // namespace

const char* const DEV_2D_CONTINUATION_PATTERN = R"P(^\s*(\{\{?.+\}\}?)\s*$)P";

const DEV_ATTRIBUTE_FORMAT& DEV_ATTRIBUTE_FORMAT::hdr() {
    static const DEV_ATTRIBUTE_FORMAT format = canonical_format();
    return format;
}

const DEV_ATTRIBUTE_FORMAT& DEV_ATTRIBUTE_FORMAT::pad() {
    static const DEV_ATTRIBUTE_FORMAT format = [] {
        DEV_ATTRIBUTE_FORMAT f = value_first_format(
            {ASTR_KIND_BOOL, ASTR_KIND_INT, ASTR_KIND_STRING, ASTR_KIND_2D_INT, ASTR_KIND_VEC_STRING});
        f.pattern[ASTR_KIND_BOOL] = R"P(\s*(BOOL_\w+)\s*=\s*(\w+)\s*$)P";
        f.pattern[ASTR_KIND_STRING] = R"P(\s*(STRING_\w+)\s*=\s*"([^"]*)"\s*$)P";
        f.pattern[ASTR_KIND_INT] = R"P(\s*(INT_\w+)\s*=\s*(.+?)\s*$)P";
        f.value_error[ASTR_KIND_INT] = "Invalid int value: \"";
        f.value_error_end[ASTR_KIND_INT] = "\"";
        return f;
    }();
    return format;
}

const DEV_ATTRIBUTE_FORMAT& DEV_ATTRIBUTE_FORMAT::pkg() {
    static const DEV_ATTRIBUTE_FORMAT format = [] {
        DEV_ATTRIBUTE_FORMAT f = value_first_format({ASTR_KIND_BOOL, ASTR_KIND_INT, ASTR_KIND_STRING,
                                                     ASTR_KIND_2D_INT, ASTR_KIND_VEC_INT, ASTR_KIND_VEC_DOUBLE});
        f.pattern[ASTR_KIND_BOOL] = R"P(^\s*(BOOL_\w+)\s*=\s*(\w+)$)P";
        f.key_error[ASTR_KIND_BOOL] = "Invalid bool key: ";
        f.value_error[ASTR_KIND_BOOL] = "Invalid bool value: ";
        return f;
    }();
    return format;
}

const DEV_ATTRIBUTE_FORMAT& DEV_ATTRIBUTE_FORMAT::part_info() {
    static const DEV_ATTRIBUTE_FORMAT format = value_first_format(
        {ASTR_KIND_BOOL, ASTR_KIND_INT, ASTR_KIND_ENUM, ASTR_KIND_STRING, ASTR_KIND_2D_INT});
    return format;
}

// The same lines as PART_INFO files. The ENUM pattern is compiled with the others, though
// no RSI block reads ENUM lines.
const DEV_ATTRIBUTE_FORMAT& DEV_ATTRIBUTE_FORMAT::rsi() { return part_info(); }

DEV_ATTRIBUTE_SYNTAX::DEV_ATTRIBUTE_SYNTAX(const DEV_ATTRIBUTE_FORMAT& format) : m_format(format) {
    // Patterns go through the Perl-escape translation once; matching then uses the
    // engine directly so that group texts are cut out of the line without copying it.
    for (int k = 0; k < ASTR_KIND_COUNT; ++k) {
        m_compiled[k] = format.pattern[k] != nullptr;
        m_required_prefix[k] = nullptr;
        m_required_prefix_length[k] = 0;
        if (!m_compiled[k]) continue;
        m_patterns[k].pattern(DEV_REGEXP(format.pattern[k]).engine_pattern());
        // Patterns of the form [^]\s*(<prefix>... cannot match a line whose first word lacks
        // the prefix; such lines are refused without asking the engine (same outcome).
        std::string text = format.pattern[k];
        if (!text.empty() && text[0] == '^') text.erase(0, 1);
        const std::string lead = std::string("\\s*(") + astr_kind_prefix(static_cast<ASTR_KIND>(k));
        if (text.compare(0, lead.size(), lead) == 0) {
            m_required_prefix[k] = astr_kind_prefix(static_cast<ASTR_KIND>(k));
            m_required_prefix_length[k] = std::strlen(m_required_prefix[k]);
        }
    }
}

bool DEV_ATTRIBUTE_SYNTAX::match_group(VTL_REGEXP& regexp, const std::string& line, size_t group,
                                       std::string& out) {
    if (regexp.match(line.data(), 0, VTL_RANGE::npos, line.size()) < 0) return false;
    VTL_RANGE r = regexp.group(group);
    if (r.empty())
        out.clear();
    else
        out.assign(line, r.begin(), r.size());
    return true;
}

namespace {
// The blanks of "\s" as the pattern translation spells them out.
inline bool is_pattern_blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
}  // namespace

bool DEV_ATTRIBUTE_SYNTAX::match(ASTR_KIND kind, const std::string& line) {
    if (static_cast<unsigned>(kind) >= ASTR_KIND_COUNT || !m_compiled[kind]) return false;
    if (const char* prefix = m_required_prefix[kind]) {
        size_t i = 0;
        while (i < line.size() && is_pattern_blank(line[i])) ++i;
        const size_t n = m_required_prefix_length[kind];
        if (line.size() - i < n || std::memcmp(line.data() + i, prefix, n) != 0) return false;
    }
    VTL_REGEXP& regexp = m_patterns[kind];
    if (!match_group(regexp, line, 1, m_key)) return false;
    VTL_RANGE r = regexp.group(2);
    if (r.empty())
        m_value.clear();
    else
        m_value.assign(line, r.begin(), r.size());
    return true;
}

bool dev_2d_continuation_group(const std::string& line, size_t* begin, size_t* end) {
    // ^\s*(\{\{?.+\}\}?)\s*$ : after the leading blanks a "{"; the last character before the
    // trailing blanks a "}"; at least one character between them, none a newline (which "."
    // does not match). The greedy ".+" makes the group end at that last "}".
    size_t first = 0;
    while (first < line.size() && is_pattern_blank(line[first])) ++first;
    if (first == line.size() || line[first] != '{') return false;
    size_t last = line.size();
    while (last > first && is_pattern_blank(line[last - 1])) --last;
    if (last - first < 3 || line[last - 1] != '}') return false;
    if (std::memchr(line.data() + first + 1, '\n', last - first - 2)) return false;
    *begin = first;
    *end = last;
    return true;
}

bool DEV_ATTRIBUTE_SYNTAX::match_continuation(const std::string& line) {
    size_t begin, end;
    if (!dev_2d_continuation_group(line, &begin, &end)) return false;
    m_value.append(line, begin, end - begin);
    return true;
}

std::string DEV_ATTRIBUTE_SYNTAX::key_error(ASTR_KIND kind) const {
    return std::string(m_format.key_error[kind]) + m_key;
}

std::string DEV_ATTRIBUTE_SYNTAX::value_error(ASTR_KIND kind) const {
    return m_format.value_error[kind] + m_value + m_format.value_error_end[kind];
}

// ---------------------------------------------------------------------------------------
// Value conversions.

bool dev_attribute_from_text(const ASTR_VALUE_NAMES&, int, const std::string& text, bool* value) {
    return dev_string_to_bool(text, *value);
}

bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text, int* value) {
    return dev_string_to_int_or_enum(names, key, text, value);
}

bool dev_attribute_from_text(const ASTR_VALUE_NAMES&, int, const std::string& text, std::string* value) {
    *value = text;
    return true;
}

bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             DEV_2D_INT_ARRAY* value) {
    return dev_string_to_2d_int(names, key, text, value);
}

bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             std::vector<int>* value) {
    // Tokens end at braces, commas and blanks; scanned in place, only names are copied.
    std::string token;
    value->clear();
    const char* p = text.c_str();
    for (;;) {
        while (*p == '{' || *p == '}' || *p == ',' || *p == ' ') ++p;
        if (!*p) return true;
        const char* begin = p;
        bool integer = true;
        for (; *p && *p != '{' && *p != '}' && *p != ',' && *p != ' '; ++p)
            integer = integer && ((*p >= '0' && *p <= '9') || *p == '-');
        if (integer) {
            value->push_back(std::atoi(begin));  // atoi stops at the delimiter
            continue;
        }
        token.assign(begin, p);
        const int position = static_cast<int>(value->size());
        if (!names.exists_enum_data_by_string(key, 0, position, token)) return false;
        value->push_back(names.get_enum_data_by_string(key, 0, position, token));
    }
}

bool dev_attribute_from_text(const ASTR_VALUE_NAMES&, int, const std::string& text,
                             std::vector<double>* value) {
    return dev_string_to_vec_double(text, *value);
}

bool dev_attribute_from_text(const ASTR_VALUE_NAMES&, int, const std::string& text,
                             std::vector<std::string>* value) {
    return dev_string_to_vec_string(text, *value);
}

namespace {

void append_name_or_number(const std::string& name, int value, std::string* out) {
    if (name.empty())
        *out += std::to_string(value);
    else
        *out += name;
}

// "{e0, e1, ...}" with each element written by `element(position)`.
template <typename ELEMENT>
void list_text(size_t count, ELEMENT element, std::string* out) {
    *out += '{';
    for (size_t i = 0; i < count; ++i) {
        if (i) *out += ", ";
        element(i);
    }
    *out += '}';
}

}  // namespace

void dev_attribute_to_text(const ASTR_VALUE_NAMES&, int, bool value, const char*, std::string* out) {
    *out += value ? "true" : "false";
}

void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, int value, const char*,
                           std::string* out) {
    append_name_or_number(names.get_enum_data_name(key, value), value, out);
}

void dev_attribute_to_text(const ASTR_VALUE_NAMES&, int, const std::string& value, const char*,
                           std::string* out) {
    *out += '"';
    *out += value;
    *out += '"';
}

void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const DEV_2D_INT_ARRAY& value,
                           const char* row_indent, std::string* out) {
    std::string text;
    dev_2d_int_to_string(names, key, value, row_indent, &text);
    *out += text;
}

void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const std::vector<int>& value,
                           const char*, std::string* out) {
    list_text(value.size(), [&](size_t i) {
        const int position = static_cast<int>(i);
        append_name_or_number(names.get_enum_data_name(key, 0, position, value[i]), value[i], out);
    }, out);
}

void dev_attribute_to_text(const ASTR_VALUE_NAMES&, int, const std::vector<double>& value, const char*,
                           std::string* out) {
    list_text(value.size(), [&](size_t i) {
        // "%g", except for the infinities that a number too large for a double becomes:
        // they are written as such a number, which reads back to them ("inf" would not).
        char buffer[64];
        if (std::isinf(value[i]))
            std::snprintf(buffer, sizeof buffer, "%s", value[i] > 0 ? "1e999" : "-1e999");
        else
            std::snprintf(buffer, sizeof buffer, "%g", value[i]);
        *out += buffer;
    }, out);
}

void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const std::vector<std::string>& value,
                           const char* row_indent, std::string* out) {
    list_text(value.size(), [&](size_t i) { dev_attribute_to_text(names, key, value[i], row_indent, out); },
              out);
}
