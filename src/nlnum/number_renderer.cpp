#include "nlnum/number_renderer.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "calendar/missing_value.h"
#include "frame/field.h"
#include "frame/kernel.h"
#include "frame/session_fit.h"
#include "nlnum/number_styling.h"
#include "nlnum/styled_field.h"

namespace vxlocfmt::nlnum {
namespace {

// Bytes of the session-encoding conversion; the longest text to convert is 32 characters of at
// most 4 bytes.
constexpr std::int32_t converter_bytes = 200;
static_assert(converter_bytes >= 4 * zkfnum_max_width);

// The call's decimals as the caller set them, put back on every way out.
class DecimalsKept {
public:
    explicit DecimalsKept(FmtCall& call) : call_(call), saved_(call.decimals) {}
    ~DecimalsKept() { call_.decimals = saved_; }
    DecimalsKept(const DecimalsKept&) = delete;
    DecimalsKept& operator=(const DecimalsKept&) = delete;

private:
    FmtCall& call_;
    std::int32_t saved_;
};

// The kernel's text without the blanks around it.
std::u32string_view kernel_text(const wchar* cells, std::int32_t length) {
    std::int32_t from = 0, to = std::clamp(length, 0, kernel_cells);
    while (from < to && cells[from] == U' ') ++from;
    while (to > from && cells[to - 1] == U' ') --to;
    return {cells + from, static_cast<std::size_t>(to - from)};
}

// One request to the kernel formatter: its text without the blanks around it, or false when
// the attempt must end in the "*" fill (a failure status, or a shortened text that is starred or
// longer than the call's field).
bool ask_kernel(void* locale, double value, std::int32_t width, std::int32_t decimals, std::int32_t field_length,
                wchar* cells, std::u32string_view& text) {
    std::int32_t length = field_length;
    const status code = kernel::slot<kernel::number_format_fn>(locale, kernel::locale_number_format_slot)(
        locale, value, width, decimals, mode_fixed_point, cells, kernel_cells, &length);
    text = kernel_text(cells, length);
    if (code == st::ok) return true;
    if (code != st::number_shortened) return false;
    if (static_cast<std::int64_t>(field_length) < static_cast<std::int64_t>(text.size())) return false;
    const std::int32_t produced = std::clamp(length, 0, kernel_cells);
    return std::find(cells, cells + produced, U'*') == cells + produced;
}

// Wide text into the session encoding; its length in bytes, or -1 when the converter refuses.
std::int32_t converted_length(const FmtCall& call, const wchar* text, std::size_t count) {
    return session_byte_length(call, text, static_cast<std::int32_t>(count), converter_bytes);
}

// In byte mode, the identity bound of the session when every cell the conventions may add to a
// number (point, separator, signs, symbol) is below it and a blank is too, else 0: a styled text
// made of them and the kernel's digits then takes one byte a character, so the byte-mode field
// (right-aligned by the text's size in bytes) is the wide one. A text that still has a cell at or
// above the bound (the kernel's own) is caught after it is written.
wchar narrow_conventions_bound(const FmtCall& call, const NumberConventions& c) {
    const wchar bound = session_bytes::identity_mask_bound(call.session_transcoder);
    if (bound <= U' ') return 0;
    wchar seen = c.decimal_point[0] | c.decimal_point[1] | c.thousands_sep[0] | c.thousands_sep[1] |
                 c.positive_sign[0] | c.positive_sign[1] | c.negative_sign[0] | c.negative_sign[1];
    for (const wchar* symbol = c.currency_symbol; symbol < std::end(c.currency_symbol) && *symbol; ++symbol)
        seen |= *symbol;
    return seen < bound ? bound : 0;
}

// In a UTF-8 session, the wide first attempt's field (blanks, then `length` cells of text, over
// `w` cells) made the byte-mode one: the text is right-aligned by its size in bytes, so it moves
// left by the bytes its characters take beyond one each, blanks after it, and the produced
// length ends after it (what the retry loop writes). False, with the field to be written again,
// when the bytes do not fit the width or a cell is no character UTF-8 holds.
bool realign_for_utf8(wchar* field, std::int32_t w, std::int32_t length, std::int32_t* produced) {
    std::int32_t extra = 0;
    bool whole = true;
    for (std::int32_t i = w - length; i < w; ++i) {
        const wchar c = field[i];
        extra += (c >= 0x80) + (c >= 0x800) + (c >= 0x10000);
        whole &= c <= 0x10FFFF && c - 0xD800u >= 0x800u;
    }
    if (!whole || extra > w - length) return false;
    std::memmove(field, field + extra, static_cast<std::size_t>(w - extra) * sizeof(wchar));
    std::fill(field + (w - extra), field + w, U' ');
    *produced = w - extra;
    return true;
}

// Every attempt of zkfnum, from the first, with the retry order: what the first attempt of
// zkfnum does not take (byte mode, a text too wide, anything but plain fixed point).
[[gnu::noinline]] std::int32_t render_retrying(FmtCall& call, const NumberConventions& c, const Instance& instance,
                                               double value, std::int32_t w) {
    const DecimalsKept kept(call);
    const OutputField field = OutputField::of(call);
    const auto fail = [&] {
        field.fill(U'*');
        call.produced = w;
        return zkfnum_done;
    };
    const bool bytes = call.byte_mode != 0;
    auto point_length = static_cast<std::int32_t>(cells_used(c.decimal_point));
    if (bytes) {
        point_length = converted_length(call, c.decimal_point, static_cast<std::size_t>(point_length));
        if (point_length < 0) return fail();
    }
    // No more decimals than the width could show: the kernel would drop the others anyway.
    std::int32_t decimals = c.decimal_point[0] == 0 ? 0 : std::clamp(call.decimals, 0, w);
    call.decimals = decimals;
    void* const locale = instance.fixed_locale ? instance.fixed_locale : call.number_format;
    if (!locale) return fail();

    wchar plain_cells[kernel_cells];
    StyleState state;
    std::int32_t narrowing = 0;  // r: how much narrower than the width the kernel is asked
    bool leading_zero = false;
    std::int32_t m = 0;          // length of the last styled text
    wchar styled[styled_cells];
    for (;;) {
        std::u32string_view plain;
        if (!ask_kernel(locale, value, w, decimals, call.capacity, plain_cells, plain)) return fail();
        if (static_cast<std::int32_t>(plain.size()) > w || narrowing > 0) {
            if (w - narrowing < 1) return fail();
            if (!ask_kernel(locale, value, w - narrowing, decimals, call.capacity, plain_cells, plain)) return fail();
        }
        const auto n = static_cast<std::int32_t>(plain.size());
        if (n < 1) return fail();
        if (decimals > 0 && plain.starts_with(U"0.")) leading_zero = true;

        if (n <= w) {
            const std::int32_t length = style_number(plain, decimals, value, point_length, c, state, styled);
            if (length >= 0) {
                m = length;
                if (m <= w && bytes) m = converted_length(call, styled, static_cast<std::size_t>(length));
                if (m < 0) return fail();  // the session encoding cannot hold the text
                if (m <= w) {
                    // Right-aligned by the text's size in the output encoding, so the byte wrapper's
                    // conversion fills the width exactly.
                    const std::int32_t pad = w - m;
                    field.fill(0, pad, U' ');
                    field.write(pad, {styled, static_cast<std::size_t>(length)});
                    field.fill(pad + length, w, U' ');  // byte mode: cells past the text
                    call.produced = bytes ? pad + length : w;
                    return zkfnum_done;
                }
            }
        }

        // Too wide: the next attempt gives up grouping, then a decimal, then narrows the request.
        if (state.grouping_wanted && state.grouping_done) {
            state.grouping_wanted = false;
        } else if (decimals > 0) {
            // "0.5" may lose its leading zero in a narrower field rather than a decimal.
            if (leading_zero && narrowing == 0) narrowing = 1;
            else call.decimals = --decimals;
        } else if (narrowing == 0) {
            narrowing = m - w;
            if (state.long_point_with_exponent && narrowing > 1) --narrowing;
            if (narrowing < 1 || narrowing >= w) return fail();
        } else {
            if (w - narrowing < 2) return fail();
            ++narrowing;
        }
    }
}

// zkfnum, with or without its everyday attempt.
template <bool everyday>
std::int32_t render(std::uint32_t supported, FmtCall& call, const NumberConventions& c, const Instance& instance) {
    if (supported == 0) return zkfnum_unsupported;
    const std::int32_t w = call.width;
    if (w <= 0) return zkfnum_done;
    if (w > zkfnum_max_width) {
        // Whatever the value: the widest styled number is 32.
        call.width = zkfnum_max_width;
        star_fill(call);
        return zkfnum_done;
    }
    call.produced = w;
    const double value = *static_cast<const double*>(call.input);
    if (calendar::is_nan(value)) {
        calendar::zfmmiss_without_decimals(call);
        return zkfnum_done;
    }
    // The everyday call, wide and with room for the whole field: the first attempt asks the
    // kernel as every attempt does and, when its text is plain fixed point at the decimals asked
    // (what status 0 means) and fits styled, writes it straight into the field. The caller's
    // decimals are not touched on this way.
    void* const locale = instance.fixed_locale ? instance.fixed_locale : call.number_format;
    // In byte mode it is taken when the session writes the text a byte a character (the field is
    // then the one the retry loop writes) or is UTF-8 (the field is realigned by the text's bytes);
    // a text it finds otherwise goes to the loop, which writes every cell again.
    if (everyday && call.capacity >= w && c.decimal_point[0] != 0 && locale && call.output) {
        // One call site: a second inlined copy of the attempt compiled its block moves to string
        // moves, whose start-up cost more than the rest of the attempt.
        auto* const field = static_cast<wchar*>(call.output);
        const bool wide = call.byte_mode == 0;
        void* const transcoder = wide ? nullptr : call.session_transcoder;
        const wchar bound = transcoder ? narrow_conventions_bound(call, c) : 0;
        const bool utf8 = transcoder && !bound && session_bytes::identity_mask_bound(transcoder) > U' ' &&
                          kernel::encoding_form(transcoder) == kernel::transcoder_form_utf8;
        std::int32_t length = 0;
        if ((wide || bound || utf8) &&
            first_attempt(locale, value, w, std::clamp(call.decimals, 0, w), call.capacity, c, field, &length) &&
            (wide || (bound ? session_bytes::all_below(field, w, bound) : realign_for_utf8(field, w, length, &call.produced))))
            return zkfnum_done;
    }
    return render_retrying(call, c, instance, value, w);
}

}  // namespace

std::int32_t zkfnum(std::uint32_t supported, FmtCall& call, const NumberConventions& c, const Instance& instance) {
    return render<true>(supported, call, c, instance);
}

std::int32_t detail::zkfnum_retrying(std::uint32_t supported, FmtCall& call, const NumberConventions& c,
                                     const Instance& instance) {
    return render<false>(supported, call, c, instance);
}

}  // namespace vxlocfmt::nlnum
