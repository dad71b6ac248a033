#include "apps/host/DateWords.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "apps/host/WeekdayWords.h"
#include "apps/host/ZonedMoment.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/TextFolding.h"

namespace corvane {
namespace {

using Day = cctz::civil_day;

Day today() { return Calendar::current().civilDay(now()); }

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// Four digits at most, so that no step leaves the calendar.
std::optional<int> numberOf(std::u16string_view digits) {
    if (digits.empty() || digits.size() > 4 || !std::ranges::all_of(digits, isDigit)) return std::nullopt;
    int number = 0;
    for (const char16_t digit : digits) number = number * 10 + (digit - u'0');
    return number;
}

std::u16string_view trimmed(std::u16string_view text) {
    constexpr std::u16string_view kBlanks = u" \t\r\n\v\f\u00A0\u202F";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<Day> isoDay(std::u16string_view text) {
    if (text.size() != 10 || text[4] != u'-' || text[7] != u'-') return std::nullopt;
    const auto year = numberOf(text.substr(0, 4));
    const auto month = numberOf(text.substr(5, 2));
    const auto day = numberOf(text.substr(8));
    if (!year || !month || !day || *year == 0) return std::nullopt;
    const Day result(*year, *month, *day);
    if (result.month() != *month || result.day() != *day) return std::nullopt;
    return result;
}

std::optional<Day> namedDay(std::u16string_view words) {
    struct Name {
        const char16_t* word;
        const char* key;
        int offset;
    };
    constexpr Name kNames[] = {
        {u"today",     "Today",     0 },
        {u"tomorrow",  "Tomorrow",  1 },
        {u"yesterday", "Yesterday", -1},
    };
    for (const Name& name : kNames) {
        if (words == name.word || words == foldedWords(localizedString(name.key))) {
            return today() + name.offset;
        }
    }
    return std::nullopt;
}

std::optional<Day> steppedDay(int count, std::u16string_view unit) {
    constexpr std::u16string_view kUnits[][3] = {
        {u"d", u"day",   u"days"  },
        {u"w", u"week",  u"weeks" },
        {u"m", u"month", u"months"},
        {u"y", u"year",  u"years" },
    };
    const auto* found = std::ranges::find_if(
        kUnits, [&](const auto& names) { return std::ranges::find(names, unit) != std::end(names); });
    const Calendar calendar = Calendar::current();
    const Date start = calendar.startOfDay(today());
    switch (found - std::begin(kUnits)) {
        case 0:
            return today() + count;
        case 1:
            return today() + std::int64_t{7} * count;
        case 2:
            return calendar.civilDay(calendar.dateByAddingMonths(start, count));
        case 3:
            return calendar.civilDay(calendar.dateByAddingYears(start, count));
        default:
            return std::nullopt;
    }
}

// "+3d", "-1w", "in 3 days", "in a week", "next month".
std::optional<Day> relativeDay(std::u16string_view words) {
    if (words.starts_with(u"next ")) return steppedDay(1, words.substr(5));
    const bool isSigned = words.starts_with(u'+') || words.starts_with(u'-');
    if (!isSigned && !words.starts_with(u"in ")) return std::nullopt;
    std::u16string_view rest = trimmed(words.substr(isSigned ? 1 : 3));
    for (const std::u16string_view article : {u"a ", u"an "}) {
        if (!isSigned && rest.starts_with(article)) return steppedDay(1, rest.substr(article.size()));
    }
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(rest, isDigit) - rest.begin());
    const std::optional<int> count = numberOf(rest.substr(0, end));
    if (!count) return std::nullopt;
    return steppedDay(words.front() == u'-' ? -*count : *count, trimmed(rest.substr(end)));
}

std::optional<Day> dayOfWeek(std::u16string_view words) {
    if (words.starts_with(u"on ")) words.remove_prefix(3);
    const bool isNext = words.starts_with(u"next ");
    const std::optional<Weekday> weekday = weekdayFromWord(isNext ? words.substr(5) : words);
    if (!weekday) return std::nullopt;
    // The day itself counts from the start of the coming week on; without "next", from tomorrow on.
    Day day = today() + 1;
    if (isNext) day = Calendar::current().startOfWeek(today()) + 7;
    while (Calendar::weekday(day) != *weekday) ++day;
    return day;
}

// Forms without a year find the day in this year or, when that is over, in the next one.
std::optional<Day> dayByLocale(std::u16string_view text) {
    const Locale& locale = Locale::current();
    const cctz::civil_second start(today());
    const auto read = [&](const std::u16string& pattern, const cctz::civil_second& from) {
        const auto civil = locale.civilFromString(text, pattern, from);
        return civil && civil->year() >= 1 && civil->year() <= 9999 ? std::optional(Day(*civil))
                                                                    : std::nullopt;
    };
    if (const auto day = read(locale.shortDatePattern(), start)) return day;
    for (const char* skeleton : {"yMd", "yMMMd", "yMMMMd"}) {
        if (const auto day = read(locale.patternForSkeleton(skeleton), start)) return day;
    }
    constexpr std::int64_t kLongestYear = 366 * 86'400;
    for (const char* skeleton : {"Md", "MMMd", "MMMMd"}) {
        const std::u16string& pattern = locale.patternForSkeleton(skeleton);
        const auto day = read(pattern, start);
        if (day && *day >= today()) return day;
        if (const auto later = read(pattern, start + kLongestYear)) return later;
    }
    return std::nullopt;
}

std::optional<Day> dayFromText(std::u16string_view text) {
    const std::u16string words = foldedWords(text);
    for (const auto read : {isoDay, namedDay, dayOfWeek, relativeDay}) {
        if (const std::optional<Day> day = read(words)) return day;
    }
    return dayByLocale(trimmed(text));
}

std::optional<TimeOfDay> timeFromNumbers(std::span<const std::optional<int>> numbers, int lastHour) {
    TimeOfDay time;
    int* const fields[] = {&time.hour, &time.minute, &time.second};
    if (numbers.empty() || numbers.size() > std::size(fields)) return std::nullopt;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!numbers[i] || *numbers[i] > (i == 0 ? lastHour : 59)) return std::nullopt;
        *fields[i] = *numbers[i];
    }
    return time;
}

