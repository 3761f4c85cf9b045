// The key tables of the family-info text, expanded from the records' field lists.
#include "dev_family_info_keys.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace {

// One key row per field that a key line sets (TEXT other than NONE).
#define DEV_FI_FIELD_TYPE(FIELD) std::decay_t<decltype(std::declval<D>().get_##FIELD())>
#define DEV_FI_NUMBER(KIND, NAME, KEY, VALUES)                                                     \
    {KEY, KIND, VALUES, [](const D& d) { return static_cast<int>(d.get_##NAME()); },             \
     [](D& d, int v) { d.set_##NAME(static_cast<DEV_FI_FIELD_TYPE(NAME)>(v)); }, nullptr, nullptr, nullptr},
#define DEV_FI_TEXT(KIND, NAME, KEY, VALUES)                                                       \
    {KEY, KIND, VALUES, nullptr, nullptr, nullptr,                                                 \
     [](const D& d) -> const std::string& { return d.get_##NAME(); },                             \
     [](D& d, const std::string& v) { d.set_##NAME(v); }},
#define DEV_FI_ROW_NONE(NAME, KEY, VALUES)
#define DEV_FI_ROW_ENUM(NAME, KEY, VALUES) DEV_FI_NUMBER(DEV_FI_ENUM, NAME, KEY, VALUES)
#define DEV_FI_ROW_INT(NAME, KEY, VALUES) DEV_FI_NUMBER(DEV_FI_INT, NAME, KEY, VALUES)
#define DEV_FI_ROW_STRING(NAME, KEY, VALUES) DEV_FI_TEXT(DEV_FI_STRING, NAME, KEY, VALUES)
#define DEV_FI_ROW_LIST(NAME, KEY, VALUES) DEV_FI_TEXT(DEV_FI_LIST, NAME, KEY, VALUES)
#define DEV_FI_ROW_TRAIT(NAME, KEY, VALUES)                                                                  \
    {KEY, DEV_FI_TRAIT, VALUES, nullptr,                                                                     \
     [](D& d, int v) { d.traits().set(static_cast<DEV_FI_FIELD_TYPE(NAME)::value_type>(v)); },              \
     [](const D& d, int v) { return d.get_##NAME().test(static_cast<DEV_FI_FIELD_TYPE(NAME)::value_type>(v)); }, \
     nullptr, nullptr},
#define DEV_FI_ROW(TYPE, NAME, INIT, TEXT, KEY, VALUES) DEV_FI_ROW_##TEXT(NAME, KEY, VALUES)

// The rows in parser order: reverse alphabetical order of the keys.
template <typename DESC>
DEV_FAMILY_INFO_KEY_TABLE<DESC> parser_order(std::vector<DEV_FAMILY_INFO_KEY<DESC>> keys, const char* record_kind) {
    std::sort(keys.begin(), keys.end(), [](const DEV_FAMILY_INFO_KEY<DESC>& a, const DEV_FAMILY_INFO_KEY<DESC>& b) {
        return std::strcmp(a.key, b.key) > 0;
    });
    return DEV_FAMILY_INFO_KEY_TABLE<DESC>{std::move(keys), record_kind};
}

}  // namespace

const DEV_FAMILY_INFO_KEY_TABLE<DEV_FAMILY_DESC>& dev_family_info_keys(const DEV_FAMILY_DESC*) {
    typedef DEV_FAMILY_DESC D;
    static const DEV_FAMILY_INFO_KEY_TABLE<D> table = parser_order<D>({DEV_FAMILY_DESC_FIELD_LIST(DEV_FI_ROW)}, "family");
    return table;
}

const DEV_FAMILY_INFO_KEY_TABLE<DEV_DEVICE_DESC>& dev_family_info_keys(const DEV_DEVICE_DESC*) {
    typedef DEV_DEVICE_DESC D;
    static const DEV_FAMILY_INFO_KEY_TABLE<D> table = parser_order<D>({DEV_DEVICE_DESC_FIELD_LIST(DEV_FI_ROW)}, "device");
    return table;
}

const DEV_FAMILY_INFO_KEY_TABLE<DEV_PART_DESC>& dev_family_info_keys(const DEV_PART_DESC*) {
    typedef DEV_PART_DESC D;
    static const DEV_FAMILY_INFO_KEY_TABLE<D> table = parser_order<D>({DEV_PART_DESC_FIELD_LIST(DEV_FI_ROW)}, "part");
    return table;
}
