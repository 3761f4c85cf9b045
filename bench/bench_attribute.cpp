// Attribute lines handled per second (pattern match, key look-up, value conversion,
// store) against the bare anchored pattern matches of the same lines in the same run.
// Both sides try the kinds' patterns in the same order (BOOL, INT, ENUM, STRING, 2D_INT,
// VEC_INT, VEC_DOUBLE, VEC_STRING) until one matches.
#include "bench_support.h"

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "host/tables/dev_temperature_enum.h"
#include "host/tables/dev_voltage_enum.h"
#include "ddb/dev/dev_attribute_io.h"

namespace {

class BENCH_RECORD
    : public DEV_ATTRIBUTE_TABLE<DEV_BASIC_INFO_BOOL_DATA_ENUM, DEV_BASIC_INFO_INT_DATA_ENUM,
                                 DEV_BASIC_INFO_ENUM_DATA_ENUM, DEV_BASIC_INFO_STRING_DATA_ENUM,
                                 DEV_BASIC_INFO_2D_INT_DATA_ENUM, DEV_PIN_VEC_INT_DATA_ENUM,
                                 DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM, DEV_PAD_INFO_VEC_STRING_DATA_ENUM> {};

const size_t LINE_COUNT = 300000;

template <typename KEY>
const char* key_name(unsigned r) {
    return astr_get_debug_string(static_cast<KEY>(r % ASTR_KEY_TRAITS<KEY>::MAX));
}

// The line sets: every kind mixed, the one-value kinds alone, the list kinds alone.
enum MIX { MIX_ALL, MIX_SCALAR, MIX_LIST, MIX_COUNT };
const char* const MIX_NAMES[MIX_COUNT] = {"all kinds", "BOOL/INT/ENUM/STRING", "2D_INT/VEC_*"};

// A deterministic mix; INT values are numbers or names of the key's values. In the full
// mix a quarter of the lines are BOOL, a quarter INT, 3/20 STRING and 3/10 2D or vector.
std::vector<std::string> make_lines(MIX mix) {
    {
        std::vector<std::string> v;
        v.reserve(LINE_COUNT);
        const DSTR_TABLE& volts = dstr_table_dev_voltage_enum();
        const DSTR_TABLE& grades = dstr_table_dev_temperature_enum();
        unsigned seed = 2024;
        char buf[256];
        for (size_t i = 0; i < LINE_COUNT; ++i) {
            seed = seed * 1103515245u + 12345u;
            const unsigned r = (seed >> 8) % 100000;
            unsigned pick = i % 20;
            if (mix == MIX_SCALAR) pick = i % 14;
            if (mix == MIX_LIST) pick = 14 + i % 6;
            switch (pick) {
            case 0: case 1: case 2: case 3: case 4:
                std::snprintf(buf, sizeof buf, "\t%s = %s", key_name<DEV_BASIC_INFO_BOOL_DATA_ENUM>(r),
                              r & 1 ? "true" : "false");
                break;
            case 5: case 6: case 7: case 8:
                std::snprintf(buf, sizeof buf, "\t%s = %d", key_name<DEV_BASIC_INFO_INT_DATA_ENUM>(r),
                              static_cast<int>(r) - 50000);
                break;
            case 9:
                std::snprintf(buf, sizeof buf, "INT_CORE_VOLTAGE = %s", volts.entry(r % volts.size()).debug);
                break;
            case 10:
                std::snprintf(buf, sizeof buf, "ENUM_TEMPERATURE = %s", grades.entry(r % grades.size()).debug);
                break;
            case 11: case 12: case 13:
                std::snprintf(buf, sizeof buf, "\t%s = \"value %u, part %u\"",
                              key_name<DEV_BASIC_INFO_STRING_DATA_ENUM>(r), r, r % 7);
                break;
            case 14: case 15:
                std::snprintf(buf, sizeof buf, "%s = {{%u, 2, 3}, {-4, %u}}",
                              key_name<DEV_BASIC_INFO_2D_INT_DATA_ENUM>(r), r, r % 13);
                break;
            case 16: case 17:
                std::snprintf(buf, sizeof buf, "\t%s = {%u, %u, -3}", key_name<DEV_PIN_VEC_INT_DATA_ENUM>(r), r,
                              r % 11);
                break;
            case 18:
                std::snprintf(buf, sizeof buf, "%s = {1.5, %u.25, 3e2}",
                              key_name<DEV_PKG_INFO_VEC_DOUBLE_DATA_ENUM>(r), r);
                break;
            default:
                std::snprintf(buf, sizeof buf, "%s = {\"bank %u, left\", b%u}",
                              key_name<DEV_PAD_INFO_VEC_STRING_DATA_ENUM>(r), r, r % 5);
                break;
            }
            v.emplace_back(buf);
        }
        return v;
    }
}

const std::vector<std::string>& lines(int64_t mix) {
    static std::vector<std::string> sets[MIX_COUNT];
    if (sets[mix].empty()) sets[mix] = make_lines(static_cast<MIX>(mix));
    return sets[mix];
}

void BM_BareAnchoredMatch(benchmark::State& state) {
    const DEV_ATTRIBUTE_FORMAT& format = DEV_ATTRIBUTE_FORMAT::hdr();
    std::vector<VTL_REGEXP> patterns;
    for (int k = 0; k < ASTR_KIND_COUNT; ++k)
        patterns.emplace_back(DEV_REGEXP(format.pattern[k]).engine_pattern());
    const std::vector<std::string>& input = lines(state.range(0));
    for (auto _ : state) {
        long matched = 0;
        for (const std::string& line : input)
            for (VTL_REGEXP& re : patterns)
                if (re.match(line.data(), 0, VTL_RANGE::npos, line.size()) >= 0) {
                    ++matched;
                    break;
                }
        if (matched != static_cast<long>(input.size())) state.SkipWithError("a line matched no pattern");
        benchmark::DoNotOptimize(matched);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * input.size()));
}

void BM_AttributeLines(benchmark::State& state) {
    DEV_ATTRIBUTE_SYNTAX syntax(DEV_ATTRIBUTE_FORMAT::hdr());
    const std::vector<std::string>& input = lines(state.range(0));
    std::string message, pending;
    bool has_pending = false;
    auto no_more_lines = [](std::string&) { return false; };
    for (auto _ : state) {
        BENCH_RECORD record;
        long stored = 0;
        for (const std::string& line : input)
            stored += dev_attribute_read_any(syntax, line, record, &message, no_more_lines, &pending,
                                             &has_pending) == DEV_ATTRIBUTE_STORED;
        if (stored != static_cast<long>(input.size())) state.SkipWithError(message.c_str());
        benchmark::DoNotOptimize(record);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * input.size()));
}

BENCHMARK(BM_BareAnchoredMatch)->DenseRange(0, MIX_COUNT - 1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AttributeLines)->DenseRange(0, MIX_COUNT - 1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::printf("%zu attribute lines per set\n", LINE_COUNT);
    bench::TIMES times;
    benchmark::RunSpecifiedBenchmarks(&times);
    std::printf("\nattribute lines handled / bare anchored matches of the same lines (CPU):\n");
    for (int mix = 0; mix < MIX_COUNT; ++mix) {
        const std::string arg = "/" + std::to_string(mix);
        const double bare = times.cpu("BM_BareAnchoredMatch" + arg), full = times.cpu("BM_AttributeLines" + arg);
        if (bare > 0 && full > 0) std::printf("  %-22s %.2fx (goal <= 1.5x)\n", MIX_NAMES[mix], full / bare);
    }
    benchmark::Shutdown();
    return 0;
}
