// Reading and writing attribute lines of any record declared through DEV_ATTRIBUTE_TABLE.
//
// Handling one line (the same in every reader, with the format's own wording):
//   1. match the line against the pattern of a kind the record supports;
//   2. look the key up in the key table of the record and kind;
//   3. convert the value;
//   4. store it with set_<k>_data, which sets the validity bit.
// dev_attribute_read does all four; a reader that treats some keys specially matches with
// DEV_ATTRIBUTE_SYNTAX::match, parses with dev_attribute_parse and stores itself.
//
// Dumps write a record's kinds in the order BOOL, INT, ENUM, STRING, 2D_INT, VEC_INT,
// VEC_DOUBLE, VEC_STRING, each in increasing key order, valid keys only, one
// "KEY = value" line each after the indentation ("" at top level, "\t" in a block);
// 2D rows stand on lines of their own, indented one tab deeper, which the 2D
// continuation rule of the readers reads back.
#ifndef VELCORA_DEV_ATTRIBUTE_IO_H
#define VELCORA_DEV_ATTRIBUTE_IO_H

#include <string>
#include <utility>

#include "dev_attribute_syntax.h"
#include "dev_attribute_table.h"

enum DEV_ATTRIBUTE_STATUS {
    DEV_ATTRIBUTE_NO_MATCH,  // the line is not an attribute line of that kind
    DEV_ATTRIBUTE_STORED,    // the value was stored
    DEV_ATTRIBUTE_ERROR      // bad key or value: the message says which; nothing stored
};

template <typename KEY>
using DEV_ATTRIBUTE_VALUE = typename DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::value_type;

// Looks up the key of the last matched line in KEY's table and converts its value. On
// failure `*message` is the format's error text (a BOOL value is checked first where the
// format says so) and false is returned.
template <typename KEY>
bool dev_attribute_parse(const DEV_ATTRIBUTE_SYNTAX& syntax, KEY* key, DEV_ATTRIBUTE_VALUE<KEY>* value,
                         std::string* message) {
    constexpr ASTR_KIND kind = ASTR_KEY_TRAITS<KEY>::kind;
    const ASTR_KEY_TABLE& table = ASTR_KEY_TRAITS<KEY>::table();
    const int k = table.get_by_string(syntax.key());
    const bool known = k < table.count();
    const bool value_first = kind == ASTR_KIND_BOOL && syntax.format().bool_value_first;
    if (value_first && !dev_attribute_from_text(table, k, syntax.value(), value)) {
        *message = syntax.value_error(kind);
        return false;
    }
    if (!known) {
        *message = syntax.key_error(kind);
        return false;
    }
    if (!value_first && !dev_attribute_from_text(table, k, syntax.value(), value)) {
        *message = syntax.value_error(kind);
        return false;
    }
    *key = static_cast<KEY>(k);
    return true;
}

// Parses the last matched line and stores it in the record.
template <typename KEY, typename RECORD>
DEV_ATTRIBUTE_STATUS dev_attribute_apply(const DEV_ATTRIBUTE_SYNTAX& syntax, RECORD& record,
                                         std::string* message, KEY* key_out = nullptr) {
    KEY key;
    DEV_ATTRIBUTE_VALUE<KEY> value{};
    if (!dev_attribute_parse(syntax, &key, &value, message)) return DEV_ATTRIBUTE_ERROR;
    DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::set(record, key, std::move(value));
    if (key_out) *key_out = key;
    return DEV_ATTRIBUTE_STORED;
}

// Reads one line of KEY's kind into the record (a one-line value).
template <typename KEY, typename RECORD>
DEV_ATTRIBUTE_STATUS dev_attribute_read(DEV_ATTRIBUTE_SYNTAX& syntax, const std::string& line,
                                        RECORD& record, std::string* message, KEY* key_out = nullptr) {
    if (!syntax.match(ASTR_KEY_TRAITS<KEY>::kind, line)) return DEV_ATTRIBUTE_NO_MATCH;
    return dev_attribute_apply<KEY>(syntax, record, message, key_out);
}

