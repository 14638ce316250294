// The property table built from handcrafted locale text: escapes with their deliberate quirks, the
// currency placeholder, replacements of what the session encoding cannot hold, the table's
// lifecycle, the six NumberConventions records, and the directive rules of the pattern widths
// (the widths of real name sets are checked over every locale in locale_data_test.cpp).
#include "case_table.h"
#include "locale/display_widths.h"
#include "locale_fixture.h"

namespace {

using namespace locale_test;
using vxlocfmt::locale::pattern_width;

TEST(EscapeDecoding, Escapes) {
    for (const case_table::Row& row : case_table::read("locale/escape_cases.tsv")) {
        const Table t(Block().set(prop::locale_id, row[0]), row[1] == "-" ? "" : row[1]);
        ASSERT_EQ(t.code(), 0u);
        EXPECT_EQ(t.str(prop::locale_id), row[2]) << row.where();
        EXPECT_EQ(t.cache().properties[prop::locale_id].value[row.wide(2).size()], 0u) << row.where();
    }
}

// A session transcoder that holds only Latin-1 and, on failure, leaves the produced length as the
// caller preset it.
struct SilentLatin1 : vxhost::KernelObject<8> {
    SilentLatin1() { words[vxlocfmt::kernel::object_convert_slot] = vxhost::fn_word(&convert); }
    static status convert(void*, const void* source, std::int32_t length, void* dest, std::int32_t, std::int32_t* produced,
                          std::int64_t) {
        for (std::int32_t i = 0; i < length / 4; ++i) {
            const wchar c = static_cast<const wchar*>(source)[i];
            if (c > 0xFF) return vxhost::status_unmappable;
            static_cast<unsigned char*>(dest)[i] = static_cast<unsigned char>(c);
        }
        *produced = length / 4;
        return 0;
    }
};

// The room test is made with the byte count the failed one-character conversion reported (the
// host's transcoders report 0; the silent one leaves the preset 8), not with the digit count.
TEST(EscapeDecoding, RoomTestUsesTheReportedByteCount) {
    SilentLatin1 silent;
    for (auto [before, transcoder, reference] : {std::tuple{149, &silent, false},  // 8 + 149 + 3 = 160: no room
                                                 {148, &silent, true},             // 8 + 148 + 3 = 159
                                                 {153, nullptr, true}}) {          // 0 + 153 + 3, whatever 7 characters need
        const Table t(Block().set(prop::language, std::string(before, 'a') + "<U0436>"), "ISO-8859-1", transcoder);
        EXPECT_EQ(t.str(prop::language), std::string(before, 'a') + (reference ? "&#1078;" : "*")) << before;
    }
}

// Replacements can make a value longer than its raw text; it stops at 160 characters and the
// fields after the value stay intact. A byte count is read up to 160.
TEST(EscapeDecoding, ValuesStayInTheirCells) {
    std::string raw = "aaaa";
    for (int i = 0; i < 22; ++i) raw += "<U4E00>";  // 4 + 154 = 158 bytes
    Block block;
    block.set(prop::locale_number_key, raw).set(prop::script, std::string(160, 'x'), 300).set(prop::territory, "DEjunk", 2);
    const Table t(block, "ISO-8859-1");
    ASSERT_EQ(t.text(prop::locale_number_key).size(), vxlocfmt::property_value_cells);
    EXPECT_EQ(t.str(prop::locale_number_key).substr(0, 12), "aaaa&#19968;");
    EXPECT_EQ(t.str(prop::locale_number_key).substr(148), "&#19968;&#19");  // the 20th reference, cut at the wall
    EXPECT_EQ(t.cache().properties[prop::locale_number_key].value[160], 0u);
    const auto* const after = t.cache().properties[prop::locale_number_key].conventions;  // packed: read by value
    EXPECT_EQ(after, &t.cache().conventions[2]);
    EXPECT_EQ(t.text(prop::script).size(), 160u);
    EXPECT_EQ(t.str(prop::territory), "DE");
}

// A record's table is built in place of the last; a kernel that refuses the data gives its status
// and leaves the table allocated. (Without memory, tests/frame/prologue_test.cpp.)
TEST(PropertyTable, Lifecycle) {
    Block block;
    Table t(block.set(prop::pm, "nachm."), "UTF-8");
    for (std::uint32_t n = 0; n < vxlocfmt::property_count; ++n) EXPECT_EQ(t.cache().properties[n].number, n);
    vxlocfmt::PropertyCache* const first = t.call().property_cache;
    EXPECT_EQ(t.build(), 0u);
    EXPECT_EQ(t.call().property_cache, first);
    EXPECT_EQ(t.str(prop::pm), "nachm.");

    FakeLocale refusing;
    refusing.answer = 0x803f1234u;
    t.call().property_cache = nullptr;
    t.call().number_format = &refusing;
    EXPECT_EQ(t.build(), 0x803f1234u);
    EXPECT_NE(t.call().property_cache, nullptr);
}

template <std::size_t N>
std::string field(const wchar (&cells)[N]) { return to_utf8({cells, std::find(cells, cells + N, U'\0')}); }

// Every position property holds a different digit, so a swapped field shows.
Block monetary_and_numeric() {
    Block b;
    const char* const texts[] = {"CHF", "Fr.", ",", "<U2019>", "3;2", "+", "<U2212>", "4", "12", "1", "2", "3", "4", "5", "6",
                                 "CHF", "CHF", "<U066B>", "<U066C>", "3", "p", "<U200E>-", "7", "8", "9", "10", "11", "12"};
    for (std::size_t n = 0; n < std::size(texts); ++n) b.set(prop::currency_international + n, texts[n]);  // 155 to 182
    return b;
}

TEST(NumberConventions, FieldsFromTheirProperties) {
    const Block block = monetary_and_numeric();
    const Table t(block, "UTF-8");
    const struct {
        const char *symbol, *point, *separator, *positive, *negative;
        std::vector<std::int32_t> grouping;
        std::int32_t frac_digits;
        std::vector<std::int32_t> positions;  // the six in the record's field order
    } records[] = {
        // In NumIndex order. 164, 165, 168, 166, 167, 169 in record order; local fraction digits
        // from 163; "3;2" is each character minus '0', so ';' is 11.
        {"Fr.", ",", "\u2019", "+", "\u2212", {3, 11, 2, 0}, 12, {1, 2, 5, 3, 4, 6}},
        {"CHF", ",", "\u2019", "+", "\u2212", {3, 11, 2, 0}, 4, {1, 2, 5, 3, 4, 6}},
        // 177, 178, 181, 179, 180, 182; "10" parsed digit by digit; two characters fill a sign.
        {"", "\u066B", "\u066C", "p", "\u200E-", {3, 0}, 0, {7, 8, 11, 9, 10, 12}},
        {"", ".", ",", "p", "\u200E-", {3, 0}, 0, {7, 8, 11, 9, 10, 12}},
        {"%", "\u066B", "\u066C", "p", "\u200E-", {3, 0}, 0, {0, 0, 1, 0, 0, 1}},
        {"%", ".", ",", "p", "\u200E-", {3, 0}, 0, {0, 0, 1, 0, 0, 1}},
    };
    for (std::size_t i = 0; i < std::size(records); ++i) {
        const auto& r = records[i];
        const vxlocfmt::NumberConventions& c = t.conventions(vxlocfmt::locale::NumIndex[i]);
        EXPECT_EQ(&c, &t.cache().conventions[i]);
        EXPECT_EQ(std::vector<std::string>({field(c.currency_symbol), field(c.decimal_point), field(c.thousands_sep),
                                            field(c.positive_sign), field(c.negative_sign)}),
                  std::vector<std::string>({r.symbol, r.point, r.separator, r.positive, r.negative})) << i;
        EXPECT_EQ(std::vector(c.grouping, c.grouping + r.grouping.size()), r.grouping) << i;
        EXPECT_EQ(c.frac_digits, r.frac_digits) << i;
        const std::vector positions = {c.p_cs_precedes, c.p_sep_by_space, c.p_sign_posn,
                                       c.n_cs_precedes, c.n_sep_by_space, c.n_sign_posn};
        EXPECT_EQ(positions, r.positions) << i;
    }
}

// A local symbol longer than 4 characters containing "&#" gives way to the international one.
TEST(NumberConventions, ReferencedSymbolGivesWayToTheCode) {
    for (auto [symbol, encoding, local] : {std::tuple{"<U20BD>", "ISO-8859-1", "RUB"},  // "&#8381;" is 7 characters
                                           {"<U20BD>", "UTF-8", "\u20BD"},               // held: kept
                                           {"&#1;", "UTF-8", "&#1;"},                    // only 4 characters: kept, deliberately
                                           {"a&#12", "UTF-8", "RUB"}}) {                 // any text of 5 with "&#"
        Block b = monetary_and_numeric();
        const Table t(b.set(prop::currency_international, "RUB").set(prop::currency_local, symbol), encoding);
        EXPECT_EQ(field(t.conventions(prop::local_currency_key).currency_symbol), local) << symbol;
        EXPECT_EQ(field(t.conventions(prop::international_currency_key).currency_symbol), "RUB");
    }
}

TEST(DisplayWidths, Patterns) {
    Block b;  // one name in each set, the widest differing from set to set
    const std::pair<std::size_t, const char*> texts[] = {
        {59, "M<U00E4>r"},  {71, "September"},  {83, "Sept."},   {95, "Septembers"}, {107, "Mon"},
        {114, "Montag"},    {121, "M"},         {128, "Samstag"}, {135, "Q1"},        {139, "1. Quartal"},
        {143, "Q.1"},       {147, "Erstes Quart"}, {151, "vorm."}, {152, "nachm."},    {28, "%d.%m.%Y"}, {53, "%H:%M"}};
    for (auto [n, text] : texts) b.set(n, text);
    const Table t(b, "UTF-8"), latin1(b, "ISO-8859-1"), wide(b, "");
    const std::pair<const char32_t*, std::uint32_t> cases[] = {
        {U"%d.%m.%Y", 10},          {U"%#d. %B %Y", 18},           // the long flag leaves numbers alone
        {U"%b|%#b", 10},            {U"%B|%#B|%C", 30},            // sets 59, 83; 71, 95, and C as B
        {U"%a %A %#a %#A", 20},     {U"%f %F", 10},                // sets 107, 114, 121, 128; f, F as a, A
        {U"%q %Q %#q %#Q", 30},     {U"%p", 6},                    // sets 135, 139, 143, 147; AM/PM
        {U"%T %z %Z %j %u %w", 26}, {U"%H%I%M%S%U%V%W%d%e%g%k%l%m%o%s%y", 32}, {U"%G", 4},
        {U"%+Y", 1},                // '+' ends the directive; the Y counts as a plain byte (deliberate)
        {U"%%", 0},  {U"100%%", 3}, {U"abc%", 3},  {U"%E %N", 1}, {U"%?d", 1},  // unlisted: nothing
        {U"%x", 10}, {U"[%X]", 7},  {U"%#x", 0},   // only a bare %x or %X is replaced, by 28 or 53
        {U"\u00E4%d", 4},
    };
    for (auto [pattern, width] : cases)
        EXPECT_EQ(pattern_width(t.cache(), pattern, t.session_transcoder()), width) << to_utf8(pattern);
    EXPECT_EQ(pattern_width(latin1.cache(), U"\u00E4%d %b", latin1.session_transcoder()), 7u);
    EXPECT_EQ(pattern_width(wide.cache(), U"\u00E4\u4E00%d", nullptr), 4u);
    EXPECT_EQ(t.width(prop::date_pattern) + t.width(prop::time_pattern), 15u);  // stored for 28 to 57
}

}  // namespace
