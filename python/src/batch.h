/*
 * The loops the module runs with the interpreter's lock released: many values through one warm
 * formatter into fixed-width rows (NumPy's "<Uw" or "Sw" layout), many texts through one warm
 * reader into doubles. Nothing here touches Python objects.
 *
 *   vxpy::format_rows(f, values, n, rows, f.width());   // rows: n * width code points
 *   vxpy::ReadFailure failure = vxpy::read_texts(r, texts, 0, texts.ends.size(), values, true);
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "embed/formatter.h"
#include "embed/reader.h"

namespace vxpy {

// Each value's text as UTF-32 code points in a row of `row_width`, padded with zeros. Throws
// std::logic_error should a format write more than its field holds (never silently cut).
void format_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, char32_t* rows,
                 std::size_t row_width);
// The same in the session's encoding: each row `row_width` bytes.
void format_byte_rows(vxhost::Formatter& formatter, const double* values, std::size_t count, char* rows,
                      std::size_t row_width);

// Texts gathered from Python: UTF-8 back to back; a missing text (None, NaN) has no bytes and
// is marked in `missing`.
struct TextColumn {
    std::string bytes;
    std::vector<std::size_t> ends;  // one past each text's last byte
    std::vector<bool> missing;
    void add(const char* text, std::size_t length) {
        bytes.append(text, length);
        ends.push_back(bytes.size());
        missing.push_back(false);
    }
    void add_missing() {
        ends.push_back(bytes.size());
        missing.push_back(true);
    }
};

struct ReadFailure {
    std::int64_t position = -1;  // -1: every text was read (or was missing)
    std::uint32_t status = 0;
};

// Reads texts [begin, end) into values[begin, end) (the missing value where nothing was read);
// with `stop_at_failure`, stops at the first text the informat could not read. Missing texts
// read as missing and are no failure; nor is an empty text, read as missing as pandas does.
ReadFailure read_texts(vxhost::Reader& reader, const TextColumn& texts, std::size_t begin, std::size_t end,
                       double* values, bool stop_at_failure);

}  // namespace vxpy
