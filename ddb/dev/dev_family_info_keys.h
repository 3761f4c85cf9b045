// The keys of the family-info text, one table per record kind in the order the key parsers
// try them (reverse alphabetical order of the keys; the dump writes them in the opposite,
// alphabetical, order). Each key names its value kind, its enumeration and how it reaches
// the record's field. Shared by the key parsers and the dump writer.
#ifndef VELCORA_DEV_FAMILY_INFO_KEYS_H
#define VELCORA_DEV_FAMILY_INFO_KEYS_H

#include <cstddef>
#include <string>
#include <type_traits>

#include "dev_device_desc.h"
#include "dev_family_desc.h"
#include "dev_part_desc.h"
#include "host/dstr.h"

enum DEV_FAMILY_INFO_VALUE_KIND {
    DEV_FI_ENUM,    // one name of the key's enumeration; written when set
    DEV_FI_INT,     // a decimal integer; always written
    DEV_FI_STRING,  // a quoted non-empty text; written when not empty
    DEV_FI_TRAIT,   // one trait name per line, sets its bit; one line per set bit
    DEV_FI_LIST     // one quoted name per line, appended to a list string; one line per member
};

template <typename DESC>
struct DEV_FAMILY_INFO_KEY {
    const char* key;
    DEV_FAMILY_INFO_VALUE_KIND kind;
    const DSTR_TABLE& (*table)();                        // ENUM, TRAIT, LIST
    int (*get_int)(const DESC&);                         // ENUM, INT
    void (*set_int)(DESC&, int);                         // ENUM, INT, TRAIT
    bool (*test_bit)(const DESC&, int);                  // TRAIT
    const std::string& (*get_string)(const DESC&);       // STRING, LIST
    void (*set_string)(DESC&, const std::string&);       // STRING, LIST
};

template <typename DESC>
struct DEV_FAMILY_INFO_KEY_TABLE {
    const DEV_FAMILY_INFO_KEY<DESC>* keys;
    size_t count;
    const char* record_kind;  // "family", "device", "part" (for messages)
};

const DEV_FAMILY_INFO_KEY_TABLE<DEV_FAMILY_DESC>& dev_family_info_keys(const DEV_FAMILY_DESC*);
const DEV_FAMILY_INFO_KEY_TABLE<DEV_DEVICE_DESC>& dev_family_info_keys(const DEV_DEVICE_DESC*);
const DEV_FAMILY_INFO_KEY_TABLE<DEV_PART_DESC>& dev_family_info_keys(const DEV_PART_DESC*);

// The first word of a line: the run of word characters after leading blanks (empty when the
// first non-blank character is not a word character). A key or keyword pattern can only
// match a line whose first word is exactly that key.
inline void dev_family_info_first_word(const std::string& line, const char*& begin, size_t& length) {
    size_t i = 0;
    const size_t n = line.size();
    while (i < n && (line[i] == ' ' || line[i] == '\t' || line[i] == '\n' || line[i] == '\r' || line[i] == '\f')) ++i;
    size_t j = i;
    while (j < n) {
        const char c = line[j];
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_')) break;
        ++j;
    }
    begin = line.data() + i;
    length = j - i;
}

#endif
