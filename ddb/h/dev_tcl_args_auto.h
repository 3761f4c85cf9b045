// Argument frame of the Tcl package ::velcora::device: the option names, each command's
// option specification and record, the per-command look-up of option words (whole names
// and the abbreviations generated from the specifications), and the per-command argument
// processors that the command bodies call first.
#ifndef VELCORA_DDB_DEV_TCL_ARGS_AUTO_H
#define VELCORA_DDB_DEV_TCL_ARGS_AUTO_H

#include "dev_export.h"

#include <cstdint>

#include "host/atcl.h"

// The options known to the package. Values 1 to 3 are the help options of every command.
enum DEV_AUTO_ARGUMENT_ENUM : int32_t {
    DEV_AUTO_ARGUMENT_NONE = 0,
    DEV_AUTO_ARGUMENT_H = 1,
    DEV_AUTO_ARGUMENT_HELP = 2,
    DEV_AUTO_ARGUMENT_LONG_HELP = 3,
    DEV_AUTO_ARGUMENT_ALL = 4,
    DEV_AUTO_ARGUMENT_DEBUG = 5,
    DEV_AUTO_ARGUMENT_DEBUG_NAMES = 6,
    DEV_AUTO_ARGUMENT_DEFAULT_MAX = 7,
    DEV_AUTO_ARGUMENT_DEFAULT_MIN = 8,
    DEV_AUTO_ARGUMENT_DEFAULT_VOLTAGE = 9,
    DEV_AUTO_ARGUMENT_DEVICE = 10,
    DEV_AUTO_ARGUMENT_DEVICE_FOLDER = 11,
    DEV_AUTO_ARGUMENT_FAMILY = 12,
    DEV_AUTO_ARGUMENT_FAMILY_VARIANT = 13,
    DEV_AUTO_ARGUMENT_UNUSED_14 = 14,  // used by no command of this package; keeps the numbering
    DEV_AUTO_ARGUMENT_LIST_MAX = 15,
    DEV_AUTO_ARGUMENT_LIST_MIN = 16,
    DEV_AUTO_ARGUMENT_MIGRATION_FAMILIES = 17,
    DEV_AUTO_ARGUMENT_PACKAGE = 18,
    DEV_AUTO_ARGUMENT_PACKAGE_SUFFIX_STRING = 19,
    DEV_AUTO_ARGUMENT_PART = 20,
    DEV_AUTO_ARGUMENT_PIN_COUNT = 21,
    DEV_AUTO_ARGUMENT_SPEED_GRADE = 22,
    DEV_AUTO_ARGUMENT_TEMPERATURE_GRADE = 23,
    DEV_AUTO_ARGUMENT_TRAIT = 24,
    DEV_AUTO_ARGUMENT_MAX = 25
};

typedef ATCL_OPTION_SPEC DEV_TCL_OPTION_SPEC;
typedef ATCL_COMMAND_RECORD DEV_TCL_COMMAND_RECORD;

// The package's commands in registration order.
#define DEV_TCL_AUTO_COMMANDS(X) \
    X(get_family_list)           \
    X(enumerate_family_traits)   \
    X(test_family_trait_of)      \
    X(report_family_info)        \
    X(get_part_list)             \
    X(report_part_info)          \
    X(report_device_info)        \
    X(test_part_trait_of)        \
    X(get_part_info)             \
    X(get_family_info)           \
    X(get_dstr_string)           \
    X(test_device_trait_of)      \
    X(get_temperature_option)

enum DEV_TCL_AUTO_COMMAND_ENUM {
#define DEV_TCL_AUTO_COMMAND_MEMBER(name) DEV_TCL_AUTO_CMD_##name,
    DEV_TCL_AUTO_COMMANDS(DEV_TCL_AUTO_COMMAND_MEMBER)
#undef DEV_TCL_AUTO_COMMAND_MEMBER
    DEV_TCL_AUTO_CMD_COUNT
};

// The option's name ("" for value 0 or 14); values outside 1..24 are internal errors.
DEV_EXPORT const char* dev_tcl_auto_option_to_name(int32_t option);

// The option that `word` (typed without its "-") denotes for `command`, or 0.
DEV_EXPORT int32_t dev_tcl_auto_name_to_option(DEV_TCL_AUTO_COMMAND_ENUM command, const char* word);

// The command's record (its option specification ends with option 0).
DEV_EXPORT const DEV_TCL_COMMAND_RECORD& dev_tcl_auto_command_record(DEV_TCL_AUTO_COMMAND_ENUM command);

// Argument processors, one per command: dev_tcl_args_<command>(args, interp, objc, objv).
// They return the result of ATCL_ARGS::process_tcl_command_arguments; nonzero means the
// command returns that result without running.
#define DEV_TCL_AUTO_COMMAND_PROCESSOR(name) \
    DEV_EXPORT int dev_tcl_args_##name(ATCL_ARGS* args, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]);
DEV_TCL_AUTO_COMMANDS(DEV_TCL_AUTO_COMMAND_PROCESSOR)
#undef DEV_TCL_AUTO_COMMAND_PROCESSOR

#endif
