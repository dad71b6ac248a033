// One fetch: the rows that the file has, and the objects whose unsaved changes say otherwise. For the store's
// own sources.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/store/ContextState.h"
#include "platform/store/FetchRequest.h"
#include "platform/store/ManagedObjectContext.h"
#include "platform/store/RowLoading.h"
#include "platform/store/SqlQuery.h"
#include "platform/store/UsedProperties.h"

namespace corvane {

class FetchExecution {
  public:
    FetchExecution(ContextState& context, const FetchRequest& request);
    ~FetchExecution();
    FetchExecution(const FetchExecution&) = delete;
    FetchExecution& operator=(const FetchExecution&) = delete;

    ManagedObjectContext::FetchResult run();
    std::variant<std::size_t, StoreError> count();

  private:
    std::optional<StoreError> translate();
    std::optional<SqlQuery> queryFor(const FetchRequest& request, std::string& error) const;
    void judgeUnsavedChanges();

    std::string from(const char* columns) const;
    std::optional<StoreError> runWhole();
    std::optional<StoreError> runKeys();
    template <class EachRow>
    std::optional<StoreError> eachRow(const std::string& sql, std::size_t limit, EachRow eachRow);
    std::variant<std::size_t, StoreError> countRows();

    void judgeRows();
    void mergeFits();
    void groupResult();
    std::vector<SqlQuery::JoinedPath> prefetchedPaths(const SqlQuery& query) const;
    std::size_t rowLimit() const;

    ContextState& context_;
    const FetchRequest& request_;
    const EntityDescription* entity_ = nullptr;
    std::optional<UsedProperties> used_;
    SqlQuery query_;
    std::vector<ManagedObject*> affected_;  ///< judged in memory; rows of the file say nothing of them
    std::vector<ManagedObject*> fits_;      ///< those of them that the request finds
    std::vector<ManagedObject*> found_;
};

}  // namespace corvane
