/*
 * The peers bench_formats runs beside our formats, on the same values:
 *
 *   IcuPeer      udat_format with one cached UDateFormat per row and locale (UTC), on the
 *                locale's own pattern: a style (long, full, medium date-time, medium time), the
 *                best pattern for a skeleton, or an explicit pattern (ISO week, clock, month).
 *   CLocale      a C library locale_t from newlocale for "de_DE" and so on; when the system does
 *                not have it, it is compiled with localedef into a cache folder first, and when
 *                that fails too the strftime_l peer is skipped with the reason.
 *   StrftimePeer gmtime_r then strftime_l with a format that writes the same text as our row.
 *
 *   vxbench::IcuPeer icu("de_DE", vxbench::IcuStyle::long_date);
 *   std::int32_t n = icu.format(vxbench::udate_of_day(23000), buffer, 64);
 */
#pragma once

#include <unicode/udat.h>
#include <unicode/udatpg.h>
#include <unicode/ucal.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <locale.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "floor.h"
#include "values.h"

namespace vxbench {

// ---- ICU ----------------------------------------------------------------------------------

enum class IcuStyle {
    long_date,        // UDAT_LONG date
    full_date,        // UDAT_FULL date
    numeric_date,     // best pattern for the skeleton "yyyyMMdd"
    medium_datetime,  // UDAT_MEDIUM date and time
    medium_time,      // UDAT_MEDIUM time
    iso_week,         // "YYYY-'W'ww-ee", Monday first, four days in the first week
    dt_iso_week,      // "YYYY'W'wwee':'HH:mm:ss", the same calendar
    standalone_month, // "LLLL"
    clock,            // "H:mm:ss"
};

// UDate (milliseconds from 1970) of a day number, a datetime, a time of day and a month.
inline double udate_of_day(double day) { return (day + static_cast<double>(epoch_1960)) * 86400000.0; }
inline double udate_of_datetime(double seconds) { return (seconds + static_cast<double>(epoch_1960) * 86400.0) * 1000.0; }
inline double udate_of_time(double seconds) { return seconds * 1000.0; }
// The 15th of the month in 2001.
inline double udate_of_month(double month) {
    return static_cast<double>(days_from_civil(2001, static_cast<unsigned>(month), 15)) * 86400000.0;
}

class IcuPeer {
public:
    IcuPeer(const char* locale, IcuStyle style) {
        UErrorCode error = U_ZERO_ERROR;
        const UChar* utc = u"UTC";
        std::u16string pattern;
        switch (style) {
        case IcuStyle::long_date: open(UDAT_NONE, UDAT_LONG, locale, utc, nullptr, error); break;
        case IcuStyle::full_date: open(UDAT_NONE, UDAT_FULL, locale, utc, nullptr, error); break;
        case IcuStyle::medium_datetime: open(UDAT_MEDIUM, UDAT_MEDIUM, locale, utc, nullptr, error); break;
        case IcuStyle::medium_time: open(UDAT_MEDIUM, UDAT_NONE, locale, utc, nullptr, error); break;
        case IcuStyle::numeric_date: {
            UDateTimePatternGenerator* generator = udatpg_open(locale, &error);
            UChar best[64];
            const std::int32_t n = udatpg_getBestPattern(generator, u"yyyyMMdd", -1, best, 64, &error);
            udatpg_close(generator);
            if (U_SUCCESS(error)) pattern.assign(best, static_cast<std::size_t>(n));
            open(UDAT_PATTERN, UDAT_PATTERN, locale, utc, pattern.c_str(), error);
            break;
        }
        case IcuStyle::iso_week: open(UDAT_PATTERN, UDAT_PATTERN, locale, utc, u"YYYY-'W'ww-ee", error); break;
        case IcuStyle::dt_iso_week: open(UDAT_PATTERN, UDAT_PATTERN, locale, utc, u"YYYY'W'wwee':'HH:mm:ss", error); break;
        case IcuStyle::standalone_month: open(UDAT_PATTERN, UDAT_PATTERN, locale, utc, u"LLLL", error); break;
        case IcuStyle::clock: open(UDAT_PATTERN, UDAT_PATTERN, locale, utc, u"H:mm:ss", error); break;
        }
        if (U_FAILURE(error) || !format_)
            throw std::runtime_error(std::string("ICU date format for ") + locale + ": " + u_errorName(error));
        if (style == IcuStyle::iso_week || style == IcuStyle::dt_iso_week) {
            UCalendar* calendar = ucal_clone(udat_getCalendar(format_), &error);
            ucal_setAttribute(calendar, UCAL_FIRST_DAY_OF_WEEK, UCAL_MONDAY);
            ucal_setAttribute(calendar, UCAL_MINIMAL_DAYS_IN_FIRST_WEEK, 4);
            udat_setCalendar(format_, calendar);
            ucal_close(calendar);
        }
    }
    ~IcuPeer() {
        if (format_) udat_close(format_);
    }
    IcuPeer(const IcuPeer&) = delete;
    IcuPeer& operator=(const IcuPeer&) = delete;

