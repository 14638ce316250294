#include "value_text.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace vxhost {
namespace {

constexpr std::uint64_t missing_bits = 0xFFFFFE0000000000ull;
constexpr int missing_byte_shift = 40;

std::string_view trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

}  // namespace

double missing_value(int k) {
    const std::uint64_t byte = static_cast<std::uint64_t>((256 - k) & 0xFF);
    const std::uint64_t bits = (missing_bits & ~(0xFFull << missing_byte_shift)) | (byte << missing_byte_shift);
    return std::bit_cast<double>(bits);
}

std::optional<double> parse_value(std::string_view text) {
    text = trim(text);
    if (text == ".") return missing_value(2);
    if (text == "._") return missing_value(1);
    if (text.size() == 2 && text[0] == '.' && text[1] >= 'A' && text[1] <= 'Z') return missing_value(3 + text[1] - 'A');
    if (text.size() == 2 && text[0] == '.' && text[1] >= 'a' && text[1] <= 'z') return missing_value(3 + text[1] - 'a');
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
    return value;
}

void append_value_text(std::string& out, double value) {
    if (std::isnan(value)) {
        const auto byte = static_cast<int>((std::bit_cast<std::uint64_t>(value) >> missing_byte_shift) & 0xFF);
        int k = (256 - byte) & 0xFF;
        if (k < 1 || k > 28) k = 2;
        out += '.';
        if (k == 1) out += '_';
        if (k >= 3) out += static_cast<char>('A' + k - 3);
        return;
    }
    char buffer[32];  // longest shortest-form double: "-2.2250738585072014e-308"
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, error == std::errc() ? end : buffer);
}

std::string value_text(double value) {
    std::string out;
    append_value_text(out, value);
    return out;
}

}  // namespace vxhost
