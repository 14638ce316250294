/*
 * Test helpers for the locale number renderer and its formats: a conventions record written by
 * hand, a call record on the host's "en_US" number formatter whose output lies between guard
 * cells, and a loaded library with one session per locale for the format functions.
 *
 *   nlnum_test::Renderer r;  r.run(nlnum_test::english(), 1234567.891, 12, 2);  // r.text()
 *   nlnum_test::Loaded::session("de_DE").format(*nlnum_test::Loaded::row(U"NLNUM"), 10, 2, 1234.5);
 */
#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/abi.h"
#include "library.h"
#include "locale/property_table.h"
#include "locale_object.h"
#include "nlnum/number_renderer.h"
#include "session.h"

namespace nlnum_test {

using vxlocfmt::NumberConventions;
using vxlocfmt::wchar;

template <std::size_t N>
void set(wchar (&field)[N], std::u32string_view text) {
    std::fill(field, field + N, 0);
    std::copy_n(text.begin(), std::min(text.size(), N), field);
}

// Point ".", separator ",", groups of 3, "-" before a negative number, nothing else.
inline NumberConventions english() {
    NumberConventions c{};
    set(c.decimal_point, U".");
    set(c.thousands_sep, U",");
    c.grouping[0] = 3;
    set(c.negative_sign, U"-");
    c.p_sign_posn = c.n_sign_posn = 1;
    return c;
}

// The host's number formatter on a call record whose output has exactly `capacity` cells
// (default: the width) between guard cells; the instance has no locale of its own, so the
// call's locale object gives the digits.
class Renderer {
public:
    static constexpr std::size_t guard_cells = 8;
    static constexpr wchar guard = 0x10FFFF;

    Renderer() : locale_(vxhost::LocaleObject::create("en_US")), instance_(std::make_unique<vxlocfmt::Instance>()) {}
    // Byte mode in the session of this transcoder from the next run on (null: wide).
    void set_byte_session(void* transcoder) { transcoder_ = transcoder; }
    ~Renderer() { locale_->release(); }

    // everyday = false: zkfnum without its one-pass first attempt (the retry loop alone).
    std::int32_t run(const NumberConventions& c, double value, std::int32_t width, std::int32_t decimals,
                     std::uint32_t supported = 1, std::int32_t capacity = -1, bool everyday = true) {
        value_ = value;
        const auto cells = static_cast<std::size_t>(std::max(capacity >= 0 ? capacity : width, 0));
        cells_.assign(cells + 2 * guard_cells, guard);
        call_ = {};
        call_.width = width;
        call_.decimals = decimals;
        call_.input = &value_;
        call_.output = cells_.data() + guard_cells;
        call_.capacity = static_cast<std::int32_t>(cells);
        call_.produced = -1;
        call_.number_format = locale_;
        call_.session_transcoder = transcoder_;
        call_.byte_mode = transcoder_ ? 1 : 0;
        return everyday ? vxlocfmt::nlnum::zkfnum(supported, call_, c, *instance_)
                        : vxlocfmt::nlnum::detail::zkfnum_retrying(supported, call_, c, *instance_);
    }
    // The produced cells.
    std::u32string text() const {
        return {cells_.data() + guard_cells, static_cast<std::size_t>(std::clamp(call_.produced, 0, call_.capacity))};
    }
    // Cells of the field that were written (not the guard pattern).
    std::size_t written() const {
        return static_cast<std::size_t>(std::count_if(cells_.begin() + guard_cells, cells_.end() - guard_cells,
                                                      [](wchar c) { return c != guard; }));
    }
    bool guards_intact() const {
        return std::all_of(cells_.begin(), cells_.begin() + guard_cells, [](wchar c) { return c == guard; }) &&
               std::all_of(cells_.end() - guard_cells, cells_.end(), [](wchar c) { return c == guard; });
    }
    const vxlocfmt::FmtCall& call() const { return call_; }
    // Every cell, guards included.
    const std::vector<wchar>& cells() const { return cells_; }

private:
    vxhost::LocaleObject* locale_;
    std::unique_ptr<vxlocfmt::Instance> instance_;
    std::vector<wchar> cells_;
    vxlocfmt::FmtCall call_{};
    double value_ = 0;
    void* transcoder_ = nullptr;
};

// The shared library, loaded once, with one session per locale (and encoding).
class Loaded {
public:
    static vxhost::Library& library() {
        static vxhost::Library lib;
        return lib;
    }
    static const vxlocfmt::FuncInfo* row(std::u32string_view name) { return library().find(name); }
    static vxhost::Session& session(const std::string& locale, const std::string& encoding = "",
                                    bool check_limits = false) {
        vxhost::Library& lib = library();  // made first, so it outlives the sessions
        static std::map<std::string, std::unique_ptr<vxhost::Session>> sessions;
        const std::string key = locale + "/" + encoding + (check_limits ? "/check" : "");
        auto& s = sessions[key];
        if (!s) {
            vxhost::SessionOptions options;
            options.locale = locale;
            options.encoding = encoding;
            options.check_limits = check_limits;
            s = std::make_unique<vxhost::Session>(lib, options);
        }
        return *s;
    }
};

}  // namespace nlnum_test
