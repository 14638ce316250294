#include "numeric_reader.h"

#include <atomic>

#include "classic/decimal_reader.h"
#include "classic/kernel_reader.h"
#include "kernel_object.h"

namespace vxhost {
namespace {

using vxlocfmt::status;
using vxlocfmt::wchar;

std::atomic<std::int64_t> calls{0};

// The work area is the caller's extra word; the standard reader needs none.
extern "C" status reader_read(void*, const wchar* text, std::int32_t length, double* out, void*) {
    calls.fetch_add(1, std::memory_order_relaxed);
    if (!out) return vxlocfmt::classic::reader_refused;
    return vxlocfmt::classic::read_decimal(text, length, out);
}

struct NumericReader : KernelObject<vxlocfmt::classic::reader_words> {
    NumericReader() { words[vxlocfmt::classic::reader_read_slot] = fn_word(&reader_read); }
};

}  // namespace

void* numeric_reader() {
    static NumericReader reader;
    return &reader;
}

std::int64_t numeric_reader_calls() { return calls.load(std::memory_order_relaxed); }

}  // namespace vxhost
