// ddbtool entry point: dispatches to the command named by the first argument.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "ddbtool.h"
#include "host/msg.h"

namespace {

const DDBTOOL_COMMAND* const COMMANDS[] = {&DDBTOOL_CAT, &DDBTOOL_PACK, &DDBTOOL_CATALOGUE, &DDBTOOL_DEVICE,
                                           &DDBTOOL_CHECK, &DDBTOOL_VERIFY};

void print_tool_usage(std::FILE* out) {
    std::fprintf(out,
                 "usage: ddbtool COMMAND [ARGS...]\n"
                 "       ddbtool COMMAND --help\n\n"
                 "Commands:\n");
    for (const DDBTOOL_COMMAND* c : COMMANDS) std::fprintf(out, "  %-8s %s\n", c->name, c->summary);
}

const DDBTOOL_COMMAND* find_command(const std::string& name) {
    for (const DDBTOOL_COMMAND* c : COMMANDS)
        if (name == c->name) return c;
    return nullptr;
}

}  // namespace

void ddbtool_error(const char* command, const std::string& text) {
    std::fflush(stdout);
    std::fprintf(stderr, "ddbtool %s: %s\n", command, text.c_str());
}

bool ddbtool_is_help(const std::string& arg) { return arg == "--help" || arg == "-h"; }

void ddbtool_print_usage(const DDBTOOL_COMMAND& command) {
    std::fputs(command.usage, stdout);
    if (command.more_usage) command.more_usage(stdout);
}

int main(int argc, char** argv) {
    if (argc < 2) {
        print_tool_usage(stderr);
        return 2;
    }
    const std::string name = argv[1];
    if (ddbtool_is_help(name) || name == "help") {
        print_tool_usage(stdout);
        return 0;
    }
    const DDBTOOL_COMMAND* command = find_command(name);
    if (!command) {
        std::fprintf(stderr, "ddbtool: unknown command \"%s\"\n", name.c_str());
        print_tool_usage(stderr);
        return 2;
    }
    std::vector<std::string> args(argv + 2, argv + argc);
    for (const std::string& a : args) {
        if (ddbtool_is_help(a)) {
            ddbtool_print_usage(*command);
            return 0;
        }
    }
    const unsigned long errors_before = msg_internal_error_count();
    int status = command->run(args);
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        ddbtool_error(command->name, "error writing to standard output");
        status = 1;
    }
    if (status == 0 && msg_internal_error_count() != errors_before) {
        ddbtool_error(command->name, "internal errors were reported");
        status = 1;
    }
    return status;
}
