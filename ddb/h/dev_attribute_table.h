// Typed attribute tables: the per-kind value arrays (BOOL, INT, ENUM, STRING, 2D_INT,
// VEC_INT, VEC_DOUBLE, VEC_STRING) that every data record keeps, indexed by the record's
// key enumeration DEV_<R>_<K>_DATA_ENUM, each with one validity bit per key.
//
// A record declares its kinds by naming its key enumerations:
//   class DEV_IO_RULE_BODY : public DEV_ATTRIBUTE_TABLE<DEV_IO_RULE_BOOL_DATA_ENUM,
//       DEV_IO_RULE_INT_DATA_ENUM, DEV_IO_RULE_STRING_DATA_ENUM> { ... };
// and gets, per kind k, set_<k>_data, is_valid_<k>_enum, get_<k>_data (reporting and
// non-reporting forms) and the members m_<k>_data / m_<k>_enum_is_valid. Wrapping a key
// enumeration in DEV_SET_ONCE<...> makes its setter report a second setting of a key.
// All report texts name the record's own bound; they come from ASTR_KEY_TRAITS.
#ifndef VELCORA_DEV_ATTRIBUTE_TABLE_H
#define VELCORA_DEV_ATTRIBUTE_TABLE_H

#include "dev_export.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dev_utility.h"
#include "host/astr.h"
#include "host/vtl_bool_vector.h"

// Reports a broken precondition of an attribute table (the reports name the table's source
// unit, ddb/dev/dev_attribute_table, whichever record's table reported).
DEV_EXPORT void dev_attribute_report(const char* text);
// Reports `text` unless `condition` holds; answers the condition.
inline bool dev_attribute_check(bool condition, const char* text) {
    if (!condition) dev_attribute_report(text);
    return condition;
}

typedef std::vector<int> DEV_INT_VECTOR;
typedef std::vector<double> DEV_DOUBLE_VECTOR;
typedef std::vector<std::string> DEV_STRING_VECTOR;

// Range checks of one key enumeration. Keys compare unsigned, so negative keys are out.
template <typename KEY>
struct DEV_ATTRIBUTE_KEY {
    typedef ASTR_KEY_TRAITS<KEY> TRAITS;
    static_assert(TRAITS::is_key, "not an attribute key enumeration");
    static constexpr int MAX = TRAITS::MAX;
    static bool in_range(int key) { return static_cast<unsigned>(key) < static_cast<unsigned>(MAX); }
    // Reports "key >= 0 && key < DEV_<R>_<K>_DATA_MAX" for a key out of range.
    static bool check_range(int key) {
        return dev_attribute_check(in_range(key), TRAITS::range_text);
    }
};

// The default of a slot: what an unset key holds and what a bad read returns.
template <typename VALUE>
const VALUE& dev_attribute_default() {
    static const VALUE value{};
    return value;
}

// Slot access, the same for bit vectors and value vectors.
inline bool dev_attribute_slot(const VTL_BOOL_VECTOR& slots, int key) { return slots.get_value(key); }
inline void dev_attribute_store(VTL_BOOL_VECTOR& slots, int key, bool value) { slots.set_value(key, value); }
template <typename VALUE>
const VALUE& dev_attribute_slot(const std::vector<VALUE>& slots, int key) { return slots[key]; }
template <typename VALUE, typename V>
void dev_attribute_store(std::vector<VALUE>& slots, int key, V&& value) { slots[key] = std::forward<V>(value); }

// Generic access to one kind, dispatching to the record's own named members (so a record
// that redefines, say, get_bool_data is served by its own version).
template <ASTR_KIND KIND>
struct DEV_ATTRIBUTE_ACCESS;