std::vector<std::optional<int>> numbersBetweenColons(std::u16string_view text) {
    std::vector<std::optional<int>> numbers;
    for (;;) {
        const std::size_t colon = text.find(u':');
        const std::u16string_view digits = text.substr(0, colon);
        numbers.push_back(digits.size() <= 2 ? numberOf(digits) : std::nullopt);
        if (numbers.size() > 1 && digits.size() != 2) numbers.back().reset();
        if (colon == text.npos) return numbers;
        text.remove_prefix(colon + 1);
    }
}

std::optional<TimeOfDay> timeOfHalfDay(std::u16string_view words) {
    const bool isAfternoon = words.ends_with(u"pm") || words.ends_with(u"p.m.");
    if (!isAfternoon && !words.ends_with(u"am") && !words.ends_with(u"a.m.")) return std::nullopt;
    words.remove_suffix(words.back() == u'.' ? 4 : 2);
    std::optional<TimeOfDay> time = timeFromNumbers(numbersBetweenColons(trimmed(words)), 12);
    if (!time || time->hour == 0) return std::nullopt;
    time->hour = time->hour % 12 + (isAfternoon ? 12 : 0);
    return time;
}

std::optional<TimeOfDay> timeByLocale(std::u16string_view text) {
    const Locale& locale = Locale::current();
    const cctz::civil_second midnight(today());
    const auto civil = locale.civilFromString(trimmed(text), locale.shortTimePattern(), midnight);
    if (!civil || Day(*civil) != Day(midnight)) return std::nullopt;
    return TimeOfDay{civil->hour(), civil->minute(), civil->second()};
}

