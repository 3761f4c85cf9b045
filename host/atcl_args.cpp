// ATCL_ARGS: parses the words of one command call against the command's options.
#include <tcl.h>

#include "host/atcl.h"
#include "host/msg.h"

namespace {

std::string word_of(Tcl_Obj* obj) {
    int length = 0;
    const char* bytes = Tcl_GetStringFromObj(obj, &length);
    return std::string(bytes, static_cast<size_t>(length));
}

class ARG_PARSER {
public:
    ARG_PARSER(const ATCL_CMD& cmd, Tcl_Interp* interp, ATCL_ARGS& args)
        : m_cmd(cmd), m_interp(interp), m_args(args), m_name(cmd.command_name().c_str()) {}

    int parse(int objc, Tcl_Obj* const objv[]);

private:
    int fail_unknown(const std::string& word);
    int give_help(bool long_help);
    // Takes the code of atcl_error_msg: a refused call leaves no options behind.
    int fail(int error_code) {
        m_args.clear();
        return error_code;
    }

    const ATCL_CMD& m_cmd;
    Tcl_Interp* m_interp;
    ATCL_ARGS& m_args;
    const char* m_name;
};

int ARG_PARSER::parse(int objc, Tcl_Obj* const objv[]) {
    bool options_ended = false;
    for (int i = 1; i < objc; ++i) {
        std::string word = word_of(objv[i]);
        if (!options_ended && word == "--") {
            options_ended = true;
            continue;
        }
        if (!options_ended && word.size() > 1 && word[0] == '-') {
            int32_t option = m_cmd.lookup(word.substr(1));
            if (option == ATCL_OPTION_H || option == ATCL_OPTION_HELP) return give_help(false);
            if (option == ATCL_OPTION_LONG_HELP) return give_help(true);
            const ATCL_OPTION_SPEC* row = option ? m_cmd.find_option(option) : nullptr;
            if (!row) return fail_unknown(word);
            std::string name = m_cmd.option_name(option);
            if (m_args.is_option_given(option))
                return fail(atcl_error_msg(m_interp, "ERROR: Option -%s of command %s is given more than once.",
                                           name.c_str(), m_name));
            if (!row->takes_value) {
                m_args.set_option(option, std::string());
                continue;
            }
            if (i + 1 >= objc)
                return fail(atcl_error_msg(m_interp, "ERROR: Option -%s of command %s needs a value.",
                                           name.c_str(), m_name));
            m_args.set_option(option, word_of(objv[++i]));
            continue;
        }
        const ATCL_OPTION_SPEC* slot = nullptr;
        for (const ATCL_OPTION_SPEC& row : m_cmd.options())
            if (row.positional && !m_args.is_option_given(row.option)) {
                slot = &row;
                break;
            }
        if (!slot)
            return fail(atcl_error_msg(m_interp, "ERROR: Unexpected argument \"%s\" for command %s.",
                                       word.c_str(), m_name));
        m_args.set_option(slot->option, word);
    }
    for (const ATCL_OPTION_SPEC& row : m_cmd.options()) {
        if (row.optional || m_args.is_option_given(row.option)) continue;
        std::string name = m_cmd.option_name(row.option);
        if (row.positional)
            return fail(atcl_error_msg(m_interp, "ERROR: Missing argument <%s> of command %s.",
                                       name.c_str(), m_name));
        return fail(atcl_error_msg(m_interp, "ERROR: Missing required option -%s of command %s.",
                                   name.c_str(), m_name));
    }
    return 0;
}

// An option word the command's look-up refused: ambiguous when it begins two or more of
// the names that may be shortened, unknown otherwise.
int ARG_PARSER::fail_unknown(const std::string& word) {
    std::string typed = word.substr(1);
    std::vector<std::string> candidates;
    for (const std::string& name : m_cmd.abbreviable_names())
        if (name.compare(0, typed.size(), typed) == 0) candidates.push_back(name);
    if (candidates.size() >= 2)
        return fail(atcl_error_msg(m_interp,
                                   "ERROR: Ambiguous option \"%s\" for command %s: it may mean %s. "
                                   "Type more of the option's name.",
                                   word.c_str(), m_name, atcl_join_options(candidates, "or").c_str()));
    return fail(atcl_error_msg(m_interp,
                               "ERROR: Unknown option \"%s\" for command %s. Use \"%s -help\" to see its options.",
                               word.c_str(), m_name, m_name));
}

int ARG_PARSER::give_help(bool long_help) {
    m_args.clear();
    for (const std::string& line : m_cmd.help_lines(long_help)) atcl_print_line(m_interp, line);
    if (m_interp) Tcl_ResetResult(m_interp);
    return ATCL_HELP_GIVEN;
}

}  // namespace

int ATCL_ARGS::process_tcl_command_arguments(ATCL_ARGS* args, const ATCL_CMD* cmd, Tcl_Interp* interp,
                                             int objc, Tcl_Obj* const objv[]) {
    if (!args || !cmd || (objc > 1 && !objv)) {
        MSG_INTERNAL_ERROR_report("args != 0 && cmd != 0", "ATCL", msg_source_name(__FILE__).c_str(), __LINE__);
        return atcl_error_msg(interp, "ERROR: The command's arguments cannot be processed.");
    }
    args->clear();
    return ARG_PARSER(*cmd, interp, *args).parse(objc, objv);
}

const ATCL_ARGS::GIVEN* ATCL_ARGS::find(int32_t option) const {
    for (const GIVEN& given : m_given)
        if (given.option == option) return &given;
    return nullptr;
}

bool ATCL_ARGS::get_no_arg_option(int32_t option) const { return find(option) != nullptr; }

const std::string& ATCL_ARGS::get_one_arg_option(int32_t option) const {
    static const std::string empty;
    const GIVEN* given = find(option);
    return given ? given->value : empty;
}

void ATCL_ARGS::set_option(int32_t option, std::string value) { m_given.push_back({option, std::move(value)}); }
