/*
 * Case tables kept in data files beside the tests that read them: one case a line, fields
 * separated by tabs, "#" lines and blank lines skipped. A field may be wrapped in «» so that its
 * edge blanks show, and "\u{XXXX}" stands for any character (a control character, a no-break
 * space, U+0000).
 *
 *   for (const case_table::Row& row : case_table::read("money/fixed_currency_cases.tsv")) {
 *       SCOPED_TRACE(row.where());  row[0], row.wide(2), row.number(4) ...
 *   }
 */
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "text_convert.h"

namespace case_table {

// A field's text with «» taken off and its escapes replaced, as UTF-8.
inline std::string unescape(std::string field) {
    if (field.starts_with("«") && field.ends_with("»") && field.size() >= 4)
        field = field.substr(2, field.size() - 4);
    std::string out;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const std::size_t close = field.find('}', i);
        if (field.compare(i, 3, "\\u{") == 0 && close != std::string::npos) {
            out += vxhost::to_utf8(std::u32string(1, static_cast<char32_t>(std::stoul(field.substr(i + 3, close - i - 3), nullptr, 16))));
            i = close;
        } else {
            out += field[i];
        }
    }
    return out;
}

struct Row {
    std::string file;
    int line = 0;
    std::vector<std::string> fields;

    const std::string& operator[](std::size_t i) const { return fields.at(i); }
    std::u32string wide(std::size_t i) const { return vxhost::from_utf8(fields.at(i)); }
    double number(std::size_t i) const { return std::stod(fields.at(i)); }
    int integer(std::size_t i) const { return std::stoi(fields.at(i)); }
    std::string where() const { return file + ":" + std::to_string(line); }
};

// The rows of tests/<path>; a missing or empty file is a failure, not a silent pass.
inline std::vector<Row> read(const std::string& path) {
    std::ifstream in(VX_SOURCE_DIR "/tests/" + path);
    std::vector<Row> rows;
    int line_number = 0;
    for (std::string line; std::getline(in, line);) {
        ++line_number;
        if (line.empty() || line[0] == '#') continue;
        Row row{path, line_number, {}};
        for (std::size_t start = 0;;) {
            const std::size_t tab = line.find('\t', start);
            row.fields.push_back(unescape(line.substr(start, tab - start)));
            if (tab == std::string::npos) break;
            start = tab + 1;
        }
        rows.push_back(std::move(row));
    }
    EXPECT_FALSE(rows.empty()) << "no cases read from tests/" << path;
    return rows;
}

}  // namespace case_table
