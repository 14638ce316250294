// Character classes, case mapping and the wide-string exports on any 32-bit values, any lengths
// within the buffers (and the null and negative cases), on both the table and the service path.
#include <vector>

#include "frame/kernel.h"
#include "harness.h"
#include "kernel_handle.h"
#include "text/text_exports.h"

namespace {

using vxfuzz::FuzzInput;
using vxlocfmt::wchar;

using predicate = std::int32_t (*)(wchar);
constexpr predicate predicates[] = {vxnlsisdigit, vxnlsislower, vxnlsisupper, vxnlsisalpha,
                                    vxnlsisspace, vxnlsisalnum, vxnlsisprint, vxnlsisxdigit,
                                    vxnlsispunct, vxnlsisgraph, vxnlsiscntrl};

std::vector<wchar> take_text(FuzzInput& in, std::size_t most) {
    std::vector<wchar> text(std::min<std::size_t>(in.pick(static_cast<std::uint32_t>(most + 1)), in.left() / 4 + 1));
    for (auto& c : text) {
        c = in.take<wchar>();
        if (c & 0x80000000u) c &= 0x7F;  // keep plenty of ASCII and blanks
    }
    return text;
}

// A length to pass for a text of n cells: n, less, 0, or negative.
std::int64_t length_for(FuzzInput& in, std::size_t n) {
    switch (in.pick(4)) {
    case 0: return -static_cast<std::int64_t>(in.pick(5));
    case 1: return n ? static_cast<std::int64_t>(in.pick(static_cast<std::uint32_t>(n))) : 0;
    default: return static_cast<std::int64_t>(n);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput in(data, size);
    // Both paths: no kernel handle (the library's tables) and the host's service.
    Exported_VXHandle = in.pick(2) ? vxhost::kernel_handle() : nullptr;
    const std::uint32_t op = in.pick(12);
    auto a = take_text(in, 300);
    auto b = take_text(in, 300);
    auto ea = vxfuzz::exact_copy(a.data(), a.size());
    auto eb = vxfuzz::exact_copy(b.data(), b.size());
    const std::int64_t la = length_for(in, a.size());
    const std::int64_t lb = length_for(in, b.size());
    const wchar c = a.empty() ? in.take<wchar>() : a[0];
    vxfuzz::CallTimer timer;
    switch (op) {
    case 0:
        for (predicate p : predicates) {
            const std::int32_t r = p(c);
            if (r != 0 && r != 1) vxfuzz::fail("predicate answered", r);
        }
        // The library's own tables leave everything beyond U+FFFF; the host's service may not.
        if (!Exported_VXHandle && c >= 0x10000 && (vxtolower(c) != c || vxtoupper(c) != c))
            vxfuzz::fail("mapped beyond the BMP", c);
        break;
    case 1: vxzstlo(ea.get(), la); vxzstup(ea.get(), la); break;
    case 2: {
        const std::int64_t r = vxzspos(ea.get(), la, c);
        if (r < -1 || r >= static_cast<std::int64_t>(a.size())) vxfuzz::fail("vxzspos", r);
        vxzsnot(ea.get(), la, c);
        break;
    }
    case 3: {
        const std::int64_t r = vxzsndx(ea.get(), la, eb.get(), lb);
        if (r < -1 || r > static_cast<std::int64_t>(a.size())) vxfuzz::fail("vxzsndx", r);
        vxzsver(ea.get(), la, eb.get(), lb);
        break;
    }
    case 4: vxzsrns(ea.get(), la, eb.get(), eb.get(), std::min<std::int64_t>(lb, static_cast<std::int64_t>(b.size()))); break;
    case 5: {
        const std::int64_t r = vxzstrp(ea.get(), la);
        if (r < 0 || r > std::max<std::int64_t>(la, 0)) vxfuzz::fail("vxzstrp", r);
        vxzsStripBlanks(ea.get(), la, static_cast<std::int32_t>(in.pick(4)));
        break;
    }
    case 6: {
        vxfuzz::GuardedCells<wchar> dest(b.size() + 1);
        const bool terminated = in.pick(2);
        const std::int64_t n = static_cast<std::int64_t>(b.size());
        vxzsmov(in.pick(8) ? ea.get() : nullptr, la, dest.data(), terminated ? -1 - n : n);
        dest.expect_untouched_beyond(b.size() + (terminated ? 1 : 0), "vxzsmov wrote outside");
        break;
    }
    case 7: {
        std::int64_t length = -7, offset = -7;
        const wchar letters[] = {U'L', U'r', U'C', U'x'};
        vxzsjls(ea.get(), la, letters[in.pick(4)], in.pick(2) ? &length : nullptr, &offset);
        break;
    }
    case 8: vxzsCompare(ea.get(), la, eb.get(), lb); vxzsCompareNorm(ea.get(), la, eb.get(), lb); break;
    case 9: vxzseqn(ea.get(), la, eb.get(), lb); break;
    case 10: {
        const std::int32_t r = vxzsncmp(ea.get(), la, eb.get(), lb);
        if (r < -2 || r > 2) vxfuzz::fail("vxzsncmp", r);
        break;
    }
    default: vxzspos(nullptr, la, c); vxzsnot(nullptr, la, c); break;
    }
    timer.expect_within_millisecond("text call too slow");
    Exported_VXHandle = nullptr;
    return 0;
}
