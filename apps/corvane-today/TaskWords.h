// The readers of a task's fields: what people type, and what it means.
#pragma once

#include <optional>

#include <QString>

#include "apps/corvane-today/WordsField.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/Localization.h"

namespace corvane {

class GTask;

/// Examples of words, keys of texts.
inline constexpr const char* kDueExample = textKey("Like tomorrow 14:00, friday or +3d");
inline constexpr const char* kRepeatExample = textKey("Like every 2 weeks on mon, fri");
inline constexpr const char* kAlertExample = textKey("Like 15m, 1d or 9:00");

// Empty words, like "none", take a field away.
WordsReading readTitle(const QString& text);
WordsReading readDue(const QString& text);
WordsReading readRepeat(const QString& text);
WordsReading readAlert(const QString& text, std::optional<Date> due);

// Taking words that were understood, as a user's edit; others change nothing.
void takeTitle(GTask& task, const QString& text);
void takeDue(GTask& task, const QString& text);
void takeRepeat(GTask& task, const QString& text);
void takeAlert(GTask& task, const QString& text);
void takeNotes(GTask& task, const QString& text);

/// The due date of a task as words that readDue reads back; empty without one.
QString dueToType(const GTask& task);
/// The same for its alert and readAlert.
QString alertToType(const GTask& task);

}  // namespace corvane
