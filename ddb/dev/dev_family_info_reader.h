// DEV_FAMILY_INFO_READER: reads family-info text into a catalogue store. The file holds
// family, device and part blocks of key lines, "DEV_RESOURCES" lists inside part blocks,
// comment and blank lines, and include lines (paths taken as written; the last include's
// result decides what the whole read returns).
//
// One reader serves one read (with its includes) or one key line offered from outside; it
// holds the compiled line and key patterns of that read. Each file keeps its own block
// state. A line is tried only against the pattern of its first word (every pattern starts
// with blanks and its keyword or key), which gives the outcome of trying all patterns in
// their fixed order.
#ifndef VELCORA_DEV_FAMILY_INFO_READER_H
#define VELCORA_DEV_FAMILY_INFO_READER_H

#include <string>
#include <vector>

#include "dev_family_info_keys.h"
#include "dev_text_reader.h"
#include "dev_utility.h"
#include "host/fio.h"

class DEV_FAMILY_INFO_MGR_BODY;

class DEV_FAMILY_INFO_READER {
public:
    explicit DEV_FAMILY_INFO_READER(DEV_FAMILY_INFO_MGR_BODY& store);

    // Reads one file and its includes into the store; false for an empty file, a file that
    // cannot be read, or when the last include read failed.
    bool read(const FIO_PATH& path);

    // Offers one body line to the key parser of the record's kind: true when a key consumed
    // it (its value stored, or reported as bad). `record_name` names the record in notes.
    bool parse_key_line(const std::string& line, DEV_FAMILY_DESC& desc, const char* record_name);
    bool parse_key_line(const std::string& line, DEV_DEVICE_DESC& desc, const char* record_name);
    bool parse_key_line(const std::string& line, DEV_PART_DESC& desc, const char* record_name);

private:
    // The block state of one file.
    struct BLOCK {
        enum STATE { OUTSIDE, IN_FAMILY, IN_DEVICE, IN_PART } state = OUTSIDE;
        DEV_FAMILY_ENUM family = DEV_FAMILY_INVALID;
        DEV_DEVICE_ENUM device = DEV_DEVICE_INVALID;
        DEV_PART_ENUM part = DEV_PART_INVALID;
        bool existed_before = false;  // the block's record existed before the block
        bool result = true;           // what the read of this file returns
    };

    bool read_file(const FIO_PATH& path);
    // One method per block state; `file` is the file being read.
    void read_outside(BLOCK& block, const std::string& line);
    void read_family_line(BLOCK& block, const std::string& line);
    void read_device_line(BLOCK& block, const std::string& line);
    void read_part_line(BLOCK& block, DEV_TEXT_FILE& file, std::string& line);
    // Reads the entries after a "DEV_RESOURCES = {" line; see the .cpp.
    bool read_resource_list(DEV_TEXT_FILE& file, DEV_PART_DESC& part, std::string& line);
    // "end" of a device or part block: the record must exist and name its family; a record
    // new to the store counts once for that family.
    template <typename DESC>
    void close_record_block(const BLOCK& block, const std::string& line, const DESC* desc, const char* missing_record,
                            bool parts);

    template <typename DESC>
    bool parse_key(const std::string& line, DESC& desc, const char* record_name, std::vector<DEV_REGEXP>& patterns);
    void report_bad_value(const char* record_kind, const char* key, const std::string& value);
    bool is_blank_or_comment(const std::string& line);
    bool is_end(const std::string& line);
    template <typename DESC, typename ENUM>
    DESC& record_of(ENUM value);
    void syntax_note(const std::string& line);

    DEV_FAMILY_INFO_MGR_BODY& m_store;
    DEV_TEXT_READER m_text;
    // Line patterns, then the key patterns of each record kind in parser order.
    DEV_REGEXP m_family, m_device, m_part, m_end, m_include, m_resources, m_resources_end, m_comment, m_blank,
        m_resource_entry;
    std::vector<DEV_REGEXP> m_family_keys, m_device_keys, m_part_keys;
};

#endif
