// Text syntax of attribute lines (KEY = VALUE) in the line-oriented data files: the
// pattern of each kind, the wording of key and value errors, and the value converters
// between text and stored values. Each format (HDR, PAD, PKG, PART_INFO, RSI) is a
// DEV_ATTRIBUTE_FORMAT; the readers compile one DEV_ATTRIBUTE_SYNTAX per parse from it.
#ifndef VELCORA_DEV_ATTRIBUTE_SYNTAX_H
#define VELCORA_DEV_ATTRIBUTE_SYNTAX_H


#include <string>
#include <vector>

#include "dev_utility.h"
#include "host/astr_key_table.h"
#include "host/vtl_regexp.h"

// A format's attribute lines: per kind the pattern (group 1 the key, group 2 the value;
// null for a kind the format does not read), the error texts that precede the offending
// key or value, and the text that follows a value in a value error.
struct DEV_ATTRIBUTE_FORMAT {
    const char* pattern[ASTR_KIND_COUNT];
    const char* key_error[ASTR_KIND_COUNT];
    const char* value_error[ASTR_KIND_COUNT];
    const char* value_error_end[ASTR_KIND_COUNT];
    // Whether a BOOL value is checked before its key.
    bool bool_value_first;

    // The canonical lines, as the HDR reader reads them.
    static const DEV_ATTRIBUTE_FORMAT& hdr();
    // BOOL, STRING and INT without the leading anchor; INT values quoted in errors;
    // VEC_STRING keys worded as strings.
    static const DEV_ATTRIBUTE_FORMAT& pad();
    // BOOL without trailing blanks and worded "bool"; vector keys worded as strings.
    static const DEV_ATTRIBUTE_FORMAT& pkg();
    static const DEV_ATTRIBUTE_FORMAT& part_info();
    static const DEV_ATTRIBUTE_FORMAT& rsi();
};

// The line that continues a 2D value whose text was a lone "{".
extern const char* const DEV_2D_CONTINUATION_PATTERN;
// The match of DEV_2D_CONTINUATION_PATTERN, found without the engine (the lines of a large
// table are long, and the pattern's greedy ".+" walks each one twice): false when the line
// does not match, else group 1 is [*begin, *end).
bool dev_2d_continuation_group(const std::string& line, size_t* begin, size_t* end);

// The compiled patterns of one format and the key and value of the last matched line.
// Not shared between parses running at the same time (it holds the match state).
class DEV_ATTRIBUTE_SYNTAX {
public:
    explicit DEV_ATTRIBUTE_SYNTAX(const DEV_ATTRIBUTE_FORMAT& format);
    DEV_ATTRIBUTE_SYNTAX(const DEV_ATTRIBUTE_SYNTAX&) = delete;
    DEV_ATTRIBUTE_SYNTAX& operator=(const DEV_ATTRIBUTE_SYNTAX&) = delete;

    const DEV_ATTRIBUTE_FORMAT& format() const { return m_format; }

    // Anchored match of the kind's pattern; on success key() and value() hold the groups.
    bool match(ASTR_KIND kind, const std::string& line);
    const std::string& key() const { return m_key; }
    const std::string& value() const { return m_value; }

    // When value() is exactly "{", appends the captured text of each following line that
    // matches the continuation pattern. `next_line(std::string&)` reads the next line
    // (false at the end of the input). Returns true when it read a line that does not
    // continue the value: that line is left in `*pending` for the caller to handle.
    template <typename NEXT_LINE>
    bool gather_2d_value(NEXT_LINE&& next_line, std::string* pending) {
        if (m_value != "{") return false;
        std::string line;
        while (next_line(line)) {
            if (!match_continuation(line)) {
                pending->swap(line);
                return true;
            }
        }
        return false;
    }
    // Appends group 1 of a continuation line to value() (dev_2d_continuation_group).
    bool match_continuation(const std::string& line);

    // "Invalid int key: " followed by key(), in the format's wording of the kind.
    std::string key_error(ASTR_KIND kind) const;
    // The value error of the kind around value().
    std::string value_error(ASTR_KIND kind) const;

private:
    bool match_group(VTL_REGEXP& regexp, const std::string& line, size_t group, std::string& out);

    const DEV_ATTRIBUTE_FORMAT& m_format;
    VTL_REGEXP m_patterns[ASTR_KIND_COUNT];
    bool m_compiled[ASTR_KIND_COUNT];
    // The key prefix a line must show after its leading blanks for the kind's pattern to
    // match, when the pattern reads "\s*(" and that prefix first (null: always ask the engine).
    const char* m_required_prefix[ASTR_KIND_COUNT];
    size_t m_required_prefix_length[ASTR_KIND_COUNT];
    std::string m_key;
    std::string m_value;
};

// Value conversions of one key, one overload per stored type (`names` is the key kind's
// table). from_text returns false for a text that is not a value of the kind: BOOL
// "true" or "false"; INT and ENUM an integer or a symbolic name of the key; STRING as it
// stands; 2D_INT {{1, 2}, {3}} with names per row and column; VEC_INT integers or names
// of the key at (row 0, position), split at braces, commas and blanks; VEC_DOUBLE and
// VEC_STRING the list parsers.
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text, bool* value);
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text, int* value);
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             std::string* value);
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             DEV_2D_INT_ARRAY* value);
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             std::vector<int>* value);
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             std::vector<double>* value);
bool dev_attribute_from_text(const ASTR_VALUE_NAMES& names, int key, const std::string& text,
                             std::vector<std::string>* value);

// Value texts as dumps write them, appended to `out`: "true"/"false"; INT and ENUM the
// symbolic name where the key has one, else the decimal number; strings in double quotes;
// 2D arrays with each row on `row_indent` ("\n\t" at top level, "\n\t\t" inside a block);
// vectors as "{e0, e1}" (elements named as above, doubles "%g", strings quoted).
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, bool value, const char* row_indent,
                           std::string* out);
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, int value, const char* row_indent,
                           std::string* out);
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const std::string& value,
                           const char* row_indent, std::string* out);
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const DEV_2D_INT_ARRAY& value,
                           const char* row_indent, std::string* out);
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const std::vector<int>& value,
                           const char* row_indent, std::string* out);
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const std::vector<double>& value,
                           const char* row_indent, std::string* out);
void dev_attribute_to_text(const ASTR_VALUE_NAMES& names, int key, const std::vector<std::string>& value,
                           const char* row_indent, std::string* out);

#endif
