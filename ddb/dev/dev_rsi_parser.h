// The RSI text format of a device's routing switches: DEV_RSI_PARSER reads a file (and its
// includes, relative paths beside the including file) into a DEV_ROUTING_SWITCH_INFO_BODY;
// DEV_RSI_WRITER writes the ASCII dump.
//
// A file holds a global_info block, routing_switch and pass_tree blocks named by their
// enumerators, each closed by "end", include lines, comment and blank lines; nothing else
// stands outside a block. A block of a name seen before adds to that record. Blocks do not
// nest: a block opened inside another is an error and opens all the same. A switch's STRING
// key 2 goes to the MCF-string table, not to the switch.
//
// The dump is for reading, not for reading back: its global block is headed "global_data",
// which no reader opens, and it leaves out the switches' BOOL keys.
#ifndef VELCORA_DEV_RSI_PARSER_H
#define VELCORA_DEV_RSI_PARSER_H

#include <string>

#include "dev_attribute_syntax.h"
#include "dev_routing_switch_info_body.h"
#include "dev_text_reader.h"
#include "dev_utility.h"

class DEV_RSI_PARSER {
public:
    explicit DEV_RSI_PARSER(DEV_ROUTING_SWITCH_INFO_BODY* routing_switch_info);
    // Reads one file and its includes; false when the file could not be read.
    bool read(const FIO_PATH& path);

private:
    struct BLOCK {
        enum KIND { NONE, GLOBAL, SWITCH, PASS_TREE } kind = NONE;
        DEV_ROUTING_GLOBAL_INFO* global_info = nullptr;
        DEV_ROUTING_SWITCH_DESC* routing_switch = nullptr;
        DEV_PASS_TREE_DESC* pass_tree = nullptr;
    };

    bool read_file(const FIO_PATH& path);
    void read_line(BLOCK& block, const std::string& line);
    // Opens a block if the line is a block opener; true when it was.
    bool open_block(BLOCK& block, const DEV_WORD& word, const std::string& line);
    void read_switch_line(const BLOCK& block, const DEV_WORD& word, const std::string& line);
    void read_pass_trees(DEV_ROUTING_SWITCH_DESC_BODY& routing_switch);
    void read_string(DEV_ROUTING_SWITCH_DESC_BODY& routing_switch);
    // "end" closes the block; blank and comment lines are skipped; anything else is a syntax
    // error.
    void read_other_line(BLOCK& block, const DEV_WORD& word, const std::string& line);

    DEV_ROUTING_SWITCH_INFO_BODY* m_routing_switch_info;
    DEV_TEXT_READER m_text;
    DEV_ATTRIBUTE_SYNTAX m_syntax;
    DEV_SKIPPED_LINES m_skipped;
    DEV_REGEXP m_include, m_global_info, m_routing_switch, m_pass_tree, m_end, m_pass_trees;
};

class DEV_RSI_WRITER {
public:
    explicit DEV_RSI_WRITER(const DEV_ROUTING_SWITCH_INFO_BODY& routing_switch_info)
        : m_routing_switch_info(routing_switch_info) {}
    bool write(const FIO_PATH& path, int compression_level);

private:
    const DEV_ROUTING_SWITCH_INFO_BODY& m_routing_switch_info;
};

#endif
