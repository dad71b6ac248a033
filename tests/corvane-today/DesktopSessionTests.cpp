// The program in a desktop's session: colours that the portal tells, and calls that reach it by its name.
#include <gtest/gtest.h>

#include <csignal>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "PrivateBus.h"
#include "SettingsPortal.h"
#include "WindowFixture.h"
#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/ColorScheme.h"
#include "apps/corvane-today/CompanionWindow.h"
#include "apps/corvane-today/WindowSettings.h"
#include "support/ProcessVariable.h"

namespace corvane {
namespace {

constexpr uint kNone = 0;
constexpr uint kDark = 1;
constexpr uint kLight = 2;

// Another program of the session.
QDBusConnection neighbour() {
    const QString name = QStringLiteral("neighbour");
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
}

/// Waits for the answer to a call; what was sent to the program before it has arrived then.
QDBusMessage answerTo(const QDBusMessage& call, const QDBusConnection& from) {
    QDBusPendingCallWatcher watcher(from.asyncCall(call));
    const QSignalSpy finished(&watcher, &QDBusPendingCallWatcher::finished);
    EXPECT_TRUE(waitUntil([&] { return !finished.isEmpty(); }));
    return watcher.reply();
}

void settle() {
    const QDBusMessage read = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    answerTo(read, QDBusConnection::sessionBus());
}

TEST(ColorScheme, BeginsAsThePortalSays) {
    struct Row {
        const char* what;
        QVariant value;
        bool isDarkFromLight, isDarkFromDark;
    };
    const Row rows[] = {
        {"dark",              QVariant(kDark),                    true,  true },
        {"light",             QVariant(kLight),                   false, false},
        {"no preference",     QVariant(kNone),                    false, false},
        {"a number of later", QVariant(uint{77}),                 false, false},
        {"a word",            QVariant(QStringLiteral("purple")), false, true },
        {"a list",            QVariant(QStringList(QString())),   false, true },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const SettingsPortal portal(neighbour(), row.value);
        ColorScheme light(false);
        ColorScheme dark(true);
        light.follow();
        dark.follow();
        ASSERT_TRUE(waitUntil([&] { return portal.readings() == 2; }));
        settle();
        EXPECT_EQ(light.isDark(), row.isDarkFromLight);
        EXPECT_EQ(dark.isDark(), row.isDarkFromDark);
    }
}

TEST(ColorScheme, StaysAsItBeganWithoutAPortal) {
    ColorScheme scheme(true);
    const QSignalSpy changes(&scheme, &ColorScheme::changed);
    scheme.follow();
    settle();
    EXPECT_TRUE(scheme.isDark());
    EXPECT_TRUE(changes.isEmpty());
}

TEST(ColorScheme, FollowsItsOwnSettingOnly) {
    SettingsPortal portal(neighbour(), kDark);
    ColorScheme scheme(true);
    QSignalSpy changes(&scheme, &ColorScheme::changed);
    scheme.follow();
    settle();
    portal.tell(kLight, "contrast");
    portal.tell(kLight, "color-scheme", "org.gnome.desktop.interface");
    portal.tell(QStringLiteral("prefer-light"));
    settle();
    EXPECT_TRUE(changes.isEmpty());
    portal.tell(kLight);
    EXPECT_TRUE(changes.wait());
    EXPECT_FALSE(scheme.isDark());

    scheme.setChoice(ColorScheme::Choice::kLight);
    portal.tell(kDark);
    settle();
    EXPECT_FALSE(scheme.isDark()) << "the user's own choice";
    scheme.setChoice(ColorScheme::Choice::kAuto);
    EXPECT_TRUE(scheme.isDark()) << "what was told meanwhile";
    EXPECT_EQ(changes.size(), 2);
}

class SessionTest : public testing::Test {
  protected:
    SessionTest() {
        fixture_.save();
        options_.isSilent = true;
    }

