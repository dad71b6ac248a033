#include "platform/store/SaveExecution.h"

#include <algorithm>

#include "platform/foundation/Localization.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/store/Deletion.h"
#include "platform/store/ManagedObjectContext.h"
#include "platform/store/Relationships.h"
#include "platform/store/RowLoading.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

namespace {

constexpr std::int64_t kFirstVersion = 1;

Value storedValue(const Slot& slot) {
    if (const auto* integer = std::get_if<std::int64_t>(&slot)) return *integer;
    if (const auto* real = std::get_if<double>(&slot)) return *real;
    if (const auto* text = std::get_if<std::unique_ptr<std::u16string>>(&slot)) return **text;
    if (const auto* bytes = std::get_if<std::unique_ptr<Bytes>>(&slot)) return **bytes;
    return {};
}

}  // namespace

SaveExecution::SaveExecution(ContextState& context)
    : context_(context),
      inserted_(context.pending(&EntityState::inserted)),
      updated_(context.pending(&EntityState::updated)),
      deleted_(context.pending(&EntityState::deleted)) {}

std::optional<StoreError> SaveExecution::run() {
    if (!context_.hasChanges()) return std::nullopt;
    SqliteStore* store = context_.store();
    if (!store) return StoreError{StoreError::Kind::kCannotOpen, localizedUtf8("no store is loaded")};
    const std::size_t statementsBefore = store->statementCount();
    SaveTransaction transaction(*store);
    if (!transaction.failed()) context_.updateReadVersion();
    for (const ManagedObject* object : deleted_) doomed_.emplace(&object->entity(), object->objectID().key);
    takeKeys(transaction);
    insertRows(transaction);
    for (ManagedObject* object : updated_) updateRow(transaction, *object);
    for (const ManagedObject* object : deleted_) {
        const ObjectState& state = ObjectState::of(*object);
        deleteRow(transaction, {state.entity, state.key}, state.version);
    }
    const std::optional<StoreError> error = transaction.commit();
    context_.statementCount += store->statementCount() - statementsBefore;
    if (error) return error;

    context_.noteOwnSave();
    for (ManagedObject* object : inserted_) settleInserted(*object);
    settleUpdated();
    settleDeleted();
    post();
    return std::nullopt;
}

void SaveExecution::takeKeys(SaveTransaction& transaction) {
    std::map<const EntityDescription*, std::int64_t> counts;
    for (const ManagedObject* object : inserted_) ++counts[&object->entity()];
    for (const auto& [entity, count] : counts) firstKeys_[entity] = transaction.takeKeys(*entity, count);
}

void SaveExecution::insertRows(SaveTransaction& transaction) {
    // Numbers first, so that rows can refer to one another.
    std::map<const EntityDescription*, std::int64_t> next = firstKeys_;
    for (ManagedObject* object : inserted_) ObjectState::of(*object).newKey = next[&object->entity()]++;
    for (const ManagedObject* object : inserted_) {
        if (transaction.failed()) return;
        fillValues(transaction, *object);
        transaction.insertRow(object->entity(), ObjectState::of(*object).newKey, values_);
    }
}

void SaveExecution::updateRow(SaveTransaction& transaction, ManagedObject& object) {
    if (transaction.failed()) return;
    ObjectState& state = ObjectState::of(object);
    fillValues(transaction, object);
    auto version = transaction.updateRow(*state.entity, state.key, state.version, values_);
    if (!version && !transaction.failed()) {
        // Somebody else has saved the row. What we did not change is theirs, and what we did goes on top.
        loadRows(context_, *state.entity, std::span(&state.key, 1));
        if (state.isMissing) return gone_.push_back(&object);
        if (!state.hasPropertyChanges()) return;
        fillValues(transaction, object);
        version = transaction.updateRow(*state.entity, state.key, state.version, values_);
    }
    if (version) versions_.emplace_back(&object, *version);
}

void SaveExecution::deleteRow(SaveTransaction& transaction, const Row& row, std::int64_t version) {
    if (transaction.failed()) return;
    const auto& [entity, key] = row;
    if (!transaction.deleteRow(*entity, key, version)) {
        const std::optional<std::int64_t> newVersion = transaction.version(*entity, key);
        if (newVersion) transaction.deleteRow(*entity, key, *newVersion);
    }
    settleReferences(transaction, row);
}

