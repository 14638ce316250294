/*
 * Bulk mode's input: the operands after SPEC, or the lines of stdin. A UTF-8 byte-order mark
 * before the first line and empty lines at the very end are not input; an empty line followed by
 * more input is handed on as an empty text (the command decides what it means). While waiting for
 * stdin the pending output is flushed, so `tail -f log | vxlocfmt read ANYDATE` shows each
 * result as its line arrives, yet a fast pipe is written in large blocks.
 *
 *   for_each_input(args, out, [&](std::string_view text, std::size_t line) { ... });
 */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "arguments.h"
#include "output.h"

namespace vxcli {

class LineReader {
public:
    explicit LineReader(Output& out) : out_(out) {}
    // The next line without its '\n' (a final '\r' is the caller's), or false at the end.
    bool next(std::string_view& line);

private:
    bool fill();  // false at the end of input
    Output& out_;
    std::string data_;
    std::size_t start_ = 0;
    bool first_ = true;
    bool ended_ = false;
};

// An offending text quoted for a message: 'text', or its first 40 bytes (cut between characters)
// as 'text...' (N bytes).
std::string excerpt(std::string_view text);

template <class Each>
void for_each_input(const Arguments& args, Output& out, Each each) {
    if (args.operands.size() > 1) {
        for (std::size_t i = 1; i < args.operands.size(); ++i) each(std::string_view(args.operands[i]), i);
        return;
    }
    LineReader reader(out);
    std::size_t number = 0;
    std::size_t blanks = 0;  // empty lines not handed on yet: only input after them makes them input
    std::string_view line;
    while (reader.next(line)) {
        ++number;
        if (line.empty() || line == "\r") {
            ++blanks;
            continue;
        }
        for (; blanks > 0; --blanks) each(std::string_view(), number - blanks);
        each(line, number);
    }
}

}  // namespace vxcli
