#include "platform/store/SortDescriptor.h"

#include <algorithm>
#include <compare>
#include <tuple>
#include <utility>

#include "platform/foundation/Locale.h"
#include "platform/store/KeyPath.h"
#include "platform/store/ManagedObject.h"
#include "platform/store/PredicateOperators.h"

namespace corvane {

namespace {

struct SortKey {
    KeyPath path;
    bool ascending = true;
    SortDescriptor::Comparison comparison = SortDescriptor::Comparison::kPlain;
};

int compareSortValues(const ValueView& a, const ValueView& b, SortDescriptor::Comparison comparison) {
    const bool aIsNil = isNilValue(a);
    const bool bIsNil = isNilValue(b);
    if (aIsNil || bIsNil) return static_cast<int>(bIsNil) - static_cast<int>(aIsNil);
    const auto* aText = std::get_if<std::u16string_view>(&a);
    const auto* bText = std::get_if<std::u16string_view>(&b);
    if (comparison == SortDescriptor::Comparison::kLocalizedCaseInsensitive && aText && bText) {
        return Locale::current().localizedCaseInsensitiveCompare(*aText, *bText);
    }
    return compareValues(a, b);
}

bool hasLowerIdentity(const ManagedObject& a, const ManagedObject& b) {
    const ManagedObjectID aID = a.objectID();
    const ManagedObjectID bID = b.objectID();
    return std::tie(aID.isTemporary, aID.key) < std::tie(bID.isTemporary, bID.key);
}

}  // namespace

struct ObjectOrder::Keys {
    std::vector<SortKey> keys;
};

ObjectOrder::ObjectOrder(const std::vector<SortDescriptor>& keys) {
    Keys prepared;
    for (const SortDescriptor& key : keys) {
        std::variant<KeyPath, PredicateError> path =
            keyPathFromText(std::u16string(key.keyPath.begin(), key.keyPath.end()));
        if (auto* read = std::get_if<KeyPath>(&path)) {
            prepared.keys.push_back({std::move(*read), key.ascending, key.comparison});
        }
    }
    keys_ = std::make_shared<const Keys>(std::move(prepared));
}

ObjectOrder::~ObjectOrder() = default;
ObjectOrder::ObjectOrder(const ObjectOrder&) = default;

bool ObjectOrder::operator()(const ManagedObject* a, const ManagedObject* b) const {
    for (const SortKey& key : keys_->keys) {
        const int order =
            compareSortValues(valueOfKeyPath(*a, key.path), valueOfKeyPath(*b, key.path), key.comparison);
        if (order != 0) return (order < 0) == key.ascending;
    }
    return hasLowerIdentity(*a, *b);
}

}  // namespace corvane
