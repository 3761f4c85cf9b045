// String tools of the device database: regular expressions with Perl-style escapes,
// tokenisers, number and boolean recognisers, list and 2D value parsers, a line reader
// and column-letter conversion.
//
#include "dev_utility.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "host/astr_value_names.h"
#include "host/msg.h"

namespace {

const size_t npos = std::string::npos;

// Blank, tab, newline, carriage return and form feed: the characters of "\s".
const char SPACE_CHARS[] = " \t\n\r\f";

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_blank(char c) { return c == ' ' || c == '\t'; }
bool is_exponent_letter(char c) { return c == 'D' || c == 'd' || c == 'E' || c == 'e'; }

// The value atoi gives for a token of digits and minus signs in [p, end): an optional
// minus, then digits up to the first other character; strtol's saturation on overflow,
// then the conversion to int, exactly as atoi does.
// The value atof gives for a token that passed the float recogniser: from_chars on the
// same characters (leading tabs and a plus sign skipped, as strtod does), falling back to
// atof itself where from_chars refuses (out of range), so the result is always atof's.
double atof_token(const char* p, const char* end) {
    const char* q = p;
    while (q != end && *q == '\t') ++q;
    if (q != end && *q == '+') ++q;
    double value = 0;
    std::from_chars_result r = std::from_chars(q, end, value);
    if (r.ec == std::errc()) return value;
    return std::atof(p);  // stops at the delimiter that ends the token
}

int atoi_token(const char* p, const char* end) {
    bool negative = false;
    if (p != end && *p == '-') {
        negative = true;
        ++p;
    }
    const unsigned long long limit = negative ? 9223372036854775808ULL : 9223372036854775807ULL;
    unsigned long long v = 0;
    bool overflow = false;
    for (; p != end && is_digit(*p); ++p) {
        const unsigned d = static_cast<unsigned>(*p - '0');
        if (overflow) continue;
        if (v > (limit - d) / 10) overflow = true; else v = v * 10 + d;
    }
    long long r;
    if (overflow) r = negative ? LLONG_MIN : LLONG_MAX;
    else if (negative) r = v == limit ? LLONG_MIN : -static_cast<long long>(v);
    else r = static_cast<long long>(v);
    return static_cast<int>(r);
}

// Rewrites the Perl escapes of `p` for the engine. Inside a bracket expression the
// classes lose their brackets and the negated classes are dropped; "\(" and "\)" lose
// their backslash; "\\" and every other escape pass unchanged.
std::string translate_pattern(const char* p) {
    std::string work;
    bool in_bracket = false;
    for (; *p; ++p) {
        char c = *p;
        if (c != '\\') {
            if (c == '[')
                in_bracket = true;
            else if (c == ']')
                in_bracket = false;
            work += c;
            continue;
        }
        char e = p[1];
        if (e == '\0') {  // a trailing backslash is left to the engine
            work += c;
            break;
        }
        ++p;
        switch (e) {
        case 'd': work += in_bracket ? "0-9" : "[0-9]"; break;
        case 'D': if (!in_bracket) work += "[^0-9]"; break;
        case 'w': work += in_bracket ? "a-zA-Z0-9_" : "[a-zA-Z0-9_]"; break;
        case 'W': if (!in_bracket) work += "[^a-zA-Z0-9_]"; break;
        case 's':
            if (in_bracket) {
                work += SPACE_CHARS;
            } else {
                work += '[';
                work += SPACE_CHARS;
                work += ']';
            }
            break;
        case 'S':
            if (!in_bracket) {
                work += "[^";
                work += SPACE_CHARS;
                work += ']';
            }
            break;
        case '(':
        case ')': work += e; break;
        default:  // "\\" and any other escape stay as written
            work += '\\';
            work += e;
            break;
        }
    }
    return work;
}

}  // namespace

// =======================================================================================
// DEV_REGEXP

DEV_REGEXP::DEV_REGEXP() = default;

DEV_REGEXP::DEV_REGEXP(const char* p, bool translate) { pattern(p, translate); }

DEV_REGEXP::DEV_REGEXP(const std::string& p, bool translate) { pattern(p, translate); }

DEV_REGEXP::DEV_REGEXP(const DEV_REGEXP& other)
    : m_regexp(other.m_regexp),
      m_subject(other.m_subject),
      m_characters_matched(other.m_characters_matched) {}

DEV_REGEXP& DEV_REGEXP::operator=(const DEV_REGEXP& other) {
    if (this != &other) {
        m_regexp = other.m_regexp;
        m_subject = other.m_subject;
        m_characters_matched = other.m_characters_matched;
    }
    return *this;
}

