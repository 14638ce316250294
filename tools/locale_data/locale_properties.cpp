#include "locale_properties.h"

#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/dcfmtsym.h>
#include <unicode/decimfmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/numfmt.h>
#include <unicode/numsys.h>
#include <unicode/simpleformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/uchar.h>
#include <unicode/ucurr.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "pattern_translation.h"

namespace locale_data {
namespace {

using icu::DateFormat;
using icu::DecimalFormatSymbols;
using icu::UnicodeString;

void check(UErrorCode e, const std::string& id, const char* what) {
    if (U_FAILURE(e)) throw std::runtime_error(id + ": " + what + ": " + u_errorName(e));
}

UnicodeString ascii(const std::string& s) { return UnicodeString(s.c_str(), -1, US_INV); }
UnicodeString number(int value) { return ascii(std::to_string(value)); }

// Calendars whose years the expander can show; any other default falls back to Gregorian data.
const char* calendar_code(const std::string& type) {
    if (type == "buddhist") return "TH";
    if (type == "roc") return "TW";
    if (type == "japanese") return "JP";
    return "";
}

struct Source {
    std::string id;
    icu::Locale named;  // the locale as listed
    icu::Locale data;   // with the calendar of the data and Latin digits
    std::string default_calendar;
    std::string calendar;
    PatternStyle style;
    std::unique_ptr<icu::DateTimePatternGenerator> generator;
};

UnicodeString pattern_of(DateFormat* format, const std::string& id) {
    if (!format) throw std::runtime_error(id + ": no date format");
    std::unique_ptr<DateFormat> owned(format);
    const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format);
    if (!simple) throw std::runtime_error(id + ": not a pattern date format");
    UnicodeString pattern;
    simple->toPattern(pattern);
    return pattern;
}

UnicodeString date_style(const Source& s, DateFormat::EStyle style) {
    return pattern_of(DateFormat::createDateInstance(style, s.data), s.id);
}
UnicodeString time_style(const Source& s, DateFormat::EStyle style) {
    return pattern_of(DateFormat::createTimeInstance(style, s.data), s.id);
}
UnicodeString date_time_style(const Source& s, DateFormat::EStyle date, DateFormat::EStyle time) {
    return pattern_of(DateFormat::createDateTimeInstance(date, time, s.data), s.id);
}
UnicodeString skeleton(const Source& s, const char16_t* skeleton) {
    UErrorCode e = U_ZERO_ERROR;
    UnicodeString pattern = s.generator->getBestPattern(UnicodeString(skeleton), e);
    check(e, s.id, "best pattern");
    return pattern;
}
// A date and a time joined by the locale's date-time glue of one style.
UnicodeString glued(const Source& s, UDateFormatStyle style, const UnicodeString& date, const UnicodeString& time) {
    UErrorCode e = U_ZERO_ERROR;
    const UnicodeString& glue = s.generator->getDateTimeFormat(style, e);
    check(e, s.id, "date-time glue");
    icu::SimpleFormatter formatter(glue, 2, 2, e);
    check(e, s.id, "glue pattern");
    UnicodeString out;
    formatter.format(time, date, out, e);
    check(e, s.id, "glue");
    return out;
}

// "MDY", "DMY" or "YMD": the order of the date fields of a pattern.
UnicodeString field_order(const UnicodeString& pattern) {
    UnicodeString order;
    bool quoted = false;
    for (int32_t i = 0; i < pattern.length(); ++i) {
        const char16_t c = pattern[i];
        if (c == u'\'') quoted = !quoted;
        if (quoted) continue;
        const char16_t part = (c == u'y' || c == u'u' || c == u'r') ? u'Y' : (c == u'M' || c == u'L') ? u'M' : c == u'd' ? u'D' : 0;
        if (part && order.indexOf(part) < 0) order += part;
    }
    return order;
}

// The one character between the first two date fields of the short date, format marks left
// out ("d\u200F/M\u200F/y" gives "/"); empty when there are more or none.
UnicodeString date_separator(const UnicodeString& pattern) {
    auto is_date_letter = [](char16_t c) { return c == u'y' || c == u'M' || c == u'L' || c == u'd'; };
    int32_t i = 0;
    const int32_t n = pattern.length();
    while (i < n && !is_date_letter(pattern[i])) ++i;
    if (i == n) return {};
    const char16_t first = pattern[i];
    while (i < n && pattern[i] == first) ++i;
    UnicodeString between;
    bool quoted = false;
    for (; i < n && (quoted || !is_date_letter(pattern[i])); ++i) {
        const char16_t c = pattern[i];
        if (c == u'\'') {
            quoted = !quoted;
            continue;
        }
        if (u_charType(c) != U_FORMAT_CHAR) between += c;
    }
    return between.length() == 1 ? between : UnicodeString();
}

// What stands between the hour and the minutes of a time pattern, format marks left out
// ("HH:mm:ss" gives ":", "HH 'h' mm" gives " h ").
UnicodeString time_separator(const UnicodeString& pattern) {
    auto is_hour = [](char16_t c) { return c == u'H' || c == u'h' || c == u'K' || c == u'k'; };
    int32_t i = 0;
    const int32_t n = pattern.length();
    bool quoted = false;
    for (; i < n && (quoted || !is_hour(pattern[i])); ++i)
        if (pattern[i] == u'\'') quoted = !quoted;
    while (i < n && is_hour(pattern[i])) ++i;
    UnicodeString between;
    for (quoted = false; i < n && (quoted || pattern[i] != u'm'); ++i) {
        const char16_t c = pattern[i];
        if (c == u'\'' && i + 1 < n && pattern[i + 1] == u'\'') {
            between += c;
            ++i;
        } else if (c == u'\'') {
            quoted = !quoted;
        } else if (u_charType(c) != U_FORMAT_CHAR) {
            between += c;
        }
    }
    return i < n ? between : UnicodeString();
}

// The locale's week rule: Sunday first is U; Monday first with 4 minimal days is V (ISO); W else.
char week_letter(const icu::Calendar& calendar, const std::string& id) {
    UErrorCode e = U_ZERO_ERROR;
    const UCalendarDaysOfWeek first = calendar.getFirstDayOfWeek(e);
    check(e, id, "first day of week");
    if (first == UCAL_SUNDAY) return 'U';
    if (first == UCAL_MONDAY && calendar.getMinimalDaysInFirstWeek() == 4) return 'V';
    return 'W';
}

UnicodeString grouping(const icu::DecimalFormat& format) {
    const int32_t primary = format.getGroupingSize();
    if (!format.isGroupingUsed() || primary <= 0) return {};
    const int32_t secondary = format.getSecondaryGroupingSize();
    if (secondary > 0 && secondary != primary) return number(primary) + u";" + number(secondary);
    return number(primary);
}

// POSIX sign and symbol placement read off a formatted amount: the symbol before the digits,
// blank space between them, and where the sign stands (0 parentheses, 1 before both, 2 after
// both, 3 just before the symbol, 4 just after it; -1 no sign).
struct Placement {
    int cs_precedes = 0;
    int sep_by_space = 0;
    int sign_posn = -1;
};

Placement placement(const UnicodeString& text, const UnicodeString& minus, const UnicodeString& symbol,
                    const std::string& id) {
    int32_t first = -1, last = -1;
    for (int32_t i = 0; i < text.length(); ++i) {
        if (text[i] >= u'0' && text[i] <= u'9') {
            if (first < 0) first = i;
            last = i;
        }
    }
    if (first < 0) throw std::runtime_error(id + ": no digits in a formatted amount");
    Placement p;
    int32_t symbol_at = -1, symbol_end = -1;
    if (!symbol.isEmpty()) {
        symbol_at = text.indexOf(symbol);
        if (symbol_at < 0) throw std::runtime_error(id + ": the currency symbol is not in a formatted amount");
        symbol_end = symbol_at + symbol.length();
        p.cs_precedes = symbol_at < first ? 1 : 0;
        const int32_t from = p.cs_precedes ? symbol_end : last + 1;
        const int32_t to = p.cs_precedes ? first : symbol_at;
        for (int32_t i = from; i < to; ++i)
            if (u_isUWhiteSpace(text[i])) p.sep_by_space = 1;
    }
    const int32_t paren = text.indexOf(u'(');
    if (paren >= 0 && paren < first) {
        p.sign_posn = 0;
        return p;
    }
    const int32_t sign = minus.isEmpty() ? -1 : text.indexOf(minus);
    if (sign < 0) return p;
    const int32_t start = symbol_at < 0 ? first : std::min(first, symbol_at);
    const int32_t end = symbol_at < 0 ? last : std::max(last, symbol_end - 1);
    if (sign < start) p.sign_posn = 1;
    else if (sign > end) p.sign_posn = 2;
    else p.sign_posn = p.cs_precedes ? 4 : 3;
    return p;
}

UnicodeString pattern_of(const icu::DecimalFormat& format) {
    UnicodeString pattern;
    format.toPattern(pattern);
    return pattern;
}

std::unique_ptr<icu::DecimalFormat> decimal_format(const icu::Locale& locale, UNumberFormatStyle style,
                                                   const std::string& id) {
    UErrorCode e = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, style, e));
    check(e, id, "number format");
    auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get());
    if (!decimal) throw std::runtime_error(id + ": not a decimal format");
    format.release();
    return std::unique_ptr<icu::DecimalFormat>(decimal);
}

