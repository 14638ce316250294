/*
 * The byte wrapper's side of a call: the caller's byte field, and what a byte-mode fit test left
 * in it. A fit test that converts its text anyway converts it straight into that field and says so
 * (`keep`); when the text it kept is the one the format answers, the wrapper has nothing left to
 * convert.
 *
 *   if (WrappedCall* wrapped = WrappedCall::of(call)) ... wrapped->field, wrapped->room ...
 *
 * The record the format runs on carries the way here in the first of the host's unused words
 * (`unused_a`): this object's address, and that address mixed with the record's own, so a record
 * that merely holds leftovers there is not taken for a wrapped one (nothing is read through the
 * address before both words agree). The wrapper marks the caller's record for the call and puts
 * the words back after it; a record a format copies is not recognised (another address), and its
 * format gets the plain fit test. `record` is a record of the object's own, for a caller that runs
 * a format on a copy (`mark()` marks it).
 */
#pragma once

#include <cstdint>
#include <cstring>

#include "frame/abi.h"

namespace vxlocfmt {

struct WrappedCall {
    FmtCall record;  // a copy to run the format on, when a caller makes one (mark())
    unsigned char* field = nullptr;  // the caller's bytes
    std::int32_t room = 0;           // min(width, capacity) of the output record
    // What a fit test left in `field`: the bytes of `kept_count` characters at `kept_text`
    // (null: nothing usable). Only a test that fits keeps; any later test clears it first.
    const wchar* kept_text = nullptr;
    std::int32_t kept_count = 0;
    std::int32_t kept_bytes = 0;
    // Cells from `kept_text` on, the kept ones and the cells after them, that are in `field` one
    // byte each (all below the identity bound); 0 when the text took the transcoder.
    std::int32_t narrowed_cells = 0;
    // Blanks that the format says follow the kept text in its answer (a name left-justified in
    // its field): the wrapper writes them without reading them back.
    std::int32_t blanks_after = 0;

    // Marks `call` as running under this object; `unmark` (or the caller's own words put back)
    // ends it.
    void mark(FmtCall& call) {
        const std::uintptr_t words[2] = {reinterpret_cast<std::uintptr_t>(this), check_word(this, &call)};
        std::memcpy(call.unused_a, words, sizeof words);
    }
    void mark() { mark(record); }
    static WrappedCall* of(const FmtCall& call) {
        std::uintptr_t words[2];
        std::memcpy(words, call.unused_a, sizeof words);
        auto* self = reinterpret_cast<WrappedCall*>(words[0]);
        if (!self || words[1] != check_word(self, &call)) return nullptr;
        return self;
    }
    void keep(const wchar* text, std::int32_t count, std::int32_t bytes) {
        kept_text = text;
        kept_count = count;
        kept_bytes = bytes;
        narrowed_cells = 0;
        blanks_after = 0;
    }

private:
    // The second marking word: both addresses, mixed with a constant so that a record holding
    // zeros or two equal words is never taken for a marked one.
    static std::uintptr_t check_word(const WrappedCall* self, const FmtCall* call) {
        return (reinterpret_cast<std::uintptr_t>(self) ^ reinterpret_cast<std::uintptr_t>(call)) ^
               static_cast<std::uintptr_t>(0x5A17C0DE9E3779B9ull);
    }
};

static_assert(sizeof(FmtCall::unused_a) >= 2 * sizeof(std::uintptr_t));

}  // namespace vxlocfmt
