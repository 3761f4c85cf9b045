// The PAD text format: its reader and its ASCII dump.
//
// Lines are tried against the patterns of their first word only (every pattern starts with
// blanks and its keyword, key prefix or "#"), which gives the outcome of trying them in the
// format's order.
#include "dev_pad_parser.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "dev_archive_export.h"
#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_family_manager.h"
#include "host/cfg.h"
#include "host/dstr.h"
#include "host/msg.h"

namespace {

const DEV_TEXT_OPEN_REPORTS OPEN_REPORTS = {"File: %s does not exist!", "input.good()"};

// The most pads a PAD file may allocate ("dev_max_pad_count"): far above any device, far
// below what would exhaust memory.
constexpr int DEFAULT_MAX_PADS = 1000000;

// Compiled once; every parser copies them (a copy shares the code and has its own match
// state). The patterns without "^" are anchored all the same.
struct LINE_PATTERNS {
    DEV_REGEXP include{"^\\s*include\\s+\"(.+)\"\\s*$"};
    DEV_REGEXP io_standard{"^\\s*io_standard\\s+(\\w+)\\s*$"};
    DEV_REGEXP io_rule{"^\\s*io_rule\\s+(\\w+)\\s*$"};
    DEV_REGEXP pad{"^\\s*pad\\s+(\\w+)\\s*$"};
    DEV_REGEXP default_pad{"^\\s*default_pad\\s*$"};
    DEV_REGEXP end{"^\\s*end\\s*$"};
    // Compiled with the others, never tested: the pad count is an INT key.
    DEV_REGEXP num_pads{"\\s*num_pads\\s*=\\s*(\\w+)\\s*$"};
    DEV_REGEXP io_standards{"\\s*IO_STANDARDS\\s*=\\s*(.+?)\\s*$"};
    DEV_REGEXP current_set{"\\s*CURRENT_SET\\s*=\\s*(.+?)\\s*$"};
    DEV_REGEXP gnd_current{"\\s*REAL_GND_CURRENT\\[(\\w+)\\]\\s*=\\s*(-?\\d+)\\s*$"};
    DEV_REGEXP vcc_current{"\\s*REAL_VCC_CURRENT\\[(\\w+)\\]\\s*=\\s*(-?\\d+)\\s*$"};
    DEV_REGEXP comment{"^\\s*#.*$"};
    DEV_REGEXP blank{"^\\s*$"};
};

const LINE_PATTERNS& line_patterns() {
    static const LINE_PATTERNS patterns;
    return patterns;
}

// The family of the pad info's device has the new-format database support; the assertions
// name what is missing.
bool has_new_ddb_support(const DEV_PAD_INFO_BODY& pad_info) {
    DEV_DEVICE* device = pad_info.get_device();
    if (!DEV_ASSERT_TEXT(device != NULL, "this->m_pad_info->get_device() != NULL")) return false;
    DEV_BASIC_INFO* basic_info = device->get_basic_info();
    if (!DEV_ASSERT_TEXT(basic_info != NULL, "this->m_pad_info->get_device()->get_basic_info() != NULL"))
        return false;
    return DEV_FAMILY_MANAGER().has_new_ddb_support(basic_info->get_family_enum());
}

// A pad label: digits only, as a number (no overflow: -1 when too large for an int).
long long label_number(const std::string& label) {
    if (label.empty() || label.size() > 10 || label.find_first_not_of("0123456789") != std::string::npos) return -1;
    const long long n = std::atoll(label.c_str());
    return n <= 0x7FFFFFFF ? n : -2;
}

}  // namespace

