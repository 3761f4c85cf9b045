// The HDR text format: its reader and its ASCII dump.
//
// Lines are tried against the patterns of their first word only (every pattern starts with
// blanks and its keyword, key prefix or "#"), which gives the outcome of trying them in the
// format's order.
#include "dev_hdr_parser.h"

#include "dev_archive_export.h"
#include "host/cfg.h"
#include "host/msg.h"
#include "host/tables/dev_device_enum.h"
#include "host/tables/dev_family_enum.h"
#include "host/tables/dev_part_enum.h"
#include "host/tables/dev_pkg_enum.h"
#include "host/tables/dev_speed_enum.h"

namespace {

const DEV_TEXT_OPEN_REPORTS OPEN_REPORTS = {nullptr, "input.good()"};

// "dev_dump_hdr_read": every file read is written back as a dump beside it.
const CFG_SWITCH DUMP_HDR_READ_SWITCH("dev_dump_hdr_read", false);

// Compiled once; every parser copies them (a copy shares the code and has its own match
// state).
struct LINE_PATTERNS {
    DEV_REGEXP include{"^\\s*include\\s+\"(.+)\"\\s*$"};
    DEV_REGEXP location{"^\\s*location\\s+(\\w+)\\s*$"};
    DEV_REGEXP port{"^\\s*port\\s+(\\w+)\\s*$"};
    DEV_REGEXP element{"^\\s*element\\s+(\\w+)\\s*$"};
    DEV_REGEXP end{"^\\s*end\\s*$"};
    DEV_REGEXP locations{"^\\s*LOCATIONS\\s*=\\s*(.+?)\\s*$"};
    DEV_REGEXP ports{"^\\s*PORTS\\s*=\\s*(.+?)\\s*$"};
    DEV_REGEXP comment{"^\\s*#.*$"};
    DEV_REGEXP blank{"^\\s*$"};
};

const LINE_PATTERNS& line_patterns() {
    static const LINE_PATTERNS patterns;
    return patterns;
}

// STRING keys 0, 3 and 4 of locations and elements are names of the record.
bool is_name_key(int key) { return key == 0 || key == 3 || key == 4; }

}  // namespace

DEV_HDR_PARSER::DEV_HDR_PARSER(DEV_BASIC_INFO_BODY* basic_info)
    : m_basic_info(basic_info),
      m_text(DEV_INCLUDE_AS_WRITTEN),
      m_syntax(DEV_ATTRIBUTE_FORMAT::hdr()),
      m_include(line_patterns().include),
      m_location(line_patterns().location),
      m_port(line_patterns().port),
      m_element(line_patterns().element),
      m_end(line_patterns().end),
      m_locations(line_patterns().locations),
      m_ports(line_patterns().ports),
      m_comment(line_patterns().comment),
      m_blank(line_patterns().blank) {}

bool DEV_HDR_PARSER::read(const FIO_PATH& path) {
    if (!DEV_ASSERT_TEXT(m_basic_info != NULL, "this->m_basic_info != NULL")) return false;
    return read_file(path);
}

bool DEV_HDR_PARSER::read_file(const FIO_PATH& path) {
    DEV_TEXT_FILE file(m_text, path, OPEN_REPORTS);
    if (!file.is_open()) return false;
    BLOCKS blocks;
    std::string line;
    while (file.next_line(line)) read_line(blocks, line);
    if (DUMP_HDR_READ_SWITCH.is_on()) {
        FIO_PATH verify = path;
        verify.set_base_name(path.base_name() + "verify");
        DEV_HDR_WRITER(*m_basic_info).write(verify, ZLIB_NO_COMPRESSION);
    }
    return true;
}

void DEV_HDR_PARSER::read_line(BLOCKS& blocks, std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    if (m_text.include_line(word, m_include, line, [this](const FIO_PATH& path) { read_file(path); })) return;
    if (open_block(blocks, word, line)) return;
    if (blocks.in_location)
        read_location_line(blocks, word, line);
    else if (blocks.in_port)
        read_port_line(blocks, word, line);
    else if (blocks.in_element)
        read_element_line(blocks, word, line);
    else
        read_global_line(line);
}

