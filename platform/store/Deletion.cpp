#include "platform/store/Deletion.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <vector>

#include "platform/store/RelationshipLoading.h"
#include "platform/store/Relationships.h"
#include "platform/store/RowLoading.h"

namespace corvane {

namespace {

using Objects = std::vector<ManagedObject*>;

class Deletion {
  public:
    explicit Deletion(ContextState& context) : context_(context) {}

    void run(ManagedObject& object) {
        for (Objects level = take({&object}); !level.empty();) level = take(cascadesOf(level));
        for (ManagedObject* doomed : order_) clearReferencesTo(*doomed);
        for (ManagedObject* doomed : order_) leaveOwners(*doomed);
        for (ManagedObject* doomed : order_) context_.noteDeletion(*doomed);
    }

  private:
    // Those that were not met yet.
    Objects take(const Objects& objects) {
        Objects taken;
        for (ManagedObject* object : objects) {
            if (object->isDeleted() || !doomed_.insert(object).second) continue;
            taken.push_back(object);
            order_.push_back(object);
        }
        return taken;
    }

    // Loads the members of a whole level, whatever their rule, and gives those that go along.
    Objects cascadesOf(const Objects& level) {
        std::map<const EntityDescription*, Objects> byEntity;
        for (ManagedObject* object : level) byEntity[&object->entity()].push_back(object);
        Objects cascades;
        for (const auto& [entity, objects] : byEntity) {
            for (PropertyIndex i = 0; i < entity->properties().size(); ++i) {
                const PropertyDescription& property = entity->property(i);
                if (property.kind != PropertyKind::kToMany) continue;
                loadMembersOf(context_, objects, i);
                if (property.deleteRule == DeleteRule::kNullify) continue;
                for (const ManagedObject* object : objects) {
                    const Objects& members = object->membersAt(i);
                    cascades.insert(cascades.end(), members.begin(), members.end());
                }
            }
        }
        return cascades;
    }

    void clearReferencesTo(ManagedObject& object) const {
        const EntityDescription& entity = object.entity();
        for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
            if (entity.property(i).kind != PropertyKind::kToMany) continue;
            const Objects members = object.membersAt(i);
            for (ManagedObject* member : members) {
                if (!doomed_.contains(member)) setRelatedObject(*member, entity.inverse(i), nullptr);
            }
        }
    }

    void leaveOwners(ManagedObject& object) const {
        const EntityDescription& entity = object.entity();
        for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
            if (entity.property(i).kind != PropertyKind::kToOne) continue;
            ManagedObject* owner = relatedObject(object, i);
            if (!owner || doomed_.contains(owner)) continue;
            owner->willChangeValueForKey(entity.property(i).inverse);
            removeMember(*owner, entity.inverse(i), object);
            owner->didChangeValueForKey(entity.property(i).inverse);
        }
    }

    ContextState& context_;
    std::unordered_set<const ManagedObject*> doomed_;
    Objects order_;
};

// A reference that is an unsaved change is given up; any other is what the file says, and is read again.
void dropReference(ManagedObject& member, PropertyIndex toOne) {
    ObjectState& state = ObjectState::of(member);
    if (state.isTemporary || state.changeOf(toOne)) return setRelatedObject(member, toOne, nullptr);
    turnIntoFault(member);
}

}  // namespace

void deleteByRules(ContextState& context, ManagedObject& object) {
    if (ObjectState::of(object).context != &context || object.isDeleted()) return;
    object.willAccess();
    Deletion(context).run(object);
}

void forgetDeletedElsewhere(ContextState& context, ManagedObject& object) {
    const EntityDescription& entity = object.entity();
    ObjectState& state = ObjectState::of(object);
    for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
        const PropertyKind kind = entity.property(i).kind;
        if (const MemberList* list = kind == PropertyKind::kToMany ? memberListOf(state, i) : nullptr) {
            const Objects members = list->objects;
            for (ManagedObject* member : members) dropReference(*member, entity.inverse(i));
        }
        ManagedObject* owner = kind == PropertyKind::kToOne ? relatedObject(object, i) : nullptr;
        if (owner) removeMember(*owner, entity.inverse(i), object);
    }
    context.noteGone(object);
}

}  // namespace corvane
