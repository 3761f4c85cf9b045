// The Tcl package ::velcora::device: load entry points, registration and withdrawal, the
// shared name look-ups, and the query commands (the reports are in dev_tcl_reports.cpp).
//
// Every command first runs its argument processor (dev_tcl_args_auto); a nonzero answer
// (wrong call, or help given) is returned as it is. Then the command turns the names typed
// by the user into enumeration values, asks the part or family manager and sets the result.
#include "dev_tcl.h"

#include <string>
#include <vector>
#include <tcl.h>

#include "dev_family_manager.h"
#include "dev_part_manager.h"
#include "host/gen.h"
#include "host/msg.h"

namespace {

const char* const PACKAGE_NAME = "::velcora::device";
const char* const PACKAGE_VERSION = "1.0";

const ATCL_CALLBACK_ROW COMMAND_TABLE[] = {
#define DEV_TCL_COMMAND_ROW(name) {dev_tcl_##name, #name, nullptr},
    DEV_TCL_AUTO_COMMANDS(DEV_TCL_COMMAND_ROW)
#undef DEV_TCL_COMMAND_ROW
    {nullptr, nullptr, nullptr}};

// A list result built element by element.
class LIST_RESULT {
public:
    LIST_RESULT() : m_list(Tcl_NewListObj(0, nullptr)) {}
    void append(const std::string& element) {
        Tcl_ListObjAppendElement(nullptr, m_list, Tcl_NewStringObj(element.data(), static_cast<int>(element.size())));
    }
    int set(Tcl_Interp* interp) {
        Tcl_SetObjResult(interp, m_list);
        return TCL_OK;
    }

private:
    Tcl_Obj* m_list;
};

int set_int_result(Tcl_Interp* interp, int value) {
    Tcl_SetObjResult(interp, Tcl_NewIntObj(value));
    return TCL_OK;
}

int set_string_result(Tcl_Interp* interp, const std::string& text) {
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    return TCL_OK;
}

// A criterion of get_part_list for filter_part_list: an empty word means any value, and a
// user string is handed on as its debug string (the filter knows debug strings, "any" and
// part traits; everything else matches no part).
std::string part_filter_word(const DSTR_TABLE& table, const std::string& word) {
    if (word.empty()) return "ANY";
    if (table.exists_by_string(word)) return word;
    int value = dev_tcl_lookup_name(table, word);
    return value != table.invalid_value() ? table.debug_string(value) : word;
}

// The trait a user named (`kind` is "family", "device" or "part"); false with the error set.
template <typename ENUM>
bool find_trait(Tcl_Interp* interp, const DSTR_TABLE& table, const char* kind, const std::string& word, ENUM* trait) {
    if (dev_tcl_find_name(table, word, trait)) return true;
    atcl_error_msg(interp, "ERROR: Illegal %s trait. Specify a legal %s trait name.", kind, kind);
    return false;
}

}  // namespace

// ---- load entry points and registration ---------------------------------------------------

namespace {

// The library calls Tcl through a stub table of its own (the host library keeps another),
// set up from the first interpreter it is given.
void init_tcl_stubs(Tcl_Interp* interp) {
    static bool ready = false;
    if (!ready && interp) ready = Tcl_InitStubs(interp, "8.5", 0) != nullptr;
}

}  // namespace

extern "C" int Ddb_Init(Tcl_Interp* interp) {
    init_tcl_stubs(interp);
    atcl_set_interpreter(interp);
    dev_ddb_register_tcl();
    return 0;
}

extern "C" int Ddb_Unload(Tcl_Interp* interp, int flags) {
    init_tcl_stubs(interp);
    if (interp && atcl_get_interpreter() != interp) atcl_set_interpreter(interp);
    dev_ddb_unregister_tcl();
    // The library may be unmapped after this call: no callback of it may stay with Tcl.
    atcl_set_interpreter(nullptr);
    return 0;
}

int dev_ddb_register_tcl() {
    atcl_begin_package_setup(PACKAGE_NAME, PACKAGE_VERSION, nullptr, nullptr, 0);
    atcl_register_callbacks(COMMAND_TABLE);
    atcl_end_package_setup();
    Tcl_Interp* interp = atcl_get_interpreter();
    if (interp == nullptr) {
        DEV_INTERNAL_ERROR("A Tcl interpreter must exist before registering ::velcora::device!");
        return TCL_ERROR;  // without an interpreter Tcl cannot be called at all
    }
    init_tcl_stubs(interp);
    return Tcl_PkgProvide(interp, PACKAGE_NAME, PACKAGE_VERSION);
}

