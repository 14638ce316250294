/*
 * ICU date patterns translated into the library's %-directive language: each field becomes a
 * directive ("d" "%#d", "MMMM" "%B", "EEEE" "%A"), quoted text is copied, "%" becomes "%%", and a
 * field with no directive (an era, say) is dropped with the separator it leaves behind.
 *
 *   translate_pattern(u"EEEE, d. MMMM y", {'V', false});   // "%A, %#d. %B %Y"
 */
#pragma once

#include <unicode/unistr.h>

namespace locale_data {

struct PatternStyle {
    char week_letter;     // 'U', 'V' or 'W': the locale's week rule, for "w"
    bool calendar_years;  // year directives carry "+" (Buddhist, Republic of China, Japanese)
};

icu::UnicodeString translate_pattern(const icu::UnicodeString& pattern, PatternStyle style);

// The directive of one ICU field (letter repeated `count` times); empty when it has none.
icu::UnicodeString directive_for(char16_t letter, int count, PatternStyle style);

}  // namespace locale_data
