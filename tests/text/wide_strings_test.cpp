// Wide strings: each exported function over its null, empty and negative-length cases, the
// listed edge cases, and properties of justify and the blank-padded ordering over random texts.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "nls_service.h"
#include "text/text_exports.h"
#include "text/wide_strings.h"
#include "text_fixtures.h"

namespace vxlocfmt::text {
namespace {

using testing::ScopedKernelHandle;
std::int64_t len(std::u32string_view s) { return static_cast<std::int64_t>(s.size()); }

struct CharSearch {
    const wchar* s;
    std::int64_t n;
    wchar c;
    std::int64_t want;
};

TEST(WideSearch, Position) {
    const CharSearch cases[] = {
        {U"abcabc", 6, U'c', 2},
        {U"abcabc", 6, U'x', -1},
        {U"abcabc", 2, U'c', -1},  // only the first n count
        {U"abc", 0, U'a', -1},
        {U"abc", -1, U'a', -1},
        {nullptr, 3, U'a', -1},    // null: -1 ...
    };
    for (const auto& c : cases) EXPECT_EQ(vxzspos(c.s, c.n, c.c), c.want) << c.n;

    const CharSearch not_cases[] = {
        {U"aaab", 4, U'a', 3},
        {U"aaaa", 4, U'a', -1},
        {U"baaa", 4, U'a', 0},
        {U"abc", 0, U'a', 0},
        {U"abc", -2, U'a', 0},
        {nullptr, 3, U'a', 0},     // ... but 0 here: deliberate
    };
    for (const auto& c : not_cases) EXPECT_EQ(vxzsnot(c.s, c.n, c.c), c.want) << c.n;
}

TEST(WideSearch, Index) {
    const struct {
        const wchar* s;
        std::int64_t n;
        const wchar* p;
        std::int64_t pn;
        std::int64_t want;
    } cases[] = {
        {U"hello world", 11, U"world", 5, 6},
        {U"hello world", 11, U"o", 1, 4},
        {U"hello world", 11, U"worlds", 6, -1},
        {U"hello world", 10, U"world", 5, -1},   // the text ends before the match does
        {U"aaab", 4, U"aab", 3, 1},
        {U"abc", 3, U"abc", 3, 0},
        {U"ab", 2, U"abc", 3, -1},
        {U"", 0, U"", 0, 0},                     // empty pattern: 0 even in an empty text
        {nullptr, 0, U"x", 0, 0},
        {U"abc", 3, nullptr, -5, 0},             // null pattern below 1: empty
        {U"abc", 3, nullptr, 2, -1},
        {U"abc", 3, U"a", -1, -1},               // non-null pattern of negative length
        {U"", 0, U"a", 1, -1},
        {nullptr, 5, U"a", 1, -1},
        {U"abc", -3, U"a", 1, -1},
    };
    for (const auto& c : cases) EXPECT_EQ(vxzsndx(c.s, c.n, c.p, c.pn), c.want) << c.n << " " << c.pn;
}

TEST(WideSearch, Verify) {
    const struct {
        const wchar* s;
        std::int64_t n;
        const wchar* set;
        std::int64_t sn;
        std::int64_t want;
    } cases[] = {
        {U"123a5", 5, U"0123456789", 10, 3},
        {U"12345", 5, U"0123456789", 10, -1},
        {U"", 0, U"0123456789", 10, -1},
        {nullptr, 4, U"0", 1, -1},
        {U"123", 3, U"", 0, 0},                  // empty set: 0 for any non-empty text
        {U"123", 3, nullptr, 4, 0},
        {U"123", 3, U"0123456789", -7, 0},
        {U"123", 3, U"0123456789", 0x100000000 + 10, -1},  // the set length is read as 32 bits
        {U"123", 3, U"0123456789", 0x100000000, 0},
    };
    for (const auto& c : cases) EXPECT_EQ(vxzsver(c.s, c.n, c.set, c.sn), c.want) << c.n << " " << c.sn;
}

TEST(WideEdit, Translate) {
    std::u32string s = U"a-b_c-a";
    EXPECT_EQ(vxzsrns(s.data(), len(s), U"+ .", U"-_-", 3), 0u);
    EXPECT_EQ(s, U"a+b c+a");  // the first matching from[k] decides
    EXPECT_EQ(vxzsrns(s.data(), 3, U"X", U"a", 1), 0u);
    EXPECT_EQ(s, U"X+b c+a");
    for (std::int64_t n : {0, -1}) EXPECT_EQ(vxzsrns(s.data(), n, U"Y", U"X", 1), 0u);
    EXPECT_EQ(vxzsrns(s.data(), len(s), U"Y", U"X", 0), 0u);
    EXPECT_EQ(vxzsrns(s.data(), len(s), nullptr, U"X", 1), 0u);
    EXPECT_EQ(vxzsrns(nullptr, 4, U"Y", U"X", 1), 0u);
    EXPECT_EQ(s, U"X+b c+a");
}

TEST(WideEdit, Strip) {
    const struct {
        std::u32string_view s;
        std::int64_t blanks, mode0, mode2;
    } cases[] = {
        {U"ab  ", 2, 2, 2},
        {U"ab", 2, 2, 2},
        {U"    ", 0, 0, 0},
        {U"", 0, 0, 0},
        {U" a b ", 4, 4, 4},
        {U"ab\u00A0\u3000 \u2007", 6, 6, 2},
        {U"ab\t", 3, 3, 3},              // a tab is not a space here
        {U"ab\u200B", 3, 3, 3},          // nor a zero-width space
        {U"ab\u1680\u2028\u2029\u202F\u205F\u2000\u200A", 9, 9, 2},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vxzstrp(c.s.data(), len(c.s)), c.blanks);
        EXPECT_EQ(vxzsStripBlanks(c.s.data(), len(c.s), 0), c.mode0);
        EXPECT_EQ(vxzsStripBlanks(c.s.data(), len(c.s), 2), c.mode2);
    }
    EXPECT_EQ(vxzstrp(nullptr, 5), 0);
    EXPECT_EQ(vxzstrp(U"ab", -1), 0);
    EXPECT_EQ(vxzsStripBlanks(nullptr, 5, 2), 0);
}

TEST(WideEdit, Move) {
    const struct {
        const wchar* src;
        std::int64_t src_n;
        std::int64_t dst_n;  // -1 - n: n characters then a 0
        std::int64_t copied;
        std::u32string_view after;  // the first 8 cells of a destination of '#'
    } cases[] = {
        {U"abc", 3, 6, 3, U"abc   ##"},
        {U"abcdef", 6, 4, 4, U"abcd####"},   // padded, shorter: no padding
        {U"abc", 3, -1 - 5, 3, U"abc\0####"},
        {U"abcdef", 6, -1 - 4, 4, U"abcd\0###"},  // the 0 goes after the n characters
        {U"abc", 3, -1, 0, U"\0#######"},
        {nullptr, 3, 5, 0, U"     ###"},     // null source: blanks ...
        {nullptr, 3, -1 - 5, 0, U"\0#######"},  // ... or a 0
        {U"abc", -2, 4, 0, U"    ####"},
        {U"abc", 3, 0, 0, U"########"},
    };
    for (const auto& c : cases) {
        std::u32string dst(8, U'#');
        EXPECT_EQ(vxzsmov(c.src, c.src_n, dst.data(), c.dst_n), c.copied) << c.dst_n;
        EXPECT_EQ(dst, std::u32string(c.after.data(), 8)) << c.dst_n;
    }
    EXPECT_EQ(vxzsmov(U"abc", 3, nullptr, 5), 0);
}

TEST(WideEdit, Justify) {
    const struct {
        std::u32string_view s;
        wchar align;
        std::u32string_view after;
        std::int64_t length, offset;
    } cases[] = {
        {U"  ab c   ", U'L', U"ab c     ", 4, 0},
        {U"  ab c   ", U'l', U"ab c     ", 4, 0},
        {U"  ab c   ", U'R', U"     ab c", 4, 5},
        {U"  ab c   ", U'r', U"     ab c", 4, 5},
        {U"  ab c   ", U'C', U"  ab c   ", 4, 2},  // (9 - 4) / 2
        {U"ab c     ", U'c', U"  ab c   ", 4, 2},
        {U"ab      ", U'C', U"   ab   ", 2, 3},
        {U"      ab", U'C', U"   ab   ", 2, 3},
        {U"  ab c   ", U'X', U"  ab c   ", 4, 2},  // other letters: no shift
        {U"abc", U'R', U"abc", 3, 0},
        {U"    ", U'R', U"    ", 0, 0},           // all blank
        {U"", U'L', U"", 0, 0},
    };
    for (const auto& c : cases) {
        std::u32string s(c.s);
        std::int64_t length = -1, offset = -1;
        EXPECT_EQ(vxzsjls(s.data(), len(s), c.align, &length, &offset), 0u);
        EXPECT_EQ(s, c.after) << char(c.align);
        EXPECT_EQ(length, c.length);
        EXPECT_EQ(offset, c.offset);
    }
    std::int64_t length = -1, offset = -1;
    EXPECT_EQ(vxzsjls(nullptr, 5, U'L', &length, &offset), 0u);
    EXPECT_EQ(length + offset, 0);
    std::u32string s = U" a ";
    EXPECT_EQ(vxzsjls(s.data(), -3, U'L', &length, &offset), 0u);
    EXPECT_EQ(vxzsjls(s.data(), 3, U'L', nullptr, nullptr), 0u);
    EXPECT_EQ(s, U"a  ");
}

// Every alignment of random texts: the content survives, blanks fill the rest, and it starts at
// 0, at the end, or halfway (the odd blank going right).
TEST(WideEdit, JustifyProperties) {
    std::mt19937 rng(7);
    for (int round = 0; round < 3000; ++round) {
        const std::size_t n = rng() % 20;
        std::u32string s(n, U' ');
        for (auto& c : s) c = (rng() % 3) ? U' ' : U"xyé\U0001F600"[rng() % 4];
        const auto first = s.find_first_not_of(U' ');
        if (first == std::u32string::npos) continue;
        const std::u32string content = s.substr(first, s.find_last_not_of(U' ') - first + 1);
        const std::size_t spare = n - content.size();
        for (auto [align, start] : {std::pair{U'L', std::size_t{0}}, {U'R', spare}, {U'C', spare / 2}}) {
            std::u32string t = s;
            std::int64_t length = 0, offset = 0;
            vxzsjls(t.data(), len(t), align, &length, &offset);
            ASSERT_EQ(t, std::u32string(start, U' ') + content + std::u32string(spare - start, U' '))
                << std::string(s.begin(), s.end()) << char(align);
            ASSERT_EQ(offset, static_cast<std::int64_t>(start));
            ASSERT_EQ(length, len(content));
        }
    }
}

TEST(WideCompare, Equality) {
    const struct {
        std::u32string_view a, b;
        int exact, ignoring_case;
    } cases[] = {
        {U"abc", U"abc", 1, 1},
        {U"abc", U"ABC", 0, 1},
        {U"ÄÖÜ", U"äöü", 0, 1},
        {U"abc", U"abd", 0, 0},
        {U"abc", U"abc ", 0, 0},  // lengths differ
        {U"", U"", 1, 1},
        {U"\U00010400", U"\U00010428", 0, 0},  // beyond the basic plane: no tables, no mapping
    };
    ScopedKernelHandle no_service(nullptr);
    for (const auto& c : cases) {
        EXPECT_EQ(vxzsCompare(c.a.data(), len(c.a), c.b.data(), len(c.b)), c.exact);
        EXPECT_EQ(vxzsCompareNorm(c.a.data(), len(c.a), c.b.data(), len(c.b)), c.ignoring_case);
        EXPECT_EQ(vxzseqn(c.a.data(), len(c.a), c.b.data(), len(c.b)), c.ignoring_case);
    }
    EXPECT_EQ(vxzsCompare(nullptr, 3, U"", 0), 1);
    EXPECT_EQ(vxzseqn(nullptr, 0, nullptr, -1), 1);
    EXPECT_EQ(vxzsCompareNorm(U"a", 1, nullptr, 1), 0);
}

// Both sides of the 256-character local buffers, with and without the service.
TEST(WideCompare, LongTextsIgnoringCase) {
    for (void* service : {static_cast<void*>(nullptr), vxhost::nls_service()}) {
        ScopedKernelHandle handle(service);
        for (std::size_t n : {255u, 256u, 257u, 1000u}) {
            std::u32string a, b;
            for (std::size_t i = 0; i < n; ++i) {
                a += U"abcЖжΣσ"[i % 7];
                b += U"ABCжЖσΣ"[i % 7];
            }
            EXPECT_EQ(vxzsCompareNorm(a.data(), len(a), b.data(), len(b)), 1) << n;
            EXPECT_EQ(vxzseqn(a.data(), len(a), b.data(), len(b)), 1) << n;
            b[n - 1] = U'x';
            EXPECT_EQ(vxzsCompareNorm(a.data(), len(a), b.data(), len(b)), 0) << n;
            EXPECT_EQ(vxzseqn(a.data(), len(a), b.data(), len(b)), 0) << n;
        }
    }
}

TEST(WideCompare, PaddedOrdering) {
    const struct {
        std::u32string_view a, b;
        int want;
    } cases[] = {
        {U"abc", U"ABC  ", 1},    // case only; trailing blanks do not count
        {U"abc", U"abd", -2},
        {U"abd", U"abc", 2},
        {U"abc", U"abc", 0},
        {U"abc  ", U"abc", 0},
        {U"ABC", U"abc", -1},
        {U"aBc", U"AbD", -2},      // a real difference outranks the case tie-break
        {U"ab", U"abc", -2},
        {U"abc", U"ab", 2},
        {U"ab", U"ab\t", -2},      // a tab is not a blank
        {U"", U"   ", 0},
        {U"", U"", 0},
        {U"É", U"é", -1},
        {U"\U00010400", U"\U00010428", -2},  // no lower-casing beyond the basic plane
        {U"\U00010400", U"a", 2},
        {U"a", U"\U00010400", -2},
    };
    ScopedKernelHandle no_service(nullptr);
    for (const auto& c : cases) {
        EXPECT_EQ(vxzsncmp(c.a.data(), len(c.a), c.b.data(), len(c.b)), c.want)
            << std::string(c.a.begin(), c.a.end()) << "|" << std::string(c.b.begin(), c.b.end());
    }
    EXPECT_EQ(vxzsncmp(nullptr, 4, U"  ", 2), 0);
    EXPECT_EQ(vxzsncmp(U"a", -1, U"a", 1), -2);
}

// Over random texts: antisymmetric, 0 exactly when equal once trailing blanks go, and at most 1
// away from 0 exactly when equal ignoring case once trailing blanks go.
TEST(WideCompare, PaddedOrderingProperties) {
    ScopedKernelHandle no_service(nullptr);
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
        const int ba = vxzsncmp(b.data(), len(b), a.data(), len(a));
        ASSERT_EQ(ab, -ba);
        const std::u32string_view sa(a.data(), strip_trailing_blanks(a));
        const std::u32string_view sb(b.data(), strip_trailing_blanks(b));
        ASSERT_EQ(ab == 0, sa == sb);
        ASSERT_EQ(std::abs(ab) <= 1, equal_ignoring_case(sa, sb));
    }
}

}  // namespace
}  // namespace vxlocfmt::text
