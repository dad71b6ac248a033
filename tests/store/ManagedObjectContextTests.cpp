#include "platform/store/ManagedObjectContext.h"

#include <gmock/gmock.h>

#include "StoreTestFixture.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class ContextTest : public BookStoreTest {
  protected:
    ~ContextTest() override {
        for (const auto token : tokens_) NotificationCenter::defaultCenter().removeObserver(token);
    }

    // Writes what notifications tell: "+D ~A -B".
    std::vector<std::string>& listenTo(std::string_view name, const ManagedObjectContext* poster) {
        auto heard = std::make_shared<std::vector<std::string>>();
        kept_.push_back(heard);
        tokens_.push_back(NotificationCenter::defaultCenter().addObserver(
            name, poster, [heard](const Notification& notification) {
                heard->push_back(textOf(std::any_cast<const ObjectChanges&>(notification.userInfo)));
            }));
        return *heard;
    }

    static std::string textOf(const ObjectChanges& changes) {
        std::string text;
        const auto add = [&text](char sign, const std::vector<ChangedObject>& entries) {
            for (const ChangedObject& entry : entries) {
                text += (text.empty() ? "" : " ") + std::string(1, sign) + titles({std::get<0>(entry)});
            }
        };
        add('+', changes.inserted);
        add('~', changes.updated);
        add('-', changes.deleted);
        return text;
    }

  private:
    std::vector<std::shared_ptr<std::vector<std::string>>> kept_;
    std::vector<NotificationCenter::Token> tokens_;
};

TEST_F(ContextTest, ChangesAreToldInGroups) {
    const auto& changes = listenTo(kObjectsDidChangeNotification, &context());
    const auto& saves = listenTo(kDidSaveNotification, &context());
    Book& a = books_.addBook(u"A");
    books_.addBook(u"B").setPages(1);
    a.setPages(2);
    context().deleteObject(books_.addBook(u"X"));
    EXPECT_THAT(changes, ElementsAre());
    environment_->mainQueue->runDueBlocks();
    EXPECT_THAT(changes, ElementsAre("+A +B"));
    EXPECT_EQ(environment_->mainQueue->runDueBlocks(), 0);

    a.setPages(3);
    a.setCopies(3);
    books_.book(u"B");  // a fetch
    EXPECT_THAT(changes, ElementsAre("+A +B", "~A"));
    context().deleteObject(books_.book(u"B"));
    books_.addBook(u"C");
    books_.save();
    EXPECT_THAT(changes, ElementsAre("+A +B", "~A", "+C -B"));
    EXPECT_THAT(saves, ElementsAre("+A +C"));
    a.setPages(4);
    context().deleteObject(books_.book(u"C"));
    books_.save();
    books_.save();
    EXPECT_THAT(saves, ElementsAre("+A +C", "~A -C"));
}

TEST_F(ContextTest, WhatAHandlerChangesIsToldLater) {
    Book& book = books_.addBook(u"A");
    int told = 0;
    const auto token = NotificationCenter::defaultCenter().addObserver(
        kObjectsDidChangeNotification, &context(), [&](const Notification&) {
            if (++told < 3) book.setPages(static_cast<std::int16_t>(told));
            context().fetch<Book>({});
        });
    context().processPendingChanges();
    EXPECT_EQ(told, 1);
    environment_->mainQueue->runDueBlocks();
    EXPECT_EQ(told, 3);
    NotificationCenter::defaultCenter().removeObserver(token);
}

TEST_F(ContextTest, NothingIsToldAfterItsEnd) {
    const auto& changes = listenTo(kObjectsDidChangeNotification, nullptr);
    {
        ManagedObjectContext shortLived(books_.coordinator());
        shortLived.insert<Book>();
    }
    environment_->mainQueue->runDueBlocks();
    EXPECT_THAT(changes, ElementsAre());
}