UnicodeString format_amount(const icu::DecimalFormat& format, double value) {
    UnicodeString out;
    format.format(value, out);
    return out;
}

void add_names(Properties& p, const Source& s) {
    std::unique_ptr<DateFormat> format(DateFormat::createDateInstance(DateFormat::kLong, s.data));
    const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
    if (!simple) throw std::runtime_error(s.id + ": not a pattern date format");
    const icu::DateFormatSymbols& symbols = *simple->getDateFormatSymbols();
    using Symbols = icu::DateFormatSymbols;
    // The four forms: format abbreviated, format wide, stand-alone abbreviated, stand-alone wide.
    const struct {
        Symbols::DtContextType context;
        Symbols::DtWidthType width;
    } forms[4] = {{Symbols::FORMAT, Symbols::ABBREVIATED},
                  {Symbols::FORMAT, Symbols::WIDE},
                  {Symbols::STANDALONE, Symbols::ABBREVIATED},
                  {Symbols::STANDALONE, Symbols::WIDE}};
    for (int form = 0; form < 4; ++form) {
        int32_t count = 0;
        const UnicodeString* months = symbols.getMonths(count, forms[form].context, forms[form].width);
        for (int32_t i = 0; i < 12 && i < count; ++i) p[static_cast<std::size_t>(59 + 12 * form + i)] = months[i];
        const UnicodeString* days = symbols.getWeekdays(count, forms[form].context, forms[form].width);
        for (int32_t i = 1; i <= 7 && i < count; ++i) p[static_cast<std::size_t>(107 + 7 * form + i - 1)] = days[i];
        const UnicodeString* quarters = symbols.getQuarters(count, forms[form].context, forms[form].width);
        for (int32_t i = 0; i < 4 && i < count; ++i) p[static_cast<std::size_t>(135 + 4 * form + i)] = quarters[i];
    }
    int32_t count = 0;
    const UnicodeString* am_pm = symbols.getAmPmStrings(count);
    if (count >= 2) {
        p[151] = am_pm[0];
        p[152] = am_pm[1];
    }
}

