// The tray as it comes and goes, played on the session bus of the tests.
#include "apps/corvane-today/TrayWatch.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QSignalSpy>

#include "WindowFixture.h"

namespace corvane {
namespace {

// The watcher of a desktop, on a connection of its own; gone with this object.
class Panel : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
  public:
    explicit Panel(bool hasHost) : hasHost_(hasHost) {
        bus_.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                            QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSignals);
        EXPECT_TRUE(bus_.registerService(QStringLiteral("org.kde.StatusNotifierWatcher")));
    }
    ~Panel() override { bus_.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher")); }

    bool hasHost() const {
        ++questions_;
        return hasHost_;
    }
    int questions() const { return questions_; }
    void addHost() {
        hasHost_ = true;
        Q_EMIT StatusNotifierHostRegistered();
    }

  Q_SIGNALS:
    void StatusNotifierHostRegistered();

  private:
    QDBusConnection bus_ = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                         QStringLiteral("panel"));
    bool hasHost_;
    mutable int questions_ = 0;
};

class TrayWatchTest : public testing::Test {
  protected:
    bool hasCome(int times) {
        return waitUntil([&] { return came_.size() >= times; }) && came_.size() == times;
    }

    TrayWatch watch_;
    QSignalSpy came_{&watch_, &TrayWatch::came};
    QSignalSpy went_{&watch_, &TrayWatch::went};
};

TEST_F(TrayWatchTest, FindsATrayThatIsThere) {
    const Panel panel(true);
    watch_.start();
    EXPECT_TRUE(hasCome(1));
    EXPECT_TRUE(watch_.isThere());
}

TEST_F(TrayWatchTest, TakesATrayThatComesLateGoesAndReturns) {
    watch_.start();
    for (int times = 1; times <= 2; ++times) {
        {
            const Panel panel(true);
            EXPECT_TRUE(hasCome(times));
        }
        EXPECT_TRUE(waitUntil([&] { return went_.size() == times; }));
        EXPECT_FALSE(watch_.isThere());
    }
}

TEST_F(TrayWatchTest, WaitsForTheHostOfAWatcher) {
    Panel panel(false);
    watch_.start();
    ASSERT_TRUE(waitUntil([&] { return panel.questions() > 0; }));
    watch_.settle();
    EXPECT_FALSE(watch_.isThere());
    EXPECT_TRUE(came_.isEmpty()) << "an icon that is made now would be lost";
    panel.addHost();
    EXPECT_TRUE(hasCome(1));
    EXPECT_TRUE(watch_.isThere());
}

}  // namespace
}  // namespace corvane

#include "TrayWatchTests.moc"
