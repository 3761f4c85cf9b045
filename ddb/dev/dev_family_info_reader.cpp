// The family-info text reader: blocks of family, device and part records, their key lines,
// resource lists and includes.
#include "dev_family_info_reader.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "dev_family_info_mgr_body.h"
#include "host/msg.h"

namespace {

const DEV_TEXT_OPEN_REPORTS OPEN_REPORTS = {nullptr, "Failed opening data file for DEV_PART_MANAGER"};

// Compiled once; every reader copies them (a copy shares the compiled code and brings its
// own match state).
struct LINE_PATTERNS {
    DEV_REGEXP family{"^\\s*family\\s+(\\w+)\\s*$"};
    DEV_REGEXP device{"^\\s*device\\s+(\\w+)\\s*$"};
    DEV_REGEXP part{"^\\s*part\\s+(\\w+)\\s*$"};
    DEV_REGEXP end{"^\\s*end\\s*$"};
    DEV_REGEXP include{"^\\s*include\\s+\\\"(.+)\\\"\\s*$"};
    DEV_REGEXP resources{"^\\s*DEV_RESOURCES\\s+=\\s*{\\s*$"};
    DEV_REGEXP resources_end{"^\\s*}\\s*$"};
    DEV_REGEXP comment{"^\\s*[#|//].*$"};
    DEV_REGEXP blank{"^\\s*$"};
    DEV_REGEXP resource_entry{"[^\\\"]*\\\"([^\\\"]*)\\\"\\s*=\\s*(\\d+)\\s*$"};
};

const LINE_PATTERNS& line_patterns() {
    static const LINE_PATTERNS patterns;
    return patterns;
}

// The key patterns of one record kind, in parser order: blanks, the key, blanks, "=",
// blanks, the value pattern of the key's kind, blanks, end of line.
template <typename DESC>
const std::vector<DEV_REGEXP>& key_patterns() {
    static const std::vector<DEV_REGEXP> compiled = [] {
        std::vector<DEV_REGEXP> v;
        for (const DEV_FAMILY_INFO_KEY<DESC>& k : dev_family_info_keys(static_cast<const DESC*>(nullptr)).keys) {
            const char* value = "(\\w+)";
            if (k.kind == DEV_FI_INT) value = "([-]?\\w+)";
            if (k.kind == DEV_FI_STRING || k.kind == DEV_FI_LIST) value = "\\\"([^\\\"]*)\\\"";
            v.emplace_back(std::string("\\s*") + k.key + "\\s*=\\s*" + value + "\\s*$");
        }
        return v;
    }();
    return compiled;
}

}  // namespace

DEV_FAMILY_INFO_READER::DEV_FAMILY_INFO_READER(DEV_FAMILY_INFO_MGR_BODY& store)
    : m_store(store),
      m_text(DEV_INCLUDE_AS_WRITTEN),
      m_family(line_patterns().family),
      m_device(line_patterns().device),
      m_part(line_patterns().part),
      m_end(line_patterns().end),
      m_include(line_patterns().include),
      m_resources(line_patterns().resources),
      m_resources_end(line_patterns().resources_end),
      m_comment(line_patterns().comment),
      m_blank(line_patterns().blank),
      m_resource_entry(line_patterns().resource_entry),
      m_family_keys(key_patterns<DEV_FAMILY_DESC>()),
      m_device_keys(key_patterns<DEV_DEVICE_DESC>()),
      m_part_keys(key_patterns<DEV_PART_DESC>()) {}

// ---------------------------------------------------------------------------------------
// Reports

void DEV_FAMILY_INFO_READER::report_bad_value(const char* record_kind, const char* key, const std::string& value) {
    const std::string message = std::string("Parsing ") + record_kind + " info: Invalid " + key + " string " + value;
    if (m_text.current())
        m_text.error(message);
    else
        DEV_INTERNAL_ERROR(message);
}

void DEV_FAMILY_INFO_READER::syntax_note(const std::string& line) { m_text.note(m_text.syntax_error_message(line)); }

// Blank or comment: only lines whose first non-blank character is "#", "|", "/" or none.
bool DEV_FAMILY_INFO_READER::is_blank_or_comment(const std::string& line) {
    const size_t i = line.find_first_not_of(" \t\n\r\f");
    if (i == std::string::npos) return m_blank.match(line);
    const char c = line[i];
    return (c == '#' || c == '|' || c == '/') && m_comment.match(line);
}

