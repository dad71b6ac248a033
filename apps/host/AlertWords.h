// Alerts as people type them: a time before the due date, a time of day or a date.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/Date.h"

namespace corvane {

/// Reads "15m", "2 hours before", "1d", "at due time", "none", a time of day (on the due day) or a date with
/// a time; also what alertInWords gives in the user's language.
///
/// @param dueDate  without one there is no alert but "none"
/// @return the alert's date, none for "none"; or why there is none, one line, UTF-8
std::variant<std::optional<Date>, std::string> alertFromWords(std::u16string_view text,
                                                              std::optional<Date> dueDate);

/// "at due time", "15 minutes before", "1 day before"; an alert that stands elsewhere in the locale's form.
std::u16string alertInWords(Date alert, std::optional<Date> dueDate);

}  // namespace corvane
