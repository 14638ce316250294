#include "calendar/year_cutoff.h"

#include "frame/kernel.h"

namespace vxlocfmt::calendar {

namespace {
constexpr wchar cutoff_option_name[] = U"VX_NAME_YEARCUTOFF";
constexpr std::int32_t cutoff_option_length = 18;
static_assert(sizeof(cutoff_option_name) / sizeof(wchar) == cutoff_option_length + 1);
// An answer beyond this is no year; refusing it keeps the 64-bit date arithmetic exact.
constexpr std::int64_t cutoff_magnitude_limit = 1'000'000'000;
}  // namespace

std::optional<std::int64_t> year_cutoff_option() {
    void* const handle = Exported_VXHandle;
    if (handle == nullptr) return std::nullopt;
    const auto lookup = kernel::slot<kernel::option_lookup_fn>(handle, kernel::handle_option_lookup);
    if (lookup == nullptr) return std::nullopt;
    std::int64_t result = default_year_cutoff;
    const status rc = lookup(handle, cutoff_option_name, cutoff_option_length, &result,
                             static_cast<std::int32_t>(sizeof result));
    if (rc != st::ok || result > cutoff_magnitude_limit || result < -cutoff_magnitude_limit) return std::nullopt;
    return result;
}

std::int64_t year_cutoff() { return year_cutoff_option().value_or(default_year_cutoff); }

std::int64_t place_two_digit_year(std::int64_t yy) {
    return place_two_digit_year(yy, year_cutoff());
}

}  // namespace vxlocfmt::calendar
