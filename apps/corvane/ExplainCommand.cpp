// `corvane explain`: why a task is shown today, or is not.
#include <memory>
#include <string>
#include <variant>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandLine.h"
#include "apps/corvane/CommandText.h"
#include "apps/corvane/StoreJson.h"
#include "apps/corvane/StoreNames.h"
#include "apps/corvane/TerminalStyle.h"
#include "apps/corvane/WidgetOptions.h"
#include "apps/host/Explanation.h"
#include "dates/Rfc3339.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

struct ExplainOptions {
    WidgetOptions widget;
    std::string task;
};

struct ValueJson {
    Json operator()(bool value) const { return value; }
    Json operator()(std::int64_t value) const { return value; }
    Json operator()(double value) const { return value; }
    Json operator()(Date value) const { return utf8FromText(stringOfRfc3339(value)); }
    Json operator()(const std::u16string& value) const { return utf8FromText(value); }
    template <class T>
    Json operator()(const T&) const {
        return nullptr;
    }
};

Json clauseJson(const ExplainedClause& clause) {
    return {
        {"predicate", utf8FromText(clause.predicate)},
        {"condition", utf8FromText(clause.condition)},
        {"fulfilled", clause.isFulfilled            },
        {"value",     std::visit(ValueJson(),         clause.value)},
        {"found",           utf8FromText(clause.found)                                  }
    };
}

Json explanationJson(const GTask& task, const Explanation& explanation) {
    Json clauses = Json::array();
    for (const ExplainedClause& clause : explanation.clauses) clauses.push_back(clauseJson(clause));
    return {
        {"task",        taskJson(task)                                                },
        {"due",         explanation.isDue()                                           },
        {"shown",       explanation.isShown()                                         },
        {"position",    explanation.isDue() ? Json(*explanation.position + 1) : Json()},
        {"dueCount",    explanation.dueCount                                          },
        {"rowsInSight", explanation.rowsInSight                                       },
        {"clauses",     clauses                                                       },
        {"conclusion",  utf8FromText(conclusionOf(explanation))                       }
    };
}

void runExplain(Program& program, const ExplainOptions& options) {
    const GTask& task = taskNamed(program.store(), options.task);
    WidgetHost host(options.widget.hostOptions());
    host.refresh();
    const Explanation explanation = explanationOf(task, host);
    if (program.options.json) return program.printData(jsonText(explanationJson(task, explanation)));
    const TerminalStyle style = TerminalStyle::ofOutput();
    const bool isTitled = task.name() && !task.name()->empty();
    program.printLine(style.bold(isTitled ? shownText(*task.name()) : translated("(untitled)")));
    for (const ExplainedClause& clause : explanation.clauses) {
        program.printLine("  " + shownText(textOfClause(clause)));
    }
    program.printLine(shownText(conclusionOf(explanation)));
}

}  // namespace

void addExplainCommand(CLI::App& app, Program& program) {
    const auto options = std::make_shared<ExplainOptions>();
    CLI::App& command =
        *app.add_subcommand("explain", translated("Tell why a task is shown today, or is not"));
    command.add_option("TASK", options->task, translated("A task"))->required();
    addWidgetOptions(command, options->widget);
    command.callback([&program, options] { runExplain(program, *options); });
}

}  // namespace corvane
