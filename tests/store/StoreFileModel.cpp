#include "StoreFileModel.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/store/ManagedObject.h"

namespace corvane {
namespace {

using Properties = std::vector<PropertyDescription>;

void addAll(Properties& properties, PropertyKind kind, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) properties.push_back(attribute(name, kind));
}

Properties userProperties() {
    Properties properties{toMany("lists", "GList", "user", DeleteRule::kCascade)};
    addAll(properties, PropertyKind::kInt16, {"displayOrder", "accountType"});
    addAll(properties, PropertyKind::kBoolean, {"isDefault"});
    addAll(properties, PropertyKind::kString, {"password", "name"});
    addAll(properties, PropertyKind::kDate, {"createdTimestamp"});
    return properties;
}

Properties listProperties() {
    Properties properties{transformable("color", "ColorTransformer"), toOne("user", "GUser", "lists"),
                          toMany("tasks", "GTask", "list")};
    addAll(properties, PropertyKind::kString, {"name", "id"});
    addAll(properties, PropertyKind::kBoolean,
           {"removed", "isReadonly", "isIsolated", "isImmutable", "isDefault", "hideCompletedTasks"});
    addAll(properties, PropertyKind::kInt32, {"properties"});
    addAll(properties, PropertyKind::kInt16, {"displayOrder"});
    addAll(properties, PropertyKind::kInt64, {"lastModified"});
    addAll(properties, PropertyKind::kDate, {"tasksLastModified", "createdTimestamp"});
    return properties;
}

Properties taskProperties() {
    Properties properties{toOne("parentTask", "GTask", "subTasks"), toOne("list", "GList", "tasks"),
                          toMany("subTasks", "GTask", "parentTask")};
    addAll(properties, PropertyKind::kString,
           {"regionDescription", "notes", "name", "id", "alertRepeatData"});
    addAll(properties, PropertyKind::kDouble, {"regionRadius", "regionLong", "regionLat", "regionAccuracy"});
    addAll(properties, PropertyKind::kDate, {"dueDate", "createdTimestamp", "completedDate", "alertDate"});
    addAll(properties, PropertyKind::kBoolean,
           {"removed", "hidden", "hasDueTime", "hasDueDate", "completed", "collapsed", "alertEnabled"});
    addAll(properties, PropertyKind::kInt32,
           {"regionAlert", "properties", "priority", "alertRepeatInterval", "alertRepeat"});
    addAll(properties, PropertyKind::kInt16, {"displayOrder"});
    addAll(properties, PropertyKind::kInt64, {"lastModified"});
    return properties;
}

std::unique_ptr<ManagedObject> makeNothing(const EntityDescription&) { return nullptr; }

const EntityDescription& entityNamed(std::string_view name) { return *storeFileModel().entity(name); }

}  // namespace

const ManagedObjectModel& storeFileModel() {
    static const Properties users = userProperties();
    static const Properties lists = listProperties();
    static const Properties tasks = taskProperties();
    static const IndexDescription openTasks{
        "openTasks", {"dueDate", "list"},
         "ZCOMPLETED = 0"
    };
    static const ManagedObjectModel model(
        "Corvane",
        {EntityDescription("GTask", tasks, &makeNothing, {openTasks}),
         EntityDescription("GUser", users, &makeNothing), EntityDescription("GList", lists, &makeNothing)});
    return model;
}

const EntityDescription& userEntity() { return entityNamed("GUser"); }
const EntityDescription& listEntity() { return entityNamed("GList"); }
const EntityDescription& taskEntity() { return entityNamed("GTask"); }

PropertyIndex propertyOf(const EntityDescription& entity, std::string_view name) {
    return entity.indexOfProperty(name).value();
}

SaveTransaction::ChangedValue ofUser(std::string_view name, Value value) {
    return {propertyOf(userEntity(), name), std::move(value)};
}

SaveTransaction::ChangedValue ofList(std::string_view name, Value value) {
    return {propertyOf(listEntity(), name), std::move(value)};
}

SaveTransaction::ChangedValue ofTask(std::string_view name, Value value) {
    return {propertyOf(taskEntity(), name), std::move(value)};
}

PersistentStoreDescription storeAt(const std::filesystem::path& file) {
    PersistentStoreDescription description;
    description.file = file;
    description.migratesAutomatically = true;
    description.infersMappingModel = true;
    return description;
}

std::unique_ptr<SqliteStore> openedStore(const std::filesystem::path& file) {
    return openedStore(storeAt(file));
}

std::unique_ptr<SqliteStore> openedStore(const PersistentStoreDescription& description) {
    auto opened = SqliteStore::open(description, storeFileModel());
    if (const auto* error = std::get_if<StoreError>(&opened)) throw std::runtime_error(error->message);
    return std::move(std::get<0>(opened));
}

std::string taskNames(const std::filesystem::path& file) {
    auto opened = SqliteStore::open(storeAt(file), storeFileModel());
    if (const auto* error = std::get_if<StoreError>(&opened)) return "error: " + error->message;
    SqliteStore& store = *std::get<0>(opened);
    auto prepared = store.prepare("SELECT ZNAME FROM ZGTASK ORDER BY Z_PK");
    if (const auto* error = std::get_if<StoreError>(&prepared)) return "error: " + error->message;
    auto& statement = std::get<SqliteStatement>(prepared);
    std::string names;
    auto step = statement.step();
    for (; step == SqliteStatement::Step::kRow; step = statement.step()) {
        names += (names.empty() ? "" : " ") + std::string(statement.utf8(0));
    }
    return step == SqliteStatement::Step::kDone ? names : "error: " + store.lastError().message;
}

std::optional<StoreError> renameTask(SqliteStore& store, const std::u16string& name) {
    SaveTransaction save(store);
    if (const auto version = save.version(taskEntity(), 1)) {
        save.updateRow(taskEntity(), 1, *version, {ofTask("name", name)});
    }
    return save.commit();
}

}  // namespace corvane