DateFromWords dateOfDay(const Day& day, std::optional<TimeOfDay> time) {
    const Calendar calendar = Calendar::current();
    if (!time) return {calendar.startOfDay(day), false};
    const cctz::civil_second civil(day.year(), day.month(), day.day(), time->hour, time->minute,
                                   time->second);
    return {calendar.dateFromCivil(civil), true};
}

// A day and a time with a blank, a comma or ISO's "T" between them.
std::optional<DateFromWords> dateFromDayAndTime(std::u16string_view text) {
    for (std::size_t i = 1; i < text.size(); ++i) {
        const bool isIsoTime = i == 10 && (text[i] == u'T' || text[i] == u't') && isoDay(text.substr(0, i));
        if (!isIsoTime && !trimmed(text.substr(i, 1)).empty()) continue;
        std::u16string_view first = trimmed(text.substr(0, i));
        if (first.ends_with(u',')) first.remove_suffix(1);
        const std::optional<TimeOfDay> time = timeOfDayFromWords(text.substr(i + 1));
        if (!time) continue;
        if (const std::optional<Day> day = dayFromText(first)) return dateOfDay(*day, time);
    }
    return std::nullopt;
}

// A time without a zone is the user's own and is read as other words are.
std::optional<Date> dateOfZonedMoment(std::u16string_view text) {
    const std::optional<ZonedMoment> moment = zonedMomentFromText(text);
    if (!moment || !moment->offset) return std::nullopt;
    return moment->date(*moment->offset);
}

}  // namespace

std::u16string foldedWords(std::u16string_view text) {
    const std::u16string folded = foldedText(trimmed(text), {.ignoresCase = true, .ignoresDiacritics = true});
    std::u16string words;
    for (const char16_t unit : folded) {
        const bool isBlank = trimmed(std::u16string_view(&unit, 1)).empty();
        if (isBlank && words.ends_with(u' ')) continue;
        words += isBlank ? u' ' : unit;
    }
    // Printed texts have the typographic apostrophe, keyboards the other one.
    std::ranges::replace(words, u'\u2019', u'\'');
    return words;
}

std::optional<TimeOfDay> timeOfDayFromWords(std::u16string_view text) {
    const std::u16string folded = foldedWords(text);
    std::u16string_view words = folded;
    if (words.starts_with(u"at ")) words.remove_prefix(3);
    if (words == u"noon") return TimeOfDay{12, 0, 0};
    if (const auto time = timeOfHalfDay(words)) return time;
    constexpr int kLastHour = 23;
    if (words.find(u':') != words.npos) {
        if (const auto time = timeFromNumbers(numbersBetweenColons(words), kLastHour)) return time;
    }
    return timeByLocale(text);
}

std::variant<DateFromWords, std::string> dateFromWords(std::u16string_view text) {
    const std::u16string_view typed = trimmed(text);
    if (typed.empty()) return localizedUtf8("a date is missing");
    if (const std::optional<Date> date = dateOfZonedMoment(typed)) return DateFromWords{*date, true};
    if (const std::optional<Day> day = dayFromText(typed)) return dateOfDay(*day, std::nullopt);
    if (const std::optional<DateFromWords> date = dateFromDayAndTime(typed)) return *date;
    if (const std::optional<TimeOfDay> time = timeOfDayFromWords(typed)) return dateOfDay(today(), time);
    // TRANSLATORS: Examples of what to type stay in English: it is read in every language.
    return localizedUtf8("\"%@\" is no date; write it like 2024-03-05, \"tomorrow 14:00\", friday or +3d",
                         {std::u16string(typed)});
}

std::variant<std::optional<DateFromWords>, std::string> dueFromWords(std::u16string_view text) {
    using Due = std::optional<DateFromWords>;
    const std::u16string words = foldedWords(text);
    if (words == u"none" || words == u"never") return Due();
    auto date = dateFromWords(text);
    if (auto* reason = std::get_if<std::string>(&date)) return std::move(*reason);
    return Due(std::get<DateFromWords>(date));
}

}  // namespace corvane
