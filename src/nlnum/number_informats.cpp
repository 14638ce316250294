// @NLNUM, @NLNUMI, @NLPCT, @NLPCTI, @NLMNY and @NLMNYI: the text rewritten into classic notation
// by the format's own conventions record and read by a classic informat (NEGPAREN, or PERCENT
// for the percentages). Whatever the locale path cannot take (no instance, no locale data, a
// text the session encoding cannot hold, a locale without the record) is read by the classic
// informat as it stands, so plain classic notation is always accepted.
#include <algorithm>
#include <string_view>

#include "classic/value_informats.h"
#include "frame/instance.h"
#include "frame/kernel.h"
#include "frame/prologue.h"
#include "frame/registry.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "nlnum/number_renderer.h"
#include "nlnum/number_rewriters.h"
#include "nlnum/rewrite_text.h"

namespace vxlocfmt::nlnum {
namespace {

enum class Rewriter { number, percent, money };

struct number_informat {
    registry::Limits limits;
    std::size_t key;        // the conventions record
    std::size_t other_key;  // money: the other record of the pair, whose symbol is taken off too
    Rewriter rewriter;
    format_fn classic;
};

namespace prop = locale::prop;
constexpr number_informat nlnum_row{registry::limits_of(U"@NLNUM"), prop::locale_number_key, prop::locale_number_key,
                                    Rewriter::number, vxfmtzifmnpn};
constexpr number_informat nlnumi_row{registry::limits_of(U"@NLNUMI"), prop::fixed_number_key, prop::fixed_number_key,
                                     Rewriter::number, vxfmtzifmnpn};
constexpr number_informat nlpct_row{registry::limits_of(U"@NLPCT"), prop::locale_percent_key,
                                    prop::locale_percent_key, Rewriter::percent, vxfmtzifmpct};
constexpr number_informat nlpcti_row{registry::limits_of(U"@NLPCTI"), prop::fixed_percent_key,
                                     prop::fixed_percent_key, Rewriter::percent, vxfmtzifmpct};
constexpr number_informat nlmny_row{registry::limits_of(U"@NLMNY"), prop::local_currency_key,
                                    prop::international_currency_key, Rewriter::money, vxfmtzifmnpn};
constexpr number_informat nlmnyi_row{registry::limits_of(U"@NLMNYI"), prop::international_currency_key,
                                     prop::local_currency_key, Rewriter::money, vxfmtzifmnpn};

constexpr status not_readable = 1;
constexpr std::int32_t one_character_bytes = 8;

// The caller's text, cut to its limit, trailing blanks dropped.
std::u32string_view field_text(const FmtCall& call) {
    const std::int32_t n = std::min(call.input_length, call.text_limit);
    if (n <= 0 || !call.input) return {};
    std::u32string_view text(static_cast<const wchar*>(call.input), static_cast<std::size_t>(n));
    while (!text.empty() && is_field_blank(text.back())) text.remove_suffix(1);
    return text;
}

// The classic informat on the text as it stands (the caller's width and decimals).
status classic_read(FmtCall& call, std::u32string_view text, format_fn classic, void* extra) {
    const std::int32_t length = call.input_length;
    call.input_length = static_cast<std::int32_t>(text.size());
    const status code = classic(&call, extra);
    call.input_length = length;
    return code;
}

// The two-way conversion: how many characters of the text the session encoding holds within
// the width (its bytes), at most the 32 a conversion back carries; -1 when the encoding cannot
// hold one of them. Text below the session's identity bound is one byte a character and is not
// converted at all.
std::int32_t session_characters(const FmtCall& call, std::u32string_view text) {
    const std::int32_t width = std::max(call.width, 0);
    std::size_t n = std::min(text.size(), static_cast<std::size_t>(width));
    void* transcoder = call.session_transcoder;
    if (transcoder) {
        const std::uintptr_t bound = kernel::identity_bound(transcoder);
        if (!std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(n), [&](wchar c) { return c < bound; })) {
            const kernel::measure_fn measure = kernel::measure_slot(transcoder);
            std::int32_t used = 0;
            n = 0;
            for (const wchar c : text) {
                std::int32_t bytes = 0;
                unsigned char scratch[one_character_bytes];
                const status code = measure ? measure(transcoder, &c, sizeof c, one_character_bytes, &bytes, 0)
                                            : kernel::convert(transcoder, &c, sizeof c, scratch, one_character_bytes, &bytes);
                if (code != st::ok) return -1;
                if (used + bytes > width || n == informat_read_limit) break;
                used += bytes;
                ++n;
            }
        }
    }
    return static_cast<std::int32_t>(std::min(n, informat_read_limit));
}

status read_number(FmtCall& call, void* extra, const number_informat& f) {
    const std::u32string_view text = field_text(call);
    if (text.empty()) return not_readable;
    Instance* instance = find_instance(call);
    if (!instance) return classic_read(call, text, f.classic, extra);
    if (const status code = check_limits(call, f.limits)) return code;
    if (!call.property_cache && locale::fill_nlfmt_properties(call, *instance) != st::ok)
        return classic_read(call, text, f.classic, extra);
    const std::int32_t n = session_characters(call, text);
    const PropertyCache& table = *call.property_cache;
    const NumberConventions* own = conventions_of(table, f.key);
    const NumberConventions* other = conventions_of(table, f.other_key);
    if (n < 0 || !own || !other) return classic_read(call, text, f.classic, extra);
    const std::u32string_view taken = text.substr(0, static_cast<std::size_t>(n));
    // A locale without the record (no currency): the formats write classic notation there
    // (DOLLAR), read by the classic informat, but still without implied decimals.
    if (supported_flag(table, f.key) == 0)
        return read_classic(call, RewriteText(taken), f.classic, extra) == st::ok ? st::ok : not_readable;
    std::int32_t result = 0;
    switch (f.rewriter) {
    case Rewriter::number: result = zkifnum(taken, call, *own, extra); break;
    case Rewriter::percent: result = zkifpct(taken, call, *own, extra); break;
    case Rewriter::money: result = zkifmny(taken, call, *own, *other, extra); break;
    }
    return result == 0 ? st::ok : not_readable;
}

}  // namespace
}  // namespace vxlocfmt::nlnum

using namespace vxlocfmt;

VX_EXPORT status vxfmtinlnum(FmtCall* call, void* extra) { return nlnum::read_number(*call, extra, nlnum::nlnum_row); }
VX_EXPORT status vxfmtinlnumi(FmtCall* call, void* extra) { return nlnum::read_number(*call, extra, nlnum::nlnumi_row); }
VX_EXPORT status vxfmtinlpct(FmtCall* call, void* extra) { return nlnum::read_number(*call, extra, nlnum::nlpct_row); }
VX_EXPORT status vxfmtinlpcti(FmtCall* call, void* extra) { return nlnum::read_number(*call, extra, nlnum::nlpcti_row); }
VX_EXPORT status vxfmtinlmny(FmtCall* call, void* extra) { return nlnum::read_number(*call, extra, nlnum::nlmny_row); }
VX_EXPORT status vxfmtinlmnyi(FmtCall* call, void* extra) { return nlnum::read_number(*call, extra, nlnum::nlmnyi_row); }
