#include "widget/TodayViewController.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "WidgetFixture.h"
#include "platform/foundation/Text.h"
#include "widget/TaskTableViewCell.h"

namespace corvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// "5 rows, You have 7 tasks due today, View More (2), 293 high".
std::string shownBy(const TodayViewController& controller) {
    std::string text = std::to_string(controller.tableView.numberOfRows()) + " rows, ";
    if (controller.footerLabel.text) text += utf8FromText(*controller.footerLabel.text) + ", ";
    const Button& more = controller.showAllButton;
    if (!more.isHidden) text += utf8FromText(more.title.value_or(u"")) + ", ";
    return text + std::to_string(std::lround(controller.calcHeight())) + " high";
}

TEST(TodayViewController, CountsWhatItShowsAndWhatItDoesNot) {
    constexpr std::tuple<int, double, const char*> kRows[] = {
        {0, 300,        "0 rows, 73 high"                                                              },
        {2, 300,        "2 rows, 101 high"                                                             },
        {3, 300,        "3 rows, You have 3 tasks due today, 171 high"                                 },
        {7, 300,        "5 rows, You have 7 tasks due today, View More (2), 293 high"                  },
        {2, 117,        "1 rows, View More (1), 91 high"                                               },
        {7, 29,         "7 rows, You have 7 tasks due today, View More (8), 381 high"                  },
        {0, 29,         "0 rows, View More (1), 73 high"                                               },
        {7, kInfinity,  "7 rows, You have 7 tasks due today, 347 high"                                 },
        {7, 100,        "0 rows, You have 7 tasks due today, View More (7), 73 high"                   },
        {7, NAN,        "0 rows, You have 7 tasks due today, View More (7), 73 high"                   },
        {7, -1000,      "7 rows, You have 7 tasks due today, View More (31), 381 high"                 },
        {7, -kInfinity, "7 rows, You have 7 tasks due today, View More (9223372036854775807), 381 high"},
    };
    for (const auto& [tasks, maximumHeight, expected] : kRows) {
        SCOPED_TRACE(testing::Message() << tasks << " tasks at " << maximumHeight);
        WidgetFixture widget;
        widget.addTasks(tasks);
        widget.host.expandedSize.height = maximumHeight;
        widget.refresh();
        EXPECT_EQ(shownBy(widget.controller), expected);
        EXPECT_EQ(widget.controller.noTasksView.isHidden, tasks > 0);
    }
}

TEST(TodayViewController, SizesItselfForItsDisplayMode) {
    struct Row {
        int tasks;
        DisplayMode mode;
        Size maximum;
        Size expected;
        DisplayMode largest;
    };
    constexpr Row kRows[] = {
        {7, DisplayMode::kExpanded, {359, 300}, {359, 293}, DisplayMode::kExpanded},
        {7, DisplayMode::kExpanded, {359, 100}, {359, 73},  DisplayMode::kExpanded},
        {0, DisplayMode::kExpanded, {359, 70},  {359, 70},  DisplayMode::kExpanded},
        {7, DisplayMode::kCompact,  {359, 110}, {359, 110}, DisplayMode::kExpanded},
        {2, DisplayMode::kCompact,  {359, 101}, {359, 101}, DisplayMode::kCompact },
        {2, DisplayMode::kCompact,  {359, 100}, {359, 100}, DisplayMode::kExpanded},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.tasks << " tasks in " << row.maximum.height);
        WidgetFixture widget;
        widget.addTasks(row.tasks);
        widget.host.activeDisplayMode = row.mode;
        (row.mode == DisplayMode::kCompact ? widget.host.compactSize : widget.host.expandedSize) =
            row.maximum;
        widget.refresh();
        EXPECT_EQ(widget.controller.preferredContentSize(), row.expected);
        EXPECT_EQ(widget.host.largestAvailableDisplayMode, row.largest);
    }
}

TEST(TodayViewController, TakesItsRoomFromTheScreenOnOlderSystems) {
    constexpr std::tuple<const char16_t*, UserInterfaceIdiom, std::int64_t, Size> kRows[] = {
        {u"9.3.5", UserInterfaceIdiom::kPhone, 4,  {0, 249}  },
        {u"9.3.5", UserInterfaceIdiom::kPad,   3,  {0, 205}  },
        {u"10.0",  UserInterfaceIdiom::kPad,   11, {359, 347}},
    };
    for (const auto& [version, idiom, rows, preferred] : kRows) {
        SCOPED_TRACE(static_cast<int>(idiom));
        WidgetFixture widget;
        widget.environment->device = {version, idiom};
        widget.environment->screen.bounds.height = 380;
        widget.host.largestAvailableDisplayMode = DisplayMode::kCompact;
        widget.addTasks(7);
        widget.refresh();
        EXPECT_EQ(widget.controller.maxTasksInWidget(), rows);
        EXPECT_EQ(widget.controller.preferredContentSize(), preferred);
        EXPECT_EQ(widget.host.largestAvailableDisplayMode == DisplayMode::kExpanded, rows == 11);
    }
}