void dev_ddb_unregister_tcl() {
    Tcl_Interp* interp = atcl_get_interpreter();
    if (interp == nullptr)
        DEV_INTERNAL_ERROR("A Tcl interpreter must exist before unregistering ::velcora::timing_assignment!");
    atcl_begin_package_setup(PACKAGE_NAME, PACKAGE_VERSION, "ddb_dev", "dev_ddb", 1);
    atcl_unregister_package(interp);
    atcl_end_package_setup();
}

// ---- names --------------------------------------------------------------------------------

int dev_tcl_lookup_name(const DSTR_TABLE& table, const std::string& word) {
    int value = table.invalid_value();
    if (table.exists_by_string(word))
        value = table.get_by_string(word);
    else if (table.exists_by_user_string(word))
        value = table.get_by_user_string(word);
    return table.is_valid(value) ? value : table.invalid_value();
}

bool dev_tcl_find_part(Tcl_Interp* interp, const std::string& word, DEV_PART_ENUM* part) {
    if (dev_tcl_find_name(dstr_table_dev_part_enum(), word, part)) return true;
    atcl_error_msg(interp,
                   "ERROR: Illegal part name: %s. Specify a legal part name. Use \"report_family_info\", "
                   "\"report_device_info\", or \"get_part_list\" to find available parts.",
                   word.c_str());
    return false;
}

bool dev_tcl_find_family(Tcl_Interp* interp, const std::string& word, DEV_FAMILY_ENUM* family) {
    if (dev_tcl_find_name(dstr_table_dev_family_enum(), word, family)) return true;
    atcl_error_msg(interp, "ERROR: Illegal family name: %s. Specify a legal family name.", word.c_str());
    return false;
}

bool dev_tcl_find_device(Tcl_Interp* interp, const std::string& word, DEV_DEVICE_ENUM* device) {
    if (dev_tcl_find_name(dstr_table_dev_device_enum(), word, device)) return true;
    atcl_error_msg(interp, "ERROR: Illegal device name: %s. Specify a legal device name.", word.c_str());
    return false;
}

// ---- families -----------------------------------------------------------------------------

int dev_tcl_get_family_list(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_get_family_list(&args, interp, objc, objv)) return rc;
    const bool all = args.get_no_arg_option(DEV_AUTO_ARGUMENT_ALL);

    DEV_FAMILY_MANAGER family_manager;
    std::vector<DEV_FAMILY_ENUM> family_list;
    family_manager.filter_family_list(&family_list, DEV_FAMILY_GENERIC, nullptr, false);
    DEV_ASSERT_TEXT(!family_list.empty(), "!family_list.empty()");
    Tcl_ResetResult(interp);
    LIST_RESULT result;
    for (DEV_FAMILY_ENUM family : family_list) {
        if (!all && family_manager.test_trait_of(family, DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT)) continue;
        result.append(dstr_get_user_string(family));
    }
    return result.set(interp);
}

int dev_tcl_enumerate_family_traits(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_enumerate_family_traits(&args, interp, objc, objv)) return rc;
    LIST_RESULT result;
    for (int trait = 0; trait <= 162; ++trait)
        if (dstr_is_valid_dev_family_trait_enum(trait))
            result.append(dstr_get_debug_string(static_cast<DEV_FAMILY_TRAIT_ENUM>(trait)));
    return result.set(interp);
}

int dev_tcl_test_family_trait_of(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_test_family_trait_of(&args, interp, objc, objv)) return rc;
    DEV_FAMILY_ENUM family;
    DEV_FAMILY_TRAIT_ENUM trait;
    if (!dev_tcl_find_family(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_FAMILY), &family) ||
        !find_trait(interp, dstr_table_dev_family_trait_enum(), "family", args.get_one_arg_option(DEV_AUTO_ARGUMENT_TRAIT),
                    &trait))
        return TCL_ERROR;
    return set_int_result(interp, DEV_FAMILY_MANAGER().test_trait_of(family, trait) ? 1 : 0);
}

int dev_tcl_get_family_info(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_get_family_info(&args, interp, objc, objv)) return rc;
    DEV_FAMILY_ENUM family;
    if (!dev_tcl_find_family(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_FAMILY), &family)) return TCL_ERROR;

    DEV_FAMILY_MANAGER family_manager;
    Tcl_ResetResult(interp);
    if (args.get_no_arg_option(DEV_AUTO_ARGUMENT_DEVICE_FOLDER)) {
        std::string path;
        family_manager.get_ddb_fullpath_of(family, path);
        return set_string_result(interp, path);
    }
    if (args.get_no_arg_option(DEV_AUTO_ARGUMENT_MIGRATION_FAMILIES)) {
        std::vector<DEV_FAMILY_ENUM> families;
        family_manager.get_tech_migration_families_of(family, &families);
        LIST_RESULT result;
        for (DEV_FAMILY_ENUM other : families) result.append(dstr_get_user_string(other));
        return result.set(interp);
    }
    return TCL_OK;
}

