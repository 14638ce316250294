// The compact numeric siblings' writers: month, day and year (or year and quarter) placed by the
// locale's order of date parts, right-aligned, shedding separators and parts as the width
// shrinks.
#include <algorithm>
#include <array>
#include <string_view>

#include "calendar/date_conversions.h"
#include "calendar/digits.h"
#include "frame/field.h"
#include "nldate/nldate_formats.h"

namespace vxlocfmt::nldate {

namespace {

// Longest text: a 4-digit year, two 2-digit parts and two separators.
constexpr std::size_t order_text_cells = 10;

enum class part_kind { month, day, year };

struct shown_part {
    std::int32_t place;
    part_kind kind;
};

// Writes `text` right-aligned over the field. Text wider than the field keeps its right end, as
// the kernel's move-to-field does with right-aligned text.
void right_aligned(FmtCall& call, std::u32string_view text) {
    const OutputField field = OutputField::of(call);
    const std::int32_t width = std::max(call.width, 0);
    field.fill(U' ');
    if (text.size() > static_cast<std::size_t>(width)) text.remove_prefix(text.size() - static_cast<std::size_t>(width));
    field.write(width - static_cast<std::int32_t>(text.size()), text);
}

void put_two_digits(wchar* at, std::int64_t n) { calendar::i2s(static_cast<std::int32_t>(n % 100), at, 2, U'0'); }

bool date_of(const FmtCall& call, std::int64_t* year, std::int32_t* month, std::int32_t* day) {
    double y = 0, m = 0, d = 0;
    if (calendar::zfmcymd(&y, &m, &d, *static_cast<const double*>(call.input)) != 1) return false;
    *year = static_cast<std::int64_t>(y);
    *month = static_cast<std::int32_t>(m);
    *day = static_cast<std::int32_t>(d);
    return true;
}

}  // namespace

status mdy_order(FmtCall& call, std::int32_t month_place, std::int32_t day_place, std::int32_t year_place,
                 wchar separator) {
    std::int64_t year = 0;
    std::int32_t month = 0, day = 0;
    if (!date_of(call, &year, &month, &day)) {
        star_fill(call);
        return st::ok;
    }
    const std::int32_t width = std::max(call.width, 0);

    std::array<shown_part, 3> parts{};
    std::int32_t count = 0;
    if (month_place > 0) parts[count++] = {month_place, part_kind::month};
    if (day_place > 0) parts[count++] = {day_place, part_kind::day};
    if (year_place > 0) parts[count++] = {year_place, part_kind::year};
    std::stable_sort(parts.begin(), parts.begin() + count,
                     [](const shown_part& a, const shown_part& b) { return a.place < b.place; });

    const bool has_separator = separator != 0;
    std::int32_t separators = has_separator ? std::max(count - 1, 0) : 0;
    const std::int32_t others =
        2 * static_cast<std::int32_t>(std::count_if(parts.begin(), parts.begin() + count,
                                                    [](const shown_part& p) { return p.kind != part_kind::year; })) +
        separators;
    const std::int32_t year_digits = width - others >= 4 ? 4 : 2;
    const auto part_width = [&](const shown_part& p) { return p.kind == part_kind::year ? year_digits : 2; };
    const auto total = [&] {
        std::int32_t n = separators;
        for (std::int32_t i = 0; i < count; ++i) n += part_width(parts[static_cast<std::size_t>(i)]);
        return n;
    };

    if (width == 5 && count == 3) {  // the third part goes, one separator stays
        count = 2;
        separators = has_separator ? 1 : 0;
    }
    if (total() > width) separators = 0;
    while (total() > width && count > 1) --count;

    std::array<wchar, order_text_cells> text{};
    std::size_t n = 0;
    if (count == 1 && parts[0].kind == part_kind::month && width == 1) {
        constexpr std::u32string_view month_digits = U"123456789ABC";
        text[n++] = month_digits[static_cast<std::size_t>(month - 1)];
    } else {
        for (std::int32_t i = 0; i < count; ++i) {
            if (i > 0 && separators > 0) text[n++] = separator;
            const shown_part& p = parts[static_cast<std::size_t>(i)];
            if (p.kind == part_kind::year) {
                if (year_digits == 2) {
                    put_two_digits(&text[n], year);
                } else if (year > 9999) {
                    std::fill_n(&text[n], 4, U'*');
                } else {
                    put_two_digits(&text[n], year / 100);
                    put_two_digits(&text[n + 2], year);
                }
                n += static_cast<std::size_t>(year_digits);
                continue;
            }
            calendar::ZLTOS(p.kind == part_kind::month ? month : day, &text[n], 2);
            if (count > 1 && text[n] == U' ') text[n] = U'0';  // zero-padded beside another part
            n += 2;
        }
    }
    right_aligned(call, {text.data(), n});
    return st::ok;
}

status qtr_order(FmtCall& call, bool year_shown, bool roman, wchar separator) {
    std::int64_t year = 0;
    std::int32_t month = 0, day = 0;
    if (!date_of(call, &year, &month, &day)) {
        star_fill(call);
        return st::ok;
    }
    const std::int32_t width = std::max(call.width, 0);
    const std::int32_t quarter = (month - 1) / 3 + 1;  // [1, 4]
    constexpr std::u32string_view roman_quarters[] = {U"I", U"II", U"III", U"IV"};
    const wchar digit[] = {static_cast<wchar>(U'0' + quarter)};
    const std::u32string_view quarter_text =
        roman ? roman_quarters[quarter - 1] : std::u32string_view(digit, 1);

    std::array<wchar, order_text_cells> text{};
    std::size_t n = 0;
    if (year_shown) {
        const auto separators = static_cast<std::int32_t>(separator != 0);
        const bool four = width - static_cast<std::int32_t>(quarter_text.size()) - separators >= 4;
        if (!four) {
            put_two_digits(&text[n], year);
            n += 2;
        } else if (year > 9999) {
            std::fill_n(&text[n], 4, U'*');
            n += 4;
        } else {
            put_two_digits(&text[n], year / 100);
            put_two_digits(&text[n + 2], year);
            n += 4;
        }
        if (separator) text[n++] = separator;
    }
    for (wchar c : quarter_text) text[n++] = c;
    right_aligned(call, {text.data(), n});
    return st::ok;
}

}  // namespace vxlocfmt::nldate
