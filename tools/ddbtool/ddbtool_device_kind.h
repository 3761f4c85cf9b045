// The kinds of device data that `ddbtool device` and `ddbtool check` handle. A kind is a
// text format with its persistent form: its type word ("hdr") is the text file's extension,
// and its persistent files end in "_<type>.ddb". Each kind lives in a file of its own
// (ddbtool_kind_<type>.cpp) and is one entry of the table in ddbtool_device.cpp.
#ifndef VELCORA_TOOLS_DDBTOOL_DEVICE_KIND_H
#define VELCORA_TOOLS_DDBTOOL_DEVICE_KIND_H

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "dev_device.h"
#include "host/dstr_fwd.h"
#include "host/fio.h"

// One object of a kind, read from a file and written in either form.
class DDBTOOL_DEVICE_DATA {
public:
    virtual ~DDBTOOL_DEVICE_DATA() = default;
    // Reads a text file, or a persistent one (extension "ddb"); false when it cannot be read.
    virtual bool read(const FIO_PATH& path) = 0;
    virtual bool write_pdb(const FIO_PATH& path, int compression_level) = 0;
    virtual bool write_dump(const FIO_PATH& path) = 0;
    // Its size in words: "20 locations, 400 elements, 2712 ports".
    virtual std::string counts() const = 0;
};

class DDBTOOL_DEVICE_KIND {
public:
    virtual ~DDBTOOL_DEVICE_KIND() = default;
    virtual const char* type() const = 0;
    virtual const char* description() const = 0;  // "basic info"
    virtual std::unique_ptr<DDBTOOL_DEVICE_DATA> create() const = 0;
    // The file the library loads for the device (and part, when one is given); false with
    // the first candidate when none is installed. A kind whose files are per part answers
    // false with no path for a device alone (DEV_PART_INVALID).
    virtual bool locate(DEV_DEVICE_ENUM device, DEV_PART_ENUM part, FIO_PATH* path) const = 0;
    // The aspect's counts in an opened device; "" when the device does not hold it.
    virtual std::string describe(const DEV_DEVICE& device) const = 0;
};

// The kinds in table order; the kind of a file (by its text extension or "_<type>.ddb"
// ending), or of a type word; null when none fits.
const std::vector<const DDBTOOL_DEVICE_KIND*>& ddbtool_device_kinds();
const DDBTOOL_DEVICE_KIND* ddbtool_device_kind_of(const FIO_PATH& path);
const DDBTOOL_DEVICE_KIND* ddbtool_device_kind_named(const std::string& type);

// Lists the kinds with their descriptions under a heading (for the commands' help).
void ddbtool_print_device_kinds(std::FILE* out);

// The kinds, one function each (ddbtool_kind_<type>.cpp).
const DDBTOOL_DEVICE_KIND& ddbtool_kind_hdr();
const DDBTOOL_DEVICE_KIND& ddbtool_kind_pad();
const DDBTOOL_DEVICE_KIND& ddbtool_kind_pkg();
const DDBTOOL_DEVICE_KIND& ddbtool_kind_part_info();
const DDBTOOL_DEVICE_KIND& ddbtool_kind_rsi();

// `device pins PART [--svg FILE]` (ddbtool_pins.cpp).
int ddbtool_device_pins(const std::vector<std::string>& args);

#endif
