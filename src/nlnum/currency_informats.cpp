#include "nlnum/currency_informats.h"

#include <algorithm>
#include <bit>
#include <string_view>

#include "classic/value_informats.h"
#include "frame/instance.h"
#include "locale/property_table.h"
#include "nlnum/currency_symbol.h"
#include "nlnum/locale_monetary.h"
#include "nlnum/rewrite_text.h"

namespace vxlocfmt::nlnum {
namespace {

constexpr status pool_failed = 1;

void store_missing(FmtCall& call) {
    if (call.output) *static_cast<double*>(call.output) = std::bit_cast<double>(missing_bits);
}

// The characters the field holds: the first min(width, length, limit), at most 32.
std::u32string_view field_text(const FmtCall& call) {
    const std::int32_t n = std::min({call.width, call.input_length, call.text_limit});
    if (n <= 0 || !call.input) return {};
    return {static_cast<const wchar*>(call.input), static_cast<std::size_t>(n)};
}

// "," grouping and "." point by the locale's monetary separators. A separator that begins with
// a blank or "," leaves the text as it is (kept so: the classic reader deletes blanks and
// commas anyway). The symbol goes through the same rewriting, so that a symbol holding a
// separator ("SFr." where "." groups) is still found in the rewritten text.
void normalise_separators(RewriteText& t, const LocaleMonetary& mon) {
    const std::u32string_view sep = mon.thousands_sep().substr(0, 2);
    const std::u32string_view point = mon.decimal_point();
    if (sep.empty() || sep.front() == U' ' || sep.front() == U',') return;
    if (sep.size() == 1) {
        const wchar s = sep.front(), p = point.empty() ? 0 : point.front();
        t.map([&](wchar c) { return c == s ? U',' : c == p ? U'.' : c; });
    } else {
        if (point == U",") t.map([](wchar c) { return c == U',' ? U'.' : c; });
        t.replace_all(sep, U',');
    }
}

// Deletes every character of `chars` it finds; true when any went.
bool delete_all(RewriteText& t, wchar a, wchar b) {
    return t.erase_if([&](wchar c) { return c == a || c == b; }) > 0;
}

status read_amount(FmtCall& call, const MonetaryRow& row, Instance& instance, void* extra, bool local) {
    const LocaleMonetary* mon = locale_monetary(call, instance);
    if (!mon) {
        store_missing(call);
        return pool_failed;
    }
    RewriteText t(field_text(call));
    normalise_separators(t, *mon);
    RewriteText symbol(currency_text(call, row, local).view());
    normalise_separators(symbol, *mon);
    if (!symbol.empty()) t.remove_all(symbol.view());
    bool negative = false;
    if (mon->n_sign_posn == 0) negative = delete_all(t, U'(', U')');
    else if (const wchar sign = mon->negative_sign[0]; sign != 0) negative = delete_all(t, sign, sign);
    if (negative) {
        t.push_front(U'-');
    } else if (mon->p_sign_posn == 0) {
        delete_all(t, U'(', U')');
    } else if (const wchar sign = mon->positive_sign[0]; sign != 0) {
        delete_all(t, sign, sign);
    }
    // The classic informat's status is not reported, by design: a failed read shows only as the
    // missing value it leaves in the result.
    read_classic(call, t, vxfmtzifmnpn, extra);
    return st::ok;
}

// The rule every fixed-currency informat follows: the instance (none: -1), the call's property
// table (when it cannot be built: the missing value and 0), then the reading loop.
template <status (*Loop)(FmtCall&, const MonetaryRow&, Instance&, void*)>
status fixed_currency(FmtCall* call, const MonetaryRow& row, void* extra) {
    Instance* instance = find_instance(*call);
    if (!instance) return st::instance_not_found;
    if (!call->property_cache && locale::fill_nlfmt_properties(*call, *instance) != st::ok) {
        store_missing(*call);
        return st::ok;
    }
    return Loop(*call, row, *instance, extra);
}

}  // namespace

status nlmnyiint(FmtCall& call, const MonetaryRow& row, Instance& instance, void* extra) {
    return read_amount(call, row, instance, extra, false);
}

status nlmnyiloc(FmtCall& call, const MonetaryRow& row, Instance& instance, void* extra) {
    return read_amount(call, row, instance, extra, true);
}

}  // namespace vxlocfmt::nlnum

#define VX_DEFINE_FIXED_CURRENCY_INFORMAT(lower, code)                                         \
    VX_EXPORT vxlocfmt::status vxfmtinlmni##lower(vxlocfmt::FmtCall* call, void* extra) {      \
        using namespace vxlocfmt::nlnum;                                                       \
        return fixed_currency<nlmnyiint>(call, currency_row(U"" code), extra);                 \
    }                                                                                          \
    VX_EXPORT vxlocfmt::status vxfmtinlmnl##lower(vxlocfmt::FmtCall* call, void* extra) {      \
        using namespace vxlocfmt::nlnum;                                                       \
        return fixed_currency<nlmnyiloc>(call, currency_row(U"" code), extra);                 \
    }
VX_FORMAT_CURRENCIES(VX_DEFINE_FIXED_CURRENCY_INFORMAT)
#undef VX_DEFINE_FIXED_CURRENCY_INFORMAT
