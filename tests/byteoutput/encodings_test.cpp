// The `_b` variant of every date, time, week and name format, in ten locales and four session
// encodings, against the wide result of the same call converted independently by ICU: the bytes
// are that conversion cut at the last whole character (left-aligned formats) or justified again
// (right-aligned ones), never more than the width, and they decode cleanly.
#include <gtest/gtest.h>

#include <unicode/ucnv.h>

#include <string>
#include <vector>

#include "harness.h"
#include "library.h"
#include "session.h"
#include "text_convert.h"

namespace {

using namespace vxlocfmt;

// ICU's conversion of wide text, one character at a time so the cut is at a whole character.
struct Converted {
    std::string bytes;
    bool unmappable = false;
    bool cut = false;
};
Converted icu_convert(const char* encoding, std::u32string_view text, std::size_t room) {
    Converted out;
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(encoding, &error);
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    for (char32_t c : text) {
        UChar units[2];
        int32_t n = 0;
        U16_APPEND_UNSAFE(units, n, c);
        char piece[16];
        error = U_ZERO_ERROR;
        const int32_t size = ucnv_fromUChars(converter, piece, sizeof piece, units, n, &error);
        if (U_FAILURE(error)) {
            out.unmappable = true;
            break;
        }
        if (out.bytes.size() + static_cast<std::size_t>(size) > room) {
            out.cut = true;
            break;
        }
        out.bytes.append(piece, static_cast<std::size_t>(size));
    }
    ucnv_close(converter);
    return out;
}

bool decodes_cleanly(const char* encoding, const std::string& bytes) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(encoding, &error);
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    std::vector<UChar> out(bytes.size() * 2 + 4);
    ucnv_toUChars(converter, out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                  static_cast<int32_t>(bytes.size()), &error);
    ucnv_close(converter);
    return U_SUCCESS(error);
}

std::u32string_view name_of(const FuncInfo& row) {
    std::u32string_view name(row.name, registry_name_length);
    while (!name.empty() && name.back() == U' ') name.remove_suffix(1);
    return name;
}

bool is_left_aligned(std::u32string_view name) {
    return name.starts_with(U"NLDATE") || name.starts_with(U"NLDATM") || name == U"NLTIME" || name == U"NLTIMAP" ||
           name.find(U"WEEK") != std::u32string_view::npos;
}

TEST(ByteOutput, DateTimeWeekAndNameFormatsInFourEncodings) {
    vxhost::Library library;
    const char* locales[] = {"en_US", "de_DE", "fr_FR", "ja_JP", "es_ES", "it_IT",
                             "pt_BR", "sv_SE", "pl_PL", "ru_RU"};
    const char* encodings[] = {"UTF-8", "ISO-8859-1", "windows-1252", "Shift_JIS"};
    std::vector<const FuncInfo*> rows;
    for (const FuncInfo* row = library.registry(); row->function; ++row) {
        const std::u32string_view name = name_of(*row);
        if (row->kind == row_kind_format &&
            (is_left_aligned(name) || name.starts_with(U"NLSTR")))
            rows.push_back(row);
    }
    ASSERT_EQ(rows.size(), 57u + 3u);
    int checked = 0, failures = 0;
    for (const char* locale : locales) {
        for (const char* encoding : encodings) {
            vxhost::SessionOptions options;
            options.locale = locale;
            options.encoding = encoding;
            vxhost::Session bytes_session(library, options);
            vxhost::Session wide_session(library, options);  // same encoding: same candidate choice
            for (const FuncInfo* row : rows) {
                const std::u32string_view name = name_of(*row);
                const bool name_format = name.starts_with(U"NLSTR");
                const double value = name_format ? 5.0 : name.starts_with(U"NLDATM") ? 2000000000.0
                                     : name.starts_with(U"NLTIM") ? 45296.0 : 23000.0;
                for (std::int32_t width : {static_cast<std::int32_t>(row->default_width),
                                           static_cast<std::int32_t>(row->min_width) + 2}) {
                    if (width > static_cast<std::int32_t>(row->max_width)) continue;
                    // The wide result of the same call, in byte mode so it picks what fits in bytes.
                    FmtCall& wide = wide_session.call();
                    std::vector<char32_t> cells(static_cast<std::size_t>(width));
                    wide.width = width;
                    wide.decimals = 0;
                    wide.input = &value;
                    wide.output = cells.data();
                    wide.capacity = width;
                    wide.byte_mode = 1;
                    row->function(&wide, nullptr);
                    const std::u32string_view text(cells.data(), static_cast<std::size_t>(std::clamp(wide.produced, 0, width)));

                    vxfuzz::GuardedCells<char> out(static_cast<std::size_t>(width));
                    FmtCall& call = bytes_session.call();
                    call.width = width;
                    call.decimals = 0;
                    call.input = &value;
                    call.output = out.data();
                    call.capacity = width;
                    call.byte_mode = 1;
                    const status code = row->byte_function(&call, nullptr, nullptr);
                    out.expect_untouched_beyond(static_cast<std::size_t>(width), "byte variant");
                    const std::string got(out.data(), static_cast<std::size_t>(std::clamp(call.produced, 0, width)));
                    ++checked;

                    const Converted expected = icu_convert(encoding, text, static_cast<std::size_t>(width));
                    std::string want = expected.bytes;
                    status want_code = 0;
                    if (expected.unmappable) {
                        want_code = 0x803fe808u;  // a character the encoding cannot hold
                    } else if (expected.cut && !is_left_aligned(name)) {
                        // Right-aligned: again without the leading blanks, then justified.
                        std::size_t blanks = 0;
                        while (blanks < text.size() && text[blanks] == U' ') ++blanks;
                        const Converted again = icu_convert(encoding, text.substr(blanks), static_cast<std::size_t>(width));
                        want = std::string(static_cast<std::size_t>(width) - again.bytes.size(), ' ') + again.bytes;
                        if (blanks == 0) {
                            want = expected.bytes;
                            want_code = st::does_not_fit;
                        } else if (again.cut) {
                            want_code = st::does_not_fit;
                        }
                    }
                    const bool ok = code == want_code && got == want && decodes_cleanly(encoding, got);
                    if (!ok && ++failures <= 10)
                        ADD_FAILURE() << locale << " " << encoding << " " << vxhost::to_utf8(name) << width << ". ["
                                      << got << "] code " << std::hex << code << " want [" << want << "] " << want_code;
                }
            }
        }
    }
    EXPECT_GT(checked, 4000);
}

}  // namespace
