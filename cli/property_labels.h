/*
 * What each of the 189 locale properties holds, in a few words, for `vxlocfmt locale NAME`.
 *
 *   property_label(71)    // "month name, wide, 1"
 *   property_label(28)    // "pattern: long date (%x)"
 */
#pragma once

#include <cstddef>
#include <string>

namespace vxcli {

std::string property_label(std::size_t number);

}  // namespace vxcli
