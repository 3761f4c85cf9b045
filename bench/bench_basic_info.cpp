// The basic info of the largest installed device: parse of its HDR text (read_hdr_file into a
// new body), load of its ".ddb" file (load_hdr_from_pdb) and write of it (write_hdr_to_pdb at
// level 9), against two baselines of the same run: a bare zlib inflate of the same ".ddb"
// file read from disk, and the bare anchored matching of the same HDR lines (already in
// memory) with the reader's patterns tried in the reader's order until one matches. Prints
// the ratios, and the heap that one loaded body holds against the file's inflated size,
// measured in a fresh process of this program.
//
// The text is the largest of the build's staged and installed HDR files; the ".ddb" file is
// compiled from it at the start of the run. Run with VELCORA_ROOTDIR naming the bundled
// installation (as `make bench` does).
#define PCRE2_CODE_UNIT_WIDTH 8
#include <malloc.h>
#include <pcre2.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench_support.h"
#include "dev_basic_info_body.h"
#include "host/gen.h"

namespace {

namespace fs = std::filesystem;

std::string largest_hdr_text() {
    std::string best;
    uintmax_t best_size = 0;
    for (const std::string& root : {std::string(VELCORA_DEVICE_STAGING), gen_get_velcora_path() + "ddb"}) {
        std::error_code ec;
        for (fs::recursive_directory_iterator it(root, ec), end; !ec && it != end; it.increment(ec))
            if (it->path().extension() == ".hdr" && it->file_size() > best_size) {
                best_size = it->file_size();
                best = it->path().string();
            }
    }
    return best;
}

const std::string& text_file() {
    static const std::string path = largest_hdr_text();
    return path;
}

const std::string& ddb_file() {
    static const std::string path = [] {
        const std::string p = bench::scratch() + "/largest_hdr.ddb";
        DEV_BASIC_INFO_BODY body;
        if (!body.read_hdr_file(FIO_PATH(text_file())) || !body.write_hdr_to_pdb(FIO_PATH(p), 9)) std::abort();
        return p;
    }();
    return path;
}

void BM_ParseHdrText(benchmark::State& state) {
    const FIO_PATH text(text_file());
    for (auto _ : state) {
        auto body = std::make_unique<DEV_BASIC_INFO_BODY>();
        if (!body->read_hdr_file(text)) {
            state.SkipWithError("the text did not read");
            return;
        }
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
    state.counters["bytes"] = static_cast<double>(fs::file_size(text_file()));
}

void BM_LoadDdb(benchmark::State& state) {
    const FIO_PATH ddb(ddb_file());
    for (auto _ : state) {
        std::unique_ptr<DEV_BASIC_INFO_BODY> body(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(ddb));
        if (!body) {
            state.SkipWithError("the .ddb did not load");
            return;
        }
        state.PauseTiming();
        body.reset();
        state.ResumeTiming();
    }
}

void BM_WriteDdb(benchmark::State& state) {
    std::unique_ptr<DEV_BASIC_INFO_BODY> body(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(FIO_PATH(ddb_file())));
    const FIO_PATH out(bench::scratch() + "/written_hdr.ddb");
    for (auto _ : state)
        if (!body || !body->write_hdr_to_pdb(out, 9)) {
            state.SkipWithError("the .ddb was not written");
            return;
        }
    state.counters["bytes"] = static_cast<double>(fs::file_size(out.full_path()));
}

void BM_BareInflate(benchmark::State& state) {
    std::string out(256 << 20, '\0');
    size_t inflated = 0;
    for (auto _ : state)
        if ((inflated = bench::inflate_file(ddb_file(), out)) == 0) {
            state.SkipWithError("inflate failed");
            return;
        }
    state.counters["inflated"] = static_cast<double>(inflated);
}

// The reader's line patterns, compiled for PCRE2's JIT and matched anchored, without copying
// any group.
class BARE_PATTERNS {
public:
    enum NAME { INCLUDE, LOCATION, PORT, ELEMENT, END, BOOL, STRING, INT, ENUM, TWO_D, CONTINUATION, LOCATIONS, PORTS,
                COMMENT, BLANK, COUNT };
    BARE_PATTERNS() {
        static const char* const TEXTS[COUNT] = {
            "^\\s*include\\s+\"(.+)\"\\s*$", "^\\s*location\\s+(\\w+)\\s*$", "^\\s*port\\s+(\\w+)\\s*$",
            "^\\s*element\\s+(\\w+)\\s*$", "^\\s*end\\s*$", "^\\s*(BOOL_\\w+)\\s*=\\s*(\\w+)\\s*$",
            "^\\s*(STRING_\\w+)\\s*=\\s*\"([^\"]*)\"\\s*$", "^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$",
            "^\\s*(ENUM_\\w+)\\s*=\\s*(.+?)\\s*$", "^\\s*(2D_INT_\\w+)\\s*=\\s*(.+?)\\s*$",
            "^\\s*(\\{\\{?.+\\}\\}?)\\s*$", "^\\s*LOCATIONS\\s*=\\s*(.+?)\\s*$", "^\\s*PORTS\\s*=\\s*(.+?)\\s*$",
            "^\\s*#.*$", "^\\s*$"};
        for (int i = 0; i < COUNT; ++i) {
            int error;
            PCRE2_SIZE offset;
            m_code[i] = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(TEXTS[i]), PCRE2_ZERO_TERMINATED, PCRE2_ANCHORED,
                                      &error, &offset, nullptr);
            pcre2_jit_compile(m_code[i], PCRE2_JIT_COMPLETE);
        }
        m_data = pcre2_match_data_create(4, nullptr);
    }
    ~BARE_PATTERNS() {
        for (pcre2_code* c : m_code) pcre2_code_free(c);
        pcre2_match_data_free(m_data);
    }
    bool match(NAME name, const std::string& line) {
        return pcre2_jit_match(m_code[name], reinterpret_cast<PCRE2_SPTR>(line.data()), line.size(), 0, 0, m_data,
                               nullptr) > 0;
    }
    // The value group of the last match is exactly "{".
    bool value_opens_table(const std::string& line) const {
        const PCRE2_SIZE* v = pcre2_get_ovector_pointer(m_data);
        return v[5] - v[4] == 1 && line[v[4]] == '{';
    }

private:
    pcre2_code* m_code[COUNT];
    pcre2_match_data* m_data;
};

// The patterns a line is tried with after the block openers, per block, in the reader's order.
const std::vector<BARE_PATTERNS::NAME> IN_BLOCK[] = {
    {BARE_PATTERNS::STRING, BARE_PATTERNS::INT, BARE_PATTERNS::BOOL, BARE_PATTERNS::ENUM, BARE_PATTERNS::TWO_D,
     BARE_PATTERNS::COMMENT, BARE_PATTERNS::BLANK},
    {BARE_PATTERNS::STRING, BARE_PATTERNS::INT, BARE_PATTERNS::BOOL, BARE_PATTERNS::END, BARE_PATTERNS::COMMENT,
     BARE_PATTERNS::BLANK},
    {BARE_PATTERNS::STRING, BARE_PATTERNS::INT, BARE_PATTERNS::BOOL, BARE_PATTERNS::END, BARE_PATTERNS::COMMENT,
     BARE_PATTERNS::BLANK},
    {BARE_PATTERNS::LOCATIONS, BARE_PATTERNS::PORTS, BARE_PATTERNS::BOOL, BARE_PATTERNS::STRING, BARE_PATTERNS::INT,
     BARE_PATTERNS::TWO_D, BARE_PATTERNS::END, BARE_PATTERNS::COMMENT, BARE_PATTERNS::BLANK},
};

// Tries each line as the reader does: a line of a 2D table opened by "{" against the
// continuation pattern, then the include and block patterns, then the block's own patterns
// until one matches. Answers the number of lines matched.
size_t bare_match(BARE_PATTERNS& p, const std::vector<std::string>& lines) {
    enum { TOP, LOCATION, PORT, ELEMENT } block = TOP;
    bool in_table = false;
    size_t matched = 0;
    for (const std::string& line : lines) {
        if (in_table && p.match(BARE_PATTERNS::CONTINUATION, line)) {
            ++matched;
            continue;
        }
        in_table = false;
        if (p.match(BARE_PATTERNS::INCLUDE, line)) {
            ++matched;
            continue;
        }
        if (p.match(BARE_PATTERNS::LOCATION, line) || p.match(BARE_PATTERNS::PORT, line) ||
            p.match(BARE_PATTERNS::ELEMENT, line)) {
            block = line.find("location") != std::string::npos ? LOCATION
                    : line.find("port") != std::string::npos   ? PORT
                                                               : ELEMENT;
            ++matched;
            continue;
        }
        for (BARE_PATTERNS::NAME name : IN_BLOCK[block])
            if (p.match(name, line)) {
                if (name == BARE_PATTERNS::END) block = TOP;
                if (name == BARE_PATTERNS::TWO_D) in_table = p.value_opens_table(line);
                ++matched;
                break;
            }
    }
    return matched;
}

void BM_BareAnchoredMatch(benchmark::State& state) {
    std::vector<std::string> lines;
    {
        const std::string text = bench::read_file(text_file());
        for (size_t at = 0, next; at < text.size(); at = next + 1) {
            next = text.find('\n', at);
            if (next == std::string::npos) next = text.size();
            lines.emplace_back(text, at, next - at);
        }
    }
    BARE_PATTERNS patterns;
    size_t matched = 0;
    for (auto _ : state) benchmark::DoNotOptimize(matched = bare_match(patterns, lines));
    state.counters["lines"] = static_cast<double>(lines.size());
    state.counters["matched"] = static_cast<double>(matched);
}

// Child mode: one load of FILE in a fresh process; prints the heap the loaded body holds
// (mallinfo2) and the file's inflated size.
int child_memory(const char* file) {
    const size_t before = mallinfo2().uordblks;
    std::unique_ptr<DEV_BASIC_INFO_BODY> body(DEV_BASIC_INFO_BODY::load_hdr_from_pdb(FIO_PATH(file)));
    const size_t held = mallinfo2().uordblks - before;
    if (!body) return 1;
    std::string out(256 << 20, '\0');
    std::printf("%zu %zu %zu %zu %zu\n", held, bench::inflate_file(file, out), body->get_location_descs().size(),
                body->get_element_descs().size(), body->get_port_descs().size());
    return 0;
}

void report_memory() {
    size_t held = 0, inflated = 0, locations = 0, elements = 0, ports = 0;
    const std::string out = bench::run_child("--child-memory " + ddb_file());
    if (std::sscanf(out.c_str(), "%zu %zu %zu %zu %zu", &held, &inflated, &locations, &elements, &ports) != 5 ||
        inflated == 0) {
        std::printf("memory: the child load failed\n");
        return;
    }
    std::printf("heap held by the loaded body (%zu locations, %zu elements, %zu ports): %zu bytes, "
                "%.2fx the inflated .ddb (%zu bytes; goal <= 2x)\n",
                locations, elements, ports, held, static_cast<double>(held) / inflated, inflated);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "--child-memory") == 0) return child_memory(argv[2]);
    bench::add("BM_BareAnchoredMatch", BM_BareAnchoredMatch);
    bench::add("BM_ParseHdrText", BM_ParseHdrText);
    bench::add("BM_BareInflate", BM_BareInflate);
    bench::add("BM_LoadDdb", BM_LoadDdb);
    bench::add("BM_WriteDdb", BM_WriteDdb);
    benchmark::Initialize(&argc, argv);
    std::printf("largest HDR text: %s (%ju bytes); its .ddb: %ju bytes\n", text_file().c_str(),
                static_cast<uintmax_t>(fs::file_size(text_file())), static_cast<uintmax_t>(fs::file_size(ddb_file())));
    bench::TIMES times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nratios of this run:\n");
    times.print_ratio("HDR text parse / bare anchored matching", "BM_ParseHdrText", "BM_BareAnchoredMatch", 2);
    times.print_ratio("HDR text parse / .ddb load", "BM_ParseHdrText", "BM_LoadDdb", -10);
    times.print_ratio(".ddb load / bare inflate", "BM_LoadDdb", "BM_BareInflate", 2.5);
    times.print_ratio(".ddb write (level 9) / .ddb load", "BM_WriteDdb", "BM_LoadDdb");
    report_memory();
    benchmark::Shutdown();
    return 0;
}
