// dtm_informat and dtmInformat: choosing the rows of a name and reading with them in order.
#include <algorithm>
#include <array>

#include "calendar/missing_value.h"
#include "dateread/compiled_pattern.h"
#include "dateread/dateread_exports.h"
#include "dateread/fixed_shape.h"
#include "dateread/row_reader.h"
#include "dateread/template_facts.h"
#include "dateread/text_preparation.h"
#include "dateread/value_builder.h"

namespace vxlocfmt::dateread {
namespace {

constexpr bool takes_odd_zero(std::u32string_view name) {
    return name == U"YYMMDD" || name == U"DDMMYY" || name == U"MMDDYY";
}

constexpr bool admits_by_name(std::size_t r, std::size_t length) {
    const auto n = static_cast<std::int64_t>(length);
    return n >= vxfmt_templates[r].min_length && n <= named_max(r);
}

// By group and text length: the row (+1) the length chooses first when the text could have its
// fixed shape, else 0. The six-letter names' leading zero and 8-digit skip go the general way.
constexpr auto in_place_rows = [] {
    std::array<std::array<std::uint8_t, max_shape_length + 1>, name_group_count> rows{};
    for (std::size_t g = 0; g < name_group_count; ++g)
        for (std::size_t n = 1; n <= max_shape_length && !name_groups[g].odd_zero; ++n) {
            std::size_t r = name_groups[g].first;
            while (r < name_groups[g].end && !admits_by_name(r, n)) ++r;
            if (r < name_groups[g].end && row_shapes[r].length == n) rows[g][n] = static_cast<std::uint8_t>(r + 1);
        }
    return rows;
}();
static_assert(in_place_rows[static_cast<std::size_t>(find_name_group(U"E8601DT") - name_groups.data())][19] == 97 + 1);
static_assert(in_place_rows[static_cast<std::size_t>(find_name_group(U"B8601DA") - name_groups.data())][10] == 0);

// A text in the fixed shape of the row its length chooses first is read in place: preparing
// would leave it as it is, and the row reads it whatever the digit test says (fixed_shape.h).
bool read_in_place(const name_group& group, std::u32string_view text, double& result, std::int32_t& status_word,
                   std::int32_t* row_read) {
    if (text.size() > max_shape_length) return false;
    const std::size_t row = in_place_rows[static_cast<std::size_t>(&group - name_groups.data())][text.size()];
    if (row == 0 || !read_fixed_shape(row - 1, text, result, status_word)) return false;
    if (row_read) *row_read = static_cast<std::int32_t>(row - 1);
    return true;
}

// A row of the caller's own, outside the table: read with it alone.
status read_own_row(const template_row& row, std::u32string_view t, bool all_digit, double* result,
                    std::int32_t* status_word) {
    read_slots slots;
    if (!result || !status_word) return no_template_fits;
    *result = calendar::missing_value();
    *status_word = 0;
    const wchar* kind_text = row.kind ? row.kind : U"DTE";
    const std::u32string_view kind(kind_text, text_length(kind_text));
    const value_kind k = kind == U"TME" ? value_kind::time : kind == U"DTM" ? value_kind::datetime : value_kind::date;
    if (!read_pattern({row.pattern, text_length(row.pattern)}, t, all_digit, false, slots)) return no_template_fits;
    *result = build_value(slots, k, false, *status_word);
    return st::ok;
}

// Preparing the text and reading it with the compiled rows; in a function of its own so that a
// read in place does not pay for its frame (the prepared copy).
[[gnu::noinline]] status read_prepared(std::u32string_view name, const name_group* group, const template_row* given,
                                       bool in_table, std::u32string_view text, double* result,
                                       std::int32_t* status_word, bool preprocess, std::int32_t* row_read) {
    prepared_text prepared;
    std::u32string_view t = text;
    bool all_digit;
    if (preprocess) {
        const bool odd_zero = group ? group->odd_zero : takes_odd_zero(name);
        prepare_text(text, named_text_limit, odd_zero, prepared);
        t = prepared.view();
        all_digit = prepared.all_digit;
    } else {
        all_digit = is_all_digit(text);  // the digit test fixes the field widths either way
    }

    std::size_t r = 0;
    if (given) {
        if (!given->pattern) return row_without_pattern;
        if (!in_table) return read_own_row(*given, t, all_digit, result, status_word);
        r = static_cast<std::size_t>(given - vxfmt_templates);
    } else {
        if (!group) return no_template_fits;
        r = group->first;
        while (r < group->end && !admits_by_name(r, t.size())) ++r;
        if (r == group->end) return no_template_fits;
        // An all-digit text of 8 under a six-letter name goes to the four-digit-year row.
        if (t.size() == 8 && all_digit && group->odd_zero && !template_facts[r].has_separator && r + 1 < group->end) ++r;
    }
    if (!result || !status_word) return no_template_fits;

    for (const std::size_t first = r; r < group->end; ++r) {
        // By name, each row keeps its own bounds; a given row's caller chose the walk.
        if (r != first && !given && !admits_by_name(r, t.size())) continue;
        *result = calendar::missing_value();
        *status_word = 0;
        read_slots slots;
        if (!read_compiled(r, t, all_digit, false, slots)) continue;
        *result = build_value(slots, template_facts[r].kind, template_facts[r].local_zone, *status_word);
        if (row_read) *row_read = static_cast<std::int32_t>(r);
        return st::ok;
    }
    return no_template_fits;
}

}  // namespace

status read_named(std::u32string_view name, const template_row* given, std::u32string_view text, double* result,
                  std::int32_t* status_word, bool preprocess, std::int32_t* row_read, bool fixed_shapes) {
    if (row_read) *row_read = -1;
    const bool in_table = given >= vxfmt_templates && given < vxfmt_templates + template_count;
    // The rows of the name (of the given table row's own name when a row is given).
    const name_group* group =
        in_table ? find_name_group({given->name, template_facts[static_cast<std::size_t>(given - vxfmt_templates)].name_length})
        : given  ? nullptr
                 : find_name_group(name);
    if (fixed_shapes && !given && group && result && status_word &&
        read_in_place(*group, preprocess ? text.substr(0, std::min(text.size(), named_text_limit)) : text, *result,
                      *status_word, row_read))
        return st::ok;
    return read_prepared(name, group, given, in_table, text, result, status_word, preprocess, row_read);
}

}  // namespace vxlocfmt::dateread

