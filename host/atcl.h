// Host Tcl support: packages of Tcl commands, the interpreter, messages to the user, and
// the argument layer that parses a command's words against its option specification.
//
// Interpreter. The library is built against the Tcl stubs interface; the first interpreter
// given to atcl_set_interpreter initialises the stubs, and from then on the recorded
// interpreter is the one atcl_get_interpreter returns (until it is deleted or replaced).
//
// Packages. A package's commands are registered inside a setup scope:
//     atcl_begin_package_setup("::ns::pkg", "1.0", 0, 0, 0);
//     atcl_register_callbacks(table);      // one Tcl command per row, in ::ns::pkg
//     atcl_end_package_setup();
// and withdrawn inside a withdrawal scope (last argument 1) with atcl_unregister_package.
//
// Argument layer. A command describes its options with a null-terminated list of
// ATCL_OPTION_SPEC rows inside an ATCL_COMMAND_RECORD; ATCL_CMD is built from the record
// and ATCL_ARGS::process_tcl_command_arguments parses the words of one call:
//   - "-name" words are resolved by the record's name-to-option function (which decides
//     about abbreviations); options come in any order; "--" ends the options;
//   - a bare word fills the next positional option not yet given;
//   - option values 1, 2 and 3 (ATCL_OPTION_H, _HELP, _LONG_HELP) ask for help;
//   - an option given twice is an error (no "last one wins": a repeated option is almost
//     always a typing mistake that would silently drop a value).
// Return codes of process_tcl_command_arguments:
//   0               parsed: the command runs and reads its options from the ATCL_ARGS;
//   TCL_ERROR       wrong call: the message naming the command and the option is the
//                   interpreter's result; the command returns this code without running;
//   ATCL_HELP_GIVEN help was printed to the interpreter's stdout channel (the result is
//                   left empty); the command returns this code without running, and the
//                   command dispatcher of atcl_register_callbacks turns it into TCL_OK.
#ifndef VELCORA_HOST_ATCL_H
#define VELCORA_HOST_ATCL_H

#include "host/host_export.h"


#include <cstdint>
#include <string>
#include <vector>

// Tcl's types by name only: this header does not need tcl.h (code that calls Tcl includes it).
typedef struct Tcl_Interp Tcl_Interp;
typedef struct Tcl_Obj Tcl_Obj;
typedef void* ClientData;

// Option values every command accepts; each package numbers its own options from 4 on.
enum { ATCL_OPTION_NONE = 0, ATCL_OPTION_H = 1, ATCL_OPTION_HELP = 2, ATCL_OPTION_LONG_HELP = 3 };

// Returned by process_tcl_command_arguments (and then by the command) after help was
// given; outside Tcl's own codes 0..4. The dispatcher reports it to Tcl as TCL_OK.
enum { ATCL_HELP_GIVEN = 5 };

// One row of a command's option specification; a list ends with a row whose option is 0.
struct HOST_EXPORT ATCL_OPTION_SPEC {
    int32_t option;       // the package's option value
    int32_t takes_value;  // 1: followed by one value; 0: a flag
    bool positional;      // the value may be given as a bare word, without the option's name
    bool optional;        // false: the option must be given
    const void* reserved; // always null
};

// Extra host data of a command record: option groups described by the long help.
enum ATCL_GROUP_KIND {
    ATCL_GROUP_END = 0,
    ATCL_GROUP_EXCLUSIVE = 1,   // at most one of the options is meant to be given
    ATCL_GROUP_PRECEDENCE = 2   // the first option wins over the others when several are given
};
struct HOST_EXPORT ATCL_OPTION_GROUP {
    int32_t kind;              // ATCL_GROUP_KIND; a list ends with ATCL_GROUP_END
    const int32_t* options;    // the options of the group, ending with 0
};

typedef const char* (*ATCL_OPTION_TO_NAME)(int32_t option);
typedef int32_t (*ATCL_NAME_TO_OPTION)(const char* word);

// Describes one command to the argument layer.
struct HOST_EXPORT ATCL_COMMAND_RECORD {
    const char* package_word;            // the package's word, e.g. "device"
    const char* command_name;            // the command's Tcl name (without namespace)
    ATCL_OPTION_TO_NAME option_to_name;  // option value -> option name
    ATCL_NAME_TO_OPTION name_to_option;  // word typed after "-" -> option value, 0: none
    const void* reserved1;               // null
    const void* reserved2;               // null
    const ATCL_OPTION_SPEC* options;     // the option specification (ends with option 0)
    const ATCL_OPTION_GROUP* groups;     // null, or option groups (ends with ATCL_GROUP_END)
    const void* reserved3;               // null
    const void* reserved4;               // null
};

// A command description built from its record (the record's strings and tables must live
// as long as the ATCL_CMD).
class HOST_EXPORT ATCL_CMD {
public:
    explicit ATCL_CMD(const ATCL_COMMAND_RECORD& record);

