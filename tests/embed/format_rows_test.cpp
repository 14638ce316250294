// Formatter::format_rows and format_byte_rows, which let the library write straight into the
// caller's rows, against the same formatter one value at a time: every format the catalog
// offers, in a text session and two byte sessions. Each column is an exact-size allocation, so
// the sanitizer build sees any write past the last row.
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "embed/catalog.h"
#include "embed/formatter.h"
#include "embed/value_text.h"

namespace {

using vxhost::Formatter;

const vxhost::Library& library() {
    static const vxhost::Library loaded(VX_BUILD_DIR "/bin/libvxlocfmt.so");
    return loaded;
}

// Days, seconds and numbers at once: each format takes them as its kind, missing values too.
const std::vector<double>& values() {
    static const std::vector<double> all = {
        0, 23000, -1, 86399.5, -21915, 2000000000, 1234.5678, -0.005, 1e15, -1e300, NAN,
        vxhost::missing_value(1), vxhost::missing_value(3),
    };
    return all;
}

// One value at a time, as format_wide and format give it.
template <class Unit>
std::basic_string<Unit> one_by_one(Formatter& formatter, double value) {
    if constexpr (sizeof(Unit) == 1) return std::string(formatter.format(value).text);
    else return std::u32string(formatter.format_wide(value).text);
}

template <class Unit>
void expect_rows_match(Formatter& formatter, std::size_t row_width, const std::string& what) {
    const std::vector<double>& in = values();
    std::vector<Unit> rows(in.size() * row_width, Unit{'#'});
    if constexpr (sizeof(Unit) == 1) formatter.format_byte_rows(in.data(), in.size(), rows.data(), row_width);
    else formatter.format_rows(in.data(), in.size(), rows.data(), row_width);
    for (std::size_t i = 0; i < in.size(); ++i) {
        std::basic_string<Unit> expected = one_by_one<Unit>(formatter, in[i]);
        expected.resize(row_width, Unit{});  // NumPy's padding
        ASSERT_EQ(std::basic_string_view<Unit>(rows.data() + i * row_width, row_width), expected)
            << what << " value " << in[i] << " row width " << row_width;
    }
}

TEST(FormatRows, EveryFormatAsOneByOne) {
    const struct {
        const char* locale;
        const char* encoding;  // empty: characters
    } sessions[] = {
        {"de_DE", ""},
        {"fr_FR", "ISO-8859-1"},  // one byte a character, where the byte variants decide what fits
        {"ja_JP", "UTF-8"},       // several bytes a character
    };
    for (const auto& session : sessions) {
        for (const std::string& name : vxhost::format_names(library())) {
            Formatter formatter(library(), name, {.locale = session.locale, .encoding = session.encoding});
            const auto width = static_cast<std::size_t>(formatter.width());
            const std::string what = name + " " + session.locale + " " + session.encoding;
            // Rows of the field's width (NumPy's) and wider (zeros after the text).
            for (const std::size_t row_width : {width, width + 3}) {
                if (*session.encoding) expect_rows_match<char>(formatter, row_width, what);
                else expect_rows_match<char32_t>(formatter, row_width, what);
            }
        }
    }
}

TEST(FormatRows, RefusesRowsTooNarrowAndTheWrongSession) {
    Formatter wide(library(), "NLDATE20.");
    std::vector<char32_t> rows(19);
    const double day = 23000;
    EXPECT_THROW(wide.format_rows(&day, 1, rows.data(), 19), std::invalid_argument);
    Formatter bytes(library(), "NLDATE20.", {.encoding = "UTF-8"});
    EXPECT_THROW(bytes.format_rows(&day, 1, rows.data(), 20), std::logic_error);
}

}  // namespace
