/*
 * The kernel's locale data: for every locale the host knows, one raw data block of 189 counted
 * strings (from byte 18,624, 162 bytes each: a 16-bit byte count, then up to 160 bytes of ASCII
 * text in which other characters are written "<Uxxxx>"). The locales and their texts come from
 * host/locale_data.txt, generated from ICU by tools/locale_data and embedded in the host at
 * build time; a block is built on first use and kept for the life of the process.
 *
 *   std::string id = vxhost::canonical_locale("de-DE");        // "de_DE"; empty if unknown
 *   const unsigned char* block = vxhost::locale_block(id);
 */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vxhost {

inline constexpr std::size_t locale_strings_offset = 18624;
inline constexpr std::size_t locale_string_stride = 162;
inline constexpr std::size_t locale_string_bytes = 160;
inline constexpr std::size_t locale_string_count = 189;
inline constexpr std::size_t locale_block_size = locale_strings_offset + locale_string_count * locale_string_stride;

// The host's id for a locale name ("de-DE", "de_DE", "DE_de", "sr-Latn-RS"; "zh-CN" gives
// "zh_Hans_CN", whose script is the likely one), or empty when unknown.
std::string canonical_locale(std::string_view name);
// A name as environments and databases write it, spelt as canonical_locale takes it:
// "pt_BR.UTF-8" and "de_DE@euro" lose their code set and modifier; "C" and "POSIX" are en_US_POSIX.
std::string environment_locale_spelling(std::string_view name);
// Every locale id the host knows, sorted; "root" and "en_US_POSIX" among them.
const std::vector<std::string>& locale_names();
// The block of a canonical id; null when unknown. The block lives as long as the process.
const unsigned char* locale_block(std::string_view canonical_id);
// The ICU version the data was generated from ("72.1"), read from the data file's first line.
std::string_view locale_data_icu_version();

}  // namespace vxhost