void DEV_REGEXP::pattern(const char* p, bool translate) {
    if (!p) p = "";
    if (translate)
        m_regexp.pattern(translate_pattern(p), true);
    else
        m_regexp.pattern(p, true);
    m_characters_matched = -1;
}

void DEV_REGEXP::pattern(const std::string& p, bool translate) {
    if (translate)
        pattern(p.c_str(), true);
    else {
        m_regexp.pattern(p, true);
        m_characters_matched = -1;
    }
}

bool DEV_REGEXP::match(const std::string& s, size_t begin, size_t end) {
    // The stored copy keeps the group texts valid after the caller's string changes. Only
    // a successful match has groups to cut, so the copy is taken then: parsers try several
    // patterns per line and most attempts fail. assign reuses the member's capacity.
    m_characters_matched = m_regexp.match(s.data(), begin, end, s.size());
    if (m_characters_matched == -1) return false;
    m_subject.assign(s);
    return true;
}

VTL_RANGE DEV_REGEXP::search_range(const std::string& s, size_t begin, size_t end) {
    VTL_RANGE r = m_regexp.search(s, begin, end);
    if (r.empty()) {
        m_characters_matched = -1;
        return VTL_RANGE();
    }
    // The anchored re-match at the found start stores `s` and fixes the group positions.
    DEV_ASSERT_TEXT(this->match(s, r.begin()), "this->match(s, r.begin())");
    return r;
}

bool DEV_REGEXP::search(const std::string& s, size_t begin, size_t end) {
    return !search_range(s, begin, end).empty();
}

bool DEV_REGEXP::search(const std::string& s, std::string& matched, size_t begin, size_t end) {
    VTL_RANGE r = search_range(s, begin, end);
    if (r.empty()) return false;
    matched.assign(s, r.begin(), r.size());
    return true;
}

void DEV_REGEXP::group(int i, std::string& out) const {
    out.clear();
    if (i < 0) return;
    VTL_RANGE r = m_regexp.group(static_cast<size_t>(i));
    if (!r.empty() && r.end() <= m_subject.size()) out.assign(m_subject, r.begin(), r.size());
}

size_t DEV_REGEXP::group_begin(size_t i) const {
    VTL_RANGE r = m_regexp.group(i);
    return r.empty() ? npos : r.begin();
}

size_t DEV_REGEXP::group_end(size_t i) const {
    VTL_RANGE r = m_regexp.group(i);
    return r.empty() ? npos : r.end();
}

size_t DEV_REGEXP::group_size(size_t i) const { return m_regexp.group(i).size(); }

VTL_RANGE DEV_REGEXP::group_range(size_t i) const { return m_regexp.group(i); }

size_t DEV_REGEXP::groups() const { return m_regexp.groups(); }

void DEV_REGEXP::expand_replacement(const char* replacement, std::string& out) const {
    std::string group_text;
    for (const char* p = replacement; *p; ++p) {
        if (*p != '\\' || p[1] == '\0') {
            out += *p;
            continue;
        }
        char e = *++p;
        if (is_digit(e)) {
            group(e - '0', group_text);
            out += group_text;
        } else {  // "\\" stays doubled, other escapes are kept as written
            out += '\\';
            out += e;
        }
    }
}

int DEV_REGEXP::replace(std::string& s, size_t begin, size_t length, const char* replacement,
                        bool global) {
    std::string result;
    if (!replacement) replacement = "";
    if (begin > s.size()) begin = s.size();
    size_t end = (length == npos || length > s.size() - begin) ? s.size() : begin + length;
    result.assign(s, 0, begin);
    match(s, begin);
    int count = 0;
    size_t scan = begin;
    for (VTL_RANGE r = search_range(s, scan, end); !r.empty() && scan < end && (count == 0 || global);
         r = search_range(s, scan, end)) {
        result.append(s, scan, r.begin() - scan);
        expand_replacement(replacement, result);
        ++count;
        scan = r.end();
        match(s, scan);
    }
    result.append(s, scan, npos);
    s.assign(result);
    return count;
}

int DEV_REGEXP::replace(std::string& s, size_t begin, size_t length,
                        const std::string& replacement, bool global) {
    return replace(s, begin, length, replacement.c_str(), global);
}

// =======================================================================================
// DEV_TOKENIZER

void DEV_TOKENIZER::reset(bool return_empty_tokens, bool include_delimiter) {
    m_return_empty_tokens = return_empty_tokens;
    m_include_delimiter = include_delimiter;
    m_position = 0;
}

