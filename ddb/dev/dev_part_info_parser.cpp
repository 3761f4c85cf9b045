// The PART_INFO text format: its reader and its ASCII dump.
//
// Inside a power_supply block the lines are tried as STRING, INT, BOOL, ENUM and 2D_INT
// lines of the supply, then "end", blank and comment lines; at the top level as the same
// kinds of the part info, then blank and comment lines. Each attribute pattern needs its
// own key prefix, so trying the kinds in any order gives the same outcome.
#include "dev_part_info_parser.h"

#include "dev_archive_export.h"
#include "dev_attribute_io.h"
#include "dev_text_attribute.h"
#include "host/cfg.h"
#include "host/msg.h"

namespace {

const DEV_TEXT_OPEN_REPORTS OPEN_REPORTS = {nullptr, "input.good()"};

// "dev_dump_part_info_after_read": the part info is dumped beside every file read.
const CFG_SWITCH DUMP_AFTER_READ_SWITCH("dev_dump_part_info_after_read", false);

// Compiled once; every parser copies them (a copy shares the code, not the match state).
struct LINE_PATTERNS {
    DEV_REGEXP include{"^\\s*include\\s+\"(.+)\"\\s*$"};
    DEV_REGEXP power_supply{"^\\s*power_supply\\s+(\\w+)\\s*$"};
    DEV_REGEXP end{"^\\s*end\\s*$"};
};

const LINE_PATTERNS& line_patterns() {
    static const LINE_PATTERNS patterns;
    return patterns;
}

}  // namespace

DEV_PART_INFO_PARSER::DEV_PART_INFO_PARSER(DEV_PART_INFO_BODY* part_info)
    : m_part_info(part_info),
      m_text(DEV_INCLUDE_AS_WRITTEN),
      m_syntax(DEV_ATTRIBUTE_FORMAT::part_info()),
      m_include(line_patterns().include),
      m_power_supply(line_patterns().power_supply),
      m_end(line_patterns().end) {}

bool DEV_PART_INFO_PARSER::read(const FIO_PATH& path) {
    if (!DEV_ASSERT_TEXT(m_part_info != NULL, "this->m_part_info != NULL")) return false;
    return read_file(path);
}

bool DEV_PART_INFO_PARSER::read_file(const FIO_PATH& path) {
    DEV_TEXT_FILE file(m_text, path, OPEN_REPORTS);
    if (!file.is_open()) return false;
    BLOCK block;
    std::string line;
    while (file.next_line(line)) read_line(block, line);
    if (DUMP_AFTER_READ_SWITCH.is_on()) {
        FIO_PATH verify = path;
        verify.set_base_name(path.base_name() + "_verify");
        DEV_PART_INFO_WRITER(*m_part_info).write(verify, ZLIB_NO_COMPRESSION);
    }
    return true;
}

void DEV_PART_INFO_PARSER::read_line(BLOCK& block, const std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    if (m_text.include_line(word, m_include, line, [this](const FIO_PATH& path) { read_file(path); })) return;
    if (word == "power_supply" && m_power_supply.match(line)) {
        std::string name;
        m_power_supply.group(1, name);
        open_block(block, name);
    } else if (block.open) {
        read_supply_line(block, word, line);
    } else {
        read_top_line(line);
    }
}

void DEV_PART_INFO_PARSER::open_block(BLOCK& block, const std::string& name) {
    if (block.open) m_text.error("Embedded definitions not allowed!");
    block.open = true;
    block.supply = nullptr;
    const DEV_POWER_SUPPLY_ENUM power_supply = astr_get_dev_power_supply_enum_by_string(name);
    if (power_supply == DEV_POWER_SUPPLY_INVALID) {
        m_text.error("power_supply != DEV_POWER_SUPPLY_INVALID");
        return;
    }
    if (m_part_info->is_valid_power_supply_enum(power_supply)) {
        block.supply = m_part_info->get_power_supply_desc(power_supply);
        return;
    }
    block.supply = DEV_POWER_SUPPLY_DESC::create(power_supply);
    m_part_info->add_power_supply(block.supply);
}

