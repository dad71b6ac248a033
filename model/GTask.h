// GTask: a task in a list, possibly under a parent task.
//
// The live tasks of a list are numbered 0, 1, 2, ... by `displayOrder` in depth-first order, each parent
// before its children. Positions are stored with 16 bits, so that a list holds at most 32,768 tasks in order.
// A store that was damaged may bring parents in a circle: every walk over the tree ends all the same.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/ParentTasks.h"
#include "platform/store/EntityObject.h"

namespace corvane {

class GList;

// Names for the flags of the operations below.
inline constexpr bool kUncompletedOnly = true;
inline constexpr bool kCompletedToo = false;
inline constexpr bool kAllDay = true;
inline constexpr bool kAtTimeOfDay = false;
inline constexpr bool kPurge = true;  ///< no tombstone stays and no child is stamped
inline constexpr bool kKeepTombstone = false;

/// Repeat kinds, as stored in `alertRepeat`. Other numbers are kept and never advance.
inline constexpr std::int32_t kNoRepeat = 0;
inline constexpr std::int32_t kRepeatYearly = 4;
inline constexpr std::int32_t kRepeatMonthly = 8;
inline constexpr std::int32_t kRepeatDaily = 16;
inline constexpr std::int32_t kRepeatWeekly = 8192;
inline constexpr std::int32_t kRepeatWeeklyOlder = 256;  ///< means the same; both are accepted everywhere

/// No operation saves; the context's owner does.
class GTask final : public EntityObject<GTask> {
  public:
    static constexpr std::string_view kEntityName = "GTask";
    static constexpr auto kProperties = std::to_array<PropertyDescription>({
        attribute("properties", PropertyKind::kInt32),
        attribute("removed", PropertyKind::kBoolean),
        attribute("displayOrder", PropertyKind::kInt16),
        toMany("subTasks", "GTask", "parentTask"),
        toOne("parentTask", "GTask", "subTasks"),
        attribute("dueDate", PropertyKind::kDate),
        attribute("hasDueDate", PropertyKind::kBoolean),
        attribute("hasDueTime", PropertyKind::kBoolean),
        attribute("alertRepeat", PropertyKind::kInt32),
        attribute("alertRepeatData", PropertyKind::kString),
        attribute("alertRepeatInterval", PropertyKind::kInt32),
        attribute("alertEnabled", PropertyKind::kBoolean),
        attribute("alertDate", PropertyKind::kDate),
        attribute("regionAlert", PropertyKind::kInt32),
        attribute("regionDescription", PropertyKind::kString),
        attribute("regionLat", PropertyKind::kDouble),
        attribute("regionLong", PropertyKind::kDouble),
        attribute("regionRadius", PropertyKind::kDouble),
        attribute("regionAccuracy", PropertyKind::kDouble),
        attribute("createdTimestamp", PropertyKind::kDate),
        attribute("id", PropertyKind::kString),
        attribute("name", PropertyKind::kString),
        attribute("notes", PropertyKind::kString),
        attribute("priority", PropertyKind::kInt32),
        attribute("lastModified", PropertyKind::kInt64),
        attribute("hidden", PropertyKind::kBoolean),
        attribute("collapsed", PropertyKind::kBoolean),
        attribute("completed", PropertyKind::kBoolean),
        attribute("completedDate", PropertyKind::kDate),
        toOne("list", "GList", "tasks"),
    });

    using EntityObject<GTask>::EntityObject;

    /// A new task at a place in a list's tree. It has no id, no name and no modification stamp.
    ///
    /// @param parentTask    none, removed or of another list: a root task
    /// @param previousTask  the sibling after whose subtree it stands; none: before its siblings. One that is
    ///                      no child of the parent stands for the parent's last child; without a parent the
    ///                      task then goes to the top of the list
    static GTask& insertNewTaskToList(GList& list, GTask* parentTask, GTask* previousTask);

