// ddbtool: command-line access to the device database files. Each command group lives in
// its own file and contributes entries to the command table of ddbtool_main.cpp.
#ifndef VELCORA_TOOLS_DDBTOOL_H
#define VELCORA_TOOLS_DDBTOOL_H

#include <cstdio>
#include <string>
#include <vector>

struct DDBTOOL_COMMAND {
    const char* name;
    const char* summary;  // one line for the tool's help
    const char* usage;    // the command's full help text
    // Runs the command on its arguments (the command name excluded); answers the exit status.
    int (*run)(const std::vector<std::string>& args);
    // Prints what the usage text adds from tables (null when nothing).
    void (*more_usage)(std::FILE* out) = nullptr;
};

// Reports an error of `command` on stderr ("ddbtool <command>: <text>").
void ddbtool_error(const char* command, const std::string& text);
// True when `arg` asks for help.
bool ddbtool_is_help(const std::string& arg);
// Prints the usage of `command` on stdout.
void ddbtool_print_usage(const DDBTOOL_COMMAND& command);

// Command groups.
int ddbtool_cat(const std::vector<std::string>& args);
int ddbtool_pack(const std::vector<std::string>& args);
extern const DDBTOOL_COMMAND DDBTOOL_CAT;
extern const DDBTOOL_COMMAND DDBTOOL_PACK;
int ddbtool_catalogue(const std::vector<std::string>& args);
extern const DDBTOOL_COMMAND DDBTOOL_CATALOGUE;
int ddbtool_check(const std::vector<std::string>& args);
extern const DDBTOOL_COMMAND DDBTOOL_CHECK;
int ddbtool_device(const std::vector<std::string>& args);
extern const DDBTOOL_COMMAND DDBTOOL_DEVICE;
int ddbtool_verify(const std::vector<std::string>& args);
extern const DDBTOOL_COMMAND DDBTOOL_VERIFY;

#endif
