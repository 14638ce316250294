/*
 * The byte wrapper's own record: the copy of the call record that the wide format runs on, and
 * the caller's byte field behind it. A byte-mode fit test that converts its text anyway converts
 * it straight into that field and says so (`keep`); when the text it kept is the one the format
 * answers, the wrapper has nothing left to convert.
 *
 *   if (WrappedCall* wrapped = WrappedCall::of(call)) ... wrapped->field, wrapped->room ...
 *
 * The copy is recognised by its own address, which the wrapper writes into the first of the
 * host's unused words of the copy: a record the host built does not hold its own address there,
 * and the caller's record is never written. A format that copies the record (or any other caller)
 * finds no wrapped call and gets the plain fit test.
 */
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "frame/abi.h"

namespace vxlocfmt {

struct WrappedCall {
    FmtCall record;  // first: the format's FmtCall* is this object's address
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

    void mark() {
        const void* self = &record;
        std::memcpy(record.unused_a, &self, sizeof self);
    }
    static WrappedCall* of(const FmtCall& call) {
        const void* self = nullptr;
        std::memcpy(&self, call.unused_a, sizeof self);
        if (self != &call) return nullptr;
        return reinterpret_cast<WrappedCall*>(const_cast<FmtCall*>(&call));
    }
    void keep(const wchar* text, std::int32_t count, std::int32_t bytes) {
        kept_text = text;
        kept_count = count;
        kept_bytes = bytes;
        narrowed_cells = 0;
        blanks_after = 0;
    }
};

static_assert(std::is_standard_layout_v<WrappedCall>, "the record's address is the wrapped call's");
static_assert(sizeof(FmtCall::unused_a) >= sizeof(void*));

}  // namespace vxlocfmt
