/*
 * The host's time zone: the zone named by --tz, else the TZ environment variable, else UTC.
 * It answers the offset from universal time, in seconds, at a datetime.
 *
 *   vxhost::set_time_zone("Europe/Paris");
 *   double offset = vxhost::zone_offset_seconds(datetime);   // 3600 in winter
 */
#pragma once

#include <string>
#include <string_view>

namespace vxhost {

// false when ICU does not know the zone (the zone is then unchanged).
bool set_time_zone(std::string_view name);
std::string time_zone_name();
// Offset east of universal time at a universal datetime (seconds from 1960).
double zone_offset_seconds(double datetime);
// The zone object the library's zone-aware formats are handed.
void* zone_object();

}  // namespace vxhost
