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
    EXPECT_EQ(run.out, "0 errors, 0 warnings, 0 notes in " + clean + "\n");

    // Syntax notes do not fail the check; each stands at its file and line.
    const std::string notes = dir.write("notes.part", "stray words\n" + part_text("40") + "end\n");
    run = check(dir, notes);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              notes + ":1: note: Syntax error in file notes.part, line 1: stray words\n" +
              notes + ":7: note: Syntax error in file notes.part, line 7: end\n"
              "0 errors, 0 warnings, 2 notes in " + notes + "\n");

    // Each file is read into a store of its own: a second file setting the same part's key to
    // another value is not an overwrite.
    const std::string other = dir.write("other.part", part_text("44"));
    run = check(dir, clean + " " + other);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 errors, 0 warnings, 0 notes in " + clean + "\n0 errors, 0 warnings, 0 notes in " + other + "\n");

    const std::string bundled = std::string(VELCORA_BUNDLED_ROOT) + "/h/dev_part_manager_auto.part";
    run = check(dir, bundled);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 errors, 0 warnings, 0 notes in " + bundled + "\n");
}

TEST(CheckTool, ErrorsFailTheCheckOneLineEach) {
    TempDir dir;
    // The reader's located note and its internal error make one line.
    const std::string bad = dir.write("bad.part", "\n" + part_text("0x10"));
    CHECKED run = check(dir, bad);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, bad + ":5: error: Parsing part info: Invalid PIN_COUNT string 0x10\n"
                       "1 errors, 0 warnings, 0 notes in " + bad + "\n");

    // A missing file, an empty file and a failed include are errors; the other files are
    // still checked and counted on their own. A failed read shows the notes that say why.
    const std::string absent = dir.file("absent.part");
    const std::string clean = dir.write("clean.part", part_text("40"));
    const std::string empty = dir.write("empty.part", "");
    const std::string includes = dir.write("includes.part", "include \"" + absent + "\"\n");
    run = check(dir, absent + " " + clean + " " + empty + " " + includes);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              absent + ": error: no such file\n"
              "1 errors, 0 warnings, 0 notes in " + absent + "\n"
              "0 errors, 0 warnings, 0 notes in " + clean + "\n" +
              empty + ": error: the file could not be read\n"
              "1 errors, 0 warnings, 0 notes in " + empty + "\n" +
              includes + ":1: error: cannot read " + absent + ": no such file\n" +
              includes + ":1: note: Failed loading included file " + absent + "\n" +
              includes + ": note: Spent 0 secs reading \"" + absent + "\"\n"
              "1 errors, 0 warnings, 2 notes in " + includes + "\n");

    EXPECT_EQ(check(dir, "").status, 2);
    EXPECT_EQ(check(dir, "--bogus " + clean).status, 2);
    run = check(dir, "--help");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out.rfind("usage: ddbtool check [--verbose] FILE...", 0), 0u);
    EXPECT_NE(run.out.find("\n  hdr "), std::string::npos) << run.out;
}

TEST(CheckTool, DeviceDataByExtension) {
    TempDir dir;
    // Errors, a warning and a refused include of an HDR file, each at the line of the file it
    // concerns; an included file's problems name that file.
    const std::string inner = dir.write("inner.hdr", "location LAB\n\tINT_NUM_SUB_LOCS = x\nend\n");
    const std::string hdr = dir.write("dev.hdr", "bogus line\n"
                                                 "port P\n\tINT_INPUT_PORT_TYPE = 1\n\tSTRING_DEBUG_NAME = \"a\"\nend\n"
                                                 "include \"" + inner + "\"\n"
                                                 "include \"" + dir.file("dev.hdr") + "\"\n");
    CHECKED run = check(dir, hdr);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              hdr + ":1: error: Syntax error in file dev.hdr, line 1: bogus line\n" +
              hdr + ":4: warning: Ignored DEBUG_NAME of a - debug names set automatically only\n" +
              inner + ":2: error: Invalid int value: x\n" +
              hdr + ":7: error: Refused to include " + hdr + ": it is already being read (" + hdr + " -> " + hdr + ")\n"
              "3 errors, 1 warnings, 0 notes in " + hdr + "\n");

    // The persistent form of a kind is read too; a damaged one is an error with its reason.
    const std::string good = dir.write("good.hdr", "INT_NUM_LABS = 4\nlocation LAB\nend\n");
    const std::string ddb = dir.file("good_hdr.ddb");
    ASSERT_EQ(std::system((std::string(VELCORA_DDBTOOL) + " device compile " + good + " " + ddb).c_str()), 0);
    run = check(dir, good + " " + ddb);
    EXPECT_EQ(run.status, 0) << run.out;
    const std::string cut = dir.write("cut_hdr.ddb", read_file(ddb).substr(0, 40));
    run = check(dir, cut);
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.out.find(cut + ": note: " + cut + ": "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find(cut + ": error: the file could not be read\n"), std::string::npos) << run.out;
}

}  // namespace
