#include "platform/store/RelationshipLoading.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/store/ContextState.h"
#include "platform/store/Relationships.h"
#include "platform/store/RowLoading.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

namespace {

using MembersByOwner = std::unordered_map<const ManagedObject*, std::vector<ManagedObject*>>;

bool lacksMembers(const ManagedObject& owner, PropertyIndex toMany) {
    const ObjectState& state = ObjectState::of(owner);
    return state.isPersistent() && !state.isMissing && !hasLoadedMembers(state, toMany);
}

// Rows of the members of these owners as the file has them. None on an error.
std::optional<std::vector<ManagedObject*>> readMembers(ContextState& context,
                                                       const EntityDescription& members, PropertyIndex toOne,
                                                       std::span<ManagedObject* const> owners) {
    const RowPlan plan(context, members);
    if (!context.store()->hasColumn(members, toOne)) return std::vector<ManagedObject*>();
    auto prepared = context.prepare("SELECT " + plan.selectText() + " FROM " + members.table() +
                                    " t0 WHERE t0." + members.column(toOne) + inList(owners.size()));
    auto* statement = std::get_if<SqliteStatement>(&prepared);
    if (!statement) return std::nullopt;
    std::vector<std::int64_t> keys;
    for (const ManagedObject* owner : owners) keys.push_back(ObjectState::of(*owner).key);
    bindInList(*statement, keys);
    std::vector<ManagedObject*> objects;
    auto step = statement->step();
    for (; step == SqliteStatement::Step::kRow; step = statement->step()) {
        objects.push_back(&plan.read(*statement));
    }
    if (step == SqliteStatement::Step::kError) return std::nullopt;
    return objects;
}

// Who belongs to whom after unsaved changes: rows that were moved away are left out, objects that were moved
// here or are not saved yet are taken from the list that the owner has.
MembersByOwner currentMembers(std::span<ManagedObject* const> owners, PropertyIndex toMany,
                              PropertyIndex toOne, const std::vector<ManagedObject*>& rows) {
    MembersByOwner members;
    for (const ManagedObject* owner : owners) members[owner];
    for (ManagedObject* row : rows) {
        if (ObjectState::of(*row).isDeleted()) continue;
        const auto found = members.find(relatedObject(*row, toOne));
        if (found != members.end()) found->second.push_back(row);
    }
    for (const ManagedObject* owner : owners) {
        const MemberList* list = memberListOf(ObjectState::of(*owner), toMany);
        if (!list) continue;
        for (ManagedObject* member : list->objects) {
            const ObjectState& state = ObjectState::of(*member);
            const bool isUnsaved = state.isTemporary || state.changeOf(toOne);
            if (isUnsaved && !state.isDeleted() && relatedObject(*member, toOne) == owner) {
                members[owner].push_back(member);
            }
        }
    }
    return members;
}

void putMembers(ManagedObject& owner, PropertyIndex toMany, std::uint32_t epoch,
                std::vector<ManagedObject*> members) {
    std::ranges::sort(members, isMemberBefore);
    members.erase(std::unique(members.begin(), members.end()), members.end());
    Slot& slot = ObjectState::of(owner).ensureSlots()[toMany];
    auto* list = std::get_if<std::unique_ptr<MemberList>>(&slot);
    if (!list) list = &slot.emplace<std::unique_ptr<MemberList>>(std::make_unique<MemberList>());
    if ((*list)->objects != members) {
        (*list)->replaced = std::move((*list)->objects);
        (*list)->objects = std::move(members);
    }
    (*list)->epoch = epoch;
}

void loadSlice(ContextState& context, std::span<ManagedObject* const> owners, PropertyIndex toMany) {
    const EntityDescription& entity = owners.front()->entity();
    const EntityDescription& destination = entity.destination(toMany);
    const PropertyIndex toOne = entity.inverse(toMany);
    auto rows = readMembers(context, destination, toOne, owners);
    if (!rows) return;
    MembersByOwner members = currentMembers(owners, toMany, toOne, *rows);
    RelationState& relation = context.relation(entity, toMany);
    relation.hasLoadedMembers = true;
    for (ManagedObject* owner : owners) putMembers(*owner, toMany, relation.epoch, std::move(members[owner]));
    auto group = std::make_shared<LoadGroup>();
    group->objects = std::move(*rows);
    formGroup(group);
}

}  // namespace

void loadMembers(ManagedObject& owner, PropertyIndex toMany) {
    const ObjectState& state = ObjectState::of(owner);
    std::vector<ManagedObject*> owners;
    for (ManagedObject* neighbour : neighboursOf(state)) {
        if (neighbour != &owner && lacksMembers(*neighbour, toMany)) owners.push_back(neighbour);
    }
    if (owners.size() >= kLargestSlice) owners.resize(kLargestSlice - 1);
    owners.push_back(&owner);
    if (state.context->store()) loadSlice(*state.context, owners, toMany);
}

void loadMembersOf(ContextState& context, std::span<ManagedObject* const> owners, PropertyIndex toMany) {
    std::vector<ManagedObject*> lacking;
    std::ranges::copy_if(owners, std::back_inserter(lacking),
                         [&](const ManagedObject* owner) { return lacksMembers(*owner, toMany); });
    if (!context.store()) return;
    for (std::size_t i = 0; i < lacking.size(); i += kLargestSlice) {
        loadSlice(context, std::span(lacking).subspan(i, std::min(kLargestSlice, lacking.size() - i)),
                  toMany);
    }
}

void loadFresh(ContextState& context, std::span<ManagedObject* const> objects) {
    std::vector<std::int64_t> keys;
    for (const ManagedObject* object : objects) {
        const ObjectState& state = ObjectState::of(*object);
        const bool isFresh = state.isLoaded && state.readVersion == context.readVersion;
        if (state.isPersistent() && !state.isMissing && !isFresh) keys.push_back(state.key);
    }
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    for (std::size_t i = 0; i < keys.size(); i += kLargestSlice) {
        const std::size_t count = std::min(kLargestSlice, keys.size() - i);
        loadRows(context, objects.front()->entity(), std::span(keys).subspan(i, count));
    }
}

}  // namespace corvane