// ---------------------------------------------------------------------------------------
// Key lines

template <typename DESC>
bool DEV_FAMILY_INFO_READER::parse_key(const std::string& line, DESC& desc, const char* record_name,
                                       std::vector<DEV_REGEXP>& patterns) {
    const DEV_FAMILY_INFO_KEY_TABLE<DESC>& table = dev_family_info_keys(static_cast<const DESC*>(nullptr));
    const DEV_WORD word = dev_first_word(line);
    size_t i = 0;
    while (i < table.keys.size() && !(word == table.keys[i].key)) ++i;
    if (i == table.keys.size() || !patterns[i].match(line)) return false;
    const DEV_FAMILY_INFO_KEY<DESC>& k = table.keys[i];
    std::string value;
    patterns[i].group(1, value);
    switch (k.kind) {
        case DEV_FI_ENUM: {
            if (!k.table().exists_by_string(value)) {
                report_bad_value(table.record_kind, k.key, value);
                break;
            }
            const int old = k.get_int(desc);
            const int v = k.table().get_by_string(value);
            if (old != 0 && old != v)
                DEV_DEBUG("%s: overwriting previous value %s of %s by %s", record_name, k.table().debug_string(old),
                          k.key, value.c_str());
            k.set_int(desc, v);
            break;
        }
        case DEV_FI_INT: {
            int v = 0;
            if (!dev_string_to_int(value, v)) {
                report_bad_value(table.record_kind, k.key, value);
                break;
            }
            const int old = k.get_int(desc);
            k.set_int(desc, v);
            if (old != 0 && old != k.get_int(desc))
                DEV_DEBUG("%s: overwriting previous value %d of %s by %s", record_name, old, k.key, value.c_str());
            break;
        }
        case DEV_FI_STRING: {
            if (value.empty()) {
                report_bad_value(table.record_kind, k.key, value);
                break;
            }
            const std::string& old = k.get_string(desc);
            if (!old.empty() && old != value)
                DEV_DEBUG("%s: overwriting previous value %s of %s by %s", record_name, old.c_str(), k.key,
                          value.c_str());
            k.set_string(desc, value);
            break;
        }
        case DEV_FI_TRAIT:
            if (!k.table().exists_by_string(value))
                report_bad_value(table.record_kind, k.key, value);
            else
                k.set_int(desc, k.table().get_by_string(value));
            break;
        case DEV_FI_LIST:
            if (!k.table().exists_by_string(value)) {
                report_bad_value(table.record_kind, k.key, value);
            } else {
                std::string list = k.get_string(desc);
                dev_list_string_append(list, value);
                k.set_string(desc, list);
            }
            break;
    }
    return true;
}

bool DEV_FAMILY_INFO_READER::parse_key_line(const std::string& line, DEV_FAMILY_DESC& desc, const char* record_name) {
    return parse_key(line, desc, record_name, m_family_keys);
}
bool DEV_FAMILY_INFO_READER::parse_key_line(const std::string& line, DEV_DEVICE_DESC& desc, const char* record_name) {
    return parse_key(line, desc, record_name, m_device_keys);
}
bool DEV_FAMILY_INFO_READER::parse_key_line(const std::string& line, DEV_PART_DESC& desc, const char* record_name) {
    return parse_key(line, desc, record_name, m_part_keys);
}

// ---------------------------------------------------------------------------------------
// Files and blocks

bool DEV_FAMILY_INFO_READER::read(const FIO_PATH& path) {
    m_store.invalidate_derived_lists();
    return read_file(path);
}

bool DEV_FAMILY_INFO_READER::read_file(const FIO_PATH& path) {
    // An empty file holds no line; it is not handed to the archive, which judges it compressed.
    if (FIO_FILE_SYSTEM::file_size(path.full_path()) == 0) return false;
    DEV_TEXT_FILE file(m_text, path, OPEN_REPORTS);
    if (!file.is_open()) return false;
    BLOCK block;
    block.result = !file.at_end();
    std::string line;
    bool first = true;
    while (file.next_line(line)) {
        first = false;
        switch (block.state) {
            case BLOCK::OUTSIDE: read_outside(block, line); break;
            case BLOCK::IN_FAMILY: read_family_line(block, line); break;
            case BLOCK::IN_DEVICE: read_device_line(block, line); break;
            case BLOCK::IN_PART: read_part_line(block, file, line); break;
        }
    }
    return first ? false : block.result;  // a file without a line reads nothing
}

