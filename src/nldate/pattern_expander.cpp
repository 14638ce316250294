#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include "calendar/clock_parts.h"
#include "calendar/date_conversions.h"
#include "calendar/day_number.h"
#include "calendar/digits.h"
#include "calendar/missing_value.h"
#include "calendar/week_numbering.h"
#include "frame/field.h"
#include "frame/kernel.h"
#include "frame/session_bytes.h"
#include "locale/property_numbers.h"
#include "nldate/expander.h"

namespace vxlocfmt::nldate {

namespace {

namespace prop = locale::prop;

using locale::property_text;

// Names are copied in whole blocks of this many cells (a property's value has room for ten of
// them), so that the copy does not branch on the name's length.
constexpr std::int64_t name_block = 16;
static_assert(property_value_cells % name_block == 0);
constexpr std::array<wchar, name_block> blank_block = [] {
    std::array<wchar, name_block> b{};
    b.fill(U' ');
    return b;
}();
// Blanks over [at, at + n) rounded up to whole blocks: the caller has the room.
void blank_blocks(wchar* at, std::int64_t n) {
    for (std::int64_t i = 0; i < n; i += name_block) std::memcpy(at + i, blank_block.data(), sizeof blank_block);
}

// Appends into fixed cells: stores what fits and counts everything, so that a measuring call
// answers the whole length however long the text grows. The fast writers (put_own,
// append_property) may leave scratch in the name_block cells after the text, never past the
// capacity: what is read past count() is the reader's to blank.
class Text {
public:
    Text(wchar* cells, std::int32_t capacity) : cells_(cells), capacity_(capacity) {}

    void put(wchar c) {
        if (count_ < capacity_) cells_[count_] = c;
        ++count_;
    }
    // Two characters, the shape of every two-digit number.
    void put_pair(const std::array<wchar, 2>& pair) {
        if (count_ + 2 <= capacity_) {
            cells_[count_] = pair[0];
            cells_[count_ + 1] = pair[1];
            count_ += 2;
            return;
        }
        put(pair[0]);
        put(pair[1]);
    }
    // The first `length` (1 or 2) of two cells, the second one written as scratch when not
    // counted: no branch on the length.
    void put_own(const std::array<wchar, 2>& cells, std::int64_t length) {
        if (count_ + 2 <= capacity_) {
            cells_[count_] = cells[0];
            cells_[count_ + 1] = cells[1];
            count_ += length;
            return;
        }
        put(cells[0]);
        if (length == 2) put(cells[1]);
    }
    // One bound test, then a block copy of what fits.
    void append(std::u32string_view s) {
        const auto n = static_cast<std::int64_t>(s.size());
        const std::int64_t stored = std::min(n, std::max<std::int64_t>(capacity_ - count_, 0));
        std::copy_n(s.data(), stored, cells_ + std::min(count_, capacity_));
        count_ += n;
    }
    // The text of a property: whole name_block blocks from its value (which holds
    // property_value_cells + 1 cells), the cells past the name being scratch.
    void append_property(const Property& property) {
        const std::u32string_view s = property_text_of(property);
        const auto n = static_cast<std::int64_t>(s.size());  // [0, 160]
        if (count_ + static_cast<std::int64_t>(property_value_cells) > capacity_) return append(s);
        for (std::int64_t i = 0; i < n; i += name_block)
            std::memcpy(cells_ + count_ + i, property.value + i, name_block * sizeof(wchar));
        count_ += n;
    }
    // n copies of c.
    void repeat(wchar c, std::int64_t n) {
        for (; n > 0 && count_ < capacity_; --n) cells_[count_++] = c;
        count_ += std::max<std::int64_t>(n, 0);
    }
    bool full() const { return count_ >= capacity_; }
    std::int64_t count() const { return count_; }
    std::u32string_view stored() const {
        return {cells_, static_cast<std::size_t>(std::min<std::int64_t>(count_, capacity_))};
    }

private:
    static std::u32string_view property_text_of(const Property& p) {
        return {p.value, static_cast<std::size_t>(p.length < property_value_cells ? p.length : property_value_cells)};
    }

