// Every classic value informat (and the euro reader in both modes) on any text of up to 300
// wide characters (any code point: surrogates and values above U+10FFFF too), any width,
// decimals and flags, copied into an exact-size allocation: no over-read, no write beyond the
// output capacity, a status a classic informat may return, the missing value left behind by a
// failed numeric read, time linear in the text.
#include <bit>
#include <iterator>
#include <vector>

#include "classic/value_informats.h"
#include "frame/kernel.h"
#include "harness.h"
#include "kernel_handle.h"

namespace {

using namespace vxlocfmt;

enum class Yields { number, bytes, characters };
struct Target {
    format_fn function;
    Yields yields;
};

status euro_blank(FmtCall* call, void* extra) { return euroInformat(call, extra, U' '); }
status euro_x(FmtCall* call, void* extra) { return euroInformat(call, extra, U'X'); }

const Target targets[] = {
    {vxfmtzifmn, Yields::number},      {vxfmtzifmcmx, Yields::number},   {vxfmtzifmnmx, Yields::number},
    {vxfmtzifmdlr, Yields::number},    {vxfmtzifmdlx, Yields::number},   {vxfmtzifmeur, Yields::number},
    {vxfmtzifmerx, Yields::number},    {vxfmtzifmpct, Yields::number},   {vxfmtzifmnpn, Yields::number},
    {vxfmtzifmnpr, Yields::number},    {vxfmtzifmskg, Yields::number},   {vxfmtzifmhex, Yields::number},
    {vxfmtzifmbin, Yields::number},    {euro_blank, Yields::number},     {euro_x, Yields::number},
    {vxfmtzifmuuid, Yields::bytes},    {vxfmtzifmhxc, Yields::bytes},    {vxfmtzifmbnc, Yields::bytes},
    {vxfmtzifmb64, Yields::bytes},     {vxfmtzifmc, Yields::characters}, {vxfmtzifmupc, Yields::characters},
    {vxfmtzifmquo, Yields::characters}, {vxfmtzifmocc, Yields::characters},
};

// Characters the informats look for, so that random texts reach their deeper paths.
constexpr char32_t alphabet[] = U" 0123456789abcdefABCDEFG-+.,$%()Ee{}'\"=/KkMmT\u02AC\u20AC\u00A0\u202F";

bool allowed_status(status s) { return s <= 5 || s == 999 || s == st::bad_base64; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The numeric informats ask the host's reader through the kernel handle.
    Exported_VXHandle = vxhost::kernel_handle();
    vxfuzz::FuzzInput in(data, size);
    const Target& target = targets[in.pick(static_cast<std::uint32_t>(std::size(targets)))];
    const std::int32_t width = in.between(-5, 300);
    const std::int32_t decimals = in.between(-2, 40);
    const std::uint8_t flags = in.take<std::uint8_t>();
    const std::uint32_t capacity = in.pick(301);
    const std::size_t length = in.pick(301);
    const std::vector<char32_t> text = vxfuzz::fuzz_text(in, length, alphabet);
    auto exact = vxfuzz::exact_copy(text.data(), text.size());

    FmtCall call{};
    call.width = width;
    call.decimals = decimals;
    call.flags = flags;
    call.input = exact.get();
    call.input_length = static_cast<std::int32_t>(length);
    double result = 12345.0;
    vxfuzz::GuardedCells<unsigned char> bytes(capacity);
    vxfuzz::GuardedCells<char32_t> cells(capacity);
    switch (target.yields) {
        case Yields::number: call.output = &result; break;
        case Yields::bytes: call.output = bytes.data(); break;
        case Yields::characters: call.output = cells.data(); break;
    }
    call.capacity = static_cast<std::int32_t>(capacity);

    vxfuzz::CallTimer timer;
    const status code = target.function(&call, nullptr);
    timer.expect_within_millisecond("classic informat call too slow");
    if (!allowed_status(code)) vxfuzz::fail("status a classic informat may not return", code);
    if (target.yields == Yields::number) {
        if (code != 0 && std::bit_cast<std::uint64_t>(result) != missing_bits)
            vxfuzz::fail("a failed read leaves no missing value", code);
    } else {
        if (call.produced < 0 || static_cast<std::uint32_t>(call.produced) > capacity)
            vxfuzz::fail("produced length beyond the capacity", call.produced, capacity);
        bytes.expect_untouched_beyond(capacity, "byte informat wrote beyond its capacity");
        const std::size_t fill = static_cast<std::size_t>(std::max(0, std::min<std::int32_t>(width, static_cast<std::int32_t>(capacity))));
        cells.expect_untouched_beyond(fill, "character informat wrote beyond min(width, capacity)");
    }
    return 0;
}
