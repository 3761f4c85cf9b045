// ATCL_CMD: a command's description for the argument layer, and its help text.
#include <cstdio>
#include <tcl.h>

#include "host/atcl.h"
#include "host/msg.h"

namespace {

const size_t HELP_COLUMN = 30;

std::string pad(std::string text) {
    if (text.size() < HELP_COLUMN) text.resize(HELP_COLUMN, ' '); else text += ' ';
    return text;
}

}  // namespace

std::string atcl_join_options(const std::vector<std::string>& names, const char* last_word) {
    std::string text;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += (i + 1 == names.size()) ? std::string(" ") + last_word + " " : ", ";
        text += "-" + names[i];
    }
    return text;
}

ATCL_CMD::ATCL_CMD(const ATCL_COMMAND_RECORD& record)
    : m_name(record.command_name ? record.command_name : ""),
      m_package_word(record.package_word ? record.package_word : ""),
      m_option_to_name(record.option_to_name),
      m_name_to_option(record.name_to_option),
      m_groups(record.groups) {
    if (!record.command_name || !record.option_to_name || !record.name_to_option)
        MSG_INTERNAL_ERROR_report("incomplete ATCL_COMMAND_RECORD", "ATCL",
                                  msg_source_name(__FILE__).c_str(), __LINE__);
    for (const ATCL_OPTION_SPEC* row = record.options; row && row->option != 0; ++row)
        m_options.push_back(*row);
}

const ATCL_OPTION_SPEC* ATCL_CMD::find_option(int32_t option) const {
    for (const ATCL_OPTION_SPEC& row : m_options)
        if (row.option == option) return &row;
    return nullptr;
}

std::string ATCL_CMD::option_name(int32_t option) const {
    const char* name = m_option_to_name ? m_option_to_name(option) : nullptr;
    return name ? name : "";
}

int32_t ATCL_CMD::lookup(const std::string& word) const {
    return m_name_to_option ? m_name_to_option(word.c_str()) : 0;
}

std::vector<std::string> ATCL_CMD::abbreviable_names() const {
    std::vector<std::string> names;
    for (const ATCL_OPTION_SPEC& row : m_options)
        if (!row.positional) names.push_back(option_name(row.option));
    names.push_back(option_name(ATCL_OPTION_HELP));
    names.push_back(option_name(ATCL_OPTION_LONG_HELP));
    return names;
}

std::vector<std::string> ATCL_CMD::help_lines(bool long_help) const {
    std::vector<std::string> lines;
    if (long_help) lines.push_back("Command " + m_name + " (" + m_package_word + " commands)");

    std::string usage = "Usage: " + m_name;
    std::vector<std::string> option_lines;
    for (const ATCL_OPTION_SPEC& row : m_options) {
        std::string name = option_name(row.option);
        std::string form = row.positional ? "<" + name + ">"
                           : row.takes_value ? "-" + name + " <" + name + ">" : "-" + name;
        usage += row.optional ? " [" + form + "]" : " " + form;
        std::string what = row.takes_value ? "value" : "flag";
        what += row.optional ? ", optional" : ", required";
        if (row.positional) what += ", also as -" + name + " <" + name + ">";
        option_lines.push_back("  " + pad(form) + what);
    }
    lines.push_back(usage);
    lines.push_back("  " + pad("-" + option_name(ATCL_OPTION_H) + ", -" + option_name(ATCL_OPTION_HELP)) +
                    "show this usage");
    lines.push_back("  " + pad("-" + option_name(ATCL_OPTION_LONG_HELP)) +
                    "show the usage with the short forms of the options");
    lines.insert(lines.end(), option_lines.begin(), option_lines.end());
    if (!long_help) return lines;

    lines.push_back("Options may be shortened to any prefix that names only one of them:");
    std::vector<int32_t> options;
    for (const ATCL_OPTION_SPEC& row : m_options) options.push_back(row.option);
    options.push_back(ATCL_OPTION_HELP);
    options.push_back(ATCL_OPTION_LONG_HELP);
    for (int32_t option : options) {
        std::string name = option_name(option);
        size_t len = 1;
        while (len < name.size() && lookup(name.substr(0, len)) != option) ++len;
        std::string shortest = lookup(name.substr(0, len)) == option ? "-" + name.substr(0, len) : "none";
        lines.push_back("  " + pad("-" + name) + "shortest form " + shortest);
    }
    for (const ATCL_OPTION_GROUP* group = m_groups; group && group->kind != ATCL_GROUP_END; ++group) {
        std::vector<std::string> names;
        for (const int32_t* o = group->options; o && *o != 0; ++o) names.push_back(option_name(*o));
        if (names.size() < 2) continue;
        if (group->kind == ATCL_GROUP_EXCLUSIVE) {
            lines.push_back("Options " + atcl_join_options(names, "and") + " are mutually exclusive.");
        } else if (group->kind == ATCL_GROUP_PRECEDENCE) {
            std::string first = names.front();
            names.erase(names.begin());
            lines.push_back("Option -" + first + " takes precedence over " + atcl_join_options(names, "and") + ".");
        }
    }
    return lines;
}
