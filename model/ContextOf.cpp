#include "model/ContextOf.h"

#include <cstdio>
#include <cstdlib>

#include "platform/store/ManagedObject.h"

namespace corvane {

ManagedObjectContext& contextOf(const ManagedObject& object) {
    ManagedObjectContext* moc = object.managedObjectContext();
    if (moc) return *moc;
    std::fputs("Assertion failed: moc != nil\n", stderr);
    std::abort();
}

}  // namespace corvane
