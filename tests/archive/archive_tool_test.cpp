// ddbtool cat and pack run as a subprocess.
#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "host/fio.h"
#include "support/capture_fixture.h"

namespace {

struct ToolRun {
    int status;
    std::string output;  // stdout and stderr together
};

ToolRun ddbtool(const std::string& args) {
    const std::string command = std::string(VELCORA_DDBTOOL) + " " + args + " 2>&1";
    ToolRun run{-1, ""};
    std::FILE* p = popen(command.c_str(), "r");
    if (!p) return run;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) != 0) run.output.append(buf, n);
    int raw = pclose(p);
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return run;
}

bool contains(const std::string& s, const std::string& part) { return s.find(part) != std::string::npos; }

TEST(DdbTool, PackThenCatRoundTripsAtEveryLevelAndSize) {
    TempDir dir;
    std::string big;
    for (int i = 0; i < 20000; ++i) big += "\tINT_GLOBAL_ID = " + std::to_string(i * 7) + "\n";
    for (const std::string& text : {std::string("pad PAD_1\nend\n"), big}) {
        const std::string in = dir.write("in.hdr", text);
        for (const char* level : {"0", "1", "9"}) {
            ToolRun pack = ddbtool(std::string("pack --level ") + level + " " + in + " " + dir.file("o.ddb"));
            EXPECT_EQ(pack.status, 0) << pack.output;
            ToolRun cat = ddbtool("cat " + dir.file("o.ddb"));
            EXPECT_EQ(cat.status, 0);
            EXPECT_TRUE(cat.output == text) << "level " << level << " size " << text.size();
        }
    }
}

TEST(DdbTool, HelpAndBadInput) {
    TempDir dir;
    for (const char* help : {"--help", "-h", "cat --help", "pack -h"}) {
        ToolRun r = ddbtool(help);
        EXPECT_EQ(r.status, 0);
        EXPECT_TRUE(contains(r.output, "usage: ddbtool")) << help;
    }
    EXPECT_NE(ddbtool("").status, 0);
    EXPECT_NE(ddbtool("frobnicate").status, 0);

    const std::string in = dir.write("in.hdr", "end\n");
    ToolRun r = ddbtool("pack --level 10 " + in + " " + dir.file("o.ddb"));
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(contains(r.output, "compression level must be a number from 0 to 9, got \"10\""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::exists(dir.file("o.ddb")));
    EXPECT_NE(ddbtool("pack --level -1 " + in + " " + dir.file("o.ddb")).status, 0);

    r = ddbtool("cat " + dir.file("missing.ddb") + " " + in);
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.output, dir.file("missing.ddb") + ": no such file"));
    EXPECT_TRUE(contains(r.output, "end\n"));  // later files still print

    r = ddbtool("cat " + dir.write("empty.ddb", ""));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.output, "empty.ddb: file is empty"));
    r = ddbtool("pack " + dir.file("missing") + " " + dir.file("o.ddb"));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.output, "missing: no such file"));

    // A damaged compressed stream: reported by name, non-zero exit.
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "pad PAD_" + std::to_string(i * 31 % 977) + "\n";
    const std::string big = dir.write("big.hdr", text);
    ASSERT_EQ(ddbtool("pack " + big + " " + dir.file("big.ddb")).status, 0);
    std::string packed = read_file(dir.file("big.ddb"));
    r = ddbtool("cat " + dir.write("cut.ddb", packed.substr(0, packed.size() - 40)));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.output, "cut.ddb: compressed stream is truncated or corrupt"));
    for (size_t i = 1500; i < 1600; ++i) packed[i] = static_cast<char>(~packed[i]);
    r = ddbtool("cat " + dir.write("bad.ddb", packed));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.output, "bad.ddb"));
    r = ddbtool("cat " + dir.write("junk.bin", std::string("\x01\x02\0\x03", 4)));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(contains(r.output, "junk.bin: binary content"));
}

}  // namespace
