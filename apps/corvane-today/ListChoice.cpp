#include "apps/corvane-today/ListChoice.h"

#include <utility>

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
    std::vector<Offer> offers;
    for (const GList* list : listsInOrder(context())) {
        if (list->isReadonly() && list != current) continue;
        offers.push_back({shownLine(placeInWords(*list)), uriOf(*list)});
    }
    // A task may lie in a list that is gone or in none; a fresh store gets its first list with its first
    // task.
    if (offers.empty()) offers.push_back({translated("Tasks"), QString()});
    offer(std::move(offers));
    choose(chosen);
}

// An open choice stays as it is while the lists do.
void ListChoice::offer(std::vector<Offer> offers) {
    if (offers == offers_) return;
    offers_ = std::move(offers);
    const QSignalBlocker blocker(this);
    clear();
    for (const Offer& offer : offers_) addItem(offer.text, offer.uri);
}

GList* ListChoice::listNamed(const QString& uri) {
    auto* list = dynamic_cast<GList*>(context().objectWithUri(uri.toStdString()));
    return list && !list->removed() ? list : nullptr;
}

void ListChoice::choose(const QString& uri) {
    const int index = findData(uri);
    if (index >= 0 && index != currentIndex()) setCurrentIndex(index);
}

}  // namespace corvane
