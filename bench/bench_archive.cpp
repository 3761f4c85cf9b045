// Line throughput of DEV_ARCHIVE against in-memory and bare-zlib baselines on a synthetic
// device-data file of about 20 MB, generated at start in a temporary directory. Prints the
// ratios to the baselines after the runs.
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

#include "bench_support.h"
#include "dev_archive_export.h"

namespace {

struct Data {
    std::string dir;
    std::string plain_path;
    std::string compressed_path;
    std::string text;
    size_t lines = 0;
};

Data& archive_data() {
    static Data d;
    return d;
}

std::string generate_text(size_t target) {
    std::string s;
    s.reserve(target + 4096);
    char buf[256];
    for (unsigned i = 0; s.size() < target; ++i) {
        int n = std::snprintf(buf, sizeof buf,
                              "pad PAD_%u\n\tINT_GLOBAL_ID = %u\n\tSTRING_NAME = \"IO_B%u_N%u\"\n"
                              "\tBOOL_IS_DIFFERENTIAL = %s\n\t2D_INT_DELAY_TABLE = {\n",
                              i, i * 7 + 3, i % 8, i % 97, (i & 1) ? "true" : "false");
        s.append(buf, static_cast<size_t>(n));
        for (unsigned r = 0; r < 4; ++r) {
            n = std::snprintf(buf, sizeof buf, "\t\t{%u, %u, %u, %u},\n", (i * 13 + r) % 1000,
                              (i * 31 + r * 7) % 1000, (i + r * 101) % 1000, (i * r) % 1000);
            s.append(buf, static_cast<size_t>(n));
        }
        s += "\t}\nend\n";
    }
    return s;
}

void setup() {
    Data& d = archive_data();
    char templ[] = "/tmp/velcora_bench_archive_XXXXXX";
    if (!mkdtemp(templ)) std::abort();
    d.dir = templ;
    d.text = generate_text(20u << 20);
    for (char c : d.text) d.lines += c == '\n';
    d.plain_path = d.dir + "/device.hdr";
    d.compressed_path = d.dir + "/device.ddb";
    std::FILE* f = std::fopen(d.plain_path.c_str(), "wb");
    std::fwrite(d.text.data(), 1, d.text.size(), f);
    std::fclose(f);
    DEV_ARCHIVE ar(ZLIB_BEST_COMPRESSION);
    ar.open(d.compressed_path, DEV_ARCHIVE::WRITE);
    ar.write(d.text.data(), d.text.size());
    ar.close(true);
}

void teardown() {
    Data& d = archive_data();
    std::remove(d.plain_path.c_str());
    std::remove(d.compressed_path.c_str());
    rmdir(d.dir.c_str());
}

void archive_getline(benchmark::State& state, const std::string& path) {
    size_t lines = 0;
    for (auto _ : state) {
        DEV_ARCHIVE ar;
        ar.open(path, DEV_ARCHIVE::READ);
        std::string line;
        size_t bytes = 0;
        lines = 0;
        while (ar.getline(line)) {
            bytes += line.size();
            ++lines;
        }
        ++lines;  // the last line comes with false
        ar.close(true);
        benchmark::DoNotOptimize(bytes);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines));
}

void BM_PlainArchiveGetline(benchmark::State& state) { archive_getline(state, archive_data().plain_path); }

void BM_CompressedArchiveGetline(benchmark::State& state) {
    archive_getline(state, archive_data().compressed_path);
}

// Baseline: a memchr line split of the same bytes already in memory.
void BM_MemchrSplit(benchmark::State& state) {
    const std::string& text = archive_data().text;
    size_t lines = 0;
    for (auto _ : state) {
        size_t bytes = 0;
        lines = 0;
        const char* p = text.data();
        const char* end = p + text.size();
        while (p < end) {
            const char* nl = static_cast<const char*>(std::memchr(p, '\n', end - p));
            if (!nl) nl = end;
            bytes += static_cast<size_t>(nl - p);
            ++lines;
            p = nl + 1;
        }
        benchmark::DoNotOptimize(bytes);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * lines));
}

// Baseline: one bare inflate of the compressed file with 1 KiB buffers.
void BM_BareInflate(benchmark::State& state) {
    for (auto _ : state) {
        std::FILE* f = std::fopen(archive_data().compressed_path.c_str(), "rb");
        unsigned char in[1024], out[1024];
        z_stream s;
        std::memset(&s, 0, sizeof s);
        inflateInit(&s);
        int result = Z_OK;
        size_t produced = 0;
        while (result == Z_OK) {
            if (s.avail_in == 0) {
                s.avail_in = static_cast<uInt>(std::fread(in, 1, sizeof in, f));
                s.next_in = in;
                if (s.avail_in == 0) break;
            }
            s.next_out = out;
            s.avail_out = sizeof out;
            result = inflate(&s, Z_NO_FLUSH);
            produced += sizeof out - s.avail_out;
        }
        inflateEnd(&s);
        std::fclose(f);
        benchmark::DoNotOptimize(produced);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * archive_data().lines));
}

BENCHMARK(BM_MemchrSplit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainArchiveGetline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareInflate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CompressedArchiveGetline)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    setup();
    std::printf("synthetic file: %zu bytes, %zu lines, %lld bytes compressed\n", archive_data().text.size(),
                archive_data().lines, static_cast<long long>(FIO_FILE_SYSTEM::file_size(archive_data().compressed_path)));
    bench::TIMES reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\ntime per file, ratio to baseline:\n");
    reporter.print_ratio("plain getline / in-memory memchr split", "BM_PlainArchiveGetline", "BM_MemchrSplit", 3.0);
    reporter.print_ratio("compressed getline / bare inflate (1 KiB)", "BM_CompressedArchiveGetline", "BM_BareInflate",
                         1.3);
    teardown();
    benchmark::Shutdown();
    return 0;
}