    void start() {
        application_.emplace(options_);
        application_->start();
        ASSERT_TRUE(waitUntil([this] { return application_->hasStarted(); }));
    }
    int ground() { return application_->window().grab().toImage().pixelColor(1, 1).lightness(); }
    bool becomesDark() {
        return waitUntil([this] { return ground() < 60; });
    }

    /// Calls the program by its name, as a launcher does.
    QDBusMessage::MessageType call(const char* method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral("com.velmor.CorvaneToday"), QStringLiteral("/com/velmor/CorvaneToday"),
            QStringLiteral("org.freedesktop.Application"), QString::fromLatin1(method));
        message.setArguments(arguments);
        return answerTo(message, neighbour()).type();
    }
    QDBusMessage::MessageType activateAction(const char* name) {
        return call("ActivateAction", {QString::fromLatin1(name), QVariantList(), QVariantMap()});
    }
    QDBusMessage::MessageType open(const char* url) {
        return call("Open", {QStringList(QString::fromLatin1(url)), QVariantMap()});
    }

    TemporaryDirectory home_;
    const ProcessVariable config_{"XDG_CONFIG_HOME", home_.path().c_str()};
    const ProcessVariable stateHome_{"XDG_STATE_HOME", home_.path().c_str()};
    WidgetFixture fixture_;
    DesktopOptions options_;
    std::optional<Application> application_;
};

TEST_F(SessionTest, ChangesTheWindowsColorsWithTheDesktops) {
    SettingsPortal portal(neighbour(), kDark);
    start();
    EXPECT_TRUE(becomesDark());
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 60) << "of menus and dialogs";
    EXPECT_TRUE(readWindowState().isDesktopDark) << "for the first frame of the next start";
    portal.tell(kLight);
    EXPECT_TRUE(waitUntil([this] { return ground() > 240; }));
    portal.tell(kDark);
    EXPECT_TRUE(becomesDark());
}

TEST_F(SessionTest, IsReachedByItsName) {
    options_.startsInBackground = true;
    start();
    EXPECT_FALSE(application_->window().isVisible());
    EXPECT_EQ(call("Activate", {QVariantMap()}), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(application_->window().isVisible());

    CompanionWindow& companion = application_->companion();
    EXPECT_EQ(activateAction("Nonsense"), QDBusMessage::ReplyMessage);
    EXPECT_FALSE(companion.isVisible());
    EXPECT_EQ(activateAction("AddTask"), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(companion.addTaskPage().isVisible());
    EXPECT_EQ(activateAction("Today"), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(companion.todayPage().isVisible());
    EXPECT_EQ(open("velmor-plorixmax://localhost/addtask"), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(companion.addTaskPage().isVisible());
    EXPECT_EQ(open("file:///etc/passwd"), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(companion.todayPage().isVisible());
    EXPECT_TRUE(companion.notices().isVisible()) << "the reason of the refusal";
}

TEST_F(SessionTest, TakesOverWhatASecondStartAsksFor) {
    start();
    ASSERT_EQ(activateAction("Private"), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(application_->window().isPrivate());
    activateAction("Compact");
    EXPECT_EQ(application_->host().widgetActiveDisplayMode(), DisplayMode::kCompact);
    activateAction("Private");
    activateAction("Expanded");
    EXPECT_TRUE(application_->window().isPrivate()) << "asked for twice";
    EXPECT_EQ(application_->host().widgetActiveDisplayMode(), DisplayMode::kExpanded);
}

TEST_F(SessionTest, KeepsWhatIsTypedWhenItIsToldToEnd) {
    GTask& milk = fixture_.addTask(u"Milk");
    fixture_.save();
    const std::string id = fixture_.context().uriRepresentation(milk);
    start();
    application_->companion().showTask(id);
    auto* title = application_->companion().taskPage().findChild<QLineEdit*>();
    title->setFocus();
    title->selectAll();
    QTest::keyClicks(title, QStringLiteral("Oat milk"));
    QTimer::singleShot(0, [] { std::raise(SIGTERM); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(TaskActions::taskNamed(id)->name(), u"Oat milk");
}

}  // namespace
}  // namespace corvane
