// Our date, time, week and name formats beside their peers, in one run, on the same values:
// ICU udat_format with a cached UDateFormat, the C library's strftime_l, and a hand-written
// floor. Ours are called the way the host calls them: the extension loaded with dlopen, one warm
// call record per locale (vxhost::Session, property table built), the registry row's function
// for wide output and its _b function for bytes (a second session with UTF-8 output). Base64
// encode and decode run beside a plain scalar loop. The number, percent and money rows run wide
// and through _b only, for the _b-beside-wide table. The run ends with a table of times per value
// (or MB/s), the ratios peer/us and the state of the goals.
//
//   bench_formats                    the whole run (about two minutes on two cores)
//   bench_formats --short            a few thousand values and milliseconds per row: it runs
//   bench_formats --check            only the start-up checks: our text against the floor's
//   bench_formats --no-check         no start-up checks (for profiling one row)
//   bench_formats --dump-days N      the first N day numbers, one a line (for the CLI run)
//   bench_formats --dump-iso N       the same days as YYYY-MM-DD
//
// Google Benchmark flags pass through (--benchmark_filter=NLDATE/de_DE, --benchmark_out=f.json).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "floor.h"
#include "frame/abi.h"
#include "library.h"
#include "peers.h"
#include "session.h"
#include "side_by_side.h"
#include "text_convert.h"
#include "values.h"

