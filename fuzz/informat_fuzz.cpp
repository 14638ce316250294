// Every registry informat on any text of up to 300 wide characters (surrogates and values above
// U+10FFFF included) and any text limit, copied into an exact-size allocation: no over-read, a
// status an informat may return, the missing value left behind on failure, time linear in the
// text.
#include <bit>
#include <cmath>
#include <memory>
#include <vector>

#include "extension_context.h"
#include "frame/instance.h"
#include "frame/kernel.h"
#include "frame/registry.h"
#include "harness.h"
#include "kernel_handle.h"
#include "library.h"
#include "session.h"

namespace {

using namespace vxlocfmt;
using vxfuzz::FuzzInput;

constexpr const char* locales[] = {"en_US", "de_DE", "fr_FR", "ja_JP", "ar_EG", "hi_IN", "zh_Hans_CN", "ru_RU"};
constexpr char32_t alphabet[] = U" 0123456789-/.,:+TWZ年月日AMPMJanMärz\u00A0\u202F";

struct World {
    vxhost::ExtensionContext context;
    Instance* instance = nullptr;
    std::vector<std::unique_ptr<vxhost::Session>> sessions;
    std::vector<const FuncInfo*> informats;
    World() {
        Exported_VXHandle = vxhost::kernel_handle();
        instance = static_cast<Instance*>(vxlocfmt_entry(&context, nullptr));
        if (!instance) vxfuzz::fail("no instance");
        vxhost::adopt_instance(instance);
        for (const char* locale : locales) {
            vxhost::SessionOptions options;
            options.locale = locale;
            sessions.push_back(std::make_unique<vxhost::Session>(instance, options));
        }
        for (const FuncInfo* row = registry::table(); row->function; ++row)
            if (row->kind == row_kind_informat) informats.push_back(row);
    }
};

World& world() {
    static World w;
    return w;
}

bool allowed_status(status s) {
    return s <= 5 || s == 999 || s == st::date_instance_not_found || (s & 0xFFFF0000u) == 0x803F0000u;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    World& w = world();
    FuzzInput in(data, size);
    const FuncInfo& row = *w.informats[in.pick(static_cast<std::uint32_t>(w.informats.size()))];
    vxhost::Session& session = *w.sessions[in.pick(static_cast<std::uint32_t>(std::size(locales)))];
    const std::int32_t width = in.between(-5, 300);
    const std::int32_t decimals = in.between(-2, 40);
    const std::uint8_t flags = in.take<std::uint8_t>();
    const std::size_t length = in.pick(301);
    std::vector<char32_t> text(length);
    for (auto& c : text) {
        const std::uint32_t raw = in.take<std::uint32_t>();
        // A literal code point (any, surrogates and beyond U+10FFFF too), a plausible character,
        // or a huge value.
        const std::uint32_t kind = raw >> 28;
        c = kind == 0 || kind >= 12 ? raw : alphabet[raw % (std::size(alphabet) - 1)];
    }
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
    if (code != 0 && code != st::not_implemented && code > 5 && !std::isnan(result))
        vxfuzz::fail("a failed read leaves no missing value", code);
    return 0;
}
