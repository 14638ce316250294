#include "session.h"

#include <bit>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "frame/kernel.h"
#include "locale_object.h"
#include "pool.h"
#include "transcoder.h"

namespace vxhost {
namespace {

constexpr char other_extension_name[] = "otherext";
constexpr std::int32_t initial_cells = 512;

}  // namespace

Session::Session(const Library& library, const SessionOptions& options) : Session(library.instance(), options) {}

Session::Session(vxlocfmt::Instance* instance, const SessionOptions& options) : options_(options) {
    locale_ = LocaleObject::create(options.locale);
    if (!locale_) throw std::invalid_argument("unknown locale " + options.locale);
    // A wide session counts widths in characters; a byte session in its encoding's bytes.
    transcoder_ = options.encoding.empty() ? Transcoder::wide_session() : Transcoder::to_session(options.encoding);
    if (!transcoder_) {
        locale_->release();
        throw std::invalid_argument("unknown encoding " + options.encoding);
    }
    pool_ = Pool::create("session");
    scratch_pool_ = Pool::create("scratch");
    if (!pool_ || !scratch_pool_) {
        if (pool_) pool_->destroy();
        if (scratch_pool_) scratch_pool_->destroy();
        transcoder_->release();
        locale_->release();
        throw std::runtime_error("cannot create the session pools");
    }

    other_extension_[1] = const_cast<char*>(other_extension_name);
    session_words_[vxlocfmt::session_word_pool] = pool_;
    session_words_[vxlocfmt::session_word_extensions] = other_extension_.data();
    session_words_[vxlocfmt::session_word_extensions + 1] = instance;

    const char32_t tag[] = U"VXFM";
    std::memcpy(scratch_block_.data(), tag, 4 * sizeof(char32_t));
    scratch_block_[vxlocfmt::scratch_block_word_pool] = scratch_pool_;

    call_.number_format = locale_;
    call_.session_transcoder = transcoder_;
    call_.session = session_words_.data();
    call_.scratch_pool_block = scratch_block_.data();
    call_.flags = options.check_limits ? vxlocfmt::call_flag_check_limits : 0;
    ensure_capacity(initial_cells);
}

Session::~Session() {
    pool_->destroy();  // the property table lives here
    scratch_pool_->destroy();
    transcoder_->release();
    locale_->release();
}

const std::string& Session::locale_id() const { return locale_->id(); }

void Session::ensure_capacity(std::int32_t width) {
    const auto cells = static_cast<std::size_t>(std::max(width, initial_cells));
    if (wide_.size() < cells) wide_.resize(cells);
    if (bytes_.size() < cells) bytes_.resize(cells);
}

FormatResult Session::format(const vxlocfmt::FuncInfo& row, std::int32_t width, std::int32_t decimals, double value) {
    ensure_capacity(width);
    call_.width = width;
    call_.decimals = decimals;
    call_.input = &value;
    call_.input_length = 0;
    call_.produced = 0;
    call_.byte_mode = 0;
    call_.capacity = std::max(width, 0);
    if (byte_output() && row.byte_function) {
        call_.output = bytes_.data();
        call_.byte_mode = 1;  // the wide format chooses what fits the field in session bytes
        const vxlocfmt::status code = row.byte_function(&call_, nullptr, nullptr);
        const auto n = static_cast<std::size_t>(std::clamp(call_.produced, 0, call_.capacity));
        return {code, {}, {bytes_.data(), n}};
    }
    call_.output = wide_.data();
    const vxlocfmt::status code = row.function(&call_, nullptr);
    const auto n = static_cast<std::size_t>(std::clamp(call_.produced, 0, call_.capacity));
    return {code, {wide_.data(), n}, {}};
}

Session::FormatRun Session::format_run(const vxlocfmt::FuncInfo& row, std::int32_t width, std::int32_t decimals,
                                       bool bytes) {
    if (bytes && !(byte_output() && row.byte_function))
        throw std::logic_error("a byte run needs a byte session and a row with a byte variant");
    call_.width = width;
    call_.decimals = decimals;
    call_.input_length = 0;
    call_.byte_mode = bytes ? 1 : 0;
    call_.capacity = std::max(width, 0);
    return FormatRun(call_, row, bytes);
}

ReadResult Session::read(const vxlocfmt::FuncInfo& row, std::int32_t width, std::int32_t decimals,
                         std::u32string_view text) {
    // An informat that returns without writing its result leaves the
    // missing value, never a number.
    double value = std::bit_cast<double>(vxlocfmt::missing_bits);
    call_.width = width;
    call_.decimals = decimals;
    call_.input = text.data();
    call_.input_length = static_cast<std::int32_t>(text.size());
    call_.text_limit = static_cast<std::int32_t>(text.size());
    call_.output = &value;
    call_.capacity = 0;
    call_.produced = 0;
    call_.byte_mode = 0;
    const vxlocfmt::status code = row.function(&call_, nullptr);
    return {code, value};
}

}  // namespace vxhost
