/*
 * The 80 fixed-currency informats @NLMNI<ccy> and @NLMNL<ccy>: read back what the NLMNI<ccy>
 * and NLMNL<ccy> formats write, with the instance's locale monetary conventions (the same
 * record the formats build on their first call, see locale_monetary.h).
 *
 *   nlmnyiint(call, currency_row(U"USD"), instance, extra);   // "USD1,234.50" -> 1234.5
 *   nlmnyiloc(call, currency_row(U"EUR"), instance, extra);   // "1.234,50 €" in de_DE -> 1234.5
 *
 * Both answer 0 whatever the classic informat reported (an unreadable amount leaves the missing
 * value), 1 only when the pool cannot supply the conventions. The caller's record is put back.
 */
#pragma once

#include "frame/abi.h"
#include "nlnum/currency_table.h"

namespace vxlocfmt::nlnum {

status nlmnyiint(FmtCall& call, const MonetaryRow& row, Instance& instance, void* extra);
status nlmnyiloc(FmtCall& call, const MonetaryRow& row, Instance& instance, void* extra);

}  // namespace vxlocfmt::nlnum

#define VX_DECLARE_FIXED_CURRENCY_INFORMAT(lower, code)                                  \
    VX_EXPORT vxlocfmt::status vxfmtinlmni##lower(vxlocfmt::FmtCall* call, void* extra); \
    VX_EXPORT vxlocfmt::status vxfmtinlmnl##lower(vxlocfmt::FmtCall* call, void* extra);
VX_FORMAT_CURRENCIES(VX_DECLARE_FIXED_CURRENCY_INFORMAT)
#undef VX_DECLARE_FIXED_CURRENCY_INFORMAT
