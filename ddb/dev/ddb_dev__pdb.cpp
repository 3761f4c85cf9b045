// Serialisers of the stored classes, one field list per class in its stored order.
#include "ddb_dev__pdb.h"

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

// No stored class compares its persistent image automatically.
#define DEV_PDB_NO_AUTO_MATCH(CLASS)                                                        \
    bool CLASS::is_auto_match_pdb_xfr(CLASS*, PDB_MATCH_DATA*) {                            \
        DEV_INTERNAL_ERROR("Auto-generation of " #CLASS "::is_auto_match_pdb_xfr is not enabled"); \
        return false;                                                                       \
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
