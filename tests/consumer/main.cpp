// A program built against an installed vxlocfmt: loads the extension from the installed tree and
// formats one date.
#include <cstdio>

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
    return result.code;
}
