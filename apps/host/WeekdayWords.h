// Names of weekdays: read in English and in the user's language, written in the user's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Calendar.h"

namespace corvane {

enum class NameLength { kShort, kFull };

/// The name in the user's locale: "Monday", "Mon", "Montag", "Mo".
std::u16string weekdayName(Weekday weekday, NameLength length);

/// The weekday of a full or short name, with or without a stop or a plural's "s"; folded as foldedWords does.
std::optional<Weekday> weekdayFromWord(std::u16string_view word);

}  // namespace corvane
