// The package's argument processors behind real Tcl commands: each test command parses its
// words and answers with the options it received, so the tests see exactly what a command
// body would read, or the error or help the user gets instead.
#include <gtest/gtest.h>

#include <string>
#include <tcl.h>

#include "dev_tcl_args_auto.h"
#include "tcl_interp_fixture.h"

namespace {

typedef int (*PROCESSOR)(ATCL_ARGS*, Tcl_Interp*, int, Tcl_Obj* const[]);
const PROCESSOR kProcessors[] = {
#define PROCESSOR_ROW(name) dev_tcl_args_##name,
    DEV_TCL_AUTO_COMMANDS(PROCESSOR_ROW)
#undef PROCESSOR_ROW
};

int g_runs = 0;

// Client data: the command's index. Answers "name" for a flag, "name=value" for a value.
int echo_options(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    DEV_TCL_AUTO_COMMAND_ENUM command = static_cast<DEV_TCL_AUTO_COMMAND_ENUM>(reinterpret_cast<intptr_t>(data));
    ATCL_ARGS args;
    int rc = kProcessors[command](&args, interp, objc, objv);
    if (rc != 0) return rc;
    ++g_runs;
    std::string text;
    for (const ATCL_OPTION_SPEC* row = dev_tcl_auto_command_record(command).options; row->option; ++row) {
        if (!args.is_option_given(row->option)) continue;
        if (!text.empty()) text += " ";
        text += dev_tcl_auto_option_to_name(row->option);
        if (row->takes_value) text += "=" + args.get_one_arg_option(row->option);
        EXPECT_TRUE(args.get_no_arg_option(row->option));
    }
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.data(), static_cast<int>(text.size())));
    return TCL_OK;
}

class ArgumentParsingTest : public TclInterpTest {
protected:
    void SetUp() override {
        TclInterpTest::SetUp();
        static ATCL_CALLBACK_ROW table[DEV_TCL_AUTO_CMD_COUNT + 1];
        for (int i = 0; i < DEV_TCL_AUTO_CMD_COUNT; ++i)
            table[i] = {echo_options, dev_tcl_auto_command_record(static_cast<DEV_TCL_AUTO_COMMAND_ENUM>(i)).command_name,
                        reinterpret_cast<const char*>(static_cast<intptr_t>(i))};
        atcl_begin_package_setup("::velcora::device", "1.0", nullptr, nullptr, 0);
        atcl_register_callbacks(table);
        atcl_end_package_setup();
        ASSERT_EQ(TCL_OK, eval("namespace import ::velcora::device::*").code);
        g_runs = 0;
    }
    // A refused call: TCL_ERROR, the message, and the command did not run.
    void expect_refused(const std::string& script, const std::string& message) {
        int runs = g_runs;
        TCL_RUN run = eval(script);
        EXPECT_EQ(TCL_ERROR, run.code) << script;
        EXPECT_EQ(message, run.result) << script;
        EXPECT_EQ(runs, g_runs) << script;
        EXPECT_EQ("", printed()) << script;
    }
    void expect_parsed(const std::string& script, const std::string& options) {
        TCL_RUN run = eval(script);
        EXPECT_EQ(TCL_OK, run.code) << script << ": " << run.result;
        EXPECT_EQ(options, run.result) << script;
    }
};

}  // namespace

TEST_F(ArgumentParsingTest, OptionsInAnyOrderWithPositionalArguments) {
    expect_parsed("get_part_list", "");
    expect_parsed("get_part_list -speed_grade 7 -debug_names -f F1 -pi 484", "debug_names family=F1 pin_count=484 speed_grade=7");
    expect_parsed("test_part_trait_of P1 -t NO_POF", "trait=NO_POF part=P1");
    expect_parsed("test_part_trait_of -trait NO_POF -part P1", "trait=NO_POF part=P1");
    expect_parsed("get_part_info P1 -pi -family -family_v", "family family_variant pin_count part=P1");
    expect_parsed("get_family_info -m -d F1", "device_folder migration_families family=F1");
    expect_parsed("get_temperature_option -default_ma P1", "default_max part=P1");
    // A value is taken as it stands, even when it looks like an option; "--" ends the options.
    expect_parsed("get_part_list -family -h", "family=-h");
    expect_parsed("report_part_info -- -part", "part=-part");
    expect_parsed("report_part_info -", "part=-");
    expect_parsed("report_part_info {}", "part=");
    EXPECT_EQ(11, g_runs);
}

TEST_F(ArgumentParsingTest, WrongCallsNameTheCommandAndTheOption) {
    expect_refused("get_family_list -part x",
                   "ERROR: Unknown option \"-part\" for command get_family_list. Use \"get_family_list -help\" to see its options.");
    expect_refused("get_temperature_option -default_m P1",
                   "ERROR: Ambiguous option \"-default_m\" for command get_temperature_option: it may mean -default_max or "
                   "-default_min. Type more of the option's name.");
    expect_refused("get_part_info -pa P1",
                   "ERROR: Ambiguous option \"-pa\" for command get_part_info: it may mean -package or "
                   "-package_suffix_string. Type more of the option's name.");
    expect_refused("get_dstr_string -d X",
                   "ERROR: Ambiguous option \"-d\" for command get_dstr_string: it may mean -debug or -device. "
                   "Type more of the option's name.");
    expect_refused("get_part_list -family", "ERROR: Option -family of command get_part_list needs a value.");
    expect_refused("test_family_trait_of -family F1", "ERROR: Missing required option -trait of command test_family_trait_of.");
    expect_refused("test_part_trait_of -trait T", "ERROR: Missing argument <part> of command test_part_trait_of.");
    expect_refused("report_part_info", "ERROR: Missing argument <part> of command report_part_info.");
    expect_refused("report_part_info P1 P2", "ERROR: Unexpected argument \"P2\" for command report_part_info.");
    expect_refused("enumerate_family_traits {}", "ERROR: Unexpected argument \"\" for command enumerate_family_traits.");
    expect_refused("report_part_info -part P1 P2", "ERROR: Unexpected argument \"P2\" for command report_part_info.");
    expect_refused("get_part_list -family A -fam B", "ERROR: Option -family of command get_part_list is given more than once.");
    expect_refused("get_part_info -pi P1 -pin_count", "ERROR: Option -pin_count of command get_part_info is given more than once.");
}

