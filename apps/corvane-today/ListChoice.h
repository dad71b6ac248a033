// A choice among the store's lists, with their accounts.
#pragma once

#include <string>
#include <vector>

#include "apps/corvane-today/ChoiceField.h"
#include "model/GList.h"

namespace corvane {

class ListChoice : public ChoiceField {
    Q_OBJECT
  public:
    explicit ListChoice(QWidget* parent);

    /// Offers the lists that take changes, and `current` in any case.
    ///
    /// @param current  is chosen; null: the choice stays, or is the default list of the default account
    void showLists(const GList* current);

    /// The chosen list; null where the store has none yet.
    static GList* listNamed(const QString& uri);
    GList* chosenList() const { return listNamed(chosenUri()); }
    QString chosenUri() const { return currentData().toString(); }
    /// Chooses a list where it is offered.
    void choose(const QString& uri);

  private:
    struct Offer {
        QString text;
        QString uri;

        bool operator==(const Offer&) const = default;
    };
    void offer(std::vector<Offer> offers);

    std::vector<Offer> offers_;
};

}  // namespace corvane
