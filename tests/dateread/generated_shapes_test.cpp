// Every template row reads texts written in its own shape back to the value they were made
// from; a literal may be any character (literals are not compared); a character after the end
// fails the row. The index and the plain walk of the ANYDATE driver agree on all of them and on
// random text, and a named read of a text in its row's fixed shape gives what the general path
// gives. VX_ANYDATE_SWEEP sets the texts per row (default 40).
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "calendar/calendar.h"
#include "dateread/compiled_pattern.h"
#include "dateread/dateread_exports.h"
#include "dateread/fixed_shape.h"
#include "dateread/template_facts.h"
#include "dateread/text_preparation.h"
#include "dateread/value_builder.h"
#include "frame/reporting.h"
#include "kernel_handle.h"
#include "shape_writer.h"
#include "text_convert.h"

namespace {

using namespace vxlocfmt::dateread;
using anydate_test::moment;
using anydate_test::shape;
using vxlocfmt::calendar::is_nan;
using vxlocfmt::calendar::missing_value;

int sweep() {
    const char* e = std::getenv("VX_ANYDATE_SWEEP");
    return e ? std::max(1, std::atoi(e)) : 40;
}

std::u32string_view pattern_of(std::size_t r) { return {vxfmt_templates[r].pattern, text_length(vxfmt_templates[r].pattern)}; }

moment random_moment(std::mt19937_64& rng, bool two_digit_year) {
    static const int len[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    moment m{};
    m.year = two_digit_year ? 1950 + static_cast<std::int64_t>(rng() % 100) : 1582 + static_cast<std::int64_t>(rng() % 8418);
    m.month = 1 + static_cast<int>(rng() % 12);
    const bool leap = (m.year % 4 == 0 && m.year % 100 != 0) || (m.year % 400 == 0 && m.year % 4000 != 0);
    m.day = 1 + static_cast<int>(rng() % static_cast<unsigned>(len[m.month - 1] + (m.month == 2 && leap)));
    m.hour = static_cast<int>(rng() % 24);
    m.minute = static_cast<int>(rng() % 60);
    m.second = static_cast<int>(rng() % 60);
    m.fraction_ms = rng() % 2 ? static_cast<int>(rng() % 1000) : 0;
    m.zone_sign = rng() % 2 ? 1 : -1;
    m.zone_hour = static_cast<int>(rng() % 15);
    m.zone_minute = static_cast<int>(rng() % 4) * 15;
    return m;
}

// What the row must give for the shape: the oracle.
double expected(std::size_t r, const shape& s, const moment& m) {
    double date = missing_value();
    if (s.has_date) {
        const int month = s.quarter ? 3 * ((m.month + 2) / 3) - 2 : s.has_month ? m.month : 1;
        const int day = s.quarter ? 1 : s.has_day ? m.day : 1;
        date = vxlocfmt::calendar::zmdy(month, day, static_cast<double>(m.year));
    }
    double time = missing_value();
    if (s.has_time) {
        time = (s.hour ? m.hour : 0) * 3600.0 + (s.minute ? m.minute : 0) * 60.0 + (s.second ? m.second : 0) +
               (s.fraction ? m.fraction_ms / 1000.0 : 0);
        if (s.zone) time -= (m.zone_hour * 3600.0 + m.zone_minute * 60.0) * m.zone_sign;
        if (template_facts[r].local_zone) {
            double offset = 0;
            vxzdtgmt(&offset);
            time += offset;
        }
    }
    switch (template_facts[r].kind) {
    case value_kind::date: return date;
    case value_kind::time: return time;
    case value_kind::datetime: return is_nan(date) || is_nan(time) ? missing_value() : date * 86400 + time;
    }
    return missing_value();
}

struct outcome {
    std::int32_t row;
    double value;
};

outcome read_given_row(std::size_t r, const std::u32string& text) {
    double v = 0;
    std::int32_t status_word = 0, row = -1;
    const std::u32string_view name(vxfmt_templates[r].name, template_facts[r].name_length);
    read_named(name, &vxfmt_templates[r], text, &v, &status_word, true, &row);
    return {row, v};
}

// Rows whose own shape their rules cannot read: the "%%" of row 22 is an unknown directive.
bool reads_own_shape(std::size_t r) { return r != 22 && r != dummy_row; }

TEST(GeneratedShapes, EveryRowReadsItsOwnShape) {
    vxhost::set_year_cutoff(std::nullopt);
    std::mt19937_64 rng(20200304);
    const int per_row = sweep();
    for (std::size_t r = 0; r < template_count; ++r) {
        const bool two = template_facts[r].has_two_digit_year;
        for (int k = 0; k < per_row; ++k) {
            const moment m = random_moment(rng, two);
            const shape s = anydate_test::write_shape(pattern_of(r), m, rng);
            const outcome got = read_given_row(r, s.text);
            const std::string shown = vxhost::to_utf8(s.text);
            if (!reads_own_shape(r)) {
                EXPECT_NE(got.row, static_cast<std::int32_t>(r)) << "row " << r << " '" << shown << "'";
                continue;
            }
            const double want = expected(r, s, m);
            ASSERT_EQ(got.row, static_cast<std::int32_t>(r)) << "row " << r << " '" << shown << "'";
            if (is_nan(want)) {
                EXPECT_TRUE(is_nan(got.value)) << "row " << r << " '" << shown << "' gave " << got.value;
                continue;
            }
            ASSERT_NEAR(got.value, want, 1e-4) << "row " << r << " '" << shown << "'";

            // Near misses one character off. Any character in a literal's place reads the same.
            for (std::size_t i = 0; i < s.text.size(); ++i) {
                if (s.literal_places[i] != U'L' || s.text[i] == U' ') continue;
                std::u32string other = s.text;
                other[i] = U'#';
                if (is_all_digit(other) != is_all_digit(s.text)) continue;  // the digit test moves the widths
                const outcome o = read_given_row(r, other);
                EXPECT_EQ(o.row, static_cast<std::int32_t>(r)) << "row " << r << " '" << vxhost::to_utf8(other) << "'";
                EXPECT_EQ(std::bit_cast<std::uint64_t>(o.value), std::bit_cast<std::uint64_t>(got.value));
                break;
            }
            // A character past the end is never read.
            std::u32string longer = s.text + U"#";
            EXPECT_NE(read_given_row(r, longer).row, static_cast<std::int32_t>(r)) << "row " << r << " '" << shown << "#'";
        }
    }
}

// The index only skips rows that cannot read the text: the same row and the same bits as
// walking every row, on every shape of every row, their near misses and random text.
TEST(GeneratedShapes, IndexAgreesWithThePlainWalk) {
    vxhost::set_year_cutoff(std::nullopt);
    std::mt19937_64 rng(4032020);
    const int per_row = sweep();
    auto same = [](const std::u32string& text) {
        const anydate_answer a = read_anydate(text, true), b = read_anydate(text, false);
        EXPECT_EQ(a.row, b.row) << vxhost::to_utf8(text);
        EXPECT_EQ(a.four_digit_year, b.four_digit_year) << vxhost::to_utf8(text);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(a.datetime), std::bit_cast<std::uint64_t>(b.datetime)) << vxhost::to_utf8(text);
        return a.row >= 0;
    };
    int read = 0, tried = 0;
    for (std::size_t r = 0; r < template_count; ++r) {
        for (int k = 0; k < per_row; ++k) {
            const shape s = anydate_test::write_shape(pattern_of(r), random_moment(rng, template_facts[r].has_two_digit_year), rng);
            read += same(s.text);
            std::u32string off = s.text;
            if (!off.empty()) off[rng() % off.size()] = U" -/:,.AZ0+T"[rng() % 11];
            same(off);
            // A longer run of digits: where the four-digit-year retry can read otherwise.
            std::u32string longer = s.text;
            if (const std::size_t at = longer.find_first_of(U"0123456789"); at != std::u32string::npos)
                longer.insert(at, 1 + rng() % 3, static_cast<char32_t>(U'0' + rng() % 10));
            same(longer);
            tried += 3;
        }
    }
    static const char32_t alphabet[] = U" -/:,.+0123456789AaBMPQTZIVJNDEC\u00e9\u4e2d";
    for (int k = 0; k < per_row * 200; ++k) {
        std::u32string text(rng() % 40, U' ');
        for (auto& c : text) c = alphabet[rng() % (std::size(alphabet) - 1)];
        same(text);
        ++tried;
    }
    EXPECT_GT(read, tried / 10);  // the shapes are mostly read by some row
}

// Every row's compiled reader reads as the walk over its pattern text: the same verdict and the
// same slots, on its own shapes, near misses, all-digit and four-digit-year variants and random
// text (the named reads and the index walk use only the compiled readers).
TEST(GeneratedShapes, CompiledRowsReadAsTheirPatterns) {
    vxhost::set_year_cutoff(std::nullopt);
    std::mt19937_64 rng(14032020);
    const int per_row = sweep();
    static const char32_t alphabet[] = U" -/:,.+0123456789AaBMPQTZIVJNDEC\u00e9";
    auto same = [](std::size_t r, const std::u32string& text) {
        for (const bool all_digit : {false, true})
            for (const bool four : {false, true}) {
                read_slots a, b;
                const bool ra = read_compiled(r, text, all_digit, four, a);
                const bool rb = read_pattern(pattern_of(r), text, all_digit, four, b);
                ASSERT_EQ(ra, rb) << "row " << r << " '" << vxhost::to_utf8(text) << "' " << all_digit << four;
                if (!ra) continue;
                for (int k = 0; k < slot_count; ++k) ASSERT_EQ(a.field[k], b.field[k]) << "row " << r << " slot " << k;
                ASSERT_EQ(std::bit_cast<std::uint64_t>(a.fraction), std::bit_cast<std::uint64_t>(b.fraction));
                ASSERT_EQ(a.zone_sign, b.zone_sign);
                ASSERT_EQ(a.zone_hour, b.zone_hour);
                ASSERT_EQ(a.zone_minute, b.zone_minute);
                ASSERT_EQ(a.am_pm, b.am_pm);
            }
    };
    for (std::size_t r = 0; r < template_count; ++r) {
        for (int k = 0; k < per_row; ++k) {
            const shape s = anydate_test::write_shape(pattern_of(r), random_moment(rng, template_facts[r].has_two_digit_year), rng);
            same(r, s.text);
            if (s.text.empty()) continue;
            std::u32string off = s.text;
            off[rng() % off.size()] = alphabet[rng() % (std::size(alphabet) - 1)];
            same(r, off);
            same(r, s.text.substr(0, rng() % s.text.size()));  // ends early, maybe on a blank literal
            std::u32string text(rng() % 30, U' ');
            for (auto& c : text) c = alphabet[rng() % (std::size(alphabet) - 1)];
            same(r, text);
        }
    }
}

// A named read of a text in its row's fixed shape, read in place, gives what preparing and the
// compiled rows give: the status, the value's bits, the status word and the row, with and without
// preparing. Texts in each shaped row's shape from valid dates and from random digits (months 13,
// days 32, year 0000, 29 February of common years), every digit place through 0 to 9, one
// character off anywhere, a character more or less, and the whole alphabet in literal places.
TEST(GeneratedShapes, FixedShapesReadAsTheGeneralPath) {
    vxhost::set_year_cutoff(std::nullopt);
    std::mt19937_64 rng(19072020);
    const int per_row = sweep();
    static const char32_t alphabet[] = U" -/:,.+0123456789AaTZ\u00e9";
    auto same = [](std::u32string_view name, const std::u32string& text) {
        for (const bool preprocess : {true, false}) {
            double va = 0, vb = 0;
            std::int32_t sa = -7, sb = -7, ra = -7, rb = -7;
            const auto a = read_named(name, nullptr, text, &va, &sa, preprocess, &ra, true);
            const auto b = read_named(name, nullptr, text, &vb, &sb, preprocess, &rb, false);
            const std::string shown = vxhost::to_utf8(name) + " '" + vxhost::to_utf8(text) + "'";
            ASSERT_EQ(a, b) << shown;
            ASSERT_EQ(ra, rb) << shown;
            ASSERT_EQ(std::bit_cast<std::uint64_t>(va), std::bit_cast<std::uint64_t>(vb)) << shown;
            ASSERT_EQ(sa, sb) << shown;
        }
    };
    int shaped = 0, in_place = 0;
    for (std::size_t r = 0; r < template_count; ++r) {
        const fixed_shape& f = row_shapes[r];
        if (f.length == 0) continue;
        ++shaped;
        const std::u32string_view name(vxfmt_templates[r].name, template_facts[r].name_length);
        for (int k = 0; k < per_row; ++k) {
            std::u32string text = anydate_test::write_shape(pattern_of(r), random_moment(rng, template_facts[r].has_two_digit_year), rng).text;
            if (k % 2 == 1) {  // random digits in the digits' places, anything in the literals'
                text.assign(f.length, U' ');
                for (std::size_t i = 0; i < text.size(); ++i)
                    text[i] = (f.digits >> i) & 1 ? static_cast<char32_t>(U'0' + rng() % 10) : alphabet[rng() % (std::size(alphabet) - 1)];
            }
            same(name, text);
            double v;
            std::int32_t status_word;
            in_place += read_fixed_shape(r, text, v, status_word);
            for (std::size_t i = 0; i < text.size(); ++i) {
                std::u32string other = text;
                if ((f.digits >> i) & 1) {
                    for (char32_t d = U'0'; d <= U'9'; ++d) other[i] = d, same(name, other);
                } else {
                    for (const char32_t c : alphabet) if (c) other[i] = c, same(name, other);
                }
                other = text;
                other[i] = alphabet[rng() % (std::size(alphabet) - 1)];
                same(name, other);
            }
            same(name, text.substr(0, text.size() - 1));
            same(name, text + static_cast<char32_t>(U'0' + rng() % 10));
            same(name, U" " + text);
            same(name, text + U" ");
        }
    }
    EXPECT_GT(shaped, 40);  // the ISO dates, datetimes and times, the all-digit dates
    EXPECT_GT(in_place, shaped * per_row / 2);  // most of the base texts take the shape's own way
}

// The reader's day numbers (counted from 1 March, the leap rule asked for 29 February alone) are
// the calendar's: every month and day around the valid ones, over the two-digit years, the
// range's ends and the centuries and four-thousands where the leap rule turns.
TEST(GeneratedShapes, DayNumbersAreTheCalendars) {
    vxhost::set_year_cutoff(std::nullopt);
    std::vector<std::int64_t> years = {-1, 1581, 9999, 10000, 20001, 99999};
    for (std::int64_t y = 0; y <= 120; ++y) years.push_back(y);
    for (const std::int64_t from : {1582, 1896, 1996, 2096, 2396, 3996, 7996, 11996, 15996, 19990})
        for (std::int64_t y = from; y < from + 11; ++y) years.push_back(y);
    for (const std::int64_t y : years)
        for (std::int64_t m = -1; m <= 13; ++m)
            for (std::int64_t d = -1; d <= 32; ++d) {
                const double want = vxlocfmt::calendar::zmdy(static_cast<double>(m), static_cast<double>(d), static_cast<double>(y));
                ASSERT_EQ(std::bit_cast<std::uint64_t>(day_number_of(y, m, d)), std::bit_cast<std::uint64_t>(want)) << y << "-" << m << "-" << d;
            }
}

}  // namespace
