#include "nlnum/number_bytes.h"

#include <algorithm>

#include "calendar/missing_value.h"
#include "frame/instance.h"
#include "frame/kernel.h"
#include "frame/prologue.h"
#include "frame/session_bytes.h"
#include "locale/property_table.h"
#include "nlnum/number_renderer.h"
#include "nlnum/styled_bytes.h"

namespace vxlocfmt::nlnum {
namespace {

// The wrapper runs a format into this many wide cells for any width up to it, and the renderer
// passes that capacity to the kernel as the call's field length: asked alike here.
constexpr std::int32_t wrapper_cells = 256;

}  // namespace

// In byte mode the renderer's first attempt right-aligns its text by its bytes (number_renderer.cpp),
// so the wrapper converts `width` bytes: the blanks, then the text's. That is written here
// whenever the wrapper would write all of it: a field of at least `width` bytes, every cell with
// bytes of its own in the session (one a cell below the identity bound, or UTF-8), and a text the
// first attempt takes. The caller's record is only read.
bool number_bytes(FmtCall& call, FmtCall& out, const RenderedRow& row, status* result) {
    void* const transcoder = call.session_transcoder;
    const std::int32_t width = call.width;
    if (!transcoder || !call.byte_mode || width < 1 || width > zkfnum_max_width || out.width > wrapper_cells)
        return false;
    auto* const bytes = static_cast<unsigned char*>(out.output);
    if (!bytes || std::min(out.width, out.capacity) < width) return false;
    const wchar bound = session_bytes::identity_mask_bound(transcoder);
    if (bound <= U' ') return false;
    const SessionForm form{kernel::encoding_form(transcoder) == kernel::transcoder_form_utf8, bound};

    const PropertyCache* const table = call.property_cache;
    const Instance* const instance = find_instance(call);
    if (!table || !instance || check_limits(call, row.limits) != st::ok) return false;
    double value = *static_cast<const double*>(call.input);
    if (calendar::is_nan(value)) return false;
    const NumberConventions* const conventions = conventions_of(*table, row.key);
    if (!conventions || supported_flag(*table, row.key) == 0 || conventions->decimal_point[0] == 0) return false;
    void* const locale = instance->fixed_locale ? instance->fixed_locale : call.number_format;
    if (!locale) return false;
    // Zero stays as it is (minus zero keeps its sign bit), as the percent formats scale it.
    if (row.percent && value != 0) value *= 100;

    if (!first_attempt_bytes(locale, value, width, std::clamp(call.decimals, 0, width), wrapper_cells, *conventions,
                             form, bytes))
        return false;
    out.produced = width;
    *result = st::ok;
    return true;
}

}  // namespace vxlocfmt::nlnum
