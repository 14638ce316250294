// Several threads, each with its own call record, format and read through one instance at once,
// each building its locale's property table cold. Run under ThreadSanitizer (the tsan preset)
// this proves the library shares nothing mutable between call records.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "library.h"
#include "session.h"
#include "text_convert.h"

namespace {

TEST(Concurrency, OneInstanceManyCallRecords) {
    vxhost::Library library;
    const char* locales[] = {"en_US", "de_DE", "ja_JP", "fr_FR", "ar_EG", "ru_RU"};
    std::vector<const vxlocfmt::FuncInfo*> rows;
    for (const vxlocfmt::FuncInfo* row = library.registry(); row->function; ++row) rows.push_back(row);
    {
        // The instance's monetary conventions are built by its first fixed-currency call without a
        // lock, the one race the library permits: that call is made here, before threads share it.
        vxhost::Session warm(library, {.locale = "en_US"});
        warm.format(*library.find(U"NLMNIUSD"), 12, 2, 0);
    }

    // Every thread formats the same values on the same rows; results must agree per locale.
    constexpr int threads_per_locale = 2;
    std::vector<std::vector<std::string>> results(std::size(locales) * threads_per_locale);
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < results.size(); ++t) {
        threads.emplace_back([&, t] {
            vxhost::SessionOptions options;
            options.locale = locales[t / threads_per_locale];
            if ((t / threads_per_locale) % 3 == 2) options.encoding = "UTF-8";  // both threads of a locale alike
            ++ready;
            while (ready < static_cast<int>(results.size())) std::this_thread::yield();  // start together, cold
            vxhost::Session session(library, options);
            for (const auto* row : rows) {
                for (double value : {0.0, 23000.5, -1.0, 1e9, 2.0}) {
                    const int width = static_cast<int>(row->default_width);
                    if (row->kind == vxlocfmt::row_kind_format) {
                        const auto r = session.format(*row, width, 0, value);
                        results[t].push_back(session.byte_output() ? std::string(r.bytes) : vxhost::to_utf8(r.text));
                    } else {
                        const auto r = session.read(*row, width, 0, U"2024-01-03");
                        results[t].push_back(std::to_string(r.code));
                    }
                }
            }
        });
    }
    for (auto& thread : threads) thread.join();
    for (std::size_t t = 0; t < results.size(); t += threads_per_locale) {
        EXPECT_EQ(results[t], results[t + 1]) << locales[t / threads_per_locale];
    }
}

}  // namespace