namespace {

using namespace vxbench;
using vxlocfmt::FmtCall;

// ---- What runs --------------------------------------------------------------------------------

enum class Input { days, datetimes, times, months };

using FloorFn = int (*)(double, char32_t*, int, const FloorNames&);
using FloorSweep = void (*)(benchmark::State&, const std::vector<double>&, int, const FloorNames&);

template <FloorFn F>
void floor_sweep(benchmark::State& state, const std::vector<double>& values, int width, const FloorNames& names) {
    char32_t out[256];
    for (auto _ : state) {
        for (const double x : values) {
            benchmark::DoNotOptimize(F(x, out, width, names));
            benchmark::ClobberMemory();
        }
    }
}

// The floor of a row in the three layouts, callable and as an inlined sweep.
struct FloorEntry {
    FloorFn fn[3];
    FloorSweep sweep[3];
};
template <FloorFn En, FloorFn De, FloorFn Ja>
constexpr FloorEntry floor_entry() {
    return {{En, De, Ja}, {&floor_sweep<En>, &floor_sweep<De>, &floor_sweep<Ja>}};
}
template <FloorFn F>
constexpr FloorEntry floor_entry() {
    return floor_entry<F, F, F>();
}

struct RowSpec {
    const char* name;
    const char32_t* registry;  // the registry row; null for the clock format
    const char* symbol;        // the exported function when there is no registry row
    int width;
    int decimals;
    Input input;
    IcuStyle icu;
    FloorEntry floor;
    const char* strftime[3];   // en_US, de_DE, ja_JP
    bool icu_bytes = false;    // also time ICU's text converted to UTF-8 (the peer of our _b)
};

const RowSpec rows[] = {
    {"NLDATE", U"NLDATE", nullptr, 20, 0, Input::days, IcuStyle::long_date,
     floor_entry<floor_long<Layout::en>, floor_long<Layout::de>, floor_long<Layout::ja>>(),
     {"%B %-d, %Y", "%-d. %B %Y", "%Y年%-m月%-d日"}, true},
    {"NLDATEL", U"NLDATEL", nullptr, 18, 0, Input::days, IcuStyle::long_date,
     floor_entry<floor_long<Layout::en>, floor_long<Layout::de>, floor_long<Layout::ja>>(),
     {"%B %-d, %Y", "%-d. %B %Y", "%Y年%-m月%-d日"}, true},
    {"NLDATEW", U"NLDATEW", nullptr, 40, 0, Input::days, IcuStyle::full_date,
     floor_entry<floor_full<Layout::en>, floor_full<Layout::de>, floor_full<Layout::ja>>(),
     {"%A, %B %-d, %Y", "%A, %-d. %B %Y", "%Y年%-m月%-d日%A"}, true},
    {"NLDATES", U"NLDATES", nullptr, 10, 0, Input::days, IcuStyle::numeric_date,
     floor_entry<floor_numeric<Layout::en>, floor_numeric<Layout::de>, floor_numeric<Layout::ja>>(),
     {"%m/%d/%Y", "%d.%m.%Y", "%Y/%m/%d"}},
    {"NLDATM", U"NLDATM", nullptr, 30, 0, Input::datetimes, IcuStyle::medium_datetime,
     floor_entry<floor_medium_datetime<Layout::en>, floor_medium_datetime<Layout::de>,
                 floor_medium_datetime<Layout::ja>>(),
     {"%b %-d, %Y, %-I:%M:%S %p", "%d.%m.%Y, %H:%M:%S", "%Y/%m/%d %-H:%M:%S"}, true},
    {"NLTIME", U"NLTIME", nullptr, 20, 0, Input::times, IcuStyle::medium_time,
     floor_entry<floor_medium_time<Layout::en>, floor_medium_time<Layout::de>, floor_medium_time<Layout::ja>>(),
     {"%-I:%M:%S %p", "%H:%M:%S", "%-H:%M:%S"}},
    {"WEEKV", U"WEEKV", nullptr, 11, 0, Input::days, IcuStyle::iso_week, floor_entry<floor_iso_week>(),
     {"%G-W%V-0%u", "%G-W%V-0%u", "%G-W%V-0%u"}},
    {"DTWEEKV", U"DTWEEKV", nullptr, 18, 0, Input::datetimes, IcuStyle::dt_iso_week, floor_entry<floor_dt_week>(),
     {"%GW%V0%u:%H:%M:%S", "%GW%V0%u:%H:%M:%S", "%GW%V0%u:%H:%M:%S"}},
    {"NLSTRMON", U"NLSTRMON", nullptr, 20, 0, Input::months, IcuStyle::standalone_month,
     floor_entry<floor_month_name>(), {"%OB", "%OB", "%OB"}},
    {"TIME", nullptr, "vxfmtzfmtime", 8, 0, Input::times, IcuStyle::clock, floor_entry<floor_clock>(),
     {"%k:%M:%S", "%k:%M:%S", "%k:%M:%S"}},
};

struct LocaleSpec {
    const char* name;
    Layout layout;
};
const LocaleSpec locales[] = {{"en_US", Layout::en}, {"de_DE", Layout::de}, {"ja_JP", Layout::ja}};

// Numeric, percent and money rows: ours wide and through their _b function only (their peers
// are bench_nlnum and bench_money), for the _b-beside-wide table. Values: amounts.
struct ByteRowSpec {
    const char* name;
    const char32_t* registry;
    int width;
    int decimals;
    double scale;  // the amount times this: NLPCT takes a fraction
};
const ByteRowSpec byte_rows[] = {
    {"NLNUM", U"NLNUM", 16, 2, 1},          {"NLPCT", U"NLPCT", 10, 1, 1e-6},
    {"NLMNY", U"NLMNY", 16, 2, 1},          {"NLMNIEUR", U"NLMNIEUR", 20, 2, 1},
    {"NLMNLEUR", U"NLMNLEUR", 20, 2, 1},
};

double (*const udate_of[])(double) = {udate_of_day, udate_of_datetime, udate_of_time, udate_of_month};
std::time_t (*const unix_of[])(double) = {unix_of_day, unix_of_datetime, unix_of_time, unix_of_month};

// ---- Options ----------------------------------------------------------------------------------

struct Options {
    bool short_run = false;
    bool check_only = false;
    bool skip_check = false;  // for profiling: no start-up comparison
    std::optional<std::size_t> dump_days, dump_iso;
    std::size_t count = 1'000'000;
    std::string locale_cache;
};

// Takes our own flags out of the arguments; the rest goes to Google Benchmark.
Options parse_options(std::vector<char*>& args) {
    Options o;
    o.locale_cache = vxbench::locale_cache();
    std::vector<char*> kept{args.front()};
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string_view a = args[i];
        const auto number = [&]() -> std::size_t {
            if (i + 1 >= args.size()) throw std::invalid_argument(std::string(a) + " needs a number");
            return static_cast<std::size_t>(std::stoull(args[++i]));
        };
        if (a == "--short") o.short_run = true;
        else if (a == "--check") o.check_only = true;
        else if (a == "--no-check") o.skip_check = true;
        else if (a == "--dump-days") o.dump_days = number();
        else if (a == "--dump-iso") o.dump_iso = number();
        else if (a == "--values") o.count = number();
        else if (a.starts_with("--locale-cache=")) o.locale_cache = std::string(a.substr(15));
        else kept.push_back(args[i]);
    }
    // The time each benchmark runs for, unless the command line says otherwise.
    static std::string min_time;
    if (std::none_of(kept.begin(), kept.end(), [](const char* a) { return std::string_view(a).starts_with("--benchmark_min_time"); })) {
        min_time = o.short_run ? "--benchmark_min_time=0.002" : "--benchmark_min_time=0.3";
        kept.push_back(min_time.data());
    }
    args = std::move(kept);
    if (o.short_run) o.count = std::min<std::size_t>(o.count, 5'000);
    if (o.check_only) o.count = std::min<std::size_t>(o.count, 20'000);
    return o;
}

// ---- Set-up -----------------------------------------------------------------------------------

struct RowState {
    const RowSpec* spec;
    const vxlocfmt::FuncInfo* row = nullptr;  // registry row, or a local one for the clock format
    vxlocfmt::FuncInfo clock_row{};
    bool built = false;
    std::unique_ptr<IcuPeer> icu;
    std::optional<StrftimePeer> strftime;
    // Start-up comparison, of sampled values: same text as ours (or as ICU's where the floor
    // stands for a row not built yet).
    std::size_t sampled = 0, icu_same = 0, strftime_same = 0, floor_same = 0, bytes_same = 0;
    std::string floor_difference;
};

struct LocaleState {
    const LocaleSpec* spec;
    std::unique_ptr<vxhost::Session> wide, bytes;
    FloorNames names{};
    std::unique_ptr<CLocale> c_locale;
    std::vector<RowState> rows;
};

struct Bench {
    Options options;
    Values values;
    std::unique_ptr<vxhost::Library> library;
    std::vector<LocaleState> locales;
    std::vector<double> amounts;     // -1,000,000.00 to 1,000,000.00 in cents, from the datetimes
    std::vector<std::uint8_t> blob;  // base64 input
    std::string strftime_note;       // why strftime_l is missing, when it is

    const std::vector<double>& input(Input kind) const {
        switch (kind) {
        case Input::days: return values.days;
        case Input::datetimes: return values.datetimes;
        case Input::times: return values.times;
        case Input::months: return values.months;
        }
        return values.days;
    }
};

const vxlocfmt::FuncInfo* find_row(const vxhost::Library& library, const RowSpec& spec, RowState& state) {
    if (spec.registry) return library.find(spec.registry);
    auto* fn = reinterpret_cast<vxlocfmt::format_fn>(library.symbol(spec.symbol));
    if (!fn) return nullptr;
    vxlocfmt::FuncInfo& row = state.clock_row;
    std::fill(std::begin(row.name), std::end(row.name), U' ');
    const std::string_view name = spec.name;
    std::copy(name.begin(), name.end(), row.name);
    row.kind = vxlocfmt::row_kind_format;
    row.function = fn;
    row.default_width = static_cast<std::uint32_t>(spec.width);
    return &row;
}

std::unique_ptr<Bench> set_up(const Options& options) {
    auto bench = std::make_unique<Bench>();
    bench->options = options;
    bench->values = make_values(options.count);
    bench->library = std::make_unique<vxhost::Library>();
    bench->amounts.reserve(bench->values.datetimes.size());
    for (const double t : bench->values.datetimes)
        bench->amounts.push_back(static_cast<double>(static_cast<std::int64_t>(std::fabs(t)) % 200'000'001 - 100'000'000) / 100);
    SplitMix rng{value_seed ^ 0xB64};
    bench->blob.resize(1 << 20);
    for (auto& b : bench->blob) b = static_cast<std::uint8_t>(rng.next() >> 56);

    for (const LocaleSpec& locale : locales) {
        LocaleState& ls = bench->locales.emplace_back();
        ls.spec = &locale;
        ls.wide = std::make_unique<vxhost::Session>(*bench->library, vxhost::SessionOptions{.locale = locale.name});
        ls.bytes = std::make_unique<vxhost::Session>(*bench->library,
                                                     vxhost::SessionOptions{.locale = locale.name, .encoding = "UTF-8"});
        ls.names = floor_names(locale.name);
        ls.c_locale = std::make_unique<CLocale>(locale.name, options.locale_cache);
        if (!ls.c_locale->handle() && bench->strftime_note.empty())
            bench->strftime_note = "strftime_l skipped: " + ls.c_locale->why();
        for (const RowSpec& spec : rows) {
            RowState& rs = ls.rows.emplace_back();
            rs.spec = &spec;
            rs.row = find_row(*bench->library, spec, rs);
            rs.built = rs.row != nullptr;
            rs.icu = std::make_unique<IcuPeer>(locale.name, spec.icu);
            if (ls.c_locale->handle())
                rs.strftime.emplace(ls.c_locale->handle(), spec.strftime[static_cast<int>(locale.layout)]);
        }
    }
    return bench;
}

// ---- Start-up checks --------------------------------------------------------------------------

std::u32string trim(std::u32string_view s) {
    while (!s.empty() && s.back() == U' ') s.remove_suffix(1);
    while (!s.empty() && s.front() == U' ') s.remove_prefix(1);
    return std::u32string(s);
}

// Samples each row: ours against the floor (exactly, leading blanks included), the peers'
// texts against ours without the blanks around them. False when a floor writes something else
// than our row: then the floor is not measuring the same job.
bool compare_outputs(Bench& bench) {
    const std::size_t samples = std::min<std::size_t>(bench.values.days.size(), 2000);
    bool floors_agree = true;
    for (LocaleState& ls : bench.locales) {
        const int layout = static_cast<int>(ls.spec->layout);
        for (RowState& rs : ls.rows) {
            const RowSpec& spec = *rs.spec;
            const std::vector<double>& values = bench.input(spec.input);
            for (std::size_t i = 0; i < samples; ++i) {
                const double x = values[i];
                std::u32string ours;
                std::string ours_bytes;
                if (rs.built) {
                    const vxhost::FormatResult r = ls.wide->format(*rs.row, spec.width, spec.decimals, x);
                    ours.assign(r.text);
                    while (!ours.empty() && ours.back() == U' ') ours.pop_back();
                    if (rs.row->byte_function) {
                        const vxhost::FormatResult b = ls.bytes->format(*rs.row, spec.width, spec.decimals, x);
                        ours_bytes.assign(b.bytes);
                        while (!ours_bytes.empty() && ours_bytes.back() == ' ') ours_bytes.pop_back();
                        rs.bytes_same += ours_bytes == vxhost::to_utf8(ours);
                    }
                }
                UChar icu_text[128];
                const std::int32_t icu_length = rs.icu->format(udate_of[static_cast<int>(spec.input)](x), icu_text, 128);
                const std::u32string icu = trim(to_u32(icu_text, icu_length));

                char32_t floor_cells[256];
                const int floor_length = spec.floor.fn[layout](x, floor_cells, spec.width, ls.names);
                std::u32string floor(floor_cells, static_cast<std::size_t>(std::max(floor_length, 0)));
                while (!floor.empty() && floor.back() == U' ') floor.pop_back();

                // A row not built yet: the floor writes the peers' text.
                const std::u32string& reference = rs.built ? ours : icu;
                if (floor == reference) ++rs.floor_same;
                else if (rs.floor_difference.empty())
                    rs.floor_difference = "value " + std::to_string(x) + ": floor '" + vxhost::to_utf8(floor) + "', " +
                                          (rs.built ? "ours" : "ICU") + " '" + vxhost::to_utf8(reference) + "'";
                if (rs.built) {
                    rs.icu_same += icu == trim(ours);
                    if (rs.strftime) {
                        char text[256];
                        const std::size_t n = rs.strftime->format(unix_of[static_cast<int>(spec.input)](x), text, sizeof text);
                        rs.strftime_same += trim(vxhost::from_utf8({text, n})) == trim(ours);
                    }
                }
                ++rs.sampled;
            }
            if (rs.built && rs.floor_same != rs.sampled) {
                floors_agree = false;
                std::fprintf(stderr, "bench_formats: %s %s: the floor writes another text than ours on %zu of %zu values; first: %s\n",
                             spec.name, ls.spec->name, rs.sampled - rs.floor_same, rs.sampled, rs.floor_difference.c_str());
            }
        }
    }
    return floors_agree;
}

// ---- The benchmarks ---------------------------------------------------------------------------

// How many values (or bytes) one iteration of each benchmark handles, by name.
std::map<std::string, double> units_per_iteration;

void register_benchmark(const std::string& name, double units, std::function<void(benchmark::State&)> body) {
    units_per_iteration[name] = units;
    benchmark::RegisterBenchmark(name.c_str(), [body = std::move(body)](benchmark::State& state) { body(state); });
}

// Ours: the warm call record of the session, set up for the row by one call through the
// session, then the row's function on every value as the host calls it.
void sweep_wide(benchmark::State& state, vxhost::Session& session, const vxlocfmt::FuncInfo& row, int width,
                int decimals, const std::vector<double>& values) {
    session.format(row, width, decimals, values.front());
    FmtCall& call = session.call();
    const vxlocfmt::format_fn fn = row.function;
    for (auto _ : state) {
        for (const double& x : values) {
            call.input = &x;
            call.produced = 0;
            benchmark::DoNotOptimize(fn(&call, nullptr));
        }
        benchmark::ClobberMemory();
    }
}

void sweep_bytes(benchmark::State& state, vxhost::Session& session, const vxlocfmt::FuncInfo& row, int width,
                 int decimals, const std::vector<double>& values) {
    session.format(row, width, decimals, values.front());
    FmtCall& call = session.call();
    const vxlocfmt::byte_format_fn fn = row.byte_function;
    for (auto _ : state) {
        for (const double& x : values) {
            call.input = &x;
            call.produced = 0;
            benchmark::DoNotOptimize(fn(&call, nullptr, nullptr));
        }
        benchmark::ClobberMemory();
    }
}

void sweep_icu(benchmark::State& state, const IcuPeer& peer, double (*udate)(double), const std::vector<double>& values) {
    UChar out[128];
    for (auto _ : state) {
        for (const double x : values) benchmark::DoNotOptimize(peer.format(udate(x), out, 128));
        benchmark::ClobberMemory();
    }
}

void sweep_icu_utf8(benchmark::State& state, const IcuPeer& peer, double (*udate)(double),
                    const std::vector<double>& values) {
    char out[512];
    for (auto _ : state) {
        for (const double x : values) benchmark::DoNotOptimize(peer.format_utf8(udate(x), out, sizeof out));
        benchmark::ClobberMemory();
    }
}

void sweep_strftime(benchmark::State& state, const StrftimePeer& peer, std::time_t (*unix_time)(double),
                    const std::vector<double>& values) {
    char out[256];
    for (auto _ : state) {
        for (const double x : values) benchmark::DoNotOptimize(peer.format(unix_time(x), out, sizeof out));
        benchmark::ClobberMemory();
    }
}

using Base64Encode = vxlocfmt::status (*)(void*, const std::uint8_t*, std::int64_t, vxlocfmt::wchar**, std::int64_t*);
using Base64Decode = vxlocfmt::status (*)(void*, const vxlocfmt::wchar*, std::int32_t, std::uint8_t**, std::int64_t*);

void register_base64(Bench& bench) {
    const auto encode = reinterpret_cast<Base64Encode>(bench.library->symbol("base64EncodeBlob"));
    const auto decode = reinterpret_cast<Base64Decode>(bench.library->symbol("base64DecodeBlob"));
    if (!encode || !decode) return;
    const std::vector<std::uint8_t>& blob = bench.blob;
    const std::size_t size = bench.options.short_run ? 4096 : blob.size();
    auto text = std::make_shared<std::vector<char32_t>>(4 * ((size + 2) / 3));
    floor_base64_encode(blob.data(), size, text->data());

    // One blob, and the same bytes as 60-byte fields (80 characters each), one call a field.
    constexpr std::size_t field = 60;
    for (const bool fields : {false, true}) {
        const std::string what = fields ? "60 B fields" : size >= (1 << 20) ? "1 MiB" : std::to_string(size) + " B";
        const std::size_t piece = fields ? field : size;
        const std::size_t pieces = size / piece;
        const double bytes = static_cast<double>(pieces * piece);
        register_benchmark("base64 encode/" + what + "/us", bytes, [=, &blob](benchmark::State& state) {
            std::vector<char32_t> out(4 * ((size + 2) / 3));
            for (auto _ : state) {
                for (std::size_t p = 0; p < pieces; ++p) {
                    vxlocfmt::wchar* o = out.data() + p * (piece / 3 * 4);
                    std::int64_t n = 0;
                    benchmark::DoNotOptimize(encode(nullptr, blob.data() + p * piece, static_cast<std::int64_t>(piece), &o, &n));
                }
                benchmark::ClobberMemory();
            }
        });
        register_benchmark("base64 encode/" + what + "/floor", bytes, [=, &blob](benchmark::State& state) {
            std::vector<char32_t> out(4 * ((size + 2) / 3));
            for (auto _ : state) {
                for (std::size_t p = 0; p < pieces; ++p)
                    benchmark::DoNotOptimize(floor_base64_encode(blob.data() + p * piece, piece, out.data() + p * (piece / 3 * 4)));
                benchmark::ClobberMemory();
            }
        });
        register_benchmark("base64 decode/" + what + "/us", bytes, [=](benchmark::State& state) {
            std::vector<std::uint8_t> out(size + 8);
            const std::size_t chars = piece / 3 * 4;
            for (auto _ : state) {
                for (std::size_t p = 0; p < pieces; ++p) {
                    std::uint8_t* o = out.data() + p * piece;
                    std::int64_t n = 0;
                    benchmark::DoNotOptimize(decode(nullptr, text->data() + p * chars, static_cast<std::int32_t>(chars), &o, &n));
                }
                benchmark::ClobberMemory();
            }
        });
        register_benchmark("base64 decode/" + what + "/floor", bytes, [=](benchmark::State& state) {
            std::vector<std::uint8_t> out(size + 8);
            const std::size_t chars = piece / 3 * 4;
            for (auto _ : state) {
                for (std::size_t p = 0; p < pieces; ++p)
                    benchmark::DoNotOptimize(floor_base64_decode(text->data() + p * chars, chars, out.data() + p * piece));
                benchmark::ClobberMemory();
            }
        });
    }
}

void register_all(Bench& bench) {
    // Row by row, each locale, ours first and then the peers, so that a row's figures come from
    // the same stretch of the run.
    for (std::size_t r = 0; r < std::size(rows); ++r) {
        for (LocaleState& ls : bench.locales) {
            RowState& rs = ls.rows[r];
            const RowSpec& spec = *rs.spec;
            const std::vector<double>& values = bench.input(spec.input);
            const auto n = static_cast<double>(values.size());
            const std::string prefix = std::string(spec.name) + "/" + ls.spec->name + "/";
            if (rs.built) {
                vxhost::Session& wide = *ls.wide;
                vxhost::Session& bytes = *ls.bytes;
                const vxlocfmt::FuncInfo& row = *rs.row;
                register_benchmark(prefix + "us", n, [&wide, &row, &values, spec](benchmark::State& state) {
                    sweep_wide(state, wide, row, spec.width, spec.decimals, values);
                });
                if (row.byte_function)
                    register_benchmark(prefix + "us_b", n, [&bytes, &row, &values, spec](benchmark::State& state) {
                        sweep_bytes(state, bytes, row, spec.width, spec.decimals, values);
                    });
            }
            const IcuPeer& icu = *rs.icu;
            const auto udate = udate_of[static_cast<int>(spec.input)];
            register_benchmark(prefix + "icu", n, [&icu, udate, &values](benchmark::State& state) {
                sweep_icu(state, icu, udate, values);
            });
            if (spec.icu_bytes)
                register_benchmark(prefix + "icu_b", n, [&icu, udate, &values](benchmark::State& state) {
                    sweep_icu_utf8(state, icu, udate, values);
                });
            if (rs.strftime) {
                const StrftimePeer& peer = *rs.strftime;
                const auto unix_time = unix_of[static_cast<int>(spec.input)];
                register_benchmark(prefix + "strftime", n, [&peer, unix_time, &values](benchmark::State& state) {
                    sweep_strftime(state, peer, unix_time, values);
                });
            }
            const FloorSweep floor = spec.floor.sweep[static_cast<int>(ls.spec->layout)];
            const FloorNames& names = ls.names;
            register_benchmark(prefix + "floor", n, [floor, &values, &names, spec](benchmark::State& state) {
                floor(state, values, spec.width, names);
            });
        }
    }
    for (const ByteRowSpec& spec : byte_rows) {
        for (LocaleState& ls : bench.locales) {
            const vxlocfmt::FuncInfo* row = bench.library->find(spec.registry);
            if (!row || !row->byte_function) continue;
            auto values = std::make_shared<std::vector<double>>(bench.amounts);
            for (double& v : *values) v *= spec.scale;
            const auto n = static_cast<double>(values->size());
            const std::string prefix = std::string(spec.name) + "/" + ls.spec->name + "/";
            vxhost::Session& wide = *ls.wide;
            vxhost::Session& bytes = *ls.bytes;
            register_benchmark(prefix + "us", n, [&wide, row, values, spec](benchmark::State& state) {
                sweep_wide(state, wide, *row, spec.width, spec.decimals, *values);
            });
            register_benchmark(prefix + "us_b", n, [&bytes, row, values, spec](benchmark::State& state) {
                sweep_bytes(state, bytes, *row, spec.width, spec.decimals, *values);
            });
        }
    }
    register_base64(bench);
}

// ---- The table --------------------------------------------------------------------------------

// Collects the runs (median CPU time of the repetitions), says what runs on stderr, and prints
// the table and the goals at the end.
class TableReporter : public benchmark::BenchmarkReporter {
public:
    explicit TableReporter(const Bench& bench) : bench_(bench) {}

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
            const std::string name = run.run_name.function_name;
            const auto units = units_per_iteration.find(name);
            if (units == units_per_iteration.end()) continue;
            const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
            samples_[name].push_back(seconds / units->second);
            if (!bench_.options.short_run)
                std::fprintf(stderr, "  %-36s %10.2f %s\n", name.c_str(), figure(name, seconds / units->second),
                             is_bytes(name) ? "MB/s" : "ns/value");
        }
    }

