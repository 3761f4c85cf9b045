// Argument frame of the Tcl package ::velcora::device.
//
// A command accepts an option word when it is the whole name of a help option or of one of
// the command's own options, or when it is an abbreviation in the command's table. The
// tables are generated on first use from the option specifications: every proper prefix of
// a name that may be shortened (the non-positional options, "help" and "long_help") that
// begins no other of these names (nor "h") stands for that name.
#include "dev_tcl_args_auto.h"

#include <memory>
#include <string>
#include <vector>
#include <tcl.h>

#include "host/msg.h"
#include "host/vtl_hash.h"

static_assert(int(DEV_AUTO_ARGUMENT_H) == int(ATCL_OPTION_H) && int(DEV_AUTO_ARGUMENT_HELP) == int(ATCL_OPTION_HELP) &&
                  int(DEV_AUTO_ARGUMENT_LONG_HELP) == int(ATCL_OPTION_LONG_HELP),
              "the help options are numbered as the host's argument layer expects");

namespace {

const char* const OPTION_NAMES[DEV_AUTO_ARGUMENT_MAX] = {
    "",          "h",           "help",        "long_help",       "all",
    "debug",     "debug_names", "default_max", "default_min",     "default_voltage",
    "device",    "device_folder", "family",    "family_variant",  "",
    "list_max",  "list_min",    "migration_families", "package",  "package_suffix_string",
    "part",      "pin_count",   "speed_grade", "temperature_grade", "trait"};

#define OPT(name, value, positional, optional) \
    {DEV_AUTO_ARGUMENT_##name, value, positional != 0, optional != 0, nullptr}
#define END_OF_OPTIONS {DEV_AUTO_ARGUMENT_NONE, 0, false, false, nullptr}

const DEV_TCL_OPTION_SPEC SPEC_get_family_list[] = {OPT(ALL, 0, 0, 1), END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_enumerate_family_traits[] = {END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_test_family_trait_of[] = {OPT(FAMILY, 1, 0, 0), OPT(TRAIT, 1, 0, 0),
                                                         END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_report_family_info[] = {OPT(FAMILY, 1, 1, 0), END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_get_part_list[] = {
    OPT(DEBUG_NAMES, 0, 0, 1), OPT(DEVICE, 1, 0, 1),    OPT(FAMILY, 1, 0, 1),
    OPT(PACKAGE, 1, 0, 1),     OPT(PIN_COUNT, 1, 0, 1), OPT(SPEED_GRADE, 1, 0, 1),
    END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_report_part_info[] = {OPT(PART, 1, 1, 0), END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_report_device_info[] = {OPT(DEVICE, 1, 1, 0), END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_test_part_trait_of[] = {OPT(TRAIT, 1, 0, 0), OPT(PART, 1, 1, 0),
                                                       END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_get_part_info[] = {
    OPT(DEFAULT_VOLTAGE, 0, 0, 1), OPT(DEVICE, 0, 0, 1),         OPT(FAMILY, 0, 0, 1),
    OPT(FAMILY_VARIANT, 0, 0, 1),  OPT(PACKAGE, 0, 0, 1),        OPT(PACKAGE_SUFFIX_STRING, 0, 0, 1),
    OPT(PIN_COUNT, 0, 0, 1),       OPT(SPEED_GRADE, 0, 0, 1),    OPT(TEMPERATURE_GRADE, 0, 0, 1),
    OPT(PART, 1, 1, 0),            END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_get_family_info[] = {OPT(DEVICE_FOLDER, 0, 0, 1),
                                                    OPT(MIGRATION_FAMILIES, 0, 0, 1),
                                                    OPT(FAMILY, 1, 1, 0), END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_get_dstr_string[] = {OPT(DEBUG, 0, 0, 1), OPT(DEVICE, 1, 0, 1),
                                                    OPT(FAMILY, 1, 0, 1), OPT(PART, 1, 0, 1),
                                                    END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_test_device_trait_of[] = {OPT(DEVICE, 1, 0, 0), OPT(TRAIT, 1, 0, 0),
                                                         END_OF_OPTIONS};
const DEV_TCL_OPTION_SPEC SPEC_get_temperature_option[] = {
    OPT(DEFAULT_MAX, 0, 0, 1), OPT(DEFAULT_MIN, 0, 0, 1), OPT(LIST_MAX, 0, 0, 1),
    OPT(LIST_MIN, 0, 0, 1),    OPT(PART, 1, 1, 0),        END_OF_OPTIONS};

#undef OPT
#undef END_OF_OPTIONS

// Extra host data: how the flags of get_family_info and get_temperature_option combine,
// shown by the long help.
const int32_t FAMILY_INFO_PRECEDENCE[] = {DEV_AUTO_ARGUMENT_DEVICE_FOLDER,
                                          DEV_AUTO_ARGUMENT_MIGRATION_FAMILIES, 0};
const ATCL_OPTION_GROUP GROUPS_get_family_info[] = {{ATCL_GROUP_PRECEDENCE, FAMILY_INFO_PRECEDENCE},
                                                    {ATCL_GROUP_END, nullptr}};
const int32_t TEMPERATURE_EXCLUSIVE[] = {DEV_AUTO_ARGUMENT_DEFAULT_MAX, DEV_AUTO_ARGUMENT_DEFAULT_MIN,
                                         DEV_AUTO_ARGUMENT_LIST_MAX, DEV_AUTO_ARGUMENT_LIST_MIN, 0};
const ATCL_OPTION_GROUP GROUPS_get_temperature_option[] = {{ATCL_GROUP_EXCLUSIVE, TEMPERATURE_EXCLUSIVE},
                                                           {ATCL_GROUP_END, nullptr}};

constexpr const ATCL_OPTION_GROUP* groups_of(DEV_TCL_AUTO_COMMAND_ENUM command) {
    return command == DEV_TCL_AUTO_CMD_get_family_info          ? GROUPS_get_family_info
           : command == DEV_TCL_AUTO_CMD_get_temperature_option ? GROUPS_get_temperature_option
                                                                : nullptr;
}

typedef VTL_HASH<std::string, int32_t> NAME_TABLE;

// Built on first use, released at process exit.
std::unique_ptr<NAME_TABLE> g_whole_names;
struct COMMAND_STATE {
    std::unique_ptr<NAME_TABLE> abbreviations;
    std::unique_ptr<ATCL_CMD> cmd;
};
COMMAND_STATE g_commands[DEV_TCL_AUTO_CMD_COUNT];

const NAME_TABLE& whole_names() {
    if (!g_whole_names) {
        g_whole_names.reset(new NAME_TABLE(61));
        for (int32_t option = DEV_AUTO_ARGUMENT_H; option < DEV_AUTO_ARGUMENT_MAX; ++option)
            if (*OPTION_NAMES[option]) g_whole_names->insert(OPTION_NAMES[option], option);
    }
    return *g_whole_names;
}

bool starts_with(const std::string& name, const std::string& prefix) {
    return name.compare(0, prefix.size(), prefix) == 0;
}

std::unique_ptr<NAME_TABLE> generate_abbreviations(const DEV_TCL_OPTION_SPEC* spec) {
    std::vector<int32_t> options;
    for (const DEV_TCL_OPTION_SPEC* row = spec; row->option != DEV_AUTO_ARGUMENT_NONE; ++row)
        if (!row->positional) options.push_back(row->option);
    options.push_back(DEV_AUTO_ARGUMENT_HELP);
    options.push_back(DEV_AUTO_ARGUMENT_LONG_HELP);
    // "h" has no proper prefix of its own but claims the prefix "h" of "help".
    std::vector<std::string> claimants{OPTION_NAMES[DEV_AUTO_ARGUMENT_H]};
    for (int32_t option : options) claimants.push_back(OPTION_NAMES[option]);

    std::unique_ptr<NAME_TABLE> table(new NAME_TABLE(61));
    for (int32_t option : options) {
        const std::string name = OPTION_NAMES[option];
        for (size_t length = 1; length < name.size(); ++length) {
            std::string prefix = name.substr(0, length);
            int begun = 0;
            for (const std::string& other : claimants) begun += starts_with(other, prefix) ? 1 : 0;
            if (begun == 1) table->insert(prefix, option);
        }
    }
    return table;
}

bool is_own_option(const DEV_TCL_OPTION_SPEC* spec, int32_t option) {
    for (const DEV_TCL_OPTION_SPEC* row = spec; row->option != DEV_AUTO_ARGUMENT_NONE; ++row)
        if (row->option == option) return true;
    return false;
}

template <DEV_TCL_AUTO_COMMAND_ENUM COMMAND>
int32_t name_to_option(const char* word) {
    return dev_tcl_auto_name_to_option(COMMAND, word);
}

constexpr DEV_TCL_COMMAND_RECORD RECORDS[DEV_TCL_AUTO_CMD_COUNT] = {
#define DEV_TCL_AUTO_COMMAND_RECORD_ROW(name)                                                       \
    {"device", #name, dev_tcl_auto_option_to_name, name_to_option<DEV_TCL_AUTO_CMD_##name>, nullptr, \
     nullptr, SPEC_##name, groups_of(DEV_TCL_AUTO_CMD_##name), nullptr, nullptr},
    DEV_TCL_AUTO_COMMANDS(DEV_TCL_AUTO_COMMAND_RECORD_ROW)
#undef DEV_TCL_AUTO_COMMAND_RECORD_ROW
};

int process_arguments(DEV_TCL_AUTO_COMMAND_ENUM command, ATCL_ARGS* args, Tcl_Interp* interp, int objc,
                      Tcl_Obj* const objv[]) {
    if (!DEV_ASSERT_TEXT(args != 0, "args != 0")) return TCL_ERROR;
    std::unique_ptr<ATCL_CMD>& cmd = g_commands[command].cmd;
    if (!cmd) cmd.reset(new ATCL_CMD(RECORDS[command]));
    return ATCL_ARGS::process_tcl_command_arguments(args, cmd.get(), interp, objc, objv);
}

}  // namespace

const char* dev_tcl_auto_option_to_name(int32_t option) {
    bool legal = true;
    if (option >= DEV_AUTO_ARGUMENT_MAX) {
        DEV_INTERNAL_ERROR("The calling function has passed an illegal DEV_AUTO_ARGUMENT_ENUM");
        legal = false;
    }
    if (option < DEV_AUTO_ARGUMENT_H) {
        DEV_INTERNAL_ERROR("The calling function has passed an illegal DEV_AUTO_ARGUMENT_ENUM");
        legal = false;
    }
    return legal ? OPTION_NAMES[option] : OPTION_NAMES[DEV_AUTO_ARGUMENT_NONE];
}

int32_t dev_tcl_auto_name_to_option(DEV_TCL_AUTO_COMMAND_ENUM command, const char* word) {
    if (command < 0 || command >= DEV_TCL_AUTO_CMD_COUNT || !word) return DEV_AUTO_ARGUMENT_NONE;
    const DEV_TCL_OPTION_SPEC* spec = RECORDS[command].options;
    const std::string key = word;
    if (const int32_t* whole = whole_names().find(key)) {
        if (*whole <= DEV_AUTO_ARGUMENT_LONG_HELP || is_own_option(spec, *whole)) return *whole;
    }
    std::unique_ptr<NAME_TABLE>& abbreviations = g_commands[command].abbreviations;
    if (!abbreviations) abbreviations = generate_abbreviations(spec);
    const int32_t* option = abbreviations->find(key);
    return option ? *option : DEV_AUTO_ARGUMENT_NONE;
}

const DEV_TCL_COMMAND_RECORD& dev_tcl_auto_command_record(DEV_TCL_AUTO_COMMAND_ENUM command) {
    if (command < 0 || command >= DEV_TCL_AUTO_CMD_COUNT) {
        DEV_INTERNAL_ERROR("command < DEV_TCL_AUTO_CMD_COUNT");
        command = DEV_TCL_AUTO_CMD_get_family_list;
    }
    return RECORDS[command];
}

#define DEV_TCL_AUTO_COMMAND_PROCESSOR_BODY(name)                                                   \
    int dev_tcl_args_##name(ATCL_ARGS* args, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) { \
        return process_arguments(DEV_TCL_AUTO_CMD_##name, args, interp, objc, objv);                \
    }
DEV_TCL_AUTO_COMMANDS(DEV_TCL_AUTO_COMMAND_PROCESSOR_BODY)
#undef DEV_TCL_AUTO_COMMAND_PROCESSOR_BODY
