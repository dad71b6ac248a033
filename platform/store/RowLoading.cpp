#include "platform/store/RowLoading.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/store/Relationships.h"
#include "platform/store/SqliteStore.h"

namespace corvane {

namespace {

using StorageClass = SqliteStatement::StorageClass;

constexpr int kKeyColumn = 0;
constexpr int kVersionColumn = 1;
constexpr int kFirstPropertyColumn = 2;

void assignColumn(Slot& slot, const SqliteStatement& statement, int column) {
    switch (statement.storageClass(column)) {
        case StorageClass::kNull:
            slot = std::monostate();
            return;
        case StorageClass::kInteger:
            slot = statement.integer(column);
            return;
        case StorageClass::kReal:
            slot = statement.real(column);
            return;
        case StorageClass::kText:
            assignUtf8(slot, statement.utf8(column));
            return;
        case StorageClass::kBlob: {
            const std::span<const std::uint8_t> bytes = statement.bytes(column);
            slot = std::make_unique<Bytes>(bytes.begin(), bytes.end());
            return;
        }
    }
}

std::size_t roomFor(std::size_t count) {
    constexpr std::array<std::size_t, 5> kSizes = {1, 4, 16, 64, 256};
    const auto* size = std::ranges::lower_bound(kSizes, count);
    return size != kSizes.end() ? *size : kLargestSlice;
}

// Row numbers of the faults of a slice, the first one among them.
std::vector<std::int64_t> faultKeys(std::span<ManagedObject* const> slice) {
    std::vector<std::int64_t> keys;
    for (const ManagedObject* object : slice) {
        const ObjectState& state = ObjectState::of(*object);
        if (state.isPersistent() && !state.isLoaded && !state.isMissing) keys.push_back(state.key);
    }
    return keys;
}

// The row number that a to-one property refers to while its object is not in memory.
std::optional<std::int64_t> unloadedKey(ContextState& context, const ManagedObject& source,
                                        PropertyIndex toOne) {
    const ObjectState& state = ObjectState::of(source);
    if (!state.slots || !state.isLoaded) return std::nullopt;
    const Slot& slot = state.slots[toOne];
    const ManagedObject* object = nullptr;
    if (const auto* known = std::get_if<ManagedObject*>(&slot)) object = *known;
    const auto* key = std::get_if<std::int64_t>(&slot);
    if (key) object = context.registered(state.entity->destination(toOne), *key);
    if (!object) return key ? std::optional(*key) : std::nullopt;
    const ObjectState& related = ObjectState::of(*object);
    if (!related.isPersistent() || related.isLoaded || related.isMissing) return std::nullopt;
    return related.key;
}

// What the neighbours of the fault's referrer refer to through the same relationships.
std::vector<std::int64_t> keysBesideReferrer(ContextState& context, ManagedObject& fault) {
    const ManagedObject& referrer = *ObjectState::of(fault).referrer;
    const ObjectState& state = ObjectState::of(referrer);
    std::vector<std::int64_t> keys;
    const auto properties = state.entity->properties();
    for (PropertyIndex i = 0; i < properties.size(); ++i) {
        const bool leadsHere =
            state.slots && properties[i].kind == PropertyKind::kToOne && state.slots[i] == Slot(&fault);
        if (!leadsHere) continue;
        for (const ManagedObject* neighbour : neighboursOf(state)) {
            if (const auto key = unloadedKey(context, *neighbour, i)) keys.push_back(*key);
        }
    }
    return keys;
}

void keepDistinct(std::vector<std::int64_t>& keys, std::int64_t needed) {
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    if (keys.size() > kLargestSlice) keys.resize(kLargestSlice);
    if (!std::ranges::binary_search(keys, needed)) {
        if (keys.size() == kLargestSlice) keys.pop_back();
        keys.push_back(needed);
    }
}

}  // namespace

void formGroup(const std::shared_ptr<LoadGroup>& group) {
    for (std::size_t i = 0; i < group->objects.size(); ++i) {
        ObjectState& state = ObjectState::of(*group->objects[i]);
        state.group = group;
        state.position = static_cast<std::uint32_t>(i);
    }
}

std::span<ManagedObject* const> neighboursOf(const ObjectState& state) {
    if (!state.group) return {};
    const std::vector<ManagedObject*>& objects = state.group->objects;
    const std::size_t size = state.group->sliceSize;
    const std::size_t start = state.position / size * size;
    return std::span(objects).subspan(start, std::min(size, objects.size() - start));
}

RowReader::RowReader(ContextState& context, const EntityDescription& entity, const SelectList& list,
                     int firstColumn)
    : context_(context),
      entity_(entity),
      firstColumn_(firstColumn),
      endColumn_(firstColumn + kFirstPropertyColumn + static_cast<int>(list.properties.size())),
      properties_(list.properties) {
    for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
        const bool isRead = std::ranges::find(properties_, i) != properties_.end();
        if (!isRead && entity.property(i).hasColumn()) missing_.push_back(i);
    }
}

