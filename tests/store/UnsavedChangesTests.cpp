// Fetches with unsaved changes, against the plain definition: judge and sort every object in memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "RandomEdits.h"
#include "StoreTestFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

class UnsavedChangesTest : public BookStoreTest {};

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

// What another program may write.
void writeElsewhere(PlainDatabase& database, Dice& dice) {
    static constexpr const char* kWrites[] = {
        "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZPAGES = OTHER WHERE Z_PK = KEY",
        "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZISREAD = 1 - ZISREAD WHERE Z_PK = KEY",
        "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZSHELF = OTHER WHERE Z_PK = KEY",
        "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZWHOLE = OTHER WHERE Z_PK = KEY",
        "UPDATE ZBOOK SET Z_OPT = Z_OPT + 1, ZPAGES = NULL WHERE Z_PK = KEY",
        "UPDATE ZSHELF SET Z_OPT = Z_OPT + 1, ZHIDDEN = 1 - ZHIDDEN WHERE Z_PK = OTHER",
        "UPDATE ZSHELF SET Z_OPT = Z_OPT + 1, ZOWNER = OTHER / 2 WHERE Z_PK = OTHER",
        "UPDATE ZOWNER SET Z_OPT = Z_OPT + 1, ZRANK = OTHER WHERE Z_PK = OTHER / 2",
        "DELETE FROM ZBOOK WHERE Z_PK = KEY",
        "DELETE FROM ZSHELF WHERE Z_PK = OTHER",
    };
    const std::string sql =
        std::regex_replace(dice.of(kWrites), std::regex("KEY"), std::to_string(1 + dice.below(30)));
    database.execute(std::regex_replace(sql, std::regex("OTHER"), std::to_string(1 + dice.below(6))));
}

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

FetchRequest randomRequest(Dice& dice) {
    const std::vector<SortDescriptor> kOrders[] = {
        {               },
        {{"pages", false}},
        {{"shelf.name"},   {"pages"}},
        {{"shelf.owner.rank", false},                {"isRead"}, {"title"}},
        {{"whole.title"}},
    };
    FetchRequest request = booksWhere(dice.of(kPredicates), dice.of(kOrders));
    if (dice.oneIn(3)) request.fetchLimit = 1 + dice.below(6);
    if (dice.oneIn(2)) request.fetchBatchSize = 1 + dice.below(4);
    if (dice.oneIn(2)) request.relationshipKeyPathsForPrefetching = {"shelf.owner", "whole"};
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
    Dice dice(GetParam());
    RandomEdits edits(books_, dice);
    PlainDatabase elsewhere(file_);
    edits.populate();
    for (int i = 0; i < 250; ++i) {
        edits.step();
        if (dice.oneIn(16)) writeElsewhere(elsewhere, dice);
        if (dice.oneIn(48)) books_.save();
        if (dice.oneIn(128)) context().rollback();
        if (dice.oneIn(2)) continue;
        const FetchRequest request = randomRequest(dice);
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
