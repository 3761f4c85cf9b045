// The report commands of ::velcora::device: report_part_info, report_device_info and
// report_family_info print their reports line by line to the interpreter's stdout channel.
#include <set>
#include <string>
#include <vector>
#include <tcl.h>

#include "dev_tcl.h"
#include "dev_family_manager.h"
#include "dev_part_manager.h"
#include "host/msg.h"

namespace {

const char* const RULE = "------------------------------------------------------";

template <typename TRAIT>
struct TRAIT_LINE {
    TRAIT trait;
    const char* line;
};

// Part traits in report order.
const TRAIT_LINE<DEV_PART_TRAIT_ENUM> PART_TRAIT_LINES[] = {
    {DEV_PART_TRAIT_NOT_LISTED, "\tNOT_LISTED: Cannot be selected using the Velcora (GUI)"},
    {DEV_PART_TRAIT_NO_POF, "\tNO_POF: No programming file can be generated for this part"},
    {DEV_PART_TRAIT_NO_PIN_OUT, "\tNO_PIN_OUT: No pin out information exist for this part"},
    {DEV_PART_TRAIT_ADVANCED_INFO, "\tADVANCED_INFO: Specifications for this part are subject to change"},
};

// Family traits in report order.
const TRAIT_LINE<DEV_FAMILY_TRAIT_ENUM> FAMILY_TRAIT_LINES[] = {
    {DEV_FAMILY_TRAIT_NOT_INSTALLED, "\tNOT_INSTALLED: Family is not installed"},
    {DEV_FAMILY_TRAIT_NOT_LISTED, "\tNOT_LISTED: Cannot be selected using the Velcora (GUI)"},
    {DEV_FAMILY_TRAIT_NO_COMPILER_SUPPORT, "\tNO_COMPILER_SUPPORT: Family is not supported by the Velcora compiler"},
    {DEV_FAMILY_TRAIT_LOGIC_ANALYZER_SUPPORT,
     "\tLOGIC_ANALYZER_SUPPORT: Supports the embedded logic analyzer for debugging in the device"},
    {DEV_FAMILY_TRAIT_INCREMENTAL_LOCKING,
     "\tINCREMENTAL_LOCKING: Supports locking placement and routing of design partitions"},
    {DEV_FAMILY_TRAIT_IN_SYSTEM_MEMORY_DEBUG,
     "\tIN_SYSTEM_MEMORY_DEBUG: Supports reading and writing memory contents in the running device"},
    {DEV_FAMILY_TRAIT_FITTER_ECO, "\tFITTER_ECO: Supports incremental placement and routing ECOs"},
};

void print_line(const std::string& line) { atcl_print_msg("%s", line.c_str()); }

// The family's parts for the reports (an empty selection is an internal error).
std::vector<DEV_PART_ENUM> parts_of_family(const DEV_PART_MANAGER& part_manager, DEV_FAMILY_ENUM family) {
    std::vector<DEV_PART_ENUM> part_list;
    part_manager.filter_part_list(&part_list, dstr_get_debug_string(family), "ANY", "ANY", "ANY", "ANY");
    DEV_ASSERT_TEXT(!part_list.empty(), "!part_list.empty()");
    return part_list;
}

void print_section(const char* heading, const std::set<std::string>& members) {
    print_line(heading);
    for (const std::string& member : members) atcl_print_msg("\t%s", member.c_str());
    print_line("");
}

}  // namespace

