// Equality of the catalogue records: every stored field compared, in stored order.
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "dev_device_desc.h"
#include "dev_family_desc.h"
#include "dev_part_desc.h"

namespace {

// Appends an unambiguous byte image of each visited field to one string.
struct FIELD_IMAGE {
    std::string bytes;

    template <typename T>
    void raw(const T& value) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    template <typename T>
    typename std::enable_if<std::is_arithmetic<T>::value || std::is_enum<T>::value>::type
    operator()(const char*, const T& value) { raw(value); }
    void operator()(const char*, const std::string& value) {
        raw(value.size());
        bytes += value;
    }
    void operator()(const char*, const std::vector<int32_t>& value) {
        raw(value.size());
        for (int32_t v : value) raw(v);
    }
    template <typename E, unsigned BITS>
    void operator()(const char*, const DEV_ENUM_FLAG<E, BITS>& flag) {
        for (unsigned i = 0; i < flag.word_count(); ++i) raw(flag.get_word(i));
    }
};

template <typename DESC>
std::string image_of(const DESC& desc) {
    FIELD_IMAGE image;
    const_cast<DESC&>(desc).visit_fields(image);
    return image.bytes;
}

}  // namespace

bool DEV_FAMILY_DESC::operator==(const DEV_FAMILY_DESC& o) const { return image_of(*this) == image_of(o); }
bool DEV_DEVICE_DESC::operator==(const DEV_DEVICE_DESC& o) const { return image_of(*this) == image_of(o); }
bool DEV_PART_DESC::operator==(const DEV_PART_DESC& o) const { return image_of(*this) == image_of(o); }
