/*
 * The kernel's numeric reader as the classic informats reach it: word 27 of the kernel handle
 * (the national-language service), its word 154 (the reader object), the reader's slot 50.
 * The informats only prepare text; the reader decides what a number is. A host without the
 * service (or without a reader on it) gets the library's own copy of the standard reader.
 *
 *   double v;
 *   status s = classic::kernel_read_number(text, length, &v, extra);   // 0, or reader_refused
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/abi.h"

namespace vxlocfmt::classic {

inline constexpr std::size_t nls_word_numeric_reader = 154;  // word of the national-language service
inline constexpr std::size_t reader_read_slot = 50;          // (reader, text, length, out, work area)
inline constexpr std::size_t reader_words = 64;              // the least a reader table holds

extern "C" {
using numeric_read_fn = status (*)(void* reader, const wchar* text, std::int32_t length, double* out,
                                   void* work_area);
}

// The reader object on the kernel handle, or null.
void* kernel_numeric_reader();

// Reads through the kernel's reader (the caller's extra word is its work area), or through the
// library's copy of the standard reader when the kernel has none.
status kernel_read_number(const wchar* text, std::int32_t length, double* out, void* work_area);

}  // namespace vxlocfmt::classic
