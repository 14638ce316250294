/*
 * Test helpers for the date formats: a locale property table filled by hand, two sample locales
 * whose name sets differ so a wrong set shows, and a call record whose output is an
 * exact-capacity buffer between guard cells. Widths are stored as the table builder stores them
 * in UTF-8 sessions: a name set's longest name, a date pattern's longest text over a leap year.
 *
 *   nldate_test::Properties p = nldate_test::english_like();
 *   nldate_test::Harness h(p);  h.run(vxfmtnldate, 23000, 20);  // h.text(), h.guards_intact()
 */
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "calendar/oracle.h"
#include "case_table.h"
#include "frame/abi.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "nldate/expander.h"
#include "text_convert.h"

namespace nldate_test {

using vxhost::to_utf8;
using vxlocfmt::wchar;
namespace prop = vxlocfmt::locale::prop;

inline double day_of(int y, unsigned m, unsigned d) { return static_cast<double>(oracle::day_number(y, m, d)); }

class Properties {
public:
    Properties() : cache_(std::make_unique<vxlocfmt::PropertyCache>()) {
        for (std::uint32_t n = 0; n < vxlocfmt::property_count; ++n) cache_->properties[n].number = n;
    }
    Properties& set(std::size_t n, std::u32string_view text) {
        vxlocfmt::Property& p = cache_->properties[n];
        p.length = std::min(text.size(), vxlocfmt::property_value_cells);
        std::copy_n(text.begin(), p.length, p.value);
        p.value[p.length] = 0;
        return *this;
    }
    void width(std::size_t n, std::uint32_t w) { cache_->properties[n].width = w; }
    std::uint32_t width(std::size_t n) const { return cache_->properties[n].width; }
    std::u32string_view get(std::size_t n) const { return {cache_->properties[n].value, cache_->properties[n].length}; }
    vxlocfmt::PropertyCache& cache() { return *cache_; }

    void compute_widths() {
        const auto bytes = [](std::u32string_view s) { return static_cast<std::uint32_t>(to_utf8(s).size()); };
        for (auto [first, count] : {std::pair<std::size_t, std::size_t>{59, 12}, {71, 12}, {83, 12}, {95, 12},
                                    {107, 7}, {114, 7}, {121, 7}, {128, 7}, {135, 4}, {139, 4}, {143, 4},
                                    {147, 4}, {prop::am, 2}}) {
            std::uint32_t longest = 0;
            for (std::size_t i = 0; i < count; ++i) longest = std::max(longest, bytes(get(first + i)));
            for (std::size_t i = 0; i < count; ++i) width(first + i, longest);
        }
        for (std::size_t n = prop::first_pattern; n < prop::time_pattern; ++n) {
            std::uint32_t longest = 0;
            for (double day = day_of(2024, 1, 1); day < day_of(2025, 1, 1); ++day) {
                std::u32string cells(200, U' ');
                std::int32_t w = 200;
                if (vxlocfmt::nldate::zkfdate(cells.data(), 200, &w, get(n).data(), static_cast<std::int32_t>(get(n).size()),
                                              *cache_, day) == 0)
                    longest = std::max(longest, bytes(cells.substr(0, static_cast<std::size_t>(w))));
            }
            width(n, longest);
        }
    }

private:
    std::unique_ptr<vxlocfmt::PropertyCache> cache_;
};

// The sample locales of sample_locales.tsv: english_like, and german_like on top of it.
inline Properties sample_locale(const std::string& name) {
    Properties p = name == "english_like" ? Properties() : sample_locale("english_like");
    for (const case_table::Row& row : case_table::read("nldate/sample_locales.tsv")) {
        if (row[0] != name) continue;
        for (std::size_t i = 2; i < row.fields.size(); ++i) p.set(static_cast<std::size_t>(row.integer(1)) + i - 2, row.wide(i));
    }
    p.compute_widths();
    return p;
}
inline Properties english_like() { return sample_locale("english_like"); }
inline Properties german_like() { return sample_locale("german_like"); }

// A call record for a format function: its session lists another extension and then one whose
// name begins with the tag, and its output is exactly `capacity` cells (default: the width)
// between guard cells.
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
    vxlocfmt::status run(vxlocfmt::format_fn format, double value, std::int32_t width, std::int32_t capacity = -1) {
        value_ = value;
        const auto cells = static_cast<std::size_t>(std::max(capacity >= 0 ? capacity : width, 0));
        cells_.assign(cells + 2 * guard_cells, guard);
        call_.width = width;
        call_.input = &value_;
        call_.output = cells_.data() + guard_cells;
        call_.capacity = static_cast<std::int32_t>(cells);
        call_.produced = -1;
        return format(&call_, nullptr);
    }
    std::u32string text() const {
        return {cells_.data() + guard_cells, static_cast<std::size_t>(std::clamp(call_.produced, 0, call_.capacity))};
    }
    std::u32string field() const { return {cells_.data() + guard_cells, static_cast<std::size_t>(call_.capacity)}; }
    bool guards_intact() const {
        return std::all_of(cells_.begin(), cells_.begin() + guard_cells, [](wchar c) { return c == guard; }) &&
               std::all_of(cells_.end() - guard_cells, cells_.end(), [](wchar c) { return c == guard; });
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

}  // namespace nldate_test
