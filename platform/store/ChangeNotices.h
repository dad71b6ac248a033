// Groups the changes of a context and tells of them once. For the store's own sources.
#pragma once

#include <memory>
#include <vector>

namespace corvane {

class ManagedObject;
class ManagedObjectContext;

class ChangeNotices {
  public:
    explicit ChangeNotices(ManagedObjectContext& context) : context_(context) {}

    // Each names one change; an object takes part in the group once, whatever happens to it.
    void noteInsertion(ManagedObject& object);
    void noteUpdate(ManagedObject& object);
    void noteDeletion(ManagedObject& object);

    /// Posts kObjectsDidChangeNotification when there is something to tell. What a handler changes belongs to
    /// the next group.
    void post();

  private:
    void touch(ManagedObject& object);
    void schedule();

    ManagedObjectContext& context_;
    std::vector<ManagedObject*> touched_;
    bool isPosting_ = false;
    /// Blocks on the main queue hold it weakly, so that none outlives the context.
    std::shared_ptr<ChangeNotices*> token_;
};

}  // namespace corvane