bool DEV_HDR_PARSER::open_block(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    DEV_REGEXP* opener = word == "location" ? &m_location : word == "port" ? &m_port : word == "element" ? &m_element : nullptr;
    if (!opener || !opener->match(line)) return false;
    if (blocks.in_location || blocks.in_port || blocks.in_element) m_text.error("Embedded definitions not allowed!");
    std::string name;
    opener->group(1, name);
    if (opener == &m_location) {
        DEV_LOCATION_DESC* location = m_basic_info->get_location_by_string(name);
        if (!location) {
            location = DEV_LOCATION_DESC::create();
            const DEV_LOCATION_ENUM value = dstr_get_dev_location_enum_by_string(name);
            if (value == DEV_LOCATION_GENERIC) m_text.warning("Warning: found a generic location type " + name + "!");
            location->get_body()->set_int_data(DEV_LOCATION_DESC_INT_LOCATION, value);
            location->get_body()->set_string_data(DEV_LOCATION_DESC_STRING_NAME, name);
            m_basic_info->add_location(location);
            m_basic_info->add_to_locations_by_string_hash(name, location);
        }
        blocks.in_location = true;
        blocks.location = location;
    } else if (opener == &m_port) {
        DEV_PORT_DESC* port = m_basic_info->get_port_by_string(name);
        if (port) {
            m_text.warning("Warning: overwriting (or adding to) the previous data for port " + name);
        } else {
            port = DEV_PORT_DESC::create();
            port->get_body()->set_string_data(DEV_PORT_DESC_STRING_DEBUG_NAME, name);
            m_basic_info->add_to_ports_by_string_hash(name, port);
        }
        blocks.in_port = true;
        blocks.port = port;
    } else {
        DEV_ELEMENT_DESC* element = m_basic_info->get_element_by_string(name);
        if (!element) {
            element = DEV_ELEMENT_DESC::create();
            const DEV_ELEMENT_ENUM value = dstr_get_dev_element_enum_by_string(name);
            if (value == DEV_ELEMENT_GENERIC) m_text.warning("Warning: found a generic element type " + name + "!");
            element->get_body()->set_int_data(DEV_ELEMENT_DESC_INT_ELEMENT, value);
            element->get_body()->set_string_data(DEV_ELEMENT_DESC_STRING_NAME, name);
            m_basic_info->add_element(element);
            m_basic_info->add_to_elements_by_string_hash(name, element);
        }
        blocks.in_element = true;
        blocks.element = element;
    }
    return true;
}

// ---------------------------------------------------------------------------------------
// Lines inside blocks and outside

template <typename KEY, typename RECORD>
DEV_ATTRIBUTE_STATUS DEV_HDR_PARSER::read_attribute(const std::string& line, RECORD& record, KEY* key) {
    if (!m_syntax.match(ASTR_KEY_TRAITS<KEY>::kind, line)) return DEV_ATTRIBUTE_NO_MATCH;
    if (ASTR_KEY_TRAITS<KEY>::kind == ASTR_KIND_2D_INT) {
        std::string pending;
        if (m_syntax.gather_2d_value([this](std::string& next) { return m_text.current()->next_line(next); }, &pending))
            m_text.current()->put_back(std::move(pending));
    }
    std::string message;
    KEY parsed;
    const DEV_ATTRIBUTE_STATUS status = dev_attribute_apply<KEY>(m_syntax, record, &message, &parsed);
    if (status == DEV_ATTRIBUTE_ERROR)
        m_text.error(message);
    else if (key)
        *key = parsed;
    return status;
}

bool DEV_HDR_PARSER::is_end(const DEV_WORD& word, const std::string& line) { return word == "end" && m_end.match(line); }

