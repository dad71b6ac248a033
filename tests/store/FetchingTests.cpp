#include <gmock/gmock.h>

#include <variant>

#include "StoreTestFixture.h"

namespace corvane {
namespace {

class FetchingTest : public BookStoreTest {
  protected:
    // Two owners with two shelves each, "U0" "U1" and "V0" "V1"; four books on each shelf, "U0a" to "V1d",
    // with 0 to 15 pages; two parts under every book, "U0a0" and "U0a1", without a shelf.
    void SetUp() override {
        int pages = 0;
        for (const std::u16string ownerName : {u"U", u"V"}) {
            Owner& owner = books_.addOwner(ownerName);
            for (const char16_t shelfName : {u'0', u'1'}) {
                Shelf& shelf = books_.addShelf(ownerName + shelfName, &owner);
                for (const char16_t letter : {u'a', u'b', u'c', u'd'}) {
                    Book& book = books_.addBook(ownerName + shelfName + letter, &shelf);
                    book.setPages(static_cast<std::int16_t>(pages++));
                    for (const char16_t part : {u'0', u'1'}) {
                        books_.addBook(ownerName + shelfName + letter + part, nullptr, &book);
                    }
                }
            }
        }
        books_.save();
    }

    static FetchRequest shelvedBooks(std::size_t batchSize = 0) {
        FetchRequest request = booksWhere(u"shelf.hidden == NO", {{"title"}});
        request.fetchBatchSize = batchSize;
        return request;
    }

