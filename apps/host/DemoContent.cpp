#include "apps/host/DemoContent.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "apps/host/DemoTasks.h"
#include "dates/DateBasics.h"
#include "dates/RepeatArithmetic.h"
#include "model/GList.h"
#include "model/GUser.h"
#include "platform/foundation/Calendar.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

constexpr std::int32_t kAtTheEnd = -1;

struct DemoAccount {
    const char16_t* name;
    std::int16_t type;  ///< 1 and 2: kinds of server accounts
};
constexpr DemoAccount kAccounts[] = {
    {u"anna@example.com",   1                   },
    {u"studio@example.org", 2                   },
    {u"On this device",     kLocalAccountType   },
    {u"Birthdays",          kUnlistedAccountType},
};

enum class Kind { kOrdinary, kIsolated, kRemoved };

struct DemoListRow {
    std::size_t account;
    const char16_t* name;
    std::uint32_t color;  ///< 0xrrggbb
    Kind kind = Kind::kOrdinary;
};
// In the order of DemoList.
constexpr DemoListRow kLists[] = {
    {0,                u"Home",      0x1f7a8c},
    {0,                u"Shopping",  0x4c9f38},
    {0,                u"Garden",    0x9a8c1f},
    {0,                u"Old plans", 0x888888, Kind::kRemoved},
    {1,                u"Work",                            0x2b5fd9             },
    {1,                u"Clients",                            0xe07a1f},
    {1,                u"Someday",                            0x7f7f7f,              Kind::kIsolated},
    {2, u"Private",             0x8e44ad       },
    {3,        u"Birthdays",        0xd6336c        },
};

Color colorOf(std::uint32_t rgb) {
    const auto component = [rgb](int shift) { return static_cast<double>((rgb >> shift) & 0xFF) / 255; };
    return Color::rgb(component(16), component(8), component(0));
}

std::u16string identifier(const char* kind, std::size_t number) {
    return textFromUtf8(std::string(kind) + "-" + std::to_string(number));
}

class Demonstration {
  public:
    explicit Demonstration(ManagedObjectContext& context) : context_(context) {}

    void add() {
        for (const DemoAccount& account : kAccounts) addAccount(account);
        for (const DemoListRow& list : kLists) addList(list);
        for (const DemoTask& task : demoTasks()) addTask(task);
        for (GTask* task : removedTasks_) task->deleteTask(kKeepTombstone);
        for (std::size_t i = 0; i < lists_.size(); ++i) {
            if (kLists[i].kind == Kind::kRemoved) lists_[i]->deleteList(kAwaitSynchronisation);
        }
    }

  private:
    void addAccount(const DemoAccount& row) {
        GUser& account = GUser::insertNewAccountToContext(context_, kAtTheEnd);
        account.setName(row.name);
        account.setAccountType(row.type);
        account.setIsDefault(accounts_.empty());
        accounts_.push_back(&account);
    }

    void addList(const DemoListRow& row) {
        GUser& account = *accounts_[row.account];
        const bool isFirst = account.lists().empty();
        GList& list = GList::insertNewListToAccount(account, kAtTheEnd);
        list.setName(row.name);
        list.setColor(colorOf(row.color));
        list.setIsIsolated(row.kind == Kind::kIsolated);
        if (isFirst) list.setAsDefault(true);
        lists_.push_back(&list);
        if (isOnServer(list)) list.setId(identifier("list", lists_.size()));
    }

    void addTask(const DemoTask& row) {
        GList& list = *lists_[static_cast<std::size_t>(row.list)];
        branch_.resize(static_cast<std::size_t>(row.depth) + 1);
        GTask*& last = branch_.back();
        GTask* parent = row.depth > 0 ? branch_[static_cast<std::size_t>(row.depth) - 1] : nullptr;
        const bool isSibling = last && last->list() == &list && last->parentTask() == parent;
        last = &GTask::insertNewTaskToList(list, parent, isSibling ? last : nullptr);
        fill(*last, row);
        ++taskCount_;
        if (isOnServer(list)) last->setId(identifier("task", taskCount_));
        if (row.state == DemoTask::State::kRemoved) removedTasks_.push_back(last);
    }

    static void fill(GTask& task, const DemoTask& row) {
        task.setName(row.name);
        if (row.notes) task.setNotes(row.notes);
        task.setPriority(row.priority);
        if (row.day) setDue(task, row);
        task.setLastUpdated(now());
        if (row.state != DemoTask::State::kCompleted) return;
        task.setCompleted(true);
        task.setCompletedDate(dateByAddingDays(now(), -1));
    }

    // The rule may move the date, and the alert goes along.
    static void setDue(GTask& task, const DemoTask& row) {
        const Date day = dateOfTodayMidnightWithDaysOffset(*row.day);
        const int minute = row.minute.value_or(0);
        const Date due = row.minute ? dateByAddingDays(day, 0, minute / 60, minute % 60) : day;
        task.setDueDate(due, row.minute ? kAtTimeOfDay : kAllDay, row.repeat, row.interval);
        setRule(task, row.rule);
        if (row.alertBefore) task.setDateAlert(due - TimeInterval(*row.alertBefore * 60));
        task.fixSanity();
    }

    static void setRule(GTask& task, DemoTask::Rule rule) {
        constexpr std::array<std::uint64_t, 5> kMondayToFriday{2, 3, 4, 5, 6};
        constexpr std::uint64_t kSecond = 2;
        constexpr std::uint64_t kThursday = 5;
        switch (rule) {
            case DemoTask::Rule::kPlain:
                return;
            case DemoTask::Rule::kMondayToFriday:
                return task.setWeeklyRepeatWeekdays(kMondayToFriday);
            case DemoTask::Rule::kSecondThursday:
                return task.setMonthlyRepeatWeekdayOrdinal(kSecond, kThursday);
            case DemoTask::Rule::kLastWorkingDay:
                return task.setMonthlyRepeatWeekdayOrdinal(kLastOrdinal, kWorkingDay);
        }
    }

    static bool isOnServer(const GList& list) {
        const std::int16_t type = list.user()->accountType();
        return type != kLocalAccountType && type != kUnlistedAccountType;
    }

    ManagedObjectContext& context_;
    std::vector<GUser*> accounts_;
    std::vector<GList*> lists_;
    std::vector<GTask*> branch_;  ///< the last task of each depth
    std::vector<GTask*> removedTasks_;
    std::size_t taskCount_ = 0;
};

}  // namespace

void addDemonstration(ManagedObjectContext& context) { Demonstration(context).add(); }

}  // namespace corvane
