/*
 * The output field of a format: the call asks for `width` characters and offers `capacity`
 * cells; a format stores at most the smaller of the two and nothing outside it. Every write of a
 * format goes through this type, so the bound holds by construction.
 *
 *   auto field = OutputField::of(call);
 *   field.fill(U' '); field.put(field.width() - 1, U'.');
 */
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt {

class OutputField {
public:
    OutputField(wchar* cells, std::int32_t width, std::int32_t capacity)
        : cells_(cells),
          width_(width),
          stored_(cells ? std::max<std::int32_t>(0, std::min(width, capacity)) : 0) {}

    // The wide output of a format call.
    static OutputField of(const FmtCall& call) {
        return {static_cast<wchar*>(call.output), call.width, call.capacity};
    }

    std::int32_t width() const { return width_; }
    // Cells that may really be written: min(width, capacity), never negative.
    std::int32_t stored() const { return stored_; }
    wchar* data() const { return cells_; }

    void fill(wchar c) const { std::fill_n(cells_, stored_, c); }
    // Fills [from, to) clipped to the stored cells.
    void fill(std::int64_t from, std::int64_t to, wchar c) const {
        from = std::max<std::int64_t>(from, 0);
        to = std::min<std::int64_t>(to, stored_);
        if (from < to) std::fill(cells_ + from, cells_ + to, c);
    }
    void put(std::int32_t at, wchar c) const {
        if (at >= 0 && at < stored_) cells_[at] = c;
    }
    // Writes `text` from `at`; what falls outside the stored cells is dropped. The bounds are
    // clipped once and the rest is one block copy (`text` must not lie in the field).
    void write(std::int64_t at, std::u32string_view text) const {
        const std::int64_t from = std::max<std::int64_t>(at, 0);
        const std::int64_t to = std::min<std::int64_t>(at + static_cast<std::int64_t>(text.size()), stored_);
        if (from < to) std::copy(text.data() + (from - at), text.data() + (to - at), cells_ + from);
    }

private:
    wchar* cells_;
    std::int32_t width_;
    std::int32_t stored_;
};

// A format that cannot show its value: "*" over the whole width, produced length = width.
inline void star_fill(FmtCall& call) {
    OutputField::of(call).fill(U'*');
    call.produced = call.width;
}

}  // namespace vxlocfmt
