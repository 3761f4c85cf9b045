// Part manager on the bundled catalogue (3566 parts): filter_part_list over the whole
// catalogue with one and with all criteria against a bare loop over the part records; the
// cached voltage and temperature lists against bare hash look-ups of the same keys; and the
// first query of a fresh process (catalogue load plus one filter) against a fresh process
// that only loads the catalogue. Prints the ratios after the runs.
//
// Run with the bundled installation as root (VELCORA_ROOTDIR, or the build tree's default).
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "bench_support.h"
#include "dev_family_info_mgr_body.h"
#include "dev_part_manager.h"
#include "host/vtl_hash.h"

extern char** environ;

namespace {

// The process-wide store with the whole catalogue in it.
DEV_FAMILY_INFO_MGR_BODY* loaded_store() {
    DEV_FAMILY_INFO_MGR_BODY* store = DEV_FAMILY_INFO_MGR_BODY::get_instance();
    if (!store->find_desc_of(static_cast<DEV_PART_ENUM>(1))) store->load_family_data(DEV_FAMILY_GENERIC);
    return store;
}

struct QUERY {
    std::string package;  // the package most parts have: one criterion
    std::string family, device, pins, speed, all_package;  // every criterion, of one part
};

const QUERY& query() {
    static const QUERY q = [] {
        QUERY r;
        DEV_FAMILY_INFO_MGR_BODY* store = loaded_store();
        std::map<int, int> per_package;
        for (int p = 1; p < DEV_PART_GENERIC; ++p)
            if (const DEV_PART_DESC* d = store->find_desc_of(static_cast<DEV_PART_ENUM>(p))) ++per_package[d->get_package()];
        int best = 0;
        for (const auto& [pkg, n] : per_package)
            if (n > best) best = n, r.package = dstr_get_debug_string(static_cast<DEV_PKG_ENUM>(pkg));
        // The last part of an installed device, so that the full selection is not empty.
        const DEV_PART_MANAGER pm;
        const DEV_PART_DESC* d = nullptr;
        for (int p = DEV_PART_GENERIC - 1; p > 0 && !d; --p) {
            d = store->find_desc_of(static_cast<DEV_PART_ENUM>(p));
            if (d && !pm.device_is_installed(d->get_device())) d = nullptr;
        }
        r.family = dstr_get_debug_string(d->get_family());
        r.device = dstr_get_debug_string(d->get_device());
        r.all_package = dstr_get_debug_string(d->get_package());
        r.pins = std::to_string(d->get_pin_count());
        r.speed = dstr_get_debug_string(d->get_speed_grade());
        return r;
    }();
    return q;
}

// Baseline: one pass over every part record, reading the fields a filter compares.
void BM_BareRecordLoop(benchmark::State& state) {
    DEV_FAMILY_INFO_MGR_BODY* store = loaded_store();
    for (auto _ : state) {
        long sum = 0;
        for (int p = 1; p < DEV_PART_MAX; ++p) {
            if (p == DEV_PART_GENERIC) continue;
            const DEV_PART_DESC* d = store->find_desc_of(static_cast<DEV_PART_ENUM>(p));
            if (d) sum += d->get_family() + d->get_device() + d->get_package() + d->get_pin_count() + d->get_speed_grade();
        }
        benchmark::DoNotOptimize(sum);
    }
}

void run_filter(benchmark::State& state, const std::string& family, const std::string& device,
                const std::string& package, const std::string& pins, const std::string& speed) {
    DEV_PART_MANAGER pm;
    loaded_store();
    size_t selected = 0;
    for (auto _ : state) {
        std::vector<DEV_PART_ENUM> parts;
        pm.filter_part_list(&parts, family, device, package, pins, speed);
        selected = parts.size();
        benchmark::DoNotOptimize(parts.data());
    }
    state.counters["parts"] = static_cast<double>(selected);
}

void BM_FilterAny(benchmark::State& state) { run_filter(state, "any", "any", "any", "any", "any"); }
void BM_FilterOneCriterion(benchmark::State& state) { run_filter(state, "any", "any", query().package, "any", "any"); }
void BM_FilterAllCriteria(benchmark::State& state) {
    const QUERY& q = query();
    run_filter(state, q.family, q.device, q.all_package, q.pins, q.speed);
}

// Repeated queries of every part's cached voltage and temperature lists (filled before the
// timed loop), against bare look-ups of the same keys in a host hash table.
void BM_CachedLists(benchmark::State& state) {
    DEV_PART_MANAGER pm;
    loaded_store();
    for (int p = 1; p < DEV_PART_GENERIC; ++p) pm.get_voltage_list(static_cast<DEV_PART_ENUM>(p));
    for (auto _ : state) {
        size_t n = 0;
        for (int p = 1; p < DEV_PART_GENERIC; ++p) n += pm.get_voltage_list(static_cast<DEV_PART_ENUM>(p)).size();
        benchmark::DoNotOptimize(n);
    }
    state.SetItemsProcessed(state.iterations() * (DEV_PART_GENERIC - 1));
}

void BM_BareHashLookup(benchmark::State& state) {
    VTL_HASH<DEV_PART_ENUM, std::shared_ptr<const std::vector<DEV_VOLTAGE_ENUM>>> table;
    for (int p = 1; p < DEV_PART_GENERIC; ++p)
        table.set(static_cast<DEV_PART_ENUM>(p), std::make_shared<const std::vector<DEV_VOLTAGE_ENUM>>(1, DEV_VOLTAGE_1_2V));
    for (auto _ : state) {
        size_t n = 0;
        for (int p = 1; p < DEV_PART_GENERIC; ++p) n += (*table.find(static_cast<DEV_PART_ENUM>(p)))->size();
        benchmark::DoNotOptimize(n);
    }
    state.SetItemsProcessed(state.iterations() * (DEV_PART_GENERIC - 1));
}

// A fresh process of this program in one of the child modes below, waited for.
void run_child(benchmark::State& state, const char* mode) {
    char self[4096];
    const ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0) {
        state.SkipWithError("no /proc/self/exe");
        return;
    }
    self[n] = '\0';
    char* argv[] = {self, const_cast<char*>(mode), nullptr};
    for (auto _ : state) {
        pid_t pid;
        int status = 0;
        if (posix_spawn(&pid, self, nullptr, nullptr, argv, environ) != 0 || waitpid(pid, &status, 0) != pid ||
            !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            state.SkipWithError("child failed");
            return;
        }
    }
}

