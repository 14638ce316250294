/*
 * Test helpers for the locale property table: the library's builder run on a call record made
 * of host objects (session pool, locale object or a fake one serving a handcrafted data block,
 * primary and session transcoders), without loading the shared library.
 *
 *   locale_test::Table t("de_DE", "ISO-8859-1");   // built; t.text(prop::am), t.width(71)
 *   locale_test::Block b; b.set(0, "<U00A4>");  locale_test::Table raw(b, "US-ASCII");
 */
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/abi.h"
#include "frame/kernel.h"
#include "kernel_object.h"
#include "locale/property_numbers.h"
#include "locale/property_table.h"
#include "locale_data.h"
#include "locale_object.h"
#include "pool.h"
#include "text_convert.h"
#include "transcoder.h"

namespace locale_test {

using vxlocfmt::status;
using vxlocfmt::wchar;
namespace prop = vxlocfmt::locale::prop;

// A kernel locale data block whose 189 counted strings are set one by one.
class Block {
public:
    Block() : bytes_(vxhost::locale_block_size, 0) {}
    Block& set(std::size_t n, std::string_view raw) { return set_counted(n, raw, raw.size()); }
    // A byte count that may claim more than the text (the builder reads at most 160 bytes).
    Block& set_counted(std::size_t n, std::string_view raw, std::size_t count) {
        unsigned char* slot = bytes_.data() + vxhost::locale_strings_offset + n * vxhost::locale_string_stride;
        const auto c = static_cast<std::uint16_t>(count);
        std::memcpy(slot, &c, sizeof c);
        std::memcpy(slot + 2, raw.data(), std::min(raw.size(), vxhost::locale_string_stride - 2));
        return *this;
    }
    const unsigned char* data() const { return bytes_.data(); }

private:
    std::vector<unsigned char> bytes_;
};

// A locale object whose operation 60 serves a given block and status.
struct FakeLocale : vxhost::KernelObject<64> {
    const unsigned char* block = nullptr;
    status answer = 0;
    FakeLocale() { words[vxlocfmt::kernel::locale_data_block_slot] = vxhost::fn_word(&serve); }
    static status serve(void* object, std::int64_t, const unsigned char** out) {
        const auto& self = vxhost::self<FakeLocale>(object);
        *out = self.block;
        return self.answer;
    }
};

// A session transcoder that holds only Latin-1 and, on failure, leaves the produced length as the
// caller preset it: the room test then sees 8.
struct SilentLatin1 : vxhost::KernelObject<8> {
    SilentLatin1() { words[vxlocfmt::kernel::object_convert_slot] = vxhost::fn_word(&convert); }
    static status convert(void*, const void* source, std::int32_t length, void* dest, std::int32_t capacity,
                          std::int32_t* produced, std::int64_t) {
        const auto* wide = static_cast<const wchar*>(source);
        auto* out = static_cast<unsigned char*>(dest);
        const std::int32_t count = length / 4;
        for (std::int32_t i = 0; i < count; ++i) {
            if (wide[i] > 0xFF) return vxhost::status_unmappable;
            if (i >= capacity) return vxlocfmt::st::does_not_fit;
            out[i] = static_cast<unsigned char>(wide[i]);
        }
        *produced = count;
        return 0;
    }
};

class Table {
public:
    // The host's data for `locale`, in a session of `encoding`; built at once.
    explicit Table(std::string_view locale, std::string_view encoding = "UTF-8") : Table(Parts{}, encoding) {
        locale_ = vxhost::LocaleObject::create(locale);
        if (!locale_) throw std::invalid_argument("unknown locale " + std::string(locale));
        call_.number_format = locale_;
        code_ = build();
    }
    // A handcrafted block, in a session of `encoding` (empty: a wide session, no transcoder).
    Table(const Block& block, std::string_view encoding) : Table(Parts{}, encoding) {
        fake_.block = block.data();
        call_.number_format = &fake_;
        code_ = build();
    }
    Table(const Block& block, void* session_transcoder) : Table(Parts{}, std::string_view()) {
        fake_.block = block.data();
        call_.number_format = &fake_;
        call_.session_transcoder = session_transcoder;
        code_ = build();
    }
    ~Table() {
        pool_->destroy();
        if (session_) session_->release();
        primary_->release();
        if (locale_) locale_->release();
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    status build() { return vxlocfmt::locale::fill_nlfmt_properties(call_, *instance_); }
    status code() const { return code_; }
    vxlocfmt::FmtCall& call() { return call_; }
    void* session_transcoder() const { return call_.session_transcoder; }
    const vxlocfmt::PropertyCache& cache() const { return *call_.property_cache; }
    std::u32string_view text(std::size_t n) const {
        const vxlocfmt::Property& p = cache().properties[n];
        return {p.value, static_cast<std::size_t>(p.length)};
    }
    std::uint32_t width(std::size_t n) const { return cache().properties[n].width; }
    const vxlocfmt::NumberConventions& conventions(std::size_t key) const {
        return *cache().properties[key].conventions;
    }
    // The raw byte count of a property in the locale object's block.
    std::size_t raw_length(std::size_t n) const {
        const unsigned char* block = nullptr;
        vxlocfmt::kernel::locale_data(call_.number_format, &block);
        std::uint16_t count;
        std::memcpy(&count, block + vxhost::locale_strings_offset + n * vxhost::locale_string_stride, 2);
        return count;
    }

private:
    struct Parts {};
    Table(Parts, std::string_view encoding)
        : instance_(std::make_unique<vxlocfmt::Instance>()),
          pool_(vxhost::Pool::create("locale test")),
          primary_(vxhost::Transcoder::create(vxlocfmt::kernel::encoding_locale_text, vxlocfmt::kernel::encoding_wide)) {
        instance_->primary_transcoder = primary_;
        if (!encoding.empty()) session_ = vxhost::Transcoder::to_session(encoding);
        session_words_[vxlocfmt::session_word_pool] = pool_;
        call_.session = session_words_.data();
        call_.session_transcoder = session_;
    }

    std::unique_ptr<vxlocfmt::Instance> instance_;  // only its primary transcoder is read
    vxhost::Pool* pool_;
    vxhost::Transcoder* primary_;
    vxhost::Transcoder* session_ = nullptr;
    vxhost::LocaleObject* locale_ = nullptr;
    FakeLocale fake_;
    std::array<void*, 64> session_words_{};
    vxlocfmt::FmtCall call_{};
    status code_ = 0;
};

inline std::string utf8(std::u32string_view text) { return vxhost::to_utf8(text); }

}  // namespace locale_test
