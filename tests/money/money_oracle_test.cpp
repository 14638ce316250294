// NLMNY and NLMNYI against ICU's currency formatting, over every locale with Latin digits and a
// currency: width 32, the currency's fraction digits, Unicode spaces compared as one blank. A
// difference is a failure when one of the 20 placement patterns, with the locale's number,
// signs and symbol, gives ICU's text (the table's conventions are then wrong); otherwise ICU's
// pattern is one the conventions cannot express, and the locale is counted and named. The table
// has one set of positions for both currency records, read off the local symbol; where ICU
// spaces the ISO code differently (a blank between letters and digits), NLMNYI differs although
// a pattern would fit: those locales are counted and named too, when NLMNY matches ICU there.
#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>
#include <unicode/unumsys.h>
#include <unicode/uvernum.h>

#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "icu_text.h"
#include "library.h"
#include "locale/property_table.h"
#include "locale_data.h"
#include "nlnum/currency_format_patterns.h"
#include "session.h"
#include "text_convert.h"

namespace {

using vxlocfmt::NumberConventions;
namespace prop = vxlocfmt::locale::prop;

std::u32string normalised(std::u32string text) { return icu_text::trimmed(icu_text::blanked(std::move(text))); }

std::u32string icu_currency(const char* id, UNumberFormatStyle style, int decimals, double value) {
    UErrorCode error = U_ZERO_ERROR;
    UNumberFormat* format = unum_open(style, nullptr, 0, id, nullptr, &error);
    unum_setAttribute(format, UNUM_MIN_FRACTION_DIGITS, decimals);
    unum_setAttribute(format, UNUM_MAX_FRACTION_DIGITS, decimals);
    UChar buffer[128];
    const int32_t n = unum_formatDouble(format, value, buffer, 128, nullptr, &error);
    unum_close(format);
    return U_SUCCESS(error) ? icu_text::widen(buffer, n) : U"";
}


// |value| as the renderer builds it: groups of grouping[0] digits, the record's point.
std::u32string number_part(const NumberConventions& c, double value, int decimals) {
    char digits[64];
    std::snprintf(digits, sizeof digits, "%.*f", decimals, std::fabs(value));
    std::string whole = digits, fraction;
    if (const std::size_t dot = whole.find('.'); dot != std::string::npos) {
        fraction = whole.substr(dot + 1);
        whole.resize(dot);
    }
    std::u32string out;
    const std::size_t g = c.grouping[0] > 0 ? static_cast<std::size_t>(c.grouping[0]) : whole.size();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % g == 0) out += std::u32string_view(c.thousands_sep, c.thousands_sep[1] ? 2 : c.thousands_sep[0] ? 1 : 0);
        out += static_cast<char32_t>(whole[i]);
    }
    if (!fraction.empty()) out += std::u32string(c.decimal_point, c.decimal_point[1] ? 2 : 1) + vxhost::from_utf8(fraction);
    return out;
}

// Can any placement pattern give ICU's text with this number, sign and symbol?
bool expressible(const std::u32string& icu, const NumberConventions& c, const std::u32string& number, bool negative) {
    const std::u32string sign = negative ? c.negative_sign : c.positive_sign;
    for (const vxlocfmt::wchar* pattern : vxlocfmt::nlnum::CurrencyFormatPatterns) {
        std::u32string text;
        for (const char32_t* p = pattern; *p; ++p) {
            if (*p == U'V') text += number;
            else if (*p == U'$') text += c.currency_symbol;
            else if (*p == U'-') text += sign;
            else if (*p == U' ' || (negative && (*p == U'(' || *p == U')'))) text += *p;
        }
        if (normalised(text) == icu) return true;
    }
    return false;
}

// NLMNY equals ICU's symbol format of the same amount in this locale.
bool symbol_format_matches(vxhost::Session& session, const vxhost::Library& library, const char* id, double value) {
    const vxlocfmt::PropertyCache& table = *session.call().property_cache;
    const int decimals = std::stoi(vxhost::to_utf8(vxlocfmt::locale::property_text(table, prop::frac_digits)));
    const std::u32string ours(session.format(*library.find(U"NLMNY"), 32, decimals, value).text);
    return normalised(ours) == normalised(icu_currency(id, UNUM_CURRENCY, decimals, value));
}

