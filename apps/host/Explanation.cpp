#include "apps/host/Explanation.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "apps/host/RowsInSight.h"
#include "apps/host/TaskDescription.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Localization.h"
#include "platform/store/KeyPath.h"
#include "platform/store/PredicateNode.h"
#include "widget/DueTasks.h"

namespace corvane {
namespace {

enum class Precision { kDay, kMinute };

// Digits, so that two dates are compared at a glance.
std::u16string numericDate(Date date, Precision precision) {
    const char16_t* pattern = precision == Precision::kDay ? u"yyyy-MM-dd" : u"yyyy-MM-dd HH:mm";
    return Locale::current().stringFromDate(date, pattern, Calendar::current());
}

std::u16string nothingToAdd(const GTask&) { return {}; }

std::u16string title(const GTask& task) {
    return std::u16string(task.name().value_or(std::u16string_view()));
}

std::u16string completion(const GTask& task) {
    if (!task.completed() || !task.completedDate()) return {};
    return stringWithFormat(localizedString("done %@"),
                            {numericDate(*task.completedDate(), Precision::kMinute)});
}

std::u16string dueDate(const GTask& task) {
    if (!task.dueDate()) return localizedString("no due date");
    const Precision precision = task.hasDueTime() ? Precision::kMinute : Precision::kDay;
    return stringWithFormat(localizedString("due %@"), {numericDate(*task.dueDate(), precision)});
}

struct ClauseWords {
    std::u16string_view predicate;  ///< how the condition's text begins
    const char* condition;          ///< with "%@" for the date that it compares with
    std::u16string (*found)(const GTask&);
};
constexpr ClauseWords kWords[] = {
    {u"removed ",         textKey("not deleted"),              nothingToAdd},
    {u"name != nil",      textKey("has a title"),              title       },
    {u"name != \"\"",     textKey("the title is not empty"),   nothingToAdd},
    {u"list.removed ",    textKey("the list is not deleted"),  placeInWords},
    {u"list.isIsolated ", textKey("the list is not isolated"), placeInWords},
    {u"completed ",       textKey("not done"),                 completion  },
    {u"hasDueDate ",      textKey("has a due date"),           nothingToAdd},
    {u"dueDate < ",       textKey("due before %@"),            dueDate     },
};

// A condition that has no words yet is told in the query language.
const ClauseWords* wordsFor(std::u16string_view predicate) {
    const auto* words = std::ranges::find_if(kWords, [predicate](const ClauseWords& candidate) {
        return predicate.starts_with(candidate.predicate);
    });
    return words == std::end(kWords) ? nullptr : words;
}

std::vector<PredicateNodePointer> clausesOf(const Predicate& predicate) {
    const auto* compound = predicate.root()->get<Compound>();
    if (compound && compound->kind == Compound::Kind::kAnd) return compound->operands;
    return {predicate.root()};
}

std::u16string conditionInWords(const ClauseWords& words, const Comparison* comparison) {
    const std::u16string format = localizedString(words.condition);
    const auto* constant = comparison ? comparison->right.get<ConstantExpression>() : nullptr;
    const Date* date = constant ? std::get_if<Date>(&constant->value) : nullptr;
    return date ? stringWithFormat(format, {numericDate(*date, Precision::kMinute)}) : format;
}

struct OwnedValue {
    Value operator()(std::u16string_view text) const { return std::u16string(text); }
    Value operator()(std::span<const std::uint8_t> bytes) const { return Bytes(bytes.begin(), bytes.end()); }
    template <class T>
    Value operator()(T value) const {
        return value;
    }
};

ExplainedClause explainedClause(const PredicateNodePointer& node, const GTask& task) {
    ExplainedClause clause;
    const Predicate predicate(node);
    clause.predicate = predicate.predicateFormat();
    clause.isFulfilled = predicate.evaluate(task);
    const auto* comparison = node->get<Comparison>();
    const KeyPath* path = comparison ? comparison->left.get<KeyPath>() : nullptr;
    if (path) clause.value = std::visit(OwnedValue(), valueOfKeyPath(task, *path));
    const ClauseWords* words = wordsFor(clause.predicate);
    clause.condition = words ? conditionInWords(*words, comparison) : clause.predicate;
    if (words) clause.found = words->found(task);
    return clause;
}

std::int64_t number(std::size_t count) { return static_cast<std::int64_t>(count); }

}  // namespace

Explanation explanationOf(const GTask& task, WidgetHost& host) {
    constexpr std::int64_t kNoRows = 0;
    Explanation explanation;
    const FetchRequest request = requestForDueTasks(host.controller().dueDates(), kNoRows);
    for (const PredicateNodePointer& node : clausesOf(*request.predicate)) {
        explanation.clauses.push_back(explainedClause(node, task));
    }
    const std::vector<GTask*>& dueTasks = host.controller().todayTasks();
    const auto place = std::ranges::find(dueTasks, &task);
    if (place != dueTasks.end()) explanation.position = place - dueTasks.begin();
    explanation.dueCount = dueTasks.size();
    explanation.rowsInSight = rowsInSight(host.snapshot());
    return explanation;
}

std::u16string textOfClause(const ExplainedClause& clause) {
    if (clause.found.empty()) {
        return stringWithFormat(localizedString(clause.isFulfilled ? textKey("%@: yes") : textKey("%@: no")),
                                {clause.condition});
    }
    return stringWithFormat(
        localizedString(clause.isFulfilled ? textKey("%1$@: yes, %2$@") : textKey("%1$@: no, %2$@")),
        {clause.condition, clause.found});
}

std::u16string conclusionOf(const Explanation& explanation) {
    if (!explanation.isDue()) return localizedString("Not shown today, because not all of this holds.");
    const std::int64_t place = number(*explanation.position) + 1;
    if (explanation.isShown()) {
        return stringWithFormat(localizedString("Shown today, number %1$d of %2$d."),
                                {place, number(explanation.dueCount)});
    }
    return stringWithFormat(
        localizedString("Due today, number %1$d of %2$d, but out of sight: the height leaves room for %3$d."),
        {place, number(explanation.dueCount), number(explanation.rowsInSight)});
}

}  // namespace corvane
