// The PKG text format: its reader and its ASCII dump.
//
// Lines are tried against the patterns of their first word only (every pattern starts with
// blanks and its keyword, key prefix or "#"), which gives the outcome of trying them in the
// format's order.
#include "dev_pkg_parser.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "dev_archive_export.h"
#include "host/cfg.h"
#include "host/msg.h"

namespace {

const DEV_TEXT_OPEN_REPORTS OPEN_REPORTS = {nullptr, "input.good()"};

// The most pins a PKG file may allocate ("dev_max_pin_count"): far above any package, far
// below what would exhaust memory.
constexpr int DEFAULT_MAX_PINS = 1000000;

struct LINE_PATTERNS {
    DEV_REGEXP include{"^\\s*include\\s+\"(.+)\"\\s*$"};
    DEV_REGEXP pin{"^\\s*pin\\s+(\\w+)\\s*$"};
    DEV_REGEXP end{"^\\s*end\\s*$"};
    DEV_REGEXP num_pins{"^\\s*INT_NUM_PINS\\s*=\\s*(\\w+)\\s*$"};
    DEV_REGEXP pad_ids{"^\\s*PAD_IDS\\s*=\\s*(.+?)\\s*$"};
    DEV_REGEXP comment{"^\\s*#.*$"};
    DEV_REGEXP blank{"^\\s*$"};
};

const LINE_PATTERNS& line_patterns() {
    static const LINE_PATTERNS patterns;
    return patterns;
}

// A pin label: digits only, as a number; -1 when it is not one, -2 when too large.
long long label_number(const std::string& label) {
    if (label.empty() || label.find_first_not_of("0123456789") != std::string::npos) return -1;
    if (label.size() > 10) return -2;
    const long long n = std::atoll(label.c_str());
    return n <= 0x7FFFFFFF ? n : -2;
}

}  // namespace

DEV_PKG_PARSER::DEV_PKG_PARSER(DEV_PKG_INFO_BODY* pkg_info)
    : m_pkg_info(pkg_info),
      m_text(DEV_INCLUDE_AS_WRITTEN),
      m_syntax(DEV_ATTRIBUTE_FORMAT::pkg()),
      m_max_pins(cfg_get_int_value("dev_max_pin_count", DEFAULT_MAX_PINS)),
      m_include(line_patterns().include),
      m_pin(line_patterns().pin),
      m_end(line_patterns().end),
      m_num_pins(line_patterns().num_pins),
      m_pad_ids(line_patterns().pad_ids),
      m_comment(line_patterns().comment),
      m_blank(line_patterns().blank) {}

bool DEV_PKG_PARSER::read(const FIO_PATH& path) {
    if (!DEV_ASSERT_TEXT(m_pkg_info != NULL, "this->m_pkg_info != NULL")) return false;
    return read_file(path);
}

bool DEV_PKG_PARSER::read_file(const FIO_PATH& path) {
    DEV_TEXT_FILE file(m_text, path, OPEN_REPORTS);
    if (!file.is_open()) return false;
    BLOCK block;
    std::string line;
    while (file.next_line(line)) read_line(block, line);
    return true;
}

void DEV_PKG_PARSER::read_line(BLOCK& block, std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    if (m_text.include_line(word, m_include, line, [this](const FIO_PATH& path) { read_file(path); })) return;
    if (word == "pin" && m_pin.match(line)) {
        if (block.open) m_text.error("Embedded definitions not allowed!");
        std::string label;
        m_pin.group(1, label);
        open_pin(block, label);
        return;
    }
    if (block.open)
        read_pin_line(block, word, line);
    else
        read_top_line(line);
}

// The block opens without a pin; a label that names one selects it, the others are noted
// (the lines of such a block then trip the assertion on the missing pin).
void DEV_PKG_PARSER::open_pin(BLOCK& block, const std::string& label) {
    block.open = true;
    block.pin_id = DEV_ILLEGAL_PIN_ID;
    const long long number = label_number(label);
    if (number == -1) {
        m_text.note("ERROR: pin label should be an integer number!");
        return;
    }
    const uint32_t count = m_pkg_info->get_number_of_pins();
    if (number < 0 || static_cast<unsigned long long>(number) >= count) {
        char text[128];
        std::snprintf(text, sizeof text, "ERROR: Ignoring pin %d as PKG_INFO only has %d pins",
                      number < 0 ? -1 : static_cast<int>(number), static_cast<int>(count));
        m_text.note(text);
        return;
    }
    block.pin_id = static_cast<uint32_t>(number);
}

