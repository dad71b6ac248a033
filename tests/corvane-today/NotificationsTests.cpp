// What an alert becomes on the desktop, before a server of the test's own on a bus of its own.
#include "apps/corvane-today/Notifications.h"

#include <gtest/gtest.h>

#include <functional>

#include <QTest>

#include "PrivateBus.h"
#include "WidgetFixture.h"
#include "apps/corvane-today/AlertNotifier.h"
#include "apps/host/TaskEditing.h"
#include "support/ProcessVariable.h"

namespace corvane {
namespace {

// Long enough for a loaded machine; only a failing test waits for it.
bool comesTrue(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 60'000); }

QStringList everyCapability() {
    return {QStringLiteral("body"), QStringLiteral("actions"), QStringLiteral("body-markup")};
}

class AlertNotifierTest : public testing::Test {
  protected:
    AlertNotifierTest() {
        setNow("2024-03-05 12:00");
        widget_.environment->now = [this] { return now_; };
    }

    void setNow(const char* civil) { now_ = at(civil); }
    void startServer(const QStringList& capabilities = everyCapability()) {
        server_ = std::make_unique<NotificationServer>(bus_.connection(), capabilities);
    }
    void startNotifier() {
        notifier_.reset();
        notifications_ = std::make_unique<Notifications>(client_);
        notifier_ = std::make_unique<AlertNotifier>(actions_, *notifications_);
        QObject::connect(&actions_, &TaskActions::changed, notifier_.get(), &AlertNotifier::plan);
        notifier_->plan();
        EXPECT_TRUE(!server_ || comesTrue([this] { return notifications_->isReady(); }));
    }
    /// Moves the clock on, as the timer would notice.
    void planAt(const char* civil) {
        setNow(civil);
        notifier_->plan();
    }
    std::string addAlert(std::u16string_view name, const char* alert) {
        GTask& task = widget_.addTask(name, "2024-03-05 18:00");
        task.setHasDueTime(true);
        task.setDateAlert(at(alert));
        widget_.save();
        return widget_.context().uriRepresentation(task);
    }
    bool waitForNotifications(std::size_t count) {
        return comesTrue([&] { return server_->shown().size() >= count; }) &&
               server_->shown().size() == count;
    }
    /// Everything sent so far has reached the server, and its answers have come back.
    void settle() {
        const int before = server_->questions();
        Notifications probe(client_);
        probe.prepare();
        ASSERT_TRUE(comesTrue([&] { return server_->questions() > before && probe.isReady(); }));
    }

    WidgetFixture widget_;
    const TemporaryDirectory state_;
    const ProcessVariable stateHome_{"XDG_STATE_HOME", state_.path().c_str()};
    Date now_;
    PrivateBus bus_;
    QDBusConnection client_ = bus_.connection();
    TaskActions actions_;
    std::unique_ptr<NotificationServer> server_;
    std::unique_ptr<Notifications> notifications_;
    std::unique_ptr<AlertNotifier> notifier_;
};

TEST_F(AlertNotifierTest, TellsOfATaskAtItsAlertOnce) {
    startServer();
    addAlert(u"Milk & <b>eggs</b>", "2024-03-05 13:00");
    startNotifier();
    planAt("2024-03-05 12:59:59");
    planAt("2024-03-05 13:00");
    planAt("2024-03-05 13:00:10");
    ASSERT_TRUE(waitForNotifications(1));
    const ShownNotification shown = server_->shown().front();
    EXPECT_EQ(shown.summary.toStdString(), "Milk & <b>eggs</b>") << "plain where no markup is read";
    EXPECT_EQ(shown.body.toStdString(), "Today at 6:00\u202FPM");
    EXPECT_EQ(shown.actions.join(u'|').toStdString(),
              "default|Open|open|Open|done|Done|later|Remind me in 10 minutes");
    EXPECT_EQ(shown.hints[QStringLiteral("desktop-entry")], QStringLiteral("com.velmor.CorvaneToday"));
    EXPECT_EQ(shown.hints[QStringLiteral("category")], QStringLiteral("x-corvane.task"));
    EXPECT_EQ(shown.hints[QStringLiteral("urgency")].toInt(), 1);
    EXPECT_FALSE(shown.hints[QStringLiteral("sound-name")].toString().isEmpty());
    startNotifier();
    settle();
    EXPECT_EQ(server_->shown().size(), 1u) << "after a restart";
}

TEST_F(AlertNotifierTest, EscapesTheBodyOnlyForServersThatReadMarkup) {
    const NotificationContent content{{}, QStringLiteral("<i>&"), {}, {{QStringLiteral("a"), {}}}};
    for (const bool readsMarkup : {true, false}) {
        SCOPED_TRACE(readsMarkup);
        startServer(readsMarkup ? everyCapability() : QStringList());
        notifications_ = std::make_unique<Notifications>(client_);
        notifications_->show(QStringLiteral("key"), content);
        ASSERT_TRUE(waitForNotifications(1));
        EXPECT_EQ(server_->shown()[0].body.toStdString(), readsMarkup ? "&lt;i&gt;&amp;" : "<i>&");
        EXPECT_EQ(server_->shown()[0].actions.isEmpty(), !readsMarkup);
        server_.reset();
    }
}

TEST_F(AlertNotifierTest, ReplacesWhatIsShownOfTheSameTask) {
    startServer();
    addAlert(u"Milk", "2024-03-05 13:00");
    startNotifier();
    planAt("2024-03-05 13:00");
    ASSERT_TRUE(waitForNotifications(1));
    settle();
    notifier_->setPrivate(true);
    ASSERT_TRUE(waitForNotifications(2));
    EXPECT_EQ(server_->shown()[1].replaced, server_->shown()[0].id);
    EXPECT_EQ(server_->shown()[1].summary.toStdString(), "A task's reminder");
    EXPECT_EQ(server_->shown()[1].body.toStdString(), "");
}

TEST_F(AlertNotifierTest, DoesWhatItsButtonsSay) {
    startServer();
    const std::string milk = addAlert(u"Milk", "2024-03-05 13:00");
    startNotifier();
    QStringList opened;
    QObject::connect(notifier_.get(), &AlertNotifier::openWanted, [&](const QString& id) { opened << id; });
    planAt("2024-03-05 13:00");
    ASSERT_TRUE(waitForNotifications(1));
    settle();

    Q_EMIT server_->ActionInvoked(server_->shown()[0].id, QStringLiteral("later"));
    ASSERT_TRUE(comesTrue([&] { return server_->closed().size() == 1; }));
    EXPECT_EQ(notifier_->reminderText(milk).toStdString(), "Reminder at 1:10\u202FPM");
    planAt("2024-03-05 13:10");
    ASSERT_TRUE(waitForNotifications(2));
    EXPECT_EQ(notifier_->reminderText(milk).toStdString(), "");
    settle();

    Q_EMIT server_->ActivationToken(server_->shown()[1].id, QStringLiteral("token"));
    Q_EMIT server_->ActionInvoked(server_->shown()[1].id, QStringLiteral("default"));
    ASSERT_TRUE(comesTrue([&] { return opened.size() == 1; }));
    EXPECT_EQ(opened[0].toStdString(), milk);
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("token"));
    qunsetenv("XDG_ACTIVATION_TOKEN");

    notifier_->remindLater(QString::fromStdString(milk), 60);
    planAt("2024-03-05 15:00");
    ASSERT_TRUE(waitForNotifications(3));
    EXPECT_EQ(server_->shown()[2].body.section(u'\n', 1).toStdString(), "Waiting since 2:10\u202FPM");
    settle();
    Q_EMIT server_->ActionInvoked(server_->shown()[2].id, QStringLiteral("done"));
    EXPECT_TRUE(comesTrue([&] { return TaskActions::taskNamed(milk)->completed(); }));
}

TEST_F(AlertNotifierTest, SaysSinceWhenAndPilesNothingUp) {
    startServer();
    startNotifier();
    for (int i = 0; i < 8; ++i) addAlert(u"Task", "2024-03-05 13:00");
    addAlert(u"Last", "2024-03-05 13:30");
    planAt("2024-03-06 09:00");
    ASSERT_TRUE(waitForNotifications(5));
    EXPECT_EQ(server_->shown()[0].summary.toStdString(), "5 more reminders");
    EXPECT_EQ(server_->shown()[4].summary.toStdString(), "Last");
    EXPECT_EQ(server_->shown()[4].body.section(u'\n', 1).toStdString(),
              "Waiting since Tue, Mar 5, 1:30\u202FPM");
}

TEST_F(AlertNotifierTest, WaitsForAServer) {
    addAlert(u"Milk", "2024-03-05 13:00");
    startNotifier();
    planAt("2024-03-05 13:00");
    planAt("2024-03-05 13:05");
    startServer();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(server_->shown()[0].body.section(u'\n', 1).toStdString(), "Waiting since 1:00\u202FPM");
    server_.reset();
    addAlert(u"Bread", "2024-03-05 13:10");
    ASSERT_TRUE(comesTrue([this] { return !notifications_->isReady(); }));
    planAt("2024-03-05 13:10");
    startServer();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(server_->shown()[0].summary.toStdString(), "Bread");
    EXPECT_EQ(server_->shown()[0].replaced, 0u);
}

TEST_F(AlertNotifierTest, ClosesWhatIsSettledElsewhere) {
    startServer();
    const std::string milk = addAlert(u"Milk", "2024-03-05 13:00");
    startNotifier();
    planAt("2024-03-05 13:00");
    ASSERT_TRUE(waitForNotifications(1));
    settle();
    completeTask(*TaskActions::taskNamed(milk));
    notifier_->plan();
    EXPECT_TRUE(comesTrue([&] { return server_->closed().size() == 1; }));
}

TEST_F(AlertNotifierTest, TurnedOffLetsAlertsPassButNotReminders) {
    startServer();
    const std::string milk = addAlert(u"Milk", "2024-03-05 13:00");
    startNotifier();
    notifier_->setEnabled(false);
    notifier_->remindLater(QString::fromStdString(addAlert(u"Bread", "2024-03-05 12:00")), 10);
    planAt("2024-03-05 13:00");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(server_->shown()[0].summary.toStdString(), "Bread");
    notifier_->setEnabled(true);
    settle();
    EXPECT_EQ(server_->shown().size(), 1u) << "what passed is past";
}

TEST_F(AlertNotifierTest, WakesByTheClock) {
    startServer();
    widget_.environment->now = &ReferenceClock::now;
    GTask& task = widget_.addTask(u"Milk", "2024-03-05 18:00");
    startNotifier();
    task.setDateAlert(ReferenceClock::now() + TimeInterval(0.3));
    widget_.save();
    notifier_->plan();
    EXPECT_TRUE(waitForNotifications(1));
}

}  // namespace
}  // namespace corvane
