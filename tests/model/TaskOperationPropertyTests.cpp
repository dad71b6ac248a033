// Random operations on random trees: against trees of names without positions, and whole subtrees against
// the same steps one task at a time.
#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "ModelFixture.h"
#include "NameTree.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

class Chance {
  public:
    explicit Chance(unsigned seed) : engine_(seed) {}

    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(engine_); }
    bool one(int in) { return below(in) == 0; }
    /// One of the names, or empty.
    std::string oneOf(const NameTree::Entries& entries) {
        const int index = below(static_cast<int>(entries.size()) + 1);
        return index == 0 ? std::string() : entries[static_cast<std::size_t>(index) - 1].name;
    }

  private:
    std::mt19937 engine_;
};

void expectSoundRelationships(const GList& list) {
    for (const GTask* task : list.tasks()) {
        ASSERT_EQ(task->list(), &list);
        for (const GTask* child : task->subTasks()) ASSERT_EQ(child->parentTask(), task);
        const GTask* parent = task->parentTask();
        if (!parent) continue;
        ASSERT_EQ(parent->list(), &list);
        ASSERT_EQ(std::ranges::count(parent->subTasks().toVector(), task), 1);
    }
}

class RandomOperationsTest : public ModelTest, public testing::WithParamInterface<unsigned> {
  protected:
    void operate() {
        const std::string name = chance_.oneOf(names_.entries());
        std::string parent = chance_.oneOf(names_.entries());
        std::string previous = chance_.one(2) ? childOf(parent) : std::string();
        if (parent == name || previous == name) parent = previous = {};
        const std::size_t count = names_.entries().size();
        const int kind = name.empty() || count < 5 ? 0 : count > 40 ? 1 : chance_.below(7);
        if (kind == 0) return insert(parent, previous);
        if (kind == 1) return removeSubtree(name);
        if (kind == 2) return remove(name);
        if (kind == 3) return copy(name, parent, previous);
        taskNamed(name)->moveToList(list(), taskNamed(parent), taskNamed(previous));
        names_.move(name, parent, previous);
    }

    Chance chance_{GetParam()};
    NameTree names_;

  private:
    GTask* taskNamed(const std::string& name) { return name.empty() ? nullptr : &named(name); }

    std::string childOf(const std::string& parent) {
        NameTree::Entries children = names_.entries();
        std::erase_if(children, [&](const auto& entry) { return names_.parentOf(entry.name) != parent; });
        return chance_.oneOf(children);
    }

    std::string nameAnew(GTask& task) {
        std::string name = "T" + std::to_string(nextNumber_++);
        task.setName(textFromUtf8(name));
        if (chance_.one(2)) task.setId(u"known");
        return name;
    }

    void insert(const std::string& parent, const std::string& previous) {
        GTask& task = GTask::insertNewTaskToList(list(), taskNamed(parent), taskNamed(previous));
        names_.put({{nameAnew(task)}}, parent, previous);
    }

    void copy(const std::string& name, const std::string& parent, const std::string& previous) {
        NameTree::Entries copies = names_.subtree(name);
        GTask& copy = named(name).cloneToList(list(), taskNamed(parent), taskNamed(previous));
        const std::vector<GTask*> order = list().orderedAllTasks();
        auto task = std::ranges::find(order, &copy);
        for (NameTree::Entry& entry : copies) {
            ASSERT_EQ(nameOf(*task), entry.name);
            entry.name = nameAnew(**task++);
        }
        names_.put(std::move(copies), parent, previous);
    }

    void remove(const std::string& name) {
        named(name).deleteTask(chance_.one(2));
        names_.remove(name);
    }

    void removeSubtree(const std::string& name) {
        named(name).deleteTaskAndSubTasks(chance_.one(2));
        names_.cut(name);
    }

    int nextNumber_ = 0;
};

