// The locale list and blocks, read from the embedded data file (format: tools/locale_data/data_file.h).
#include "locale_data.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

// The data file, embedded whole: nothing is read from disk at run time.
__asm__(".pushsection .rodata.vxhost_locale_data,\"a\",@progbits\n"
        ".global vxhost_locale_data_begin\n"
        ".hidden vxhost_locale_data_begin\n"
        "vxhost_locale_data_begin:\n"
        ".incbin \"" VXHOST_LOCALE_DATA_FILE "\"\n"
        ".global vxhost_locale_data_end\n"
        ".hidden vxhost_locale_data_end\n"
        "vxhost_locale_data_end:\n"
        ".popsection\n");
extern "C" const char vxhost_locale_data_begin[];
extern "C" const char vxhost_locale_data_end[];

namespace vxhost {
namespace {

struct Locale {
    std::string_view base;  // empty for root
    std::string_view body;  // its "N TEXT" lines
};

struct Data {
    std::map<std::string, Locale, std::less<>> locales;
    std::map<std::string, std::string, std::less<>> by_folded_name;  // "de_de" -> "de_DE", "zh_cn" -> "zh_Hans_CN"
    std::vector<std::string> names;
    std::string_view icu_version;
};

std::string fold(std::string_view name) {
    std::string folded(name);
    for (char& c : folded) {
        if (c == '-') c = '_';
        else if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return folded;
}

std::string_view next_line(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return line;
}

Data parse() {
    Data data;
    std::string_view rest(vxhost_locale_data_begin, static_cast<std::size_t>(vxhost_locale_data_end - vxhost_locale_data_begin));
    const std::string_view first = next_line(rest);
    if (const std::size_t at = first.find("from ICU "); at != std::string_view::npos) {
        const std::string_view version = first.substr(at + 9);
        data.icu_version = version.substr(0, version.find(' '));
    }
    Locale* open = nullptr;
    const char* body_start = nullptr;
    std::vector<std::pair<std::string_view, std::string_view>> aliases;
    while (!rest.empty()) {
        const char* line_start = rest.data();
        const std::string_view line = next_line(rest);
        if (line.empty() || line[0] == '#') continue;
        if (line[0] == '=') {  // "=zh_CN zh_Hans_CN": a second name, resolved once all are read
            const std::size_t space = line.find(' ');
            if (space != std::string_view::npos) aliases.emplace_back(line.substr(1, space - 1), line.substr(space + 1));
            continue;
        }
        if (line[0] != '@') continue;
        if (open) open->body = std::string_view(body_start, static_cast<std::size_t>(line_start - body_start));
        const std::string_view header = line.substr(1);
        const std::size_t space = header.find(' ');
        const std::string id(header.substr(0, space));
        open = &data.locales[id];
        open->base = space == std::string_view::npos ? std::string_view() : header.substr(space + 1);
        body_start = rest.data();
        data.by_folded_name.emplace(fold(id), id);
        data.names.push_back(id);
    }
    if (open) open->body = std::string_view(body_start, static_cast<std::size_t>(rest.data() - body_start));
    for (const auto& [alias, id] : aliases)
        if (data.locales.count(id)) data.by_folded_name.emplace(fold(alias), std::string(id));
    std::sort(data.names.begin(), data.names.end());
    return data;
}

const Data& data() {
    static const Data parsed = parse();
    return parsed;
}

// Applies a locale's lines over what its bases gave; root is applied first.
void apply(const Data& d, const Locale& locale, std::string_view (&values)[locale_string_count], int depth) {
    if (!locale.base.empty() && depth < 16) {  // 16: far deeper than any id has parts
        if (auto it = d.locales.find(locale.base); it != d.locales.end()) apply(d, it->second, values, depth + 1);
    }
    std::string_view rest = locale.body;
    while (!rest.empty()) {
        const std::string_view line = next_line(rest);
        std::size_t n = 0, i = 0;
        for (; i < line.size() && line[i] >= '0' && line[i] <= '9'; ++i) n = n * 10 + static_cast<std::size_t>(line[i] - '0');
        if (i == 0 || n >= locale_string_count) continue;
        values[n] = i < line.size() ? line.substr(i + 1) : std::string_view();
    }
}

std::unique_ptr<unsigned char[]> build_block(const Data& d, const Locale& locale) {
    std::string_view values[locale_string_count];
    apply(d, locale, values, 0);
    auto block = std::make_unique<unsigned char[]>(locale_block_size);
    for (std::size_t n = 0; n < locale_string_count; ++n) {
        unsigned char* slot = block.get() + locale_strings_offset + n * locale_string_stride;
        const auto count = static_cast<std::uint16_t>(std::min(values[n].size(), locale_string_bytes));
        std::memcpy(slot, &count, sizeof count);
        if (count) std::memcpy(slot + sizeof count, values[n].data(), count);  // an empty value may have no data
    }
    return block;
}

}  // namespace

const std::vector<std::string>& locale_names() { return data().names; }

std::string canonical_locale(std::string_view name) {
    const auto& names = data().by_folded_name;
    const auto it = names.find(fold(name));
    return it == names.end() ? std::string() : it->second;
}

const unsigned char* locale_block(std::string_view canonical_id) {
    static std::mutex mutex;
    static std::map<std::string, std::unique_ptr<unsigned char[]>, std::less<>> blocks;
    const Data& d = data();
    std::lock_guard lock(mutex);
    if (auto it = blocks.find(canonical_id); it != blocks.end()) return it->second.get();
    const auto locale = d.locales.find(canonical_id);
    if (locale == d.locales.end()) return nullptr;
    return blocks.emplace(std::string(canonical_id), build_block(d, locale->second)).first->second.get();
}

std::string_view locale_data_icu_version() { return data().icu_version; }

}  // namespace vxhost
