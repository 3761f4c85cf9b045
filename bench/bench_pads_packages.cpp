// Pads and packages on the largest device and package of the bundled installation: the PAD
// and PKG text parse against the bare anchored matching of the same lines, the .ddb load
// and write against a bare zlib inflate of the same file, and pad and pin look-ups by name
// and by global id against a plain std::unordered_map of the same keys, all in the same run.
// Prints the ratios and the heap bytes per pad and per pin after the runs.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "dev_basic_info.h"
#include "dev_device.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pad_info.h"
#include "dev_pkg_info.h"
#include "host/dstr.h"
#include "host/gen.h"
#include "host/msg.h"
#include "host/vtl_regexp.h"
#include "dev_utility.h"

namespace {

// The largest device's files: its compiled forms installed, its texts staged by the build.
const std::string DDB_FOLDER = std::string(VELCORA_BUNDLED_ROOT) + "/ddb/ostrel6/";
const std::string TEXT_FOLDER = std::string(VELCORA_DEVICE_STAGING) + "/ostrel6/";
const std::string PAD_BASE = "ddb_os6g2700", PKG_BASE = "ddb_os6g2700lga2912";

std::string file_bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> lines_of(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

DEV_DEVICE& device() {
    static DEV_DEVICE* const device = [] {
        const DEV_DEVICE_ENUM d = dstr_get_dev_device_enum_by_string("OS6G2700");
        auto* basic = new DEV_BASIC_INFO_BODY;
        basic->set_enum_data(DEV_BASIC_INFO_ENUM_DEVICE, d);
        basic->set_enum_data(DEV_BASIC_INFO_ENUM_FAMILY,
                             DEV_FAMILY_INFO_MGR_BODY::get_instance()->find_desc_of(d)->get_family());
        auto* body = new DEV_DEVICE_BODY;
        body->set_ace_info(nullptr);
        body->set_part_info(nullptr);
        body->set_basic_info(new DEV_BASIC_INFO(basic));
        return new DEV_DEVICE(body);
    }();
    return *device;
}

// Every pattern of the format, in the order its reader tries them, compiled as it does.
std::vector<VTL_REGEXP> patterns(std::initializer_list<const char*> texts) {
    std::vector<VTL_REGEXP> compiled;
    for (const char* text : texts) compiled.emplace_back(DEV_REGEXP(text).engine_pattern());
    return compiled;
}

const char* const CONTINUATION = R"P(^\s*(\{\{?.+\}\}?)\s*$)P";

std::vector<VTL_REGEXP> pad_patterns() {
    return patterns({R"P(^\s*include\s+"(.+)"\s*$)P", R"P(^\s*io_standard\s+(\w+)\s*$)P", R"P(^\s*io_rule\s+(\w+)\s*$)P",
                     R"P(^\s*pad\s+(\w+)\s*$)P", R"P(^\s*default_pad\s*$)P", R"P(\s*IO_STANDARDS\s*=\s*(.+?)\s*$)P",
                     R"P(\s*CURRENT_SET\s*=\s*(.+?)\s*$)P", R"P(\s*REAL_GND_CURRENT\[(\w+)\]\s*=\s*(-?\d+)\s*$)P",
                     R"P(\s*REAL_VCC_CURRENT\[(\w+)\]\s*=\s*(-?\d+)\s*$)P", R"P(\s*(STRING_\w+)\s*=\s*"([^"]*)"\s*$)P",
                     R"P(\s*(INT_\w+)\s*=\s*(.+?)\s*$)P", R"P(\s*(BOOL_\w+)\s*=\s*(\w+)\s*$)P",
                     R"P(^\s*(VEC_STRING_\w+)\s*=\s*(\{.+\})\s*$)P", R"P(^\s*(2D_INT_\w+)\s*=\s*(.+?)\s*$)P",
                     R"P(^\s*end\s*$)P", CONTINUATION, R"P(^\s*#.*$)P", R"P(^\s*$)P"});
}

std::vector<VTL_REGEXP> pkg_patterns() {
    return patterns({R"P(^\s*include\s+"(.+)"\s*$)P", R"P(^\s*pin\s+(\w+)\s*$)P", R"P(^\s*INT_NUM_PINS\s*=\s*(\w+)\s*$)P",
                     R"P(^\s*PAD_IDS\s*=\s*(.+?)\s*$)P", R"P(^\s*(STRING_\w+)\s*=\s*"([^"]*)"\s*$)P",
                     R"P(^\s*(INT_\w+)\s*=\s*(.+?)\s*$)P", R"P(^\s*(BOOL_\w+)\s*=\s*(\w+)$)P",
                     R"P(^\s*(VEC_DOUBLE_\w+)\s*=\s*(.+?)\s*$)P", R"P(^\s*(VEC_INT_\w+)\s*=\s*(.+?)\s*$)P",
                     R"P(^\s*(2D_INT_\w+)\s*=\s*(.+?)\s*$)P", R"P(^\s*end\s*$)P", CONTINUATION, R"P(^\s*#.*$)P",
                     R"P(^\s*$)P"});
}

void bare_matching(benchmark::State& state, const std::string& text, std::vector<VTL_REGEXP> compiled) {
    const std::vector<std::string> lines = lines_of(text);
    for (auto _ : state) {
        long matched = 0;
        for (const std::string& line : lines)
            for (VTL_REGEXP& re : compiled)
                if (re.match(line.data(), 0, VTL_RANGE::npos, line.size()) >= 0) {
                    ++matched;
                    break;
                }
        if (matched != static_cast<long>(lines.size())) state.SkipWithError("a line matched no pattern");
        benchmark::DoNotOptimize(matched);
    }
}

// Reads the whole file and inflates its one zlib stream.
void bare_inflate(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        const std::string bytes = file_bytes(path);
        z_stream z{};
        inflateInit(&z);
        z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        z.avail_in = static_cast<uInt>(bytes.size());
        std::string out;
        char buffer[1 << 16];
        int status = Z_OK;
        while (status == Z_OK) {
            z.next_out = reinterpret_cast<Bytef*>(buffer);
            z.avail_out = sizeof buffer;
            status = inflate(&z, Z_SYNC_FLUSH);
            out.append(buffer, sizeof buffer - z.avail_out);
        }
        inflateEnd(&z);
        if (status != Z_STREAM_END) state.SkipWithError("not one zlib stream");
        benchmark::DoNotOptimize(out);
    }
}

void BM_PadTextParse(benchmark::State& state) {
    MSG_CAPTURE quiet;
    for (auto _ : state) {
        DEV_PAD_INFO_BODY body;
        body.set_device(&device());
        body.read_pad_file(FIO_PATH(TEXT_FOLDER + PAD_BASE + ".pad"));
        benchmark::DoNotOptimize(body.get_number_of_pads());
    }
}
void BM_PadBareMatch(benchmark::State& state) { bare_matching(state, TEXT_FOLDER + PAD_BASE + ".pad", pad_patterns()); }
// Loads (destroying what was loaded is left out of the time).
template <typename BODY, typename LOAD>
void load(benchmark::State& state, LOAD load_file) {
    MSG_CAPTURE quiet;
    for (auto _ : state) {
        std::unique_ptr<BODY> body(load_file());
        if (!body) state.SkipWithError("the file does not load");
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
}
void BM_PadDdbLoad(benchmark::State& state) {
    load<DEV_PAD_INFO_BODY>(state, [] { return DEV_PAD_INFO_BODY::load_pad_from_pdb(DDB_FOLDER + PAD_BASE + "_pad.ddb"); });
}
void BM_PadDdbWrite(benchmark::State& state) {
    MSG_CAPTURE quiet;
    std::unique_ptr<DEV_PAD_INFO_BODY> body(DEV_PAD_INFO_BODY::load_pad_from_pdb(DDB_FOLDER + PAD_BASE + "_pad.ddb"));
    for (auto _ : state) body->write_pad_to_pdb(FIO_PATH("/tmp/velcora_bench_pad_" + std::to_string(getpid()) + ".ddb"), 9);
    std::remove(("/tmp/velcora_bench_pad_" + std::to_string(getpid()) + ".ddb").c_str());
}
void BM_PadBareInflate(benchmark::State& state) { bare_inflate(state, DDB_FOLDER + PAD_BASE + "_pad.ddb"); }

void BM_PkgTextParse(benchmark::State& state) {
    MSG_CAPTURE quiet;
    for (auto _ : state) {
        DEV_PKG_INFO_BODY body;
        body.read_pkg_file(FIO_PATH(TEXT_FOLDER + PKG_BASE + ".pkg"));
        benchmark::DoNotOptimize(body.get_number_of_pins());
    }
}
void BM_PkgBareMatch(benchmark::State& state) { bare_matching(state, TEXT_FOLDER + PKG_BASE + ".pkg", pkg_patterns()); }
void BM_PkgDdbLoad(benchmark::State& state) {
    load<DEV_PKG_INFO_BODY>(state, [] { return DEV_PKG_INFO_BODY::load_pkg_from_pdb(DDB_FOLDER + PKG_BASE + "_pkg.ddb"); });
}
void BM_PkgDdbWrite(benchmark::State& state) {
    MSG_CAPTURE quiet;
    std::unique_ptr<DEV_PKG_INFO_BODY> body(DEV_PKG_INFO_BODY::load_pkg_from_pdb(DDB_FOLDER + PKG_BASE + "_pkg.ddb"));
    for (auto _ : state) body->write_pkg_to_pdb(FIO_PATH("/tmp/velcora_bench_pkg_" + std::to_string(getpid()) + ".ddb"), 9);
    std::remove(("/tmp/velcora_bench_pkg_" + std::to_string(getpid()) + ".ddb").c_str());
}
void BM_PkgBareInflate(benchmark::State& state) { bare_inflate(state, DDB_FOLDER + PKG_BASE + "_pkg.ddb"); }

// ---- look-ups: every key once per iteration ------------------------------------------------

struct LOOKUPS {
    std::unique_ptr<DEV_PAD_INFO_BODY> pads;
    std::unique_ptr<DEV_PKG_INFO_BODY> pkg;
    std::vector<std::string> pad_names, pin_names;
    std::vector<uint32_t> gids;
    std::unordered_map<std::string, uint32_t> pad_by_name, pin_by_name;
    std::unordered_map<uint32_t, uint32_t> pad_by_gid;
};

const LOOKUPS& lookups() {
    static const LOOKUPS* const l = [] {
        MSG_CAPTURE quiet;
        auto* l = new LOOKUPS;
        l->pads.reset(DEV_PAD_INFO_BODY::load_pad_from_pdb(DDB_FOLDER + PAD_BASE + "_pad.ddb"));
        l->pkg.reset(DEV_PKG_INFO_BODY::load_pkg_from_pdb(DDB_FOLDER + PKG_BASE + "_pkg.ddb"));
        for (const DEV_PAD* pad : l->pads->get_pads()) {
            const std::string& name = pad->get_string_data(DEV_PAD_STRING_PAD_NAME);
            l->pad_names.push_back(name);
            l->pad_by_name.emplace(name, pad->get_id());
            const uint32_t gid = static_cast<uint32_t>(pad->get_int_data(DEV_PAD_INT_GLOBAL_ID));
            l->gids.push_back(gid);
            l->pad_by_gid.emplace(gid, pad->get_id());
        }
        for (const DEV_PIN* pin : l->pkg->get_pins()) {
            l->pin_names.push_back(pin->get_name());
            l->pin_by_name.emplace(pin->get_name(), pin->get_id());
        }
        return l;
    }();
    return *l;
}

template <typename KEYS, typename FIND>
void look_up(benchmark::State& state, const KEYS& keys, FIND find) {
    for (auto _ : state) {
        uint64_t sum = 0;
        for (const auto& key : keys) sum += find(key);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * keys.size()));
}

void BM_PadByName(benchmark::State& s) {
    look_up(s, lookups().pad_names, [](const std::string& n) { return lookups().pads->get_pad_id_by_string(n); });
}
void BM_PadByNameMap(benchmark::State& s) {
    look_up(s, lookups().pad_names, [](const std::string& n) { return lookups().pad_by_name.find(n)->second; });
}
void BM_PadByGid(benchmark::State& s) {
    look_up(s, lookups().gids, [](uint32_t g) { return lookups().pads->get_pad_id_by_global_id(g); });
}
void BM_PadByGidMap(benchmark::State& s) {
    look_up(s, lookups().gids, [](uint32_t g) { return lookups().pad_by_gid.find(g)->second; });
}
void BM_PinByName(benchmark::State& s) {
    look_up(s, lookups().pin_names, [](const std::string& n) { return lookups().pkg->get_pin_id_by_string(n); });
}
void BM_PinByNameMap(benchmark::State& s) {
    look_up(s, lookups().pin_names, [](const std::string& n) { return lookups().pin_by_name.find(n)->second; });
}

BENCHMARK(BM_PadTextParse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PadBareMatch)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PadDdbLoad)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PadDdbWrite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PadBareInflate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PkgTextParse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PkgBareMatch)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PkgDdbLoad)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PkgDdbWrite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PkgBareInflate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PadByName);
BENCHMARK(BM_PadByNameMap);
BENCHMARK(BM_PadByGid);
BENCHMARK(BM_PadByGidMap);
BENCHMARK(BM_PinByName);
BENCHMARK(BM_PinByNameMap);