    // Attributes
    std::int32_t properties() const { return get<"properties">(); }
    void setProperties(std::int32_t value) { set<"properties">(value); }
    /// A tombstone: deleted here, kept until the server learns of it.
    bool removed() const { return get<"removed">(); }
    void setRemoved(bool value) { set<"removed">(value); }
    std::int16_t displayOrder() const { return get<"displayOrder">(); }
    void setDisplayOrder(std::int16_t value) { set<"displayOrder">(value); }
    /// Every child, removed ones included.
    RelatedObjects<GTask> subTasks() const { return relatedMany<"subTasks", GTask>(); }
    GTask* parentTask() const { return related<"parentTask", GTask>(); }
    void setParentTask(GTask* value) { set<"parentTask">(value); }
    std::optional<Date> dueDate() const { return get<"dueDate">(); }
    void setDueDate(std::optional<Date> value) { set<"dueDate">(value); }
    bool hasDueDate() const { return get<"hasDueDate">(); }
    void setHasDueDate(bool value) { set<"hasDueDate">(value); }
    /// The due date carries a time of day.
    bool hasDueTime() const { return get<"hasDueTime">(); }
    void setHasDueTime(bool value) { set<"hasDueTime">(value); }
    std::int32_t alertRepeat() const { return get<"alertRepeat">(); }
    void setAlertRepeat(std::int32_t value) { set<"alertRepeat">(value); }
    std::optional<std::u16string_view> alertRepeatData() const { return get<"alertRepeatData">(); }
    void setAlertRepeatData(std::optional<std::u16string_view> value) { set<"alertRepeatData">(value); }
    std::int32_t alertRepeatInterval() const { return get<"alertRepeatInterval">(); }
    void setAlertRepeatInterval(std::int32_t value) { set<"alertRepeatInterval">(value); }
    bool alertEnabled() const { return get<"alertEnabled">(); }
    void setAlertEnabled(bool value) { set<"alertEnabled">(value); }
    std::optional<Date> alertDate() const { return get<"alertDate">(); }
    void setAlertDate(std::optional<Date> value) { set<"alertDate">(value); }
    std::int32_t regionAlert() const { return get<"regionAlert">(); }  ///< 0: no place alert
    void setRegionAlert(std::int32_t value) { set<"regionAlert">(value); }
    std::optional<std::u16string_view> regionDescription() const { return get<"regionDescription">(); }
    void setRegionDescription(std::optional<std::u16string_view> value) { set<"regionDescription">(value); }
    double regionLat() const { return get<"regionLat">(); }  ///< degrees
    void setRegionLat(double value) { set<"regionLat">(value); }
    double regionLong() const { return get<"regionLong">(); }  ///< degrees
    void setRegionLong(double value) { set<"regionLong">(value); }
    double regionRadius() const { return get<"regionRadius">(); }  ///< metres
    void setRegionRadius(double value) { set<"regionRadius">(value); }
    double regionAccuracy() const { return get<"regionAccuracy">(); }  ///< metres
    void setRegionAccuracy(double value) { set<"regionAccuracy">(value); }
    std::optional<Date> createdTimestamp() const { return get<"createdTimestamp">(); }
    void setCreatedTimestamp(std::optional<Date> value) { set<"createdTimestamp">(value); }
    /// The server's identifier; none for a task that no server knows.
    std::optional<std::u16string_view> id() const { return get<"id">(); }
    void setId(std::optional<std::u16string_view> value) { set<"id">(value); }
    std::optional<std::u16string_view> name() const { return get<"name">(); }
    void setName(std::optional<std::u16string_view> value) { set<"name">(value); }
    std::optional<std::u16string_view> notes() const { return get<"notes">(); }
    void setNotes(std::optional<std::u16string_view> value) { set<"notes">(value); }
    std::int32_t priority() const { return get<"priority">(); }  ///< a higher one sorts first
    void setPriority(std::int32_t value) { set<"priority">(value); }
    /// Milliseconds since 1970-01-01 00:00 UTC.
    std::int64_t lastModified() const { return get<"lastModified">(); }
    void setLastModified(std::int64_t value) { set<"lastModified">(value); }
    bool hidden() const { return get<"hidden">(); }
    void setHidden(bool value) { set<"hidden">(value); }
    bool collapsed() const { return get<"collapsed">(); }  ///< its subtree is folded in the views
    void setCollapsed(bool value) { set<"collapsed">(value); }
    bool completed() const { return get<"completed">(); }
    void setCompleted(bool value) { set<"completed">(value); }
    std::optional<Date> completedDate() const { return get<"completedDate">(); }
    void setCompletedDate(std::optional<Date> value) { set<"completedDate">(value); }
    GList* list() const;
    void setList(GList* value);

    // Modification stamp
    /// `lastModified` as a date; a fraction of a millisecond is cut off.
    Date lastUpdated() const;
    void setLastUpdated(Date value);
    /// Marks a change made here: the far-future date, and a second more for every later change. The time of
    /// the change is never stored.
    void updateLastModified();

