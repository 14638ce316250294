// The byte wrapper runs the wide format on the caller's record and puts it back: after every
// `_b` entry of the registry, at widths that take the stack cells and the pool block, with values
// in range, missing and extreme, the caller's record is byte for byte what it was (with an output
// record of its own), or differs only in its produced length (without one). The record is filled
// with a pattern first, its unused words included, so a field left changed shows.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "frame/abi.h"
#include "library.h"
#include "session.h"

namespace {

using namespace vxlocfmt;

TEST(CallerRecord, EveryByteVariantLeavesItAsItWas) {
    vxhost::Library library;
    vxhost::SessionOptions options;
    options.locale = "de_DE";
    options.encoding = "UTF-8";
    vxhost::Session session(library, options);
    int failures = 0;
    for (const FuncInfo* row = library.registry(); row->function && failures < 5; ++row) {
        if (row->kind != row_kind_format) continue;
        for (const std::int32_t width : {12, 300}) {
            for (double value : {23000.5, -1234.5, std::nan(""), 1e300}) {
                for (const bool own_field : {false, true}) {
                    FmtCall& call = session.call();
                    std::vector<char> bytes(400, '~');
                    call.output = bytes.data();
                    call.capacity = 400;
                    call.width = width;
                    call.decimals = 2;
                    call.input = &value;
                    row->byte_function(&call, nullptr, nullptr);  // a property table, if any, is built
                    std::memset(call.unused_a, 0x5A, sizeof call.unused_a);
                    std::memset(call.unused_b, 0xA5, sizeof call.unused_b);
                    call.width = width;
                    call.decimals = 2;
                    call.input = &value;
                    call.input_length = 77;
                    call.text_limit = 88;
                    call.output = bytes.data();
                    call.capacity = 400;
                    call.produced = -5;
                    FmtCall out{};
                    std::vector<char> out_bytes(400, '~');
                    out.width = width;
                    out.capacity = 400;
                    out.output = out_bytes.data();
                    FmtCall before;
                    std::memcpy(&before, &call, sizeof call);
                    row->byte_function(&call, own_field ? nullptr : &out, nullptr);
                    if (own_field) before.produced = call.produced;
                    if (std::memcmp(&before, &call, sizeof call) != 0 && ++failures <= 5)
                        ADD_FAILURE() << "row " << row - library.registry() << " width " << width << " value " << value
                                      << (own_field ? " (own field)" : " (output record)");
                }
            }
        }
    }
}

}  // namespace
