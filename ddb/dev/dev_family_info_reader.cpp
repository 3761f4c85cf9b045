// The family-info text reader of the catalogue store: blocks of family, device and part
// records, their key lines, resource lists and includes.
//
// Every line pattern and key pattern is compiled once. A pattern can only match a line whose
// first word is its keyword or key, so each line is tried only against the pattern of its
// first word; the outcome is that of trying all patterns in their fixed order.
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "dev_archive_export.h"
#include "dev_family_info_keys.h"
#include "dev_family_info_mgr_body.h"
#include "dev_utility.h"
#include "host/msg.h"

namespace {

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

LINE_PATTERNS& patterns() {
    static LINE_PATTERNS p;
    return p;
}

bool first_word_is(const std::string& line, const char* word) {
    const char* begin;
    size_t length;
    dev_family_info_first_word(line, begin, length);
    return length == std::strlen(word) && std::memcmp(begin, word, length) == 0;
}

// Blank or comment: only lines whose first non-blank character is "#", "|", "/" or none.
bool is_blank_or_comment(const std::string& line) {
    size_t i = line.find_first_not_of(" \t\n\r\f");
    if (i == std::string::npos) return patterns().blank.match(line);
    const char c = line[i];
    return (c == '#' || c == '|' || c == '/') && patterns().comment.match(line);
}

// The key patterns of one record kind, in the table's order, compiled on first use.
template <typename DESC>
std::vector<DEV_REGEXP>& key_patterns() {
    static std::vector<DEV_REGEXP> compiled = [] {
        const DEV_FAMILY_INFO_KEY_TABLE<DESC>& table = dev_family_info_keys(static_cast<const DESC*>(nullptr));
        std::vector<DEV_REGEXP> v;
        for (size_t i = 0; i < table.count; ++i) {
            const DEV_FAMILY_INFO_KEY<DESC>& k = table.keys[i];
            const char* value = "(\\w+)";
            if (k.kind == DEV_FI_INT) value = "([-]?\\w+)";
            if (k.kind == DEV_FI_STRING || k.kind == DEV_FI_LIST) value = "\\\"([^\\\"]*)\\\"";
            v.emplace_back(std::string("\\s*") + k.key + "\\s*=\\s*" + value + "\\s*$");
        }
        return v;
    }();
    return compiled;
}

// The next line of the stream; the last line counts even when the stream ends inside it.
// False when nothing is left.
bool next_line(DEV_ARCHIVE& archive, std::string& line) {
    if (!archive.good() || archive.eof()) {
        line.clear();
        return false;
    }
    return archive.getline(line, '\n') || !line.empty();
}

}  // namespace

#define DEV_REPORT_PARSE_ERROR(path, line_number, message) \
    report_parse_error(__FILE__, __LINE__, (path), (line_number), (message))

void DEV_FAMILY_INFO_MGR_BODY::report_parse_error(const char* source_file, int source_line,
                                                  const FIO_PATH& path, int line_number,
                                                  const std::string& message) {
    const std::string source = msg_source_name(source_file);
    DEV_DEBUG("Error at %s, line %d parsing file %s, line number %d - %s", source.c_str(), source_line,
              path.full_path().c_str(), line_number, message.c_str());
    MSG_INTERNAL_ERROR_report(message, "DEV", source.c_str(), source_line);
}

void DEV_FAMILY_INFO_MGR_BODY::report_bad_value(const char* record_kind, const char* key,
                                                const std::string& value) {
    std::string message = std::string("Parsing ") + record_kind + " info: Invalid " + key + " string " + value;
    if (m_reading_path)
        DEV_REPORT_PARSE_ERROR(*m_reading_path, m_reading_line, message);
    else
        DEV_INTERNAL_ERROR(message);
}