TEST_P(RandomOperationsTest, ComeToTheTreeOfNames) {
    GList& untouched = listWith("A(B@7) C*(D@1)");
    for (int step = 0; step < 120; ++step) {
        operate();
        ASSERT_EQ(liveTreeText(list()), names_.text()) << "step " << step;
        expectSoundRelationships(list());
        ASSERT_EQ(treeText(untouched), "A(B@7) C*(D@1)");
        if (chance_.one(20)) save();
    }
    const std::string everything = treeText(list());
    save();
    GSData reopened;
    reopened.launch();
    for (GList* list : reopened.viewContext().fetch<GList>({})) {
        if (list->name() != u"List") continue;
        EXPECT_EQ(treeText(*list), everything);
        expectSoundRelationships(*list);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperationsTest, testing::Range(1u, 13u));

// Copying and deleting a subtree one task after the other.
GTask& cloneStepByStep(GTask& source, GList& list, GTask* parentTask, GTask* previousTask) {
    const bool keepsParent =
        parentTask && parentTask != &source && parentTask->list() == &list && !parentTask->removed();
    GTask* parent = keepsParent ? parentTask : nullptr;
    GTask& copy = GTask::insertNewTaskToList(list, parent, previousTask == &source ? nullptr : previousTask);
    copy.setName(source.name());
    copy.setRemoved(source.removed());
    GTask* previous = nullptr;
    for (GTask* child : source.orderedSubTasks(kCompletedToo)) {
        cloneStepByStep(*child, list, &copy, previous);
        previous = child;
    }
    return copy;
}

void deleteStepByStep(GTask& task, bool purge) {
    const std::vector<GTask*> children = task.orderedSubTasks(kCompletedToo);
    task.deleteTask(purge);
    for (GTask* child : children) deleteStepByStep(*child, purge);
}

void moveStepByStep(GTask& task, GTask& below) {
    const std::vector<GTask*> children = task.orderedSubTasks(kCompletedToo);
    std::for_each(children.rbegin(), children.rend(),
                  [&](GTask* child) { child->moveToList(*task.list(), task.parentTask(), nullptr); });
    task.moveToList(*task.list(), &below, nullptr);
}

// Positions in order, near each other, or at the end of their range; here and there a tombstone.
std::string randomTree(Chance& chance) {
    const int kind = chance.below(3);
    const auto position = [&] {
        if (kind == 0 || chance.one(2)) return std::string();
        return "@" + std::to_string(kind == 1 ? chance.below(12) - 2 : 32'760 + chance.below(8));
    };
    std::string text;
    std::string closing;
    for (int i = 0; i < 14; ++i) {
        if (i > 0 && chance.one(2)) {
            text += '(';
            closing += ')';
        } else if (const int up = chance.below(static_cast<int>(closing.size()) + 1); i > 0) {
            text += closing.substr(0, static_cast<std::size_t>(up)) + ' ';
            closing.resize(closing.size() - static_cast<std::size_t>(up));
        }
        text +=
            "T" + std::to_string(i) + (chance.one(6) ? "*" : "") + (chance.one(3) ? "#" : "") + position();
    }
    return text + closing;
}

class WholeSubtreesTest : public ModelTest, public testing::WithParamInterface<unsigned> {};

TEST_P(WholeSubtreesTest, ChangeAsTaskAfterTask) {
    Chance chance(GetParam());
    for (int round = 0; round < 20; ++round) {
        const std::string tree = randomTree(chance);
        GList& whole = listWith(tree);
        GList& steps = listWith(tree);
        if (chance.one(2)) save();
        const std::string name = "T" + std::to_string(chance.below(14));
        const std::string other = "T" + std::to_string(chance.below(14));
        SCOPED_TRACE(tree + " with " + name + " and " + other);
        const bool isBelow = task(whole, other).hasParent(&task(whole, name));
        if (chance.one(3)) {
            const bool purge = chance.one(2);
            task(whole, name).deleteTaskAndSubTasks(purge);
            deleteStepByStep(task(steps, name), purge);
        } else if (!isBelow) {
            task(whole, name).cloneToList(whole, task(whole, other).parentTask(), &task(whole, other));
            cloneStepByStep(task(steps, name), steps, task(steps, other).parentTask(), &task(steps, other));
        } else if (!task(whole, other).removed()) {
            task(whole, name).moveToList(whole, &task(whole, other), nullptr);
            moveStepByStep(task(steps, name), task(steps, other));
        }
        ASSERT_EQ(treeText(whole), treeText(steps));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WholeSubtreesTest, testing::Range(1u, 21u));

}  // namespace
}  // namespace corvane
