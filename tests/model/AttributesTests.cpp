// Derived attributes, colours, stamps and what deletion takes along.
#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "model/Equality.h"
#include "platform/foundation/KeyedArchive.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::Optional;

class AttributesTest : public ModelTest {};

TEST_F(AttributesTest, ListPropertiesKeepTheirOtherBits) {
    list().setProperties(16);
    list().setDefaultList(true);
    EXPECT_EQ(list().properties(), 24);
    list().setProperties(29);
    list().setTasksOrder(2);
    EXPECT_EQ(list().properties(), 26);
    list().setProperties(0);
    list().setTasksOrder(9);
    EXPECT_EQ(list().properties(), 9) << "the order is not masked";
    list().setProperties(-32);
    list().setUserChangedName(true);
    EXPECT_EQ(list().properties(), -16);
    list().setProperties(~8);
    EXPECT_EQ(list().tasksOrder(), 7);
    EXPECT_FALSE(list().defaultList());
    EXPECT_TRUE(list().userChangedName());
}

TEST_F(AttributesTest, StampsAreMillisecondsCutOff) {
    plant(list(), "A");
    list().setLastModified(1500);
    EXPECT_EQ(list().lastUpdated(), dateFromSecondsSince1970(1.5));
    list().setLastUpdated(dateFromSecondsSince1970(1.9999));
    EXPECT_EQ(list().lastModified(), 1999);
    named("A").setLastUpdated(dateFromSecondsSince1970(-1.9999));
    EXPECT_EQ(named("A").lastModified(), -1999);
    named("A").setLastUpdated(Date(TimeInterval(1e300)));
    EXPECT_EQ(named("A").lastModified(), std::numeric_limits<std::int64_t>::max());
    // Local changes count from the far future.
    GTask& task = named("A");
    task.setLastModified(1'600'000'000'000);
    task.updateLastModified();
    EXPECT_EQ(task.lastModified(), 64'092'211'200'000);
    task.updateLastModified();
    EXPECT_EQ(task.lastModified(), 64'092'211'201'000);
    task.setLastModified(std::numeric_limits<std::int64_t>::max());
    task.updateLastModified();
    EXPECT_EQ(task.lastModified(), std::numeric_limits<std::int64_t>::max());
}

TEST_F(AttributesTest, DescriptionIsOneLine) {
    plant(list(), "Parent(Child+#@-1)");
    GTask& child = named("Child");
    child.setDueDate(at("2024-03-05 12:00"));
    child.setLastModified(1500);
    EXPECT_EQ(child.desc(),
              u"(Parent)4294967295. (v)Child-2024-03-05 12:00:00 +0000 "
              u"1970-01-01 00:00:01 +0000[id-Child]");
    GTask& root = named("Parent");
    root.setName(std::nullopt);
    root.setRemoved(true);
    EXPECT_EQ(root.desc(), u"(-)0.*( )(null)-(null) 1970-01-01 00:00:00 +0000[(null)]");
}

TEST_F(AttributesTest, ColorsComeBackAndUnreadableOnesStay) {
    EXPECT_EQ(list().color(), std::nullopt);
    list().setColor(Color::rgb(0.25, 0.5, 1));
    EXPECT_THAT(list().color(), Optional(Color::rgb(0.25, 0.5, 1)));
    list().setValueForKey("color", Value(archivedDataWithColor(Color::white(0.5))));
    EXPECT_THAT(list().color(), Optional(Color::white(0.5))) << "a change behind the accessor's back";

    const Bytes foreign = {'s', 't', 'r', 'e', 'a', 'm'};
    list().setValueForKey("color", Value(foreign));
    EXPECT_EQ(list().color(), std::nullopt);
    list().setColor(std::nullopt);
    list().setName(u"Renamed");
    save();
    EXPECT_EQ(list().valueForKey("color"), Value(foreign));
    list().setColor(Color::white(1));
    list().setColor(std::nullopt);
    EXPECT_TRUE(isNil(list().valueForKey("color")));
}

TEST(AreEqualOrBothNil, ComparesWhatIsThere) {
    using Text = std::optional<std::u16string>;
    EXPECT_TRUE(AreEqualOrBothNil(Text(), Text()));
    EXPECT_FALSE(AreEqualOrBothNil(Text(u""), Text()));
    EXPECT_TRUE(AreEqualOrBothNil(Text(u"a"), std::optional<std::u16string_view>(u"a")));
    const int one = 1, anotherOne = 1;
    const int* none = nullptr;
    EXPECT_TRUE(AreEqualOrBothNil(&one, &anotherOne));
    EXPECT_FALSE(AreEqualOrBothNil(&one, none));
}

TEST_F(AttributesTest, DeletionTakesWhatBelongsToIt) {
    plant(list(), "A(B) C*");
    GTask& foreignChild = task(listWith("X(Y)"), "Y");
    foreignChild.setParentTask(&named("A"));  // a damaged store: the parent is in another list
    save();
    context().deleteObject(list());
    save();
    EXPECT_EQ(context().fetch<GTask>({}).size(), 2u);
    EXPECT_EQ(foreignChild.parentTask(), nullptr);
    context().deleteObject(account());
    save();
    EXPECT_THAT(context().fetch<GTask>({}), IsEmpty());
    EXPECT_THAT(context().fetch<GList>({}), IsEmpty());
}

}  // namespace
}  // namespace corvane
