#include "apps/host/RepeatWords.h"

#include <algorithm>
#include <optional>
#include <span>

#include "apps/host/CountWords.h"
#include "apps/host/DateWords.h"
#include "apps/host/JoinedWords.h"
#include "apps/host/WeekdayWords.h"
#include "dates/RepeatArithmetic.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using Words = std::span<const std::u16string>;
using Reading = std::variant<RepeatRule, std::string>;

constexpr std::u16string_view kOrdinals[][2] = {
    {u"1st",  u"first" },
    {u"2nd",  u"second"},
    {u"3rd",  u"third" },
    {u"4th",  u"fourth"},
    {u"last", u"last"  },
};
constexpr const char* kOrdinalKeys[] = {textKey("1st"), textKey("2nd"), textKey("3rd"), textKey("4th"),
                                        textKey("last")};

struct UnitWords {
    std::int32_t kind;
    std::u16string_view names[4];  ///< one, several, the adverb, its synonym
    const char* one;
    const char* several;
};
constexpr UnitWords kUnits[] = {
    {kRepeatDaily,   {u"day", u"days", u"daily", u"daily"}, textKey("every day"), textKey("every %d days")},
    {kRepeatWeekly,
     {u"week", u"weeks", u"weekly", u"weekly"},
     textKey("every week"),
     textKey("every %d weeks")                                                                            },
    {kRepeatMonthly,
     {u"month", u"months", u"monthly", u"monthly"},
     textKey("every month"),
     textKey("every %d months")                                                                           },
    {kRepeatYearly,
     {u"year", u"years", u"yearly", u"annually"},
     textKey("every year"),
     textKey("every %d years")                                                                            },
};

std::vector<std::u16string> wordsOf(std::u16string_view text) {
    std::vector<std::u16string> words;
    std::u16string word;
    for (const char16_t unit : foldedWords(text) + u" ") {
        if (unit != u' ' && unit != u',' && unit != u'&') {
            word += unit;
        } else if (!word.empty()) {
            if (word != u"and" && word != u"the") words.push_back(word);
            word.clear();
        }
    }
    return words;
}

std::optional<std::int32_t> countFromWord(std::u16string_view word) {
    if (word == u"other") return 2;
    const bool isNumber = !word.empty() && word.size() <= 4 && std::ranges::all_of(word, [](char16_t unit) {
        return unit >= u'0' && unit <= u'9';
    });
    if (!isNumber) return std::nullopt;
    std::int32_t number = 0;
    for (const char16_t unit : word) number = number * 10 + (unit - u'0');
    return number > 0 ? std::optional(number) : std::nullopt;
}

const UnitWords* unitFromWord(std::u16string_view word) {
    const auto* unit = std::ranges::find_if(kUnits, [word](const UnitWords& candidate) {
        return std::ranges::find(candidate.names, word) != std::end(candidate.names);
    });
    return unit == std::end(kUnits) ? nullptr : unit;
}

std::optional<std::uint64_t> ordinalFromWord(std::u16string_view word) {
    for (std::uint64_t i = 0; i < std::size(kOrdinals); ++i) {
        if (std::ranges::find(kOrdinals[i], word) != std::end(kOrdinals[i])) return i + 1;
    }
    return std::nullopt;
}

std::string notUnderstood(Words words) {
    std::u16string text;
    for (const std::u16string& word : words) text += (text.empty() ? u"" : u" ") + word;
    // TRANSLATORS: Examples of what to type stay in English: it is read in every language.
    return localizedUtf8(
        "\"%@\" is no repeat rule; write it like \"every day\", \"every 2 weeks on mon, fri\" or "
        "\"every month on the last working day\"",
        {text});
}

void addWeekday(RepeatRule& rule, std::uint64_t weekday) {
    if (std::ranges::find(rule.weekdays, weekday) == rule.weekdays.end()) rule.weekdays.push_back(weekday);
}

// One name, or "weekday" and "weekend" for several.
bool addWeekdays(RepeatRule& rule, std::u16string_view word) {
    if (const auto weekday = weekdayFromWord(word)) {
        addWeekday(rule, static_cast<std::uint64_t>(*weekday));
    } else if (word == u"weekday" || word == u"weekdays" || word == u"workday" || word == u"workdays") {
        for (std::uint64_t day = kMonday; day <= kFriday; ++day) addWeekday(rule, day);
    } else if (word == u"weekend" || word == u"weekends") {
        addWeekday(rule, kSaturday);
        addWeekday(rule, kSunday);
    } else {
        return false;
    }
    return true;
}

bool addAllWeekdays(RepeatRule& rule, Words words) {
    return !words.empty() && std::ranges::all_of(words, [&](std::u16string_view word) {
        return word == u"on" || addWeekdays(rule, word);
    });
}