struct Tally {
    int compared = 0;
    std::vector<std::string> placement, grouping, shared;
};

void report(const char* what, const Tally& t) {
    std::cout << what << ": " << t.compared << " locales compared; " << t.placement.size()
              << " with a placement the conventions cannot express, " << t.grouping.size()
              << " with a grouping they cannot express\n  placement:";
    for (const auto& s : t.placement) std::cout << " " << s;
    std::cout << "\n  grouping:";
    for (const auto& s : t.grouping) std::cout << " " << s;
    if (!t.shared.empty()) {
        std::cout << "\n  positions of the local symbol, not the code (" << t.shared.size() << "):";
        for (const auto& s : t.shared) std::cout << " " << s;
    }
    std::cout << "\n";
}

// shared: the record's positions are the local symbol's (NLMNYI); a difference that a pattern
// would fit is then the table's limit when the local symbol's format matches ICU.
void check(const char32_t* row_name, std::size_t key, std::size_t fraction_property, UNumberFormatStyle style,
           bool shared_positions) {
    if (vxhost::locale_data_icu_version() != U_ICU_VERSION) GTEST_SKIP() << "locale data from another ICU";
    vxhost::Library library;
    const vxlocfmt::FuncInfo& row = *library.find(row_name);
    Tally tally;
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) {
        const char* id = uloc_getAvailable(i);
        if (!icu_text::latin_digits(id) || vxhost::canonical_locale(id) != id) continue;
        vxhost::Session session(library, {.locale = id});
        session.format(row, 32, 0, 0);  // builds the table
        const vxlocfmt::PropertyCache& table = *session.call().property_cache;
        if (table.properties[key].length == 0) continue;  // no currency: DOLLAR
        const NumberConventions& c = *table.properties[key].conventions;
        const int decimals = static_cast<int>(std::stoi(vxhost::to_utf8(vxlocfmt::locale::property_text(table, fraction_property))));
        ++tally.compared;
        bool placement = false, grouping = false, shared = false;
        for (const double value : {1234567.5, -1234567.5}) {
            const std::u32string ours = normalised(std::u32string(session.format(row, 32, decimals, value).text));
            const std::u32string icu = normalised(icu_currency(id, style, decimals, value));
            if (ours == icu) continue;
            const std::u32string number = number_part(c, value, decimals);
            if (normalised(icu).find(normalised(number)) == std::u32string::npos) grouping = true;
            else if (!expressible(icu, c, number, value < 0)) placement = true;
            else if (shared_positions && symbol_format_matches(session, library, id, value)) shared = true;
            else
                ADD_FAILURE() << id << " " << value << ": ours \"" << vxhost::to_utf8(ours) << "\", ICU \""
                              << vxhost::to_utf8(icu) << "\" (a pattern gives ICU's text)";
        }
        if (grouping) tally.grouping.push_back(id);
        else if (placement) tally.placement.push_back(id);
        else if (shared) tally.shared.push_back(id);
    }
    report(vxhost::to_utf8(row_name).c_str(), tally);
    EXPECT_GT(tally.compared, 300);
    // Most locales' patterns are within reach of the conventions.
    EXPECT_LT(tally.placement.size() + tally.grouping.size() + tally.shared.size(),
              static_cast<std::size_t>(tally.compared) / 2);
}

TEST(MoneyOracle, NlmnyMatchesIcuCurrencyFormatting) {
    check(U"NLMNY", prop::local_currency_key, prop::frac_digits, UNUM_CURRENCY, false);
}

TEST(MoneyOracle, NlmnyiMatchesIcuIsoCurrencyFormatting) {
    check(U"NLMNYI", prop::international_currency_key, prop::int_frac_digits, UNUM_CURRENCY_ISO, true);
}

}  // namespace
