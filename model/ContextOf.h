// The context of an object that must be in one.
#pragma once

namespace corvane {

class ManagedObject;
class ManagedObjectContext;

/// An object without a context is a fault of the caller and stops the program.
ManagedObjectContext& contextOf(const ManagedObject& object);

}  // namespace corvane
