/*
 * Writes a date, a time or a datetime in the shape of a template pattern (the reader's
 * directives in the output direction) and says what value the reader must give back: the
 * oracle of the generated tests.
 *
 *   shape s = write_shape(U"%P%d-%ub-%y", moment, rng);   // "04-MAR-20", value day 21978
 */
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace anydate_test {

// What the text is made from; fields a pattern does not write are left out of the value.
struct moment {
    std::int64_t year;  // [1950, 2049] for patterns with "%y", else [1582, 9999]
    int month, day;
    int hour, minute, second;
    int fraction_ms;       // written as ".mmm" after the seconds when not 0
    int zone_sign, zone_hour, zone_minute;
};

struct shape {
    std::u32string text;
    bool has_date = false, has_time = false;
    bool has_day = false, has_month = false;
    bool quarter = false;  // "%q" or "%r": the date is the quarter's first day
    bool hour = false, minute = false, second = false, fraction = false, zone = false;
    std::u32string literal_places;  // for each character of text: 'L' a pattern literal, else ' '
};

inline constexpr const char* month_names[] = {"JANUARY", "FEBRUARY", "MARCH",     "APRIL",   "MAY",      "JUNE",
                                               "JULY",    "AUGUST",   "SEPTEMBER", "OCTOBER", "NOVEMBER", "DECEMBER"};
inline constexpr const char* weekday_names[] = {"SUNDAY", "MONDAY", "TUESDAY", "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY"};

// Weekday 1 (Sunday) to 7 of a civil date (Sakamoto's method), independent of the library.
inline int weekday_of(std::int64_t y, int m, int d) {
    static const int t[] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (m < 3) y -= 1;
    return static_cast<int>((y + y / 4 - y / 100 + y / 400 + t[m - 1] + d) % 7) + 1;
}

inline void put(shape& s, const std::string& text, bool literal = false) {
    for (char c : text) {
        s.text += static_cast<char32_t>(c);
        s.literal_places += literal ? U'L' : U' ';
    }
}

inline std::string digits(std::int64_t v, int width) {
    std::string s = std::to_string(v);
    while (static_cast<int>(s.size()) < width) s.insert(s.begin(), '0');
    return s;
}

inline std::string mixed_case(std::string word, std::mt19937_64& rng) {
    const auto pick = rng() % 3;  // upper, lower, capitalised
    for (std::size_t i = 0; i < word.size(); ++i)
        if (pick == 1 || (pick == 2 && i > 0)) word[i] = static_cast<char>(word[i] - 'A' + 'a');
    return word;
}

inline shape write_shape(std::u32string_view pattern, const moment& m, std::mt19937_64& rng) {
    shape s;
    const bool twelve_hour = pattern.find(U"%p") != std::u32string_view::npos;
    const bool has_fraction_room = pattern.find(U"%G") == std::u32string_view::npos;
    bool in_zone = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != U'%') {
            put(s, std::string(1, static_cast<char>(pattern[i])), true);
            continue;
        }
        ++i;
        while (i < pattern.size() && std::u32string_view(U"01xu.").find(pattern[i]) != std::u32string_view::npos) ++i;
        if (i >= pattern.size()) break;
        const int hour12 = m.hour % 12 == 0 ? 12 : m.hour % 12;
        switch (pattern[i]) {
        case U'P': break;
        case U'y': put(s, digits(m.year % 100, 2)); s.has_date = true; break;
        case U'Y': put(s, digits(m.year, 4)); s.has_date = true; break;
        case U'm': put(s, digits(m.month, 2)); s.has_month = true; break;
        case U'd': put(s, digits(m.day, 2)); s.has_day = true; break;
        case U'j': {
            int doy = m.day;
            for (int k = 1; k < m.month; ++k) {
                static const int len[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
                const bool leap = (m.year % 4 == 0 && m.year % 100 != 0) || (m.year % 400 == 0 && m.year % 4000 != 0);
                doy += len[k - 1] + (k == 2 && leap ? 1 : 0);
            }
            put(s, digits(doy, 3));
            s.has_day = s.has_month = true;
            break;
        }
        case U'q': put(s, std::to_string((m.month + 2) / 3)); s.quarter = true; break;
        case U'r': {
            static const char* roman[] = {"I", "II", "III", "IV"};
            put(s, (m.month + 2) / 3 == 4 && rng() % 2 ? "IIII" : roman[(m.month + 2) / 3 - 1]);
            s.quarter = true;
            break;
        }
        case U'b': put(s, mixed_case(std::string(month_names[m.month - 1]).substr(0, 3), rng)); s.has_month = true; break;
        case U'B': put(s, mixed_case(month_names[m.month - 1], rng)); s.has_month = true; break;
        case U'a': put(s, mixed_case(std::string(weekday_names[weekday_of(m.year, m.month, m.day) - 1]).substr(0, 3), rng)); break;
        case U'A': put(s, mixed_case(weekday_names[weekday_of(m.year, m.month, m.day) - 1], rng)); break;
        case U'c':
        case U'C': put(s, std::string(1, "/-: "[rng() % 4])); break;
        case U'p': put(s, m.hour < 12 ? "AM" : "PM"); break;
        case U'z': put(s, "UTC"); break;
        case U'G': put(s, m.zone_sign < 0 ? "-" : "+"); in_zone = s.zone = true; break;
        case U'H':
        case U'i':
        case U'I':
            put(s, digits(in_zone ? m.zone_hour : twelve_hour ? hour12 : m.hour, 2));
            s.has_time |= !in_zone;
            s.hour |= !in_zone;
            break;
        case U'M': put(s, digits(in_zone ? m.zone_minute : m.minute, 2)); s.has_time |= !in_zone; s.minute |= !in_zone; break;
        case U'S':
            put(s, digits(m.second, 2));
            if (m.fraction_ms && has_fraction_room) {
                put(s, ".");
                put(s, digits(m.fraction_ms, 3));
                s.fraction = true;
            }
            s.has_time = s.second = true;
            break;
        default: put(s, std::string(1, static_cast<char>(pattern[i]))); break;  // "%%": written as it stands
        }
    }
    return s;
}

}  // namespace anydate_test
