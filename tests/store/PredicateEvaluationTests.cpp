// What predicates mean, in memory and in SQL: every row is asked of unsaved objects and of their rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "BookModel.h"
#include "platform/foundation/Text.h"
#include "support/PlatformStore.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

// Ann has the shelves "Old" and "New"; nobody has "Lost". "Set" has the parts "A", "B" and "C".
class PredicateMeaning : public testing::Test {
  protected:
    TestEnvironment environment_;
    std::filesystem::path file_ = environment_.containerDirectory() / "Books.sqlite";
    BookStore books_{file_};
    Owner& ann_ = books_.addOwner(u"Ann");
    Shelf& old_ = books_.addShelf(u"Old", &ann_);
    Shelf& new_ = books_.addShelf(u"New", &ann_);
    Shelf& lost_ = books_.addShelf(u"Lost");
    Predicate::Variables variables_;

    void SetUp() override {
        Book& set = books_.addBook(u"Set", &old_);
        set.setPages(100);
        set.setPrinted(Date(TimeInterval(10)));
        addPart(u"A", &old_, set, 1);
        addPart(u"B", &new_, set, 2).setIsRead(true);
        addPart(u"C", nullptr, set, 3);
        books_.addBook(u"D", &lost_).setPages(7);
        Book& nameless = books_.context().insert<Book>();
        nameless.setPages(9);
        // Another program's NULL, which no object of ours would have.
        nameless.setValueForKey("isRead", Value());
    }

    Book& addPart(std::u16string_view title, Shelf* shelf, Book& whole, std::int16_t pages) {
        Book& part = books_.addBook(title, shelf, &whole);
        part.setPages(pages);
        return part;
    }

    std::string found(std::u16string_view text) {
        FetchRequest request = booksWhere(text, {{"title"}});
        request.predicate = request.predicate->withSubstitutionVariables(variables_);
        return titles(books_.context(), request);
    }
};

TEST_F(PredicateMeaning, IsTheSameInMemoryAndInTheFile) {
    struct Row {
        const char16_t* predicate;
        const char* expected;
    };
    const Row rows[] = {
  // nil is neither equal nor unequal to anything, but it can be asked for
        {u"title == nil",                                    "-"            },
        {u"title != nil AND title != ''",                    "A B C D Set"  },
        {u"title != 'A'",                                    "B C D Set"    },
        {u"NOT title == 'A'",                                "B C D Set"    },
        {u"NOT (title == 'A' OR pages == 9)",                "B C D Set"    },
        {u"title == 'A' OR pages == 9",                      "- A"          },
        {u"isRead == NO",                                    "A C D Set"    },
        {u"isRead != YES",                                   "A C D Set"    },
        {u"title < nil OR NOT title < nil",                  ""             },
        {u"nil == title AND nil == nil",                     "-"            },
        {u"title IN {'A', nil}",                             "- A"          },
        {u"title IN {'A'} OR NOT title IN {'A'}",            "A B C D Set"  },
        {u"NOT pages IN {}",                                 "- A B C D Set"},
        {u"pages BETWEEN {2, 7}",                            "B C D"        },
        {u"pages BETWEEN {7, 2}",                            ""             },
        {u"NOT pages BETWEEN {nil, 7}",                      "- Set"        },
 // Kinds of numbers
        {u"pages == 7.0 OR pages == YES",                    "A D"          },
        {u"printed >= 10 AND printed <= CAST(10, 'NSDate')", "Set"          },
 // To-one paths: a missing object is nil all the way
        {u"shelf == nil",                                    "- C"          },
        {u"shelf.owner == nil",                              "- C D"        },
        {u"shelf.owner.name == 'Ann'",                       "A B Set"      },
        {u"NOT shelf.owner.name == 'Ann'",                   ""             },
        {u"whole.shelf.name == 'Old'",                       "A B C"        },
        {u"shelf == whole.shelf",                            "A"            },
        {u"SELF == whole",                                   ""             },
        {u"pages < whole.pages",                             "A B C"        },
 // To-many paths: always true or false
        {u"parts.@count == 3",                               "Set"          },
        {u"whole.parts.@count == 0",                         "- D Set"      },
        {u"ANY parts.pages > 2",                             "Set"          },
        {u"NOT (ANY parts.pages > 2)",                       "- A B C D"    },
        {u"ALL parts.pages > 1",                             "- A B C D"    },
        {u"ALL parts.shelf.name != 'X'",                     "- A B C D"    },
        {u"NONE parts.title == 'A'",                         "- A B C D"    },
        {u"ANY parts.shelf == nil",                          "Set"          },
        {u"ANY shelf.owner.shelves.books.title == 'B'",      "A B Set"      },
        {u"SELF IN whole.parts",                             "A B C"        },
        {u"ANY parts.shelf.books.@count == 2",               "Set"          },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(utf8FromText(row.predicate));
        EXPECT_EQ(found(row.predicate), row.expected) << "unsaved";
    }
    books_.save();
    for (const Row& row : rows) {
        SCOPED_TRACE(utf8FromText(row.predicate));
        EXPECT_EQ(found(row.predicate), row.expected) << "saved";
    }
}

