/*
 * The host's numeric reader: the object at word 154 of the national-language service whose slot
 * 50 reads a decimal number (reader, text, length, double out, work area). It answers with the
 * standard reader of src/classic/decimal_reader.h (correctly rounded; docs/reading.md).
 *
 *   void* reader = vxhost::numeric_reader();
 *   service.words[vxlocfmt::classic::nls_word_numeric_reader] = reader;
 */
#pragma once

#include <cstdint>

namespace vxhost {

void* numeric_reader();
// Texts read through the reader's slot since the process started (tests see the kernel path used).
std::int64_t numeric_reader_calls();

}  // namespace vxhost
