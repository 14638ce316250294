// The properties of a sample of locales across scripts against ICU asked directly: ids, calendars,
// the week rule, names, separators, patterns rendered as the expander would against ICU's own
// formatting, and amounts placed with the POSIX-style conventions against ICU's number formats.
#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/numfmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/ucurr.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>

#include "locale_fixture.h"
#include "nlnum/currency_format_patterns.h"

namespace {

using namespace locale_test;
using icu::DateFormat;

// Across scripts, calendars, digit systems, currencies and sign placements.
const char* const sample_locales[] = {
    "en_US", "en_GB", "en_IN", "en_US_POSIX", "de_DE", "de_CH", "de_AT", "de",    "fr_FR", "fr_CA",
    "es_ES", "es_MX", "pt_BR", "it_IT", "nl_NL", "sv_SE", "fi_FI", "pl_PL", "cs_CZ", "hu_HU",
    "tr_TR", "ru_RU", "uk_UA", "sr_Cyrl_RS", "sr_Latn_RS", "bg_BG", "el_GR", "he_IL", "ar_EG",
    "ar_SA", "fa_IR", "ur_PK", "hi_IN", "bn_BD", "ta_IN", "th_TH", "km_KH", "my_MM", "ka_GE",
    "hy_AM", "am_ET", "zh_Hans_CN", "zh_Hant_TW", "ja_JP", "ko_KR", "vi_VN", "id_ID", "sw_KE", "root",
};

// ICU text as the locale encoding can hold it: nothing beyond U+FFFF.
std::u32string wide(const icu::UnicodeString& s) {
    std::u32string out;
    for (int32_t i = 0; i < s.length(); i = s.moveIndex32(i, 1)) out += s.char32At(i) > 0xFFFF ? U'?' : char32_t(s.char32At(i));
    return out;
}
std::string utf8(const icu::UnicodeString& s) { return to_utf8(wide(s)); }

icu::Locale named_locale(const std::string& id) { return id == "root" ? icu::Locale::getRoot() : icu::Locale(id.c_str()); }
std::string default_calendar(const std::string& id) {
    UErrorCode e = U_ZERO_ERROR;
    return std::unique_ptr<icu::Calendar>(icu::Calendar::createInstance(named_locale(id), e))->getType();
}
// The calendars whose years the patterns can show; the data of any other comes from Gregorian.
std::string data_calendar(const std::string& type) {
    return type == "buddhist" || type == "roc" || type == "japanese" ? type : "gregorian";
}
// The locale as the data was taken from it: its calendar (see data_calendar) and Latin digits.
icu::Locale data_locale(const std::string& id) {
    icu::Locale l = named_locale(id);
    UErrorCode e = U_ZERO_ERROR;
    l.setKeywordValue("calendar", data_calendar(default_calendar(id)).c_str(), e);
    l.setKeywordValue("numbers", "latn", e);
    return l;
}
icu::UnicodeString pattern_of(DateFormat* f) {
    icu::UnicodeString p;
    std::unique_ptr<icu::SimpleDateFormat>(dynamic_cast<icu::SimpleDateFormat*>(f))->toPattern(p);
    return p;
}

// A moment in UTC.
struct Moment {
    int year, month, day, hour, minute, second;
    std::chrono::sys_days days() const { return std::chrono::year(year) / month / day; }
    UDate icu_date() const { return (days().time_since_epoch().count() * 86400.0 + hour * 3600 + minute * 60 + second) * 1000; }
};
const Moment sample_moments[] = {
    {2024, 3, 5, 15, 4, 5},    // Tuesday afternoon, first quarter
    {2023, 12, 31, 9, 7, 8},   // Sunday morning, fourth quarter
    {2025, 8, 16, 0, 30, 59},  // Saturday just after midnight: 12-hour 12, 0 and 24 forms
};

std::u32string icu_format(const icu::UnicodeString& pattern, const icu::Locale& locale, const Moment& m) {
    UErrorCode e = U_ZERO_ERROR;
    icu::SimpleDateFormat format(pattern, locale, e);
    format.setTimeZone(*icu::TimeZone::getGMT());
    icu::UnicodeString out;
    return wide(format.format(m.icu_date(), out));
}

// Renders a pattern as the date pattern expander does, for the directives the data uses; nullopt
// for one it does not know.
std::optional<std::u32string> render(std::u32string_view pattern, const Table& t, const Moment& m) {
    const std::u32string_view code = t.text(prop::calendar_code), number_letters = U"YymdHIklMS", name_letters = U"bBaAqQ";
    const std::size_t month = m.month - 1, weekday = std::chrono::weekday(m.days()).c_encoding(), quarter = month / 3;
    // A name directive's property: in the set of its plain form or of its '#' form.
    const std::size_t names[][3] = {{59, 83, month},     {71, 95, month},     {107, 121, weekday},
                                    {114, 128, weekday}, {135, 143, quarter}, {139, 147, quarter}};
    std::u32string out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != U'%') {
            out += pattern[i];
            continue;
        }
        const bool own = i + 1 < pattern.size() && pattern[i + 1] == U'#';
        const bool calendar = i + 1 + own < pattern.size() && pattern[i + 1 + own] == U'+';
        if ((i += 1 + own + calendar) >= pattern.size()) return std::nullopt;
        const long year = m.year + (!calendar ? 0 : code == U"TH" ? 543 : code == U"TW" ? -1911 : 0);
        const long numbers[] = {year, year % 100, m.month, m.day, m.hour, m.hour % 12 ? m.hour % 12 : 12, m.hour ? m.hour : 24,
                                m.hour % 12, m.minute, m.second};
        if (const std::size_t k = number_letters.find(pattern[i]); k != std::u32string_view::npos) {
            const std::string digits = std::to_string(numbers[k]);
            const std::size_t width = k == 0 ? 4 : k == 1 || !own ? 2 : 0;  // '#': no padding
            out += vxhost::from_utf8(std::string(width > digits.size() ? width - digits.size() : 0, '0') + digits);
        } else if (const std::size_t n = name_letters.find(pattern[i]); n != std::u32string_view::npos) {
            out += t.text(names[n][own] + names[n][2]);
        } else if (pattern[i] == U'p' || pattern[i] == U'%') {
            out += pattern[i] == U'%' ? U"%" : t.text(m.hour < 12 ? prop::am : prop::pm);
        } else {
            return std::nullopt;
        }
    }
    return out;
}

