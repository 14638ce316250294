/*
 * Test helpers for the date formats: a locale property table filled by hand, property by
 * property (with the display widths the table builder would compute for UTF-8 session bytes),
 * two sample locales whose name sets all differ so a wrong set shows, and a call record whose
 * output is an exact-capacity buffer between guard cells.
 *
 *   nldate_test::Properties p = nldate_test::english_like();
 *   nldate_test::Harness h(p);  h.run(vxfmtnldate, 23000, 20);  // h.text(), h.guards_intact()
 */
#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <initializer_list>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/abi.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "text_convert.h"

namespace nldate_test {

using vxlocfmt::wchar;
namespace prop = vxlocfmt::locale::prop;

inline std::size_t utf8_bytes(std::u32string_view text) {
    std::size_t n = 0;
    for (char32_t c : text) n += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    return n;
}

using vxhost::to_utf8;

class Properties {
public:
    Properties() : cache_(std::make_unique<vxlocfmt::PropertyCache>()) {
        for (std::uint32_t n = 0; n < vxlocfmt::property_count; ++n) cache_->properties[n].number = n;
    }

    Properties& set(std::size_t n, std::u32string_view text) {
        vxlocfmt::Property& p = cache_->properties[n];
        const std::size_t length = std::min(text.size(), vxlocfmt::property_value_cells);
        std::copy_n(text.begin(), length, p.value);
        p.value[length] = 0;
        p.length = length;
        return *this;
    }
    // Consecutive properties from `first`.
    Properties& set_all(std::size_t first, std::initializer_list<std::u32string_view> texts) {
        for (std::u32string_view t : texts) set(first++, t);
        return *this;
    }
    Properties& width(std::size_t n, std::uint32_t w) {
        cache_->properties[n].width = w;
        return *this;
    }
    std::u32string_view get(std::size_t n) const {
        const vxlocfmt::Property& p = cache_->properties[n];
        return {p.value, static_cast<std::size_t>(p.length)};
    }
    std::uint32_t width(std::size_t n) const { return cache_->properties[n].width; }

    // The widths the table builder stores: each name set and the AM/PM pair get the longest of
    // their UTF-8 lengths; each pattern the sum of its literal bytes and its directives' widths.
    void compute_widths() {
        const auto set_width = [&](std::size_t first, std::size_t count) {
            std::uint32_t longest = 0;
            for (std::size_t i = 0; i < count; ++i)
                longest = std::max<std::uint32_t>(longest, static_cast<std::uint32_t>(utf8_bytes(get(first + i))));
            for (std::size_t i = 0; i < count; ++i) width(first + i, longest);
        };
        for (std::size_t first : {59, 71, 83, 95}) set_width(first, 12);
        for (std::size_t first : {107, 114, 121, 128}) set_width(first, 7);
        for (std::size_t first : {135, 139, 143, 147}) set_width(first, 4);
        set_width(prop::am, 2);
        for (std::size_t n = prop::first_pattern; n <= prop::last_pattern; ++n)
            width(n, pattern_width(get(n)));
    }

    vxlocfmt::PropertyCache& cache() { return *cache_; }

private:
    std::uint32_t pattern_width(std::u32string_view pattern) const {
        std::u32string expanded;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i] == U'%' && i + 1 < pattern.size() && (pattern[i + 1] == U'x' || pattern[i + 1] == U'X')) {
                expanded += get(pattern[i + 1] == U'x' ? prop::date_pattern : prop::time_pattern);
                ++i;
            } else {
                expanded += pattern[i];
            }
        }
        const std::string bytes = to_utf8(expanded);
        std::uint32_t total = 0;
        bool in_directive = false, long_form = false;
        for (char c : bytes) {
            if (!in_directive) {
                if (c == '%') {
                    in_directive = true;
                    long_form = false;
                } else {
                    ++total;
                }
                continue;
            }
            if (c == '#') {
                long_form = true;
                continue;
            }
            in_directive = false;
            const std::string_view two = "HIMSUVWdegklmosy";
            if (c == 'a' || c == 'f') total += width(long_form ? 121 : 107);
            else if (c == 'A' || c == 'F') total += width(long_form ? 128 : 114);
            else if (c == 'b') total += width(long_form ? 83 : 59);
            else if (c == 'B' || c == 'C') total += width(long_form ? 95 : 71);
            else if (c == 'q') total += width(long_form ? 143 : 135);
            else if (c == 'Q') total += width(long_form ? 147 : 139);
            else if (c == 'p') total += width(prop::am);
            else if (c == 'G' || c == 'Y') total += 4;
            else if (c == 'T') total += 8;
            else if (c == 'z') total += 5;
            else if (c == 'Z' || c == 'j') total += 3;
            else if (c == 'u' || c == 'w') total += 1;
            else if (two.find(c) != std::string_view::npos) total += 2;
        }
        return total;
    }

    std::unique_ptr<vxlocfmt::PropertyCache> cache_;
};

