// The RSI text format: its reader and its ASCII dump.
//
// Every line is tried as an include, then as the opener of a global_info, routing_switch or
// pass_tree block, then by the open block: global_info and pass_tree blocks take INT and
// 2D_INT lines of their record, routing_switch blocks PASS_TREES, STRING, INT, 2D_INT and
// BOOL lines; every block takes "end", blank and comment lines. Outside blocks only blank
// and comment lines stand. Lines are tried against the patterns of their first word only,
// which gives the outcome of trying them in that order. (The ENUM pattern is part of the
// format's line syntax, but no block reads ENUM lines.)
#include "dev_rsi_parser.h"

#include <ctime>

#include "dev_archive_export.h"
#include "dev_attribute_io.h"
#include "dev_text_attribute.h"
#include "host/cfg.h"
#include "host/msg.h"

namespace {

const DEV_TEXT_OPEN_REPORTS OPEN_REPORTS = {"File %s does not exist", "input.good()"};

// "dev_dump_rsi_read": the routing-switch info is dumped beside every file read.
const CFG_SWITCH DUMP_RSI_READ_SWITCH("dev_dump_rsi_read", false);
// "dev_debug_rsi_parser": the dump also states the counts.
const CFG_SWITCH DEBUG_RSI_PARSER_SWITCH("dev_debug_rsi_parser", false);

// Compiled once; every parser copies them (a copy shares the code, not the match state).
struct LINE_PATTERNS {
    DEV_REGEXP include{"^\\s*include\\s+\"(.+)\"\\s*$"};
    DEV_REGEXP global_info{"^\\s*global_info\\s*$"};
    DEV_REGEXP routing_switch{"^\\s*routing_switch\\s+(\\w+)\\s*$"};
    DEV_REGEXP pass_tree{"^\\s*pass_tree\\s+(\\w+)\\s*$"};
    DEV_REGEXP end{"^\\s*end\\s*$"};
    DEV_REGEXP pass_trees{"^\\s*PASS_TREES\\s*=\\s*(.*)\\s*$"};
};

const LINE_PATTERNS& line_patterns() {
    static const LINE_PATTERNS patterns;
    return patterns;
}

}  // namespace

DEV_RSI_PARSER::DEV_RSI_PARSER(DEV_ROUTING_SWITCH_INFO_BODY* routing_switch_info)
    : m_routing_switch_info(routing_switch_info),
      m_text(DEV_INCLUDE_BESIDE_INCLUDER),
      m_syntax(DEV_ATTRIBUTE_FORMAT::rsi()),
      m_include(line_patterns().include),
      m_global_info(line_patterns().global_info),
      m_routing_switch(line_patterns().routing_switch),
      m_pass_tree(line_patterns().pass_tree),
      m_end(line_patterns().end),
      m_pass_trees(line_patterns().pass_trees) {}

bool DEV_RSI_PARSER::read(const FIO_PATH& path) {
    if (!DEV_ASSERT_TEXT(m_routing_switch_info != NULL, "this->m_routing_switch_info != NULL")) return false;
    return read_file(path);
}

bool DEV_RSI_PARSER::read_file(const FIO_PATH& path) {
    DEV_TEXT_FILE file(m_text, path, OPEN_REPORTS);
    if (!file.is_open()) return false;
    BLOCK block;
    std::string line;
    while (file.next_line(line)) read_line(block, line);
    if (DUMP_RSI_READ_SWITCH.is_on()) {
        FIO_PATH verify = path;
        verify.set_base_name(path.base_name() + "verify");
        DEV_RSI_WRITER(*m_routing_switch_info).write(verify, ZLIB_NO_COMPRESSION);
    }
    return true;
}

void DEV_RSI_PARSER::read_line(BLOCK& block, const std::string& line) {
    const DEV_WORD word = dev_first_word(line);
    if (m_text.include_line(word, m_include, line, [this](const FIO_PATH& path) { read_file(path); })) return;
    if (open_block(block, word, line)) return;
    switch (block.kind) {
    case BLOCK::GLOBAL:
        if (dev_text_read_attribute(m_syntax, m_text, *m_text.current(), line, *block.global_info->get_body()) !=
            DEV_ATTRIBUTE_NO_MATCH)
            return;
        break;
    case BLOCK::PASS_TREE:
        if (dev_text_read_attribute(m_syntax, m_text, *m_text.current(), line, *block.pass_tree->get_body()) !=
            DEV_ATTRIBUTE_NO_MATCH)
            return;
        break;
    case BLOCK::SWITCH:
        if (!(word == "end" && m_end.match(line))) return read_switch_line(block, word, line);
        break;
    case BLOCK::NONE:
        break;
    }
    read_other_line(block, word, line);
}