void DEV_FAMILY_INFO_READER::read_outside(BLOCK& block, const std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    std::string name;
    if (word == "include" && m_include.match(line)) {
        m_include.group(1, name);
        FIO_PATH included;
        block.result = m_text.resolve_include(name, &included) && read_file(included);
        if (!block.result) m_text.note("Failed loading included file " + name);
    } else if (word == "family" && m_family.match(line)) {
        m_family.group(1, name);
        block.family = dstr_get_dev_family_enum_by_string(name);
        if (block.family == DEV_FAMILY_INVALID) m_text.error("Error: Invalid family string " + name);
        block.state = BLOCK::IN_FAMILY;
    } else if (word == "device" && m_device.match(line)) {
        m_device.group(1, name);
        block.device = dstr_get_dev_device_enum_by_string(name);
        if (block.device == DEV_DEVICE_INVALID) m_text.error("Error: Invalid device string " + name);
        block.existed_before = m_store.find_desc_of(block.device) != nullptr;
        block.state = BLOCK::IN_DEVICE;
    } else if (word == "part" && m_part.match(line)) {
        m_part.group(1, name);
        block.part = dstr_get_dev_part_enum_by_string(name);
        if (block.part == DEV_PART_INVALID) m_text.error("Error: Invalid part string " + name);
        block.existed_before = m_store.find_desc_of(block.part) != nullptr;
        block.state = BLOCK::IN_PART;
    } else if (!is_blank_or_comment(line)) {
        syntax_note(line);
    }
}

bool DEV_FAMILY_INFO_READER::is_end(const std::string& line) {
    return dev_first_word(line) == "end" && m_end.match(line);
}

// The block's record, created (and taken into the store) by the block's first body line.
template <typename DESC, typename ENUM>
DESC& DEV_FAMILY_INFO_READER::record_of(ENUM value) {
    DESC* desc = m_store.find_desc_of(value);
    if (!desc) {
        desc = new DESC(value);
        m_store.take_desc(desc, false);
    }
    return *desc;
}

void DEV_FAMILY_INFO_READER::read_family_line(BLOCK& block, const std::string& line) {
    if (is_end(line)) {
        // A block under an unknown name was reported at its header.
        if (block.family != DEV_FAMILY_INVALID)
            DEV_ASSERT_TEXT(m_store.find_desc_of(block.family) != NULL, "m_family_descriptors[family_enum] != NULL");
        block.state = BLOCK::OUTSIDE;
        return;
    }
    if (block.family == DEV_FAMILY_INVALID) return;
    DEV_FAMILY_DESC& desc = record_of<DEV_FAMILY_DESC>(block.family);
    if (!parse_key_line(line, desc, dstr_get_debug_string(block.family)) && !is_blank_or_comment(line))
        syntax_note(line);
}

template <typename DESC>
void DEV_FAMILY_INFO_READER::close_record_block(const BLOCK& block, const std::string& line, const DESC* desc,
                                                const char* missing_record, bool parts) {
    if (!DEV_ASSERT_TEXT(desc != NULL, missing_record)) return;
    const DEV_FAMILY_ENUM family = desc->get_family();
    if (family == DEV_FAMILY_INVALID) {
        const DEV_TEXT_FILE& file = *m_text.current();
        m_text.error("Missing family name in file " + file.path().file_name() + ", line " +
                     std::to_string(file.line_number()) + ": " + line);
    } else if (!block.existed_before) {
        m_store.count_new_record(family, parts);
    }
}

void DEV_FAMILY_INFO_READER::read_device_line(BLOCK& block, const std::string& line) {
    if (is_end(line)) {
        block.state = BLOCK::OUTSIDE;
        if (block.device != DEV_DEVICE_INVALID)
            close_record_block(block, line, m_store.find_desc_of(block.device), "m_device_descriptors[device_enum] != NULL",
                               false);
        return;
    }
    if (block.device == DEV_DEVICE_INVALID) return;
    DEV_DEVICE_DESC& desc = record_of<DEV_DEVICE_DESC>(block.device);
    if (!parse_key_line(line, desc, dstr_get_debug_string(block.device)) && !is_blank_or_comment(line))
        syntax_note(line);
}