void DEV_TOKENIZER::init(const std::string& text, const std::string& delimiters,
                         bool return_empty_tokens, bool include_delimiter) {
    m_text.assign(text);
    m_delimiters.assign(delimiters);
    reset(return_empty_tokens, include_delimiter);
}

void DEV_TOKENIZER::init(const char* text, const char* delimiters, bool return_empty_tokens,
                         bool include_delimiter) {
    m_text.assign(text ? text : "");
    m_delimiters.assign(delimiters ? delimiters : "");
    reset(return_empty_tokens, include_delimiter);
}

void DEV_TOKENIZER::init(const std::string& text, const char* delimiters,
                         bool return_empty_tokens, bool include_delimiter) {
    m_text.assign(text);
    m_delimiters.assign(delimiters ? delimiters : "");
    reset(return_empty_tokens, include_delimiter);
}

bool DEV_TOKENIZER::get_token(std::string& out) {
    out.clear();
    size_t pos = m_position;
    const size_t n = m_text.size();
    if (!m_return_empty_tokens) pos = m_text.find_first_not_of(m_delimiters, pos);
    if (pos == npos || pos >= n) return false;
    size_t end = m_text.find_first_of(m_delimiters, pos);
    if (end == npos) end = n;
    if (m_include_delimiter)
        out.assign(m_text, pos, end - pos + 1);
    else if (end > pos)
        out.assign(m_text, pos, end - pos);
    m_position = end >= n ? n : end + 1;
    return true;
}

// =======================================================================================
// DEV_STRTOK
//
// The delimiter table is indexed by the signed character code, so only 7-bit characters
// can be delimiters: characters with the high bit set are never entered and never match.

namespace {
inline int strtok_code(char c) { return static_cast<signed char>(c); }
}  // namespace

DEV_STRTOK::DEV_STRTOK(const char* delimiters, bool merge_delimiters)
    : m_merge_delimiters(merge_delimiters) {
    std::memset(m_is_delimiter, 0, sizeof m_is_delimiter);
    m_is_delimiter[0] = true;
    for (const char* p = delimiters ? delimiters : ""; *p; ++p) {
        int code = strtok_code(*p);
        if (code >= 0) m_is_delimiter[code] = true;
    }
}

bool DEV_STRTOK::is_delimiter(char c) const {
    int code = strtok_code(c);
    return code >= 0 && m_is_delimiter[code];
}

char* DEV_STRTOK::get_token() {
    if (!m_cursor) return nullptr;
    char* token = m_cursor;
    while (!is_delimiter(*m_cursor)) ++m_cursor;
    if (m_merge_delimiters) {
        while (*m_cursor != '\0' && is_delimiter(*m_cursor)) *m_cursor++ = '\0';
    } else if (*m_cursor != '\0') {
        *m_cursor++ = '\0';
    }
    if (*token != '\0') return token;
    return *m_cursor != '\0' ? token : nullptr;
}

// =======================================================================================
// Free functions

const char* dev_number_to_letters(int number) {
    static const char* const letters[78] = {
        "A",  "B",  "C",  "D",  "E",  "F",  "G",  "H",  "I",  "J",  "K",  "L",  "M",
        "N",  "O",  "P",  "Q",  "R",  "S",  "T",  "U",  "V",  "W",  "X",  "Y",  "Z",
        "AA", "AB", "AC", "AD", "AE", "AF", "AG", "AH", "AI", "AJ", "AK", "AL", "AM",
        "AN", "AO", "AP", "AQ", "AR", "AS", "AT", "AU", "AV", "AW", "AX", "AY", "AZ",
        "BA", "BB", "BC", "BD", "BE", "BF", "BG", "BH", "BI", "BJ", "BK", "BL", "BM",
        "BN", "BO", "BP", "BQ", "BR", "BS", "BT", "BU", "BV", "BW", "BX", "BY", "BZ"};
    DEV_ASSERT_TEXT(number >=0 && number < 78, "number >=0 && number < 78");
    // Out of range: the report is made; the table is then indexed modulo its size.
    int index = number % 78;
    if (index < 0) index += 78;
    return letters[index];
}

int dev_letters_to_number(const char* letters) {
    unsigned value = 0;  // wraps instead of overflowing on absurdly long input
    for (const char* p = letters ? letters : ""; *p; ++p) {
        int c = static_cast<unsigned char>(*p);
        if (c >= 'a' && c <= 'z') c -= 'a' - 'A';
        value = value * 26u + static_cast<unsigned>(c - 64);
    }
    return static_cast<int>(value);
}

bool dev_string_is_integer(const std::string& s) {
    for (char c : s)
        if (!is_digit(c) && c != '-') return false;
    return true;
}

