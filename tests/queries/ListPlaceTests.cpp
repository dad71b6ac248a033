// Lists among the lists of their account: positions, the default, deletion.
#include "QueryFixture.h"

namespace corvane {
namespace {

class ListPlaceTest : public QueryTest {};

TEST_F(ListPlaceTest, NewListsMakeRoom) {
    constexpr std::tuple<std::int16_t, std::int32_t, const char*> kRows[] = {
        {7,                    0,  "New0 A1 B2"         },
        {7,                    1,  "A0 New1 B2"         },
        {7,                    3,  "A0 B1 New2"         },
        {7,                    -1, "A0 B1 New2"         },
        {kUnlistedAccountType, 1,  "A5000 New5001 B5002"},
    };
    for (const auto& [type, position, expected] : kRows) {
        SCOPED_TRACE(expected);
        GUser& account = accountWithLists(type, {u"A", u"B"});
        GList& list = GList::insertNewListToAccount(account, position);
        EXPECT_EQ(list.createdTimestamp(), now());
        EXPECT_EQ(list.id(), std::nullopt);
        list.setName(u"New");
        EXPECT_EQ(text(account.orderedLists()), expected);
    }
}

TEST_F(ListPlaceTest, MovesToAnyPlace) {
    constexpr std::tuple<std::int16_t, const char16_t*, std::int32_t, const char*> kRows[] = {
        {0,                    u"A", 2, "B0 C1 A2"         },
        {0,                    u"C", 0, "C0 A1 B2"         },
        {0,                    u"A", 9, "B0 C1 A2"         },
        {kUnlistedAccountType, u"C", 1, "A5000 C5001 B5002"},
    };
    for (const auto& [type, name, target, expected] : kRows) {
        SCOPED_TRACE(expected);
        GUser& account = accountWithLists(type, {u"A", u"B", u"C"});
        GList& list = listNamed(account, name);
        list.moveListToDisplayOrder(target);
        EXPECT_EQ(text(account.orderedLists()), expected);
        EXPECT_EQ(list.lastModified(), 0);
    }
}

TEST_F(ListPlaceTest, TheDefaultIsHandedOn) {
    GUser& account = accountWithLists(7, {u"A", u"B", u"C"});
    GList& a = listNamed(account, u"A");
    GList& b = listNamed(account, u"B");
    a.setAsDefault(true);
    EXPECT_EQ(a.lastModified(), 0) << "the new default is not stamped";
    listNamed(account, u"C").setAsDefault(true);
    EXPECT_EQ(text(account.orderedLists()), "A0 B1 C2*");
    EXPECT_EQ(a.lastModified(), 1);
    listNamed(account, u"C").setAsDefault(false);
    EXPECT_EQ(text(account.orderedLists()), "A0* B1 C2");
    a.setAsDefault(false);
    EXPECT_EQ(text(account.orderedLists()), "A0 B1* C2");
    EXPECT_EQ(a.lastModified(), 2) << "as the heir before; giving up the default does not count";
    EXPECT_EQ(b.lastModified(), 1);
}

TEST_F(ListPlaceTest, DeletionKeepsWhatAServerKnows) {
    for (const std::int16_t type : {std::int16_t{7}, kUnlistedAccountType}) {
        SCOPED_TRACE(type);
        GUser& account = accountWithLists(type, {u"A", u"B", u"C"});
        GList& b = listNamed(account, u"B");
        b.setId(u"server");
        b.setIsDefault(true);
        b.deleteList(kAwaitSynchronisation);
        EXPECT_EQ(text(account.orderedLists()), type == 7 ? "A0* C1" : "A5000* C5001");
        EXPECT_EQ(text(account.removedLists()), type == 7 ? "B1" : "B5001");
        EXPECT_EQ(b.user(), &account);
        EXPECT_EQ(b.lastModified(), 1);
        EXPECT_EQ(account.findListId(u"server"), &b);
        b.deleteList(kOutright);
        EXPECT_TRUE(account.removedLists().empty());
    }
}

TEST_F(ListPlaceTest, OutrightDeletionTakesTheTasks) {
    GList& other = listWith("X#(Y) Z*");
    save();
    other.deleteList(kAwaitSynchronisation);  // no server knows the list
    save();
    EXPECT_TRUE(context().fetch<GTask>({}).empty());
    EXPECT_EQ(text(account().orderedLists()), "List0");
}

}  // namespace
}  // namespace corvane
