// Locale text to property values: escapes with their deliberate quirks, the currency placeholder,
// and the replacement of characters the session encoding cannot hold.
#include <gtest/gtest.h>

#include <string>

#include "locale_fixture.h"

namespace {

using namespace locale_test;

struct Case {
    const char* raw;
    const char* encoding;  // the session's; "" for a wide session
    std::u32string expected;
    const char* why;
};

void expect_decoded(const Case& c) {
    Block block;
    block.set(prop::locale_id, c.raw);
    const Table t(block, c.encoding);
    ASSERT_EQ(t.code(), 0u);
    EXPECT_EQ(utf8(t.text(prop::locale_id)), utf8(c.expected)) << c.why << ": " << c.raw << " in " << c.encoding;
    EXPECT_EQ(t.cache().properties[prop::locale_id].value[t.text(prop::locale_id).size()], 0u) << c.why;
}

TEST(EscapeDecoding, Escapes) {
    const Case cases[] = {
        {"M<U00E4>rz", "UTF-8", U"März", "an escape in the middle"},
        {"x<U00E9>", "UTF-8", U"xé", "an escape that is exactly the last seven bytes"},
        {"ab<U00E9", "UTF-8", U"ab<U00E9", "an escape in the last six bytes is copied literally"},
        {"<U20ACxyz", "UTF-8", U"€yz", "the seventh byte is dropped unchecked"},
        {"<u00e9>", "UTF-8", U"é", "lower-case u and hexadecimal digits"},
        {"<UZZ41>", "UTF-8", U"A", "a byte that is not hexadecimal counts as 0"},
        {"<X0041>", "UTF-8", U"<X0041>", "only U opens an escape"},
        {"a<b", "UTF-8", U"a<b", "a lone less-than sign"},
        {"<U0041><U0042>", "UTF-8", U"AB", "escapes back to back"},
        {"<U00A4>", "UTF-8", U"\x01", "the general currency sign is the placeholder 1"},
        {"<U00A4>", "US-ASCII", U"\x01", "... whatever the session encoding"},
        {"100<U00A0><U00A4>", "", U"100\u00A0\x01", "a wide session holds everything"},
    };
    for (const Case& c : cases) expect_decoded(c);
}

TEST(EscapeDecoding, CharactersTheSessionCannotHold) {
    const Case cases[] = {
        {"a<U00A0>b", "US-ASCII", U"a b", "no-break space becomes a blank"},
        {"a<U00A0>b", "ISO-8859-1", U"a\u00A0b", "... only where the encoding lacks it"},
        {"<U0436>", "ISO-8859-1", U"&#1078;", "a character reference"},
        {"<U20ACx", "ISO-8859-1", U"&#8364;", "the seventh byte dropped before the reference"},
        {"<U20AC>", "windows-1252", U"€", "kept where the encoding has it"},
        {"<UD800>", "UTF-8", U"&#55296;", "a lone surrogate no encoding holds, five digits"},
        {"<U4E00>", "Shift_JIS", U"\u4E00", "a multi-byte encoding holds it"},
        {"<U0E01>", "Shift_JIS", U"&#3585;", "... or not"},
        {"%d<U00E9>", "US-ASCII", U"%d&#233;", "plain bytes are copied as they stand"},
    };
    for (const Case& c : cases) expect_decoded(c);
}

// The room test is made with the byte count the failed one-character conversion reported (the
// host's transcoders report 0; a transcoder that reports nothing leaves the preset 8), not with the
// digit count.
TEST(EscapeDecoding, RoomTestUsesTheReportedByteCount) {
    const struct {
        std::size_t before;  // plain bytes before the escape
        bool silent;         // the transcoder leaves the produced length at 8
        bool reference;      // "&#1078;" written, else "*"
    } cases[] = {
        {149, false, true},   // 0 + 149 + 3 < 160
        {149, true, false},   // 8 + 149 + 3 = 160: no room
        {148, true, true},    // 8 + 148 + 3 = 159
        {153, false, true},   // 0 + 153 + 3 = 156, whatever the 7 characters need
    };
    for (const auto& c : cases) {
        Block block;
        block.set(prop::language, std::string(c.before, 'a') + "<U0436>");
        SilentLatin1 silent;
        const auto t = c.silent ? std::make_unique<Table>(block, &silent) : std::make_unique<Table>(block, "ISO-8859-1");
        const std::u32string expected = std::u32string(c.before, U'a') + (c.reference ? U"&#1078;" : U"*");
        EXPECT_EQ(utf8(t->text(prop::language)), utf8(expected)) << c.before << (c.silent ? " silent" : "");
    }
}

// Replacements can make a value longer than its raw text; it stops at 160 characters and the
// fields after the value stay intact.
TEST(EscapeDecoding, ValueNeverPassesItsCells) {
    std::string raw = "aaaa";
    for (int i = 0; i < 22; ++i) raw += "<U4E00>";  // 4 + 154 = 158 bytes
    Block block;
    block.set(prop::locale_number_key, raw);
    const Table t(block, "ISO-8859-1");
    const std::u32string_view value = t.text(prop::locale_number_key);
    ASSERT_EQ(value.size(), vxlocfmt::property_value_cells);
    EXPECT_EQ(utf8(value.substr(0, 12)), "aaaa&#19968;");
    EXPECT_EQ(utf8(value.substr(148)), "&#19968;&#19");  // the 20th reference, cut at the wall
    EXPECT_EQ(t.cache().properties[prop::locale_number_key].value[160], 0u);
    // The pointer after the value was not overwritten (read by value: the record is packed).
    const vxlocfmt::NumberConventions* const after = t.cache().properties[prop::locale_number_key].conventions;
    EXPECT_EQ(after, &t.cache().conventions[2]);
}

TEST(EscapeDecoding, ByteCountsBeyondTheValue) {
    Block block;
    block.set_counted(prop::script, std::string(160, 'x'), 300);  // claims more than 160 bytes
    block.set_counted(prop::territory, "DEjunk", 2);
    const Table t(block, "UTF-8");
    EXPECT_EQ(t.text(prop::script).size(), 160u);
    EXPECT_EQ(utf8(t.text(prop::territory)), "DE");
    EXPECT_EQ(t.text(prop::calendar_type).size(), 0u);  // an empty value
}

TEST(PropertyTable, RecordsAndLifecycle) {
    Block block;
    block.set(prop::am, "vorm.").set(prop::pm, "nachm.");
    Table t(block, "UTF-8");
    ASSERT_EQ(t.code(), 0u);
    for (std::uint32_t n = 0; n < vxlocfmt::property_count; ++n) EXPECT_EQ(t.cache().properties[n].number, n);
    vxlocfmt::PropertyCache* const first = t.call().property_cache;
    EXPECT_EQ(t.build(), 0u);
    EXPECT_EQ(t.call().property_cache, first) << "a record's table is reused, not reallocated";
    EXPECT_EQ(utf8(t.text(prop::pm)), "nachm.");
}

TEST(PropertyTable, Failures) {
    Block block;
    {
        // No memory: the record is not touched.
        vxhost::fail_allocations_after(0);
        Table t(block, "UTF-8");
        vxhost::fail_allocations_after(-1);
        EXPECT_EQ(t.code(), vxlocfmt::st::no_memory);
        EXPECT_EQ(t.call().property_cache, nullptr);
    }
    {
        // The kernel refuses the data: its status, and the table stays allocated.
        FakeLocale refusing;
        refusing.answer = 0x803f1234u;
        Table t(block, "UTF-8");
        t.call().property_cache = nullptr;
        t.call().number_format = &refusing;
        EXPECT_EQ(t.build(), 0x803f1234u);
        EXPECT_NE(t.call().property_cache, nullptr);
    }
}

}  // namespace