// Only lines whose first non-blank character is "#", or that are all blank.
bool DEV_HDR_PARSER::is_blank_or_comment(const std::string& line) {
    const size_t i = line.find_first_not_of(" \t\n\r\f");
    if (i == std::string::npos) return m_blank.match(line);
    return line[i] == '#' && m_comment.match(line);
}

void DEV_HDR_PARSER::syntax_error(const std::string& line) { m_text.error(m_text.syntax_error_message(line)); }

void DEV_HDR_PARSER::read_location_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    if (!blocks.location) {
        DEV_INTERNAL_ERROR("location != NULL");
        return;
    }
    DEV_LOCATION_DESC_BODY& body = *blocks.location->get_body();
    DEV_LOCATION_DESC_STRING_DATA_ENUM key;
    const DEV_ATTRIBUTE_STATUS status = read_attribute(line, body, &key);
    if (status == DEV_ATTRIBUTE_STORED && is_name_key(key))
        m_basic_info->add_to_locations_by_string_hash(body.get_string_data(key), blocks.location);
    if (status != DEV_ATTRIBUTE_NO_MATCH || read_attribute<DEV_LOCATION_DESC_INT_DATA_ENUM>(line, body) ||
        read_attribute<DEV_LOCATION_DESC_BOOL_DATA_ENUM>(line, body))
        return;
    if (is_end(word, line)) {
        blocks.in_location = false;
        blocks.location = nullptr;
    } else if (!is_blank_or_comment(line)) {
        syntax_error(line);
    }
}

void DEV_HDR_PARSER::read_port_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    if (!blocks.port) {
        DEV_INTERNAL_ERROR("port != NULL");
        return;
    }
    DEV_PORT_DESC_BODY& body = *blocks.port->get_body();
    if (m_syntax.match(ASTR_KIND_STRING, line)) {
        // The port's DEBUG_NAME is the name of its block; a line setting it is not applied.
        std::string message;
        DEV_PORT_DESC_STRING_DATA_ENUM key;
        std::string value;
        if (!dev_attribute_parse(m_syntax, &key, &value, &message))
            m_text.error(message);
        else if (key == DEV_PORT_DESC_STRING_DEBUG_NAME)
            m_text.warning("Ignored DEBUG_NAME of " + value + " - debug names set automatically only");
        else
            body.set_string_data(key, value);
        return;
    }
    if (read_attribute<DEV_PORT_DESC_INT_DATA_ENUM>(line, body) || read_attribute<DEV_PORT_DESC_BOOL_DATA_ENUM>(line, body))
        return;
    if (is_end(word, line)) {
        const bool input = body.is_valid_int_enum(DEV_PORT_DESC_INT_INPUT_PORT_TYPE);
        const bool output = body.is_valid_int_enum(DEV_PORT_DESC_INT_OUTPUT_PORT_TYPE);
        if (!input && !output)
            m_text.error("Missing port type. Either INT_INPUT_PORT_TYPE xor INT_OUTPUT_PORT_TYPE is required");
        else if (input && output)
            m_text.error("INT_INPUT_PORT_TYPE and INT_OUTPUT_PORT_TYPE are mutually exlusive. Set only one.");
        blocks.in_port = false;
        blocks.port = nullptr;
    } else if (!is_blank_or_comment(line)) {
        syntax_error(line);
    }
}

void DEV_HDR_PARSER::read_element_list(DEV_ELEMENT_DESC_BODY& element, bool locations, DEV_REGEXP& pattern,
                                       const std::string& line) {
    std::string value, name;
    pattern.group(1, value);
    DEV_TOKENIZER tokens;
    tokens.init(value, ", ", false, false);
    while (tokens.get_token(name)) {
        if (locations) {
            if (DEV_LOCATION_DESC* location = m_basic_info->get_location_by_string(name))
                element.add_location(location);
            else
                m_text.error("Invalid location type: " + name);
        } else {
            if (DEV_PORT_DESC* port = m_basic_info->get_port_by_string(name))
                element.add_port(port);
            else
                m_text.error("Invalid port type: " + name);
        }
    }
}