// Remembers the CPU time of each benchmark (the median with repetitions).
class CPU_TIMES : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const std::string& name = run.run_name.function_name;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (median || (run.run_type == Run::RT_Iteration && !m_from_median[name])) m_cpu[name] = run.GetAdjustedCPUTime();
            if (median) m_from_median[name] = true;
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void ratio(const char* what, const char* name, const char* base, const char* goal) const {
        auto a = m_cpu.find(name), b = m_cpu.find(base);
        if (a != m_cpu.end() && b != m_cpu.end() && b->second > 0)
            std::printf("  %-40s %6.2fx  (goal %s)\n", what, a->second / b->second, goal);
    }

private:
    std::map<std::string, double> m_cpu;
    std::map<std::string, bool> m_from_median;
};

}  // namespace

int main(int argc, char** argv) {
    gen_set_velcora_path(VELCORA_BUNDLED_ROOT);
    benchmark::Initialize(&argc, argv);
    CPU_TIMES times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nCPU time, ratio to the baseline of the same run:\n");
    times.ratio("PAD text parse / bare matching", "BM_PadTextParse", "BM_PadBareMatch", "<= 2x");
    times.ratio("PAD .ddb load / bare inflate", "BM_PadDdbLoad", "BM_PadBareInflate", "<= 2.5x");
    times.ratio("PAD text parse / .ddb load", "BM_PadTextParse", "BM_PadDdbLoad", ">= 10x");
    times.ratio("PAD .ddb write / bare inflate", "BM_PadDdbWrite", "BM_PadBareInflate", "none");
    times.ratio("PKG text parse / bare matching", "BM_PkgTextParse", "BM_PkgBareMatch", "<= 2x");
    times.ratio("PKG .ddb load / bare inflate", "BM_PkgDdbLoad", "BM_PkgBareInflate", "<= 2.5x");
    times.ratio("PKG text parse / .ddb load", "BM_PkgTextParse", "BM_PkgDdbLoad", ">= 10x");
    times.ratio("PKG .ddb write / bare inflate", "BM_PkgDdbWrite", "BM_PkgBareInflate", "none");
    times.ratio("pad by name / std::unordered_map", "BM_PadByName", "BM_PadByNameMap", "<= 2x");
    times.ratio("pad by global id / std::unordered_map", "BM_PadByGid", "BM_PadByGidMap", "<= 2x");
    times.ratio("pin by name / std::unordered_map", "BM_PinByName", "BM_PinByNameMap", "<= 2x");
    MSG_CAPTURE quiet;
    size_t before = mallinfo2().uordblks;
    std::unique_ptr<DEV_PAD_INFO_BODY> pads(DEV_PAD_INFO_BODY::load_pad_from_pdb(DDB_FOLDER + PAD_BASE + "_pad.ddb"));
    const size_t pad_bytes = mallinfo2().uordblks - before;
    before = mallinfo2().uordblks;
    std::unique_ptr<DEV_PKG_INFO_BODY> pkg(DEV_PKG_INFO_BODY::load_pkg_from_pdb(DDB_FOLDER + PKG_BASE + "_pkg.ddb"));
    const size_t pkg_bytes = mallinfo2().uordblks - before;
    std::printf("\nheap held by the loaded bodies: %zu bytes for %u pads (%.0f per pad, descriptors and rules "
                "included); %zu bytes for %u pins (%.0f per pin)\n",
                pad_bytes, pads->get_number_of_pads(), static_cast<double>(pad_bytes) / pads->get_number_of_pads(),
                pkg_bytes, pkg->get_number_of_pins(), static_cast<double>(pkg_bytes) / pkg->get_number_of_pins());
    benchmark::Shutdown();
    return 0;
}
