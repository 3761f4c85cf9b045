// The HDR text format of a device's basic info: DEV_HDR_PARSER reads a file (and its
// includes, paths taken as written) into a DEV_BASIC_INFO_BODY; DEV_HDR_WRITER writes the
// ASCII dump that the parser reads back.
//
// A file holds the basic info's attribute lines, location, port and element blocks closed by
// "end", include lines, comment and blank lines. Blocks do not nest: a block opened inside
// another is an error and opens all the same, and the lines that follow go to the open block
// of highest precedence (location, port, element). Each file read keeps its own block state.
#ifndef VELCORA_DEV_HDR_PARSER_H
#define VELCORA_DEV_HDR_PARSER_H

#include <string>

#include "dev_attribute_io.h"
#include "dev_basic_info_body.h"
#include "dev_text_reader.h"
#include "dev_utility.h"

class DEV_HDR_PARSER {
public:
    explicit DEV_HDR_PARSER(DEV_BASIC_INFO_BODY* basic_info);
    // Reads one file and its includes; false when the file could not be read.
    bool read(const FIO_PATH& path);

private:
    struct BLOCKS {
        bool in_location = false, in_port = false, in_element = false;
        DEV_LOCATION_DESC* location = nullptr;
        DEV_PORT_DESC* port = nullptr;
        DEV_ELEMENT_DESC* element = nullptr;
    };

    bool read_file(const FIO_PATH& path);
    void read_line(BLOCKS& blocks, std::string& line);
    // Opens a block if the line is a block opener; true when it was.
    bool open_block(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    // One method per block state; each answers for every line it is given.
    void read_location_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void read_port_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void read_element_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void read_global_line(const std::string& line);
    // "LOCATIONS = ..." or "PORTS = ..." of an element.
    void read_element_list(DEV_ELEMENT_DESC_BODY& element, bool locations, DEV_REGEXP& pattern,
                           const std::string& line);

    // Reads an attribute line of KEY's kind into the record: NO_MATCH, or the value stored
    // (STORED, with the key in *key) or reported (ERROR).
    template <typename KEY, typename RECORD>
    DEV_ATTRIBUTE_STATUS read_attribute(const std::string& line, RECORD& record, KEY* key = nullptr);
    bool is_end(const DEV_WORD& word, const std::string& line);
    bool is_blank_or_comment(const std::string& line);
    void syntax_error(const std::string& line);

    DEV_BASIC_INFO_BODY* m_basic_info;
    DEV_TEXT_READER m_text;
    DEV_ATTRIBUTE_SYNTAX m_syntax;
    DEV_REGEXP m_include, m_location, m_port, m_element, m_end, m_locations, m_ports, m_comment, m_blank;
};

class DEV_HDR_WRITER {
public:
    explicit DEV_HDR_WRITER(const DEV_BASIC_INFO_BODY& basic_info) : m_basic_info(basic_info) {}
    bool write(const FIO_PATH& path, int compression_level);

private:
    const DEV_BASIC_INFO_BODY& m_basic_info;
};

#endif