TEST_F(ContextTest, DeletionLoadsWhatItTakesAlongInFewStatements) {
    Owner& owner = books_.addOwner(u"O");
    for (int i = 0; i < 20; ++i) {
        Shelf& shelf = books_.addShelf(u"S", &owner);
        for (int j = 0; j < 10; ++j) books_.addBook(u"B", &shelf, &books_.addBook(u"W"));
    }
    for (Book* book : context().fetch<Book>(booksWhere(u""))) {
        if (book->shelf()) books_.addBook(u"P", nullptr, book);
    }
    books_.save();
    BookStore reopened(file_);
    Owner& same = reopened.owner(u"O");
    const std::size_t before = reopened.context().statementCount();
    reopened.context().deleteObject(same);
    // Shelves, books and parts, and none for what those have.
    EXPECT_LE(reopened.context().statementCount() - before, 4u);
    EXPECT_EQ(reopened.context().deletedObjects().size(), 221u);
    EXPECT_EQ(reopened.context().updatedObjects().size(), 200u);
    EXPECT_EQ(titles(reopened.context(), booksWhere(u"shelf != nil OR whole != nil")), "");
    reopened.save();
    EXPECT_EQ(rows("SELECT ZTITLE, count(*), count(ZWHOLE) FROM ZBOOK GROUP BY 1"), "P|200|0\nW|200|0");
}

TEST_F(ContextTest, IdentifiersNameObjects) {
    Book& book = books_.addBook(u"A");
    EXPECT_EQ(context().uriRepresentation(book).substr(0, 20), "x-coredata:///Book/t");
    const ManagedObjectID beforeSaving = book.objectID();
    books_.save();
    EXPECT_EQ(context().objectWithID(beforeSaving), &book);
    EXPECT_EQ(context().objectWithID(book.objectID()), &book);
    const std::string uri = context().uriRepresentation(book);
    EXPECT_EQ(uri, "x-coredata://" + rows("SELECT Z_UUID FROM Z_METADATA") + "/Book/p1");
    EXPECT_EQ(context().objectWithUri(uri), &book);

    BookStore reopened(file_);
    const ManagedObjectID unknown{&book.entity(), 77, false};
    ManagedObject* fault = reopened.context().objectWithID(unknown);
    ASSERT_TRUE(fault);
    EXPECT_TRUE(fault->isFault());
    EXPECT_EQ(reopened.context().existingObjectWithID(unknown), nullptr);
    executeElsewhere("INSERT INTO ZBOOK (Z_PK, ZTITLE) VALUES (77, 'B')");
    EXPECT_EQ(reopened.context().existingObjectWithID(unknown), fault);
    const ManagedObjectID temporary = context().insert<Book>().objectID();
    EXPECT_EQ(reopened.context().objectWithID(temporary), nullptr);
    context().deleteObject(book);
    EXPECT_EQ(context().existingObjectWithID(book.objectID()), nullptr);
    EXPECT_EQ(context().objectWithUri(uri), nullptr);
}

TEST(ManagedObjectIDTest, OnlyTheExactSpellingOfAUriIsRead) {
    constexpr std::string_view kUuid = "6F2B1C7E-3A0D-4E57-9C1B-5D0A8E4F7B21";
    const std::string store = "x-coredata://" + std::string(kUuid);
    const auto id = objectIDFromUri(store + "/Book/p9223372036854775807", kUuid, bookModel());
    ASSERT_TRUE(id);
    EXPECT_EQ(id->key, 9223372036854775807);
    EXPECT_EQ(uriRepresentation(*id, kUuid), store + "/Book/p9223372036854775807");
    for (const char* rest : {"/Book/p9223372036854775808", "/Book/p012", "/Book/p0", "/Book/p+1", "/Book/p1 ",
                             "/Book/p", "/Book/t1", "/book/p1", "/Magazine/p1"}) {
        EXPECT_FALSE(objectIDFromUri(store + rest, kUuid, bookModel())) << rest;
    }
    for (const char* uri :
         {"x-coredata:///Book/p1", "X-COREDATA://6F2B1C7E-3A0D-4E57-9C1B-5D0A8E4F7B21/Book/p1",
          "x-coredata://6f2b1c7e-3a0d-4e57-9c1b-5d0a8e4f7b21/Book/p1"}) {
        EXPECT_FALSE(objectIDFromUri(uri, kUuid, bookModel())) << uri;
    }
    const ManagedObjectID temporary{bookModel().entity("Book"), 31, true};
    EXPECT_EQ(uriRepresentation(temporary, kUuid), "x-coredata:///Book/t1F");
}

