#include "platform/store/ManagedObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "BookModel.h"
#include "StoreTestFixture.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ManagedObjectTest : public BookStoreTest {};

std::string titlesOf(const RelatedObjects<Book>& books) {
    return titles(std::vector<ManagedObject*>(books.begin(), books.end()));
}

TEST_F(ManagedObjectTest, ANewObjectHasZerosAndNothingElse) {
    const Book& book = books_.context().insert<Book>();
    EXPECT_TRUE(book.isInserted());
    EXPECT_EQ(book.title(), std::nullopt);
    EXPECT_EQ(book.valueForKey("pages"), Value(std::int64_t{0}));
    EXPECT_EQ(book.valueForKey("rating"), Value(0.0));
    EXPECT_EQ(book.valueForKey("isRead"), Value(false));
    EXPECT_EQ(book.valueForKey("printed"), Value());
    EXPECT_EQ(book.valueForKey("shelf"), Value());
    books_.save();
    EXPECT_EQ(rows("SELECT Z_OPT, ZTITLE, ZPAGES, ZISREAD, ZRATING, ZPRINTED, ZCOVER, ZSHELF FROM ZBOOK"),
              "1|NULL|0|0|0.0|NULL|NULL|NULL");
}

TEST_F(ManagedObjectTest, EveryKindOfValueComesBack) {
    const Bytes bytes{0, 1, 255};
    Book& book = books_.addBook(u"Gr\u00fc\u00dfe \U0001F600");
    book.setPages(-32768);
    book.setCopies(2147483647);
    book.setStamp(std::numeric_limits<std::int64_t>::min());
    book.setIsRead(true);
    book.setRating(-0.125);
    book.setPrinted(at("2024-03-05 09:00:30.250"));
    book.setCover(&bytes);
    books_.save();

    BookStore reopened(file_);
    const Book& read = reopened.book(u"Gr\u00fc\u00dfe \U0001F600");
    EXPECT_EQ(read.pages(), -32768);
    EXPECT_EQ(read.copies(), 2147483647);
    EXPECT_EQ(read.stamp(), std::numeric_limits<std::int64_t>::min());
    EXPECT_TRUE(read.isRead());
    EXPECT_EQ(read.rating(), -0.125);
    EXPECT_EQ(read.printed(), at("2024-03-05 09:00:30.250"));
    ASSERT_TRUE(read.cover());
    EXPECT_EQ(*read.cover(), bytes);
}

TEST_F(ManagedObjectTest, OnlyADifferentValueIsAChange) {
    Book& book = books_.addBook(u"Emma");
    book.setPrinted(at("2024-03-05"));
    books_.save();

    book.setTitle(u"Emma");
    book.setPages(0);
    book.setPrinted(at("2024-03-05"));
    book.setShelf(nullptr);
    EXPECT_FALSE(book.hasChanges());
    EXPECT_FALSE(books_.context().hasChanges());

    book.setPages(7);
    book.setTitle(u"Persuasion");
    EXPECT_THAT(book.changedKeys(), ElementsAre("title", "pages"));
    book.setTitle(u"Emma");
    EXPECT_THAT(book.changedKeys(), ElementsAre("pages"));
    book.setPages(0);
    EXPECT_FALSE(book.isUpdated());
    EXPECT_FALSE(books_.context().hasChanges());
}

TEST_F(ManagedObjectTest, ValuesOfAForeignKindReadAsNoneAndStayWhatTheyAre) {
    books_.addBook(u"Emma");
    books_.save();
    executeElsewhere(
        "UPDATE ZBOOK SET ZPAGES = 70000, ZCOPIES = 'many', ZSTAMP = 1e300, ZISREAD = 2, "
        "ZRATING = x'00FF', ZPRINTED = 9e999, ZCOVER = 'text', ZSHELF = 'there', ZWHOLE = 99");
    const std::string before = rows(
        "SELECT ZPAGES, ZCOPIES, ZSTAMP, ZISREAD, ZRATING, ZPRINTED, ZCOVER, "
        "ZSHELF, ZWHOLE FROM ZBOOK");

    Book& book = books_.book(u"Emma");
    EXPECT_EQ(book.pages(), 32767);
    EXPECT_EQ(book.copies(), 0);
    EXPECT_EQ(book.stamp(), std::numeric_limits<std::int64_t>::max());
    EXPECT_TRUE(book.isRead());
    EXPECT_EQ(book.rating(), 0);
    EXPECT_EQ(book.printed(), std::nullopt);
    EXPECT_EQ(book.cover(), nullptr);
    EXPECT_EQ(book.shelf(), nullptr);
    EXPECT_EQ(book.whole(), nullptr);
    EXPECT_EQ(book.valueForKey("copies"), Value(std::u16string(u"many")));
    EXPECT_EQ(book.valueForKey("pages"), Value(std::int64_t{70000}));

    book.setTitle(u"Persuasion");
    books_.save();
    EXPECT_EQ(rows("SELECT ZPAGES, ZCOPIES, ZSTAMP, ZISREAD, ZRATING, ZPRINTED, ZCOVER, ZSHELF, ZWHOLE "
                   "FROM ZBOOK"),
              before);
    EXPECT_EQ(rows("SELECT ZTITLE, Z_OPT FROM ZBOOK"), "Persuasion|2");
}

