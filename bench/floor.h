/*
 * The floor: hand-written formatters that do only what the text needs, with the layout of each
 * locale fixed at compile time and the names copied from arrays filled once. They show how
 * fast a row could possibly be: days to civil date, a few digits, a name copy, blanks to the
 * width. Each writes the same cells as our format (checked at start-up by bench_formats) into a
 * field of `width` cells and answers the text's length. Unlike a format, a floor may write up to
 * 16 cells past its text (block copies without a branch on the length): give it 64 cells of slack.
 *
 *   vxbench::FloorNames names = ...;                       // from ICU, once
 *   int n = vxbench::floor_long<vxbench::Layout::de>(23000, out, 20, names);   // "21. Dezember 2022"
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "values.h"

namespace vxbench {

enum class Layout { en, de, ja };

struct Name {
    char32_t text[40];
    std::uint32_t length;
};

struct FloorNames {
    Name month[12];             // format forms, January first
    Name month_abbrev[12];
    Name month_standalone[12];
    Name weekday[7];            // Sunday first
    Name am, pm;
};

namespace floor_detail {

// Names are copied 16 cells at a time whatever their length (the arrays have room), so that the
// copy has no branch on the length; the cells past the name are overwritten or lie past the text.
inline constexpr std::uint32_t name_block = 16;
inline constexpr char32_t blank_block[name_block] = {U' ', U' ', U' ', U' ', U' ', U' ', U' ', U' ',
                                                     U' ', U' ', U' ', U' ', U' ', U' ', U' ', U' '};
inline char32_t* name(char32_t* o, const Name& n) {
    std::memcpy(o, n.text, name_block * sizeof(char32_t));
    if (n.length > name_block) [[unlikely]]
        std::memcpy(o + name_block, n.text + name_block, (n.length - name_block) * sizeof(char32_t));
    return o + n.length;
}
inline char32_t* lit(char32_t* o, char32_t c) {
    *o++ = c;
    return o;
}
// One or two digits, no padding, without a branch.
inline char32_t* digits(char32_t* o, unsigned v) {
    const bool two_digits = v >= 10;
    o[0] = two_digits ? U'0' + v / 10 : U'0' + v;
    o[1] = U'0' + v % 10;
    return o + 1 + two_digits;
}
inline char32_t* two(char32_t* o, unsigned v) {
    o[0] = U'0' + v / 10;
    o[1] = U'0' + v % 10;
    return o + 2;
}
inline char32_t* four(char32_t* o, unsigned v) {
    o[0] = U'0' + v / 1000;
    o[1] = U'0' + v / 100 % 10;
    o[2] = U'0' + v / 10 % 10;
    o[3] = U'0' + v % 10;
    return o + 4;
}
// The field's blanks, before the text is written over them: the same count on every call.
inline void blanks(char32_t* out, int width) {
    for (int i = 0; i < width; ++i) out[i] = U' ';
}
// The cells just past the text, which the block copies and the branch-free digits may have
// written, are blanked again; answers the text's length.
inline int finish(char32_t* start, char32_t* end) {
    std::memcpy(end, blank_block, sizeof blank_block);
    return static_cast<int>(end - start);
}
inline Civil civil(double day_number) { return civil_from_days(static_cast<std::int64_t>(day_number) + epoch_1960); }
// 0 Sunday .. 6 Saturday; 1970-01-01 was a Thursday.
inline unsigned weekday(std::int64_t unix_day) { return static_cast<unsigned>(((unix_day + 4) % 7 + 7) % 7); }

struct Clock {
    std::int64_t day;  // day number
    unsigned hour, minute, second;
};
inline Clock clock(double datetime) {
    const auto s = static_cast<std::int64_t>(datetime);
    std::int64_t day = s / 86400, rest = s % 86400;
    if (rest < 0) {
        rest += 86400;
        --day;
    }
    const auto r = static_cast<unsigned>(rest);
    return {day, r / 3600, r / 60 % 60, r % 60};
}

struct IsoWeek {
    unsigned year, week, weekday;  // weekday 1 Monday .. 7 Sunday
};
inline IsoWeek iso_week(std::int64_t unix_day) {
    const unsigned wd = (weekday(unix_day) + 6) % 7 + 1;
    const std::int64_t thursday = unix_day - wd + 4;
    const Civil c = civil_from_days(thursday);
    const std::int64_t jan1 = days_from_civil(c.year, 1, 1);
    return {static_cast<unsigned>(c.year), static_cast<unsigned>((thursday - jan1) / 7 + 1), wd};
}

// "December 21, 2022", "21. Dezember 2022", "2022年12月21日".
template <Layout L>
char32_t* long_date(char32_t* o, const Civil& c, const FloorNames& names) {
    const auto y = static_cast<unsigned>(c.year);
    if constexpr (L == Layout::en) {
        o = name(o, names.month[c.month - 1]);
        o = lit(o, U' ');
        o = digits(o, c.day);
        o = lit(o, U',');
        o = lit(o, U' ');
        o = four(o, y);
    } else if constexpr (L == Layout::de) {
        o = digits(o, c.day);
        o = lit(o, U'.');
        o = lit(o, U' ');
        o = name(o, names.month[c.month - 1]);
        o = lit(o, U' ');
        o = four(o, y);
    } else {
        o = four(o, y);
        o = lit(o, U'年');
        o = digits(o, c.month);
        o = lit(o, U'月');
        o = digits(o, c.day);
        o = lit(o, U'日');
    }
    return o;
}

}  // namespace floor_detail

// NLDATE, NLDATEL: the locale's long date.
template <Layout L>
int floor_long(double day_number, char32_t* out, int width, const FloorNames& names) {
    using namespace floor_detail;
    blanks(out, width);
    return finish(out, long_date<L>(out, civil(day_number), names));
}

// NLDATEW: the full date, weekday first ("Wednesday, December 21, 2022"), last in Japanese.
template <Layout L>
int floor_full(double day_number, char32_t* out, int width, const FloorNames& names) {
    using namespace floor_detail;
    const auto day = static_cast<std::int64_t>(day_number) + epoch_1960;
    const Name& wd = names.weekday[weekday(day)];
    const Civil c = civil_from_days(day);
    blanks(out, width);
    char32_t* o = out;
    if constexpr (L == Layout::ja) {
        o = name(long_date<L>(o, c, names), wd);
    } else {
        o = name(o, wd);
        o = lit(o, U',');
        o = lit(o, U' ');
        o = long_date<L>(o, c, names);
    }
    return finish(out, o);
}

// NLDATES: "12/21/2022", "21.12.2022", "2022/12/21".
template <Layout L>
int floor_numeric(double day_number, char32_t* out, int width, const FloorNames&) {
    using namespace floor_detail;
    const Civil c = civil(day_number);
    const auto y = static_cast<unsigned>(c.year);
    blanks(out, width);
    char32_t* o = out;
    if constexpr (L == Layout::en) {
        o = lit(two(o, c.month), U'/');
        o = lit(two(o, c.day), U'/');
        o = four(o, y);
    } else if constexpr (L == Layout::de) {
        o = lit(two(o, c.day), U'.');
        o = lit(two(o, c.month), U'.');
        o = four(o, y);
    } else {
        o = lit(four(o, y), U'/');
        o = lit(two(o, c.month), U'/');
        o = two(o, c.day);
    }
    return finish(out, o);
}

// WEEKV at width 11: "2022-W51-03" (ISO year, week, weekday 01 Monday .. 07 Sunday).
inline int floor_iso_week(double day_number, char32_t* out, int width, const FloorNames&) {
    using namespace floor_detail;
    const IsoWeek w = iso_week(static_cast<std::int64_t>(day_number) + epoch_1960);
    blanks(out, width);
    char32_t* o = four(out, w.year);
    o = lit(lit(o, U'-'), U'W');
    o = lit(two(o, w.week), U'-');
    o = two(o, w.weekday);
    return finish(out, o);
}

// DTWEEKV at width 18: "2022W5201:06:12:01".
inline int floor_dt_week(double datetime, char32_t* out, int width, const FloorNames&) {
    using namespace floor_detail;
    const Clock k = clock(datetime);
    const IsoWeek w = iso_week(k.day + epoch_1960);
    blanks(out, width);
    char32_t* o = lit(four(out, w.year), U'W');
    o = two(two(o, w.week), w.weekday);
    o = lit(two(lit(o, U':'), k.hour), U':');
    o = lit(two(o, k.minute), U':');
    o = two(o, k.second);
    return finish(out, o);
}

// NLSTRMON: the stand-alone month name, left in the field.
inline int floor_month_name(double month, char32_t* out, int width, const FloorNames& names) {
    using namespace floor_detail;
    blanks(out, width);
    return finish(out, name(out, names.month_standalone[static_cast<unsigned>(month) - 1]));
}

// TIME at width 8: " 6:12:01", right-aligned.
inline int floor_clock(double seconds, char32_t* out, int width, const FloorNames&) {
    using namespace floor_detail;
    const Clock k = clock(seconds);
    char32_t text[16];
    char32_t* o = lit(digits(text, k.hour), U':');
    o = lit(two(o, k.minute), U':');
    o = two(o, k.second);
    const auto n = static_cast<int>(o - text);
    for (int i = 0; i < width - n; ++i) out[i] = U' ';
    std::memcpy(out + (width - n), text, static_cast<std::size_t>(n) * sizeof(char32_t));
    return width;
}

namespace floor_detail {

// The medium time: "6:12:01 AM" (narrow no-break space before the marker), "06:12:01", "6:12:01".
template <Layout L>
char32_t* medium_time(char32_t* o, const Clock& k, const FloorNames& names) {
    if constexpr (L == Layout::en) {
        const unsigned h12 = k.hour % 12 == 0 ? 12 : k.hour % 12;
        o = lit(digits(o, h12), U':');
        o = lit(two(o, k.minute), U':');
        o = lit(two(o, k.second), U'\u202F');
        return name(o, k.hour < 12 ? names.am : names.pm);
    } else {
        o = lit(L == Layout::de ? two(o, k.hour) : digits(o, k.hour), U':');
        o = lit(two(o, k.minute), U':');
        return two(o, k.second);
    }
}

}  // namespace floor_detail

// NLDATM's peer text, the medium date and time: "Dec 21, 2022, 6:12:01 AM",
// "21.12.2022, 06:12:01", "2022/12/21 6:12:01".
template <Layout L>
int floor_medium_datetime(double datetime, char32_t* out, int width, const FloorNames& names) {
    using namespace floor_detail;
    const Clock k = clock(datetime);
    const Civil c = civil_from_days(k.day + epoch_1960);
    const auto y = static_cast<unsigned>(c.year);
    blanks(out, width);
    char32_t* o = out;
    if constexpr (L == Layout::en) {
        o = lit(name(o, names.month_abbrev[c.month - 1]), U' ');
        o = lit(lit(digits(o, c.day), U','), U' ');
        o = lit(lit(four(o, y), U','), U' ');
    } else if constexpr (L == Layout::de) {
        o = lit(two(o, c.day), U'.');
        o = lit(two(o, c.month), U'.');
        o = lit(lit(four(o, y), U','), U' ');
    } else {
        o = lit(four(o, y), U'/');
        o = lit(two(o, c.month), U'/');
        o = lit(two(o, c.day), U' ');
    }
    return finish(out, medium_time<L>(o, k, names));
}

// NLTIME's peer text, the medium time.
template <Layout L>
int floor_medium_time(double seconds, char32_t* out, int width, const FloorNames& names) {
    using namespace floor_detail;
    blanks(out, width);
    return finish(out, medium_time<L>(out, clock(seconds), names));
}

// Base64, the textbook loop: three bytes to four characters through the alphabet, and back
// through a 256-entry table (valid input only, as benchmarked).
inline constexpr char32_t floor_base64_alphabet[] =
    U"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

inline std::size_t floor_base64_encode(const std::uint8_t* in, std::size_t n, char32_t* out) {
    const char32_t* a = floor_base64_alphabet;
    std::size_t o = 0, i = 0;
    for (; i + 3 <= n; i += 3) {
        const std::uint32_t g = std::uint32_t(in[i]) << 16 | std::uint32_t(in[i + 1]) << 8 | in[i + 2];
        out[o] = a[g >> 18];
        out[o + 1] = a[g >> 12 & 63];
        out[o + 2] = a[g >> 6 & 63];
        out[o + 3] = a[g & 63];
        o += 4;
    }
    if (n - i == 1) {
        out[o++] = a[in[i] >> 2];
        out[o++] = a[(in[i] & 3) << 4];
        out[o++] = U'=';
        out[o++] = U'=';
    } else if (n - i == 2) {
        out[o++] = a[in[i] >> 2];
        out[o++] = a[((in[i] & 3) << 4) | (in[i + 1] >> 4)];
        out[o++] = a[(in[i + 1] & 15) << 2];
        out[o++] = U'=';
    }
    return o;
}

struct FloorBase64Index {
    std::uint8_t v[256];
    FloorBase64Index() {
        std::memset(v, 0, sizeof v);
        for (std::uint8_t i = 0; i < 64; ++i) v[floor_base64_alphabet[i]] = i;
    }
};

inline std::size_t floor_base64_decode(const char32_t* in, std::size_t n, std::uint8_t* out) {
    static const FloorBase64Index index;
    std::size_t o = 0;
    for (std::size_t i = 0; i < n; i += 4) {
        const bool pad2 = in[i + 2] == U'=', pad3 = in[i + 3] == U'=';
        const std::uint32_t g = std::uint32_t(index.v[in[i] & 0xFF]) << 18 | std::uint32_t(index.v[in[i + 1] & 0xFF]) << 12 |
                                std::uint32_t(index.v[in[i + 2] & 0xFF]) << 6 | index.v[in[i + 3] & 0xFF];
        out[o++] = static_cast<std::uint8_t>(g >> 16);
        if (!pad2) out[o++] = static_cast<std::uint8_t>(g >> 8);
        if (!pad3) out[o++] = static_cast<std::uint8_t>(g);
    }
    return o;
}

}  // namespace vxbench
