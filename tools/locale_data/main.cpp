// Writes the locale data file from ICU, or checks that a committed one is what ICU gives now.
//
//   vxlocfmt_locale_data host/locale_data.txt           regenerate
//   vxlocfmt_locale_data --check host/locale_data.txt   exit 1 when the file would change
#include <unicode/uchar.h>
#include <unicode/ulocdata.h>
#include <unicode/uversion.h>

#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "data_file.h"
#include "locale_properties.h"
#include "locale_text.h"

namespace {

std::string version_text(const UVersionInfo version, int parts) {
    std::string text;
    for (int i = 0; i < parts; ++i) {
        if (i) text += '.';
        text += std::to_string(version[i]);  // appended apart: "." + temporary trips GCC 12's -Wrestrict
    }
    return text;
}

std::string source_versions() {
    UVersionInfo icu, cldr, unicode;
    u_getVersion(icu);
    UErrorCode e = U_ZERO_ERROR;
    ulocdata_getCLDRVersion(cldr, &e);
    u_getUnicodeVersion(unicode);
    return "ICU " + version_text(icu, 2) + " (CLDR " + version_text(cldr, 2) + ", Unicode " + version_text(unicode, 2) + ")";
}

bool is_pattern(std::size_t n) { return n >= 28 && n <= 58; }

std::string generate(bool notes) {
    const std::vector<std::string> ids = locale_data::all_locales();
    std::vector<locale_data::Texts> texts(ids.size());
    std::size_t cut = 0;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const locale_data::Properties properties = locale_data::locale_properties(ids[i]);
        for (std::size_t n = 0; n < locale_data::property_count; ++n) {
            const auto how = is_pattern(n) ? locale_data::Cut::directives : locale_data::Cut::characters;
            locale_data::Encoded encoded = locale_data::locale_text(properties[n], how);
            if (encoded.cut) {
                ++cut;
                if (notes)
                    std::fprintf(stderr, "note: %s property %zu cut to %zu bytes\n", ids[i].c_str(), n, encoded.text.size());
            }
            texts[i][n] = std::move(encoded.text);
        }
    }
    if (notes) std::fprintf(stderr, "%zu locales, %zu values cut to 160 bytes\n", ids.size(), cut);
    return locale_data::data_file(ids, texts, locale_data::locale_aliases(ids), source_versions());
}

}  // namespace

int main(int argc, char** argv) {
    const bool check = argc == 3 && std::strcmp(argv[1], "--check") == 0;
    if (argc != 2 && !check) {
        std::fprintf(stderr, "usage: %s [--check] FILE\n", argv[0]);
        return 2;
    }
    const char* path = argv[argc - 1];
    try {
        const std::string data = generate(!check);
        if (check) {
            std::ifstream in(path, std::ios::binary);
            const std::string committed((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            if (committed == data) return 0;
            std::istringstream a(committed), b(data);
            std::string line_a, line_b;
            for (int line = 1;; ++line) {
                const bool more_a = static_cast<bool>(std::getline(a, line_a));
                const bool more_b = static_cast<bool>(std::getline(b, line_b));
                if (line_a != line_b || more_a != more_b) {
                    std::fprintf(stderr, "%s differs from what ICU gives at line %d:\n  file: %s\n  ICU:  %s\n", path,
                                 line, more_a ? line_a.c_str() : "(end)", more_b ? line_b.c_str() : "(end)");
                    break;
                }
            }
            return 1;
        }
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << data;
        if (!out.flush()) {
            std::fprintf(stderr, "cannot write %s\n", path);
            return 1;
        }
        std::fprintf(stderr, "wrote %s: %zu bytes\n", path, data.size());
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "error: %s\n", e.what());
        return 1;
    }
}
