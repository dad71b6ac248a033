// Dates as people read them: by the user's locale, in the device's time zone of the moment.
#pragma once

#include <string>

#include "platform/foundation/Date.h"

namespace corvane {

/// The time of day in the locale's short style: "2:07 PM", "14:07".
std::u16string stringOfTime(Date date);

/// Weekday, month and day in the locale's own order, with the year only where it is not the current one:
/// "Tue, Mar 5", "Sat, Mar 5, 2022".
std::u16string stringOfDate(Date date);

/// Date and time, joined by a comma: "Tue, Mar 5, 2:07 PM".
std::u16string stringOfDateTime(Date date);

}  // namespace corvane
