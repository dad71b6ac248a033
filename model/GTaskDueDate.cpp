#include <algorithm>
#include <limits>

#include "dates/DateBasics.h"
#include "model/CorvaneUserDefaults.h"
#include "model/Equality.h"
#include "model/GTask.h"
#include "model/RepeatData.h"

namespace corvane {
namespace {

constexpr bool isWeekly(std::int32_t repeat) {
    return repeat == kRepeatWeekly || repeat == kRepeatWeeklyOlder;
}

std::int32_t settingForKey(std::string_view key) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t setting = corvaneUserDefaults().integerForKey(key);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(setting, Limits::min(), Limits::max()));
}

Date atDefaultAlertTime(Date date) {
    constexpr std::int64_t kSameDay = 0;
    return dateByAddingDays(date, kSameDay, settingForKey(kAlertDefaultHourKey),
                            settingForKey(kAlertDefaultMinuteKey));
}

TimeInterval alertOffset(const GTask& task) {
    if (!task.dueDate() || !task.alertDate()) return TimeInterval::zero();
    return *task.alertDate() - *task.dueDate();
}

void setRepeat(GTask& task, std::int32_t repeat, std::int32_t interval) {
    if (task.alertRepeat() != repeat) {
        task.setAlertRepeat(repeat);
        task.setAlertRepeatData(std::nullopt);
    }
    task.setAlertRepeatInterval(interval == 0 ? 1 : interval);
}

void dropAlert(GTask& task) {
    task.setAlertEnabled(false);
    task.setAlertDate(std::nullopt);
}

/// @param date    as the caller gave it: it decides whether the due date changes
/// @param stored  what is then stored
void changeDueDate(GTask& task, std::optional<Date> date, std::optional<Date> stored, bool allDay,
                   std::int32_t repeat, std::int32_t interval) {
    const TimeInterval offset = alertOffset(task);
    if (!AreEqualOrBothNil(task.dueDate(), date)) task.setDueDate(stored);
    task.setHasDueDate(date.has_value());
    task.setHasDueTime(!allDay);
    setRepeat(task, repeat, interval);
    if (!task.dueDate()) return dropAlert(task);
    if (task.alertDate()) task.setAlertDate(*task.dueDate() + offset);
}

}  // namespace

void GTask::setDueDate(std::optional<Date> date, bool allDay, std::int32_t repeat, std::int32_t interval) {
    const std::optional<Date> stored = date && allDay ? atDefaultAlertTime(*date) : date;
    changeDueDate(*this, date, stored, allDay, repeat, interval);
}

void GTask::setDueDate2(std::optional<Date> date, bool allDay, std::int32_t repeat, std::int32_t interval) {
    changeDueDate(*this, date, date, allDay, repeat, interval);
}

void GTask::setMonthlyRepeatWeekdayOrdinal(std::uint64_t ordinal, std::uint64_t weekday) {
    if (alertRepeat() == kRepeatMonthly) setAlertRepeatData(monthlyRepeatData(ordinal, weekday));
}

std::uint64_t GTask::monthlyRepeatWeekdayOrdinal() const {
    return ordinalOfMonthlyRepeatData(alertRepeatData());
}

std::uint64_t GTask::monthlyRepeatWeekday() const { return weekdayOfMonthlyRepeatData(alertRepeatData()); }

void GTask::setWeeklyRepeatWeekdays(std::span<const std::uint64_t> weekdays) {
    if (isWeekly(alertRepeat())) setAlertRepeatData(weeklyRepeatData(weekdays));
}

std::vector<std::uint64_t> GTask::weeklyRepeatWeekdays() const {
    return weekdaysOfWeeklyRepeatData(alertRepeatData());
}

void GTask::setDateAlert(std::optional<Date> date) {
    if (!dueDate()) return dropAlert(*this);
    setAlertDate(date);
    setAlertEnabled(date.has_value());
}

void GTask::setRegionAlert(std::int32_t kind, double lat, double longitude, double radius, double accuracy,
                           std::optional<std::u16string_view> description) {
    setRegionAlert(kind);
    setRegionDescription(description);
    setRegionLat(lat);
    setRegionLong(longitude);
    setRegionRadius(radius);
    setRegionAccuracy(accuracy);
}

}  // namespace corvane
