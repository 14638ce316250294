// The standard number reader against glibc's strtod in the C locale (correctly rounded) over
// random decimal texts: short and long mantissas (17 and more significant digits), points
// anywhere, exponents to the ends of the range, and exact halfway points between neighbouring
// doubles (and texts a hair either side of them). VXREADER_TEXTS sets the count. The everyday
// shape's one-pass branch is held to the general route on short texts of number characters.
#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale.h>
#include <random>
#include <string>

#include "classic/decimal_reader.h"

namespace {

using namespace vxlocfmt;

long text_count() {
    const char* n = std::getenv("VXREADER_TEXTS");
    return n ? std::atol(n) : 2000000;
}

// A random decimal text: sign, digits with a point somewhere, maybe an exponent.
std::string random_text(std::mt19937_64& random) {
    std::string text;
    if (random() % 3 == 0) text += random() % 2 ? '-' : '+';
    const int lengths[] = {1, 3, 8, 15, 16, 17, 18, 19, 20, 25, 40};
    const int digits = lengths[random() % std::size(lengths)];
    const int point = static_cast<int>(random() % static_cast<unsigned>(digits + 2)) - 1;  // -1: none
    for (int i = 0; i < digits; ++i) {
        if (i == point) text += '.';
        text += static_cast<char>('0' + random() % 10);
    }
    if (point == digits) text += '.';
    if (random() % 2) {
        const int span = random() % 4 == 0 ? 340 : 30;
        text += random() % 2 ? 'e' : 'E';
        text += std::to_string(static_cast<int>(random() % (2 * span + 1)) - span);
    }
    return text;
}

// The exact decimal midpoint of a random double and its upper neighbour (long double holds it),
// cut to a random number of digits so that some texts fall a hair below it.
std::string halfway_text(std::mt19937_64& random) {
    double d;
    do d = std::bit_cast<double>(random() & 0x7FEFFFFFFFFFFFFFull);
    while (!std::isfinite(d));
    const long double mid = (static_cast<long double>(d) + std::nextafter(d, INFINITY)) / 2;
    const int digits = random() % 2 ? 780 : 17 + static_cast<int>(random() % 30);
    char text[840];
    std::snprintf(text, sizeof text, "%.*Le", digits, mid);
    return text;
}

TEST(DecimalReader, MatchesStrtodInTheCLocale) {
    const locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    std::mt19937_64 random(2026);
    const long count = text_count();
    long halfway = 0;
    for (long i = 0; i < count; ++i) {
        const std::string text = i % 64 == 0 ? (++halfway, halfway_text(random)) : random_text(random);
        const std::u32string wide(text.begin(), text.end());
        double got = 12345;
        const status s = classic::read_decimal(wide.data(), static_cast<std::int32_t>(wide.size()), &got);
        errno = 0;
        const double want = strtod_l(text.c_str(), nullptr, c_locale);
        if (std::isinf(want)) {
            ASSERT_EQ(s, classic::reader_refused) << text;  // beyond the double range
            continue;
        }
        ASSERT_EQ(s, 0u) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(got), std::bit_cast<std::uint64_t>(want)) << text;
    }
    freelocale(c_locale);
    EXPECT_GT(halfway, count / 100);
}

// Digits beyond the ones kept still decide a tie: a 1 at the 900th place rounds up.
TEST(DecimalReader, DigitsFarBeyondTheKeptOnesBreakTies) {
    const long double mid = (1.0L + std::nextafter(1.0, 2.0)) / 2;
    char text[1000];
    std::snprintf(text, sizeof text, "%.800Lf", mid);
    std::string tie = text;
    const std::string above = tie + std::string(100, '0') + "1";
    double value = 0;
    const std::u32string wide_tie(tie.begin(), tie.end()), wide_above(above.begin(), above.end());
    ASSERT_EQ(classic::read_decimal(wide_tie.data(), static_cast<std::int32_t>(wide_tie.size()), &value), 0u);
    EXPECT_EQ(value, 1.0);  // ties to even
    ASSERT_EQ(classic::read_decimal(wide_above.data(), static_cast<std::int32_t>(wide_above.size()), &value), 0u);
    EXPECT_EQ(value, std::nextafter(1.0, 2.0));
}

// Short texts of the characters a number is made of, and near misses: the one-pass branch and
// the general route give the same status and the same bits, or leave the result alike.
TEST(DecimalReader, PlainShapeAsTheGeneralRoute) {
    const char32_t alphabet[] = {U'0', U'1', U'5', U'9', U'0', U'7', U'.', U'-', U'+', U' ', U',', U'e', U'\u00A0', U'x'};
    std::mt19937_64 random(7);
    long plain = 0;
    for (int n = 0; n < 300000; ++n) {
        std::u32string text(random() % 19, U'0');
        for (char32_t& c : text) c = random() % 3 ? static_cast<char32_t>(U'0' + random() % 10) : alphabet[random() % std::size(alphabet)];
        const auto length = static_cast<std::int32_t>(text.size());
        double general = -3.5, ours = -3.5;
        const status want = classic::read_decimal_general(text.data(), length, &general);
        const status got = classic::read_decimal(text.data(), length, &ours);
        ASSERT_EQ(got, want) << n;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(ours), std::bit_cast<std::uint64_t>(general)) << n;
        plain += want == 0;
    }
    EXPECT_GT(plain, 30000);
}

}  // namespace