    void Finalize() override { print(); }

private:
    static bool is_bytes(const std::string& name) { return name.starts_with("base64"); }
    // ns per value, or MB/s, from seconds per unit.
    static double figure(const std::string& name, double seconds) {
        return is_bytes(name) ? 1.0 / seconds / 1e6 : seconds * 1e9;
    }
    // Seconds per unit (median), or nullopt.
    std::optional<double> seconds(const std::string& name) const {
        const auto it = samples_.find(name);
        if (it == samples_.end() || it->second.empty()) return std::nullopt;
        std::vector<double> v = it->second;
        std::sort(v.begin(), v.end());
        return v[v.size() / 2];
    }
    std::string cell(const std::string& name, const char* absent = "-") const {
        const auto s = seconds(name);
        if (!s) return absent;
        char text[32];
        std::snprintf(text, sizeof text, "%.1f", figure(name, *s));
        return text;
    }
    // Peer time / our time (or any time / another).
    std::optional<double> ratio(const std::string& prefix, const char* peer, const char* ours = "us") const {
        const auto us = seconds(prefix + ours), other = seconds(prefix + peer);
        if (!us || !other) return std::nullopt;
        return *other / *us;
    }
    std::string ratio_cell(const std::string& prefix, const char* peer, const char* ours = "us",
                           bool plain = false) const {
        const auto r = ratio(prefix, peer, ours);
        if (!r) return "-";
        char text[32];
        std::snprintf(text, sizeof text, *r >= 10 && !plain ? "%.0fx" : "%.2fx", *r);
        return text;
    }
    static std::string percent(std::size_t same, std::size_t of) {
        if (of == 0) return "-";
        char text[16];
        std::snprintf(text, sizeof text, "%zu%%", same * 100 / of);
        return text;
    }

