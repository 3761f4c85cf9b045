// The package's option names, command records and option-word look-up. The expected
// look-up is computed here word by word from the documented command table, independently
// of the library's table generator.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <vector>
#include <tcl.h>

#include "capture_fixture.h"
#include "dev_tcl_args_auto.h"

namespace {

const std::vector<std::string> kNames = {
    "",       "h",           "help",          "long_help", "all",
    "debug",  "debug_names", "default_max",   "default_min", "default_voltage",
    "device", "device_folder", "family",      "family_variant", "",
    "list_max", "list_min",  "migration_families", "package", "package_suffix_string",
    "part",   "pin_count",   "speed_grade",   "temperature_grade", "trait"};

struct DocOption {
    const char* name;
    int v, p, o;
};
struct DocCommand {
    const char* name;
    std::vector<DocOption> options;
};

const std::vector<DocCommand> kCommands = {
    {"get_family_list", {{"all", 0, 0, 1}}},
    {"enumerate_family_traits", {}},
    {"test_family_trait_of", {{"family", 1, 0, 0}, {"trait", 1, 0, 0}}},
    {"report_family_info", {{"family", 1, 1, 0}}},
    {"get_part_list",
     {{"debug_names", 0, 0, 1}, {"device", 1, 0, 1}, {"family", 1, 0, 1}, {"package", 1, 0, 1},
      {"pin_count", 1, 0, 1}, {"speed_grade", 1, 0, 1}}},
    {"report_part_info", {{"part", 1, 1, 0}}},
    {"report_device_info", {{"device", 1, 1, 0}}},
    {"test_part_trait_of", {{"trait", 1, 0, 0}, {"part", 1, 1, 0}}},
    {"get_part_info",
     {{"default_voltage", 0, 0, 1}, {"device", 0, 0, 1}, {"family", 0, 0, 1}, {"family_variant", 0, 0, 1},
      {"package", 0, 0, 1}, {"package_suffix_string", 0, 0, 1}, {"pin_count", 0, 0, 1},
      {"speed_grade", 0, 0, 1}, {"temperature_grade", 0, 0, 1}, {"part", 1, 1, 0}}},
    {"get_family_info", {{"device_folder", 0, 0, 1}, {"migration_families", 0, 0, 1}, {"family", 1, 1, 0}}},
    {"get_dstr_string", {{"debug", 0, 0, 1}, {"device", 1, 0, 1}, {"family", 1, 0, 1}, {"part", 1, 0, 1}}},
    {"test_device_trait_of", {{"device", 1, 0, 0}, {"trait", 1, 0, 0}}},
    {"get_temperature_option",
     {{"default_max", 0, 0, 1}, {"default_min", 0, 0, 1}, {"list_max", 0, 0, 1}, {"list_min", 0, 0, 1},
      {"part", 1, 1, 0}}},
};

int value_of(const std::string& name) {
    for (size_t i = 1; i < kNames.size(); ++i)
        if (!name.empty() && kNames[i] == name) return static_cast<int>(i);
    return 0;
}

// The documented rule, asked for one word: a whole name is accepted when it is a help option
// or the command's own; otherwise the word must be a proper prefix of exactly one of the
// names that may be shortened, and of no other such name nor of "h".
int expected_option(const DocCommand& command, const std::string& word) {
    int whole = value_of(word);
    if (whole >= 1 && whole <= 3) return whole;
    for (const DocOption& option : command.options)
        if (whole && option.name == word) return whole;
    std::vector<std::string> names = {"h", "help", "long_help"};
    for (const DocOption& option : command.options)
        if (!option.p) names.push_back(option.name);
    std::vector<std::string> begun;
    for (const std::string& name : names)
        if (name.compare(0, word.size(), word) == 0) begun.push_back(name);
    if (begun.size() == 1 && begun[0].size() > word.size()) return value_of(begun[0]);
    return 0;
}

int lookup(const char* command, const char* word) {
    for (size_t i = 0; i < kCommands.size(); ++i)
        if (std::string(kCommands[i].name) == command)
            return dev_tcl_auto_name_to_option(static_cast<DEV_TCL_AUTO_COMMAND_ENUM>(i), word);
    ADD_FAILURE() << "no command " << command;
    return -1;
}

class OptionLookupTest : public CaptureTest {};

}  // namespace

