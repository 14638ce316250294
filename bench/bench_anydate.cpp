// The any-date reader per value, beside ICU's udat_parse and a hand-written fixed-shape floor in
// the same run. Each iteration reads one batch of texts both ways, each batch timed on its own
// by the thread's CPU clock (the figures hold on a loaded machine); the benchmark's time is ours
// (manual time) and the counters give nanoseconds per value for both and the ratio ours / peer
// (below 1: faster).
//
//   BM_AnyDate_mix   the driver on the eight shapes of the peers' baseline, eight dates each;
//                    ICU: a cached medium date format (en_US, UTC) on its own shape ("Mar 4, 2020")
//   BM_AnyDate_iso   the driver on ISO 8601 dates and datetimes alone; ICU as above
//   BM_B8601DA       dtmInformat B8601DA on yyyymmdd beside a floor that reads exactly that shape
//   BM_E8601DT       dtmInformat E8601DT on yyyy-mm-ddThh:mm:ss beside its floor
//   (goals: mix and iso at most 0.1 of ICU; the two named ones within 3 times their floor)

#include <benchmark/benchmark.h>

#include <unicode/udat.h>
#include <unicode/ustring.h>

#include <array>
#include <cmath>
#include <ctime>
#include <cstdio>
#include <string>
#include <vector>

#include "dateread/dateread_exports.h"
#include "side_by_side.h"
#include "kernel_handle.h"
#include "frame/kernel.h"

