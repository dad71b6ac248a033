#include "apps/corvane/TodayText.h"

#include <gtest/gtest.h>

#include <sstream>

#include "SnapshotSamples.h"
#include "apps/corvane/TerminalText.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

const TodayLinks kLinks{u"velmor-plorixmax://localhost/addtask", u"velmor-plorixmax://localhost/today"};

WidgetSnapshot fullWidget() {
    WidgetRow milk = rowOf(u"Milk", "Task-Priority1");
    milk.alert = milk.repeat = true;
    milk.notes = u"Two litres";
    WidgetRow party = rowOf(u"Party", "Task-Priority3");
    party.bullet = "Task-CollapsedLocked";
    WidgetRow birthday = rowOf(u"Ella turns seven", "Task-Priority2");
    birthday.bullet.reset();
    birthday.color.reset();
    birthday.notes = u"   ";
    WidgetSnapshot widget = widgetOf({milk, party, birthday});
    widget.footer = u"You have 5 tasks due today";
    widget.showAllTitle = u"View More (2)";
    return widget;
}

TEST(TodayText, LooksLikeTheWidget) {
    const TestEnvironment environment;
    EXPECT_EQ(todayText(fullWidget(), kLinks, {}),
              "▎ ○ ! Milk\n"
              "▎   ♪ ↻ Today  Two litres\n"
              "▎ ◉ !!! Party\n"
              "▎   Today\n"
              "    !! Ella turns seven\n"
              "    Today\n"
              "You have 5 tasks due today\n"
              "[View More (2)]\n");
    EXPECT_EQ(todayText(fullWidget(), kLinks, {.asciiOnly = true}).substr(0, 51),
              "| o ! Milk\n"
              "|   * ~ Today  Two litres\n"
              "| @ !!! Party\n");
}

TEST(TodayText, LinksLeadWhereTapsLead) {
    const TestEnvironment environment;
    WidgetSnapshot widget = widgetOf({rowOf(u"Milk")});
    widget.showAllTitle = u"View More (2)";
    const std::string text = todayText(widget, kLinks, {.links = true});
    EXPECT_EQ(text,
              "▎ \033]8;id=row1;velmor-plorixmax://localhost/today?taskid=p1\033\\○ Milk\033]8;;\033\\\n"
              "▎   \033]8;id=row1;velmor-plorixmax://localhost/today?taskid=p1\033\\Today\033]8;;\033\\\n"
              "\033]8;;velmor-plorixmax://localhost/today\033\\[View More (2)]\033]8;;\033\\ "
              "\033]8;;velmor-plorixmax://localhost/addtask\033\\[Add Task]\033]8;;\033\\\n");
}

TEST(TodayText, ColorsStripAndMark) {
    const TestEnvironment environment;
    EXPECT_EQ(todayText(widgetOf({rowOf(u"Milk", "Task-Priority2")}), kLinks, {.colors = true}),
              "\033[38;2;255;0;0m▎\033[0m ○ \033[31m!!\033[0m \033[1mMilk\033[0m\n"
              "\033[38;2;255;0;0m▎\033[0m   Today\n");
}

TEST(TodayText, NoLineIsWiderThanTheTerminal) {
    const TestEnvironment environment;
    WidgetSnapshot widget = fullWidget();
    widget.rows[0].title = u"牛乳" + std::u16string(3000, u'x');
    widget.rows[1].notes = u"👨‍👩‍👧 " + std::u16string(3000, u'y');
    widget.rows[2].title = u"לקנות חלב";
    for (const std::size_t width : {1, 2, 4, 7, 20, 40, 80}) {
        std::istringstream lines(todayText(widget, kLinks, {.width = width}));
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(displayWidth(textFromUtf8(line)), width) << line;
        }
    }
}

TEST(TodayText, HostileTextsStayOnTheirLine) {
    const TestEnvironment environment;
    WidgetSnapshot widget = widgetOf({rowOf(u"a\x1B]0;owned\x07\nb")});
    widget.rows[0].notes = u"\u202E" + std::u16string(10'000'000, u'n');
    const std::string cut = todayText(widget, kLinks, {.width = 20});
    EXPECT_EQ(cut, "▎ ○ a␛]0;owned␇␊b\n▎   Today  \uFFFDnnnnnnn…\n");
    EXPECT_EQ(todayText(widgetOf({rowOf(u"חלב")}), kLinks, {}), "▎ ○ \u2068חלב\u2069\n▎   Today\n");
}

TEST(TodayText, ACompactWidgetShowsWhatItsHeightDoes) {
    const TestEnvironment environment;
    WidgetSnapshot widget = fullWidget();
    widget.displayMode = DisplayMode::kCompact;
    widget.preferredContentSize = {359, 110};
    EXPECT_EQ(todayText(widget, kLinks, {}),
              "▎ ○ ! Milk\n▎   ♪ ↻ Today  Two litres\n▎ ◉ !!! Party\n▎   Today\n");
    widget.rows.resize(1);
    widget.footer.reset();
    widget.showAllTitle.reset();
    widget.largestAvailableDisplayMode = DisplayMode::kCompact;
    EXPECT_EQ(todayText(widget, kLinks, {}), "▎ ○ ! Milk\n▎   ♪ ↻ Today  Two litres\n");
}

}  // namespace
}  // namespace corvane
