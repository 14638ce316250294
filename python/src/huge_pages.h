/*
 * Huge pages under a large output column. NumPy asks for them for its own large arrays, but not
 * for the zero-filled ones its text arrays are (NumPy 1.24): there, the first touch of each 4 KiB
 * page of a fresh column costs more than the library's call that fills it. With transparent huge
 * pages on ("always" or "madvise"), the kernel then faults in 2 MiB at a time; elsewhere this does
 * nothing.
 *
 *   py::array column = ...;                       // fresh, not yet written
 *   vxpy::advise_huge_pages(column.mutable_data(), column.nbytes());
 */
#pragma once

#include <cstddef>

namespace vxpy {

// Below this a column has too few pages to repay the system call (NumPy's own threshold).
constexpr std::size_t huge_page_advice_min_bytes = std::size_t{4} << 20;

// Advice only: the pages inside [data, data + bytes); the memory and its contents are unchanged.
void advise_huge_pages(void* data, std::size_t bytes);

}  // namespace vxpy
