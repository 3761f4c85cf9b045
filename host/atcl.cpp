// Host Tcl support: the interpreter, package setup and withdrawal, messages to the user.
#include "host/atcl.h"

#include <cstdarg>
#include <cstdio>
#include <exception>
#include <memory>
#include <tcl.h>

#include "host/msg.h"

#define ATCL_INTERNAL_ERROR(text) \
    MSG_INTERNAL_ERROR_report((text), "ATCL", msg_source_name(__FILE__).c_str(), __LINE__)

namespace {

Tcl_Interp* g_interp = nullptr;
bool g_stubs_ready = false;

struct SETUP_SCOPE {
    bool open = false;
    bool withdraw = false;
    std::string name_space;
    std::string version;
};
SETUP_SCOPE g_scope;

// Client data of one registered command; owned by the Tcl command, freed when it goes.
struct COMMAND_DATA {
    ATCL_CALLBACK callback;
    ClientData word;
    std::string name;
};

std::string vformat(const char* format, va_list args) {
    if (!format) return std::string();
    va_list copy;
    va_copy(copy, args);
    int n = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (n <= 0) return std::string();
    std::string text(static_cast<size_t>(n) + 1, '\0');
    std::vsnprintf(&text[0], text.size(), format, args);
    text.resize(static_cast<size_t>(n));
    return text;
}

void forget_deleted_interpreter(ClientData, Tcl_Interp* interp) {
    if (g_interp == interp) g_interp = nullptr;
}

// Runs a package command. Help given by the argument layer is a successful call for Tcl;
// an exception escaping a callback becomes a Tcl error instead of unwinding through Tcl.
int dispatch_command(ClientData client_data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const COMMAND_DATA* data = static_cast<const COMMAND_DATA*>(client_data);
    int rc;
    try {
        rc = data->callback(data->word, interp, objc, objv);
    } catch (const std::exception& e) {
        return atcl_error_msg(interp, "ERROR: Command %s failed: %s", data->name.c_str(), e.what());
    } catch (...) {
        return atcl_error_msg(interp, "ERROR: Command %s failed.", data->name.c_str());
    }
    return rc == ATCL_HELP_GIVEN ? TCL_OK : rc;
}

void delete_command_data(ClientData client_data) { delete static_cast<COMMAND_DATA*>(client_data); }

std::string qualified(const std::string& name_space, const char* name) {
    std::string full = name_space;
    if (full.size() < 2 || full.compare(full.size() - 2, 2, "::") != 0) full += "::";
    return full + name;
}

}  // namespace

bool atcl_set_interpreter(Tcl_Interp* interp) {
    if (g_interp && g_interp != interp) Tcl_DontCallWhenDeleted(g_interp, forget_deleted_interpreter, nullptr);
    if (!interp) {
        g_interp = nullptr;
        return true;
    }
    if (!g_stubs_ready) {
        if (!Tcl_InitStubs(interp, "8.5", 0)) {
            g_interp = nullptr;
            return false;
        }
        g_stubs_ready = true;
    }
    if (g_interp != interp) Tcl_CallWhenDeleted(interp, forget_deleted_interpreter, nullptr);
    g_interp = interp;
    return true;
}

Tcl_Interp* atcl_get_interpreter() { return g_interp; }

void atcl_begin_package_setup(const char* name_space, const char* version, const char* module,
                              const char* owner, int withdraw) {
    if (g_scope.open) ATCL_INTERNAL_ERROR("atcl_begin_package_setup called while a package setup is open");
    if (!name_space || !*name_space) {
        ATCL_INTERNAL_ERROR("name_space != 0");
        g_scope = SETUP_SCOPE();
        return;
    }
    g_scope.open = true;
    g_scope.withdraw = withdraw != 0;
    g_scope.name_space = name_space;
    g_scope.version = version ? version : "";
    msg_local_vdebug("ATCL", "%s package %s %s (module %s, entry %s)",
                     g_scope.withdraw ? "Withdrawing" : "Setting up", name_space,
                     g_scope.version.c_str(), module ? module : "-", owner ? owner : "-");
}

void atcl_end_package_setup() {
    if (!g_scope.open) ATCL_INTERNAL_ERROR("atcl_end_package_setup called without an open package setup");
    g_scope = SETUP_SCOPE();
}

void atcl_register_callbacks(const ATCL_CALLBACK_ROW* table) {
    if (!g_scope.open || g_scope.withdraw) {
        ATCL_INTERNAL_ERROR("atcl_register_callbacks needs an open package setup");
        return;
    }
    if (!table || !g_interp) return;
    Tcl_Namespace* ns = Tcl_FindNamespace(g_interp, g_scope.name_space.c_str(), nullptr, 0);
    if (!ns) ns = Tcl_CreateNamespace(g_interp, g_scope.name_space.c_str(), nullptr, nullptr);
    if (!ns) {
        ATCL_INTERNAL_ERROR(Tcl_GetStringResult(g_interp));
        return;
    }
    for (const ATCL_CALLBACK_ROW* row = table; row->callback; ++row) {
        if (!row->name || !*row->name) {
            ATCL_INTERNAL_ERROR("row->name != 0");
            continue;
        }
        std::string full = qualified(g_scope.name_space, row->name);
        COMMAND_DATA* data = new COMMAND_DATA{row->callback, const_cast<char*>(row->word), row->name};
        Tcl_CreateObjCommand(g_interp, full.c_str(), dispatch_command, data, delete_command_data);
    }
    Tcl_Export(g_interp, ns, "*", 0);
}

void atcl_unregister_package(Tcl_Interp* interp) {
    if (!g_scope.open || !g_scope.withdraw) {
        ATCL_INTERNAL_ERROR("atcl_unregister_package needs an open package withdrawal");
        return;
    }
    if (!interp) return;
    if (Tcl_Namespace* ns = Tcl_FindNamespace(interp, g_scope.name_space.c_str(), nullptr, 0))
        Tcl_DeleteNamespace(ns);
    Tcl_Obj* forget[3] = {Tcl_NewStringObj("package", -1), Tcl_NewStringObj("forget", -1),
                          Tcl_NewStringObj(g_scope.name_space.c_str(), -1)};
    for (Tcl_Obj* o : forget) Tcl_IncrRefCount(o);
    Tcl_EvalObjv(interp, 3, forget, TCL_EVAL_GLOBAL);
    for (Tcl_Obj* o : forget) Tcl_DecrRefCount(o);
    Tcl_ResetResult(interp);
}

int atcl_error_msg(Tcl_Interp* interp, const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::string text = vformat(format, args);
    va_end(args);
    if (!interp) interp = g_interp;
    if (interp) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    } else {
        std::fprintf(stderr, "%s\n", text.c_str());
        std::fflush(stderr);
    }
    return TCL_ERROR;
}

void atcl_print_line(Tcl_Interp* interp, const std::string& line) {
    if (!interp) {
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
        return;
    }
    // Without a stdout channel (closed by the script) the line is dropped, as puts would
    // fail; a failed look-up would leave its message in the result, so the result is kept.
    Tcl_InterpState state = Tcl_SaveInterpState(interp, TCL_OK);
    Tcl_Channel out = Tcl_GetChannel(interp, "stdout", nullptr);
    Tcl_RestoreInterpState(interp, state);
    if (!out) return;
    Tcl_WriteChars(out, line.data(), static_cast<int>(line.size()));
    Tcl_WriteChars(out, "\n", 1);
}

void atcl_print_msg(const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::string text = vformat(format, args);
    va_end(args);
    atcl_print_line(g_interp, text);
}
