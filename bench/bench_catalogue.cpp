// The whole bundled catalogue: parse of the family-info text (read_family_data), load of the
// cumulative ".ddb" file (load_data_from_pdb with an explicit path, into an empty store) and
// write of it (write_data_to_pdb at level 9), against the baseline of a bare zlib inflate of
// the same file read from disk. The ".ddb" file is compiled from the text at the start of the
// run into a temporary directory. Prints the ratios after the runs, and the heap and peak
// memory of one load per part, measured in a fresh process of this program.
//
// Run with VELCORA_ROOTDIR naming the bundled installation (as `make bench` does).
#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "bench_support.h"
#include "dev_archive_export.h"
#include "dev_family_info_mgr_body.h"
#include "host/gen.h"

namespace {

std::string text_catalogue() { return gen_get_velcora_path() + "h/dev_part_manager_auto.part"; }

// The cumulative file of the whole catalogue, written once from the text at level 9.
const FIO_PATH& cumulative_file() {
    static const FIO_PATH path = [] {
        FIO_PATH p(bench::scratch() + "/ddb_cumulative_info.ddb");
        DEV_FAMILY_INFO_MGR_BODY store;
        if (!store.read_family_data(FIO_PATH(text_catalogue()))) std::abort();
        store.generate_part_support_traits();
        store.generate_fastest_part_traits();
        if (!store.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &p, ZLIB_BEST_COMPRESSION))
            std::abort();
        return p;
    }();
    return path;
}

int part_count(const DEV_FAMILY_INFO_MGR_BODY& store) {
    int n = 0;
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC; ++p)
        if (store.find_desc_of(static_cast<DEV_PART_ENUM>(p))) ++n;
    return n;
}

// Runs `fill` on a new empty store per iteration; creating and destroying the store are not
// timed.
template <typename FILL>
void time_fresh_store(benchmark::State& state, FILL fill) {
    int parts = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto store = std::make_unique<DEV_FAMILY_INFO_MGR_BODY>();
        state.ResumeTiming();
        if (!fill(*store)) {
            state.SkipWithError("the catalogue did not load");
            return;
        }
        state.PauseTiming();
        parts = part_count(*store);
        store.reset();
        state.ResumeTiming();
    }
    state.counters["parts"] = parts;
}

void BM_ParseText(benchmark::State& state) {
    const FIO_PATH text(text_catalogue());
    time_fresh_store(state, [&](DEV_FAMILY_INFO_MGR_BODY& s) { return s.read_family_data(text); });
}

void BM_LoadDdb(benchmark::State& state) {
    const FIO_PATH& ddb = cumulative_file();
    time_fresh_store(state, [&](DEV_FAMILY_INFO_MGR_BODY& s) {
        return s.load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &ddb);
    });
}

void BM_WriteDdb(benchmark::State& state) {
    DEV_FAMILY_INFO_MGR_BODY store;
    if (!store.load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &cumulative_file())) {
        state.SkipWithError("the catalogue did not load");
        return;
    }
    const FIO_PATH out(bench::scratch() + "/written.ddb");
    for (auto _ : state)
        if (!store.write_data_to_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &out, ZLIB_BEST_COMPRESSION)) {
            state.SkipWithError("the catalogue was not written");
            return;
        }
    state.counters["bytes"] = static_cast<double>(FIO_FILE_SYSTEM::file_size(out.full_path()));
}

// Baseline: read the same file from disk and inflate it whole into a buffer of its size.
void BM_BareInflate(benchmark::State& state) {
    const std::string file = cumulative_file().full_path();
    std::string out(16 << 20, '\0');
    size_t inflated = 0;
    for (auto _ : state)
        if ((inflated = bench::inflate_file(file, out)) == 0) {
            state.SkipWithError("inflate failed");
            return;
        }
    state.counters["inflated"] = static_cast<double>(inflated);
}

// Child mode: one load of FILE into an empty store of a fresh process; prints the part count,
// the heap the loaded records hold (mallinfo2) and the rise of the peak resident size.
int child_memory(const char* file) {
    auto store = std::make_unique<DEV_FAMILY_INFO_MGR_BODY>();
    const FIO_PATH path(file);
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    const size_t heap_before = mallinfo2().uordblks;
    if (!store->load_data_from_pdb(DEV_FAMILY_GENERIC, DEV_FAMILY_DATA_TYPE_INFO, &path)) return 1;
    const size_t heap_after = mallinfo2().uordblks;
    getrusage(RUSAGE_SELF, &after);
    std::printf("%d %zu %ld\n", part_count(*store), heap_after - heap_before, after.ru_maxrss - before.ru_maxrss);
    return 0;
}

void report_memory() {
    const std::string out = bench::run_child("--child-memory " + cumulative_file().full_path());
    int parts = 0;
    size_t heap = 0;
    long peak_kib = 0;
    if (std::sscanf(out.c_str(), "%d %zu %ld", &parts, &heap, &peak_kib) != 3 || parts == 0) {
        std::printf("memory: the child load failed\n");
        return;
    }
    std::printf("memory of one .ddb load, %d parts: heap held %zu bytes (%.0f per part), "
                "peak resident rise %ld KiB (%.0f bytes per part)\n",
                parts, heap, static_cast<double>(heap) / parts, peak_kib, peak_kib * 1024.0 / parts);
}

}  // namespace

BENCHMARK(BM_BareInflate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadDdb)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseText)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteDdb)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--child-memory") == 0) return child_memory(argv[2]);
    benchmark::Initialize(&argc, argv);
    bench::TIMES times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nratios of this run:\n");
    times.print_ratio("text parse / .ddb load", "BM_ParseText", "BM_LoadDdb", -5);
    times.print_ratio(".ddb load / bare inflate", "BM_LoadDdb", "BM_BareInflate", 3);
    times.print_ratio(".ddb write (level 9) / .ddb load", "BM_WriteDdb", "BM_LoadDdb");
    report_memory();
    benchmark::Shutdown();
    return 0;
}
