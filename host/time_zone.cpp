#include "time_zone.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <cstdlib>
#include <memory>
#include <mutex>

#include "kernel_object.h"

namespace vxhost {
namespace {

constexpr double unix_epoch_datetime = 315619200.0;

struct Zone {
    std::mutex mutex;
    std::unique_ptr<icu::TimeZone> zone;
    std::string name;
    Zone() {
        const char* tz = std::getenv("TZ");
        std::string wanted = tz && *tz ? tz : "UTC";
        if (wanted.front() == ':') wanted.erase(0, 1);
        if (!load(wanted)) load("UTC");
    }
    bool load(std::string_view id) {
        std::unique_ptr<icu::TimeZone> candidate(
            icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(icu::StringPiece(id.data(), int32_t(id.size())))));
        if (!candidate || *candidate == icu::TimeZone::getUnknown()) return false;
        std::lock_guard lock(mutex);
        zone = std::move(candidate);
        name = std::string(id);
        return true;
    }
};

Zone& current() {
    static Zone zone;
    return zone;
}

// Zone object: operation 4 answers the offset in seconds at a datetime.
double slot_offset(void*, double datetime) { return zone_offset_seconds(datetime); }

struct ZoneObject : KernelObject<8> {
    ZoneObject() { words[4] = fn_word(&slot_offset); }
};

}  // namespace

bool set_time_zone(std::string_view name) { return current().load(name); }
std::string time_zone_name() {
    std::lock_guard lock(current().mutex);
    return current().name;
}

double zone_offset_seconds(double datetime) {
    Zone& zone = current();
    std::lock_guard lock(zone.mutex);
    const UDate millis = (datetime - unix_epoch_datetime) * 1000.0;
    int32_t raw = 0, dst = 0;
    UErrorCode error = U_ZERO_ERROR;
    zone.zone->getOffset(millis, false, raw, dst, error);
    if (U_FAILURE(error)) return 0;
    return (raw + dst) / 1000.0;
}

void* zone_object() {
    static ZoneObject object;
    return &object;
}

}  // namespace vxhost
