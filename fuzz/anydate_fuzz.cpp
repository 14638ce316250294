// The any-date reader on any text of up to 300 wide characters (surrogates and values above
// U+10FFFF included) in an exact-size allocation: dtm_informat with any name (a template's or
// another) and any given row or none, preprocessing on or off; dtmInformat; the ANYDATE driver
// and its date and time views. Checked: no over-read, only the codes the reader answers, a
// failed read leaves the missing value (or, for a name without a fitting row, the result
// untouched), every NaN is the ordinary missing value, time linear in the text.
#include <bit>
#include <cmath>
#include <vector>

#include "calendar/missing_value.h"
#include "dateread/dateread_exports.h"
#include "dateread/template_facts.h"
#include "harness.h"

namespace {

using namespace vxlocfmt;
using vxfuzz::FuzzInput;

constexpr char32_t alphabet[] = U" 0123456789-/.,:+TWZQMIVPAJanMarDecWedSunday\u00e9\u4e2d";
constexpr double sentinel = 12345.0;

void expect_clean(double v, const char* who) {
    if (std::isnan(v) && std::bit_cast<std::uint64_t>(v) != missing_bits) vxfuzz::fail(who);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput in(data, size);
    const std::uint32_t mode = in.pick(5);
    const std::uint32_t which = in.pick(dateread::template_count + 2);
    const std::uint8_t switches = in.take<std::uint8_t>();
    const std::size_t length = in.pick(301);
    const std::vector<char32_t> text = vxfuzz::fuzz_text(in, length, alphabet);
    auto exact = vxfuzz::exact_copy(text.data(), text.size());
    const auto n = static_cast<std::int32_t>(length);

    // A template's name (exact copy) or, past the table, a name of the text's first characters.
    const bool own_name = which >= dateread::template_count;
    const wchar* name_source = own_name ? text.data() : vxfmt_templates[which].name;
    const std::size_t name_length =
        own_name ? std::min<std::size_t>(length, switches % 9) : dateread::template_facts[which].name_length;
    auto name = vxfuzz::exact_copy(name_source, name_length);

    double result = sentinel;
    vxfuzz::CallTimer timer;
    if (mode <= 1) {  // dtm_informat, by name or from a given row
        std::int32_t status_word = -1;
        const dateread::template_row* row = mode == 1 && !own_name ? &vxfmt_templates[which] : nullptr;
        const status code = dtm_informat(name.get(), static_cast<std::int32_t>(name_length), row, exact.get(), n,
                                         &result, &status_word, switches & 0x80 ? 0 : 1);
        if (code != 0 && code != 999) vxfuzz::fail("dtm_informat code", code);
        if (code == 999 && result != sentinel && !std::isnan(result)) vxfuzz::fail("a failed row left a value");
        if (code == 0 && (status_word < 0 || status_word > 3)) vxfuzz::fail("status word", status_word);
    } else if (mode == 2) {
        FmtCall call{};
        call.input = exact.get();
        call.input_length = n;
        call.text_limit = std::min(n, static_cast<std::int32_t>(switches));
        call.output = &result;
        const status code = dtmInformat(&call, name.get(), static_cast<std::int32_t>(name_length));
        if (code != 0 && code != 999) vxfuzz::fail("dtmInformat code", code);
        if (code == 999 && !std::isnan(result)) vxfuzz::fail("dtmInformat failed without the missing value");
        if (code == 0 && std::isnan(result)) vxfuzz::fail("dtmInformat succeeded with the missing value");
    } else {
        FmtCall call{};
        call.input = exact.get();
        call.input_length = n;
        call.text_limit = switches & 1 ? n : std::min(n, static_cast<std::int32_t>(switches));
        call.output = &result;
        const auto fn = mode == 3 ? dtmAnyDateTime : switches & 2 ? dtmAnyDate : dtmAnyTime;
        if (fn(&call, nullptr) != 0) vxfuzz::fail("the driver answers 0");
        if (result == sentinel) vxfuzz::fail("the driver wrote nothing");
    }
    timer.expect_within_millisecond("any-date reader too slow");
    expect_clean(result, "a NaN other than the missing value");
    return 0;
}
