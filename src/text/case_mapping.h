/*
 * Simple (one-to-one) case mapping of code points and of counted strings in place. Below U+10000
 * from the library's Unicode 9.0.0 tables; with the kernel's national-language service present,
 * only ASCII comes from the tables and everything else from the service.
 *
 *   wchar c = text::to_lower(U'Ä');          // U'ä'
 *   text::to_upper(std::span(buffer, n));     // in place
 */
#pragma once

#include <span>

#include "frame/abi.h"

namespace vxlocfmt::text {

// Both paths.
wchar to_lower(wchar c);
wchar to_upper(wchar c);
void to_lower(std::span<wchar> s);
void to_upper(std::span<wchar> s);

// The table path alone; code points from U+10000 upward are left unchanged.
wchar table_to_lower(wchar c);
wchar table_to_upper(wchar c);

}  // namespace vxlocfmt::text