DEV_PAD_PARSER::DEV_PAD_PARSER(DEV_PAD_INFO_BODY* pad_info)
    : m_pad_info(pad_info),
      m_text(DEV_INCLUDE_BESIDE_INCLUDER),
      m_syntax(DEV_ATTRIBUTE_FORMAT::pad()),
      m_max_pads(cfg_get_int_value("dev_max_pad_count", DEFAULT_MAX_PADS)),
      m_include(line_patterns().include),
      m_io_standard(line_patterns().io_standard),
      m_io_rule(line_patterns().io_rule),
      m_pad(line_patterns().pad),
      m_default_pad(line_patterns().default_pad),
      m_end(line_patterns().end),
      m_num_pads(line_patterns().num_pads),
      m_io_standards(line_patterns().io_standards),
      m_current_set(line_patterns().current_set),
      m_gnd_current(line_patterns().gnd_current),
      m_vcc_current(line_patterns().vcc_current),
      m_comment(line_patterns().comment),
      m_blank(line_patterns().blank) {}

bool DEV_PAD_PARSER::read(const FIO_PATH& path) { return read_file(path); }

bool DEV_PAD_PARSER::read_file(const FIO_PATH& path) {
    if (!DEV_ASSERT_TEXT(m_pad_info != NULL, "this->m_pad_info != NULL")) return false;
    m_new_names = has_new_ddb_support(*m_pad_info);
    DEV_TEXT_FILE file(m_text, path, OPEN_REPORTS);
    if (!file.is_open()) return false;
    BLOCKS blocks;
    std::string line;
    while (file.next_line(line)) read_line(blocks, line);
    return true;
}

void DEV_PAD_PARSER::read_line(BLOCKS& blocks, std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    if (m_text.include_line(word, m_include, line, [this](const FIO_PATH& path) { read_file(path); })) return;
    if (open_block(blocks, word, line)) return;
    switch (blocks.open) {
    case NO_BLOCK: read_top_line(word, line); break;
    case PAD_BLOCK: read_pad_line(blocks, word, line); break;
    case IO_STANDARD_BLOCK: read_io_standard_line(blocks, word, line); break;
    case IO_RULE_BLOCK: read_io_rule_line(blocks, word, line); break;
    }
}

bool DEV_PAD_PARSER::open_block(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    DEV_REGEXP* opener = word == "io_standard" ? &m_io_standard
                         : word == "io_rule"   ? &m_io_rule
                         : word == "pad"       ? &m_pad
                         : word == "default_pad" ? &m_default_pad
                                               : nullptr;
    if (!opener || !opener->match(line)) return false;
    if (blocks.open != NO_BLOCK) m_text.error("Embedded definitions not allowed!");
    blocks = BLOCKS();
    std::string name;
    if (opener != &m_default_pad) opener->group(1, name);
    if (opener == &m_io_standard) {
        DEV_IO_STANDARD_DESC* desc = m_pad_info->get_io_standard_by_string(name);
        if (!desc) {
            desc = DEV_IO_STANDARD_DESC::create();
            desc->get_body()->set_int_data(DEV_IO_STANDARD_DESC_INT_IO_STANDARD, 0);
            desc->get_body()->set_string_data(DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME, name);
            m_pad_info->add_io_standard(desc);
        }
        blocks.open = IO_STANDARD_BLOCK;
        blocks.io_standard = desc->get_body();
    } else if (opener == &m_io_rule) {
        blocks.open = IO_RULE_BLOCK;
        if (!dstr_exists_dev_io_rule_enum_by_string(name.c_str())) {
            m_text.raise("::dstr_exists_dev_io_rule_enum_by_string(name.c_str())");
            return true;
        }
        const DEV_IO_RULE_ENUM rule_enum = dstr_get_dev_io_rule_enum_by_string(name.c_str());
        DEV_IO_RULE* rule = m_pad_info->get_io_rule_by_enum(rule_enum);
        if (!rule) {
            rule = DEV_IO_RULE::create();
            rule->get_body()->set_int_data(DEV_IO_RULE_INT_IO_RULE, rule_enum);
            m_pad_info->add_io_rule(rule);
        }
        blocks.io_rule = rule->get_body();
    } else if (opener == &m_pad) {
        blocks.open = PAD_BLOCK;
        select_pad(blocks, name);
    } else {
        blocks.open = PAD_BLOCK;
        blocks.pad = m_pad_info->make_default_pad_body();
    }
    return true;
}

