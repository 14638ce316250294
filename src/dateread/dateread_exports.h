/*
 * The any-date reader's C entry points, called by symbol (not through the registry), and the
 * typed C++ underneath them that the CLI's explanation, the tests and the benchmarks share.
 *
 *   double v; std::int32_t status;
 *   dtm_informat(U"JULIAN", 6, nullptr, U"20001", 5, &v, &status, 1);   // 0; v = 21915, status 1
 */
#pragma once

#include <cstdint>
#include <string_view>

#include "dateread/template_table.h"
#include "frame/abi.h"

namespace vxlocfmt::dateread {

inline constexpr status no_template_fits = 999;
inline constexpr status row_without_pattern = 1;

// What the ANYDATE driver found: the datetime (or missing), the row that read the text (-1 for
// none) and whether it read it with "%y" taken as "%Y".
struct anydate_answer {
    double datetime;
    std::int32_t row;
    bool four_digit_year;
};

// The driver over the rows the index admits, each read by its compiled program (`use_index`),
// or over every row in order, each read by walking its pattern text; both give the same answer:
// the index only skips rows that cannot read the text, and the programs read as the walk does.
anydate_answer read_anydate(std::u32string_view text, bool use_index = true);

// dtm_informat's search, also telling which row read the text (-1 for none). With
// `fixed_shapes`, a text in the fixed shape of the first row its length chooses is read in place
// (fixed_shape.h); without, every text goes through preparing and the compiled rows. Both give
// the same answer, status word and row.
status read_named(std::u32string_view name, const template_row* given, std::u32string_view text, double* result,
                  std::int32_t* status_word, bool preprocess, std::int32_t* row_read, bool fixed_shapes = true);

}  // namespace vxlocfmt::dateread

// The generic reader: `name` chooses the rows unless `row` is given (reading then starts there).
// 0 read, 999 no row fits or the rows of the name ran out, 1 the chosen row has no pattern.
VX_EXPORT vxlocfmt::status dtm_informat(const vxlocfmt::wchar* name, std::int32_t name_length,
                                        const vxlocfmt::dateread::template_row* row, const vxlocfmt::wchar* text,
                                        std::int32_t length, double* result, std::int32_t* status_word,
                                        std::int32_t preprocess);
// A named informat over a call record: reads min(input length, text limit) characters of the
// record's text into its output with the rows of `name`. 0, or 999 on any failure (the missing
// value is then the result).
VX_EXPORT vxlocfmt::status dtmInformat(vxlocfmt::FmtCall* call, const vxlocfmt::wchar* name,
                                       std::int32_t name_length);
// The ANYDATE driver: a datetime or the missing value; always 0.
VX_EXPORT vxlocfmt::status dtmAnyDateTime(vxlocfmt::FmtCall* call, void* extra);
// The driver's value as a day number (truncated toward zero, deliberately); always 0.
VX_EXPORT vxlocfmt::status dtmAnyDate(vxlocfmt::FmtCall* call, void* extra);
// The driver's value as a time of day (remainder modulo 86400); always 0.
VX_EXPORT vxlocfmt::status dtmAnyTime(vxlocfmt::FmtCall* call, void* extra);
// For explanations: reads like dtmAnyDateTime (name "ANYDATE") or dtmInformat (any other name)
// and answers the row that read the text, or -1; `four_digit_year` tells the driver's retry.
VX_EXPORT std::int32_t dtm_explain(const vxlocfmt::wchar* name, std::int32_t name_length, const vxlocfmt::wchar* text,
                                   std::int32_t length, double* result, std::int32_t* four_digit_year);
