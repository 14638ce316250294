// NLMNY per value in de_DE and en_US, and NLMNIEUR / NLMNLEUR in byte mode (UTF-8), through the
// C ABI with one warm call record, beside ICU's currency formatting (unum_formatDouble with a
// cached UNUM_CURRENCY or UNUM_CURRENCY_ISO formatter) and glibc's strfmon_l ("%n", or "%i" for
// the ISO code) on a newlocale of the same locale, in the same run on the same amounts. Each
// iteration formats one batch three ways, each timed on its own; the benchmark's time is ours
// (manual time), the counters give nanoseconds per value for each and the ratios ours / peer
// (below 1: faster).

#include <benchmark/benchmark.h>
#include <monetary.h>
#include <unicode/unum.h>

#include <array>
#include <chrono>
#include <string>

#include "peers.h"
#include "session.h"
#include "side_by_side.h"

namespace {

using vxbench::loaded_library;
using clock_type = std::chrono::steady_clock;

// Amounts from -5e6 to 5e6 with cents, a prime step apart so digit counts and signs vary.
constexpr std::size_t batch = 64;
std::array<double, batch> amounts() {
    std::array<double, batch> values{};
    for (std::size_t i = 0; i < batch; ++i) values[i] = -5000000.0 + static_cast<double>(i) * 158730.17 + 0.25;
    return values;
}

struct Case {
    const char* locale;
    std::u32string_view row;
    bool bytes;              // through the _b function of a UTF-8 session
    UNumberFormatStyle icu;  // the ICU peer's style
    const char* strfmon;     // the strfmon_l format
};

void run(benchmark::State& state, const Case& c) {
    const vxlocfmt::FuncInfo* row = loaded_library().find(c.row);
    vxhost::SessionOptions options;
    options.locale = c.locale;
    if (c.bytes) options.encoding = "UTF-8";
    vxhost::Session session(loaded_library(), options);
    constexpr std::int32_t width = 20;
    session.format(*row, width, 2, 0);  // builds the property table: the call record is warm
    vxlocfmt::FmtCall& call = session.call();
    std::array<vxlocfmt::wchar, 64> cells{};
    double value = 0;
    call.width = width;
    call.decimals = 2;
    call.capacity = width;
    call.output = cells.data();
    call.input = &value;
    call.byte_mode = c.bytes ? 1 : 0;

    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* icu = unum_open(c.icu, nullptr, 0, c.locale, nullptr, &error);
    if (U_FAILURE(error)) {
        state.SkipWithError("ICU cannot open the currency format");
        return;
    }
    unum_setAttribute(icu, UNUM_MIN_FRACTION_DIGITS, 2);
    unum_setAttribute(icu, UNUM_MAX_FRACTION_DIGITS, 2);
    vxbench::CLocale clocale(c.locale, vxbench::locale_cache());
    UChar icu_text[64];
    char c_text[64];

    const std::array<double, batch> values = amounts();
    double ours_ns = 0, icu_ns = 0, c_ns = 0;
    for (auto _ : state) {
        const auto t0 = clock_type::now();
        for (double v : values) {
            value = v;
            benchmark::DoNotOptimize(c.bytes ? row->byte_function(&call, nullptr, nullptr) : row->function(&call, nullptr));
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
            for (double v : values) {
                benchmark::DoNotOptimize(strfmon_l(c_text, sizeof c_text, clocale.handle(), c.strfmon, v));
                benchmark::ClobberMemory();
            }
        }
        const auto t3 = clock_type::now();
        ours_ns += std::chrono::duration<double, std::nano>(t1 - t0).count();
        icu_ns += std::chrono::duration<double, std::nano>(t2 - t1).count();
        c_ns += std::chrono::duration<double, std::nano>(t3 - t2).count();
        state.SetIterationTime(std::chrono::duration<double>(t1 - t0).count());
    }
    unum_close(icu);
    vxbench::report_per_value(state, batch, ours_ns, {{"icu", icu_ns}, {"strfmon", c_ns, clocale.handle() != nullptr}});
    if (!clocale.handle()) state.SetLabel("no strfmon_l: " + clocale.why());
}

const Case nlmny_de{"de_DE", U"NLMNY", false, UNUM_CURRENCY, "%n"};
const Case nlmny_en{"en_US", U"NLMNY", false, UNUM_CURRENCY, "%n"};
const Case nlmnieur_b{"de_DE", U"NLMNIEUR", true, UNUM_CURRENCY_ISO, "%i"};
const Case nlmnleur_b{"de_DE", U"NLMNLEUR", true, UNUM_CURRENCY, "%n"};

void BM_NLMNY_de_DE(benchmark::State& state) { run(state, nlmny_de); }
void BM_NLMNY_en_US(benchmark::State& state) { run(state, nlmny_en); }
void BM_NLMNIEUR_b_de_DE(benchmark::State& state) { run(state, nlmnieur_b); }
void BM_NLMNLEUR_b_de_DE(benchmark::State& state) { run(state, nlmnleur_b); }

BENCHMARK(BM_NLMNY_de_DE)->UseManualTime();
BENCHMARK(BM_NLMNY_en_US)->UseManualTime();
BENCHMARK(BM_NLMNIEUR_b_de_DE)->UseManualTime();
BENCHMARK(BM_NLMNLEUR_b_de_DE)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