template <typename KEY>
DEV_ATTRIBUTE_STATUS DEV_PKG_PARSER::read_attribute(const std::string& line) {
    if (!dev_attribute_match_line<KEY>(m_syntax, *m_text.current(), line)) return DEV_ATTRIBUTE_NO_MATCH;
    std::string message;
    const DEV_ATTRIBUTE_STATUS status = dev_attribute_apply<KEY>(m_syntax, *m_pkg_info, &message);
    if (status == DEV_ATTRIBUTE_ERROR) m_text.error(message);
    return status;
}

template <typename KEY>
DEV_ATTRIBUTE_STATUS DEV_PKG_PARSER::read_pin_attribute(uint32_t pin_id, const std::string& line) {
    if (!dev_attribute_match_line<KEY>(m_syntax, *m_text.current(), line)) return DEV_ATTRIBUTE_NO_MATCH;
    KEY key;
    DEV_ATTRIBUTE_VALUE<KEY> value{};
    std::string message;
    if (!dev_attribute_parse(m_syntax, &key, &value, &message)) {
        m_text.error(message);
        return DEV_ATTRIBUTE_ERROR;
    }
    m_pkg_info->set_pin_data(pin_id, key, value);
    return DEV_ATTRIBUTE_STORED;
}

bool DEV_PKG_PARSER::is_blank_or_comment(const std::string& line) {
    const size_t i = line.find_first_not_of(" \t\n\r\f");
    if (i == std::string::npos) return m_blank.match(line);
    return line[i] == '#' && m_comment.match(line);
}

void DEV_PKG_PARSER::allocate_pins(const std::string& text) {
    int count = 0;
    if (!dev_string_to_int(text, count)) {
        m_text.error("Invalid int value: " + text);
        return;
    }
    // Each INT_NUM_PINS line adds its pins, so the bound holds for the package's total.
    const int held = static_cast<int>(m_pkg_info->get_number_of_pins());
    if (count > m_max_pins - held) {
        m_text.error("INT_NUM_PINS = " + text + " refused: a PKG file allocates at most " + std::to_string(m_max_pins) +
                     " pins" + (held ? " (" + std::to_string(held) + " already)" : std::string()));
        return;
    }
    DEV_DEBUG("Allocating %d PINS", count);
    for (int new_id = 0; new_id < count; ++new_id) {
        DEV_PIN* pin = new DEV_PIN;
        m_pkg_info->add_pin(pin);
        DEV_ASSERT_TEXT(static_cast<uint32_t>(new_id) == pin->get_id(), "new_id == pin->get_id()");
    }
}

void DEV_PKG_PARSER::read_top_line(const std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    if (word == "INT_NUM_PINS" && m_num_pins.match(line)) {
        std::string count;
        m_num_pins.group(1, count);
        allocate_pins(count);
        return;
    }
    if (read_attribute<DEV_PKG_INFO_INT_DATA_ENUM>(line) || read_attribute<DEV_PKG_INFO_BOOL_DATA_ENUM>(line) ||
        read_attribute<DEV_PKG_INFO_STRING_DATA_ENUM>(line) || read_attribute<DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM>(line) ||
        read_attribute<DEV_PKG_INFO_2D_INT_DATA_ENUM>(line))
        return;
    if (!is_blank_or_comment(line)) m_text.raise(m_text.syntax_error_message(line));
}

