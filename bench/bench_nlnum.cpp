// NLNUM (2 decimals, de_DE and en_US) and NLPCT (2 decimals, en_US) per value, through the C ABI
// with one warm call record (a host session, its property table already built), beside ICU's
// unum_formatDouble with a cached UNumberFormat of the same style (decimal, percent) and the same
// fraction digits, and glibc snprintf("%'.2f") under uselocale of the same locale (its own
// grouping and point; "%" appended for the percentages), in the same run. Each iteration formats
// one batch of values three ways, each batch timed on its own; the benchmark's time is ours
// (manual time) and the counters give nanoseconds per value for each and the ratios ours / peer
// (below 1: faster).

#include <benchmark/benchmark.h>

#include <unicode/unum.h>

#include <array>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <string>

#include "peers.h"
#include "session.h"
#include "side_by_side.h"

namespace {

using vxbench::loaded_library;
using clock_type = std::chrono::steady_clock;

// Amounts from -5e6 to 5e6 with every digit position used, signs mixed, a few small ones.
constexpr std::size_t batch = 64;
std::array<double, batch> amounts() {
    std::array<double, batch> values{};
    std::uint64_t state = 0x9E3779B97F4A7C15ull;
    for (std::size_t i = 0; i < batch; ++i) {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        const double unit = static_cast<double>(state >> 11) / 9007199254740992.0;  // [0, 1)
        values[i] = (unit - 0.5) * (i % 4 == 0 ? 20.0 : 1e7);
    }
    return values;
}

constexpr std::int32_t width = 16;
constexpr std::int32_t decimals = 2;

void run(benchmark::State& state, const char* locale, std::u32string_view format, UNumberFormatStyle style,
         bool percent) {
    const vxlocfmt::FuncInfo* row = loaded_library().find(format);
    vxhost::SessionOptions options;
    options.locale = locale;
    vxhost::Session session(loaded_library(), options);
    session.format(*row, width, decimals, 0);  // builds the property table: the call record is warm
    vxlocfmt::FmtCall& call = session.call();
    std::array<vxlocfmt::wchar, 64> cells{};
    double value = 1234.5;
    call.width = width;
    call.decimals = decimals;
    call.capacity = static_cast<std::int32_t>(cells.size());
    call.output = cells.data();
    call.input = &value;
    if (row->function(&call, nullptr) != 0 || cells[width - 1] == U'*') {
        state.SkipWithError("the format writes no number");
        return;
    }

    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* icu = unum_open(style, nullptr, 0, locale, nullptr, &error);
    if (U_FAILURE(error)) {
        state.SkipWithError("ICU cannot open the number format");
        return;
    }
    unum_setAttribute(icu, UNUM_MIN_FRACTION_DIGITS, decimals);
    unum_setAttribute(icu, UNUM_MAX_FRACTION_DIGITS, decimals);
    unum_setAttribute(icu, UNUM_ROUNDING_MODE, UNUM_ROUND_HALFUP);
    UChar icu_text[64];
    vxbench::CLocale clocale(locale, vxbench::locale_cache());
    char c_text[64];

    std::array<double, batch> values = amounts();
    if (percent)
        for (double& v : values) v /= 1e5;  // percentages of a few hundred
    double ours_ns = 0, icu_ns = 0, c_ns = 0;
    const char* const c_format = percent ? "%'.2f%%" : "%'.2f";
    for (auto _ : state) {
        const auto t0 = clock_type::now();
        for (double v : values) {
            value = v;
            benchmark::DoNotOptimize(row->function(&call, nullptr));
            benchmark::ClobberMemory();
        }
        const auto t1 = clock_type::now();
        for (double v : values) {
            UErrorCode e = U_ZERO_ERROR;
            benchmark::DoNotOptimize(unum_formatDouble(icu, v, icu_text, 64, nullptr, &e));
            benchmark::ClobberMemory();
        }
        const auto t2 = clock_type::now();
        if (clocale.handle()) {
            const locale_t saved = uselocale(clocale.handle());
            for (double v : values) {
                benchmark::DoNotOptimize(std::snprintf(c_text, sizeof c_text, c_format, percent ? v * 100 : v));
                benchmark::ClobberMemory();
            }
            uselocale(saved);
        }
        const auto t3 = clock_type::now();
        const std::chrono::duration<double> ours = t1 - t0;
        ours_ns += std::chrono::duration<double, std::nano>(t1 - t0).count();
        icu_ns += std::chrono::duration<double, std::nano>(t2 - t1).count();
        c_ns += std::chrono::duration<double, std::nano>(t3 - t2).count();
        state.SetIterationTime(ours.count());
    }
    unum_close(icu);
    vxbench::report_per_value(state, batch, ours_ns, {{"icu", icu_ns}, {"snprintf", c_ns, clocale.handle() != nullptr}});
    if (!clocale.handle()) state.SetLabel("no snprintf peer: " + clocale.why());
}

void BM_NLNUM_de_DE(benchmark::State& state) { run(state, "de_DE", U"NLNUM", UNUM_DECIMAL, false); }
void BM_NLNUM_en_US(benchmark::State& state) { run(state, "en_US", U"NLNUM", UNUM_DECIMAL, false); }
void BM_NLPCT_en_US(benchmark::State& state) { run(state, "en_US", U"NLPCT", UNUM_PERCENT, true); }
BENCHMARK(BM_NLNUM_de_DE)->UseManualTime();
BENCHMARK(BM_NLNUM_en_US)->UseManualTime();
BENCHMARK(BM_NLPCT_en_US)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
