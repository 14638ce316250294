// Numbers at two decimals, per value: the kernel number formatter (fixed and grouped) and the
// COMMA12.2 renderer beside glibc snprintf("%'.2f") under uselocale (en_US and de_DE), ICU
// unum_formatDouble with two fraction digits, and std::to_chars fixed as the floor. All run on
// the same 4096 amounts; the ratios are peer time over ours.

#include <benchmark/benchmark.h>
#include <unicode/unum.h>

#include <charconv>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <random>
#include <vector>

#include "classic/numeric_formats.h"
#include "locale_object.h"
#include "number_formatter.h"
#include "peers.h"

namespace {

using vxlocfmt::wchar;

// Amounts from -10 million to 10 million with up to three decimals, some ties among them.
const std::vector<double>& amounts() {
    static const std::vector<double> values = [] {
        std::mt19937_64 rng(17);
        std::vector<double> v(4096);
        for (double& x : v) x = static_cast<double>(static_cast<std::int64_t>(rng() % 20000000001ull) - 10000000000) / 1000.0;
        return v;
    }();
    return values;
}

template <class Body>
void per_value(benchmark::State& state, Body body) {
    const std::vector<double>& values = amounts();
    std::size_t i = 0;
    for (auto _ : state) {
        body(values[i]);
        i = (i + 1) & (values.size() - 1);
    }
    state.SetItemsProcessed(state.iterations());
}

void BM_ToCharsFixedFloor(benchmark::State& state) {
    char text[64];
    per_value(state, [&](double v) {
        auto r = std::to_chars(text, text + sizeof text, v, std::chars_format::fixed, 2);
        benchmark::DoNotOptimize(r.ptr);
    });
}

void kernel(benchmark::State& state, std::uint32_t mode) {
    wchar cells[16];
    per_value(state, [&](double v) {
        std::int32_t length = 0;
        benchmark::DoNotOptimize(vxhost::format_number(nullptr, v, 14, 2, mode, cells, 14, &length));
        benchmark::DoNotOptimize(cells[0]);
    });
}
void BM_KernelFixed2(benchmark::State& state) { kernel(state, vxhost::mode_fixed); }
void BM_KernelGrouped2(benchmark::State& state) { kernel(state, vxhost::mode_grouped); }

void BM_Comma12_2(benchmark::State& state) {
    vxhost::LocaleObject* locale = vxhost::LocaleObject::create("en_US");
    wchar cells[16];
    double value = 0;
    vxlocfmt::FmtCall call{};
    call.input = &value;
    call.output = cells;
    call.number_format = locale;
    per_value(state, [&](double v) {
        value = v;
        call.width = 14;  // 12 would star the largest amounts
        call.decimals = 2;
        call.capacity = 14;
        benchmark::DoNotOptimize(vxfmtzfmcomma(&call, nullptr));
        benchmark::DoNotOptimize(cells[0]);
    });
    locale->release();
}

void snprintf_grouped(benchmark::State& state, const char* name) {
    // The same cache of compiled locales as bench_formats: beside the program.
    static const std::string cache = (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "bench-locales").string();
    vxbench::CLocale c(name, cache);
    if (!c.handle()) {
        state.SkipWithError(c.why().c_str());
        return;
    }
    const locale_t saved = uselocale(c.handle());
    char text[64];
    per_value(state, [&](double v) { benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%'.2f", v)); });
    uselocale(saved);
}
void BM_SnprintfGrouped2_en_US(benchmark::State& state) { snprintf_grouped(state, "en_US"); }
void BM_SnprintfGrouped2_de_DE(benchmark::State& state) { snprintf_grouped(state, "de_DE"); }

void icu_decimal(benchmark::State& state, const char* locale) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* format = unum_open(UNUM_DECIMAL, nullptr, 0, locale, nullptr, &error);
    unum_setAttribute(format, UNUM_MIN_FRACTION_DIGITS, 2);
    unum_setAttribute(format, UNUM_MAX_FRACTION_DIGITS, 2);
    UChar text[64];
    per_value(state, [&](double v) {
        UErrorCode e = U_ZERO_ERROR;
        benchmark::DoNotOptimize(unum_formatDouble(format, v, text, 64, nullptr, &e));
    });
    unum_close(format);
}
void BM_IcuFormatDouble2_en_US(benchmark::State& state) { icu_decimal(state, "en_US"); }
void BM_IcuFormatDouble2_de_DE(benchmark::State& state) { icu_decimal(state, "de_DE"); }

}  // namespace

BENCHMARK(BM_ToCharsFixedFloor);
BENCHMARK(BM_KernelFixed2);
BENCHMARK(BM_KernelGrouped2);
BENCHMARK(BM_Comma12_2);
BENCHMARK(BM_SnprintfGrouped2_en_US);
BENCHMARK(BM_SnprintfGrouped2_de_DE);
BENCHMARK(BM_IcuFormatDouble2_en_US);
BENCHMARK(BM_IcuFormatDouble2_de_DE);
BENCHMARK_MAIN();