    void print() const {
        std::printf("\nTimes are CPU ns per value (base64: MB/s of binary data); ratios are peer time / our time\n"
                    "(above 1: we are faster). %zu values per row; 'same' is the share of sampled values where the\n"
                    "peer's text equals ours (floor: exactly, ICU for rows not built).\n",
                    bench_.values.days.size());
        if (!bench_.strftime_note.empty()) std::printf("%s\n", bench_.strftime_note.c_str());
        std::printf("\n%-11s %-6s %8s %8s %6s %9s %9s %9s %7s %8s %8s %8s %9s  %s\n", "operation", "locale", "us", "us_b",
                    "_b/us", "ICU", "ICU+UTF8", "strftime", "floor", "ICU/us", "strf/us", "floor/us", "ICU8/us_b",
                    "same ICU/strf/floor/_b");
        for (std::size_t r = 0; r < std::size(rows); ++r) {
            for (const LocaleState& ls : bench_.locales) {
                const RowState& rs = ls.rows[r];
                const std::string prefix = std::string(rs.spec->name) + "/" + ls.spec->name + "/";
                const char* absent = rs.built ? "-" : "not built";
                const std::string same = percent(rs.icu_same, rs.built ? rs.sampled : 0) + "/" +
                                         percent(rs.strftime_same, rs.built && rs.strftime ? rs.sampled : 0) + "/" +
                                         percent(rs.floor_same, rs.sampled) + "/" +
                                         percent(rs.bytes_same, rs.built && rs.row && rs.row->byte_function ? rs.sampled : 0);
                const std::string spec = std::string(rs.spec->name) + std::to_string(rs.spec->width) + ".";
                std::printf("%-11s %-6s %8s %8s %6s %9s %9s %9s %7s %8s %8s %8s %9s  %s\n", spec.c_str(), ls.spec->name,
                            cell(prefix + "us", absent).c_str(), cell(prefix + "us_b", rs.built ? "-" : "").c_str(),
                            ratio_cell(prefix, "us_b", "us", true).c_str(), cell(prefix + "icu").c_str(),
                            cell(prefix + "icu_b").c_str(), cell(prefix + "strftime").c_str(),
                            cell(prefix + "floor").c_str(), ratio_cell(prefix, "icu").c_str(),
                            ratio_cell(prefix, "strftime").c_str(), ratio_cell(prefix, "floor").c_str(),
                            ratio_cell(prefix, "icu_b", "us_b").c_str(), same.c_str());
            }
        }
        bool numbers = false;
        for (const ByteRowSpec& spec : byte_rows) {
            for (const LocaleState& ls : bench_.locales) {
                const std::string prefix = std::string(spec.name) + "/" + ls.spec->name + "/";
                if (!seconds(prefix + "us") && !seconds(prefix + "us_b")) continue;
                if (!numbers) std::printf("\n%-13s %-6s %8s %8s %6s\n", "number", "locale", "us", "us_b", "_b/us");
                numbers = true;
                const std::string name = std::string(spec.name) + std::to_string(spec.width) + "." +
                                         std::to_string(spec.decimals);
                std::printf("%-13s %-6s %8s %8s %6s\n", name.c_str(), ls.spec->name, cell(prefix + "us").c_str(),
                            cell(prefix + "us_b").c_str(), ratio_cell(prefix, "us_b", "us", true).c_str());
            }
        }
        if (numbers) std::printf("\n");
        for (const char* what : {"base64 encode", "base64 decode"}) {
            for (const char* size : {"1 MiB", "4096 B", "60 B fields"}) {
                const std::string prefix = std::string(what) + "/" + size + "/";
                if (!seconds(prefix + "us")) continue;
                std::printf("%-13s %-11s %8s MB/s   floor %8s MB/s   floor/us %s\n", what, size, cell(prefix + "us").c_str(),
                            cell(prefix + "floor").c_str(), ratio_cell(prefix, "floor").c_str());
            }
        }
        print_goals();
    }

