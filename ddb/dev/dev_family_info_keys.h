// The keys of the family-info text, one table per record kind, expanded from the records'
// field lists (dev_desc_field.h) and held in the order the key parsers try them: reverse
// alphabetical order of the keys (the dump writes them in the opposite, alphabetical,
// order). Each key names its value kind, the string table of its names and how it reaches
// the record's field. Shared by the key parsers and the dump writer.
#ifndef VELCORA_DEV_FAMILY_INFO_KEYS_H
#define VELCORA_DEV_FAMILY_INFO_KEYS_H

#include <cstddef>
#include <string>
#include <vector>

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
    std::vector<DEV_FAMILY_INFO_KEY<DESC>> keys;  // in parser order
    const char* record_kind;                      // "family", "device", "part" (for messages)
};

const DEV_FAMILY_INFO_KEY_TABLE<DEV_FAMILY_DESC>& dev_family_info_keys(const DEV_FAMILY_DESC*);
const DEV_FAMILY_INFO_KEY_TABLE<DEV_DEVICE_DESC>& dev_family_info_keys(const DEV_DEVICE_DESC*);
const DEV_FAMILY_INFO_KEY_TABLE<DEV_PART_DESC>& dev_family_info_keys(const DEV_PART_DESC*);

#endif
