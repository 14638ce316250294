// The character informats: the field's characters as they stand, upper-cased, or unquoted. Each
// fills min(width, capacity) cells of the output (text first, then blanks) and says so in the
// produced length.
#include <algorithm>

#include "classic/informat_field.h"
#include "classic/value_informats.h"
#include "text/case_mapping.h"

namespace vxlocfmt::classic {
namespace {

// The cells an informat fills: min(width, capacity), none without an output.
std::span<wchar> output_cells(const FmtCall& call) {
    const std::int32_t n = std::min(call.width, call.capacity);
    if (n <= 0 || !call.output) return {};
    return {static_cast<wchar*>(call.output), static_cast<std::size_t>(n)};
}

// Writes `text` into the cells, blanks after it.
std::span<wchar> fill(FmtCall& call, std::u32string_view text) {
    const std::span<wchar> cells = output_cells(call);
    const std::size_t n = std::min(text.size(), cells.size());
    std::copy_n(text.begin(), n, cells.begin());
    std::fill(cells.begin() + static_cast<std::ptrdiff_t>(n), cells.end(), U' ');
    call.produced = static_cast<std::int32_t>(cells.size());
    return cells;
}

}  // namespace
}  // namespace vxlocfmt::classic

using namespace vxlocfmt;
using namespace vxlocfmt::classic;

VX_EXPORT status vxfmtzifmc(FmtCall* call, void*) {
    if (call) fill(*call, detail::field_text(*call));
    return 0;
}

VX_EXPORT status vxfmtzifmupc(FmtCall* call, void*) {
    if (call) text::to_upper(fill(*call, detail::field_text(*call)));
    return 0;
}

VX_EXPORT status vxfmtzifmquo(FmtCall* call, void*) {
    if (!call) return 0;
    const std::u32string_view field = detail::field_text(*call);
    const std::u32string_view text = detail::left_justified(field);
    if (text.empty() || (text.front() != U'"' && text.front() != U'\'')) {
        fill(*call, text.empty() ? text : field);
        return 0;
    }
    // Unquote into the cells: a doubled quote is one quote; the closing quote ends the value.
    const wchar quote = text.front();
    const std::span<wchar> cells = output_cells(*call);
    std::size_t n = 0;
    for (std::size_t i = 1; i < text.size() && n < cells.size(); ++i) {
        if (text[i] == quote) {
            if (i + 1 >= text.size() || text[i + 1] != quote) break;
            ++i;  // the doubled quote stands for one
        }
        cells[n++] = text[i];
    }
    std::fill(cells.begin() + static_cast<std::ptrdiff_t>(n), cells.end(), U' ');
    call->produced = static_cast<std::int32_t>(cells.size());
    return 0;
}

VX_EXPORT status vxfmtzifmocc(FmtCall*, void*) { return 0; }
