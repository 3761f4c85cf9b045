// DEV_ROUTING_GLOBAL_INFO: the routing-wide data of a device's routing-switch info (counts,
// defaults, the wire-type and switch-pair tables), a handle over
// DEV_ROUTING_GLOBAL_INFO_BODY: INT and 2D_INT attributes and an id.
#ifndef VELCORA_DEV_ROUTING_GLOBAL_INFO_H
#define VELCORA_DEV_ROUTING_GLOBAL_INFO_H

#include <cstdint>

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_persistent.h"
#include "host/astr.h"

#define DEV_ROUTING_GLOBAL_INFO_BODY_PDB_FIELDS(F) \
    F(m_int_data) F(m_2d_int_data) F(m_int_enum_is_valid) F(m_2d_int_enum_is_valid) F(m_id)

class DEV_EXPORT DEV_ROUTING_GLOBAL_INFO_BODY
    : public DEV_ATTRIBUTE_TABLE<DEV_ROUTING_GLOBAL_INT_DATA_ENUM, DEV_ROUTING_GLOBAL_2D_INT_DATA_ENUM> {
public:
    int32_t get_id() const { return m_id; }
    void set_id(int32_t id) { m_id = id; }
    bool operator==(const DEV_ROUTING_GLOBAL_INFO_BODY& other) const { return attributes_equal(other); }

    static bool is_auto_match_pdb_xfr(DEV_ROUTING_GLOBAL_INFO_BODY* object, PDB_MATCH_DATA* data);
    DEV_PDB_FRIEND(DEV_ROUTING_GLOBAL_INFO_BODY)

private:
    int32_t m_id = -1;
};

class DEV_EXPORT DEV_ROUTING_GLOBAL_INFO : public DEV_HANDLE<DEV_ROUTING_GLOBAL_INFO_BODY> {
public:
    typedef DEV_ROUTING_GLOBAL_INFO_BODY BODY;
    static DEV_ROUTING_GLOBAL_INFO* create() { return new DEV_ROUTING_GLOBAL_INFO(new BODY); }
    explicit DEV_ROUTING_GLOBAL_INFO(BODY* body) : DEV_HANDLE(body) {}
    DEV_ROUTING_GLOBAL_INFO() = default;

    static bool is_auto_match_pdb_xfr(DEV_ROUTING_GLOBAL_INFO* object, PDB_MATCH_DATA* data);
};

#endif
