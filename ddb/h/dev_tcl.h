// The Tcl package ::velcora::device: its load entry points, registration, and the bodies of
// its thirteen commands (dev_tcl.cpp for the queries, dev_tcl_reports.cpp for the reports).
#ifndef VELCORA_DDB_DEV_TCL_H
#define VELCORA_DDB_DEV_TCL_H

#include "dev_export.h"

#include <string>

#include "dev_tcl_args_auto.h"
#include "host/dstr.h"

// Tcl's load entry points: `load libvelcora_ddb.so Ddb` calls Ddb_Init, `unload` Ddb_Unload.
extern "C" {
__attribute__((visibility("default"))) int Ddb_Init(Tcl_Interp* interp);
__attribute__((visibility("default"))) int Ddb_Unload(Tcl_Interp* interp, int flags);
}

// Registers the package's commands in the recorded interpreter; returns what
// Tcl_PkgProvide returned (TCL_ERROR when there is no interpreter).
DEV_EXPORT int dev_ddb_register_tcl();
// Withdraws the package from the recorded interpreter.
DEV_EXPORT void dev_ddb_unregister_tcl();

// Command bodies, one per row of the registration table.
#define DEV_TCL_COMMAND_DECLARATION(name) \
    DEV_EXPORT int dev_tcl_##name(ClientData client_data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]);
DEV_TCL_AUTO_COMMANDS(DEV_TCL_COMMAND_DECLARATION)
#undef DEV_TCL_COMMAND_DECLARATION

// ---- names typed by the user ----------------------------------------------------------------
// A name is looked up in the enumeration's string table by its debug string (the name in
// data files, e.g. "CORVANE2"); when no member has that debug string, a member whose user
// string is exactly the word (e.g. "Corvane II") is taken. Lists and reports show user
// strings, so a name one command returns can be handed to another. Both look-ups are
// hashed. The invalid and generic members are no names a user can pick. Returns the
// table's invalid value for an unknown word.
DEV_EXPORT int dev_tcl_lookup_name(const DSTR_TABLE& table, const std::string& word);

template <typename ENUM>
bool dev_tcl_find_name(const DSTR_TABLE& table, const std::string& word, ENUM* value) {
    *value = static_cast<ENUM>(dev_tcl_lookup_name(table, word));
    return *value != static_cast<ENUM>(table.invalid_value());
}

// The part, family or device a user named; false, with the package's "Illegal ... name"
// error as the interpreter's result, for a word that names none.
DEV_EXPORT bool dev_tcl_find_part(Tcl_Interp* interp, const std::string& word, DEV_PART_ENUM* part);
DEV_EXPORT bool dev_tcl_find_family(Tcl_Interp* interp, const std::string& word, DEV_FAMILY_ENUM* family);
DEV_EXPORT bool dev_tcl_find_device(Tcl_Interp* interp, const std::string& word, DEV_DEVICE_ENUM* device);

#endif
