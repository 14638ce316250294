// NLNUM, NLNUMI, NLPCT and NLPCTI: the value (times 100 for the percentages) through the locale
// number renderer with the format's own conventions record; the classic COMMA or PERCENT when
// the locale has no such record. The four differ by one row of the table below.
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

struct number_format {
    RenderedRow rendered;    // limits, the key property of the conventions record, percent or not
    format_fn classic;       // the fallback, given the value as the caller passed it
    status classic_accepts;  // a status of the fallback besides 0 and "shortened" that is not a failure
};

// PERCENT also accepts 0x803fe80e; COMMA has already turned its own 0x803fe85b into 0.
constexpr status percent_tolerated = 0x803fe80eu;

constexpr number_format nlnum_format{nlnum_row, vxfmtzfmcomma, st::ok};
constexpr number_format nlnumi_format{nlnumi_row, vxfmtzfmcomma, st::ok};
constexpr number_format nlpct_format{nlpct_row, vxfmtzfmpercent, percent_tolerated};
constexpr number_format nlpcti_format{nlpcti_row, vxfmtzfmpercent, percent_tolerated};

// The classic fallback over a blank field; "*" when it fails as well.
void classic_fallback(FmtCall& call, const number_format& f) {
    OutputField::of(call).fill(U' ');
    const status code = f.classic(&call, nullptr);
    if (code != st::ok && code != st::number_shortened && code != f.classic_accepts) star_fill(call);
}

status format_number(FmtCall& call, const number_format& f) {
    const NumberPrologue prologue = number_prologue(call, f.rendered.limits);
    if (!prologue.table) return prologue.code;
    const Instance* instance = prologue.instance;
    const double value = *static_cast<const double*>(call.input);
    const PropertyCache& table = *call.property_cache;
    const NumberConventions* conventions = conventions_of(table, f.rendered.key);
    std::int32_t result = zkfnum_unsupported;
    if (conventions) {
        // Zero stays as it is (minus zero keeps its sign bit, and shows no sign).
        const double scaled = f.rendered.percent && value != 0 ? value * 100 : value;
        const void* const input = call.input;
        call.input = &scaled;
        result = zkfnum(supported_flag(table, f.rendered.key), call, *conventions, *instance);
        call.input = input;
    }
    if (result != zkfnum_done) classic_fallback(call, f);
    return st::ok;
}

}  // namespace
}  // namespace vxlocfmt::nlnum

using namespace vxlocfmt;

VX_EXPORT status vxfmtnlnum(FmtCall* call, void*) { return nlnum::format_number(*call, nlnum::nlnum_format); }
VX_EXPORT status vxfmtnlnumi(FmtCall* call, void*) { return nlnum::format_number(*call, nlnum::nlnumi_format); }
VX_EXPORT status vxfmtnlpct(FmtCall* call, void*) { return nlnum::format_number(*call, nlnum::nlpct_format); }
VX_EXPORT status vxfmtnlpcti(FmtCall* call, void*) { return nlnum::format_number(*call, nlnum::nlpcti_format); }