template <typename DESC>
bool DEV_FAMILY_INFO_MGR_BODY::parse_key_line(const std::string& line, DESC& desc, const char* record_name) {
    const DEV_FAMILY_INFO_KEY_TABLE<DESC>& table = dev_family_info_keys(static_cast<const DESC*>(nullptr));
    const char* word;
    size_t length;
    dev_family_info_first_word(line, word, length);
    size_t i = 0;
    while (i < table.count && !(std::strlen(table.keys[i].key) == length && std::memcmp(table.keys[i].key, word, length) == 0))
        ++i;
    if (i == table.count) return false;
    DEV_REGEXP& re = key_patterns<DESC>()[i];
    if (!re.match(line)) return false;
    const DEV_FAMILY_INFO_KEY<DESC>& k = table.keys[i];
    std::string value;
    re.group(1, value);
    switch (k.kind) {
    case DEV_FI_ENUM: {
        const int v = k.table().get_by_string(value);
        if (!k.table().exists_by_string(value)) {
            report_bad_value(table.record_kind, k.key, value);
            break;
        }
        const int old = k.get_int(desc);
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

bool DEV_FAMILY_INFO_MGR_BODY::parse_family_data(const std::string& line, DEV_FAMILY_ENUM family_enum) {
    DEV_FAMILY_DESC* desc = find_desc_of(family_enum);
    if (!DEV_ASSERT_TEXT(desc != NULL, "m_family_descriptors[family_enum] != NULL")) return false;
    return parse_key_line(line, *desc, dstr_get_debug_string(family_enum));
}

bool DEV_FAMILY_INFO_MGR_BODY::parse_device_data(const std::string& line, DEV_DEVICE_ENUM device_enum) {
    DEV_DEVICE_DESC* desc = find_desc_of(device_enum);
    if (!DEV_ASSERT_TEXT(desc != NULL, "m_device_descriptors[device_enum] != NULL")) return false;
    return parse_key_line(line, *desc, dstr_get_debug_string(device_enum));
}

bool DEV_FAMILY_INFO_MGR_BODY::parse_part_data(const std::string& line, DEV_PART_ENUM part_enum) {
    DEV_PART_DESC* desc = find_desc_of(part_enum);
    if (!DEV_ASSERT_TEXT(desc != NULL, "m_part_descriptors[part_enum] != NULL")) return false;
    return parse_key_line(line, *desc, dstr_get_debug_string(part_enum));
}

// Reads the entries after a "DEV_RESOURCES = {" line. On return `line` holds the line that
// ended the list and `more` whether there was such a line (false at the end of the stream). True when the list ended
// at a line that is not an entry; false when an entry was unusable (that line is then left in
// `line` for the caller to process as an ordinary block line).
bool DEV_FAMILY_INFO_MGR_BODY::read_resource_list(DEV_ARCHIVE& archive, DEV_PART_DESC* part,
                                                  std::string& line, bool& more) {
    DEV_REGEXP& entry = patterns().resource_entry;
    for (;;) {
        more = next_line(archive, line);
        if (!entry.match(line)) return true;
        std::string name, count;
        entry.group(1, name);
        entry.group(2, count);
        const int resource = dstr_get_dev_resource_enum_by_string(name);
        std::vector<int32_t>& counts = part->dev_resources();
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

bool DEV_FAMILY_INFO_MGR_BODY::read_family_data(const FIO_PATH& path) {
    // An empty file holds no line; it is not handed to the archive, which judges it compressed.
    if (FIO_FILE_SYSTEM::file_size(path.full_path()) == 0) return false;
    DEV_ARCHIVE archive(0);
    if (!archive.open(path, DEV_ARCHIVE::READ) || !archive.good()) {
        DEV_INTERNAL_ERROR("Failed opening data file for DEV_PART_MANAGER");
        return false;
    }
    bool result = !archive.eof();

    // Messages of nested reads name their own file; the caller's position comes back after.
    const FIO_PATH* saved_path = m_reading_path;
    const int saved_line = m_reading_line;
    m_reading_path = &path;
    m_reading_line = 0;

    enum { OUTSIDE, IN_FAMILY, IN_DEVICE, IN_PART } state = OUTSIDE;
    DEV_FAMILY_ENUM family = DEV_FAMILY_INVALID;
    DEV_DEVICE_ENUM device = DEV_DEVICE_INVALID;
    DEV_PART_ENUM part = DEV_PART_INVALID;
    bool existed_before = false;
    int& line_number = m_reading_line;
    LINE_PATTERNS& p = patterns();
    const std::string file_name = path.file_name();
    std::string line, name;
    bool more = true;
    bool first = true;
    bool pending = false;  // `line` still to be processed (it ended a resource list with failure)

    auto syntax_note = [&]() {
        DEV_DEBUG("Syntax error in file %s, line %d: %s", file_name.c_str(), line_number, line.c_str());
    };
    auto check_family_at_end = [&](DEV_FAMILY_ENUM record_family, std::vector<int>& counts) {
        if (record_family == DEV_FAMILY_INVALID) {
            char text[64];
            std::snprintf(text, sizeof text, "%d", line_number);
            DEV_REPORT_PARSE_ERROR(path, line_number,
                                   "Missing family name in file " + file_name + ", line " + text + ": " + line);
        } else if (!existed_before && record_family > DEV_FAMILY_INVALID && record_family < DEV_FAMILY_MAX) {
            ++counts[record_family];
        }
    };
    // "end" of a device or part block: the record must exist (a block without body lines
    // never created one) and name its family; a new record counts once for that family.
    auto close_record_block = [&](const auto* desc, const char* missing_record, std::vector<int>& counts) {
        if (DEV_ASSERT_TEXT(desc != NULL, missing_record)) check_family_at_end(desc->get_family(), counts);
    };

    while (more || pending) {
        if (!pending) {
            more = next_line(archive, line);
            if (!more) {
                if (first) result = false;  // an empty file has no line
                break;
            }
            first = false;
            ++line_number;
        }
        pending = false;

        switch (state) {
        case OUTSIDE: {
            const char* word;
            size_t length;
            dev_family_info_first_word(line, word, length);
            const std::string first_word(word, length);
            if (first_word == "include" && p.include.match(line)) {
                p.include.group(1, name);
                const FIO_PATH included(name);
                result = read_family_data(included);
                if (!result) DEV_DEBUG("Failed loading included file %s", name.c_str());
            } else if (first_word == "family" && p.family.match(line)) {
                p.family.group(1, name);
                family = dstr_get_dev_family_enum_by_string(name);
                if (family == DEV_FAMILY_INVALID)
                    DEV_REPORT_PARSE_ERROR(path, line_number, "Error: Invalid family string " + name);
                state = IN_FAMILY;
            } else if (first_word == "device" && p.device.match(line)) {
                p.device.group(1, name);
                device = dstr_get_dev_device_enum_by_string(name);
                if (device == DEV_DEVICE_INVALID)
                    DEV_REPORT_PARSE_ERROR(path, line_number, "Error: Invalid device string " + name);
                existed_before = find_desc_of(device) != nullptr;
                state = IN_DEVICE;
            } else if (first_word == "part" && p.part.match(line)) {
                p.part.group(1, name);
                part = dstr_get_dev_part_enum_by_string(name);
                if (part == DEV_PART_INVALID)
                    DEV_REPORT_PARSE_ERROR(path, line_number, "Error: Invalid part string " + name);
                existed_before = find_desc_of(part) != nullptr;
                state = IN_PART;
            } else if (!is_blank_or_comment(line)) {
                syntax_note();
            }
            break;
        }
        case IN_FAMILY:
            if (first_word_is(line, "end") && p.end.match(line)) {
                // A block under an unknown name was reported at its header.
                if (family != DEV_FAMILY_INVALID)
                    DEV_ASSERT_TEXT(find_desc_of(family) != NULL, "m_family_descriptors[family_enum] != NULL");
                state = OUTSIDE;
                break;
            }
            if (family == DEV_FAMILY_INVALID) break;
            if (!find_desc_of(family)) m_family_descriptors[family].reset(new DEV_FAMILY_DESC(family));
            if (!parse_family_data(line, family) && !is_blank_or_comment(line)) syntax_note();
            break;
        case IN_DEVICE:
            if (first_word_is(line, "end") && p.end.match(line)) {
                state = OUTSIDE;
                if (device != DEV_DEVICE_INVALID)
                    close_record_block(find_desc_of(device), "m_device_descriptors[device_enum] != NULL", m_device_count);
                break;
            }
            if (device == DEV_DEVICE_INVALID) break;
            if (!find_desc_of(device)) m_device_descriptors[device].reset(new DEV_DEVICE_DESC(device));
            if (!parse_device_data(line, device) && !is_blank_or_comment(line)) syntax_note();
            break;
        case IN_PART:
            if (first_word_is(line, "end") && p.end.match(line)) {
                state = OUTSIDE;
                if (part != DEV_PART_INVALID)
                    close_record_block(find_desc_of(part), "m_part_descriptors[part_enum] != NULL", m_part_count);
                break;
            }
            if (part == DEV_PART_INVALID) break;
            if (!find_desc_of(part)) m_part_descriptors[part].reset(new DEV_PART_DESC(part));
            if (parse_part_data(line, part)) break;
            if (first_word_is(line, "DEV_RESOURCES") && p.resources.match(line)) {
                const bool ended = read_resource_list(archive, find_desc_of(part), line, more);
                line_number += DEV_RESOURCE_MAX;
                if (!ended) {
                    pending = true;
                } else if (!p.resources_end.match(line)) {
                    DEV_REPORT_PARSE_ERROR(path, line_number, "Bad hash entry or ending: " + line);
                }
            } else if (!is_blank_or_comment(line)) {
                syntax_note();
            }
            break;
        }
    }

    archive.close(true);
    m_reading_path = saved_path;
    m_reading_line = saved_line;
    return result;
}