TEST_F(ManagedObjectTest, SettingWhatAForeignValueReadsAsRepairsIt) {
    books_.addBook(u"Emma");
    books_.save();
    executeElsewhere("UPDATE ZBOOK SET ZPAGES = 70000, ZISREAD = NULL, ZWHOLE = 99");
    Book& book = books_.book(u"Emma");
    EXPECT_EQ(book.valueForKey("isRead"), Value());
    book.setPages(32767);
    book.setIsRead(false);
    book.setWhole(nullptr);
    books_.save();
    EXPECT_EQ(rows("SELECT ZPAGES, ZISREAD, ZWHOLE FROM ZBOOK"), "32767|0|NULL");
}

TEST_F(ManagedObjectTest, SettingByNameTakesWhatTheAttributeCanHold) {
    Book& book = books_.addBook(u"Emma");
    const struct {
        const char* key;
        Value given;
        Value kept;
    } kRows[] = {
        {"pages",   Value(std::int64_t{40000}),       Value(std::int64_t{32767})    },
        {"pages",   Value(12.9),                      Value(std::int64_t{12})       },
        {"pages",   Value(std::u16string(u"twelve")), Value(std::int64_t{12})       },
        {"isRead",  Value(std::int64_t{5}),           Value(true)                   },
        {"isRead",  Value(),                          Value()                       },
        {"rating",  Value(std::int64_t{4}),           Value(4.0)                    },
        {"rating",  Value(std::nan("")),              Value()                       },
        {"printed", Value(5.5),                       Value(Date(TimeInterval(5.5)))},
        {"title",   Value(std::int64_t{5}),           Value(std::u16string(u"Emma"))},
        {"shelf",   Value(&book),                     Value()                       },
        {"parts",   Value(&book),                     Value()                       },
        {"unknown", Value(true),                      Value()                       },
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.key);
        book.setValueForKey(row.key, row.given);
        EXPECT_EQ(book.valueForKey(row.key), row.kept);
    }
}

TEST_F(ManagedObjectTest, BothSidesOfARelationshipFollowAtOnce) {
    Shelf& upper = books_.addShelf(u"Upper");
    Shelf& lower = books_.addShelf(u"Lower");
    books_.save();
    Book& first = books_.addBook(u"A", &upper);
    Book& second = books_.addBook(u"B", &upper);
    EXPECT_EQ(titlesOf(upper.books()), "A B");
    first.setShelf(&lower);
    EXPECT_EQ(titlesOf(upper.books()), "B");
    EXPECT_EQ(titlesOf(lower.books()), "A");
    books_.save();
    first.setShelf(nullptr);
    second.setShelf(&lower);
    EXPECT_EQ(titlesOf(upper.books()), "");
    EXPECT_EQ(titlesOf(lower.books()), "B");
}

TEST_F(ManagedObjectTest, MembersComeInStoreOrderAndUnsavedOnesLast) {
    Shelf& shelf = books_.addShelf(u"Upper");
    books_.addBook(u"A", &shelf);
    books_.addBook(u"B", nullptr);
    books_.addBook(u"C", &shelf);
    books_.save();

    BookStore reopened(file_);
    Shelf& sameShelf = reopened.shelf(u"Upper");
    Book& added = reopened.addBook(u"D", &sameShelf);
    reopened.book(u"B").setShelf(&sameShelf);
    reopened.book(u"A").setShelf(nullptr);
    reopened.addBook(u"E", &sameShelf);
    // Not loaded before: what was moved in and out meanwhile is right all the same.
    EXPECT_EQ(titlesOf(sameShelf.books()), "B C D E");
    reopened.context().deleteObject(added);
    EXPECT_EQ(titlesOf(sameShelf.books()), "B C E");
}