// A quarter skeleton whose ICU pattern shows the quarter as a number ("y年第Q季度"), which no
// directive writes, becomes the locale's year pattern followed by the quarter name.
UnicodeString quarter_pattern(const Source& s, const char16_t* quarter_skeleton, const char16_t* name) {
    UnicodeString pattern = translate_pattern(skeleton(s, quarter_skeleton), s.style);
    if (pattern.indexOf(u"%q") < 0 && pattern.indexOf(u"%Q") < 0)
        pattern = translate_pattern(skeleton(s, u"y"), s.style) + name;
    return pattern;
}

void add_patterns(Properties& p, const Source& s) {
    const auto tr = [&](const UnicodeString& pattern) { return translate_pattern(pattern, s.style); };
    const UnicodeString long_date = date_style(s, DateFormat::kLong);
    const UnicodeString medium_date = date_style(s, DateFormat::kMedium);
    const UnicodeString short_date = date_style(s, DateFormat::kShort);
    const UnicodeString medium_time = time_style(s, DateFormat::kMedium);
    p[6] = field_order(short_date);
    p[153] = date_separator(short_date);
    p[154] = time_separator(medium_time);
    p[28] = p[31] = tr(long_date);
    p[29] = p[30] = tr(medium_date);
    p[32] = tr(date_style(s, DateFormat::kFull));
    p[33] = tr(skeleton(s, u"yMMMEd"));
    p[34] = tr(skeleton(s, u"yMMMM"));
    p[35] = tr(skeleton(s, u"yMMM"));
    p[36] = tr(skeleton(s, u"MMMMd"));
    p[37] = tr(skeleton(s, u"MMMd"));
    p[38] = tr(u"y");
    p[39] = tr(u"yy");
    p[40] = quarter_pattern(s, u"yQQQQ", u"%Q");
    p[41] = quarter_pattern(s, u"yQQQ", u"%q");
    // Year and week by the locale's rule; the weekday digit counts from the rule's first day.
    switch (s.style.week_letter) {
    case 'V': p[42] = u"%G-W%V-%u"; p[43] = u"%G-W%V"; break;
    case 'U': p[42] = tr(u"y-'W'w-") + u"%w"; p[43] = tr(u"y-'W'w"); break;
    default: p[42] = tr(u"y-'W'w-") + u"%u"; p[43] = tr(u"y-'W'w"); break;
    }
    p[44] = tr(glued(s, UDAT_MEDIUM, medium_date, skeleton(s, u"hms")));
    p[45] = tr(glued(s, UDAT_SHORT, short_date, skeleton(s, u"hm")));
    p[46] = tr(date_time_style(s, DateFormat::kMedium, DateFormat::kMedium));
    p[47] = tr(date_time_style(s, DateFormat::kShort, DateFormat::kShort));
    p[48] = tr(date_time_style(s, DateFormat::kMedium, DateFormat::kShort));
    p[49] = tr(date_time_style(s, DateFormat::kLong, DateFormat::kMedium));
    p[50] = tr(date_time_style(s, DateFormat::kFull, DateFormat::kMedium));
    p[51] = tr(glued(s, UDAT_MEDIUM, skeleton(s, u"yMMMEd"), medium_time));
    p[52] = tr(skeleton(s, u"hms"));
    p[53] = tr(medium_time);
    p[54] = tr(time_style(s, DateFormat::kShort));
    p[55] = tr(short_date);
    // ISO 8601 is Gregorian by definition: no calendar years here, deliberately.
    p[56] = u"%Y-%m-%d";
    p[57] = u"%Y-%m-%dT%H:%M:%S";
    p[58] = tr(date_time_style(s, DateFormat::kShort, DateFormat::kMedium));
}

