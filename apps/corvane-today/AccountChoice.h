// A choice of one account, or of all.
#pragma once

#include <utility>
#include <vector>

#include <QString>

#include "apps/corvane-today/ChoiceField.h"
#include "model/GUser.h"

namespace corvane {

class AccountChoice : public ChoiceField {
    Q_OBJECT
  public:
    explicit AccountChoice(QWidget* parent);

    /// Offers the store's accounts and hides where there is nothing to choose. The choice stays while its
    /// account does.
    void showAccounts();
    void chooseAll() { setCurrentIndex(0); }
    /// Null: all accounts.
    GUser* chosenAccount() const;

  private:
    using Offers = std::vector<std::pair<QString, QString>>;  ///< names, object URIs
    static Offers accountsToOffer();

    Offers offers_;
};

}  // namespace corvane
