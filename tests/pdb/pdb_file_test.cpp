// Segments written to files through the archive and read back, at every compression level;
// refusal of missing, foreign, truncated and corrupted files.
#include <gtest/gtest.h>

#include <zlib.h>

#include <string>
#include <vector>

#include "capture_fixture.h"
#include "dev_pdb_file.h"
#include "host/pdb_stl.h"

namespace {

class PdbFileTest : public CaptureTest {
protected:
    // A segment holding `count` integers and a string.
    static std::string write_sample(const std::string& path, size_t count, int level) {
        PDB_DDB_SEGMENT seg(true);
        std::vector<int32_t> v(count);
        for (size_t i = 0; i < count; ++i) v[i] = static_cast<int32_t>(i * 7919 % 1000);
        std::string name = "sample";
        pdb_xfr(seg, v);
        pdb_xfr(seg, name);
        std::string error;
        EXPECT_TRUE(dev_pdb_write_file(seg, path, level, error)) << error;
        return seg.bytes();
    }
    static bool read_sample(const std::string& path, size_t expected_count, std::string& error) {
        PDB_DDB_SEGMENT seg(false);
        if (!dev_pdb_read_file(path, seg, error)) return false;
        std::vector<int32_t> v;
        std::string name;
        pdb_xfr(seg, v);
        pdb_xfr(seg, name);
        EXPECT_FALSE(seg.failed()) << seg.error();
        EXPECT_EQ(v.size(), expected_count);
        for (size_t i = 0; i < v.size(); ++i) EXPECT_EQ(v[i], static_cast<int32_t>(i * 7919 % 1000));
        EXPECT_EQ(name, "sample");
        EXPECT_TRUE(seg.at_end());
        return true;
    }
    // Reading must fail with a message naming the file and containing `what`.
    static void expect_refused(const std::string& path, const std::string& what) {
        PDB_DDB_SEGMENT seg(false);
        std::string error;
        EXPECT_FALSE(dev_pdb_read_file(path, seg, error));
        EXPECT_EQ(error.rfind(path + ": ", 0), 0u) << error;
        if (!what.empty()) {
            EXPECT_NE(error.find(what), std::string::npos) << error;
        }
    }
    TempDir dir;
};

TEST_F(PdbFileTest, RoundTripsTinyAndLargePayloadsAtEveryLevel) {
    for (int level : {0, 1, 9}) {
        for (size_t count : {size_t(0), size_t(3), size_t(200000)}) {
            const std::string path = dir.file("s" + std::to_string(level) + "_" + std::to_string(count) + ".ddb");
            write_sample(path, count, level);
            const std::string raw = read_file(path);
            if (level == 0)
                EXPECT_EQ(raw.substr(0, 4), "VDDB");
            else
                EXPECT_EQ(static_cast<unsigned char>(raw[0]) & 0x0F, Z_DEFLATED);
            std::string error;
            EXPECT_TRUE(read_sample(path, count, error)) << error;
        }
    }
}

TEST_F(PdbFileTest, TinyCompressedFileIsJudgedPlainByTheArchiveAndStillReads) {
    const std::string path = dir.file("tiny.ddb");
    write_sample(path, 1, 9);
    ASSERT_LT(read_file(path).size(), 1024u);
    EXPECT_FALSE(DEV_ARCHIVE::is_file_compressed(path));
    std::string error;
    EXPECT_TRUE(read_sample(path, 1, error)) << error;
}

TEST_F(PdbFileTest, MissingForeignEmptyAndVersionMismatchedFilesAreRefused) {
    expect_refused(dir.file("absent.ddb"), "does not exist");
    expect_refused(dir.path(), "does not exist");
    expect_refused(dir.write("text.ddb", "FAMILY alpha\nDEVICE beta\n"), "not a persistent database file");
    expect_refused(dir.write("empty.ddb", ""), "not a persistent database file");
    expect_refused(dir.write("magic.ddb", "VDD"), "not a persistent database file");
    // A zlib header followed by garbage.
    expect_refused(dir.write("zhead.ddb", std::string("\x78\x9c\xff\xff\xff\xff", 6)), "corrupted");
    // A compressed foreign text.
    std::string text(100, 'x');
    uLongf n = compressBound(text.size());
    std::string z(n, '\0');
    compress2(reinterpret_cast<Bytef*>(&z[0]), &n, reinterpret_cast<const Bytef*>(text.data()), text.size(), 9);
    z.resize(n);
    expect_refused(dir.write("ztext.ddb", z), "not a persistent database file");

    const std::string plain = dir.file("trail.ddb");
    write_sample(plain, 5, 0);
    expect_refused(dir.write("trail.ddb", read_file(plain) + "x"), "data follows");

    const std::string path = dir.file("v.ddb");
    write_sample(path, 5, 0);
    std::string raw = read_file(path);
    raw[4] = 2;
    expect_refused(dir.write("v.ddb", raw), "format version 2 is not supported");
}

TEST_F(PdbFileTest, TruncationAtEveryCutPointIsRefused) {
    for (int level : {0, 9}) {
        for (size_t count : {size_t(10), size_t(5000)}) {
            const std::string path = dir.file("whole.ddb");
            write_sample(path, count, level);
            const std::string raw = read_file(path);
            const size_t step = raw.size() > 400 ? raw.size() / 97 : 1;
            for (size_t cut = 0; cut < raw.size(); cut += step) {
                const std::string cut_path = dir.write("cut.ddb", raw.substr(0, cut));
                PDB_DDB_SEGMENT seg(false);
                std::string error;
                EXPECT_FALSE(dev_pdb_read_file(cut_path, seg, error)) << "level " << level << " cut " << cut;
                EXPECT_FALSE(error.empty());
            }
        }
    }
}

TEST_F(PdbFileTest, FlippedBytesAreRefusedOrReadConsistently) {
    for (int level : {0, 9}) {
        const std::string path = dir.file("whole.ddb");
        write_sample(path, 300, level);
        const std::string raw = read_file(path);
        for (size_t at = 0; at < raw.size(); at += 3) {
            std::string bad = raw;
            bad[at] = static_cast<char>(bad[at] ^ 0x5A);
            const std::string bad_path = dir.write("bad.ddb", bad);
            // Payload bytes are covered by the checksum; a flip elsewhere (a reserved header
            // byte) may load, but then it loads the same objects.
            std::string error;
            if (read_sample(bad_path, 300, error)) {
                EXPECT_TRUE(level == 0 && (at == 6 || at == 7)) << "level " << level << " at " << at;
            } else {
                EXPECT_FALSE(error.empty());
            }
        }
    }
}

TEST_F(PdbFileTest, UnwritableTargetIsReported) {
    PDB_DDB_SEGMENT seg(true);
    std::string error;
    EXPECT_FALSE(dev_pdb_write_file(seg, dir.file("no/such/dir/x.ddb"), 9, error));
    EXPECT_EQ(error, dir.file("no/such/dir/x.ddb") + ": open failed: No such file or directory");
}

}  // namespace
