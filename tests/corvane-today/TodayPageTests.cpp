#include "apps/corvane-today/TodayPage.h"

#include <gtest/gtest.h>

#include <QTest>

#include "CompanionFixture.h"
#include "apps/corvane-today/TaskRowDelegate.h"
#include "apps/host/TaskEditing.h"
#include "model/CorvaneUserDefaults.h"
#include "queries/TaskFilters.h"
#include "support/PlatformStore.h"

namespace corvane {
namespace {

void addNamed(CompanionFixture& fixture, std::initializer_list<const char16_t*> names) {
    std::int16_t order = 0;
    for (const char16_t* name : names) fixture.addTask(name).setDisplayOrder(order++);
}

TEST(TodayPage, ShowsTodaysTasksAndTheOtherFiltersWithTheirCounts) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.addTask(u"Later", "2024-03-06 00:00");
    fixture.addTask(u"Undated", nullptr);
    fixture.addTask(u"Old", "2024-03-01 00:00").setCompleted(true);
    fixture.showToday();
    EXPECT_EQ(fixture.rows(), "Milk Bread");
    const char* const counts[] = {"0", "2", "1", "3", "1", "4", "1", "4"};
    for (std::uint32_t filter = 0; filter < kListFilter; ++filter) {
        EXPECT_EQ(fixture.countOf(filter), counts[filter]) << filter;
    }
    fixture.filters().choose(kCompletedFilter);
    EXPECT_EQ(fixture.rows(), "(Old)");
    fixture.filters().choose(kOverdueFilter);
    EXPECT_EQ(fixture.rows(), "");
}

TEST(TodayPage, OrdersTasksAsTheFilterRemembers) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.showToday();
    ASSERT_TRUE(corvaneUserDefaults().setObject(tasksOrderKeyForFilter(kTodayFilter), {std::int64_t{1}}));
    fixture.window.refresh();
    EXPECT_EQ(fixture.rows(), "Bread Milk");
}

TEST(TodayPage, FindsTasksByTextOrPredicate) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Caf\u00E9", u"Milk", u"Bread"});
    fixture.addTask(u"Wine").setPriority(50);
    fixture.showToday();
    struct Row {
        const char* text;
        const char* rows;
        const char* problem;
    };
    const Row rows[] = {
        {"cafe",           "Caf\u00E9",                 ""            },
        {"priority >= 50", "Wine",                      ""            },
        {"priority >=",    "",                          "character 12"},
        {"colour == 'x'",  "",                          "colour"      },
        {"nothing",        "",                          ""            },
        {"",               "Wine Caf\u00E9 Milk Bread", ""            },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        fixture.search(row.text);
        EXPECT_EQ(fixture.rows(), row.rows);
        const std::string problem = fixture.problem();
        EXPECT_EQ(problem.empty(), std::string_view(row.problem).empty()) << problem;
        EXPECT_NE(problem.find(row.problem), std::string::npos) << problem;
        EXPECT_EQ(problem.find('\n'), std::string::npos);
    }
}

TEST(TodayPage, CallsASearchThatIsBeingTypedNoMistakeYet) {
    CompanionFixture fixture;
    fixture.addTask(u"Wine").setPriority(50);
    fixture.showToday();
    fixture.type("Search", "priority >=", Qt::Key_unknown);
    fixture.window.refresh();
    const auto& message = *fixture.window.todayPage().findChild<MessageLine*>();
    EXPECT_NE(message.text().indexOf(QStringLiteral("character 12")), -1);
    EXPECT_FALSE(message.isProblem());
    QTest::keyClick(&fixture.line("Search"), Qt::Key_Return);
    EXPECT_TRUE(message.isProblem());
}

TEST(TodayPage, ShowsTheTasksOfEveryAccountUnlessOneIsChosen) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.showToday();
    EXPECT_THROW(fixture.choice("Account"), std::runtime_error);
    GUser& work = fixture.context().insert<GUser>();
    work.setName(u"Work");
    GTask& report = fixture.addTask(u"Report");
    report.setList(&fixture.addList(u"Reports", &work));
    report.setDisplayOrder(2);
    fixture.showToday();
    EXPECT_EQ(fixture.rows(), "Milk Bread Report");
    EXPECT_EQ(fixture.countOf(kTodayFilter), "3");
    fixture.search("report");
    EXPECT_EQ(fixture.rows(), "Report");
    fixture.search("");
    QComboBox& choice = fixture.choice("Account");
    choice.setCurrentIndex(choice.findText(QStringLiteral("Work")));
    EXPECT_EQ(fixture.rows(), "Report");
    EXPECT_EQ(fixture.countOf(kTodayFilter), "1");
    fixture.window.showToday();
    EXPECT_EQ(fixture.rows(), "Milk Bread Report");
}

