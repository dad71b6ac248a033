// Tasks from iCalendar to-dos (RFC 5545), read by libical.
#include <libical/ical.h>
#include <strings.h>

#include <algorithm>
#include <map>
#include <memory>

#include "apps/corvane/CommandText.h"
#include "apps/corvane/ReadableText.h"
#include "apps/corvane/TaskImport.h"
#include "dates/RepeatArithmetic.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Text.h"
#include "widget/PriorityBands.h"

namespace corvane {
namespace {

struct ComponentDeleter {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using Component = std::unique_ptr<icalcomponent, ComponentDeleter>;

std::u16string textOf(const char* utf8) { return utf8 ? textFromUtf8(utf8) : std::u16string(); }

// A wall-clock time without a zone is the device's; one with a zone is converted through UTC.
Date dateFromTime(icaltimetype time) {
    const bool hasZone = icaltime_is_utc(time) || time.zone != nullptr;
    if (hasZone && !time.is_date) {
        time = icaltime_convert_to_zone(time, icaltimezone_get_utc_timezone());
    }
    const Calendar calendar = hasZone ? Calendar(cctz::utc_time_zone(), kSunday) : Calendar::current();
    return calendar.dateFromCivil(
        cctz::civil_second(time.year, time.month, time.day, time.hour, time.minute, time.second));
}

// 1 is the highest of RFC 5545, 9 the lowest, 5 the middle, 0 none.
std::int32_t priorityFromCalendar(int priority) {
    constexpr int kMiddle = 5;
    if (priority <= 0) return lowestPriority(PriorityBand::kNone);
    if (priority < kMiddle) return lowestPriority(PriorityBand::kHigh);
    return lowestPriority(priority == kMiddle ? PriorityBand::kMedium : PriorityBand::kLow);
}

struct RepeatFrequency {
    icalrecurrencetype_frequency frequency;
    std::int32_t kind;
};

constexpr RepeatFrequency kFrequencies[] = {
    {ICAL_DAILY_RECURRENCE,   kRepeatDaily  },
    {ICAL_WEEKLY_RECURRENCE,  kRepeatWeekly },
    {ICAL_MONTHLY_RECURRENCE, kRepeatMonthly},
    {ICAL_YEARLY_RECURRENCE,  kRepeatYearly },
};

std::vector<short> daysOf(const icalrecurrencetype& rule) {
    std::vector<short> days;
    for (const short day : rule.by_day) {
        if (day == ICAL_RECURRENCE_ARRAY_MAX) break;
        days.push_back(day);
    }
    return days;
}

// "2TH" is the second Thursday, "-1FR" the last Friday; others have no place in a monthly rule.
void setMonthlyDay(RepeatRule& rule, const std::vector<short>& days) {
    if (days.size() != 1) return;
    const int position = icalrecurrencetype_day_position(days.front());
    if (position != -1 && (position < 1 || position > 4)) return;
    rule.ordinal = position == -1 ? kLastOrdinal : static_cast<std::uint64_t>(position);
    rule.dayKind = static_cast<std::uint64_t>(icalrecurrencetype_day_day_of_week(days.front()));
}

std::optional<RepeatRule> repeatFromRecurrence(const icalrecurrencetype& recurrence) {
    for (const RepeatFrequency& known : kFrequencies) {
        if (known.frequency != recurrence.freq) continue;
        RepeatRule rule;
        rule.kind = known.kind;
        rule.interval = std::max<std::int32_t>(recurrence.interval, 1);
        const std::vector<short> days = daysOf(recurrence);
        if (rule.kind == kRepeatMonthly) setMonthlyDay(rule, days);
        if (rule.kind != kRepeatWeekly) return rule;
        for (const short day : days) {
            rule.weekdays.push_back(static_cast<std::uint64_t>(icalrecurrencetype_day_day_of_week(day)));
        }
        return rule;
    }
    return std::nullopt;
}

class CalendarReader {
  public:
    Import read(icalcomponent* root) {
        list_.name = calendarName(root);
        readToDos(root);
        for (std::size_t i = 0; i < list_.tasks.size(); ++i) list_.tasks[i].parent = parentOf(i);
        import_.lists.push_back(inTreeOrder(std::move(list_)));
        return std::move(import_);
    }

  private:
    static std::optional<std::u16string> calendarName(icalcomponent* root) {
        for (icalproperty* property = icalcomponent_get_first_property(root, ICAL_X_PROPERTY); property;
             property = icalcomponent_get_next_property(root, ICAL_X_PROPERTY)) {
            if (std::string_view(icalproperty_get_x_name(property)) == "X-WR-CALNAME") {
                return textOf(icalproperty_get_value_as_string(property));
            }
        }
        return std::nullopt;
    }

