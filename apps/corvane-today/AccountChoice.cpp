#include "apps/corvane-today/AccountChoice.h"

#include <algorithm>
#include <string_view>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/host/Places.h"
#include "model/GSData.h"

namespace corvane {
namespace {

ManagedObjectContext& context() { return GSData::sharedInstance().viewContext(); }

}  // namespace

AccountChoice::AccountChoice(QWidget* parent) : ChoiceField(parent) {
    setAccessibleName(translated("Account"));
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    addItem(translated("All accounts"), QString());
    hide();
}

AccountChoice::Offers AccountChoice::accountsToOffer() {
    Offers offers;
    for (const GUser* account : accountsInOrder(context())) {
        const QString name = shownLine(account->name().value_or(std::u16string_view()));
        offers.emplace_back(name.isEmpty() ? translated("an account without a name") : name,
                            QString::fromStdString(context().uriRepresentation(*account)));
    }
    return offers;
}

// An open choice stays as it is while the accounts do.
void AccountChoice::showAccounts() {
    Offers offers = accountsToOffer();
    if (offers == offers_) return;
    offers_ = std::move(offers);
    const QSignalBlocker blocker(this);
    const QString chosen = currentData().toString();
    while (count() > 1) removeItem(count() - 1);
    for (const auto& [name, uri] : offers_) addItem(name, uri);
    setCurrentIndex(std::max(findData(chosen), 0));
    setVisible(offers_.size() > 1);
}

GUser* AccountChoice::chosenAccount() const {
    return dynamic_cast<GUser*>(context().objectWithUri(currentData().toString().toStdString()));
}

}  // namespace corvane
