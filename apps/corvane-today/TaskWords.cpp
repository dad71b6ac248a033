#include "apps/corvane-today/TaskWords.h"

#include <string>
#include <utility>
#include <variant>

#include "apps/corvane-today/QtText.h"
#include "apps/host/AlertWords.h"
#include "apps/host/DateWords.h"
#include "apps/host/RepeatWords.h"
#include "apps/host/TaskDescription.h"
#include "apps/host/TaskEditing.h"
#include "dates/DateTexts.h"
#include "model/GTask.h"
#include "platform/foundation/Calendar.h"

namespace corvane {
namespace {

template <class Result>
using Words = std::variant<Result, std::string>;

std::u16string wordsOf(const QString& text) {
    const QString trimmed = text.trimmed();
    return trimmed.isEmpty() ? u"none" : coreText(trimmed);
}

/// The meaning of what was read, or the reason why there is none.
template <class Result, class Meaning>
WordsReading reading(const Words<Result>& words, Meaning meaning) {
    if (const auto* reason = std::get_if<std::string>(&words)) {
        constexpr bool kUnderstood = true;
        return {!kUnderstood, QString::fromStdString(*reason)};
    }
    return {true, meaning(std::get<Result>(words))};
}

QString civilText(Date date, bool hasTime) {
    const cctz::civil_second civil = Calendar::current().civilSecond(date);
    const auto padded = [](auto number, int width) {
        return QString::number(number).rightJustified(width, QChar(u'0'));
    };
    const QString day = QStringLiteral("%1-%2-%3")
                            .arg(padded(civil.year(), 4), padded(civil.month(), 2), padded(civil.day(), 2));
    if (!hasTime) return day;
    return day + QStringLiteral(" %1:%2").arg(padded(civil.hour(), 2), padded(civil.minute(), 2));
}

bool readsBack(const std::u16string& text, Date due, bool hasTime) {
    const auto read = dateFromWords(text);
    const auto* date = std::get_if<DateFromWords>(&read);
    if (!date || date->hasTime != hasTime) return false;
    if (hasTime) return date->date == due;
    const Calendar calendar = Calendar::current();
    return calendar.civilDay(date->date) == calendar.civilDay(due);
}

}  // namespace

WordsReading readTitle(const QString& text) {
    const bool isEmpty = titleFromText(coreText(text)).empty();
    return {!isEmpty, isEmpty ? translated("A title must not be empty.") : QString()};
}

WordsReading readDue(const QString& text) {
    return reading(dueFromWords(wordsOf(text)), [](const std::optional<DateFromWords>& due) {
        return due ? qtText(dueInWords(due->date, due->hasTime)) : translated("No due date");
    });
}

WordsReading readRepeat(const QString& text) {
    return reading(repeatFromWords(wordsOf(text)), [](const RepeatRule& rule) {
        return rule.kind == kNoRepeat ? translated("Does not repeat") : qtText(repeatInWords(rule));
    });
}

WordsReading readAlert(const QString& text, std::optional<Date> due) {
    return reading(alertFromWords(wordsOf(text), due), [](const std::optional<Date>& alert) {
        return alert ? qtText(stringOfDateTime(*alert)) : translated("No alert");
    });
}

void takeTitle(GTask& task, const QString& text) {
    const std::u16string title = titleFromText(coreText(text));
    if (title.empty() || task.name() == title) return;
    task.setName(title);
    task.updateLastModified();
}

void takeDue(GTask& task, const QString& text) {
    const auto read = dueFromWords(wordsOf(text));
    if (const auto* due = std::get_if<std::optional<DateFromWords>>(&read)) setDue(task, *due);
}

void takeRepeat(GTask& task, const QString& text) {
    const auto read = repeatFromWords(wordsOf(text));
    if (const auto* rule = std::get_if<RepeatRule>(&read)) setRepeat(task, *rule);
}

void takeAlert(GTask& task, const QString& text) {
    const auto read = alertFromWords(wordsOf(text), task.dueDate());
    if (const auto* alert = std::get_if<std::optional<Date>>(&read)) setAlert(task, *alert);
}

void takeNotes(GTask& task, const QString& text) {
    const std::u16string notes = coreText(text);
    if (task.notes().value_or(std::u16string_view()) == notes) return;
    task.setNotes(notes.empty() ? std::nullopt : std::optional<std::u16string_view>(notes));
    task.updateLastModified();
}

QString dueToType(const GTask& task) {
    const std::optional<Date> due = task.dueDate();
    if (!due) return {};
    const std::u16string shown = task.hasDueTime() ? stringOfDateTime(*due) : stringOfDate(*due);
    if (readsBack(shown, *due, task.hasDueTime())) return qtText(shown);
    return civilText(*due, task.hasDueTime());
}

QString alertToType(const GTask& task) {
    const std::optional<Date> alert = task.alertDate();
    if (!task.alertEnabled() || !alert) return {};
    const std::u16string shown = alertInWords(*alert, task.dueDate());
    const auto read = alertFromWords(shown, task.dueDate());
    const auto* date = std::get_if<std::optional<Date>>(&read);
    constexpr bool kHasTime = true;
    return date && *date == alert ? qtText(shown) : civilText(*alert, kHasTime);
}

}  // namespace corvane