// Defines the kind table CLASS<KEY, SET_ONCE> and DEV_ATTRIBUTE_ACCESS<KIND>. VALUE is
// the stored type, RESULT what the reporting getter returns, STORE the value array.
#define DEV_ATTRIBUTE_KIND(CLASS, KIND, k, VALUE, RESULT, STORE)                                 \
    template <typename KEY, bool SET_ONCE = false>                                               \
    class CLASS {                                                                                \
        typedef DEV_ATTRIBUTE_KEY<KEY> KEYS;                                                     \
                                                                                                 \
    public:                                                                                      \
        CLASS() : m_##k##_data(KEYS::MAX), m_##k##_enum_is_valid(KEYS::MAX) {}                   \
                                                                                                 \
        void set_##k##_data(KEY key, const VALUE& value) { store(key, value); }                  \
        void set_##k##_data(KEY key, VALUE&& value) { store(key, std::move(value)); }            \
        bool is_valid_##k##_enum(KEY key) const {                                                \
            return KEYS::in_range(key) && m_##k##_enum_is_valid.get_value(key);                  \
        }                                                                                        \
        RESULT get_##k##_data(KEY key) const {                                                   \
            if (!KEYS::check_range(key)) return dev_attribute_default<VALUE>();                  \
            dev_attribute_check(this->is_valid_##k##_enum(key), "this->is_valid_" #k "_enum(key)"); \
            return dev_attribute_slot(m_##k##_data, key);                                        \
        }                                                                                        \
        bool get_##k##_data(KEY key, VALUE* value) const {                                       \
            if (!is_valid_##k##_enum(key) || !value) return false;                               \
            *value = dev_attribute_slot(m_##k##_data, key);                                      \
            return true;                                                                         \
        }                                                                                        \
        /* Same values and validity bits. */                                                    \
        bool attributes_equal_##k(const CLASS& other) const {                                    \
            return m_##k##_enum_is_valid == other.m_##k##_enum_is_valid && m_##k##_data == other.m_##k##_data; \
        }                                                                                        \
        /* Both arrays hold one slot per key (a table read from a file may not). */            \
        bool attributes_sized_##k() const {                                                      \
            return m_##k##_data.size() == static_cast<size_t>(KEYS::MAX) &&                      \
                   m_##k##_enum_is_valid.size() == static_cast<size_t>(KEYS::MAX);               \
        }                                                                                        \
                                                                                                 \
    protected:                                                                                   \
        STORE m_##k##_data;                                                                      \
        VTL_BOOL_VECTOR m_##k##_enum_is_valid;                                                   \
                                                                                                 \
    private:                                                                                     \
        template <typename V>                                                                    \
        void store(KEY key, V&& value) {                                                         \
            if (!KEYS::check_range(key)) return;                                                 \
            if (SET_ONCE)                                                                        \
                dev_attribute_check(!this->m_##k##_enum_is_valid.get_value(key),                 \
                                    "!this->m_" #k "_enum_is_valid.get_value(key)");             \
            dev_attribute_store(m_##k##_data, key, std::forward<V>(value));                      \
            m_##k##_enum_is_valid.set_value(key, true);                                          \
        }                                                                                        \
    };                                                                                           \
                                                                                                 \
    template <>                                                                                  \
    struct DEV_ATTRIBUTE_ACCESS<KIND> {                                                          \
        typedef VALUE value_type;                                                                \
        template <typename RECORD>                                                               \
        static bool equal(const RECORD& a, const RECORD& b) {                                    \
            return a.attributes_equal_##k(b);                                                    \
        }                                                                                        \
        template <typename RECORD>                                                               \
        static bool sized(const RECORD& record) {                                                \
            return record.attributes_sized_##k();                                                \
        }                                                                                        \
        template <typename RECORD, typename KEY>                                                 \
        static bool is_valid(const RECORD& record, KEY key) {                                    \
            return record.is_valid_##k##_enum(key);                                              \
        }                                                                                        \
        template <typename RECORD, typename KEY>                                                 \
        static RESULT get(const RECORD& record, KEY key) {                                       \
            return record.get_##k##_data(key);                                                   \
        }                                                                                        \
        template <typename RECORD, typename KEY>                                                 \
        static bool get_into(const RECORD& record, KEY key, VALUE* value) {                      \
            return record.get_##k##_data(key, value);                                            \
        }                                                                                        \
        template <typename RECORD, typename KEY, typename V>                                     \
        static void set(RECORD& record, KEY key, V&& value) {                                    \
            record.set_##k##_data(key, std::forward<V>(value));                                  \
        }                                                                                        \
    };

DEV_ATTRIBUTE_KIND(DEV_BOOL_ATTRIBUTES, ASTR_KIND_BOOL, bool, bool, bool, VTL_BOOL_VECTOR)
DEV_ATTRIBUTE_KIND(DEV_INT_ATTRIBUTES, ASTR_KIND_INT, int, int, int, std::vector<int>)
DEV_ATTRIBUTE_KIND(DEV_ENUM_ATTRIBUTES, ASTR_KIND_ENUM, enum, int, int, std::vector<int>)
DEV_ATTRIBUTE_KIND(DEV_STRING_ATTRIBUTES, ASTR_KIND_STRING, string, std::string, const std::string&,
                   std::vector<std::string>)
DEV_ATTRIBUTE_KIND(DEV_2D_INT_BASE_ATTRIBUTES, ASTR_KIND_2D_INT, 2d_int, DEV_2D_INT_ARRAY,
                   const DEV_2D_INT_ARRAY&, std::vector<DEV_2D_INT_ARRAY>)
DEV_ATTRIBUTE_KIND(DEV_VEC_INT_ATTRIBUTES, ASTR_KIND_VEC_INT, vec_int, DEV_INT_VECTOR,
                   const DEV_INT_VECTOR&, std::vector<DEV_INT_VECTOR>)
DEV_ATTRIBUTE_KIND(DEV_VEC_DOUBLE_ATTRIBUTES, ASTR_KIND_VEC_DOUBLE, vec_double, DEV_DOUBLE_VECTOR,
                   const DEV_DOUBLE_VECTOR&, std::vector<DEV_DOUBLE_VECTOR>)
DEV_ATTRIBUTE_KIND(DEV_VEC_STRING_ATTRIBUTES, ASTR_KIND_VEC_STRING, vec_string, DEV_STRING_VECTOR,
                   const DEV_STRING_VECTOR&, std::vector<DEV_STRING_VECTOR>)
#undef DEV_ATTRIBUTE_KIND

// Reports a read of a key that the record does not define, for records whose getters name
// the key ("Key not defined in data file: " followed by the key's name).
DEV_EXPORT void dev_report_key_not_defined(const char* key_name);

// The read of a record whose getters report a missing key by its name: the range check of
// the key's table, then `value` when `defined`, else the report and the kind's default.
// (bool and int come back by value, the others by reference into the record).
template <typename VALUE>
using DEV_ATTRIBUTE_RESULT = std::conditional_t<std::is_arithmetic<VALUE>::value, VALUE, const VALUE&>;
template <typename KEY, typename VALUE>
DEV_ATTRIBUTE_RESULT<VALUE> dev_attribute_defined_value(KEY key, bool defined, const VALUE& value) {
    if (!DEV_ATTRIBUTE_KEY<KEY>::check_range(key)) return dev_attribute_default<VALUE>();
    if (defined) return value;
    dev_report_key_not_defined(ASTR_KEY_TRAITS<KEY>::table().debug_string(key));
    return dev_attribute_default<VALUE>();
}

// What a read of KEY's kind returns.
template <typename KEY>
using DEV_ATTRIBUTE_KEY_RESULT =
    DEV_ATTRIBUTE_RESULT<typename DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<KEY>::kind>::value_type>;

// Reports a 2D text that does not parse ("Invalid string for DEV_2D_INT_ARRAY: %s").
DEV_EXPORT void dev_report_invalid_2d_int_string(const std::string& text);

// The 2D kind adds the setter from text.
template <typename KEY, bool SET_ONCE = false>
class DEV_2D_INT_ATTRIBUTES : public DEV_2D_INT_BASE_ATTRIBUTES<KEY, SET_ONCE> {
public:
    // Parses `text` as a 2D array ({{1, 2}, {3}}, symbolic names of the key allowed); on
    // success stores it and sets the key's bit, else reports and leaves the slot alone.
    bool set_2d_int_data_from_string(KEY key, const std::string& text) {
        DEV_2D_INT_ARRAY value;
        if (!dev_string_to_2d_int(ASTR_KEY_TRAITS<KEY>::table(), key, text, &value)) {
            dev_report_invalid_2d_int_string(text);
            return false;
        }
        this->set_2d_int_data(key, value);
        return true;
    }
};

// The kind table class of each kind.
template <ASTR_KIND KIND, typename KEY, bool SET_ONCE>
struct DEV_ATTRIBUTE_KIND_CLASS;
#define DEV_ATTRIBUTE_KIND_CLASS_OF(KIND, CLASS)               \
    template <typename KEY, bool SET_ONCE>                     \
    struct DEV_ATTRIBUTE_KIND_CLASS<KIND, KEY, SET_ONCE> {     \
        typedef CLASS<KEY, SET_ONCE> type;                     \
    };
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_BOOL, DEV_BOOL_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_INT, DEV_INT_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_ENUM, DEV_ENUM_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_STRING, DEV_STRING_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_2D_INT, DEV_2D_INT_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_VEC_INT, DEV_VEC_INT_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_VEC_DOUBLE, DEV_VEC_DOUBLE_ATTRIBUTES)
DEV_ATTRIBUTE_KIND_CLASS_OF(ASTR_KIND_VEC_STRING, DEV_VEC_STRING_ATTRIBUTES)
#undef DEV_ATTRIBUTE_KIND_CLASS_OF

