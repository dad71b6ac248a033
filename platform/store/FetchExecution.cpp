#include "platform/store/FetchExecution.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "platform/store/PersistentContainer.h"
#include "platform/store/SqliteStore.h"
#include "platform/store/UnsavedChanges.h"

namespace corvane {

namespace {

constexpr std::size_t kNoLimit = 0;

bool isPrefetched(const std::vector<std::string>& prefetching, const std::string& path) {
    return std::ranges::any_of(prefetching, [&](const std::string& wanted) {
        return wanted == path || wanted.starts_with(path + ".");
    });
}

// Few fits and many rows: each fit looks for its place, so that only some of the rows are compared.
std::vector<ManagedObject*> merged(std::vector<ManagedObject*> rows, const std::vector<ManagedObject*>& fits,
                                   const ObjectOrder& isOrderedBefore) {
    std::vector<ManagedObject*> objects;
    objects.reserve(rows.size() + fits.size());
    auto row = rows.begin();
    for (ManagedObject* fit : fits) {
        const auto place = std::upper_bound(row, rows.end(), fit, isOrderedBefore);
        objects.insert(objects.end(), row, place);
        objects.push_back(fit);
        row = place;
    }
    objects.insert(objects.end(), row, rows.end());
    return objects;
}

}  // namespace

FetchExecution::FetchExecution(ContextState& context, const FetchRequest& request)
    : context_(context), request_(request) {}

FetchExecution::~FetchExecution() {
    for (const ManagedObject* object : affected_) ObjectState::of(*object).isAffected = false;
}

ManagedObjectContext::FetchResult FetchExecution::run() {
    if (std::optional<StoreError> error = translate()) return *error;
    judgeUnsavedChanges();
    // Placing an object among rows compares it with them, and what SQL could not say is judged in memory:
    // both need the rows whole.
    const bool keysSuffice = request_.fetchBatchSize > 0 && fits_.empty() && query_.isExact;
    if (std::optional<StoreError> error = keysSuffice ? runKeys() : runWhole()) return *error;
    if (!query_.isExact) judgeRows();
    mergeFits();
    groupResult();
    return std::move(found_);
}

std::variant<std::size_t, StoreError> FetchExecution::count() {
    if (std::optional<StoreError> error = translate()) return *error;
    if (!query_.isExact) {
        const auto result = FetchExecution(context_, request_).run();
        if (const auto* error = std::get_if<StoreError>(&result)) return *error;
        return std::get<std::vector<ManagedObject*>>(result).size();
    }
    judgeUnsavedChanges();
    const auto rows = countRows();
    if (const auto* error = std::get_if<StoreError>(&rows)) return *error;
    const std::size_t count = std::get<std::size_t>(rows) + fits_.size();
    return request_.fetchLimit == kNoLimit ? count : std::min(count, request_.fetchLimit);
}

std::optional<StoreError> FetchExecution::translate() {
    entity_ = context_.coordinator.model().entity(request_.entityName);
    if (!entity_)
        return StoreError{StoreError::Kind::kInvalid,
                          localizedUtf8("there is no entity %@", {textFromUtf8(request_.entityName)})};
    if (!context_.store())
        return StoreError{StoreError::Kind::kCannotOpen, localizedUtf8("no store is loaded")};
    context_.updateReadVersion();
    FetchRequest translated = request_;
    // The rows of a batch are read later, and what is to be read with them as well.
    if (request_.fetchBatchSize > 0) translated.relationshipKeyPathsForPrefetching.clear();
    std::string why;
    std::optional<SqlQuery> query = queryFor(translated, why);
    if (!query) return StoreError{StoreError::Kind::kInvalid, why};
    query_ = std::move(*query);
    used_ = usedPropertiesOf(request_, *entity_);
    return std::nullopt;
}

std::optional<SqlQuery> FetchExecution::queryFor(const FetchRequest& request, std::string& error) const {
    SqliteStore& store = *context_.store();
    const auto hasColumn = [&](const EntityDescription& entity, PropertyIndex property) {
        return store.hasColumn(entity, property);
    };
    return sqlQueryForRequest(request, context_.coordinator.model(), hasColumn, error);
}

void FetchExecution::judgeUnsavedChanges() {
    if (!hasUnsavedChanges(context_, *used_)) return;
    affected_ = affectedObjects(context_, *used_);
    for (const ManagedObject* object : affected_) ObjectState::of(*object).isAffected = true;
    std::ranges::copy_if(affected_, std::back_inserter(fits_),
                         [](const ManagedObject* object) { return !object->isDeleted(); });
    loadForJudging(context_, *used_, fits_);
    std::erase_if(fits_, [&](const ManagedObject* object) {
        const bool isThere = ObjectState::of(*object).isThere();
        return !isThere || (request_.predicate && !request_.predicate->evaluate(*object));
    });
}

// "SELECT columns FROM ... WHERE ..."
std::string FetchExecution::from(const char* columns) const {
    return std::string("SELECT ") + columns + " FROM " + entity_->table() + " t0" + query_.joins + " WHERE " +
           query_.where;
}

std::optional<StoreError> FetchExecution::runWhole() {
    const std::vector<SqlQuery::JoinedPath> paths = prefetchedPaths(query_);
    const RowPlan plan(context_, *entity_, paths);
    return eachRow(from(plan.selectText().c_str()) + " ORDER BY " + query_.orderBy, rowLimit(),
                   [&](const SqliteStatement& row) {
                       ManagedObject& object = plan.read(row);
                       if (!ObjectState::of(object).isAffected) found_.push_back(&object);
                   });
}

std::optional<StoreError> FetchExecution::runKeys() {
    return eachRow(from("t0.Z_PK") + " ORDER BY " + query_.orderBy, rowLimit(),
                   [&](const SqliteStatement& row) {
                       ManagedObject& object = context_.objectWithKey(*entity_, row.integer(0));
                       const ObjectState& state = ObjectState::of(object);
                       if (state.isAffected || state.isDeleted()) return;
                       if (state.readVersion != context_.readVersion && state.isLoaded) turnIntoFault(object);
                       if (state.isMissing) turnIntoFault(object);
                       found_.push_back(&object);
                   });
}

template <class EachRow>
std::optional<StoreError> FetchExecution::eachRow(const std::string& sql, std::size_t limit,
                                                  EachRow eachRow) {
    auto prepared = context_.prepare(limit == kNoLimit ? sql : sql + " LIMIT ?");
    if (const auto* error = std::get_if<StoreError>(&prepared)) return *error;
    auto& statement = std::get<SqliteStatement>(prepared);
    int parameter = 0;
    for (const Value& value : query_.parameters) statement.bind(++parameter, value);
    if (limit != kNoLimit) statement.bindInteger(++parameter, static_cast<std::int64_t>(limit));
    auto step = statement.step();
    for (; step == SqliteStatement::Step::kRow; step = statement.step()) eachRow(statement);
    if (step == SqliteStatement::Step::kError) return context_.store()->lastError();
    return std::nullopt;
}

std::variant<std::size_t, StoreError> FetchExecution::countRows() {
    std::size_t count = 0;
    std::optional<StoreError> error;
    if (affected_.empty()) {
        error = eachRow(from("count(*)"), kNoLimit, [&](const SqliteStatement& row) {
            count = static_cast<std::size_t>(row.integer(0));
        });
    } else {
        error = eachRow(from("t0.Z_PK"), kNoLimit, [&](const SqliteStatement& row) {
            const ManagedObject* object = context_.registered(*entity_, row.integer(0));
            if (!object || !ObjectState::of(*object).isAffected) ++count;
        });
    }
    if (error) return *error;
    return count;
}

void FetchExecution::judgeRows() {
    loadForJudging(context_, *used_, found_);
    std::erase_if(found_,
                  [&](const ManagedObject* object) { return !request_.predicate->evaluate(*object); });
}

void FetchExecution::mergeFits() {
    if (!fits_.empty()) {
        loadForJudging(context_, usedPropertiesOf(request_.sortDescriptors, *entity_), found_);
        const ObjectOrder isOrderedBefore(request_.sortDescriptors);
        std::ranges::sort(fits_, isOrderedBefore);
        found_ = merged(std::move(found_), fits_, isOrderedBefore);
    }
    if (request_.fetchLimit != kNoLimit && found_.size() > request_.fetchLimit) {
        found_.resize(request_.fetchLimit);
    }
}

void FetchExecution::groupResult() {
    if (found_.empty()) return;
    auto group = std::make_shared<LoadGroup>();
    group->objects = found_;
    if (request_.fetchBatchSize > 0) {
        group->sliceSize = std::min(request_.fetchBatchSize, kLargestSlice);
        FetchRequest rows;
        rows.entityName = request_.entityName;
        rows.relationshipKeyPathsForPrefetching = request_.relationshipKeyPathsForPrefetching;
        std::string why;
        if (std::optional<SqlQuery> joined = queryFor(rows, why)) {
            group->joins = std::move(joined->joins);
            group->joinedPaths = std::move(joined->joinedPaths);
        }
    }
    formGroup(group);
}

std::vector<SqlQuery::JoinedPath> FetchExecution::prefetchedPaths(const SqlQuery& query) const {
    std::vector<SqlQuery::JoinedPath> paths;
    std::ranges::copy_if(query.joinedPaths, std::back_inserter(paths), [&](const SqlQuery::JoinedPath& path) {
        return isPrefetched(request_.relationshipKeyPathsForPrefetching, path.keyPath);
    });
    return paths;
}

// Rows of affected objects are passed over, so that there may have to be more of them.
std::size_t FetchExecution::rowLimit() const {
    if (request_.fetchLimit == kNoLimit || !query_.isExact) return kNoLimit;
    return request_.fetchLimit + affected_.size();
}

}  // namespace corvane
