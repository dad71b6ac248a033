#include "apps/corvane-today/CompanionWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "CompanionFixture.h"
#include "apps/corvane-today/HandOver.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/WidgetPalette.h"
#include "apps/host/ProgramStore.h"
#include "model/Accounts.h"
#include "platform/foundation/Text.h"
#include "text/UrlEncoding.h"

namespace corvane {
namespace {

QString taskUrl(const std::string& taskid) {
    return QStringLiteral("velmor-plorixmax://localhost/today?taskid=") +
           qtText(stringByURLEncodingStringParameter(textFromUtf8(taskid)));
}

TEST(CompanionWindow, ShowsWhatAUrlNames) {
    CompanionFixture fixture;
    const GTask& task = fixture.addTask(u"Milk");
    fixture.save();
    answerHandOver(taskUrl(fixture.taskid(task)), fixture.window);
    EXPECT_EQ(fixture.windowTitle(), "Milk");
    answerHandOver(QStringLiteral("velmor-plorixmax://localhost/today"), fixture.window);
    EXPECT_TRUE(fixture.window.todayPage().isVisible());
    EXPECT_EQ(fixture.rows(), "Milk");
    answerHandOver(QStringLiteral("velmor-plorixmax://localhost/addtask"), fixture.window);
    EXPECT_TRUE(fixture.window.addTaskPage().isVisible());
    answerHandOver(QStringLiteral("velmor-plorixmax://localhost/delete?all=1"), fixture.window);
    EXPECT_TRUE(fixture.window.todayPage().isVisible());
    EXPECT_EQ(fixture.notice(), "This link leads nowhere in Corvane Today.");
}

TEST(CompanionWindow, SaysThatATaskIsUnknown) {
    CompanionFixture fixture;
    GTask& removed = fixture.addTask(u"Removed");
    removed.setRemoved(true);
    fixture.save();
    const std::string known = fixture.taskid(removed);
    for (const std::string& taskid :
         {known, known + "99",
          "x-coredata://6F2B1C7E-3A0D-4E57-9C1B-5D0A8E4F7B21/GTask/p1" + std::string()}) {
        answerHandOver(taskUrl(taskid), fixture.window);
        EXPECT_EQ(fixture.problem(), "This task is not in the store. It may have been deleted.");
        EXPECT_EQ(fixture.windowTitle(), "Task");
    }
}

TEST(CompanionWindow, AddsATaskAndRemembersItsList) {
    CompanionFixture fixture;
    GList& work = fixture.addList(u"Work", fixture.account);
    work.setDisplayOrder(1);
    fixture.showAddTask();
    EXPECT_TRUE(fixture.line("Title").hasFocus());
    fixture.type("Title", " Write report ", Qt::Key_unknown);
    fixture.type("Due", "fridy", Qt::Key_Tab);
    QTest::keyClick(&fixture.choice("List"), Qt::Key_Down);
    QTest::keyClick(&fixture.line("Due"), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(work.orderedRootTasks().empty());
    EXPECT_TRUE(fixture.lineField("Due").message().isProblem());
    fixture.type("Due", "tomorrow 9:00", Qt::Key_unknown);
    fixture.type("Repeat", "every day", Qt::Key_unknown);
    QTest::keyClicks(&fixture.notes(), QStringLiteral("in <b>full</b>"));
    QTest::keyClick(&fixture.notes(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(work.orderedRootTasks().size(), 1u);
    const GTask& task = *work.orderedRootTasks().front();
    EXPECT_EQ(utf8FromText(*task.name()), "Write report");
    EXPECT_EQ(task.dueDate(), at("2024-03-06 09:00"));
    EXPECT_EQ(task.alertRepeat(), kRepeatDaily);
    EXPECT_EQ(task.notes(), u"in <b>full</b>");
    EXPECT_GE(task.lastUpdated(), kDistantFuture);
    EXPECT_TRUE(fixture.window.addTaskPage().isEmpty());
    EXPECT_NE(fixture.notice().find("Write report"), std::string::npos);

    CompanionWindow another(fixture.actions);
    EXPECT_EQ(another.addTaskPage().findChild<ListChoice*>()->chosenList(), &work);
}

TEST(CompanionWindow, MakesStoreAccountAndListForTheFirstTask) {
    const TestEnvironment environment;
    GSData data;
    const SharedInstanceScope sharedInstance(data);
    launchForShowing(data);
    TaskActions actions;
    CompanionWindow window(actions);
    QObject::connect(&actions, &TaskActions::changed, &window, &CompanionWindow::refresh);
    window.showToday();
    EXPECT_NE(window.todayPage().findChild<MessageLine*>()->text().indexOf(QStringLiteral("store")), -1);
    EXPECT_FALSE(std::filesystem::exists(environment.containerDirectory() / kStoreFileName));
    window.showAddTask();
    for (QLineEdit* line : window.addTaskPage().findChildren<QLineEdit*>()) {
        if (line->accessibleName() == QStringLiteral("Title")) line->setText(QStringLiteral("First"));
    }
    ASSERT_TRUE(window.addTaskPage().add());
    const GUser* account = defaultAccount(data.viewContext());
    ASSERT_TRUE(account && account->defaultList());
    EXPECT_EQ(account->defaultList()->orderedRootTasks().size(), 1u);
}

TEST(CompanionWindow, HidesTasksWhileItIsPrivate) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"Secret");
    fixture.showTask(task);
    fixture.window.setPrivate(true);
    EXPECT_EQ(fixture.windowTitle(), "Tasks");
    fixture.showTask(task);
    fixture.window.showToday();
    EXPECT_EQ(fixture.windowTitle(), "Tasks");
    EXPECT_FALSE(fixture.window.taskPage().isVisible());
    EXPECT_FALSE(fixture.window.todayPage().isVisible());
    fixture.showAddTask();
    fixture.type("Title", "Surprise", Qt::Key_unknown);
    ASSERT_TRUE(fixture.window.addTaskPage().add());
    EXPECT_EQ(fixture.notice(), "The task has been added.");
    fixture.window.setPrivate(false);
    EXPECT_EQ(fixture.rows(), "Secret");
}

TEST(CompanionWindow, TellsWhatCouldNotBeSavedAndKeepsIt) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"Milk");
    fixture.showTask(task);
    fixture.home->setIsReadonly(true);
    fixture.save();
    fixture.type("Title", "Bread");
    EXPECT_EQ(fixture.notice(), "The list of this task is read-only.");
    EXPECT_EQ(fixture.line("Title").text().toStdString(), "Bread");
    EXPECT_EQ(task.name(), u"Milk");
}

TEST(CompanionWindow, FollowsTheColoursOfTheProgram) {
    const QPalette before = QApplication::palette();
    CompanionFixture fixture;
    fixture.addTask(u"Milk");
    fixture.showToday();
    for (const WidgetPalette& palette : {WidgetPalette::dark(), WidgetPalette::light()}) {
        QApplication::setPalette(palette.qtPalette());
        QCoreApplication::processEvents();
        const QImage image = fixture.window.grab().toImage();
        EXPECT_EQ(image.pixelColor(2, 2), palette.ground());
        EXPECT_TRUE(fixture.window.styleSheet().contains(palette.accent().name()));
    }
    QApplication::setPalette(before);
}

}  // namespace
}  // namespace corvane