void DEV_FAMILY_INFO_READER::read_part_line(BLOCK& block, DEV_TEXT_FILE& file, std::string& line) {
    if (is_end(line)) {
        block.state = BLOCK::OUTSIDE;
        if (block.part != DEV_PART_INVALID)
            close_record_block(block, line, m_store.find_desc_of(block.part), "m_part_descriptors[part_enum] != NULL", true);
        return;
    }
    if (block.part == DEV_PART_INVALID) return;
    DEV_PART_DESC& desc = record_of<DEV_PART_DESC>(block.part);
    if (parse_key_line(line, desc, dstr_get_debug_string(block.part))) return;
    if (dev_first_word(line) == "DEV_RESOURCES" && m_resources.match(line)) {
        const bool ended = read_resource_list(file, desc, line);
        // The count runs ahead by the size of the resource vector, whatever the list's length.
        file.advance_line_number(DEV_RESOURCE_MAX);
        if (!ended)
            file.put_back(std::move(line));
        else if (!m_resources_end.match(line))
            m_text.error("Bad hash entry or ending: " + line);
    } else if (!is_blank_or_comment(line)) {
        syntax_note(line);
    }
}

// Reads the entries after a "DEV_RESOURCES = {" line, without counting them. On return
// `line` holds the line that ended the list (empty at the end of the file). True when the
// list ended at a line that is not an entry; false when an entry was unusable (that line is
// then processed again as an ordinary block line).
bool DEV_FAMILY_INFO_READER::read_resource_list(DEV_TEXT_FILE& file, DEV_PART_DESC& part, std::string& line) {
    for (;;) {
        file.next_uncounted_line(line);
        if (!m_resource_entry.match(line)) return true;
        std::string name, count;
        m_resource_entry.group(1, name);
        m_resource_entry.group(2, count);
        const int resource = dstr_get_dev_resource_enum_by_string(name);
        std::vector<int32_t>& counts = part.dev_resources();
        if (resource <= DEV_RESOURCE_INVALID || static_cast<size_t>(resource) >= counts.size()) {
            DEV_DEBUG("Bad device resource line %s", line.c_str());
            return false;
        }
        errno = 0;
        char* stop = nullptr;
        const long value = std::strtol(count.c_str(), &stop, 10);
        if (*stop != '\0' || errno == ERANGE || value > INT_MAX) {
            DEV_DEBUG("Bad resource count %s on line %s", count.c_str(), line.c_str());
            return false;
        }
        counts[static_cast<size_t>(resource)] = static_cast<int32_t>(value);
    }
}

// ---------------------------------------------------------------------------------------
// The store's text members

bool DEV_FAMILY_INFO_MGR_BODY::read_family_data(const FIO_PATH& path) { return DEV_FAMILY_INFO_READER(*this).read(path); }

bool DEV_FAMILY_INFO_MGR_BODY::parse_family_data(const std::string& line, DEV_FAMILY_ENUM family_enum) {
    DEV_FAMILY_DESC* desc = find_desc_of(family_enum);
    if (!DEV_ASSERT_TEXT(desc != NULL, "m_family_descriptors[family_enum] != NULL")) return false;
    invalidate_derived_lists();
    return DEV_FAMILY_INFO_READER(*this).parse_key_line(line, *desc, dstr_get_debug_string(family_enum));
}

bool DEV_FAMILY_INFO_MGR_BODY::parse_device_data(const std::string& line, DEV_DEVICE_ENUM device_enum) {
    DEV_DEVICE_DESC* desc = find_desc_of(device_enum);
    if (!DEV_ASSERT_TEXT(desc != NULL, "m_device_descriptors[device_enum] != NULL")) return false;
    invalidate_derived_lists();
    return DEV_FAMILY_INFO_READER(*this).parse_key_line(line, *desc, dstr_get_debug_string(device_enum));
}

bool DEV_FAMILY_INFO_MGR_BODY::parse_part_data(const std::string& line, DEV_PART_ENUM part_enum) {
    DEV_PART_DESC* desc = find_desc_of(part_enum);
    if (!DEV_ASSERT_TEXT(desc != NULL, "m_part_descriptors[part_enum] != NULL")) return false;
    invalidate_derived_lists();
    return DEV_FAMILY_INFO_READER(*this).parse_key_line(line, *desc, dstr_get_debug_string(part_enum));
}
