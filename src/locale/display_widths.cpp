#include "locale/display_widths.h"

#include <algorithm>

#include "frame/kernel.h"
#include "locale/property_numbers.h"

namespace vxlocfmt::locale {
namespace {

// The expanded pattern, like the expander's own working text: at most 2048 characters.
constexpr std::size_t expanded_cells = 2048;
// Session bytes of one converted text: up to 4 bytes a character (UTF-8, GB 18030); an encoding
// with longer sequences is measured on what fits.
constexpr std::int32_t converted_bytes = static_cast<std::int32_t>(expanded_cells * 4);

std::u32string_view text(const PropertyCache& cache, std::size_t n) {
    const Property& p = cache.properties[n];
    return {p.value, static_cast<std::size_t>(p.length)};
}

// Session bytes of a wide text; a null transcoder is a wide session, one cell a character.
struct Measure {
    void* session;
    unsigned char bytes[converted_bytes];

    std::int32_t convert(std::u32string_view s) {
        if (!session) return static_cast<std::int32_t>(s.size());
        std::int32_t produced = 0;
        kernel::convert(session, s.data(), static_cast<std::int32_t>(s.size() * sizeof(wchar)), bytes, converted_bytes,
                        &produced);
        return std::max(produced, 0);
    }
};

std::uint32_t width_of(const PropertyCache& cache, std::size_t first) { return cache.properties[first].width; }

// Pass 1 of the expander: "%x" and "%X" replaced by the date and time patterns.
std::size_t expand_locale_patterns(const PropertyCache& cache, std::u32string_view pattern, wchar* out) {
    std::size_t n = 0;
    auto append = [&](std::u32string_view s) {
        for (const wchar c : s)
            if (n < expanded_cells) out[n++] = c;
    };
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != U'%' || i + 1 == pattern.size()) {
            append(pattern.substr(i, 1));  // a '%' in the last position stays as it is
            continue;
        }
        const wchar next = pattern[++i];
        if (next == U'x') append(text(cache, prop::date_pattern));
        else if (next == U'X') append(text(cache, prop::time_pattern));
        else append(pattern.substr(i - 1, 2));
    }
    return n;
}

std::uint32_t directive_width(const PropertyCache& cache, unsigned char letter, bool long_form) {
    using namespace prop;
    switch (letter) {
    case 'a':
    case 'f': return width_of(cache, long_form ? weekday_abbrev_standalone : weekday_abbrev);
    case 'A':
    case 'F': return width_of(cache, long_form ? weekday_wide_standalone : weekday_wide);
    case 'b': return width_of(cache, long_form ? month_abbrev_standalone : month_abbrev);
    case 'B':
    case 'C': return width_of(cache, long_form ? month_wide_standalone : month_wide);
    case 'q': return width_of(cache, long_form ? quarter_abbrev_standalone : quarter_abbrev);
    case 'Q': return width_of(cache, long_form ? quarter_wide_standalone : quarter_wide);
    case 'p': return width_of(cache, am);
    case 'G':
    case 'Y': return 4;
    case 'T': return 8;
    case 'z': return 5;
    case 'Z':
    case 'j': return 3;
    case 'u':
    case 'w': return 1;
    case 'H': case 'I': case 'M': case 'S': case 'U': case 'V': case 'W': case 'd':
    case 'e': case 'g': case 'k': case 'l': case 'm': case 'o': case 's': case 'y': return 2;
    default: return 0;
    }
}

bool is_letter(unsigned char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

void set_name_widths(PropertyCache& cache, void* session_transcoder) {
    Measure measure{session_transcoder, {}};
    const std::size_t* const groups[3] = {MonNames, DayNames, QtrNames};
    for (std::size_t g = 0; g < 3; ++g) {
        for (std::size_t form = 0; form < 4; ++form) {
            const std::size_t first = groups[g][form];
            std::int32_t widest = 0;
            for (std::size_t i = 0; i < vnames[g]; ++i) widest = std::max(widest, measure.convert(text(cache, first + i)));
            for (std::size_t i = 0; i < vnames[g]; ++i) cache.properties[first + i].width = static_cast<std::uint32_t>(widest);
        }
    }
}

void set_am_pm_width(PropertyCache& cache, void* session_transcoder) {
    Measure measure{session_transcoder, {}};
    const auto widest = static_cast<std::uint32_t>(
        std::max(measure.convert(text(cache, prop::am)), measure.convert(text(cache, prop::pm))));
    cache.properties[prop::am].width = widest;
    cache.properties[prop::pm].width = widest;
}

std::uint32_t pattern_width(const PropertyCache& cache, std::u32string_view pattern, void* session_transcoder) {
    wchar expanded[expanded_cells];
    const std::size_t length = expand_locale_patterns(cache, pattern, expanded);
    Measure measure{session_transcoder, {}};
    std::size_t count = 0;
    const unsigned char* bytes = measure.bytes;
    unsigned char narrowed[expanded_cells];
    if (session_transcoder) {
        count = static_cast<std::size_t>(measure.convert({expanded, length}));
    } else {
        // A wide session: directives are ASCII, so any other character is one cell outside them.
        for (std::size_t i = 0; i < length; ++i) narrowed[i] = expanded[i] < 0x80 ? static_cast<unsigned char>(expanded[i]) : 0xFF;
        bytes = narrowed;
        count = length;
    }
    std::uint32_t width = 0;
    bool in_directive = false, long_form = false;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char c = bytes[i];
        if (!in_directive) {
            if (c == '%') {
                in_directive = true;
                long_form = false;
            } else {
                ++width;
            }
            continue;
        }
        if (c == '#') {
            long_form = true;
            continue;
        }
        // A listed letter adds its width; any other byte ends the directive and adds nothing
        // (so "%+Y" counts only the "Y" after it, as one plain byte: deliberate).
        if (is_letter(c)) width += directive_width(cache, c, long_form);
        in_directive = false;
    }
    return width;
}

void set_pattern_widths(PropertyCache& cache, void* session_transcoder) {
    for (std::size_t n = prop::first_pattern; n <= prop::last_pattern; ++n)
        cache.properties[n].width = pattern_width(cache, text(cache, n), session_transcoder);
}

}  // namespace vxlocfmt::locale
