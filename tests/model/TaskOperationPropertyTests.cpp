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
    /// One of them, or empty.
    std::string oneOf(const std::vector<std::string>& names) {
        const int index = below(static_cast<int>(names.size()) + 1);
        return index == 0 ? std::string() : names[static_cast<std::size_t>(index) - 1];
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
        const std::string name = chance_.oneOf(names_.names());
        const std::string parent = chance_.oneOf(names_.names());
        const std::string previous = chance_.one(2) ? siblingUnder(parent) : std::string();
        if (name.empty() || names_.names().size() < 5) return insert(parent, previous);
        if (names_.names().size() > 40) return removeSubtree(name);
        switch (chance_.below(6)) {
            case 0:
                return insert(parent, previous);
            case 1:
                return copy(name, previous == name || parent == name ? std::string() : parent,
                            previous == name || parent == name ? std::string() : previous);
            case 2:
                return remove(name);
            case 3:
                return chance_.one(3) ? removeSubtree(name) : remove(name);
            default:
                return move(name, parent, previous);
        }
    }

    Chance chance_{GetParam()};
    NameTree names_;

  private:
    GTask* maybe(const std::string& name) {
        if (name.empty()) return nullptr;
        for (GTask* task : list().orderedAllTasks()) {
            if (nameOf(task) == name) return task;
        }
        return nullptr;
    }

    std::string nextName() { return "T" + std::to_string(nextNumber_++); }

    std::string siblingUnder(const std::string& parent) {
        std::vector<std::string> siblings = names_.names();
        std::erase_if(siblings, [&](const std::string& name) { return names_.parentOf(name) != parent; });
        return chance_.oneOf(siblings);
    }

    void insert(const std::string& parent, const std::string& previous) {
        GTask& task = GTask::insertNewTaskToList(list(), maybe(parent), maybe(previous));
        const std::string name = nextName();
        task.setName(textFromUtf8(name));
        if (chance_.one(2)) task.setId(u"known");
        names_.insert(name, parent, previous);
    }

    void copy(const std::string& name, const std::string& parent, const std::string& previous) {
        GTask& copied = maybe(name)->cloneToList(list(), maybe(parent), maybe(previous));
        const std::vector<GTask*> order = list().orderedAllTasks();
        auto task = std::ranges::find(order, &copied);
        names_.copy(name, parent, previous, [&](const std::string& original) {
            EXPECT_EQ(nameOf(*task), original);
            const std::string renamed = nextName();
            (*task++)->setName(textFromUtf8(renamed));
            return renamed;
        });
    }

    void move(const std::string& name, const std::string& parent, const std::string& previous) {
        const bool isOwnPlace = parent == name || previous == name;
        const std::string toParent = isOwnPlace ? std::string() : parent;
        const std::string behind = isOwnPlace ? std::string() : previous;
        maybe(name)->moveToList(list(), maybe(toParent), maybe(behind));
        names_.move(name, toParent, behind);
    }

    void remove(const std::string& name) {
        maybe(name)->deleteTask(chance_.one(2));
        names_.remove(name);
    }

    void removeSubtree(const std::string& name) {
        maybe(name)->deleteTaskAndSubTasks(chance_.one(2));
        names_.removeSubtree(name);
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
    ASSERT_EQ(context().save(), std::nullopt);
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

std::string randomPosition(Chance& chance, int kind) {
    if (kind == 0) return {};
    if (kind == 1) return "@" + std::to_string(chance.below(12) - 2);
    return chance.one(3) ? "@" + std::to_string(32'760 + chance.below(8)) : std::string();
}

std::string randomTree(Chance& chance) {
    const int kind = chance.below(3);
    std::string text;
    int depth = 0;
    for (int i = 0; i < 14; ++i) {
        const char last = text.empty() ? ' ' : text.back();
        if (i > 0 && chance.one(2)) {
            text += '(';
            ++depth;
        } else {
            while (depth > 0 && chance.one(2)) {
                text += ')';
                --depth;
            }
            if (last != ' ') text += ' ';
        }
        text += "T" + std::to_string(i) + (chance.one(6) ? "*" : "") + (chance.one(3) ? "#" : "") +
                randomPosition(chance, kind);
    }
    return text + std::string(static_cast<std::size_t>(depth), ')');
}

class WholeSubtreesTest : public ModelTest, public testing::WithParamInterface<unsigned> {};

TEST_P(WholeSubtreesTest, AreCopiedAndDeletedAsTaskAfterTask) {
    Chance chance(GetParam());
    for (int round = 0; round < 12; ++round) {
        const std::string tree = randomTree(chance);
        SCOPED_TRACE(tree);
        GList& bulk = listWith(tree);
        GList& steps = listWith(tree);
        if (chance.one(2)) save();
        const std::string name = "T" + std::to_string(chance.below(14));
        const std::string previous = "T" + std::to_string(chance.below(14));
        GTask& source = task(bulk, name);
        if (chance.one(2)) {
            const bool purge = chance.one(2);
            source.deleteTaskAndSubTasks(purge);
            deleteStepByStep(task(steps, name), purge);
        } else if (GTask* parent = task(bulk, previous).parentTask();
                   parent != &source && (!parent || !parent->hasParent(&source))) {
            source.cloneToList(bulk, parent, &task(bulk, previous));
            cloneStepByStep(task(steps, name), steps, parent ? &task(steps, nameOf(parent)) : nullptr,
                            &task(steps, previous));
        }
        ASSERT_EQ(treeText(bulk), treeText(steps)) << name << " behind " << previous;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WholeSubtreesTest, testing::Range(1u, 21u));

}  // namespace
}  // namespace corvane
