/*
 * The read loop the module runs with the interpreter's lock released: many texts through one
 * warm reader into doubles. (Formats write their columns with vxhost::Formatter::format_rows.)
 * Nothing here touches Python objects.
 *
 *   vxpy::ReadFailure failure = vxpy::read_texts(r, texts, 0, texts.ends.size(), values, true);
 */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "embed/reader.h"

namespace vxpy {

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
