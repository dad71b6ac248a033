// Random edits with saves: memory and file stay one, and both sides of every relationship agree all the time.
#include <gtest/gtest.h>

#include <algorithm>

#include "RandomEdits.h"
#include "StoreTestFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

std::string nameOf(const ManagedObject* object) {
    if (!object) return "-";
    const Value name = object->valueForKey(object->entity().name() == "Book" ? "title" : "name");
    const auto* text = std::get_if<std::u16string>(&name);
    return text ? utf8FromText(*text) : "?";
}

// One line an object with its values and the names of what it is related to.
std::string lineOf(const ManagedObject& object) {
    const EntityDescription& entity = object.entity();
    std::string line(entity.name());
    for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
        line += ' ';
        const Value value = object.valueAt(i);
        if (const auto* text = std::get_if<std::u16string>(&value)) line += utf8FromText(*text);
        if (const auto* integer = std::get_if<std::int64_t>(&value)) line += std::to_string(*integer);
        if (const auto* related = std::get_if<ManagedObject*>(&value)) line += nameOf(*related);
        if (entity.property(i).kind != PropertyKind::kToMany) continue;
        for (const ManagedObject* member : object.membersAt(i)) line += nameOf(member) + ",";
    }
    return line + "\n";
}

std::vector<ManagedObject*> allObjects(ManagedObjectContext& context) {
    std::vector<ManagedObject*> all;
    for (const char* entity : {"Owner", "Shelf", "Book"}) {
        FetchRequest request;
        request.entityName = entity;
        const auto found = std::get<std::vector<ManagedObject*>>(context.executeFetch(request));
        all.insert(all.end(), found.begin(), found.end());
    }
    return all;
}

std::string textOf(ManagedObjectContext& context) {
    std::string text;
    for (const ManagedObject* object : allObjects(context)) text += lineOf(*object);
    return text;
}

// The places where one side of a relationship does not know the other.
std::string disagreements(const std::vector<ManagedObject*>& objects) {
    std::string text;
    for (ManagedObject* object : objects) {
        const EntityDescription& entity = object->entity();
        for (PropertyIndex i = 0; i < entity.properties().size(); ++i) {
            const PropertyIndex inverse =
                entity.property(i).isRelationship() ? entity.inverse(i) : PropertyIndex{0};
            const Value value = object->valueAt(i);
            const auto* owner = std::get_if<ManagedObject*>(&value);
            if (owner && std::ranges::count((*owner)->membersAt(inverse), object) != 1) {
                text += nameOf(*owner) + " lacks " + nameOf(object) + "; ";
            }
            if (entity.property(i).kind != PropertyKind::kToMany) continue;
            for (const ManagedObject* member : object->membersAt(i)) {
                if (member->isDeleted() || member->valueAt(inverse) != Value(object)) {
                    text += nameOf(object) + " keeps " + nameOf(member) + "; ";
                }
            }
        }
    }
    return text;
}

class RandomOperationsTest : public BookStoreTest, public testing::WithParamInterface<unsigned> {};

TEST_P(RandomOperationsTest, MemoryAndFileStayOne) {
    Dice dice(GetParam());
    RandomEdits edits(books_, dice);
    for (int round = 0; round < 12; ++round) {
        const std::string saved = textOf(context());
        for (std::size_t i = 0, steps = 1 + dice.below(25); i < steps; ++i) {
            edits.step();
            ASSERT_EQ(disagreements(allObjects(context())), "") << round << "/" << i;
        }
        if (dice.oneIn(4)) {
            context().rollback();
            ASSERT_EQ(textOf(context()), saved) << round;
        }
        books_.save();
        ASSERT_EQ(textOf(BookStore(file_).context()), textOf(context())) << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperationsTest, testing::Range(1u, 7u));

}  // namespace
}  // namespace corvane
