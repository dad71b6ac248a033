// Fetches of fixed queries, as accounts, lists and tasks ask them.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "platform/store/FetchRequest.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// Objects that are in memory and up to date keep their rows, and only the others are read, this many in one
/// statement.
inline constexpr std::size_t kReadWhenNeeded = 500;
inline constexpr std::size_t kReadAtOnce = 0;

inline const std::vector<SortDescriptor> kUnsorted = {};
inline const std::vector<SortDescriptor> kByPosition = {{"displayOrder"}};

/// The objects that fulfil a fixed text; without a context, or when the fetch fails, there are none.
template <class Object>
std::vector<Object*> fetchObjects(ManagedObjectContext* context, std::u16string_view format,
                                  std::initializer_list<PredicateArgument> arguments,
                                  const std::vector<SortDescriptor>& order,
                                  std::size_t batchSize = kReadAtOnce) {
    if (!context) return {};
    FetchRequest request;
    request.predicate = fixedPredicate(format, arguments);
    request.sortDescriptors = order;
    request.fetchBatchSize = batchSize;
    return context->fetch<Object>(std::move(request));
}

/// An object as a query's argument. Queries only look at it.
inline PredicateArgument argument(const ManagedObject* object) {
    return Value(const_cast<ManagedObject*>(object));
}

/// The first of several objects; null of none.
template <class Object>
Object* firstOf(const std::vector<Object*>& objects) {
    return objects.empty() ? nullptr : objects.front();
}

}  // namespace corvane
