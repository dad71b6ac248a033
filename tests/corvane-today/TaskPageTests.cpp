#include "apps/corvane-today/TaskPage.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>
#include <QTreeWidget>

#include "CompanionFixture.h"
#include "apps/host/TaskEditing.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

GTask& partyOf(CompanionFixture& fixture) {
    GTask& task = fixture.addTask(u"Party", nullptr);
    task.setDueDate(at("2024-03-08 18:30"), kAtTimeOfDay, kRepeatWeekly, 1);
    task.setDateAlert(at("2024-03-08 18:15"));
    task.setPriority(45);
    task.setNotes(u"Balloons\nand cake");
    return task;
}

TEST(TaskPage, ShowsEveryFieldInWords) {
    CompanionFixture fixture;
    fixture.showTask(partyOf(fixture));
    EXPECT_EQ(fixture.windowTitle(), "Party");
    EXPECT_EQ(fixture.line("Title").text().toStdString(), "Party");
    EXPECT_EQ(fixture.message("Due").find("Fri, Mar 8"), 0u) << fixture.message("Due");
    EXPECT_EQ(fixture.line("Repeat").text().toStdString(), "every week");
    EXPECT_EQ(fixture.line("Alert").text().toStdString(), "15 minutes before");
    EXPECT_EQ(fixture.choice("Priority").currentText().toStdString(), "Medium");
    EXPECT_EQ(fixture.notes().text().toStdString(), "Balloons\nand cake");
    EXPECT_EQ(fixture.choice("List").currentText().toStdString().find("Home"), 0u);
}

TEST(TaskPage, ShowsAPlaceAlertWhereThereIsOne) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"Fetch the parcel");
    task.setRegionAlert(1);
    task.setRegionDescription(u"Post\noffice");
    GTask& other = fixture.addTask(u"Read");
    fixture.showTask(task);
    EXPECT_EQ(fixture.line("Place alert").text().toStdString(), "Post office");
    fixture.showTask(other);
    EXPECT_THROW(fixture.line("Place alert"), std::runtime_error);
}

/// Title, due date, rule, alert and priority of a task, as one text.
std::string stored(const GTask& task) {
    return utf8FromText(*task.name()) + " | " + (task.dueDate() ? civilText(*task.dueDate()) : "-") + " | " +
           std::to_string(task.alertRepeat()) + " | " +
           (task.alertDate() ? civilText(*task.alertDate()) : "-") + " | " + std::to_string(task.priority());
}

TEST(TaskPage, SavesEachFieldWhenItsTypingIsFinished) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    fixture.showTask(task);
    struct Row {
        const char* field;
        const char* typed;
        const char* expected;
    };
    const Row rows[] = {
        {"Title",  "  Big party ",     "Big party | 2024-03-08 18:30 | 8192 | 2024-03-08 18:15 | 45"},
        {"Due",    "2024-03-15 20:00", "Big party | 2024-03-15 20:00 | 8192 | 2024-03-15 19:45 | 45"},
        {"Alert",  "1h",               "Big party | 2024-03-15 20:00 | 8192 | 2024-03-15 19:00 | 45"},
        {"Repeat", "every month",      "Big party | 2024-03-15 20:00 | 8 | 2024-03-15 19:00 | 45"   },
        {"Repeat", "",                 "Big party | 2024-03-15 20:00 | 0 | 2024-03-15 19:00 | 45"   },
        {"Alert",  "none",             "Big party | 2024-03-15 20:00 | 0 | - | 45"                  },
        {"Due",    "",                 "Big party | - | 0 | - | 45"                                 },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        fixture.type(row.field, row.typed);
        EXPECT_EQ(stored(task), row.expected);
        EXPECT_FALSE(fixture.context().hasChanges());
    }
    fixture.notes().setFocus();
    QTest::keyClicks(&fixture.notes(), QStringLiteral("Hats "));
    EXPECT_EQ(task.notes(), u"Balloons\nand cake");
    QTest::keyClick(&fixture.notes(), Qt::Key_Tab);
    EXPECT_FALSE(fixture.notes().hasFocus());
    EXPECT_EQ(task.notes(), u"Hats Balloons\nand cake");
    QTest::keyClick(&fixture.choice("Priority"), Qt::Key_Down);
    EXPECT_EQ(task.priority(), 50);
}

