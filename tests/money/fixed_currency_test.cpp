// The 80 fixed-currency formats: the styled amount in byte mode, the plain rendering in wide
// mode (by design), the fallback order, the local symbol's escapes against the session encoding,
// the conventions fixed by an instance's first call, and the field bounds.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "calendar/missing_value.h"
#include "case_table.h"
#include "frame/kernel.h"
#include "kernel_object.h"
#include "locale/property_table.h"
#include "locale_data.h"
#include "locale_object.h"
#include "money_fixture.h"
#include "nlnum/currency_table.h"
#include "number_formatter.h"

namespace {

using money_test::World;
using vxlocfmt::wchar;
namespace prop = vxlocfmt::locale::prop;

// The kernel's plain rendering, right-aligned in the width: what every wide call writes.
std::string plain(double value, int width, int decimals) {
    wchar cells[64];
    std::int32_t length = 0;
    vxhost::format_number(nullptr, value, width, decimals, vxhost::mode_fixed, cells, 64, &length);
    return vxhost::to_utf8(std::u32string_view(cells, static_cast<std::size_t>(std::max(length, 0))));
}

TEST(FixedCurrency, EdgeCases) {
    for (const case_table::Row& row : case_table::read("money/fixed_currency_cases.tsv")) {
        SCOPED_TRACE(row.where());
        const double value = row[5] == "missing" ? vxlocfmt::calendar::missing_value() : row.number(5);
        World world;  // a fresh instance: the case's locale sets the conventions
        const auto r = world.format(row[0], row[1] == "-" ? "" : row[1], row.wide(2), row.integer(3), row.integer(4), value);
        EXPECT_EQ(r.code, 0u);
        EXPECT_EQ(r.text, row[6]);
    }
}

// A locale object whose data block is made by hand, with the host's number services.
struct HandmadeLocale : vxhost::KernelObject<64> {
    std::vector<unsigned char> block = std::vector<unsigned char>(vxhost::locale_block_size);
    HandmadeLocale() {
        words[vxlocfmt::kernel::locale_data_block_slot] = vxhost::fn_word(&serve);
        words[vxlocfmt::kernel::locale_number_format_slot] = vxhost::fn_word(&vxhost::format_number);
        words[vxlocfmt::kernel::locale_text_to_integer_slot] = vxhost::fn_word(&vxhost::text_to_integer);
    }
    HandmadeLocale& set(std::size_t n, std::string_view text) {
        unsigned char* slot = block.data() + vxhost::locale_strings_offset + n * vxhost::locale_string_stride;
        const auto count = static_cast<std::uint16_t>(text.size());
        std::memcpy(slot, &count, 2);
        std::memcpy(slot + 2, text.data(), text.size());
        return *this;
    }
    static vxlocfmt::status serve(void* object, std::int64_t, const unsigned char** out) {
        *out = vxhost::self<HandmadeLocale>(object).block.data();
        return 0;
    }
};

// Negatives in parentheses: positive amounts keep one trailing blank to line up, zero does not.
TEST(FixedCurrency, ParenthesisedNegatives) {
    HandmadeLocale locale;
    const std::pair<std::size_t, const char*> values[] = {
        {prop::currency_international, "USD"}, {prop::currency_local, "$"}, {prop::mon_decimal_point, "."},
        {prop::mon_thousands_sep, ","},        {prop::mon_grouping, "3"},   {prop::mon_negative_sign, "-"},
        {prop::mon_p_cs_precedes, "1"},        {prop::mon_p_sep_by_space, "0"}, {prop::mon_n_cs_precedes, "1"},
        {prop::mon_n_sep_by_space, "0"},       {prop::mon_p_sign_posn, "1"},    {prop::mon_n_sign_posn, "0"},
        {prop::frac_digits, "2"},              {prop::local_currency_key, "USD"}, {prop::international_currency_key, "USD"}};
    for (const auto& [n, text] : values) locale.set(n, text);

    World world;
    vxhost::Session& session = world.session("en_US", "UTF-8");
    session.call().number_format = &locale;
    session.call().property_cache = nullptr;
    const auto* row = world.library.find(U"NLMNIUSD");
    const std::pair<double, const char*> cases[] = {
        {1234.5, "USD1,234.50 "}, {-1234.5, "(USD1234.50)"}, {0, "     USD0.00"}, {-5, "   (USD5.00)"}};
    for (const auto& [value, expected] : cases) {
        const auto r = session.format(*row, 12, 2, value);
        EXPECT_EQ(r.bytes, std::string(expected)) << value;
    }
}

// The instance keeps the conventions of its first fixed-currency call, whatever locale comes later.
TEST(FixedCurrency, ConventionsFixedAtTheFirstCall) {
    World world;
    EXPECT_EQ(world.format("de_DE", "UTF-8", U"NLMNIUSD", 14, 2, 1234.5).text, "  1.234,50 USD");
    EXPECT_EQ(world.format("en_US", "UTF-8", U"NLMNIUSD", 14, 2, 1234.5).text, "  1.234,50 USD");
    EXPECT_EQ(world.format("en_US", "UTF-8", U"NLMNLGBP", 14, 2, 1234.5).text, "   1.234,50 £");
    World other;
    EXPECT_EQ(other.format("en_US", "UTF-8", U"NLMNIUSD", 14, 2, 1234.5).text, "   USD1,234.50");
}

// The row's local symbol with its escapes decoded, as the formats write it.
std::string decoded_symbol(const vxlocfmt::nlnum::MonetaryRow& row) {
    std::u32string out;
    const std::u32string_view s = row.currency_symbol;
    for (std::size_t i = 0; i < s.size();) {
        if (s.substr(i, 2) == U"<U") {
            out += static_cast<char32_t>(std::stoul(vxhost::to_utf8(s.substr(i + 2, 4)), nullptr, 16));
            i += 7;
        } else {
            out += s[i++];
        }
    }
    return vxhost::to_utf8(out);
}

void erase_all(std::string& s, const std::string& what) {
    if (what.empty()) return;
    for (std::size_t at; (at = s.find(what)) != std::string::npos;) s.erase(at, what.size());
}

// Every fixed-currency row in several locales, wide and byte mode: the wide text is the plain
// rendering; the byte text fills the width and reads back as the value (symbol, separators and
// signs taken off, the locale's point as "."), to the decimals it shows.
TEST(FixedCurrency, EveryRowInSeveralLocales) {
    const char* locales[] = {"en_US", "de_DE", "fr_CH", "ja_JP", "hi_IN", "ar_EG", "nl_NL", "sv_SE"};
    const double values[] = {0, 1234.5, -1234.5, 0.004, -98765432.1, 7e14};
    int styled = 0;
    for (const char* locale : locales) {
        World world;
        world.format(locale, "UTF-8", U"NLMNIUSD", 12, 2, 0);  // sets the conventions
        const vxlocfmt::PropertyCache& table = *world.session(locale, "UTF-8").call().property_cache;
        const auto text_of = [&](std::size_t n) { return vxhost::to_utf8(vxlocfmt::locale::property_text(table, n)); };
        const std::string point = text_of(prop::mon_decimal_point), sep = text_of(prop::mon_thousands_sep),
                          minus = text_of(prop::mon_negative_sign);
        for (const auto& row : vxlocfmt::nlnum::lconv_monetary) {
            for (const char* kind : {"NLMNI", "NLMNL"}) {
                const std::u32string name = vxhost::from_utf8(kind) + std::u32string(row.int_curr_symbol);
                if (!world.library.find(name)) continue;
                for (const double value : values) {
                    for (const int width : {12, 20, 32}) {
                        const std::string where = std::string(locale) + " " + vxhost::to_utf8(name) + std::to_string(width) +
                                                  " " + std::to_string(value);
                        const auto wide = world.format(locale, "", name, width, 2, value);
                        EXPECT_EQ(wide.text, plain(value, width, 2)) << where;
                        const auto bytes = world.format(locale, "UTF-8", name, width, 2, value);
                        ASSERT_EQ(bytes.text.size(), static_cast<std::size_t>(width)) << where << " [" << bytes.text << "]";
                        if (bytes.text == plain(value, width, 2)) continue;
                        ++styled;
                        std::string s = bytes.text;
                        const std::size_t symbol_at = s.find(decoded_symbol(row));
                        if (std::string(kind) == "NLMNL" && symbol_at != std::string::npos) s.erase(symbol_at, decoded_symbol(row).size());
                        else erase_all(s, vxhost::to_utf8(row.int_curr_symbol));
                        erase_all(s, sep);
                        const bool negative = s.find(minus) != std::string::npos || s.find('(') != std::string::npos;
                        erase_all(s, minus);
                        erase_all(s, "(");
                        erase_all(s, ")");
                        erase_all(s, " ");
                        if (const std::size_t at = s.find(point); at != std::string::npos) s = s.substr(0, at) + "." + s.substr(at + point.size());
                        char* end = nullptr;
                        const double read = std::strtod(s.c_str(), &end);
                        ASSERT_EQ(*end, '\0') << where << " [" << bytes.text << "] left " << s;
                        const std::size_t dot = s.find('.');
                        const int shown = dot == std::string::npos ? 0 : static_cast<int>(s.size() - dot - 1);
                        EXPECT_NEAR(negative ? -read : read, value, 0.5 * std::pow(10.0, -shown) * 1.0000001) << where;
                    }
                }
            }
        }
    }
    EXPECT_GT(styled, 3000);  // most of the 80 x 6 x 3 x 8 byte calls are styled
}

// Widths 8 to 32 (and capacities below the width): nothing is written outside min(width,
// capacity), in wide and in byte mode; the produced length is the width.
TEST(FixedCurrency, WidthSweepKeepsTheGuards) {
    constexpr int guard = 8;
    for (const char* locale : {"en_US", "de_DE", "hi_IN"}) {
        World world;
        for (const char* encoding : {"", "UTF-8"}) {
            vxhost::Session& session = world.session(locale, encoding);
            for (const char32_t* name : {U"NLMNIUSD", U"NLMNLEUR", U"NLMNLILS"}) {
                const vxlocfmt::FuncInfo& row = *world.library.find(name);
                for (int width = 8; width <= 32; ++width) {
                    for (const int capacity : {width, width - 3}) {
                        for (const double value : {0.0, -1.5, 1234567.891, -98765432109.25, 1e20}) {
                            vxlocfmt::FmtCall& call = session.call();
                            call.byte_mode = *encoding != 0;
                            const std::size_t cell = call.byte_mode ? 1 : sizeof(wchar);  // bytes per output cell
                            std::vector<unsigned char> out(static_cast<std::size_t>(width + 2 * guard) * cell, '~');
                            call.width = width;
                            call.decimals = 2;
                            call.input = &value;
                            call.capacity = capacity;
                            call.output = out.data() + guard * cell;
                            const vxlocfmt::status code =
                                call.byte_mode ? row.byte_function(&call, nullptr, nullptr) : row.function(&call, nullptr);
                            EXPECT_TRUE(code == 0 || capacity < width) << locale << width;
                            const std::size_t begin = guard * cell, end = static_cast<std::size_t>(guard + capacity) * cell;
                            for (std::size_t i = 0; i < out.size(); ++i)
                                ASSERT_TRUE(out[i] == '~' || (i >= begin && i < end)) << locale << " " << encoding << width << " at " << i;
                            EXPECT_EQ(call.produced, call.byte_mode ? capacity : width);
                        }
                    }
                }
            }
        }
    }
}

}  // namespace
