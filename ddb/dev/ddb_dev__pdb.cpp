// Serialisers of the stored classes, one field list per class in its stored order.
#include "ddb_dev__pdb.h"

#include "db_bit_setting.h"

#include "host/msg.h"

#define DEV_PDB_SOURCE "ddb/dev/ddb_dev__pdb"

#define DEV_PDB_XFR_FIELD(member)                                                                     \
    {                                                                                                 \
        PDB_FIELD_SCOPE field_scope(seg, #member, dev_pdb_type_name(object.member), DEV_PDB_SOURCE, __LINE__); \
        pdb_xfr(seg, object.member);                                                                  \
    }

#define DEV_PDB_SERIALIZER(CLASS, FIELDS)                                  \
    PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, CLASS& object) {     \
        static const PDB_CLASS_INFO info(#CLASS);                          \
        PDB_SEGMENT_BASE::serialize_begin(seg, info, &object);             \
        FIELDS(DEV_PDB_XFR_FIELD)                                          \
        PDB_SEGMENT_BASE::serialize_end(seg);                              \
        return seg;                                                        \
    }

// Classes that list their own fields: visit_fields(visitor) calls visitor(name, member) for
// each field in stored order.
#define DEV_PDB_VISITED_SERIALIZER(CLASS)                                                   \
    PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, CLASS& object) {                      \
        static const PDB_CLASS_INFO info(#CLASS);                                           \
        PDB_SEGMENT_BASE::serialize_begin(seg, info, &object);                              \
        object.visit_fields([&seg](const char* name, auto& member) {                        \
            if (seg.failed()) return;                                                       \
            PDB_FIELD_SCOPE field_scope(seg, name, dev_pdb_type_name(member), DEV_PDB_SOURCE, __LINE__); \
            pdb_xfr(seg, member);                                                           \
        });                                                                                 \
        PDB_SEGMENT_BASE::serialize_end(seg);                                               \
        return seg;                                                                         \
    }

// Public handles store only their body.
#define DEV_PDB_HANDLE_SERIALIZER(CLASS)                                                                     \
    PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, CLASS& object) {                                       \
        static const PDB_CLASS_INFO info(#CLASS);                                                            \
        PDB_SEGMENT_BASE::serialize_begin(seg, info, &object);                                               \
        {                                                                                                    \
            PDB_FIELD_SCOPE field_scope(seg, "m_body", #CLASS "_BODY*", DEV_PDB_SOURCE, __LINE__);            \
            pdb_xfr_numbered(seg, DEV_PDB_HANDLE_ACCESS<CLASS>::body(object));                                \
        }                                                                                                    \
        PDB_SEGMENT_BASE::serialize_end(seg);                                                                \
        return seg;                                                                                          \
    }

// No stored class compares its persistent image automatically.
#define DEV_PDB_NO_AUTO_MATCH(CLASS)                                                                \
    bool CLASS::is_auto_match_pdb_xfr(CLASS*, PDB_MATCH_DATA*) {                                    \
        DEV_INTERNAL_ERROR("Auto-generation of " #CLASS "::is_auto_match_pdb_xfr is not enabled"); \
        return false;                                                                               \
    }

// ---------------------------------------------------------------------------------------
// Single-value holders

#define DEV_SMART_VALUE_FIELDS(F) F(m_value)

DEV_PDB_SERIALIZER(DEV_INT_VALUE, DEV_SMART_VALUE_FIELDS)
DEV_PDB_SERIALIZER(DEV_QWORD_VALUE, DEV_SMART_VALUE_FIELDS)
DEV_PDB_SERIALIZER(DEV_BOOL_VALUE, DEV_SMART_VALUE_FIELDS)
DEV_PDB_SERIALIZER(DEV_STRING_VALUE, DEV_SMART_VALUE_FIELDS)
DEV_PDB_NO_AUTO_MATCH(DEV_INT_VALUE)
DEV_PDB_NO_AUTO_MATCH(DEV_QWORD_VALUE)
DEV_PDB_NO_AUTO_MATCH(DEV_BOOL_VALUE)
DEV_PDB_NO_AUTO_MATCH(DEV_STRING_VALUE)

// ---------------------------------------------------------------------------------------
// Catalogue records and the catalogue store root

DEV_PDB_VISITED_SERIALIZER(DEV_FAMILY_DESC)
DEV_PDB_VISITED_SERIALIZER(DEV_DEVICE_DESC)
DEV_PDB_VISITED_SERIALIZER(DEV_PART_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_FAMILY_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_DEVICE_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_PART_DESC)

// The root's lists hold records that the storage object owns once read.
#define DEV_PDB_XFR_OWNED_FIELD(member)                                                                \
    {                                                                                                  \
        PDB_FIELD_SCOPE field_scope(seg, #member, dev_pdb_type_name(object.member), DEV_PDB_SOURCE, __LINE__); \
        pdb_xfr_owned(seg, object.member);                                                             \
    }

#define DEV_FAMILY_INFO_FIELDS(F) F(m_family_data) F(m_device_data) F(m_part_data)

PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, DEV_FAMILY_INFO& object) {
    // Records read from a file belong to the storage object.
    if (seg.is_reading()) {
        object.clear();
        object.set_owns_records(true);
    }
    static const PDB_CLASS_INFO info("DEV_FAMILY_INFO");
    PDB_SEGMENT_BASE::serialize_begin(seg, info, &object);
    DEV_FAMILY_INFO_FIELDS(DEV_PDB_XFR_OWNED_FIELD)
    PDB_SEGMENT_BASE::serialize_end(seg);
    return seg;
}
DEV_PDB_NO_AUTO_MATCH(DEV_FAMILY_INFO)

// ---------------------------------------------------------------------------------------
// Basic info

DEV_PDB_HANDLE_SERIALIZER(DEV_LOCATION_DESC)
DEV_PDB_HANDLE_SERIALIZER(DEV_PORT_DESC)
DEV_PDB_HANDLE_SERIALIZER(DEV_ELEMENT_DESC)
DEV_PDB_SERIALIZER(DEV_LOCATION_DESC_BODY, DEV_LOCATION_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_PORT_DESC_BODY, DEV_PORT_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_ELEMENT_DESC_BODY, DEV_ELEMENT_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_BASIC_INFO_BODY, DEV_BASIC_INFO_BODY_PDB_FIELDS)
DEV_PDB_NO_AUTO_MATCH(DEV_LOCATION_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_PORT_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_ELEMENT_DESC)

// The ports, owned here, then the names bound to them.
#define DEV_PORT_TABLE_PDB_FIELDS(F) F(m_ports) F(m_by_name)
DEV_PDB_SERIALIZER(DEV_PORT_TABLE, DEV_PORT_TABLE_PDB_FIELDS)

// ---------------------------------------------------------------------------------------
// Pads and packages

DEV_PDB_HANDLE_SERIALIZER(DEV_PAD)
DEV_PDB_HANDLE_SERIALIZER(DEV_IO_STANDARD_DESC)
DEV_PDB_HANDLE_SERIALIZER(DEV_IO_RULE)
DEV_PDB_SERIALIZER(DEV_PAD_BODY, DEV_PAD_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_IO_STANDARD_DESC_BODY, DEV_IO_STANDARD_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_IO_RULE_BODY, DEV_IO_RULE_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_PAD_INFO_BODY, DEV_PAD_INFO_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_PIN, DEV_PIN_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_PKG_INFO_BODY, DEV_PKG_INFO_BODY_PDB_FIELDS)
DEV_PDB_NO_AUTO_MATCH(DEV_PAD)
DEV_PDB_NO_AUTO_MATCH(DEV_IO_STANDARD_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_IO_RULE)
DEV_PDB_NO_AUTO_MATCH(DEV_PIN)

// ---------------------------------------------------------------------------------------
// Part info

DEV_PDB_HANDLE_SERIALIZER(DEV_POWER_SUPPLY_DESC)
DEV_PDB_SERIALIZER(DEV_POWER_SUPPLY_DESC_BODY, DEV_POWER_SUPPLY_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_PART_INFO_BODY, DEV_PART_INFO_BODY_PDB_FIELDS)
DEV_PDB_NO_AUTO_MATCH(DEV_POWER_SUPPLY_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_POWER_SUPPLY_DESC_BODY)
DEV_PDB_NO_AUTO_MATCH(DEV_PART_INFO_BODY)

// ---------------------------------------------------------------------------------------
// Routing switches

DEV_PDB_HANDLE_SERIALIZER(DEV_ROUTING_GLOBAL_INFO)
DEV_PDB_HANDLE_SERIALIZER(DEV_ROUTING_SWITCH_DESC)
DEV_PDB_HANDLE_SERIALIZER(DEV_PASS_TREE_DESC)
DEV_PDB_SERIALIZER(DEV_ROUTING_GLOBAL_INFO_BODY, DEV_ROUTING_GLOBAL_INFO_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_ROUTING_SWITCH_DESC_BODY, DEV_ROUTING_SWITCH_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_PASS_TREE_DESC_BODY, DEV_PASS_TREE_DESC_BODY_PDB_FIELDS)
DEV_PDB_SERIALIZER(DEV_ROUTING_SWITCH_INFO_BODY, DEV_ROUTING_SWITCH_INFO_BODY_PDB_FIELDS)
DEV_PDB_NO_AUTO_MATCH(DEV_ROUTING_GLOBAL_INFO)
DEV_PDB_NO_AUTO_MATCH(DEV_ROUTING_GLOBAL_INFO_BODY)
DEV_PDB_NO_AUTO_MATCH(DEV_ROUTING_SWITCH_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_ROUTING_SWITCH_DESC_BODY)
DEV_PDB_NO_AUTO_MATCH(DEV_PASS_TREE_DESC)
DEV_PDB_NO_AUTO_MATCH(DEV_PASS_TREE_DESC_BODY)
DEV_PDB_NO_AUTO_MATCH(DEV_ROUTING_SWITCH_INFO_BODY)

// ---------------------------------------------------------------------------------------
// Bit settings: stored through the base segment

void DB_BIT_SETTING::serialize(PDB_SEGMENT& seg) {
    static const PDB_CLASS_INFO info("DB_BIT_SETTING");
    PDB_SEGMENT_BASE::serialize_begin(seg, info, this);
    {
        PDB_FIELD_SCOPE field(seg, "setting", "uint8_t", DEV_PDB_SOURCE, __LINE__);
        seg.xfr(setting);
    }
    if (seg.is_reading() && !seg.failed() && setting > DONT_CARE)
        seg.fail("corrupted: bit setting " + std::to_string(setting));
    PDB_SEGMENT_BASE::serialize_end(seg);
}

void DB_BIT_SETTING_ARRAY_SHELL::serialize(PDB_SEGMENT& seg) {
    static const PDB_CLASS_INFO info("DB_BIT_SETTING_ARRAY_SHELL");
    PDB_SEGMENT_BASE::serialize_begin(seg, info, this);
    {
        PDB_FIELD_SCOPE field(seg, "m_data", "std::vector<DB_BIT_SETTING>", DEV_PDB_SOURCE, __LINE__);
        size_t n = m_data.size();
        // Each setting takes its class tag and its byte.
        if (seg.xfr_count(n, sizeof(uint32_t) + 1)) {
            PDB_SEGMENT_BASE::stl_begin(seg);
            if (seg.is_reading()) m_data.assign(n, DB_BIT_SETTING());
            for (size_t i = 0; i < n && !seg.failed(); ++i) m_data[i].serialize(seg);
        }
        if (seg.is_reading() && seg.failed()) m_data.clear();
    }
    PDB_SEGMENT_BASE::serialize_end(seg);
}

DEV_PDB_NO_AUTO_MATCH(DB_BIT_SETTING)
DEV_PDB_NO_AUTO_MATCH(DB_BIT_SETTING_ARRAY_SHELL)