    // As a table of rows with their surroundings reads them.
    static std::string rowText(const Book& book) {
        const Shelf* shelf = book.shelf();
        const Owner* owner = shelf ? shelf->owner() : nullptr;
        std::string text = titles({const_cast<Book*>(&book)}) + "/" + std::to_string(shelf != nullptr) +
                           std::to_string(owner ? owner->rank() : -1) + ":";
        for (const Book* part : book.parts()) text += part->isRead() ? 'r' : 'u';
        return text;
    }
};

std::vector<Book*> fetched(ManagedObjectContext& context, FetchRequest request) {
    return context.fetch<Book>(std::move(request));
}

TEST_F(FetchingTest, WhatCannotBeAskedIsAnErrorWithOneLine) {
    FetchRequest unknown;
    unknown.entityName = "Magazine";
    for (const FetchRequest& request : {unknown, booksWhere(u"weight > 3"), booksWhere(u"pages > 'three'"),
                                        booksWhere(u"", {{"shelf.weight"}})}) {
        const std::string answer = titles(context(), request);
        EXPECT_EQ(answer.substr(0, 7), "error: ");
        EXPECT_EQ(answer.find('\n'), std::string::npos);
        EXPECT_TRUE(std::holds_alternative<StoreError>(context().countForFetch(request)));
    }
}

TEST_F(FetchingTest, ObjectsAreTheSameAndTakeFreshValues) {
    Book& book = books_.book(u"U0a");
    Shelf& shelf = *book.shelf();
    EXPECT_EQ(shelf.name(), u"U0");
    executeElsewhere("UPDATE ZBOOK SET ZPAGES = 500 WHERE ZTITLE = 'U0a'; UPDATE ZSHELF SET ZNAME = 'W'");
    EXPECT_EQ(book.pages(), 0);
    int freshened = shelf.timesFreshened;
    for (const std::size_t batchSize : {0, 3}) {
        FetchRequest request = shelvedBooks(batchSize);
        request.relationshipKeyPathsForPrefetching = {"shelf"};
        EXPECT_EQ(fetched(context(), request).front(), &book);
        EXPECT_EQ(book.pages(), 500);
        EXPECT_EQ(shelf.name(), u"W");
        EXPECT_EQ(shelf.timesFreshened, ++freshened);
        EXPECT_FALSE(context().hasChanges());
        executeElsewhere("UPDATE ZBOOK SET ZPAGES = 500, Z_OPT = Z_OPT + 1");
    }
}

TEST_F(FetchingTest, ARowAndItsSurroundingsTakeThreeStatementsForAllThatShow) {
    for (const std::size_t batchSize : {1, 5, 16}) {
        BookStore reopened(file_);
        FetchRequest request = shelvedBooks(batchSize);
        request.relationshipKeyPathsForPrefetching = {"shelf.owner"};
        const std::size_t before = reopened.context().statementCount();
        const std::vector<Book*> found = fetched(reopened.context(), request);
        EXPECT_EQ(reopened.context().statementCount() - before, 1u);
        EXPECT_EQ(found.size(), 16u);
        EXPECT_TRUE(found.front()->isFault());
        std::string text;
        for (std::size_t i = 0; i < batchSize; ++i) text += rowText(*found[i]) + " ";
        EXPECT_EQ(reopened.context().statementCount() - before, 3u);
        EXPECT_EQ(text.substr(0, text.find(' ')), "U0a/10:uu");
        EXPECT_EQ(found.back()->isFault(), batchSize < 16);
    }
}

TEST_F(FetchingTest, TheSecondRefreshAsksOnlyForWhatChanged) {
    FetchRequest request = shelvedBooks(4);
    request.relationshipKeyPathsForPrefetching = {"shelf.owner"};
    BookStore reopened(file_);
    const auto refresh = [&] {
        const std::size_t before = reopened.context().statementCount();
        std::string text;
        const std::vector<Book*> found = fetched(reopened.context(), request);
        for (std::size_t i = 0; i < 4; ++i) text += rowText(*found[i]) + " ";
        return text + std::to_string(reopened.context().statementCount() - before);
    };
    EXPECT_EQ(refresh(), "U0a/10:uu U0b/10:uu U0c/10:uu U0d/10:uu 3");
    EXPECT_EQ(refresh(), "U0a/10:uu U0b/10:uu U0c/10:uu U0d/10:uu 1");
    executeElsewhere(
        "UPDATE ZOWNER SET ZRANK = 5 WHERE ZNAME = 'U'; UPDATE ZBOOK SET ZISREAD = 1 WHERE ZTITLE = "
        "'U0b1'; UPDATE ZBOOK SET ZTITLE = 'U00' WHERE ZTITLE = 'U1a'");
    EXPECT_EQ(refresh(), "U00/15:uu U0a/15:uu U0b/15:ur U0c/15:uu 3");
}

TEST_F(FetchingTest, RelationshipsOfAWholeResultLoadTogether) {
    BookStore reopened(file_);
    const std::vector<Book*> found = fetched(reopened.context(), shelvedBooks());
    const std::size_t before = reopened.context().statementCount();
    std::string text;
    for (const Book* book : found) text += rowText(*book);
    // Shelves, owners and parts.
    EXPECT_EQ(reopened.context().statementCount() - before, 3u);
    for (const Book* book : found) {
        for (const Book* part : book->parts()) EXPECT_TRUE(part->parts().empty());
    }
    EXPECT_EQ(reopened.context().statementCount() - before, 4u);
}

TEST_F(FetchingTest, ManyRowsLoadTheirRelationshipsInSlices) {
    Shelf& shelf = books_.shelf(u"U0");
    for (int i = 0; i < 1200; ++i) books_.addBook(u"many", &shelf).setWhole(&books_.addBook(u"whole"));
    books_.save();
    BookStore reopened(file_);
    const std::vector<Book*> found = fetched(reopened.context(), booksWhere(u"title == 'many'"));
    const std::size_t before = reopened.context().statementCount();
    for (const Book* book : found) EXPECT_TRUE(book->parts().empty());
    EXPECT_EQ(reopened.context().statementCount() - before, 3u);
    for (const Book* book : found) EXPECT_EQ(book->whole()->title(), u"whole");
    EXPECT_EQ(reopened.context().statementCount() - before, 6u);
}

TEST_F(FetchingTest, ARowThatWentAfterItsIdentityWasReadHasNoValues) {
    BookStore reopened(file_);
    const std::vector<Book*> found = fetched(reopened.context(), shelvedBooks(8));
    executeElsewhere("DELETE FROM ZBOOK WHERE ZTITLE = 'U0b'");
    EXPECT_EQ(found[0]->title(), u"U0a");
    EXPECT_EQ(found[1]->title(), std::nullopt);
    EXPECT_EQ(found[1]->valueForKey("pages"), Value());
    EXPECT_EQ(found[1]->pages(), 0);
    EXPECT_TRUE(found[1]->parts().empty());
    EXPECT_EQ(reopened.context().existingObjectWithID(found[1]->objectID()), nullptr);
}

TEST_F(FetchingTest, AColumnThatTheFileLacksReadsAsItsDefault) {
    executeElsewhere("ALTER TABLE ZBOOK DROP COLUMN ZPAGES; ALTER TABLE ZSHELF DROP COLUMN ZNOTE");
    executeElsewhere("ALTER TABLE ZBOOK DROP COLUMN ZRATING");
    BookStore reopened(file_);
    Book& book = reopened.book(u"U0a");
    EXPECT_EQ(book.valueForKey("pages"), Value(std::int64_t{0}));
    EXPECT_EQ(book.valueForKey("rating"), Value(0.0));
    EXPECT_EQ(book.shelf()->valueForKey("note"), Value());
    book.setPages(3);
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"pages == 0 AND shelf.name == 'U0'")), "U0b U0c U0d");
    reopened.save();
    EXPECT_EQ(rows("SELECT ZPAGES, count(*) FROM ZBOOK GROUP BY 1"), "0|47\n3|1");
    EXPECT_EQ(rows("SELECT count(*) FROM pragma_table_info('ZBOOK') WHERE name = 'ZRATING'"), "0");
}

}  // namespace
}  // namespace corvane