// An ICU pattern whose every field the directive language writes as ICU does (no eras, flexible
// day periods, narrow names, numeric quarters or zones).
bool comparable(const icu::UnicodeString& pattern) {
    bool quoted = false;
    for (int32_t i = 0, count = 1; i < pattern.length(); i += count) {
        const char16_t c = pattern[i];
        count = 1;
        if (c == u'\'') quoted = !quoted;
        if (quoted || !((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'))) continue;
        while (i + count < pattern.length() && pattern[i + count] == c) ++count;
        if (std::u16string_view(u"yMLdahHKkms").find(c) != std::u16string_view::npos && count <= 4) continue;
        if ((c == u'E' && count <= 4) || ((c == u'c' || c == u'Q' || c == u'q') && (count == 3 || count == 4))) continue;
        return false;
    }
    return true;
}

// Blank-like characters as one blank, format marks (LRM, RLM, ALM) left out: how two renderings
// of an amount are compared.
std::u32string normalized(std::u32string_view s) {
    std::u32string out;
    for (char32_t c : s) {
        if (u_charType(static_cast<UChar32>(c)) != U_FORMAT_CHAR) out += (c == 0xA0 || c == 0x202F || c == 0x2009) ? U' ' : c;
    }
    return out;
}

TEST(IcuOracle, IdsNamesAndSeparators) {
    SKIP_UNLESS_DATA_ICU();
    using Symbols = icu::DateFormatSymbols;
    const std::pair<Symbols::DtContextType, Symbols::DtWidthType> forms[4] = {
        {Symbols::FORMAT, Symbols::ABBREVIATED}, {Symbols::FORMAT, Symbols::WIDE},
        {Symbols::STANDALONE, Symbols::ABBREVIATED}, {Symbols::STANDALONE, Symbols::WIDE}};
    const Moment m{2024, 11, 27, 15, 4, 5};  // day, month and year all differ
    for (const std::string id : sample_locales) {
        const Table t(id);
        const icu::Locale l = data_locale(id);
        EXPECT_EQ(t.str(prop::locale_id), id);
        const std::string def = default_calendar(id);
        EXPECT_EQ(t.str(prop::default_calendar), def) << id;
        EXPECT_EQ(t.str(prop::calendar_type), data_calendar(def)) << id;
        EXPECT_EQ(t.str(prop::calendar_code), def == "buddhist" ? "TH" : def == "roc" ? "TW" : def == "japanese" ? "JP" : "")
            << id;
        // The week rule: Sunday first U, Monday first with 4 minimal days V, else W.
        UErrorCode e = U_ZERO_ERROR;
        std::unique_ptr<icu::Calendar> c(icu::Calendar::createInstance(named_locale(id), e));
        const auto first = c->getFirstDayOfWeek(e);
        const char week = first == UCAL_SUNDAY ? 'U' : first == UCAL_MONDAY && c->getMinimalDaysInFirstWeek() == 4 ? 'V' : 'W';
        const std::string year_week_day = t.str(prop::week_pattern);
        EXPECT_NE(year_week_day.find(std::string{'%', week}), std::string::npos) << id;
        EXPECT_EQ(year_week_day.find('U') != std::string::npos, week == 'U') << id << ": NLDATEWN looks for U";
        EXPECT_EQ(t.str(prop::year_week), year_week_day.substr(0, t.text(prop::year_week).size())) << id;
        if (id != "root") {
            EXPECT_EQ(t.str(prop::language), l.getLanguage()) << id;
            EXPECT_EQ(t.str(prop::territory), l.getCountry()) << id;
            char likely[ULOC_FULLNAME_CAPACITY];
            e = U_ZERO_ERROR;
            uloc_addLikelySubtags(id.c_str(), likely, sizeof likely, &e);
            EXPECT_EQ(t.str(prop::script), icu::Locale(likely).getScript()) << id;
        }

        // Names and markers.
        const std::unique_ptr<icu::SimpleDateFormat> format(
            dynamic_cast<icu::SimpleDateFormat*>(DateFormat::createDateInstance(DateFormat::kLong, l)));
        const Symbols& symbols = *format->getDateFormatSymbols();
        int32_t n = 0;
        for (int f = 0; f < 4; ++f) {
            const auto [context, width] = forms[f];
            // ICU's names, the first property of the set, how many, and ICU's index of the first.
            const std::tuple<const icu::UnicodeString*, std::size_t, int, int> sets[] = {
                {symbols.getMonths(n, context, width), vxlocfmt::locale::MonNames[f], 12, 0},
                {symbols.getWeekdays(n, context, width), vxlocfmt::locale::DayNames[f], 7, 1},
                {symbols.getQuarters(n, context, width), vxlocfmt::locale::QtrNames[f], 4, 0}};
            for (const auto& [names, first, count, skip] : sets) {
                for (int i = 0; i < count; ++i) EXPECT_EQ(t.str(first + i), utf8(names[i + skip])) << id << " " << first + i;
            }
        }
        const icu::UnicodeString* markers = symbols.getAmPmStrings(n);
        EXPECT_EQ(t.str(prop::am) + "|" + t.str(prop::pm), utf8(markers[0]) + "|" + utf8(markers[1])) << id;

        // Order and separator of the short date, and the time separator, read off ICU's output:
        // which numeric run is the day (27), the month (11) and the year (24, 2024, 2567 ...).
        const auto short_date = pattern_of(DateFormat::createDateInstance(DateFormat::kShort, l));
        const std::u32string date = normalized(icu_format(short_date, l, m));
        std::string order;
        std::u32string between;
        for (std::size_t i = 0; i < date.size();) {
            std::size_t j = i;
            while (j < date.size() && date[j] >= U'0' && date[j] <= U'9') ++j;
            if (j == i) {
                if (order.size() == 1) between += date[i];
                ++i;
                continue;
            }
            order += date.substr(i, j - i) == U"27" ? 'D' : date.substr(i, j - i) == U"11" ? 'M' : 'Y';
            i = j;
        }
        EXPECT_EQ(t.str(prop::date_order), order) << id << ": " << to_utf8(date);
        EXPECT_EQ(t.str(prop::date_separator), between.size() == 1 ? to_utf8(between) : "") << id << ": " << to_utf8(date);
        const std::u32string time = icu_format(pattern_of(DateFormat::createTimeInstance(DateFormat::kMedium, l)), l, m);
        const std::size_t minutes = time.find(U"04");
        ASSERT_NE(minutes, std::u32string::npos) << id;
        std::size_t start = minutes;
        while (start > 0 && (time[start - 1] < U'0' || time[start - 1] > U'9')) --start;
        EXPECT_EQ(t.str(prop::time_separator), to_utf8(time.substr(start, minutes - start))) << id;
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
        auto both = [&](DateFormat::EStyle d, DateFormat::EStyle t) {
            return pattern_of(DateFormat::createDateTimeInstance(d, t, l));
        };
        const std::pair<std::size_t, icu::UnicodeString> sources[] = {
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
        const unsigned char* block = vxhost::locale_block(id);
        for (const auto& [property, source] : sources) {
            const unsigned char* raw = block + vxhost::locale_strings_offset + property * vxhost::locale_string_stride;
            if (!comparable(source) || (raw[0] | raw[1] << 8) > 153) {  // no ICU twin, or maybe cut
                ++skipped;
                continue;
            }
            for (const Moment& m : sample_moments) {
                const auto ours = render(t.text(property), t, m);
                ASSERT_TRUE(ours) << id << " " << property << ": " << t.str(property);
                EXPECT_EQ(to_utf8(*ours), to_utf8(icu_format(source, l, m))) << id << " " << property << ": " << t.str(property);
            }
            ++compared;
        }
        // Date and 12-hour time glued: both parts appear, as ICU writes them.
        const Moment& m = sample_moments[0];
        const std::tuple<std::size_t, std::size_t, icu::UnicodeString> glued[] = {
            {44, 29, skeleton(u"hms")}, {45, 55, skeleton(u"hm")}, {51, 33, time(DateFormat::kMedium)}};
        for (const auto& [property, date_property, time_source] : glued) {
            const auto whole = render(t.text(property), t, m), date_part = render(t.text(date_property), t, m);
            ASSERT_TRUE(whole && date_part) << id << " " << property;
            EXPECT_NE(whole->find(*date_part), std::u32string::npos) << id << " " << property << ": " << to_utf8(*whole);
            if (comparable(time_source)) {
                EXPECT_NE(whole->find(icu_format(time_source, l, m)), std::u32string::npos) << id << " " << property;
            }
        }
    }
    EXPECT_GT(compared, 700u) << "skipped " << skipped;  // most patterns have an ICU twin
}

// A number written with the conventions the way the currency format patterns place sign and
// symbol: the library's CurrencyFormatPatterns table (so checked against ICU here too), the group
// sizes of a grouping text ("3", "3;2").
std::string place(double value, const vxlocfmt::NumberConventions& c, std::u32string_view grouping, int decimals) {
    const bool negative = value < 0;
    const std::string all = std::to_string(static_cast<long long>(std::round(std::fabs(value) * std::pow(10, decimals))));
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
    if (decimals > 0) digits += c.decimal_point[0] + vxhost::from_utf8(all.substr(integer.size()));
    const auto field = [](const char32_t* cells, std::size_t n) {
        return std::u32string(cells, std::find(cells, cells + n, U'\0'));
    };
    const int cs = negative ? c.n_cs_precedes : c.p_cs_precedes, sep = negative ? c.n_sep_by_space : c.p_sep_by_space;
    std::u32string out;
    for (const char32_t* p = vxlocfmt::nlnum::CurrencyFormatPatterns[(cs + 2 * sep) * 5 + (negative ? c.n_sign_posn : c.p_sign_posn)]; *p; ++p) {
        if (*p == U'V') out += digits;
        else if (*p == U'$') out += field(c.currency_symbol, 51);
        else if (*p == U'-') out += field(negative ? c.negative_sign : c.positive_sign, 2);
        else if (*p != U'(' && *p != U')') out += *p;
        else if (negative) out += *p;
    }
    return to_utf8(normalized(out));
}

TEST(IcuOracle, NumbersAndMoney) {
    SKIP_UNLESS_DATA_ICU();
    std::size_t currencies = 0;
    for (const std::string id : sample_locales) {
        const Table t(id);
        const icu::Locale l = data_locale(id);
        UErrorCode e = U_ZERO_ERROR;
        std::unique_ptr<icu::NumberFormat> number(icu::NumberFormat::createInstance(l, UNUM_DECIMAL, e));
        const auto& symbols = *dynamic_cast<icu::DecimalFormat&>(*number).getDecimalFormatSymbols();
        EXPECT_EQ(t.str(prop::decimal_point), utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol))) << id;
        EXPECT_EQ(t.str(prop::negative_sign), utf8(symbols.getSymbol(icu::DecimalFormatSymbols::kMinusSignSymbol))) << id;
        EXPECT_EQ(t.str(prop::positive_sign), "") << id;
        for (double v : {-1234567.891, 1234567.891}) {
            icu::UnicodeString icu_out;
            EXPECT_EQ(place(v, t.conventions(prop::locale_number_key), t.text(prop::grouping), 3),
                      to_utf8(normalized(wide(number->format(v, icu_out))))) << id;
        }

        char16_t code[4] = {};
        e = U_ZERO_ERROR;
        const bool has_currency = ucurr_forLocale(named_locale(id).getName(), code, 4, &e) == 3 && U_SUCCESS(e);
        EXPECT_EQ(t.text(prop::local_currency_key).empty(), !has_currency) << id;
        EXPECT_EQ(t.text(prop::international_currency_key).empty(), !has_currency) << id;
        if (!has_currency) continue;
        ++currencies;
        EXPECT_EQ(t.str(prop::currency_international), utf8(icu::UnicodeString(code, 3))) << id;
        e = U_ZERO_ERROR;
        EXPECT_EQ(t.str(prop::int_frac_digits), std::to_string(ucurr_getDefaultFractionDigits(code, &e))) << id;
        std::unique_ptr<icu::NumberFormat> money(icu::NumberFormat::createInstance(l, UNUM_CURRENCY, e));
        for (double v : {-1234567.25, 1234567.25}) {
            icu::UnicodeString icu_out;
            const auto& c = t.conventions(prop::local_currency_key);
            EXPECT_EQ(place(v, c, t.text(prop::mon_grouping), money->getMaximumFractionDigits()),
                      to_utf8(normalized(wide(money->format(v, icu_out)))))
                << id << " positions " << c.p_cs_precedes << c.p_sep_by_space << c.p_sign_posn << " " << c.n_cs_precedes
                << c.n_sep_by_space << c.n_sign_posn;
        }
    }
    EXPECT_GT(currencies, 40u);
}

}  // namespace
