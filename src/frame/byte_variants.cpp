// The `_b` variant of every format: the shared byte wrapper around the wide format, with the
// row's alignment letter; a format that answers its common cases in bytes itself (direct_bytes)
// is asked first, then, for the rows below, wide_answer_in_bytes.
#include "frame/byte_output.h"
#include "nldate/byte_answers.h"
#include "nlnum/number_bytes.h"

#include <string_view>

namespace {
// Rows answered by wide_answer_in_bytes: the NL date, datetime and time formats, run wide (byte
// mode only picks among their candidate texts)...
constexpr bool picks_candidates(std::string_view name) {
    return name.starts_with("NLDATE") || name.starts_with("NLDATM") || name.starts_with("NLTIM");
}
// ...and the number, percent and money formats without a currency of their own, run in byte
// mode. The NLMNI and NLMNL rows stay on the wrapper.
constexpr bool justified_by_bytes(std::string_view name) {
    constexpr std::string_view numbers[] = {"NLBEST", "NLD",    "NLMNY",  "NLMNYI", "NLNUM",
                                            "NLNUMI", "NLPCT",  "NLPCTI", "NLPCTN", "NLPCTP"};
    for (const std::string_view n : numbers)
        if (name == n) return true;
    return false;
}
}  // namespace

#define VX_IN(name, fn, minw, maxw, defw, maxd, defd)
#define VX_FMT(name, fn, minw, maxw, defw, maxd, defd, xw, align)                          \
    extern "C" vxlocfmt::status fn(vxlocfmt::FmtCall*, void*);                               \
    VX_EXPORT vxlocfmt::status fn##_b(vxlocfmt::FmtCall* call, vxlocfmt::FmtCall* out, void* extra_word) { \
        if constexpr (vxlocfmt::direct_bytes<fn>::offered) {                                   \
            vxlocfmt::status result = 0;                                                        \
            if (vxlocfmt::direct_bytes<fn>::answer(call, out ? out : call, &result)) return result; \
        }                                                                                       \
        if constexpr (picks_candidates(name) || justified_by_bytes(name)) {                     \
            constexpr bool byte_mode_off = picks_candidates(name);                              \
            vxlocfmt::status result = 0;                                                        \
            if (vxlocfmt::wide_answer_in_bytes(call, out ? out : call, extra_word, fn, byte_mode_off, &result)) \
                return result;                                                                  \
        }                                                                                       \
        return vxfmtnlbyte(call, out, extra_word, align, fn);                                  \
    }
#include "frame/registry_rows.inc"
