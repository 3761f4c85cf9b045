// DEV_ARCHIVE checked against zlib's one-shot functions and against a plain line split.
#include <zlib.h>

#include <cstdio>
#include <string>
#include <vector>

#include "dev_archive_export.h"
#include "support/capture_fixture.h"

namespace {

// Deterministic text that compresses poorly enough to span many 1024-byte blocks.
std::string text_lines(size_t lines) {
    std::string s;
    unsigned x = 12345;
    for (size_t i = 0; i < lines; ++i) {
        x = x * 1103515245u + 12345u;
        s += "\tINT_GLOBAL_ID = " + std::to_string(x % 100000) + " " + std::to_string(x >> 7) + "\n";
    }
    return s;
}

std::string zlib_compress(const std::string& text, int level = 9) {
    uLongf size = compressBound(text.size());
    std::string out(size, '\0');
    EXPECT_EQ(compress2(reinterpret_cast<Bytef*>(&out[0]), &size,
                        reinterpret_cast<const Bytef*>(text.data()), text.size(), level), Z_OK);
    out.resize(size);
    return out;
}

std::string zlib_uncompress(const std::string& data, size_t expected) {
    uLongf size = expected + 1;
    std::string out(size, '\0');
    EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(&out[0]), &size,
                         reinterpret_cast<const Bytef*>(data.data()), data.size()), Z_OK);
    out.resize(size);
    return out;
}

// A closing note with its seconds replaced by "N" (the time taken varies).
std::string timeless(std::string note) {
    size_t digits = note.find_first_not_of("0123456789", 6);
    if (note.compare(0, 6, "Spent ") == 0 && digits > 6) note.replace(6, digits - 6, "N");
    return note;
}

struct Line {
    std::string text;
    bool ok;
};

// Every getline result until it answers false (bounded, so a looping reader fails the test).
std::vector<Line> all_lines(const std::string& path, int* level = nullptr) {
    DEV_ARCHIVE ar;
    EXPECT_TRUE(ar.open(path, DEV_ARCHIVE::READ));
    if (level) *level = ar.compression_level();
    std::vector<Line> lines;
    std::string line;
    for (size_t guard = 0; guard < 10000000; ++guard) {
        bool ok = ar.getline(line);
        lines.push_back({line, ok});
        if (!ok) break;
    }
    return lines;
}

std::string read_all(const std::string& path) {
    DEV_ARCHIVE ar;
    EXPECT_TRUE(ar.open(path, DEV_ARCHIVE::READ));
    std::string out;
    char chunk[777];
    size_t n;
    while ((n = ar.read(chunk, sizeof chunk)) != 0) out.append(chunk, n);
    EXPECT_TRUE(ar.eof());
    return out;
}

class ArchiveTest : public CaptureTest {
protected:
    TempDir dir;
};

TEST_F(ArchiveTest, ReadsZlibStreamLineByLineAndDropsTheFinalByte) {
    const std::string text = text_lines(3000);
    const std::string path = dir.write("a.ddb", zlib_compress(text));
    EXPECT_TRUE(DEV_ARCHIVE::is_file_compressed(path));
    int level = -1;
    std::vector<Line> lines = all_lines(path, &level);
    EXPECT_EQ(level, ZLIB_BEST_COMPRESSION);
    ASSERT_EQ(lines.size(), 3000u);
    std::string joined;
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].ok, i + 1 < lines.size());
        joined += lines[i].text + "\n";
    }
    EXPECT_EQ(joined, text);
    EXPECT_EQ(read_all(path), text);  // raw reads deliver the final byte too
    EXPECT_TRUE(errors().empty());
}

// The line reader as a byte-by-byte loop over get/eof/good, to check the bulk reader against.
bool reference_getline(DEV_ARCHIVE& ar, std::string& line, char delimiter, bool keep) {
    line.clear();
    if (!ar.good()) return false;
    if (ar.eof()) return true;
    for (;;) {
        char c = 0;
        ar.get(c);
        if (ar.eof()) return false;
        if (c == delimiter) {
            if (keep) line += c;
            return true;
        }
        line += c;
    }
}

