// ddbtool check as a subprocess: every report of the family-info reader printed with its
// kind, a count per file, and the exit status telling whether any file had an error.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "capture_fixture.h"

namespace {

struct CHECKED {
    int status = -1;
    std::string out;  // standard output and error together
};

CHECKED check(const TempDir& dir, const std::string& args) {
    const std::string log = dir.file("check.log");
    const int raw = std::system((std::string(VELCORA_DDBTOOL) + " check " + args + " >" + log + " 2>&1").c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, read_file(log)};
}

const char kPart[] =
    "part LM1C032D40C5\n"
    "\tFAMILY = LUMIO\n"
    "\tDEVICE = LM1C032\n"
    "\tPIN_COUNT = %PINS%\n"
    "end\n";

std::string part_text(const std::string& pins) {
    std::string text = kPart;
    return text.replace(text.find("%PINS%"), 6, pins);
}

TEST(CheckTool, CleanFilesAndNotesOnlyPass) {
    TempDir dir;
    const std::string clean = dir.write("clean.part", "# a comment\n" + part_text("40"));
    CHECKED run = check(dir, clean);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 errors, 0 notes in " + clean + "\n");

    // Syntax notes do not fail the check; each names the file and the line.
    const std::string notes = dir.write("notes.part", "stray words\n" + part_text("40") + "end\n");
    run = check(dir, notes);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "note: Syntax error in file notes.part, line 1: stray words\n"
              "note: Syntax error in file notes.part, line 7: end\n"
              "0 errors, 2 notes in " + notes + "\n");

    // Each file is read into a store of its own: a second file setting the same part's key to
    // another value is not an overwrite.
    const std::string other = dir.write("other.part", part_text("44"));
    run = check(dir, clean + " " + other);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 errors, 0 notes in " + clean + "\n0 errors, 0 notes in " + other + "\n");

    const std::string bundled = std::string(VELCORA_BUNDLED_ROOT) + "/h/dev_part_manager_auto.part";
    run = check(dir, bundled);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 errors, 0 notes in " + bundled + "\n");
}

TEST(CheckTool, ErrorsFailTheCheck) {
    TempDir dir;
    const std::string bad = dir.write("bad.part", "\n" + part_text("0x10"));
    CHECKED run = check(dir, bad);
    EXPECT_EQ(run.status, 1);
    const std::string message = "Parsing part info: Invalid PIN_COUNT string 0x10";
    EXPECT_NE(run.out.find(" parsing file " + bad + ", line number 5 - " + message + "\n"), std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("\nerror: " + message + "\n1 errors, 1 notes in " + bad + "\n"), std::string::npos)
        << run.out;

    // A missing file, an empty file and a failed include are errors; the other files are
    // still checked and counted on their own.
    const std::string clean = dir.write("clean.part", part_text("40"));
    const std::string empty = dir.write("empty.part", "");
    const std::string includes = dir.write("includes.part", "include \"" + dir.file("absent.part") + "\"\n");
    run = check(dir, dir.file("absent.part") + " " + clean + " " + empty + " " + includes);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              "error: " + dir.file("absent.part") + ": no such file\n"
              "1 errors, 0 notes in " + dir.file("absent.part") + "\n"
              "0 errors, 0 notes in " + clean + "\n"
              "error: reading " + empty + " failed\n"
              "1 errors, 0 notes in " + empty + "\n"
              "note: File " + dir.file("absent.part") + " does not exist.\n"
              "error: Failed opening data file for DEV_PART_MANAGER\n"
              "note: Spent 0 secs reading \"" + dir.file("absent.part") + "\"\n"
              "note: Failed loading included file " + dir.file("absent.part") + "\n"
              "error: reading " + includes + " failed\n"
              "2 errors, 3 notes in " + includes + "\n");

    EXPECT_EQ(check(dir, "").status, 2);
    run = check(dir, "--help");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out.rfind("usage: ddbtool check FILE...", 0), 0u);
}

}  // namespace
