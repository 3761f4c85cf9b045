// A real Tcl interpreter handed to the host's Tcl layer, with the interpreter's stdout
// channel captured so that tests can read what commands printed.
#ifndef VELCORA_TESTS_TCL_INTERP_FIXTURE_H
#define VELCORA_TESTS_TCL_INTERP_FIXTURE_H

#include <tcl.h>

#include <string>

#include "capture_fixture.h"
#include "host/atcl.h"

struct TCL_RUN {
    int code;
    std::string result;
};

class TclInterpTest : public CaptureTest {
protected:
    void SetUp() override {
        CaptureTest::SetUp();
        static bool executable_found = false;
        if (!executable_found) {
            Tcl_FindExecutable(nullptr);
            executable_found = true;
        }
        m_interp = Tcl_CreateInterp();
        ASSERT_TRUE(atcl_set_interpreter(m_interp));
        // A write-only reflected channel that collects everything written to it.
        ASSERT_EQ(TCL_OK, eval(R"(
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
        )").code);
        m_saved_stdout = Tcl_GetStdChannel(TCL_STDOUT);
        Tcl_SetStdChannel(Tcl_GetChannel(m_interp, Tcl_GetVar(m_interp, "::capture::chan", 0), nullptr),
                          TCL_STDOUT);
    }
    void TearDown() override {
        Tcl_SetStdChannel(m_saved_stdout, TCL_STDOUT);
        eval("close $::capture::chan");
        atcl_set_interpreter(nullptr);
        Tcl_DeleteInterp(m_interp);
        CaptureTest::TearDown();
    }

    TCL_RUN eval(const std::string& script) {
        int code = Tcl_EvalEx(m_interp, script.data(), static_cast<int>(script.size()), TCL_EVAL_GLOBAL);
        return {code, Tcl_GetStringResult(m_interp)};
    }
    // Everything printed to the interpreter's stdout so far (then forgotten).
    std::string printed() {
        TCL_RUN text = eval("encoding convertfrom utf-8 $::capture::data");
        eval("set ::capture::data {}");
        return text.result;
    }

    Tcl_Interp* m_interp = nullptr;

private:
    Tcl_Channel m_saved_stdout = nullptr;
};

#endif
