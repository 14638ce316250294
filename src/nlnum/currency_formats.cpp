#include "nlnum/currency_formats.h"

#include <algorithm>
#include <string_view>

#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/instance.h"
#include "frame/kernel.h"
#include "frame/session_fit.h"
#include "locale/property_table.h"
#include "nlnum/currency_format_patterns.h"
#include "nlnum/currency_symbol.h"
#include "nlnum/locale_monetary.h"

namespace vxlocfmt::nlnum {
namespace {

constexpr std::uint32_t mode_fixed = 0x1000;
constexpr std::int32_t number_cells = 64;    // the kernel's rendering
constexpr std::int32_t converted_bytes = 64;  // the styled text in the session encoding
constexpr std::size_t styled_cells = 256;

// Where the amount, symbol and sign stand: the locale's selectors for a negative amount or
// for zero and above (minus zero included).
std::u32string_view placement(const LocaleMonetary& mon, bool negative) {
    return negative ? pattern_for(mon.n_cs_precedes, mon.n_sep_by_space, mon.n_sign_posn)
                    : pattern_for(mon.p_cs_precedes, mon.p_sep_by_space, mon.p_sign_posn);
}

// A bounded text builder: what does not fit is dropped (and the text is then too long anyway).
// Left unset: only the first `length` cells are ever read (a cleared 1 KiB per attempt showed).
template <std::size_t N>
struct Text {
    wchar cells[N];
    std::size_t length = 0;
    void put(wchar c) {
        if (length < N) cells[length++] = c;
    }
    void put(std::u32string_view s) {
        for (const wchar c : s) put(c);
    }
    std::u32string_view view() const { return {cells, length}; }
    // Drops blanks at both ends, in place.
    void trim() {
        std::size_t first = 0, last = length;
        while (first < last && cells[first] == U' ') ++first;
        while (last > first && cells[last - 1] == U' ') --last;
        if (first > 0) std::copy(cells + first, cells + last, cells);  // moves left: no overlap issue
        length = last - first;
    }
};

// The kernel's plain fixed-point rendering, left-justified without trailing blanks.
std::u32string_view kernel_number(const FmtCall& call, double value, std::int32_t width, wchar (&cells)[number_cells]) {
    std::int32_t length = call.capacity;
    const auto format = kernel::slot<kernel::number_format_fn>(call.number_format, kernel::locale_number_format_slot);
    format(call.number_format, value, std::min(width, number_cells), call.decimals, mode_fixed, cells, number_cells, &length);
    std::u32string_view text(cells, static_cast<std::size_t>(std::clamp(length, 0, number_cells)));
    const std::size_t first = text.find_first_not_of(U' ');
    if (first == std::u32string_view::npos) return {};
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(U' ') + 1);
}

struct Attempt {
    bool grouping;
    bool symbol;
};

// The kernel's digits rebuilt in the locale's style: sign and parentheses dropped, separators
// every group_size digits, the locale's decimal point.
void rebuild_number(Text<styled_cells>& out, std::u32string_view digits, const FmtCall& call, const LocaleMonetary& mon,
                    bool grouping) {
    if (!digits.empty() && digits.front() == U'-') digits.remove_prefix(1);
    const bool exponent = digits.find(U'E') != std::u32string_view::npos;
    std::u32string_view whole = digits, fraction;
    if (call.decimals > 0 || exponent) {
        if (const std::size_t point = digits.find(U'.'); point != std::u32string_view::npos) {
            whole = digits.substr(0, point);
            fraction = digits.substr(point + 1);
        }
    }
    const std::size_t g = static_cast<std::size_t>(mon.group_size());
    if (grouping && !exponent && g > 0 && g < whole.size()) {
        std::size_t run = whole.size() % g == 0 ? g : whole.size() % g;
        out.put(whole.substr(0, run));
        for (std::size_t i = run; i < whole.size(); i += g) {
            out.put(mon.thousands_sep());
            out.put(whole.substr(i, g));
        }
    } else {
        out.put(whole);
    }
    if (!fraction.empty()) {
        // A locale without a monetary decimal point still needs one between the digits.
        out.put(mon.decimal_point().empty() ? std::u32string_view(U".") : mon.decimal_point());
        out.put(fraction);
    }
}

Text<styled_cells> styled(std::u32string_view digits, double value, const FmtCall& call, const LocaleMonetary& mon,
                          std::u32string_view symbol, Attempt attempt) {
    const bool negative = value < 0;
    Text<styled_cells> text;
    for (const wchar p : placement(mon, negative)) {
        switch (p) {
        case U'(':
        case U')':
            if (negative) text.put(p);
            break;
        case U' ': text.put(p); break;
        case U'V': rebuild_number(text, digits, call, mon, attempt.grouping); break;
        case U'-': text.put(negative ? mon.negative() : mon.positive()); break;
        case U'$':
            if (attempt.symbol) text.put(symbol);
            break;
        default: break;
        }
    }
    text.trim();
    // Positive amounts line up with parenthesised negatives.
    if (value > 0 && mon.n_sign_posn == 0) text.put(U' ');
    return text;
}

// Bytes of the text in the session encoding, or -1 when the converter refuses it.
std::int32_t session_bytes(const FmtCall& call, std::u32string_view text) {
    return session_byte_length(call, text.data(), static_cast<std::int32_t>(text.size()), converted_bytes);
}

void write_missing(FmtCall& call) {
    calendar::zfmmiss_without_decimals(call);
}

// The kernel's plain rendering straight into the field.
void write_plain(FmtCall& call, double value, const OutputField& field) {
    if (field.stored() <= 0) return;
    std::int32_t length = call.capacity;
    const auto format = kernel::slot<kernel::number_format_fn>(call.number_format, kernel::locale_number_format_slot);
    format(call.number_format, value, call.width, call.decimals, mode_fixed, field.data(), field.stored(), &length);
}

enum class Symbol { code, local };

status render(FmtCall& call, const MonetaryRow& row, Instance& instance, Symbol kind) {
    const LocaleMonetary* mon = locale_monetary(call, instance);
    const double value = *static_cast<const double*>(call.input);
    if (!mon || calendar::is_nan(value)) {  // no memory for the conventions: a soft failure, by design
        write_missing(call);
        return st::ok;
    }
    const std::int32_t w = call.width;
    const OutputField field = OutputField::of(call);
    field.fill(U' ');
    call.produced = std::max(w, 0);
    // Without the convert flag no styled text is ever accepted: every attempt below would end
    // in the plain rendering, so it is written at once.
    if (w < 1 || !call.byte_mode) {
        write_plain(call, value, field);
        return st::ok;
    }

    const CurrencyText symbol = currency_text(call, row, kind == Symbol::local);
    Attempt attempt{true, true};
    std::int32_t narrowing = 0;
    for (;;) {
        wchar cells[number_cells];
        std::u32string_view digits = kernel_number(call, value, w, cells);
        if (static_cast<std::int32_t>(digits.size()) >= w) {
            digits = kernel_number(call, value, w - narrowing, cells);
            if (static_cast<std::int32_t>(digits.size()) > w) digits = U"*";
        }
        const Text<styled_cells> text = styled(digits, value, call, *mon, symbol.view(), attempt);
        const auto length = static_cast<std::int32_t>(text.length);
        // The length that decides: the text's own when too long, its session bytes otherwise, and
        // one more than the width when the converter refused it. No digits: never accepted.
        std::int32_t compared = length;
        if (length <= w) {
            const std::int32_t bytes = digits.empty() ? -1 : session_bytes(call, text.view());
            compared = bytes < 0 ? w + 1 : bytes;
            if (compared <= w) {
                // Right-aligned by the text's size in session bytes, the produced length counting
                // only the cells up to its end: the byte wrapper's one conversion then fills the
                // width exactly.
                const std::int32_t pad = w - compared;
                field.write(pad, text.view());
                call.produced = pad + length;
                return st::ok;
            }
        }
        if (attempt.grouping) {
            attempt.grouping = false;
        } else if (attempt.symbol) {
            attempt.symbol = false;
        } else if (narrowing == 0) {
            narrowing = compared - w;
        } else {
            field.fill(U' ');
            write_plain(call, value, field);
            return st::ok;
        }
    }
}

}  // namespace

