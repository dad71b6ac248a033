// Fetches with unsaved changes, against the plain definition: judge and sort every object in memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "BookModel.h"
#include "StoreTestFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

class UnsavedChangesTest : public BookStoreTest {};

TEST_F(UnsavedChangesTest, InsertedChangedAndDeletedObjectsTakePart) {
    Shelf& shelf = books_.addShelf(u"S");
    for (const auto* title : {u"A", u"B", u"C", u"D"}) books_.addBook(title, &shelf).setPages(5);
    books_.save();
    const FetchRequest request = booksWhere(u"pages == 5 AND shelf.hidden == NO", {
                                                                                      {"title", false}
    });
    books_.book(u"B").setPages(6);
    context().deleteObject(books_.book(u"C"));
    books_.addBook(u"BB", &shelf).setPages(5);
    books_.book(u"D").setTitle(u"AA");
    EXPECT_EQ(titles(context(), request), "BB AA A");
    EXPECT_EQ(std::get<std::size_t>(context().countForFetch(request)), 3u);
    FetchRequest first = request;
    first.fetchLimit = 2;
    EXPECT_EQ(titles(context(), first), "BB AA");
    EXPECT_EQ(std::get<std::size_t>(context().countForFetch(first)), 2u);
    shelf.setHidden(true);
    EXPECT_EQ(titles(context(), request), "");
    context().rollback();
    EXPECT_EQ(titles(context(), request), "D C B A");
}

TEST_F(UnsavedChangesTest, ChangesThatARequestDoesNotReadCostNothing) {
    Shelf& shelf = books_.addShelf(u"S");
    for (int i = 0; i < 50; ++i) books_.addBook(u"A", &shelf);
    books_.save();
    BookStore reopened(file_);
    const FetchRequest request = booksWhere(u"shelf.hidden == NO AND isRead == NO");
    reopened.shelf(u"S").setNote(u"dusted");
    const std::size_t before = reopened.context().statementCount();
    EXPECT_EQ(std::get<std::size_t>(reopened.context().countForFetch(request)), 50u);
    EXPECT_EQ(reopened.context().statementCount() - before, 1u);
    reopened.shelf(u"S").setHidden(true);
    EXPECT_EQ(std::get<std::size_t>(reopened.context().countForFetch(request)), 0u);
}

TEST_F(UnsavedChangesTest, WhatSqlCannotSayIsJudgedInMemory) {
    Shelf& shelf = books_.addShelf(u"S");
    for (const auto* title : {u"Anna", u"Otto", u"Emma", u"Karl"}) books_.addBook(title, &shelf);
    books_.save();
    // A lone surrogate does not reach SQL as it is.
    FetchRequest request =
        booksWhere(u"title BEGINSWITH[c] 'A' AND title != '\xD800' AND shelf.hidden == NO", {{"title"}});
    books_.book(u"Karl").setTitle(u"Arnold");
    books_.addBook(u"alma", &shelf);
    EXPECT_EQ(titles(context(), request), "Anna Arnold alma");
    request.fetchLimit = 1;
    EXPECT_EQ(titles(context(), request), "Anna");
    EXPECT_EQ(std::get<std::size_t>(context().countForFetch(request)), 1u);
}

// A context and another program that both write at random.
class RandomWriters {
  public:
    RandomWriters(BookStore& books, const std::filesystem::path& file, unsigned seed)
        : books_(books), elsewhere_(file), random_(seed) {}

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    void populate() {
        for (int i = 0; i < 3; ++i) insertOwner();
        for (int i = 0; i < 5; ++i) insertShelf();
        for (int i = 0; i < 25; ++i) insertBook();
        books_.save();
    }

    void step() {
        switch (below(16)) {
            case 0:
                return insertBook();
            case 1:
                return insertShelf();
            case 2:
                return insertOwner();
            case 3:
                return books_.context().deleteObject(any<Book>());
            case 4:
                if (below(4) == 0) books_.context().deleteObject(any<Shelf>());
                return;
            case 5:
                return any<Shelf>().setHidden(below(2) == 0);
            case 6:
                return any<Shelf>().setOwner(below(4) == 0 ? nullptr : &any<Owner>());
            case 7:
                return any<Owner>().setRank(static_cast<std::int16_t>(below(5)));
            case 8:
                return any<Book>().setShelf(below(4) == 0 ? nullptr : &any<Shelf>());
            case 9:
                return any<Book>().setWhole(below(3) == 0 ? nullptr : &any<Book>());
            case 10:
                return any<Book>().setIsRead(below(2) == 0);
            case 11:
                return writeElsewhere();
            case 12:
                if (below(3) == 0) books_.save();
                return;
            case 13:
                if (below(8) == 0) books_.context().rollback();
                return;
            default:
                return any<Book>().setPages(static_cast<std::int16_t>(below(9)));
        }
    }