// Marks a key enumeration whose keys may be set only once.
template <typename KEY>
struct DEV_SET_ONCE {};

template <typename KEY>
struct DEV_ATTRIBUTE_KEY_OF {
    typedef KEY key;
    static constexpr bool set_once = false;
};
template <typename KEY>
struct DEV_ATTRIBUTE_KEY_OF<DEV_SET_ONCE<KEY>> {
    typedef KEY key;
    static constexpr bool set_once = true;
};

// The table of one declared key enumeration (possibly wrapped in DEV_SET_ONCE).
template <typename DECL>
using DEV_ATTRIBUTE_KIND_TABLE = typename DEV_ATTRIBUTE_KIND_CLASS<
    ASTR_KEY_TRAITS<typename DEV_ATTRIBUTE_KEY_OF<DECL>::key>::kind,
    typename DEV_ATTRIBUTE_KEY_OF<DECL>::key, DEV_ATTRIBUTE_KEY_OF<DECL>::set_once>::type;

// The key enumerations of a record, in declaration order.
template <typename... KEYS>
struct DEV_ATTRIBUTE_KEY_LIST {};

template <typename... KEYS>
constexpr bool dev_attribute_kinds_in_order() {
    const int kinds[] = {-1, ASTR_KEY_TRAITS<KEYS>::kind...};
    for (size_t i = 1; i < sizeof(kinds) / sizeof(kinds[0]); ++i)
        if (kinds[i] <= kinds[i - 1]) return false;
    return true;
}

