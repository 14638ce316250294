// Precomputed display widths in session bytes: name sets, AM/PM and patterns.
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

#include "locale/display_widths.h"
#include "locale_fixture.h"

namespace {

using namespace locale_test;

// Name sets whose widest names differ from set to set; raw locale text.
Block named_block() {
    Block b;
    auto names = [&](std::size_t first, std::initializer_list<const char*> texts) {
        for (const char* t : texts) b.set(first++, t);
    };
    names(59, {"Jan", "Feb", "M<U00E4>r"});        // 4 bytes in UTF-8, 3 in Latin-1
    names(71, {"Januar", "September"});            // 9
    names(83, {"Sept."});                          // 5
    names(95, {"Septembers"});                     // 10
    names(107, {"Mon", "Di"});                     // 3
    names(114, {"Montag"});                        // 6
    names(121, {"M"});                             // 1
    names(128, {"Samstag"});                       // 7
    names(135, {"Q1"});                            // 2
    names(139, {"1. Quartal"});                    // 10
    names(143, {"Q.1"});                           // 3
    names(147, {"Erstes Quart"});                  // 12
    b.set(prop::am, "vorm.").set(prop::pm, "nachm.");  // 6
    b.set(prop::date_pattern, "%d.%m.%Y").set(prop::time_pattern, "%H:%M");
    return b;
}

TEST(DisplayWidths, NameSetsAndAmPm) {
    const Block b = named_block();
    const Table utf8_table(b, "UTF-8");
    const Table latin1_table(b, "ISO-8859-1");
    const struct {
        std::size_t first, count;
        std::uint32_t utf8, latin1;
    } sets[] = {
        {59, 12, 4, 3}, {71, 12, 9, 9},  {83, 12, 5, 5},  {95, 12, 10, 10},
        {107, 7, 3, 3}, {114, 7, 6, 6},  {121, 7, 1, 1},  {128, 7, 7, 7},
        {135, 4, 2, 2}, {139, 4, 10, 10}, {143, 4, 3, 3}, {147, 4, 12, 12},
        {151, 2, 6, 6},  // AM and PM share the wider width
    };
    for (const auto& s : sets) {
        for (std::size_t i = 0; i < s.count; ++i) {  // every name of the set, empty ones too
            EXPECT_EQ(utf8_table.width(s.first + i), s.utf8) << s.first + i;
            EXPECT_EQ(latin1_table.width(s.first + i), s.latin1) << s.first + i;
        }
    }
    EXPECT_EQ(utf8_table.width(prop::date_separator), 0u) << "other properties carry no width";
}

TEST(DisplayWidths, Patterns) {
    const Block b = named_block();
    const Table t(b, "UTF-8");
    const Table latin1(b, "ISO-8859-1");
    const Table wide(b, "");
    const struct {
        const char32_t* pattern;
        std::uint32_t utf8;
        const char* why;
    } cases[] = {
        {U"%d.%m.%Y", 10, "two-digit fields, four-digit year, literal bytes"},
        {U"%#d. %B %Y", 18, "the long flag does not change a number's width"},
        {U"%b|%#b", 10, "month sets 59 and, long, 83"},
        {U"%B|%#B|%C", 30, "sets 71 and 95; C as B"},
        {U"%a %A %#a %#A", 20, "weekday sets 107, 114, 121, 128"},
        {U"%f %F", 10, "f and F as a and A"},
        {U"%q %Q %#q %#Q", 30, "quarter sets 135, 139, 143, 147"},
        {U"%p", 6, "the AM/PM width"},
        {U"%T %z %Z %j %u %w", 26, "8, 5, 3, 3, 1, 1 and five blanks"},
        {U"%H%I%M%S%U%V%W%d%e%g%k%l%m%o%s%y", 32, "sixteen two-digit directives"},
        {U"%G", 4, "the week year"},
        {U"%+Y", 1, "'+' ends the directive; the Y counts as a plain byte (deliberate)"},
        {U"%%", 0, "the second '%' ends the directive and adds nothing"},
        {U"100%%", 3, "literal digits"},
        {U"abc%", 3, "a '%' at the end opens a directive that adds nothing"},
        {U"%E %N", 1, "unlisted letters add nothing; the blank counts"},
        {U"%?d", 1, "'?' ends the directive, the d is plain"},
        {U"%x", 10, "replaced by property 28"},
        {U"[%X]", 7, "replaced by property 53"},
        {U"%#x", 0, "only a bare %x is replaced; '#' then an unlisted letter"},
        {U"\u00E4%d", 4, "a two-byte literal in UTF-8"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vxlocfmt::locale::pattern_width(t.cache(), c.pattern, t.session_transcoder()), c.utf8)
            << c.why;
    }
    EXPECT_EQ(vxlocfmt::locale::pattern_width(latin1.cache(), U"\u00E4%d %b", latin1.session_transcoder()), 7u)
        << "one byte for the literal and 3 for set 59 in Latin-1";
    EXPECT_EQ(vxlocfmt::locale::pattern_width(wide.cache(), U"\u00E4\u4E00%d", nullptr), 4u)
        << "a wide session counts characters";

    // Stored for 28 to 57 only.
    EXPECT_EQ(t.width(prop::date_pattern), 10u);
    EXPECT_EQ(t.width(prop::time_pattern), 5u);
    EXPECT_EQ(t.width(prop::short_date_medium_time), 0u);
}

// Real names in a session that cannot hold them: widths count the character references.
TEST(DisplayWidths, RealNamesThroughReplacements) {
    const Table ru("ru_RU", "ISO-8859-1");
    const Table ru_utf8("ru_RU", "UTF-8");
    for (std::size_t first : {std::size_t{59}, std::size_t{71}, std::size_t{114}}) {
        const std::size_t count = first >= 107 ? 7 : 12;
        std::uint32_t widest = 0, widest_utf8 = 0;
        for (std::size_t i = 0; i < count; ++i) {
            widest = std::max<std::uint32_t>(widest, static_cast<std::uint32_t>(ru.text(first + i).size()));
            widest_utf8 = std::max<std::uint32_t>(widest_utf8, static_cast<std::uint32_t>(utf8(ru_utf8.text(first + i)).size()));
        }
        EXPECT_EQ(ru.width(first), widest) << first;  // references are ASCII: one byte each
        EXPECT_EQ(ru_utf8.width(first), widest_utf8) << first;
        EXPECT_NE(ru.text(first).find(U"&#"), std::u32string_view::npos);
    }
}

}  // namespace
