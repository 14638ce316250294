/*
 * Values as text, as the CLI reads and writes them and the Python module reads missing-value
 * codes: decimal numbers and the codes ".", "._", ".A" to ".Z" in, and the shortest round-trip
 * decimal (or the missing code) out.
 *
 *   std::optional<double> v = parse_value(".A");       // the special missing value .A
 *   std::string text = value_text(1234.5);              // "1234.5"
 */
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vxhost {

std::optional<double> parse_value(std::string_view text);
// Appends the shortest decimal that reads back to the same double, or the missing code.
void append_value_text(std::string& out, double value);
std::string value_text(double value);
// The missing value of code k: 1 "._", 2 ".", 3 to 28 ".A" to ".Z".
double missing_value(int k);

}  // namespace vxhost
