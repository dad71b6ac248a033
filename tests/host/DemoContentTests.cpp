#include "apps/host/DemoContent.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "apps/host/WidgetHost.h"
#include "model/Accounts.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

struct Demonstration {
    explicit Demonstration(std::string now)
        : environment({.timeZone = "Europe/Berlin", .now = std::move(now)}) {
        data.launch();
        addDemonstration(data.viewContext());
    }
    void save() {
        const auto error = data.viewContext().save();
        ASSERT_FALSE(error) << error->message;
    }

    TestEnvironment environment;
    GSData data;
    SharedInstanceScope scope{data};
};

// Every part of a row, in a widget with and without the days' own peculiarities.
TEST(DemoContent, ShowsEveryPartOfTheWidget) {
    for (const char* day : {"2024-03-05 12:00", "2024-03-30 23:30", "2026-02-28 00:10"}) {
        SCOPED_TRACE(day);
        Demonstration demonstration(day);
        demonstration.save();
        WidgetHost host;
        host.refresh();
        const WidgetSnapshot& widget = host.snapshot();
        const auto shows = [&widget](auto part) { return std::ranges::any_of(widget.rows, part); };
        for (const char* mark : {"Task-Priority1", "Task-Priority2", "Task-Priority3"}) {
            EXPECT_TRUE(shows([mark](const WidgetRow& row) { return row.priority == mark; })) << mark;
        }
        for (const char* bullet : {"Task-VUnchecked", "Task-CollapsedLocked"}) {
            EXPECT_TRUE(shows([bullet](const WidgetRow& row) { return row.bullet == bullet; })) << bullet;
        }
        EXPECT_TRUE(shows([](const WidgetRow& row) { return !row.bullet; }));
        EXPECT_TRUE(shows([](const WidgetRow& row) { return !row.priority; }));
        EXPECT_TRUE(shows([](const WidgetRow& row) { return row.alert && row.notes; }));
        EXPECT_TRUE(shows([](const WidgetRow& row) { return row.repeat; }));
        EXPECT_TRUE(widget.footer && widget.showAllTitle);
        EXPECT_GT(host.overdueCount(), 0u);
    }
}

TEST(DemoContent, IsSoundAndHoldsWhatTheCommandsTellApart) {
    Demonstration demonstration("2024-03-05 12:00");
    demonstration.save();
    GSData& data = demonstration.data;
    EXPECT_FALSE(data.fixDisplayOrders());
    EXPECT_EQ(allAccounts(data.viewContext()).size(), 4u);
    EXPECT_EQ(orderedAccounts(data.viewContext()).size(), 3u);
    const std::vector<GList*> lists = data.viewContext().fetch<GList>({});
    EXPECT_EQ(lists.size(), 9u);
    EXPECT_EQ(std::ranges::count_if(lists, &GList::removed), 1);
    EXPECT_EQ(std::ranges::count_if(lists, &GList::isIsolated), 1);
    const std::vector<GTask*> tasks = data.viewContext().fetch<GTask>({});
    EXPECT_GE(tasks.size(), 60u);
    EXPECT_GE(std::ranges::count_if(tasks, &GTask::completed), 5);
    EXPECT_EQ(std::ranges::count_if(tasks, &GTask::removed), 1);
    EXPECT_GE(std::ranges::count_if(tasks, [](const GTask* task) { return task->depth() == 2; }), 1);
    for (GTask* task : tasks) {
        const auto due = task->dueDate();
        task->fixSanity();
        EXPECT_EQ(task->dueDate(), due) << utf8FromText(*task->name());
    }
}

}  // namespace
}  // namespace corvane
