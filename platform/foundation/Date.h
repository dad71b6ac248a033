// Instants.
#pragma once

#include <chrono>
#include <cstdint>

namespace corvane {

/// The clock of all dates: double seconds since 2001-01-01 00:00:00 UTC. It has no zone inside.
struct ReferenceClock {
    using rep = double;
    using period = std::ratio<1>;
    using duration = std::chrono::duration<double>;
    using time_point = std::chrono::time_point<ReferenceClock>;
    static constexpr bool is_steady = false;

    static time_point now() noexcept;
};

using Date = ReferenceClock::time_point;
using TimeInterval = ReferenceClock::duration;

inline constexpr TimeInterval kIntervalFrom1970To2001{978307200.0};

/// 4001-01-01 00:00:00 UTC.
inline constexpr Date kDistantFuture{TimeInterval{64092211200.0} - kIntervalFrom1970To2001};

constexpr Date dateFromSecondsSince1970(double seconds) {
    return Date(TimeInterval(seconds) - kIntervalFrom1970To2001);
}
constexpr double secondsSince1970(Date date) {
    return (date.time_since_epoch() + kIntervalFrom1970To2001).count();
}

}  // namespace corvane
