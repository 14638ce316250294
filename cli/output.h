/*
 * Buffered standard output for bulk mode: results are appended to a large buffer that is
 * written in one call when full, so a million lines cost a few hundred writes. On a terminal
 * each line is written as it ends.
 *
 *   Output out;
 *   out.append_utf8(text); out.newline();
 */
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace vxcli {

class Output {
public:
    Output();
    ~Output() { flush(); }
    void append(std::string_view bytes) {
        buffer_.append(bytes);
        if (buffer_.size() >= flush_at) flush();
    }
    void append_utf8(std::u32string_view text);
    std::string& raw() { return buffer_; }
    void newline() {
        buffer_ += '\n';
        if (line_by_line_ || buffer_.size() >= flush_at) flush();
    }
    void flush() {
        if (!buffer_.empty()) std::fwrite(buffer_.data(), 1, buffer_.size(), stdout);
        buffer_.clear();
        std::fflush(stdout);
    }

private:
    static constexpr std::size_t flush_at = 1 << 16;
    std::string buffer_;
    bool line_by_line_;
};

}  // namespace vxcli
