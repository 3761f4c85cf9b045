// The PART_INFO text format of a part's data: DEV_PART_INFO_PARSER reads a file (and its
// includes, paths taken as written) into a DEV_PART_INFO_BODY; DEV_PART_INFO_WRITER writes
// the ASCII dump.
//
// A file holds the part info's attribute lines and power_supply blocks closed by "end",
// include lines, comment and blank lines. A block names its supply; a second block of the
// same supply adds to the first. Blocks do not nest: a block opened inside another is an
// error and opens all the same. Each file read keeps its own block state.
//
// The dump writes the value of every set INT key of the part info as the key's own name (a
// long-standing property of the format that its readers rely on); read back, such a line
// is an invalid int value unless the name is also one of the key's value names.
#ifndef VELCORA_DEV_PART_INFO_PARSER_H
#define VELCORA_DEV_PART_INFO_PARSER_H

#include <string>

#include "dev_attribute_syntax.h"
#include "dev_part_info.h"
#include "dev_text_reader.h"
#include "dev_utility.h"

class DEV_PART_INFO_PARSER {
public:
    explicit DEV_PART_INFO_PARSER(DEV_PART_INFO_BODY* part_info);
    // Reads one file and its includes; false when the file could not be read.
    bool read(const FIO_PATH& path);

private:
    // A power_supply block: open or not, and its descriptor (null when its name is no supply).
    struct BLOCK {
        bool open = false;
        DEV_POWER_SUPPLY_DESC* supply = nullptr;
    };

    bool read_file(const FIO_PATH& path);
    void read_line(BLOCK& block, const std::string& line);
    void open_block(BLOCK& block, const std::string& name);
    void read_supply_line(BLOCK& block, const DEV_WORD& word, const std::string& line);
    void read_top_line(const std::string& line);

    DEV_PART_INFO_BODY* m_part_info;
    DEV_TEXT_READER m_text;
    DEV_ATTRIBUTE_SYNTAX m_syntax;
    DEV_SKIPPED_LINES m_skipped;
    DEV_REGEXP m_include, m_power_supply, m_end;
};

class DEV_PART_INFO_WRITER {
public:
    explicit DEV_PART_INFO_WRITER(const DEV_PART_INFO_BODY& part_info) : m_part_info(part_info) {}
    bool write(const FIO_PATH& path, int compression_level);

private:
    const DEV_PART_INFO_BODY& m_part_info;
};

#endif
