// DEV_PASS_TREE_DESC: one pass-transistor tree of a device's routing (its levels, leaves,
// delays and configuration bits), a handle over DEV_PASS_TREE_DESC_BODY: INT and 2D_INT
// attributes and its id (its position among the routing-switch info's pass trees). INT key
// 0 is its DEV_PASS_TREE_ENUM.
#ifndef VELCORA_DEV_PASS_TREE_DESC_H
#define VELCORA_DEV_PASS_TREE_DESC_H

#include <cstdint>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"
#include "host/tables/dev_pass_tree_enum.h"

#define DEV_PASS_TREE_DESC_BODY_PDB_FIELDS(F) \
    F(m_int_data) F(m_2d_int_data) F(m_id) F(m_int_enum_is_valid) F(m_2d_int_enum_is_valid)

class DEV_EXPORT DEV_PASS_TREE_DESC_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_PASS_TREE_DESC_INT_DATA_ENUM, DEV_PASS_TREE_DESC_2D_INT_DATA_ENUM> {
public:
    int32_t get_id() const { return m_id; }
    void set_id(int32_t id) { m_id = id; }
    // INT key 0 (DEV_PASS_TREE_INVALID when unset).
    DEV_PASS_TREE_ENUM get_pass_tree_enum() const {
        int tree = DEV_PASS_TREE_INVALID;
        get_int_data(DEV_PASS_TREE_DESC_INT_PASS_TREE, &tree);
        return static_cast<DEV_PASS_TREE_ENUM>(tree);
    }
    bool operator==(const DEV_PASS_TREE_DESC_BODY& other) const { return attributes_equal(other); }

    static bool is_auto_match_pdb_xfr(DEV_PASS_TREE_DESC_BODY* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_PASS_TREE_DESC_BODY)

private:
    int32_t m_id = -1;
};

class DEV_EXPORT DEV_PASS_TREE_DESC : public DEV_HANDLE<DEV_PASS_TREE_DESC_BODY> {
public:
    typedef DEV_PASS_TREE_DESC_BODY BODY;
    // A pass tree of `tree` (INT key 0) with an otherwise empty body.
    static DEV_PASS_TREE_DESC* create(DEV_PASS_TREE_ENUM tree);
    explicit DEV_PASS_TREE_DESC(BODY* body) : DEV_HANDLE(body) {}
    DEV_PASS_TREE_DESC() = default;

    int32_t get_id() const { return forward_or(-1, &BODY::get_id); }
    DEV_PASS_TREE_ENUM get_pass_tree_enum() const {
        return forward_or(DEV_PASS_TREE_INVALID, &BODY::get_pass_tree_enum);
    }

    static bool is_auto_match_pdb_xfr(DEV_PASS_TREE_DESC* object, PDB_MATCH_DATA* data);
};

#endif