std::optional<std::uint64_t> dayKindFromWords(Words words) {
    const std::u16string& first = words.front();
    if (words.size() == 2 && words[1] == u"day") {
        if (first == u"working" || first == u"work" || first == u"business") return kWorkingDay;
        if (first == u"weekend") return kWeekendDay;
    }
    if (words.size() != 1) return std::nullopt;
    if (first == u"day") return kDayOfMonth;
    if (first == u"workday" || first == u"weekday") return kWorkingDay;
    const auto weekday = weekdayFromWord(first);
    return weekday ? std::optional(static_cast<std::uint64_t>(*weekday)) : std::nullopt;
}

// What stands behind "every month on".
Reading monthlyRule(RepeatRule rule, Words words) {
    if (words.size() == 2 && words[0] == u"day") {
        const std::optional<std::int32_t> day = countFromWord(words[1]);
        if (!day || *day > 4) {
            // TRANSLATORS: Examples of what to type stay in English: it is read in every language.
            return localizedUtf8(
                "a rule can name days 1 to 4 and the last day of a month; for another day let the task be "
                "due on it and repeat \"every month\"");
        }
        rule.ordinal = static_cast<std::uint64_t>(*day);
        rule.dayKind = kDayOfMonth;
        return rule;
    }
    if (words.size() < 2) return notUnderstood(words);
    const auto ordinal = ordinalFromWord(words.front());
    const auto kind = dayKindFromWords(words.subspan(1));
    if (!ordinal || !kind) return notUnderstood(words);
    rule.ordinal = *ordinal;
    rule.dayKind = *kind;
    return rule;
}

Reading ruleWithDetail(const RepeatRule& rule, Words words, Words all) {
    if (words.empty()) return rule;
    const Words detail = words.front() == u"on" ? words.subspan(1) : words;
    if (detail.empty()) return notUnderstood(all);
    if (rule.kind == kRepeatMonthly) return monthlyRule(rule, detail);
    RepeatRule weekly = rule;
    if (rule.kind == kRepeatWeekly && addAllWeekdays(weekly, detail)) return weekly;
    return notUnderstood(all);
}

std::u16string weekdaysInWords(const RepeatRule& rule) {
    std::vector<std::u16string> names;
    for (const std::uint64_t weekday : rule.weekdays) {
        names.push_back(weekdayName(static_cast<Weekday>(weekday), NameLength::kShort));
    }
    return joinedWords(names);
}

std::u16string dayKindInWords(std::uint64_t kind) {
    if (kind == kWorkingDay) return localizedString("working day");
    if (kind == kWeekendDay) return localizedString("weekend day");
    if (kind == kDayOfMonth) return localizedString("day");
    return weekdayName(static_cast<Weekday>(kind), NameLength::kFull);
}

std::u16string oftenInWords(const UnitWords& unit, std::int32_t interval) {
    if (interval == 1) return localizedString(unit.one);
    return stringWithFormat(localizedString(unit.several, interval), {std::int64_t{interval}});
}

// How often, with the days of the rule behind it.
std::u16string withDetail(const std::u16string& often, const RepeatRule& rule) {
    if (rule.kind == kRepeatWeekly && !rule.weekdays.empty()) {
        return stringWithFormat(localizedString("%1$@ on %2$@"), {often, weekdaysInWords(rule)});
    }
    if (rule.kind != kRepeatMonthly || rule.ordinal == 0) return often;
    if (rule.dayKind == kDayOfMonth && rule.ordinal < kLastOrdinal) {
        return stringWithFormat(localizedString("%1$@ on day %2$d"),
                                {often, static_cast<std::int64_t>(rule.ordinal)});
    }
    return stringWithFormat(
        localizedString("%1$@ on the %2$@ %3$@"),
        {often, localizedString(kOrdinalKeys[rule.ordinal - 1]), dayKindInWords(rule.dayKind)});
}

bool isDayKind(std::uint64_t kind) {
    return (kind >= kSunday && kind <= kSaturday) || (kind >= kDayOfMonth && kind <= kWeekendDay);
}

Reading ruleByEnglish(Words all) {
    if (all.size() == 1 && (all[0] == u"none" || all[0] == u"never" || all[0] == u"no")) return RepeatRule();
    Words words = all;
    if (words.front() == u"every" || words.front() == u"each") words = words.subspan(1);
    RepeatRule rule;
    if (!words.empty()) {
        if (const auto count = countFromWord(words.front())) {
            rule.interval = *count;
            words = words.subspan(1);
        }
    }
    if (words.empty()) return notUnderstood(all);
    if (const UnitWords* unit = unitFromWord(words.front())) {
        rule.kind = unit->kind;
        return ruleWithDetail(rule, words.subspan(1), all);
    }
    rule.kind = kRepeatWeekly;
    if (addAllWeekdays(rule, words)) return rule;
    return notUnderstood(all);
}

