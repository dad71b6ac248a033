#include "apps/corvane-today/ListChoice.h"

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/host/Places.h"
#include "apps/host/TaskDescription.h"
#include "model/Accounts.h"
#include "model/GSData.h"

namespace corvane {
namespace {

ManagedObjectContext& context() { return GSData::sharedInstance().viewContext(); }

QString uriOf(const GList& list) { return QString::fromStdString(context().uriRepresentation(list)); }

QString defaultListUri() {
    const GUser* account = defaultAccount(context());
    const GList* list = account ? account->defaultList() : nullptr;
    return list ? uriOf(*list) : QString();
}

}  // namespace

ListChoice::ListChoice(QWidget* parent) : ChoiceField(parent) {}

void ListChoice::showLists(const GList* current) {
    QString chosen = current ? uriOf(*current) : chosenUri();
    if (chosen.isEmpty()) chosen = defaultListUri();
    const QSignalBlocker blocker(this);
    clear();
    for (const GList* list : listsInOrder(context())) {
        if (list->isReadonly() && list != current) continue;
        addItem(shownLine(placeInWords(*list)), uriOf(*list));
    }
    // A task may lie in a list that is gone or in none; a fresh store gets its first list with its first
    // task.
    if (count() == 0) addItem(translated("Tasks"), QString());
    choose(chosen);
}

GList* ListChoice::listNamed(const QString& uri) {
    auto* list = dynamic_cast<GList*>(context().objectWithUri(uri.toStdString()));
    return list && !list->removed() ? list : nullptr;
}

void ListChoice::choose(const QString& uri) {
    const int index = findData(uri);
    if (index >= 0) setCurrentIndex(index);
}

}  // namespace corvane