    void goal(const std::string& what, std::optional<double> value, double target, bool at_least,
              const char* unit) const {
        if (!value) {
            std::printf("  %-44s %s\n", what.c_str(), "no figure");
            return;
        }
        const bool met = at_least ? *value >= target : *value <= target;
        char text[128];
        std::snprintf(text, sizeof text, "%.2f%s (goal %s %.2f%s)", *value, unit, at_least ? ">=" : "<=", target, unit);
        std::printf("  %-44s %-36s %s\n", what.c_str(), text, met ? "met" : "MISSED");
    }

    void print_goals() const {
        if (bench_.options.short_run) {
            std::printf("\nGoals: not judged on a short run\n");
            return;
        }
        std::printf("\nGoals\n");
        // Byte output: every _b row within 1.25 times its wide row; NLDATE's _b 20 times ICU's
        // text converted to UTF-8.
        for (const RowSpec& spec : rows) {
            for (const LocaleState& ls : bench_.locales) {
                const std::string prefix = std::string(spec.name) + "/" + ls.spec->name + "/";
                if (!seconds(prefix + "us_b")) continue;
                const std::string label = std::string(spec.name) + " " + ls.spec->name;
                goal(label + ": us_b / us", ratio(prefix, "us_b"), 1.25, false, "x");
                if (spec.name == std::string_view("NLDATE"))
                    goal(label + ": ICU+UTF-8 / us_b", ratio(prefix, "icu_b", "us_b"), 20, true, "x");
            }
        }
        for (const ByteRowSpec& spec : byte_rows) {
            for (const LocaleState& ls : bench_.locales) {
                const std::string prefix = std::string(spec.name) + "/" + ls.spec->name + "/";
                if (!seconds(prefix + "us_b")) continue;
                goal(std::string(spec.name) + " " + ls.spec->name + ": us_b / us", ratio(prefix, "us_b"), 1.25, false, "x");
            }
        }
        for (const char* row : {"NLDATE", "NLDATEL", "NLDATEW", "NLDATM", "WEEKV"}) {
            for (const LocaleState& ls : bench_.locales) {
                const std::string prefix = std::string(row) + "/" + ls.spec->name + "/";
                const std::string label = std::string(row) + " " + ls.spec->name;
                if (!ls.rows.empty() && !seconds(prefix + "us")) {
                    const auto built = std::find_if(ls.rows.begin(), ls.rows.end(), [&](const RowState& rs) {
                        return rs.spec->name == std::string_view(row);
                    });
                    if (built != ls.rows.end() && built->built) continue;  // filtered out of this run
                    std::printf("  %-44s not built\n", label.c_str());
                    continue;
                }
                const std::string_view r = row;
                if (r == "WEEKV") {
                    const auto f = ratio(prefix, "floor");
                    goal(label + ": us / floor", f ? std::optional<double>(1 / *f) : std::nullopt, 2, false, "x");
                    continue;
                }
                goal(label + ": ICU/us", ratio(prefix, "icu"), 20, true, "x");
                if (r == "NLDATM") continue;
                if (seconds(prefix + "strftime")) goal(label + ": strftime_l/us", ratio(prefix, "strftime"), 1, true, "x");
                const auto f = ratio(prefix, "floor");
                goal(label + ": us / floor", f ? std::optional<double>(1 / *f) : std::nullopt, 5, false, "x");
            }
        }
        std::fflush(stdout);
    }

