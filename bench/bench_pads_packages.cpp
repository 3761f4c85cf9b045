// Pads and packages of the largest installed PAD and PKG files (their staged texts; the
// families keep them compiled):
//
//   - PAD and PKG text parse (read_pad_file, read_pkg_file) against the bare anchored
//     matching of the same lines, in memory, with the reader's patterns in its order;
//   - their ".ddb" load (load_pad_from_pdb, load_pkg_from_pdb) and write against a bare zlib
//     inflate of the same file read from disk;
//   - pad look-ups by name and by global id and pin look-ups by name, every key once per
//     iteration, against a std::unordered_map of the same keys;
//   - the heap one loaded body holds, per pad and per pin (mallinfo2).
//
// Run with VELCORA_ROOTDIR naming the bundled installation (as `make bench` does).
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench_patterns.h"
#include "bench_support.h"
#include "dev_device_factory.h"
#include "dev_family_info_mgr_body.h"
#include "dev_pad_info.h"
#include "dev_path.h"
#include "dev_pkg_info.h"
#include "host/dstr.h"
#include "host/msg.h"

namespace {

namespace fs = std::filesystem;

// A compiled file and the staged text it was compiled from.
struct COMPILED {
    std::string ddb, text;
};

// The staged text of <root>/ddb/<folder>/<base>_<kind>.ddb: <staging>/<folder>/<base>.<kind>.
COMPILED compiled(const FIO_PATH& ddb, const std::string& kind) {
    const fs::path p(ddb.full_path());
    const std::string name = p.filename().string();
    return {ddb.full_path(), std::string(VELCORA_DEVICE_STAGING) + "/" + p.parent_path().filename().string() + "/" +
                                 name.substr(0, name.size() - kind.size() - 5) + "." + kind};
}

// Of the files the search finds for `keys`, the compiled one with the largest text.
template <typename ENUM>
COMPILED largest(int first, int end, const char* kind, ENUM* chosen) {
    COMPILED best;
    uintmax_t largest = 0;
    for (int k = first; k < end; ++k) {
        FIO_PATH path;
        if (!DEV_PATH::get_existing_device_file_path(ENUM(k), kind, &path) || !DEV_PATH::is_pdb_file(path)) continue;
        const COMPILED c = compiled(path, kind);
        std::error_code ec;
        const uintmax_t size = fs::file_size(c.text, ec);
        if (!ec && size > largest) largest = size, best = c, *chosen = ENUM(k);
    }
    if (best.ddb.empty()) std::abort();
    return best;
}

struct FILES {
    DEV_DEVICE_ENUM device = DEV_DEVICE_INVALID;
    DEV_PART_ENUM part = DEV_PART_INVALID;
    COMPILED pad, pkg;
    std::unique_ptr<DEV_DEVICE> opened;  // the PAD reader asks its basic info for the family
};

const FILES& files() {
    static const FILES* const f = [] {
        MSG_CAPTURE quiet;
        auto* f = new FILES;
        f->pad = largest(DEV_DEVICE_INVALID + 1, DEV_DEVICE_GENERIC, "pad", &f->device);
        f->pkg = largest(DEV_PART_INVALID + 1, DEV_PART_GENERIC, "pkg", &f->part);
        f->opened.reset(DEV_DEVICE_FACTORY::create(f->device, DEV_DEVICE_FACTORY::BASIC_INFO));
        return f;
    }();
    return *f;
}

// ---------------------------------------------------------------------------------------
// Parse, load, write, bare inflate

template <typename BODY>
void parse(benchmark::State& state, const std::string& text, bool (BODY::*read)(const FIO_PATH&)) {
    MSG_CAPTURE quiet;
    for (auto _ : state) {
        std::unique_ptr<BODY> body(new BODY);
        body->set_device(files().opened.get());
        if (!(body.get()->*read)(FIO_PATH(text))) return state.SkipWithError("the text did not read");
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
}

// The bodies loaded are freed outside the timing.
template <typename BODY>
void load(benchmark::State& state, const std::string& ddb, BODY* (*load_file)(const FIO_PATH&)) {
    MSG_CAPTURE quiet;
    for (auto _ : state) {
        std::unique_ptr<BODY> body(load_file(FIO_PATH(ddb)));
        if (!body) return state.SkipWithError("the .ddb did not load");
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
}

template <typename BODY>
void write(benchmark::State& state, const std::string& ddb, BODY* (*load_file)(const FIO_PATH&),
           bool (BODY::*write_file)(const FIO_PATH&, int)) {
    MSG_CAPTURE quiet;
    std::unique_ptr<BODY> body(load_file(FIO_PATH(ddb)));
    const FIO_PATH target(bench::scratch() + "/written.ddb");
    for (auto _ : state)
        if (!(body.get()->*write_file)(target, 9)) return state.SkipWithError("the .ddb was not written");
}

void inflate(benchmark::State& state, const std::string& ddb) {
    std::string out(256 << 20, '\0');
    size_t inflated = 0;
    for (auto _ : state)
        if ((inflated = bench::inflate_file(ddb, out)) == 0) return state.SkipWithError("inflate failed");
    state.counters["inflated"] = static_cast<double>(inflated);
}

void BM_PadTextParse(benchmark::State& s) { parse(s, files().pad.text, &DEV_PAD_INFO_BODY::read_pad_file); }
void BM_PadDdbLoad(benchmark::State& s) { load(s, files().pad.ddb, &DEV_PAD_INFO_BODY::load_pad_from_pdb); }
void BM_PadDdbWrite(benchmark::State& s) {
    write(s, files().pad.ddb, &DEV_PAD_INFO_BODY::load_pad_from_pdb, &DEV_PAD_INFO_BODY::write_pad_to_pdb);
}
void BM_PadBareInflate(benchmark::State& s) { inflate(s, files().pad.ddb); }
void BM_PkgTextParse(benchmark::State& s) { parse(s, files().pkg.text, &DEV_PKG_INFO_BODY::read_pkg_file); }
void BM_PkgDdbLoad(benchmark::State& s) { load(s, files().pkg.ddb, &DEV_PKG_INFO_BODY::load_pkg_from_pdb); }
void BM_PkgDdbWrite(benchmark::State& s) {
    write(s, files().pkg.ddb, &DEV_PKG_INFO_BODY::load_pkg_from_pdb, &DEV_PKG_INFO_BODY::write_pkg_to_pdb);
}
void BM_PkgBareInflate(benchmark::State& s) { inflate(s, files().pkg.ddb); }

// ---------------------------------------------------------------------------------------
// Bare anchored matching: each line against the reader's patterns in its order until one
// matches (a 2D table's rows first against the continuation pattern, as the readers do)

const char* const CONTINUATION = "^\\s*(\\{\\{?.+\\}\\}?)\\s*$";

const std::vector<const char*> PAD_PATTERNS = {
    CONTINUATION, "^\\s*include\\s+\"(.+)\"\\s*$", "^\\s*io_standard\\s+(\\w+)\\s*$", "^\\s*io_rule\\s+(\\w+)\\s*$",
    "^\\s*pad\\s+(\\w+)\\s*$", "^\\s*default_pad\\s*$", "\\s*IO_STANDARDS\\s*=\\s*(.+?)\\s*$",
    "\\s*CURRENT_SET\\s*=\\s*(.+?)\\s*$", "\\s*REAL_GND_CURRENT\\[(\\w+)\\]\\s*=\\s*(-?\\d+)\\s*$",
    "\\s*REAL_VCC_CURRENT\\[(\\w+)\\]\\s*=\\s*(-?\\d+)\\s*$", "\\s*(STRING_\\w+)\\s*=\\s*\"([^\"]*)\"\\s*$",
    "\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$", "\\s*(BOOL_\\w+)\\s*=\\s*(\\w+)\\s*$",
    "^\\s*(VEC_STRING_\\w+)\\s*=\\s*(\\{.+\\})\\s*$", "^\\s*(2D_INT_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*end\\s*$",
    "^\\s*#.*$", "^\\s*$"};
const size_t PAD_TABLE = 14;

const std::vector<const char*> PKG_PATTERNS = {
    CONTINUATION, "^\\s*include\\s+\"(.+)\"\\s*$", "^\\s*pin\\s+(\\w+)\\s*$", "^\\s*INT_NUM_PINS\\s*=\\s*(\\w+)\\s*$",
    "^\\s*PAD_IDS\\s*=\\s*(.+?)\\s*$", "^\\s*(STRING_\\w+)\\s*=\\s*\"([^\"]*)\"\\s*$",
    "^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*(BOOL_\\w+)\\s*=\\s*(\\w+)$", "^\\s*(VEC_DOUBLE_\\w+)\\s*=\\s*(.+?)\\s*$",
    "^\\s*(VEC_INT_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*(2D_INT_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*end\\s*$", "^\\s*#.*$",
    "^\\s*$"};
const size_t PKG_TABLE = 10;

void bare_match(benchmark::State& state, const std::string& text, const std::vector<const char*>& texts,
                size_t table) {
    const std::vector<std::string> lines = bench::lines_of(bench::read_file(text));
    bench::BARE_PATTERNS patterns(texts);
    size_t matched = 0;
    for (auto _ : state) {
        matched = 0;
        bool in_table = false;
        for (const std::string& line : lines) {
            for (size_t p = in_table ? 0 : 1; p < texts.size(); ++p)
                if (patterns.match(p, line)) {
                    in_table = p == 0 || (p == table && patterns.value_opens_table(line));
                    ++matched;
                    break;
                }
        }
        benchmark::DoNotOptimize(matched);
    }
    if (matched != lines.size()) state.SkipWithError("a line matched no pattern");
}

void BM_PadBareMatch(benchmark::State& s) { bare_match(s, files().pad.text, PAD_PATTERNS, PAD_TABLE); }
void BM_PkgBareMatch(benchmark::State& s) { bare_match(s, files().pkg.text, PKG_PATTERNS, PKG_TABLE); }

// ---------------------------------------------------------------------------------------
// Look-ups, every key once per iteration

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
        l->pads.reset(DEV_PAD_INFO_BODY::load_pad_from_pdb(FIO_PATH(files().pad.ddb)));
        l->pkg.reset(DEV_PKG_INFO_BODY::load_pkg_from_pdb(FIO_PATH(files().pkg.ddb)));
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

// The heap that loading one body holds.
template <typename BODY>
size_t held_by(BODY* (*load_file)(const FIO_PATH&), const std::string& ddb, std::unique_ptr<BODY>* body) {
    MSG_CAPTURE quiet;
    const size_t before = mallinfo2().uordblks;
    body->reset(load_file(FIO_PATH(ddb)));
    return mallinfo2().uordblks - before;
}

}  // namespace

int main(int argc, char** argv) {
    bench::add("BM_PadBareMatch", BM_PadBareMatch);
    bench::add("BM_PadTextParse", BM_PadTextParse);
    bench::add("BM_PadBareInflate", BM_PadBareInflate);
    bench::add("BM_PadDdbLoad", BM_PadDdbLoad);
    bench::add("BM_PadDdbWrite", BM_PadDdbWrite);
    bench::add("BM_PkgBareMatch", BM_PkgBareMatch);
    bench::add("BM_PkgTextParse", BM_PkgTextParse);
    bench::add("BM_PkgBareInflate", BM_PkgBareInflate);
    bench::add("BM_PkgDdbLoad", BM_PkgDdbLoad);
    bench::add("BM_PkgDdbWrite", BM_PkgDdbWrite);
    const std::pair<const char*, void (*)(benchmark::State&)> lookups[] = {
        {"BM_PadByName", BM_PadByName}, {"BM_PadByNameMap", BM_PadByNameMap}, {"BM_PadByGid", BM_PadByGid},
        {"BM_PadByGidMap", BM_PadByGidMap}, {"BM_PinByName", BM_PinByName}, {"BM_PinByNameMap", BM_PinByNameMap}};
    for (const auto& l : lookups) bench::add(l.first, l.second, benchmark::kNanosecond);
    benchmark::Initialize(&argc, argv);
    const FILES& f = files();
    std::printf("largest PAD text: %s (%ju bytes; its .ddb %ju bytes)\n", f.pad.text.c_str(),
                static_cast<uintmax_t>(fs::file_size(f.pad.text)), static_cast<uintmax_t>(fs::file_size(f.pad.ddb)));
    std::printf("largest PKG text: %s (%ju bytes; its .ddb %ju bytes)\n", f.pkg.text.c_str(),
                static_cast<uintmax_t>(fs::file_size(f.pkg.text)), static_cast<uintmax_t>(fs::file_size(f.pkg.ddb)));
    bench::TIMES times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nratios of this run:\n");
    times.print_ratio("PAD text parse / bare anchored matching", "BM_PadTextParse", "BM_PadBareMatch", 2);
    times.print_ratio("PAD text parse / .ddb load", "BM_PadTextParse", "BM_PadDdbLoad", -10);
    times.print_ratio("PAD .ddb load / bare inflate", "BM_PadDdbLoad", "BM_PadBareInflate", 2.5);
    times.print_ratio("PAD .ddb write, level 9 / .ddb load", "BM_PadDdbWrite", "BM_PadDdbLoad");
    times.print_ratio("PKG text parse / bare anchored matching", "BM_PkgTextParse", "BM_PkgBareMatch", 2);
    times.print_ratio("PKG text parse / .ddb load", "BM_PkgTextParse", "BM_PkgDdbLoad", -10);
    times.print_ratio("PKG .ddb load / bare inflate", "BM_PkgDdbLoad", "BM_PkgBareInflate", 2.5);
    times.print_ratio("PKG .ddb write, level 9 / .ddb load", "BM_PkgDdbWrite", "BM_PkgDdbLoad");
    times.print_ratio("pad by name / std::unordered_map", "BM_PadByName", "BM_PadByNameMap", 2);
    times.print_ratio("pad by global id / std::unordered_map", "BM_PadByGid", "BM_PadByGidMap", 2);
    times.print_ratio("pin by name / std::unordered_map", "BM_PinByName", "BM_PinByNameMap", 2);
    std::unique_ptr<DEV_PAD_INFO_BODY> pads;
    std::unique_ptr<DEV_PKG_INFO_BODY> pkg;
    const size_t pad_bytes = held_by(&DEV_PAD_INFO_BODY::load_pad_from_pdb, f.pad.ddb, &pads);
    const size_t pkg_bytes = held_by(&DEV_PKG_INFO_BODY::load_pkg_from_pdb, f.pkg.ddb, &pkg);
    if (pads && pkg)
        std::printf("\nheap held by one loaded body: %zu bytes for %u pads of %s (%.0f per pad, descriptors and "
                    "rules included); %zu bytes for %u pins of %s (%.0f per pin)\n",
                    pad_bytes, pads->get_number_of_pads(), dstr_get_debug_string(f.device),
                    static_cast<double>(pad_bytes) / pads->get_number_of_pads(), pkg_bytes, pkg->get_number_of_pins(),
                    dstr_get_debug_string(f.part), static_cast<double>(pkg_bytes) / pkg->get_number_of_pins());
    benchmark::Shutdown();
    return 0;
}
