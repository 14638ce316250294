// Test helpers for the locale property table: the library's builder run on a call record made of
// host objects (session pool, locale object or a fake one serving a handcrafted data block,
// primary and session transcoders), without loading the shared library.
//
//   locale_test::Table t("de_DE", "ISO-8859-1");   // built; t.str(prop::am), t.width(71)
//   locale_test::Block b; b.set(0, "<U00A4>");  locale_test::Table raw(b, "US-ASCII");
#pragma once

#include <gtest/gtest.h>
#include <unicode/uvernum.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "frame/kernel.h"
#include "kernel_object.h"
#include "locale/property_table.h"
#include "locale_data.h"
#include "locale_object.h"
#include "pool.h"
#include "text_convert.h"
#include "transcoder.h"

// The ICU oracles only hold with the ICU the locale data was generated from.
#define SKIP_UNLESS_DATA_ICU()                                                                              \
    if (vxhost::locale_data_icu_version() != U_ICU_VERSION)                                                \
    GTEST_SKIP() << "the locale data comes from ICU " << vxhost::locale_data_icu_version() << " and this " \
                 << "machine has ICU " << U_ICU_VERSION << ": no oracle"

namespace locale_test {

using vxhost::to_utf8;
using vxlocfmt::status;
using vxlocfmt::wchar;
namespace prop = vxlocfmt::locale::prop;

// A kernel locale data block whose 189 counted strings are set one by one; the count may claim
// more than the text (the builder reads at most 160 bytes).
class Block {
public:
    Block& set(std::size_t n, std::string_view raw, std::size_t count = std::string_view::npos) {
        unsigned char* slot = bytes_.data() + vxhost::locale_strings_offset + n * vxhost::locale_string_stride;
        const auto c = static_cast<std::uint16_t>(count == std::string_view::npos ? raw.size() : count);
        std::memcpy(slot, &c, sizeof c);
        std::memcpy(slot + 2, raw.data(), std::min(raw.size(), vxhost::locale_string_stride - 2));
        return *this;
    }
    const unsigned char* data() const { return bytes_.data(); }

private:
    std::vector<unsigned char> bytes_ = std::vector<unsigned char>(vxhost::locale_block_size);
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

class Table {
public:
    // The host's data for `locale`, or a handcrafted block, in a session of `encoding` ("": a wide
    // session, no transcoder) or with the given session transcoder; built at once.
    explicit Table(std::string_view locale, std::string_view encoding = "UTF-8") : locale_(vxhost::LocaleObject::create(locale)) {
        if (!locale_) throw std::invalid_argument("unknown locale " + std::string(locale));
        init(locale_, encoding, nullptr);
    }
    Table(const Block& block, std::string_view encoding, void* session_transcoder = nullptr) {
        fake_.block = block.data();
        init(&fake_, encoding, session_transcoder);
    }
    ~Table() {
        pool_->destroy();
        if (session_) session_->release();
        primary_->release();
        if (locale_) locale_->release();
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    status build() { return vxlocfmt::locale::fill_nlfmt_properties(call_, instance_); }
    status code() const { return code_; }
    vxlocfmt::FmtCall& call() { return call_; }
    void* session_transcoder() const { return call_.session_transcoder; }
    const vxlocfmt::PropertyCache& cache() const { return *call_.property_cache; }
    std::u32string_view text(std::size_t n) const { return vxlocfmt::locale::property_text(cache(), n); }
    std::string str(std::size_t n) const { return to_utf8(text(n)); }
    std::uint32_t width(std::size_t n) const { return cache().properties[n].width; }
    const vxlocfmt::NumberConventions& conventions(std::size_t key) const { return *cache().properties[key].conventions; }

private:
    void init(void* locale_object, std::string_view encoding, void* session_transcoder) {
        instance_.primary_transcoder = primary_;
        if (!encoding.empty()) session_ = vxhost::Transcoder::to_session(encoding);
        session_words_[vxlocfmt::session_word_pool] = pool_;
        call_.session = session_words_.data();
        call_.session_transcoder = session_transcoder ? session_transcoder : session_;
        call_.number_format = locale_object;
        code_ = build();
    }

    vxlocfmt::Instance instance_{};  // only its primary transcoder is read
    vxhost::Pool* pool_ = vxhost::Pool::create("locale test");
    vxhost::Transcoder* primary_ =
        vxhost::Transcoder::create(vxlocfmt::kernel::encoding_locale_text, vxlocfmt::kernel::encoding_wide);
    vxhost::Transcoder* session_ = nullptr;
    vxhost::LocaleObject* locale_ = nullptr;
    FakeLocale fake_;
    std::array<void*, 64> session_words_{};
    vxlocfmt::FmtCall call_{};
    status code_ = 0;
};

}  // namespace locale_test