using namespace vxlocfmt;

namespace {

std::u32string_view view_of(const wchar* s, std::int32_t length) {
    return s && length > 0 ? std::u32string_view(s, static_cast<std::size_t>(length)) : std::u32string_view();
}

}  // namespace

VX_EXPORT status dtm_informat(const wchar* name, std::int32_t name_length, const dateread::template_row* row,
                              const wchar* text, std::int32_t length, double* result, std::int32_t* status_word,
                              std::int32_t preprocess) {
    return dateread::read_named(view_of(name, name_length), row, view_of(text, length), result, status_word,
                                preprocess != 0, nullptr);
}

VX_EXPORT status dtmInformat(FmtCall* call, const wchar* name, std::int32_t name_length) {
    if (!call || !call->output) return dateread::no_template_fits;
    auto* result = static_cast<double*>(call->output);
    *result = calendar::missing_value();
    const std::int32_t length = std::max(0, std::min(call->input_length, call->text_limit));
    std::int32_t status_word = 0;
    const status r = dateread::read_named(view_of(name, name_length), nullptr,
                                          view_of(static_cast<const wchar*>(call->input), length), result, &status_word,
                                          true, nullptr);
    if (r != st::ok || calendar::is_nan(*result)) {
        *result = calendar::missing_value();
        return dateread::no_template_fits;
    }
    return st::ok;
}