// A pad block of a label out of range or not a number is open without a pad: its lines are
// passed over up to its "end" (the label was reported).
void DEV_PAD_PARSER::select_pad(BLOCKS& blocks, const std::string& label) {
    const long long number = label_number(label);
    if (number == -1) {
        m_text.raise("ERROR: pad label should be an integer number!");
        return;
    }
    const uint32_t count = m_pad_info->get_number_of_pads();
    if (number < 0 || static_cast<unsigned long long>(number) >= count) {
        char text[128];
        std::snprintf(text, sizeof text, "ERROR: Ignoring pad %d as PAD_INFO only has %d pads",
                      number < 0 ? -1 : static_cast<int>(number), static_cast<int>(count));
        m_text.raise(text);
        return;
    }
    DEV_PAD* pad = m_pad_info->get_pad(static_cast<uint32_t>(number));
    blocks.pad = pad ? pad->get_body() : nullptr;
    if (!blocks.pad) {
        m_text.raise("pad_body != NULL");
        return;
    }
    blocks.pad_id = static_cast<uint32_t>(number);
}

// ---------------------------------------------------------------------------------------
// Lines inside blocks and outside

template <typename KEY, typename RECORD>
DEV_ATTRIBUTE_STATUS DEV_PAD_PARSER::read_attribute(const std::string& line, RECORD& record, KEY* key) {
    if (!dev_attribute_match_line<KEY>(m_syntax, *m_text.current(), line)) return DEV_ATTRIBUTE_NO_MATCH;
    std::string message;
    const DEV_ATTRIBUTE_STATUS status = dev_attribute_apply<KEY>(m_syntax, record, &message, key);
    if (status == DEV_ATTRIBUTE_ERROR) m_text.error(message);
    return status;
}

bool DEV_PAD_PARSER::is_blank_or_comment(const std::string& line) {
    const size_t i = line.find_first_not_of(" \t\n\r\f");
    if (i == std::string::npos) return m_blank.match(line);
    return line[i] == '#' && m_comment.match(line);
}

void DEV_PAD_PARSER::end_or_other(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    if (blocks.open != NO_BLOCK && word == "end" && m_end.match(line))
        blocks = BLOCKS();
    else if (!is_blank_or_comment(line))
        m_text.raise(m_text.syntax_error_message(line));
}

void DEV_PAD_PARSER::read_top_line(const DEV_WORD& word, const std::string& line) {
    DEV_PAD_INFO_BODY& body = *m_pad_info;
    if (read_attribute<DEV_PAD_INFO_STRING_DATA_ENUM>(line, body)) return;
    DEV_PAD_INFO_INT_DATA_ENUM key;
    const DEV_ATTRIBUTE_STATUS status = read_attribute(line, body, &key);
    if (status == DEV_ATTRIBUTE_STORED && key == DEV_PAD_INFO_INT_NUM_PADS) allocate_pads(body.get_int_data(key));
    if (status || read_attribute<DEV_PAD_INFO_BOOL_DATA_ENUM>(line, body) ||
        read_attribute<DEV_PAD_INFO_VEC_STRING_DATA_ENUM>(line, body) ||
        read_attribute<DEV_PAD_INFO_2D_INT_DATA_ENUM>(line, body))
        return;
    BLOCKS none;
    end_or_other(none, word, line);
}

void DEV_PAD_PARSER::allocate_pads(int count) {
    // Each INT_NUM_PADS line adds its pads, so the bound holds for the pad info's total.
    const int held = static_cast<int>(m_pad_info->get_number_of_pads());
    if (count > m_max_pads - held) {
        m_text.error(std::string(astr_get_debug_string(DEV_PAD_INFO_INT_NUM_PADS)) + " = " + std::to_string(count) +
                     " refused: a PAD file allocates at most " + std::to_string(m_max_pads) + " pads" +
                     (held ? " (" + std::to_string(held) + " already)" : std::string()));
        return;
    }
    DEV_DEBUG("Allocating %d PADS", count);
    DEV_PAD_BODY* parent = m_pad_info->make_default_pad_body();
    for (int new_id = 0; new_id < count; ++new_id) {
        DEV_PAD* pad = new DEV_PAD(new DEV_PAD_BODY(parent));
        m_pad_info->add_pad(pad);
        DEV_ASSERT_TEXT(static_cast<uint32_t>(new_id) == pad->get_id(), "new_id == pad->get_id()");
    }
}

