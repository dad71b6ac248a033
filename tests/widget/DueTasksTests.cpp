#include "widget/DueTasks.h"

#include <gtest/gtest.h>

#include <functional>

#include "WidgetFixture.h"

namespace corvane {
namespace {

// Shows the same before and after saving: what memory selects, and what the file's query selects.
void expectDue(WidgetFixture& widget, std::string_view titles) {
    widget.controller.widgetPerformUpdate({});
    EXPECT_EQ(widget.titles(), titles) << "unsaved";
    widget.refresh();
    EXPECT_EQ(widget.titles(), titles) << "saved";
}

TEST(DueTasks, AreDueBeforeTheComingMidnight) {
    WidgetFixture widget({.timeZone = "Europe/Berlin"});
    widget.addTask(u"lastYear", "2023-03-05 09:00");
    widget.addTask(u"lastWeek", "2024-02-27 09:00");
    widget.addTask(u"yesterday", "2024-03-04 23:59");
    widget.addTask(u"midnight", "2024-03-05 00:00");
    widget.addTask(u"lateToday", "2024-03-05 23:59");
    widget.addTask(u"lastInstant", "2024-03-05 23:59:59.999");
    widget.addTask(u"nextMidnight", "2024-03-06 00:00");
    widget.addTask(u"tomorrow", "2024-03-06 09:00");
    widget.addTask(u"never", nullptr);
    expectDue(widget, "lastYear lastWeek yesterday midnight lateToday lastInstant");
}

TEST(DueTasks, AreLiveNamedOpenAndInAnOrdinaryList) {
    WidgetFixture widget;
    GList& removed = widget.addList(u"Removed", widget.account);
    removed.setRemoved(true);
    GList& isolated = widget.addList(u"Isolated", widget.account);
    isolated.setIsIsolated(true);
    GList& orphaned = widget.addList(u"Orphaned", nullptr);
    widget.addTask(u"ordinary");
    widget.addTask(u"orphaned", "2024-03-05 01:00").setList(&orphaned);
    widget.addTask(u"removed").setRemoved(true);
    widget.addTask(u"completed").setCompleted(true);
    widget.addTask(u"unnamed").setName(std::nullopt);
    widget.addTask(u"");
    widget.addTask(u"inRemovedList").setList(&removed);
    widget.addTask(u"inIsolatedList").setList(&isolated);
    widget.addTask(u"inNoList").setList(nullptr);
    widget.addTask(u"flaggedOff").setHasDueDate(false);
    widget.addTask(u"flaggedOn", nullptr).setHasDueDate(true);
    expectDue(widget, "ordinary orphaned");
}

TEST(DueTasks, ComeInTheOrderOfTheirKeys) {
    struct Row {
        const char16_t* name;
        int priority;
        const char* due;
        int displayOrder;
        const char16_t* list;
    };
    constexpr Row kRowsFromLastToFirst[] = {
        {u"negative",   -1, "2024-03-01 09:00", 0, u"a"},
        {u"Zebra",      0,  "2024-03-05 09:00", 2, u"B"},
        {u"yak",        0,  "2024-03-05 09:00", 2, u"B"},
        {u"\u00e4rger", 0,  "2024-03-05 09:00", 2, u"B"},
        {u"x",          0,  "2024-03-05 09:00", 2, u"a"},
        {u"order",      0,  "2024-03-05 09:00", 1, u"z"},
        {u"early",      0,  "2024-03-04 09:00", 9, u"z"},
        {u"high",       50, "2024-03-05 10:00", 9, u"z"},
    };
    WidgetFixture widget;
    for (const Row& row : kRowsFromLastToFirst) {
        GTask& task = widget.addTask(row.name, row.due);
        task.setPriority(row.priority);
        task.setDisplayOrder(static_cast<std::int16_t>(row.displayOrder));
        task.setList(&widget.addList(row.list, widget.account));
    }
    expectDue(widget, "high early order x \u00e4rger yak Zebra negative");
}

TEST(DueTasks, FollowTheDayAcrossMidnightAndZones) {
    WidgetFixture widget({.timeZone = "Europe/Berlin", .now = "2024-03-30 23:30"});
    widget.addTask(u"saturday", "2024-03-30 20:00");
    widget.addTask(u"sunday", "2024-03-31 00:30");
    expectDue(widget, "saturday");
    widget.environment.setNow("2024-03-31 00:10");
    expectDue(widget, "saturday sunday");
    // 19:10 on Saturday there; the task of Sunday 00:30 in Berlin is due at 19:30 on Saturday.
    widget.environment->timeZone = "America/New_York";
    expectDue(widget, "saturday sunday");
    widget.environment->timeZone = "Pacific/Honolulu";
    widget.addTask(u"honolulu", "2024-03-31 00:00");
    expectDue(widget, "saturday sunday");
}

TEST(DueTasks, EndWithTheDayWhereItsMidnightIsSkipped) {
    WidgetFixture widget({.timeZone = "America/Sao_Paulo", .now = "2018-11-03 23:30"});
    widget.addTask(u"before", "2018-11-03 23:59");
    widget.addTask(u"after", "2018-11-04 01:00");
    expectDue(widget, "before");
    EXPECT_EQ(civilText(validUntil(widget.controller)), "2018-11-04 01:00");
}

TEST(DueTasks, AreLateFromTheirDueMomentOn) {
    WidgetFixture widget;
    const auto addTimed = [&widget](const char* due) { widget.addTask(u"timed", due).setHasDueTime(true); };
    widget.addTask(u"all day", "2024-03-04 09:00");
    widget.addTask(u"all day", "2024-03-05 09:00");
    addTimed("2024-03-01 18:00");
    addTimed("2024-03-05 11:59");
    addTimed("2024-03-05 14:00");
    addTimed("2024-03-05 18:00");
    addTimed("2024-03-06 08:00");
    constexpr std::tuple<const char*, std::size_t, const char*> kRows[] = {
        {"2024-03-05 00:00", 2, "2024-03-05 11:59"},
        {"2024-03-05 14:00", 4, "2024-03-05 18:00"},
        {"2024-03-05 23:59", 5, "2024-03-06"      },
        {"2024-03-06 00:00", 6, "2024-03-06 08:00"},
    };
    for (const auto& [now, overdue, until] : kRows) {
        SCOPED_TRACE(now);
        widget.environment.setNow(now);
        widget.refresh();
        EXPECT_EQ(overdueCount(widget.controller), overdue);
        EXPECT_EQ(civilText(validUntil(widget.controller)), until);
    }
}

// The clock may reach midnight while a refresh runs; then it was valid until a moment that is past.
TEST(DueTasks, AreJudgedByTheMomentsOfTheRefresh) {
    WidgetFixture widget;
    widget.addTask(u"today", "2024-03-05 14:00").setHasDueTime(true);
    widget.refresh();
    widget.environment.setNow("2024-03-06 00:00:01");
    EXPECT_EQ(overdueCount(widget.controller), 0u);
    EXPECT_EQ(civilText(validUntil(widget.controller)), "2024-03-05 14:00");
}

TEST(DueTasks, CostTheSameStatementsHoweverManyThereAre) {
    const auto statementsOfARefresh = [](int tasks) {
        WidgetFixture widget;
        for (int i = 0; i < tasks; ++i) {
            GTask& task = widget.addTask(u"Task", i % 2 == 0 ? "2024-03-05 00:00" : "2024-09-01 00:00");
            if (i % 4 == 0) widget.addTask(u"Step", nullptr).setParentTask(&task);
        }
        widget.host.expandedSize.height = 300;
        widget.refresh();
        const std::size_t before = widget.context().statementCount();
        widget.refresh();
        EXPECT_EQ(widgetSnapshot(widget.controller).rows.size(), 5u);
        return widget.context().statementCount() - before;
    };
    const std::size_t few = statementsOfARefresh(10);
    EXPECT_LE(few, 4u);
    EXPECT_EQ(statementsOfARefresh(10'000), few);
}

}  // namespace
}  // namespace corvane
