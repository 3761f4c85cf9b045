// DEV_BASIC_INFO: the basic info of one device (its global attributes; its locations,
// elements and ports come with the HDR reader). A handle over one owned body,
// DEV_BASIC_INFO_BODY (ddb/dev/dev_basic_info_body.h), which holds the typed attribute
// tables of the five kinds BOOL, INT, ENUM, STRING and 2D_INT. Reads forward to the body;
// writing is done on the body (get_body()).
#ifndef VELCORA_DEV_BASIC_INFO_H
#define VELCORA_DEV_BASIC_INFO_H

#include <string>

#include "dev_utility.h"
#include "host/astr.h"
#include "host/dstr.h"

class DEV_BASIC_INFO_BODY;

class DEV_BASIC_INFO {
public:
    // Takes ownership of `body`; a null body is reported ("body != 0") but the handle is built.
    explicit DEV_BASIC_INFO(DEV_BASIC_INFO_BODY* body);
    ~DEV_BASIC_INFO();
    DEV_BASIC_INFO(const DEV_BASIC_INFO&) = delete;
    DEV_BASIC_INFO& operator=(const DEV_BASIC_INFO&) = delete;

    DEV_BASIC_INFO_BODY* get_body() const { return m_body; }
    // Destroys the current body and takes `body` in its place.
    void set_body(DEV_BASIC_INFO_BODY* body);

    // Attribute reads: the reporting getters report an unset key and return the slot; the
    // two-argument forms copy the value of a set key and say whether they did.
    bool is_valid_bool_enum(DEV_BASIC_INFO_BOOL_DATA_ENUM key) const;
    bool get_bool_data(DEV_BASIC_INFO_BOOL_DATA_ENUM key) const;
    bool is_valid_int_enum(DEV_BASIC_INFO_INT_DATA_ENUM key) const;
    int get_int_data(DEV_BASIC_INFO_INT_DATA_ENUM key) const;
    bool get_int_data(DEV_BASIC_INFO_INT_DATA_ENUM key, int* value) const;
    bool is_valid_enum_enum(DEV_BASIC_INFO_ENUM_DATA_ENUM key) const;
    int get_enum_data(DEV_BASIC_INFO_ENUM_DATA_ENUM key) const;
    bool is_valid_string_enum(DEV_BASIC_INFO_STRING_DATA_ENUM key) const;
    const std::string& get_string_data(DEV_BASIC_INFO_STRING_DATA_ENUM key) const;
    bool get_string_data(DEV_BASIC_INFO_STRING_DATA_ENUM key, std::string* value) const;
    bool is_valid_2d_int_enum(DEV_BASIC_INFO_2D_INT_DATA_ENUM key) const;
    const DEV_2D_INT_ARRAY& get_2d_int_data(DEV_BASIC_INFO_2D_INT_DATA_ENUM key) const;

    // ENUM keys 0, 1 and 2: the device, family and part the data belong to.
    DEV_DEVICE_ENUM get_device_enum() const;
    DEV_FAMILY_ENUM get_family_enum() const;
    DEV_PART_ENUM get_part_enum() const;

private:
    DEV_BASIC_INFO_BODY* m_body;
};

#endif
