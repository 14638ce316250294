// base64EncodeBlob and base64DecodeBlob beside a plain scalar codec (one group at a time, one
// character at a time) in the same run. Throughput counts the binary side: MB of bytes encoded or
// decoded per second. Caller's buffers, so no pool time is measured.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "floor.h"
#include "text/base64.h"
#include "text/text_exports.h"

namespace {

using vxlocfmt::wchar;

std::vector<std::uint8_t> random_bytes(std::size_t n) {
    std::mt19937 rng(42);
    std::vector<std::uint8_t> v(n);
    for (auto& b : v) b = static_cast<std::uint8_t>(rng());
    return v;
}

// The baseline: the textbook loop, with a search of the alphabet replaced by a 256-entry table.
// The plain scalar baseline is the floor the formats benchmark uses too.
using vxbench::floor_base64_decode;
using vxbench::floor_base64_encode;

void BM_EncodeBlob(benchmark::State& state) {
    const auto data = random_bytes(static_cast<std::size_t>(state.range(0)));
    std::vector<wchar> text(vxlocfmt::text::base64_encoded_size(data.size()));
    for (auto _ : state) {
        wchar* out = text.data();
        std::int64_t n = 0;
        base64EncodeBlob(nullptr, data.data(), static_cast<std::int64_t>(data.size()), &out, &n);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_EncodeScalar(benchmark::State& state) {
    const auto data = random_bytes(static_cast<std::size_t>(state.range(0)));
    std::vector<wchar> text(vxlocfmt::text::base64_encoded_size(data.size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(floor_base64_encode(data.data(), data.size(), text.data()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

std::vector<wchar> encoded(std::size_t n) {
    const auto data = random_bytes(n);
    std::vector<wchar> text(vxlocfmt::text::base64_encoded_size(n));
    floor_base64_encode(data.data(), n, text.data());
    return text;
}

void BM_DecodeBlob(benchmark::State& state) {
    const auto text = encoded(static_cast<std::size_t>(state.range(0)));
    std::vector<std::uint8_t> bytes(vxlocfmt::text::base64_decoded_capacity(text.size()));
    for (auto _ : state) {
        std::uint8_t* out = bytes.data();
        std::int64_t n = 0;
        base64DecodeBlob(nullptr, text.data(), static_cast<std::int32_t>(text.size()), &out, &n);
        benchmark::DoNotOptimize(out);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void BM_DecodeScalar(benchmark::State& state) {
    const auto text = encoded(static_cast<std::size_t>(state.range(0)));
    std::vector<std::uint8_t> bytes(vxlocfmt::text::base64_decoded_capacity(text.size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(floor_base64_decode(text.data(), text.size(), bytes.data()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

// Sizes: a field, a page, a large blob.
BENCHMARK(BM_EncodeBlob)->Arg(48)->Arg(4096)->Arg(1 << 20);
BENCHMARK(BM_EncodeScalar)->Arg(48)->Arg(4096)->Arg(1 << 20);
BENCHMARK(BM_DecodeBlob)->Arg(48)->Arg(4096)->Arg(1 << 20);
BENCHMARK(BM_DecodeScalar)->Arg(48)->Arg(4096)->Arg(1 << 20);

}  // namespace

BENCHMARK_MAIN();
