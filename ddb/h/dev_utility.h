// String tools under every line-oriented device-data parser: a regular-expression object
// that accepts Perl-style escapes, two tokenisers, number and boolean recognisers, list
// parsers for vector and 2D values, a line reader, and column-letter conversion.
#ifndef VELCORA_DEV_UTILITY_H
#define VELCORA_DEV_UTILITY_H

#include "dev_export.h"

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "host/vtl_regexp.h"

class ASTR_VALUE_NAMES;

// ---------------------------------------------------------------------------------------
// Regular expressions. `match` is anchored at `begin`; `search` is not. With `translate`
// the pattern's Perl escapes (\d, \w, \s, their negations, \( \)) are rewritten first.
class DEV_EXPORT DEV_REGEXP {
public:
    DEV_REGEXP();
    DEV_REGEXP(const char* pattern, bool translate = true);
    DEV_REGEXP(const std::string& pattern, bool translate = true);
    DEV_REGEXP(const DEV_REGEXP& other);
    DEV_REGEXP& operator=(const DEV_REGEXP& other);

    void pattern(const char* pattern, bool translate = true);
    void pattern(const std::string& pattern, bool translate = true);

    bool match(const std::string& s, size_t begin = 0, size_t end = std::string::npos);
    bool search(const std::string& s, size_t begin = 0, size_t end = std::string::npos);
    bool search(const std::string& s, std::string& matched, size_t begin = 0,
                size_t end = std::string::npos);

    void group(int i, std::string& out) const;
    size_t group_begin(size_t i) const;
    size_t group_end(size_t i) const;
    size_t group_size(size_t i) const;
    VTL_RANGE group_range(size_t i) const;
    size_t groups() const;
    int characters_matched() const { return m_characters_matched; }

    int replace(std::string& s, size_t begin, size_t length, const char* replacement, bool global);
    int replace(std::string& s, size_t begin, size_t length, const std::string& replacement,
                bool global);

    // The text handed to the engine (after translation).
    const std::string& engine_pattern() const { return m_regexp.pattern_text(); }

private:
    // Unanchored search; on success re-matches at the found start (groups, stored subject).
    VTL_RANGE search_range(const std::string& s, size_t begin, size_t end);
    // Appends `replacement` with "\0".."\9" replaced by the groups of the last match.
    void expand_replacement(const char* replacement, std::string& out) const;

    VTL_REGEXP m_regexp;
    std::string m_subject;
    int m_characters_matched = -1;
};

// ---------------------------------------------------------------------------------------
// Splits a copy of a text at any of a set of delimiter characters.
class DEV_EXPORT DEV_TOKENIZER {
public:
    DEV_TOKENIZER() = default;
    void init(const std::string& text, const std::string& delimiters, bool return_empty_tokens,
              bool include_delimiter);
    void init(const char* text, const char* delimiters, bool return_empty_tokens,
              bool include_delimiter);
    void init(const std::string& text, const char* delimiters, bool return_empty_tokens,
              bool include_delimiter);
    bool get_token(std::string& out);
    bool operator()(std::string& out) { return get_token(out); }
    void restart() { m_position = 0; }

private:
    void reset(bool return_empty_tokens, bool include_delimiter);

    std::string m_text;
    std::string m_delimiters;
    size_t m_position = 0;
    bool m_return_empty_tokens = false;
    bool m_include_delimiter = false;
};

// A re-entrant strtok over a caller-owned writable string (modified in place).
class DEV_EXPORT DEV_STRTOK {
public:
    DEV_STRTOK(const char* delimiters, bool merge_delimiters);
    void set_string(char* s) { m_cursor = s; }
    char* get_token();

private:
    bool is_delimiter(char c) const;

    char* m_cursor = nullptr;
    bool m_merge_delimiters;
    bool m_is_delimiter[256];
};

// ---------------------------------------------------------------------------------------
// Free functions.
DEV_EXPORT const char* dev_number_to_letters(int number);
DEV_EXPORT int dev_letters_to_number(const char* letters);
DEV_EXPORT bool dev_string_is_integer(const std::string& s);
DEV_EXPORT bool dev_string_to_int(const std::string& s, int& out);
DEV_EXPORT bool dev_string_is_float(const std::string& s);
DEV_EXPORT bool dev_string_to_bool(const std::string& s, bool& out);
DEV_EXPORT void dev_string_chomp(std::string& s, int c);
DEV_EXPORT bool dev_getline(std::string& line, FILE* file, int delimiter);
DEV_EXPORT bool dev_string_to_vec_double(const std::string& text, std::vector<double>& out);
DEV_EXPORT bool dev_string_to_vec_string(const std::string& text, std::vector<std::string>& out);
// A braced, comma- or blank-separated list of integers; false at the first non-integer.
DEV_EXPORT bool dev_string_to_vec_int(const std::string& text, std::vector<int>& out);

// ---------------------------------------------------------------------------------------
// Value converters of one record key kind, over that kind's symbolic value names.
typedef std::vector<std::vector<int>> DEV_2D_INT_ARRAY;

// Text to integer or symbolic value.
DEV_EXPORT bool dev_string_to_int_or_enum(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                               int* int_value);
// Text to 2D integer array ({{1, 2}, {3}}).
DEV_EXPORT bool dev_string_to_2d_int(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                          DEV_2D_INT_ARRAY* int_2d_result);
// 2D integer array to text; each row on `space_str` then "{ ", elements and "}".
DEV_EXPORT void dev_2d_int_to_string(const ASTR_VALUE_NAMES& names, int key, const DEV_2D_INT_ARRAY& array,
                          const char* space_str, std::string* str_result);

#endif
