// Inserting, copying, moving and deleting tasks: the steps at the edges.
#include "ModelFixture.h"

namespace corvane {
namespace {

class PlacementTest : public ModelTest {
  protected:
    GTask* maybe(const GList& list, std::string_view name) {
        return name == "-" ? nullptr : name == "foreign" ? foreign_ : &task(list, name);
    }

    GTask* foreign_ = nullptr;  ///< a task of another list
};

struct Placement {
    const char* what;
    const char* before;
    const char *parent, *previous;
    const char* after;
};

TEST_F(PlacementTest, InsertsAtAPlace) {
    foreign_ = &task(listWith("F(G)"), "F");
    constexpr Placement kRows[] = {
        {"previous is no child, two children",  "X(A B(C)) Y",      "X",       "Y",       "X(A B(C) N) Y"   },
        {"no parent and a child as previous",   "X(A) Y",           "-",       "A",       "N X(A) Y"        },
        {"parent and previous of another list", "X",                "foreign", "foreign", "N X"             },
        {"removed parent",                      "X(A) R*",          "R",       "-",       "N X(A) R*"       },
        {"removed children make no room",       "X(A R*(B@3)) Y@2", "-",       "X",       "X(A R*(B@4)) N Y"},
        {"unsound: behind the previous one",    "A B@5 C@9",        "-",       "B",       "A B@5 N@6 C@9"   },
        {"unsound: what stands there moves",    "A B@1 C@1",        "-",       "A",       "A N B C"         },
        {"unsound: a position below 0",         "A@-7 B@-6",        "-",       "A",       "N@-6 A B"        },
    };
    for (const Placement& row : kRows) {
        SCOPED_TRACE(row.what);
        GList& list = listWith(row.before);
        GTask& made = GTask::insertNewTaskToList(list, maybe(list, row.parent), maybe(list, row.previous));
        made.setName(u"N");
        EXPECT_EQ(treeText(list), row.after);
        EXPECT_EQ(made.createdTimestamp(), now());
        EXPECT_EQ(made.id(), std::nullopt);
        EXPECT_EQ(made.lastModified(), 0);
    }
}

TEST_F(PlacementTest, InsertsByTheListsStaleCache) {
    plant(list(), "A B");
    list().setUseCachedOrderedAllTasks(true);
    list().orderedAllTasks();
    plant(list(), "C@2 D@3");
    GTask::insertNewTaskToList(list(), nullptr, nullptr).setName(u"N");
    EXPECT_EQ(treeText(list()), "N A B C@2 D@3") << "C and D were not in the cache";
    EXPECT_EQ(list().orderedAllTasks().size(), 5u) << "the cache is dropped";
}

TEST_F(PlacementTest, PositionsHave16Bits) {
    plant(list(), "A@32767");
    GTask::insertNewTaskToList(list(), nullptr, &named("A")).setName(u"N");
    EXPECT_EQ(named("N").displayOrder(), -32768);
}

TEST_F(PlacementTest, MovesToAPlace) {
    foreign_ = &task(listWith("F"), "F");
    constexpr Placement kRows[] = {
        {"behind a child: the parent is ignored",    "X(A(C) B) Y M", "Y", "A",       "X(A(C) M B) Y"},
        {"previous removed: behind its own",         "X(A M) R*",     "-", "R",       "X(A M) R*"    },
        {"previous invalid, no sibling: the parent", "X(M A) Y",      "Y", "foreign", "X(A) Y(M)"    },
        {"parent is itself: first child again",      "X(A M)",        "M", "-",       "X(M A)"       },
        {"parent removed: first child again",        "X(A M) R*",     "R", "-",       "X(M A) R*"    },
        {"below its own grandchild",                 "X M(A(B) C) Y", "B", "-",       "A(B(M)) C X Y"},
        {"behind its own grandchild",                "M(A(B C)) Y",   "-", "B",       "A(B M C) Y"   },
        {"unsound: indexes are kept in the list",    "X@7 M@90 Y@91", "-", "Y",       "X@7 M@91 Y@91"},
    };
    for (const Placement& row : kRows) {
        SCOPED_TRACE(row.what);
        GList& list = listWith(row.before);
        GTask& moved = task(list, "M");
        GTask& answer = moved.moveToList(list, maybe(list, row.parent), maybe(list, row.previous));
        EXPECT_EQ(&answer, &moved);
        EXPECT_EQ(treeText(list), row.after);
        EXPECT_EQ(moved.lastModified(), 0) << "the caller marks the move";
    }
}

// A tombstone with live tasks below it comes from damage only; a move must not close a circle through it.
TEST_F(PlacementTest, NoMoveMakesACircle) {
    plant(list(), "X M(R*(B@2)) Y@3");
    named("M").moveToList(list(), &named("B"), nullptr);
    EXPECT_EQ(named("M").parentTask(), nullptr);
    EXPECT_FALSE(named("B").hasParent(&named("B")));
}

TEST_F(PlacementTest, MovesToAnotherListAsACopy) {
    plant(list(), "X M#(A# B(C#) R*#) Y");
    GList& other = listWith("P(Q)");
    GTask& original = named("M");
    GTask& moved = original.moveToList(other, &task(other, "P"), &task(other, "Q"));
    EXPECT_EQ(treeText(other), "P(Q M(A B(C)))");
    EXPECT_EQ(treeText(list()), "X Y A*# C*# M*# R*#") << "tombstones of what the server knows";
    EXPECT_EQ(nameOf(&moved), "M");
    EXPECT_NE(&moved, &original);
    save();
    EXPECT_EQ(context().fetch<GTask>({}).size(), 12u);
}

TEST_F(PlacementTest, CopiesToAPlace) {
    foreign_ = &task(listWith("F"), "F");
    constexpr Placement kRows[] = {
        {"completed goes along, removed not", "M(A+ R*(B@3)) Y@2",  "Y", "-", "M(A+ R*(B@5)) Y(M(A+))"      },
        {"behind itself: to the top",         "X M(A) Y",           "-", "M", "M(A) X M(A) Y"               },
        {"below its own child",               "M(A B) Y",           "A", "-", "M(A(M(A B)) B) Y"            },
        {"removed, with its live children",   "X M*(A@1 B@2(C@3))", "-", "X", "B(C) A X M*(A@4 B@5(C@6)) M*"},
    };
    for (const Placement& row : kRows) {
        SCOPED_TRACE(row.what);
        GList& list = listWith(row.before);
        task(list, "M").cloneToList(list, maybe(list, row.parent), maybe(list, row.previous));
        EXPECT_EQ(treeText(list), row.after);
    }
}

Value valueOfKind(PropertyKind kind) {
    if (kind == PropertyKind::kBoolean) return true;
    if (kind == PropertyKind::kDouble) return 1.5;
    if (kind == PropertyKind::kDate) return at("2020-01-01");
    if (kind == PropertyKind::kString) return std::u16string(u"text");
    return std::int64_t{7};
}

TEST_F(PlacementTest, CopiesCarryFieldsButNoIdentity) {
    plant(list(), "P(M)");
    GTask& source = named("M");
    for (const PropertyDescription& property : GTask::kProperties) {
        if (!property.isRelationship()) source.setValueForKey(property.name, valueOfKind(property.kind));
    }
    const GTask& copy = source.cloneToList(list(), nullptr, nullptr);
    std::string different;
    for (const PropertyDescription& property : GTask::kProperties) {
        if (copy.valueForKey(property.name) == source.valueForKey(property.name)) continue;
        different += std::string(property.name) + " ";
    }
    EXPECT_EQ(different, "displayOrder parentTask createdTimestamp id lastModified ");
    EXPECT_EQ(copy.createdTimestamp(), now());
    EXPECT_EQ(copy.id(), std::nullopt);
}

TEST_F(PlacementTest, DeletesOneTask) {
    struct Row {
        const char* what;
        const char* before;
        bool purge;
        const char* after;
        const char* marked;
    };
    constexpr Row kRows[] = {
        {"new: gone, children move up", "X M(A(B) C) Y",   kKeepTombstone, "X A(B) C Y",     "AC"},
        {"known: a tombstone",          "X(M#(A R*#) C)",  kKeepTombstone, "X(A C M*# R*#)", "AR"},
        {"purged: gone, no stamps",     "X(M#(A R*#) C)",  kPurge,         "X(A C R*#)",     ""  },
        {"unsound positions",           "X@4 M@2 Y@9 Z@9", kKeepTombstone, "Z@2 X@4 Y@9",    ""  },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        GList& list = listWith(row.before);
        task(list, "M").deleteTask(row.purge);
        EXPECT_EQ(treeText(list), row.after);
        std::string marked;
        for (const GTask* each : list.tasks()) marked += each->lastModified() != 0 ? nameOf(each) : "";
        EXPECT_EQ(marked, row.marked);
    }
}

TEST_F(PlacementTest, DeletesWithSubtree) {
    plant(list(), "X M#(A# B(C#(D)) R*#) Y");
    named("M").deleteTaskAndSubTasks(kKeepTombstone);
    EXPECT_EQ(treeText(list()), "X Y A*# C*# M*# R*#");
    EXPECT_EQ(named("R").lastModified(), 64'092'211'200'000);
    EXPECT_EQ(named("C").displayOrder(), 1) << "each had moved up to where the first one was";
    save();
    EXPECT_EQ(context().fetch<GTask>({}).size(), 6u);
    plant(list(), "Z#@2(V#@3)");
    named("Z").deleteTaskAndSubTasks(kPurge);
    EXPECT_EQ(treeText(list()), "X Y A*# C*# M*# R*#");
}

}  // namespace
}  // namespace corvane
