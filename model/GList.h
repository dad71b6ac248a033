// GList: a task list of an account.
//
// The live lists of an account are numbered 0, 1, 2, ... by `displayOrder`; those of an account of type 5000
// are numbered 5000, 5001, 5002, ... At most one of them is the account's default.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "model/ParentTasks.h"
#include "platform/store/EntityObject.h"
#include "platform/views/Color.h"

namespace corvane {

class GTask;
class GUser;

/// For deleteList: the list leaves the store even where a server knows it.
inline constexpr bool kOutright = true;
inline constexpr bool kAwaitSynchronisation = false;

/// No operation saves; the context's owner does.
class GList final : public EntityObject<GList> {
  public:
    static constexpr std::string_view kEntityName = "GList";
    static constexpr auto kProperties = std::to_array<PropertyDescription>({
        attribute("isDefault", PropertyKind::kBoolean),
        attribute("properties", PropertyKind::kInt32),
        attribute("removed", PropertyKind::kBoolean),
        attribute("displayOrder", PropertyKind::kInt16),
        toMany("tasks", "GTask", "list", DeleteRule::kCascade),
        attribute("createdTimestamp", PropertyKind::kDate),
        attribute("id", PropertyKind::kString),
        attribute("name", PropertyKind::kString),
        transformable("color", "ColorTransformer"),
        attribute("hideCompletedTasks", PropertyKind::kBoolean),
        attribute("isReadonly", PropertyKind::kBoolean),
        attribute("isImmutable", PropertyKind::kBoolean),
        attribute("lastModified", PropertyKind::kInt64),
        attribute("tasksLastModified", PropertyKind::kDate),
        toOne("user", "GUser", "lists"),
        attribute("isIsolated", PropertyKind::kBoolean),
    });

    using EntityObject<GList>::EntityObject;

    /// A new list at a position among the account's live lists, without id, name and colour.
    ///
    /// @param displayOrder  counted from 0 for every account type; negative or beyond the number of lists
    /// appends
    static GList& insertNewListToAccount(GUser& account, std::int32_t displayOrder);

    // Attributes
    bool isDefault() const { return get<"isDefault">(); }
    void setIsDefault(bool value) { set<"isDefault">(value); }
    /// Bit field; the accessors below name bits 0 to 4, the others are kept.
    std::int32_t properties() const { return get<"properties">(); }
    void setProperties(std::int32_t value) { set<"properties">(value); }
    /// A tombstone: deleted here, kept until the server learns of it.
    bool removed() const { return get<"removed">(); }
    void setRemoved(bool value) { set<"removed">(value); }
    std::int16_t displayOrder() const { return get<"displayOrder">(); }
    void setDisplayOrder(std::int16_t value) { set<"displayOrder">(value); }
    /// Every task, removed ones included.
    RelatedObjects<GTask> tasks() const { return relatedMany<"tasks", GTask>(); }
    std::optional<Date> createdTimestamp() const { return get<"createdTimestamp">(); }
    void setCreatedTimestamp(std::optional<Date> value) { set<"createdTimestamp">(value); }
    /// The server's identifier; none for a list that no server knows.
    std::optional<std::u16string_view> id() const { return get<"id">(); }
    void setId(std::optional<std::u16string_view> value) { set<"id">(value); }
    std::optional<std::u16string_view> name() const { return get<"name">(); }
    void setName(std::optional<std::u16string_view> value) { set<"name">(value); }
    /// None also for a stored colour that cannot be read; that one stays in the store until another is set.
    std::optional<Color> color() const;
    void setColor(const std::optional<Color>& value);
    bool hideCompletedTasks() const { return get<"hideCompletedTasks">(); }
    void setHideCompletedTasks(bool value) { set<"hideCompletedTasks">(value); }
    bool isReadonly() const { return get<"isReadonly">(); }
    void setIsReadonly(bool value) { set<"isReadonly">(value); }
    bool isImmutable() const { return get<"isImmutable">(); }
    void setIsImmutable(bool value) { set<"isImmutable">(value); }
    /// Milliseconds since 1970-01-01 00:00 UTC.
    std::int64_t lastModified() const { return get<"lastModified">(); }
    void setLastModified(std::int64_t value) { set<"lastModified">(value); }
    std::optional<Date> tasksLastModified() const { return get<"tasksLastModified">(); }
    void setTasksLastModified(std::optional<Date> value) { set<"tasksLastModified">(value); }
    GUser* user() const;
    void setUser(GUser* value);
    /// The list's tasks are kept out of every filter.
    bool isIsolated() const { return get<"isIsolated">(); }
    void setIsIsolated(bool value) { set<"isIsolated">(value); }

    // Derived attributes
    /// Bits 0 to 2 of `properties`; a new value is not masked.
    std::int16_t tasksOrder() const;
    void setTasksOrder(std::int16_t value);
    /// Bit 3 of `properties`.
    bool defaultList() const;
    void setDefaultList(bool value);
    /// Bit 4 of `properties`: the user gave the list a title of their own.
    bool userChangedName() const;
    void setUserChangedName(bool value);
    /// `lastModified` as a date; a fraction of a millisecond is cut off.
    Date lastUpdated() const;
    void setLastUpdated(Date value);

    // Place among the account's lists
    /// Makes the list the default, or hands the default on to the first other list. The only list stays the
    /// default.
    void setAsDefault(bool isDefault);
    /// Sets the expected position and moves the counter on.
    ///
    /// @param nextDisplayOrder  counted from 0 for every account type
    /// @return whether the position changed
    bool fixDisplayOrder(std::int32_t& nextDisplayOrder);
    /// @param displayOrder  counted from 0 for every account type; out of range means the end
    void moveListToDisplayOrder(std::int32_t displayOrder);
    /// Marks the list removed and closes the gap; an outright deletion, or one of a list that no server
    /// knows, takes the list and its tasks out of the store.
    void deleteList(bool outright);
    /// Adds one millisecond: the stamp is a counter of changes, no clock.
    void updateLastModified();

    // Tasks, by position unless said otherwise
    std::vector<GTask*> orderedRootTasks() const;
    ParentTasks parentTasks() const;
    /// The live tasks in tree order. While `useCachedOrderedAllTasks` is set, what was last fetched, changes
    /// of tasks notwithstanding, until the next reset.
    std::vector<GTask*> orderedAllTasks() const;
    void resetOrderedAllTasks() { orderedAllTasks_.reset(); }
    bool useCachedOrderedAllTasks() const { return useCachedOrderedAllTasks_; }
    void setUseCachedOrderedAllTasks(bool value);
    std::vector<GTask*> completedTasks() const;
    std::vector<GTask*> removedTasks() const;
    /// The task with a server id, a removed one too; null for none and for the empty id.
    GTask* findTaskId(std::optional<std::u16string_view> taskId) const;
    /// Removes the completed tasks; their children move up one level. Tasks that no server knows leave the
    /// store.
    void deleteCompletedTasks();

  protected:
    void didTurnIntoFault() override;

  private:
    struct DecodedColor {
        Bytes data;
        std::optional<Color> color;
    };
    mutable std::optional<DecodedColor> decodedColor_;
    mutable std::optional<std::vector<GTask*>> orderedAllTasks_;
    bool useCachedOrderedAllTasks_ = false;
};

}  // namespace corvane
