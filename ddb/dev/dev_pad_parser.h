// The PAD text format of a device's pad info: DEV_PAD_PARSER reads a file (and its includes,
// relative paths taken beside the including file) into a DEV_PAD_INFO_BODY; DEV_PAD_WRITER
// writes the ASCII dump that the parser reads back.
//
// A file holds the pad info's attribute lines, io_standard, io_rule, pad and default_pad
// blocks closed by "end", include lines, comment and blank lines. Blocks do not nest: a block
// opened inside another is an error and replaces it. Each file read keeps its own block
// state. The pad count (INT key 0 at top level) allocates the pads, so pad blocks follow it;
// descriptors are defined before the pads that list them.
#ifndef VELCORA_DEV_PAD_PARSER_H
#define VELCORA_DEV_PAD_PARSER_H

#include <string>

#include "dev_attribute_io.h"
#include "dev_pad_info_body.h"
#include "dev_text_reader.h"
#include "dev_utility.h"

class DEV_PAD_PARSER {
public:
    explicit DEV_PAD_PARSER(DEV_PAD_INFO_BODY* pad_info);
    // Reads one file and its includes; false when the file could not be read.
    bool read(const FIO_PATH& path);

private:
    enum BLOCK { NO_BLOCK, PAD_BLOCK, IO_STANDARD_BLOCK, IO_RULE_BLOCK };
    struct BLOCKS {
        BLOCK open = NO_BLOCK;
        DEV_PAD_BODY* pad = nullptr;          // the default pad in a default_pad block
        uint32_t pad_id = DEV_ILLEGAL_PAD_ID;  // a real pad's id
        DEV_IO_STANDARD_DESC_BODY* io_standard = nullptr;
        DEV_IO_RULE_BODY* io_rule = nullptr;
    };

    bool read_file(const FIO_PATH& path);
    void read_line(BLOCKS& blocks, std::string& line);
    bool open_block(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void select_pad(BLOCKS& blocks, const std::string& label);
    void read_top_line(const DEV_WORD& word, const std::string& line);
    void read_pad_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void read_io_standard_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void read_io_rule_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    void allocate_pads(int count);
    void add_pad_names(uint32_t pad_id, const std::string& names);
    // "Invalid current value: <text>" unless the text is a strength (an integer or a name).
    bool parse_current(const std::string& text, DEV_CURRENT_STRENGTH_ENUM* current);

    // Reads an attribute line of KEY's kind into the record: NO_MATCH, or the value stored
    // (STORED, with the key in *key) or reported (ERROR).
    template <typename KEY, typename RECORD>
    DEV_ATTRIBUTE_STATUS read_attribute(const std::string& line, RECORD& record, KEY* key = nullptr);
    // Closes the block at "end", ignores blank and comment lines, reports the rest.
    void end_or_other(BLOCKS& blocks, const DEV_WORD& word, const std::string& line);
    bool is_blank_or_comment(const std::string& line);

    DEV_PAD_INFO_BODY* m_pad_info;
    DEV_TEXT_READER m_text;
    DEV_ATTRIBUTE_SYNTAX m_syntax;
    bool m_new_names = false;          // the family has the new-format database support
    int m_max_pads;
    DEV_REGEXP m_include, m_io_standard, m_io_rule, m_pad, m_default_pad, m_end, m_num_pads, m_io_standards,
        m_current_set, m_gnd_current, m_vcc_current, m_comment, m_blank;
};

class DEV_PAD_WRITER {
public:
    explicit DEV_PAD_WRITER(const DEV_PAD_INFO_BODY& pad_info) : m_pad_info(pad_info) {}
    bool write(const FIO_PATH& path, int compression);

private:
    void write_io_standard(const DEV_IO_STANDARD_DESC& desc, std::string* text) const;
    void write_pad_body(const DEV_PAD_BODY& pad, std::string* text) const;

    const DEV_PAD_INFO_BODY& m_pad_info;
};

#endif
