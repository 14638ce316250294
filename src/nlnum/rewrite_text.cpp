#include "nlnum/rewrite_text.h"

namespace vxlocfmt::nlnum {

status read_classic(FmtCall& call, const RewriteText& text, format_fn classic, void* extra) {
    const std::int32_t width = call.width, decimals = call.decimals, length = call.input_length, limit = call.text_limit;
    const void* input = call.input;
    call.input = text.view().data();
    call.width = call.input_length = call.text_limit = static_cast<std::int32_t>(text.size());
    if (!text.contains(U'.')) call.decimals = 0;
    const status code = classic(&call, extra);
    call.width = width;
    call.decimals = decimals;
    call.input = input;
    call.input_length = length;
    call.text_limit = limit;
    return code;
}

}  // namespace vxlocfmt::nlnum