TEST_F(ManagedObjectTest, AMissingRowIsNone) {
    Shelf& shelf = books_.addShelf(u"Upper");
    books_.addBook(u"A", &shelf);
    books_.save();
    executeElsewhere("DELETE FROM ZSHELF");
    BookStore reopened(file_);
    Book& book = reopened.book(u"A");
    EXPECT_EQ(book.shelf(), nullptr);
    // The column still refers to a row, so that the relationship is not nil; what lies behind it is.
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"shelf == nil")), "");
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"shelf.hidden == NO")), "");
    book.setPages(3);
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"shelf == nil AND pages == 3")), "");
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"shelf.hidden == NO AND pages == 3")), "");
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"shelf.name == nil AND pages == 3")), "A");
}

TEST_F(ManagedObjectTest, ObserversHearOfEachEndBeforeAndAfter) {
    Shelf& upper = books_.addShelf(u"Upper");
    Shelf& lower = books_.addShelf(u"Lower");
    Book& book = books_.addBook(u"A", &upper);
    std::vector<std::string> heard;
    const auto listen = [&heard](const char* who) {
        return [&heard, who](ManagedObject&, std::string_view key, bool isPrior) {
            heard.push_back(std::string(who) + "." + std::string(key) + (isPrior ? "?" : "!"));
        };
    };
    const auto token = book.addObserver(listen("book"));
    upper.addObserver(listen("upper"));
    lower.addObserver(listen("lower"));
    book.setShelf(&lower);
    EXPECT_THAT(heard, ElementsAre("book.shelf?", "upper.books?", "lower.books?", "book.shelf!",
                                   "upper.books!", "lower.books!"));
    heard.clear();
    book.setTitle(u"A");
    EXPECT_THAT(heard, IsEmpty());
    book.setTitle(u"B");
    book.willChangeValueForKey("whole");
    EXPECT_THAT(heard, ElementsAre("book.title?", "book.title!", "book.whole?"));
    book.removeObserver(token);
    book.setTitle(u"C");
    EXPECT_EQ(heard.size(), 3u);
}

TEST_F(ManagedObjectTest, AncestorsInACircleAreReadWithoutEnd) {
    for (const auto* title : {u"A", u"B", u"C"}) books_.addBook(title);
    books_.save();
    executeElsewhere("UPDATE ZBOOK SET ZWHOLE = CASE Z_PK WHEN 3 THEN 1 ELSE Z_PK + 1 END");
    executeElsewhere("INSERT INTO ZBOOK (Z_PK, ZTITLE, ZWHOLE) VALUES (9, 'D', 9)");
    BookStore reopened(file_);
    Book& book = reopened.book(u"A");
    EXPECT_EQ(book.whole()->whole()->whole(), &book);
    EXPECT_EQ(titlesOf(book.parts()), "C");
    Book& own = reopened.book(u"D");
    EXPECT_EQ(own.whole(), &own);
    EXPECT_EQ(titlesOf(own.parts()), "D");
    reopened.context().deleteObject(own);
    reopened.context().deleteObject(book);
    reopened.save();
    EXPECT_EQ(rows("SELECT Z_PK, ZWHOLE FROM ZBOOK ORDER BY Z_PK"), "2|3\n3|NULL");
}

TEST(ManagedObjectModelTest, RefusesRelationshipsWithoutTheirInverse) {
    static constexpr auto kLone = std::to_array<PropertyDescription>({toOne("next", "Node", "previous")});
    static constexpr auto kSkew = std::to_array<PropertyDescription>(
        {toOne("next", "Node", "previous"), toMany("previous", "Node", "other")});
    static constexpr auto kPair = std::to_array<PropertyDescription>(
        {toOne("next", "Node", "previous"), toOne("previous", "Node", "next")});
    constexpr EntityDescription::Factory kNone = nullptr;
    const auto model = [](std::span<const PropertyDescription> properties) {
        const EntityDescription node("Node", properties, kNone);
        ManagedObjectModel("Nodes", {node});
    };
    EXPECT_THROW(model(kLone), std::invalid_argument);
    EXPECT_THROW(model(kSkew), std::invalid_argument);
    EXPECT_THROW(model(kPair), std::invalid_argument);
}

}  // namespace
}  // namespace corvane
