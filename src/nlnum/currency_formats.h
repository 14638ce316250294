/*
 * The 80 fixed-currency formats NLMNI<ccy> (the ISO code) and NLMNL<ccy> (the currency's own
 * symbol): an amount in one named currency, styled with the monetary conventions of the
 * instance's locale (see locale_monetary.h). Their rendering loops:
 *
 *   nlmnyint(call, currency_row(U"USD"), instance);   // "USD1,234.50" in byte mode
 *   nlmnyloc(call, currency_row(U"EUR"), instance);   // "1.234,50 €", or "1.234,50 EUR"
 *
 * A loop tries the styled amount, then without group separators, then without the currency
 * text, then with a narrower request to the kernel, and ends in the kernel's plain rendering.
 * Only a call in byte mode (the session converter's "convert" flag) can accept the styled text:
 * in wide mode every amount is the plain rendering ("1234.50"), by design.
 */
#pragma once

#include "frame/abi.h"
#include "nlnum/currency_table.h"

namespace vxlocfmt::nlnum {

// Both answer 0; the field is always written (styled, plain, missing-value text or "*").
status nlmnyint(FmtCall& call, const MonetaryRow& row, Instance& instance);
status nlmnyloc(FmtCall& call, const MonetaryRow& row, Instance& instance);

}  // namespace vxlocfmt::nlnum

#define VX_DECLARE_FIXED_CURRENCY(lower, code)                                          \
    VX_EXPORT vxlocfmt::status vxfmtnlmni##lower(vxlocfmt::FmtCall* call, void* extra); \
    VX_EXPORT vxlocfmt::status vxfmtnlmnl##lower(vxlocfmt::FmtCall* call, void* extra);
VX_FORMAT_CURRENCIES(VX_DECLARE_FIXED_CURRENCY)
#undef VX_DECLARE_FIXED_CURRENCY
