#include "model/GSData.h"

#include <any>
#include <chrono>
#include <mutex>
#include <system_error>
#include <utility>

#include "model/Accounts.h"
#include "model/ColorTransformer.h"
#include "model/CorvaneModel.h"
#include "model/StoreRelocation.h"
#include "platform/foundation/Environment.h"
#include "platform/store/SqliteStore.h"

namespace corvane {
namespace {

constexpr TimeInterval kAutoSaveDelay{0.5};
constexpr TimeInterval kNextTurn{0};

struct SharedInstance {
    std::recursive_mutex lock;
    GSData* data = nullptr;
};

SharedInstance& shared() {
    static SharedInstance instance;
    return instance;
}

// What could not be saved stays pending; the next change or the program's own save tries again.
void saveChanges(ManagedObjectContext& context) {
    if (context.hasChanges()) static_cast<void>(context.save());
}

Date dateOfFileTime(std::filesystem::file_time_type time) {
    const auto since1970 = std::chrono::file_clock::to_sys(time).time_since_epoch();
    return dateFromSecondsSince1970(std::chrono::duration<double>(since1970).count());
}

}  // namespace

GSData::GSData()
    : PersistentContainer("Corvane", corvaneModel()),
      savedContext_(std::make_shared<ManagedObjectContext*>(&viewContext())) {}

GSData::~GSData() { NotificationCenter::defaultCenter().removeObserversOf(&viewContext()); }

GSData& GSData::sharedInstance() {
    SharedInstance& instance = shared();
    const std::scoped_lock lock(instance.lock);
    if (!instance.data) instance.data = std::make_unique<GSData>().release();
    return *instance.data;
}

SharedInstanceScope::SharedInstanceScope(GSData& data) {
    const std::scoped_lock lock(shared().lock);
    previous_ = std::exchange(shared().data, &data);
}

SharedInstanceScope::~SharedInstanceScope() {
    const std::scoped_lock lock(shared().lock);
    shared().data = previous_;
}

void GSData::launch() {
    if (launched_) return;
    launched_ = true;
    loadStore();
    startAutoSave();
    prepareFreshStore();
}

void GSData::loadStore() {
    ColorTransformer::registerTransformer();
    if (!persistentStoreDescriptions().empty()) {
        const std::optional<std::filesystem::path> directory = documentsDirectory();
        PersistentStoreDescription& description = persistentStoreDescriptions().front();
        description.file = directory ? *directory / kStoreFileName : std::filesystem::path();
        description.migratesAutomatically = true;
        description.infersMappingModel = true;
    }
    loadPersistentStores([this](const std::optional<StoreError>& error) { loadError_ = error; });
}

// A save for every change: each finds what came together by then, or nothing.
void GSData::startAutoSave() {
    const auto saveLater = [this](const Notification&) { scheduleSave(kAutoSaveDelay); };
    NotificationCenter::defaultCenter().addObserver(kObjectsDidChangeNotification, &viewContext(), saveLater);
}

void GSData::prepareFreshStore() {
    if (!orderedAccounts(viewContext()).empty()) return;
    installInitialData();
    scheduleSave(kNextTurn);
}

// The queue may outlive the container.
void GSData::scheduleSave(TimeInterval delay) {
    const std::weak_ptr<ManagedObjectContext*> context = savedContext_;
    Environment::current().mainQueue->after(delay, [context] {
        if (const auto living = context.lock()) saveChanges(**living);
    });
}

std::optional<std::filesystem::path> GSData::documentsDirectory() const {
    return Environment::current().containerDirectory;
}

void GSData::moveStorageToApplicationGroup() {
    const std::filesystem::path& oldDirectory = Environment::current().documentsDirectory;
    const std::optional<std::filesystem::path> directory = documentsDirectory();
    std::error_code error;
    if (!directory || oldDirectory.empty() || std::filesystem::equivalent(oldDirectory, *directory, error)) {
        return;
    }
    copyStoreFiles(oldDirectory, *directory, kStoreFileName);
}

void GSData::mergeChangesFromContextDidSaveNotification(const Notification* notification) {
    if (!notification) return;
    const auto* changes = std::any_cast<ObjectChanges>(&notification->userInfo);
    if (!changes) return;
    // The merge refreshes objects that are filled: what this context holds as a fault is filled before.
    for (const ChangedObject& entry : changes->updated) {
        ManagedObject* const* object = std::get_if<ManagedObject*>(&entry);
        if (object && !*object) continue;
        const ManagedObjectID objectID = object ? (*object)->objectID() : std::get<ManagedObjectID>(entry);
        if (ManagedObject* own = viewContext().objectWithID(objectID)) own->willAccess();
    }
    viewContext().mergeChangesFromContextDidSave(*changes);
}

bool GSData::fixDisplayOrders() {
    bool isChanged = false;
    for (GUser* account : orderedAccounts(viewContext())) {
        if (account->fixAllDisplayOrders()) isChanged = true;
    }
    return isChanged;
}

// The log changes with every commit, the main file only when the log is copied into it.
Date GSData::lastUpdateDate() {
    const SqliteStore* store = persistentStoreCoordinator().store();
    if (!store) return now();
    std::filesystem::path log = store->file();
    log += "-wal";
    std::error_code error;
    const std::filesystem::file_time_type time = std::filesystem::last_write_time(log, error);
    return error ? now() : dateOfFileTime(time);
}

}  // namespace corvane