    void readToDos(icalcomponent* root) {
        for (icalcomponent* todo = icalcomponent_get_first_component(root, ICAL_VTODO_COMPONENT); todo;
             todo = icalcomponent_get_next_component(root, ICAL_VTODO_COMPONENT)) {
            readToDo(todo);
        }
    }

    void readToDo(icalcomponent* todo) {
        ImportedTask task;
        task.name = readableTitle(textOf(icalcomponent_get_summary(todo)));
        if (task.name.empty()) {
            import_.problems.push_back(translated("a to-do without a summary was left out"));
            return;
        }
        task.notes = readableText(textOf(icalcomponent_get_description(todo)));
        readDates(todo, task);
        readProperties(todo, task);
        readAlarm(todo, task);
        const std::string uid = stringOrEmpty(icalcomponent_get_uid(todo));
        if (!uid.empty()) places_.emplace(uid, list_.tasks.size());
        parents_.push_back(parentUid(todo));
        list_.tasks.push_back(std::move(task));
    }

    static std::string stringOrEmpty(const char* text) { return text ? text : ""; }

    static void readDates(icalcomponent* todo, ImportedTask& task) {
        const icaltimetype due = icalcomponent_get_due(todo);
        if (!icaltime_is_null_time(due)) {
            task.dueDate = dateFromTime(due);
            task.hasDueTime = !due.is_date;
        }
        const icalproperty* completed = icalcomponent_get_first_property(todo, ICAL_COMPLETED_PROPERTY);
        if (completed) task.completedDate = dateFromTime(icalproperty_get_completed(completed));
        task.completed = completed != nullptr || icalcomponent_get_status(todo) == ICAL_STATUS_COMPLETED;
    }

    void readProperties(icalcomponent* todo, ImportedTask& task) {
        if (const icalproperty* priority = icalcomponent_get_first_property(todo, ICAL_PRIORITY_PROPERTY)) {
            task.priority = priorityFromCalendar(icalproperty_get_priority(priority));
        }
        const icalproperty* rule = icalcomponent_get_first_property(todo, ICAL_RRULE_PROPERTY);
        if (!rule) return;
        const auto repeat = repeatFromRecurrence(icalproperty_get_rrule(rule));
        if (repeat && task.dueDate) {
            task.repeat = *repeat;
        } else {
            import_.problems.push_back(translated("a repeat rule was left out: it has no counterpart here"));
        }
    }

    static void readAlarm(icalcomponent* todo, ImportedTask& task) {
        icalcomponent* alarm = icalcomponent_get_first_component(todo, ICAL_VALARM_COMPONENT);
        icalproperty* property =
            alarm ? icalcomponent_get_first_property(alarm, ICAL_TRIGGER_PROPERTY) : nullptr;
        if (!property || !task.dueDate) return;
        const icaltriggertype trigger = icalproperty_get_trigger(property);
        if (!icaltime_is_null_time(trigger.time)) {
            task.alertDate = dateFromTime(trigger.time);
        } else {
            task.alertDate = *task.dueDate + TimeInterval(icaldurationtype_as_int(trigger.duration));
        }
    }

    static std::string parentUid(icalcomponent* todo) {
        const icalproperty* related = icalcomponent_get_first_property(todo, ICAL_RELATEDTO_PROPERTY);
        return related ? stringOrEmpty(icalproperty_get_relatedto(related)) : std::string();
    }

    std::optional<std::size_t> parentOf(std::size_t task) const {
        const auto found = places_.find(parents_[task]);
        return found == places_.end() ? std::nullopt : std::optional(found->second);
    }

    Import import_;
    ImportedList list_;
    std::map<std::string, std::size_t> places_;  ///< by UID
    std::vector<std::string> parents_;           ///< UID of each task's parent
};

bool startsWithWord(std::string_view line, std::string_view word) {
    return line.size() >= word.size() && strncasecmp(line.data(), word.data(), word.size()) == 0;
}

// The library tells of an end without a beginning on standard error, in words of its own.
bool endsOnlyWhatBegan(std::string_view calendar) {
    std::size_t open = 0;
    while (!calendar.empty()) {
        const std::size_t end = std::min(calendar.find_first_of("\r\n"), calendar.size());
        const std::string_view line = calendar.substr(0, end);
        if (startsWithWord(line, "BEGIN:")) ++open;
        if (startsWithWord(line, "END:") && open-- == 0) return false;
        calendar.remove_prefix(std::min(end + 1, calendar.size()));
    }
    return true;
}

}  // namespace

ImportResult importFromCalendar(std::string_view calendar) {
    if (!endsOnlyWhatBegan(calendar)) return translated("the file is no calendar that can be read");
    icalerror_set_errors_are_fatal(0);
    const Component root(icalparser_parse_string(std::string(calendar).c_str()));
    if (!root) return translated("the file is no calendar that can be read");
    return CalendarReader().read(root.get());
}

}  // namespace corvane