bool RowReader::hasRow(const SqliteStatement& statement) const {
    return statement.storageClass(firstColumn_ + kKeyColumn) != StorageClass::kNull;
}

ManagedObject& RowReader::read(const SqliteStatement& statement, std::uint32_t serial) const {
    ManagedObject& object = context_.objectWithKey(entity_, statement.integer(firstColumn_ + kKeyColumn));
    ObjectState& state = ObjectState::of(object);
    if (state.readSerial == serial) return object;
    state.readSerial = serial;
    fill(statement, object);
    return object;
}

void RowReader::fill(const SqliteStatement& statement, ManagedObject& object) const {
    ObjectState& state = ObjectState::of(object);
    state.ensureSlots();
    state.version = statement.integer(firstColumn_ + kVersionColumn);
    int column = firstColumn_ + kFirstPropertyColumn;
    for (const PropertyIndex property : properties_) fillSlot(statement, column++, object, property);
    for (const PropertyIndex property : missing_) {
        state.storedSlot(property) = defaultSlot(entity_.property(property).kind);
    }
    if (state.hasPropertyChanges()) {
        state.dropChangesThatTheRowHas();
        if (!state.hasPropertyChanges()) context_.noteUnchanged(object);
    }
    state.isLoaded = true;
    state.isMissing = false;
    state.readVersion = context_.readVersion;
    state.tellOfFreshValues();
}

void RowReader::fillSlot(const SqliteStatement& statement, int column, ManagedObject& object,
                         PropertyIndex property) const {
    ObjectState& state = ObjectState::of(object);
    Slot& slot = state.hasPropertyChanges() ? state.storedSlot(property) : state.slots[property];
    if (entity_.property(property).kind != PropertyKind::kToOne) return assignColumn(slot, statement, column);
    Slot fresh;
    assignColumn(fresh, statement, column);
    // An object that was found already is kept, to spare the next look at it.
    const auto* known = std::get_if<ManagedObject*>(&slot);
    const bool isGone = known && ObjectState::of(**known).isGone;
    if (!isGone && isSameValue(slot, fresh)) return;
    if (!state.changeOf(property) && !state.isDeleted()) moveMember(object, property, slot, fresh);
    slot = std::move(fresh);
}

RowPlan::RowPlan(ContextState& context, const EntityDescription& entity,
                 std::span<const SqlQuery::JoinedPath> paths)
    : serial_(context.nextSerial()), row_(context, entity, context.store()->selectList(entity), 0) {
    selectText_ = context.store()->selectList(entity).text;
    for (const SqlQuery::JoinedPath& path : paths) addJoin(context, entity, path);
    sources_.resize(joins_.size() + 1);
}

void RowPlan::addJoin(ContextState& context, const EntityDescription& entity,
                      const SqlQuery::JoinedPath& path) {
    const SelectList& list = context.store()->selectList(*path.entity, path.alias);
    const int firstColumn = joins_.empty() ? row_.endColumn() : joins_.back().reader.endColumn();
    const std::size_t dot = path.keyPath.rfind('.');
    const bool isDirect = dot == std::string::npos;
    const std::string_view sourcePath = std::string_view(path.keyPath).substr(0, isDirect ? 0 : dot);
    const std::string_view name = std::string_view(path.keyPath).substr(isDirect ? 0 : dot + 1);
    const auto source = std::ranges::find(joins_, sourcePath, &Join::keyPath);
    if (!isDirect && source == joins_.end()) return;
    const EntityDescription& sourceEntity = isDirect ? entity : *source->entity;
    const std::optional<PropertyIndex> relationship = sourceEntity.indexOfProperty(name);
    if (!relationship) return;
    const auto sourcePosition = isDirect ? 0 : static_cast<std::size_t>(source - joins_.begin()) + 1;
    joins_.push_back({path.keyPath, path.entity, RowReader(context, *path.entity, list, firstColumn),
                      sourcePosition, *relationship});
    selectText_ += ", " + list.text;
}

