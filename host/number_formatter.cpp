// Not built yet beyond its contract: every mode answers "not implemented".
#include "number_formatter.h"

namespace vxhost {

extern "C" vxlocfmt::status format_number(void*, double, std::int32_t, std::int32_t, std::uint32_t,
                                          vxlocfmt::wchar*, std::int32_t, std::int32_t* length) {
    if (length) *length = 0;
    return vxlocfmt::st::not_implemented;
}

extern "C" vxlocfmt::status text_to_integer(void*, const vxlocfmt::wchar* text, std::int32_t length,
                                            std::int64_t* value) {
    if (!text || length <= 0 || length > 18) return 1;
    std::int64_t result = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        if (text[i] < U'0' || text[i] > U'9') return 1;
        result = result * 10 + (text[i] - U'0');
    }
    if (value) *value = result;
    return 0;
}

}  // namespace vxhost
