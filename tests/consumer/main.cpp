// A program built against an installed vxlocfmt: loads the extension from the installed tree,
// formats one date by registry row and one amount by name, and reads a date back.
#include <cstdio>

#include "embed/formatter.h"
#include "embed/reader.h"
#include "library.h"
#include "session.h"
#include "text_convert.h"

int main() {
    vxhost::Library library;
    vxhost::SessionOptions options;
    options.locale = "fr_FR";
    vxhost::Session session(library, options);
    const auto result = session.format(*library.find(U"NLDATE"), 20, 0, 23000);
    std::printf("%s\n", vxhost::to_utf8(result.text).c_str());
    vxhost::Formatter amount(library, "NLNUM12.2", {.locale = "de_DE"});
    std::printf("%s\n", std::string(amount.format(1234.5).text).c_str());
    vxhost::Reader date(library, "ANYDATE");
    const vxhost::Reader::Result read = date.read("2022-12-21");
    std::printf("%.0f\n", read.value / 86400);
    return result.code != 0 || !read.ok;
}
