// Why a task is shown today, or is not: every condition of the widget's query with the value found, the
// task's place in the order, and whether the height leaves it in sight.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "apps/host/WidgetHost.h"
#include "model/GTask.h"
#include "platform/store/Value.h"

namespace corvane {

/// One condition of the query. Texts hold the task's title and list as they are stored.
struct ExplainedClause {
    std::u16string predicate;  ///< in the store's query language
    std::u16string condition;  ///< in words: "due before 2024-03-06 00:00"
    bool isFulfilled = false;
    Value value;           ///< what was compared; nil where nothing is stored
    std::u16string found;  ///< in words: "due 2024-03-07"; empty where the answer says it all
};

struct Explanation {
    std::vector<ExplainedClause> clauses;
    std::optional<std::size_t> position;  ///< among the due tasks, from 0; none for a task that is not due
    std::size_t dueCount = 0;
    std::size_t rowsInSight = 0;

    bool isDue() const { return position.has_value(); }
    bool isShown() const { return position && *position < rowsInSight; }
};

/// @param host  has been refreshed since the task last changed
Explanation explanationOf(const GTask& task, WidgetHost& host);

/// "due before 2024-03-06 00:00: no, due 2024-03-07".
std::u16string textOfClause(const ExplainedClause& clause);

/// One sentence: "Shown today, number 2 of 7."
std::u16string conclusionOf(const Explanation& explanation);

}  // namespace corvane