    void writeElsewhere() {
        const std::string key = std::to_string(1 + below(30));
        const std::string other = std::to_string(1 + below(6));
        static constexpr const char* kWrites[] = {
            "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZPAGES = %2 WHERE Z_PK = %1",
            "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZISREAD = 1 - ZISREAD WHERE Z_PK = %1",
            "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZSHELF = %2 WHERE Z_PK = %1",
            "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZWHOLE = %2 WHERE Z_PK = %1",
            "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZPAGES = NULL WHERE Z_PK = %1",
            "UPDATE ZSHELF SET Z_OPT = Z_OPT + 1, ZHIDDEN = 1 - ZHIDDEN WHERE Z_PK = %2",
            "UPDATE ZSHELF SET Z_OPT = Z_OPT + 1, ZOWNER = %2 % 3 WHERE Z_PK = %2",
            "UPDATE ZOWNER SET Z_OPT = Z_OPT + 1, ZRANK = %2 WHERE Z_PK = %2 % 4",
            "DELETE FROM ZBOOK WHERE Z_PK = %1",
            "DELETE FROM ZSHELF WHERE Z_PK = %2",
        };
        std::string sql = kWrites[below(std::size(kWrites))];
        for (std::size_t at = 0; (at = sql.find('%')) != std::string::npos;) {
            if (sql[at + 1] == ' ') {
                sql.replace(at, 1, "/");
                continue;
            }
            sql.replace(at, 2, sql[at + 1] == '1' ? key : other);
        }
        elsewhere_.execute(sql);
    }

  private:
    template <class Object>
    Object& any() {
        const std::vector<Object*> all = books_.context().fetch<Object>({});
        return all.empty() ? books_.context().insert<Object>() : *all[below(all.size())];
    }
    std::u16string newName() {
        const std::string digits = std::to_string(++names_);
        return u"N" + std::u16string(digits.begin(), digits.end());
    }
    void insertOwner() { books_.addOwner(newName()).setRank(static_cast<std::int16_t>(below(5))); }
    void insertShelf() { books_.addShelf(newName(), &any<Owner>()).setHidden(below(2) == 0); }
    void insertBook() {
        Book& book = books_.addBook(newName(), &any<Shelf>());
        book.setPages(static_cast<std::int16_t>(below(9)));
        if (below(2) == 0) book.setWhole(&any<Book>());
    }

    BookStore& books_;
    PlainDatabase elsewhere_;
    std::mt19937 random_;
    int names_ = 0;
};

constexpr const char16_t* kPredicates[] = {
    u"pages > 4",
    u"shelf.hidden == NO",
    u"shelf == nil",
    u"shelf.owner.rank > 1 AND isRead == NO",
    u"NOT (shelf.hidden == YES OR pages == 3)",
    u"whole.pages > 2 AND shelf.owner.name != nil",
    u"ANY parts.isRead == YES",
    u"parts.@count == 0 AND pages < 7",
    u"NONE parts.pages > 3",
    u"shelf.books.@count > 3",
    u"ANY whole.parts.shelf.hidden == YES",
    u"whole.shelf.owner.rank < 3 OR title ENDSWITH '7'",
    u"title MATCHES '.*[13]'",
};

FetchRequest randomRequest(RandomWriters& writers) {
    const std::vector<SortDescriptor> kOrders[] = {
        {               },
        {{"pages", false}},
        {{"shelf.name"},   {"pages"}},
        {{"shelf.owner.rank", false},                {"isRead"}, {"title"}},
        {{"whole.title"}},
    };
    FetchRequest request = booksWhere(kPredicates[writers.below(std::size(kPredicates))],
                                      kOrders[writers.below(std::size(kOrders))]);
    if (writers.below(3) == 0) request.fetchLimit = 1 + writers.below(6);
    if (writers.below(2) == 0) request.fetchBatchSize = 1 + writers.below(4);
    if (writers.below(2) == 0) request.relationshipKeyPathsForPrefetching = {"shelf.owner", "whole"};
    return request;
}

std::string judgedOneByOne(ManagedObjectContext& context, const FetchRequest& request) {
    FetchRequest all;
    all.relationshipKeyPathsForPrefetching = {"shelf.owner", "whole.shelf.owner"};
    std::vector<ManagedObject*> fits;
    for (Book* book : context.fetch<Book>(all)) {
        if (request.predicate->evaluate(*book)) fits.push_back(book);
    }
    std::ranges::sort(fits, ObjectOrder(request.sortDescriptors));
    if (request.fetchLimit > 0 && fits.size() > request.fetchLimit) fits.resize(request.fetchLimit);
    return titles(fits);
}

class RandomChangesTest : public BookStoreTest, public testing::WithParamInterface<unsigned> {};

TEST_P(RandomChangesTest, AFetchFindsWhatJudgingEveryObjectFinds) {
    RandomWriters writers(books_, file_, GetParam());
    writers.populate();
    for (int i = 0; i < 250; ++i) {
        writers.step();
        if (writers.below(2) == 0) continue;
        const FetchRequest request = randomRequest(writers);
        const auto count = context().countForFetch(request);
        const std::string found = titles(context(), request);
        ASSERT_EQ(found, judgedOneByOne(context(), request))
            << i << ": " << utf8FromText(request.predicate->predicateFormat());
        const auto blanks = static_cast<std::size_t>(std::ranges::count(found, ' '));
        ASSERT_EQ(std::get<std::size_t>(count), found.empty() ? 0 : blanks + 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomChangesTest, testing::Range(1u, 7u));

}  // namespace
}  // namespace corvane
