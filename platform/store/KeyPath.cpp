#include "platform/store/KeyPath.h"

#include <algorithm>

#include "platform/foundation/Localization.h"
#include "platform/store/PredicateKeywords.h"

namespace corvane {

namespace {

constexpr std::u16string_view kCountOperator = u"@count";

bool isKey(std::u16string_view text) {
    return !text.empty() && isNameStart(text.front()) && std::ranges::all_of(text, isNamePart);
}

// Reads one part between dots into the path; gives what is wrong with it, else none.
std::optional<PredicateError> addPart(KeyPath& path, std::u16string_view part, bool isFirst) {
    if (path.isCount) return PredicateError{0, localizedUtf8("@count is the end of a key path")};
    if (part == kCountOperator && !path.steps.empty()) {
        path.isCount = true;
        return std::nullopt;
    }
    if (part.starts_with(u'@')) {
        return PredicateError{
            0, localizedUtf8("expected a key; the only collection operator is @count, after a relationship")};
    }
    if (isFirst && equalsIgnoringAsciiCase(part, u"SELF")) return std::nullopt;
    const bool isEscaped = part.starts_with(u'#');
    if (isEscaped) part.remove_prefix(1);
    if (!isKey(part))
        return PredicateError{isEscaped ? 1u : 0u, localizedUtf8("expected a key: letters, digits and _")};
    if (path.steps.size() == kMaxKeyPathSteps)
        return PredicateError{0, localizedUtf8("the key path has too many steps")};
    path.steps.push_back({std::string(part.begin(), part.end())});
    return std::nullopt;
}

// Values hold objects as the store hands them out; comparing one changes nothing.
ValueView viewOfObject(const ManagedObject& object) { return const_cast<ManagedObject*>(&object); }

// Null where the object or its key is missing.
const ManagedObject* relatedObject(const ManagedObject& object, const KeyStep& step) {
    const std::optional<PropertyIndex> index = step.indexIn(object.entity());
    if (!index) return nullptr;
    const ValueView value = object.viewAt(*index);
    const auto* related = std::get_if<ManagedObject*>(&value);
    return related ? *related : nullptr;
}

// Null where the key is missing or is no to-many relationship.
const std::vector<ManagedObject*>* membersAtStep(const ManagedObject& object, const KeyStep& step) {
    const std::optional<PropertyIndex> index = step.indexIn(object.entity());
    if (!index || object.entity().property(*index).kind != PropertyKind::kToMany) return nullptr;
    // Rows that point at a row that is not there are nobody's members, as in a join. A fault does not know
    // yet whether its row is there.
    object.willAccess();
    static const std::vector<ManagedObject*> none;
    return ObjectState::of(object).isThere() ? &object.membersAt(*index) : &none;
}

ValueView valueAtStep(const ManagedObject& object, const KeyStep& step) {
    const std::optional<PropertyIndex> index = step.indexIn(object.entity());
    return index ? object.viewAt(*index) : ValueView();
}

std::int64_t countAtStep(const ManagedObject& object, const KeyStep& step) {
    const std::vector<ManagedObject*>* members = membersAtStep(object, step);
    return members ? static_cast<std::int64_t>(members->size()) : 0;
}

ValueView valueAtSteps(const ManagedObject& object, std::span<const KeyStep> steps, bool isCount) {
    if (steps.empty()) return viewOfObject(object);
    const ManagedObject* holder = &object;
    for (const KeyStep& step : steps.first(steps.size() - 1)) {
        holder = relatedObject(*holder, step);
        if (!holder) return isCount ? ValueView(std::int64_t{0}) : ValueView();
    }
    if (isCount) return countAtStep(*holder, steps.back());
    return valueAtStep(*holder, steps.back());
}

// Looks through the members of the to-many relationships at the front of the steps.
bool anyMemberValue(const std::vector<ManagedObject*>& members, std::span<const KeyStep> steps, bool isCount,
                    const std::function<bool(const ValueView&)>& fulfils) {
    return std::ranges::any_of(members, [&](const ManagedObject* member) {
        const bool isCounted = isCount && steps.size() == 1;
        if (!steps.empty() && !isCounted) {
            if (const auto* inner = membersAtStep(*member, steps.front())) {
                return anyMemberValue(*inner, steps.subspan(1), isCount, fulfils);
            }
        }
        return fulfils(valueAtSteps(*member, steps, isCount));
    });
}

}  // namespace

std::optional<PropertyIndex> KeyStep::indexIn(const EntityDescription& entity) const {
    if (position < entity.properties().size() && entity.property(position).name == key) return position;
    const std::optional<PropertyIndex> found = entity.indexOfProperty(key);
    if (found) position = *found;
    return found;
}

std::variant<KeyPath, PredicateError> keyPathFromText(std::u16string_view text) {
    KeyPath path;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(u'.', start), text.size());
        if (std::optional<PredicateError> error =
                addPart(path, text.substr(start, end - start), start == 0)) {
            error->position += start;
            return *error;
        }
        start = end + 1;
    }
    return path;
}

std::u16string textFromKeyPath(const KeyPath& path) {
    if (path.steps.empty()) return u"SELF";
    std::u16string text;
    for (const KeyStep& step : path.steps) {
        if (!text.empty()) text += u'.';
        const std::u16string key(step.key.begin(), step.key.end());
        if (keywordFromText(key)) text += u'#';
        text += key;
    }
    if (path.isCount) text.append(u".").append(kCountOperator);
    return text;
}

ValueView valueOfKeyPath(const ManagedObject& object, const KeyPath& path) {
    return valueAtSteps(object, path.steps, path.isCount);
}

bool anyValueOfKeyPath(const ManagedObject& object, const KeyPath& path,
                       const std::function<bool(const ValueView&)>& fulfils) {
    const ManagedObject* holder = &object;
    std::span<const KeyStep> steps = path.steps;
    while (holder && !steps.empty()) {
        if (const auto* members = membersAtStep(*holder, steps.front())) {
            return anyMemberValue(*members, steps.subspan(1), path.isCount, fulfils);
        }
        holder = relatedObject(*holder, steps.front());
        steps = steps.subspan(1);
    }
    return false;
}

}  // namespace corvane
