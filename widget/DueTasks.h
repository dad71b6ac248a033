// The query for what the widget shows: tasks that are live and named, in a live list that is not isolated,
// open, and due before tomorrow.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/foundation/Date.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// The moments that the query knows by name. All but `now` are first instants of local days.
struct DueDates {
    Date now;
    Date today;
    Date tomorrow;
    Date dayAfterTomorrow;
    Date nextWeek;  ///< eight days after today

    static DueDates ofThisMoment();

    /// "NOW", "TODAY", "TOMORROW", "DAY_AFTER_TOMORROW" and "NEXT_WEEK".
    Predicate::Variables substitutionVariables() const;
};

/// Highest priority first, then earliest due date, display order, list and title.
///
/// @param rows  how many of the tasks will be looked at; negative: all
FetchRequest requestForDueTasks(const DueDates& dates, std::int64_t rows);

/// How many of the due tasks are late: due on an earlier day or, with a time of day, not after `dates.now`.
/// 0 without a store.
std::size_t countOverdueTasks(ManagedObjectContext& context, const DueDates& dates);

/// When the next due task becomes late: the earliest time of day after `dates.now` that one of them is due
/// at; none when today brings no more.
std::optional<Date> nextDueTime(ManagedObjectContext& context, const DueDates& dates);

}  // namespace corvane