// ---- parts and devices --------------------------------------------------------------------

int dev_tcl_get_part_list(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_get_part_list(&args, interp, objc, objv)) return rc;
    const std::string family =
        part_filter_word(dstr_table_dev_family_enum(), args.get_one_arg_option(DEV_AUTO_ARGUMENT_FAMILY));
    const std::string device =
        part_filter_word(dstr_table_dev_device_enum(), args.get_one_arg_option(DEV_AUTO_ARGUMENT_DEVICE));
    const std::string package =
        part_filter_word(dstr_table_dev_pkg_enum(), args.get_one_arg_option(DEV_AUTO_ARGUMENT_PACKAGE));
    const std::string& pins = args.get_one_arg_option(DEV_AUTO_ARGUMENT_PIN_COUNT);
    const std::string speed =
        part_filter_word(dstr_table_dev_speed_enum(), args.get_one_arg_option(DEV_AUTO_ARGUMENT_SPEED_GRADE));
    const bool debug_names = args.get_no_arg_option(DEV_AUTO_ARGUMENT_DEBUG_NAMES);

    std::vector<DEV_PART_ENUM> part_list;
    DEV_PART_MANAGER().filter_part_list(&part_list, family, device, package, pins.empty() ? "ANY" : pins, speed);
    DEV_ASSERT_TEXT(!part_list.empty(), "!part_list.empty()");
    LIST_RESULT result;
    for (DEV_PART_ENUM part : part_list)
        result.append(debug_names ? dstr_get_debug_string(part) : dstr_get_user_string(part));
    return result.set(interp);
}

int dev_tcl_test_part_trait_of(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_test_part_trait_of(&args, interp, objc, objv)) return rc;
    DEV_PART_ENUM part;
    DEV_PART_TRAIT_ENUM trait;
    if (!dev_tcl_find_part(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_PART), &part) ||
        !find_trait(interp, dstr_table_dev_part_trait_enum(), "part", args.get_one_arg_option(DEV_AUTO_ARGUMENT_TRAIT),
                    &trait))
        return TCL_ERROR;
    Tcl_SetObjResult(interp, Tcl_NewBooleanObj(DEV_PART_MANAGER().test_part_trait_of(part, trait) ? 1 : 0));
    return TCL_OK;
}

int dev_tcl_test_device_trait_of(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_test_device_trait_of(&args, interp, objc, objv)) return rc;
    DEV_DEVICE_ENUM device;
    DEV_DEVICE_TRAIT_ENUM trait;
    if (!dev_tcl_find_device(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_DEVICE), &device) ||
        !find_trait(interp, dstr_table_dev_device_trait_enum(), "device", args.get_one_arg_option(DEV_AUTO_ARGUMENT_TRAIT),
                    &trait))
        return TCL_ERROR;
    return set_int_result(interp, DEV_PART_MANAGER().test_device_trait_of(device, trait) ? 1 : 0);
}

int dev_tcl_get_part_info(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_get_part_info(&args, interp, objc, objv)) return rc;
    DEV_PART_ENUM part;
    if (!dev_tcl_find_part(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_PART), &part)) return TCL_ERROR;

    DEV_PART_MANAGER part_manager;
    LIST_RESULT result;
    auto wanted = [&args](DEV_AUTO_ARGUMENT_ENUM option) { return args.get_no_arg_option(option); };
    if (wanted(DEV_AUTO_ARGUMENT_FAMILY)) result.append(dstr_get_user_string(part_manager.get_family_of(part)));
    if (wanted(DEV_AUTO_ARGUMENT_DEVICE)) result.append(dstr_get_user_string(part_manager.get_device_of(part)));
    if (wanted(DEV_AUTO_ARGUMENT_PACKAGE)) result.append(dstr_get_user_string(part_manager.get_pkg_of(part)));
    if (wanted(DEV_AUTO_ARGUMENT_PACKAGE_SUFFIX_STRING))
        result.append(part_manager.get_ddb_package_file_suffix_of(part));
    if (wanted(DEV_AUTO_ARGUMENT_PIN_COUNT)) result.append(std::to_string(part_manager.get_pin_count_of(part)));
    if (wanted(DEV_AUTO_ARGUMENT_SPEED_GRADE)) result.append(dstr_get_user_string(part_manager.get_speed_of(part)));
    if (wanted(DEV_AUTO_ARGUMENT_DEFAULT_VOLTAGE))
        result.append(dstr_get_user_string(part_manager.get_default_voltage(part)));
    if (wanted(DEV_AUTO_ARGUMENT_TEMPERATURE_GRADE))
        result.append(dstr_get_user_string(part_manager.get_temperature_grade_of(part)));
    if (wanted(DEV_AUTO_ARGUMENT_FAMILY_VARIANT)) {
        DEV_FAMILY_VARIANT_ENUM variant = part_manager.get_family_variant_of(part);
        if (dstr_is_valid_dev_family_variant_enum(variant)) result.append(dstr_get_user_string(variant));
    }
    return result.set(interp);
}

