// `ddbtool verify` as a subprocess: clean on the bundled installation, and on a copy with a
// truncated compiled file, a bad text line, a missing die file and a missing part info it
// names each file and fails.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "capture_fixture.h"

namespace fs = std::filesystem;

namespace {

// Runs ddbtool with the installation `root`; its exit status, its standard output in `out`.
int verify(const std::string& root, const std::string& args, std::string* out) {
    TempDir dir;
    const std::string command = "VELCORA_ROOTDIR=" + root + " " + VELCORA_DDBTOOL + " verify " + args + " >" +
                                dir.file("out.txt") + " 2>&1";
    const int raw = std::system(command.c_str());
    *out = read_file(dir.file("out.txt"));
    return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

TEST(VerifyTool, TheBundledInstallationIsClean) {
    std::string out;
    EXPECT_EQ(verify(VELCORA_BUNDLED_ROOT, VELCORA_VERIFY_FAMILIES, &out), 0) << out;
    EXPECT_NE(out.find(", 0 errors\n"), std::string::npos) << out;
    EXPECT_EQ(out.find("error:"), std::string::npos) << out;
}

// A copy of the installation made of links, but for the files to damage, which are copies.
class DamagedCopy {
public:
    explicit DamagedCopy(const std::string& folder) : m_folder(folder) {
        const fs::path bundled(VELCORA_BUNDLED_ROOT);
        for (const auto& e : fs::directory_iterator(bundled))
            if (e.path().filename() != "ddb") fs::create_symlink(e.path(), root() / e.path().filename());
        fs::create_directories(root() / "ddb" / folder);
        for (const auto& e : fs::directory_iterator(bundled / "ddb")) {
            if (e.path().filename() == folder) continue;
            fs::create_symlink(e.path(), root() / "ddb" / e.path().filename());
        }
        for (const auto& e : fs::directory_iterator(bundled / "ddb" / folder))
            fs::create_symlink(e.path(), root() / "ddb" / folder / e.path().filename());
    }
    fs::path root() const { return fs::path(m_dir.path()); }
    // The bundled file of the folder.
    std::string original(const std::string& name) const {
        return read_file((fs::path(VELCORA_BUNDLED_ROOT) / "ddb" / m_folder / name).string());
    }
    // Replaces the link to the file by a copy holding `content` (none: no file at all).
    std::string replace(const std::string& name, const std::string* content) {
        const fs::path path = root() / "ddb" / m_folder / name;
        EXPECT_TRUE(fs::remove(path)) << name;
        if (content) m_dir.write("ddb/" + m_folder + "/" + name, *content);
        return path.string();
    }

private:
    TempDir m_dir;
    std::string m_folder;
};

// The first file of `folder` in the bundled installation that ends in `end`.
std::string first_file(const std::string& folder, const std::string& end) {
    std::string first;
    for (const auto& e : fs::directory_iterator(fs::path(VELCORA_BUNDLED_ROOT) / "ddb" / folder)) {
        const std::string name = e.path().filename().string();
        if (name.size() > end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0 &&
            (first.empty() || name < first))
            first = name;
    }
    return first;
}

TEST(VerifyTool, EachDamagedFileIsNamedAndTheRunFails) {
    // CORVANE6 keeps its data compiled; LUMIO2 (in the folder "legacy") as text.
    DamagedCopy compiled("corvane6");
    const std::string rsi = first_file("corvane6", "_rsi.ddb");
    const std::string die = first_file("corvane6", "_die.ddb");
    const std::string cut = compiled.original(rsi).substr(0, compiled.original(rsi).size() / 2);
    const std::string rsi_path = compiled.replace(rsi, &cut);
    const std::string die_path = compiled.replace(die, nullptr);
    std::string out;
    EXPECT_EQ(verify(compiled.root().string(), "--family CORVANE6", &out), 1) << out;
    EXPECT_NE(out.find(rsi_path + ": error: could not be read as routing switches (truncated"), std::string::npos) << out;
    EXPECT_NE(out.find(die_path + ": error: the assembler data are not installed"), std::string::npos) << out;

    DamagedCopy text("legacy");
    const std::string part_info = first_file("legacy", ".part_info");
    std::string bad = "# first line\nINT_MAX_JUNCTION_TEMP = warm\n";
    const std::string bad_path = text.replace(part_info, &bad);
    const std::string missing = first_file("legacy", "c9.part_info");
    text.replace(missing, nullptr);
    EXPECT_EQ(verify(text.root().string(), "--family LUMIO2", &out), 1) << out;
    EXPECT_NE(out.find(bad_path + ":2: error: Invalid int value: warm\n"), std::string::npos) << out;
    std::string part = missing.substr(4, missing.size() - 4 - 10);
    for (char& c : part) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_NE(out.find(": error: part info of " + part + " not installed\n"), std::string::npos) << out;
    EXPECT_NE(out.find("LUMIO2: 7 devices, 70 parts, "), std::string::npos) << out;
    EXPECT_NE(out.find(", 2 errors\n"), std::string::npos) << out;
}

}  // namespace
