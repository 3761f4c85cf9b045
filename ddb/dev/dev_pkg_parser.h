// The PKG text format of a package's pins: DEV_PKG_PARSER reads a file (and its includes,
// paths taken as written) into a DEV_PKG_INFO_BODY; DEV_PKG_WRITER writes the ASCII dump
// that the parser reads back.
//
// A file holds the package's attribute lines, the pin count (INT_NUM_PINS, which allocates
// the pins), pin blocks closed by "end", include lines, comment and blank lines. A pin block
// is labelled by its pin id; its lines set the pin's keys and pad ids through the package.
#ifndef VELCORA_DEV_PKG_PARSER_H
#define VELCORA_DEV_PKG_PARSER_H

#include <string>

#include "dev_attribute_io.h"
#include "dev_pkg_info_body.h"
#include "dev_text_reader.h"
#include "dev_utility.h"

class DEV_PKG_PARSER {
public:
    explicit DEV_PKG_PARSER(DEV_PKG_INFO_BODY* pkg_info);
    // Reads one file and its includes; false when the file could not be read.
    bool read(const FIO_PATH& path);

private:
    struct BLOCK {
        bool open = false;
        uint32_t pin_id = DEV_ILLEGAL_PIN_ID;
    };

    bool read_file(const FIO_PATH& path);
    void read_line(BLOCK& block, std::string& line);
    void open_pin(BLOCK& block, const std::string& label);
    void read_top_line(const std::string& line);
    void read_pin_line(BLOCK& block, const DEV_WORD& word, const std::string& line);
    void allocate_pins(const std::string& count);

    // Reads a package attribute line of KEY's kind: NO_MATCH, STORED or ERROR (reported).
    template <typename KEY>
    DEV_ATTRIBUTE_STATUS read_attribute(const std::string& line);
    // Reads a pin attribute line of KEY's kind into the pin through the package.
    template <typename KEY>
    DEV_ATTRIBUTE_STATUS read_pin_attribute(uint32_t pin_id, const std::string& line);
    bool is_blank_or_comment(const std::string& line);

    DEV_PKG_INFO_BODY* m_pkg_info;
    DEV_TEXT_READER m_text;
    DEV_ATTRIBUTE_SYNTAX m_syntax;
    int m_max_pins;
    DEV_REGEXP m_include, m_pin, m_end, m_num_pins, m_pad_ids, m_comment, m_blank;
};

class DEV_PKG_WRITER {
public:
    explicit DEV_PKG_WRITER(const DEV_PKG_INFO_BODY& pkg_info) : m_pkg_info(pkg_info) {}
    bool write(const FIO_PATH& path, int compression);

private:
    const DEV_PKG_INFO_BODY& m_pkg_info;
};

#endif
