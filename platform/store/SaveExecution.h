// One save: what is pending goes into one transaction, and memory follows once that was committed. For the
// store's own sources.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/store/ContextState.h"
#include "platform/store/SaveTransaction.h"

namespace corvane {

class SaveExecution {
  public:
    explicit SaveExecution(ContextState& context);

    std::optional<StoreError> run();

  private:
    using Row = std::pair<const EntityDescription*, std::int64_t>;
    using Values = std::vector<SaveTransaction::ChangedValue>;

    // In the transaction
    void takeKeys(SaveTransaction& transaction);
    void insertRows(SaveTransaction& transaction);
    void updateRow(SaveTransaction& transaction, ManagedObject& object);
    void deleteRow(SaveTransaction& transaction, const Row& row, std::int64_t version);
    void settleReferences(SaveTransaction& transaction, const Row& deleted);
    void fillValues(SaveTransaction& transaction, const ManagedObject& object);
    void addValue(SaveTransaction& transaction, const ManagedObject& object, PropertyIndex property);
    Value rowNumber(SaveTransaction& transaction, ManagedObject& target);
    bool exists(SaveTransaction& transaction, ManagedObject& target);

    // After it
    void settleInserted(ManagedObject& object);
    void settleUpdated();
    void settleDeleted();
    void post();

    ContextState& context_;
    const std::vector<ManagedObject*> inserted_;
    const std::vector<ManagedObject*> updated_;
    const std::vector<ManagedObject*> deleted_;
    std::map<const EntityDescription*, std::int64_t> firstKeys_;  ///< of the inserted objects, by entity
    std::map<const ManagedObject*, bool> existing_;  ///< rows that were asked for, to refer to them
    std::vector<std::pair<ManagedObject*, std::int64_t>> versions_;  ///< of the rows that were updated
    std::vector<ManagedObject*> gone_;     ///< objects whose rows somebody else has deleted
    std::vector<ManagedObject*> cleared_;  ///< objects that lost a reference to such a row
    std::set<Row> doomed_;                 ///< rows to delete or deleted
    Values values_;
};

}  // namespace corvane