TEST_F(OptionLookupTest, OptionNamesAndBounds) {
    for (int option = 1; option < DEV_AUTO_ARGUMENT_MAX; ++option)
        EXPECT_EQ(kNames[option], dev_tcl_auto_option_to_name(option)) << option;
    EXPECT_EQ(25, DEV_AUTO_ARGUMENT_MAX);
    EXPECT_TRUE(errors().empty());

    const std::string illegal = "The calling function has passed an illegal DEV_AUTO_ARGUMENT_ENUM";
    for (int option : {0, -1, INT_MIN, 25, 26, INT_MAX}) {
        clear_reports();
        EXPECT_STREQ("", dev_tcl_auto_option_to_name(option)) << option;
        EXPECT_EQ(std::vector<std::string>{illegal}, errors()) << option;
        ASSERT_EQ(1u, capture().records().size());
        EXPECT_EQ("DEV", capture().records()[0].module);
        EXPECT_EQ("ddb/dev/dev_tcl_args_auto", capture().records()[0].source);
    }
}

TEST_F(OptionLookupTest, RecordsFollowTheCommandTable) {
    ASSERT_EQ(kCommands.size(), static_cast<size_t>(DEV_TCL_AUTO_CMD_COUNT));
    for (size_t i = 0; i < kCommands.size(); ++i) {
        const DEV_TCL_COMMAND_RECORD& record = dev_tcl_auto_command_record(static_cast<DEV_TCL_AUTO_COMMAND_ENUM>(i));
        SCOPED_TRACE(kCommands[i].name);
        EXPECT_STREQ("device", record.package_word);
        EXPECT_STREQ(kCommands[i].name, record.command_name);
        EXPECT_EQ(&dev_tcl_auto_option_to_name, record.option_to_name);
        EXPECT_TRUE(record.name_to_option != nullptr);
        EXPECT_EQ(nullptr, record.reserved1);
        EXPECT_EQ(nullptr, record.reserved2);
        bool has_groups = kCommands[i].name == std::string("get_family_info") ||
                          kCommands[i].name == std::string("get_temperature_option");
        EXPECT_EQ(has_groups, record.groups != nullptr);
        size_t n = 0;
        for (; record.options[n].option != 0; ++n) {
            ASSERT_LT(n, kCommands[i].options.size());
            const DocOption& doc = kCommands[i].options[n];
            EXPECT_EQ(value_of(doc.name), record.options[n].option) << doc.name;
            EXPECT_EQ(doc.v, record.options[n].takes_value) << doc.name;
            EXPECT_EQ(doc.p != 0, record.options[n].positional) << doc.name;
            EXPECT_EQ(doc.o != 0, record.options[n].optional) << doc.name;
            EXPECT_EQ(nullptr, record.options[n].reserved);
        }
        EXPECT_EQ(kCommands[i].options.size(), n);
        // The record's own look-up is the command's.
        for (const DocOption& doc : kCommands[i].options)
            EXPECT_EQ(value_of(doc.name), record.name_to_option(doc.name));
    }
}

// Every prefix of every option name, and words that are no prefix at all, for every command.
TEST_F(OptionLookupTest, EveryCommandFollowsTheAbbreviationRule) {
    std::vector<std::string> words = {"", "x", "hh", "help_", "parts", "PART", "-part", "Family", "long_help_"};
    for (const std::string& name : kNames)
        for (size_t length = 1; length <= name.size(); ++length) words.push_back(name.substr(0, length));
    for (size_t i = 0; i < kCommands.size(); ++i)
        for (const std::string& word : words)
            EXPECT_EQ(expected_option(kCommands[i], word),
                      dev_tcl_auto_name_to_option(static_cast<DEV_TCL_AUTO_COMMAND_ENUM>(i), word.c_str()))
                << kCommands[i].name << " -" << word;
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
    for (const DocCommand& command : kCommands) {
        EXPECT_EQ(DEV_AUTO_ARGUMENT_H, lookup(command.name, "h"));
        EXPECT_EQ(DEV_AUTO_ARGUMENT_HELP, lookup(command.name, "he"));
        EXPECT_EQ(DEV_AUTO_ARGUMENT_HELP, lookup(command.name, "hel"));
        EXPECT_EQ(DEV_AUTO_ARGUMENT_LONG_HELP, lookup(command.name, "long"));
    }
}
