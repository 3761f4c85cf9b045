// The commands of the Tcl package ::velcora::device with arbitrary argument words.
//
// Input: byte 0 picks the command (mod 13); the rest is its argument words, separated by
// NUL bytes (at most 16 words). The words go to the command as they are, through
// Tcl_EvalObjv: never parsed or evaluated as script.
//
// Properties: every command answers TCL_OK or TCL_ERROR, an error carries a message, and
// the commands only query: the same words a second time give the same code, result and
// printed text (a command that changes the catalogue or a cache behind the next call's back
// breaks it).
#include <tcl.h>

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz_support.h"

// The package's load entry point (what `load libvelcora_ddb.so Ddb` calls).
extern "C" int Ddb_Init(Tcl_Interp* interp);

namespace {

const char* const kCommands[] = {"get_family_list",       "enumerate_family_traits", "test_family_trait_of",
                                 "report_family_info",    "get_part_list",           "report_part_info",
                                 "report_device_info",    "test_part_trait_of",      "get_part_info",
                                 "get_family_info",       "get_dstr_string",         "test_device_trait_of",
                                 "get_temperature_option"};
constexpr size_t kMaxWords = 16;

Tcl_Interp* g_interp = nullptr;

struct ANSWER {
    int code;
    std::string result;
    std::string printed;
    bool operator==(const ANSWER& o) const {
        return code == o.code && result == o.result && printed == o.printed;
    }
};

void eval_or_abort(const char* script) {
    if (Tcl_Eval(g_interp, script) != TCL_OK) {
        std::fprintf(stderr, "set-up script failed: %s\n", Tcl_GetStringResult(g_interp));
        std::abort();
    }
}

// An interpreter with the package loaded and its stdout captured by a reflected channel.
void set_up_interpreter() {
    fuzz::use_bundled_installation();
    Tcl_FindExecutable(nullptr);
    g_interp = Tcl_CreateInterp();
    eval_or_abort(R"(
        namespace eval ::capture {
            variable data {}
            proc initialize {ch mode} { return {initialize finalize watch write} }
            proc finalize {ch} {}
            proc watch {ch events} {}
            proc write {ch bytes} { append ::capture::data $bytes; string length $bytes }
            namespace export *
            namespace ensemble create
        }
        set ::capture::chan [chan create write ::capture]
        fconfigure $::capture::chan -buffering none -translation lf -encoding utf-8
    )");
    Tcl_SetStdChannel(Tcl_GetChannel(g_interp, Tcl_GetVar(g_interp, "::capture::chan", 0), nullptr),
                      TCL_STDOUT);
    if (Ddb_Init(g_interp) != TCL_OK) {
        std::fprintf(stderr, "Ddb_Init failed: %s\n", Tcl_GetStringResult(g_interp));
        std::abort();
    }
}

ANSWER run(const std::vector<Tcl_Obj*>& words) {
    Tcl_SetVar(g_interp, "::capture::data", "", TCL_GLOBAL_ONLY);
    const int code = Tcl_EvalObjv(g_interp, static_cast<int>(words.size()), words.data(), TCL_EVAL_GLOBAL);
    ANSWER answer{code, Tcl_GetStringResult(g_interp),
                  Tcl_GetVar(g_interp, "::capture::data", TCL_GLOBAL_ONLY)};
    Tcl_ResetResult(g_interp);
    return answer;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    set_up_interpreter();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    fuzz::quiet_reports().clear();
    std::vector<Tcl_Obj*> words;
    words.push_back(Tcl_NewStringObj((std::string("::velcora::device::") +
                                      kCommands[data[0] % (sizeof kCommands / sizeof kCommands[0])])
                                         .c_str(),
                                     -1));
    const char* p = reinterpret_cast<const char*>(data) + 1;
    const char* const end = reinterpret_cast<const char*>(data) + size;
    while (p < end && words.size() <= kMaxWords) {
        const char* stop = p;
        while (stop < end && *stop != '\0') ++stop;
        words.push_back(Tcl_NewStringObj(p, static_cast<int>(stop - p)));
        p = stop + 1;
    }
    for (Tcl_Obj* w : words) Tcl_IncrRefCount(w);

    const ANSWER first = run(words);
    FUZZ_CHECK(first.code == TCL_OK || first.code == TCL_ERROR,
               "a command answered neither TCL_OK nor TCL_ERROR");
    FUZZ_CHECK(first.code == TCL_OK || !first.result.empty(), "a command failed without a message");
    FUZZ_CHECK(run(words) == first, "the same command answered differently the second time");

    for (Tcl_Obj* w : words) Tcl_DecrRefCount(w);
    return 0;
}
