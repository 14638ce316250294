// NLDATE and NLDATEW per value, through the C ABI with one warm call record (a host session, its
// property table already built), beside ICU's udat_format with a cached UDateFormat of the same
// style (NLDATE: long, NLDATEW: full) in the same run. Each iteration formats one batch of dates
// both ways, each batch timed on its own; the benchmark's time is ours (manual time) and the
// counters give nanoseconds per value for both and the ratio ours / ICU (below 1: faster).

#include <benchmark/benchmark.h>

#include <unicode/udat.h>

#include <array>
#include <chrono>
#include <string>

#include "session.h"
#include "side_by_side.h"

namespace {

using vxbench::loaded_library;
using clock_type = std::chrono::steady_clock;

// Dates from 1900 to 2100, a prime step apart so months and weekdays vary.
constexpr std::size_t batch = 64;
std::array<double, batch> day_numbers() {
    std::array<double, batch> days{};
    for (std::size_t i = 0; i < batch; ++i) days[i] = -21914 + static_cast<double>(i) * 1151;
    return days;
}
constexpr double unix_epoch_day = 3653;  // 1970-01-01 as a day number
constexpr double millis_per_day = 86400000.0;

void run(benchmark::State& state, const char* locale, std::u32string_view format, UDateFormatStyle style) {
    const vxlocfmt::FuncInfo* row = loaded_library().find(format);
    vxhost::SessionOptions options;
    options.locale = locale;
    vxhost::Session session(loaded_library(), options);
    session.format(*row, 200, 0, 0);  // builds the property table: the call record is warm
    vxlocfmt::FmtCall& call = session.call();
    std::array<vxlocfmt::wchar, 200> cells{};
    double value = 0;
    call.width = 200;
    call.capacity = static_cast<std::int32_t>(cells.size());
    call.output = cells.data();
    call.input = &value;
    if (row->function(&call, nullptr) != 0 || call.produced <= 0 || cells[0] == U'*') {
        state.SkipWithError("the format writes no date: locale data missing?");
        return;
    }

    UErrorCode error = U_ZERO_ERROR;
    UDateFormat* icu = udat_open(UDAT_NONE, style, locale, u"UTC", -1, nullptr, 0, &error);
    if (U_FAILURE(error)) {
        state.SkipWithError("ICU cannot open the date format");
        return;
    }
    UChar icu_text[200];

    const std::array<double, batch> days = day_numbers();
    double ours_ns = 0, icu_ns = 0;
    for (auto _ : state) {
        const auto t0 = clock_type::now();
        for (double day : days) {
            value = day;
            benchmark::DoNotOptimize(row->function(&call, nullptr));
            benchmark::ClobberMemory();
        }
        const auto t1 = clock_type::now();
        for (double day : days) {
            UErrorCode e = U_ZERO_ERROR;
            benchmark::DoNotOptimize(
                udat_format(icu, (day - unix_epoch_day) * millis_per_day, icu_text, 200, nullptr, &e));
            benchmark::ClobberMemory();
        }
        const auto t2 = clock_type::now();
        const std::chrono::duration<double> ours = t1 - t0;
        ours_ns += std::chrono::duration<double, std::nano>(t1 - t0).count();
        icu_ns += std::chrono::duration<double, std::nano>(t2 - t1).count();
        state.SetIterationTime(ours.count());
    }
    udat_close(icu);
    vxbench::report_per_value(state, batch, ours_ns, {{"icu", icu_ns}});
}

void BM_NLDATE_en_US(benchmark::State& state) { run(state, "en_US", U"NLDATE", UDAT_LONG); }
void BM_NLDATE_de_DE(benchmark::State& state) { run(state, "de_DE", U"NLDATE", UDAT_LONG); }
void BM_NLDATEW_en_US(benchmark::State& state) { run(state, "en_US", U"NLDATEW", UDAT_FULL); }
void BM_NLDATEW_de_DE(benchmark::State& state) { run(state, "de_DE", U"NLDATEW", UDAT_FULL); }

BENCHMARK(BM_NLDATE_en_US)->UseManualTime();
BENCHMARK(BM_NLDATE_de_DE)->UseManualTime();
BENCHMARK(BM_NLDATEW_en_US)->UseManualTime();
BENCHMARK(BM_NLDATEW_de_DE)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