ManagedObject& RowPlan::read(const SqliteStatement& statement) const {
    ManagedObject& object = row_.read(statement, serial_);
    sources_[0] = &object;
    for (std::size_t i = 0; i < joins_.size(); ++i) {
        ManagedObject* source = sources_[joins_[i].source];
        sources_[i + 1] = source ? readJoined(statement, joins_[i], *source) : nullptr;
    }
    return object;
}

ManagedObject* RowPlan::readJoined(const SqliteStatement& statement, const Join& join,
                                   ManagedObject& source) const {
    ObjectState& state = ObjectState::of(source);
    if (!join.reader.hasRow(statement)) {
        ManagedObject* absent =
            state.changeOf(join.relationship) ? nullptr : relatedObject(source, join.relationship);
        if (absent && ObjectState::of(*absent).isPersistent()) markMissing(*absent);
        return nullptr;
    }
    ManagedObject& target = join.reader.read(statement, serial_);
    Slot& slot = state.storedSlot(join.relationship);
    if (std::holds_alternative<std::int64_t>(slot)) slot = &target;
    return &target;
}

std::string inList(std::size_t count) {
    std::string text = " IN (?";
    for (std::size_t room = roomFor(count); room > 1; --room) text += ",?";
    return text + ")";
}

void bindInList(SqliteStatement& statement, std::span<const std::int64_t> keys) {
    const std::size_t room = roomFor(keys.size());
    for (std::size_t i = 0; i < room; ++i) {
        statement.bindInteger(static_cast<int>(i) + 1, i < keys.size() ? keys[i] : keys.back());
    }
}

void loadRows(ContextState& context, const EntityDescription& entity, std::span<const std::int64_t> keys,
              const LoadGroup* joined) {
    if (keys.empty() || !context.store()) return;
    std::span<const SqlQuery::JoinedPath> paths;
    if (joined) paths = joined->joinedPaths;
    const RowPlan plan(context, entity, paths);
    auto prepared =
        context.prepare("SELECT " + plan.selectText() + " FROM " + entity.table() + " t0" +
                        (joined ? joined->joins : std::string()) + " WHERE t0.Z_PK" + inList(keys.size()));
    auto* statement = std::get_if<SqliteStatement>(&prepared);
    if (!statement) return;
    bindInList(*statement, keys);
    auto group = std::make_shared<LoadGroup>();
    auto step = statement->step();
    for (; step == SqliteStatement::Step::kRow; step = statement->step()) {
        group->objects.push_back(&plan.read(*statement));
    }
    if (step == SqliteStatement::Step::kError) return;
    for (const std::int64_t key : keys) {
        ManagedObject& object = context.objectWithKey(entity, key);
        if (ObjectState::of(object).readSerial != plan.serial()) markMissing(object);
    }
    if (!joined) formGroup(group);
}

void loadFault(ManagedObject& fault) {
    const ObjectState& state = ObjectState::of(fault);
    ContextState& context = *state.context;
    std::vector<std::int64_t> keys = faultKeys(neighboursOf(state));
    if (state.referrer) {
        const std::vector<std::int64_t> beside = keysBesideReferrer(context, fault);
        keys.insert(keys.end(), beside.begin(), beside.end());
    }
    keepDistinct(keys, state.key);
    // The group is kept while its joins are in use.
    const std::shared_ptr<LoadGroup> group = state.group;
    loadRows(context, *state.entity, keys, group && !group->joins.empty() ? group.get() : nullptr);
}

void turnIntoFault(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    state.isLoaded = false;
    state.isMissing = false;
    state.tellOfFreshValues();
}

void markMissing(ManagedObject& object) {
    ObjectState& state = ObjectState::of(object);
    if (state.isDeleted()) return;
    state.isMissing = true;
    if (!state.slots || state.hasPropertyChanges()) return;
    const auto properties = state.entity->properties();
    for (PropertyIndex i = 0; i < properties.size(); ++i) {
        if (properties[i].kind == PropertyKind::kToOne) moveMember(object, i, state.slots[i], Slot());
    }
    state.resetValues();
}

}  // namespace corvane
