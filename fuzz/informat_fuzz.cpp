// Every registry informat on any text of up to 300 wide characters (surrogates and values above
// U+10FFFF included) and any text limit, copied into an exact-size allocation: no over-read, a
// status an informat may return, the missing value left behind on failure, time linear in the
// text.
#include <bit>
#include <cmath>
#include <memory>
#include <vector>

#include "world.h"


namespace {

using namespace vxlocfmt;
using vxfuzz::FuzzInput;

constexpr const char* locales[] = {"en_US", "de_DE", "fr_FR", "ja_JP", "ar_EG", "hi_IN", "zh_Hans_CN", "ru_RU"};
constexpr char32_t alphabet[] = U" 0123456789-/.,:+TWZ年月日AMPMJanMärz\u00A0\u202F()'%$E€USDkr";

vxfuzz::World& world() {
    static vxfuzz::World w(locales, {});
    return w;
}

bool allowed_status(status s) {
    return s <= 5 || s == 999 || s == st::date_instance_not_found || (s & 0xFFFF0000u) == 0x803F0000u;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vxfuzz::World& w = world();
    FuzzInput in(data, size);
    const FuncInfo& row = *w.informats[in.pick(static_cast<std::uint32_t>(w.informats.size()))];
    vxhost::Session& session = *w.wide[in.pick(static_cast<std::uint32_t>(std::size(locales)))];
    const std::int32_t width = in.between(-5, 300);
    const std::int32_t decimals = in.between(-2, 40);
    const std::uint8_t flags = in.take<std::uint8_t>();
    const std::size_t length = in.pick(301);
    const std::vector<char32_t> text = vxfuzz::fuzz_text(in, length, alphabet);
    auto exact = vxfuzz::exact_copy(text.data(), text.size());
    const std::int32_t limit = in.pick(4) ? static_cast<std::int32_t>(length) : in.between(-3, 310);

    FmtCall& call = session.call();
    call.width = width;
    call.decimals = decimals;
    call.flags = flags;
    call.input = exact.get();
    call.input_length = static_cast<std::int32_t>(length);
    call.text_limit = std::min(limit, static_cast<std::int32_t>(length));  // never past the copy
    double result = 12345.0;
    call.output = &result;
    vxfuzz::CallTimer timer;
    const status code = row.function(&call, nullptr);
    timer.expect_within_millisecond("informat call too slow");
    if (!allowed_status(code)) vxfuzz::fail("status an informat may not return", code);
    if (code != 0 && code > 5 && !std::isnan(result))
        vxfuzz::fail("a failed read leaves no missing value", code);
    return 0;
}
