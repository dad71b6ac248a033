// When tasks give their alerts: each once a task and moment, also across restarts of the program.
//
// Tasks that are live, named, open and in a live list give an alert while they are due at all. What came due
// while no program ran or the machine slept is given late, however long that was. What was set before the
// first run, and what somebody sets into the past, is not given; only the last ten minutes are looked at
// again, for changes that arrive late. When the clock is set back, alerts that were given are not repeated.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/host/StateFile.h"
#include "model/GTask.h"
#include "platform/foundation/Date.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// Tasks with an alert after `after` and not after `until`, the earliest first. One query.
std::vector<GTask*> tasksWithAlertsBetween(ManagedObjectContext& context, Date after, Date until);

/// The first alert after a moment; none when no more come. One query.
std::optional<Date> nextAlert(ManagedObjectContext& context, Date after);

class AlertSchedule {
  public:
    /// Takes over what earlier runs gave for a store; the first run begins at `now`.
    /// @param store  the store's identifier
    AlertSchedule(const std::string& store, Date now);

    /// The tasks whose alerts are to be given now, the earliest first. They count as given, and that is
    /// remembered; where it cannot be kept, only for the life of this object.
    std::vector<GTask*> take(ManagedObjectContext& context, Date now);

  private:
    bool isGiven(const GTask& task) const;
    void save();

    StateFile file_;
    Date begunAt_;                       ///< when the first run began
    Date checkedUntil_;                  ///< when alerts were taken last
    std::optional<Date> savedUntil_;     ///< what the file says; none: not written by this run
    std::map<std::string, Date> given_;  ///< the moment of the last alert given, by object URI
};

}  // namespace corvane
