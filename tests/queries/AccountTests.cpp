// Accounts: positions, defaults, deletion, the repair of all orders.
#include "QueryFixture.h"

namespace corvane {
namespace {

// The fixture's account is the first of each of these.
class AccountTest : public QueryTest {
  protected:
    AccountTest() { account().setName(u"A"); }

    GUser& add(std::u16string_view name, std::int32_t position, std::int16_t type = 7) {
        GUser& made = GUser::insertNewAccountToContext(context(), position);
        made.setName(name);
        made.setAccountType(type);
        return made;
    }
};

TEST_F(AccountTest, NewAccountsMakeRoom) {
    GUser& b = add(u"B", 7);
    EXPECT_EQ(b.createdTimestamp(), now());
    add(u"C", 0);
    add(u"D", -1);
    EXPECT_EQ(text(orderedAccounts(context())), "C0 A1 B2 D3");
    add(u"U", 1, kUnlistedAccountType);
    EXPECT_EQ(text(orderedAccounts(context())), "C0 A2 B3 D4") << "room is made before the type is known";
    EXPECT_EQ(allAccounts(context()).size(), 5u);
    plant(makeList(b, u"Gone"), "X(Y)");
    b.deleteAccount();
    save();
    EXPECT_EQ(text(orderedAccounts(context())), "C0 A1 D2") << "the listed ones close up";
    EXPECT_TRUE(context().fetch<GTask>({}).empty());
}

TEST_F(AccountTest, UnlistedAccountsAreNeverTheDefault) {
    add(u"U", 1, kUnlistedAccountType).setIsDefault(true);
    GUser& b = add(u"B", 1);
    EXPECT_EQ(defaultAccount(context()), &account());
    b.setIsDefault(true);
    EXPECT_EQ(defaultAccount(context()), &b);
    account().setAccountType(kUnlistedAccountType);
    b.setAccountType(kUnlistedAccountType);
    EXPECT_EQ(defaultAccount(context()), nullptr);
}

TEST_F(AccountTest, ListsInTheirOrders) {
    GUser& made = accountWithLists(7, {u"b", u"Ärger", u"A", u"c"});
    EXPECT_EQ(text(made.orderedListsByTitle()), "A2 Ärger1 b0 c3");
    EXPECT_EQ(made.defaultList(), &listNamed(made, u"b"));
    listNamed(made, u"c").setIsDefault(true);
    EXPECT_EQ(made.defaultList(), &listNamed(made, u"c"));
    EXPECT_EQ(accountWithLists(7, {}).defaultList(), nullptr);
    EXPECT_EQ(made.findListId(std::nullopt), nullptr);
}

TEST_F(AccountTest, TheOnlyListedAccountBecomesLocal) {
    account().setAccountType(7);
    account().setPassword(u"secret");
    list().setId(u"list");
    list().setDefaultList(true);
    list().setIsDefault(true);
    plant(list(), "A#(B#) C*#");
    GList& removed = listWith("D#");
    removed.setId(u"removed");
    removed.deleteList(kAwaitSynchronisation);
    account().deleteAccount();
    EXPECT_EQ(account().name(), u"");
    EXPECT_EQ(account().password(), u"");
    EXPECT_EQ(account().accountType(), kLocalAccountType);
    EXPECT_EQ(treeText(list()), "A(B)");
    EXPECT_EQ(list().id(), std::nullopt);
    EXPECT_FALSE(list().defaultList());
    EXPECT_TRUE(list().isDefault());
    EXPECT_TRUE(account().removedLists().empty());
    EXPECT_EQ(context().fetch<GTask>({}).size(), 2u);
}

TEST_F(AccountTest, AnUnlistedAccountIsMadeLocalWhileOneIsListed) {
    GUser& unlisted = add(u"U", 1, kUnlistedAccountType);
    unlisted.deleteAccount();
    EXPECT_EQ(unlisted.accountType(), kLocalAccountType);
    EXPECT_EQ(account().name(), u"A");
}

}  // namespace
}  // namespace corvane
