// DEV_PAD_INFO: one device's pads, I/O standard descriptors and I/O rules, a handle over
// DEV_PAD_INFO_BODY. Reads forward to the body; writing is done on the body (get_body()).
#ifndef VELCORA_DEV_PAD_INFO_H
#define VELCORA_DEV_PAD_INFO_H

#include "dev_export.h"
#include "dev_handle.h"
#include "dev_pad_info_body.h"
#include "host/dstr_fwd.h"

class DEV_EXPORT DEV_PAD_INFO : public DEV_HANDLE<DEV_PAD_INFO_BODY> {
public:
    typedef DEV_PAD_INFO_BODY BODY;
    explicit DEV_PAD_INFO(DEV_PAD_INFO_BODY* body) : DEV_HANDLE(body) {}

    // Loads the pads of the device: the "pad" file that DEV_PATH finds for the part (for
    // DEV_PART_INVALID, for the device of the body's device). A persistent file replaces
    // the body (the device pointer carried over); a text file is read into it. A missing
    // file is the internal error "PAD file <path> not installed". True when a body exists
    // afterwards.
    bool load_data(DEV_PART_ENUM part);
    // Loads the persistent file `path`, or, with "dev_load_pad_info_from_ascii" on, the
    // text beside it (same path, extension "pad") into the body.
    bool load_data(const FIO_PATH& path);

    uint32_t get_number_of_pads() const { return forward(&BODY::get_number_of_pads); }
    DEV_PAD* get_pad(uint32_t pad_id) const { return forward(&BODY::get_pad, pad_id); }
    DEV_PAD* get_pad_by_global_id(uint32_t gid) const { return forward(&BODY::get_pad_by_global_id, gid); }
    uint32_t get_pad_id_by_global_id(uint32_t gid) const {
        return forward_or(DEV_ILLEGAL_PAD_ID, &BODY::get_pad_id_by_global_id, gid);
    }
    const std::vector<DEV_IO_STANDARD_DESC*>& get_io_standard_descs() const {
        return forward(&BODY::get_io_standard_descs);
    }
    const std::vector<DEV_IO_STANDARD_ENUM>& get_io_standard_enums() const {
        return forward(&BODY::get_io_standard_enums);
    }
    DEV_IO_STANDARD_ENUM get_default_io_standard_enum() const {
        return forward(&BODY::get_default_io_standard_enum);
    }
    DEV_IO_STANDARD_DESC* get_default_desc_for_io_standard(DEV_IO_STANDARD_ENUM io_std_enum) const {
        return forward(&BODY::get_default_desc_for_io_standard, io_std_enum);
    }
    const std::vector<DEV_IO_RULE*>& get_io_rules() const { return forward(&BODY::get_io_rules); }
};

#endif
