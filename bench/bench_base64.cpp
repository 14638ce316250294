// base64EncodeBlob and base64DecodeBlob beside a plain scalar codec (one group at a time, one
// character at a time) in the same run. Throughput counts the binary side: MB of bytes encoded or
// decoded per second. Caller's buffers, so no pool time is measured.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

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
std::size_t scalar_encode(const std::uint8_t* in, std::size_t n, wchar* out) {
    const auto& a = vxlocfmt::text::base64_alphabet;
    std::size_t o = 0, i = 0;
    for (; i + 3 <= n; i += 3) {
        out[o++] = a[in[i] >> 2];
        out[o++] = a[((in[i] & 3) << 4) | (in[i + 1] >> 4)];
        out[o++] = a[((in[i + 1] & 15) << 2) | (in[i + 2] >> 6)];
        out[o++] = a[in[i + 2] & 63];
    }
    if (n - i == 1) {
        out[o++] = a[in[i] >> 2];
        out[o++] = a[(in[i] & 3) << 4];
        out[o++] = U'=';
        out[o++] = U'=';
    } else if (n - i == 2) {
        out[o++] = a[in[i] >> 2];
        out[o++] = a[((in[i] & 3) << 4) | (in[i + 1] >> 4)];
        out[o++] = a[(in[i + 1] & 15) << 2];
        out[o++] = U'=';
    }
    return o;
}

struct ScalarIndex {
    std::uint8_t v[256];
    ScalarIndex() {
        std::fill(std::begin(v), std::end(v), 255);
        for (std::size_t i = 0; i < 64; ++i)
            v[vxlocfmt::text::base64_alphabet[i]] = static_cast<std::uint8_t>(i);
    }
};
const ScalarIndex scalar_index;

// Valid input only, as benchmarked; returns bytes written.
std::size_t scalar_decode(const wchar* in, std::size_t n, std::uint8_t* out) {
    std::size_t o = 0;
    for (std::size_t i = 0; i < n; i += 4) {
        std::uint8_t s[4];
        int k = 0;
        for (; k < 4 && in[i + k] != U'='; ++k) s[k] = scalar_index.v[in[i + k] & 0xFF];
        out[o++] = static_cast<std::uint8_t>(s[0] << 2 | s[1] >> 4);
        if (k > 2) out[o++] = static_cast<std::uint8_t>(s[1] << 4 | s[2] >> 2);
        if (k > 3) out[o++] = static_cast<std::uint8_t>(s[2] << 6 | s[3]);
    }
    return o;
}

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
        benchmark::DoNotOptimize(scalar_encode(data.data(), data.size(), text.data()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

std::vector<wchar> encoded(std::size_t n) {
    const auto data = random_bytes(n);
    std::vector<wchar> text(vxlocfmt::text::base64_encoded_size(n));
    scalar_encode(data.data(), n, text.data());
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
        benchmark::DoNotOptimize(scalar_decode(text.data(), text.size(), bytes.data()));
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
