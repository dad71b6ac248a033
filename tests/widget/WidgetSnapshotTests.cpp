#include "widget/WidgetSnapshot.h"

#include <gtest/gtest.h>

#include "WidgetFixture.h"

namespace corvane {
namespace {

TEST(WidgetSnapshot, HoldsWhatTheWidgetShows) {
    WidgetFixture widget({.timeZone = "Europe/Berlin", .locale = "en_GB"});
    widget.host.expandedSize = {359, 200};
    widget.home->setColor(Color::rgb(0.2, 0.4, 0.6));
    GTask& milk = widget.addTask(u"Milk", "2024-03-05 14:00");
    milk.setHasDueTime(true);
    milk.setPriority(30);
    milk.setAlertDate(at("2024-03-05 13:00"));
    milk.setNotes(u"whole\nor oat");
    GTask& rent = widget.addTask(u"Rent", "2024-03-04 00:00");
    rent.setAlertRepeat(kRepeatMonthly);
    widget.addTasks(3);
    widget.refresh();

    WidgetRow first;
    first.taskid = widget.context().uriRepresentation(milk);
    first.url = *widget.controller.rowUrl(0);
    first.title = u"Milk";
    first.notes = u"whole or oat";
    first.time = u"Today at 14:00";
    first.bullet = "Task-VUnchecked";
    first.priority = "Task-Priority1";
    first.color = Color::rgb(0.2, 0.4, 0.6);
    first.alert = true;
    WidgetRow second;
    second.taskid = widget.context().uriRepresentation(rent);
    second.url = *widget.controller.rowUrl(1);
    second.title = u"Rent";
    second.time = u"Yesterday";
    second.bullet = "Task-VUnchecked";
    second.color = Color::rgb(0.2, 0.4, 0.6);
    second.repeat = true;

    WidgetSnapshot expected;
    expected.displayMode = DisplayMode::kExpanded;
    expected.dueCount = 5;
    expected.maxTasksInWidget = 2;
    expected.rows = {first, second};
    expected.footer = u"You have 5 tasks due today";
    expected.showAllTitle = u"View More (3)";
    expected.wellDone = u"Well done!";
    expected.noMoreTasks = u"No more tasks for today.";
    expected.preferredContentSize = {359, 161};
    expected.largestAvailableDisplayMode = DisplayMode::kExpanded;
    EXPECT_EQ(widgetSnapshot(widget.controller), expected);
}

TEST(WidgetSnapshot, ShowsEveryTaskOnAVeryShortWidget) {
    WidgetFixture widget;
    widget.host.expandedSize.height = 10;
    for (int i = 0; i < 1500; ++i) widget.addTask(u"Task").setPriority(i % 2 == 0 ? 50 : 0);
    widget.refresh();
    const WidgetSnapshot snapshot = widgetSnapshot(widget.controller);
    ASSERT_EQ(snapshot.rows.size(), 1500u);
    EXPECT_EQ(snapshot.rows.front().priority, "Task-Priority3");
    EXPECT_EQ(snapshot.rows.back().priority, std::nullopt);
}

}  // namespace
}  // namespace corvane
