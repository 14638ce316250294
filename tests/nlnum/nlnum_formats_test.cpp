// NLNUM, NLNUMI, NLPCT and NLPCTI through the loaded library: the prologue (limits, missing
// value), the records each reads, and a width sweep from 1 to 32 in wide and byte mode with
// guard cells, checked against the same value at width 32.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "calendar/missing_value.h"
#include "case_table.h"
#include "nlnum_fixture.h"
#include "text_convert.h"

namespace {

using namespace nlnum_test;
using vxhost::to_utf8;
using vxlocfmt::FmtCall;
using vxlocfmt::status;

std::string format(const std::string& locale, std::u32string_view name, int width, int decimals, double value,
                   status* code = nullptr, bool check = false) {
    auto r = Loaded::session(locale, "", check).format(*Loaded::row(name), width, decimals, value);
    if (code) *code = r.code;
    return to_utf8(r.text);
}

TEST(NlnumFormats, RecordsAndSigns) {
    for (const case_table::Row& row : case_table::read("nlnum/nlnum_cases.tsv")) {
        status code = 1;
        EXPECT_EQ(format(row[0], row.wide(1), row.integer(3), row.integer(4), row.number(2), &code), row[5]) << row.where();
        EXPECT_EQ(code, 0u) << row.where();
    }
}

TEST(NlnumFormats, LimitsAndMissingValues) {
    status code = 0;
    // Width 33: with the check bit 3 and nothing written; without it 32 "*".
    const std::string unwritten = format("en_US", U"NLNUM", 33, 2, 1.5, &code, true);
    EXPECT_EQ(code, 3u);
    EXPECT_EQ(unwritten.find_first_not_of('\0'), std::string::npos) << unwritten;
    for (const auto& [width, decimals, expected] : {std::tuple{0, 0, 2u}, {6, -1, 4u}, {6, 32, 5u}}) {
        format("en_US", U"NLPCTI", width, decimals, 1.5, &code, true);
        EXPECT_EQ(code, expected) << width << "." << decimals;
    }
    EXPECT_EQ(format("en_US", U"NLNUM", 33, 2, 1.5, &code), std::string(32, '*'));
    EXPECT_EQ(code, 0u);
    // A missing value: its character where 0 decimals put it, for every one of the four.
    for (std::u32string_view name : {U"NLNUM", U"NLNUMI", U"NLPCT", U"NLPCTI"}) {
        EXPECT_EQ(format("de_DE", name, 6, 2, vxlocfmt::calendar::missing_value(), &code), "     .");
        EXPECT_EQ(code, 0u);
    }
}

// The value shown in a styled text, read back: separators left out, the point and the signs
// made ASCII. NaN when the text is stars.
double read_back(std::u32string text, char32_t point, char32_t separator) {
    std::string ascii;
    for (char32_t c : text) {
        if (c == point) ascii += '.';
        else if (c >= U'0' && c <= U'9') ascii += static_cast<char>(c);
        else if (c == U'-' || c == U'(' || c == 0x2212) ascii += '-';
        else if (c == U'*') return std::nan("");
        else if (c == U'E' || c == U'+') ascii += static_cast<char>(c);
        else if (c != separator && c != U' ' && c != U'%' && c != U')' && c != 0x200E && c != 0x202F && c != 0xA0)
            ADD_FAILURE() << "unexpected character " << static_cast<std::uint32_t>(c) << " in " << to_utf8(text);
    }
    return std::strtod(ascii.c_str(), nullptr);
}

// Every width from 1 to 32: the field is exactly the width, nothing outside it is touched, the
// text at width 32 comes back whole from its own length on, and narrower texts show the value
// to within half a unit of their last digit.
TEST(NlnumFormats, WidthSweep) {
    const double values[] = {1234567.891, -1234567.891, 0.125, -0.5, 9.995, 1e15, 0.0, -2.675};
    const struct {
        std::u32string_view name;
        bool percent;
    } formats[] = {{U"NLNUM", false}, {U"NLNUMI", false}, {U"NLPCT", true}, {U"NLPCTI", true}};
    constexpr std::size_t guard = 8;
    for (const char* locale : {"en_US", "de_DE", "fr_FR", "de_CH", "he_IL"}) {
        for (const std::string encoding : {"", "UTF-8"}) {
            vxhost::Session& session = Loaded::session(locale, encoding);
            const bool bytes = !encoding.empty();
            for (const auto& f : formats) {
                const vxlocfmt::FuncInfo& row = *Loaded::row(f.name);
                for (double value : values) {
                    for (int decimals : {0, 2, 6}) {
                        const std::u32string full = vxhost::from_utf8(
                            to_utf8(Loaded::session(locale).format(row, 32, decimals, value).text));
                        std::size_t first = 0;
                        while (first < full.size() && full[first] == U' ') ++first;
                        const std::u32string shown = full.substr(first);
                        const std::size_t need = bytes ? to_utf8(shown).size() : shown.size();
                        const bool fixed = f.name.back() == U'I';
                        const char32_t point = fixed ? U'.' : (std::string(locale) == "de_DE" || std::string(locale) == "fr_FR" ? U',' : U'.');
                        for (int width = 1; width <= 32; ++width) {
                            const std::string where = std::string(locale) + " " + encoding + " " + to_utf8(f.name) +
                                                      " " + std::to_string(value) + " " + std::to_string(width) + "." +
                                                      std::to_string(decimals);
                            double v = value;
                            FmtCall& call = session.call();
                            call.width = width;
                            call.decimals = decimals;
                            call.input = &v;
                            call.capacity = width;
                            call.produced = -1;
                            call.byte_mode = bytes;
                            std::u32string got;
                            bool intact = true;
                            if (bytes) {
                                std::string cells(width + 2 * guard, '~');
                                call.output = cells.data() + guard;
                                row.byte_function(&call, nullptr, nullptr);
                                intact = cells.substr(0, guard) == std::string(guard, '~') &&
                                         cells.substr(guard + width) == std::string(guard, '~');
                                got = vxhost::from_utf8(cells.substr(guard, static_cast<std::size_t>(width)));
                            } else {
                                std::u32string cells(width + 2 * guard, U'~');
                                call.output = cells.data() + guard;
                                row.function(&call, nullptr);
                                intact = cells.substr(0, guard) == std::u32string(guard, U'~') &&
                                         cells.substr(guard + width) == std::u32string(guard, U'~');
                                got = cells.substr(guard, static_cast<std::size_t>(width));
                            }
                            call.byte_mode = 0;
                            ASSERT_TRUE(intact) << where;
                            ASSERT_EQ(call.produced, width) << where;
                            if (static_cast<std::size_t>(width) >= need) {
                                // Fits: the full text, right-aligned (in bytes in byte mode).
                                ASSERT_EQ(to_utf8(got), std::string(width - need, ' ') + to_utf8(shown)) << where;
                                continue;
                            }
                            const double back = read_back(got, point, U' ');
                            if (std::isnan(back)) {
                                ASSERT_EQ(to_utf8(got), std::string(width, '*')) << where;
                                continue;
                            }
                            // A narrower text shows fewer decimals of the same value, or fewer
                            // digits of it in "E" notation.
                            const std::string text = to_utf8(got);
                            const std::size_t e = text.find('E');
                            const std::size_t dot = text.find(point == U'.' ? "." : ",");
                            const std::size_t end = text.find_last_of("0123456789", e == std::string::npos ? e : e - 1);
                            int kept = dot == std::string::npos || dot > end ? 0 : static_cast<int>(end - dot);
                            if (e != std::string::npos) kept -= std::atoi(text.c_str() + e + 1);
                            const double scaled = f.percent && value != 0 ? value * 100 : value;
                            ASSERT_LE(std::fabs(back - scaled), 0.5 * std::pow(10.0, -kept) * (1 + 1e-12) + 1e-9)
                                << where << ": " << to_utf8(got);
                        }
                    }
                }
            }
        }
    }
}

}  // namespace
