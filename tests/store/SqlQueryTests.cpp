#include "platform/store/SqlQuery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "BookModel.h"
#include "StoreFileModel.h"
#include "platform/foundation/Text.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

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

std::string where(std::u16string_view text) { return translated(request("Book", text)).where; }

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

TEST(SqlQuery, SaysConditionsInSql) {
    struct Row {
        const char16_t* predicate;
        const char* where;
    };
    const Row rows[] = {
        {u"TRUEPREDICATE",                      "1"                                                             },
        {u"isRead == NO AND pages > 5",         "t0.ZISREAD = 0 AND t0.ZPAGES > ?1"                             },
        {u"title = nil OR title != nil",        "(t0.ZTITLE IS NULL OR t0.ZTITLE IS NOT NULL)"                  },
        {u"NOT (pages < 5 OR isRead == YES)",   "NOT (t0.ZPAGES < ?1 OR t0.ZISREAD = 1)"                        },
        {u"pages < nil",                        "t0.ZPAGES < NULL"                                              },
        {u"shelf == $SHELF",                    "t0.ZSHELF IS NULL"                                             },
        {u"pages IN {1, 2, copies, nil}",
         "(t0.ZPAGES = t0.ZCOPIES OR t0.ZPAGES IS NULL OR t0.ZPAGES IN (?1, ?2))"                               },
        {u"pages IN {}",                        "0"                                                             },
        {u"pages BETWEEN {1, 9}",               "(t0.ZPAGES >= ?1 AND t0.ZPAGES <= ?2)"                         },
        {u"title CONTAINS[cd] 'x'",             "CORVANE_CONTAINS(t0.ZTITLE, ?1, 3)"                            },
        {u"title ==[c] shelf.name",             "(CORVANE_EQUAL(t0.ZTITLE, t1.ZNAME, 1)) IS TRUE"               },
        {u"parts.@count > 3",                   "(SELECT count(*) FROM ZBOOK s1 WHERE s1.ZWHOLE = t0.Z_PK) > ?1"},
        {u"ANY parts.pages > 3",
         "EXISTS (SELECT 1 FROM ZBOOK s1 WHERE s1.ZWHOLE = t0.Z_PK AND (s1.ZPAGES > ?1))"                       },
        {u"ALL shelf.books.whole.title == 'x'",
         "(NOT (EXISTS (SELECT 1 FROM ZBOOK s1 LEFT JOIN ZBOOK s1_1 ON s1_1.Z_PK = s1.ZWHOLE "
         "WHERE s1.ZSHELF = t1.Z_PK AND ((s1_1.ZTITLE = ?1) IS NOT TRUE)))) IS TRUE"                            },
        {u"SELF IN whole.parts",
         "(EXISTS (SELECT 1 FROM ZBOOK s1 WHERE s1.ZWHOLE = t1.Z_PK AND (t0.Z_PK = s1.Z_PK))) IS TRUE"          },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(utf8FromText(row.predicate));
        EXPECT_EQ(where(row.predicate), row.where);
    }
}

TEST(SqlQuery, JoinsEachPathOnce) {
    FetchRequest wanted =
        request("Book", u"shelf.owner.rank == 1 AND shelf.hidden == NO AND shelf == nil",
                {
                    {"shelf.name",                                           false, SortDescriptor::Comparison::kLocalizedCaseInsensitive},
                    {"pages"}
    });
    wanted.relationshipKeyPathsForPrefetching = {"shelf.owner", "whole"};
    const SqlQuery query = translated(wanted);
    EXPECT_EQ(query.joins,
              " LEFT JOIN ZSHELF t1 ON t1.Z_PK = t0.ZSHELF LEFT JOIN ZOWNER t2 ON t2.Z_PK = t1.ZOWNER"
              " LEFT JOIN ZBOOK t3 ON t3.Z_PK = t0.ZWHOLE");
    EXPECT_EQ(query.where, "(t2.ZRANK = ?1) IS TRUE AND (t1.ZHIDDEN = 0) IS TRUE AND t0.ZSHELF IS NULL");
    EXPECT_EQ(query.orderBy, "t1.ZNAME COLLATE CORVANE_LOCALIZED DESC, t0.ZPAGES, t0.Z_PK");
    std::string paths;
    for (const auto& path : query.joinedPaths) {
        paths += path.keyPath + "=" + path.alias + ":" + std::string(path.entity->name()) + " ";
    }
    EXPECT_EQ(paths, "shelf=t1:Shelf shelf.owner=t2:Owner whole=t3:Book ");
}

TEST(SqlQuery, AMissingColumnReadsAsItsDefaultWhereThereIsARow) {
    const auto hasColumn = [](const EntityDescription& entity, PropertyIndex property) {
        const std::set<std::string> missing = {"ZPAGES", "ZHIDDEN", "ZNOTE", "ZOWNER"};
        return !missing.contains(entity.column(property));
    };
    std::string error;
    const auto query = sqlQueryForRequest(
        request("Book", u"shelf.hidden == NO AND shelf.note == nil AND shelf.owner.rank == 1",
                {{"pages"}, {"shelf.note"}, {"shelf.hidden"}}),
        bookModel(), hasColumn, error);
    ASSERT_TRUE(query) << error;
    EXPECT_EQ(query->joins,
              " LEFT JOIN ZSHELF t1 ON t1.Z_PK = t0.ZSHELF LEFT JOIN ZOWNER t2 ON t2.Z_PK = NULL");
    EXPECT_EQ(query->where,
              "(CASE WHEN t1.Z_PK IS NOT NULL THEN 0 END = 0) IS TRUE AND (NULL IS NULL) IS TRUE AND "
              "(t2.ZRANK = ?1) IS TRUE");
    EXPECT_EQ(query->orderBy,
              "CASE WHEN t0.Z_PK IS NOT NULL THEN 0 END, CASE WHEN t1.Z_PK IS NOT NULL THEN 0 END, t0.Z_PK");
}

