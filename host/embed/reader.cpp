#include "reader.h"

#include <bit>
#include <cmath>

#include "embed/classic_routines.h"
#include "embed/formatter.h"
#include "embed/template_names.h"

namespace vxhost {
namespace {

extern "C" {
using informat_fn = vxlocfmt::status (*)(vxlocfmt::FmtCall*, void*);
using named_informat_fn = vxlocfmt::status (*)(vxlocfmt::FmtCall*, const vxlocfmt::wchar*, std::int32_t);
}

double missing() { return std::bit_cast<double>(vxlocfmt::missing_bits); }

// UTF-8 to code points into a reused buffer; a byte that starts no character stands for itself.
void decode(std::string_view text, std::u32string& out) {
    out.clear();
    for (std::size_t i = 0; i < text.size();) {
        const auto b = static_cast<unsigned char>(text[i]);
        const int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
        char32_t c = extra == 0 ? b : extra == 1 ? b & 0x1F : extra == 2 ? b & 0x0F : b & 0x07;
        bool whole = extra >= 0 && i + static_cast<std::size_t>(extra) < text.size();
        for (int k = 1; whole && k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            whole = (next & 0xC0) == 0x80;
            c = (c << 6) | (next & 0x3F);
        }
        if (!whole || extra < 0) {
            out.push_back(b);
            ++i;
        } else {
            out.push_back(c);
            i += static_cast<std::size_t>(extra) + 1;
        }
    }
}

}  // namespace

Reader::Reader(const Library& library, std::string_view spec_text, const SessionOptions& options) {
    const std::string spec_string(spec_text);
    auto unknown = [&] { return RequestError("unknown informat '" + spec_string + "'"); };
    if (const auto name = template_spec_name(spec_text)) {
        // A template reads the whole text: a width is accepted and not used.
        name_ = *name;
        route_ = name_ == "ANYDATE" ? Route::anydate : Route::template_name;
        function_ = library.symbol(route_ == Route::anydate ? "dtmAnyDateTime" : "dtmInformat");
        if (!function_) throw unknown();
        wide_name_.assign(name_.begin(), name_.end());
    } else {
        Spec spec = parse_spec(spec_text);
        const std::string bare = spec.name.front() == '@' ? spec.name.substr(1) : spec.name;
        if (const ClassicInformat* classic = find_classic_informat(bare)) {
            if (classic->yields != Yields::number)
                throw RequestError("informat '" + spec_string + "' gives bytes or characters, not a value");
            function_ = library.symbol(classic->symbol);
            if (!function_) throw unknown();
            route_ = Route::classic;
            name_ = bare;
            width_ = spec.width;
            decimals_ = spec.decimals.value_or(0);
        } else {
            if (spec.name.front() != '@') spec.name = "@" + spec.name;
            row_ = library.find(std::u32string(spec.name.begin(), spec.name.end()));
            if (!row_ || row_->kind != vxlocfmt::row_kind_informat) throw unknown();
            route_ = Route::registry;
            name_ = spec.name;
            const Layout layout = resolve_layout(spec, *row_, options.check_limits);
            width_ = layout.width;
            decimals_ = layout.decimals;
        }
    }
    kind_ = informat_value_kind(name_);
    session_ = open_session(library, options);
}

Reader::Result Reader::read(std::string_view text) {
    decode(text, text_);
    if (route_ == Route::registry) {
        const ReadResult result = session_->read(*row_, *width_, decimals_, text_);
        return {result.code, result.code == 0 ? result.value : missing(), result.code == 0};
    }
    vxlocfmt::FmtCall& call = session_->call();
    double value = missing();
    call.width = width_.value_or(static_cast<int>(text_.size()));
    call.decimals = decimals_;
    call.input = text_.data();
    call.input_length = static_cast<std::int32_t>(text_.size());
    call.text_limit = call.input_length;
    call.output = &value;
    call.capacity = 0;
    call.produced = 0;
    call.byte_mode = 0;
    vxlocfmt::status code = 0;
    if (route_ == Route::template_name)
        code = reinterpret_cast<named_informat_fn>(function_)(&call, wide_name_.data(),
                                                             static_cast<std::int32_t>(wide_name_.size()));
    else
        code = reinterpret_cast<informat_fn>(function_)(&call, nullptr);
    // The any-date driver answers 0 even when nothing read the text: the missing value tells.
    const bool ok = code == 0 && !(route_ == Route::anydate && std::isnan(value));
    return {code, ok ? value : missing(), ok};
}

}  // namespace vxhost
