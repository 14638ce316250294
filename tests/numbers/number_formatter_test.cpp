// The kernel number formatter against a slow exact big-decimal expansion: random doubles of
// every magnitude, every tie at 0 to 20 decimals, and the narrowing, best-fit and "E" rules.
// VX_NUMBER_SWEEP=<count> runs a bigger random sweep.
#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <random>
#include <string>

#include "case_table.h"
#include "exact_reference.h"
#include "number_formatter.h"

namespace {

using namespace vxlocfmt;

struct Rendered {
    std::string text;
    status code;
};

Rendered render(double value, int width, int decimals, std::uint32_t mode) {
    static wchar cells[1024];
    std::int32_t length = -1;
    const status code = vxhost::format_number(nullptr, value, width, decimals, mode, cells, width, &length);
    std::string text;
    for (int i = 0; i < length; ++i) text += static_cast<char>(cells[i]);
    const auto first = text.find_first_not_of(' ');
    return {first == std::string::npos ? "" : text.substr(first), code};
}

// Sanitized builds run the same checks on a fifth of the values.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t share = 5;
#else
constexpr std::size_t share = 1;
#endif

std::size_t sweep_count(std::size_t fallback) {
    const char* env = std::getenv("VX_NUMBER_SWEEP");
    return env ? std::strtoull(env, nullptr, 10) : fallback / share;
}

// "," every three integer digits of a plain fixed-point text.
std::string grouped(const std::string& text) {
    const std::size_t sign = text[0] == '-' ? 1 : 0;
    std::size_t point = text.find('.');
    if (point == std::string::npos) point = text.size();
    std::string out = text.substr(0, sign);
    for (std::size_t i = sign; i < text.size(); ++i) {
        if (i > sign && i < point && (point - i) % 3 == 0) out += ',';
        out += text[i];
    }
    return out;
}

// Mostly everyday magnitudes, some of any bit pattern.
double random_value(std::mt19937_64& rng) {
    const std::uint64_t bits = rng();
    if (bits % 4 == 0) return std::bit_cast<double>(bits);
    const int exponent = static_cast<int>(rng() % 140) - 70;
    return std::ldexp(static_cast<double>(bits >> 11), exponent - 53) * ((bits & 1) ? -1 : 1);
}

TEST(NumberFormatter, FixedPointMatchesExactExpansion) {
    std::mt19937_64 rng(2024);
    const std::size_t count = sweep_count(1000000);
    for (std::size_t i = 0; i < count; ++i) {
        const double value = random_value(rng);
        if (!std::isfinite(value)) continue;
        const int decimals = i % 64 == 0 ? static_cast<int>(rng() % 60) : static_cast<int>(rng() % 12);
        const Rendered got = render(value, 800, decimals, vxhost::mode_fixed);
        const std::string expected = reference::fixed(value, decimals);
        ASSERT_EQ(got.text, expected) << std::hexfloat << value << " at " << decimals;
        ASSERT_EQ(got.code, 0u);
        if (i % 8 == 0) {
            ASSERT_EQ(render(value, 1000, decimals, vxhost::mode_grouped).text, grouped(expected)) << value;
        }
        if (i % 8 == 4 && expected.size() <= 40) {
            // A field just wide enough takes the text as it is; one cell less shortens it.
            const auto width = static_cast<int>(expected.size());
            const Rendered exact = render(value, width, decimals, vxhost::mode_fixed);
            ASSERT_EQ(exact.text, expected) << value << " at width " << width;
            ASSERT_EQ(exact.code, 0u);
            if (width > 1) {
                ASSERT_EQ(render(value, width - 1, decimals, vxhost::mode_fixed).code, st::number_shortened) << value;
            }
        }
    }
}

TEST(NumberFormatter, EveryTieRoundsAwayFromZero) {
    // The ties at d decimals are the odd multiples of 2^-(d+1).
    std::mt19937_64 rng(7);
    for (int d = 0; d <= 20; ++d) {
        for (std::uint64_t q = 1; q < 40000 / share; q += 2) {
            const double tie = std::ldexp(static_cast<double>(q), -(d + 1));
            for (double v : {tie, -tie}) ASSERT_EQ(render(v, 60, d, vxhost::mode_fixed).text, reference::fixed(v, d)) << v;
        }
        for (std::size_t k = 0; k < 20000 / share; ++k) {
            const double tie = std::ldexp(static_cast<double>((rng() >> 11) | 1), -(d + 1));
            ASSERT_EQ(render(tie, 60, d, vxhost::mode_fixed).text, reference::fixed(tie, d)) << tie;
        }
    }
    EXPECT_EQ(render(0.125, 8, 2, vxhost::mode_fixed).text, "0.13");
    EXPECT_EQ(render(2.675, 8, 2, vxhost::mode_fixed).text, "2.67");  // 2.67499999...
    EXPECT_EQ(render(-0.004, 8, 2, vxhost::mode_fixed).text, "0.00");
}

TEST(NumberFormatter, ExponentialMatchesExactExpansion) {
    std::mt19937_64 rng(99);
    for (std::size_t i = 0; i < 200000 / share; ++i) {
        const double value = random_value(rng);
        if (!std::isfinite(value)) continue;
        const int width = 7 + static_cast<int>(rng() % 20);
        const std::string expected = reference::scientific(value, width - 7);
        const Rendered got = render(value, width, width - 7, vxhost::mode_exponential);
        if (expected.size() <= static_cast<std::size_t>(width)) ASSERT_EQ(got.text, expected) << value;
        else ASSERT_EQ(got.text, reference::scientific(value, width - 8)) << value;  // three exponent digits
    }
}

// Best fit: its text is the exact value rounded at the decimals (or mantissa digits) it shows.
TEST(NumberFormatter, BestFitIsTheRoundedValueAtWhatItShows) {
    std::mt19937_64 rng(5);
    for (std::size_t i = 0; i < 200000 / share; ++i) {
        const double value = random_value(rng);
        if (!std::isfinite(value)) continue;
        const int width = 1 + static_cast<int>(rng() % 32);
        const Rendered got = render(value, width, 0, vxhost::mode_best_fit);
        ASSERT_LE(got.text.size(), static_cast<std::size_t>(width));
        if (got.text.find('*') != std::string::npos) {
            ASSERT_LT(width, 6 + (value < 0)) << value;
            continue;
        }
        const auto e = got.text.find('E');
        const auto point = got.text.find('.');
        if (e == std::string::npos) {
            const int shown = point == std::string::npos ? 0 : static_cast<int>(got.text.size() - point - 1);
            ASSERT_EQ(got.text, reference::fixed(value, shown)) << value << " width " << width;
        } else {
            const int shown = point == std::string::npos ? 0 : static_cast<int>(e - point - 1);
            const std::string expected = reference::scientific(value, shown);
            ASSERT_EQ(got.text.substr(0, e), expected.substr(0, expected.find('E')).substr(0, e)) << value;
        }
    }
}

TEST(NumberFormatter, Narrowing) {
    const std::pair<std::string_view, std::uint32_t> modes[] = {{"fixed", vxhost::mode_fixed}, {"grouped", vxhost::mode_grouped},
                                                                {"best_fit", vxhost::mode_best_fit},
                                                                {"exponential", vxhost::mode_exponential}};
    for (const case_table::Row& row : case_table::read("numbers/narrowing_cases.tsv")) {
        std::uint32_t mode = 99;
        for (const auto& [name, m] : modes) mode = name == row[3] ? m : mode;
        const Rendered got = render(row.number(0), row.integer(1), row.integer(2), mode);
        EXPECT_EQ(got.text, row[4]) << row.where();
        EXPECT_EQ(got.code, row[5] == "shortened" ? st::number_shortened : 0u) << row.where();
    }
}

TEST(NumberFormatter, NeverWritesPastWidthOrCapacity) {
    wchar cells[64];
    for (std::uint32_t mode : {vxhost::mode_fixed, vxhost::mode_grouped, vxhost::mode_best_fit, vxhost::mode_exponential})
        for (double value : {0.0, -1.5, 1234567.891, -1e300, 5e-324, std::nan("")})
            for (int width = -1; width <= 40; ++width)
                for (int capacity : {width, width / 2}) {
                    std::fill(std::begin(cells), std::end(cells), U'~');
                    std::int32_t length = 0;
                    vxhost::format_number(nullptr, value, width, 3, mode, cells, capacity, &length);
                    const int limit = std::max(0, std::min(width, capacity));
                    ASSERT_EQ(length, limit);
                    for (int i = limit; i < 64; ++i) ASSERT_EQ(cells[i], U'~') << value << " " << width;
                }
}

}  // namespace