    const Bench& bench_;
    std::map<std::string, std::vector<double>> samples_;
};

// ---- Value files for the CLI run --------------------------------------------------------------

void dump(const Options& o) {
    const Values v = make_values(o.dump_days ? *o.dump_days : *o.dump_iso);
    std::string out;
    out.reserve(v.days.size() * 12);
    char line[32];
    for (const double day : v.days) {
        int n;
        if (o.dump_days) {
            n = std::snprintf(line, sizeof line, "%" PRId64 "\n", static_cast<std::int64_t>(day));
        } else {
            const Civil c = civil_from_days(static_cast<std::int64_t>(day) + epoch_1960);
            n = std::snprintf(line, sizeof line, "%04d-%02u-%02u\n", c.year, c.month, c.day);
        }
        out.append(line, static_cast<std::size_t>(n));
    }
    std::fwrite(out.data(), 1, out.size(), stdout);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::vector<char*> args(argv, argv + argc);
        const Options options = parse_options(args);
        if (options.dump_days || options.dump_iso) {
            dump(options);
            return 0;
        }
        int count = static_cast<int>(args.size());
        args.push_back(nullptr);
        benchmark::Initialize(&count, args.data());
        if (benchmark::ReportUnrecognizedArguments(count, args.data())) return 2;
        std::unique_ptr<Bench> bench = set_up(options);
        const bool floors_agree = options.skip_check || compare_outputs(*bench);
        if (options.check_only) {
            for (const LocaleState& ls : bench->locales)
                for (const RowState& rs : ls.rows)
                    std::printf("%-9s %s  %s  same as ours: ICU %zu/%zu, strftime_l %zu/%zu, floor %zu/%zu\n",
                                rs.spec->name, ls.spec->name, rs.built ? "built    " : "not built", rs.icu_same,
                                rs.sampled, rs.strftime_same, rs.sampled, rs.floor_same, rs.sampled);
            if (!bench->strftime_note.empty()) std::printf("%s\n", bench->strftime_note.c_str());
            return floors_agree ? 0 : 1;
        }
        register_all(*bench);
        TableReporter reporter(*bench);
        benchmark::RunSpecifiedBenchmarks(&reporter);
        benchmark::Shutdown();
        return floors_agree ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_formats: %s\n", error.what());
        return 3;
    }
}
