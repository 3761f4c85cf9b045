// Check command: `check FILE...` reads each family-info text file into a store of its own and
// prints every note and error the reader reports, then a count per file.
#include <cstdio>
#include <string>
#include <vector>

#include "dev_family_info_mgr_body.h"
#include "ddbtool.h"
#include "host/fio.h"
#include "host/msg.h"

namespace {

const char kCheckUsage[] =
    "usage: ddbtool check FILE...\n\n"
    "Reads each family-info text FILE (with its includes) as the catalogue reader does and\n"
    "prints every report, one a line: \"error: \" before an internal error, \"note: \" before a\n"
    "note, each with the text the reader wrote (which names the file and line where it can),\n"
    "then \"N errors, M notes in FILE\". A read that fails counts as an error. The exit status\n"
    "is 1 when any file has an error, 0 otherwise.\n";

// Checks one file; true when it has no error.
bool check_file(const std::string& file) {
    const FIO_PATH path(file);
    if (!FIO_FILE_SYSTEM::exists(path)) {
        std::printf("error: %s: no such file\n1 errors, 0 notes in %s\n", file.c_str(), file.c_str());
        return false;
    }
    int errors = 0, notes = 0;
    bool read;
    {
        // A store of its own, so that every record of the file is new to it: the once-only
        // counts and the overwrite notes concern this file alone.
        DEV_FAMILY_INFO_MGR_BODY store;
        MSG_CAPTURE capture;
        read = store.read_family_data(path);
        for (const MSG_RECORD& r : capture.records()) {
            const bool error = r.kind == MSG_KIND_INTERNAL_ERROR;
            (error ? errors : notes)++;
            std::printf("%s: %s\n", error ? "error" : "note", r.text.c_str());
        }
    }
    if (!read) {
        std::printf("error: reading %s failed\n", file.c_str());
        ++errors;
    }
    std::printf("%d errors, %d notes in %s\n", errors, notes, file.c_str());
    return errors == 0;
}

}  // namespace

int ddbtool_check(const std::vector<std::string>& args) {
    if (args.empty()) {
        ddbtool_error("check", "no file given");
        std::fputs(kCheckUsage, stderr);
        return 2;
    }
    bool clean = true;
    for (const std::string& file : args) clean = check_file(file) && clean;
    return clean ? 0 : 1;
}

const DDBTOOL_COMMAND DDBTOOL_CHECK = {"check", "report every problem of family-info text files", kCheckUsage,
                                       ddbtool_check};