int dev_tcl_get_dstr_string(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_get_dstr_string(&args, interp, objc, objv)) return rc;
    const std::string& device_name = args.get_one_arg_option(DEV_AUTO_ARGUMENT_DEVICE);
    const std::string& family_name = args.get_one_arg_option(DEV_AUTO_ARGUMENT_FAMILY);
    const std::string& part_name = args.get_one_arg_option(DEV_AUTO_ARGUMENT_PART);
    // An option given with an empty value counts as not given, as an absent one reads "".
    const int given = !device_name.empty() + !family_name.empty() + !part_name.empty();
    if (given == 0)
        return atcl_error_msg(interp, "ERROR: Specify one option of the three options: -%s, -%s or -%s.", "device",
                              "family", "part");
    if (given > 1)
        return atcl_error_msg(interp,
                              "ERROR: Options cannot be specified together: -%s, -%s and -%s. Specify only one of "
                              "the three options.",
                              "device", "family", "part");
    const bool debug = args.get_no_arg_option(DEV_AUTO_ARGUMENT_DEBUG);
    if (!device_name.empty()) {
        DEV_DEVICE_ENUM device;
        if (!dev_tcl_find_device(interp, device_name, &device)) return TCL_ERROR;
        return set_string_result(interp, debug ? dstr_get_debug_string(device) : dstr_get_user_string(device));
    }
    if (!family_name.empty()) {
        DEV_FAMILY_ENUM family;
        if (!dev_tcl_find_family(interp, family_name, &family)) return TCL_ERROR;
        return set_string_result(interp, debug ? dstr_get_debug_string(family) : dstr_get_user_string(family));
    }
    DEV_PART_ENUM part;
    if (!dev_tcl_find_part(interp, part_name, &part)) return TCL_ERROR;
    return set_string_result(interp, debug ? dstr_get_debug_string(part) : dstr_get_user_string(part));
}

int dev_tcl_get_temperature_option(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_get_temperature_option(&args, interp, objc, objv)) return rc;
    const bool default_max = args.get_no_arg_option(DEV_AUTO_ARGUMENT_DEFAULT_MAX);
    const bool default_min = args.get_no_arg_option(DEV_AUTO_ARGUMENT_DEFAULT_MIN);
    const bool list_max = args.get_no_arg_option(DEV_AUTO_ARGUMENT_LIST_MAX);
    const bool list_min = args.get_no_arg_option(DEV_AUTO_ARGUMENT_LIST_MIN);
    const int given = default_max + default_min + list_max + list_min;
    if (given == 0) return atcl_error_msg(interp, "ERROR: At least %s option(s) must be specified.", "one");
    if (given > 1)
        return atcl_error_msg(interp,
                              "ERROR: Options are mutually exclusive and cannot be specified together. Specify only "
                              "one of the options.");

    Tcl_ResetResult(interp);
    const std::string& part_name = args.get_one_arg_option(DEV_AUTO_ARGUMENT_PART);
    if (part_name.empty()) return TCL_OK;
    DEV_PART_ENUM part;
    if (!dev_tcl_find_part(interp, part_name, &part)) return TCL_ERROR;

    DEV_PART_MANAGER part_manager;
    if (default_max) return set_int_result(interp, part_manager.get_default_max_temp(part));
    if (default_min) return set_int_result(interp, part_manager.get_default_min_temp(part));
    LIST_RESULT result;
    for (int temperature : list_max ? part_manager.get_max_temp_list(part) : part_manager.get_min_temp_list(part))
        result.append(std::to_string(temperature));
    return result.set(interp);
}
