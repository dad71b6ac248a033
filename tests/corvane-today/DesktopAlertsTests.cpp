// Alerts and reminders in the whole program, on a desktop without a message bus.
#include "apps/corvane-today/DesktopAlerts.h"

#include <gtest/gtest.h>

#include <optional>

#include <QAction>
#include <QTest>

#include "WidgetFixture.h"
#include "apps/corvane-today/AlertLock.h"
#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/WindowSettings.h"
#include "support/ProcessVariable.h"

namespace corvane {
namespace {

class DesktopAlertsTest : public testing::Test {
  protected:
    DesktopAlertsTest() {
        options_.environment.container = widget_.environment.containerDirectory().string();
    }
    /// Starts the program, and waits for what comes after the first frame.
    void start() {
        application_.reset();
        application_ = std::make_unique<Application>(options_);
        application_->start();
        ASSERT_TRUE(QTest::qWaitFor([this] { return application_->alerts() != nullptr; }, 60'000));
    }
    QAction* choiceOfAlerts(QMenu& menu) {
        application_->alerts()->fillMenu(&menu);
        return menu.actions().back();
    }

    WidgetFixture widget_;
    const TemporaryDirectory home_;
    const ProcessVariable configHome_{"XDG_CONFIG_HOME", home_.path().c_str()};
    const ProcessVariable stateHome_{"XDG_STATE_HOME", home_.path().c_str()};
    DesktopOptions options_;
    std::unique_ptr<Application> application_;
};

TEST_F(DesktopAlertsTest, RowsTellOfTheirReminder) {
    GTask& milk = widget_.addTask(u"Milk");
    widget_.save();
    const std::string id = widget_.context().uriRepresentation(milk);
    start();
    WidgetWindow& window = application_->window();
    const QString before = window.rows().at(0)->accessibleName();
    Q_EMIT window.reminderWanted(QString::fromStdString(id), 60);
    EXPECT_EQ(window.rows().at(0)->accessibleName().toStdString(),
              before.toStdString() + ", Reminder at 1:00\u202FPM");

    application_->actions().moveToTomorrow(id);
    QCoreApplication::processEvents();
    application_->actions().undo();
    EXPECT_EQ(window.rows().at(0)->accessibleName(), before) << "other dates have settled it";
}

TEST_F(DesktopAlertsTest, TheMenuTurnsAlertsOffForGood) {
    start();
    QMenu menu;
    QAction* choice = choiceOfAlerts(menu);
    EXPECT_TRUE(choice->isChecked());
    choice->trigger();
    EXPECT_FALSE(areAlertsChosen());
    start();
    QMenu again;
    EXPECT_FALSE(choiceOfAlerts(again)->isChecked());
    options_.isSilent = true;
    chooseAlerts(true);
    start();
    QMenu silent;
    EXPECT_FALSE(choiceOfAlerts(silent)->isChecked()) << "in this run";
    EXPECT_TRUE(areAlertsChosen());
}

TEST_F(DesktopAlertsTest, OneProgramGivesTheAlertsOfAStore) {
    std::optional<AlertLock> first(std::in_place, "A");
    EXPECT_TRUE(first->isHeld());
    EXPECT_FALSE(AlertLock("A").isHeld());
    EXPECT_TRUE(AlertLock("B").isHeld());
    first.reset();
    EXPECT_TRUE(AlertLock("A").isHeld());
}

}  // namespace
}  // namespace corvane
