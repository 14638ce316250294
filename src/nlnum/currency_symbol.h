/*
 * The currency text the fixed-currency formats write and their informats take off again: the
 * ISO code, or the row's local symbol with its "<Uxxxx>" escapes decoded, falling back to the
 * ISO code when the session encoding cannot hold one of the decoded characters.
 *
 *   const CurrencyText euro = currency_text(call, currency_row(U"EUR"), true);   // "€" or "EUR"
 */
#pragma once

#include <cstddef>
#include <string_view>

#include "frame/abi.h"
#include "nlnum/currency_table.h"

namespace vxlocfmt::nlnum {

// The longest decoded symbol has 4 characters; what does not fit is dropped.
struct CurrencyText {
    static constexpr std::size_t capacity = 32;
    wchar cells[capacity];
    std::size_t length = 0;
    void put(std::u32string_view s) {
        for (const wchar c : s)
            if (length < capacity) cells[length++] = c;
    }
    std::u32string_view view() const { return {cells, length}; }
};

// local: the row's own symbol (decoded; the ISO code when the session cannot hold it); else the
// ISO code. A call record without a session transcoder holds every character.
CurrencyText currency_text(const FmtCall& call, const MonetaryRow& row, bool local);

}  // namespace vxlocfmt::nlnum