void DEV_PKG_PARSER::read_pin_line(BLOCK& block, const DEV_WORD& word, const std::string& line) {
    const bool end = word == "end" && m_end.match(line);
    if (block.pin_id == DEV_ILLEGAL_PIN_ID) {
        m_text.raise("pin_id != DEV_ILLEGAL_PIN_ID");
        if (end) block = BLOCK();
        return;
    }
    const uint32_t pin_id = block.pin_id;
    if (word == "PAD_IDS" && m_pad_ids.match(line)) {
        std::string value, token;
        m_pad_ids.group(1, value);
        DEV_TOKENIZER tokens;
        tokens.init(value, ", ", false, false);
        int pad_id = 0;
        while (tokens.get_token(token)) {
            if (dev_string_to_int(token, pad_id))
                m_pkg_info->add_pad_id_to_pin(pin_id, static_cast<uint32_t>(pad_id));
            else
                m_text.error("Invalid DEV_PAD_ID value: " + token);
        }
        return;
    }
    if (dev_attribute_match_line<DEV_PIN_STRING_DATA_ENUM>(m_syntax, *m_text.current(), line)) {
        DEV_PIN_STRING_DATA_ENUM key;
        std::string value, message;
        if (!dev_attribute_parse(m_syntax, &key, &value, &message)) {
            m_text.error(message);
            return;
        }
        m_pkg_info->set_pin_string_data(pin_id, key, value);
        if (key == DEV_PIN_STRING_PIN_NAME) m_pkg_info->add_to_ids_by_string_hash(value, pin_id);
        return;
    }
    if (read_pin_attribute<DEV_PIN_INT_DATA_ENUM>(pin_id, line) || read_pin_attribute<DEV_PIN_BOOL_DATA_ENUM>(pin_id, line) ||
        read_pin_attribute<DEV_PIN_VEC_INT_DATA_ENUM>(pin_id, line))
        return;
    if (end)
        block = BLOCK();
    else if (!is_blank_or_comment(line))
        m_text.raise(m_text.syntax_error_message(line));
}

// ---------------------------------------------------------------------------------------
// The ASCII dump

bool DEV_PKG_WRITER::write(const FIO_PATH& path, int compression) {
    const auto start = std::chrono::steady_clock::now();
    DEV_ARCHIVE archive(compression);
    if (!archive.open(path, DEV_ARCHIVE::WRITE) || !archive.is_open()) {
        DEV_DEBUG("Failed opening %s", path.full_path().c_str());
        return false;
    }
    bool ok = true;
    std::string text;
    auto flush = [&] {
        ok = archive.write(text.data(), text.size()) && ok;
        text.clear();
    };
    text += "#######################################################\n";
    text += "### PKG info - ASCII dump by DEV\n";
    text += "#######################################################\n";
    dev_attribute_write_kind<DEV_PKG_INFO_BOOL_DATA_ENUM>(m_pkg_info, "", &text);
    text += "INT_NUM_PINS = " + std::to_string(m_pkg_info.get_number_of_pins()) + "\n";
    dev_attribute_write_kind<DEV_PKG_INFO_INT_DATA_ENUM>(m_pkg_info, "", &text);
    dev_attribute_write_kind<DEV_PKG_INFO_STRING_DATA_ENUM>(m_pkg_info, "", &text);
    dev_attribute_write_kind<DEV_PKG_INFO_2D_INT_DATA_ENUM>(m_pkg_info, "", &text);
    dev_attribute_write_kind<DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM>(m_pkg_info, "", &text);
    flush();
    for (const DEV_PIN* pin : m_pkg_info.get_pins()) {
        text += "pin " + std::to_string(pin->get_id()) + "\n";
        const std::vector<uint32_t>& pads = pin->get_list_of_pad_ids();
        if (!pads.empty()) {
            text += "\tPAD_IDS = ";
            for (size_t i = 0; i < pads.size(); ++i) text += (i ? ", " : "") + std::to_string(pads[i]);
            text += "\n";
        }
        dev_attribute_write(*pin, "\t", &text);
        text += "end\n\n";
        flush();
    }
    archive.close(true);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    DEV_DEBUG("Spent %.0f secs writing \"%s\"", seconds, path.full_path().c_str());
    return ok;
}

// ---------------------------------------------------------------------------------------
// The body's text members

bool DEV_PKG_INFO_BODY::read_pkg_file(const FIO_PATH& path) { return DEV_PKG_PARSER(this).read(path); }

bool DEV_PKG_INFO_BODY::write_pkg_file(const FIO_PATH& path, int compression) const {
    return DEV_PKG_WRITER(*this).write(path, compression);
}