// The whole value names the pad; so does the part before its first ",", or else each of
// its "/"-separated pieces. Empty pieces name nothing.
void DEV_PAD_PARSER::add_pad_names(uint32_t pad_id, const std::string& names) {
    m_pad_info->add_to_ids_by_string_hash(names, pad_id);
    const size_t comma = names.find(',');
    if (comma != std::string::npos) {
        if (comma) m_pad_info->add_to_ids_by_string_hash(names.substr(0, comma), pad_id);
        return;
    }
    if (names.find('/') == std::string::npos) return;
    size_t begin = 0;
    for (;;) {
        const size_t slash = names.find('/', begin);
        const std::string piece = names.substr(begin, slash == std::string::npos ? std::string::npos : slash - begin);
        if (!piece.empty()) m_pad_info->add_to_ids_by_string_hash(piece, pad_id);
        if (slash == std::string::npos) break;
        begin = slash + 1;
    }
}

void DEV_PAD_PARSER::read_pad_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    if (!blocks.pad) {
        if (word == "end" && m_end.match(line)) blocks = BLOCKS();
        return;
    }
    DEV_PAD_BODY& pad = *blocks.pad;
    const bool real_pad = blocks.pad_id != DEV_ILLEGAL_PAD_ID;
    if (word == "IO_STANDARDS" && m_io_standards.match(line)) {
        std::string value, name;
        m_io_standards.group(1, value);
        DEV_TOKENIZER tokens;
        tokens.init(value, ", ", false, false);
        while (tokens.get_token(name)) {
            if (DEV_IO_STANDARD_DESC* desc = m_pad_info->get_io_standard_by_string(name))
                pad.add_io_standard(desc);
            else
                m_text.error("Invalid IO standard type: " + name);
        }
        return;
    }
    DEV_PAD_STRING_DATA_ENUM string_key;
    DEV_ATTRIBUTE_STATUS status = read_attribute(line, pad, &string_key);
    if (status == DEV_ATTRIBUTE_STORED && string_key == DEV_PAD_STRING_PAD_NAMES && m_new_names && real_pad)
        add_pad_names(blocks.pad_id, pad.get_string_data(string_key));
    if (status) return;
    DEV_PAD_INT_DATA_ENUM int_key;
    status = read_attribute(line, pad, &int_key);
    // A global id names the pad in the pad info (-1: none); the default pad's is its own.
    if (status == DEV_ATTRIBUTE_STORED && int_key == DEV_PAD_INT_GLOBAL_ID && real_pad) {
        const int gid = pad.get_int_data(int_key);
        if (gid != -1) m_pad_info->add_to_ids_by_global_id_hash(static_cast<uint32_t>(gid), blocks.pad_id, true);
    }
    if (status || read_attribute<DEV_PAD_BOOL_DATA_ENUM>(line, pad) || read_attribute<DEV_PAD_2D_INT_DATA_ENUM>(line, pad))
        return;
    end_or_other(blocks, word, line);
}

bool DEV_PAD_PARSER::parse_current(const std::string& text, DEV_CURRENT_STRENGTH_ENUM* current) {
    int value = 0;
    if (!text.empty() && dev_string_to_int(text, value)) {
        *current = static_cast<DEV_CURRENT_STRENGTH_ENUM>(value);
        return true;
    }
    if (dstr_exists_dev_current_strength_enum_by_string(text.c_str())) {
        *current = dstr_get_dev_current_strength_enum_by_string(text.c_str());
        return true;
    }
    m_text.error("Invalid current value: " + text);
    return false;
}

