// GSData: the container through which every program reaches the shared task store.
//
// The store is "Plorix.sqlite" in the app-group container of the environment. Everything runs on the main
// thread; only the making of the shared instance takes a lock. Failures to load, save and copy are absorbed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/store/PersistentContainer.h"

namespace corvane {

inline constexpr std::string_view kStoreFileName = "Plorix.sqlite";

class GSData : public PersistentContainer {
  public:
    GSData();
    ~GSData() override;

    /// The process's container, made on first use and never released.
    static GSData& sharedInstance();

    /// Opens the store of the environment's container directory and starts the auto-save: half a second after
    /// every change, on the main queue. Later calls do nothing, also when the store could not be loaded.
    void launch();
    bool launched() const { return launched_; }
    void setLaunched(bool value) { launched_ = value; }
    /// Why launch left the container without a store.
    const std::optional<StoreError>& loadError() const { return loadError_; }

    /// The app-group container; none when it cannot be had.
    std::optional<std::filesystem::path> documentsDirectory() const;

    /// Copies the store of the Documents directory, companions included, into the app-group container; the
    /// old files stay. A file that cannot be copied is missing there afterwards. Not for a store that is
    /// open.
    void moveStorageToApplicationGroup();

    /// Takes over what another context saved. Null is ignored.
    void mergeChangesFromContextDidSaveNotification(const Notification* notification);

    /// Renumbers lists and tasks of every listed account. @return whether any position changed
    bool fixDisplayOrders();

    /// When something was last committed to the store: the time of its write-ahead log. Now, when there is no
    /// store or no log.
    Date lastUpdateDate();

    /// What a fresh store holds: nothing yet.
    virtual void installInitialData() {}
    void installScreenshotsDataIntoAccount(GUser&) {}

    // Task filters. Numbers: 0 Overdue, 1 Today, 2 Tomorrow, 3 Upcoming Week, 4 No Due Date, 5 Everything,
    // 6 Completed Tasks, 7 Later, 8 a single list.
    /// Predicate text with its $ variables; other numbers than 0 to 8 select as 7 does.
    static std::u16string predicateStringForTasksWithFilter(std::int32_t filter, bool hideCompletedTasks,
                                                            bool rootTasksOnly);
    /// Parses a text and binds its variables, day boundaries as of now. A text that does not parse is a fault
    /// of the program and stops it.
    ///
    /// @param forAccount, list  null compares as nil
    static Predicate predicateFromString(std::u16string_view text, GUser* forAccount, GList* list);
    static std::optional<std::u16string> filterLocalizedName(std::uint32_t filter);
    static std::string_view filterImageName(std::int32_t filter);
    /// The tasks order that the user chose for a filter; 0 for none.
    static std::int16_t tasksOrderForFilter(std::uint32_t filter);
    /// @param tasksOrder  0 manual, 1 priority and title, 2 priority and due date
    /// @return none for every other number
    static std::optional<std::vector<SortDescriptor>> sortDescriptorsForTasksOrder(std::int32_t tasksOrder,
                                                                                   std::int32_t filter);

    // Export
    /// Tasks in the order given as plain text or as an HTML fragment; the tree shows from two tasks on.
    static std::u16string stringOfTasks(std::span<GTask* const> tasks,
                                        std::optional<std::u16string_view> withTitle, bool showSubtasking,
                                        bool html);

  private:
    void loadStore();
    void startAutoSave();
    void prepareFreshStore();
    void scheduleSave(TimeInterval delay);

    bool launched_ = false;
    std::shared_ptr<ManagedObjectContext*> savedContext_;  ///< blocks on the queue see when it has gone
    std::optional<StoreError> loadError_;
};

/// Puts a container in the shared instance's place until the end of the scope.
class SharedInstanceScope {
  public:
    explicit SharedInstanceScope(GSData& data);
    ~SharedInstanceScope();
    SharedInstanceScope(const SharedInstanceScope&) = delete;
    SharedInstanceScope& operator=(const SharedInstanceScope&) = delete;

  private:
    GSData* previous_;
};

}  // namespace corvane
