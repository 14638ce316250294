/*
 * The working copy of the locale informats: the text they rewrite into classic notation (","
 * grouping, "." point, a leading "-") before a classic informat reads it. Fixed storage, no
 * allocation: the locale informats read at most 32 characters, and a "-" may be put in front.
 *
 *   RewriteText t(U"1.234,5");
 *   t.map([](wchar c) { return c == U'.' ? U',' : c == U',' ? U'.' : c; });   // "1,234.5"
 *   status s = read_classic(call, t, vxfmtzifmnpn, extra);
 */
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "frame/abi.h"

namespace vxlocfmt::nlnum {

// The most characters a locale informat reads.
inline constexpr std::size_t informat_read_limit = 32;

// The blanks a field or a locale separator is padded with: the ordinary blank and the two
// no-break spaces locale output uses, so that what a user types reads as what they see.
constexpr bool is_field_blank(wchar c) { return c == U' ' || c == U'\u00A0' || c == U'\u202F'; }

// Field blanks off both ends of a text.
constexpr std::u32string_view trim_field_blanks(std::u32string_view s) {
    while (!s.empty() && is_field_blank(s.front())) s.remove_prefix(1);
    while (!s.empty() && is_field_blank(s.back())) s.remove_suffix(1);
    return s;
}

class RewriteText {
public:
    static constexpr std::size_t capacity = informat_read_limit + 8;

    RewriteText() : size_(0) {}
    explicit RewriteText(std::u32string_view text) : size_(std::min(text.size(), informat_read_limit)) {
        std::copy_n(text.begin(), size_, cells_);
    }
    void push_back(wchar c) {
        if (size_ < capacity) cells_[size_++] = c;
    }
    std::u32string_view view() const { return {cells_, size_}; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    wchar front() const { return cells_[0]; }
    wchar back() const { return cells_[size_ - 1]; }
    bool contains(wchar c) const { return view().find(c) != std::u32string_view::npos; }

    // Every character through f, in one pass.
    template <class F>
    void map(F f) {
        for (std::size_t i = 0; i < size_; ++i) cells_[i] = f(cells_[i]);
    }
    // Removes every character for which the predicate holds; answers how many went.
    template <class P>
    std::size_t erase_if(P p) {
        const std::size_t before = size_;
        size_ = static_cast<std::size_t>(std::remove_if(cells_, cells_ + size_, p) - cells_);
        return before - size_;
    }
    // Every occurrence of `from` (a non-empty text) becomes the one character `to`.
    void replace_all(std::u32string_view from, wchar to) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < size_;) {
            if (view().substr(i, from.size()) == from) {
                cells_[kept++] = to;
                i += from.size();
            } else {
                cells_[kept++] = cells_[i++];
            }
        }
        size_ = kept;
    }
    // Removes every occurrence of `what` (a non-empty text), closing the gap, until none is left.
    void remove_all(std::u32string_view what) {
        for (std::size_t at; (at = view().find(what)) != std::u32string_view::npos;) {
            std::copy(cells_ + at + what.size(), cells_ + size_, cells_ + at);
            size_ -= what.size();
        }
    }
    void drop_front() { remove(0); }
    void drop_back() { --size_; }
    void remove(std::size_t at) {
        std::copy(cells_ + at + 1, cells_ + size_, cells_ + at);
        --size_;
    }
    void set(std::size_t at, wchar c) { cells_[at] = c; }
    void push_front(wchar c) {
        if (size_ == capacity) return;
        std::copy_backward(cells_, cells_ + size_, cells_ + size_ + 1);
        cells_[0] = c;
        ++size_;
    }
    // Field blanks off both ends.
    void trim() {
        std::size_t first = 0, last = size_;
        while (first < last && is_field_blank(cells_[first])) ++first;
        while (last > first && is_field_blank(cells_[last - 1])) --last;
        if (first > 0) std::copy(cells_ + first, cells_ + last, cells_);
        size_ = last - first;
    }

private:
    wchar cells_[capacity];
    std::size_t size_;
};

// Reads the rewritten text with a classic informat on the caller's record: the record points
// at the text (width and length: its size; decimals 0 when it holds no ".", since the locale
// informats never imply decimals); the caller's width, decimals and text fields are put back.
status read_classic(FmtCall& call, const RewriteText& text, format_fn classic, void* extra);

}  // namespace vxlocfmt::nlnum