class MergingTest : public ContextTest {
  protected:
    // Merges what `other` saves next.
    void mergeSavesOf(const ManagedObjectContext& other) {
        token_ = NotificationCenter::defaultCenter().addObserver(
            kDidSaveNotification, &other, [this](const Notification& notification) {
                context().mergeChangesFromContextDidSave(
                    std::any_cast<const ObjectChanges&>(notification.userInfo));
            });
    }
    ~MergingTest() override { NotificationCenter::defaultCenter().removeObserver(token_); }

    NotificationCenter::Token token_ = 0;
};

TEST_F(MergingTest, SavesOfAnotherContextAreTakenOver) {
    Shelf& shelf = books_.addShelf(u"S");
    Book& a = books_.addBook(u"A", &shelf);
    Book& b = books_.addBook(u"B", &shelf, &a);
    books_.save();
    EXPECT_EQ(shelf.books().size(), 2u);
    EXPECT_EQ(a.parts().size(), 1u);
    a.setPages(3);

    ManagedObjectContext background(books_.coordinator());
    mergeSavesOf(background);
    const auto& changes = listenTo(kObjectsDidChangeNotification, &context());
    const auto inBackground = [&](const Book& book) {
        return static_cast<Book*>(background.existingObjectWithID(book.objectID()));
    };
    context().processPendingChanges();
    inBackground(a)->setTitle(u"AA");
    inBackground(a)->setPages(9);
    background.deleteObject(*inBackground(b));
    auto& c = background.insert<Book>();
    c.setTitle(u"C");
    c.setShelf(static_cast<Shelf*>(background.objectWithID(shelf.objectID())));
    EXPECT_FALSE(background.save());

    EXPECT_EQ(a.title(), u"AA");
    EXPECT_EQ(a.pages(), 3);
    EXPECT_TRUE(b.isDeleted());
    EXPECT_EQ(b.managedObjectContext(), nullptr);
    EXPECT_TRUE(a.parts().empty());
    auto* mine = context().existingObjectWithID(c.objectID());
    EXPECT_THAT(shelf.books().toVector(), ElementsAre(&a, mine));
    EXPECT_THAT(changes, ElementsAre("~A", "+C ~AA -B"));
    books_.save();
    EXPECT_EQ(rows("SELECT ZTITLE, ZPAGES, Z_OPT FROM ZBOOK"), "AA|3|3\nC|0|1");
}

TEST_F(MergingTest, IdentifiersServeAsWellAndUnknownOnesDoNoHarm) {
    Book& a = books_.addBook(u"A");
    Book& b = books_.addBook(u"B");
    books_.save();
    Book& part = books_.addBook(u"P", nullptr, &b);
    executeElsewhere("UPDATE ZBOOK SET ZPAGES = 8; DELETE FROM ZBOOK WHERE ZTITLE = 'B'");
    a.setCopies(1);
    ObjectChanges changes;
    const ManagedObjectID unknown{&a.entity(), 99, false}, temporary{&a.entity(), 1, true}, none;
    changes.updated = {a.objectID(), unknown, none};
    changes.deleted = {b.objectID(), unknown, temporary};
    changes.inserted = {static_cast<ManagedObject*>(nullptr)};
    context().mergeChangesFromContextDidSave(changes);
    EXPECT_EQ(a.pages(), 8);
    EXPECT_EQ(a.copies(), 1);
    EXPECT_TRUE(b.isDeleted());
    EXPECT_EQ(part.whole(), nullptr) << "an unsaved reference to what is gone";
    EXPECT_EQ(titles(context(), booksWhere(u"pages == 8")), "A");
    books_.save();
    EXPECT_EQ(rows("SELECT ZTITLE, ZWHOLE FROM ZBOOK"), "A|NULL\nP|NULL");
}

}  // namespace
}  // namespace corvane
