// The one-pass reader of the locale number informats (nlnum/plain_number.h) against the full
// route it stands in for (the rewrite in place, then the classic NEGPAREN informat): the same
// status and the same result bits, preset or untouched alike, and the caller's record as it was,
// on random and near-miss texts under the records of shipped locales and hand-made ones (one- and
// two-character separators and signs, parentheses, separators that are signs elsewhere), with
// random widths, decimals and limit checks. VXLOCFMT_FAST_PATH_TEXTS sets the texts (default
// 300000); the shape must be taken often enough for the comparison to mean something.
#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "library.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "nlnum/number_renderer.h"
#include "nlnum/number_rewriters.h"
#include "nlnum/plain_number.h"
#include "nlnum/rewrite_text.h"
#include "session.h"

namespace {

using vxlocfmt::FmtCall;
using vxlocfmt::NumberConventions;
namespace prop = vxlocfmt::locale::prop;

constexpr double sentinel = -7.25;  // the result before the call

struct Answer {
    std::int32_t code;
    std::uint64_t bits;
    bool operator==(const Answer&) const = default;
};

std::string show(const std::u32string& text) {
    std::string out;
    for (const char32_t c : text) out += c < 0x80 && c >= 0x20 ? std::string(1, static_cast<char>(c)) : "<" + std::to_string(c) + ">";
    return out;
}

std::string show(const NumberConventions& c) {
    const auto cells = [](const char32_t (&v)[2]) { return show(std::u32string(v, v[0] == 0 ? 0 : v[1] == 0 ? 1 : 2)); };
    return "group «" + cells(c.thousands_sep) + "» point «" + cells(c.decimal_point) + "» negative «" +
           cells(c.negative_sign) + "» positive «" + cells(c.positive_sign) + "» n_sign_posn " +
           std::to_string(c.n_sign_posn) + " p_sign_posn " + std::to_string(c.p_sign_posn);
}

struct Record {
    std::int32_t width, decimals;
    std::uint8_t flags;
};

// One route on a fresh record; the caller's fields must come back as they went.
template <class Route>
Answer run(const Record& r, Route route) {
    double result = sentinel;
    FmtCall call{};
    call.width = r.width;
    call.decimals = r.decimals;
    call.flags = r.flags;
    call.output = &result;
    const std::int32_t code = route(call);
    EXPECT_EQ(call.width, r.width);
    EXPECT_EQ(call.decimals, r.decimals);
    EXPECT_EQ(call.input, nullptr);
    return {code, std::bit_cast<std::uint64_t>(result)};
}

// Records of shipped locales: the number, percent and both currency conventions.
std::vector<NumberConventions> shipped_records() {
    std::vector<NumberConventions> out;
    vxhost::Library library;
    const vxlocfmt::FuncInfo& row = *library.find(U"NLNUM");
    for (const char* id : {"en_US", "de_DE", "fr_FR", "de_CH", "nl_NL", "he_IL", "ja_JP", "pt_BR", "sv_SE", "it_CH",
                           "hi_IN", "ar_EG"}) {
        vxhost::Session session(library, {.locale = id});
        session.format(row, 6, 0, 0);  // builds the property table
        const vxlocfmt::PropertyCache& table = *session.call().property_cache;
        for (const std::size_t key : {prop::locale_number_key, prop::fixed_number_key, prop::locale_percent_key,
                                      prop::local_currency_key, prop::international_currency_key})
            if (const NumberConventions* c = vxlocfmt::nlnum::conventions_of(table, key)) out.push_back(*c);
    }
    return out;
}

// Characters the rewrite gives a role to, and ones it does not.
const char32_t pool[] = {U',', U'.', U' ', U'\u00A0', U'\u202F', U'\'', U'\u2019', U'-', U'\u2212', U'+', U'(', U')',
                         U'\u200E', U'E', U'e', U'%', U'$', U'\u066B', U'0', U'7', U'x', U'#', 0};

// Half of them from plausible characters for each field, half from the whole pool.
NumberConventions hand_made(std::mt19937_64& rng) {
    static const std::u32string groups = U",. \u00A0\u202F'\u2019", points = U",.\u066B", negatives = U"-\u2212\u200E",
                                positives = U"+";
    const bool plausible = rng() % 2 == 0;
    NumberConventions c{};
    const auto pick = [&](const std::u32string& from) {
        return plausible ? from[rng() % from.size()] : pool[rng() % std::size(pool)];
    };
    const auto field = [&](char32_t (&cells)[2], const std::u32string& from, unsigned empty_one_in) {
        cells[0] = rng() % empty_one_in == 0 ? 0 : pick(from);
        cells[1] = cells[0] != 0 && rng() % 6 == 0 ? pick(from) : 0;
    };
    field(c.thousands_sep, groups, 5);
    field(c.decimal_point, points, 12);
    field(c.negative_sign, negatives, 5);
    field(c.positive_sign, positives, 3);
    c.n_sign_posn = static_cast<std::int32_t>(rng() % 5);
    c.p_sign_posn = static_cast<std::int32_t>(rng() % 5);
    return c;
}

// A number as the formats write it (grouped digits, the point, a sign form), often broken after.
std::u32string near_miss(const NumberConventions& c, std::mt19937_64& rng) {
    std::u32string body;
    const int whole = 1 + static_cast<int>(rng() % 12);
    for (int i = whole; i > 0; --i) {
        body += static_cast<char32_t>(U'0' + rng() % 10);
        if (i > 1 && i % 3 == 1 && c.thousands_sep[0] != 0 && rng() % 8 != 0) body += c.thousands_sep[0];
    }
    if (rng() % 3 != 0 && c.decimal_point[0] != 0) {
        body += c.decimal_point[0];
        for (int i = static_cast<int>(rng() % 5); i > 0; --i) body += static_cast<char32_t>(U'0' + rng() % 10);
    }
    switch (rng() % 6) {
        case 0: body = U"-" + body; break;
        case 1: if (c.negative_sign[0] != 0) body = c.negative_sign[0] + body; break;
        case 2: if (c.negative_sign[0] != 0) body += c.negative_sign[0]; break;
        case 3: body = U"(" + body + U")"; break;
        default: break;
    }
    if (rng() % 5 == 0) body[rng() % body.size()] = pool[rng() % std::size(pool)];
    if (rng() % 10 == 0) body.insert(rng() % (body.size() + 1), 1, pool[rng() % std::size(pool)]);
    if (rng() % 6 == 0) body = U" " + body + U"\u00A0";
    return body;
}

std::u32string random_text(std::mt19937_64& rng) {
    std::u32string text(rng() % 36, U'0');
    for (char32_t& ch : text) ch = rng() % 2 ? static_cast<char32_t>(U'0' + rng() % 10) : pool[rng() % std::size(pool)];
    return text;
}

TEST(PlainNumber, SameAnswersAsTheFullRoute) {
    const char* env = std::getenv("VXLOCFMT_FAST_PATH_TEXTS");
    const long texts = env ? std::atol(env) : 300000;
    std::mt19937_64 rng(20261125);
    const std::vector<NumberConventions> shipped = shipped_records();
    ASSERT_FALSE(shipped.empty());
    long taken = 0, failures = 0;
    for (long n = 0; n < texts && failures < 10; ++n) {
        const NumberConventions c = n % 2 ? shipped[rng() % shipped.size()] : hand_made(rng);
        const std::u32string text = n % 4 < 3 ? near_miss(c, rng) : random_text(rng);
        const Record record{static_cast<std::int32_t>(rng() % 34), static_cast<std::int32_t>(rng() % 36) - 2,
                            static_cast<std::uint8_t>(rng() % 2 ? vxlocfmt::call_flag_check_limits : 0)};
        const Answer full = run(record, [&](FmtCall& call) {
            vxlocfmt::nlnum::RewriteText t(text);
            t.trim();
            return vxlocfmt::nlnum::read_rewritten(t, call, c, nullptr);
        });
        const Answer ours = run(record, [&](FmtCall& call) { return vxlocfmt::nlnum::zkifnum(text, call, c, nullptr); });
        std::int32_t ignored = 0;
        double scratch = 0;
        FmtCall probe{};
        probe.output = &scratch;
        const std::u32string_view trimmed =
            vxlocfmt::nlnum::trim_field_blanks(std::u32string_view(text).substr(0, vxlocfmt::nlnum::informat_read_limit));
        taken += vxlocfmt::nlnum::read_plain_number(trimmed, probe, c, nullptr, ignored);
        if (ours != full) {
            ++failures;
            ADD_FAILURE() << "«" << show(text) << "» " << show(c) << " width " << record.width << " decimals "
                          << record.decimals << " flags " << int(record.flags) << ": full route " << full.code << " "
                          << std::bit_cast<double>(full.bits) << ", ours " << ours.code << " "
                          << std::bit_cast<double>(ours.bits);
        }
    }
    EXPECT_GT(taken, texts / 5) << "the one-pass reader took too few texts to be tested";
}

}  // namespace
