// DEV_IO_RULE: one I/O placement rule of a device's pad info, a handle over DEV_IO_RULE_BODY
// (BOOL, INT and STRING attributes). INT key 0 is the rule's DEV_IO_RULE_ENUM; STRING key 0
// its generated name (the PAD reader forms it from INT key 3 and the enumerator).
#ifndef VELCORA_DEV_IO_RULE_H
#define VELCORA_DEV_IO_RULE_H

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/dev_io_rule_enum.h"

#define DEV_IO_RULE_BODY_PDB_FIELDS(F)                                                                \
    F(m_bool_data) F(m_int_data) F(m_string_data) F(m_bool_enum_is_valid) F(m_int_enum_is_valid) \
        F(m_string_enum_is_valid)

class DEV_EXPORT DEV_IO_RULE_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_IO_RULE_BOOL_DATA_ENUM, DEV_IO_RULE_INT_DATA_ENUM, DEV_IO_RULE_STRING_DATA_ENUM> {
public:
    // INT key 0; DEV_IO_RULE_INVALID when unset.
    DEV_IO_RULE_ENUM get_io_rule_enum() const {
        int rule = DEV_IO_RULE_INVALID;
        get_int_data(DEV_IO_RULE_INT_IO_RULE, &rule);
        return static_cast<DEV_IO_RULE_ENUM>(rule);
    }
    bool operator==(const DEV_IO_RULE_BODY& other) const { return attributes_equal(other); }

    DEV_PDB_FRIEND(DEV_IO_RULE_BODY)
};

class DEV_EXPORT DEV_IO_RULE : public DEV_HANDLE<DEV_IO_RULE_BODY> {
public:
    static DEV_IO_RULE* create() { return new DEV_IO_RULE(new DEV_IO_RULE_BODY); }
    explicit DEV_IO_RULE(DEV_IO_RULE_BODY* body) : DEV_HANDLE(body) {}
    DEV_IO_RULE() = default;

    DEV_IO_RULE_ENUM get_io_rule_enum() const {
        return forward_or(DEV_IO_RULE_INVALID, &DEV_IO_RULE_BODY::get_io_rule_enum);
    }

    static bool is_auto_match_pdb_xfr(DEV_IO_RULE* object, PDB_MATCH_DATA* data);
};

#endif