bool DEV_RSI_PARSER::open_block(BLOCK& block, const DEV_WORD& word, const std::string& line) {
    DEV_REGEXP* opener = word == "global_info"      ? &m_global_info
                         : word == "routing_switch" ? &m_routing_switch
                         : word == "pass_tree"      ? &m_pass_tree
                                                    : nullptr;
    if (!opener || !opener->match(line)) return false;
    if (block.kind != BLOCK::NONE) m_text.error("Embedded definitions not allowed!");
    block = BLOCK();
    std::string name;
    if (opener == &m_global_info) {
        DEV_ROUTING_GLOBAL_INFO* global_info = m_routing_switch_info->get_global_info();
        if (!global_info) {
            global_info = DEV_ROUTING_GLOBAL_INFO::create();
            m_routing_switch_info->set_global_info(global_info);
        }
        block.kind = BLOCK::GLOBAL;
        block.global_info = global_info;
    } else if (opener == &m_routing_switch) {
        opener->group(1, name);
        DEV_ROUTING_SWITCH_DESC* routing_switch = m_routing_switch_info->get_routing_switch_by_string(name.c_str());
        if (!routing_switch) {
            routing_switch = DEV_ROUTING_SWITCH_DESC::create(dstr_get_dev_routing_switch_enum_by_string(name));
            m_routing_switch_info->add_routing_switch(routing_switch);
            m_routing_switch_info->add_to_routing_switches_by_string_hash(name, routing_switch);
        }
        block.kind = BLOCK::SWITCH;
        block.routing_switch = routing_switch;
    } else {
        opener->group(1, name);
        DEV_PASS_TREE_DESC* pass_tree = m_routing_switch_info->get_pass_tree_by_string(name.c_str());
        if (!pass_tree) {
            pass_tree = DEV_PASS_TREE_DESC::create(dstr_get_dev_pass_tree_enum_by_string(name));
            m_routing_switch_info->add_pass_tree(pass_tree);
            m_routing_switch_info->add_to_pass_trees_by_string_hash(name, pass_tree);
        }
        block.kind = BLOCK::PASS_TREE;
        block.pass_tree = pass_tree;
    }
    return true;
}

void DEV_RSI_PARSER::read_switch_line(const BLOCK& block, const DEV_WORD& word, const std::string& line) {
    DEV_ROUTING_SWITCH_DESC_BODY& body = *block.routing_switch->get_body();
    if (word == "PASS_TREES" && m_pass_trees.match(line)) {
        read_pass_trees(body);
    } else if (m_syntax.match(ASTR_KIND_STRING, line)) {
        read_string(body);
    } else if (dev_text_read_attribute(m_syntax, m_text, *m_text.current(), line, body) == DEV_ATTRIBUTE_NO_MATCH &&
               !m_skipped.matches(line)) {
        m_text.error(m_text.syntax_error_message(line));
    }
}

// "PASS_TREES = A, B": each name a pass tree, appended in order.
void DEV_RSI_PARSER::read_pass_trees(DEV_ROUTING_SWITCH_DESC_BODY& routing_switch) {
    std::string value, name;
    m_pass_trees.group(1, value);
    DEV_TOKENIZER tokens;
    tokens.init(value, ", ", false, false);
    while (tokens.get_token(name)) {
        if (dstr_exists_dev_pass_tree_enum_by_string(name))
            routing_switch.add_pass_tree_enum(dstr_get_dev_pass_tree_enum_by_string(name));
        else
            m_text.error("Invalid string key: " + value);
    }
}

// STRING key 2, the MCF string, goes to the MCF table with the switch's enumerator.
void DEV_RSI_PARSER::read_string(DEV_ROUTING_SWITCH_DESC_BODY& routing_switch) {
    DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM key;
    std::string value, message;
    if (!dev_attribute_parse(m_syntax, &key, &value, &message))
        m_text.error(message);
    else if (key == DEV_ROUTING_SWITCH_DESC_STRING_MCF_NAME)
        m_routing_switch_info->add_to_routing_switch_enums_by_mcf_string_hash(value,
                                                                              routing_switch.get_routing_switch_enum());
    else
        routing_switch.set_string_data(key, value);
}

