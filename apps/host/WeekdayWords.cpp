#include "apps/host/WeekdayWords.h"

#include "apps/host/DateWords.h"
#include "platform/foundation/Locale.h"

namespace corvane {
namespace {

constexpr std::u16string_view kEnglish[] = {u"sunday",   u"monday", u"tuesday", u"wednesday",
                                            u"thursday", u"friday", u"saturday"};

bool isEnglishName(std::u16string_view word, std::u16string_view name) {
    const bool isShort = word.size() >= 3 && word.size() <= 5 && name.starts_with(word);
    return isShort || word == name || (word.ends_with(u's') && word.substr(0, word.size() - 1) == name);
}

std::u16string withoutStop(std::u16string_view word) {
    return std::u16string(word.ends_with(u'.') ? word.substr(0, word.size() - 1) : word);
}

}  // namespace

std::u16string weekdayName(Weekday weekday, NameLength length) {
    // 2023-01-01 was a Sunday.
    const Calendar utc(cctz::utc_time_zone(), kSunday);
    const Date day = utc.startOfDay(cctz::civil_day(2023, 1, 1) + (weekday - kSunday));
    const std::u16string pattern = length == NameLength::kFull ? u"cccc" : u"ccc";
    return Locale::current().stringFromDate(day, pattern, utc);
}

std::optional<Weekday> weekdayFromWord(std::u16string_view word) {
    const std::u16string name = withoutStop(word);
    for (Weekday weekday = kSunday; weekday <= kSaturday; ++weekday) {
        if (isEnglishName(name, kEnglish[weekday - kSunday])) return weekday;
        for (const NameLength length : {NameLength::kFull, NameLength::kShort}) {
            if (name == withoutStop(foldedWords(weekdayName(weekday, length)))) return weekday;
        }
    }
    return std::nullopt;
}

}  // namespace corvane
