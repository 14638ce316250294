// NLMNY and NLMNYI: the amount through the locale number renderer with the locale's currency
// record (its own symbol for NLMNY, the ISO code for NLMNYI); the classic DOLLAR when the locale
// has no currency, "*" when that fails too.
#include "calendar/missing_value.h"
#include "classic/numeric_formats.h"
#include "frame/field.h"
#include "frame/instance.h"
#include "frame/prologue.h"
#include "frame/registry.h"
#include "locale/property_table.h"
#include "nlnum/number_bytes.h"
#include "nlnum/number_prologue.h"
#include "nlnum/number_renderer.h"

namespace vxlocfmt::nlnum {
namespace {

// The row of NLMNY keys the local symbol's record (170), NLMNYI's the international one's (171).
status format_money(FmtCall& call, const RenderedRow& f) {
    const NumberPrologue prologue = number_prologue(call, f.limits);
    if (!prologue.table) return prologue.code;
    const Instance* instance = prologue.instance;
    const PropertyCache& table = *call.property_cache;
    const NumberConventions* conventions = conventions_of(table, f.key);
    if (!conventions || zkfnum(supported_flag(table, f.key), call, *conventions, *instance) != zkfnum_done) {
        // A locale without a currency: DOLLAR over the field as it stands (no blanking first).
        const status code = vxfmtzfmdollar(&call, nullptr);
        if (code != st::ok && code != st::number_shortened) star_fill(call);
        call.produced = call.width;
    }
    // The renderer's own produced length stands: in byte mode it counts only the cells whose
    // conversion fills the width exactly.
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt::nlnum

using namespace vxlocfmt;

VX_EXPORT status vxfmtnlmny(FmtCall* call, void*) { return nlnum::format_money(*call, nlnum::nlmny_row); }
VX_EXPORT status vxfmtnlmnyi(FmtCall* call, void*) { return nlnum::format_money(*call, nlnum::nlmnyi_row); }
