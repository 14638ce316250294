/*
 * The warm formatters and readers of one backend: one per SPEC and locale, made on first use and
 * kept, so a query calls the library on the same call record row after row and allocates nothing
 * but its results. Bounded: the seventeenth pair replaces the oldest, so a query whose SPEC
 * changes every row stays correct, only slower.
 *
 *   static RoutineCache<vxhost::Formatter> formatters("UTF-8");
 *   vxhost::Formatter& f = formatters.get("NLDATE20.", "de_DE", library_for);   // throws RequestError
 */
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "library.h"
#include "locale_data.h"
#include "session.h"

namespace vxpg {

template <class Routine>
class RoutineCache {
public:
    // Every session answers in `encoding` ("UTF-8"; empty: wide characters).
    explicit RoutineCache(std::string encoding) : encoding_(std::move(encoding)) {}

    // On a miss, `library_for(locale id)` gives the library the routine is made on. The routine's
    // constructor checks SPEC and the locale; its RequestError leaves the cache as it was.
    template <class LibraryFor>
    Routine& get(std::string_view spec, std::string_view locale, LibraryFor&& library_for) {
        if (last_ && last_->matches(spec, locale)) return *last_->routine;
        for (Entry& entry : entries_) {
            if (entry.routine && entry.matches(spec, locale)) {
                last_ = &entry;
                return *entry.routine;
            }
        }
        // "de_DE.UTF-8", as lc_time names it, is de_DE; the session refuses what is still unknown.
        const vxhost::SessionOptions options{.locale = vxhost::environment_locale_spelling(locale), .encoding = encoding_};
        auto routine = std::make_unique<Routine>(library_for(options.locale), spec, options);
        Entry& slot = entries_[next_];
        next_ = (next_ + 1) % entries_.size();
        slot = Entry{std::string(spec), std::string(locale), std::move(routine)};
        last_ = &slot;
        return *slot.routine;
    }

private:
    struct Entry {
        std::string spec;
        std::string locale;
        std::unique_ptr<Routine> routine;
        bool matches(std::string_view s, std::string_view l) const { return spec == s && locale == l; }
    };
    static constexpr std::size_t capacity = 16;  // distinct SPEC and locale pairs one query is likely to use

    std::string encoding_;
    std::array<Entry, capacity> entries_{};
    std::size_t next_ = 0;
    Entry* last_ = nullptr;
};

}  // namespace vxpg
