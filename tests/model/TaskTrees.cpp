#include "TaskTrees.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>
#include <tuple>
#include <vector>

#include "model/Accounts.h"
#include "platform/foundation/Text.h"
#include "platform/store/ManagedObjectContext.h"

namespace corvane {
namespace {

class Planter {
  public:
    Planter(GList& list, std::string_view text) : list_(list), rest_(text) {}

    void plantSiblings(GTask* parent) {
        while (!rest_.empty() && !take(')')) {
            if (!take(' ')) plantTask(parent);
        }
    }

  private:
    void plantTask(GTask* parent) {
        auto& task = list_.managedObjectContext()->insert<GTask>();
        const std::string name = takeWhile([](unsigned char c) { return std::isalnum(c) != 0; });
        if (name.empty()) std::abort();
        task.setName(textFromUtf8(name));
        task.setList(&list_);
        task.setParentTask(parent);
        if (take('*')) task.setRemoved(true);
        if (take('+')) task.setCompleted(true);
        if (take('#')) task.setId(textFromUtf8("id-" + name));
        const int place = task.removed() ? 0 : nextPlace_++;
        const bool hasPosition = take('@');
        const std::string position = takeWhile([](unsigned char c) { return std::isdigit(c) || c == '-'; });
        task.setDisplayOrder(static_cast<std::int16_t>(hasPosition ? std::stoi(position) : place));
        if (take('(')) plantSiblings(&task);
    }

    bool take(char c) {
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::string takeWhile(auto accepts) {
        const auto end = std::ranges::find_if_not(rest_, accepts);
        const std::string taken(rest_.begin(), end);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    GList& list_;
    std::string_view rest_;
    int nextPlace_ = 0;
};

class Printer {
  public:
    Printer(const GList& list, bool liveOnly) : liveOnly_(liveOnly) {
        for (const GTask* task : list.tasks()) {
            if (!liveOnly || !task->removed()) siblings_[task->parentTask()].push_back(task);
        }
        for (auto& entry : siblings_) {
            std::ranges::sort(entry.second, {}, [](const GTask* task) {
                const int position = task->removed() ? 0 : task->displayOrder();
                return std::tuple(task->removed(), position, nameOf(task), task->objectID().key);
            });
        }
    }

    std::string print(const GTask* parent, bool isReachable) {
        std::string text;
        for (const GTask* task : siblings_[parent]) {
            if (!text.empty()) text += ' ';
            const bool isLive = isReachable && !task->removed();
            text += liveOnly_ ? nameOf(task) : marked(*task);
            const bool isInPlace = isLive && task->displayOrder() == nextPlace_;
            if (isLive) ++nextPlace_;
            if (!isInPlace && !task->removed()) text += "@" + std::to_string(task->displayOrder());
            if (siblings_.contains(task)) text += "(" + print(task, isLive) + ")";
        }
        return text;
    }

  private:
    static std::string marked(const GTask& task) {
        return nameOf(&task) + (task.removed() ? "*" : "") + (task.completed() ? "+" : "") +
               (task.id() ? "#" : "");
    }

    bool liveOnly_;
    std::map<const GTask*, std::vector<const GTask*>> siblings_;
    int nextPlace_ = 0;
};

}  // namespace

GUser& makeAccount(ManagedObjectContext& context, std::u16string_view name) {
    auto& account = context.insert<GUser>();
    account.setName(name);
    account.setDisplayOrder(static_cast<std::int16_t>(orderedAccounts(context).size() - 1));
    return account;
}

GList& makeList(GUser& account, std::u16string_view name) {
    auto& list = account.managedObjectContext()->insert<GList>();
    list.setName(name);
    list.setDisplayOrder(static_cast<std::int16_t>(account.lists().size()));
    list.setUser(&account);
    return list;
}

void plant(GList& list, std::string_view tree) { Planter(list, tree).plantSiblings(nullptr); }

std::string treeText(const GList& list) {
    constexpr bool kReachable = true;
    return Printer(list, false).print(nullptr, kReachable);
}

std::string liveTreeText(const GList& list) {
    constexpr bool kReachable = true;
    return Printer(list, true).print(nullptr, kReachable);
}

GTask& task(const GList& list, std::string_view name) {
    for (GTask* candidate : list.tasks()) {
        if (nameOf(candidate) == name) return *candidate;
    }
    std::abort();
}

std::string nameOf(const GTask* task) {
    return task ? utf8FromText(task->name().value_or(std::u16string_view())) : "-";
}

}  // namespace corvane
