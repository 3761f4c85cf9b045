// DEV_LOCATION: the locations of one device by kind, for code that thinks in location
// enumerators rather than records (placement, floorplan drawing): which kinds the device
// has, the kind a name stands for, and the id of the device's location of a kind.
#ifndef VELCORA_DEV_LOCATION_H
#define VELCORA_DEV_LOCATION_H

#include <string>

#include "dev_export.h"
#include "host/tables/dev_location_enum.h"

class DEV_BASIC_INFO_BODY;

class DEV_EXPORT DEV_LOCATION {
public:
    // Reads `info`, which must outlive this object.
    explicit DEV_LOCATION(const DEV_BASIC_INFO_BODY& info) : m_info(info) {}

    // The kind `name` stands for: a name or alternative name of one of the device's
    // locations, else the host's name of a location kind; DEV_LOCATION_INVALID for neither.
    DEV_LOCATION_ENUM get_by_string(const std::string& name) const;
    // True when the device has a location of kind `location` (never for the invalid or
    // generic kind).
    bool location_exists(DEV_LOCATION_ENUM location) const;
    // The id of the device's location of kind `location` (the last one added of that kind);
    // -1 when the device has none.
    int operator[](DEV_LOCATION_ENUM location) const;

private:
    const DEV_BASIC_INFO_BODY& m_info;
};

#endif
