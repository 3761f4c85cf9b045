// DEV_BASIC_INFO: the basic info of one device (its global attributes, locations, element
// types and ports), a handle over its owned body DEV_BASIC_INFO_BODY. Reads forward to the
// body; writing is done on the body (get_body()).
#ifndef VELCORA_DEV_BASIC_INFO_H
#define VELCORA_DEV_BASIC_INFO_H

#include "dev_basic_info_body.h"
#include "dev_export.h"
#include "dev_handle.h"

class DEV_EXPORT DEV_BASIC_INFO : public DEV_HANDLE<DEV_BASIC_INFO_BODY> {
public:
    typedef DEV_BASIC_INFO_BODY BODY;

    // Takes ownership of `body`; a null body is reported ("body != 0") but the handle is built.
    explicit DEV_BASIC_INFO(DEV_BASIC_INFO_BODY* body) : DEV_HANDLE(body) {}

    // Loads the device's basic info: the "hdr" file of the device (of the family for the
    // generic device) that DEV_PATH finds, the enumerators being the body's ENUM keys 0
    // and 1. A persistent file replaces the body; a text file is read into it. A missing
    // file is the internal error "BASIC_INFO's HDR file <path> not installed". True when
    // the basic info has a body afterwards.
    bool load_data();
    // The file the last load_data read (empty when it found none).
    const FIO_PATH& get_loaded_path() const { return m_loaded_path; }

    // ENUM keys 0, 1 and 2: the device, family and part the data belong to (the invalid
    // enumerator, after the missing-body report, without a body).
    DEV_DEVICE_ENUM get_device_enum() const;
    DEV_FAMILY_ENUM get_family_enum() const;
    DEV_PART_ENUM get_part_enum() const;

    DEV_LOCATION_DESC* get_location_by_enum(DEV_LOCATION_ENUM location) const {
        return forward(&BODY::get_location_by_enum, location);
    }
    DEV_ELEMENT_DESC* get_element_by_enum(DEV_ELEMENT_ENUM element) const {
        return forward(&BODY::get_element_by_enum, element);
    }
    DEV_ELEMENT_DESC* get_element_by_cdb_re_type(CDB_RE_TYPE re) const {
        return forward(&BODY::get_element_by_cdb_re_type, re);
    }
    DEV_LOCATION_DESC* get_location_by_id(int id) const { return forward(&BODY::get_location_by_id, id); }
    DEV_ELEMENT_DESC* get_element_by_id(int id) const { return forward(&BODY::get_element_by_id, id); }
    DEV_LOCATION_DESC* get_location_by_string(const std::string& name) const {
        return forward(&BODY::get_location_by_string, name);
    }
    DEV_PORT_DESC* get_port_by_string(const std::string& name) const { return forward(&BODY::get_port_by_string, name); }
    DEV_ELEMENT_DESC* get_element_by_string(const std::string& name) const {
        return forward(&BODY::get_element_by_string, name);
    }
    const std::vector<DEV_LOCATION_ENUM>& get_location_enums() const { return forward(&BODY::get_location_enums); }
    const std::vector<DEV_ELEMENT_ENUM>& get_element_enums() const { return forward(&BODY::get_element_enums); }
    const std::vector<DEV_LOCATION_DESC*>& get_location_descs() const { return forward(&BODY::get_location_descs); }
    const std::vector<DEV_ELEMENT_DESC*>& get_element_descs() const { return forward(&BODY::get_element_descs); }
    const std::vector<DEV_PORT_DESC*>& get_port_descs() const { return forward(&BODY::get_port_descs); }
    const DEV_PORT_TABLE::BY_NAME& get_port_hash() const { return forward(&BODY::get_port_hash); }
    int get_total_locations() const { return forward(&BODY::get_total_locations); }
    bool is_initialized() const { return forward(&BODY::is_initialized); }

private:
    FIO_PATH m_loaded_path;
};

#endif
