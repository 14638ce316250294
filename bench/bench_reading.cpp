// The classic numeric reader (vxfmtzifmn through the kernel's reader slot, as the host calls it)
// and the hexadecimal reader (vxfmtzifmhex), per value, beside strtod in the C locale,
// std::from_chars (the floor: no blanks, no grouping, no call record) and ICU unum_parseDouble,
// all on the same texts. After the runs a table gives ns per value and the ratios peer / us.
//
//   build-bench/bin/bench_reading                 # the table at the end
//   build-bench/bin/bench_reading --benchmark_min_time=0.001   # seconds (scripts/bench.sh --short)
#include <benchmark/benchmark.h>

#include <unicode/unum.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <locale.h>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "classic/decimal_reader.h"
#include "classic/value_informats.h"
#include "frame/kernel.h"
#include "kernel_handle.h"

namespace {

using vxlocfmt::FmtCall;

constexpr std::size_t text_count = 4096;

// Decimal texts as a host's columns hold them: 1 to 17 significant digits, a point mostly, a
// sign now and then, an exponent rarely. The same set in ASCII, wide and UTF-16.
struct Texts {
    std::vector<std::string> ascii;
    std::vector<std::u32string> wide;
    std::vector<std::u16string> utf16;
    std::vector<std::string> hex_ascii;
    std::vector<std::u32string> hex_wide;
    Texts() {
        std::mt19937_64 random(50);
        for (std::size_t i = 0; i < text_count; ++i) {
            std::string t;
            if (random() % 4 == 0) t += '-';
            const int digits = 1 + static_cast<int>(random() % 17);
            const int point = static_cast<int>(random() % static_cast<unsigned>(digits + 1));
            for (int d = 0; d < digits; ++d) {
                if (d == point && d > 0) t += '.';
                t += static_cast<char>('0' + random() % 10);
            }
            if (random() % 16 == 0) {
                t += 'e';
                t += std::to_string(static_cast<int>(random() % 41) - 20);
            }
            ascii.push_back(t);
            wide.emplace_back(t.begin(), t.end());
            utf16.emplace_back(t.begin(), t.end());
            char h[17];
            std::snprintf(h, sizeof h, "%016llX", static_cast<unsigned long long>(random()));
            hex_ascii.emplace_back(h);
            hex_wide.emplace_back(h, h + 16);
        }
    }
};
const Texts& texts() {
    static const Texts t;
    return t;
}

template <class Read>
void per_value(benchmark::State& state, Read read) {
    double sum = 0;
    for (auto _ : state)
        for (std::size_t i = 0; i < text_count; ++i) sum += read(i);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * text_count));
}

double through_informat(vxlocfmt::format_fn informat, const std::u32string& text, int width) {
    static FmtCall call{};
    double value = 0;
    call.width = width;
    call.input = text.data();
    call.input_length = static_cast<std::int32_t>(text.size());
    call.output = &value;
    informat(&call, nullptr);
    return value;
}

void number_us(benchmark::State& state) {
    Exported_VXHandle = vxhost::kernel_handle();
    per_value(state, [](std::size_t i) { return through_informat(vxfmtzifmn, texts().wide[i], 32); });
}
void number_reader(benchmark::State& state) {
    per_value(state, [](std::size_t i) {
        double v = 0;
        const auto& t = texts().wide[i];
        vxlocfmt::classic::read_decimal(t.data(), static_cast<std::int32_t>(t.size()), &v);
        return v;
    });
}
void number_strtod(benchmark::State& state) {
    static const locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    per_value(state, [](std::size_t i) { return strtod_l(texts().ascii[i].c_str(), nullptr, c_locale); });
}
void number_floor(benchmark::State& state) {
    per_value(state, [](std::size_t i) {
        double v = 0;
        const auto& t = texts().ascii[i];
        std::from_chars(t.data(), t.data() + t.size(), v);
        return v;
    });
}
void number_icu(benchmark::State& state) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* format = unum_open(UNUM_DECIMAL, nullptr, 0, "en_US_POSIX", nullptr, &error);
    if (U_FAILURE(error)) {
        state.SkipWithError("unum_open failed");
        return;
    }
    per_value(state, [format](std::size_t i) {
        UErrorCode e = U_ZERO_ERROR;
        const auto& t = texts().utf16[i];
        return unum_parseDouble(format, t.data(), static_cast<std::int32_t>(t.size()), nullptr, &e);
    });
    unum_close(format);
}
void hex_us(benchmark::State& state) {
    per_value(state, [](std::size_t i) { return through_informat(vxfmtzifmhex, texts().hex_wide[i], 16); });
}
void hex_strtoull(benchmark::State& state) {
    per_value(state, [](std::size_t i) {
        return static_cast<double>(std::strtoull(texts().hex_ascii[i].c_str(), nullptr, 16));
    });
}
void hex_floor(benchmark::State& state) {
    per_value(state, [](std::size_t i) {
        std::uint64_t bits = 0;
        const auto& t = texts().hex_ascii[i];
        std::from_chars(t.data(), t.data() + t.size(), bits, 16);
        return static_cast<double>(bits);
    });
}

// Collects ns per value by name, then prints the table.
class TableReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const auto items = run.counters.find("items_per_second");
            if (!run.error_occurred && items != run.counters.end() && items->second.value > 0)
                ns_[run.benchmark_name()] = 1e9 / items->second.value;
        }
    }
    void table() const {
        std::printf("\nns per value (CPU) and ratio peer / us, on the same %zu texts\n", text_count);
        row("N (vxfmtzifmn)", "number/us", {"number/reader", "number/strtod_C", "number/from_chars", "number/icu_unum"});
        row("HEX (vxfmtzifmhex)", "hex/us", {"hex/strtoull", "hex/from_chars"});
    }

private:
    void row(const char* title, const char* us, std::initializer_list<const char*> peers) const {
        const auto ours = ns_.find(us);
        if (ours == ns_.end()) return;
        std::printf("  %-20s us %7.1f ns", title, ours->second);
        for (const char* peer : peers) {
            const auto p = ns_.find(peer);
            if (p != ns_.end()) std::printf("   %s %.1f ns (%.2f)", std::string(peer).substr(std::string(peer).find('/') + 1).c_str(), p->second, p->second / ours->second);
        }
        std::printf("\n");
    }
    std::map<std::string, double> ns_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::RegisterBenchmark("number/us", number_us);
    benchmark::RegisterBenchmark("number/reader", number_reader);
    benchmark::RegisterBenchmark("number/strtod_C", number_strtod);
    benchmark::RegisterBenchmark("number/from_chars", number_floor);
    benchmark::RegisterBenchmark("number/icu_unum", number_icu);
    benchmark::RegisterBenchmark("hex/us", hex_us);
    benchmark::RegisterBenchmark("hex/strtoull", hex_strtoull);
    benchmark::RegisterBenchmark("hex/from_chars", hex_floor);
    benchmark::Initialize(&argc, argv);
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.table();
    benchmark::Shutdown();
    return 0;
}
