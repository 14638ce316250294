// @NLSTRMON: a month name of the locale to its number 1 to 12. The abbreviated stand-alone names
// are searched before the wide ones, and a text shorter than a name matches the name's
// beginning ("Mar" is March); a text that is no month's name reads as the missing value with
// status 0.
#include <algorithm>
#include <string_view>

#include "calendar/missing_value.h"
#include "frame/instance.h"
#include "frame/prologue.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "text/wide_strings.h"

namespace vxlocfmt::dateread {
namespace {

namespace prop = locale::prop;

// The first `n` characters of the text against a name of the month group (the kernel's equality
// service: the same code points).
double month_number(const PropertyCache& properties, std::u32string_view text) {
    for (const std::size_t first : {prop::month_abbrev_standalone, prop::month_wide_standalone})
        for (std::size_t m = 0; m < 12; ++m) {
            const std::u32string_view name = locale::property_text(properties, first + m);
            if (name.empty()) continue;  // an empty name would match every text
            const std::size_t n = std::min(name.size(), text.size());
            if (text.substr(0, n) == name.substr(0, n)) return static_cast<double>(m + 1);
        }
    return calendar::missing_value();
}

status month_name_informat(FmtCall& call) {
    std::u32string_view text;
    if (call.input && call.input_length > 0)
        text = {static_cast<const wchar*>(call.input), static_cast<std::size_t>(call.input_length)};
    // Here the trailing blanks go before the text limit applies.
    text = text.substr(0, text::strip_trailing_blanks(text));
    text = text.substr(0, static_cast<std::size_t>(std::max(0, call.text_limit)));
    Instance* instance = find_instance(call);
    if (!instance) return st::instance_not_found;
    if (status code = check_limits(call, registry::limits_of(U"@NLSTRMON"))) return code;
    auto* result = static_cast<double*>(call.output);
    if (!result) return st::ok;
    if (!call.property_cache && locale::fill_nlfmt_properties(call, *instance) != st::ok) {
        *result = calendar::missing_value();
        return st::ok;
    }
    *result = text.empty() ? calendar::missing_value() : month_number(*call.property_cache, text);
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt::dateread

VX_EXPORT vxlocfmt::status vxfmtnlstrmoni(vxlocfmt::FmtCall* call, void*) {
    return vxlocfmt::dateread::month_name_informat(*call);
}