void add_numbers(Properties& p, const Source& s) {
    const auto format = decimal_format(s.data, UNUM_DECIMAL, s.id);
    const DecimalFormatSymbols& symbols = *format->getDecimalFormatSymbols();
    const UnicodeString minus = symbols.getSymbol(DecimalFormatSymbols::kMinusSignSymbol);
    p[12] = symbols.getSymbol(DecimalFormatSymbols::kPercentSymbol);
    p[172] = symbols.getSymbol(DecimalFormatSymbols::kDecimalSeparatorSymbol);
    p[173] = symbols.getSymbol(DecimalFormatSymbols::kGroupingSeparatorSymbol);
    p[174] = grouping(*format);
    p[176] = minus;
    // No symbol in a plain number: it neither precedes nor is separated.
    const Placement negative = placement(format_amount(*format, -1234567.891), minus, {}, s.id);
    const Placement positive = placement(format_amount(*format, 1234567.891), minus, {}, s.id);
    p[177] = number(0);
    p[178] = number(0);
    p[179] = number(0);
    p[180] = number(0);
    p[181] = number(positive.sign_posn < 0 ? 1 : positive.sign_posn);
    p[182] = number(negative.sign_posn < 0 ? 1 : negative.sign_posn);
    p[183] = u"latn";
    p[184] = u"fixed";
    p[185] = u"latn";
    p[186] = u"fixed";
    p[187] = pattern_of(*format);
}

void add_money(Properties& p, const Source& s) {
    UErrorCode e = U_ZERO_ERROR;
    char16_t code[4] = {};
    const int32_t length = ucurr_forLocale(s.named.getName(), code, 4, &e);
    if (U_FAILURE(e) || length != 3 || UnicodeString(code, 3) == u"XXX") return;  // no currency
    const UnicodeString iso(code, 3);
    const auto format = decimal_format(s.data, UNUM_CURRENCY, s.id);
    const DecimalFormatSymbols& symbols = *format->getDecimalFormatSymbols();
    const UnicodeString symbol = symbols.getSymbol(DecimalFormatSymbols::kCurrencySymbol);
    const UnicodeString minus = symbols.getSymbol(DecimalFormatSymbols::kMinusSignSymbol);
    const Placement negative = placement(format_amount(*format, -1234567.5), minus, symbol, s.id);
    const Placement positive = placement(format_amount(*format, 1234567.5), minus, symbol, s.id);
    e = U_ZERO_ERROR;
    const int32_t international_digits = ucurr_getDefaultFractionDigits(code, &e);
    check(e, s.id, "fraction digits");
    p[155] = iso;
    p[156] = symbol;
    p[157] = symbols.getSymbol(DecimalFormatSymbols::kMonetarySeparatorSymbol);
    p[158] = symbols.getSymbol(DecimalFormatSymbols::kMonetaryGroupingSeparatorSymbol);
    p[159] = grouping(*format);
    p[161] = minus;
    p[162] = number(international_digits);
    p[163] = number(format->getMaximumFractionDigits());
    p[164] = number(positive.cs_precedes);
    p[165] = number(positive.sep_by_space);
    p[166] = number(negative.cs_precedes);
    p[167] = number(negative.sep_by_space);
    p[168] = number(positive.sign_posn < 0 ? 1 : positive.sign_posn);
    p[169] = number(negative.sign_posn < 0 ? 1 : negative.sign_posn);
    p[170] = iso;
    p[171] = iso;
    p[188] = pattern_of(*format);
}

