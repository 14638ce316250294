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

#include <unistd.h>

#include <array>
#include <chrono>
#include <climits>
#include <clocale>
#include <cstdio>
#include <string>

#include "library.h"
#include "peers.h"
#include "session.h"

namespace {

using clock_type = std::chrono::steady_clock;

vxhost::Library& library() {
    static vxhost::Library loaded;
    return loaded;
}

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

// strfmon_l's and snprintf's locales are compiled beside the program when the system lacks them
// (as bench_formats does).
std::string locale_cache() {
    char exe[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
    if (n <= 0) return "bench-locales";
    const std::string path(exe, static_cast<std::size_t>(n));
    return path.substr(0, path.find_last_of('/')) + "/bench-locales";
}

void run(benchmark::State& state, const char* locale, std::u32string_view format, UNumberFormatStyle style,
         bool percent) {
    const vxlocfmt::FuncInfo* row = library().find(format);
    vxhost::SessionOptions options;
    options.locale = locale;
    vxhost::Session session(library(), options);
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
    vxbench::CLocale clocale(locale, locale_cache());
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
    const double count = static_cast<double>(state.iterations()) * batch;
    state.SetItemsProcessed(static_cast<std::int64_t>(count));
    state.counters["ns_per_value"] = ours_ns / count;
    state.counters["icu_ns_per_value"] = icu_ns / count;
    state.counters["ratio"] = icu_ns > 0 ? ours_ns / icu_ns : 0;
    if (clocale.handle()) {
        state.counters["snprintf_ns"] = c_ns / count;
        state.counters["vs_snprintf"] = c_ns > 0 ? ours_ns / c_ns : 0;
    } else {
        state.SetLabel("no snprintf peer: " + clocale.why());
    }
}

void BM_NLNUM_de_DE(benchmark::State& state) { run(state, "de_DE", U"NLNUM", UNUM_DECIMAL, false); }
void BM_NLNUM_en_US(benchmark::State& state) { run(state, "en_US", U"NLNUM", UNUM_DECIMAL, false); }
void BM_NLPCT_en_US(benchmark::State& state) { run(state, "en_US", U"NLPCT", UNUM_PERCENT, true); }
BENCHMARK(BM_NLNUM_de_DE)->UseManualTime();
BENCHMARK(BM_NLNUM_en_US)->UseManualTime();
BENCHMARK(BM_NLPCT_en_US)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