void DEV_RSI_PARSER::read_other_line(BLOCK& block, const DEV_WORD& word, const std::string& line) {
    if (block.kind != BLOCK::NONE && word == "end" && m_end.match(line))
        block = BLOCK();
    else if (!m_skipped.matches(line))
        m_text.error(m_text.syntax_error_message(line));
}

// ---------------------------------------------------------------------------------------
// The ASCII dump

namespace {

const char* const RULE = "#######################################################\n";

std::string now_text() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[64];
    std::strftime(text, sizeof text, "%a %b %d %H:%M:%S %Y", &local);
    return text;
}

}  // namespace

bool DEV_RSI_WRITER::write(const FIO_PATH& path, int compression_level) {
    const DEV_ROUTING_SWITCH_INFO_BODY& info = m_routing_switch_info;
    DEV_ARCHIVE archive(compression_level);
    if (!archive.open(path, DEV_ARCHIVE::WRITE) || !archive.is_open()) {
        DEV_DEBUG("Failed opening %s", path.full_path().c_str());
        return false;
    }
    std::string text = RULE;
    text += "### Information written on " + now_text() + "\n";
    text += RULE;
    if (DEBUG_RSI_PARSER_SWITCH.is_on()) {
        text += "is_initialized: " + std::to_string(info.is_initialized() ? 1 : 0) + "\n";
        text += "num switches: " + std::to_string(info.get_total_routing_switches()) + "\n";
        text += "num pass_trees: " + std::to_string(info.get_total_pass_trees()) + "\n";
        text += "routing switches:\n";
    }
    if (const DEV_ROUTING_GLOBAL_INFO* global_info = info.get_global_info()) {
        text += "global_data\n";
        if (const DEV_ROUTING_GLOBAL_INFO_BODY* body = global_info->get_body()) {
            dev_attribute_write_kind<DEV_ROUTING_GLOBAL_INT_DATA_ENUM>(*body, "\t", &text);
            dev_attribute_write_kind<DEV_ROUTING_GLOBAL_2D_INT_DATA_ENUM>(*body, "", &text);
        }
        text += "\nend\n\n";
    }
    bool ok = archive.write(text.data(), text.size());
    for (const DEV_ROUTING_SWITCH_DESC* routing_switch : info.get_routing_switches()) {
        const DEV_ROUTING_SWITCH_DESC_BODY& body = *routing_switch->get_body();
        text = "routing_switch " + info.get_name_of(routing_switch) + "\n";
        dev_attribute_write_kind<DEV_ROUTING_SWITCH_DESC_INT_DATA_ENUM>(body, "\t", &text);
        dev_attribute_write_kind<DEV_ROUTING_SWITCH_DESC_2D_INT_DATA_ENUM>(body, "", &text);
        dev_attribute_write_kind<DEV_ROUTING_SWITCH_DESC_STRING_DATA_ENUM>(body, "\t", &text);
        const std::vector<DEV_PASS_TREE_ENUM>& trees = body.get_pass_tree_enums();
        for (size_t i = 0; i < trees.size(); ++i) {
            text += i ? ", " : "\tPASS_TREES = ";
            text += dstr_get_debug_string(trees[i]);
        }
        text += "\nend\n\n";
        ok = archive.write(text.data(), text.size()) && ok;
    }
    for (const DEV_PASS_TREE_DESC* pass_tree : info.get_pass_trees()) {
        const DEV_PASS_TREE_DESC_BODY& body = *pass_tree->get_body();
        text = "pass_tree " + info.get_name_of(pass_tree) + "\n";
        dev_attribute_write_kind<DEV_PASS_TREE_DESC_INT_DATA_ENUM>(body, "", &text);
        dev_attribute_write_kind<DEV_PASS_TREE_DESC_2D_INT_DATA_ENUM>(body, "", &text);
        text += "end\n\n";
        ok = archive.write(text.data(), text.size()) && ok;
    }
    archive.close(true);
    return ok && archive.write_ok();
}

// ---------------------------------------------------------------------------------------
// The body's text members

bool DEV_ROUTING_SWITCH_INFO_BODY::read_rsi_file(const FIO_PATH& path) { return DEV_RSI_PARSER(this).read(path); }

bool DEV_ROUTING_SWITCH_INFO_BODY::write_rsi_file(const FIO_PATH& path, int compression_level) const {
    return DEV_RSI_WRITER(*this).write(path, compression_level);
}
