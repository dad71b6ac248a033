// The window as screen readers meet it.
#include <gtest/gtest.h>

#include <QSignalSpy>

#include <QAccessible>
#include <QAccessibleActionInterface>

#include "WindowFixture.h"
#include "apps/corvane-today/CompanionWindow.h"

namespace corvane {
namespace {

QAccessibleInterface& accessible(QObject& object) { return *QAccessible::queryAccessibleInterface(&object); }

class RowAccessibility : public testing::Test {
  protected:
    RowAccessibility() {
        GTask& milk = fixture_.addTask(u"Milk");
        milk.setPriority(50);
        milk.setAlertRepeat(16);
        milk.setAlertRepeatInterval(1);
        fixture_.addTask(u"Bread");
        fixture_.show();
    }

    WindowFixture fixture_;
};

TEST_F(RowAccessibility, NamesRowsInWordsWithTheirPosition) {
    QAccessibleInterface& row = accessible(fixture_.row(0));
    EXPECT_EQ(row.role(), QAccessible::ListItem);
    EXPECT_EQ(row.text(QAccessible::Name), QStringLiteral("Milk, high priority, Today, repeats, list Home"));
    EXPECT_EQ(row.text(QAccessible::Description), QStringLiteral("Row 1 of 2"));
    EXPECT_TRUE(row.state().focusable);
    ASSERT_TRUE(row.parent());
    EXPECT_EQ(row.parent()->role(), QAccessible::List);
    EXPECT_EQ(row.parent()->indexOfChild(&row), 0);
    EXPECT_EQ(row.parent()->childCount(), 2);
}

TEST_F(RowAccessibility, OffersWhatCanBeDoneWithARow) {
    QAccessibleActionInterface* actions = accessible(fixture_.row(0)).actionInterface();
    ASSERT_TRUE(actions);
    EXPECT_EQ(actions->actionNames().join(QChar(u'|')),
              QStringLiteral("Open|Done|Remind me in 10 minutes|Remind me in 1 hour|Move to tomorrow"));
    const QSignalSpy reminders(&fixture_.window, &WidgetWindow::reminderWanted);
    actions->doAction(QStringLiteral("Remind me in 1 hour"));
    EXPECT_EQ(reminders.value(0).value(1), 60);
    actions->doAction(QStringLiteral("Done"));
    ASSERT_EQ(fixture_.titles(), "(Milk) Bread");
    EXPECT_EQ(accessible(fixture_.row(0)).text(QAccessible::Name).left(12), QStringLiteral("Done: Milk, "));
    actions = accessible(fixture_.row(0)).actionInterface();
    EXPECT_EQ(actions->actionNames(), QStringList{QStringLiteral("Undo")});
    actions->doAction(QStringLiteral("Undo"));
    EXPECT_TRUE(waitUntil([this] { return fixture_.titles() == "Milk Bread"; }));
}

TEST_F(RowAccessibility, TellsOfTheWindowAsAWindow) {
    EXPECT_EQ(accessible(fixture_.window).role(), QAccessible::Window);
    CompanionWindow companion(fixture_.actions);
    EXPECT_EQ(accessible(companion).role(), QAccessible::Window);
}

TEST_F(RowAccessibility, MovesATaskToTomorrow) {
    accessible(fixture_.row(1)).actionInterface()->doAction(QStringLiteral("Move to tomorrow"));
    EXPECT_EQ(fixture_.titles(), "Milk (Bread)");
    EXPECT_EQ(fixture_.host.controller().todayTasks().size(), 1u);
}

}  // namespace
}  // namespace corvane