TEST(TaskPage, ShowsTheMeaningBeforeItTakesTheWords) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    fixture.showTask(task);
    fixture.type("Due", "tomorrow 9:00", Qt::Key_unknown);
    EXPECT_EQ(fixture.message("Due").find("Tomorrow at"), 0u) << fixture.message("Due");
    EXPECT_EQ(task.dueDate(), at("2024-03-08 18:30"));
    QTest::keyClick(&fixture.line("Due"), Qt::Key_Escape);
    EXPECT_EQ(fixture.message("Due").find("Fri, Mar 8"), 0u);
    EXPECT_TRUE(fixture.window.isVisible());
    // What was typed and taken back is no change.
    const std::string due = fixture.line("Due").text().toStdString();
    fixture.type("Due", due.c_str());
    EXPECT_EQ(task.lastModified(), 0);
}

TEST(TaskPage, KeepsWordsThatMeanNothingAndSaysSo) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    fixture.showTask(task);
    const std::string before = stored(task);
    for (const char* field : {"Due", "Repeat", "Alert"}) {
        SCOPED_TRACE(field);
        fixture.type(field, "fridy", Qt::Key_Tab);
        EXPECT_NE(fixture.message(field).find("fridy"), std::string::npos);
        EXPECT_TRUE(fixture.lineField(field).message().isProblem());
        EXPECT_EQ(fixture.line(field).text(), QStringLiteral("fridy"));
    }
    fixture.type("Title", " ");
    EXPECT_EQ(fixture.message("Title"), "A title must not be empty.");
    EXPECT_EQ(stored(task), before);
}

TEST(TaskPage, FollowsTheStoreAroundWhatIsBeingTyped) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    fixture.showTask(task);
    fixture.type("Title", "Half a ti", Qt::Key_unknown);
    task.setName(u"Renamed");
    task.setPriority(50);
    fixture.save();
    fixture.window.refresh();
    EXPECT_EQ(fixture.line("Title").text().toStdString(), "Half a ti");
    EXPECT_EQ(fixture.line("Title").cursorPosition(), 9);
    EXPECT_EQ(fixture.choice("Priority").currentText().toStdString(), "High");
    QTest::keyClick(&fixture.line("Title"), Qt::Key_Escape);
    EXPECT_EQ(fixture.line("Title").text().toStdString(), "Renamed");
    EXPECT_EQ(task.name(), u"Renamed");
}

TEST(TaskPage, TakesWhatWasTypedBeforeItLeavesATask) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    const GTask& other = fixture.addTask(u"Other");
    fixture.showTask(task);
    fixture.type("Title", "New title", Qt::Key_unknown);
    fixture.notes().setPlainText(QStringLiteral("new notes"));
    fixture.notes().document()->setModified(true);
    fixture.showTask(other);
    EXPECT_EQ(task.name(), u"New title");
    EXPECT_EQ(task.notes(), u"new notes");
    EXPECT_EQ(fixture.line("Title").text().toStdString(), "Other");
    EXPECT_EQ(other.name(), u"Other");
}

TEST(TaskPage, SaysThatATaskIsGoneAndKeepsItsTyping) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    fixture.showTask(task);
    fixture.type("Title", "Precious", Qt::Key_unknown);
    task.deleteTask(kPurge);
    fixture.save();
    fixture.window.refresh();
    EXPECT_EQ(fixture.problem(), "This task has been deleted.");
    EXPECT_EQ(fixture.line("Title").text().toStdString(), "Precious");
    EXPECT_TRUE(fixture.line("Title").isReadOnly());
    fixture.window.showToday();
}

TEST(TaskPage, LeavesAReadOnlyListAsItIs) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    fixture.home->setIsReadonly(true);
    fixture.showTask(task);
    EXPECT_TRUE(fixture.line("Due").isReadOnly());
    EXPECT_FALSE(fixture.choice("Priority").isEnabled());
    EXPECT_FALSE(fixture.actions.complete(fixture.taskid(task)));
    EXPECT_FALSE(task.completed());
    EXPECT_EQ(fixture.notice(), "The list of this task is read-only.");
}

