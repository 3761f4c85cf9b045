// ddbtool's catalogue commands as a subprocess: the text catalogue and its compiled
// cumulative file dump alike; bad arguments give the usage exit status.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "capture_fixture.h"

namespace {

int ddbtool(const std::string& args) {
    const int raw = std::system((std::string(VELCORA_DDBTOOL) + " " + args + " >/dev/null 2>&1").c_str());
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

TEST(CatalogueTool, CompileThenDumpMatchesTheTextDump) {
    TempDir dir;
    const std::string text = std::string(VELCORA_BUNDLED_ROOT) + "/h/dev_part_manager_auto.part";
    const std::string ddb = dir.file("all.ddb");
    ASSERT_EQ(ddbtool("catalogue compile --text " + text + " --family all --type info --level 1 --out " + ddb), 0);
    ASSERT_EQ(ddbtool("catalogue dump " + ddb + " " + dir.file("from_ddb.txt")), 0);
    ASSERT_EQ(ddbtool("catalogue dump --family all " + text + " " + dir.file("from_text.txt")), 0);
    const std::string dumped = read_file(dir.file("from_ddb.txt"));
    EXPECT_GT(dumped.size(), 100000u);
    EXPECT_TRUE(dumped == read_file(dir.file("from_text.txt")));

    EXPECT_EQ(ddbtool("catalogue compile --family NOSUCH"), 2);
    EXPECT_EQ(ddbtool("catalogue compile --level 0"), 2);
    EXPECT_EQ(ddbtool("catalogue compile --type every --out " + ddb), 2);
    EXPECT_EQ(ddbtool("catalogue dump " + dir.file("absent.ddb") + " " + dir.file("x.txt")), 1);
    EXPECT_EQ(ddbtool("catalogue dump " + dir.write("bad.ddb", "junk") + " " + dir.file("x.txt")), 1);
}

}  // namespace
