#include "text/char_classes.h"
#include "text/text_exports.h"

#include "text/kernel_nls.h"

namespace vxlocfmt::text {

std::span<const CodeRange> ranges_of(CharClass k) {
    switch (k) {
        case CharClass::digit: return digitranges;
        case CharClass::lower: return lowerranges;
        case CharClass::upper: return upperranges;
        case CharClass::alpha: return alpharanges;
        case CharClass::print: return printranges;
        case CharClass::xdigit: return xdigitranges;
        case CharClass::punct: return punctranges;
        case CharClass::graph: return graphranges;
        case CharClass::cntrl: return controlranges;
        case CharClass::alnum: break;
    }
    return {};
}

std::uint32_t class_mask_of(CharClass k) {
    switch (k) {
        case CharClass::digit: return class_mask::digit;
        case CharClass::lower: return class_mask::lower;
        case CharClass::upper: return class_mask::upper;
        case CharClass::alpha: return class_mask::alpha;
        case CharClass::alnum: return class_mask::alnum;
        case CharClass::print: return class_mask::print;
        case CharClass::xdigit: return class_mask::xdigit;
        case CharClass::punct: return class_mask::punct;
        case CharClass::graph: return class_mask::graph;
        case CharClass::cntrl: return class_mask::cntrl;
    }
    return 0;
}

bool table_is_class(CharClass k, wchar c) {
    if (k == CharClass::alnum) return in_ranges(alpharanges, c) || in_ranges(digitranges, c);
    return in_ranges(ranges_of(k), c);
}

bool is_class(CharClass k, wchar c) {
    void* svc = kernel_nls::service();
    if (!svc) return table_is_class(k, c);
    const std::uint32_t mask = class_mask_of(k);
    if (c < 128) return (ansi_ccl[c][ccl_class_bits] & mask) != 0;
    return kernel_nls::classify(svc, c, mask);
}

bool is_space(wchar c) {
    // Linear on purpose: eleven ranges, and most questions are about ASCII.
    if (c > spaceranges[std::size(spaceranges) - 1].high) return false;
    for (const CodeRange& r : spaceranges) {
        if (c < r.low) return false;
        if (c <= r.high) return true;
    }
    return false;
}

}  // namespace vxlocfmt::text

using vxlocfmt::status;
using vxlocfmt::wchar;

using vxlocfmt::text::CharClass;
using vxlocfmt::text::is_class;

VX_EXPORT std::int32_t vxnlsisdigit(wchar c) { return is_class(CharClass::digit, c); }
VX_EXPORT std::int32_t vxnlsislower(wchar c) { return is_class(CharClass::lower, c); }
VX_EXPORT std::int32_t vxnlsisupper(wchar c) { return is_class(CharClass::upper, c); }
VX_EXPORT std::int32_t vxnlsisalpha(wchar c) { return is_class(CharClass::alpha, c); }
VX_EXPORT std::int32_t vxnlsisspace(wchar c) { return vxlocfmt::text::is_space(c); }
VX_EXPORT std::int32_t vxnlsisalnum(wchar c) { return is_class(CharClass::alnum, c); }
VX_EXPORT std::int32_t vxnlsisprint(wchar c) { return is_class(CharClass::print, c); }
VX_EXPORT std::int32_t vxnlsisxdigit(wchar c) { return is_class(CharClass::xdigit, c); }
VX_EXPORT std::int32_t vxnlsispunct(wchar c) { return is_class(CharClass::punct, c); }
VX_EXPORT std::int32_t vxnlsisgraph(wchar c) { return is_class(CharClass::graph, c); }
VX_EXPORT std::int32_t vxnlsiscntrl(wchar c) { return is_class(CharClass::cntrl, c); }
