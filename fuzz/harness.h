/*
 * What every fuzz target shares: a reader that turns the leading input bytes into parameters,
 * exact-size copies of inputs (so the sanitizer sees any over-read), output buffers inside guard
 * cells, and the checks that end a run with a message and abort().
 *
 *   FuzzInput in(data, size);
 *   GuardedCells<char32_t> out(in.pick(300));   // capacity chosen by the input
 */
#pragma once

#include <ctime>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

namespace vxfuzz {

[[noreturn]] inline void fail(const char* what, long long a = 0, long long b = 0) {
    std::fprintf(stderr, "fuzz check failed: %s (%lld, %lld)\n", what, a, b);
    std::abort();
}

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    template <class T>
    T take() {
        T value{};
        const std::size_t n = std::min(sizeof(T), size_ - at_);
        std::memcpy(&value, data_ + at_, n);
        at_ += n;
        return value;
    }
    // A number in [0, n).
    std::uint32_t pick(std::uint32_t n) { return n ? take<std::uint32_t>() % n : 0; }
    std::int32_t between(std::int32_t low, std::int32_t high) {
        return low + static_cast<std::int32_t>(pick(static_cast<std::uint32_t>(high - low + 1)));
    }
    std::span<const std::uint8_t> rest() const { return {data_ + at_, size_ - at_}; }
    std::size_t left() const { return size_ - at_; }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// `length` characters of a reader's text: a literal code point (any, surrogates and beyond
// U+10FFFF too) or a huge value five times in sixteen, else a character of `alphabet` (a string
// literal: its terminating 0 is not drawn).
template <std::size_t N>
std::vector<char32_t> fuzz_text(FuzzInput& in, std::size_t length, const char32_t (&alphabet)[N]) {
    std::vector<char32_t> text(length);
    for (auto& c : text) {
        const std::uint32_t raw = in.take<std::uint32_t>();
        const std::uint32_t kind = raw >> 28;
        c = kind == 0 || kind >= 12 ? raw : alphabet[raw % (N - 1)];
    }
    return text;
}

// A heap copy of exactly n elements: reading element n is an overflow the sanitizer reports.
template <class T>
std::unique_ptr<T[]> exact_copy(const T* source, std::size_t n) {
    std::unique_ptr<T[]> copy(new T[n ? n : 1]);
    if (n) std::memcpy(copy.get(), source, n * sizeof(T));
    return copy;
}

// `capacity` cells handed to the code under test, with guard cells on both sides.
template <class T>
class GuardedCells {
public:
    static constexpr std::size_t guard = 16;
    static constexpr T pattern = static_cast<T>(0x5A);

    explicit GuardedCells(std::size_t capacity) : cells_(capacity + 2 * guard, pattern), capacity_(capacity) {}
    T* data() { return cells_.data() + guard; }
    std::size_t capacity() const { return capacity_; }

    // Nothing changed outside the first `allowed` cells of the handed-out area.
    void expect_untouched_beyond(std::size_t allowed, const char* who) const {
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const bool inside = i >= guard && i < guard + allowed;
            if (!inside && cells_[i] != pattern)
                fail(who, static_cast<long long>(i) - static_cast<long long>(guard), static_cast<long long>(allowed));
        }
    }

private:
    std::vector<T> cells_;
    std::size_t capacity_;
};

// One call must stay within a time budget once its locale is open. The time is the thread's own
// CPU time, so a busy machine that preempts the call does not count; sanitizers still slow calls
// down (and their allocator now and then does tens of milliseconds of its own work inside a
// call), so the budget is scaled by VXFUZZ_SLOWDOWN (default 100; the replays of an optimised
// build set 1).
// Replays clear this for a first, untimed pass over the corpus: the first calls into the library
// take page faults and lazy set-up that are no property of the input.
inline bool call_timing_armed = true;

class CallTimer {
public:
    CallTimer() : start_(now_ms()) {}
    void expect_within_millisecond(const char* who) const {
        static const double slowdown = [] {
            const char* s = std::getenv("VXFUZZ_SLOWDOWN");
            return s ? std::atof(s) : 100.0;
        }();
        const double ms = now_ms() - start_;
        if (call_timing_armed && ms > slowdown) fail(who, static_cast<long long>(ms * 1000), static_cast<long long>(slowdown * 1000));
    }

private:
    static double now_ms() {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_nsec) / 1e6;
    }
    double start_;
};

}  // namespace vxfuzz
