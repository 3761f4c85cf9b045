// DEV_LOCATION: location kinds of a device over its basic info's indexes.
#include "dev_location.h"

#include "dev_basic_info_body.h"
#include "dev_location_desc.h"
#include "host/dstr.h"

DEV_LOCATION_ENUM DEV_LOCATION::get_by_string(const std::string& name) const {
    if (const DEV_LOCATION_DESC* location = m_info.get_location_by_string(name)) return location->get_location_enum();
    const DEV_LOCATION_ENUM kind = dstr_get_dev_location_enum_by_string(name);
    return kind == DEV_LOCATION_GENERIC ? DEV_LOCATION_INVALID : kind;
}

bool DEV_LOCATION::location_exists(DEV_LOCATION_ENUM location) const { return (*this)[location] >= 0; }

int DEV_LOCATION::operator[](DEV_LOCATION_ENUM location) const {
    // The by-enumerator look-up reports a kind out of range; this question has a plain answer.
    if (location <= DEV_LOCATION_INVALID || location >= DEV_LOCATION_GENERIC) return -1;
    const DEV_LOCATION_DESC* record = m_info.get_location_by_enum(location);
    return record ? record->get_id() : -1;
}