void DEV_PAD_PARSER::read_io_standard_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    DEV_IO_STANDARD_DESC_BODY& desc = *blocks.io_standard;
    if (word == "CURRENT_SET" && m_current_set.match(line)) {
        std::string value, token;
        m_current_set.group(1, value);
        DEV_TOKENIZER tokens;
        tokens.init(value, ", ", false, false);
        DEV_CURRENT_STRENGTH_ENUM current;
        while (tokens.get_token(token))
            if (parse_current(token, &current)) desc.add_current_enum(current);
        return;
    }
    DEV_REGEXP* current_line = word == "REAL_GND_CURRENT" ? &m_gnd_current
                               : word == "REAL_VCC_CURRENT" ? &m_vcc_current
                                                            : nullptr;
    if (current_line && current_line->match(line)) {
        std::string strength, number;
        current_line->group(1, strength);
        current_line->group(2, number);
        DEV_CURRENT_STRENGTH_ENUM current;
        int value = 0;
        if (!parse_current(strength, &current)) return;
        if (!dev_string_to_int(number, value)) {
            m_text.error("Invalid int value: \"" + number + "\"");
            return;
        }
        if (current_line == &m_gnd_current)
            desc.set_real_gnd_current(current, value);
        else
            desc.set_real_vcc_current(current, value);
        return;
    }
    if (dev_attribute_match_line<DEV_IO_STANDARD_DESC_STRING_DATA_ENUM>(m_syntax, *m_text.current(), line)) {
        // The descriptor's name is the one of its io_standard line.
        DEV_IO_STANDARD_DESC_STRING_DATA_ENUM key;
        std::string value, message;
        if (!dev_attribute_parse(m_syntax, &key, &value, &message))
            m_text.error(message);
        else if (key == DEV_IO_STANDARD_DESC_STRING_INTERNAL_NAME)
            m_text.note("PAD parser ignoring I/O std STRING_INTERNAL_NAME assignment, using io_standard declaration instead.");
        else
            desc.set_string_data(key, std::move(value));
        return;
    }
    if (read_attribute<DEV_IO_STANDARD_DESC_INT_DATA_ENUM>(line, desc) ||
        read_attribute<DEV_IO_STANDARD_DESC_BOOL_DATA_ENUM>(line, desc) ||
        read_attribute<DEV_IO_STANDARD_DESC_2D_INT_DATA_ENUM>(line, desc))
        return;
    end_or_other(blocks, word, line);
}

void DEV_PAD_PARSER::read_io_rule_line(BLOCKS& blocks, const DEV_WORD& word, const std::string& line) {
    if (!blocks.io_rule) {
        if (word == "end" && m_end.match(line)) blocks = BLOCKS();
        return;
    }
    DEV_IO_RULE_BODY& rule = *blocks.io_rule;
    if (read_attribute<DEV_IO_RULE_STRING_DATA_ENUM>(line, rule)) return;
    DEV_IO_RULE_INT_DATA_ENUM key;
    const DEV_ATTRIBUTE_STATUS status = read_attribute(line, rule, &key);
    // The rule's value names it: the value as written, "_" and the enumerator plus one.
    if (status == DEV_ATTRIBUTE_STORED && key == DEV_IO_RULE_INT_RULE_VALUE) {
        char suffix[32];
        std::snprintf(suffix, sizeof suffix, "_%06d", static_cast<int>(rule.get_io_rule_enum()) + 1);
        rule.set_string_data(DEV_IO_RULE_STRING_NAME, m_syntax.value() + suffix);
    }
    if (status || read_attribute<DEV_IO_RULE_BOOL_DATA_ENUM>(line, rule)) return;
    end_or_other(blocks, word, line);
}

// ---------------------------------------------------------------------------------------
// The ASCII dump

