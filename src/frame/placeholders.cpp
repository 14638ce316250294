// Formats and informats whose family is not built yet: they write nothing and say so.
#include "frame/abi.h"

#define VX_PLACEHOLDER(fn) \
    VX_EXPORT vxlocfmt::status fn(vxlocfmt::FmtCall*, void*) { return vxlocfmt::st::not_implemented; }
#include "frame/placeholders.inc"