TEST(TodayPage, LeavesTheSearchBeforeTheWindow) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.showToday();
    QTest::keyClick(&fixture.window, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(fixture.window.focusWidget(), QStringLiteral("milk"));
    QTest::keyClick(fixture.window.focusWidget(), Qt::Key_Escape);
    fixture.window.refresh();
    EXPECT_EQ(fixture.rows(), "Milk Bread");
    EXPECT_TRUE(fixture.window.isVisible());
    QTest::keyClick(fixture.window.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(fixture.window.isVisible());
}

TEST(TodayPage, OpensATaskByKeyAndComesBack) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread"});
    fixture.showToday();
    QTest::keyClick(&fixture.list(), Qt::Key_Down);
    QTest::keyClick(&fixture.list(), Qt::Key_Return);
    EXPECT_EQ(fixture.windowTitle(), "Bread");
    QTest::keyClick(&fixture.window, Qt::Key_Escape);
    EXPECT_EQ(fixture.windowTitle(), "Tasks");
    EXPECT_EQ(fixture.currentTitle(), "Bread");
    const QPoint first = fixture.list().visualRect(fixture.list().model()->index(0, 0)).center();
    QTest::mouseClick(fixture.list().viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(fixture.list().viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(fixture.windowTitle(), "Milk");
}

TEST(TodayPage, KeepsTheRowOfACompletedTaskForAMomentAndTakesItBack) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread", u"Eggs"});
    fixture.showToday();
    QTest::keyClick(&fixture.list(), Qt::Key_Space);
    EXPECT_EQ(fixture.rows(), "(Milk) Bread Eggs");
    EXPECT_EQ(fixture.currentTitle(), "Bread");
    EXPECT_EQ(fixture.countOf(kTodayFilter), "2");
    EXPECT_EQ(fixture.notice(), "\u201CMilk\u201D is done.");
    QTest::keyClick(&fixture.list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fixture.rows(), "Milk Bread Eggs");
    fixture.filters().choose(kEverythingFilter);
    const QRect row = fixture.list().visualRect(fixture.list().model()->index(2, 0));
    const QRect box = TaskRowDelegate::boxOf(row, fixture.list().font(), Qt::LeftToRight);
    QTest::mouseClick(fixture.list().viewport(), Qt::LeftButton, {}, box.center());
    EXPECT_EQ(fixture.rows(), "Milk Bread (Eggs)");
    fixture.filters().choose(kTodayFilter);
    EXPECT_EQ(fixture.rows(), "Milk Bread");
}

TEST(TodayPage, SaysWhenNotAllCouldBeTakenBack) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"Milk");
    fixture.showToday();
    QTest::keyClick(&fixture.list(), Qt::Key_Space);
    PlainDatabase other(fixture.environment.containerDirectory() / kStoreFileName);
    other.execute("UPDATE ZGTASK SET ZCOMPLETEDDATE = 5, Z_OPT = Z_OPT + 1");
    fixture.window.refresh();
    QTest::keyClick(&fixture.list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(task.completed());
    EXPECT_EQ(fixture.notice(), "Changed elsewhere meanwhile; not all could be undone.");
}

TEST(TodayPage, SaysWhenARepeatingTaskComesNext) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"Water", nullptr);
    task.setDueDate(at("2024-03-01 09:00"), kAtTimeOfDay, kRepeatWeekly, 1);
    fixture.showToday();
    QTest::keyClick(&fixture.list(), Qt::Key_Space);
    EXPECT_EQ(task.dueDate(), at("2024-03-08 09:00"));
    EXPECT_NE(fixture.notice().find("Mar 8"), std::string::npos) << fixture.notice();
    EXPECT_EQ(fixture.rows(), "Water");
}

TEST(TodayPage, KeepsItsPlaceWhenTheStoreChanges) {
    CompanionFixture fixture;
    addNamed(fixture, {u"Milk", u"Bread", u"Eggs"});
    fixture.showToday();
    QTest::keyClick(&fixture.list(), Qt::Key_End);
    PlainDatabase other(fixture.environment.containerDirectory() / kStoreFileName);
    other.execute("DELETE FROM ZGTASK WHERE ZNAME = 'Milk'");
    fixture.window.refresh();
    EXPECT_EQ(fixture.rows(), "Bread Eggs");
    EXPECT_EQ(fixture.currentTitle(), "Eggs");
    EXPECT_TRUE(fixture.list().hasFocus());
}

TEST(TodayPage, ReadsOfTenThousandTasksOnlyWhatItShows) {
    CompanionFixture fixture;
    fixture.addTasks(10'000);
    fixture.showToday();
    fixture.window.grab();
    const std::size_t before = fixture.context().statementCount();
    fixture.window.refresh();
    fixture.window.grab();
    QTest::keyClick(&fixture.list(), Qt::Key_End);
    fixture.window.grab();
    EXPECT_EQ(fixture.list().model()->rowCount(), 10'000);
    EXPECT_EQ(fixture.list().currentIndex().row(), 9'999);
    EXPECT_LT(fixture.context().statementCount() - before, 40u);
}

TEST(TodayPage, TellsARowInOneName) {
    CompanionFixture fixture;
    GTask& task = fixture.addTask(u"<b>Milk</b>\nnow", "2024-03-05 14:00");
    task.setHasDueTime(true);
    task.setPriority(50);
    fixture.showToday();
    const QModelIndex row = fixture.list().model()->index(0, 0);
    EXPECT_EQ(row.data().toString().toStdString(), "<b>Milk</b> now");
    QString name = row.data(Qt::AccessibleTextRole).toString();
    name.remove(QChar(0x2068)).remove(QChar(0x2069)).replace(QChar(0x202F), QChar(u' '));
    EXPECT_EQ(name.toStdString(), "<b>Milk</b>\nnow, today at 2:00 PM, high priority, list Home");
    fixture.window.grab();
}

TEST(TodayPage, PutsBoxesOnTheSideWhereRowsBegin) {
    const QRect row(0, 0, 400, 40);
    const QRect box = TaskRowDelegate::boxOf(row, QFont(), Qt::LeftToRight);
    const QRect mirrored = TaskRowDelegate::boxOf(row, QFont(), Qt::RightToLeft);
    EXPECT_LT(box.right(), 60);
    EXPECT_NEAR(mirrored.center().x(), row.right() - box.center().x(), 1);
}

}  // namespace
}  // namespace corvane