TEST_F(ArchiveTest, BulkLineReaderMatchesByteByByteReader) {
    const std::string text = text_lines(400) + "last line without end";
    // A level-0 zlib stream of 2037 bytes is exactly 2048 bytes long: the file ends on a
    // block boundary, which changes when the reader notices the end.
    std::vector<std::string> files = {dir.write("plain", text), dir.write("z", zlib_compress(text)),
                                      dir.write("z0", zlib_compress(text.substr(0, 2037), 0))};
    EXPECT_EQ(read_file(files[2]).size(), 2048u);
    for (const std::string& path : files) {
        for (char delimiter : {'\n', '=', 'e'}) {
            for (bool keep : {false, true}) {
                DEV_ARCHIVE a, b;
                ASSERT_TRUE(a.open(path, DEV_ARCHIVE::READ));
                ASSERT_TRUE(b.open(path, DEV_ARCHIVE::READ));
                std::string la, lb;
                for (int guard = 0; guard < 100000; ++guard) {
                    bool ra = a.getline(la, delimiter, keep);
                    bool rb = reference_getline(b, lb, delimiter, keep);
                    ASSERT_EQ(ra, rb) << path << " line " << guard;
                    ASSERT_EQ(la, lb) << path << " line " << guard;
                    ASSERT_EQ(a.eof(), b.eof());
                    ASSERT_EQ(a.good(), b.good());
                    if (!ra && !a.good()) break;
                }
            }
        }
    }
}

TEST_F(ArchiveTest, PlainFileDeliversItsLastByte) {
    const std::string path = dir.write("p.txt", "a\nbb\n");
    std::vector<Line> lines = all_lines(path);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].text, "a");
    EXPECT_EQ(lines[1].text, "bb");
    EXPECT_TRUE(lines[1].ok);
    EXPECT_EQ(lines[2].text, "");
    EXPECT_FALSE(lines[2].ok);

    DEV_ARCHIVE ar;
    ASSERT_TRUE(ar.open(dir.write("q.txt", "x;y"), DEV_ARCHIVE::READ));
    std::string line;
    EXPECT_TRUE(ar.getline(line, ';', true));
    EXPECT_EQ(line, "x;");
    EXPECT_FALSE(ar.getline(line, ';', true));
    EXPECT_EQ(line, "y");
    EXPECT_TRUE(ar.eof());
    EXPECT_FALSE(ar.good());
    EXPECT_FALSE(ar.getline(line));
}

TEST_F(ArchiveTest, ProbeVerdicts) {
    // A stream complete within the first block is judged plain and read raw.
    const std::string small = zlib_compress("INT_LOCATION_COUNT = 4\nend\n");
    const std::string small_path = dir.write("small.ddb", small);
    EXPECT_FALSE(DEV_ARCHIVE::is_file_compressed(small_path));
    EXPECT_EQ(read_all(small_path), small);
    std::string inflated;
    EXPECT_TRUE(DEV_ARCHIVE::inflate_buffer(small.data(), small.size(), inflated));
    EXPECT_EQ(inflated, "INT_LOCATION_COUNT = 4\nend\n");
    EXPECT_FALSE(DEV_ARCHIVE::inflate_buffer(small.data(), small.size() - 1, inflated));

    // An empty file is judged compressed and ends at once.
    const std::string empty = dir.write("empty.ddb", "");
    EXPECT_TRUE(DEV_ARCHIVE::is_file_compressed(empty));
    std::vector<Line> lines = all_lines(empty);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text, "");
    EXPECT_FALSE(lines[0].ok);
    EXPECT_TRUE(capture().has_debug("zlib_inflat() normal cond to indicate no data."));

    EXPECT_FALSE(DEV_ARCHIVE::is_file_compressed(dir.write("t.txt", "pad PAD_1\nend\n")));
    EXPECT_FALSE(DEV_ARCHIVE::is_file_compressed(dir.file("missing")));
}