status nlmnyint(FmtCall& call, const MonetaryRow& row, Instance& instance) {
    return render(call, row, instance, Symbol::code);
}

status nlmnyloc(FmtCall& call, const MonetaryRow& row, Instance& instance) {
    return render(call, row, instance, Symbol::local);
}

namespace {

// The rule every fixed-currency format follows: no width or decimals check; the property table
// built on the first NL call of the record ("*" over the width when it cannot be).
template <status (*Loop)(FmtCall&, const MonetaryRow&, Instance&)>
status fixed_currency(FmtCall* call, const MonetaryRow& row) {
    Instance* instance = find_instance(*call);
    if (!instance) return st::instance_not_found;
    if (!call->property_cache && locale::fill_nlfmt_properties(*call, *instance) != st::ok) {
        star_fill(*call);
        return st::ok;
    }
    return Loop(*call, row, *instance);
}

}  // namespace
}  // namespace vxlocfmt::nlnum

#define VX_DEFINE_FIXED_CURRENCY(lower, code)                                                           \
    VX_EXPORT vxlocfmt::status vxfmtnlmni##lower(vxlocfmt::FmtCall* call, void*) {                      \
        using namespace vxlocfmt::nlnum;                                                                \
        return fixed_currency<nlmnyint>(call, currency_row(U"" code));                                  \
    }                                                                                                   \
    VX_EXPORT vxlocfmt::status vxfmtnlmnl##lower(vxlocfmt::FmtCall* call, void*) {                      \
        using namespace vxlocfmt::nlnum;                                                                \
        return fixed_currency<nlmnyloc>(call, currency_row(U"" code));                                  \
    }
VX_FORMAT_CURRENCIES(VX_DEFINE_FIXED_CURRENCY)
#undef VX_DEFINE_FIXED_CURRENCY
