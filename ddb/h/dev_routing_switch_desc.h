// DEV_ROUTING_SWITCH_DESC: one kind of routing switch of a device (the programmable
// connection from one wire or block output to another wire or block input), a handle over
// DEV_ROUTING_SWITCH_DESC_BODY: BOOL, INT, STRING and 2D_INT attributes, its id (its position
// among the routing-switch info's switches) and the pass trees it uses, in the order given.
// INT key 0 is its DEV_ROUTING_SWITCH_ENUM, STRING key 0 its nlspc string. STRING key 2, the
// switch's MCF string, is kept in the routing-switch info's MCF table, not on the switch.
//
// Each BOOL, INT and 2D_INT key may be set once: a second setting is reported (and stored).
// Setting a STRING key a second time is a conflict of the RSI data: it is noted with the
// switch, key and new value, reported as "Conflicting entries in RSI file", and the new value
// is stored.
#ifndef VELCORA_DEV_ROUTING_SWITCH_DESC_H
#define VELCORA_DEV_ROUTING_SWITCH_DESC_H

#include <cstdint>
#include <string>
#include <vector>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/dev_pass_tree_enum.h"
#include "host/tables/dev_routing_switch_enum.h"

#define DEV_ROUTING_SWITCH_DESC_BODY_PDB_FIELDS(F)                                                    \
    F(m_bool_data) F(m_int_data) F(m_string_data) F(m_2d_int_data) F(m_id) F(m_int_enum_is_valid)       \
        F(m_bool_enum_is_valid) F(m_2d_int_enum_is_valid) F(m_string_enum_is_valid) F(m_pass_tree_enums)

class DEV_EXPORT DEV_ROUTING_SWITCH_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_SET_ONCE<DEV_ROUTING_SWITCH_DESC_BOOL_DATA_ENUM>,
                                 DEV_SET_ONCE<DEV_ROUTING_SWITCH_DESC_INT_DATA_ENUM>,
                                 DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM,
                                 DEV_SET_ONCE<DEV_ROUTING_SWITCH_DESC_2D_INT_DATA_ENUM>> {
    typedef DEV_STRING_ATTRIBUTES<DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM> STRINGS;

public:
    int32_t get_id() const { return m_id; }
    void set_id(int32_t id) { m_id = id; }
    // INT key 0 (DEV_ROUTING_SWITCH_INVALID when unset).
    DEV_ROUTING_SWITCH_ENUM get_routing_switch_enum() const;
    // The name of the switch's enumerator ("" when it has none).
    const char* get_name() const;

    // A second setting of a key is the conflict described above.
    void set_string_data(DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM key, const std::string& value);

    const std::vector<DEV_PASS_TREE_ENUM>& get_pass_tree_enums() const { return m_pass_tree_enums; }
    void add_pass_tree_enum(DEV_PASS_TREE_ENUM tree) { m_pass_tree_enums.push_back(tree); }

    // The same attributes and pass trees.
    bool operator==(const DEV_ROUTING_SWITCH_DESC_BODY& other) const {
        return attributes_equal(other) && m_pass_tree_enums == other.m_pass_tree_enums;
    }

    static bool is_auto_match_pdb_xfr(DEV_ROUTING_SWITCH_DESC_BODY* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_ROUTING_SWITCH_DESC_BODY)

private:
    int32_t m_id = -1;
    std::vector<DEV_PASS_TREE_ENUM> m_pass_tree_enums;
};

class DEV_EXPORT DEV_ROUTING_SWITCH_DESC : public DEV_HANDLE<DEV_ROUTING_SWITCH_DESC_BODY> {
public:
    typedef DEV_ROUTING_SWITCH_DESC_BODY BODY;
    // A switch of `routing_switch` (INT key 0) with an otherwise empty body.
    static DEV_ROUTING_SWITCH_DESC* create(DEV_ROUTING_SWITCH_ENUM routing_switch);
    explicit DEV_ROUTING_SWITCH_DESC(BODY* body) : DEV_HANDLE(body) {}
    DEV_ROUTING_SWITCH_DESC() = default;

    int32_t get_id() const { return forward_or(-1, &BODY::get_id); }
    DEV_ROUTING_SWITCH_ENUM get_routing_switch_enum() const {
        return forward_or(DEV_ROUTING_SWITCH_INVALID, &BODY::get_routing_switch_enum);
    }
    const std::vector<DEV_PASS_TREE_ENUM>& get_pass_tree_enums() const { return forward(&BODY::get_pass_tree_enums); }

    static bool is_auto_match_pdb_xfr(DEV_ROUTING_SWITCH_DESC* object, PDB_MATCH_DATA* data);
};

#endif
