// The classic numeric renderers: thin shells over the kernel number formatter that add the
// separators, "$", "%", parentheses or the D format's trailing zeros. The missing value is the
// formatter's business (it writes the missing-value character), except in PERCENT.
#include "classic/numeric_formats.h"

#include <algorithm>
#include <cmath>

#include "calendar/missing_value.h"
#include "classic/d_rule.h"
#include "frame/field.h"
#include "frame/kernel.h"

namespace vxlocfmt::classic {
namespace {

constexpr std::uint32_t mode_best_fit = 0x800;
constexpr std::uint32_t mode_fixed = 0x1000;
constexpr std::uint32_t mode_exponential = 0x2000;
constexpr std::uint32_t mode_grouped = 0x21000;
constexpr status grouping_dropped = 0x803fe85bu;
constexpr status no_room = 0x803fe80eu;
// The widest text the best-fit mode serves.
constexpr std::int32_t best_fit_cells = 32;

double value_of(const FmtCall& call) { return *static_cast<const double*>(call.input); }
wchar* cells_of(const FmtCall& call) { return static_cast<wchar*>(call.output); }
std::int32_t cap_of(const FmtCall& call) { return std::max(0, std::min(call.width, call.capacity)); }

void* global_number_format(const FmtCall& call) {
    void* handle = Exported_VXHandle;
    void* global = handle ? kernel::word(handle, kernel::handle_word_number_format) : nullptr;
    return global ? global : call.number_format;
}

// The formatter of `object`; a call without one fails like a formatter that cannot render.
status number(void* object, double value, std::int32_t width, std::int32_t decimals, std::uint32_t mode, wchar* out,
              std::int32_t capacity, std::int32_t* length) {
    if (!object) {
        *length = 0;
        return st::no_locale;
    }
    return kernel::slot<kernel::number_format_fn>(object, kernel::locale_number_format_slot)(
        object, value, width, decimals, mode, out, capacity, length);
}

bool accepted(status code) { return code == st::ok || code == st::number_shortened; }

// The first non-blank cell of the first n, or n.
std::int32_t first_non_blank(const wchar* cells, std::int32_t n) {
    std::int32_t i = 0;
    while (i < n && cells[i] == U' ') ++i;
    return i;
}

status best(FmtCall& call, void* formatter) {
    const OutputField field = OutputField::of(call);
    const std::int32_t cap = cap_of(call);
    // The best-fit mode serves at most 32 cells: a wider field gets blanks in front.
    const std::int32_t blanks = cap > best_fit_cells && cap <= 40 ? cap - best_fit_cells : 0;
    field.fill(0, blanks, U' ');
    std::int32_t length = call.capacity;
    const status code = number(formatter, value_of(call), cap - blanks, 0, mode_best_fit, cells_of(call) + blanks,
                               cap - blanks, &length);
    if (code != st::ok) {
        field.fill(0, cap, U'*');
        call.produced = cap;
    } else {
        call.produced = blanks + length;
    }
    return code;
}

status render_n(FmtCall& call) {
    std::int32_t length = call.capacity;
    const status code = number(call.number_format, value_of(call), call.width, call.decimals, mode_fixed,
                               cells_of(call), cap_of(call), &length);
    if (!accepted(code)) star_fill(call);
    else call.produced = length;
    return code;
}

status render_comma(FmtCall& call) {
    std::int32_t length = call.capacity;
    const status code = number(call.number_format, value_of(call), call.width, call.decimals, mode_grouped,
                               cells_of(call), cap_of(call), &length);
    call.produced = length;
    if (length != call.width && length < call.capacity) {
        OutputField::of(call).fill(length, call.width, U' ');
        call.produced = call.width;
    }
    return code == grouping_dropped ? st::ok : code;
}

status render_dollar(FmtCall& call) {
    status code;
    if (call.width >= 2) {
        OutputField::of(call).put(0, U' ');
        FmtCall rest = call;
        rest.output = cells_of(call) + 1;
        rest.width = call.width - 1;
        rest.capacity = call.capacity - 1;
        code = render_comma(rest);
        call.produced = rest.produced + 1;
    } else {
        code = render_comma(call);
    }
    if (calendar::is_nan(value_of(call)) || !accepted(code)) return render_n(call);
    const std::int32_t cap = cap_of(call);
    const wchar* cells = cells_of(call);
    if (std::find_if(cells, cells + cap, [](wchar c) { return c == U'E' || c == U'*'; }) != cells + cap) return code;
    OutputField::of(call).put(first_non_blank(cells, cap) - 1, U'$');
    return code;
}

status render_percent(FmtCall& call) {
    const OutputField field = OutputField::of(call);
    const std::int32_t cap = cap_of(call);
    const double value = value_of(call);
    if (calendar::is_nan(value)) {
        field.fill(0, cap, U' ');
        field.put(cap - 3, calendar::missing_characters[static_cast<std::size_t>(calendar::missing_code(value))]);
        call.produced = cap;
        return st::ok;
    }
    std::int32_t length = call.capacity - 3;
    const status code = call.capacity > 3
                            ? number(call.number_format, std::fabs(value) * 100, call.width - 3, call.decimals,
                                     mode_fixed, cells_of(call) + 1, call.capacity - 3, &length)
                            : no_room;
    if (code == no_room) length = 0;
    if (!accepted(code) && code != no_room) {
        star_fill(call);
        return code;
    }
    const bool negative = value < 0;
    field.put(0, negative ? U'(' : U' ');
    field.put(length + 1, U'%');
    field.put(length + 2, negative ? U')' : U' ');
    call.produced = std::min(length + 3, cap);
    return code;
}

status render_percentn(FmtCall& call) {
    const status code = render_percent(call);
    const double value = value_of(call);
    if (calendar::is_nan(value) || !accepted(code) || !(value < 0)) return code;
    const OutputField field = OutputField::of(call);
    wchar* cells = cells_of(call);
    for (std::int32_t i = 0; i < cap_of(call); ++i)
        if (cells[i] == U'(' || cells[i] == U')') cells[i] = U' ';
    field.put(first_non_blank(cells, cap_of(call)) - 1, U'-');
    return code;
}

status render_best(FmtCall& call) { return best(call, call.number_format); }
status render_bestdt(FmtCall& call) { return best(call, global_number_format(call)); }

void render_t(FmtCall& call) {
    std::int32_t length = call.capacity;
    number(call.number_format, value_of(call), call.width, call.decimals, mode_best_fit, cells_of(call), cap_of(call),
           &length);
    call.produced = length;
}

status render_e(FmtCall& call) {
    const double value = value_of(call);
    const std::int32_t decimals = call.width == 7 && value > 0 ? 1 : call.width - 7;
    std::int32_t length = call.capacity;
    const status code = number(call.number_format, value, call.width, decimals, mode_exponential, cells_of(call),
                               call.capacity, &length);
    if (!accepted(code)) star_fill(call);
    else call.produced = length;
    return code;
}

status render_d(FmtCall& call) {
    const double value = value_of(call);
    if (calendar::is_nan(value)) {
        render_t(call);
        return st::ok;
    }
    const std::int32_t cap = cap_of(call);
    const int chosen = d_rule_decimals(value, call.width, call.decimals);
    const bool best_fit = chosen < 0;
    const bool wide = call.decimals > max_d_decimals;
    const std::uint32_t mode = best_fit || wide ? mode_best_fit : mode_fixed;
    std::int32_t length = call.capacity;
    wchar* cells = cells_of(call);
    const status code = number(global_number_format(call), value, call.width, best_fit || wide ? 0 : chosen, mode,
                               cells, cap, &length);
    if (code == st::ok) {
        call.produced = length;
        wchar* end = cells + length;
        if (best_fit && length > 2 && cells[0] == U' ' && std::find(cells, end, U'E') == end) {
            // Best fit leaves blanks in front: the text moves left and the free cells show as
            // trailing zeros, as the fixed-point D text would.
            const bool has_point = std::find(cells, end, U'.') != end;
            if (has_point || cells[1] == U' ') {
                const std::int32_t start = first_non_blank(cells, length);
                std::int32_t n = length - start;
                std::copy(cells + start, cells + length, cells);
                if (!has_point && n < cap) cells[n++] = U'.';
                std::fill(cells + n, cells + cap, U'0');
            }
        }
    } else if (!accepted(code)) {
        star_fill(call);
    } else {
        call.produced = length;
    }
    return code;
}

}  // namespace
}  // namespace vxlocfmt::classic

using namespace vxlocfmt;

VX_EXPORT status vxfmtzfmn(FmtCall* call, void*) { return classic::render_n(*call); }
VX_EXPORT status vxfmtzfmcomma(FmtCall* call, void*) { return classic::render_comma(*call); }
VX_EXPORT status vxfmtzfmdollar(FmtCall* call, void*) { return classic::render_dollar(*call); }
VX_EXPORT status vxfmtzfmpercent(FmtCall* call, void*) { return classic::render_percent(*call); }
VX_EXPORT status vxfmtzfmpercentn(FmtCall* call, void*) { return classic::render_percentn(*call); }
VX_EXPORT status vxfmtzfmbest(FmtCall* call, void*) { return classic::render_best(*call); }
VX_EXPORT status vxfmtzfmbestdt(FmtCall* call, void*) { return classic::render_bestdt(*call); }
VX_EXPORT status vxfmtzfmt(FmtCall* call, void*) {
    classic::render_t(*call);
    return st::ok;
}
VX_EXPORT status vxfmtzfme(FmtCall* call, void*) { return classic::render_e(*call); }
VX_EXPORT status vxfmtzfmd(FmtCall* call, void*) { return classic::render_d(*call); }
