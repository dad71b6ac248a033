// Raises a desktop notification at a task's alert and at the end of a reminder, and does what its buttons
// say.
//
// Nothing runs between two alerts: a timer of the wall clock waits for the next one, also through suspend and
// a set clock. Without a notification server alerts wait for one, as they do while the program does not run.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include "apps/corvane-today/AlertLock.h"
#include "apps/corvane-today/Notifications.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/host/AlertSchedule.h"
#include "apps/host/Snoozes.h"
#include "platform/foundation/WallClockTimer.h"

namespace corvane {

class AlertNotifier : public QObject {
    Q_OBJECT
  public:
    /// Goes by the clock that is in force now, whatever day is previewed later.
    /// @param actions, notifications  outlive the notifier
    AlertNotifier(TaskActions& actions, Notifications& notifications, QObject* parent = nullptr);

    /// Off: alerts pass unseen. Reminders that somebody asked for still come.
    void setEnabled(bool isEnabled);
    bool isEnabled() const { return isEnabled_; }
    /// Private: notifications tell no title.
    void setPrivate(bool isPrivate);

    /// "Reminder at 14:30"; empty for a task without one.
    QString reminderText(const std::string& taskid) const;

  public Q_SLOTS:
    /// Gives what is due and waits for the next moment; to be called whenever the store may have changed.
    void plan();
    void remindLater(const QString& taskid, int minutes);

  Q_SIGNALS:
    void openWanted(const QString& taskid);
    /// Rows tell of other reminders by now.
    void remindersChanged();
    /// A reminder cannot be relied on; why, in one line.
    void failed(const QString& problem);

  private:
    struct StoreReminders {
        StoreReminders(const std::string& identifier, Date now)
            : store(identifier), lock(identifier), alerts(identifier, now), snoozes(identifier) {}
        std::string store;
        AlertLock lock;
        AlertSchedule alerts;
        Snoozes snoozes;
    };

    void followStore();
    void giveAlerts(Date now);
    void giveReminders(Date now);
    void give(const GTask& task, Date since);
    void notify(const std::string& taskid, const GTask& task, Date since);
    void notifyOfMany(std::size_t count);
    void closeSettled();
    void waitForNext(Date now);
    void takeAction(const QString& key, const QString& action, const QString& activationToken);

    TaskActions& actions_;
    Notifications& notifications_;
    std::function<Date()> clock_;
    WallClockTimer timer_;
    QSocketNotifier wakes_;
    std::optional<StoreReminders> reminders_;  ///< none without a store
    std::map<std::string, Date> shown_;        ///< since when the notifications on the screen are due
    std::optional<Date> plannedAt_;
    bool isEnabled_ = true;
    bool isPrivate_ = false;
};

}  // namespace corvane
