// The reader's behaviour by case table (reader_cases.tsv): tie-break order, preprocessing,
// fixed-width digits, word fields, zones, fractions, out-of-range dates.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <string>

#include "calendar/calendar.h"
#include "dateread/dateread_exports.h"
#include "kernel_handle.h"
#include "text_convert.h"

namespace {

using vxlocfmt::calendar::is_nan;

// D:yyyy-mm-dd, DT:yyyy-mm-ddThh:mm:ss[.f], T:hh:mm:ss[.f] or "." to the value it stands for.
double expected_value(const std::string& e) {
    if (e == ".") return vxlocfmt::calendar::missing_value();
    auto clock = [](const std::string& s) {  // hh:mm:ss[.f]
        return std::stod(s.substr(0, 2)) * 3600 + std::stod(s.substr(3, 2)) * 60 + std::stod(s.substr(6));
    };
    auto day = [](const std::string& s) {
        return vxlocfmt::calendar::zmdy(std::stod(s.substr(5, 2)), std::stod(s.substr(8, 2)), std::stod(s.substr(0, 4)));
    };
    if (e.rfind("DT:", 0) == 0) return day(e.substr(3)) * 86400 + clock(e.substr(14));
    if (e.rfind("D:", 0) == 0) return day(e.substr(2));
    if (e.rfind("T:", 0) == 0) return clock(e.substr(2));
    ADD_FAILURE() << "bad expectation " << e;
    return 0;
}

std::string unescape(std::string s) {
    std::string out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s.compare(i, 2, "\\s") == 0) {
            out += ' ';
            ++i;
        } else {
            out += s[i];
        }
    }
    return out;
}

double read_with(const std::string& name, const std::u32string& text) {
    double v = 0;
    vxlocfmt::FmtCall call{};
    call.input = text.data();
    call.input_length = static_cast<std::int32_t>(text.size());
    call.text_limit = call.input_length;
    call.output = &v;
    if (name == "ANYDATE") {
        EXPECT_EQ(dtmAnyDateTime(&call, nullptr), 0u);
        return v;
    }
    const std::u32string wide_name(name.begin(), name.end());
    const vxlocfmt::status code = dtmInformat(&call, wide_name.data(), static_cast<std::int32_t>(wide_name.size()));
    EXPECT_EQ(code == 0, !is_nan(v)) << name;
    return v;
}

TEST(AnyDateReader, CaseTable) {
    vxhost::set_year_cutoff(std::nullopt);  // the default 1950
    std::ifstream in(VX_SOURCE_DIR "/tests/dateread/reader_cases.tsv");
    ASSERT_TRUE(in) << "reader_cases.tsv";
    std::string line;
    int cases = 0;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        const auto t1 = line.find('\t'), t2 = line.find('\t', t1 + 1), t3 = line.find('\t', t2 + 1);
        ASSERT_NE(t3, std::string::npos) << line;
        const std::string name = line.substr(0, t1);
        const std::string text = unescape(line.substr(t1 + 1, t2 - t1 - 1));
        const double want = expected_value(line.substr(t2 + 1, t3 - t2 - 1));
        const double got = read_with(name, vxhost::from_utf8(text));
        if (is_nan(want)) EXPECT_TRUE(is_nan(got)) << name << " '" << text << "' read " << got << ": " << line.substr(t3 + 1);
        else EXPECT_NEAR(got, want, 1e-6) << name << " '" << text << "': " << line.substr(t3 + 1);
        ++cases;
    }
    EXPECT_GT(cases, 50);
}

}  // namespace