namespace {

const char* const RULE = "#######################################################\n";

// BOOL, INT, STRING and 2D_INT keys of a block's record, each line after a tab.
template <typename BOOL_KEY, typename INT_KEY, typename STRING_KEY, typename RECORD, typename SKIP>
void write_block_keys(const RECORD& record, std::string* text, SKIP&& skip) {
    dev_attribute_write_kind<BOOL_KEY>(record, "\t", text, skip);
    dev_attribute_write_kind<INT_KEY>(record, "\t", text, skip);
    dev_attribute_write_kind<STRING_KEY>(record, "\t", text, skip);
}

void append_joined(const char* key, const std::vector<std::string>& names, std::string* text) {
    if (names.empty()) return;
    *text += '\t';
    *text += key;
    *text += " = ";
    for (size_t i = 0; i < names.size(); ++i) {
        if (i) *text += ", ";
        *text += names[i];
    }
    *text += '\n';
}

}  // namespace

void DEV_PAD_WRITER::write_io_standard(const DEV_IO_STANDARD_DESC& desc, std::string* text) const {
    const DEV_IO_STANDARD_DESC_BODY& body = *desc.get_body();
    const std::string& name = body.get_name();
    DEV_ASSERT_TEXT(!name.empty(), "!io_standard_name.empty()");
    *text += "io_standard " + name + "\n";
    std::vector<std::string> strengths;
    for (DEV_CURRENT_STRENGTH_ENUM current : body.get_current_set()) strengths.push_back(dstr_get_debug_string(current));
    append_joined("CURRENT_SET", strengths, text);
    char line[128];
    for (size_t i = 0; i < strengths.size(); ++i) {
        const DEV_CURRENT_STRENGTH_ENUM current = body.get_current_set()[i];
        std::snprintf(line, sizeof line, "\tREAL_VCC_CURRENT[%s] = %d\n\tREAL_GND_CURRENT[%s] = %d\n",
                      strengths[i].c_str(), body.get_real_vcc_current(current), strengths[i].c_str(),
                      body.get_real_gnd_current(current));
        *text += line;
    }
    write_block_keys<DEV_IO_STANDARD_DESC_BOOL_DATA_ENUM, DEV_IO_STANDARD_DESC_INT_DATA_ENUM,
                     DEV_IO_STANDARD_DESC_STRING_DATA_ENUM>(body, text, dev_attribute_detail::WRITE_ALL_KEYS());
    dev_attribute_write_kind<DEV_IO_STANDARD_DESC_2D_INT_DATA_ENUM>(body, "\t", text);
    *text += "end\n\n";
}

// Keys valid on the pad or its default pad; a BOOL equal to the default pad's is left out,
// INT, STRING and 2D_INT keys are written even when inherited.
void DEV_PAD_WRITER::write_pad_body(const DEV_PAD_BODY& pad, std::string* text) const {
    std::vector<std::string> names;
    for (const DEV_IO_STANDARD_DESC* desc : pad.get_io_standard_descs()) names.push_back(desc->get_name());
    append_joined("IO_STANDARDS", names, text);
    const DEV_PAD_BODY* parent = pad.get_default_pad_body();
    auto same_as_default = [&](ASTR_KIND kind, int k) {
        const DEV_PAD_BOOL_DATA_ENUM key = static_cast<DEV_PAD_BOOL_DATA_ENUM>(k);
        return kind == ASTR_KIND_BOOL && parent && parent->sets(key) &&
               parent->get_bool_data(key) == pad.get_bool_data(key);
    };
    write_block_keys<DEV_PAD_BOOL_DATA_ENUM, DEV_PAD_INT_DATA_ENUM, DEV_PAD_STRING_DATA_ENUM>(pad, text,
                                                                                            same_as_default);
    dev_attribute_write_kind<DEV_PAD_2D_INT_DATA_ENUM>(pad, "\t", text);
}

