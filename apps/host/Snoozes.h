// Reminders that somebody asked for: "remind me in 10 minutes". They touch no task.
//
// A reminder lasts until it is given, or until its task is done, gone or has other dates than it had: then
// what it was meant for has been settled in another way. One a task; a later one replaces it. Remembered
// across restarts, and given late when its time passed meanwhile, however long ago.
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

struct DueReminder {
    GTask* task = nullptr;
    Date until;  ///< when it was to come
};

class Snoozes {
  public:
    /// Takes over what earlier runs remembered about a store.
    /// @param store  the store's identifier
    explicit Snoozes(const std::string& store);

    /// @return false when it could not be written down; it is then kept for the life of this object
    bool add(const GTask& task, Date until);
    void cancel(const std::string& taskid);

    /// Drops the reminders that have lost their sense.
    void settle(ManagedObjectContext& context);
    /// The reminders to give now, the earliest first; they are done with.
    std::vector<DueReminder> take(ManagedObjectContext& context, Date now);

    std::optional<Date> next() const;
    /// When a task comes up again; none without a reminder.
    std::optional<Date> until(const std::string& taskid) const;

  private:
    struct Snooze {
        Date until;
        std::optional<Date> dueDate, alertDate;  ///< the task's own, at the time
        bool operator==(const Snooze&) const = default;
    };
    static std::optional<Snooze> snoozeOf(const PropertyList& entry);
    static PropertyList listOf(const Snooze& snooze);
    static GTask* taskOf(ManagedObjectContext& context, const std::string& taskid, const Snooze& snooze);
    bool save() const;

    StateFile file_;
    std::map<std::string, Snooze> snoozes_;  ///< by object URI
};

}  // namespace corvane
