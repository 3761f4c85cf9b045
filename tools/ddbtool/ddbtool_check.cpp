// Check command: `check FILE...` reads each text file as the library does (family info, or a
// kind of device data known by its extension) and prints its problems the way compilers do,
// "FILE:LINE: error: MESSAGE", one line per problem, then a count per file.
//
// The readers report each problem on the host's channels, often twice (a located debug note
// and an internal error with the bare message), and also as one diagnostic with its file and
// line (DEV_TEXT_DIAGNOSTICS) that lists the reports it was made with. The check prints the
// diagnostics and then whatever the host received that no diagnostic stands for: internal
// errors always, other notes only when the file could not be read (they say why) or with
// --verbose (timing and progress notes).
#include <cstdio>
#include <string>
#include <vector>

#include "ddbtool.h"
#include "ddbtool_device_kind.h"
#include "dev_family_info_mgr_body.h"
#include "dev_text_diagnostics.h"
#include "host/fio.h"
#include "host/msg.h"

namespace {

const char CHECK_USAGE[] =
    "usage: ddbtool check [--verbose] FILE...\n\n"
    "Reads each FILE (with its includes) as the library does: a kind of device data when its\n"
    "extension names one (kinds below), family-info text otherwise. Prints every problem the\n"
    "reader reports, one a line, as \"FILE:LINE: error: MESSAGE\" (or \"warning:\", \"note:\";\n"
    "\"FILE: ...\" when no line applies), naming the file and line where the problem is, then\n"
    "\"N errors, M warnings, K notes in FILE\". A file that cannot be read is an error, shown\n"
    "with the notes that say why. --verbose also prints the readers' other notes. The exit\n"
    "status is 1 when any file has an error, 0 otherwise.\n";

struct COUNTS {
    int errors = 0;
    int warnings = 0;
    int notes = 0;
};

const char* kind_word(DEV_TEXT_DIAGNOSTIC::KIND kind) {
    switch (kind) {
    case DEV_TEXT_DIAGNOSTIC::ERROR: return "error";
    case DEV_TEXT_DIAGNOSTIC::WARNING: return "warning";
    case DEV_TEXT_DIAGNOSTIC::NOTE: break;
    }
    return "note";
}

void print(COUNTS& counts, DEV_TEXT_DIAGNOSTIC::KIND kind, const std::string& file, int line,
           const std::string& message) {
    if (line > 0)
        std::printf("%s:%d: %s: %s\n", file.c_str(), line, kind_word(kind), message.c_str());
    else
        std::printf("%s: %s: %s\n", file.c_str(), kind_word(kind), message.c_str());
    (kind == DEV_TEXT_DIAGNOSTIC::ERROR ? counts.errors
                                        : kind == DEV_TEXT_DIAGNOSTIC::WARNING ? counts.warnings : counts.notes)++;
}

// Reads `path` as its kind's reader does; false when the read failed.
bool read_file(const FIO_PATH& path) {
    if (const DDBTOOL_DEVICE_KIND* kind = ddbtool_device_kind_of(path)) return kind->create()->read(path);
    // A store of its own, so that every record of the file is new to it: the once-only counts
    // and the overwrite notes concern this file alone.
    DEV_FAMILY_INFO_MGR_BODY store;
    return store.read_family_data(path);
}

// Checks one file and prints its count line; true when it has no error.
bool check_file(const std::string& file, bool verbose) {
    COUNTS counts;
    const FIO_PATH path(file);
    if (!FIO_FILE_SYSTEM::exists(path)) {
        print(counts, DEV_TEXT_DIAGNOSTIC::ERROR, file, 0, "no such file");
    } else {
        DEV_TEXT_DIAGNOSTICS diagnostics;
        MSG_CAPTURE capture;
        const bool read = read_file(path);
        std::vector<MSG_RECORD> rest = capture.records();
        for (const DEV_TEXT_DIAGNOSTIC& d : diagnostics.diagnostics()) {
            print(counts, d.kind, d.file.empty() ? file : d.file, d.line, d.message);
            // The host reports this diagnostic stands for, each used once.
            for (const std::string& report : d.reports)
                for (auto r = rest.begin(); r != rest.end(); ++r)
                    if (r->text == report) {
                        rest.erase(r);
                        break;
                    }
        }
        for (const MSG_RECORD& r : rest) {
            const bool error = r.kind == MSG_KIND_INTERNAL_ERROR;
            if (error || !read || verbose)
                print(counts, error ? DEV_TEXT_DIAGNOSTIC::ERROR : DEV_TEXT_DIAGNOSTIC::NOTE, file, 0, r.text);
        }
        if (!read && counts.errors == 0) print(counts, DEV_TEXT_DIAGNOSTIC::ERROR, file, 0, "the file could not be read");
    }
    std::printf("%d errors, %d warnings, %d notes in %s\n", counts.errors, counts.warnings, counts.notes, file.c_str());
    return counts.errors == 0;
}

}  // namespace

int ddbtool_check(const std::vector<std::string>& args) {
    bool verbose = false;
    std::vector<std::string> files;
    for (const std::string& a : args) {
        if (a == "--verbose") {
            verbose = true;
        } else if (a.size() > 1 && a[0] == '-') {
            ddbtool_error("check", "unknown option \"" + a + "\"");
            return 2;
        } else {
            files.push_back(a);
        }
    }
    if (files.empty()) {
        ddbtool_error("check", "no file given");
        std::fputs(CHECK_USAGE, stderr);
        return 2;
    }
    bool clean = true;
    for (const std::string& file : files) clean = check_file(file, verbose) && clean;
    return clean ? 0 : 1;
}

const DDBTOOL_COMMAND DDBTOOL_CHECK = {"check", "report every problem of family-info and device-data text files",
                                       CHECK_USAGE, ddbtool_check, ddbtool_print_device_kinds};