TEST_F(ArchiveTest, WritesStreamThatZlibReadsBackMixingTextAndRawBytes) {
    std::string expected;
    {
        DEV_ARCHIVE ar(5);
        ASSERT_TRUE(ar.open(dir.file("w.ddb"), DEV_ARCHIVE::WRITE));
        EXPECT_TRUE(ar.is_open());
        std::string binary;
        for (int i = 0; i < 5000; ++i) binary += static_cast<char>((i * 7919) & 0xFF);
        for (int i = 0; i < 40; ++i) {
            ar.sprintf("pad PAD_%d\n\tSTRING_NAME = \"%s\"\n", i, "IO_B3_N12");
            expected += "pad PAD_" + std::to_string(i) + "\n\tSTRING_NAME = \"IO_B3_N12\"\n";
            const size_t n = (i * 331) % binary.size();
            EXPECT_TRUE(ar.write(binary.data(), n));
            expected.append(binary.data(), n);
        }
    }  // the destructor closes and finishes the stream
    const std::string raw = read_file(dir.file("w.ddb"));
    EXPECT_EQ(zlib_uncompress(raw, expected.size()), expected);

    // Reading: bulk reads, single gets and a mixture agree byte for byte.
    EXPECT_EQ(read_all(dir.file("w.ddb")), expected);
    DEV_ARCHIVE ar;
    ASSERT_TRUE(ar.open(dir.file("w.ddb"), DEV_ARCHIVE::READ));
    std::string got;
    char buf[1500];
    while (got.size() < expected.size()) {
        char c;
        ar.get(c);
        got += c;
        got.append(buf, ar.read(buf, got.size() % sizeof buf));
    }
    EXPECT_EQ(got, expected);
    EXPECT_EQ(ar.read(buf, 1), 0u);
    EXPECT_TRUE(ar.eof());
    EXPECT_TRUE(ar.reached_stream_end());
    ar.close();
    char note[512];
    std::snprintf(note, sizeof note,
                  "Spent N secs reading \"%s\": %zu bytes (%zu compressed) (%1.1fx compression)",
                  dir.file("w.ddb").c_str(), expected.size(), raw.size(),
                  double(expected.size()) / double(raw.size()));
    EXPECT_EQ(timeless(notes().back()), note);
    EXPECT_TRUE(errors().empty());
}

TEST_F(ArchiveTest, LevelZeroWritesPlainAndArchiveIsReusable) {
    DEV_ARCHIVE ar(ZLIB_NO_COMPRESSION);
    const std::string path = dir.file("plain.ddb");
    ASSERT_TRUE(ar.open(path, DEV_ARCHIVE::WRITE));
    ar.sprintf("%s = %d\n", "INT_GLOBAL_ID", 123);
    ar.write("\0\xff", 2);
    ar.close();
    EXPECT_EQ(timeless(notes().back()), "Spent N secs writing \"" + path + "\"");
    EXPECT_EQ(read_file(path), std::string("INT_GLOBAL_ID = 123\n\0\xff", 22));
    EXPECT_FALSE(DEV_ARCHIVE::is_file_compressed(path));

    ASSERT_TRUE(ar.open(path, DEV_ARCHIVE::READ));
    EXPECT_EQ(ar.compression_level(), ZLIB_NO_COMPRESSION);
    std::string line;
    EXPECT_TRUE(ar.getline(line));
    EXPECT_EQ(line, "INT_GLOBAL_ID = 123");
    ar.close(true);
    EXPECT_FALSE(ar.is_open());
    EXPECT_TRUE(ar.path().empty());
    // The level stays as reading left it: the next write is plain again.
    ASSERT_TRUE(ar.open(path, DEV_ARCHIVE::WRITE));
    ar.sprintf("end\n");
    ar.close(true);
    EXPECT_EQ(read_file(path), "end\n");
    EXPECT_TRUE(errors().empty());
}

TEST_F(ArchiveTest, MisuseIsReported) {
    DEV_ARCHIVE bad_level(10);
    EXPECT_EQ(errors(), std::vector<std::string>{
        "(m_compression_level >= ZLIB_NO_COMPRESSION) && (m_compression_level <= ZLIB_BEST_COMPRESSION)"});
    clear_reports();

    DEV_ARCHIVE ar;
    EXPECT_FALSE(ar.eof());
    EXPECT_FALSE(ar.good());
    EXPECT_FALSE(ar.open(dir.file("x"), 7));
    ar.close(true);
    EXPECT_EQ(errors(), std::vector<std::string>(4, "Illegal io type encounter."));
    clear_reports();

    ASSERT_TRUE(ar.open(dir.file("w"), DEV_ARCHIVE::WRITE));
    EXPECT_FALSE(ar.eof());
    EXPECT_FALSE(ar.good());
    char c[4];
    EXPECT_EQ(ar.read(c, 4), 0u);
    ASSERT_TRUE(ar.open(dir.file("w2"), DEV_ARCHIVE::WRITE));
    EXPECT_EQ(errors(), (std::vector<std::string>{"Illega call to eof() for write operation.",
                                                   "Illega call to good() for write operation.",
                                                   "DEV_ARCHIVE::READ == m_io_type",
                                                   "DEV_ARCHIVE is already openned. Please call close()."}));
    ar.close(true);
    clear_reports();

    ASSERT_TRUE(ar.open(dir.write("r", "text\n"), DEV_ARCHIVE::READ));
    ar.sprintf("x");
    EXPECT_FALSE(ar.write("x", 1));
    ar.flush();
    EXPECT_EQ(errors(), std::vector<std::string>(3, "DEV_ARCHIVE::WRITE == m_io_type"));
    ar.close(true);
    clear_reports();

    EXPECT_FALSE(ar.open(dir.file("missing.ddb"), DEV_ARCHIVE::READ));
    EXPECT_EQ(notes(), std::vector<std::string>{"File " + dir.file("missing.ddb") + " does not exist."});
    // A reader that only asks good() stops at once on a file that was not there.
    EXPECT_FALSE(ar.good());
    std::string line = "stale";
    EXPECT_FALSE(ar.getline(line));
    EXPECT_EQ(line, "");
    EXPECT_TRUE(errors().empty());
}

