#include "output.h"

#include "text_convert.h"

namespace vxcli {

void Output::append_utf8(std::u32string_view text) {
    for (char32_t c : text) {
        if (c < 0x80) buffer_ += static_cast<char>(c);
        else vxhost::append_utf8(buffer_, c);
    }
}

}  // namespace vxcli
