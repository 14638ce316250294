// NLNUM, NLNUMI, NLPCT and NLPCTI at width 32 in every locale with Latin digits, against ICU's
// decimal formatting of the same double (its exact decimal value, rounded half up, that is away
// from zero) with the same fraction digits. ICU is set to the renderer's deliberate rules where
// they differ from the locale's own, and the locales concerned are counted and named:
// - a grouping such as "3;2" groups by its first size only;
// - minus zero shows no sign;
// - a percentage is the sign, the number and ICU's percent symbol, whatever the locale's own
//   percent pattern.
#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unum.h>
#include <unicode/unumsys.h>
#include <unicode/ustring.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "icu_text.h"
#include "locale_data.h"
#include "nlnum_fixture.h"
#include "text_convert.h"
#include "unicode/uvernum.h"

namespace {

using namespace nlnum_test;
using vxhost::to_utf8;

std::u32string normalised(std::u32string_view text) { return icu_text::trimmed(icu_text::blanked(std::u32string(text))); }

// The exact decimal value of a double ("2.67499999999999982236431605997495353221893310546875");
// glibc prints every digit. Minus zero is "0".
std::string exact(double v) {
    if (v == 0) return "0";
    char text[1500];
    std::snprintf(text, sizeof text, "%.1100f", v);
    std::string s = text;
    s.erase(s.find_last_not_of('0') + 1);
    if (s.back() == '.') s.pop_back();
    return s;
}

struct Icu {
    UNumberFormat* format = nullptr;
    Icu() = default;
    explicit Icu(UNumberFormat* f) : format(f) {}
    Icu(Icu&& o) noexcept : format(o.format) { o.format = nullptr; }
    ~Icu() {
        if (format) unum_close(format);
    }
    Icu clone() const {
        UErrorCode e = U_ZERO_ERROR;
        return Icu(unum_clone(format, &e));
    }
    void fraction_digits(int d) {
        unum_setAttribute(format, UNUM_MIN_FRACTION_DIGITS, d);
        unum_setAttribute(format, UNUM_MAX_FRACTION_DIGITS, d);
    }
    void symbol(UNumberFormatSymbol which, const UChar* text) {
        UErrorCode e = U_ZERO_ERROR;
        unum_setSymbol(format, which, text, -1, &e);
    }
    std::u32string symbol(UNumberFormatSymbol which) const {
        UChar text[16];
        UErrorCode e = U_ZERO_ERROR;
        const int32_t n = unum_getSymbol(format, which, text, 16, &e);
        return icu_text::widen(text, n);
    }
    std::u32string operator()(const std::string& decimal) const {
        UChar out[128];
        UErrorCode e = U_ZERO_ERROR;
        const int32_t n = unum_formatDecimal(format, decimal.c_str(), -1, out, 128, nullptr, &e);
        return U_SUCCESS(e) ? icu_text::widen(out, n) : U"<icu failed>";
    }
};

TEST(IcuOracle, EveryLatinDigitLocaleAtWidth32) {
    if (vxhost::locale_data_icu_version() != U_ICU_VERSION)
        GTEST_SKIP() << "the locale data comes from ICU " << vxhost::locale_data_icu_version() << ": no oracle";
    const double values[] = {0.0,        -0.0,      0.125,     2.675,      -2.675, 9.995,   999999.995,
                             1e15,       -1234567.891, 1234.5, -0.5,       0.5,    1e-6,    123456789.125};
    struct Value {
        double v;
        std::string text, percent_magnitude;  // exact decimal values of v and |v x 100|
    };
    std::vector<Value> spread;
    for (const double v : values) spread.push_back({v, exact(v), exact(std::fabs(v != 0 ? v * 100 : v))});
    std::vector<std::string> secondary_grouping, other_percent;
    std::size_t locales = 0, compared = 0, mismatches = 0;
    for (const std::string& id : vxhost::locale_names()) {
        if (!icu_text::latin_digits(id.c_str())) continue;
        ++locales;
        UErrorCode e = U_ZERO_ERROR;
        const Icu own(unum_open(UNUM_DECIMAL, nullptr, 0, id.c_str(), nullptr, &e));
        ASSERT_TRUE(U_SUCCESS(e)) << id;
        // The locale's formatter set to the renderer's rules.
        Icu number = own.clone();
        unum_setAttribute(number.format, UNUM_ROUNDING_MODE, UNUM_ROUND_HALFUP);
        const int32_t primary = unum_getAttribute(number.format, UNUM_GROUPING_SIZE);
        unum_setAttribute(number.format, UNUM_SECONDARY_GROUPING_SIZE, primary);
        if (own("12345678") != number("12345678")) secondary_grouping.push_back(id);
        // The fixed separators of NLNUMI and NLPCTI with the locale's signs.
        Icu fixed = number.clone();
        fixed.symbol(UNUM_DECIMAL_SEPARATOR_SYMBOL, u".");
        fixed.symbol(UNUM_GROUPING_SEPARATOR_SYMBOL, u",");
        unum_setAttribute(fixed.format, UNUM_GROUPING_USED, 1);
        unum_setAttribute(fixed.format, UNUM_GROUPING_SIZE, 3);
        unum_setAttribute(fixed.format, UNUM_SECONDARY_GROUPING_SIZE, 3);
        const std::u32string minus = number.symbol(UNUM_MINUS_SIGN_SYMBOL);
        // The percent records hold "%" as their symbol, deliberately: ICU's "\u200e%\u200e" of
        // some Arabic locales with Latin digits is written as "%".
        const std::u32string percent = U"%";
        if (number.symbol(UNUM_PERCENT_SYMBOL) != percent) other_percent.push_back(id);

        vxhost::Session& session = Loaded::session(id);
        for (int d = 0; d <= 6; ++d) {
            number.fraction_digits(d);
            fixed.fraction_digits(d);
            for (const Value& value : spread) {
                const double v = value.v;
                const std::u32string magnitude = number(value.percent_magnitude);
                const std::u32string magnitude_fixed = fixed(value.percent_magnitude);
                const std::u32string sign = v < 0 ? minus : U"";
                const struct {
                    std::u32string_view name;
                    std::u32string expected;
                } rows[] = {
                    {U"NLNUM", number(value.text)},
                    {U"NLNUMI", fixed(value.text)},
                    {U"NLPCT", sign + magnitude + percent},
                    {U"NLPCTI", sign + magnitude_fixed + percent},
                };
                for (const auto& r : rows) {
                    const auto got = session.format(*Loaded::row(r.name), 32, d, v);
                    ++compared;
                    if (got.code == 0 && normalised(got.text) == normalised(r.expected)) continue;
                    if (++mismatches <= 20)
                        ADD_FAILURE() << id << " " << to_utf8(r.name) << "32." << d << " of " << value.text << ": ["
                                      << to_utf8(got.text) << "] ICU [" << to_utf8(r.expected) << "]";
                }
            }
        }
    }
    EXPECT_EQ(mismatches, 0u);
    EXPECT_GT(locales, 500u);
    const auto list = [](const std::vector<std::string>& ids) {
        std::string out;
        for (const std::string& id : ids) out += " " + id;
        return out;
    };
    std::cout << locales << " locales with Latin digits, " << compared << " texts compared\n"
              << secondary_grouping.size() << " group by their first size only (ICU would use a second):"
              << list(secondary_grouping) << "\n"
              << other_percent.size() << " write \"%\" for ICU's percent symbol with format marks:" << list(other_percent) << "\n";
}

}  // namespace
