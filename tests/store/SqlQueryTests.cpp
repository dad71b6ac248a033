#include "platform/store/SqlQuery.h"

#include <gmock/gmock.h>

#include "StoreTestFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

using testing::HasSubstr;

bool hasEveryColumn(const EntityDescription&, PropertyIndex) { return true; }

FetchRequest request(std::string_view entity, std::u16string_view text,
                     std::vector<SortDescriptor> order = {}) {
    FetchRequest request;
    request.entityName = entity;
    request.predicate = std::get<Predicate>(predicateWithFormat(text));
    request.sortDescriptors = std::move(order);
    return request;
}

SqlQuery translated(const FetchRequest& request, const ManagedObjectModel& model = bookModel()) {
    std::string error;
    std::optional<SqlQuery> query = sqlQueryForRequest(request, model, hasEveryColumn, error);
    EXPECT_TRUE(query) << error;
    return query.value_or(SqlQuery());
}

std::string errorOf(std::u16string_view text, std::vector<SortDescriptor> order = {}) {
    std::string error;
    const bool isTranslated =
        sqlQueryForRequest(request("Book", text, std::move(order)), bookModel(), hasEveryColumn, error)
            .has_value();
    return isTranslated ? "none" : error;
}

std::u16string repeated(std::u16string_view part, int count) {
    std::u16string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

TEST(SqlQuery, RefusesWhatDoesNotFitTheModel) {
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"colour == 1",                      "Book has no property \"colour\""                                   },
        {u"title.size == 1",                  "title of Book is no to-one relationship"                           },
        {u"parts == nil",                     "parts is a to-many relationship: ask with ANY, ALL, NONE or @count"},
        {u"shelf.@count == 1",                "shelf is no to-many relationship: it has no @count"                },
        {u"ANY shelf.name == 'x'",            "shelf.name leads through no to-many relationship"                  },
        {u"ANY parts.shelf.books.pages == 1", "books of Shelf is no to-one relationship"                          },
        {u"title == 5",                       "title (text) cannot be compared with a number"                     },
        {u"printed < '2024-03-05'",           "printed (date) cannot be compared with a text"                     },
        {u"shelf == whole",                   "shelf (Shelf) cannot be compared with whole (Book)"                },
        {u"shelf > 5",                        "shelf (Shelf) is an object: only ==, != and IN work on it"         },
        {u"pages CONTAINS 'x'",               "pages (number) is no text for CONTAINS"                            },
    };
    for (const auto& [predicate, error] : rows) {
        EXPECT_EQ(errorOf(predicate), error) << utf8FromText(predicate);
    }
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"colour"}}), "Book has no property \"colour\"");
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"shelf"}}), "shelf (Shelf) has no order");
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"parts.pages"}}), "parts of Book is no to-one relationship");
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"parts.@count"}}), "\"parts.@count\" is no key path of a property");
}

class QueryOnBooks : public BookStoreTest {};

TEST_F(QueryOnBooks, RunsHoweverLongOrDeepThePredicateIs) {
    books_.addBook(u"One").setPages(1);
    books_.addBook(u"Two").setPages(2);
    books_.save();
    EXPECT_EQ(found(repeated(u"pages > 0 AND ", 10000) + u"pages > 1"), "Two");
    EXPECT_EQ(found(repeated(u"pages == 7 OR ", 10000) + u"pages == 1"), "One");
    EXPECT_EQ(found(u"pages IN {" + repeated(u"7, ", 40000) + u"2}"), "Two");
    EXPECT_EQ(found(repeated(u"NOT (pages == 7 OR ", 250) + u"pages > 1" + repeated(u")", 250)), "Two");
    EXPECT_EQ(found(repeated(u"(pages > 0 AND (pages == 7 OR ", 200) + u"pages > 1" + repeated(u"))", 200)),
              "Two");
    for (int depth = 1; depth < 40; ++depth) {
        EXPECT_EQ(found(repeated(u"(pages > 0 AND NOT (pages == 7 OR NOT ", depth) + u"pages > 1" +
                        repeated(u"))", depth)),
                  "Two")
            << depth;
    }
    std::u16string text = u"pages == 1";
    for (int i = 1; i <= 30; ++i) text += u" AND " + repeated(u"whole.", i) + u"shelf.name == nil";
    EXPECT_EQ(found(text), "One");
}

struct QueryPlan : PlatformStoreTest {
    std::string plan(const FetchRequest& request) {
        const SqlQuery query = translated(request, storeFileModel());
        PlainDatabase database(file);
        registerQueryFunctions(database.handle());
        return database.rows("EXPLAIN QUERY PLAN SELECT t0.Z_PK FROM ZGTASK t0" + query.joins + " WHERE " +
                             query.where + " ORDER BY " + query.orderBy);
    }
};

