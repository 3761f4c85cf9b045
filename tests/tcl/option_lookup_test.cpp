// The option-word look-up of every command: the abbreviation rule, computed here word by word
// over each command's own option table (held once, in the package's command records), the
// documented examples, and the report of an option out of range.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>
#include <tcl.h>

#include "capture_fixture.h"
#include "dev_tcl_args_auto.h"

namespace {

int value_of(const std::string& name) {
    for (int option = 1; option < DEV_AUTO_ARGUMENT_MAX; ++option)
        if (!name.empty() && name == dev_tcl_auto_option_to_name(option)) return option;
    return 0;
}

std::vector<const ATCL_OPTION_SPEC*> options_of(DEV_TCL_AUTO_COMMAND_ENUM command) {
    std::vector<const ATCL_OPTION_SPEC*> options;
    for (const ATCL_OPTION_SPEC* o = dev_tcl_auto_command_record(command).options; o->option != 0; ++o) options.push_back(o);
    return options;
}

// The rule, asked for one word: a whole name is accepted when it is a help option or the
// command's own; otherwise the word must be a proper prefix of exactly one of the names that
// may be shortened (the help options and the command's options that are not positional).
int expected_option(DEV_TCL_AUTO_COMMAND_ENUM command, const std::string& word) {
    const int whole = value_of(word);
    if (whole >= DEV_AUTO_ARGUMENT_H && whole <= DEV_AUTO_ARGUMENT_LONG_HELP) return whole;
    std::vector<std::string> names = {"h", "help", "long_help"};
    for (const ATCL_OPTION_SPEC* option : options_of(command)) {
        if (whole && option->option == whole) return whole;
        if (!option->positional) names.push_back(dev_tcl_auto_option_to_name(option->option));
    }
    std::vector<std::string> begun;
    for (const std::string& name : names)
        if (name.compare(0, word.size(), word) == 0) begun.push_back(name);
    if (begun.size() == 1 && begun[0].size() > word.size()) return value_of(begun[0]);
    return 0;
}

int lookup(const char* command, const char* word) {
    for (int i = 0; i < DEV_TCL_AUTO_CMD_COUNT; ++i)
        if (std::string(dev_tcl_auto_command_record(DEV_TCL_AUTO_COMMAND_ENUM(i)).command_name) == command)
            return dev_tcl_auto_name_to_option(DEV_TCL_AUTO_COMMAND_ENUM(i), word);
    ADD_FAILURE() << "no command " << command;
    return -1;
}

class OptionLookupTest : public CaptureTest {};

}  // namespace

TEST_F(OptionLookupTest, OptionsOutOfRangeAreReported) {
    const std::string illegal = "The calling function has passed an illegal DEV_AUTO_ARGUMENT_ENUM";
    for (int option : {0, -1, INT_MIN, int(DEV_AUTO_ARGUMENT_MAX), INT_MAX}) {
        clear_reports();
        EXPECT_STREQ("", dev_tcl_auto_option_to_name(option)) << option;
        EXPECT_EQ(std::vector<std::string>{illegal}, errors()) << option;
        ASSERT_EQ(1u, capture().records().size());
        EXPECT_EQ("ddb/dev/dev_tcl_args_auto", capture().records()[0].source);
    }
}

// Every prefix of every option name, and words that are no prefix at all, for every command.
TEST_F(OptionLookupTest, EveryCommandFollowsTheAbbreviationRule) {
    std::vector<std::string> words = {"", "x", "hh", "help_", "parts", "PART", "-part", "Family", "long_help_"};
    for (int option = 1; option < DEV_AUTO_ARGUMENT_MAX; ++option) {
        const std::string name = dev_tcl_auto_option_to_name(option);
        for (size_t length = 1; length <= name.size(); ++length) words.push_back(name.substr(0, length));
    }
    for (int i = 0; i < DEV_TCL_AUTO_CMD_COUNT; ++i) {
        const DEV_TCL_AUTO_COMMAND_ENUM command = DEV_TCL_AUTO_COMMAND_ENUM(i);
        // The record's own look-up is the command's.
        EXPECT_EQ(dev_tcl_auto_command_record(command).name_to_option("he"), DEV_AUTO_ARGUMENT_HELP);
        for (const std::string& word : words)
            EXPECT_EQ(expected_option(command, word), dev_tcl_auto_name_to_option(command, word.c_str()))
                << dev_tcl_auto_command_record(command).command_name << " -" << word;
    }
    EXPECT_EQ(0, dev_tcl_auto_name_to_option(DEV_TCL_AUTO_CMD_get_part_list, nullptr));
    EXPECT_EQ(0, dev_tcl_auto_name_to_option(DEV_TCL_AUTO_CMD_COUNT, "help"));
    EXPECT_TRUE(errors().empty());
}

TEST_F(OptionLookupTest, DocumentedExamples) {
    EXPECT_EQ(DEV_AUTO_ARGUMENT_MIGRATION_FAMILIES, lookup("get_family_info", "m"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEVICE_FOLDER, lookup("get_family_info", "d"));
    // "device" is not an option of get_family_info but begins only "device_folder" there.
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEVICE_FOLDER, lookup("get_family_info", "device"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_FAMILY, lookup("get_family_info", "family"));
    EXPECT_EQ(0, lookup("get_family_info", "fam"));  // positional: whole name only

    for (const char* word : {"d", "de", "def", "default_", "default_m"}) EXPECT_EQ(0, lookup("get_temperature_option", word)) << word;
    for (const char* word : {"l", "li", "list_", "list_m"}) EXPECT_EQ(0, lookup("get_temperature_option", word)) << word;
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEFAULT_MAX, lookup("get_temperature_option", "default_ma"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEFAULT_MIN, lookup("get_temperature_option", "default_mi"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_LONG_HELP, lookup("get_temperature_option", "lo"));

    for (const char* word : {"f", "fa", "fam", "famil"}) EXPECT_EQ(0, lookup("get_part_info", word)) << word;
    EXPECT_EQ(DEV_AUTO_ARGUMENT_FAMILY, lookup("get_part_info", "family"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_FAMILY_VARIANT, lookup("get_part_info", "family_"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_FAMILY_VARIANT, lookup("get_part_info", "family_v"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_FAMILY_VARIANT, lookup("get_part_info", "family_varian"));
    for (const char* word : {"d", "de", "p", "pa", "pac", "packag"}) EXPECT_EQ(0, lookup("get_part_info", word)) << word;
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEFAULT_VOLTAGE, lookup("get_part_info", "def"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEVICE, lookup("get_part_info", "dev"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_PACKAGE, lookup("get_part_info", "package"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_PACKAGE_SUFFIX_STRING, lookup("get_part_info", "package_"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_PACKAGE_SUFFIX_STRING, lookup("get_part_info", "package_suffix_strin"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_PIN_COUNT, lookup("get_part_info", "pi"));

    EXPECT_EQ(DEV_AUTO_ARGUMENT_FAMILY, lookup("get_dstr_string", "f"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_PART, lookup("get_dstr_string", "p"));
    EXPECT_EQ(0, lookup("get_dstr_string", "d"));
    EXPECT_EQ(0, lookup("get_dstr_string", "de"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEBUG, lookup("get_dstr_string", "deb"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_DEVICE, lookup("get_dstr_string", "dev"));

    EXPECT_EQ(0, lookup("get_family_list", "part"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_H, lookup("report_part_info", "h"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_HELP, lookup("report_part_info", "hel"));
    EXPECT_EQ(DEV_AUTO_ARGUMENT_LONG_HELP, lookup("report_part_info", "long"));
}