TEST(SqlQuery, RefusesWhatDoesNotFitTheModel) {
    struct Row {
        const char16_t* predicate;
        const char* error;
    };
    const Row rows[] = {
        {u"colour == 1",                      "Book has no property \"colour\""                                   },
        {u"shelf.owner.colour == 1",          "Owner has no property \"colour\""                                  },
        {u"title.size == 1",                  "title of Book is no to-one relationship"                           },
        {u"parts.pages == 1",                 "parts of Book is no to-one relationship"                           },
        {u"parts == nil",                     "parts is a to-many relationship: ask with ANY, ALL, NONE or @count"},
        {u"shelf.@count == 1",                "shelf is no to-many relationship: it has no @count"                },
        {u"ANY shelf.name == 'x'",            "shelf.name leads through no to-many relationship"                  },
        {u"SELF IN shelf",                    "shelf leads through no to-many relationship"                       },
        {u"ANY parts.shelf.books.pages == 1", "books of Shelf is no to-one relationship"                          },
        {u"title == 5",                       "title (text) cannot be compared with a number"                     },
        {u"printed < '2024-03-05'",           "printed (date) cannot be compared with a text"                     },
        {u"shelf == whole",                   "shelf (Shelf) cannot be compared with whole (Book)"                },
        {u"shelf > 5",                        "shelf (Shelf) is an object: only ==, != and IN work on it"         },
        {u"pages CONTAINS 'x'",               "pages (number) is no text for CONTAINS"                            },
        {u"title LIKE 5",                     "a number is no text for LIKE"                                      },
        {u"pages IN {1, 'x'}",                "pages (number) cannot be compared with a text"                     },
        {u"TRUEPREDICATE OR colour == 1",     "Book has no property \"colour\""                                   },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(utf8FromText(row.predicate));
        EXPECT_EQ(errorOf(row.predicate), row.error);
    }
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"colour"}}), "Book has no property \"colour\"");
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"shelf"}}), "shelf (Shelf) has no order");
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"parts.pages"}}), "parts of Book is no to-one relationship");
    EXPECT_EQ(errorOf(u"TRUEPREDICATE", {{"parts.@count"}}), "\"parts.@count\" is no key path of a property");
}

class QueryOnBooks : public testing::Test {
  protected:
    TestEnvironment environment_;
    BookStore books_{environment_.containerDirectory() / "Books.sqlite"};

    std::string found(std::u16string_view text) { return titles(books_.context(), booksWhere(text)); }
};

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
        SCOPED_TRACE(depth);
        EXPECT_EQ(found(repeated(u"(pages > 0 AND NOT (pages == 7 OR NOT ", depth) + u"pages > 1" +
                        repeated(u"))", depth)),
                  "Two");
    }
    std::u16string text = u"pages == 1";
    for (int i = 1; i <= 30; ++i) text += u" AND " + repeated(u"whole.", i) + u"shelf.name == nil";
    EXPECT_EQ(found(text), "One");
}

class QueryPlan : public testing::Test {
  protected:
    TestEnvironment environment_;
    std::filesystem::path file_ = environment_.containerDirectory() / "Plorix.sqlite";

    void SetUp() override { writePlatformStore(file_); }

    std::string plan(const FetchRequest& request) {
        const SqlQuery query = translated(request, storeFileModel());
        PlainDatabase database(file_);
        registerQueryFunctions(database.handle());
        return database.rows("EXPLAIN QUERY PLAN SELECT t0.Z_PK FROM ZGTASK t0" + query.joins + " WHERE " +
                             query.where + " ORDER BY " + query.orderBy);
    }
    void execute(const char* sql) { PlainDatabase(file_).execute(sql); }
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
    execute("CREATE INDEX Z_GTask_due ON ZGTASK (ZCOMPLETED, ZREMOVED, ZHASDUEDATE, ZDUEDATE)");
    const std::string due = plan(request("GTask", kDueTasks, kDueOrder));
    EXPECT_THAT(due,
                HasSubstr("SEARCH t0 USING INDEX Z_GTask_due (ZCOMPLETED=? AND ZREMOVED=? AND ZHASDUEDATE=? "
                          "AND ZDUEDATE<?)"));
    EXPECT_LT(due.find("t0"), due.find("t1"));
    EXPECT_THAT(due, HasSubstr("SEARCH t1 USING INTEGER PRIMARY KEY (rowid=?)"));
}

TEST_F(QueryPlan, UsesAPartialIndexWithoutBoundValues) {
    execute(
        "CREATE INDEX Z_GTask_open ON ZGTASK (ZDUEDATE, ZPRIORITY, ZLIST, ZNAME, ZREMOVED, ZCOMPLETED, "
        "ZHASDUEDATE) WHERE ZREMOVED = 0 AND ZCOMPLETED = 0 AND ZHASDUEDATE = 1");
    EXPECT_THAT(plan(request("GTask", kDueTasks, kDueOrder)),
                HasSubstr("SEARCH t0 USING COVERING INDEX Z_GTask_open (ZDUEDATE<?)"));
}

// Few shelves of an owner, many books on each: by their numbers it looks cheap to begin with the shelves.
TEST_F(QueryOnBooks, NeverBeginsWithJoinedTables) {
    Owner& owner = books_.addOwner(u"Ann");
    books_.save();
    PlainDatabase database(environment_.containerDirectory() / "Books.sqlite");
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
