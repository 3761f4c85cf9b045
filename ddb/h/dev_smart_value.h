// Single-value holders stored by the persistent store: a 32-bit integer, a 64-bit integer,
// a boolean or a string, each kept as its one field `m_value`.
#ifndef VELCORA_DEV_SMART_VALUE_H
#define VELCORA_DEV_SMART_VALUE_H

#include "dev_export.h"

#include <cstdint>
#include <string>

struct PDB_MATCH_DATA;

class DEV_EXPORT DEV_SMART_VALUE {
public:
    virtual ~DEV_SMART_VALUE() = default;
};

template <typename T>
class DEV_TYPED_SMART_VALUE : public DEV_SMART_VALUE {
public:
    DEV_TYPED_SMART_VALUE() : m_value() {}
    explicit DEV_TYPED_SMART_VALUE(const T& value) : m_value(value) {}
    const T& get_value() const { return m_value; }
    void set_value(const T& value) { m_value = value; }
    bool operator==(const DEV_TYPED_SMART_VALUE& other) const { return m_value == other.m_value; }
    bool operator!=(const DEV_TYPED_SMART_VALUE& other) const { return !(*this == other); }

    T m_value;
};

#define DEV_SMART_VALUE_CLASS(CLASS, TYPE)                                    \
    class DEV_EXPORT CLASS : public DEV_TYPED_SMART_VALUE<TYPE> {                      \
    public:                                                                   \
        using DEV_TYPED_SMART_VALUE<TYPE>::DEV_TYPED_SMART_VALUE;             \
        static bool is_auto_match_pdb_xfr(CLASS* object, PDB_MATCH_DATA* data); \
    };

DEV_SMART_VALUE_CLASS(DEV_INT_VALUE, int32_t)
DEV_SMART_VALUE_CLASS(DEV_QWORD_VALUE, int64_t)
DEV_SMART_VALUE_CLASS(DEV_BOOL_VALUE, bool)
DEV_SMART_VALUE_CLASS(DEV_STRING_VALUE, std::string)

#undef DEV_SMART_VALUE_CLASS

#endif