TEST(TodayViewController, SetsItselfUpOnce) {
    const Color grey = Color::white(0.4);
    for (const bool isOlder : {false, true}) {
        SCOPED_TRACE(isOlder);
        const TestEnvironment environment;
        environment->device.systemVersion = isOlder ? u"9.3" : u"10.0";
        FixedExtensionContext host;
        const FixedAdvanceMeasuring measuring;
        TodayViewController controller(host, measuring);
        controller.viewDidLoad();
        EXPECT_EQ(controller.addTaskButton.tintColor,
                  Color::rgb(0.1607843137254902, 0.5372549019607843, 0.9502262443438914));
        EXPECT_EQ(controller.addTaskButton.image->renderingMode, Image::RenderingMode::kTemplate);
        EXPECT_EQ(controller.showAllButton.cornerRadius, 5);
        EXPECT_EQ(controller.wellDoneLabel.text, u"Well done!");
        EXPECT_EQ(controller.noMoreTasksLabel.text, u"No more tasks for today.");
        for (const Label* label : {&controller.footerLabel, &controller.wellDoneLabel}) {
            EXPECT_EQ(label->textColor, isOlder ? std::nullopt : std::optional(grey));
        }
    }
    const WidgetFixture widget;
    EXPECT_EQ(widget.controller.widgetMarginInsetsForProposedMarginInsets({1, 2, 3, 4}),
              (EdgeInsets{1, 7, 0, 4}));
}

TEST(TodayViewController, HandsTapsOverToTheMainApplication) {
    WidgetFixture widget;
    widget.addTask(u"first");
    widget.addTask(u"second", "2024-03-05 01:00");
    widget.refresh();
    const std::string uri = widget.context().uriRepresentation(*widget.controller.todayTasks()[1]);
    const std::string host = "x-coredata://";
    constexpr std::size_t kUuidLength = 36;
    ASSERT_TRUE(uri.starts_with(host));
    ASSERT_EQ(uri.substr(host.size() + kUuidLength, 8), "/GTask/p");
    const std::string encoded = "x-coredata%3A%2F%2F" + uri.substr(host.size(), kUuidLength) +
                                "%2FGTask%2Fp" + uri.substr(host.size() + kUuidLength + 8);

    widget.controller.tableView.selectRow({0, 1});
    widget.controller.tableView.selectRow({0, 2});
    widget.controller.addTaskClicked();
    widget.controller.noTasksClicked();
    widget.controller.showAllClicked();

    const std::vector<std::u16string> expected = {
        u"velmor-plorixmax://localhost/today?taskid=" + textFromUtf8(encoded),
        u"velmor-plorixmax://localhost/addtask",
        u"velmor-plorixmax://localhost/today",
        u"velmor-plorixmax://localhost/today",
    };
    EXPECT_EQ(widget.host.openedUrls, expected);
    EXPECT_EQ(widget.controller.tableView.indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(widget.controller.rowUrl(2), std::nullopt);
}

// The main application has a connection of its own; what it commits shows with the next refresh.
TEST(TodayViewController, ShowsWhatAnotherProgramWrote) {
    WidgetFixture widget;
    GTask& task = widget.addTask(u"Milk");
    widget.home->setColor(Color::rgb(1, 0, 0));
    widget.refresh();
    ASSERT_EQ(widgetSnapshot(widget.controller).rows[0].title, u"Milk");

    GSData other;
    other.launch();
    ManagedObjectContext& context = other.viewContext();
    auto* sameTask = static_cast<GTask*>(context.objectWithUri(widget.context().uriRepresentation(task)));
    ASSERT_NE(sameTask, nullptr);
    sameTask->setName(u"Oat milk");
    sameTask->list()->setColor(Color::rgb(0, 0, 1));
    GTask& step = context.insert<GTask>();
    step.setParentTask(sameTask);
    step.setName(u"Look for a bottle");
    ASSERT_FALSE(context.save());

    widget.refresh();
    const WidgetSnapshot snapshot = widgetSnapshot(widget.controller);
    ASSERT_EQ(snapshot.rows.size(), 1u);
    EXPECT_EQ(snapshot.rows[0].title, u"Oat milk");
    EXPECT_EQ(snapshot.rows[0].bullet, "Task-CollapsedLocked");
    EXPECT_EQ(snapshot.rows[0].color, Color::rgb(0, 0, 1));
}

}  // namespace
}  // namespace corvane
