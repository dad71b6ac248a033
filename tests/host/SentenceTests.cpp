#include "apps/host/Sentence.h"

#include <gtest/gtest.h>

#include "SnapshotSamples.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

std::string sentence(const WidgetSnapshot& widget, std::size_t overdueCount) {
    return utf8FromText(widgetSentence(widget, overdueCount));
}

TEST(Sentence, TellsCountsAndTheFirstTask) {
    const TestEnvironment environment;
    WidgetSnapshot widget = widgetOf({rowOf(u"Milk", "Task-Priority3")});
    EXPECT_EQ(sentence(widget, 0), "1 task due. First: \u2068Milk\u2069, today, high priority.");
    widget.dueCount = 3;
    EXPECT_EQ(sentence(widget, 1), "3 tasks due, 1 overdue. First: \u2068Milk\u2069, today, high priority.");
    widget.rows.clear();
    EXPECT_EQ(sentence(widget, 3), "3 tasks due, 3 overdue.");
    EXPECT_EQ(sentence(widgetOf({}), 0), "No more tasks for today.");
}

TEST(Sentence, PutsARowInWords) {
    struct Row {
        const char* what;
        std::optional<std::u16string> title, time;
        std::optional<std::string> priority;
        std::string_view expected;
    };
    const Row kRows[] = {
        {"two marks",                        u"Milk",       u"Yesterday", "Task-Priority2",
         "\u2068Milk\u2069, yesterday, medium priority"                                                              },
        {"a word in capitals keeps them",    u"Milk",       u"HEUTE",     std::nullopt,     "\u2068Milk\u2069, HEUTE"},
        {"a title that would turn the rest", u"\u202Eevil", u"Today",     std::nullopt,
         "\u2068\uFFFDevil\u2069, today"                                                                             },
        {"a capital of two letters",         u"x",          u"ǅen",      std::nullopt,     "\u2068x\u2069, ǆen"    },
    };
    const TestEnvironment environment;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        WidgetRow shown;
        shown.title = row.title;
        shown.time = row.time;
        shown.priority = row.priority;
        EXPECT_EQ(utf8FromText(rowInWords(shown)), row.expected);
    }
}

// Polish has a form for 2 to 4 and another one from 5 on; the counts choose, wherever they stand.
TEST(Sentence, TakesThePluralFormsAndTheOrderOfALanguage) {
    const TestEnvironment environment;
    environment->translate = [](std::string_view key,
                                std::optional<std::int64_t> count) -> std::optional<std::string> {
        if (key == "%d tasks due") return count < 5 ? "%d zadania" : "%d zadań";
        if (key == "%d overdue") return count == 1 ? "%d zaległe" : "%d zaległych";
        if (key == "%@. First: %@.") return "Najpierw: %2$@ (%1$@).";
        return std::nullopt;
    };
    WidgetSnapshot widget = widgetOf({rowOf(u"Mleko")});
    widget.rows[0].time.reset();
    widget.dueCount = 3;
    EXPECT_EQ(sentence(widget, 1), "Najpierw: \u2068Mleko\u2069 (3 zadania, 1 zaległe).");
    widget.dueCount = 9;
    EXPECT_EQ(sentence(widget, 6), "Najpierw: \u2068Mleko\u2069 (9 zadań, 6 zaległych).");
}

TEST(Sentence, LowersAFirstLetterAsTheLanguageDoes) {
    const TestEnvironment environment({.locale = "tr_TR"});
    WidgetRow row;
    row.title = u"Süt";
    row.time = u"Iki";
    EXPECT_EQ(utf8FromText(rowInWords(row)), "\u2068Süt\u2069, ıki");
}

}  // namespace
}  // namespace corvane