namespace {

constexpr const char* month_abbrev[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr const char* month_full[] = {"January", "February", "March",     "April",   "May",      "June",
                                      "July",    "August",   "September", "October", "November", "December"};

struct ymd {
    int y, m, d;
};
// Eight dates across two centuries; day <= 12 would let the tie-break read 03/04 both ways, so
// the days run from 13 on and every shape gives one date.
constexpr ymd dates[] = {{2020, 3, 14}, {1999, 12, 31}, {1961, 7, 20}, {2038, 1, 19},
                         {1984, 2, 29}, {2007, 9, 15},  {1975, 6, 23}, {2049, 11, 28}};

std::u32string widen(const std::string& s) { return {s.begin(), s.end()}; }

std::string print(const char* fmt, int a, int b, int c) {
    char buf[64];
    std::snprintf(buf, sizeof buf, fmt, a, b, c);
    return buf;
}

std::vector<std::u32string> mix_texts() {
    std::vector<std::u32string> out;
    for (const ymd& t : dates) {
        out.push_back(widen(print("%04d-%02d-%02d", t.y, t.m, t.d)));
        out.push_back(widen(print("%04d-%02d-%02dT10:30:00", t.y, t.m, t.d)));
        out.push_back(widen(print("%02d", t.d, 0, 0) + std::string(month_abbrev[t.m - 1]) + std::to_string(t.y)));
        out.push_back(widen(std::string(month_abbrev[t.m - 1]) + " " + std::to_string(t.d) + ", " + std::to_string(t.y)));
        out.push_back(widen(std::to_string(t.d) + " " + month_full[t.m - 1] + " " + std::to_string(t.y)));
        out.push_back(widen(print("%02d/%02d/%04d", t.m, t.d, t.y)));
        out.push_back(widen(print("%04d%02d%02d", t.y, t.m, t.d)));
        out.push_back(U"10:30 PM");
    }
    return out;
}

std::vector<std::u32string> iso_texts() {
    std::vector<std::u32string> out;
    for (const ymd& t : dates) {
        out.push_back(widen(print("%04d-%02d-%02d", t.y, t.m, t.d)));
        out.push_back(widen(print("%04d-%02d-%02dT10:30:00", t.y, t.m, t.d)));
    }
    return out;
}

// ICU's own shape for its medium date format, en_US: "Mar 14, 2020".
std::vector<std::u16string> icu_texts() {
    std::vector<std::u16string> out;
    for (int k = 0; k < 2; ++k)
        for (const ymd& t : dates) {
            const std::string s = std::string(month_abbrev[t.m - 1]) + " " + std::to_string(t.d) + ", " + std::to_string(t.y);
            out.emplace_back(s.begin(), s.end());
        }
    return out;
}

// The floor: exactly the digits of one shape, no checks beyond digits, days from civil by the
// era method; what a reader of one fixed shape costs at least.
inline long long days_from_civil(long long y, unsigned m, unsigned d) {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}
inline int two(const char32_t* s) { return (s[0] - U'0') * 10 + (s[1] - U'0'); }
inline double floor_b8601da(const std::u32string& s) {
    const int y = two(s.data()) * 100 + two(s.data() + 2);
    return static_cast<double>(days_from_civil(y, static_cast<unsigned>(two(s.data() + 4)), static_cast<unsigned>(two(s.data() + 6))) + 3653);
}
inline double floor_e8601dt(const std::u32string& s) {
    const int y = two(s.data()) * 100 + two(s.data() + 2);
    const double day = static_cast<double>(days_from_civil(y, static_cast<unsigned>(two(s.data() + 5)), static_cast<unsigned>(two(s.data() + 8))) + 3653);
    return day * 86400 + two(s.data() + 11) * 3600 + two(s.data() + 14) * 60 + two(s.data() + 17);
}

// Times `ours` and `peer` over one batch per iteration, alternating; a batch is the texts
// `rounds` times, so the CPU clock's own cost (a system call here) stays below a percent.
constexpr std::size_t rounds = 64;
template <class Ours, class Peer>
void compare(benchmark::State& state, const char* peer_name, std::size_t texts, Ours ours, Peer peer) {
    const std::size_t batch = texts * rounds;
    double ours_ns = 0, peer_ns = 0;
    for (auto _ : state) {
        const double t0 = vxbench::thread_cpu_ns();
        for (std::size_t i = 0; i < batch; ++i) ours(i % texts);
        const double t1 = vxbench::thread_cpu_ns();
        for (std::size_t i = 0; i < batch; ++i) peer(i % texts);
        const double t2 = vxbench::thread_cpu_ns();
        ours_ns += t1 - t0;
        peer_ns += t2 - t1;
        state.SetIterationTime((t1 - t0) / 1e9);
    }
    vxbench::report_per_value(state, batch, ours_ns, {{peer_name, peer_ns}});
}

// One call record for every value, as the host keeps one per column and the other bench programs
// keep theirs: clearing its 330 bytes per value would time the harness, not the reader.
vxlocfmt::FmtCall& shared_call() {
    static vxlocfmt::FmtCall call{};
    return call;
}

double read_driver(const std::u32string& text) {
    double v = 0;
    vxlocfmt::FmtCall& call = shared_call();
    call.input = text.data();
    call.input_length = call.text_limit = static_cast<std::int32_t>(text.size());
    call.output = &v;
    dtmAnyDateTime(&call, nullptr);
    return v;
}

void driver_vs_icu(benchmark::State& state, const std::vector<std::u32string>& texts) {
    Exported_VXHandle = vxhost::kernel_handle();  // the year cut-off comes from the kernel, as in the host
    for (const auto& t : texts)
        if (std::isnan(read_driver(t))) {
            state.SkipWithError("the driver does not read every text");
            return;
        }
    UErrorCode error = U_ZERO_ERROR;
    UDateFormat* icu = udat_open(UDAT_NONE, UDAT_MEDIUM, "en_US", u"UTC", -1, nullptr, 0, &error);
    if (U_FAILURE(error)) {
        state.SkipWithError("ICU cannot open the date format");
        return;
    }
    const std::vector<std::u16string> icu_in = icu_texts();
    const std::size_t batch = texts.size();
    compare(state, "icu", batch, [&](std::size_t i) { benchmark::DoNotOptimize(read_driver(texts[i])); },
            [&](std::size_t i) {
                UErrorCode e = U_ZERO_ERROR;
                const std::u16string& s = icu_in[i % icu_in.size()];
                benchmark::DoNotOptimize(udat_parse(icu, s.data(), static_cast<std::int32_t>(s.size()), nullptr, &e));
            });
    udat_close(icu);
}

void named_vs_floor(benchmark::State& state, std::u32string_view name, const std::vector<std::u32string>& texts,
                    double (*floor)(const std::u32string&)) {
    Exported_VXHandle = vxhost::kernel_handle();
    auto read = [&](const std::u32string& t) {
        double v = 0;
        vxlocfmt::FmtCall& call = shared_call();
        call.input = t.data();
        call.input_length = call.text_limit = static_cast<std::int32_t>(t.size());
        call.output = &v;
        dtmInformat(&call, name.data(), static_cast<std::int32_t>(name.size()));
        return v;
    };
    for (const auto& t : texts)
        if (read(t) != floor(t)) {
            state.SkipWithError("the floor does not give our value");
            return;
        }
    compare(state, "floor", texts.size(), [&](std::size_t i) { benchmark::DoNotOptimize(read(texts[i])); },
            [&](std::size_t i) { benchmark::DoNotOptimize(floor(texts[i])); });
}

void BM_AnyDate_mix(benchmark::State& state) { driver_vs_icu(state, mix_texts()); }
void BM_AnyDate_iso(benchmark::State& state) { driver_vs_icu(state, iso_texts()); }
void BM_B8601DA(benchmark::State& state) {
    std::vector<std::u32string> texts;
    for (const ymd& t : dates) texts.push_back(widen(print("%04d%02d%02d", t.y, t.m, t.d)));
    named_vs_floor(state, U"B8601DA", texts, floor_b8601da);
}
void BM_E8601DT(benchmark::State& state) {
    std::vector<std::u32string> texts;
    for (const ymd& t : dates) texts.push_back(widen(print("%04d-%02d-%02dT", t.y, t.m, t.d) + print("%02d:%02d:%02d", t.d % 24, t.m * 4, t.d * 2)));
    named_vs_floor(state, U"E8601DT", texts, floor_e8601dt);
}

BENCHMARK(BM_AnyDate_mix)->UseManualTime();
BENCHMARK(BM_AnyDate_iso)->UseManualTime();
BENCHMARK(BM_B8601DA)->UseManualTime();
BENCHMARK(BM_E8601DT)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