void DEV_HDR_PARSER::read_element_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    if (!blocks.element) {
        DEV_INTERNAL_ERROR("element != NULL");
        return;
    }
    DEV_ELEMENT_DESC_BODY& body = *blocks.element->get_body();
    if (word == "LOCATIONS" && m_locations.match(line)) {
        read_element_list(body, true, m_locations, line);
        return;
    }
    if (word == "PORTS" && m_ports.match(line)) {
        read_element_list(body, false, m_ports, line);
        return;
    }
    if (read_attribute<DEV_ELEMENT_DESC_BOOL_DATA_ENUM>(line, body)) return;
    DEV_ELEMENT_DESC_STRING_DATA_ENUM string_key;
    DEV_ATTRIBUTE_STATUS status = read_attribute(line, body, &string_key);
    if (status == DEV_ATTRIBUTE_STORED && is_name_key(string_key))
        m_basic_info->add_to_elements_by_string_hash(body.get_string_data(string_key), blocks.element);
    if (status != DEV_ATTRIBUTE_NO_MATCH) return;
    DEV_ELEMENT_DESC_INT_DATA_ENUM int_key;
    status = read_attribute(line, body, &int_key);
    if (status == DEV_ATTRIBUTE_STORED && int_key == DEV_ELEMENT_DESC_INT_CDB_RE_TYPE)
        m_basic_info->add_to_elements_by_cdb_re_type(static_cast<CDB_RE_TYPE>(body.get_int_data(int_key)), blocks.element);
    if (status != DEV_ATTRIBUTE_NO_MATCH || read_attribute<DEV_ELEMENT_DESC_2D_INT_DATA_ENUM>(line, body)) return;
    if (is_end(word, line)) {
        blocks.in_element = false;
        blocks.element = nullptr;
    } else if (!is_blank_or_comment(line)) {
        syntax_error(line);
    }
}

void DEV_HDR_PARSER::read_global_line(const std::string& line) {
    DEV_BASIC_INFO_BODY& body = *m_basic_info;
    if (read_attribute<DEV_BASIC_INFO_STRING_DATA_ENUM>(line, body) || read_attribute<DEV_BASIC_INFO_INT_DATA_ENUM>(line, body) ||
        read_attribute<DEV_BASIC_INFO_BOOL_DATA_ENUM>(line, body) || read_attribute<DEV_BASIC_INFO_ENUM_DATA_ENUM>(line, body) ||
        read_attribute<DEV_BASIC_INFO_2D_INT_DATA_ENUM>(line, body))
        return;
    if (!is_blank_or_comment(line)) syntax_error(line);
}

// ---------------------------------------------------------------------------------------
// The ASCII dump

namespace {

const char* const RULE = "#######################################################\n";

// ENUM keys 0 to 4 hold the device, family, part, speed grade and package; a generic value
// is not written.
bool is_generic_enum_value(int key, int value) {
    switch (key) {
        case DEV_BASIC_INFO_ENUM_DEVICE: return value == DEV_DEVICE_GENERIC;
        case DEV_BASIC_INFO_ENUM_FAMILY: return value == DEV_FAMILY_GENERIC;
        case DEV_BASIC_INFO_ENUM_PART: return value == DEV_PART_GENERIC;
        case DEV_BASIC_INFO_ENUM_SPEED_GRADE: return value == DEV_SPEED_GENERIC;
        case DEV_BASIC_INFO_ENUM_PACKAGE: return value == DEV_PKG_GENERIC;
        default: return false;
    }
}

// "NAME = a, b, c" lines of an element's locations and ports.
template <typename T, typename NAME>
void append_list(const char* key, const std::vector<T*>& records, NAME name, std::string* out) {
    if (records.empty()) return;
    *out += '\t';
    *out += key;
    *out += " = ";
    for (size_t i = 0; i < records.size(); ++i) {
        if (i) *out += ", ";
        *out += name(records[i]);
    }
    *out += '\n';
}

}  // namespace

