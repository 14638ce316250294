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
    std::string_view id;
    std::string_view base;  // empty for root
    std::string_view body;  // its "N TEXT" lines
};

// Sorted vectors of views into the embedded file: indexing costs one pass and no map nodes.
struct Data {
    std::vector<Locale> locales;                                         // by id
    std::vector<std::pair<std::string, std::string_view>> by_folded_name;  // "de_de" -> "de_DE", "zh_cn" -> "zh_Hans_CN"
    std::vector<std::string> names;
    std::string_view icu_version;

    const Locale* find(std::string_view id) const {
        const auto it = std::lower_bound(locales.begin(), locales.end(), id,
                                         [](const Locale& l, std::string_view key) { return l.id < key; });
        return it != locales.end() && it->id == id ? &*it : nullptr;
    }
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
    // A locale opens at a line that starts with '@'; memchr finds them without walking every line
    // ('@' is rare inside values, and then not at a line start).
    const char* p = rest.data();
    const char* const end = rest.data() + rest.size();
    while (p < end) {
        const char* at = static_cast<const char*>(std::memchr(p, '@', static_cast<std::size_t>(end - p)));
        if (!at) break;
        p = at + 1;
        if (at[-1] != '\n') continue;  // the first line is a comment, so at[-1] exists
        const char* eol = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (!eol) eol = end;
        if (!data.locales.empty()) {
            std::string_view& body = data.locales.back().body;
            body = {body.data(), static_cast<std::size_t>(at - body.data())};
        }
        const std::string_view header(at + 1, static_cast<std::size_t>(eol - at - 1));
        const std::size_t space = header.find(' ');
        p = eol < end ? eol + 1 : end;
        data.locales.push_back({header.substr(0, space),
                                space == std::string_view::npos ? std::string_view() : header.substr(space + 1),
                                std::string_view(p, 0)});
    }
    if (!data.locales.empty()) {
        std::string_view& body = data.locales.back().body;
        body = {body.data(), static_cast<std::size_t>(end - body.data())};
    }
    // The last locale's lines run on into the "=ALIAS ID" lines; apply() passes them by.
    std::string_view tail = data.locales.empty() ? std::string_view() : data.locales.back().body;
    std::sort(data.locales.begin(), data.locales.end(), [](const Locale& a, const Locale& b) { return a.id < b.id; });
    for (const Locale& l : data.locales) {
        data.names.emplace_back(l.id);
        data.by_folded_name.emplace_back(fold(l.id), l.id);
    }
    // "=zh_CN zh_Hans_CN": a second name.
    while (!tail.empty()) {
        const std::string_view line = next_line(tail);
        const std::size_t space = line.find(' ');
        if (line.empty() || line[0] != '=' || space == std::string_view::npos) continue;
        if (const Locale* target = data.find(line.substr(space + 1)))
            data.by_folded_name.emplace_back(fold(line.substr(1, space - 1)), target->id);
    }
    std::sort(data.by_folded_name.begin(), data.by_folded_name.end());
    return data;
}

const Data& data() {
    static const Data parsed = parse();
    return parsed;
}

// Applies a locale's lines over what its bases gave; root is applied first.
void apply(const Data& d, const Locale& locale, std::string_view (&values)[locale_string_count], int depth) {
    if (!locale.base.empty() && depth < 16) {  // 16: far deeper than any id has parts
        if (const Locale* base = d.find(locale.base)) apply(d, *base, values, depth + 1);
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
    const std::string folded = fold(name);
    const auto it = std::lower_bound(names.begin(), names.end(), folded,
                                     [](const auto& entry, const std::string& key) { return entry.first < key; });
    return it != names.end() && it->first == folded ? std::string(it->second) : std::string();
}

std::string environment_locale_spelling(std::string_view name) {
    name = name.substr(0, std::min(name.find('.'), name.find('@')));
    if (name == "C" || name == "POSIX") return "en_US_POSIX";
    return std::string(name);
}

const unsigned char* locale_block(std::string_view canonical_id) {
    static std::mutex mutex;
    static std::map<std::string, std::unique_ptr<unsigned char[]>, std::less<>> blocks;
    const Data& d = data();
    std::lock_guard lock(mutex);
    if (auto it = blocks.find(canonical_id); it != blocks.end()) return it->second.get();
    const Locale* locale = d.find(canonical_id);
    if (!locale) return nullptr;
    return blocks.emplace(std::string(canonical_id), build_block(d, *locale)).first->second.get();
}

std::string_view locale_data_icu_version() { return data().icu_version; }

}  // namespace vxhost
