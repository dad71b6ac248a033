// Time zones given as rules in place of a name, as POSIX has them for $TZ: "JST-9",
// "CET-1CEST,M3.5.0,M10.5.0/3".
#pragma once

#include <cctz/time_zone.h>

#include <optional>
#include <string>

namespace corvane {

/// The zone of a text of rules, which hold from 1900 on; none when it is no such text. A zone with summer
/// time must name its dates.
std::optional<cctz::time_zone> timeZoneOfPosixRules(const std::string& rules);

}  // namespace corvane
