/*
 * The currency table `lconv_monetary`: one row per ISO 4217 currency (82, sorted by code) with
 * its local symbol and the monetary conventions of the currency's home, and the list of the 40
 * currencies that have NLMNI<ccy> and NLMNL<ccy> formats.
 *
 *   constexpr const MonetaryRow& usd = currency_row(U"USD");   // usd.currency_symbol == U"US$"
 *   #define ONE(lower, code) ...
 *   VX_FORMAT_CURRENCIES(ONE)                                   // 40 expansions, table order
 */
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::nlnum {

// One currency. The local symbol writes a character outside plain ASCII as the seven-character
// escape "<U" + four hexadecimal digits + ">". The currency formats read only the first two
// fields; the others are data for readers of the table (the currency informats).
struct MonetaryRow {
    std::u32string_view int_curr_symbol;  // "USD"
    std::u32string_view currency_symbol;  // "US$", "<U20AC>"
    std::u32string_view mon_decimal_point;
    std::u32string_view mon_thousands_sep;
    std::u32string_view mon_grouping;     // "3", "3;2"
    std::u32string_view positive_sign;    // a blank in every row
    std::u32string_view negative_sign;    // "-" in every row
    std::int8_t int_frac_digits;
    std::int8_t frac_digits;
    std::int8_t p_cs_precedes;
    std::int8_t p_sep_by_space;
    std::int8_t n_cs_precedes;
    std::int8_t n_sep_by_space;
    std::int8_t p_sign_posn;
    std::int8_t n_sign_posn;
};

// code, symbol, point, separator, grouping, then int_frac_digits, frac_digits, p_cs_precedes,
// p_sep_by_space, n_cs_precedes, n_sep_by_space, p_sign_posn, n_sign_posn.
#define VX_ROW(code, symbol, point, sep, grouping, ifd, fd, pcs, psep, ncs, nsep, ppos, npos) \
    MonetaryRow{U"" code, U"" symbol, U"" point, U"" sep, U"" grouping, U" ", U"-", ifd, fd, pcs, psep, ncs, nsep, ppos, npos}

inline constexpr std::array lconv_monetary = {
    VX_ROW("AED", "<U062F>.<U0625>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("ALL", "Lek", ",", ".", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("ARS", "$", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("AUD", "AU$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("BGN", "<U043B><U0432>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("BHD", "<U062F>.<U0628>.", ".", ",", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("BOB", "Bs", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("BRL", "R$", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("BWP", "P", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("BYB", "<U0440>.", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("CAD", "CA$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("CHF", "SFr.", ".", "'", "3", 2, 2, 1, 1, 1, 1, 1, 2),
    VX_ROW("CLP", "$", ",", ".", "3", 0, 0, 1, 1, 1, 1, 1, 1),
    VX_ROW("CNY", "RMB", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("COP", "$", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("CRC", "<U20A1>", ",", ".", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("CZK", "K<U010D>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("DKK", "kr", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("DOP", "RD$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("DZD", "<U062F>.<U062C>.", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("EEK", "kr", ".", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("EGP", "<U062C>.<U0645>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("EUR", "<U20AC>", ",", ".", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("GBP", "<U00A3>", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("GTQ", "Q", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("HKD", "HK$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("HNL", "L", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("HRK", "Kn", ",", ".", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("HUF", "Ft", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("IDR", "Rp", ",", ".", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("ILS", "<U05E9>\"<U05D7>", ".", ",", "3", 2, 2, 1, 1, 1, 1, 2, 2),
    VX_ROW("INR", "<U20A8>", ".", ",", "3;2", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("IQD", "<U062F>.<U0639>.", ".", ",", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("IRR", "<U0631><U06CC><U0627><U0644>", ".", ",", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("ISK", "kr", ",", ".", "3", 0, 0, 0, 1, 0, 1, 1, 1),
    VX_ROW("JMD", "J$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("JOD", "<U062F>.<U0627>.", ".", ",", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("JPY", "<UFFE5>", ".", ",", "3", 0, 0, 1, 0, 1, 0, 1, 4),
    VX_ROW("KRW", "<U20A9>", ".", ",", "3", 0, 0, 1, 0, 1, 0, 1, 1),
    VX_ROW("KWD", "<U062F>.<U0643>.", ".", ",", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("LBP", "<U0644>.<U0644>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("LTL", "Lt", ",", ".", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("LVL", "Ls", ",", " ", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("LYD", "<U062F>.<U0644>.", ".", ",", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("MAD", "<U062F>.<U0645>.", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("MKD", "<U0434><U0435><U043D>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("MOP", "P", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("MXN", "MX$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("MYR", "R", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("NIO", "C$", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("NOK", "kr", ",", " ", "3", 2, 2, 1, 1, 1, 1, 4, 4),
    VX_ROW("NZD", "NZ$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("OMR", "<U0631>.<U0639>.", ".", ",", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("PAB", "B/.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("PEN", "S/.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("PHP", "PhP", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("PLN", "z<U0142>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("PYG", "Gs.", ",", ".", "3", 0, 0, 1, 1, 1, 1, 1, 1),
    VX_ROW("QAR", "<U0631>.<U0642>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("ROL", "LEI", ",", ".", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("RUB", "<U0440><U0443><U0431>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("RUR", "<U0440><U002E>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("SAR", "<U0631>.<U0633>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("SDD", "<U062F>.<U0633>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("SEK", "kr", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("SGD", "SG$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("SKK", "Sk", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("SVC", "<U20A1>", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("SYP", "<U0644>.<U0633>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("THB", "<U0E3F>", ".", ",", "3", 2, 2, 1, 0, 1, 0, 4, 4),
    VX_ROW("TND", "<U062F>.<U062A>.", ",", ".", "3", 3, 3, 1, 1, 1, 1, 1, 1),
    VX_ROW("TRY", "YTL", ",", ".", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("TWD", "NT$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("UAH", "<U0433><U0440><U043D>", ",", " ", "3", 2, 2, 0, 1, 0, 1, 1, 1),
    VX_ROW("USD", "US$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("UYU", "$U", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("VEB", "Bs.", ",", ".", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("VND", "<U20AB>", ",", ".", "3", 0, 0, 0, 1, 0, 1, 1, 1),
    VX_ROW("XCD", "EC$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
    VX_ROW("YER", "<U0631>.<U064A>.", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("ZAR", "R", ".", ",", "3", 2, 2, 1, 1, 1, 1, 1, 1),
    VX_ROW("ZWD", "Z$", ".", ",", "3", 2, 2, 1, 0, 1, 0, 1, 1),
};
#undef VX_ROW

static_assert(lconv_monetary.size() == 82);

// The row of an ISO code; a compile-time error for a code the table lacks.
consteval const MonetaryRow& currency_row(std::u32string_view code) {
    for (const MonetaryRow& row : lconv_monetary)
        if (row.int_curr_symbol == code) return row;
    throw "no such currency";
}

consteval bool sorted_by_code() {
    for (std::size_t i = 1; i < lconv_monetary.size(); ++i)
        if (!(lconv_monetary[i - 1].int_curr_symbol < lconv_monetary[i].int_curr_symbol)) return false;
    return true;
}
static_assert(sorted_by_code());

// The 40 currencies with formats and informats, in the registry's order: X(lower, "CODE").
#define VX_FORMAT_CURRENCIES(X)                                                                          \
    X(aed, "AED") X(aud, "AUD") X(bgn, "BGN") X(brl, "BRL") X(cad, "CAD") X(chf, "CHF") X(cny, "CNY")     \
    X(czk, "CZK") X(dkk, "DKK") X(eek, "EEK") X(egp, "EGP") X(eur, "EUR") X(gbp, "GBP") X(hkd, "HKD")     \
    X(hrk, "HRK") X(huf, "HUF") X(idr, "IDR") X(ils, "ILS") X(inr, "INR") X(jpy, "JPY") X(krw, "KRW")     \
    X(ltl, "LTL") X(lvl, "LVL") X(mop, "MOP") X(mxn, "MXN") X(myr, "MYR") X(nok, "NOK") X(nzd, "NZD")     \
    X(pln, "PLN") X(rol, "ROL") X(rub, "RUB") X(rur, "RUR") X(sek, "SEK") X(sgd, "SGD") X(skk, "SKK")     \
    X(thb, "THB") X(try, "TRY") X(twd, "TWD") X(usd, "USD") X(zar, "ZAR")

}  // namespace vxlocfmt::nlnum