void DEV_PART_INFO_PARSER::read_supply_line(BLOCK& block, const DEV_WORD& word, const std::string& line) {
    if (word == "end" && m_end.match(line)) {
        block = BLOCK();
    } else if (m_skipped.matches(line)) {
        return;
    } else if (!block.supply) {
        // The block's name was no supply: its lines have nowhere to go.
        m_text.error("power_supply_desc != NULL");
    } else if (dev_text_read_attribute(m_syntax, m_text, *m_text.current(), line, *block.supply->get_body()) ==
               DEV_ATTRIBUTE_NO_MATCH) {
        m_text.error(m_text.syntax_error_message(line));
    }
}

void DEV_PART_INFO_PARSER::read_top_line(const std::string& line) {
    if (dev_text_read_attribute(m_syntax, m_text, *m_text.current(), line, *m_part_info) == DEV_ATTRIBUTE_NO_MATCH &&
        !m_skipped.matches(line))
        m_text.error(m_text.syntax_error_message(line));
}

// ---------------------------------------------------------------------------------------
// The ASCII dump

namespace {

const char* const RULE = "#######################################################\n";

// Every set INT key of the part info as "KEY = KEY": the value's place holds the key's name.
void append_int_keys_by_name(const DEV_PART_INFO_BODY& part_info, std::string* out) {
    for (int k = 0; k < DEV_PART_INFO_INT_DATA_MAX; ++k) {
        const DEV_PART_INFO_INT_DATA_ENUM key = static_cast<DEV_PART_INFO_INT_DATA_ENUM>(k);
        if (!part_info.is_valid_int_enum(key)) continue;
        const char* name = astr_get_debug_string(key);
        *out += name;
        *out += " = ";
        *out += name;
        *out += '\n';
    }
}

}  // namespace

bool DEV_PART_INFO_WRITER::write(const FIO_PATH& path, int compression_level) {
    DEV_ARCHIVE archive(compression_level);
    if (!archive.open(path, DEV_ARCHIVE::WRITE) || !archive.is_open()) {
        DEV_DEBUG("Failed opening %s", path.full_path().c_str());
        return false;
    }
    std::string text = RULE;
    text += "### PART_INFO info (PART_INFO file) - ASCII dump by DEV\n";
    text += RULE;
    dev_attribute_write_kind<DEV_PART_INFO_BOOL_DATA_ENUM>(m_part_info, "", &text);
    append_int_keys_by_name(m_part_info, &text);
    dev_attribute_write_kind<DEV_PART_INFO_ENUM_DATA_ENUM>(m_part_info, "", &text);
    dev_attribute_write_kind<DEV_PART_INFO_STRING_DATA_ENUM>(m_part_info, "", &text);
    dev_attribute_write_kind<DEV_PART_INFO_2D_INT_DATA_ENUM>(m_part_info, "", &text);
    bool ok = archive.write(text.data(), text.size());
    for (const DEV_POWER_SUPPLY_DESC* supply : m_part_info.get_power_supply_desc_vec()) {
        const DEV_POWER_SUPPLY_DESC_BODY* body = supply->get_body();
        if (!body) continue;
        text = std::string("power_supply ") + astr_get_debug_string(body->get_power_supply_enum()) + "\n";
        // The 2D tables stand unindented, after the other kinds.
        dev_attribute_write(*body, "\t", &text, [](ASTR_KIND kind, int) { return kind == ASTR_KIND_2D_INT; });
        dev_attribute_write_kind<DEV_POWER_SUPPLY_DESC_2D_INT_DATA_ENUM>(*body, "", &text);
        text += "end\n\n";
        ok = archive.write(text.data(), text.size()) && ok;
    }
    archive.close(true);
    return ok && archive.write_ok();
}

// ---------------------------------------------------------------------------------------
// The body's text members

bool DEV_PART_INFO_BODY::read_ascii_file(const FIO_PATH& path) {
    const bool read = DEV_PART_INFO_PARSER(this).read(path);
    set_initialized(true);
    return read;
}

bool DEV_PART_INFO_BODY::write_ascii_file(const FIO_PATH& path, int compression) const {
    return DEV_PART_INFO_WRITER(*this).write(path, compression);
}