// English conventions; every form of every name set differs from the others.
inline Properties english_like() {
    Properties p;
    p.set(prop::date_order, U"MDY").set(prop::date_separator, U"/").set(prop::decimal_point, U".");
    p.set(28, U"%B %#d, %Y").set(29, U"%b %#d, %Y").set(30, U"%b %#d, %Y").set(31, U"%B %#d, %Y");
    p.set(32, U"%A, %B %#d, %Y").set(33, U"%a, %b %#d, %Y").set(34, U"%B %Y").set(35, U"%b %Y");
    p.set(36, U"%B %#d").set(37, U"%b %#d").set(38, U"%Y").set(39, U"%y");
    p.set(40, U"%Q %Y").set(41, U"%q %Y").set(42, U"%G-W%V").set(43, U"%g%V");
    p.set(53, U"%#I:%M:%S %p");
    p.set_all(59, {U"Jan", U"Feb", U"Mar", U"Apr", U"May", U"Jun", U"Jul", U"Aug", U"Sep", U"Oct", U"Nov", U"Dec"});
    p.set_all(71, {U"January", U"February", U"March", U"April", U"May", U"June", U"July", U"August",
                   U"September", U"October", U"November", U"December"});
    p.set_all(83, {U"Jan.", U"Feb.", U"Mar.", U"Apr.", U"May.", U"Jun.", U"Jul.", U"Aug.", U"Sep.", U"Oct.",
                   U"Nov.", U"Dec."});
    p.set_all(95, {U"JANUARY", U"FEBRUARY", U"MARCH", U"APRIL", U"MAY", U"JUNE", U"JULY", U"AUGUST",
                   U"SEPTEMBER", U"OCTOBER", U"NOVEMBER", U"DECEMBER"});
    p.set_all(107, {U"Sun", U"Mon", U"Tue", U"Wed", U"Thu", U"Fri", U"Sat"});
    p.set_all(114, {U"Sunday", U"Monday", U"Tuesday", U"Wednesday", U"Thursday", U"Friday", U"Saturday"});
    p.set_all(121, {U"Su", U"Mo", U"Tu", U"We", U"Th", U"Fr", U"Sa"});
    p.set_all(128, {U"SUNDAY", U"MONDAY", U"TUESDAY", U"WEDNESDAY", U"THURSDAY", U"FRIDAY", U"SATURDAY"});
    p.set_all(135, {U"Q1", U"Q2", U"Q3", U"Q4"});
    p.set_all(139, {U"1st quarter", U"2nd quarter", U"3rd quarter", U"4th quarter"});
    p.set_all(143, {U"q1", U"q2", U"q3", U"q4"});
    p.set_all(147, {U"first quarter", U"second quarter", U"third quarter", U"fourth quarter"});
    p.set(prop::am, U"AM").set(prop::pm, U"PM");
    p.compute_widths();
    return p;
}

