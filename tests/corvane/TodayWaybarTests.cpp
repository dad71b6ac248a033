#include "apps/corvane/TodayWaybar.h"

#include <gtest/gtest.h>

#include "SnapshotSamples.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

TEST(TodayWaybar, HasTextTooltipAndClass) {
    const TestEnvironment environment;
    WidgetSnapshot widget = widgetOf({rowOf(u"Milk"), rowOf(u"Bread")});
    widget.showAllTitle = u"View More (3)";
    EXPECT_EQ(todayWaybar(widget, 0, {}),
              "{\"text\":\"2 Milk\",\"alt\":\"due\",\"tooltip\":\"<b>2 tasks due</b>\\n"
              "\u2068Milk\u2069, today\\n\u2068Bread\u2069, today\\nView More (3)\",\"class\":\"due\"}");
    EXPECT_NE(todayWaybar(widget, 1, {}).find("\"class\":\"overdue\""), std::string::npos);
    EXPECT_EQ(
        todayWaybar(widgetOf({}), 0, {}),
        R"({"text":"0","alt":"empty","tooltip":"Well done!\nNo more tasks for today.","class":"empty"})");
    EXPECT_EQ(todayWaybar(widgetOf({}), 0, {.hideEmpty = true}).substr(0, 10), R"({"text":"")");
}

TEST(TodayWaybar, MarkupInATitleIsText) {
    const TestEnvironment environment;
    EXPECT_EQ(pangoEscaped(u"<b a='1' c=\"2\">&amp;</b>"),
              "&lt;b a=&#39;1&#39; c=&quot;2&quot;&gt;&amp;amp;&lt;/b&gt;");
    const std::string bar = todayWaybar(widgetOf({rowOf(u"<span>\x1B\n\x01&\xDC00\u202E")}), 0, {});
    EXPECT_NE(bar.find("\"text\":\"1 &lt;span&gt;␛␊␁&amp;\uFFFD\uFFFD\""), std::string::npos) << bar;
    EXPECT_EQ(bar.find("<span>"), std::string::npos);
    EXPECT_EQ(waybarOfProblem("<b>\n"),
              R"({"text":"!","alt":"error","tooltip":"&lt;b&gt;␊","class":"error"})");
}

TEST(TodayWaybar, TitlesAreCutAfterTheirMarkupIsSafe) {
    const TestEnvironment environment;
    const WidgetSnapshot widget = widgetOf({rowOf(std::u16string(3000, u'&'))});
    const std::string bar = todayWaybar(widget, 0, {.titleWidth = 3});
    EXPECT_NE(bar.find("\"text\":\"1 &amp;&amp;…\""), std::string::npos) << bar;
    EXPECT_LT(todayWaybar(widget, 0, {}).size(), 1000u);
}

TEST(TodayLine, IsOneSentenceOnOneLine) {
    const TestEnvironment environment;
    EXPECT_EQ(todayLine(widgetOf({rowOf(u"a\nb\x1B"), rowOf(u"Bread")}), 1, {}),
              "2 tasks due, 1 overdue. First: \u2068a␊b␛\u2069, today.");
    const std::u16string longTitle(3000, u'x');
    EXPECT_GT(todayLine(widgetOf({rowOf(longTitle)}), 0, {}).size(), 3000u);
    EXPECT_EQ(todayLine(widgetOf({rowOf(longTitle)}), 0, {.titleWidth = 4}),
              "1 task due. First: \u2068xxx…\u2069, today.");
    EXPECT_EQ(todayLine(widgetOf({}), 0, {}), "No more tasks for today.");
    EXPECT_EQ(todayLine(widgetOf({}), 0, {.hideEmpty = true}), "");
}

TEST(TodayLine, CommandsOfABarComeApart) {
    const TestEnvironment environment;
    EXPECT_EQ(todayLine(widgetOf({rowOf(u"%{A1:rm -rf:}%%{")}), 0, {}),
              "1 task due. First: \u2068%\u200B{A1:rm -rf:}%%\u200B{\u2069, today.");
}

}  // namespace
}  // namespace corvane
