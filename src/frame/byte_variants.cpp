// The `_b` variant of every format: the shared byte wrapper around the wide format, with the
// row's alignment letter.
#include "frame/byte_output.h"

#define VX_IN(name, fn, minw, maxw, defw, maxd, defd)
#define VX_FMT(name, fn, minw, maxw, defw, maxd, defd, xw, align)                          \
    extern "C" vxlocfmt::status fn(vxlocfmt::FmtCall*, void*);                               \
    VX_EXPORT vxlocfmt::status fn##_b(vxlocfmt::FmtCall* call, vxlocfmt::FmtCall* out, void* extra_word) { \
        return vxfmtnlbyte(call, out, extra_word, align, fn);                                  \
    }
#include "frame/registry_rows.inc"
