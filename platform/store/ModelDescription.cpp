#include "platform/store/ModelDescription.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "platform/store/ManagedObject.h"

namespace corvane {

namespace {

// Names are ASCII identifiers; the locale must not decide about their capitals.
std::string nameInFile(std::string_view name) {
    std::string result = "Z";
    for (const char c : name) result += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return result;
}

[[noreturn]] void refuse(const EntityDescription& entity, std::string_view property, const char* why) {
    throw std::invalid_argument(std::string(entity.name()) + "." + std::string(property) + " " + why);
}

}  // namespace

EntityDescription::EntityDescription(std::string_view name, std::span<const PropertyDescription> properties,
                                     Factory factory, std::vector<IndexDescription> indexes)
    : name_(name),
      properties_(properties),
      factory_(factory),
      indexes_(std::move(indexes)),
      table_(nameInFile(name)),
      byName_(properties.size()),
      relationships_(properties.size()) {
    for (const PropertyDescription& property : properties_) {
        columns_.push_back(property.hasColumn() ? nameInFile(property.name) : std::string());
    }
    std::iota(byName_.begin(), byName_.end(), PropertyIndex{0});
    std::ranges::sort(byName_, {}, [&](PropertyIndex i) { return properties_[i].name; });
}

std::unique_ptr<ManagedObject> EntityDescription::makeObject() const { return factory_(*this); }

std::optional<PropertyIndex> EntityDescription::indexOfProperty(std::string_view name) const {
    const auto nameAt = [&](PropertyIndex i) { return properties_[i].name; };
    const auto found = std::ranges::lower_bound(byName_, name, {}, nameAt);
    if (found == byName_.end() || nameAt(*found) != name) return std::nullopt;
    return *found;
}

ManagedObjectModel::ManagedObjectModel(std::string_view name, std::vector<EntityDescription> entities)
    : name_(name), entities_(std::move(entities)) {
    std::ranges::sort(entities_, {}, &EntityDescription::name);
    const auto twice = std::ranges::adjacent_find(entities_, {}, &EntityDescription::name);
    if (twice != entities_.end()) throw std::invalid_argument(std::string(twice->name()) + " is there twice");
    for (EntityDescription& entity : entities_) {
        entity.position_ = static_cast<std::size_t>(&entity - entities_.data());
        resolveRelationships(entity);
    }
}

const EntityDescription* ManagedObjectModel::entity(std::string_view name) const {
    const auto found = std::ranges::lower_bound(entities_, name, {}, &EntityDescription::name);
    return found != entities_.end() && found->name() == name ? &*found : nullptr;
}

PropertyIndex ManagedObjectModel::inverseOf(const EntityDescription& entity,
                                            PropertyIndex relationship) const {
    return entity.inverse(relationship);
}

const EntityDescription& ManagedObjectModel::destinationOf(const EntityDescription& entity,
                                                           PropertyIndex relationship) const {
    return entity.destination(relationship);
}

void ManagedObjectModel::resolveRelationships(EntityDescription& entity) {
    for (PropertyIndex i = 0; i < entity.properties_.size(); ++i) {
        const PropertyDescription& property = entity.properties_[i];
        if (!property.isRelationship()) continue;
        const EntityDescription* destination = this->entity(property.destination);
        if (!destination) refuse(entity, property.name, "leads to an unknown entity");
        const std::optional<PropertyIndex> inverse = destination->indexOfProperty(property.inverse);
        if (!inverse) refuse(entity, property.name, "has no inverse");
        const PropertyDescription& other = destination->property(*inverse);
        if (other.destination != entity.name_ || other.inverse != property.name) {
            refuse(entity, property.name, "is not the inverse of its inverse");
        }
        // A to-many side has its rows in the other side's column; without one there is nothing to store.
        if (other.kind == property.kind)
            refuse(entity, property.name, "needs one to-one and one to-many side");
        entity.relationships_[i] = {destination, *inverse};
    }
}

}  // namespace corvane