    std::int32_t format(double udate, UChar* out, std::int32_t capacity) const {
        UErrorCode error = U_ZERO_ERROR;
        return udat_format(format_, udate, out, capacity, nullptr, &error);
    }
    // The same text in UTF-8, as a byte session gets it from ICU: udat_format, then u_strToUTF8.
    std::int32_t format_utf8(double udate, char* out, std::int32_t capacity) const {
        UChar text[128];
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t length = udat_format(format_, udate, text, 128, nullptr, &error);
        std::int32_t bytes = 0;
        u_strToUTF8(out, capacity, &bytes, text, length, &error);
        return bytes;
    }
    const UDateFormat* handle() const { return format_; }

private:
    void open(UDateFormatStyle time, UDateFormatStyle date, const char* locale, const UChar* zone,
              const UChar* pattern, UErrorCode& error) {
        if (U_FAILURE(error)) return;
        format_ = udat_open(time, date, locale, zone, -1, pattern, pattern ? -1 : 0, &error);
    }
    UDateFormat* format_ = nullptr;
};

inline std::u32string to_u32(const UChar* text, std::int32_t length) {
    std::u32string out(static_cast<std::size_t>(length) + 1, U'\0');
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t n = 0;
    u_strToUTF32(reinterpret_cast<UChar32*>(out.data()), static_cast<std::int32_t>(out.size()), &n, text, length, &error);
    out.resize(U_SUCCESS(error) ? static_cast<std::size_t>(n) : 0);
    return out;
}

// The floor's names, from ICU's symbols for the locale.
inline FloorNames floor_names(const char* locale) {
    const IcuPeer peer(locale, IcuStyle::long_date);
    FloorNames names{};
    const auto symbol = [&](UDateFormatSymbolType type, std::int32_t index, Name& name) {
        UChar text[64];
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t n = udat_getSymbols(peer.handle(), type, index, text, 64, &error);
        const std::u32string wide = U_SUCCESS(error) ? to_u32(text, n) : std::u32string();
        name.length = static_cast<std::uint32_t>(std::min<std::size_t>(wide.size(), std::size(name.text)));
        std::copy_n(wide.begin(), name.length, name.text);
    };
    for (std::int32_t m = 0; m < 12; ++m) {
        symbol(UDAT_MONTHS, m, names.month[m]);
        symbol(UDAT_SHORT_MONTHS, m, names.month_abbrev[m]);
        symbol(UDAT_STANDALONE_MONTHS, m, names.month_standalone[m]);
    }
    for (std::int32_t d = 0; d < 7; ++d) symbol(UDAT_WEEKDAYS, d + UCAL_SUNDAY, names.weekday[d]);
    symbol(UDAT_AM_PMS, 0, names.am);
    symbol(UDAT_AM_PMS, 1, names.pm);
    return names;
}

// ---- The C library ------------------------------------------------------------------------

// A locale_t for "de_DE.UTF-8" (from "de_DE"), or null with the reason in `why`.
class CLocale {
public:
    CLocale(const std::string& locale, const std::string& cache_folder) {
        const std::string name = locale + ".UTF-8";
        handle_ = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
        if (handle_) return;
        // Not on the system: compile it into the cache folder and load it from there.
        const std::string target = cache_folder + "/" + name;
        struct stat st {};
        if (stat((target + "/LC_CTYPE").c_str(), &st) != 0) {
            mkdir(cache_folder.c_str(), 0755);
            const std::string command = "localedef -i '" + locale + "' -f UTF-8 '" + target + "' >/dev/null 2>&1";
            const int rc = std::system(command.c_str());
            if (rc != 0 && stat((target + "/LC_CTYPE").c_str(), &st) != 0) {
                why_ = "localedef -i " + locale + " -f UTF-8 failed (is the 'locales' package installed?)";
                return;
            }
        }
        // LOCPATH is read by each newlocale; set it only for this one.
        const char* saved = std::getenv("LOCPATH");
        const std::string saved_value = saved ? saved : "";
        setenv("LOCPATH", cache_folder.c_str(), 1);
        handle_ = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
        if (saved) setenv("LOCPATH", saved_value.c_str(), 1);
        else unsetenv("LOCPATH");
        if (!handle_) why_ = "newlocale(" + name + ") failed after localedef";
        else generated_ = true;
    }
    ~CLocale() {
        if (handle_) freelocale(handle_);
    }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

    locale_t handle() const { return handle_; }
    const std::string& why() const { return why_; }
    bool generated() const { return generated_; }

private:
    locale_t handle_ = nullptr;
    std::string why_;
    bool generated_ = false;
};

// gmtime_r of the value's moment, then strftime_l.
class StrftimePeer {
public:
    StrftimePeer(locale_t locale, const char* format) : locale_(locale), format_(format) {}
    std::size_t format(std::time_t unix_seconds, char* out, std::size_t capacity) const {
        std::tm parts;
        gmtime_r(&unix_seconds, &parts);
        return strftime_l(out, capacity, format_, &parts, locale_);
    }

private:
    locale_t locale_;
    const char* format_;
};

// Unix seconds of a day number, a datetime, a time of day (on 1970-01-01) and a month (the
// 15th of the month in 2001).
inline std::time_t unix_of_day(double day) { return static_cast<std::time_t>(day + epoch_1960) * 86400; }
inline std::time_t unix_of_datetime(double seconds) { return static_cast<std::time_t>(seconds) + epoch_1960 * 86400; }
inline std::time_t unix_of_time(double seconds) { return static_cast<std::time_t>(seconds); }
inline std::time_t unix_of_month(double month) {
    return static_cast<std::time_t>(days_from_civil(2001, static_cast<unsigned>(month), 15)) * 86400;
}

}  // namespace vxbench