// German conventions: day first, "." between parts, non-ASCII names (wider in bytes than in
// characters), weeks counted from Sunday in property 42 to steer NLDATEWN.
inline Properties german_like() {
    Properties p;
    p.set(prop::date_order, U"DMY").set(prop::date_separator, U".").set(prop::decimal_point, U",");
    p.set(28, U"%#d. %B %Y").set(29, U"%d.%m.%Y").set(30, U"%d.%m.%Y").set(31, U"%#d. %B %Y");
    p.set(32, U"%A, %#d. %B %Y").set(33, U"%a, %#d. %b %Y").set(34, U"%B %Y").set(35, U"%m/%Y");
    p.set(36, U"%#d. %B").set(37, U"%#d.%#m.").set(38, U"%Y").set(39, U"%y");
    p.set(40, U"%Q %Y").set(41, U"%q %Y").set(42, U"%Y-W%U").set(43, U"%yW%U");
    p.set(53, U"%H:%M:%S");
    p.set_all(59, {U"Jan.", U"Feb.", U"März", U"Apr.", U"Mai", U"Juni", U"Juli", U"Aug.", U"Sept.", U"Okt.",
                   U"Nov.", U"Dez."});
    p.set_all(71, {U"Januar", U"Februar", U"März", U"April", U"Mai", U"Juni", U"Juli", U"August",
                   U"September", U"Oktober", U"November", U"Dezember"});
    p.set_all(83, {U"Jan", U"Feb", U"Mär", U"Apr", U"Mai", U"Jun", U"Jul", U"Aug", U"Sep", U"Okt", U"Nov",
                   U"Dez"});
    p.set_all(95, {U"JANUAR", U"FEBRUAR", U"MÄRZ", U"APRIL", U"MAI", U"JUNI", U"JULI", U"AUGUST",
                   U"SEPTEMBER", U"OKTOBER", U"NOVEMBER", U"DEZEMBER"});
    p.set_all(107, {U"So.", U"Mo.", U"Di.", U"Mi.", U"Do.", U"Fr.", U"Sa."});
    p.set_all(114, {U"Sonntag", U"Montag", U"Dienstag", U"Mittwoch", U"Donnerstag", U"Freitag", U"Samstag"});
    p.set_all(121, {U"So", U"Mo", U"Di", U"Mi", U"Do", U"Fr", U"Sa"});
    p.set_all(128, {U"SONNTAG", U"MONTAG", U"DIENSTAG", U"MITTWOCH", U"DONNERSTAG", U"FREITAG", U"SAMSTAG"});
    p.set_all(135, {U"Q1", U"Q2", U"Q3", U"Q4"});
    p.set_all(139, {U"1. Quartal", U"2. Quartal", U"3. Quartal", U"4. Quartal"});
    p.set_all(143, {U"q1", U"q2", U"q3", U"q4"});
    p.set_all(147, {U"erstes Quartal", U"zweites Quartal", U"drittes Quartal", U"viertes Quartal"});
    p.compute_widths();
    return p;
}

// A call record for a format function: its session lists another extension and then one whose
// name begins with the tag, its property table is the given one, and its output is exactly
// `width` cells between guard cells.
class Harness {
public:
    static constexpr std::size_t guard_cells = 8;
    static constexpr wchar guard = 0x10FFFF;

    explicit Harness(Properties& properties) : Harness(properties.cache()) {}
    explicit Harness(vxlocfmt::PropertyCache& table) {
        session_[vxlocfmt::session_word_extensions] = other_.data();
        session_[vxlocfmt::session_word_extensions + 1] = ours_.data();
        call_.session = session_.data();
        call_.property_cache = &table;
    }

    // The output offers `capacity` cells (default: exactly the width).
    vxlocfmt::status run(vxlocfmt::format_fn format, double value, std::int32_t width, std::int32_t capacity = -1) {
        value_ = value;
        const std::size_t cells = static_cast<std::size_t>(std::max(capacity >= 0 ? capacity : width, 0));
        cells_.assign(cells + 2 * guard_cells, guard);
        call_.width = width;
        call_.decimals = 0;
        call_.input = &value_;
        call_.output = cells_.data() + guard_cells;
        call_.capacity = static_cast<std::int32_t>(cells);
        call_.produced = -1;
        return format(&call_, nullptr);
    }

    // The produced characters.
    std::u32string text() const {
        const auto n = static_cast<std::size_t>(std::clamp(call_.produced, 0, call_.capacity));
        return {cells_.data() + guard_cells, n};
    }
    // The whole field.
    std::u32string field() const {
        return {cells_.data() + guard_cells, static_cast<std::size_t>(call_.capacity)};
    }
    bool guards_intact() const {
        for (std::size_t i = 0; i < guard_cells; ++i)
            if (cells_[i] != guard || cells_[cells_.size() - 1 - i] != guard) return false;
        return true;
    }
    vxlocfmt::FmtCall& call() { return call_; }
    void drop_instance() { session_[vxlocfmt::session_word_extensions + 1] = nullptr; }

private:
    std::array<void*, 3> other_{nullptr, const_cast<char*>("otherext"), nullptr};
    std::array<void*, 3> ours_{nullptr, const_cast<char*>("vxlocfmt"), nullptr};
    std::array<void*, 40> session_{};
    std::vector<wchar> cells_;
    vxlocfmt::FmtCall call_{};
    double value_ = 0;
};

// Day number of a calendar date up to 3999 (the Gregorian count from 1960-01-01).
inline double day_of(int y, unsigned m, unsigned d) {
    using namespace std::chrono;
    constexpr std::int64_t epoch_1960 = -3653;  // 1960-01-01 counted from 1970-01-01
    return static_cast<double>(sys_days{year(y) / month(m) / day(d)}.time_since_epoch().count() - epoch_1960);
}

}  // namespace nldate_test
