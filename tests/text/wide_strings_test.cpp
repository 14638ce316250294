// Wide strings: each exported function over its null, empty and negative-length cases and its
// deliberate quirks; justify and the blank-padded ordering also as properties of random texts.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "nls_service.h"
#include "text_convert.h"
#include "text/text_exports.h"
#include "text/wide_strings.h"
#include "text_fixtures.h"

namespace vxlocfmt::text {
namespace {

using testing::use_service;
std::int64_t len(std::u32string_view s) { return std::ssize(s); }

TEST(WideSearch, Cases) {
    using Fn = std::int64_t (*)(const wchar*, std::int64_t, const wchar*, std::int64_t);
    const Fn pos = +[](const wchar* s, std::int64_t n, const wchar* c, std::int64_t) { return vxzspos(s, n, *c); };
    const Fn not_ = +[](const wchar* s, std::int64_t n, const wchar* c, std::int64_t) { return vxzsnot(s, n, *c); };
    const wchar* digits = U"0123456789";
    const struct {
        Fn fn;
        const wchar* s;
        std::int64_t n;
        const wchar* key;
        std::int64_t key_n, want;
    } cases[] = {
        {pos, U"abcabc", 6, U"c", 1, 2},  {pos, U"abcabc", 2, U"c", 1, -1},  // within the length only
        {pos, nullptr, 3, U"a", 1, -1},   {pos, U"abc", -1, U"a", 1, -1},    // null or below 1: empty, -1 ...
        {not_, U"aaab", 4, U"a", 1, 3},   {not_, U"aaaa", 4, U"a", 1, -1},   {not_, nullptr, 3, U"a", 1, 0},  // ... 0 here
        {vxzsndx, U"hello world", 11, U"world", 5, 6},   {vxzsndx, U"hello world", 10, U"world", 5, -1},
        {vxzsndx, U"aaab", 4, U"aab", 3, 1},             {vxzsndx, U"", 0, U"", 0, 0},  // empty pattern: 0
        {vxzsndx, U"abc", 3, nullptr, -5, 0},            {vxzsndx, U"abc", 3, nullptr, 2, -1},
        {vxzsndx, U"abc", 3, U"a", -1, -1},              {vxzsndx, nullptr, 5, U"a", 1, -1},
        {vxzsver, U"123a5", 5, digits, 10, 3},           {vxzsver, U"12345", 5, digits, 10, -1},
        {vxzsver, U"", 0, digits, 10, -1},               {vxzsver, U"123", 3, nullptr, 4, 0},  // empty set: 0
        {vxzsver, U"123", 3, digits, 0x10000000A, -1},   {vxzsver, U"123", 3, digits, 0x100000000, 0},  // 32 bits
    };
    for (const auto& c : cases) EXPECT_EQ(c.fn(c.s, c.n, c.key, c.key_n), c.want) << (&c - cases);
}

TEST(WideEdit, TranslateAndStrip) {
    std::u32string s = U"a-b_c-a";
    EXPECT_EQ(vxzsrns(s.data(), len(s), U"+ .", U"-_-", 3), 0u);  // the first from[k] decides
    vxzsrns(s.data(), 3, U"X", U"a", 1);
    vxzsrns(s.data(), -1, U"Y", U"X", 1), vxzsrns(s.data(), len(s), U"Y", U"X", 0);
    vxzsrns(s.data(), len(s), nullptr, U"X", 1), vxzsrns(nullptr, 4, U"Y", U"X", 1);
    EXPECT_EQ(s, U"X+b c+a");

    const std::tuple<std::u32string_view, std::int64_t, std::int64_t> cases[] = {  // text, mode 0, mode 2
        {U"ab  ", 2, 2}, {U"    ", 0, 0}, {U" a b ", 4, 4}, {U"ab\t\u200B", 4, 4},  // tab, zero width: no spaces
        {U"ab\u00A0\u3000 \u2007\u1680\u2028\u2029\u202F\u205F\u2000\u200A", 13, 2},
    };
    for (const auto& [text, mode0, mode2] : cases) {
        EXPECT_EQ(vxzstrp(text.data(), len(text)), mode0);
        EXPECT_EQ(vxzsStripBlanks(text.data(), len(text), 0), mode0);
        EXPECT_EQ(vxzsStripBlanks(text.data(), len(text), 2), mode2);
    }
    EXPECT_EQ(vxzstrp(nullptr, 5) + vxzstrp(U"ab", -1) + vxzsStripBlanks(nullptr, 5, 2), 0);
}

TEST(WideEdit, Move) {
    const struct {
        const wchar* src;
        std::int64_t src_n, dst_n;  // dst_n = -1 - n: n characters then a 0
        std::int64_t copied;
        std::u32string_view after;  // a destination of 8 '#'
    } cases[] = {
        {U"abc", 3, 6, 3, U"abc   ##"},        {U"abcdef", 6, 4, 4, U"abcd####"},
        {U"abc", 3, -1 - 5, 3, U"abc\0####"},  {U"abcdef", 6, -1 - 4, 4, U"abcd\0###"},
        {U"abc", 3, -1, 0, U"\0#######"},      {nullptr, 3, 5, 0, U"     ###"},  // null source: blanks, or a 0
        {nullptr, 3, -1 - 5, 0, U"\0#######"}, {U"abc", -2, 4, 0, U"    ####"},
    };
    for (const auto& c : cases) {
        std::u32string dst(8, U'#');
        EXPECT_EQ(vxzsmov(c.src, c.src_n, dst.data(), c.dst_n), c.copied) << c.dst_n;
        EXPECT_EQ(dst, std::u32string(c.after.data(), 8)) << c.dst_n;
    }
    EXPECT_EQ(vxzsmov(U"abc", 3, nullptr, 5), 0);
}

// Random texts in every alignment: the content survives, blanks fill the rest, and it starts at
// 0, at the end, halfway (an odd blank going right), or stays for any other letter.
TEST(WideEdit, JustifyProperties) {
    std::mt19937 rng(7);
    for (int round = 0; round < 3000; ++round) {
        std::u32string s(rng() % 20, U' ');
        for (auto& c : s) c = (rng() % 3) ? U' ' : U"xyé\U0001F600"[rng() % 4];
        const auto first = s.find_first_not_of(U' ');
        const bool blank = first == std::u32string::npos;
        const std::u32string content = blank ? U"" : s.substr(first, s.find_last_not_of(U' ') - first + 1);
        const std::size_t spare = s.size() - content.size();
        for (auto [align, start] : {std::pair{U'L', std::size_t{0}}, {U'l', 0}, {U'R', spare}, {U'r', spare},
                                    {U'C', spare / 2}, {U'c', spare / 2}, {U'X', blank ? 0 : first}}) {
            std::u32string t = s;
            std::int64_t length = -1, offset = -1;
            EXPECT_EQ(vxzsjls(t.data(), len(t), align, &length, &offset), 0u);
            ASSERT_EQ(t, blank ? s : std::u32string(start, U' ') + content + std::u32string(spare - start, U' '));
            ASSERT_EQ(offset, blank ? 0 : std::int64_t(start));  // all blank: 0 and 0
            ASSERT_EQ(length, len(content));
        }
    }
    std::int64_t length = -1, offset = -1;
    vxzsjls(nullptr, 5, U'L', &length, &offset);
    EXPECT_EQ(length | offset, 0);
}

TEST(WideCompare, EqualityAcrossTheLocalBuffers) {
    EXPECT_EQ(vxzsCompare(nullptr, 3, U"", 0) + vxzseqn(nullptr, 0, nullptr, -1), 2);
    // Both sides of the 256-character local buffers, with and without the service.
    for (void* service : {static_cast<void*>(nullptr), vxhost::nls_service()}) {
        use_service(service);
        for (std::size_t n : {255u, 256u, 1000u}) {
            std::u32string a, b;
            for (std::size_t i = 0; i < n; ++i) a += U"abcЖжΣσ"[i % 7], b += U"ABCжЖσΣ"[i % 7];
            EXPECT_EQ(vxzsCompareNorm(a.data(), len(a), b.data(), len(b)) + vxzseqn(a.data(), len(a), b.data(), len(b)), 2) << n;
            b[n - 1] = U'x';
            EXPECT_EQ(vxzsCompareNorm(a.data(), len(a), b.data(), len(b)) + vxzseqn(a.data(), len(a), b.data(), len(b)), 0) << n;
        }
    }
}

TEST(WideCompare, PaddedOrdering) {
    use_service(nullptr);
    const std::tuple<std::u32string_view, std::u32string_view, int> cases[] = {
        {U"abc", U"ABC  ", 1},  // case only; trailing blanks do not count
        {U"aBc", U"AbD", -2},   // a real difference outranks the case tie-break
        {U"ab", U"abc", -2},    {U"ab", U"ab\t", -2}, {U"", U"   ", 0}, {U"É", U"é", -1},
        {U"\U00010400", U"\U00010428", -2},  // no lower-casing beyond the basic plane
    };
    for (const auto& [a, b, want] : cases) EXPECT_EQ(vxzsncmp(a.data(), len(a), b.data(), len(b)), want) << vxhost::to_utf8(a);
    EXPECT_EQ(vxzsncmp(nullptr, 4, U"  ", 2), 0);
    EXPECT_EQ(vxzsncmp(U"a", -1, U"a", 1), -2);
    use_service(vxhost::nls_service());  // which maps U+10400, but not here
    EXPECT_EQ(vxzsncmp(U"\U00010400", 1, U"\U00010428", 1), -2);
    use_service(nullptr);

    // Random texts: antisymmetric; 0 exactly when equal once trailing blanks go; at most 1 away
    // from 0 exactly when also equal ignoring case, which the equality functions answer for texts
    // of one length.
    std::mt19937 rng(11);
    const std::u32string_view alphabet = U"aAbB éÉ";
    const auto random_text = [&] {
        std::u32string s(rng() % 6, U' ');
        for (auto& c : s) c = alphabet[rng() % alphabet.size()];
        return s;
    };
    for (int round = 0; round < 20000; ++round) {
        const std::u32string a = random_text(), b = random_text();
        const int ab = vxzsncmp(a.data(), len(a), b.data(), len(b));
        ASSERT_EQ(ab, -vxzsncmp(b.data(), len(b), a.data(), len(a)));
        const std::u32string_view sa(a.data(), strip_trailing_blanks(a)), sb(b.data(), strip_trailing_blanks(b));
        ASSERT_EQ(ab == 0, sa == sb);
        ASSERT_EQ(std::abs(ab) <= 1, equal_ignoring_case(sa, sb));
        ASSERT_EQ(vxzsCompare(a.data(), len(a), b.data(), len(b)), a == b);
        const int same = a.size() == b.size() && std::abs(ab) <= 1;
        ASSERT_EQ(vxzsCompareNorm(a.data(), len(a), b.data(), len(b)), same);
        ASSERT_EQ(vxzseqn(a.data(), len(a), b.data(), len(b)), same);
    }
}

}  // namespace
}  // namespace vxlocfmt::text
