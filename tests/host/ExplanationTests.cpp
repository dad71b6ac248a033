#include "apps/host/Explanation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "WidgetFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

Explanation explained(const GTask& task, WidgetHostOptions options = {}) {
    WidgetHost host(std::move(options));
    host.refresh();
    return explanationOf(task, host);
}

// The conditions that do not hold, in words.
std::string objections(const Explanation& explanation) {
    std::string text;
    for (const ExplainedClause& clause : explanation.clauses) {
        if (!clause.isFulfilled) text += (text.empty() ? "" : "; ") + utf8FromText(textOfClause(clause));
    }
    return text;
}

TEST(Explanation, NamesEveryConditionThatDoesNotHold) {
    WidgetFixture widget;
    GList& removed = widget.addList(u"Gone", widget.account);
    removed.setRemoved(true);
    GList& isolated = widget.addList(u"Apart", nullptr);
    isolated.setIsIsolated(true);
    const auto expect = [&widget](std::string_view expected, const std::function<void(GTask&)>& change) {
        SCOPED_TRACE(expected);
        GTask& task = widget.addTask(u"Milk");
        change(task);
        const Explanation explanation = explained(task);
        EXPECT_EQ(explanation.clauses.size(), 8u);
        EXPECT_EQ(objections(explanation), expected);
        EXPECT_EQ(explanation.isDue(), expected.empty());
    };
    expect("", [](GTask&) {});
    expect("not deleted: no", [](GTask& task) { task.setRemoved(true); });
    expect("has a title: no; the title is not empty: no", [](GTask& task) { task.setName(std::nullopt); });
    expect("the title is not empty: no", [](GTask& task) { task.setName(u""); });
    expect("the list is not deleted: no, Gone (an account without a name)",
           [&removed](GTask& task) { task.setList(&removed); });
    expect("the list is not isolated: no, Apart", [&isolated](GTask& task) { task.setList(&isolated); });
    expect("the list is not deleted: no, no list; the list is not isolated: no, no list",
           [](GTask& task) { task.setList(nullptr); });
    expect("not done: no, done 2024-03-05 11:30", [](GTask& task) {
        task.setCompleted(true);
        task.setCompletedDate(at("2024-03-05 11:30"));
    });
    expect("has a due date: no; due before 2024-03-06 00:00: no, no due date",
           [](GTask& task) { task.setDueDate(std::nullopt, kAllDay, kNoRepeat, 0); });
    expect("due before 2024-03-06 00:00: no, due 2024-03-07",
           [](GTask& task) { task.setDueDate(at("2024-03-07 09:00")); });
    expect("due before 2024-03-06 00:00: no, due 2024-03-06 00:00", [](GTask& task) {
        task.setDueDate(at("2024-03-06"));
        task.setHasDueTime(true);
    });
}

TEST(Explanation, ComparesByTheValuesFound) {
    WidgetFixture widget;
    const Explanation explanation = explained(widget.addTask(u"Milk", "2024-03-07 09:00"));
    EXPECT_EQ(explanation.clauses[0].value, Value(false));
    EXPECT_EQ(explanation.clauses[1].value, Value(std::u16string(u"Milk")));
    EXPECT_EQ(explanation.clauses[7].value, Value(at("2024-03-07 09:00")));
    EXPECT_EQ(utf8FromText(explanation.clauses[5].predicate), "completed == NO");
    EXPECT_EQ(utf8FromText(textOfClause(explanation.clauses[1])), "has a title: yes, Milk");
}

TEST(Explanation, EndsWithThePlaceAndWhatTheHeightLeavesOfIt) {
    WidgetFixture widget;
    widget.addTasks(7);
    GTask& last = widget.addTask(u"Last");
    last.setDisplayOrder(9);
    struct Row {
        WidgetHostOptions options;
        const char* expected;
    };
    const Row rows[] = {
        {{{359, 110}, {359, 600}, DisplayMode::kExpanded, {}}, "Shown today, number 8 of 8."},
        {{{359, 110}, {359, 300}, DisplayMode::kExpanded, {}},
         "Due today, number 8 of 8, but out of sight: the height leaves room for 5."        },
        {{{359, 110}, {359, 600}, DisplayMode::kCompact, {}},
         "Due today, number 8 of 8, but out of sight: the height leaves room for 2."        },
        {{{359, 900}, {359, 600}, DisplayMode::kCompact, {}},  "Shown today, number 8 of 8."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(utf8FromText(conclusionOf(explained(last, row.options))), row.expected);
    }
    last.setCompleted(true);
    EXPECT_EQ(utf8FromText(conclusionOf(explained(last))), "Not shown today, because not all of this holds.");
}

TEST(Explanation, AgreesWithTheQueryOverRandomTasks) {
    WidgetFixture widget;
    std::mt19937 dice(20240305);
    const auto oneIn = [&dice](unsigned count) { return dice() % count == 0; };
    GList* const lists[] = {widget.home, &widget.addList(u"Apart", widget.account),
                            &widget.addList(u"Gone", nullptr), nullptr};
    lists[1]->setIsIsolated(true);
    lists[2]->setRemoved(true);
    std::vector<GTask*> tasks;
    for (int i = 0; i < 400; ++i) {
        GTask& task = widget.addTask(oneIn(8) ? u"" : u"Task", oneIn(8) ? nullptr : "2024-03-05 23:00");
        if (oneIn(8)) task.setName(std::nullopt);
        if (oneIn(3)) task.setDueDate(at("2024-03-05 23:59") + TimeInterval(dice() % 120));
        if (oneIn(3)) task.setList(lists[dice() % 4]);
        task.setRemoved(oneIn(8));
        task.setCompleted(oneIn(8));
        tasks.push_back(&task);
    }
    widget.save();
    WidgetHost host;
    host.refresh();
    for (const GTask* task : tasks) {
        const Explanation explanation = explanationOf(*task, host);
        const bool holds = std::ranges::all_of(explanation.clauses, &ExplainedClause::isFulfilled);
        EXPECT_EQ(holds, explanation.isDue()) << objections(explanation);
    }
    EXPECT_GT(host.controller().todayTasks().size(), 20u);
    EXPECT_LT(host.controller().todayTasks().size(), 300u);
}

}  // namespace
}  // namespace corvane
