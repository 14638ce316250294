// The byte-mode fit test under the wrapper converts its text straight into the caller's field and
// the wrapper keeps those bytes. Held to the plain fit test and the general conversion (ICU a
// character at a time): the same verdict on random texts, limits and field rooms, and kept bytes
// equal to the conversion; and the whole wrapper and the `_b` entries (the name formats answer
// theirs in bytes themselves) through the library's formats, with output records narrower or
// wider than the call or none, equal to the wide text converted by the wrapper's rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "frame/byte_output.h"
#include "frame/session_fit.h"
#include "frame/wrapped_call.h"
#include "library.h"
#include "session.h"
#include "text_convert.h"
#include "transcoder.h"

namespace {

using namespace vxlocfmt;
using vxhost::Transcoder;

const char* const encodings[] = {"UTF-8", "ISO-8859-1", "windows-1252", "KOI8-R", "Shift_JIS"};

struct Converted {
    status code;
    std::string bytes;
};

Converted general(Transcoder* t, std::u32string_view text, std::int32_t room) {
    std::vector<unsigned char> out(static_cast<std::size_t>(std::max(room, 0)) + 1);
    std::int32_t produced = 0;
    const status code = t->convert_by_icu(text.data(), text.size(), out.data(), room, &produced);
    return {code, std::string(out.begin(), out.begin() + produced)};
}

TEST(KeptBytes, FitTestAsThePlainOneAndKeepsTheConversion) {
    std::mt19937_64 random(0xB17E5);
    const char32_t others[] = {U'ä', U'€', U'я', U'月', U'\u00AD', U'\U0001F600', 0xD800, U'\u00A0'};
    for (const char* encoding : encodings) {
        Transcoder* t = Transcoder::to_session(encoding);
        int failures = 0;
        for (int n = 0; n < 3000 && failures < 5; ++n) {
            // A text, then blanks up to the stored cells, as the formats write their fields.
            const std::size_t length = random() % 24;
            std::u32string cells;
            for (std::size_t i = 0; i < length; ++i) {
                const std::uint64_t r = random();
                cells += r % 4 ? static_cast<char32_t>(0x20 + (r >> 8) % 0x5F) : others[(r >> 8) % std::size(others)];
            }
            const auto readable = static_cast<std::int32_t>(length + random() % 8);
            cells.resize(static_cast<std::size_t>(readable), U' ');
            const auto limit = static_cast<std::int32_t>(random() % 40);
            const auto room = static_cast<std::int32_t>(random() % 40);
            const std::u32string_view text(cells.data(), length);

            FmtCall plain{};
            plain.session_transcoder = t;
            const bool want = fits_session_encoding(plain, text, limit);

            std::vector<unsigned char> field(static_cast<std::size_t>(room) + 8, '~');
            WrappedCall wrapped;
            wrapped.record.session_transcoder = t;
            wrapped.field = field.data();
            wrapped.room = room;
            wrapped.mark();
            const bool got = fits_session_encoding(wrapped.record, text, limit, readable);
            bool ok = got == want && std::all_of(field.begin() + room, field.end(), [](unsigned char b) { return b == '~'; });
            if (wrapped.kept_text) {
                // Kept only by a fit, with the bytes the conversion into the field writes.
                const Converted c = general(t, text, room);
                const std::string kept(field.begin(), field.begin() + wrapped.kept_bytes);
                ok = ok && got && wrapped.kept_count == static_cast<std::int32_t>(length) && c.code == 0 &&
                     kept == c.bytes && wrapped.narrowed_cells <= std::min(readable, room);
                const std::string narrowed(field.begin(), field.begin() + wrapped.narrowed_cells);
                ok = ok && (wrapped.narrowed_cells == 0 ||
                            narrowed == general(t, {cells.data(), static_cast<std::size_t>(wrapped.narrowed_cells)},
                                                room).bytes);
            }
            if (!ok && ++failures <= 5)
                ADD_FAILURE() << encoding << " length " << length << " limit " << limit << " room " << room
                              << ": fits " << got << ", plain " << want;
        }
        t->release();
    }
}

// The wrapper rules on the wide text, with the general conversion.
Converted wrapper_rules(Transcoder* t, std::u32string_view wide, std::int32_t field, std::int32_t width, char align) {
    Converted first = general(t, wide, field);
    if (first.code != st::does_not_fit) return first;
    if (align == 'l') return {0, first.bytes};
    std::size_t blanks = 0;
    while (blanks < std::min<std::size_t>(wide.size(), static_cast<std::size_t>(std::max(width, 0))) &&
           wide[blanks] == U' ')
        ++blanks;
    if (blanks == 0 || field < 1) return first;
    Converted again = general(t, wide.substr(blanks), field);
    again.bytes.insert(0, static_cast<std::size_t>(field) - again.bytes.size(), ' ');
    return again;
}

TEST(KeptBytes, FormatsThroughTheWrapperWithOtherOutputRecords) {
    vxhost::Library library;
    const char32_t* const rows[] = {U"NLDATE", U"NLDATEW", U"NLDATEMN", U"NLDATM", U"NLTIME", U"WEEKV", U"WEEKU", U"NLSTRMON", U"NLSTRWK"};
    std::mt19937_64 random(0x0B7E);
    int checked = 0, failures = 0;
    for (const char* locale : {"de_DE", "ja_JP", "ru_RU"}) {
        for (const char* encoding : encodings) {
            vxhost::SessionOptions options;
            options.locale = locale;
            options.encoding = encoding;
            vxhost::Session session(library, options);
            Transcoder* t = Transcoder::to_session(encoding);
            for (const char32_t* name : rows) {
                const FuncInfo* row = library.find(name);
                ASSERT_NE(row, nullptr);
                const std::u32string n = name;
                const char align = n.starts_with(U"NLSTR") ? 'r' : 'l';
                for (int k = 0; k < 12; ++k) {
                    const double value = n.starts_with(U"NLSTR") ? double(1 + random() % 12)
                                         : n == U"NLDATM"        ? double(random() % 4'000'000'000)
                                         : n == U"NLTIME"        ? double(random() % 86400)
                                                                : double(random() % 60000) - 10000;
                    const auto width = static_cast<std::int32_t>(row->min_width + random() % 30);
                    if (width > static_cast<std::int32_t>(row->max_width)) continue;
                    // The wide text the wrapper runs, from a plain record in byte mode.
                    FmtCall& call = session.call();
                    std::vector<char32_t> cells(256);
                    // The name formats' options: abbreviated (1) and upper case (2).
                    const auto decimals = static_cast<std::int32_t>(n.starts_with(U"NLSTR") ? random() % 4 : 0);
                    call.width = width;
                    call.decimals = decimals;
                    call.input = &value;
                    call.output = cells.data();
                    call.capacity = 256;
                    call.byte_mode = 1;
                    row->function(&call, nullptr);
                    const std::u32string_view wide(cells.data(), static_cast<std::size_t>(std::clamp(call.produced, 0, 256)));

                    // Through the wrapper into an output record of its own width and capacity.
                    FmtCall out{};
                    std::vector<char> bytes(80, '~');
                    out.width = static_cast<std::int32_t>(random() % 40);
                    out.capacity = static_cast<std::int32_t>(random() % 40);
                    out.output = bytes.data();
                    const std::int32_t field = std::min(out.width, out.capacity);
                    const status code = vxfmtnlbyte(&call, &out, nullptr, align, row->function);
                    const Converted want = wrapper_rules(t, wide, field, out.width, align);
                    const std::string got(bytes.data(), static_cast<std::size_t>(std::clamp(out.produced, 0, 80)));
                    const bool guarded = std::all_of(bytes.begin() + field, bytes.end(), [](char b) { return b == '~'; });

                    // The `_b` entry (which the name formats answer themselves in their common
                    // case), with the same output record and with none (the call's own field).
                    std::vector<char> entry_bytes(80, '~');
                    out.output = entry_bytes.data();
                    out.produced = -1;
                    const status entry_code = row->byte_function(&call, &out, nullptr);
                    const std::string entry(entry_bytes.data(), static_cast<std::size_t>(std::clamp(out.produced, 0, 80)));
                    const bool entry_guarded =
                        std::all_of(entry_bytes.begin() + field, entry_bytes.end(), [](char b) { return b == '~'; });
                    std::vector<char> own_bytes(80, '~');
                    call.output = own_bytes.data();
                    call.capacity = static_cast<std::int32_t>(random() % 40);
                    call.produced = -1;
                    const status own_code = row->byte_function(&call, nullptr, nullptr);
                    const std::int32_t own_field = std::min(width, call.capacity);
                    const Converted own_want = wrapper_rules(t, wide, own_field, width, align);
                    const std::string own(own_bytes.data(), static_cast<std::size_t>(std::clamp(call.produced, 0, 80)));
                    const bool own_guarded = std::all_of(own_bytes.begin() + std::max(own_field, 0), own_bytes.end(),
                                                         [](char b) { return b == '~'; });
                    ++checked;
                    if ((code != want.code || got != want.bytes || !guarded || entry_code != want.code ||
                         entry != want.bytes || !entry_guarded || own_code != own_want.code || own != own_want.bytes ||
                         !own_guarded) &&
                        ++failures <= 10)
                        ADD_FAILURE() << locale << " " << encoding << " " << vxhost::to_utf8(n) << width << "." << decimals
                                      << " out " << out.width << "/" << out.capacity << ": [" << got << "] [" << entry
                                      << "] " << std::hex << code << " " << entry_code << " want [" << want.bytes
                                      << "] " << want.code << "; own field " << std::dec << own_field << ": [" << own
                                      << "] " << std::hex << own_code << " want [" << own_want.bytes << "] "
                                      << own_want.code;
                }
            }
            t->release();
        }
    }
    EXPECT_GT(checked, 1000);
}

}  // namespace
