// What the benchmark programs share: a reporter that keeps each benchmark's time for the
// ratios printed after the run, a scratch directory, the bare inflate baseline, and running
// this program again as a fresh child process (for first-use and memory figures).
#ifndef VELCORA_BENCH_SUPPORT_H
#define VELCORA_BENCH_SUPPORT_H

#include <benchmark/benchmark.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace bench {

// Console output as usual, and per benchmark (its full name: "BM_X/3") the real and CPU time
// of an iteration: the median when the run has repetitions, else the single run's.
class TIMES : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& r : runs) {
            const std::string name = r.run_name.str();
            const bool median = r.run_type == Run::RT_Aggregate && r.aggregate_name == "median";
            if (median || (r.run_type == Run::RT_Iteration && r.iterations > 0 && !m_from_median[name]))
                m_times[name] = {r.GetAdjustedRealTime(), r.GetAdjustedCPUTime()};
            if (median) m_from_median[name] = true;
        }
        ConsoleReporter::ReportRuns(runs);
    }
    // 0 when the benchmark did not run.
    double real(const std::string& name) const { return find(name).first; }
    double cpu(const std::string& name) const { return find(name).second; }
    // "<what>  real 1.23x  cpu 1.20x", with the goal when one is given (> 0 for "at most",
    // < 0 for "at least" its absolute value).
    void print_ratio(const char* what, const std::string& measured, const std::string& baseline,
                     double goal = 0) const {
        const double br = real(baseline), bc = cpu(baseline);
        if (br <= 0 || bc <= 0 || cpu(measured) <= 0) return;
        std::printf("%-52s real %8.2fx  cpu %8.2fx", what, real(measured) / br, cpu(measured) / bc);
        if (goal > 0) std::printf("  (goal <= %.1fx)", goal);
        if (goal < 0) std::printf("  (goal >= %.1fx)", -goal);
        std::printf("\n");
    }

private:
    std::pair<double, double> find(const std::string& name) const {
        auto it = m_times.find(name);
        return it == m_times.end() ? std::pair<double, double>(0, 0) : it->second;
    }
    std::map<std::string, std::pair<double, double>> m_times;
    std::map<std::string, bool> m_from_median;
};

// A directory for the run's files, removed at exit.
inline const std::string& scratch() {
    static const std::string dir = [] {
        std::string templ = (std::filesystem::temp_directory_path() / "velcora_bench_XXXXXX").string();
        if (!mkdtemp(&templ[0])) std::abort();
        std::atexit([] {
            std::error_code ec;
            std::filesystem::remove_all(scratch(), ec);
        });
        return templ;
    }();
    return dir;
}

inline std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The baseline of a persistent load: read `file` from disk and inflate it whole into `out`
// (sized for it beforehand). The inflated size, 0 on failure.
inline size_t inflate_file(const std::string& file, std::string& out) {
    const std::string in = read_file(file);
    uLongf size = out.size();
    if (uncompress(reinterpret_cast<Bytef*>(&out[0]), &size, reinterpret_cast<const Bytef*>(in.data()), in.size()) !=
        Z_OK)
        return 0;
    benchmark::DoNotOptimize(out.data());
    return size;
}

// Registers a benchmark; with VELCORA_BENCH_ITERATIONS=N in the environment it runs exactly N
// iterations (for instruction counts under callgrind: the difference of two counts is the
// cost of the extra iterations, free of the set-up).
inline void add(const char* name, void (*function)(benchmark::State&),
                benchmark::TimeUnit unit = benchmark::kMillisecond) {
    benchmark::internal::Benchmark* b = benchmark::RegisterBenchmark(name, function)->Unit(unit);
    if (const char* n = std::getenv("VELCORA_BENCH_ITERATIONS")) b->Iterations(std::atoi(n));
}

// Runs this program again with `arguments` and answers what it printed (empty on failure).
inline std::string run_child(const std::string& arguments) {
    char self[4096];
    const ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0) return std::string();
    self[n] = '\0';
    std::FILE* p = popen((std::string(self) + " " + arguments).c_str(), "r");
    if (!p) return std::string();
    std::string out;
    char buffer[4096];
    for (size_t got; (got = std::fread(buffer, 1, sizeof buffer, p)) > 0;) out.append(buffer, got);
    return pclose(p) == 0 ? out : std::string();
}

}  // namespace bench

#endif
