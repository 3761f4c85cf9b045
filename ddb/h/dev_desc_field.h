// Field helpers shared by the catalogue records (DEV_FAMILY_DESC, DEV_DEVICE_DESC,
// DEV_PART_DESC): one macro declares a member with its getter and setter, and the list-string
// membership rule used by every list-valued key.
#ifndef VELCORA_DEV_DESC_FIELD_H
#define VELCORA_DEV_DESC_FIELD_H

#include <string>

// Declares `m_NAME` of TYPE (initialised with INIT), `get_NAME()` and `set_NAME(value)`.
#define DEV_DESC_FIELD(TYPE, NAME, INIT)                                   \
public:                                                                    \
    const TYPE& get_##NAME() const { return m_##NAME; }                    \
    void set_##NAME(const TYPE& value) { m_##NAME = value; }               \
                                                                           \
private:                                                                   \
    TYPE m_##NAME = INIT;

// A list string holds member names each followed by one blank. A name is a member when the
// name followed by one blank occurs anywhere in it (plain substring search from the start).
inline bool dev_list_string_contains(const std::string& list, const std::string& name) {
    return list.find(name + " ") != std::string::npos;
}
inline void dev_list_string_append(std::string& list, const std::string& name) {
    list += name;
    list += ' ';
}

#endif
