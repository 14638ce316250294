// The locale date informats per value, beside ICU's udat_parse of the same pattern and glibc's
// strptime_l with the same fields, on texts our formats wrote (the same dates for all three).
// Each iteration reads one batch three ways, each timed on its own by the thread's CPU clock;
// the benchmark's time is ours (manual time) and the counters give nanoseconds per value and
// the ratios ours / peer (below 1: faster).
//
//   BM_NLDATE_long/de_DE, /en_US    @NLDATE on the long date ("21. Dezember 2022", "December 21,
//                                   2022"); ICU: the long date style; strptime: "%d. %B %Y", "%B %d, %Y"
//   BM_NLDATM_medium/de_DE, /en_US  @NLDATM on the medium datetime ("21.12.2022, 10:30:15", "Dec
//                                   21, 2022, 10:30:15 PM"); ICU: medium date and time; strptime:
//                                   "%d.%m.%Y, %H:%M:%S", "%b %d, %Y, %I:%M:%S %p"
//   (goals: at most 0.1 of ICU, and no slower than strptime_l)
#include <benchmark/benchmark.h>

#include <unicode/udat.h>
#include <unicode/ustring.h>

#include <cmath>
#include <ctime>
#include <string>
#include <vector>

#include "peers.h"
#include "session.h"
#include "side_by_side.h"
#include "text_convert.h"

namespace {

using vxbench::loaded_library;
using vxbench::thread_cpu_ns;

struct Case {
    const char* locale;
    const char32_t* format;    // writes the texts
    std::int32_t width;
    const char32_t* informat;  // reads them back
    bool datetime;
    vxbench::IcuStyle icu;
    const char* strptime;
};

// Sixteen values over four centuries, every month, a spread of times of day.
std::vector<double> values(bool datetime) {
    std::vector<double> out;
    for (int i = 0; i < 16; ++i) {
        const double day = -20000 + i * 3917.0;
        out.push_back(datetime ? day * 86400 + (i * 5417) % 86400 : day);
    }
    return out;
}

void run(benchmark::State& state, const Case& c) {
    vxhost::Session session(loaded_library(), {.locale = c.locale});
    const vxlocfmt::FuncInfo& format = *loaded_library().find(c.format);
    const vxlocfmt::FuncInfo& informat = *loaded_library().find(c.informat);
    const std::vector<double> expected = values(c.datetime);
    std::vector<std::u32string> texts;
    std::vector<std::u16string> icu_texts;
    std::vector<std::string> c_texts;
    for (double v : expected) {
        std::u32string t(session.format(format, c.width, 0, v).text);
        t.erase(t.find_last_not_of(U' ') + 1);
        texts.push_back(t);
        std::u16string utf16;
        for (char32_t ch : t) utf16 += static_cast<char16_t>(ch);  // the texts are in the BMP
        icu_texts.push_back(utf16);
        // strptime's blank matches ASCII white space only: the narrow no-break space becomes one.
        std::u32string plain = t;
        for (char32_t& ch : plain)
            if (ch == 0x202F) ch = U' ';
        c_texts.push_back(vxhost::to_utf8(plain));
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const vxhost::ReadResult back = session.read(informat, static_cast<std::int32_t>(informat.default_width), 0, texts[i]);
        if (back.code != 0 || back.value != expected[i]) {
            state.SkipWithError("the informat does not read back every text");
            return;
        }
    }
    const vxbench::IcuPeer icu(c.locale, c.icu);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        UErrorCode e = U_ZERO_ERROR;
        const double when = udat_parse(icu.handle(), icu_texts[i].data(), static_cast<std::int32_t>(icu_texts[i].size()),
                                       nullptr, &e);
        const double want = c.datetime ? vxbench::udate_of_datetime(expected[i]) : vxbench::udate_of_day(expected[i]);
        if (U_FAILURE(e) || when != want) {
            state.SkipWithError("ICU does not read every text");
            return;
        }
    }
    vxbench::CLocale clocale(c.locale, vxbench::locale_cache());
    const bool with_strptime = clocale.handle() != nullptr;
    if (with_strptime)
        for (std::size_t i = 0; i < c_texts.size(); ++i) {
            std::tm parts{};
            const char* end = strptime_l(c_texts[i].c_str(), c.strptime, &parts, clocale.handle());
            const std::time_t unix = timegm(&parts);
            const std::time_t want = c.datetime ? vxbench::unix_of_datetime(expected[i]) : vxbench::unix_of_day(expected[i]);
            if (!end || *end || unix != want) {
                state.SkipWithError(("strptime_l does not read [" + c_texts[i] + "]").c_str());
                return;
            }
        }

    constexpr std::size_t rounds = 64;  // the clock's own cost stays below a percent
    const std::size_t batch = texts.size() * rounds;
    double ours_ns = 0, icu_ns = 0, c_ns = 0;
    for (auto _ : state) {
        const double t0 = thread_cpu_ns();
        for (std::size_t i = 0; i < batch; ++i)
            benchmark::DoNotOptimize(session.read(informat, 40, 0, texts[i % texts.size()]).value);
        const double t1 = thread_cpu_ns();
        for (std::size_t i = 0; i < batch; ++i) {
            UErrorCode e = U_ZERO_ERROR;
            const std::u16string& s = icu_texts[i % icu_texts.size()];
            benchmark::DoNotOptimize(udat_parse(icu.handle(), s.data(), static_cast<std::int32_t>(s.size()), nullptr, &e));
        }
        const double t2 = thread_cpu_ns();
        if (with_strptime)
            for (std::size_t i = 0; i < batch; ++i) {
                std::tm parts{};
                benchmark::DoNotOptimize(strptime_l(c_texts[i % c_texts.size()].c_str(), c.strptime, &parts, clocale.handle()));
                benchmark::DoNotOptimize(timegm(&parts));
            }
        const double t3 = thread_cpu_ns();
        ours_ns += t1 - t0;
        icu_ns += t2 - t1;
        c_ns += t3 - t2;
        state.SetIterationTime((t1 - t0) / 1e9);
    }
    vxbench::report_per_value(state, batch, ours_ns, {{"icu", icu_ns}, {"strptime", c_ns, with_strptime}});
    if (!with_strptime) state.SetLabel("no strptime_l: " + clocale.why());
}

using vxbench::IcuStyle;
const Case de_long{"de_DE", U"NLDATE", 200, U"@NLDATE", false, IcuStyle::long_date, "%d. %B %Y"};
const Case en_long{"en_US", U"NLDATE", 200, U"@NLDATE", false, IcuStyle::long_date, "%B %d, %Y"};
const Case de_medium{"de_DE", U"NLDATM", 30, U"@NLDATM", true, IcuStyle::medium_datetime, "%d.%m.%Y, %H:%M:%S"};
const Case en_medium{"en_US", U"NLDATM", 30, U"@NLDATM", true, IcuStyle::medium_datetime, "%b %d, %Y, %I:%M:%S %p"};

void BM_NLDATE_long(benchmark::State& state, const Case* c) { run(state, *c); }
void BM_NLDATM_medium(benchmark::State& state, const Case* c) { run(state, *c); }

BENCHMARK_CAPTURE(BM_NLDATE_long, de_DE, &de_long)->UseManualTime();
BENCHMARK_CAPTURE(BM_NLDATE_long, en_US, &en_long)->UseManualTime();
BENCHMARK_CAPTURE(BM_NLDATM_medium, de_DE, &de_medium)->UseManualTime();
BENCHMARK_CAPTURE(BM_NLDATM_medium, en_US, &en_medium)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