bool DEV_PAD_WRITER::write(const FIO_PATH& path, int compression) {
    const auto start = std::chrono::steady_clock::now();
    DEV_ARCHIVE archive(compression);
    if (!archive.open(path, DEV_ARCHIVE::WRITE) || !archive.is_open()) {
        DEV_DEBUG("Failed opening %s", path.full_path().c_str());
        return false;
    }
    bool ok = true;
    auto flush = [&](std::string& text) {
        ok = archive.write(text.data(), text.size()) && ok;
        text.clear();
    };
    std::string text;
    text += RULE;
    text += "### PAD info - ASCII dump by DEV\n";
    text += RULE;
    // The pad info's own kinds, VEC_STRING before 2D_INT.
    dev_attribute_write_kind<DEV_PAD_INFO_BOOL_DATA_ENUM>(m_pad_info, "", &text);
    dev_attribute_write_kind<DEV_PAD_INFO_INT_DATA_ENUM>(m_pad_info, "", &text);
    dev_attribute_write_kind<DEV_PAD_INFO_STRING_DATA_ENUM>(m_pad_info, "", &text);
    dev_attribute_write_kind<DEV_PAD_INFO_VEC_STRING_DATA_ENUM>(m_pad_info, "", &text);
    dev_attribute_write_kind<DEV_PAD_INFO_2D_INT_DATA_ENUM>(m_pad_info, "", &text);
    text += "\n";
    flush(text);
    for (const DEV_IO_STANDARD_DESC* desc : m_pad_info.get_io_standard_descs()) {
        write_io_standard(*desc, &text);
        flush(text);
    }
    for (const DEV_IO_RULE* rule : m_pad_info.get_io_rules()) {
        const char* name = dstr_get_debug_string(rule->get_io_rule_enum());
        DEV_ASSERT_TEXT(name && *name, "!io_rule_name.empty()");
        text += std::string("io_rule ") + (name ? name : "") + "\n";
        write_block_keys<DEV_IO_RULE_BOOL_DATA_ENUM, DEV_IO_RULE_INT_DATA_ENUM, DEV_IO_RULE_STRING_DATA_ENUM>(
            *rule->get_body(), &text, dev_attribute_detail::WRITE_ALL_KEYS());
        text += "end\n\n";
        flush(text);
    }
    text += "default_pad\n";
    if (const DEV_PAD_BODY* default_pad = m_pad_info.get_default_pad_body()) write_pad_body(*default_pad, &text);
    text += "end\n\n";
    flush(text);
    for (const DEV_PAD* pad : m_pad_info.get_pads()) {
        text += "pad " + std::to_string(pad->get_id()) + "\n";
        write_pad_body(*pad->get_body(), &text);
        text += "end\n\n";
        flush(text);
    }
    // Every pad's global ids in the table's bucket order.
    std::vector<std::vector<uint32_t>> gids(m_pad_info.get_number_of_pads());
    m_pad_info.get_ids_by_global_id().for_each([&](uint32_t gid, uint32_t pad_id) {
        if (pad_id < gids.size()) gids[pad_id].push_back(gid);
    });
    text += "# GIDs -> pad_id map for your reference\n";
    for (size_t pad_id = 0; pad_id < gids.size(); ++pad_id) {
        if (gids[pad_id].empty()) continue;
        text += "# {";
        for (uint32_t gid : gids[pad_id]) text += " " + std::to_string(gid);
        text += " } -> " + std::to_string(pad_id) + "\n";
    }
    flush(text);
    archive.close(true);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    DEV_DEBUG("Spent %.0f secs writing \"%s\"", seconds, path.full_path().c_str());
    return ok;
}

// ---------------------------------------------------------------------------------------
// The body's text members

bool DEV_PAD_INFO_BODY::read_pad_file(const FIO_PATH& path) {
    make_default_pad_body();
    const bool read = DEV_PAD_PARSER(this).read(path);
    fill_in_io_standard_enums();
    return read;
}

bool DEV_PAD_INFO_BODY::write_pad_file(const FIO_PATH& path, int compression) const {
    return DEV_PAD_WRITER(*this).write(path, compression);
}
