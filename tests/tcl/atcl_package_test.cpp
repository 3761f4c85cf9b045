// The host's package setup and withdrawal, interpreter bookkeeping and messages, in a real
// interpreter.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tcl_interp_fixture.h"

namespace {

int answer_word(ClientData word, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    Tcl_SetObjResult(interp, Tcl_NewStringObj(static_cast<const char*>(word), -1));
    return TCL_OK;
}
int print_report(ClientData, Tcl_Interp*, int objc, Tcl_Obj* const objv[]) {
    atcl_print_msg("Part Name  : %s", objc > 1 ? Tcl_GetString(objv[1]) : "");
    atcl_print_msg("%s", "");
    atcl_print_msg("Pin Count    : %d", 484);
    return TCL_OK;
}
int refuse(ClientData, Tcl_Interp* interp, int, Tcl_Obj* const[]) {
    return atcl_error_msg(interp, "ERROR: Illegal part name: %s. Specify a legal part name.", "\xc3\xa9t\xc3\xa9");
}
int throw_error(ClientData, Tcl_Interp*, int, Tcl_Obj* const[]) { throw std::runtime_error("broken table"); }

const ATCL_CALLBACK_ROW kTable[] = {{answer_word, "answer", "forty-two"},
                                    {print_report, "report", nullptr},
                                    {refuse, "refuse", nullptr},
                                    {throw_error, "throw", nullptr},
                                    {nullptr, nullptr, nullptr}};

class AtclPackageTest : public TclInterpTest {
protected:
    void register_package() {
        atcl_begin_package_setup("::frame_test::pkg", "2.5", nullptr, nullptr, 0);
        atcl_register_callbacks(kTable);
        atcl_end_package_setup();
        Tcl_PkgProvide(m_interp, "::frame_test::pkg", "2.5");
    }
    void withdraw_package() {
        atcl_begin_package_setup("::frame_test::pkg", "2.5", "test_mod", "test_entry", 1);
        atcl_unregister_package(m_interp);
        atcl_end_package_setup();
    }
};

}  // namespace

TEST_F(AtclPackageTest, RegisterAndWithdrawAPackage) {
    register_package();
    EXPECT_EQ("::frame_test::pkg::answer ::frame_test::pkg::refuse ::frame_test::pkg::report ::frame_test::pkg::throw",
              eval("lsort [info commands ::frame_test::pkg::*]").result);
    EXPECT_EQ("2.5", eval("package present ::frame_test::pkg").result);
    EXPECT_EQ("forty-two", eval("::frame_test::pkg::answer").result);
    EXPECT_EQ("forty-two", eval("namespace import ::frame_test::pkg::answer; answer").result);

    withdraw_package();
    EXPECT_EQ("", eval("info commands ::frame_test::pkg::*").result);
    EXPECT_EQ("0", eval("namespace exists ::frame_test::pkg").result);
    EXPECT_EQ(TCL_ERROR, eval("package present ::frame_test::pkg").code);
    EXPECT_EQ("", eval("info commands answer").result);
    EXPECT_TRUE(errors().empty());

    // Registering again after the withdrawal works as the first time.
    register_package();
    EXPECT_EQ("forty-two", eval("::frame_test::pkg::answer").result);
}

TEST_F(AtclPackageTest, MessagesReachTheResultAndTheStdoutChannel) {
    register_package();
    EXPECT_EQ(TCL_OK, eval("puts before; ::frame_test::pkg::report P1; puts after").code);
    EXPECT_EQ("before\nPart Name  : P1\n\nPin Count    : 484\nafter\n", printed());

    TCL_RUN run = eval("::frame_test::pkg::refuse");
    EXPECT_EQ(TCL_ERROR, run.code);
    EXPECT_EQ("ERROR: Illegal part name: \xc3\xa9t\xc3\xa9. Specify a legal part name.", run.result);
    EXPECT_EQ("ERROR: Illegal part name: \xc3\xa9t\xc3\xa9. Specify a legal part name.",
              eval("catch ::frame_test::pkg::refuse message; set message").result);

    run = eval("::frame_test::pkg::throw");
    EXPECT_EQ(TCL_ERROR, run.code);
    EXPECT_EQ("ERROR: Command throw failed: broken table", run.result);

    // With stdout closed the report is dropped and the interpreter's result is kept.
    eval("close stdout");
    Tcl_SetObjResult(m_interp, Tcl_NewStringObj("kept", -1));
    atcl_print_msg("lost");
    EXPECT_STREQ("kept", Tcl_GetStringResult(m_interp));
}

TEST_F(AtclPackageTest, InterpreterBookkeepingAndMisuse) {
    EXPECT_EQ(m_interp, atcl_get_interpreter());
    Tcl_Interp* other = Tcl_CreateInterp();
    ASSERT_TRUE(atcl_set_interpreter(other));
    EXPECT_EQ(other, atcl_get_interpreter());
    Tcl_DeleteInterp(other);
    EXPECT_EQ(nullptr, atcl_get_interpreter());

    // Without an interpreter nothing is created and nothing breaks.
    atcl_begin_package_setup("::frame_test::pkg", "2.5", nullptr, nullptr, 0);
    atcl_register_callbacks(kTable);
    atcl_end_package_setup();
    ASSERT_TRUE(atcl_set_interpreter(m_interp));
    EXPECT_EQ("0", eval("namespace exists ::frame_test::pkg").result);
    EXPECT_TRUE(errors().empty());

    atcl_register_callbacks(kTable);  // no open setup
    atcl_unregister_package(m_interp);
    atcl_end_package_setup();
    atcl_begin_package_setup("::frame_test::pkg", "2.5", nullptr, nullptr, 0);
    atcl_unregister_package(m_interp);  // a setup scope, not a withdrawal
    atcl_end_package_setup();
    EXPECT_EQ((std::vector<std::string>{"atcl_register_callbacks needs an open package setup",
                                        "atcl_unregister_package needs an open package withdrawal",
                                        "atcl_end_package_setup called without an open package setup",
                                        "atcl_unregister_package needs an open package withdrawal"}),
              errors());
    EXPECT_EQ("0", eval("namespace exists ::frame_test::pkg").result);
}