// Rules that have no weekdays of their own choice and come at one interval.
std::vector<RepeatRule> rulesToTry(std::int32_t interval) {
    std::vector<RepeatRule> rules;
    for (const UnitWords& unit : kUnits) rules.push_back({unit.kind, interval});
    for (std::uint64_t ordinal = 1; ordinal <= kLastOrdinal; ++ordinal) {
        for (std::uint64_t kind = kSunday; kind <= kSaturday; ++kind) {
            rules.push_back({kRepeatMonthly, interval, {}, ordinal, kind});
        }
        for (std::uint64_t kind = kDayOfMonth; kind <= kWeekendDay; ++kind) {
            rules.push_back({kRepeatMonthly, interval, {}, ordinal, kind});
        }
    }
    return rules;
}

// Names that joinedWords has joined.
std::vector<std::u16string> namesIn(std::u16string_view joined) {
    std::u16string names(joined);
    const std::u16string separator = foldedWords(stringWithFormat(localizedString("%1$@, %2$@"), {u"", u""}));
    for (auto place = names.find(separator); !separator.empty() && place != names.npos;
         place = names.find(separator)) {
        names.replace(place, separator.size(), u" ");
    }
    return wordsOf(names);
}

// The weekdays stand in the place of a mark that no text has.
std::optional<RepeatRule> weeklyRuleByTranslation(std::u16string_view words, std::int32_t interval) {
    constexpr char16_t kMark = u'\uFFFC';
    RepeatRule rule{kRepeatWeekly, interval};
    const auto* unit = std::ranges::find(kUnits, kRepeatWeekly, &UnitWords::kind);
    const std::u16string frame = foldedWords(stringWithFormat(
        localizedString("%1$@ on %2$@"), {oftenInWords(*unit, interval), std::u16string(1, kMark)}));
    const std::u16string_view before = std::u16string_view(frame).substr(0, frame.find(kMark));
    const std::u16string_view after =
        std::u16string_view(frame).substr(std::min(before.size() + 1, frame.size()));
    if (words.size() < frame.size() || !words.starts_with(before) || !words.ends_with(after))
        return std::nullopt;
    words = words.substr(before.size(), words.size() - before.size() - after.size());
    return addAllWeekdays(rule, namesIn(words)) ? std::optional(rule) : std::nullopt;
}

// What repeatInWords printed is read back by printing what it may have been.
std::optional<RepeatRule> ruleByTranslation(std::u16string_view text) {
    const std::u16string words = foldedWords(text);
    if (words == foldedWords(localizedString("none"))) return RepeatRule();
    for (const std::int32_t interval : countsToTry(words)) {
        if (const auto weekly = weeklyRuleByTranslation(words, interval)) return weekly;
        for (const RepeatRule& rule : rulesToTry(interval)) {
            if (words == foldedWords(repeatInWords(rule))) return rule;
        }
    }
    return std::nullopt;
}

}  // namespace

Reading repeatFromWords(std::u16string_view text) {
    const std::vector<std::u16string> words = wordsOf(text);
    if (words.empty()) return localizedUtf8("a repeat rule is missing");
    Reading reading = ruleByEnglish(words);
    if (std::holds_alternative<RepeatRule>(reading)) return reading;
    if (const std::optional<RepeatRule> rule = ruleByTranslation(text)) return *rule;
    return reading;
}

std::u16string repeatInWords(const RepeatRule& rule) {
    if (rule.kind == kNoRepeat) return localizedString("none");
    const auto* unit = std::ranges::find(kUnits, rule.kind, &UnitWords::kind);
    if (unit == std::end(kUnits)) return localizedString("an unknown rule");
    return withDetail(oftenInWords(*unit, rule.interval), rule);
}

RepeatRule repeatOfTask(const GTask& task) {
    RepeatRule rule;
    rule.kind = task.alertRepeat() == kRepeatWeeklyOlder ? kRepeatWeekly : task.alertRepeat();
    if (rule.kind == kNoRepeat) return rule;
    rule.interval = std::max(task.alertRepeatInterval(), 1);
    if (rule.kind == kRepeatWeekly) {
        for (const std::uint64_t weekday : task.weeklyRepeatWeekdays()) {
            if (weekday >= kSunday && weekday <= kSaturday) addWeekday(rule, weekday);
        }
    }
    if (rule.kind == kRepeatMonthly && task.monthlyRepeatWeekdayOrdinal() != 0 &&
        isDayKind(task.monthlyRepeatWeekday())) {
        rule.ordinal = task.monthlyRepeatWeekdayOrdinal();
        rule.dayKind = task.monthlyRepeatWeekday();
    }
    return rule;
}

}  // namespace corvane
