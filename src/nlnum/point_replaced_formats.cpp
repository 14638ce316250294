// NLBEST, NLD, NLPCTN and NLPCTP: a classic renderer, then the locale's decimal point in place
// of the first "." (a one-character point other than "." only). The classic renderer checks
// its own width and decimals; these functions check nothing.
#include <algorithm>

#include "classic/numeric_formats.h"
#include "frame/field.h"
#include "frame/instance.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"

namespace vxlocfmt::nlnum {
namespace {

template <format_fn classic>
status point_replaced(FmtCall& call) {
    const Instance* instance = find_instance(call);
    if (!instance) return st::instance_not_found;
    if (!call.property_cache && locale::fill_nlfmt_properties(call, *instance) != st::ok) {
        star_fill(call);
        return st::ok;
    }
    classic(&call, nullptr);
    const std::u32string_view point = locale::property(call, locale::prop::decimal_point);
    if (point.size() != 1 || point[0] == U'.') return st::ok;
    const OutputField field = OutputField::of(call);
    wchar* cells = field.data();
    const std::int32_t n = std::clamp(call.produced, 0, field.stored());
    if (wchar* dot = std::find(cells, cells + n, U'.'); dot != cells + n) *dot = point[0];
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt::nlnum

using namespace vxlocfmt;

VX_EXPORT status vxfmtnlbest(FmtCall* call, void*) { return nlnum::point_replaced<vxfmtzfmbest>(*call); }
VX_EXPORT status vxfmtnld(FmtCall* call, void*) { return nlnum::point_replaced<vxfmtzfmd>(*call); }
VX_EXPORT status vxfmtnlpctn(FmtCall* call, void*) { return nlnum::point_replaced<vxfmtzfmpercentn>(*call); }
VX_EXPORT status vxfmtnlpctp(FmtCall* call, void*) { return nlnum::point_replaced<vxfmtzfmpercent>(*call); }