bool DEV_HDR_WRITER::write(const FIO_PATH& path, int compression_level) {
    DEV_ARCHIVE archive(compression_level);
    if (!archive.open(path, DEV_ARCHIVE::WRITE) || !archive.is_open()) {
        DEV_DEBUG("Failed opening %s", path.full_path().c_str());
        return false;
    }
    bool ok = true;
    std::string text;
    text += RULE;
    text += "### Basic info (HDR file) - ASCII dump by DEV\n";
    text += RULE;
    dev_attribute_write(m_basic_info, "", &text, [this](ASTR_KIND kind, int key) {
        return kind == ASTR_KIND_ENUM &&
               is_generic_enum_value(key, m_basic_info.get_enum_data(static_cast<DEV_BASIC_INFO_ENUM_DATA_ENUM>(key)));
    });
    ok = archive.write(text.data(), text.size()) && ok;

    for (const DEV_LOCATION_DESC* location : m_basic_info.get_location_descs()) {
        text = "location " + location->get_name() + "\n";
        dev_attribute_write(*location->get_body(), "\t", &text);
        text += "end\n\n";
        ok = archive.write(text.data(), text.size()) && ok;
    }
    m_basic_info.get_port_hash().for_each([&](const std::string& name, DEV_PORT_DESC* port) {
        if (!port || !port->get_body()) {
            DEV_INTERNAL_ERROR("(*port_i).second != NULL");
            return;
        }
        const DEV_PORT_DESC_BODY& body = *port->get_body();
        const bool input = body.is_valid_int_enum(DEV_PORT_DESC_INT_INPUT_PORT_TYPE);
        const bool output = body.is_valid_int_enum(DEV_PORT_DESC_INT_OUTPUT_PORT_TYPE);
        if (!input && !output)
            DEV_INTERNAL_ERROR("Port " + name + " missing port type. Either INT_INPUT_PORT_TYPE xor INT_OUTPUT_PORT_TYPE is required");
        else if (input && output)
            DEV_INTERNAL_ERROR("Port " + name + ": INT_INPUT_PORT_TYPE and INT_OUTPUT_PORT_TYPE are mutually exlusive. Set only one.");
        text = "port " + name + "\n";
        // The DEBUG_NAME is the block's name.
        dev_attribute_write(body, "\t", &text, [](ASTR_KIND kind, int key) {
            return kind == ASTR_KIND_STRING && key == DEV_PORT_DESC_STRING_DEBUG_NAME;
        });
        text += "end\n\n";
        ok = archive.write(text.data(), text.size()) && ok;
    });
    for (const DEV_ELEMENT_DESC* element : m_basic_info.get_element_descs()) {
        const DEV_ELEMENT_DESC_BODY& body = *element->get_body();
        text = "element " + element->get_name() + "\n";
        append_list("LOCATIONS", body.get_location_descs(), [](const DEV_LOCATION_DESC* l) { return l->get_name(); },
                    &text);
        append_list("PORTS", body.get_port_descs(), [](const DEV_PORT_DESC* p) {
            if (!p->get_body()->is_valid_string_enum(DEV_PORT_DESC_STRING_DEBUG_NAME))
                DEV_INTERNAL_ERROR("Could not find the required DEBUG_NAME of a port");
            return p->get_debug_name();
        }, &text);
        dev_attribute_write(body, "\t", &text);
        text += "end\n\n";
        ok = archive.write(text.data(), text.size()) && ok;
    }
    archive.close(true);
    return ok;
}

// ---------------------------------------------------------------------------------------
// The body's text members

bool DEV_BASIC_INFO_BODY::read_hdr_file(const FIO_PATH& path) { return DEV_HDR_PARSER(this).read(path); }

bool DEV_BASIC_INFO_BODY::write_hdr_file(const FIO_PATH& path, int compression_level) const {
    return DEV_HDR_WRITER(*this).write(path, compression_level);
}
