// Write, then read back: every locale number, percent and money format written at its default
// width and at 32 with 0 to 4 decimals, in every locale with Latin digits, read back by the
// matching informat with the same width and decimals, must give the value rounded to those
// decimals. What does not is counted by the format rule that explains it (docs/nlread.md):
// the format showed stars, fewer decimals or "E" notation because the value did not fit. Any
// other difference fails. The 80 fixed-currency rows likewise, in byte mode, in twelve locales.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "library.h"
#include "locale/property_table.h"
#include "locale_data.h"
#include "nlnum/currency_table.h"
#include "session.h"
#include "text_convert.h"

namespace {

// No exact ties at 0 to 4 decimals: the kernel rounds half away from zero, printf to even.
constexpr double values[] = {0, 3.14159, -2.71828, 12.34567, -987.654321, 1234.56789, -54321.09876, 1234567.8912};

// The decimal text of v at d decimals (times 10^-scale) as the nearest double: an oracle
// independent of the library's renderer and reader.
double rounded(double v, int d, int scale) {
    char text[96];
    std::snprintf(text, sizeof text, "%.*fe-%d", d, v, scale);
    return std::strtod(text, nullptr);
}

enum class Outcome { round_trip, stars, fewer_decimals, e_notation, unexplained };
constexpr const char* outcome_names[] = {"round trip", "stars (nothing fits)", "fewer decimals (narrowed to fit)",
                                         "E notation (integer digits do not fit)", "unexplained"};

Outcome classify(const std::u32string& text, const vxhost::ReadResult& read, double v, int d, bool percent) {
    const double scaled = percent ? v * 100 : v;
    const int scale = percent ? 2 : 0;
    const bool ok = read.code == 0 && !std::isnan(read.value);
    if (ok && read.value == rounded(scaled, d, scale)) return Outcome::round_trip;
    if (text.find(U'*') != std::u32string::npos) return Outcome::stars;
    for (int k = d - 1; k >= 0; --k)
        if (ok && read.value == rounded(scaled, k, scale)) return Outcome::fewer_decimals;
    if (ok && text.find(U'E') != std::u32string::npos && std::fabs(read.value - v) <= 0.5 * std::fabs(v))
        return Outcome::e_notation;
    return Outcome::unexplained;
}

struct Tally {
    std::map<Outcome, long> counts;
    long total = 0;
    std::vector<std::string> unexplained;
    void add(Outcome o, const std::string& what) {
        ++counts[o];
        ++total;
        if (o == Outcome::unexplained && unexplained.size() < 20) unexplained.push_back(what);
    }
    void report(const std::string& name) const {
        std::cout << name << ": " << counts.at(Outcome::round_trip) << "/" << total << " round trip ("
                  << 100.0 * static_cast<double>(counts.at(Outcome::round_trip)) / static_cast<double>(total) << "%)";
        for (const auto& [o, n] : counts)
            if (o != Outcome::round_trip) std::cout << "; " << outcome_names[static_cast<int>(o)] << " " << n;
        std::cout << "\n";
        for (const std::string& u : unexplained) std::cout << "  unexplained: " << u << "\n";
    }
};

std::string describe(const std::string& locale, const std::string& name, int w, int d, double v,
                     const std::u32string& text, const vxhost::ReadResult& r) {
    char value[64];
    std::snprintf(value, sizeof value, "%.17g -> %.17g (status %u)", v, r.value, r.code);
    return locale + " " + name + std::to_string(w) + "." + std::to_string(d) + " \"" + vxhost::to_utf8(text) + "\" " + value;
}

const std::vector<std::string>& latin_locales() {
    static const std::vector<std::string> ids = [] {
        std::vector<std::string> out;
        vxhost::Library library;
        const vxlocfmt::FuncInfo& row = *library.find(U"NLNUM");
        for (const std::string& id : vxhost::locale_names()) {
            if (vxhost::canonical_locale(id) != id) continue;
            vxhost::Session session(library, {.locale = id});
            session.format(row, 6, 0, 0);  // builds the property table
            if (vxlocfmt::locale::property_text(*session.call().property_cache, 11) == U"latn") out.push_back(id);
        }
        return out;
    }();
    return ids;
}

struct Format {
    const char32_t* name;
    int default_width;
    bool percent;
};
constexpr Format formats[] = {{U"NLNUM", 6, false}, {U"NLNUMI", 6, false}, {U"NLPCT", 6, true},
                              {U"NLPCTI", 6, true}, {U"NLMNY", 9, false},  {U"NLMNYI", 9, false}};

constexpr const char* dozen_locales[] = {"en_US", "de_DE", "fr_FR", "de_CH", "ja_JP", "en_IN",
                                         "es_PA", "da_DK", "pl_PL", "pt_BR", "nl_NL", "he_IL"};

// Bytes of a session encoding as wide text (the two encodings these tests use).
std::u32string wide_of(const vxhost::FormatResult& r, const std::string& encoding) {
    if (encoding.empty()) return std::u32string(r.text);
    if (encoding == "UTF-8") return vxhost::from_utf8(r.bytes);
    std::u32string out;  // ISO-8859-1: a byte is its code point
    for (const char b : r.bytes) out.push_back(static_cast<unsigned char>(b));
    return out;
}

// The six formats and their informats in the given locales; encoding "" is a wide session.
long six_formats(const std::vector<std::string>& ids, const std::string& encoding, std::map<std::string, Tally>& tallies) {
    vxhost::Library library;
    long unexplained = 0;
    for (const std::string& id : ids) {
        vxhost::Session session(library, {.locale = id, .encoding = encoding});
        for (const Format& f : formats) {
            const vxlocfmt::FuncInfo& format = *library.find(f.name);
            const vxlocfmt::FuncInfo& informat = *library.find(U"@" + std::u32string(f.name));
            const std::string name = vxhost::to_utf8(f.name);
            for (const int w : {f.default_width, 32}) {
                Tally& tally = tallies[name + (w == 32 ? " width 32" : " default width")];
                for (int d = 0; d <= 4; ++d) {
                    for (const double v : values) {
                        const std::u32string text = wide_of(session.format(format, w, d, v), encoding);
                        const vxhost::ReadResult r = session.read(informat, w, d, text);
                        const Outcome o = classify(text, r, v, d, f.percent);
                        unexplained += o == Outcome::unexplained;
                        tally.add(o, describe(id, name, w, d, v, text, r));
                    }
                }
            }
        }
    }
    return unexplained;
}

TEST(RoundTrip, EveryLatinDigitLocale) {
    std::map<std::string, Tally> tallies;
    const long unexplained = six_formats(latin_locales(), "", tallies);
    std::cout << latin_locales().size() << " locales with Latin digits, wide session\n";
    for (const auto& [name, tally] : tallies) tally.report(name);
    EXPECT_EQ(unexplained, 0);
}

// In byte sessions the width counts bytes: the formats fit the field in bytes, and the
// informats take the characters whose bytes fit it. ISO-8859-1 has no U+202F: the property
// table writes its character reference, whose first two cells are the separator then.
TEST(RoundTrip, DozenLocalesInByteSessions) {
    const std::vector<std::string> ids(std::begin(dozen_locales), std::end(dozen_locales));
    for (const std::string encoding : {"UTF-8", "ISO-8859-1"}) {
        std::map<std::string, Tally> tallies;
        const long unexplained = six_formats(ids, encoding, tallies);
        std::cout << encoding << " session, " << ids.size() << " locales\n";
        for (const auto& [name, tally] : tallies) tally.report(name);
        EXPECT_EQ(unexplained, 0) << encoding;
    }
}

// The 80 fixed-currency rows, written in UTF-8 bytes (the styled text) and read back. Each
// locale gets its own instance: the monetary conventions are the first call's for its lifetime.
TEST(RoundTrip, FixedCurrencyRowsInByteMode) {
    std::map<std::string, Tally> tallies;
    long unexplained = 0;
    for (const char* id : dozen_locales) {
        vxhost::Library library;
        vxhost::Session session(library, {.locale = id, .encoding = "UTF-8"});
        for (const auto& row : vxlocfmt::nlnum::lconv_monetary) {
            for (const char32_t* kind : {U"NLMNI", U"NLMNL"}) {
                const std::u32string name = kind + std::u32string(row.int_curr_symbol);
                const vxlocfmt::FuncInfo* format = library.find(name);
                if (!format) continue;  // not one of the 40
                const vxlocfmt::FuncInfo& informat = *library.find(U"@" + name);
                for (const int w : {12, 32}) {
                    Tally& tally = tallies[vxhost::to_utf8(kind) + (w == 32 ? " width 32" : " width 12")];
                    for (int d = 0; d <= 4; ++d) {
                        for (const double v : values) {
                            const auto written = session.format(*format, w, d, v);
                            const std::u32string text = vxhost::from_utf8(written.bytes);
                            const vxhost::ReadResult r = session.read(informat, w, d, text);
                            const Outcome o = classify(text, r, v, d, false);
                            unexplained += o == Outcome::unexplained;
                            tally.add(o, describe(id, vxhost::to_utf8(name), w, d, v, text, r));
                        }
                    }
                }
            }
        }
    }
    for (const auto& [name, tally] : tallies) tally.report(name);
    EXPECT_EQ(unexplained, 0);
}

}  // namespace
