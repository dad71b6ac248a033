#include "apps/host/ZonedMoment.h"

#include <cctz/time_zone.h>

#include <algorithm>
#include <string>

#include "dates/Rfc3339.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

std::optional<TimeInterval> offsetFromText(std::u16string_view text) {
    cctz::time_point<cctz::seconds> midnightOfEpoch;
    if (!cctz::parse("%Ez", utf8FromText(text), cctz::utc_time_zone(), &midnightOfEpoch)) return std::nullopt;
    return -TimeInterval(midnightOfEpoch.time_since_epoch());
}

}  // namespace

std::optional<ZonedMoment> zonedMomentFromText(std::u16string_view text) {
    constexpr std::size_t kUpToTheSecond = 19;
    const std::u16string_view wallClockText = text.substr(0, kUpToTheSecond);
    text.remove_prefix(wallClockText.size());
    if (text.starts_with(u'.')) {
        text.remove_prefix(std::min(text.find_first_not_of(u"0123456789", 1), text.size()));
    }
    const std::optional<Date> wallClock = dateFromRfc3339(std::u16string(wallClockText) + u".000Z");
    if (!wallClock) return std::nullopt;
    if (text.empty()) return ZonedMoment{*wallClock, std::nullopt};
    const std::optional<TimeInterval> offset = offsetFromText(text);
    return offset ? std::optional(ZonedMoment{*wallClock, offset}) : std::nullopt;
}

}  // namespace corvane
