#include "locale/number_conventions.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "locale/property_numbers.h"

namespace vxlocfmt::locale {
namespace {

constexpr std::size_t symbol_cells = std::size(NumberConventions{}.currency_symbol);
constexpr std::size_t grouping_cells = std::size(NumberConventions{}.grouping);

std::u32string_view text(const PropertyCache& cache, std::size_t n) {
    const Property& p = cache.properties[n];
    return {p.value, static_cast<std::size_t>(p.length)};
}

// Fixed-size fields take what fits; the rest stays 0.
template <std::size_t N>
void copy_field(wchar (&field)[N], std::u32string_view value) {
    std::fill(field, field + N, 0);
    std::copy_n(value.begin(), std::min(value.size(), N), field);
}

void copy_symbol(NumberConventions& c, std::u32string_view value) {
    std::fill(c.currency_symbol, c.currency_symbol + symbol_cells, 0);
    std::copy_n(value.begin(), std::min(value.size(), symbol_cells - 1), c.currency_symbol);
}

// Plain decimal digits, each character minus '0', with no sign and no check, by design.
std::int32_t parse(std::u32string_view value) {
    std::uint32_t v = 0;
    for (const wchar c : value) v = v * 10 + static_cast<std::uint32_t>(c - U'0');
    return static_cast<std::int32_t>(v);
}

void set_grouping(NumberConventions& c, std::u32string_view value) {
    std::fill(c.grouping, c.grouping + grouping_cells, 0);
    const std::size_t n = std::min(value.size(), grouping_cells - 1);  // room for the closing 0
    for (std::size_t i = 0; i < n; ++i) c.grouping[i] = static_cast<std::int32_t>(value[i] - U'0');
}

// The six position values, from properties listed in the record's field order: p_cs_precedes,
// p_sep_by_space, p_sign_posn, n_cs_precedes, n_sep_by_space, n_sign_posn.
void set_positions(NumberConventions& c, const PropertyCache& cache, const std::size_t (&from)[6]) {
    std::int32_t* const fields[6] = {&c.p_cs_precedes, &c.p_sep_by_space, &c.p_sign_posn,
                                     &c.n_cs_precedes, &c.n_sep_by_space, &c.n_sign_posn};
    for (std::size_t i = 0; i < 6; ++i) *fields[i] = parse(text(cache, from[i]));
}

void set_fixed_positions(NumberConventions& c) {
    c.p_cs_precedes = 0;
    c.p_sep_by_space = 0;
    c.p_sign_posn = 1;
    c.n_cs_precedes = 0;
    c.n_sep_by_space = 0;
    c.n_sign_posn = 1;
}

void set_fixed_separators(NumberConventions& c) {
    copy_field(c.decimal_point, U".");
    copy_field(c.thousands_sep, U",");
    std::fill(c.grouping, c.grouping + grouping_cells, 0);
    c.grouping[0] = 3;
}

void build_currency(NumberConventions& c, const PropertyCache& cache, bool local) {
    using namespace prop;
    const std::u32string_view symbol = text(cache, currency_local);
    // A local symbol that had to become a character reference is replaced by the ISO code.
    const bool referenced = symbol.size() > 4 && symbol.find(U"&#") != std::u32string_view::npos;
    copy_symbol(c, local && !referenced ? symbol : text(cache, currency_international));
    copy_field(c.decimal_point, text(cache, mon_decimal_point));
    copy_field(c.thousands_sep, text(cache, mon_thousands_sep));
    set_grouping(c, text(cache, mon_grouping));
    copy_field(c.positive_sign, text(cache, mon_positive_sign));
    copy_field(c.negative_sign, text(cache, mon_negative_sign));
    set_positions(c, cache, {mon_p_cs_precedes, mon_p_sep_by_space, mon_p_sign_posn, mon_n_cs_precedes,
                             mon_n_sep_by_space, mon_n_sign_posn});
    c.frac_digits = parse(text(cache, local ? frac_digits : int_frac_digits));
}

void build_number(NumberConventions& c, const PropertyCache& cache, bool fixed, bool percent) {
    using namespace prop;
    copy_symbol(c, percent ? U"%" : U"");
    if (fixed) {
        set_fixed_separators(c);
    } else {
        copy_field(c.decimal_point, text(cache, decimal_point));
        copy_field(c.thousands_sep, text(cache, thousands_sep));
        set_grouping(c, text(cache, grouping));
    }
    copy_field(c.positive_sign, text(cache, positive_sign));
    copy_field(c.negative_sign, text(cache, negative_sign));
    if (percent) set_fixed_positions(c);
    else set_positions(c, cache, {p_cs_precedes, p_sep_by_space, p_sign_posn, n_cs_precedes, n_sep_by_space, n_sign_posn});
}

}  // namespace

void build_number_conventions(PropertyCache& cache) {
    NumberConventions* const records = cache.conventions;
    std::memset(records, 0, sizeof cache.conventions);
    build_currency(records[0], cache, true);
    build_currency(records[1], cache, false);
    build_number(records[2], cache, false, false);
    build_number(records[3], cache, true, false);
    build_number(records[4], cache, false, true);
    build_number(records[5], cache, true, true);
    for (std::size_t i = 0; i < number_convention_count; ++i) cache.properties[NumIndex[i]].conventions = &records[i];
}

}  // namespace vxlocfmt::locale