TEST(TaskPage, CompletesTheTaskAndItsSubtasks) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    task.setAlertRepeat(kNoRepeat);
    GTask& cake = GTask::insertNewTaskToList(*fixture.home, &task, nullptr);
    cake.setName(u"Cake");
    fixture.showTask(task);
    auto& tree = *fixture.window.findChild<SubtaskTree*>();
    ASSERT_EQ(tree.topLevelItemCount(), 1);
    tree.topLevelItem(0)->setCheckState(0, Qt::Checked);
    QCoreApplication::processEvents();
    EXPECT_TRUE(cake.completed());
    EXPECT_FALSE(task.completed());
    EXPECT_EQ(fixture.notice(), "\u201CCake\u201D is done.");
    auto& done = *fixture.window.findChild<DoneBox*>();
    QTest::keyClick(&done, Qt::Key_Space);
    EXPECT_TRUE(task.completed());
    QTest::keyClick(&done, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(task.completed());
    EXPECT_TRUE(cake.completed());
    EXPECT_FALSE(done.isChecked());
    Q_EMIT tree.itemActivated(tree.topLevelItem(0), 0);
    EXPECT_EQ(fixture.windowTitle(), "Cake");
}

TEST(TaskPage, MovesATaskToAnotherList) {
    CompanionFixture fixture;
    GTask& task = partyOf(fixture);
    GList& work = fixture.addList(u"Work", fixture.account);
    work.setDisplayOrder(1);
    fixture.showTask(task);
    QTest::keyClick(&fixture.choice("List"), Qt::Key_Down);
    ASSERT_EQ(work.orderedRootTasks().size(), 1u);
    EXPECT_EQ(work.orderedRootTasks().front()->name(), u"Party");
    EXPECT_TRUE(fixture.home->orderedRootTasks().empty());
    fixture.type("Title", "Moved party");
    EXPECT_EQ(work.orderedRootTasks().front()->name(), u"Moved party");
}

TEST(TaskPage, ShowsHostileTextAsItIs) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"<b>bold</b> &amp; <img src='file:///x'>");
    GTask& child = GTask::insertNewTaskToList(*fixture.home, &task, nullptr);
    child.setName(u"<i>child</i>");
    const std::u16string notes = u"no\u00A0break\r\n<h1>h</h1>\u2028\u202Eturned" + std::u16string(1, 0xD800);
    task.setNotes(notes);
    fixture.showTask(child);
    for (const QLabel* label : fixture.window.findChildren<QLabel*>()) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
    }
    fixture.showTask(task);
    EXPECT_EQ(fixture.windowTitle(), "<b>bold</b> &amp; <img src='file:///x'>");
    fixture.type("Due", "tomorrow");
    EXPECT_EQ(task.notes(), notes);
    fixture.notes().setFocus();
    QTest::keyClicks(&fixture.notes(), QStringLiteral("x"));
    QTest::keyClick(&fixture.notes(), Qt::Key_Tab);
    EXPECT_EQ(*task.notes(), u"xno\u00A0break\n<h1>h</h1>\u2028\u202Eturned" + std::u16string(1, 0xD800));
    task.setName(std::u16string(50'000, u'x'));
    fixture.showTask(task);
    fixture.window.grab();
    fixture.type("Title", "", Qt::Key_unknown);
    QTest::keyClick(&fixture.line("Title"), Qt::Key_Escape);
    EXPECT_EQ(fixture.line("Title").text().size(), 50'000);
}

TEST(TaskPage, NamesEveryFieldForScreenReaders) {
    CompanionFixture fixture;
    const GTask& task = partyOf(fixture);
    const auto expectNames = [&fixture] {
        for (QWidget* widget : fixture.window.findChildren<QWidget*>()) {
            if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() || widget->focusProxy())
                continue;
            QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
            EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
        }
    };
    fixture.showTask(task);
    expectNames();
    fixture.showToday();
    expectNames();
    fixture.window.showAddTask();
    expectNames();
}

}  // namespace
}  // namespace corvane