// A record's attribute tables: one kind table per declared key enumeration. The kinds
// are declared in dump order (BOOL, INT, ENUM, STRING, 2D_INT, VEC_INT, VEC_DOUBLE,
// VEC_STRING), each at most once.
template <typename... DECLS>
class DEV_ATTRIBUTE_TABLE : public DEV_ATTRIBUTE_KIND_TABLE<DECLS>... {
    static_assert(dev_attribute_kinds_in_order<typename DEV_ATTRIBUTE_KEY_OF<DECLS>::key...>(),
                  "declare the key enumerations once per kind, in dump order");

public:
    typedef DEV_ATTRIBUTE_KEY_LIST<typename DEV_ATTRIBUTE_KEY_OF<DECLS>::key...> attribute_keys;

    // Same values and validity bits in every kind.
    bool attributes_equal(const DEV_ATTRIBUTE_TABLE& other) const {
        return (DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<typename DEV_ATTRIBUTE_KEY_OF<DECLS>::key>::kind>::equal(
                    static_cast<const DEV_ATTRIBUTE_KIND_TABLE<DECLS>&>(*this),
                    static_cast<const DEV_ATTRIBUTE_KIND_TABLE<DECLS>&>(other)) &&
                ...);
    }
    // Every kind's arrays hold one slot per key (checked after a persistent read).
    bool attributes_sized() const {
        return (DEV_ATTRIBUTE_ACCESS<ASTR_KEY_TRAITS<typename DEV_ATTRIBUTE_KEY_OF<DECLS>::key>::kind>::sized(
                    static_cast<const DEV_ATTRIBUTE_KIND_TABLE<DECLS>&>(*this)) &&
                ...);
    }
};

#endif
