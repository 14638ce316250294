// NLNUM (2 decimals, de_DE and en_US) and NLPCT (2 decimals, en_US) per value, through the C ABI
// with one warm call record (a host session, its property table already built), beside ICU's
// unum_formatDouble with a cached UNumberFormat of the same style (decimal, percent) and the same
// fraction digits, in the same run. Each iteration formats one batch of values both ways, each
// batch timed on its own; the benchmark's time is ours (manual time) and the counters give
// nanoseconds per value for both and the ratio ours / ICU (below 1: faster). A last row puts
// an integer stand-in in place of the kernel's formatter to show the renderer's own cost.

#include <benchmark/benchmark.h>

#include <unicode/unum.h>

#include <array>
#include <cmath>
#include <chrono>
#include <optional>
#include <string>

#include "frame/instance.h"
#include "frame/kernel.h"
#include "library.h"
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

// A stand-in for the kernel's number formatter: integer arithmetic on the value times 10^decimals
// (for |value| below 1e15 and at most 6 decimals; binary rounding, not the kernel's exact one:
// timing only), right-justified in the width. With it in place, the time left is the renderer's.
extern "C" vxlocfmt::status integer_kernel(void*, double value, std::int32_t width, std::int32_t decimals,
                                           std::uint32_t, vxlocfmt::wchar* out, std::int32_t capacity,
                                           std::int32_t* length) {
    constexpr double powers[] = {1, 10, 100, 1e3, 1e4, 1e5, 1e6};
    if (decimals < 0 || decimals > 6 || !(std::fabs(value) < 1e15)) return vxlocfmt::st::number_shortened;
    auto scaled = static_cast<std::uint64_t>(std::fabs(value) * powers[decimals] + 0.5);
    char text[32];
    int n = 0;
    for (int i = 0; scaled != 0 || i <= decimals; ++i) {
        if (i == decimals && decimals > 0) text[n++] = '.';
        text[n++] = static_cast<char>('0' + scaled % 10);
        scaled /= 10;
    }
    if (value < 0) text[n++] = '-';
    const std::int32_t cells = std::min(width, capacity);
    if (n > cells) return vxlocfmt::st::number_shortened;
    for (std::int32_t i = 0; i < cells - n; ++i) out[i] = U' ';
    for (std::int32_t i = 0; i < n; ++i) out[cells - 1 - i] = static_cast<vxlocfmt::wchar>(text[i]);
    *length = cells;
    return 0;
}

// Puts the stand-in in the instance's own locale object (whose formatter the renderer asks) for
// the life of one benchmark.
class KernelSwap {
public:
    explicit KernelSwap(vxlocfmt::FmtCall& call) {
        vxlocfmt::Instance* instance = vxlocfmt::find_instance(call);
        if (!instance || !instance->fixed_locale) return;
        word_ = static_cast<void**>(instance->fixed_locale) + vxlocfmt::kernel::locale_number_format_slot;
        saved_ = *word_;
        *word_ = reinterpret_cast<void*>(&integer_kernel);
    }
    ~KernelSwap() {
        if (word_) *word_ = saved_;
    }

private:
    void** word_ = nullptr;
    void* saved_ = nullptr;
};

void run(benchmark::State& state, const char* locale, std::u32string_view format, UNumberFormatStyle style,
         bool percent, bool stand_in_kernel = false) {
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

    std::optional<KernelSwap> swap;
    if (stand_in_kernel) swap.emplace(call);

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

    std::array<double, batch> values = amounts();
    if (percent)
        for (double& v : values) v /= 1e5;  // percentages of a few hundred
    double ours_ns = 0, icu_ns = 0;
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
        const std::chrono::duration<double> ours = t1 - t0;
        ours_ns += std::chrono::duration<double, std::nano>(t1 - t0).count();
        icu_ns += std::chrono::duration<double, std::nano>(t2 - t1).count();
        state.SetIterationTime(ours.count());
    }
    unum_close(icu);
    const double count = static_cast<double>(state.iterations()) * batch;
    state.SetItemsProcessed(static_cast<std::int64_t>(count));
    state.counters["ns_per_value"] = ours_ns / count;
    state.counters["icu_ns_per_value"] = icu_ns / count;
    state.counters["ratio"] = icu_ns > 0 ? ours_ns / icu_ns : 0;
}

void BM_NLNUM_de_DE(benchmark::State& state) { run(state, "de_DE", U"NLNUM", UNUM_DECIMAL, false); }
void BM_NLNUM_en_US(benchmark::State& state) { run(state, "en_US", U"NLNUM", UNUM_DECIMAL, false); }
void BM_NLPCT_en_US(benchmark::State& state) { run(state, "en_US", U"NLPCT", UNUM_PERCENT, true); }
// The renderer's own share: NLNUM de_DE with the integer stand-in as the kernel formatter.
void BM_NLNUM_de_DE_integer_kernel(benchmark::State& state) {
    run(state, "de_DE", U"NLNUM", UNUM_DECIMAL, false, true);
}

BENCHMARK(BM_NLNUM_de_DE)->UseManualTime();
BENCHMARK(BM_NLNUM_en_US)->UseManualTime();
BENCHMARK(BM_NLPCT_en_US)->UseManualTime();
BENCHMARK(BM_NLNUM_de_DE_integer_kernel)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