void BM_FreshProcessLoadOnly(benchmark::State& state) { run_child(state, "--child-load"); }
void BM_FreshProcessFirstFilter(benchmark::State& state) { run_child(state, "--child-first-filter"); }

int child_main(const std::string& mode) {
    if (mode == "--child-load") return loaded_store()->find_desc_of(static_cast<DEV_PART_ENUM>(1)) ? 0 : 1;
    DEV_PART_MANAGER pm;
    loaded_store();
    std::vector<DEV_PART_ENUM> parts;
    pm.filter_part_list(&parts, "any", "any", "any", "any", "any");
    return parts.empty() ? 1 : 0;
}

}  // namespace

BENCHMARK(BM_BareRecordLoop);
BENCHMARK(BM_FilterAny);
BENCHMARK(BM_FilterOneCriterion);
BENCHMARK(BM_FilterAllCriteria);
BENCHMARK(BM_BareHashLookup);
BENCHMARK(BM_CachedLists);
BENCHMARK(BM_FreshProcessLoadOnly)->Iterations(20)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FreshProcessFirstFilter)->Iterations(20)->UseRealTime()->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    if (argc == 2 && std::strncmp(argv[1], "--child-", 8) == 0) return child_main(argv[1]);
    benchmark::Initialize(&argc, argv);
    bench::TIMES reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\nratios to the baselines of this run:\n");
    reporter.print_ratio("filter, every criterion any / bare record loop", "BM_FilterAny", "BM_BareRecordLoop");
    reporter.print_ratio("filter, one criterion / bare record loop", "BM_FilterOneCriterion", "BM_BareRecordLoop");
    reporter.print_ratio("filter, all five criteria / bare record loop", "BM_FilterAllCriteria", "BM_BareRecordLoop");
    reporter.print_ratio("cached voltage list / bare hash look-up", "BM_CachedLists", "BM_BareHashLookup");
    reporter.print_ratio("fresh process: load + first filter / load only", "BM_FreshProcessFirstFilter/iterations:20/real_time",
                   "BM_FreshProcessLoadOnly/iterations:20/real_time");
    benchmark::Shutdown();
    return 0;
}
