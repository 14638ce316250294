#include "text/case_mapping.h"
#include "text/text_exports.h"

#include <cstdint>

#include "text/kernel_nls.h"
#include "text/unicode_tables.h"

namespace vxlocfmt::text {
namespace {

struct CaseTables {
    const std::int16_t* block_index;
    const std::int8_t* deltas;
    const CasePair* exceptions;
};
constexpr CaseTables lower_tables{lower_block_index, lower_deltas, lower_exceptions};
constexpr CaseTables upper_tables{upper_block_index, upper_deltas, upper_exceptions};

wchar map_by_table(const CaseTables& t, wchar c) {
    if (c >= 0x10000) return c;
    const std::int16_t at = t.block_index[c / 128];
    if (at < 0) return c;
    const std::int8_t delta = t.deltas[at + c % 128];
    if (delta != case_exception) return static_cast<wchar>(static_cast<std::int32_t>(c) + delta);
    // Every matching pair applies and the list is walked to its end; the generator checks that
    // no pair's result is another pair's key, so one match decides.
    for (const CasePair* p = t.exceptions; p->from != 0; ++p) {
        if (p->from == c) c = p->to;
    }
    return c;
}

}  // namespace

wchar table_to_lower(wchar c) { return map_by_table(lower_tables, c); }
wchar table_to_upper(wchar c) { return map_by_table(upper_tables, c); }

void to_lower(std::span<wchar> s) {
    void* svc = kernel_nls::service();
    for (wchar& c : s) {
        c = (!svc || c < 128) ? table_to_lower(c) : kernel_nls::to_lower(svc, c);
    }
}

void to_upper(std::span<wchar> s) {
    void* svc = kernel_nls::service();
    for (wchar& c : s) {
        c = (!svc || c < 128) ? table_to_upper(c) : kernel_nls::to_upper(svc, c);
    }
}

wchar to_lower(wchar c) {
    to_lower(std::span<wchar>(&c, 1));
    return c;
}

wchar to_upper(wchar c) {
    to_upper(std::span<wchar>(&c, 1));
    return c;
}

}  // namespace vxlocfmt::text

using vxlocfmt::status;
using vxlocfmt::wchar;

VX_EXPORT wchar vxtolower(wchar c) { return vxlocfmt::text::to_lower(c); }
VX_EXPORT wchar vxtoupper(wchar c) { return vxlocfmt::text::to_upper(c); }

// A null string or a length below 1 maps nothing.
VX_EXPORT status vxzstlo(wchar* s, std::int64_t length) {
    if (s && length > 0)
        vxlocfmt::text::to_lower(std::span<wchar>(s, static_cast<std::size_t>(length)));
    return vxlocfmt::st::ok;
}

VX_EXPORT status vxzstup(wchar* s, std::int64_t length) {
    if (s && length > 0)
        vxlocfmt::text::to_upper(std::span<wchar>(s, static_cast<std::size_t>(length)));
    return vxlocfmt::st::ok;
}
