#include "bulk_input.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace vxcli {
namespace {

constexpr std::size_t read_size = 1 << 16;
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::size_t excerpt_bytes = 40;

bool input_waiting() {
    pollfd fd{STDIN_FILENO, POLLIN, 0};
    return poll(&fd, 1, 0) > 0;
}

}  // namespace

bool LineReader::fill() {
    if (ended_) return false;
    data_.erase(0, start_);
    start_ = 0;
    if (!input_waiting()) out_.flush();  // about to wait: what is written so far is seen now
    const std::size_t kept = data_.size();
    data_.resize(kept + read_size);
    ssize_t n;
    do n = ::read(STDIN_FILENO, data_.data() + kept, read_size);
    while (n < 0 && errno == EINTR);
    data_.resize(kept + static_cast<std::size_t>(n > 0 ? n : 0));
    ended_ = n <= 0;
    // The mark may arrive a byte at a time: decide once three bytes (or the end) are in.
    const std::string_view head(data_);
    if (first_ && (ended_ || head.size() >= byte_order_mark.size() || !byte_order_mark.starts_with(head))) {
        first_ = false;
        if (head.starts_with(byte_order_mark)) start_ = byte_order_mark.size();
    }
    return !ended_;
}

bool LineReader::next(std::string_view& line) {
    std::size_t searched = start_;
    for (;;) {
        const std::size_t nl = first_ ? std::string::npos : data_.find('\n', searched);
        if (nl != std::string::npos) {
            line = std::string_view(data_).substr(start_, nl - start_);
            start_ = nl + 1;
            return true;
        }
        const std::size_t unsearched = data_.size() - start_;  // kept at the front by fill()
        if (!fill()) {
            if (start_ >= data_.size()) return false;
            line = std::string_view(data_).substr(start_);  // a last line without '\n'
            start_ = data_.size();
            return true;
        }
        searched = std::max(start_, unsearched);
    }
}

std::string excerpt(std::string_view text) {
    // Appended piece by piece: "'" + a temporary trips GCC 12's -Wrestrict at -O3.
    std::string quoted = "'";
    if (text.size() <= excerpt_bytes) return quoted.append(text).append("'");
    std::size_t cut = excerpt_bytes;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;  // not inside a character
    return quoted.append(text.substr(0, cut)).append("...' (").append(std::to_string(text.size())).append(" bytes)");
}

}  // namespace vxcli