int dev_tcl_report_part_info(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_report_part_info(&args, interp, objc, objv)) return rc;
    DEV_PART_ENUM part;
    if (!dev_tcl_find_part(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_PART), &part)) return TCL_ERROR;

    DEV_PART_MANAGER part_manager;
    const DEV_FAMILY_ENUM family = part_manager.get_family_of(part);
    const DEV_DEVICE_ENUM device = part_manager.get_device_of(part);
    const DEV_PKG_ENUM package = part_manager.get_pkg_of(part);
    const DEV_SPEED_ENUM speed = part_manager.get_speed_of(part);
    const int io_count = part_manager.get_device_resource_count_of(part, DEV_RESOURCE_USER_IO);
    if (io_count < 1 && !part_manager.test_part_trait_of(part, DEV_PART_TRAIT_NO_USER_IO_COUNT))
        DEV_INTERNAL_ERROR(std::string("Missing user IO count for part ") + dstr_get_debug_string(part));

    print_line(RULE);
    atcl_print_msg("Part Name  : %s", dstr_get_user_string(part));
    print_line(RULE);
    atcl_print_msg("Family Name  : %s", dstr_get_user_string(family));
    atcl_print_msg("Device Name  : %s", dstr_get_user_string(device));
    atcl_print_msg("Package Name : %s", dstr_get_user_string(package));
    atcl_print_msg("Pin Count    : %d", part_manager.get_pin_count_of(part));
    atcl_print_msg("Speed Grade  : %s", dstr_get_user_string(speed));
    atcl_print_msg("I/O Count    : %d", io_count);
    atcl_print_msg("Lcell Count  : %d", part_manager.get_lcell_count_of(part));
    print_line("");
    print_line("Additional Information:");
    bool any = false;
    for (const auto& line : PART_TRAIT_LINES) {
        if (!part_manager.test_part_trait_of(part, line.trait)) continue;
        print_line(line.line);
        any = true;
    }
    if (!any) print_line("\tThere is no additional information for this part");
    print_line(RULE);
    return TCL_OK;
}

int dev_tcl_report_device_info(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_report_device_info(&args, interp, objc, objv)) return rc;
    DEV_DEVICE_ENUM device;
    if (!dev_tcl_find_device(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_DEVICE), &device)) return TCL_ERROR;

    DEV_PART_MANAGER part_manager;
    const DEV_FAMILY_ENUM family = part_manager.get_family_of(device);
    print_line(RULE);
    atcl_print_msg("Device Name  : %s", dstr_get_user_string(device));
    print_line(RULE);
    print_line("");
    atcl_print_msg("Family Name  : %s", dstr_get_user_string(family));
    print_line("");
    print_line("Available Part Names  :");
    const std::vector<DEV_PART_ENUM> part_list = parts_of_family(part_manager, family);
    if (!part_list.empty()) {
        for (DEV_PART_ENUM part : part_list)
            if (part_manager.get_device_of(part) == device) atcl_print_msg("\t%s", dstr_get_user_string(part));
        print_line("");
    }
    print_line("Use \"report_part_info\" to see detailed information on a given part");
    print_line("");
    print_line(RULE);
    return TCL_OK;
}

int dev_tcl_report_family_info(ClientData, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    ATCL_ARGS args;
    if (int rc = dev_tcl_args_report_family_info(&args, interp, objc, objv)) return rc;
    DEV_FAMILY_ENUM family;
    if (!dev_tcl_find_family(interp, args.get_one_arg_option(DEV_AUTO_ARGUMENT_FAMILY), &family)) return TCL_ERROR;

    DEV_PART_MANAGER part_manager;
    print_line(RULE);
    atcl_print_msg("Family Name  : %s", dstr_get_user_string(family));
    print_line(RULE);
    print_line("");

    // Distinct values, ordered by plain string comparison (pin counts too: "1020" < "484").
    std::set<std::string> devices, packages, pin_counts, speed_grades;
    for (DEV_PART_ENUM part : parts_of_family(part_manager, family)) {
        devices.insert(dstr_get_user_string(part_manager.get_device_of(part)));
        packages.insert(dstr_get_user_string(part_manager.get_pkg_of(part)));
        pin_counts.insert(std::to_string(part_manager.get_pin_count_of(part)));
        speed_grades.insert(dstr_get_user_string(part_manager.get_speed_of(part)));
    }
    print_section("Available Devices:", devices);
    print_section("Available Packages:", packages);
    print_section("Available Speed Grades:", speed_grades);
    print_section("Available Pin Counts:", pin_counts);

    print_line("Use \"report_device_info\" to see available combinations for a given device");
    print_line("");
    print_line("Additional Information:");
    DEV_FAMILY_MANAGER family_manager;
    bool any = false;
    for (const auto& line : FAMILY_TRAIT_LINES) {
        if (!family_manager.test_trait_of(family, line.trait)) continue;
        print_line(line.line);
        any = true;
    }
    if (!any) print_line("\tThere is no additional information for this family");
    print_line(RULE);
    return TCL_OK;
}
