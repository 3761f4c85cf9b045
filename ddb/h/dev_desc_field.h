// Field lists of the catalogue records (DEV_FAMILY_DESC, DEV_DEVICE_DESC, DEV_PART_DESC) and
// the list-string membership rule used by every list-valued key.
//
// Each record lists its fields once, in stored order, as an X-macro beside the class:
//   #define DEV_<RECORD>_FIELDS(F) F(TYPE, NAME, INIT, TEXT, KEY, VALUES) ...
// with
//   TYPE, NAME, INIT  the member m_NAME of TYPE, initialised with INIT;
//   TEXT              how a family-info text line sets it: NONE (no key line: the block's
//                     name, or a block of its own), ENUM (one name of VALUES), INT (a
//                     decimal number), STRING (a quoted text), TRAIT (one trait name of
//                     VALUES per line, setting its bit), LIST (one quoted name of VALUES per
//                     line, appended to a list string);
//   KEY               the key of that line ("" for NONE);
//   VALUES            the string table naming its values (&dstr_table_<stem>, or nullptr).
// DEV_DESC_FIELDS(CLASS, LIST) expands the list into the members with get_NAME/set_NAME,
// visit_fields (the stored order, for the persistent store) and the equality; the key
// tables of the family-info reader and dump are expanded from the same list. Adding a
// field is one line of its record's list.
#ifndef VELCORA_DEV_DESC_FIELD_H
#define VELCORA_DEV_DESC_FIELD_H

#include <string>

#define DEV_DESC_MEMBER(TYPE, NAME, INIT, TEXT, KEY, VALUES)           \
public:                                                                \
    const TYPE& get_##NAME() const { return m_##NAME; }                \
    void set_##NAME(const TYPE& value) { m_##NAME = value; }           \
                                                                       \
private:                                                               \
    TYPE m_##NAME = INIT;

#define DEV_DESC_VISIT(TYPE, NAME, INIT, TEXT, KEY, VALUES) visitor(#NAME, m_##NAME);
#define DEV_DESC_EQUAL(TYPE, NAME, INIT, TEXT, KEY, VALUES) &&m_##NAME == other.m_##NAME

#define DEV_DESC_FIELDS(CLASS, LIST)                                                     \
    LIST(DEV_DESC_MEMBER)                                                                \
                                                                                         \
public:                                                                                  \
    /* Calls visitor(field name, member) for every field in stored order. */            \
    template <typename VISITOR>                                                          \
    void visit_fields(VISITOR&& visitor) {                                               \
        LIST(DEV_DESC_VISIT)                                                             \
    }                                                                                    \
    bool operator==(const CLASS& other) const { return true LIST(DEV_DESC_EQUAL); }      \
    bool operator!=(const CLASS& other) const { return !(*this == other); }

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
