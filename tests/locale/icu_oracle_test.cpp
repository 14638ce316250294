// The properties of a sample of locales across scripts against ICU asked directly: ids, names,
// separators, the week rule, patterns rendered against ICU's own formatting, and amounts rendered
// with the POSIX-style conventions against ICU's number and currency formats.
#include <gtest/gtest.h>
#include <unicode/datefmt.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/numfmt.h>
#include <unicode/ucurr.h>
#include <unicode/uloc.h>

#include <cmath>

#include "icu_oracle.h"

namespace {

using namespace locale_test;
using icu::DateFormat;

std::unique_ptr<icu::SimpleDateFormat> date_format(DateFormat* f) {
    return std::unique_ptr<icu::SimpleDateFormat>(dynamic_cast<icu::SimpleDateFormat*>(f));
}

icu::UnicodeString pattern_of(DateFormat* f) {
    icu::UnicodeString p;
    date_format(f)->toPattern(p);
    return p;
}

TEST(IcuOracle, IdsCalendarsAndWeeks) {
    SKIP_UNLESS_DATA_ICU();
    for (const std::string id : sample_locales) {
        const Table t(id);
        const icu::Locale l = named_locale(id);
        EXPECT_EQ(ascii_of(t.text(prop::locale_id)), id);
        const std::string def = default_calendar(id);
        EXPECT_EQ(ascii_of(t.text(prop::default_calendar)), def) << id;
        EXPECT_EQ(ascii_of(t.text(prop::calendar_type)), data_calendar(def)) << id;
        const std::string code = def == "buddhist" ? "TH" : def == "roc" ? "TW" : def == "japanese" ? "JP" : "";
        EXPECT_EQ(ascii_of(t.text(prop::calendar_code)), code) << id;
        // The week rule: Sunday first U, Monday first with 4 minimal days V, else W.
        UErrorCode e = U_ZERO_ERROR;
        std::unique_ptr<icu::Calendar> c(icu::Calendar::createInstance(l, e));
        const auto first = c->getFirstDayOfWeek(e);
        const char32_t week = first == UCAL_SUNDAY ? U'U' : first == UCAL_MONDAY && c->getMinimalDaysInFirstWeek() == 4 ? U'V' : U'W';
        const std::u32string_view year_week_day = t.text(prop::week_pattern);
        EXPECT_NE(year_week_day.find(std::u32string{U'%', week}), std::u32string_view::npos) << id;
        EXPECT_EQ(year_week_day.find(U'U') != std::u32string_view::npos, week == U'U') << id << ": NLDATEWN looks for U";
        EXPECT_EQ(t.text(prop::year_week), year_week_day.substr(0, t.text(prop::year_week).size())) << id;
        if (id == "root") continue;
        EXPECT_EQ(ascii_of(t.text(prop::language)), l.getLanguage()) << id;
        EXPECT_EQ(ascii_of(t.text(prop::territory)), l.getCountry()) << id;
        char likely[ULOC_FULLNAME_CAPACITY];
        e = U_ZERO_ERROR;
        uloc_addLikelySubtags(id.c_str(), likely, sizeof likely, &e);
        EXPECT_EQ(ascii_of(t.text(prop::script)), icu::Locale(likely).getScript()) << id;
    }
}

TEST(IcuOracle, NamesAndMarkers) {
    SKIP_UNLESS_DATA_ICU();
    using Symbols = icu::DateFormatSymbols;
    const struct {
        Symbols::DtContextType context;
        Symbols::DtWidthType width;
    } forms[4] = {{Symbols::FORMAT, Symbols::ABBREVIATED}, {Symbols::FORMAT, Symbols::WIDE},
                  {Symbols::STANDALONE, Symbols::ABBREVIATED}, {Symbols::STANDALONE, Symbols::WIDE}};
    for (const std::string id : sample_locales) {
        const Table t(id);
        const auto format = date_format(DateFormat::createDateInstance(DateFormat::kLong, data_locale(id)));
        const Symbols& symbols = *format->getDateFormatSymbols();
        for (int f = 0; f < 4; ++f) {
            int32_t n = 0;
            const icu::UnicodeString* months = symbols.getMonths(n, forms[f].context, forms[f].width);
            for (int i = 0; i < 12; ++i)
                EXPECT_EQ(utf8(t.text(vxlocfmt::locale::MonNames[f] + i)), utf8(wide(months[i]))) << id << " month " << i;
            const icu::UnicodeString* days = symbols.getWeekdays(n, forms[f].context, forms[f].width);
            for (int i = 0; i < 7; ++i)
                EXPECT_EQ(utf8(t.text(vxlocfmt::locale::DayNames[f] + i)), utf8(wide(days[i + 1]))) << id << " day " << i;
            const icu::UnicodeString* quarters = symbols.getQuarters(n, forms[f].context, forms[f].width);
            for (int i = 0; i < 4; ++i)
                EXPECT_EQ(utf8(t.text(vxlocfmt::locale::QtrNames[f] + i)), utf8(wide(quarters[i]))) << id << " quarter " << i;
        }
        int32_t n = 0;
        const icu::UnicodeString* markers = symbols.getAmPmStrings(n);
        EXPECT_EQ(utf8(t.text(prop::am)), utf8(wide(markers[0]))) << id;
        EXPECT_EQ(utf8(t.text(prop::pm)), utf8(wide(markers[1]))) << id;
    }
}

// Order and separator of the short date and the time separator, read off ICU's own output.
TEST(IcuOracle, DateOrderAndSeparators) {
    SKIP_UNLESS_DATA_ICU();
    const Moment m{2024, 11, 27, 15, 4, 5};  // day, month and year all differ
    for (const std::string id : sample_locales) {
        const Table t(id);
        const icu::Locale l = data_locale(id);
        const std::u32string date = normalized(icu_format(pattern_of(DateFormat::createDateInstance(DateFormat::kShort, l)), l, m));
        // Numeric runs in order: which is the day (27), the month (11) and the year (24, 2024, 2567 ...).
        std::u32string order, between;
        std::size_t runs = 0;
        for (std::size_t i = 0; i < date.size();) {
            if (date[i] < U'0' || date[i] > U'9') {
                if (runs == 1) between += date[i];
                ++i;
                continue;
            }
            std::size_t j = i;
            while (j < date.size() && date[j] >= U'0' && date[j] <= U'9') ++j;
            const std::u32string run = date.substr(i, j - i);
            order += run == U"27" ? U'D' : run == U"11" ? U'M' : U'Y';
            ++runs;
            i = j;
        }
        EXPECT_EQ(ascii_of(t.text(prop::date_order)), ascii_of(order)) << id << ": " << utf8(date);
        EXPECT_EQ(utf8(t.text(prop::date_separator)), between.size() == 1 ? utf8(between) : "") << id << ": " << utf8(date);

        const std::u32string time = icu_format(pattern_of(DateFormat::createTimeInstance(DateFormat::kMedium, l)), l, m);
        const std::size_t minutes = time.find(U"04");
        ASSERT_NE(minutes, std::u32string::npos) << id;
        std::size_t start = minutes;
        while (start > 0 && (time[start - 1] < U'0' || time[start - 1] > U'9')) --start;
        EXPECT_EQ(utf8(t.text(prop::time_separator)), utf8(time.substr(start, minutes - start))) << id;
    }
}

// Every translated pattern, rendered as the expander would, reads as ICU formats its source.
TEST(IcuOracle, PatternsRenderAsIcuFormats) {
    SKIP_UNLESS_DATA_ICU();
    std::size_t compared = 0, skipped = 0;
    for (const std::string id : sample_locales) {
        const Table t(id);
        const icu::Locale l = data_locale(id);
        UErrorCode e = U_ZERO_ERROR;
        std::unique_ptr<icu::DateTimePatternGenerator> generator(icu::DateTimePatternGenerator::createInstance(l, e));
        auto skeleton = [&](const char16_t* s) { return generator->getBestPattern(icu::UnicodeString(s), e); };
        auto date = [&](DateFormat::EStyle s) { return pattern_of(DateFormat::createDateInstance(s, l)); };
        auto time = [&](DateFormat::EStyle s) { return pattern_of(DateFormat::createTimeInstance(s, l)); };
        auto both = [&](DateFormat::EStyle d, DateFormat::EStyle s) { return pattern_of(DateFormat::createDateTimeInstance(d, s, l)); };
        const struct {
            std::size_t property;
            icu::UnicodeString source;
        } sources[] = {
            {28, date(DateFormat::kLong)},   {29, date(DateFormat::kMedium)}, {30, date(DateFormat::kMedium)},
            {31, date(DateFormat::kLong)},   {32, date(DateFormat::kFull)},   {33, skeleton(u"yMMMEd")},
            {34, skeleton(u"yMMMM")},        {35, skeleton(u"yMMM")},         {36, skeleton(u"MMMMd")},
            {37, skeleton(u"MMMd")},         {40, skeleton(u"yQQQQ")},        {41, skeleton(u"yQQQ")},
            {46, both(DateFormat::kMedium, DateFormat::kMedium)},            {47, both(DateFormat::kShort, DateFormat::kShort)},
            {48, both(DateFormat::kMedium, DateFormat::kShort)},             {49, both(DateFormat::kLong, DateFormat::kMedium)},
            {50, both(DateFormat::kFull, DateFormat::kMedium)},              {52, skeleton(u"hms")},
            {53, time(DateFormat::kMedium)}, {54, time(DateFormat::kShort)},  {55, date(DateFormat::kShort)},
            {58, both(DateFormat::kShort, DateFormat::kMedium)},
        };
        for (const auto& s : sources) {
            if (!comparable(s.source) || t.raw_length(s.property) > 153) {  // no ICU twin, or maybe cut
                ++skipped;
                continue;
            }
            for (const Moment& m : sample_moments) {
                const auto ours = render(t.text(s.property), t, m);
                ASSERT_TRUE(ours) << id << " " << s.property << ": " << utf8(t.text(s.property));
                EXPECT_EQ(utf8(*ours), utf8(icu_format(s.source, l, m)))
                    << id << " property " << s.property << " " << utf8(t.text(s.property));
            }
            ++compared;
        }
        // Date and 12-hour time glued: both parts appear, as ICU writes them.
        const Moment& m = sample_moments[0];
        const struct {
            std::size_t property, date_part;
            const char16_t* time_skeleton;
        } glued[] = {{44, 29, u"hms"}, {45, 55, u"hm"}, {51, 33, nullptr}};
        for (const auto& g : glued) {
            const auto whole = render(t.text(g.property), t, m);
            const auto date_part = render(t.text(g.date_part), t, m);
            ASSERT_TRUE(whole && date_part) << id << " " << g.property;
            const icu::UnicodeString time_source = g.time_skeleton ? skeleton(g.time_skeleton) : time(DateFormat::kMedium);
            EXPECT_NE(whole->find(*date_part), std::u32string::npos) << id << " " << g.property << ": " << utf8(*whole);
            if (comparable(time_source)) {
                EXPECT_NE(whole->find(icu_format(time_source, l, m)), std::u32string::npos) << id << " " << g.property;
            }
        }
    }
    EXPECT_GT(compared, 700u) << "skipped " << skipped;  // most patterns have an ICU twin
}

// A number written with the conventions the way the currency format patterns place sign and
// symbol: the CurrencyFormatPatterns table, the group sizes of a grouping text ("3", "3;2").
std::u32string place(double value, const vxlocfmt::NumberConventions& c, std::u32string_view grouping, int decimals) {
    static const char32_t* const patterns[20] = {
        U"(V$)", U"-V$",  U"V$-",  U"V-$",  U"V$-",  U"($V)", U"-$V",  U"$V-",  U"-$V",  U"$-V",
        U"(V $)", U"-V $", U"V $-", U"V- $", U"V $-", U"($ V)", U"-$ V", U"$ V-", U"-$ V", U"$ -V",
    };
    const bool negative = value < 0;
    const int cs = negative ? c.n_cs_precedes : c.p_cs_precedes;
    const int sep = negative ? c.n_sep_by_space : c.p_sep_by_space;
    const int posn = negative ? c.n_sign_posn : c.p_sign_posn;
    const double scaled = std::round(std::fabs(value) * std::pow(10, decimals));
    const std::string all = std::to_string(static_cast<long long>(scaled));
    const std::string integer = all.substr(0, all.size() - static_cast<std::size_t>(decimals));
    const std::size_t primary = grouping.empty() ? 0 : grouping[0] - U'0';
    const std::size_t secondary = grouping.size() >= 3 ? grouping[2] - U'0' : primary;
    std::u32string digits;
    for (std::size_t i = 0; i < integer.size(); ++i) {
        const std::size_t left = integer.size() - i;  // digits from here to the point
        if (i > 0 && primary && (left == primary || (left > primary && (left - primary) % secondary == 0)))
            digits += c.thousands_sep[0];
        digits += static_cast<char32_t>(integer[i]);
    }
    if (decimals > 0) {
        digits += c.decimal_point[0];
        for (std::size_t i = integer.size(); i < all.size(); ++i) digits += static_cast<char32_t>(all[i]);
    }
    auto field = [](const char32_t* cells, std::size_t n) {
        std::u32string s;
        for (std::size_t i = 0; i < n && cells[i]; ++i) s += cells[i];
        return s;
    };
    std::u32string out;
    for (const char32_t* p = patterns[(cs + 2 * sep) * 5 + posn]; *p; ++p) {
        if (*p == U'V') out += digits;
        else if (*p == U'$') out += field(c.currency_symbol, 51);
        else if (*p == U'-') out += field(negative ? c.negative_sign : c.positive_sign, 2);
        else if (*p == U'(' || *p == U')') out += negative ? std::u32string(1, *p) : U"";
        else out += *p;
    }
    return out;
}

TEST(IcuOracle, NumbersAndMoney) {
    SKIP_UNLESS_DATA_ICU();
    std::size_t currencies = 0;
    for (const std::string id : sample_locales) {
        const Table t(id);
        const icu::Locale l = data_locale(id);
        UErrorCode e = U_ZERO_ERROR;
        std::unique_ptr<icu::NumberFormat> number(icu::NumberFormat::createInstance(l, UNUM_DECIMAL, e));
        const icu::DecimalFormatSymbols& symbols = *dynamic_cast<icu::DecimalFormat&>(*number).getDecimalFormatSymbols();
        EXPECT_EQ(utf8(t.text(prop::decimal_point)), utf8(wide(symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol)))) << id;
        EXPECT_EQ(utf8(t.text(prop::negative_sign)), utf8(wide(symbols.getSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol)))) << id;
        EXPECT_EQ(t.text(prop::positive_sign).size(), 0u) << id;
        for (double v : {-1234567.891, 1234567.891}) {
            icu::UnicodeString icu_out;
            number->format(v, icu_out);
            const auto& c = t.conventions(prop::locale_number_key);
            EXPECT_EQ(utf8(normalized(place(v, c, t.text(prop::grouping), 3))), utf8(normalized(wide(icu_out)))) << id;
        }

