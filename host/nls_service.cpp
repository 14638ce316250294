#include "nls_service.h"

#include <unicode/uchar.h>

#include <atomic>
#include <string_view>

#include "classic/kernel_reader.h"
#include "kernel_object.h"
#include "numeric_reader.h"
#include "text/kernel_nls.h"
#include "text/unicode_tables.h"

namespace vxhost {
namespace {

namespace nls = vxlocfmt::text::kernel_nls;
namespace bit = vxlocfmt::text::class_bit;
using vxlocfmt::wchar;

constexpr std::size_t service_table_words = 192;
static_assert(service_table_words >= nls::service_words);
static_assert(service_table_words > vxlocfmt::classic::nls_word_numeric_reader);
constexpr std::size_t opener_table_words = 16;

// What the opener hands out for "vxnlsudb": the classifier below needs it to answer.
struct ClassDatabase {
    const char* name = "vxnlsudb";
};
ClassDatabase class_database;
std::atomic<std::int64_t> database_opens{0};

// The class bits of a code point, by the same rules as the library's ansi_ccl.
std::uint32_t class_bits(UChar32 c) {
    const std::uint32_t gc = U_GET_GC_MASK(c);
    std::uint32_t bits = 0;
    if (gc & U_GC_LU_MASK)
        bits |= bit::upper;
    else if (gc & U_GC_LL_MASK)
        bits |= bit::lower;
    else if (gc & U_GC_L_MASK)
        bits |= bit::other_letter;
    else if (gc & U_GC_ND_MASK)
        bits |= bit::digit;
    else if (gc & U_GC_P_MASK)
        bits |= bit::punct;
    else if (gc & (U_GC_M_MASK | U_GC_N_MASK | U_GC_S_MASK))
        bits |= bit::other_graphic;
    else if (gc & U_GC_ZS_MASK)
        bits |= bit::blank;
    else if (gc & (U_GC_CC_MASK | U_GC_CF_MASK))
        bits |= bit::control;
    if (u_isxdigit(c)) bits |= bit::xdigit;
    return bits;
}

extern "C" std::int32_t nls_classify(void* service, wchar c, std::uint32_t mask) {
    // No database opened through the service: the classifier has nothing to answer from.
    if (std::atomic_ref<void*>(static_cast<void**>(service)[nls::word_database]).load(std::memory_order_acquire) !=
        &class_database)
        return 0;
    return (class_bits(static_cast<UChar32>(c)) & mask) != 0;
}

extern "C" wchar nls_to_upper(void*, wchar c, std::int32_t) {
    return static_cast<wchar>(u_toupper(static_cast<UChar32>(c)));
}

extern "C" wchar nls_to_lower(void*, wchar c, std::int32_t) {
    return static_cast<wchar>(u_tolower(static_cast<UChar32>(c)));
}

extern "C" void* nls_open_database(void*, const char* name, std::int32_t length) {
    if (!name || length != nls::database_name_length ||
        std::string_view(name, 8) != std::string_view(nls::database_name, 8)) {
        return nullptr;
    }
    ++database_opens;
    return &class_database;
}

struct DatabaseOpener : KernelObject<opener_table_words> {
    DatabaseOpener() { words[nls::open_database_slot] = fn_word(&nls_open_database); }
};

struct NlsService : KernelObject<service_table_words> {
    DatabaseOpener opener;
    NlsService() {
        words[nls::word_database_opener] = &opener;
        words[nls::classify_slot] = fn_word(&nls_classify);
        words[nls::to_upper_slot] = fn_word(&nls_to_upper);
        words[nls::to_lower_slot] = fn_word(&nls_to_lower);
        words[vxlocfmt::classic::nls_word_numeric_reader] = numeric_reader();
        // words[nls::word_database] stays null until the library opens the database.
    }
};

}  // namespace

void* nls_service() {
    static NlsService service;
    return &service;
}

std::int64_t nls_database_opens() { return database_opens.load(); }

}  // namespace vxhost