// What the rules did in memory is done again for rows that others have added meanwhile.
void SaveExecution::settleReferences(SaveTransaction& transaction, const Row& deleted) {
    const auto& [entity, key] = deleted;
    for (PropertyIndex i = 0; i < entity->properties().size(); ++i) {
        const PropertyDescription& property = entity->property(i);
        if (property.kind != PropertyKind::kToMany) continue;
        const EntityDescription& members = entity->destination(i);
        const PropertyIndex toOne = entity->inverse(i);
        if (property.deleteRule == DeleteRule::kNullify) {
            transaction.nullifyReferences(members, toOne, key);
            continue;
        }
        for (const std::int64_t member : transaction.referencingKeys(members, toOne, key)) {
            if (!doomed_.emplace(&members, member).second) continue;
            const std::optional<std::int64_t> version = transaction.version(members, member);
            if (version) deleteRow(transaction, {&members, member}, *version);
        }
    }
}

void SaveExecution::fillValues(SaveTransaction& transaction, const ManagedObject& object) {
    values_.clear();
    const ObjectState& state = ObjectState::of(object);
    if (!state.isTemporary) {
        for (const ChangedProperty& change : *state.changes) addValue(transaction, object, change.property);
        return;
    }
    for (PropertyIndex i = 0; i < state.entity->properties().size(); ++i) {
        const bool isSet = !std::holds_alternative<std::monostate>(state.slots[i]);
        if (isSet && state.entity->property(i).hasColumn()) addValue(transaction, object, i);
    }
}

void SaveExecution::addValue(SaveTransaction& transaction, const ManagedObject& object,
                             PropertyIndex property) {
    const Slot& slot = ObjectState::of(object).slots[property];
    const auto* target = std::get_if<ManagedObject*>(&slot);
    values_.emplace_back(property, target ? rowNumber(transaction, **target) : storedValue(slot));
    if (target && isNil(values_.back().second)) cleared_.push_back(&ObjectState::of(object).object);
}

// Nil when somebody else has deleted the row: that it is gone clears every reference to it.
Value SaveExecution::rowNumber(SaveTransaction& transaction, ManagedObject& target) {
    const ObjectState& state = ObjectState::of(target);
    if (state.isTemporary) return state.newKey;
    if (exists(transaction, target)) return state.key;
    return {};
}

bool SaveExecution::exists(SaveTransaction& transaction, ManagedObject& target) {
    const auto [entry, isNew] = existing_.try_emplace(&target, true);
    if (!isNew) return entry->second;
    const bool isThere = transaction.version(target.entity(), target.objectID().key).has_value();
    entry->second = isThere || transaction.failed();
    if (!entry->second) gone_.push_back(&target);
    return entry->second;
}

void SaveExecution::settleInserted(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    context_.makePermanent(object, state.newKey);
    state.version = kFirstVersion;
    state.readVersion = context_.readVersion;
    for (PropertyIndex i = 0; i < state.entity->properties().size(); ++i) {
        MemberList* list = memberListOf(state, i);
        if (!list) continue;
        RelationState& relation = context_.relation(*state.entity, i);
        list->epoch = relation.epoch;
        relation.hasLoadedMembers = true;
    }
}

void SaveExecution::settleUpdated() {
    for (const auto& [object, version] : versions_) {
        ObjectState& state = ObjectState::of(*object);
        state.version = version;
        state.changes.reset();
        context_.noteUnchanged(*object);
    }
    for (ManagedObject* object : cleared_) turnIntoFault(*object);
}

void SaveExecution::settleDeleted() {
    for (ManagedObject* object : deleted_) context_.noteSavedDeletion(*object);
    for (const Row& row : doomed_) {
        ManagedObject* object = context_.registered(*row.first, row.second);
        if (object) gone_.push_back(object);
    }
    std::ranges::sort(gone_);
    gone_.erase(std::unique(gone_.begin(), gone_.end()), gone_.end());
    for (ManagedObject* object : gone_) forgetDeletedElsewhere(context_, *object);
}

void SaveExecution::post() {
    ObjectChanges changes;
    changes.inserted.assign(inserted_.begin(), inserted_.end());
    for (const auto& [object, version] : versions_) changes.updated.emplace_back(object);
    changes.deleted.assign(deleted_.begin(), deleted_.end());
    changes.deleted.insert(changes.deleted.end(), gone_.begin(), gone_.end());
    NotificationCenter::defaultCenter().post({kDidSaveNotification, &context_.context, std::move(changes)});
}

}  // namespace corvane
