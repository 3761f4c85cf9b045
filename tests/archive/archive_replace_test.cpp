// Writes that fail part of the way (here: the file-size limit, as a full disk would) leave
// the previous file byte for byte and no temporary file beside it, through the library and
// through ddbtool; the failure names the step that failed and the system's reason.
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "dev_pdb_file.h"
#include "dev_archive_export.h"
#include "support/capture_fixture.h"

namespace {

constexpr rlim_t kFileSizeLimit = 32 * 1024;

struct ChildRun {
    int status = -1;     // exit status, -1 when the child did not exit normally
    std::string output;  // what the child wrote to its stdout and stderr
};

// Runs `body` in a child process whose files cannot grow past kFileSizeLimit (a write past
// it fails with EFBIG instead of killing the process); the child's stdout and stderr are
// captured. `body` answers the exit status.
ChildRun run_with_file_size_limit(const std::function<int()>& body) {
    ChildRun run;
    int out[2];
    if (pipe(out) != 0) return run;
    const pid_t pid = fork();
    if (pid == 0) {
        ::close(out[0]);
        dup2(out[1], STDOUT_FILENO);
        dup2(out[1], STDERR_FILENO);
        const rlimit limit{kFileSizeLimit, kFileSizeLimit};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
        const int status = body();
        std::fflush(stdout);
        std::fflush(stderr);
        _exit(status);
    }
    ::close(out[1]);
    char buf[4096];
    ssize_t n;
    while ((n = ::read(out[0], buf, sizeof buf)) > 0) run.output.append(buf, static_cast<size_t>(n));
    ::close(out[0]);
    int raw = 0;
    waitpid(pid, &raw, 0);
    if (WIFEXITED(raw)) run.status = WEXITSTATUS(raw);
    return run;
}

ChildRun ddbtool_with_file_size_limit(const std::vector<std::string>& args) {
    return run_with_file_size_limit([&] {
        std::vector<char*> argv{const_cast<char*>(VELCORA_DDBTOOL)};
        for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(VELCORA_DDBTOOL, argv.data());
        return 127;
    });
}

std::vector<std::string> names_in(const std::string& directory) {
    std::vector<std::string> names;
    if (DIR* d = opendir(directory.c_str())) {
        while (dirent* e = readdir(d))
            if (std::strcmp(e->d_name, ".") != 0 && std::strcmp(e->d_name, "..") != 0)
                names.push_back(e->d_name);
        closedir(d);
    }
    return names;
}

// Bytes that deflate cannot shrink much, so a compressed write also passes the limit.
std::string noise(size_t size) {
    std::string s(size, '\0');
    uint32_t x = 2463534242u;
    for (char& c : s) {
        x ^= x << 13, x ^= x >> 17, x ^= x << 5;
        c = static_cast<char>(x);
    }
    return s;
}

bool contains(const std::string& s, const std::string& part) { return s.find(part) != std::string::npos; }

const char kPrevious[] = "previous content, kept when a write fails\n";

TEST(ArchiveReplace, FailedWriteThroughTheLibraryKeepsThePreviousFile) {
    TempDir dir;
    const std::string target = dir.write("target.ddb", kPrevious);
    const std::string big = noise(4 * kFileSizeLimit);
    for (int level : {0, 1, 9}) {
        ChildRun run = run_with_file_size_limit([&] {
            DEV_ARCHIVE archive(level);
            archive.open(FIO_PATH(target), DEV_ARCHIVE::WRITE);
            archive.write(big.data(), big.size());
            archive.close(true);
            std::printf("%d|%s", archive.write_ok() ? 1 : 0, archive.write_error().c_str());
            return 0;
        });
        EXPECT_EQ(run.output, "0|write failed: " + std::string(std::strerror(EFBIG))) << "level " << level;
        EXPECT_TRUE(read_file(target) == kPrevious) << "level " << level;
        EXPECT_EQ(names_in(dir.path()), std::vector<std::string>{"target.ddb"}) << "level " << level;
    }

    // The persistent store's writer says what failed, not that the file could not be opened.
    ChildRun run = run_with_file_size_limit([&] {
        PDB_DDB_SEGMENT segment(true);
        std::string payload = big;
        segment.xfr(payload);
        std::string error;
        const bool ok = dev_pdb_write_file(segment, FIO_PATH(target), 9, error);
        std::printf("%d|%s", ok ? 1 : 0, error.c_str());
        return 0;
    });
    EXPECT_EQ(run.output, "0|" + target + ": write failed: " + std::strerror(EFBIG));
    EXPECT_TRUE(read_file(target) == kPrevious);
    EXPECT_EQ(names_in(dir.path()), std::vector<std::string>{"target.ddb"});
}

TEST(ArchiveReplace, OpenAndRenameFailuresNameTheirStep) {
    TempDir dir;
    DEV_ARCHIVE archive(0);
    archive.open(FIO_PATH(dir.file("missing/x.txt")), DEV_ARCHIVE::WRITE);
    EXPECT_FALSE(archive.is_open());
    archive.close(true);
    EXPECT_EQ(archive.write_error(), "open failed: " + std::string(std::strerror(ENOENT)));

    // A directory in the way: the content is complete, the rename is refused.
    const std::string in_the_way = dir.file("in_the_way");
    ASSERT_EQ(mkdir(in_the_way.c_str(), 0755), 0);
    archive.open(FIO_PATH(in_the_way), DEV_ARCHIVE::WRITE);
    archive.sprintf("end\n");
    archive.close(true);
    EXPECT_FALSE(archive.write_ok());
    EXPECT_EQ(archive.write_error(), "rename failed: " + std::string(std::strerror(EISDIR)));
    EXPECT_EQ(names_in(dir.path()), std::vector<std::string>{"in_the_way"});

    // A successful write replaces the file and keeps its permissions.
    const std::string target = dir.write("kept_mode.txt", kPrevious);
    ASSERT_EQ(chmod(target.c_str(), 0640), 0);
    archive.open(FIO_PATH(target), DEV_ARCHIVE::WRITE);
    archive.sprintf("new\n");
    archive.close(true);
    EXPECT_TRUE(archive.write_ok());
    EXPECT_EQ(read_file(target), "new\n");
    struct stat st;
    ASSERT_EQ(stat(target.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
    EXPECT_EQ(names_in(dir.path()).size(), 2u);

    // Abandoned writes leave the file as it was.
    archive.open(FIO_PATH(target), DEV_ARCHIVE::WRITE);
    archive.sprintf("half");
    archive.discard();
    EXPECT_EQ(read_file(target), "new\n");
    EXPECT_EQ(names_in(dir.path()).size(), 2u);
}

TEST(ArchiveReplace, FailedWriteThroughDdbtoolKeepsThePreviousFileAndSaysWhy) {
    TempDir dir;
    const std::string why = std::string("write failed: ") + std::strerror(EFBIG);
    const std::string input = dir.write("input.bin", noise(4 * kFileSizeLimit));
    const std::string text = std::string(VELCORA_BUNDLED_ROOT) + "/h/dev_part_manager_auto.part";
    const std::string out = dir.write("out.ddb", kPrevious);
    const std::vector<std::vector<std::string>> commands = {
        {"pack", "--level", "0", input, out},
        {"pack", "--level", "9", input, out},
        {"catalogue", "compile", "--text", text, "--family", "all", "--type", "info", "--level", "1", "--out",
         out},
        {"catalogue", "dump", "--family", "all", text, out},
    };
    for (const auto& args : commands) {
        ChildRun run = ddbtool_with_file_size_limit(args);
        const std::string name = args[0] + " " + args[1];
        EXPECT_EQ(run.status, 1) << name << "\n" << run.output;
        EXPECT_TRUE(contains(run.output, "ddbtool " + args[0] + ": " + out + ": " + why)) << name << "\n"
                                                                                          << run.output;
        EXPECT_FALSE(contains(run.output, "Failed opening")) << name << "\n" << run.output;
        EXPECT_TRUE(read_file(out) == kPrevious) << name;
        EXPECT_EQ(names_in(dir.path()).size(), 2u) << name;
    }
}

}  // namespace
