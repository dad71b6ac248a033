#include "apps/host/AlertWords.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "apps/host/CountWords.h"
#include "apps/host/DateWords.h"
#include "dates/DateTexts.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

struct Unit {
    std::u16string_view names[4];
    std::int64_t seconds;
    const char* one;
    const char* several;
};
constexpr Unit kUnits[] = {
    {{u"w", u"week", u"weeks", u"wk"},      604'800, textKey("1 week before"),   textKey("%d weeks before")  },
    {{u"d", u"day", u"days", u"d"},         86'400,  textKey("1 day before"),    textKey("%d days before")   },
    {{u"h", u"hour", u"hours", u"hr"},      3'600,   textKey("1 hour before"),   textKey("%d hours before")  },
    {{u"m", u"minute", u"minutes", u"min"}, 60,      textKey("1 minute before"), textKey("%d minutes before")},
};

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

std::u16string beforeInWords(const Unit& unit, std::int64_t count) {
    if (count == 1) return localizedString(unit.one);
    return stringWithFormat(localizedString(unit.several, count), {count});
}

// Days and weeks keep the wall-clock time.
Date dateBefore(Date due, const Unit& unit, std::int64_t count) {
    const std::int64_t seconds = count * unit.seconds;
    if (unit.seconds < 86'400) return due - TimeInterval(static_cast<double>(seconds));
    return Calendar::current().dateByAddingDays(due, -seconds / 86'400);
}

std::optional<Date> dateBeforeByEnglish(Date due, std::u16string_view words) {
    if (words == u"0" || words == u"at due time" || words == u"due") return due;
    if (words.ends_with(u" before")) words.remove_suffix(7);
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(words, isDigit) - words.begin());
    if (end == 0 || end > 4) return std::nullopt;
    std::int64_t count = 0;
    for (const char16_t digit : words.substr(0, end)) count = count * 10 + (digit - u'0');
    std::u16string_view name = words.substr(end);
    if (name.starts_with(u' ')) name.remove_prefix(1);
    const auto* unit = std::ranges::find_if(kUnits, [name](const Unit& candidate) {
        return std::ranges::find(candidate.names, name) != std::end(candidate.names);
    });
    if (unit == std::end(kUnits)) return std::nullopt;
    return dateBefore(due, *unit, count);
}

// What alertInWords printed is read back by printing what it may have been.
std::optional<Date> dateBeforeByTranslation(Date due, std::u16string_view words) {
    if (words == foldedWords(localizedString("at due time"))) return due;
    for (const std::int32_t count : countsToTry(words)) {
        for (const Unit& unit : kUnits) {
            if (words == foldedWords(beforeInWords(unit, count))) return dateBefore(due, unit, count);
        }
    }
    return std::nullopt;
}

bool isNone(std::u16string_view words) {
    return words == u"none" || words == u"never" || words == u"no" || words == u"off" ||
           words == foldedWords(localizedString("none"));
}

Date atTimeOfDay(Date day, const TimeOfDay& time) {
    const Calendar calendar = Calendar::current();
    const cctz::civil_day civil = calendar.civilDay(day);
    return calendar.dateFromCivil(
        cctz::civil_second(civil.year(), civil.month(), civil.day(), time.hour, time.minute, time.second));
}

}  // namespace

std::variant<std::optional<Date>, std::string> alertFromWords(std::u16string_view text,
                                                              std::optional<Date> dueDate) {
    using Alert = std::optional<Date>;
    const std::u16string words = foldedWords(text);
    if (isNone(words)) return Alert();
    if (!dueDate) return localizedUtf8("an alert needs a due date");
    for (const auto read : {dateBeforeByEnglish, dateBeforeByTranslation}) {
        if (const std::optional<Date> before = read(*dueDate, words)) return Alert(before);
    }
    if (const std::optional<TimeOfDay> time = timeOfDayFromWords(text)) {
        return Alert(atTimeOfDay(*dueDate, *time));
    }
    const auto date = dateFromWords(text);
    const auto* found = std::get_if<DateFromWords>(&date);
    if (found && found->hasTime) return Alert(found->date);
    if (found) return localizedUtf8("an alert on a day needs a time, like \"tomorrow 9:00\"");
    // TRANSLATORS: Examples of what to type stay in English: it is read in every language.
    return localizedUtf8("\"%@\" is no alert; write it like 15m, 2h, 1d, 9:00 or \"tomorrow 9:00\"",
                         {std::u16string(text)});
}

std::u16string alertInWords(Date alert, std::optional<Date> dueDate) {
    if (!dueDate) return stringOfDateTime(alert);
    const double before = (*dueDate - alert).count();
    if (before == 0) return localizedString("at due time");
    for (const Unit& unit : kUnits) {
        const double count = before / static_cast<double>(unit.seconds);
        if (count < 1 || count > 9'999 || count != std::floor(count)) continue;
        return beforeInWords(unit, static_cast<std::int64_t>(count));
    }
    return stringOfDateTime(alert);
}

}  // namespace corvane
