// Serialisers of the library's stored classes (defined in ddb_dev__pdb.cpp) and the
// transfers they share beyond the host's: trait flags and fixed arrays.
//
// Every serialiser is written the same way: the class's field list in stored order (a
// DEV_<CLASS>_FIELDS macro, or the class's own visit_fields for the catalogue records)
// expanded by DEV_PDB_SERIALIZER / DEV_PDB_VISITED_SERIALIZER, which bracket the object with
// its class identity and transfer each field with the field's context set. A new stored
// class adds only its field list and one serialiser line.
#ifndef VELCORA_DDB_DEV__PDB_H
#define VELCORA_DDB_DEV__PDB_H

#include <memory>
#include <typeinfo>

#include "dev_enum_flag.h"
#include "dev_export.h"
#include "dev_basic_info_body.h"
#include "dev_family_info.h"
#include "dev_owned_vector.h"
#include "dev_part_info.h"
#include "dev_pad_info_body.h"
#include "dev_pkg_info_body.h"
#include "dev_persistent.h"
#include "dev_routing_switch_info_body.h"
#include "dev_smart_value.h"
#include "host/pdb_stl.h"

// A trait flag: its word count (which must match), then its raw words.
template <typename ENUM, unsigned BITS>
void pdb_xfr(PDB_DDB_SEGMENT& seg, DEV_ENUM_FLAG<ENUM, BITS>& flag) {
    typedef DEV_ENUM_FLAG<ENUM, BITS> FLAG;
    size_t n = FLAG::word_count();
    if (!seg.xfr_count(n, 8)) return;
    if (n != FLAG::word_count()) {
        seg.fail("trait flag of " + std::to_string(n) + " words where " + std::to_string(FLAG::word_count()) +
                 " are expected");
        return;
    }
    for (unsigned i = 0; i < FLAG::word_count() && !seg.failed(); ++i) {
        uint64_t w = flag.get_word(i);
        pdb_xfr(seg, w);
        if (seg.is_reading()) flag.set_word(i, w);
    }
}

// A list of owned records: each stored here under the number the links to it use.
template <typename T>
void pdb_xfr(PDB_DDB_SEGMENT& seg, DEV_OWNED_VECTOR<T>& v) {
    size_t n = v.size();
    if (!seg.xfr_count(n, 4)) return;
    PDB_SEGMENT_BASE::stl_begin(seg);
    if (seg.is_reading()) {
        v.clear();
        v.assign(n, nullptr);
    }
    for (size_t i = 0; i < n && !seg.failed(); ++i) pdb_xfr_numbered(seg, v[i]);
}

// An owned record that links may point at, numbered as the records of a DEV_OWNED_VECTOR.
template <typename T>
void pdb_xfr(PDB_DDB_SEGMENT& seg, std::unique_ptr<T>& p) {
    T* raw = p.release();
    pdb_xfr_numbered(seg, raw);
    p.reset(raw);
}

// A handle's owned body.
template <typename HANDLE>
struct DEV_PDB_HANDLE_ACCESS {
    static typename HANDLE::body_type*& body(HANDLE& handle) { return handle.m_body; }
};

// A fixed array keyed by an enumeration.
template <typename T, size_t N>
void pdb_xfr(PDB_DDB_SEGMENT& seg, T (&a)[N]) {
    pdb_xfr_array(seg, a, N);
}

// The type descriptor set in the field context.
template <typename T>
const char* dev_pdb_type_name(const T&) {
    return typeid(T).name();
}

#define DEV_PDB_DECLARE(CLASS) DEV_EXPORT PDB_DDB_SEGMENT& operator<<(PDB_DDB_SEGMENT& seg, CLASS& object);

DEV_PDB_DECLARE(DEV_INT_VALUE)
DEV_PDB_DECLARE(DEV_QWORD_VALUE)
DEV_PDB_DECLARE(DEV_BOOL_VALUE)
DEV_PDB_DECLARE(DEV_STRING_VALUE)
DEV_PDB_DECLARE(DEV_FAMILY_DESC)
DEV_PDB_DECLARE(DEV_DEVICE_DESC)
DEV_PDB_DECLARE(DEV_PART_DESC)
DEV_PDB_DECLARE(DEV_FAMILY_INFO)
DEV_PDB_DECLARE(DEV_LOCATION_DESC)
DEV_PDB_DECLARE(DEV_LOCATION_DESC_BODY)
DEV_PDB_DECLARE(DEV_PORT_DESC)
DEV_PDB_DECLARE(DEV_PORT_DESC_BODY)
DEV_PDB_DECLARE(DEV_ELEMENT_DESC)
DEV_PDB_DECLARE(DEV_ELEMENT_DESC_BODY)
DEV_PDB_DECLARE(DEV_PORT_TABLE)
DEV_PDB_DECLARE(DEV_BASIC_INFO_BODY)

// Pads and packages
DEV_PDB_DECLARE(DEV_PAD)
DEV_PDB_DECLARE(DEV_PAD_BODY)
DEV_PDB_DECLARE(DEV_IO_STANDARD_DESC)
DEV_PDB_DECLARE(DEV_IO_STANDARD_DESC_BODY)
DEV_PDB_DECLARE(DEV_IO_RULE)
DEV_PDB_DECLARE(DEV_IO_RULE_BODY)
DEV_PDB_DECLARE(DEV_PAD_INFO_BODY)
DEV_PDB_DECLARE(DEV_PIN)
DEV_PDB_DECLARE(DEV_PKG_INFO_BODY)

// Part info
DEV_PDB_DECLARE(DEV_POWER_SUPPLY_DESC)
DEV_PDB_DECLARE(DEV_POWER_SUPPLY_DESC_BODY)
DEV_PDB_DECLARE(DEV_PART_INFO_BODY)

// Routing switches
DEV_PDB_DECLARE(DEV_ROUTING_GLOBAL_INFO)
DEV_PDB_DECLARE(DEV_ROUTING_GLOBAL_INFO_BODY)
DEV_PDB_DECLARE(DEV_ROUTING_SWITCH_DESC)
DEV_PDB_DECLARE(DEV_ROUTING_SWITCH_DESC_BODY)
DEV_PDB_DECLARE(DEV_PASS_TREE_DESC)
DEV_PDB_DECLARE(DEV_PASS_TREE_DESC_BODY)
DEV_PDB_DECLARE(DEV_ROUTING_SWITCH_INFO_BODY)

#endif
