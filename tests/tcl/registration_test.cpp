// Registration and withdrawal of the package without an interpreter: both report their
// internal errors and return (the Tcl tests cover them with one).
#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <tcl.h>

#include "dev_tcl.h"
#include "tcl_interp_fixture.h"

namespace {

class PackageRegistrationTest : public TclInterpTest {};

}  // namespace

TEST_F(PackageRegistrationTest, WithoutAnInterpreterBothStepsReportAndReturn) {
    atcl_set_interpreter(nullptr);
    EXPECT_EQ(TCL_ERROR, dev_ddb_register_tcl());
    dev_ddb_unregister_tcl();
    EXPECT_EQ((std::vector<std::string>{"A Tcl interpreter must exist before registering ::velcora::device!",
                                        "A Tcl interpreter must exist before unregistering ::velcora::timing_assignment!"}),
              errors());
    EXPECT_EQ("", eval("info commands ::velcora::device::*").result);
}
