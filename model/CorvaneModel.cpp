#include "model/CorvaneModel.h"

#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"

namespace corvane {
namespace {

// Holds every column that the widget's query tests or sorts by, so that it reads no row before it knows which
// ones are shown; those of the condition must stand in it as well for SQLite to see that. The condition keeps
// completed, removed and undated tasks out.
IndexDescription openTasksByDueDate() {
    return {
        .name = "openTasksByDueDate",
        .properties = {"dueDate", "priority", "displayOrder", "list", "name", "removed", "completed",
                       "hasDueDate"},
        .where = "ZREMOVED = 0 AND ZCOMPLETED = 0 AND ZHASDUEDATE = 1"
    };
}

}  // namespace

const ManagedObjectModel& corvaneModel() {
    static const ManagedObjectModel model(
        "Corvane", {GList::entityDescription(), GTask::entityDescription({openTasksByDueDate()}),
                    GUser::entityDescription()});
    return model;
}

}  // namespace corvane
