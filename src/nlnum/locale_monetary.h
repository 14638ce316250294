/*
 * The instance's locale monetary conventions: what the fixed-currency formats take from the
 * call's locale (separators, group size, signs, symbol placement). Built once per instance, on
 * its first NLMNI<ccy> or NLMNL<ccy> call, from that call's property table, and kept until the
 * instance is destroyed: later calls in other locales keep the first call's conventions.
 *
 *   const LocaleMonetary* mon = locale_monetary(call, instance);   // null: the pool failed
 *   std::u32string_view point = mon->decimal_point();
 *
 * Threads: the build takes no lock. The block is published with a release store and read with
 * an acquire load, so a call that sees it sees it whole; two calls that both find it missing at
 * the same moment both build it (the instance's property copy is then written by both, a data
 * race). The first currency call on an instance must not race another: make one before threads
 * share the instance.
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::nlnum {

// Seven zero-terminated wide strings (into the instance's copy of the property table) and eight
// small numbers: 64 bytes, from the instance's pool.
struct LocaleMonetary {
    const wchar* int_curr_symbol;
    const wchar* currency_symbol;
    const wchar* mon_decimal_point;
    const wchar* mon_thousands_sep;
    const wchar* mon_grouping;
    const wchar* positive_sign;
    const wchar* negative_sign;
    std::int8_t int_frac_digits;
    std::int8_t frac_digits;
    std::int8_t p_cs_precedes;
    std::int8_t p_sep_by_space;
    std::int8_t n_cs_precedes;
    std::int8_t n_sep_by_space;
    std::int8_t p_sign_posn;
    std::int8_t n_sign_posn;

    std::u32string_view decimal_point() const { return mon_decimal_point; }
    std::u32string_view thousands_sep() const { return mon_thousands_sep; }
    std::u32string_view positive() const { return positive_sign; }
    std::u32string_view negative() const { return negative_sign; }
    // The first digit of the grouping text: "3;2" groups by 3 throughout. 0: no grouping.
    int group_size() const {
        const wchar c = mon_grouping[0];
        return c >= U'1' && c <= U'9' ? static_cast<int>(c - U'0') : 0;
    }
};
static_assert(sizeof(LocaleMonetary) == 64);

// The instance's conventions, built from the call's property table (which must exist) on the
// first call. Null when the instance's pool cannot supply the 64 bytes.
const LocaleMonetary* locale_monetary(const FmtCall& call, Instance& instance);

}  // namespace vxlocfmt::nlnum
