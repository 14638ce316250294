// @NLNUM in de_DE and @NLMNY in en_US per value, through the C ABI with one warm call record,
// beside ICU's parsing of the same texts (unum_parseDouble with a cached UNUM_DECIMAL parser,
// unum_parseDoubleCurrency with a cached UNUM_CURRENCY one), in the same run. The texts are what
// NLNUM16.2 and NLMNY16.2 write for 64 amounts (ICU gets them without the field's leading
// blanks); both readers must give the same values, checked before timing. Each iteration reads
// the batch both ways, each timed on its own; the counters give nanoseconds per value and the
// ratio ours / ICU (below 1: faster); `classic_ns` is the classic NEGPAREN informat alone on the
// same amounts in classic notation ("-1234567.25"), the share of the time that is not rewriting.
//
//   build-bench/bin/bench_nlread
#include <benchmark/benchmark.h>
#include <unicode/unum.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "session.h"
#include "side_by_side.h"

namespace {

using vxbench::loaded_library;
using clock_type = std::chrono::steady_clock;

// Amounts from -5e6 to 5e6 with cents, a prime step apart so digit counts and signs vary.
constexpr std::size_t batch = 64;
constexpr std::int32_t width = 16;

struct Case {
    const char* locale;
    std::u32string_view format;
    UNumberFormatStyle icu;
    bool currency;  // unum_parseDoubleCurrency
};

void run(benchmark::State& state, const Case& c) {
    const vxlocfmt::FuncInfo* format = loaded_library().find(c.format);
    const vxlocfmt::FuncInfo* informat = loaded_library().find(U"@" + std::u32string(c.format));
    vxhost::Session session(loaded_library(), {.locale = c.locale});
    std::vector<std::u32string> texts;
    std::vector<std::u16string> icu_texts;
    std::vector<double> expected;
    std::vector<std::u32string> classic_texts;
    for (std::size_t i = 0; i < batch; ++i) {
        const double v = -5000000.0 + static_cast<double>(i) * 158730.17 + 0.25;
        std::u32string text(session.format(*format, width, 2, v).text);
        const vxhost::ReadResult back = session.read(*informat, width, 2, text);
        expected.push_back(back.value);
        char plain[32];
        const int n = std::snprintf(plain, sizeof plain, "%.2f", v);
        classic_texts.emplace_back(plain, plain + n);
        const std::size_t first = text.find_first_not_of(U' ');
        std::u16string icu_text;
        for (const char32_t ch : text.substr(first == std::u32string::npos ? 0 : first)) icu_text += static_cast<char16_t>(ch);
        texts.push_back(std::move(text));
        icu_texts.push_back(std::move(icu_text));
    }

    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* icu = unum_open(c.icu, nullptr, 0, c.locale, nullptr, &error);
    if (U_FAILURE(error)) {
        state.SkipWithError("ICU cannot open the format");
        return;
    }
    const auto icu_read = [&](std::size_t i) {
        UErrorCode e = U_ZERO_ERROR;
        const auto& t = icu_texts[i];
        UChar currency[4];
        return c.currency ? unum_parseDoubleCurrency(icu, t.data(), static_cast<int32_t>(t.size()), nullptr, currency, &e)
                          : unum_parseDouble(icu, t.data(), static_cast<int32_t>(t.size()), nullptr, &e);
    };
    for (std::size_t i = 0; i < batch; ++i) {
        if (icu_read(i) != expected[i] || std::isnan(expected[i])) {
            state.SkipWithError("ICU and the informat read a text differently");
            unum_close(icu);
            return;
        }
    }

    vxlocfmt::FmtCall& call = session.call();
    double result = 0;
    call.width = width;
    call.decimals = 2;
    call.output = &result;
    const auto classic = reinterpret_cast<vxlocfmt::format_fn>(loaded_library().symbol("vxfmtzifmnpn"));
    double ours_ns = 0, icu_ns = 0, classic_ns = 0;
    for (auto _ : state) {
        const auto t0 = clock_type::now();
        for (const std::u32string& text : texts) {
            call.input = text.data();
            call.input_length = call.text_limit = static_cast<std::int32_t>(text.size());
            benchmark::DoNotOptimize(informat->function(&call, nullptr));
            benchmark::DoNotOptimize(result);
        }
        const auto t1 = clock_type::now();
        for (std::size_t i = 0; i < batch; ++i) benchmark::DoNotOptimize(icu_read(i));
        const auto t2 = clock_type::now();
        for (const std::u32string& text : classic_texts) {
            call.input = text.data();
            call.input_length = call.text_limit = static_cast<std::int32_t>(text.size());
            benchmark::DoNotOptimize(classic(&call, nullptr));
            benchmark::DoNotOptimize(result);
        }
        const auto t3 = clock_type::now();
        classic_ns += std::chrono::duration<double, std::nano>(t3 - t2).count();
        ours_ns += std::chrono::duration<double, std::nano>(t1 - t0).count();
        icu_ns += std::chrono::duration<double, std::nano>(t2 - t1).count();
        state.SetIterationTime(std::chrono::duration<double>(t1 - t0).count());
    }
    unum_close(icu);
    vxbench::report_per_value(state, batch, ours_ns, {{"icu", icu_ns}, {"classic", classic_ns}});
}

const Case nlnum_de{"de_DE", U"NLNUM", UNUM_DECIMAL, false};
const Case nlmny_en{"en_US", U"NLMNY", UNUM_CURRENCY, true};

void BM_read_NLNUM_de_DE(benchmark::State& state) { run(state, nlnum_de); }
void BM_read_NLMNY_en_US(benchmark::State& state) { run(state, nlmny_en); }

BENCHMARK(BM_read_NLNUM_de_DE)->UseManualTime();
BENCHMARK(BM_read_NLMNY_en_US)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
