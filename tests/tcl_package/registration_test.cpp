// The package's entry points in a real interpreter inside the test process (so that the
// sanitizer build checks the commands too): registration, withdrawal, and their internal
// errors without an interpreter.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ddb/dev/dev_tcl.h"
#include "../tcl_frame/tcl_interp_fixture.h"

namespace {

class PackageRegistrationTest : public TclInterpTest {};

const char* const kRule = "------------------------------------------------------";

}  // namespace

TEST_F(PackageRegistrationTest, InitProvidesTheCommandsAndUnloadWithdrawsThem) {
    EXPECT_EQ(0, Ddb_Init(m_interp));
    EXPECT_EQ("1.0", eval("package present ::velcora::device").result);
    EXPECT_EQ("13", eval("llength [info commands ::velcora::device::*]").result);
    EXPECT_EQ("Corvane II", eval("::velcora::device::get_dstr_string -family CORVANE2").result);

    EXPECT_EQ(0, Ddb_Unload(m_interp, TCL_UNLOAD_DETACH_FROM_INTERPRETER));
    EXPECT_EQ("0", eval("namespace exists ::velcora::device").result);
    EXPECT_EQ(TCL_ERROR, eval("package present ::velcora::device").code);
    EXPECT_EQ(nullptr, atcl_get_interpreter());
    EXPECT_TRUE(errors().empty());
}

TEST_F(PackageRegistrationTest, WithoutAnInterpreterBothStepsReportAndReturn) {
    atcl_set_interpreter(nullptr);
    EXPECT_EQ(TCL_ERROR, dev_ddb_register_tcl());
    dev_ddb_unregister_tcl();
    EXPECT_EQ((std::vector<std::string>{"A Tcl interpreter must exist before registering ::velcora::device!",
                                        "A Tcl interpreter must exist before unregistering ::velcora::timing_assignment!"}),
              errors());
    EXPECT_EQ("", eval("info commands ::velcora::device::*").result);
}

TEST_F(PackageRegistrationTest, CommandsRunInProcess) {
    ASSERT_EQ(0, Ddb_Init(m_interp));
    eval("namespace import ::velcora::device::*");
    TCL_RUN parts = eval("get_part_list -family {Corvane II} -speed_grade 6");
    ASSERT_EQ(TCL_OK, parts.code);
    EXPECT_EQ("1", eval("expr {[llength [get_part_list -family CORVANE2]] > [llength {" + parts.result + "}]}").result);

    const std::string part = eval("lindex {" + parts.result + "} 0").result;
    ASSERT_EQ(TCL_OK, eval("report_part_info " + part).code);
    std::string text = printed();
    EXPECT_EQ(0u, text.find(std::string(kRule) + "\nPart Name  : " + part + "\n" + kRule + "\nFamily Name  : Corvane II\n"))
        << text;
    EXPECT_NE(std::string::npos, text.find("\nSpeed Grade  : 6\n")) << text;

    ASSERT_EQ(TCL_OK, eval("report_family_info CORVANE2").code);
    text = printed();
    EXPECT_NE(std::string::npos, text.find("Available Pin Counts:\n\t144\n")) << text;
    EXPECT_EQ(TCL_OK, eval("report_device_info [get_part_info -device " + part + "]").code);
    EXPECT_NE(std::string::npos, printed().find("\t" + part + "\n"));

    EXPECT_EQ("1", eval("expr {[get_temperature_option -default_max " + part + "] in [get_temperature_option -list_max " +
                        part + "]}")
                       .result);
    EXPECT_EQ(TCL_ERROR, eval("get_part_info -family " + std::string(100000, 'x')).code);
    EXPECT_TRUE(errors().empty());
}
