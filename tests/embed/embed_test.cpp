// The embedding API by SPEC: what it refuses and how it says so, what each value means, and
// formats read back by their classic and any-date peers.
#include <cmath>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "embed/catalog.h"
#include "embed/formatter.h"
#include "embed/reader.h"

namespace {

using vxhost::Formatter;
using vxhost::Reader;
using vxhost::ValueKind;

const vxhost::Library& library() {
    static const vxhost::Library loaded(VX_BUILD_DIR "/bin/libvxlocfmt.so");
    return loaded;
}

TEST(Embed, RefusalsNameWhatWasRefused) {
    const struct {
        const char* spec;
        const char* locale;
        bool format;
        const char* message;
    } cases[] = {
        {"NOSUCH", "en_US", true, "unknown format 'NOSUCH'"},
        {"@NLDATE", "en_US", true, "unknown format '@NLDATE'"},
        {"NLDATE500.", "en_US", true, "NLDATE: width 500 is outside 10 to 200"},
        {"NLDATE20", "en_US", true, "bad SPEC 'NLDATE20': write NAMEw. or NAMEw.d"},
        {"NLDATE20.", "xx_YY", true, "unknown locale xx_YY"},
        {"NOSUCH", "en_US", false, "unknown informat 'NOSUCH'"},
        {"UUID", "en_US", false, "informat 'UUID' gives bytes or characters, not a value"},
        {"NLNUM12.2", "xx_YY", false, "unknown locale xx_YY"},
    };
    for (const auto& c : cases) {
        try {
            if (c.format) Formatter(library(), c.spec, {.locale = c.locale});
            else Reader(library(), c.spec, {.locale = c.locale});
            ADD_FAILURE() << c.spec << " was accepted";
        } catch (const vxhost::RequestError& error) {
            EXPECT_STREQ(error.what(), c.message) << c.spec;
        }
    }
}

TEST(Embed, KindsFollowTheNames) {
    EXPECT_EQ(Formatter(library(), "NLDATE20.").kind(), ValueKind::date);
    EXPECT_EQ(Formatter(library(), "WEEKV").kind(), ValueKind::date);
    EXPECT_EQ(Formatter(library(), "NLDATM").kind(), ValueKind::datetime);
    EXPECT_EQ(Formatter(library(), "TOD").kind(), ValueKind::time);
    EXPECT_EQ(Formatter(library(), "NLNUM12.2").kind(), ValueKind::number);
    EXPECT_EQ(Reader(library(), "@NLDATE").kind(), ValueKind::date);
    EXPECT_EQ(Reader(library(), "ANYDATE").kind(), ValueKind::datetime);
    EXPECT_EQ(Reader(library(), "B8601DA").kind(), ValueKind::date);
    EXPECT_EQ(Reader(library(), "DOLLAR").kind(), ValueKind::number);
}

// Every name the catalog offers opens.
TEST(Embed, EveryListedNameOpens) {
    for (const std::string& name : vxhost::format_names(library())) EXPECT_NO_THROW(Formatter(library(), name)) << name;
    for (const std::string& name : vxhost::informat_names(library())) EXPECT_NO_THROW(Reader(library(), name)) << name;
}

TEST(Embed, ClassicFormatsReadBack) {
    Formatter dollar(library(), "DOLLAR20.2");
    Reader back(library(), "DOLLAR");
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> amounts(-1e9, 1e9);
    for (int i = 0; i < 2000; ++i) {
        const double value = std::round(amounts(random) * 100) / 100;
        const std::string text(dollar.format(value).text);
        const Reader::Result read = back.read(text);
        ASSERT_TRUE(read.ok) << text;
        EXPECT_EQ(read.value, value) << text;
    }
}

TEST(Embed, AnyDateReadsWhatIsoDatesSay) {
    Reader anydate(library(), "ANYDATE");
    EXPECT_EQ(anydate.read("1960-01-02").value, 86400);
    const Reader::Result nothing = anydate.read("not a date");
    EXPECT_FALSE(nothing.ok);
    EXPECT_TRUE(std::isnan(nothing.value));
    Reader date(library(), "B8601DA10.");
    EXPECT_EQ(date.read("20200304").value, 21978);
}

TEST(Embed, ByteSessionsGiveTheEncodingsBytes) {
    Formatter latin(library(), "NLDATE20.", {.locale = "fr_FR", .encoding = "ISO-8859-1"});
    EXPECT_EQ(latin.format(23000).text, "21 d\xe9" "cembre 2022");
    Formatter wide(library(), "NLDATE20.", {.locale = "fr_FR"});
    EXPECT_EQ(wide.format(23000).text, "21 d\xc3\xa9" "cembre 2022");
}

}  // namespace