bool dev_string_to_int(const std::string& s, int& out) {
    if (!dev_string_is_integer(s)) return false;
    out = std::atoi(s.c_str());
    return true;
}

namespace {
// The float state machine over [p, end).
bool is_float_range(const char* p, const char* end) {
    enum { LEADING, INTEGER, FRACTION, EXPONENT_START, EXPONENT, TRAILING };
    int state = LEADING;
    bool digit = false;
    for (; p != end; ++p) {
        const char c = *p;
        switch (state) {
        case LEADING:
            if (is_blank(c)) break;
            if (c == '+' || c == '-') { state = INTEGER; digit = false; break; }
            if (is_digit(c)) { state = INTEGER; digit = true; break; }
            return false;
        case INTEGER:
            if (is_digit(c)) { digit = true; break; }
            if (c == '.') { state = FRACTION; digit = false; break; }
            if (is_exponent_letter(c)) { state = EXPONENT_START; digit = false; break; }
            if (is_blank(c)) { state = TRAILING; break; }
            return false;
        case FRACTION:
            if (is_digit(c)) { digit = true; break; }
            if (is_exponent_letter(c)) { state = EXPONENT_START; digit = false; break; }
            if (is_blank(c)) { state = TRAILING; break; }
            return false;
        case EXPONENT_START:
            if (is_digit(c)) { state = EXPONENT; digit = true; break; }
            if (c == '+' || c == '-') { state = EXPONENT; digit = false; break; }
            return false;
        case EXPONENT:
            if (is_digit(c)) { digit = true; break; }
            if (is_blank(c)) { state = TRAILING; break; }
            return false;
        default:  // TRAILING
            if (is_blank(c)) break;
            return false;
        }
    }
    return digit;
}
}  // namespace

bool dev_string_is_float(const std::string& s) { return is_float_range(s.data(), s.data() + s.size()); }

bool dev_string_to_bool(const std::string& s, bool& out) {
    if (s == "true") {
        out = true;
        return true;
    }
    if (s == "false") {
        out = false;
        return true;
    }
    return false;
}

void dev_string_chomp(std::string& s, int c) {
    size_t keep = s.size();
    while (keep > 0 && s[keep - 1] == static_cast<char>(c)) --keep;
    s.resize(keep);
}

bool dev_getline(std::string& line, FILE* file, int delimiter) {
    line.clear();
    if (!file) return false;
    bool any = false;
    int c;
    while ((c = std::fgetc(file)) != EOF) {
        any = true;
        line += static_cast<char>(c);
        if (c == delimiter) break;
    }
    return any;
}

namespace {
// The delimiters of vector values: open brace, close brace, comma, blank.
inline bool is_list_delimiter(char c) { return c == '{' || c == '}' || c == ',' || c == ' '; }

// The next token of a vector value, split like a tokenizer over those delimiters without
// empty tokens, scanned in place: [*token, *p) on success.
inline bool next_list_token(const char*& p, const char* end, const char** token) {
    while (p != end && is_list_delimiter(*p)) ++p;
    if (p == end) return false;
    *token = p;
    while (p != end && !is_list_delimiter(*p)) ++p;
    return true;
}
}  // namespace

// Splits like a tokenizer over "{}, " without empty tokens, scanning the text in place.
bool dev_string_to_vec_double(const std::string& text, std::vector<double>& out) {
    out.clear();
    const char* p = text.c_str();
    const char* const end = p + text.size();
    const char* token;
    while (next_list_token(p, end, &token)) {
        if (!is_float_range(token, p)) {
            out.push_back(-1.0);
            return false;
        }
        out.push_back(atof_token(token, p));
    }
    return true;
}

bool dev_string_to_vec_int(const std::string& text, std::vector<int>& out) {
    out.clear();
    const char* p = text.c_str();
    const char* const end = p + text.size();
    const char* token;
    while (next_list_token(p, end, &token)) {
        for (const char* c = token; c != p; ++c)
            if (!is_digit(*c) && *c != '-') return false;
        out.push_back(atoi_token(token, p));
    }
    return true;
}