TEST_F(ArchiveTest, DamagedStreamsEndWithoutHanging) {
    const std::string text = text_lines(4000);
    const std::string good = zlib_compress(text);

    std::string corrupt = good;
    for (size_t i = 3000; i < 3100; ++i) corrupt[i] = static_cast<char>(corrupt[i] ^ 0x5A);
    std::vector<Line> lines = all_lines(dir.write("corrupt.ddb", corrupt));
    EXPECT_LT(lines.size(), 4000u);
    EXPECT_EQ(errors(), std::vector<std::string>{"encounter error."});
    EXPECT_TRUE(capture().has_debug("zlib_inflate() returned error: -3"));
    clear_reports();

    const std::string cut_path = dir.write("cut.ddb", good.substr(0, good.size() / 2));
    lines = all_lines(cut_path);
    EXPECT_GT(lines.size(), 100u);
    EXPECT_EQ(text.compare(0, lines[0].text.size(), lines[0].text), 0);
    EXPECT_TRUE(capture().has_debug("zlib_inflat() normal cond to indicate no data."));
    DEV_ARCHIVE ar;
    ASSERT_TRUE(ar.open(cut_path, DEV_ARCHIVE::READ));
    std::string got(text.size(), '\0');
    EXPECT_LT(ar.read(&got[0], got.size()), text.size());
    EXPECT_FALSE(ar.reached_stream_end());

    // Trailing bytes after a complete stream, and junk behind a valid zlib header.
    lines = all_lines(dir.write("trail.ddb", good + std::string(3000, 'z')));
    ASSERT_EQ(lines.size(), 4001u);
    EXPECT_EQ(lines[3999].text + "\n" + lines[4000].text, text.substr(text.rfind('\n', text.size() - 2) + 1));
    std::string junk = "\x78\x9c";
    for (int i = 0; i < 4000; ++i) junk += static_cast<char>((i * 2654435761u) >> 13);
    all_lines(dir.write("junk.ddb", junk));
    // Junk without a zlib header is plain: every byte passes unchanged.
    const std::string raw = junk.substr(2) + std::string("\0\r\n\x1a", 4);
    EXPECT_EQ(read_all(dir.write("raw.bin", raw)), raw);
}

TEST_F(ArchiveTest, MultiMegabyteLine) {
    std::string big(6u << 20, 'x');
    for (size_t i = 0; i < big.size(); i += 4099) big[i] = static_cast<char>('a' + i % 26);
    for (int level : {0, 1}) {
        DEV_ARCHIVE ar(level);
        const std::string path = dir.file("big" + std::to_string(level));
        ASSERT_TRUE(ar.open(path, DEV_ARCHIVE::WRITE));
        ar.sprintf("%s\nnext\n", big.c_str());
        ar.close(true);
        ASSERT_TRUE(ar.open(path, DEV_ARCHIVE::READ));
        EXPECT_EQ(ar.compression_level() != 0, level != 0);
        std::string line;
        EXPECT_TRUE(ar.getline(line));
        EXPECT_TRUE(line == big);
        EXPECT_EQ(ar.getline(line), level == 0);
        EXPECT_EQ(line, "next");
        ar.close(true);
    }
}

}  // namespace
