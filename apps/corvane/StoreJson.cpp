#include "apps/corvane/StoreJson.h"

#include "apps/host/ColorText.h"
#include "apps/host/RepeatWords.h"
#include "dates/Rfc3339.h"
#include "platform/foundation/Text.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

Json textOrNull(std::optional<std::u16string_view> text) { return text ? Json(utf8FromText(*text)) : Json(); }

Json dateOrNull(std::optional<Date> date) {
    return date ? Json(utf8FromText(stringOfRfc3339(*date))) : Json();
}

Json identifierOrNull(const ManagedObject* object) {
    return object ? Json(object->managedObjectContext()->uriRepresentation(*object)) : Json();
}

Json repeatJson(const GTask& task) {
    const RepeatRule rule = repeatOfTask(task);
    if (rule.kind == kNoRepeat) return {};
    return {
        {"words",    utf8FromText(repeatInWords(rule))},
        {"kind",     task.alertRepeat()               },
        {"interval", rule.interval                    },
        {"weekdays", rule.weekdays                    },
        {"ordinal",  rule.ordinal                     },
        {"dayKind",  rule.dayKind                     }
    };
}

Json regionJson(const GTask& task) {
    if (task.regionAlert() == 0) return {};
    return {
        {"kind",        task.regionAlert()                  },
        {"description", textOrNull(task.regionDescription())},
        {"latitude",    task.regionLat()                    },
        {"longitude",   task.regionLong()                   },
        {"radius",      task.regionRadius()                 },
        {"accuracy",    task.regionAccuracy()               }
    };
}

}  // namespace

Json taskJson(const GTask& task) {
    const GList* list = task.list();
    Json json;
    json["id"] = identifierOrNull(&task);
    json["title"] = textOrNull(task.name());
    json["notes"] = textOrNull(task.notes());
    json["completed"] = task.completed();
    json["completedDate"] = dateOrNull(task.completedDate());
    json["dueDate"] = dateOrNull(task.dueDate());
    json["hasDueTime"] = task.hasDueTime();
    json["priority"] = task.priority();
    json["repeat"] = repeatJson(task);
    json["alertDate"] = task.alertEnabled() ? dateOrNull(task.alertDate()) : Json();
    json["region"] = regionJson(task);
    json["list"] = list ? textOrNull(list->name()) : Json();
    json["listId"] = identifierOrNull(list);
    json["account"] = list && list->user() ? textOrNull(list->user()->name()) : Json();
    json["parentId"] = identifierOrNull(task.parentTask());
    json["position"] = task.displayOrder();
    return json;
}

Json listJson(const GList& list) {
    const GUser* account = list.user();
    const auto color = list.color();
    Json json;
    json["id"] = identifierOrNull(&list);
    json["name"] = textOrNull(list.name());
    json["account"] = account ? textOrNull(account->name()) : Json();
    json["accountId"] = identifierOrNull(account);
    json["color"] = color ? Json(textOfColor(*color)) : Json();
    json["isDefault"] = list.isDefault();
    json["isIsolated"] = list.isIsolated();
    json["isReadonly"] = list.isReadonly();
    json["tasksOrder"] = list.tasksOrder();
    json["position"] = list.displayOrder();
    return json;
}

Json accountJson(const GUser& account) {
    Json json;
    json["id"] = identifierOrNull(&account);
    json["name"] = textOrNull(account.name());
    json["type"] = account.accountType();
    json["isDefault"] = account.isDefault();
    json["lists"] = account.orderedLists().size();
    json["position"] = account.displayOrder();
    return json;
}

std::string jsonText(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace corvane