namespace dev_attribute_detail {

template <typename KEY, typename RECORD, typename NEXT_LINE>
DEV_ATTRIBUTE_STATUS read_kind(DEV_ATTRIBUTE_SYNTAX& syntax, const std::string& line, RECORD& record,
                               std::string* message, NEXT_LINE& next_line, std::string* pending,
                               bool* has_pending) {
    if (!syntax.match(ASTR_KEY_TRAITS<KEY>::kind, line)) return DEV_ATTRIBUTE_NO_MATCH;
    if (ASTR_KEY_TRAITS<KEY>::kind == ASTR_KIND_2D_INT) *has_pending = syntax.gather_2d_value(next_line, pending);
    return dev_attribute_apply<KEY>(syntax, record, message);
}

// The keys are listed in kind order (DEV_ATTRIBUTE_TABLE asserts it): the first kind
// whose pattern matches takes the line.
template <typename RECORD, typename NEXT_LINE, typename... KEYS>
DEV_ATTRIBUTE_STATUS read_any(DEV_ATTRIBUTE_SYNTAX& syntax, const std::string& line, RECORD& record,
                              std::string* message, NEXT_LINE& next_line, std::string* pending,
                              bool* has_pending, DEV_ATTRIBUTE_KEY_LIST<KEYS...>) {
    DEV_ATTRIBUTE_STATUS status = DEV_ATTRIBUTE_NO_MATCH;
    (void)(((status = read_kind<KEYS>(syntax, line, record, message, next_line, pending, has_pending)) !=
            DEV_ATTRIBUTE_NO_MATCH) ||
           ...);
    return status;
}

template <typename RECORD, typename SKIP, typename... KEYS>
void write_all(const RECORD& record, const char* indent, std::string* out, SKIP& skip, DEV_ATTRIBUTE_KEY_LIST<KEYS...>);

// Writes every key.
struct WRITE_ALL_KEYS {
    bool operator()(ASTR_KIND, int) const { return false; }
};

}  // namespace dev_attribute_detail

// Reads one line of any kind of the record, trying the kinds in the order BOOL, INT,
// ENUM, STRING, 2D_INT, VEC_INT, VEC_DOUBLE, VEC_STRING. A 2D value that is a lone "{"
// gathers its continuation lines through `next_line(std::string&)`; the first line after
// them is left in `*pending` with `*has_pending` set.
template <typename RECORD, typename NEXT_LINE>
DEV_ATTRIBUTE_STATUS dev_attribute_read_any(DEV_ATTRIBUTE_SYNTAX& syntax, const std::string& line,
                                            RECORD& record, std::string* message, NEXT_LINE&& next_line,
                                            std::string* pending, bool* has_pending) {
    *has_pending = false;
    return dev_attribute_detail::read_any(syntax, line, record, message, next_line, pending, has_pending,
                                          typename RECORD::attribute_keys());
}

// Matches a line of KEY's kind read from a text file. A 2D value that is a lone "{" gathers
// its continuation lines from the file, and the first line after them is put back for the
// reader to handle next. (FILE: DEV_TEXT_FILE or any type with next_line and put_back.)
template <typename KEY, typename FILE>
bool dev_attribute_match_line(DEV_ATTRIBUTE_SYNTAX& syntax, FILE& file, const std::string& line) {
    if (!syntax.match(ASTR_KEY_TRAITS<KEY>::kind, line)) return false;
    if (ASTR_KEY_TRAITS<KEY>::kind == ASTR_KIND_2D_INT) {
        std::string pending;
        if (syntax.gather_2d_value([&file](std::string& next) { return file.next_line(next); }, &pending))
            file.put_back(std::move(pending));
    }
    return true;
}

// Appends the valid keys of KEY's kind, in key order, as "<indent>KEY = value" lines, but
// those for which skip(kind, key) holds.
template <typename KEY, typename RECORD, typename SKIP = dev_attribute_detail::WRITE_ALL_KEYS>
void dev_attribute_write_kind(const RECORD& record, const char* indent, std::string* out, SKIP&& skip = SKIP()) {
    typedef DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind> ACCESS;
    const ASTR_KEY_TABLE& table = ASTR_KEY_TRAITS<KEY>::table();
    const std::string row_indent = std::string("\n") + indent + "\t";
    for (int k = 0; k < ASTR_KEY_TRAITS<KEY>::MAX; ++k) {
        const KEY key = static_cast<KEY>(k);
        if (!ACCESS::is_valid(record, key) || skip(ASTR_KEY_TRAITS<KEY>::kind, k)) continue;
        *out += indent;
        *out += table.debug_string(k);
        *out += " = ";
        dev_attribute_to_text(table, k, ACCESS::get(record, key), row_indent.c_str(), out);
        *out += '\n';
    }
}

// Appends every kind of the record in dump order (but the keys for which skip(kind, key)
// holds).
template <typename RECORD, typename SKIP = dev_attribute_detail::WRITE_ALL_KEYS>
void dev_attribute_write(const RECORD& record, const char* indent, std::string* out, SKIP&& skip = SKIP()) {
    dev_attribute_detail::write_all(record, indent, out, skip, typename RECORD::attribute_keys());
}

template <typename RECORD, typename SKIP, typename... KEYS>
void dev_attribute_detail::write_all(const RECORD& record, const char* indent, std::string* out, SKIP& skip,
                                     DEV_ATTRIBUTE_KEY_LIST<KEYS...>) {
    (dev_attribute_write_kind<KEYS>(record, indent, out, skip), ...);
}

#endif
