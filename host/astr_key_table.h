// Runtime form of one attribute-key table: the keys of one record and one value kind
// (for example the INT keys of basic info), each with its enumerator name, its debug
// string (the key as data files write it, kind prefix included), its user string and the
// enumeration, if any, whose names its values may take. Look-up by name goes through an
// open-addressing hash index built with the table, never a scan: every attribute line of
// every data file is looked up here. The table is also the symbolic value-name
// instance (ASTR_VALUE_NAMES) that the value converters of its key kind read.
//
// Every table is expanded from one X-macro file per record and kind under host/tables/
// (see host/tables/astr_expand_declare.inc); ASTR_KEY_TRAITS ties each key enumeration to
// its table, its bound and its kind at compile time.
#ifndef VELCORA_HOST_ASTR_KEY_TABLE_H
#define VELCORA_HOST_ASTR_KEY_TABLE_H

#include "host/host_export.h"

#include <cstdint>
#include <string>
#include <vector>

#include "host/astr_value_names.h"

class DSTR_TABLE;

// The value kinds of attribute tables, in the order in which dumps write them.
enum ASTR_KIND {
    ASTR_KIND_BOOL,
    ASTR_KIND_INT,
    ASTR_KIND_ENUM,
    ASTR_KIND_STRING,
    ASTR_KIND_2D_INT,
    ASTR_KIND_VEC_INT,
    ASTR_KIND_VEC_DOUBLE,
    ASTR_KIND_VEC_STRING,
    ASTR_KIND_COUNT
};

// The key prefix of a kind in data files ("BOOL_", "2D_INT_", ...).
HOST_EXPORT const char* astr_kind_prefix(ASTR_KIND kind);

// The enumeration that names the values of a key. Whole-key values (INT, ENUM) ask with
// row and column -1; elements of 2D keys with their row and column; elements of vector
// keys with row 0 and their position. Null: plain numbers.
typedef const DSTR_TABLE* (*ASTR_VALUE_TABLE_FN)(int row, int column);

struct HOST_EXPORT ASTR_KEY_ENTRY {
    const char* enumerator;  // "DEV_PORT_DESC_INT_INPUT_PORT_TYPE"
    const char* debug;       // "INT_INPUT_PORT_TYPE"
    const char* user;        // "input port type"
    ASTR_VALUE_TABLE_FN values;
};

class HOST_EXPORT ASTR_KEY_TABLE : public ASTR_VALUE_NAMES {
public:
    ASTR_KEY_TABLE(const char* enum_name, const char* bound_name, ASTR_KIND kind,
                   const ASTR_KEY_ENTRY* entries, int count);
    ASTR_KEY_TABLE(const ASTR_KEY_TABLE&) = delete;
    ASTR_KEY_TABLE& operator=(const ASTR_KEY_TABLE&) = delete;

    const char* enum_name() const { return m_enum_name; }    // "DEV_PAD_INT_DATA_ENUM"
    const char* bound_name() const { return m_bound_name; }  // "DEV_PAD_INT_DATA_MAX"
    ASTR_KIND kind() const { return m_kind; }
    int count() const { return m_count; }
    const ASTR_KEY_ENTRY& entry(int key) const { return m_entries[key]; }

    bool exists_by_string(const std::string& name) const;
    // The key of that debug string, or count() (an out-of-range key) when unknown.
    int get_by_string(const std::string& name) const;
    // "" for a key out of range.
    const char* debug_string(int key) const;
    const char* user_string(int key) const;
    // The enumeration naming the values of `key` (at row and column), or null.
    const DSTR_TABLE* value_table(int key, int row, int column) const;

    // Symbolic value names (ASTR_VALUE_NAMES).
    bool exists_enum_data_by_string(int key, const std::string& name) const override;
    int get_enum_data_by_string(int key, const std::string& name) const override;
    std::string get_enum_data_name(int key, int value) const override;
    bool exists_enum_data_by_string(int key, int row, int column,
                                    const std::string& name) const override;
    int get_enum_data_by_string(int key, int row, int column,
                                const std::string& name) const override;
    std::string get_enum_data_name(int key, int row, int column, int value) const override;

private:
    static uint64_t hash(const char* text, size_t length);

    const char* m_enum_name;
    const char* m_bound_name;
    ASTR_KIND m_kind;
    const ASTR_KEY_ENTRY* m_entries;
    int m_count;
    std::vector<uint32_t> m_lengths;  // of the debug strings
    std::vector<int> m_slots;         // key or -1; a power of two at most half full
    size_t m_mask;
};

// Compile-time facts of a key enumeration; specialised for every DEV_<R>_<K>_DATA_ENUM:
//   kind        the value kind of its keys
//   MAX         the bound DEV_<R>_<K>_DATA_MAX
//   bound_name  "DEV_<R>_<K>_DATA_MAX"
//   range_text  "key >= 0 && key < DEV_<R>_<K>_DATA_MAX", the report of a key out of range
//   table()     the runtime table
template <typename KEY>
struct ASTR_KEY_TRAITS {
    static constexpr bool is_key = false;
};

#endif
