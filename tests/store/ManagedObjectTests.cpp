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
    books_.context().insert<Book>();
    books_.save();
    EXPECT_EQ(rows("SELECT Z_OPT, ZTITLE, ZPAGES, ZISREAD, ZRATING, ZPRINTED, ZCOVER, ZSHELF FROM ZBOOK"),
              "1|NULL|0|0|0.0|NULL|NULL|NULL");
}

TEST_F(ManagedObjectTest, EveryKindOfValueComesBack) {
    using namespace std::string_literals;
    const Bytes bytes{0, 1, 255}, none;
    Book& book = books_.addBook(u"Gr\u00fc\u00dfe \U0001F600");
    book.setPages(-32768);
    book.setCopies(2147483647);
    book.setStamp(std::numeric_limits<std::int64_t>::min());
    book.setIsRead(true);
    book.setRating(-0.125);
    book.setPrinted(at("2024-03-05 09:00:30.250"));
    book.setCover(&bytes);
    books_.addBook(u"a\xD83D\u0000b"s).setCover(&none);
    books_.save();

    BookStore reopened(file_);
    EXPECT_EQ(rows("SELECT hex(ZTITLE), hex(ZCOVER), ZPRINTED FROM ZBOOK WHERE Z_PK = 2"),
              "61EFBFBD0062||NULL")
        << "a lone surrogate is replaced, a zero is not an end";
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

TEST_F(ManagedObjectTest, ValuesOfAForeignKindReadAsNoneAndStayUntilTheyAreSet) {
    const std::string columns = "ZPAGES, ZCOPIES, ZSTAMP, ZISREAD, ZRATING, ZPRINTED, ZCOVER, ZSHELF, ZWHOLE";
    books_.addBook(u"Emma");
    books_.save();
    executeElsewhere("UPDATE ZBOOK SET (" + columns +
                     ") = (70000, 'many', 1e300, 2, x'00FF', 9e999, 'text', 'there', 99)");
    const std::string before = rows("SELECT " + columns + " FROM ZBOOK");

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

    book.setTitle(u"Persuasion");
    books_.save();
    EXPECT_EQ(rows("SELECT " + columns + " FROM ZBOOK"), before);
    EXPECT_EQ(rows("SELECT ZTITLE, Z_OPT FROM ZBOOK"), "Persuasion|2");
    // A value that is set is a change, even where it is what the foreign one reads as.
    book.setPages(32767);
    book.setWhole(nullptr);
    books_.save();
    EXPECT_EQ(rows("SELECT ZPAGES, ZWHOLE FROM ZBOOK"), "32767|NULL");
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
        {"rating",  Value(std::nan("")),              Value()                       },
        {"printed", Value(5.5),                       Value(Date(TimeInterval(5.5)))},
        {"title",   Value(std::int64_t{5}),           Value(std::u16string(u"Emma"))},
        {"shelf",   Value(&book),                     Value()                       },
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.key);
        book.setValueForKey(row.key, row.given);
        EXPECT_EQ(book.valueForKey(row.key), row.kept);
    }
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

}  // namespace
}  // namespace corvane
