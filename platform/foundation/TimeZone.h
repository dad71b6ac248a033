// The device's time zone, over the system's own zone data.
#pragma once

#include <cctz/time_zone.h>

#include <string>

namespace corvane {

/// The zone of this moment: the environment's, else $TZ, else /etc/localtime.
///
/// Cheap: the zone is kept, a changed $TZ is noticed at once and a changed /etc/localtime within 100 ms. A
/// name that the system's zone data lacks reads as UTC. For the main thread.
cctz::time_zone currentTimeZone();

/// The zone of a $TZ value: an IANA name, ":" and a name, or an absolute path, or POSIX rules;
/// empty means UTC. Everything else reads as UTC.
cctz::time_zone timeZoneOfSetting(const std::string& setting);

/// The zone that a system file like /etc/localtime stands for, read afresh: a link into the zone data gives
/// the zone of that name, any other file its own contents. UTC when there is no such file.
cctz::time_zone timeZoneOfFile(const std::string& path);

}  // namespace corvane
