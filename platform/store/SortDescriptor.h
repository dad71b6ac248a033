// Sort keys of a fetch.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace corvane {

class ManagedObject;

struct SortDescriptor {
    enum class Comparison { kPlain, kLocalizedCaseInsensitive };

    std::string keyPath;  ///< "list.name": to-one relationships, then an attribute
    bool ascending = true;
    Comparison comparison = Comparison::kPlain;

    bool operator==(const SortDescriptor&) const = default;
};

/// Orders objects of one entity as the store orders their rows: nil first when ascending, ties by row number
/// with unsaved objects last in the order of their insertion. A strict total order, fit for std::sort.
class ObjectOrder {
  public:
    explicit ObjectOrder(const std::vector<SortDescriptor>& keys);
    ~ObjectOrder();
    ObjectOrder(const ObjectOrder&);
    ObjectOrder& operator=(const ObjectOrder&) = delete;

    bool operator()(const ManagedObject* a, const ManagedObject* b) const;

  private:
    struct Keys;
    std::shared_ptr<const Keys> keys_;
};

}  // namespace corvane