TEST_F(ArgumentParsingTest, LongNonAsciiAndEmptyWordsAreHandled) {
    std::string long_word(200000, 'q');
    expect_refused("get_part_list -" + long_word,
                   "ERROR: Unknown option \"-" + long_word + "\" for command get_part_list. Use \"get_part_list -help\" to see its options.");
    expect_parsed("report_part_info " + long_word, "part=" + long_word);
    expect_refused("get_part_list -f\xc3\xa4mily x",
                   "ERROR: Unknown option \"-f\xc3\xa4mily\" for command get_part_list. Use \"get_part_list -help\" to see its options.");
    expect_parsed("get_part_list -family \xe6\x97\xa5\xe6\x9c\xac", "family=\xe6\x97\xa5\xe6\x9c\xac");
    expect_parsed("get_part_list -family {} -device {}", "device= family=");
    // A word with an embedded NUL (held by Tcl as the bytes C0 80) is a word like any other.
    expect_refused("get_part_list -fam\\0ily x",
                   "ERROR: Unknown option \"-fam\xc0\x80ily\" for command get_part_list. Use \"get_part_list -help\" to see its options.");
}

TEST_F(ArgumentParsingTest, HelpIsPrintedAndTheCommandDoesNotRun) {
    for (const char* help : {"-h", "-he", "-help", "-long", "-long_help"}) {
        for (int i = 0; i < DEV_TCL_AUTO_CMD_COUNT; ++i) {
            std::string name = dev_tcl_auto_command_record(static_cast<DEV_TCL_AUTO_COMMAND_ENUM>(i)).command_name;
            TCL_RUN run = eval(name + " " + help);
            EXPECT_EQ(TCL_OK, run.code) << name << " " << help;
            EXPECT_EQ("", run.result) << name << " " << help;
            bool long_help = std::string(help).compare(0, 2, "-l") == 0;
            std::string start = (long_help ? "Command " + name + " (device commands)\n" : "") + "Usage: " + name;
            std::string text = printed();
            EXPECT_EQ(0u, text.find(start)) << name << " " << help << ":\n" << text;
            EXPECT_EQ(long_help, text.find("shortest form") != std::string::npos) << name << " " << help;
        }
    }
    // Help wins over a missing required argument; the first wrong word wins over help.
    EXPECT_EQ(TCL_OK, eval("report_part_info -h").code);
    printed();
    EXPECT_EQ(TCL_ERROR, eval("report_part_info -bogus -h").code);
    EXPECT_EQ(0, g_runs);
}

TEST_F(ArgumentParsingTest, HelpTextsListEveryOption) {
    ASSERT_EQ(TCL_OK, eval("test_part_trait_of -help").code);
    EXPECT_EQ("Usage: test_part_trait_of -trait <trait> <part>\n"
              "  -h, -help                     show this usage\n"
              "  -long_help                    show the usage with the short forms of the options\n"
              "  -trait <trait>                value, required\n"
              "  <part>                        value, required, also as -part <part>\n",
              printed());
    ASSERT_EQ(TCL_OK, eval("get_temperature_option -long_help").code);
    EXPECT_EQ("Command get_temperature_option (device commands)\n"
              "Usage: get_temperature_option [-default_max] [-default_min] [-list_max] [-list_min] <part>\n"
              "  -h, -help                     show this usage\n"
              "  -long_help                    show the usage with the short forms of the options\n"
              "  -default_max                  flag, optional\n"
              "  -default_min                  flag, optional\n"
              "  -list_max                     flag, optional\n"
              "  -list_min                     flag, optional\n"
              "  <part>                        value, required, also as -part <part>\n"
              "Options may be shortened to any prefix that names only one of them:\n"
              "  -default_max                  shortest form -default_ma\n"
              "  -default_min                  shortest form -default_mi\n"
              "  -list_max                     shortest form -list_ma\n"
              "  -list_min                     shortest form -list_mi\n"
              "  -part                         shortest form -part\n"
              "  -help                         shortest form -he\n"
              "  -long_help                    shortest form -lo\n"
              "Options -default_max, -default_min, -list_max and -list_min are mutually exclusive.\n",
              printed());
    ASSERT_EQ(TCL_OK, eval("get_family_info -long").code);
    std::string text = printed();
    EXPECT_NE(std::string::npos, text.find("\nUsage: get_family_info [-device_folder] [-migration_families] <family>\n"));
    EXPECT_NE(std::string::npos, text.find("\nOption -device_folder takes precedence over -migration_families.\n"));
}

TEST_F(ArgumentParsingTest, ProcessorRefusesANullArgumentObject) {
    Tcl_Obj* word = Tcl_NewStringObj("get_family_list", -1);
    Tcl_IncrRefCount(word);
    EXPECT_NE(0, dev_tcl_args_get_family_list(nullptr, m_interp, 1, &word));
    Tcl_DecrRefCount(word);
    EXPECT_EQ(std::vector<std::string>{"args != 0"}, errors());
}
