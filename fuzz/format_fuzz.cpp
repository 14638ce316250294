// Every registry format and the classic numeric renderers, any value bit pattern, width, decimals, flags, capacity, byte mode and
// locale: nothing is written outside min(width, capacity), the produced length stays within the
// width, the status is one a format may return, and no call is slow.
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "classic/numeric_formats.h"
#include "world.h"


namespace {

using namespace vxlocfmt;
using vxfuzz::FuzzInput;
using vxfuzz::GuardedCells;

constexpr const char* locales[] = {"en_US", "de_DE", "fr_FR",  "ja_JP", "ar_EG",      "hi_IN",
                                   "zh_Hans_CN", "ru_RU", "th_TH", "he_IL", "sr_Latn_RS", "ko_KR",
                                   "en_US_POSIX", "sv_SE", "fa_IR", "am_ET"};
constexpr const char* encodings[] = {"UTF-8", "ISO-8859-1", "windows-1252", "Shift_JIS"};

const double interesting[] = {
    std::bit_cast<double>(missing_bits),            // "."
    std::bit_cast<double>(0xFFFFFB0000000000ull),   // ".C"
    std::numeric_limits<double>::quiet_NaN(),
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    0.0, -0.0, 4.9406564584124654e-324, 2.2250738585072014e-308,
    9007199254740992.0, 9007199254740993.0, -9007199254740991.0,
    9.995, 999999999.5, 0.5, -0.5, 1e308, -1e308,
    -138061, -138062, 6589335, 6589336,              // day-number range ends
    -11928470400.0, 569318630399.999, 569318630400.0,  // datetime range ends
    86399.9999, 3599.9999, 59.9999999, 43200, 360000,
};

vxfuzz::World& world() {
    static vxfuzz::World w(locales, encodings);
    return w;
}

// The classic numeric renderers have no rows: driven directly, wide output only.
constexpr format_fn classic_formats[] = {vxfmtzfmn,       vxfmtzfmcomma, vxfmtzfmdollar, vxfmtzfmpercent,
                                         vxfmtzfmpercentn, vxfmtzfmbest,  vxfmtzfmbestdt, vxfmtzfmt,
                                         vxfmtzfme,        vxfmtzfmd};

bool allowed_status(status s) {
    return s <= st::decimals_too_large || s == st::instance_not_found || (s & 0xFFFF0000u) == 0x803F0000u;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vxfuzz::World& w = world();
    FuzzInput in(data, size);
    const std::uint32_t choice =
        in.pick(static_cast<std::uint32_t>(w.formats.size() + std::size(classic_formats)));
    const FuncInfo* row = choice < w.formats.size() ? w.formats[choice] : nullptr;
    const format_fn function = row ? row->function : classic_formats[choice - w.formats.size()];
    const std::uint32_t value_choice = in.pick(64);
    double value = std::bit_cast<double>(in.take<std::uint64_t>());
    if (value_choice < std::size(interesting)) value = interesting[value_choice];
    else if (value_choice < 48) value = static_cast<double>(in.take<std::int32_t>()) + in.pick(1000) / 1000.0;
    const std::int32_t width = in.between(-5, 300);
    const std::int32_t decimals = in.between(-2, 40);
    const std::uint8_t flags = in.take<std::uint8_t>();
    const std::int32_t capacity = in.pick(2) ? std::max(width, 0) : in.between(0, 320);
    const bool byte_mode = in.pick(2) == 1 && row;
    const std::size_t locale = in.pick(static_cast<std::uint32_t>(std::size(locales)));

    vxhost::Session& session = byte_mode ? *w.bytes[locale] : *w.wide[locale];
    FmtCall& call = session.call();
    call.width = width;
    call.decimals = decimals;
    call.input = &value;
    call.flags = flags;
    call.capacity = capacity;
    call.produced = 0;
    call.byte_mode = 0;
    const auto allowed = static_cast<std::size_t>(std::max(0, std::min(width, capacity)));

    vxfuzz::CallTimer timer;
    status code;
    if (byte_mode) {
        GuardedCells<char> out(static_cast<std::size_t>(capacity));
        call.output = out.data();
        code = row->byte_function(&call, nullptr, nullptr);
        out.expect_untouched_beyond(allowed, "byte format wrote outside its field");
        if (call.produced < 0 || static_cast<std::size_t>(call.produced) > allowed)
            vxfuzz::fail("byte produced length beyond the field", call.produced, static_cast<long long>(allowed));
    } else {
        GuardedCells<char32_t> out(static_cast<std::size_t>(capacity));
        call.output = out.data();
        code = function(&call, nullptr);
        out.expect_untouched_beyond(allowed, "format wrote outside its field");
        if (call.produced > std::max(width, 0)) vxfuzz::fail("produced length beyond the width", call.produced, width);
    }
    timer.expect_within_millisecond("format call too slow");
    if (!allowed_status(code)) vxfuzz::fail("status a format may not return", code);
    return 0;
}
