// Anchored DEV_REGEXP::match over attribute-style lines against PCRE2 called directly with
// the same translated patterns (JIT, one match data per pattern). Each line is tried
// against the four attribute patterns in order until one matches, as a parser does.
#define PCRE2_CODE_UNIT_WIDTH 8
#include <benchmark/benchmark.h>
#include <pcre2.h>

#include <cstdio>
#include <string>
#include <vector>

#include "dev_utility.h"

namespace {

const char* const PATTERNS[] = {
    "^\\s*(BOOL_\\w+)\\s*=\\s*(\\w+)\\s*$",
    "^\\s*(INT_\\w+)\\s*=\\s*(.+?)\\s*$",
    "^\\s*(STRING_\\w+)\\s*=\\s*\"([^\"]*)\"\\s*$",
    "^\\s*(2D_INT_\\w+)\\s*=\\s*(.+?)\\s*$",
};
const int PATTERN_COUNT = 4;
const size_t LINE_COUNT = 300000;

// Deterministic mix: a fifth of each kind, and a fifth that matches no pattern.
const std::vector<std::string>& lines() {
    static const std::vector<std::string> all = [] {
        std::vector<std::string> v;
        v.reserve(LINE_COUNT);
        unsigned seed = 12345;
        char buf[160];
        for (size_t i = 0; i < LINE_COUNT; ++i) {
            seed = seed * 1103515245u + 12345u;
            unsigned r = (seed >> 8) % 1000;
            switch (i % 5) {
            case 0: std::snprintf(buf, sizeof buf, "\tBOOL_IS_FEATURE_%u = %s", r, r & 1 ? "true" : "false"); break;
            case 1: std::snprintf(buf, sizeof buf, "  INT_NUMBER_OF_ITEMS_%u = %u  ", r, r * 7); break;
            case 2: std::snprintf(buf, sizeof buf, "\tSTRING_DISPLAY_NAME_%u = \"name of item %u\"", r, r); break;
            case 3: std::snprintf(buf, sizeof buf, "\t2D_INT_SETTINGS_%u = {{%u, 2, 3}, {4, %u}}", r, r, r + 1); break;
            default:
                if (r & 1) std::snprintf(buf, sizeof buf, "# comment line %u about INT_THINGS = %u", r, r);
                else std::snprintf(buf, sizeof buf, "pad %u", r);
                break;
            }
            v.emplace_back(buf);
        }
        return v;
    }();
    return all;
}

void BM_dev_regexp_match(benchmark::State& state) {
    std::vector<DEV_REGEXP> res;
    for (const char* p : PATTERNS) res.emplace_back(p);
    const std::vector<std::string>& input = lines();
    for (auto _ : state) {
        long matched = 0;
        for (const std::string& line : input)
            for (DEV_REGEXP& re : res)
                if (re.match(line)) {
                    ++matched;
                    break;
                }
        benchmark::DoNotOptimize(matched);
    }
    state.SetItemsProcessed(state.iterations() * input.size());
}

// The same patterns compiled and JIT-compiled directly (anchored at compile time, as the
// JIT needs), one match data per pattern.
struct DIRECT_PATTERNS {
    pcre2_code* codes[PATTERN_COUNT] = {};
    pcre2_match_data* data[PATTERN_COUNT] = {};
    bool ok = true;
    DIRECT_PATTERNS() {
        for (int i = 0; i < PATTERN_COUNT; ++i) {
            const std::string text = DEV_REGEXP(PATTERNS[i]).engine_pattern();
            int error = 0;
            PCRE2_SIZE offset = 0;
            codes[i] = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(),
                                     PCRE2_ANCHORED, &error, &offset, nullptr);
            ok = ok && codes[i] && pcre2_jit_compile(codes[i], PCRE2_JIT_COMPLETE) == 0;
            if (codes[i]) data[i] = pcre2_match_data_create_from_pattern(codes[i], nullptr);
        }
    }
    ~DIRECT_PATTERNS() {
        for (int i = 0; i < PATTERN_COUNT; ++i) {
            pcre2_match_data_free(data[i]);
            pcre2_code_free(codes[i]);
        }
    }
};

// `jit_fast_path`: pcre2_jit_match (no argument checks) instead of pcre2_match.
template <bool jit_fast_path>
void BM_pcre2_direct(benchmark::State& state) {
    DIRECT_PATTERNS p;
    if (!p.ok) {
        state.SkipWithError("pattern does not compile or JIT is unavailable");
        return;
    }
    const std::vector<std::string>& input = lines();
    for (auto _ : state) {
        long matched = 0;
        for (const std::string& line : input) {
            auto* s = reinterpret_cast<PCRE2_SPTR>(line.data());
            for (int i = 0; i < PATTERN_COUNT; ++i) {
                int rc = jit_fast_path
                             ? pcre2_jit_match(p.codes[i], s, line.size(), 0, 0, p.data[i], nullptr)
                             : pcre2_match(p.codes[i], s, line.size(), 0, 0, p.data[i], nullptr);
                if (rc >= 0) {
                    ++matched;
                    break;
                }
            }
        }
        benchmark::DoNotOptimize(matched);
    }
    state.SetItemsProcessed(state.iterations() * input.size());
}

void BM_pcre2_direct_match(benchmark::State& state) { BM_pcre2_direct<false>(state); }
void BM_pcre2_jit_direct_match(benchmark::State& state) { BM_pcre2_direct<true>(state); }

BENCHMARK(BM_pcre2_direct_match)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_pcre2_jit_direct_match)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_dev_regexp_match)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