        char16_t code[4] = {};
        e = U_ZERO_ERROR;
        const bool has_currency = ucurr_forLocale(named_locale(id).getName(), code, 4, &e) == 3 && U_SUCCESS(e);
        EXPECT_EQ(t.text(prop::local_currency_key).empty(), !has_currency) << id;
        EXPECT_EQ(t.text(prop::international_currency_key).empty(), !has_currency) << id;
        for (std::size_t key : {prop::locale_number_key, prop::fixed_number_key, prop::locale_percent_key, prop::fixed_percent_key})
            EXPECT_FALSE(t.text(key).empty()) << id << " " << key;
        if (!has_currency) continue;
        ++currencies;
        EXPECT_EQ(utf8(t.text(prop::currency_international)), utf8(wide(icu::UnicodeString(code, 3)))) << id;
        e = U_ZERO_ERROR;
        EXPECT_EQ(ascii_of(t.text(prop::int_frac_digits)), std::to_string(ucurr_getDefaultFractionDigits(code, &e))) << id;
        std::unique_ptr<icu::NumberFormat> money(icu::NumberFormat::createInstance(l, UNUM_CURRENCY, e));
        const int digits = money->getMaximumFractionDigits();
        for (double v : {-1234567.25, 1234567.25}) {
            icu::UnicodeString icu_out;
            money->format(v, icu_out);
            const auto& c = t.conventions(prop::local_currency_key);
            EXPECT_EQ(utf8(normalized(place(v, c, t.text(prop::mon_grouping), digits))), utf8(normalized(wide(icu_out))))
                << id << " positions " << c.p_cs_precedes << c.p_sep_by_space << c.p_sign_posn << " " << c.n_cs_precedes
                << c.n_sep_by_space << c.n_sign_posn;
        }
    }
    EXPECT_GT(currencies, 40u);
}

}  // namespace
