// The Tcl package ::velcora::device as a user feels it: a fresh tclsh that runs
// `package require ::velcora::device` and a first `get_part_list -family F`, against the
// bare catalogue load in C++ (a fresh store loaded as the process-wide store loads itself,
// in this process and in a fresh process); and repeated get_part_list and report_part_info
// in one interpreter against the part-manager calls they make. Prints the ratios at the end.
//
// Run with the bundled installation as root (VELCORA_ROOTDIR, or the build tree's default);
// tclsh must be on PATH. The package is found beside the library this program runs with.
#include <dlfcn.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>
#include <tcl.h>

#include "bench_support.h"
#include "dev_family_info_mgr_body.h"
#include "dev_tcl.h"
#include "dev_part_manager.h"

extern char** environ;

namespace {

const char* const FAMILY = "CORVANE2";
const char* const PART = "CV2E025F484C6";

std::string self_path() {
    char self[4096];
    const ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
    return n > 0 ? std::string(self, static_cast<size_t>(n)) : std::string();
}

// Spawns `argv` once per iteration and waits for it.
void run_process(benchmark::State& state, std::vector<std::string> args) {
    std::vector<char*> argv;
    for (std::string& a : args) argv.push_back(&a[0]);
    argv.push_back(nullptr);
    for (auto _ : state) {
        pid_t pid;
        int status = 0;
        if (posix_spawnp(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0 ||
            waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            state.SkipWithError("child failed");
            return;
        }
    }
}

std::vector<std::string> g_scripts;  // removed at the end of the run

// A tclsh script file holding `commands`.
std::string tcl_script(const std::string& name, const std::string& commands) {
    std::string path = "/tmp/bench_tcl_package_" + std::to_string(getpid()) + "_" + name + ".tcl";
    g_scripts.push_back(path);
    if (FILE* f = std::fopen(path.c_str(), "w")) {
        std::fputs(commands.c_str(), f);
        std::fclose(f);
    }
    return path;
}

// Baseline: a store loaded the way the process-wide store loads itself.
void BM_CatalogueLoad(benchmark::State& state) {
    for (auto _ : state) {
        DEV_FAMILY_INFO_MGR_BODY store;
        if (!store.load_installed_catalogue()) state.SkipWithError("no catalogue");
        benchmark::DoNotOptimize(store.find_desc_of(static_cast<DEV_PART_ENUM>(1)));
    }
}

void BM_FreshProcessCatalogueLoad(benchmark::State& state) { run_process(state, {self_path(), "--child-load"}); }

void BM_FreshTclshOnly(benchmark::State& state) {
    run_process(state, {"tclsh", tcl_script("exit", "exit 0\n")});
}

// Tcl's own search of its library directories for a package, which every package pays.
void BM_FreshTclshSearchOnly(benchmark::State& state) {
    run_process(state, {"tclsh", tcl_script("search", "catch {package require no_such_package_anywhere}\n")});
}

void BM_FreshTclshPackageRequire(benchmark::State& state) {
    run_process(state, {"tclsh", tcl_script("require", "package require ::velcora::device\n")});
}

void BM_FreshTclshFirstQuery(benchmark::State& state) {
    run_process(state, {"tclsh", tcl_script("first", std::string("package require ::velcora::device\n"
                                                                 "if {![llength [::velcora::device::get_part_list -family ") +
                                                         FAMILY + "]]} { exit 1 }\n")});
}

// One interpreter with the package, its stdout going to /dev/null.
Tcl_Interp* interpreter() {
    static Tcl_Interp* interp = [] {
        Tcl_FindExecutable(nullptr);
        Tcl_Interp* i = Tcl_CreateInterp();
        Ddb_Init(i);
        Tcl_SetStdChannel(Tcl_OpenFileChannel(nullptr, "/dev/null", "w", 0), TCL_STDOUT);
        return i;
    }();
    return interp;
}

void run_tcl(benchmark::State& state, const std::string& command) {
    Tcl_Interp* interp = interpreter();
    Tcl_Obj* script = Tcl_NewStringObj(command.c_str(), -1);
    Tcl_IncrRefCount(script);
    for (auto _ : state)
        if (Tcl_EvalObjEx(interp, script, TCL_EVAL_GLOBAL) != TCL_OK) state.SkipWithError(Tcl_GetStringResult(interp));
    Tcl_DecrRefCount(script);
}

void BM_TclGetPartList(benchmark::State& state) {
    run_tcl(state, std::string("::velcora::device::get_part_list -family ") + FAMILY);
}
void BM_TclReportPartInfo(benchmark::State& state) {
    run_tcl(state, std::string("::velcora::device::report_part_info ") + PART);
}

// Baseline: a Tcl script printing the same report with puts, one literal line each.
void BM_TclPutsReport(benchmark::State& state) {
    std::string script;
    for (int line = 0; line < 16; ++line)
        script += "puts {Lcell Count  : 25000 line " + std::to_string(line) + "}\n";
    run_tcl(state, script);
}

// Baselines: the part-manager calls the two commands make.
void BM_FilterPartList(benchmark::State& state) {
    DEV_PART_MANAGER pm;
    for (auto _ : state) {
        std::vector<DEV_PART_ENUM> parts;
        pm.filter_part_list(&parts, FAMILY, "ANY", "ANY", "ANY", "ANY");
        benchmark::DoNotOptimize(parts.data());
    }
}
void BM_PartQueries(benchmark::State& state) {
    DEV_PART_MANAGER pm;
    const DEV_PART_ENUM part = dstr_get_dev_part_enum_by_string(PART);
    for (auto _ : state) {
        long sum = pm.get_family_of(part) + pm.get_device_of(part) + pm.get_pkg_of(part) + pm.get_speed_of(part) +
                   pm.get_device_resource_count_of(part, DEV_RESOURCE_USER_IO) + pm.get_pin_count_of(part) +
                   pm.get_lcell_count_of(part);
        for (int trait : {22, 7, 4, 9, 18}) sum += pm.test_part_trait_of(part, static_cast<DEV_PART_TRAIT_ENUM>(trait));
        benchmark::DoNotOptimize(sum);
    }
}

}  // namespace

#define PROCESS_BENCHMARK(name) BENCHMARK(name)->Iterations(20)->UseRealTime()->Unit(benchmark::kMillisecond)
BENCHMARK(BM_CatalogueLoad)->UseRealTime()->Unit(benchmark::kMillisecond);
PROCESS_BENCHMARK(BM_FreshProcessCatalogueLoad);
PROCESS_BENCHMARK(BM_FreshTclshOnly);
PROCESS_BENCHMARK(BM_FreshTclshSearchOnly);
PROCESS_BENCHMARK(BM_FreshTclshPackageRequire);
PROCESS_BENCHMARK(BM_FreshTclshFirstQuery);
BENCHMARK(BM_FilterPartList)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TclGetPartList)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PartQueries)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TclPutsReport)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TclReportPartInfo)->UseRealTime()->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--child-load") == 0) {
        DEV_FAMILY_INFO_MGR_BODY store;
        return store.load_installed_catalogue() ? 0 : 1;
    }
    // tclsh finds the package beside the library this program was linked with.
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&Ddb_Init), &info) && info.dli_fname) {
        std::string dir = info.dli_fname;
        dir.erase(dir.rfind('/'));
        setenv("TCLLIBPATH", dir.c_str(), 1);
    }
    benchmark::Initialize(&argc, argv);
    bench::TIMES reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const std::string n20 = "/iterations:20/real_time";
    std::printf("\nratios to the baselines of this run (real time):\n");
    reporter.print_ratio("fresh tclsh: require + first get_part_list / C++ load", "BM_FreshTclshFirstQuery" + n20,
                   "BM_CatalogueLoad/real_time");
    reporter.print_ratio("fresh tclsh: require + first get_part_list / fresh C++ load", "BM_FreshTclshFirstQuery" + n20,
                   "BM_FreshProcessCatalogueLoad" + n20);
    reporter.print_ratio("fresh tclsh: require only / C++ load", "BM_FreshTclshPackageRequire" + n20, "BM_CatalogueLoad/real_time");
    reporter.print_ratio("fresh tclsh, nothing loaded / C++ load", "BM_FreshTclshOnly" + n20, "BM_CatalogueLoad/real_time");
    reporter.print_ratio("fresh tclsh, search for an absent package / C++ load", "BM_FreshTclshSearchOnly" + n20,
                   "BM_CatalogueLoad/real_time");
    const double base = reporter.real("BM_CatalogueLoad/real_time");
    if (base > 0)
        std::printf("%-52s real %8.2fx\n", "what the package adds to tclsh's own start / C++ load",
                    (reporter.real("BM_FreshTclshFirstQuery" + n20) - reporter.real("BM_FreshTclshSearchOnly" + n20)) / base);
    reporter.print_ratio("get_part_list -family (Tcl) / filter_part_list (C++)", "BM_TclGetPartList/real_time",
                   "BM_FilterPartList/real_time");
    reporter.print_ratio("report_part_info (Tcl) / its part-manager queries (C++)", "BM_TclReportPartInfo/real_time",
                   "BM_PartQueries/real_time");
    reporter.print_ratio("report_part_info (Tcl) / 16 puts of literal lines (Tcl)", "BM_TclReportPartInfo/real_time",
                   "BM_TclPutsReport/real_time");
    for (const std::string& path : g_scripts) unlink(path.c_str());
    benchmark::Shutdown();
    return 0;
}