    wchar* cells_;
    std::int64_t capacity_;
    std::int64_t count_ = 0;
};

// A part of the value as a whole number; absent when missing (any NaN) or too large to be a
// clock or calendar part.
struct Part {
    bool present;
    std::int64_t value;
};
constexpr double part_limit = 1e15;
[[gnu::always_inline]] inline Part part_of(double x) {
    if (!(std::fabs(x) < part_limit)) return {false, 0};
    return {true, static_cast<std::int64_t>(std::trunc(x))};
}

// Everything a directive may read, derived once before the directives.
struct Value {
    double day_number;
    bool has_date = false;
    std::int64_t year = 0;
    std::int32_t month = 0;        // [1, 12] with a date
    std::int32_t day = 0;          // [1, 31]
    std::int32_t day_of_year = 0;  // [1, 366]
    // 0 Sunday .. 6 Saturday; -1 without a date. The nine earliest days of the range carry the
    // calendar's truncated weekdays (-1, 0, 1, -5, ...), so the index leaves [0, 6] there.
    std::int32_t weekday_index = -1;
    Part hour, minute, whole_seconds;
    double hour_raw, minute_raw, seconds;
    std::uint32_t decimals;
    void* zone;
    const PropertyCache* properties;
    bool calendar_years = false;  // a "+" was met: "%y" and "%Y" show the locale's calendar year
    bool zone_used = false;       // "%z" or "%Z" was met: a cut keeps the zone offset
};

[[gnu::always_inline]] inline Value derive(const PropertyCache& properties, void* zone, std::uint32_t decimals,
                                           double day_number, double hour, double minute, double seconds) {
    Value v;
    v.day_number = day_number;
    v.properties = &properties;
    v.zone = zone;
    v.decimals = decimals;
    v.hour_raw = hour;
    v.minute_raw = minute;
    v.seconds = seconds;
    v.hour = part_of(hour);
    v.minute = part_of(minute);
    v.whole_seconds = part_of(seconds);
    // What zfmcymd, julian_from_day and zwekday answer, from one integer conversion (the
    // calendar tests compare the two paths on every day of the range).
    if (calendar::in_day_range(day_number)) {
        const calendar::date_fields f = calendar::fields_from_day(calendar::whole_day(day_number));
        v.has_date = true;
        v.year = f.year;
        v.month = f.month;
        v.day = f.day;
        v.day_of_year = f.day_of_year;
        v.weekday_index = calendar::weekday_in_range(day_number) - 1;
    }
    return v;
}

constexpr std::u32string_view missing_part = U"**";

// What calendar::i2s writes for n % 10^9 (every caller's n fits): `width` low digits padded with
// `fill`, or with fill 0 the number's own digits.
[[gnu::noinline]] void put_number_by_i2s(Text& out, std::int64_t n, std::int32_t width, wchar fill) {
    wchar digits[calendar::max_int32_digits];
    const auto small = static_cast<std::int32_t>(n % 1000000000);
    const std::int32_t count = calendar::i2s(small, digits, width, fill);
    out.append({digits, static_cast<std::size_t>(count)});
}

// The cells of every number below 100, each way it is written, looked up rather than decided:
// a branch on "below 10" mispredicts on values in any order. Own digits come as the one or two
// digits and a scratch cell.
struct number_cells {
    std::array<wchar, 2> zero_padded;   // "07"
    std::array<wchar, 2> blank_padded;  // " 7"
    std::array<wchar, 2> own;           // "7" and scratch, or "17"
    std::int64_t own_length;            // 1 or 2
};
constexpr auto small_numbers = [] {
    std::array<number_cells, 100> cells{};
    for (std::uint32_t v = 0; v < 100; ++v) {
        const auto tens = static_cast<wchar>(U'0' + v / 10);
        const auto ones = static_cast<wchar>(U'0' + v % 10);
        cells[v] = {{tens, ones}, {v < 10 ? U' ' : tens, ones}, {v < 10 ? ones : tens, ones}, v < 10 ? 1 : 2};
    }
    return cells;
}();

// Hours below 100 as "%I", "%l" and "%p" read them, looked up for the same reason: every other
// hour is past 12.
struct hour_reading {
    std::uint8_t twelve_l;   // the hour up to 12, else the hour modulo 12
    std::uint8_t twelve_i;   // the same with 0 as 12
    std::uint8_t afternoon;  // hour modulo 24 from 12 on
};
constexpr auto small_hours = [] {
    std::array<hour_reading, 100> hours{};
    for (std::uint32_t h = 0; h < hours.size(); ++h) {
        const auto twelve = static_cast<std::uint8_t>(h > 12 ? h % 12 : h);
        hours[h] = {twelve, static_cast<std::uint8_t>(twelve == 0 ? 12 : twelve),
                    static_cast<std::uint8_t>(h % 24 >= 12 ? 1 : 0)};
    }
    return hours;
}();

// The same text as put_number_by_i2s; numbers in [0, 99], nearly all of them, take no loop, no
// call and no branch on the number.
[[gnu::always_inline]] inline void put_number(Text& out, std::int64_t n, std::int32_t width, wchar fill) {
    if (static_cast<std::uint64_t>(n) < 100) {
        const number_cells& cells = small_numbers[static_cast<std::size_t>(n)];
        // Two digits, a leading zero written as the fill ("0", or " " for "%e" and "%o").
        if (width == 2 && fill == U'0') return out.put_pair(cells.zero_padded);
        if (width == 2 && fill == U' ') return out.put_pair(cells.blank_padded);
        if (fill == 0) return out.put_own(cells.own, cells.own_length);
    }
    put_number_by_i2s(out, n, width, fill);
}

// All digits of a whole number, sign included: hours above 99 and the days of a duration.
void put_all_digits(Text& out, std::int64_t n) {
    constexpr std::size_t int64_cells = 20;  // 19 digits and a sign
    wchar cells[int64_cells];
    std::size_t at = int64_cells;
    std::uint64_t rest = n < 0 ? 0 - static_cast<std::uint64_t>(n) : static_cast<std::uint64_t>(n);
    do {
        cells[--at] = static_cast<wchar>(U'0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (n < 0) cells[--at] = U'-';
    out.append({cells + at, int64_cells - at});
}

// An hour-like number: 2 digits (or own digits under "#"), all digits above 99.
void put_hour(Text& out, Part h, wchar pad) {
    if (!h.present) return out.append(missing_part);
    if (h.value > 99) return put_all_digits(out, h.value);
    put_number(out, h.value, 2, pad);
}

[[gnu::always_inline]] inline void put_two(Text& out, Part p, wchar pad) {
    if (!p.present) return out.append(missing_part);
    put_number(out, p.value, 2, pad);
}

// Blanks after a name up to the longest of its set of `count` names.
[[gnu::noinline]] void pad_name(Text& out, const Value& v, std::size_t first, std::int32_t count,
                                std::size_t length) {
    std::size_t longest = 0;
    for (std::int32_t i = 0; i < count; ++i)
        longest = std::max(longest, property_text(*v.properties, first + static_cast<std::size_t>(i)).size());
    out.repeat(U' ', static_cast<std::int64_t>(longest - length));
}

// A name of a set of `count` names, blank-padded to the set's longest when `padded`.
[[gnu::always_inline]] inline void put_name(Text& out, const Value& v, std::size_t first, std::int32_t index,
                                             std::int32_t count, bool padded) {
    if (index < 0 || index >= count) return out.append(missing_part);
    const std::size_t number = first + static_cast<std::size_t>(index);
    out.append_property(v.properties->properties[number]);
    if (padded) pad_name(out, v, first, count, property_text(*v.properties, number).size());
}

constexpr std::int32_t weekdays = 7;
constexpr std::int32_t months = 12;
constexpr std::int32_t quarters = 4;

// Sign, hours and minutes of the zone's offset at the value's moment: 5 characters.
constexpr std::size_t zone_text_cells = 5;
void zone_text(const Value& v, wchar (&text)[zone_text_cells]) {
    // A part the value does not have counts as 0 (a date asks at its midnight, a time on day 0).
    const auto or_zero = [](double x) { return calendar::is_nan(x) ? 0.0 : x; };
    const double datetime = or_zero(v.day_number) * 86400 +
                            (or_zero(v.hour_raw) * 60 + or_zero(v.minute_raw)) * 60 + or_zero(v.seconds);
    double offset = 0;
    if (v.zone) offset = kernel::slot<zone_offset_fn>(v.zone, zone_offset_slot)(v.zone, datetime);
    if (!std::isfinite(offset) || std::fabs(offset) >= 100 * 3600) offset = 0;
    const double magnitude = std::fabs(offset);
    const auto hours = static_cast<std::int32_t>(magnitude / 3600);                   // [0, 99]
    const auto minutes = static_cast<std::int32_t>(calendar::fmod_by_whole(magnitude, 3600) / 60);  // [0, 59]
    text[0] = offset < 0 ? U'-' : U'+';
    calendar::i2s(hours, text + 1, 2, U'0');
    calendar::i2s(minutes, text + 3, 2, U'0');
}

// "%S" with decimals: the decimal point, then the digits one by one from the fraction. Only the
// last digit looks ahead, and it is never carried: 5.97 with one decimal stays "9". Deliberate.
void put_fraction(Text& out, const Value& v) {
    const std::u32string_view point = property_text(*v.properties, prop::decimal_point);
    out.append(point.empty() ? U"." : point);
    const std::int64_t digits = v.decimals;
    if (!v.whole_seconds.present) return out.repeat(U'*', digits);
    double rest = std::fabs(v.seconds - std::trunc(v.seconds));  // [0, 1)
    for (std::int64_t k = 0; k < digits; ++k) {
        if (out.full()) return out.repeat(U'0', digits - k);  // counted, never stored
        rest *= 10;
        auto digit = static_cast<std::int32_t>(rest);  // [0, 9]
        rest -= digit;
        if (k + 1 == digits && static_cast<std::int32_t>(rest * 10) >= 5 && digit < 9) ++digit;
        out.put(static_cast<wchar>(U'0' + digit));
    }
}

// "%p": the morning marker below hour 12 (modulo 24), else the afternoon one. A missing hour
// writes "**" and then the morning marker, as a negative hour would: deliberate.
[[gnu::always_inline]] inline void put_marker(Text& out, const Value& v) {
    std::size_t afternoon = 0;
    if (!v.hour.present) out.append(missing_part);
    else if (static_cast<std::uint64_t>(v.hour.value) < small_hours.size())
        afternoon = small_hours[static_cast<std::size_t>(v.hour.value)].afternoon;
    else afternoon = v.hour.value % 24 < 12 ? 0 : 1;
    static_assert(prop::pm == prop::am + 1);
    const std::size_t number = prop::am + afternoon;
    if (!property_text(*v.properties, number).empty()) return out.append_property(v.properties->properties[number]);
    out.append(afternoon ? U"PM" : U"AM");
}

// The week triple of the value's date: get_yywwdd's answer, from the fields already derived.
calendar::week_date week_of(const Value& v, wchar rule) {
    return calendar::week_date_of(rule, v.year, v.day_of_year - 1, v.weekday_index + 1);
}

// The week of the year by a rule letter, 2 digits.
void put_week(Text& out, const Value& v, wchar rule, wchar pad) {
    if (!v.has_date) return out.append(missing_part);
    put_number(out, week_of(v, rule).week, 2, pad);
}

// Year of the ISO week: 2 digits, or 4 as two zero-padded groups.
void put_iso_year(Text& out, const Value& v, bool four, wchar pad) {
    if (!v.has_date) return out.append(missing_part);
    const std::int64_t y = week_of(v, U'V').year;
    if (!four) return put_number(out, y % 100, 2, pad);
    put_number(out, y / 100, 2, U'0');
    put_number(out, y % 100, 2, U'0');
}

void put_year(Text& out, const Value& v, bool four, wchar pad) {
    if (!v.has_date) return out.append(missing_part);
    std::int64_t y = v.year;
    if (v.calendar_years)
        y = calendar_year(property_text(*v.properties, prop::calendar_code), y,
                          static_cast<std::int64_t>(std::floor(v.day_number)));
    if (!four) return put_number(out, y % 100, 2, pad);
    // Two zero-padded groups: a year past 9999 keeps its last four digits. "#" writes all of
    // them instead, the way it writes every other number.
    if (pad == 0) return put_all_digits(out, y);
    put_number(out, y / 100, 2, U'0');
    put_number(out, y % 100, 2, U'0');
}

// One directive, its letter folded to upper case ("%m" already turned into "N"). False: the
// directive is not supported.
[[gnu::always_inline]] inline bool put_directive(Text& out, Value& v, wchar letter, bool lower, bool long_form) {
    // Computed where a case reads them: the compiler keeps them out of the others.
    const auto pad = [long_form] { return long_form ? wchar{0} : U'0'; };
    const auto blank_pad = [long_form] { return long_form ? wchar{0} : U' '; };
    const auto day = [&v] { return Part{v.has_date, v.day}; };
    const auto month = [&v] { return Part{v.has_date, v.month}; };
    switch (letter) {
    case U'A':
    case U'F': {
        const std::size_t set = lower ? (long_form ? prop::weekday_abbrev_standalone : prop::weekday_abbrev)
                                      : (long_form ? prop::weekday_wide_standalone : prop::weekday_wide);
        put_name(out, v, set, v.weekday_index, weekdays, letter == U'F');
        return true;
    }
    case U'B':
    case U'C': {
        const bool abbreviated = letter == U'B' && lower;
        const std::size_t set = abbreviated ? (long_form ? prop::month_abbrev_standalone : prop::month_abbrev)
                                            : (long_form ? prop::month_wide_standalone : prop::month_wide);
        put_name(out, v, set, v.has_date ? v.month - 1 : -1, months, letter == U'C');
        return true;
    }
    case U'Q': {
        const std::size_t set = lower ? (long_form ? prop::quarter_abbrev_standalone : prop::quarter_abbrev)
                                      : (long_form ? prop::quarter_wide_standalone : prop::quarter_wide);
        put_name(out, v, set, v.has_date ? (v.month - 1) / 3 : -1, quarters, false);
        return true;
    }
    case U'D':
        put_two(out, day(), pad());
        return true;
    case U'E':
        if (!day().present) out.append(missing_part);
        else put_number(out, v.day, lower ? 2 : 0, lower ? blank_pad() : 0);
        return true;
    case U'N':
        if (!lower) {
            put_two(out, month(), pad());
        } else if (!v.hour.present) {
            out.append(missing_part);
        } else {
            put_all_digits(out, v.hour.value / 24);  // whole days of a duration
        }
        return true;
    case U'O':
        if (!month().present) out.append(missing_part);
        else put_number(out, v.month, lower ? 2 : 0, lower ? blank_pad() : 0);
        return true;
    case U'J':
        if (!v.has_date) out.append(missing_part);
        else put_number(out, v.day_of_year, 3, pad());
        return true;
    case U'G':
        put_iso_year(out, v, !lower, pad());
        return true;
    case U'Y':
        put_year(out, v, !lower, pad());
        return true;
    case U'H':
        put_hour(out, v.hour, pad());
        return true;
    case U'K': {
        Part h = v.hour;
        if (h.present && h.value == 0) h.value = 24;
        put_hour(out, h, pad());
        return true;
    }
    case U'I':
    case U'L': {
        // The twelve-hour value: the hour up to 12, else the hour modulo 12 (0 stays 0, 13 is 1);
        // "%I" writes 0 as 12.
        Part h = v.hour;
        if (h.present && static_cast<std::uint64_t>(h.value) < small_hours.size()) {
            const hour_reading& r = small_hours[static_cast<std::size_t>(h.value)];
            h.value = letter == U'I' ? r.twelve_i : r.twelve_l;
        } else if (h.present) {
            if (h.value > 12) h.value %= 12;
            if (letter == U'I' && h.value == 0) h.value = 12;
        }
        put_two(out, h, pad());
        return true;
    }
    case U'M':
        put_two(out, v.minute, pad());
        return true;
    case U'S':
        put_two(out, v.whole_seconds, pad());
        if (!lower && v.decimals > 0) put_fraction(out, v);
        return true;
    case U'T':
        if (lower) return true;  // "%t": nothing
        put_hour(out, v.hour, U'0');
        out.put(U':');
        put_two(out, v.minute, U'0');
        out.put(U':');
        put_two(out, v.whole_seconds, U'0');
        return true;
    case U'P':
        put_marker(out, v);
        return true;
    case U'U':
    case U'W':
        if (!lower) {
            put_week(out, v, letter, pad());
        } else if (v.weekday_index < 0 || v.weekday_index >= weekdays) {
            out.append(missing_part);
        } else if (letter == U'U') {  // "%u": Monday 1 .. Sunday 7
            out.put(static_cast<wchar>(U'0' + (v.weekday_index == 0 ? 7 : v.weekday_index)));
        } else {  // "%w": Sunday 0 .. Saturday 6
            out.put(static_cast<wchar>(U'0' + v.weekday_index));
        }
        return true;
    case U'V':
        if (!lower) put_week(out, v, U'V', pad());  // "%v": nothing
        return true;
    case U'Z':
        v.zone_used = true;
        if (lower) {
            wchar text[zone_text_cells];
            zone_text(v, text);
            out.append({text, zone_text_cells});
        } else {
            out.append(U"XST");  // stands where a zone name would be; kept as the host has it
        }
        return true;
    default:  // "%R" and "%r" ("%X" and "%x" are the caller's)
        return false;
    }
}

bool is_ascii_letter(wchar c) { return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z'); }

// Pass 1: "%x" becomes the locale's date pattern, "%X" its time pattern; any other pair is
// copied, and so is a "%" in the last position.
void substitute_locale_patterns(std::u32string_view pattern, const PropertyCache& properties, Text& out) {
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const wchar c = pattern[i];
        if (c != U'%' || i + 1 == pattern.size()) {
            out.put(c);
            continue;
        }
        const wchar next = pattern[++i];
        if (next == U'x') {
            out.append(property_text(properties, prop::date_pattern));
        } else if (next == U'X') {
            out.append(property_text(properties, prop::time_pattern));
        } else {
            out.put(c);
            out.put(next);
        }
    }
}

// Pass 2. A directive is "%", then "#" (long) or "0" (zero pad, the default), a digit 1 to 9
// (read and ignored: deliberate), "+" (calendar years), "?" (lower-case reading), the letter.
// A "%" with no letter after it (end of text) is unsupported, as a non-letter is.
enum class pass { done, refused, needs_locale_patterns };

// Pass 2 over `pattern`. With `raw`, the pattern has not been through pass 1, which leaves it
// as it is unless a "%" is directly followed by "x" or "X": pass 2 stops there and asks for
// pass 1. Pass 1 pairs each "%" with the character after it, the directive's own reading when
// it has no flags; flags are never "%", so both read the same pairs except after "%", flags,
// "%", where pass 2 stops as well. Up to where it stops, the text is pass 1's.
pass run_directives_on(std::u32string_view pattern, Value& v, Text& out, bool raw);
pass run_directives(std::u32string_view pattern, Value& v, Text& text, bool raw) {
    // On a text of its own, which the writers' stores into the cells cannot alias: the loop
    // keeps its count without reloading it after every character (measured: 5 to 10 ns).
    Text out = text;
    const pass result = run_directives_on(pattern, v, out, raw);
    text = out;
    return result;
}
pass run_directives_on(std::u32string_view pattern, Value& v, Text& out, bool raw) {
    const wchar* p = pattern.data();
    const wchar* const end = p + pattern.size();
    while (p != end) {
        if (*p != U'%') {
            out.put(*p++);
            continue;
        }
        ++p;
        wchar letter = p != end ? *p : 0;
        bool long_form = false;
        bool lower;
        // ASCII is enough: a letter outside it is unsupported, as a non-letter is.
        const wchar folded = letter | 0x20;  // ASCII letters in lower case
        if (folded >= U'a' && folded <= U'z' && folded != U'x') {
            // The usual directive, a letter and no flags, read in one step.
            ++p;
            lower = letter == folded;
            letter = folded - 0x20;
        } else {
            const wchar* const flags = p;
            if (p != end && (*p == U'#' || *p == U'0')) long_form = *p++ == U'#';
            if (p != end && *p >= U'1' && *p <= U'9') ++p;
            if (p != end && *p == U'+') {
                v.calendar_years = true;
                ++p;
            }
            bool forced_lower = false;
            if (p != end && *p == U'?') {
                forced_lower = true;
                ++p;
            }
            if (p == end) return pass::refused;
            letter = *p++;
            // Where pass 1 would have read differently: "%x" or "%X" (a pair it substitutes), and
            // "%", flags, "%" (it pairs the second "%" with what follows).
            const bool flagged = p - 1 != flags;
            if (letter == U'%') {
                if (raw && flagged) return pass::needs_locale_patterns;
                out.put(U'%');
                continue;
            }
            if (!is_ascii_letter(letter)) return pass::refused;
            if ((letter | 0x20) == U'x') return raw && !flagged ? pass::needs_locale_patterns : pass::refused;
            lower = forced_lower || (letter >= U'a' && letter <= U'z');
            if (letter >= U'a' && letter <= U'z') letter = letter - U'a' + U'A';
        }
        if (lower && letter == U'M') {  // "%m" is the month number, read as "%N"
            letter = U'N';
            lower = false;
        }
        if (!put_directive(out, v, letter, lower, long_form)) return pass::refused;
    }
    return pass::done;
}

// A cut text that used "%z" or "%Z": the last 6 cells become a blank and the offset, so the
// offset is never cut.
void keep_zone_offset(const OutputField& field, std::int32_t span, const Value& value) {
    wchar tail[zone_text_cells + 1];
    tail[0] = U' ';
    wchar offset[zone_text_cells];
    zone_text(value, offset);
    std::copy(std::begin(offset), std::end(offset), tail + 1);
    const std::int32_t n = std::min<std::int32_t>(span, zone_text_cells + 1);
    field.write(span - n, std::u32string_view(tail + (zone_text_cells + 1 - n), static_cast<std::size_t>(n)));
}

// Under the byte wrapper: the field's cells also into the caller's bytes as they are copied, so
// that the fit test has nothing left to convert when they are all below the bound. Out of line:
// the wide call's copy stays as it was.
// In a UTF-8 session a text beyond the bound, its first `text_length` cells, is encoded into the
// bytes instead, from the cells just copied (the session's conversion, done where the text is).
[[gnu::noinline]] void copy_narrowing(const OutputField& field, const wchar* cells, std::int64_t n,
                                      std::int64_t text_length, NarrowedBytes& narrowed) {
    const bool below = field.write_front_narrowing(cells, n, narrowed.bytes, narrowed.bound);
    narrowed.cells = below ? static_cast<std::int32_t>(n) : 0;
    if (below || !narrowed.utf8 || text_length > n) return;
    std::int32_t produced = 0;
    if (session_bytes::utf8<true>(cells, static_cast<std::int32_t>(text_length), narrowed.bytes, narrowed.room,
                                  &produced) == st::ok) {
        narrowed.encoded_cells = static_cast<std::int32_t>(text_length);
        narrowed.encoded_bytes = produced;
    }
}

std::int32_t clamp_length(std::int64_t n) {
    return static_cast<std::int32_t>(std::min<std::int64_t>(n, std::numeric_limits<std::int32_t>::max()));
}

// Rounds to a multiple of 10^-decimals; the whole seconds stay exact.
double round_to_decimals(double x, std::uint32_t decimals) {
    // A whole number below 2^53 comes back as it is (-0 as +0, as the sum below gives it),
    // without the library's floor and round.
    if (std::fabs(x) < 9007199254740992.0 && static_cast<double>(static_cast<std::int64_t>(x)) == x) return x + 0.0;
    const double scale = zpowten[std::min(decimals, max_rounding_decimals)];
    const double whole = std::floor(x);
    return whole + std::round((x - whole) * scale) / scale;
}

}  // namespace

std::int64_t calendar_year(std::u32string_view code, std::int64_t year, std::int64_t day_number) {
    if (code == U"TW") {
        const std::int64_t republic = year - 1911;
        return republic > 0 ? republic : 1 - republic;  // 1911 is year 1, 1910 year 2
    }
    if (code == U"TH") return year + 543;
    if (code == U"JP") {
        for (auto era = std::rbegin(reigns); era != std::rend(reigns); ++era)
            if (era->start_day <= day_number) return year - era->first_year + 1;
    }
    return year;
}

std::int32_t expand(const wchar* pattern, std::int32_t length, wchar* output, std::int32_t capacity,
                    std::int32_t* width, std::uint32_t decimals, const PropertyCache& properties,
                    void* zone, double day_number, double hour, double minute, double seconds,
                    NarrowedBytes* narrowed) {
    const std::u32string_view whole =
        pattern && length > 0 ? std::u32string_view(pattern, static_cast<std::size_t>(length)) : std::u32string_view();
    // |width| in 64 bits: the most negative width has no 32-bit magnitude.
    const std::int64_t requested = *width;
    const auto span = static_cast<std::int32_t>(
        std::min<std::int64_t>(std::abs(requested), std::numeric_limits<std::int32_t>::max()));
    const OutputField field(output, span, capacity);
    // A left-aligned field is copied whole from the working text, the blanks after the text
    // included (written over the writers' scratch there): the copy has the same length on every
    // call, with no branch on the text's length.
    const bool framed_copy = output && requested >= 0;
    const std::int32_t framed = framed_copy ? std::min(field.stored(), work_cells) : 0;

    Value value = derive(properties, zone, decimals, day_number, hour, minute, seconds);
    wchar text_cells[work_cells + name_block];  // blank blocks may end past the text's cells
    Text text(text_cells, work_cells);

    // Pass 1 keeps the first work_cells characters of its result, and most patterns come out of
    // it unchanged: pass 2 reads them in place, and only a pattern it hands back goes through
    // pass 1 first.
    pass result = pass::needs_locale_patterns;
    if (whole.size() <= static_cast<std::size_t>(work_cells)) result = run_directives(whole, value, text, true);
    if (result == pass::needs_locale_patterns) {
        wchar substituted_cells[work_cells];
        Text substituted(substituted_cells, work_cells);
        substitute_locale_patterns(whole, properties, substituted);
        value = derive(properties, zone, decimals, day_number, hour, minute, seconds);
        text = Text(text_cells, work_cells);
        result = run_directives(substituted.stored(), value, text, false);
    }
    if (result != pass::done) return expand_bad_directive;

    if (!output) return clamp_length(text.count());

    const bool fits = text.count() <= span;
    if (framed_copy) {
        // The text (or, cut, its first cells) and the blanks after it.
        // Blanks from the text's end over as many blocks as the field holds, the same number on
        // every call (however long the text), when the buffer has the room.
        const std::int64_t text_end = std::min<std::int64_t>(text.count(), work_cells);
        const std::int64_t blanks = framed;
        blank_blocks(text_cells + text_end, text_end + blanks <= work_cells ? blanks : framed - text_end);
        if (narrowed && fits && framed <= narrowed->room) [[unlikely]]
            copy_narrowing(field, text_cells, framed, text.count(), *narrowed);
        else
            field.write_front(text_cells, framed);
        field.fill(framed, field.stored(), U' ');
    } else if (fits) {
        // Right-aligned: blanks, the text, and nothing after it.
        const std::int64_t at = requested < 0 ? span - text.count() : 0;
        field.fill(0, at, U' ');
        field.write(at, text.stored());
        field.fill(at + static_cast<std::int64_t>(text.stored().size()), field.stored(), U' ');
    } else {
        const std::u32string_view head = text.stored().substr(0, static_cast<std::size_t>(span));
        field.write(0, head);
        field.fill(static_cast<std::int64_t>(head.size()), field.stored(), U' ');
    }
    if (fits) {
        *width = static_cast<std::int32_t>(text.count());
        return expand_ok;
    }
    if (value.zone_used) keep_zone_offset(field, span, value);
    return expand_cut;
}

std::int32_t zkfdttm(wchar* output, std::int32_t capacity, std::int32_t* width, const wchar* pattern,
                     std::int32_t length, std::uint32_t decimals, const PropertyCache& properties,
                     void* zone, double datetime, NarrowedBytes* narrowed) {
    if (length <= 0) return expand_no_pattern;
    // The longest property and " %z".
    constexpr std::size_t property_pattern_cells = property_value_cells + 3;
    wchar from_property[property_pattern_cells];
    if (!pattern) {
        const auto number = static_cast<std::size_t>(length & 0xFF);
        if (number >= property_count) return expand_no_pattern;
        const std::u32string_view text = property_text(properties, number);
        if (text.empty()) return expand_no_pattern;  // " %z" alone is no pattern
        if (length & pattern_with_zone) {
            std::size_t n = std::copy(text.begin(), text.end(), from_property) - from_property;
            for (wchar c : std::u32string_view(U" %z")) from_property[n++] = c;
            pattern = from_property;
            length = static_cast<std::int32_t>(n);
        } else {
            pattern = text.data();
            length = static_cast<std::int32_t>(text.size());
        }
    }
    if (!calendar::in_datetime_range(datetime)) return expand_out_of_range;
    const double x = round_to_decimals(datetime, decimals);
    if (!calendar::in_datetime_range(x)) return expand_out_of_range;
    const calendar::datetime_parts parts = calendar::split_datetime(x);
    return expand(pattern, length, output, capacity, width, decimals, properties, zone, parts.date, parts.hour,
                  parts.minute, parts.second, narrowed);
}

std::int32_t zkftime(wchar* output, std::int32_t capacity, std::int32_t* width, const wchar* pattern,
                     std::int32_t length, std::uint32_t decimals, const PropertyCache& properties,
                     double time, NarrowedBytes* narrowed) {
    if (!pattern || length <= 0) return expand_no_pattern;
    if (calendar::is_nan(time) || time < 0) return expand_out_of_range;
    const double t = round_to_decimals(time, decimals);
    const double missing = calendar::missing_value();
    if (calendar::in_datetime_range(t) && static_cast<double>(static_cast<std::int64_t>(t)) == t) {
        // Whole seconds: t / 3600 lies at least 1/3600 below the next whole number, far more than
        // its rounding, so the floor below is the integer quotient; minute and second as the
        // clock functions give them.
        const calendar::datetime_parts parts = calendar::split_datetime(t);
        return expand(pattern, length, output, capacity, width, decimals, properties, nullptr, missing,
                      static_cast<double>(static_cast<std::int64_t>(t) / 3600), parts.minute, parts.second,
                      narrowed);
    }
    // Not wrapped at 24: a duration of 30 hours shows hour 30.
    const double hour = std::floor(std::fabs(t / 3600));
    return expand(pattern, length, output, capacity, width, decimals, properties, nullptr, missing, hour,
                  calendar::clock_minute(t), calendar::clock_second(t), narrowed);
}

}  // namespace vxlocfmt::nldate
