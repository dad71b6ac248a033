// The settings that the programs of the app group share.
#pragma once

#include <string_view>

#include "platform/foundation/UserDefaults.h"

namespace corvane {

/// The suite "group.com.velmor.orin" of the environment in force.
UserDefaults& corvaneUserDefaults();

/// Time of day of all-day tasks; absent: midnight.
inline constexpr std::string_view kAlertDefaultHourKey = "AlertDefaultHour";
inline constexpr std::string_view kAlertDefaultMinuteKey = "AlertDefaultMinute";

}  // namespace corvane
