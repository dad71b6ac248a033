#include "apps/corvane/TodayJson.h"

#include <gtest/gtest.h>

#include <limits>

#include "SnapshotSamples.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

WidgetSnapshot widgetOfOneRow() {
    WidgetSnapshot widget = widgetOf({rowOf(u"Milk", "Task-Priority1")});
    widget.rows[0].alert = true;
    widget.dueCount = 7;
    widget.maxTasksInWidget = 5;
    widget.footer = u"You have 7 tasks due today";
    widget.showAllTitle = u"View More (2)";
    widget.preferredContentSize = {359, 293};
    return widget;
}

std::string withoutLineBreaks(std::string text) {
    std::erase(text, '\n');
    return text;
}

// The whole object as scripts rely on it, key by key.
TEST(TodayJson, HasEveryFieldInItsForm) {
    const TestEnvironment environment;
    const TodayFacts facts{at("2024-03-05 12:00"), at("2024-03-05 14:00"), 1, std::nullopt};
    EXPECT_EQ(todayJson(widgetOfOneRow(), facts), withoutLineBreaks(R"json(
{"now":"2024-03-05T12:00:00.000Z","validUntil":"2024-03-05T14:00:00.000Z","displayMode":"expanded",
"dueCount":7,"maxTasksInWidget":5,
"rows":[{"taskid":"x-coredata://A/GTask/p1","url":"velmor-plorixmax://localhost/today?taskid=p1",
"title":"Milk","notes":null,"time":"Today","bullet":"Task-VUnchecked",
"priority":"Task-Priority1","color":"#ff0000ff","alert":true,"repeat":false}],
"footer":"You have 7 tasks due today","showAll":{"hidden":false,"title":"View More (2)"},
"noTasks":{"hidden":true,"wellDone":"Well done!","noMoreTasks":"No more tasks for today."},
"preferredContentSize":{"width":359,"height":293},"largestAvailableDisplayMode":"expanded",
"overdueCount":1,"problem":null})json"));
}

TEST(TodayJson, AMissingValueIsNull) {
    WidgetSnapshot widget = widgetOfOneRow();
    widget.rows = {WidgetRow()};
    widget.footer.reset();
    widget.showAllTitle.reset();
    const std::string json = todayJson(widget, {});
    for (const char* part :
         {R"("title":null,"notes":null,"time":null,"bullet":null,"priority":null,"color":null,)",
          R"("footer":null,"showAll":{"hidden":true,"title":null})"}) {
        EXPECT_NE(json.find(part), std::string::npos) << part << " in " << json;
    }
}

TEST(TodayJson, TakesEveryTextAndNumber) {
    WidgetSnapshot widget = widgetOfOneRow();
    widget.rows[0].title = u"a\xD800\x1B\"\u202E";
    widget.rows[0].taskid = "x\xFF";
    widget.rows[0].color = Color::rgb(1.2, -0.5, std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<double>::infinity());
    widget.preferredContentSize = {0.5, 1e6};
    widget.maxTasksInWidget = std::numeric_limits<std::int64_t>::min();
    const std::string json = todayJson(widget, {{}, {}, 0, "no \xFE file"});
    for (const char* part :
         {"\"taskid\":\"x\uFFFD\"", "\"title\":\"a\uFFFD\\u001b\\\"\u202E\"", "\"#ff0000ff\"",
          "{\"width\":0.5,\"height\":1000000}", "-9223372036854775808", "no \uFFFD file"}) {
        EXPECT_NE(json.find(part), std::string::npos) << part << " in " << json;
    }
}

}  // namespace
}  // namespace corvane
