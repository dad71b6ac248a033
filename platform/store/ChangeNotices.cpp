#include "platform/store/ChangeNotices.h"

#include <utility>

#include "platform/foundation/Environment.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

namespace {

// Where an object belongs that was touched; one that came and went in between is in no list.
std::vector<ChangedObject>* listFor(ObjectState& state, ObjectChanges& changes) {
    const bool wasInserted = std::exchange(state.wasInserted, false);
    const bool wasDeleted = std::exchange(state.wasDeleted, false);
    if (wasInserted && wasDeleted) return nullptr;
    if (wasDeleted) return &changes.deleted;
    return wasInserted ? &changes.inserted : &changes.updated;
}

}  // namespace

void ChangeNotices::noteInsertion(ManagedObject& object) {
    touch(object);
    ObjectState::of(object).wasInserted = true;
}

void ChangeNotices::noteUpdate(ManagedObject& object) { touch(object); }

void ChangeNotices::noteDeletion(ManagedObject& object) {
    touch(object);
    ObjectState::of(object).wasDeleted = true;
}

void ChangeNotices::post() {
    if (isPosting_ || touched_.empty()) return;
    ObjectChanges changes;
    for (ManagedObject* object : std::exchange(touched_, {})) {
        ObjectState& state = ObjectState::of(*object);
        state.isTouched = false;
        if (auto* list = listFor(state, changes)) list->emplace_back(object);
    }
    token_.reset();
    if (changes.inserted.empty() && changes.updated.empty() && changes.deleted.empty()) return;
    isPosting_ = true;
    NotificationCenter::defaultCenter().post({kObjectsDidChangeNotification, &context_, std::move(changes)});
    isPosting_ = false;
}

void ChangeNotices::touch(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    if (state.isTouched) return;
    state.isTouched = true;
    if (touched_.empty()) schedule();
    touched_.push_back(&object);
}

void ChangeNotices::schedule() {
    token_ = std::make_shared<ChangeNotices*>(this);
    Environment::current().mainQueue->after(TimeInterval(0), [weak = std::weak_ptr(token_)] {
        if (const auto notices = weak.lock()) (*notices)->post();
    });
}

}  // namespace corvane