    const std::string& command_name() const { return m_name; }
    const std::string& package_word() const { return m_package_word; }
    const std::vector<ATCL_OPTION_SPEC>& options() const { return m_options; }
    // The row of an option of this command, or null.
    const ATCL_OPTION_SPEC* find_option(int32_t option) const;
    // The option's name from the record ("" when the record has no name function).
    std::string option_name(int32_t option) const;
    // The option denoted by `word` (typed without its "-"), or 0.
    int32_t lookup(const std::string& word) const;
    // The names that may be shortened: the non-positional options, "help" and "long_help".
    std::vector<std::string> abbreviable_names() const;
    // Help lines: usage and one line per option; the long form adds the shortest accepted
    // form of each option and the option groups.
    std::vector<std::string> help_lines(bool long_help) const;

private:
    std::string m_name;
    std::string m_package_word;
    ATCL_OPTION_TO_NAME m_option_to_name;
    ATCL_NAME_TO_OPTION m_name_to_option;
    std::vector<ATCL_OPTION_SPEC> m_options;
    const ATCL_OPTION_GROUP* m_groups;
};

// The options given in one call of a command.
class HOST_EXPORT ATCL_ARGS {
public:
    // Parses objv[1..objc-1] (objv[0] is the command word) for `cmd`; see the return codes
    // above. `args` is cleared first and filled only when the call is right.
    static int process_tcl_command_arguments(ATCL_ARGS* args, const ATCL_CMD* cmd,
                                             Tcl_Interp* interp, int objc,
                                             Tcl_Obj* const objv[]);

    // Whether the flag `option` was given.
    bool get_no_arg_option(int32_t option) const;
    // The value given for `option` ("" when absent).
    const std::string& get_one_arg_option(int32_t option) const;
    // Whether `option` was given at all (an empty value counts as given).
    bool is_option_given(int32_t option) const { return find(option) != nullptr; }
    // Records an option as given (the parser's way of filling the object).
    void set_option(int32_t option, std::string value);
    void clear() { m_given.clear(); }

private:
    struct GIVEN {
        int32_t option;
        std::string value;
    };
    const GIVEN* find(int32_t option) const;
    std::vector<GIVEN> m_given;
};

// A command of a package: `callback` receives `word` as its client data.
typedef int (*ATCL_CALLBACK)(ClientData client_data, Tcl_Interp* interp, int objc,
                             Tcl_Obj* const objv[]);
struct HOST_EXPORT ATCL_CALLBACK_ROW {
    ATCL_CALLBACK callback;  // null in the row that ends the table
    const char* name;        // the command's name inside the package namespace
    const char* word;        // client data handed to the callback (may be null)
};

// Option names for messages: "-a", "-a or -b", "-a, -b or -c" (`last_word` "or" or "and").
HOST_EXPORT std::string atcl_join_options(const std::vector<std::string>& names, const char* last_word);

// Records `interp` as the process's interpreter; the first call initialises the Tcl stubs
// (Tcl 8.5 or newer). Returns false, with the reason in the interpreter's result, when
// the stubs cannot be initialised. A null interpreter forgets the recorded one.
HOST_EXPORT bool atcl_set_interpreter(Tcl_Interp* interp);
// The recorded interpreter, or null.
HOST_EXPORT Tcl_Interp* atcl_get_interpreter();

// Opens the setup scope of the package `name_space` (fully qualified) at `version`.
// `module` and `owner` name the library module and the prefix of its entry functions
// (for the debug note only, may be null); `withdraw` 1 opens a withdrawal scope.
HOST_EXPORT void atcl_begin_package_setup(const char* name_space, const char* version, const char* module,
                              const char* owner, int withdraw);
// Creates one Tcl command per row of the null-terminated `table` inside the open
// scope's namespace of the recorded interpreter (nothing is created without one).
HOST_EXPORT void atcl_register_callbacks(const ATCL_CALLBACK_ROW* table);
HOST_EXPORT void atcl_end_package_setup();
// Withdraws the open scope's package from `interp`: deletes its commands and namespace and
// forgets that the package was provided.
HOST_EXPORT void atcl_unregister_package(Tcl_Interp* interp);

// Sets the formatted message as the result of `interp` (the recorded interpreter when
// null; stderr when there is none). Returns TCL_ERROR.
HOST_EXPORT int atcl_error_msg(Tcl_Interp* interp, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
// Writes the formatted text and a newline to the recorded interpreter's stdout channel
// (the process's stdout when there is no interpreter; nothing when the interpreter's
// stdout is closed). The interpreter's result is left as it was.
HOST_EXPORT void atcl_print_msg(const char* format, ...) __attribute__((format(printf, 1, 2)));
// Writes `line` and a newline to the stdout channel of `interp` (as atcl_print_msg).
HOST_EXPORT void atcl_print_line(Tcl_Interp* interp, const std::string& line);

#endif
