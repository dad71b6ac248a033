#include "apps/host/Places.h"

#include <gtest/gtest.h>

#include "model/GSData.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

TEST(Places, ListsWithoutAnAccountComeLast) {
    const TestEnvironment environment;
    GSData data;
    data.launch();
    ManagedObjectContext& context = data.viewContext();
    GUser& account = makeFirstAccount(context);
    constexpr std::int32_t kAtTheEnd = -1;
    for (const char16_t* name : {u"Orphan", u"Gone", u"Home"}) makeList(account, name, kAtTheEnd);
    for (GList* list : account.orderedLists()) {
        if (list->name() != u"Home") list->setUser(nullptr);
        list->setRemoved(list->name() == u"Gone");
    }
    std::string names;
    for (const GList* list : listsInOrder(context)) names += utf8FromText(*list->name()) + " ";
    EXPECT_EQ(names, "Home Orphan ");
}

}  // namespace
}  // namespace corvane