    // Tree
    /// Live children by position. The task must have a context: without one the program stops.
    std::vector<GTask*> orderedSubTasks(bool uncompletedOnly) const;
    /// Whether `task` is an ancestor. Null is one of every task, as the missing parent of its root.
    bool hasParent(const GTask* task) const;
    bool hasSubtasks() const;  ///< live ones, completed or not
    /// Live descendants; a removed child counts neither itself nor what is below it.
    std::uint32_t countTotalSubTasks() const;
    std::uint32_t depth() const;  ///< 0 for a root task
    /// Siblings by position; null at either end, and for a task that is not among its list's live ones.
    GTask* previousTask() const;
    GTask* previousUncompletedTask() const;
    GTask* nextTask() const;
    /// Folds or unfolds the subtree, the deepest tasks first. Each child's observers hear of "parentTask"
    /// around the change of its parent, so that they show or hide the child.
    void recursiveSetCollapseTo(bool collapsed);
    /// Renumbers the subtree in tree order.
    ///
    /// @param nextDisplayOrder  the task's position; moved on by the number of tasks numbered
    /// @param parentTasks       tasks that are not among them are taken as childless; null: every task is
    ///                          asked for its children
    /// @return whether any position changed
    bool fixDisplayOrder(std::int32_t& nextDisplayOrder, const ParentTasks* parentTasks);
    /// One line for debugging.
    std::u16string desc() const;

    // Due date, alerts, repeats
    /// Moves the due date and takes the alert along at its old distance.
    ///
    /// @param date      none clears the due date and switches the alert off
    /// @param allDay    a new date's time of day becomes the user's default alert time
    /// @param repeat    repeat kind; another one than before drops the repeat detail
    /// @param interval  every how many units of the rule; 0 counts as 1
    void setDueDate(std::optional<Date> date, bool allDay, std::int32_t repeat, std::int32_t interval);
    /// The same, but the date is stored as given for an all-day task as well.
    void setDueDate2(std::optional<Date> date, bool allDay, std::int32_t repeat, std::int32_t interval);
    /// The n-th weekday of a monthly rule; 0 for either means the same date every month. Does nothing for
    /// other rules.
    void setMonthlyRepeatWeekdayOrdinal(std::uint64_t ordinal, std::uint64_t weekday);
    std::uint64_t monthlyRepeatWeekdayOrdinal() const;  ///< 1 to 4, 5 the last; 0: none
    std::uint64_t monthlyRepeatWeekday() const;         ///< a weekday or day kind; 0: none
    /// The weekdays of a weekly rule, kept in their order. Does nothing for other rules.
    void setWeeklyRepeatWeekdays(std::span<const std::uint64_t> weekdays);
    /// Empty without stored weekdays; a text that is no number reads as 0.
    std::vector<std::uint64_t> weeklyRepeatWeekdays() const;
    /// Without a due date there is no alert, whatever is given.
    void setDateAlert(std::optional<Date> date);
    /// @param kind              as stored by the main application; 0: none
    /// @param lat, longitude    degrees
    /// @param radius, accuracy  metres
    void setRegionAlert(std::int32_t kind, double lat, double longitude, double radius, double accuracy,
                        std::optional<std::u16string_view> description);

    // Completion
    /// Turns a completed repeating task into its next occurrence, one step of the rule on from its due date.
    void progressRepeat();
    /// Makes completion of parents and children agree: a completed task has no open live child. The rule
    /// spreads to ancestors and descendants.
    void fixCompletedSubtaskingSanity();
    /// Moves a due date that is not on its weekly or monthly rule onto the rule.
    void fixSanity();

    // Place
    /// A copy of the task and its live descendants as they stand, without ids, at a place as for
    /// insertNewTaskToList.
    GTask& cloneToList(GList& list, GTask* parentTask, GTask* previousTask);
    /// Moves the task with its subtree. To another list it is copied, and the original is deleted.
    ///
    /// @param parentTask    ignored when there is a previous task
    /// @param previousTask  no child of this task; one of another list, removed, or the task itself stands
    ///                      for the sibling before the task
    /// @return the task at its new place: the copy where the list changed
    GTask& moveToList(GList& list, GTask* parentTask, GTask* previousTask);
    /// Deletes the task alone; its children move up to its parent. One that a server knows stays as a
    /// tombstone unless it is purged.
    void deleteTask(bool purge);
    void deleteTaskAndSubTasks(bool purge);
};

}  // namespace corvane
