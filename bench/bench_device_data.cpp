// Routing switches and part info of the largest installed device, a full device open, and
// `ddbtool verify`.
//
//   - the RSI text of the largest device (its staged text; the family keeps it compiled) and
//     the part-info texts of every part of its family: parse (read_rsi_file, read_ascii_file
//     into new bodies) and load of their installed ".ddb" files (load_rsi_from_pdb,
//     load_from_pdb), against a bare zlib inflate of the same files read from disk and the
//     bare anchored matching of the same lines (in memory) with the reader's patterns in the
//     reader's order;
//   - the device opened for its first part with every aspect (DEV_DEVICE_FACTORY, all from
//     ".ddb" files: basic info, pads and package where the family has them, routing
//     switches, part info, assembler data) against the sum
//     of the bare inflates of those files;
//   - `ddbtool verify` of the whole installation (one run, timed from outside), per device.
//
// Run with VELCORA_ROOTDIR naming the bundled installation (as `make bench` does).
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench_patterns.h"
#include "bench_support.h"
#include "dev_asm_info.h"
#include "dev_basic_info.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_part_info.h"
#include "dev_path.h"
#include "dev_routing_switch_info.h"
#include "host/dstr.h"

namespace {

namespace fs = std::filesystem;

struct FILES {
    DEV_DEVICE_ENUM device = DEV_DEVICE_INVALID;
    DEV_PART_ENUM first_part = DEV_PART_INVALID;
    std::string rsi_text, rsi_ddb;
    std::vector<std::string> part_texts, part_ddbs;
    std::vector<std::string> device_ddbs;  // what the full open reads
    size_t inflated_max = 0;
};

// The staged text of a compiled file: <staging>/<folder>/<base>.<kind> for <base>_<kind>.ddb.
std::string staged_text(const std::string& ddb, const std::string& kind) {
    const fs::path p(ddb);
    const std::string name = p.filename().string();
    return std::string(VELCORA_DEVICE_STAGING) + "/" + p.parent_path().filename().string() + "/" +
           name.substr(0, name.size() - kind.size() - 5) + "." + kind;
}

FILES find_files() {
    FILES f;
    const DEV_FAMILY_INFO_MGR_BODY& catalogue = *DEV_FAMILY_INFO_MGR_BODY::get_instance();
    uintmax_t largest = 0;
    for (int d = DEV_DEVICE_INVALID + 1; d < DEV_DEVICE_GENERIC; ++d) {
        FIO_PATH rsi;
        if (!DEV_PATH::get_existing_device_file_path(DEV_DEVICE_ENUM(d), "rsi", &rsi) || !DEV_PATH::is_pdb_file(rsi))
            continue;
        const std::string text = staged_text(rsi.full_path(), "rsi");
        std::error_code ec;
        const uintmax_t size = fs::file_size(text, ec);
        if (!ec && size > largest) {
            largest = size;
            f.device = DEV_DEVICE_ENUM(d);
            f.rsi_text = text;
            f.rsi_ddb = rsi.full_path();
        }
    }
    const DEV_DEVICE_DESC* device = catalogue.find_desc_of(f.device);
    if (!device) std::abort();
    for (int p = DEV_PART_INVALID + 1; p < DEV_PART_GENERIC; ++p) {
        const DEV_PART_DESC* part = catalogue.find_desc_of(DEV_PART_ENUM(p));
        if (!part || catalogue.get_family_of(part->get_device()) != device->get_family()) continue;
        FIO_PATH path;
        if (!DEV_PATH::get_existing_device_file_path(DEV_PART_ENUM(p), "part_info", &path)) continue;
        f.part_ddbs.push_back(path.full_path());
        f.part_texts.push_back(staged_text(path.full_path(), "part_info"));
        if (part->get_device() == f.device && f.first_part == DEV_PART_INVALID) f.first_part = DEV_PART_ENUM(p);
    }
    std::unique_ptr<DEV_DEVICE> opened(DEV_DEVICE_FACTORY::create_for_part(f.first_part, DEV_DEVICE_FACTORY::ALL));
    FIO_PATH path, die;
    DEV_PATH::get_existing_device_file_path(f.device, "hdr", &path);
    f.device_ddbs = {path.full_path(), f.rsi_ddb};
    DEV_PATH::get_existing_device_file_path(f.first_part, "part_info", &path);
    f.device_ddbs.push_back(path.full_path());
    // Pads and the package, for the families that have them.
    if (DEV_PATH::get_existing_device_file_path(f.device, "pad", &path)) f.device_ddbs.push_back(path.full_path());
    if (DEV_PATH::get_existing_device_file_path(f.first_part, "pkg", &path)) f.device_ddbs.push_back(path.full_path());
    if (DEV_ASM_INFO::get_die_file_path(opened->get_basic_info(), &die)) {
        f.device_ddbs.push_back(die.full_path());
        const std::string dirt = die.full_path().substr(0, die.full_path().size() - 8) + "_dirt.ddb";
        if (fs::exists(dirt)) f.device_ddbs.push_back(dirt);
    }
    for (const std::string& file : f.device_ddbs)
        if (!fs::exists(file)) std::abort();
    f.inflated_max = 64 << 20;
    return f;
}

const FILES& files() {
    static const FILES f = find_files();
    return f;
}

uintmax_t total_size(const std::vector<std::string>& paths) {
    uintmax_t n = 0;
    for (const std::string& p : paths) n += fs::file_size(p);
    return n;
}

// ---------------------------------------------------------------------------------------
// Parse, load, bare inflate

void BM_RsiParseText(benchmark::State& state) {
    for (auto _ : state) {
        auto body = std::make_unique<DEV_ROUTING_SWITCH_INFO_BODY>();
        if (!body->read_rsi_file(FIO_PATH(files().rsi_text))) return state.SkipWithError("the text did not read");
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
}

void BM_RsiLoadDdb(benchmark::State& state) {
    for (auto _ : state) {
        std::unique_ptr<DEV_ROUTING_SWITCH_INFO_BODY> body(
            DEV_ROUTING_SWITCH_INFO_BODY::load_rsi_from_pdb(FIO_PATH(files().rsi_ddb)));
        if (!body) return state.SkipWithError("the .ddb did not load");
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
}

// Bare inflates of every file of `paths`.
void inflate_all(benchmark::State& state, const std::vector<std::string>& paths) {
    std::string out(files().inflated_max, '\0');
    size_t inflated = 0;
    for (auto _ : state) {
        inflated = 0;
        for (const std::string& p : paths) {
            const size_t n = bench::inflate_file(p, out);
            if (!n) return state.SkipWithError("inflate failed");
            inflated += n;
        }
    }
    state.counters["inflated"] = static_cast<double>(inflated);
}

void BM_RsiBareInflate(benchmark::State& state) { inflate_all(state, {files().rsi_ddb}); }

// The bodies read in one iteration are freed outside the timing.
void BM_PartInfoParseTexts(benchmark::State& state) {
    std::vector<std::unique_ptr<DEV_PART_INFO_BODY>> bodies;
    for (auto _ : state) {
        for (const std::string& text : files().part_texts) {
            bodies.push_back(std::make_unique<DEV_PART_INFO_BODY>());
            if (!bodies.back()->read_ascii_file(FIO_PATH(text))) return state.SkipWithError("a text did not read");
        }
        state.PauseTiming();
        bodies.clear();
        state.ResumeTiming();
    }
}

void BM_PartInfoLoadDdbs(benchmark::State& state) {
    std::vector<std::unique_ptr<DEV_PART_INFO_BODY>> bodies;
    for (auto _ : state) {
        for (const std::string& ddb : files().part_ddbs) {
            bodies.emplace_back(DEV_PART_INFO_BODY::load_from_pdb(FIO_PATH(ddb)));
            if (!bodies.back()) return state.SkipWithError("a .ddb did not load");
        }
        state.PauseTiming();
        bodies.clear();
        state.ResumeTiming();
    }
}

void BM_PartInfoBareInflate(benchmark::State& state) { inflate_all(state, files().part_ddbs); }

void BM_DeviceOpenAll(benchmark::State& state) {
    for (auto _ : state) {
        std::unique_ptr<DEV_DEVICE> device(DEV_DEVICE_FACTORY::create_for_part(files().first_part, DEV_DEVICE_FACTORY::ALL));
        if (!device || !device->get_asm_info() || !device->get_part_info() || !device->get_routing_switch_info())
            return state.SkipWithError("an aspect did not open");
        state.PauseTiming();
        device.reset();
        state.ResumeTiming();
    }
}

void BM_DeviceFilesBareInflate(benchmark::State& state) { inflate_all(state, files().device_ddbs); }

// ---------------------------------------------------------------------------------------
// Bare anchored matching, each reader's patterns in its order

// A text's lines, read once.
std::vector<std::vector<std::string>> lines_of_files(const std::vector<std::string>& paths) {
    std::vector<std::vector<std::string>> all;
    for (const std::string& p : paths) all.push_back(bench::lines_of(bench::read_file(p)));
    return all;
}

enum RSI_PATTERN { R_INCLUDE, R_GLOBAL, R_SWITCH, R_TREE, R_END, R_BOOL, R_STRING, R_INT, R_2D, R_CONT, R_PASS_TREES,
                   R_COMMENT, R_BLANK };
const std::vector<const char*> RSI_PATTERNS = {
    "^\\s*include\\s+\"(.+)\"\\s*$", "^\\s*global_info\\s*$", "^\\s*routing_switch\\s+(\\w+)\\s*$",
    "^\\s*pass_tree\\s+(\\w+)\\s*$", "^\\s*end\\s*$", "^\\s*(BOOL_\\w+)\\s*=\\s*(\\w+)\\s*$",
    "^\\s*(STRING_\\w+)\\s*=\\s*\"([^\"]*)\"\\s*$", "^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$",
    "^\\s*(2D_INT_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*(\\{\\{?.+\\}\\}?)\\s*$", "^\\s*PASS_TREES\\s*=\\s*(.*)\\s*$",
    "^\\s*#.*$", "^\\s*$"};
// After the openers, per block (none, global_info, routing_switch, pass_tree).
const std::vector<int> RSI_IN_BLOCK[] = {
    {R_COMMENT, R_BLANK},
    {R_INT, R_2D, R_END, R_BLANK, R_COMMENT},
    {R_PASS_TREES, R_STRING, R_INT, R_2D, R_BOOL, R_END, R_BLANK, R_COMMENT},
    {R_INT, R_2D, R_END, R_BLANK, R_COMMENT}};

enum PART_PATTERN { P_INCLUDE, P_SUPPLY, P_END, P_BOOL, P_STRING, P_INT, P_ENUM, P_2D, P_CONT, P_COMMENT, P_BLANK };
const std::vector<const char*> PART_PATTERNS = {
    "^\\s*include\\s+\"(.+)\"\\s*$", "^\\s*power_supply\\s+(\\w+)\\s*$", "^\\s*end\\s*$",
    "^\\s*(BOOL_\\w+)\\s*=\\s*(\\w+)\\s*$", "^\\s*(STRING_\\w+)\\s*=\\s*\"([^\"]*)\"\\s*$",
    "^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*(ENUM_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*(2D_INT_\\w+)\\s*=\\s*(.+?)\\s*$",
    "^\\s*(\\{\\{?.+\\}\\}?)\\s*$", "^\\s*#.*$", "^\\s*$"};
const std::vector<int> PART_IN_BLOCK[] = {{P_STRING, P_INT, P_BOOL, P_ENUM, P_2D, P_BLANK, P_COMMENT},
                                          {P_STRING, P_INT, P_BOOL, P_ENUM, P_2D, P_END, P_BLANK, P_COMMENT}};

// Tries each line as a reader does: a line of an open 2D table against the continuation
// pattern, then the openers (`openers`, each giving its block), then its block's patterns
// until one matches; `end` closes the block, `table` is the 2D pattern. Lines matched.
size_t bare_match(bench::BARE_PATTERNS& p, const std::vector<std::string>& lines,
                  const std::vector<std::pair<int, int>>& openers, const std::vector<int>* in_block, int end,
                  int table, int continuation) {
    size_t matched = 0;
    int block = 0;
    bool in_table = false;
    for (const std::string& line : lines) {
        if (in_table && p.match(continuation, line)) {
            ++matched;
            continue;
        }
        in_table = false;
        bool opened = false;
        for (const auto& o : openers)
            if (p.match(o.first, line)) {
                if (o.second >= 0) block = o.second;
                opened = true;
                break;
            }
        if (opened) {
            ++matched;
            continue;
        }
        for (int name : in_block[block])
            if (p.match(name, line)) {
                if (name == end) block = 0;
                if (name == table) in_table = p.value_opens_table(line);
                ++matched;
                break;
            }
    }
    return matched;
}

void BM_RsiBareMatch(benchmark::State& state) {
    const std::vector<std::string> lines = bench::lines_of(bench::read_file(files().rsi_text));
    bench::BARE_PATTERNS patterns(RSI_PATTERNS);
    size_t matched = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(matched = bare_match(patterns, lines,
                                                      {{R_INCLUDE, -1}, {R_GLOBAL, 1}, {R_SWITCH, 2}, {R_TREE, 3}},
                                                      RSI_IN_BLOCK, R_END, R_2D, R_CONT));
    state.counters["lines"] = static_cast<double>(lines.size());
    state.counters["matched"] = static_cast<double>(matched);
}

void BM_PartInfoBareMatch(benchmark::State& state) {
    const std::vector<std::vector<std::string>> texts = lines_of_files(files().part_texts);
    bench::BARE_PATTERNS patterns(PART_PATTERNS);
    size_t matched = 0;
    for (auto _ : state) {
        matched = 0;
        for (const std::vector<std::string>& lines : texts)
            matched += bare_match(patterns, lines, {{P_INCLUDE, -1}, {P_SUPPLY, 1}}, PART_IN_BLOCK, P_END, P_2D, P_CONT);
        benchmark::DoNotOptimize(matched);
    }
    state.counters["matched"] = static_cast<double>(matched);
}

// ---------------------------------------------------------------------------------------
// ddbtool verify, timed from outside

// One run over the installation the benchmark reads (VELCORA_ROOTDIR).
void report_verify() {
    const auto start = std::chrono::steady_clock::now();
    std::FILE* p = popen((std::string(VELCORA_DDBTOOL) + " verify 2>/dev/null").c_str(), "r");
    if (!p) return;
    std::string out;
    char buffer[4096];
    for (size_t got; (got = std::fread(buffer, 1, sizeof buffer, p)) > 0;) out.append(buffer, got);
    const int status = pclose(p);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    int families = 0, devices = 0, parts = 0, checked = 0, errors = 0;
    const size_t total = out.rfind("total of ");
    if (total == std::string::npos ||
        std::sscanf(out.c_str() + total, "total of %d families: %d devices, %d parts, %d files checked, %d errors",
                    &families, &devices, &parts, &checked, &errors) != 5 || devices == 0) {
        std::printf("ddbtool verify: no total (exit status %d)\n", WEXITSTATUS(status));
        return;
    }
    std::printf("ddbtool verify of the installation: %.2f s for %d devices, %d parts, %d files (%d errors): "
                "%.1f ms per device\n",
                seconds, devices, parts, checked, errors, 1000 * seconds / devices);
}

}  // namespace

int main(int argc, char** argv) {
    bench::add("BM_RsiBareMatch", BM_RsiBareMatch);
    bench::add("BM_RsiParseText", BM_RsiParseText);
    bench::add("BM_RsiBareInflate", BM_RsiBareInflate);
    bench::add("BM_RsiLoadDdb", BM_RsiLoadDdb);
    bench::add("BM_PartInfoBareMatch", BM_PartInfoBareMatch);
    bench::add("BM_PartInfoParseTexts", BM_PartInfoParseTexts);
    bench::add("BM_PartInfoBareInflate", BM_PartInfoBareInflate);
    bench::add("BM_PartInfoLoadDdbs", BM_PartInfoLoadDdbs);
    bench::add("BM_DeviceFilesBareInflate", BM_DeviceFilesBareInflate);
    bench::add("BM_DeviceOpenAll", BM_DeviceOpenAll);
    benchmark::Initialize(&argc, argv);
    const FILES& f = files();
    std::printf("largest RSI text: %s (%ju bytes; its .ddb %ju bytes)\n", f.rsi_text.c_str(),
                static_cast<uintmax_t>(fs::file_size(f.rsi_text)), static_cast<uintmax_t>(fs::file_size(f.rsi_ddb)));
    std::printf("part info of its family: %zu texts (%ju bytes; their .ddb files %ju bytes)\n", f.part_texts.size(),
                total_size(f.part_texts), total_size(f.part_ddbs));
    std::printf("full open of %s: %zu .ddb files (%ju bytes)\n", dstr_get_debug_string(f.first_part),
                f.device_ddbs.size(), total_size(f.device_ddbs));
    bench::TIMES times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nratios of this run:\n");
    times.print_ratio("RSI text parse / bare anchored matching", "BM_RsiParseText", "BM_RsiBareMatch", 2);
    times.print_ratio("RSI text parse / .ddb load", "BM_RsiParseText", "BM_RsiLoadDdb", -10);
    times.print_ratio("RSI .ddb load / bare inflate", "BM_RsiLoadDdb", "BM_RsiBareInflate", 2.5);
    times.print_ratio("part info text parse / bare anchored matching", "BM_PartInfoParseTexts", "BM_PartInfoBareMatch", 2);
    times.print_ratio("part info text parse / .ddb load", "BM_PartInfoParseTexts", "BM_PartInfoLoadDdbs", -10);
    times.print_ratio("part info .ddb load / bare inflate", "BM_PartInfoLoadDdbs", "BM_PartInfoBareInflate", 2.5);
    times.print_ratio("device open, every aspect / bare inflates", "BM_DeviceOpenAll", "BM_DeviceFilesBareInflate", 3);
    report_verify();
    benchmark::Shutdown();
    return 0;
}