TEST_F(PredicateMeaning, VariablesActAsTheirValues) {
    struct Row {
        const char16_t* predicate;
        PredicateArgument value;
        const char* expected;
    };
    const Row rows[] = {
        {u"shelf == $X",                              Value(&old_),                                           "A Set"    },
        {u"shelf != $X",                              Value(&old_),                                           "B D"      },
        {u"shelf == $X",                              Value(),                                                "- C"      },
        {u"shelf.owner == $X",                        Value(),                                                "- C D"    },
        {u"shelf IN $X",                              std::vector<Value>{Value(&old_), Value()},              "- A C Set"},
        {u"pages BETWEEN $X",                         std::vector<Value>{Value(std::int64_t{2}), Value(7.5)}, "B C D"    },
        {u"title ==[c] $X",                           Value(u"a"),                                            "A"        },
        {u"printed == $X",                            Value(Date(TimeInterval(10))),                          "Set"      },
 // A list or a value where it cannot be makes the comparison neither true nor false
        {u"pages == $X OR NOT pages == $X",           std::vector<Value>{Value(std::int64_t{7})},             ""         },
        {u"pages IN $X OR NOT pages IN $X",           Value(std::int64_t{7}),                                 ""         },
        {u"title MATCHES $X OR NOT title MATCHES $X", Value(u"["),                                            ""         },
    };
    const auto check = [&] {
        for (const Row& row : rows) {
            SCOPED_TRACE(utf8FromText(row.predicate));
            variables_ = {
                {"X", row.value}
            };
            EXPECT_EQ(found(row.predicate), row.expected);
        }
    };
    check();
    books_.save();
    check();
}

TEST_F(PredicateMeaning, AnObjectWithoutARowIsInNoRow) {
    books_.save();
    Shelf& unsaved = books_.addShelf(u"Unsaved");
    variables_ = {
        {"X", Value(&unsaved)}
    };
    EXPECT_EQ(found(u"shelf == $X"), "");
    EXPECT_EQ(found(u"shelf != $X"), "A B D Set");
    EXPECT_EQ(found(u"shelf IN {$X} OR NOT shelf IN {$X}"), "A B D Set");
}

TEST_F(PredicateMeaning, ARelationshipToAMissingRowIsThereButHasNoValues) {
    books_.save();
    PlainDatabase(file_).execute("DELETE FROM ZSHELF WHERE ZNAME = 'Old'; UPDATE ZSHELF SET ZOWNER = 99");
    BookStore reopened(file_);
    const auto answers = [&](std::u16string_view text) {
        FetchRequest all = booksWhere(u"", {{"title"}});
        const auto result = reopened.context().executeFetch(all);
        std::vector<ManagedObject*> inMemory;
        std::ranges::copy_if(std::get<0>(result), std::back_inserter(inMemory),
                             [&](const ManagedObject* book) { return fixedPredicate(text).evaluate(*book); });
        return titles(inMemory) + " | " + titles(reopened.context(), booksWhere(text, {{"title"}}));
    };
    EXPECT_EQ(answers(u"shelf != nil"), "A B D Set | A B D Set");
    EXPECT_EQ(answers(u"shelf.hidden == NO"), "B D | B D");
    EXPECT_EQ(answers(u"shelf.name == nil"), "- A C Set | - A C Set");
    EXPECT_EQ(answers(u"shelf.owner != nil"), "B D | B D");
    EXPECT_EQ(answers(u"shelf.owner.name == nil"), "- A B C D Set | - A B C D Set");
    EXPECT_EQ(answers(u"shelf.books.@count == 0"), "- A C Set | - A C Set");
}

TEST_F(PredicateMeaning, SortKeysOrderObjectsAsTheyOrderRows) {
    using enum SortDescriptor::Comparison;
    books_.shelf(u"Lost").setName(u"\u00e4rmel");
    books_.shelf(u"New").setName(u"Zebra");
    using Keys = std::vector<SortDescriptor>;
    const auto check = [&] {
        const auto sorted = [&](const Keys& keys) { return titles(books_.context(), booksWhere(u"", keys)); };
        constexpr bool kAscending = true;
        EXPECT_EQ(sorted({{"title"}}), "- A B C D Set");
        EXPECT_EQ(sorted({
                      {"title", !kAscending}
        }),
                  "Set D C B A -");
        const SortDescriptor byShelf{"shelf.name", kAscending, kLocalizedCaseInsensitive};
        EXPECT_EQ(sorted({
                      byShelf, {"pages", !kAscending}
        }),
                  "- C D Set A B");
        EXPECT_EQ(sorted({
                      {"shelf.name", !kAscending},
                      {"title"           }
        }),
                  "D B A Set - C");
        EXPECT_EQ(sorted({
                      {"isRead", !kAscending},
                      {"printed"       },
                      {"pages"}
        }),
                  "B A C D Set -");
    };
    check();
    books_.save();
    check();
}

}  // namespace
}  // namespace corvane
