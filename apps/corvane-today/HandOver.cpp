#include "apps/corvane-today/HandOver.h"

#include <variant>

#include "apps/corvane-today/CompanionWindow.h"
#include "apps/corvane-today/QtText.h"
#include "apps/host/HandOverUrl.h"

namespace corvane {
namespace {

struct Answer {
    CompanionWindow& window;

    void operator()(const ShowToday&) const { window.showToday(); }
    void operator()(const ShowTask& task) const { window.showTask(task.taskid); }
    void operator()(const ShowAddTask&) const { window.showAddTask(); }
};

}  // namespace

void answerHandOver(const QString& url, CompanionWindow& window) {
    const auto read = handOverFromUrl(coreText(url));
    if (const auto* reason = std::get_if<std::u16string>(&read)) {
        window.showToday();
        window.showProblem(qtText(*reason));
        return;
    }
    std::visit(Answer{window}, std::get<HandOverUrl>(read));
}

}  // namespace corvane
