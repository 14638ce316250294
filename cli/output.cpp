#include "output.h"

#include <unistd.h>

#include "text_convert.h"

namespace vxcli {

Output::Output() : line_by_line_(isatty(STDOUT_FILENO) != 0) {}

void Output::append_utf8(std::u32string_view text) {
    for (char32_t c : text) {
        if (c < 0x80) buffer_ += static_cast<char>(c);
        else vxhost::append_utf8(buffer_, c);
    }
}

}  // namespace vxcli
