// Runtime form of one enumeration string table: every member with its value, the
// enumerator name, the debug string (the name written in data files) and the user string
// (the name shown to users). Look-up by string goes through a hash index built on first
// use, never a scan. Every enumeration is defined once in an X-macro file under
// host/tables/ from which both its C++ enum and its DSTR_TABLE are expanded.
#ifndef VELCORA_HOST_DSTR_TABLE_H
#define VELCORA_HOST_DSTR_TABLE_H

#include "host/host_export.h"

#include <cstddef>
#include <memory>
#include <string>

struct HOST_EXPORT DSTR_ENTRY {
    int value;
    const char* enumerator;  // the C++ member name, e.g. "DEV_LOCATION_LAB"
    const char* debug;       // the data-file name
    const char* user;        // the readable name
};

class HOST_EXPORT DSTR_TABLE {
public:
    // `entries` lists the named members (any order, gaps allowed). `invalid` is the value
    // meaning "not set" and `bound` the exclusive upper bound (the _GENERIC or _MAX member).
    DSTR_TABLE(const char* enum_name, const DSTR_ENTRY* entries, size_t count, int invalid, int bound);
    ~DSTR_TABLE();
    DSTR_TABLE(const DSTR_TABLE&) = delete;
    DSTR_TABLE& operator=(const DSTR_TABLE&) = delete;

    const char* enum_name() const { return m_enum_name; }
    int invalid_value() const { return m_invalid; }
    int bound_value() const { return m_bound; }
    size_t size() const { return m_count; }
    const DSTR_ENTRY& entry(size_t i) const { return m_entries[i]; }

    // Look-up of a member by its debug string.
    bool exists_by_string(const std::string& name) const;
    // The member's value, or the invalid value when the name is unknown.
    int get_by_string(const std::string& name) const;
    // Look-up of a member by its exact user string (hashed as the debug strings; where two
    // members share a user string, the first listed one answers).
    bool exists_by_user_string(const std::string& name) const;
    int get_by_user_string(const std::string& name) const;
    // The entry of a value, or null when no member has that value.
    const DSTR_ENTRY* find(int value) const;
    // "" for a value without a member.
    const char* debug_string(int value) const;
    const char* user_string(int value) const;
    // True for a named member strictly between the invalid value and the bound.
    bool is_valid(int value) const;

private:
    struct INDEX;
    const char* m_enum_name;
    const DSTR_ENTRY* m_entries;
    size_t m_count;
    int m_invalid;
    int m_bound;
    mutable std::unique_ptr<INDEX> m_index;
    const INDEX& index() const;
};

#endif
