// Modification stamps: milliseconds since 1970-01-01 00:00 UTC, read and written as dates.
//
// The date in between counts double seconds since 2001, so that some stamps come back a millisecond smaller.
// Every program over the store computes them so.
#pragma once

#include <cstdint>

#include "platform/foundation/Date.h"
#include "platform/foundation/Truncation.h"

namespace corvane {

constexpr Date dateOfStamp(std::int64_t milliseconds) {
    return dateFromSecondsSince1970(static_cast<double>(milliseconds) / 1000.0);
}

/// A fraction of a millisecond is cut off towards 1970.
constexpr std::int64_t stampOfDate(Date date) {
    return truncated<std::int64_t>(secondsSince1970(date) * 1000.0);
}

}  // namespace corvane
