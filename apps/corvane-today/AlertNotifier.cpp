#include "apps/corvane-today/AlertNotifier.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/host/TaskDescription.h"
#include "dates/DateTexts.h"
#include "dates/RelativeDayTexts.h"
#include "model/GSData.h"
#include "platform/foundation/Environment.h"
#include "platform/store/SqliteStore.h"

namespace corvane {
namespace {

// Nobody reads more at once: of what is beyond, the last one tells the number.
constexpr std::size_t kMostAtOnce = 5;
constexpr int kLaterMinutes = 10;  // as the action is called
constexpr TimeInterval kLate{60};

constexpr QLatin1String kManyKey("many");
constexpr QLatin1String kOpenAction("open");
constexpr QLatin1String kDoneAction("done");
constexpr QLatin1String kLaterAction("later");
// A click on the notification itself, by the notification standard.
constexpr QLatin1String kDefaultAction("default");

SqliteStore* openStore() { return GSData::sharedInstance().persistentStoreCoordinator().store(); }

ManagedObjectContext& context() { return GSData::sharedInstance().viewContext(); }

QString keyOf(const std::string& taskid) { return QString::fromStdString(taskid); }

// Tasks carry no sound of their own, so that each plays the default one, by its freedesktop.org
// sound name.
QString defaultSound() { return QStringLiteral("alarm-clock-elapsed"); }

QString momentText(Date moment, Date now) {
    return qtText(daysLeftSinceDate(moment, now) == 0 ? stringOfTime(moment) : stringOfDateTime(moment));
}

NotificationContent contentOf(const GTask& task, bool isPrivate) {
    NotificationContent content;
    content.soundName = defaultSound();
    content.summary =
        isPrivate ? translated("A task's reminder") : shownLine(task.name().value_or(std::u16string_view()));
    content.body = isPrivate ? QString() : qtText(dueInWords(task));
    content.actions.emplaceBack(kDefaultAction, translated("Open"));
    content.actions.emplaceBack(kOpenAction, translated("Open"));
    content.actions.emplaceBack(kDoneAction, translated("Done"));
    content.actions.emplaceBack(kLaterAction, translated("Remind me in 10 minutes"));
    return content;
}

}  // namespace

AlertNotifier::AlertNotifier(TaskActions& actions, Notifications& notifications, QObject* parent)
    : QObject(parent),
      actions_(actions),
      notifications_(notifications),
      clock_(Environment::current().now),
      wakes_(timer_.fd(), QSocketNotifier::Read) {
    connect(&wakes_, &QSocketNotifier::activated, this, [this] {
        if (timer_.read() != WallClockTimer::Wake::kNone) plan();
    });
    connect(&notifications_, &Notifications::ready, this, &AlertNotifier::plan);
    connect(&notifications_, &Notifications::actionInvoked, this, &AlertNotifier::takeAction);
    connect(&notifications_, &Notifications::closed, this,
            [this](const QString& key) { shown_.erase(key.toStdString()); });
}

void AlertNotifier::setEnabled(bool isEnabled) {
    if (std::exchange(isEnabled_, isEnabled) != isEnabled) plan();
}

void AlertNotifier::setPrivate(bool isPrivate) {
    if (std::exchange(isPrivate_, isPrivate) == isPrivate) return;
    for (const auto& [taskid, since] : shown_) {
        if (const GTask* task = TaskActions::taskNamed(taskid)) notify(taskid, *task, since);
    }
}

QString AlertNotifier::reminderText(const std::string& taskid) const {
    const auto until = reminders_ ? reminders_->snoozes.until(taskid) : std::nullopt;
    return until ? translated("Reminder at %@", momentText(*until, clock_())) : QString();
}

void AlertNotifier::plan() {
    followStore();
    if (!reminders_) return timer_.disarm();
    const Date now = clock_();
    reminders_->snoozes.settle(context());
    closeSettled();
    if (!reminders_->lock.isHeld()) return waitForNext(now);
    if (!isEnabled_) {
        static_cast<void>(reminders_->alerts.take(context(), now));
    } else if (notifications_.isReady()) {
        giveAlerts(now);
    }
    if (notifications_.isReady()) giveReminders(now);
    notifications_.prepare();
    waitForNext(now);
}

// Another program's alerts and reminders are read anew until it ends: by then they are as it left them.
void AlertNotifier::followStore() {
    const SqliteStore* store = openStore();
    if (!store) return reminders_.reset();
    const bool isSettled = reminders_ && reminders_->store == store->uuid() && reminders_->lock.isHeld();
    if (!isSettled) reminders_.emplace(store->uuid(), clock_());
}

// The newest are told one by one, as they are the likeliest to matter still.
void AlertNotifier::giveAlerts(Date now) {
    const std::vector<GTask*> tasks = reminders_->alerts.take(context(), now);
    const std::size_t untold = tasks.size() > kMostAtOnce ? tasks.size() - (kMostAtOnce - 1) : 0;
    if (untold > 0) notifyOfMany(untold);
    for (std::size_t i = untold; i < tasks.size(); ++i) give(*tasks[i], tasks[i]->alertDate().value_or(now));
}

void AlertNotifier::giveReminders(Date now) {
    const std::vector<DueReminder> due = reminders_->snoozes.take(context(), now);
    for (const DueReminder& reminder : due) give(*reminder.task, reminder.until);
    if (!due.empty()) Q_EMIT remindersChanged();
}

void AlertNotifier::give(const GTask& task, Date since) {
    const std::string taskid = context().uriRepresentation(task);
    shown_[taskid] = since;
    notify(taskid, task, since);
}

void AlertNotifier::notify(const std::string& taskid, const GTask& task, Date since) {
    NotificationContent content = contentOf(task, isPrivate_);
    const Date now = clock_();
    if (now - since > kLate) {
        const QString late = translated("Waiting since %@", momentText(since, now));
        content.body = content.body.isEmpty() ? late : content.body + QLatin1Char('\n') + late;
    }
    notifications_.show(keyOf(taskid), content);
}

void AlertNotifier::notifyOfMany(std::size_t count) {
    NotificationContent content;
    content.summary = translated("%d more reminders", static_cast<std::int64_t>(count));
    content.soundName = defaultSound();
    content.actions.emplaceBack(kDefaultAction, translated("Open"));
    notifications_.show(kManyKey, content);
}

// A notification about what is done or gone would only mislead.
void AlertNotifier::closeSettled() {
    std::erase_if(shown_, [this](const auto& entry) {
        const GTask* task = TaskActions::taskNamed(entry.first);
        if (task && !task->completed()) return false;
        notifications_.close(keyOf(entry.first));
        return true;
    });
}

// By the clock of the machine, as far ahead as the notifier's own clock says. A clock that stands still never
// gets there.
void AlertNotifier::waitForNext(Date now) {
    const bool standsStill = plannedAt_ == now;
    plannedAt_ = now;
    std::optional<Date> next = nextAlert(context(), now);
    if (const auto reminder = reminders_->snoozes.next())
        next = std::min(next.value_or(*reminder), *reminder);
    if (!next || standsStill || *next <= now) return timer_.disarm();
    timer_.arm(ReferenceClock::now() + (*next - now));
}

void AlertNotifier::remindLater(const QString& taskid, int minutes) {
    followStore();
    const GTask* task = TaskActions::taskNamed(taskid.toStdString());
    if (!task || !reminders_) return;
    if (!reminders_->lock.isHeld()) {
        Q_EMIT failed(translated("Another program gives the reminders of this store."));
        return;
    }
    const bool isKept = reminders_->snoozes.add(*task, clock_() + TimeInterval(minutes * 60.0));
    notifications_.close(taskid);
    shown_.erase(taskid.toStdString());
    plan();
    Q_EMIT remindersChanged();
    if (!isKept) Q_EMIT failed(translated("The reminder lasts only while the program runs."));
}

void AlertNotifier::takeAction(const QString& key, const QString& action, const QString& activationToken) {
    if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    if (action == kLaterAction) return remindLater(key, kLaterMinutes);
    const std::string taskid = key.toStdString();
    if (action == kDoneAction && !actions_.complete(taskid)) return;
    notifications_.close(key);
    shown_.erase(taskid);
    if (action != kDoneAction) Q_EMIT openWanted(key == kManyKey ? QString() : key);
}

}  // namespace corvane
