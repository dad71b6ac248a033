#include <gmock/gmock.h>

#include "StoreTestFixture.h"
#include "support/OtherProcess.h"

namespace corvane {
namespace {

class SavingTest : public BookStoreTest {
  protected:
    void SetUp() override {
        Shelf& shelf = books_.addShelf(u"S", &books_.addOwner(u"O"));
        for (const auto* title : {u"A", u"B", u"C"}) books_.addBook(title, &shelf);
        books_.save();
    }

    std::string bookRows() {
        return rows("SELECT ZTITLE, Z_OPT, ZPAGES, ZCOPIES, ZSHELF, ZWHOLE FROM ZBOOK ORDER BY Z_PK");
    }
};

TEST_F(SavingTest, OnlyChangedColumnsAreWritten) {
    executeElsewhere(
        "CREATE TRIGGER guard BEFORE UPDATE OF ZTITLE, ZCOPIES, ZSHELF ON ZBOOK "
        "BEGIN SELECT RAISE(ABORT, 'touched'); END");
    books_.book(u"A").setPages(4);
    books_.save();
    EXPECT_EQ(bookRows(), "A|2|4|0|1|NULL\nB|1|0|0|1|NULL\nC|1|0|0|1|NULL");
}

TEST_F(SavingTest, TwoProcessesThatEditDifferentPropertiesBothWin) {
    Book& book = books_.book(u"A");
    book.setPages(4);
    runInDyingProcess([&] {
        BookStore other(file_);
        other.book(u"A").setCopies(9);
        other.book(u"A").setTitle(u"AA");
        other.save();
    });
    books_.save();
    EXPECT_EQ(book.copies(), 9);
    EXPECT_EQ(book.title(), u"AA");
    EXPECT_EQ(bookRows().substr(0, bookRows().find('\n')), "AA|3|4|9|1|NULL");
    // Where both changed the same one, the last to save wins.
    book.setPages(5);
    executeElsewhere("UPDATE ZBOOK SET ZPAGES = 6, ZSHELF = NULL, Z_OPT = 9 WHERE Z_PK = 1");
    books_.save();
    EXPECT_EQ(bookRows().substr(0, bookRows().find('\n')), "AA|10|5|9|NULL|NULL");
    EXPECT_EQ(books_.shelf(u"S").books().size(), 2u);
}

TEST_F(SavingTest, ARowThatOthersDeletedStaysDeleted) {
    Book& edited = books_.book(u"A");
    Book& part = books_.book(u"B");
    Shelf& shelf = books_.shelf(u"S");
    part.setWhole(&edited);
    edited.setPages(4);
    EXPECT_EQ(shelf.books().size(), 3u);
    executeElsewhere("DELETE FROM ZBOOK WHERE ZTITLE = 'A'");
    books_.save();
    EXPECT_TRUE(edited.isDeleted());
    EXPECT_EQ(edited.managedObjectContext(), nullptr);
    EXPECT_EQ(edited.pages(), 4);
    EXPECT_EQ(part.whole(), nullptr);
    EXPECT_EQ(shelf.books().size(), 2u);
    EXPECT_FALSE(context().hasChanges());
    EXPECT_EQ(bookRows(), "B|2|0|0|1|NULL\nC|1|0|0|1|NULL");
}

TEST_F(SavingTest, ADeletionWinsOverAChangeElsewhere) {
    Book& book = books_.book(u"A");
    context().deleteObject(book);
    EXPECT_TRUE(book.isDeleted());
    EXPECT_EQ(book.managedObjectContext(), &context());
    context().deleteObject(books_.book(u"B"));
    executeElsewhere("UPDATE ZBOOK SET ZPAGES = 6, Z_OPT = 9; DELETE FROM ZBOOK WHERE ZTITLE = 'B'");
    books_.save();
    EXPECT_EQ(book.managedObjectContext(), nullptr);
    EXPECT_EQ(bookRows(), "C|9|6|0|1|NULL");
}

TEST_F(SavingTest, RowsThatOthersHungOnADeletedOneFollowItsRules) {
    context().deleteObject(books_.book(u"A"));
    executeElsewhere("UPDATE ZBOOK SET ZWHOLE = 1, Z_OPT = 5 WHERE ZTITLE = 'C'");
    books_.save();
    EXPECT_EQ(bookRows(), "B|1|0|0|1|NULL\nC|6|0|0|1|NULL");

    context().deleteObject(books_.owner(u"O"));
    EXPECT_EQ(titles(context(), booksWhere(u"")), "");
    executeElsewhere(
        "INSERT INTO ZSHELF (Z_PK, Z_ENT, Z_OPT, ZOWNER) VALUES (8, 3, 1, 1);"
        "INSERT INTO ZBOOK (Z_PK, Z_ENT, Z_OPT, ZTITLE, ZSHELF) VALUES (20, 1, 1, 'D', 8), (21, 1, 1, 'E', "
        "NULL);"
        "INSERT INTO ZBOOK (Z_PK, Z_ENT, Z_OPT, ZTITLE, ZWHOLE) VALUES (22, 1, 1, 'F', 20)");
    books_.save();
    EXPECT_EQ(rows("SELECT count(*) FROM ZSHELF"), "0");
    EXPECT_EQ(rows("SELECT ZTITLE, Z_OPT, ZWHOLE FROM ZBOOK"), "E|1|NULL\nF|2|NULL");
}

TEST_F(SavingTest, NothingRefersToARowThatOthersDeleted) {
    Shelf& shelf = books_.shelf(u"S");
    Book& moved = books_.addBook(u"D", &shelf);
    books_.book(u"A").setShelf(&books_.addShelf(u"T"));
    books_.save();
    Shelf& doomed = *books_.book(u"A").shelf();
    moved.setShelf(&doomed);
    Book& added = books_.addBook(u"E", &doomed);
    executeElsewhere("UPDATE ZBOOK SET ZSHELF = NULL WHERE ZSHELF = 2; DELETE FROM ZSHELF WHERE Z_PK = 2");
    books_.save();
    EXPECT_TRUE(doomed.isDeleted());
    EXPECT_EQ(moved.shelf(), nullptr);
    EXPECT_EQ(added.shelf(), nullptr);
    EXPECT_EQ(rows("SELECT count(*) FROM ZBOOK WHERE ZSHELF = 2"), "0");
    EXPECT_FALSE(context().hasChanges());
}

TEST_F(SavingTest, AFailedSaveKeepsEverythingForTheNextOne) {
    executeElsewhere(
        "CREATE TRIGGER guard BEFORE DELETE ON ZBOOK WHEN OLD.ZTITLE = 'C' "
        "BEGIN SELECT RAISE(ABORT, 'not now'); END");
    const std::string before = bookRows();
    Book& added = books_.addBook(u"D", &books_.shelf(u"S"));
    books_.book(u"A").setPages(4);
    context().deleteObject(books_.book(u"C"));
    for (int i = 0; i < 2; ++i) {
        const auto error = context().save();
        ASSERT_TRUE(error);
        EXPECT_EQ(bookRows(), before);
        EXPECT_TRUE(added.isInserted());
        EXPECT_TRUE(added.objectID().isTemporary);
        EXPECT_EQ(titles(context().updatedObjects()), "A");
        EXPECT_EQ(titles(context().deletedObjects()), "C");
    }
    executeElsewhere("DROP TRIGGER guard");
    books_.save();
    EXPECT_EQ(bookRows(), "A|2|4|0|1|NULL\nB|1|0|0|1|NULL\nD|1|0|0|1|NULL");
}

TEST(StorelessContextTest, ObjectsLiveInMemoryAndNothingIsLost) {
    const TestEnvironment environment;
    PersistentStoreCoordinator coordinator(bookModel());
    ManagedObjectContext context(coordinator);
    Shelf& shelf = context.insert<Shelf>();
    context.insert<Book>().setShelf(&shelf);
    EXPECT_EQ(shelf.books().size(), 1u);
    EXPECT_TRUE(std::holds_alternative<StoreError>(context.executeFetch(booksWhere(u""))));
    EXPECT_TRUE(context.save().has_value());
    EXPECT_EQ(context.insertedObjects().size(), 2u);
    context.deleteObject(shelf);
    EXPECT_FALSE(context.hasChanges());
}

}  // namespace
}  // namespace corvane
