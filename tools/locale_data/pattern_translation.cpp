#include "pattern_translation.h"

#include <unicode/uchar.h>

#include <vector>

namespace locale_data {
namespace {

using icu::UnicodeString;

struct Token {
    bool field;
    icu::UnicodeString text;  // a field's directive (empty: dropped), or literal text
};

bool is_pattern_letter(char16_t c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Literal text that only separates fields: blanks, punctuation, symbols and format marks.
bool is_separator(const icu::UnicodeString& text) {
    for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 c = text.char32At(i);
        const auto mask = U_GET_GC_MASK(c);
        if (!(mask & (U_GC_Z_MASK | U_GC_P_MASK | U_GC_S_MASK | U_GC_CF_MASK))) return false;
    }
    return true;
}

// "%Y" or "%y", with "+" for the calendar's own years.
UnicodeString year(char16_t letter, bool calendar_years) {
    UnicodeString d(u"%");
    if (calendar_years) d += u'+';
    return d += letter;
}

std::vector<Token> tokenize(const icu::UnicodeString& pattern, PatternStyle style) {
    std::vector<Token> tokens;
    auto literal = [&](const icu::UnicodeString& text) {
        if (!tokens.empty() && !tokens.back().field) tokens.back().text += text;
        else tokens.push_back({false, text});
    };
    const int32_t n = pattern.length();
    for (int32_t i = 0; i < n;) {
        const char16_t c = pattern[i];
        if (c == u'\'') {
            if (i + 1 < n && pattern[i + 1] == u'\'') {  // '' is one apostrophe
                literal(u"'");
                i += 2;
                continue;
            }
            icu::UnicodeString quoted;
            for (++i; i < n; ++i) {
                if (pattern[i] != u'\'') {
                    quoted += pattern[i];
                } else if (i + 1 < n && pattern[i + 1] == u'\'') {
                    quoted += u'\'';
                    ++i;
                } else {
                    break;
                }
            }
            ++i;  // the closing quote
            literal(quoted);
        } else if (is_pattern_letter(c)) {
            int count = 1;
            while (i + count < n && pattern[i + count] == c) ++count;
            tokens.push_back({true, directive_for(c, count, style)});
            i += count;
        } else {
            literal(icu::UnicodeString(c));
            ++i;
        }
    }
    return tokens;
}

}  // namespace

icu::UnicodeString directive_for(char16_t letter, int count, PatternStyle style) {
    const bool cy = style.calendar_years;
    switch (letter) {
    case u'y': return year(count == 2 ? u'y' : u'Y', cy);
    case u'u':
    case u'r': return year(u'Y', cy);  // extended and related Gregorian year
    case u'Y': return count == 2 ? u"%g" : u"%G";
    case u'M':
        return count == 1 ? u"%#m" : count == 2 ? u"%m" : count == 4 ? u"%B" : u"%b";  // narrow: abbreviated
    case u'L':
        return count == 1 ? u"%#m" : count == 2 ? u"%m" : count == 4 ? u"%#B" : u"%#b";
    case u'd': return count == 1 ? u"%#d" : u"%d";
    case u'D': return u"%j";
    case u'E': return count == 4 ? u"%A" : u"%a";  // narrow and short: abbreviated
    case u'e': return count < 3 ? u"" : count == 4 ? u"%A" : u"%a";  // numeric local weekday: none
    case u'c': return count < 3 ? u"" : count == 4 ? u"%#A" : u"%#a";
    case u'Q': return count == 3 ? u"%q" : count == 4 ? u"%Q" : u"";
    case u'q': return count == 3 ? u"%#q" : count == 4 ? u"%#Q" : u"";
    case u'w': {
        icu::UnicodeString d(u"%");
        d += static_cast<char16_t>(style.week_letter);
        return d;
    }
    case u'H': return count == 1 ? u"%#H" : u"%H";
    case u'h': return count == 1 ? u"%#I" : u"%I";
    case u'k': return u"%k";
    case u'K': return count == 1 ? u"%#l" : u"%l";
    case u'm': return u"%M";
    case u's': return u"%S";
    case u'a':
    case u'b':
    case u'B': return u"%p";
    case u'z':
    case u'Z':
    case u'O':
    case u'v':
    case u'V':
    case u'X':
    case u'x': return u"%z";
    default: return u"";  // G era, U cyclic year, W week of month, F, g, S fractions, A ...
    }
}

icu::UnicodeString translate_pattern(const icu::UnicodeString& pattern, PatternStyle style) {
    std::vector<Token> tokens = tokenize(pattern, style);
    bool dropped = false;
    for (std::size_t i = 0; i < tokens.size();) {
        if (!tokens[i].field || !tokens[i].text.isEmpty()) {
            ++i;
            continue;
        }
        // A dropped field takes one separator with it: the one before it, else the one after.
        dropped = true;
        tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i));
        if (i > 0 && !tokens[i - 1].field && is_separator(tokens[i - 1].text)) {
            tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i - 1));
            --i;
        } else if (i < tokens.size() && !tokens[i].field && is_separator(tokens[i].text)) {
            tokens.erase(tokens.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    icu::UnicodeString out;
    for (const Token& t : tokens) {
        if (t.field) {
            out += t.text;
            continue;
        }
        for (int32_t i = 0; i < t.text.length(); ++i) {
            if (t.text[i] == u'%') out += u'%';
            out += t.text[i];
        }
    }
    if (dropped) {
        // What a drop left at either end is blank space; a separator there is not.
        int32_t start = 0, end = out.length();
        while (start < end && u_isUWhiteSpace(out[start])) ++start;
        while (end > start && u_isUWhiteSpace(out[end - 1])) --end;
        out = UnicodeString(out, start, end - start);
    }
    return out;
}

}  // namespace locale_data