void add_ids(Properties& p, const Source& s) {
    p[0] = ascii(s.id);
    p[4] = ascii(s.calendar);
    p[5] = ascii(calendar_code(s.calendar));
    p[7] = ascii(s.default_calendar);
    if (s.id == "root") {
        p[10] = u"Root";
        return;
    }
    UnicodeString name;
    p[10] = s.named.getDisplayName(icu::Locale::getEnglish(), name);
    p[1] = ascii(s.named.getLanguage());
    UErrorCode e = U_ZERO_ERROR;
    char likely[ULOC_FULLNAME_CAPACITY];
    uloc_addLikelySubtags(s.named.getName(), likely, sizeof likely, &e);
    check(e, s.id, "likely subtags");
    char script[ULOC_SCRIPT_CAPACITY];
    e = U_ZERO_ERROR;
    uloc_getScript(likely, script, sizeof script, &e);
    check(e, s.id, "script");
    p[2] = ascii(script);
    p[3] = ascii(s.named.getCountry());
}

}  // namespace

std::vector<std::string> all_locales() {
    std::vector<std::string> ids = {"root", "en_US_POSIX"};
    for (int32_t i = 0; i < uloc_countAvailable(); ++i) ids.emplace_back(uloc_getAvailable(i));
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

std::vector<std::pair<std::string, std::string>> locale_aliases(const std::vector<std::string>& ids) {
    std::vector<std::pair<std::string, std::string>> aliases;
    for (const std::string& id : ids) {
        const icu::Locale l(id.c_str());
        if (!*l.getScript()) continue;
        std::string alias = l.getLanguage();
        if (*l.getCountry()) alias.append("_").append(l.getCountry());  // no "_" + temporary: GCC 12 -Wrestrict
        if (std::binary_search(ids.begin(), ids.end(), alias)) continue;
        icu::Locale short_form(alias.c_str()), long_form(l);
        UErrorCode e = U_ZERO_ERROR;
        short_form.addLikelySubtags(e);
        long_form.addLikelySubtags(e);
        check(e, id, "likely subtags");
        if (short_form == long_form) aliases.emplace_back(alias, id);
    }
    std::sort(aliases.begin(), aliases.end());
    return aliases;
}

Properties locale_properties(const std::string& id) {
    Source s;
    s.id = id;
    s.named = id == "root" ? icu::Locale::getRoot() : icu::Locale(id.c_str());
    if (s.named.isBogus()) throw std::runtime_error(id + ": not a locale");
    UErrorCode e = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(s.named, e));
    check(e, id, "calendar");
    s.default_calendar = calendar->getType();
    s.calendar = *calendar_code(s.default_calendar) ? s.default_calendar : "gregorian";
    s.data = s.named;
    s.data.setKeywordValue("calendar", s.calendar.c_str(), e);
    s.data.setKeywordValue("numbers", "latn", e);
    check(e, id, "keywords");
    s.style = {week_letter(*calendar, id), *calendar_code(s.calendar) != 0};
    s.generator.reset(icu::DateTimePatternGenerator::createInstance(s.data, e));
    check(e, id, "pattern generator");

    Properties p;
    add_ids(p, s);
    p[8] = number(calendar->getFirstDayOfWeek(e));
    p[9] = number(calendar->getMinimalDaysInFirstWeek());
    std::unique_ptr<icu::NumberingSystem> digits(icu::NumberingSystem::createInstance(s.named, e));
    check(e, id, "numbering system");
    p[11] = ascii(digits->getName());
    add_patterns(p, s);
    add_names(p, s);
    add_numbers(p, s);
    add_money(p, s);
    return p;
}

}  // namespace locale_data