// Tokens as a tokenizer over the list delimiters gives them with empty tokens and delimiters
// kept: each token runs up to and including the delimiter that ends it. Tokens are
// contiguous, so a quoted element gathered over several tokens is one range of the text.
bool dev_string_to_vec_string(const std::string& text, std::vector<std::string>& out) {
    out.clear();
    const char* const base = text.data();
    const size_t n = text.size();
    size_t pos = 0;
    auto next_token = [&](size_t* b, size_t* e) {
        if (pos >= n) return false;
        *b = pos;
        size_t d = pos;
        while (d < n && !is_list_delimiter(base[d])) ++d;
        *e = d < n ? d + 1 : n;
        pos = *e;
        return true;
    };
    auto has_quote = [&](size_t b, size_t e) { return std::memchr(base + b, '"', e - b) != nullptr; };
    size_t b, e;
    while (next_token(&b, &e)) {
        if (base[b] != '"') {
            // An unquoted element loses its last character (the delimiter that ended it).
            if (e - 1 > b) out.emplace_back(base + b, e - 1 - b);
            continue;
        }
        size_t quoted_end = e;
        if (!has_quote(b + 1, e)) {
            bool closed = false;
            size_t tb, te;
            while (!closed && next_token(&tb, &te)) {
                quoted_end = te;
                closed = has_quote(tb, te);
            }
            if (!closed) return false;
        }
        // The gathered text loses its last character; the element lies between its first
        // and last characters (the quotes).
        const size_t length = quoted_end - 1 - b;
        if (length >= 2)
            out.emplace_back(base + b + 1, length - 2);
        else
            out.emplace_back();
    }
    return true;
}

// =======================================================================================
// Value converters of one record key kind

bool dev_string_to_int_or_enum(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                               int* int_value) {
    if (!DEV_ASSERT_TEXT(int_value != NULL, "int_value != NULL")) return false;
    if (dev_string_is_integer(text)) {
        *int_value = std::atoi(text.c_str());
        return true;
    }
    if (!names.exists_enum_data_by_string(key, text)) return false;
    *int_value = names.get_enum_data_by_string(key, text);
    return true;
}

bool dev_string_to_2d_int(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                          DEV_2D_INT_ARRAY* int_2d_result) {
    if (!DEV_ASSERT_TEXT(int_2d_result != NULL, "int_2d_result != NULL")) return false;
    std::string token;
    std::vector<int> gathered;
    DEV_2D_INT_ARRAY& result = *int_2d_result;
    size_t rows = 0;  // rows filled so far; existing row vectors are reused
    // The first brace is the array's outer brace; rows are the braces after it.
    size_t scan = text.find('{');
    scan = scan == npos ? 0 : scan + 1;
    bool ok = true;
    while (scan < text.size()) {
        size_t open = text.find('{', scan);
        if (open == npos) break;
        size_t close = text.find('}', open + 1);
        const char* p = text.data() + open + 1;
        const char* const row_end = text.data() + (close == npos ? text.size() : close);
        if (rows == result.size()) {
            // One allocation per row: reserve for as many elements as the row has separators.
            if (rows == 0) result.reserve(std::count(text.begin() + open, text.end(), '{'));
            result.emplace_back();
        }
        std::vector<int>& row = result[rows++];
        // The row is gathered in a buffer and copied once, so that it holds exactly its
        // elements. After a bad element later rows are collected but not parsed. Tokens are
        // split at commas and blanks, empty ones skipped.
        gathered.clear();
        while (ok) {
            while (p != row_end && (*p == ',' || *p == ' ')) ++p;
            if (p == row_end) break;
            const char* t = p;
            bool integer = true;
            for (; p != row_end && *p != ',' && *p != ' '; ++p) integer = integer && (is_digit(*p) || *p == '-');
            if (integer) {
                gathered.push_back(atoi_token(t, p));
                continue;
            }
            token.assign(t, p);
            const int row_index = static_cast<int>(rows - 1);
            const int column = static_cast<int>(gathered.size());
            if (names.exists_enum_data_by_string(key, row_index, column, token)) {
                gathered.push_back(names.get_enum_data_by_string(key, row_index, column, token));
            } else {
                gathered.push_back(-1);
                ok = false;
            }
        }
        row.assign(gathered.begin(), gathered.end());
        if (close == npos) break;
        scan = close + 1;
    }
    result.resize(rows);
    return ok;
}

void dev_2d_int_to_string(const ASTR_VALUE_NAMES& names, int key, const DEV_2D_INT_ARRAY& array,
                          const char* space_str, std::string* str_result) {
    if (!DEV_ASSERT_TEXT(space_str != NULL && str_result != NULL, "space_str != NULL && str_result != NULL")) return;
    std::string& out = *str_result;
    out = "{";
    for (size_t r = 0; r < array.size(); ++r) {
        out += space_str;
        out += "{ ";
        const std::vector<int>& row = array[r];
        for (size_t c = 0; c < row.size(); ++c) {
            std::string name =
                names.get_enum_data_name(key, static_cast<int>(r), static_cast<int>(c), row[c]);
            out += name.empty() ? std::to_string(row[c]) : name;
            out += ' ';
        }
        out += "}";
    }
    out += "}";
}