const std::u16string kDueTasks =
    u"removed == NO && name != nil && name != '' && list.removed == NO && list.isIsolated == NO && "
    u"completed == NO && hasDueDate == YES && dueDate < 700000000";

const std::vector<SortDescriptor> kDueOrder = {
    {"priority", false},
    {"dueDate"         },
    {"list.name"},
    {"name"         }
};

TEST_F(QueryPlan, ReadsDueTasksByTheirIndexAndListsByRowNumber) {
    executeElsewhere("CREATE INDEX Z_GTask_due ON ZGTASK (ZCOMPLETED, ZREMOVED, ZHASDUEDATE, ZDUEDATE)");
    const std::string due = plan(request("GTask", kDueTasks, kDueOrder));
    EXPECT_THAT(due,
                HasSubstr("SEARCH t0 USING INDEX Z_GTask_due (ZCOMPLETED=? AND ZREMOVED=? AND ZHASDUEDATE=? "
                          "AND ZDUEDATE<?)"));
    EXPECT_LT(due.find("t0"), due.find("t1"));
    EXPECT_THAT(due, HasSubstr("SEARCH t1 USING INTEGER PRIMARY KEY (rowid=?)"));
}

TEST_F(QueryPlan, UsesAPartialIndexWithoutBoundValues) {
    executeElsewhere(
        "CREATE INDEX Z_GTask_open ON ZGTASK (ZDUEDATE, ZPRIORITY, ZLIST, ZNAME, ZREMOVED, ZCOMPLETED, "
        "ZHASDUEDATE) WHERE ZREMOVED = 0 AND ZCOMPLETED = 0 AND ZHASDUEDATE = 1");
    EXPECT_THAT(plan(request("GTask", kDueTasks, kDueOrder)),
                HasSubstr("SEARCH t0 USING COVERING INDEX Z_GTask_open (ZDUEDATE<?)"));
}

TEST_F(QueryPlan, FindsTheRangeOfDatesThatAllAlternativesKeepTo) {
    executeElsewhere("CREATE INDEX Z_GTask_due ON ZGTASK (ZCOMPLETED, ZREMOVED, ZHASDUEDATE, ZDUEDATE)");
    FetchRequest overdue = request("GTask",
                                   u"removed == NO && completed == NO && hasDueDate == YES && "
                                   u"((priority > 3 && dueDate < $NOW) || dueDate < $TODAY) && "
                                   u"list.removed == NO");
    overdue.predicate = overdue.predicate->withSubstitutionVariables({
        {"NOW",   Value(Date(TimeInterval(700000000)))},
        {"TODAY", Value(Date(TimeInterval(600000000)))}
    });
    EXPECT_THAT(plan(overdue), HasSubstr("ZHASDUEDATE=? AND ZDUEDATE<?"));
}

// Few shelves of an owner, many books on each: by their numbers it looks cheap to begin with the shelves.
TEST_F(QueryOnBooks, NeverBeginsWithJoinedTables) {
    Owner& owner = books_.addOwner(u"Ann");
    books_.save();
    PlainDatabase database(file_);
    database.execute(
        "ANALYZE; DELETE FROM sqlite_stat1; INSERT INTO sqlite_stat1 VALUES "
        "('ZBOOK', 'ZBOOK_ZSHELF_INDEX', '100000 2000'), ('ZBOOK', 'ZBOOK_ZWHOLE_INDEX', '100000 50000'), "
        "('ZSHELF', 'ZSHELF_ZOWNER_INDEX', '50 5'), ('ZOWNER', NULL, '3'); ANALYZE sqlite_schema");
    registerQueryFunctions(database.handle());
    for (const char16_t* scope :
         {u"shelf.owner == $OWNER", u"shelf.owner == $OWNER AND shelf.hidden == NO",
          u"shelf.owner.rank == 1 OR shelf.owner == $OWNER", u"shelf.owner.rank == 1"}) {
        SCOPED_TRACE(utf8FromText(scope));
        FetchRequest wanted = request("Book", scope, {{"shelf.name"}});
        wanted.predicate = wanted.predicate->withSubstitutionVariables({
            {"OWNER", Value(&owner)}
        });
        const SqlQuery query = translated(wanted);
        const std::string plan = database.rows("EXPLAIN QUERY PLAN SELECT t0.Z_PK FROM ZBOOK t0" +
                                               query.joins + " WHERE " + query.where);
        EXPECT_THAT(plan, HasSubstr("SCAN t0"));
        EXPECT_LT(plan.find("t0"), plan.find("t1"));
        EXPECT_THAT(plan, HasSubstr("SEARCH t1 USING INTEGER PRIMARY KEY (rowid=?)"));
    }
}

}  // namespace
}  // namespace corvane
