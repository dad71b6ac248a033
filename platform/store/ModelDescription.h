// The description of a model: entities with their attributes, relationships and indexes.
//
// An entity class declares its properties once, in a constexpr table; accessors, columns, tables and
// predicates all come from it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class ManagedObject;
class ManagedObjectContext;

enum class PropertyKind : std::uint8_t {
    kBoolean,
    kInt16,
    kInt32,
    kInt64,
    kDouble,
    kDate,
    kString,
    kTransformable,  ///< bytes in the file, an object through the named value transformer
    kToOne,
    kToMany,
};

enum class DeleteRule : std::uint8_t { kNullify, kCascade };

struct PropertyDescription {
    std::string_view name;
    PropertyKind kind = PropertyKind::kBoolean;
    std::string_view destination = {};  ///< entity at the other end of a relationship
    std::string_view inverse = {};
    DeleteRule deleteRule = DeleteRule::kNullify;  ///< what deletion of this object does to the related ones
    std::string_view transformer = {};             ///< name of the value transformer

    constexpr bool isRelationship() const {
        return kind == PropertyKind::kToOne || kind == PropertyKind::kToMany;
    }
    constexpr bool hasColumn() const { return kind != PropertyKind::kToMany; }
};

constexpr PropertyDescription attribute(std::string_view name, PropertyKind kind) { return {name, kind}; }
constexpr PropertyDescription transformable(std::string_view name, std::string_view transformer) {
    return {name, PropertyKind::kTransformable, {}, {}, DeleteRule::kNullify, transformer};
}
constexpr PropertyDescription toOne(std::string_view name, std::string_view destination,
                                    std::string_view inverse) {
    return {name, PropertyKind::kToOne, destination, inverse};
}
constexpr PropertyDescription toMany(std::string_view name, std::string_view destination,
                                     std::string_view inverse, DeleteRule deleteRule = DeleteRule::kNullify) {
    return {name, PropertyKind::kToMany, destination, inverse, deleteRule};
}

/// Position of a property in its entity's table.
using PropertyIndex = std::size_t;

/// An index of stores that we create. Only plain columns and constants, so that every SQLite program keeps it
/// up.
struct IndexDescription {
    std::string_view name;
    std::vector<std::string_view> properties;  ///< in order; to-one relationships allowed
    std::string_view where = {};               ///< SQL over the entity's columns, empty for a full index
};

class EntityDescription {
  public:
    using Factory = std::unique_ptr<ManagedObject> (*)(const EntityDescription&);

    EntityDescription(std::string_view name, std::span<const PropertyDescription> properties, Factory factory,
                      std::vector<IndexDescription> indexes = {});

    std::string_view name() const { return name_; }
    std::span<const PropertyDescription> properties() const { return properties_; }
    const std::vector<IndexDescription>& indexes() const { return indexes_; }
    std::unique_ptr<ManagedObject> makeObject() const;

    std::optional<PropertyIndex> indexOfProperty(std::string_view name) const;
    const PropertyDescription& property(PropertyIndex index) const { return properties_[index]; }

    // Of an entity that belongs to a model
    /// Position among the model's entities.
    std::size_t position() const { return position_; }
    const EntityDescription& destination(PropertyIndex relationship) const {
        return *relationships_[relationship].destination;
    }
    PropertyIndex inverse(PropertyIndex relationship) const { return relationships_[relationship].inverse; }

    /// "ZGTASK".
    const std::string& table() const { return table_; }
    /// "ZDUEDATE"; empty for a to-many relationship.
    const std::string& column(PropertyIndex index) const { return columns_[index]; }

  private:
    friend class ManagedObjectModel;
    struct Relationship {
        const EntityDescription* destination = nullptr;
        PropertyIndex inverse = 0;
    };

    std::string_view name_;
    std::span<const PropertyDescription> properties_;
    Factory factory_;
    std::vector<IndexDescription> indexes_;
    std::string table_;
    std::vector<std::string> columns_;
    std::vector<PropertyIndex> byName_;
    std::size_t position_ = 0;
    std::vector<Relationship> relationships_;  ///< by property; filled in by the model
};

/// Entities are identified by their address, so that a model is neither copied nor moved.
class ManagedObjectModel {
  public:
    /// @throws std::invalid_argument for a relationship without its inverse, for two to-one or two to-many
    ///         sides, and for an entity that is there twice
    ManagedObjectModel(std::string_view name, std::vector<EntityDescription> entities);
    ManagedObjectModel(const ManagedObjectModel&) = delete;
    ManagedObjectModel& operator=(const ManagedObjectModel&) = delete;

    std::string_view name() const { return name_; }
    const std::vector<EntityDescription>& entities() const { return entities_; }  ///< by name
    /// Null when the model has no such entity.
    const EntityDescription* entity(std::string_view name) const;
    /// The inverse of a relationship. The model is checked when it is made: every relationship has one.
    PropertyIndex inverseOf(const EntityDescription& entity, PropertyIndex relationship) const;
    const EntityDescription& destinationOf(const EntityDescription& entity, PropertyIndex relationship) const;

  private:
    void resolveRelationships(EntityDescription& entity);

    std::string_view name_;
    std::vector<EntityDescription> entities_;
};

}  // namespace corvane
