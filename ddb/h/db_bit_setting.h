// DB_BIT_SETTING: the setting of one configuration bit, a type shared with the tool's other
// databases (the assembler's die description keeps the default settings of its tile kinds'
// bits as arrays of them). DB_BIT_SETTING_ARRAY_SHELL holds such an array. Both store
// themselves through the persistent store's base segment (serialize): the setting, and the
// array's count and settings.
#ifndef VELCORA_DB_BIT_SETTING_H
#define VELCORA_DB_BIT_SETTING_H

#include <cstdint>
#include <vector>

#include "dev_export.h"
#include "host/pdb.h"

class DEV_EXPORT DB_BIT_SETTING {
public:
    enum VALUE : uint8_t { ZERO = 0, ONE = 1, DONT_CARE = 2 };

    DB_BIT_SETTING(VALUE value = ZERO) : setting(value) {}
    VALUE get_value() const { return static_cast<VALUE>(setting); }
    bool operator==(const DB_BIT_SETTING& other) const { return setting == other.setting; }

    // Writes or reads the setting; a value read that is no VALUE fails the segment.
    void serialize(PDB_SEGMENT& seg);
    static bool is_auto_match_pdb_xfr(DB_BIT_SETTING* object, PDB_MATCH_DATA* data);

    uint8_t setting;
};

class DEV_EXPORT DB_BIT_SETTING_ARRAY_SHELL {
public:
    bool operator==(const DB_BIT_SETTING_ARRAY_SHELL& other) const { return m_data == other.m_data; }

    // The count, then each setting; reading replaces the array.
    void serialize(PDB_SEGMENT& seg);
    static bool is_auto_match_pdb_xfr(DB_BIT_SETTING_ARRAY_SHELL* object, PDB_MATCH_DATA* data);

    std::vector<DB_BIT_SETTING> m_data;
};

#endif
