// What predicates mean, in memory and in SQL: every row is asked of unsaved objects and of their rows.
#include <gtest/gtest.h>

#include "StoreTestFixture.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

// Ann has the shelves "Old" and "New"; nobody has "Lost". "Set" has the parts "A", "B" and "C".
class PredicateMeaning : public BookStoreTest {
  protected:
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
    const std::pair<const char16_t*, const char*> rows[] = {
  // nil is neither equal nor unequal to anything, but it can be asked for
        {u"title == nil",                                    "-"            },
        {u"title != nil AND title != ''",                    "A B C D Set"  },
        {u"NOT title == 'A'",                                "B C D Set"    },
        {u"NOT (title == 'A' OR pages == 9)",                "B C D Set"    },
        {u"isRead == NO",                                    "A C D Set"    },
        {u"title < nil OR NOT title < nil",                  ""             },
        {u"title IN {'A', nil}",                             "- A"          },
        {u"title IN {'A'} OR NOT title IN {'A'}",            "A B C D Set"  },
        {u"NOT pages IN {}",                                 "- A B C D Set"},
        {u"pages BETWEEN {7, 2}",                            ""             },
        {u"NOT pages BETWEEN {nil, 7}",                      "- Set"        },
 // Kinds of numbers
        {u"pages == 7.0 OR pages == YES",                    "A D"          },
        {u"printed >= 10 AND printed <= CAST(10, 'NSDate')", "Set"          },
 // To-one paths: a missing object is nil all the way
        {u"shelf == nil",                                    "- C"          },
        {u"shelf.owner == nil",                              "- C D"        },
        {u"NOT shelf.owner.name == 'Ann'",                   ""             },
        {u"whole.shelf.name == 'Old'",                       "A B C"        },
 // To-many paths: always true or false
        {u"parts.@count == 3",                               "Set"          },
        {u"whole.parts.@count == 0",                         "- D Set"      },
        {u"NOT (ANY parts.pages > 2)",                       "- A B C D"    },
        {u"ALL parts.pages > 1",                             "- A B C D"    },
        {u"NONE parts.title == 'A'",                         "- A B C D"    },
        {u"ANY shelf.owner.shelves.books.title == 'B'",      "A B Set"      },
        {u"SELF IN whole.parts",                             "A B C"        },
    };
    for (const char* state : {"unsaved", "saved"}) {
        for (const auto& [predicate, expected] : rows) {
            SCOPED_TRACE(utf8FromText(predicate));
            EXPECT_EQ(found(predicate), expected) << state;
        }
        books_.save();
    }
}

TEST_F(PredicateMeaning, AnObjectWithoutARowIsInNoRow) {
    books_.save();
    Shelf& unsaved = books_.addShelf(u"Unsaved");
    variables_.emplace("X", Value(&unsaved));
    EXPECT_EQ(found(u"shelf == $X"), "");
    EXPECT_EQ(found(u"shelf != $X"), "A B D Set");
    EXPECT_EQ(found(u"shelf IN {$X} OR NOT shelf IN {$X}"), "A B D Set");
}

TEST_F(PredicateMeaning, ARelationshipToAMissingRowIsThereButHasNoValues) {
    books_.save();
    executeElsewhere("DELETE FROM ZSHELF WHERE ZNAME = 'Old'; UPDATE ZSHELF SET ZOWNER = 99");
    BookStore reopened(file_);
    const auto inFile = [&](std::u16string_view text) {
        return titles(reopened.context(), booksWhere(text, {{"title"}}));
    };
    EXPECT_EQ(inFile(u"shelf != nil"), "A B D Set");
    EXPECT_EQ(inFile(u"shelf.hidden == NO"), "B D");
    EXPECT_EQ(inFile(u"shelf.name == nil"), "- A C Set");
    EXPECT_EQ(inFile(u"shelf.owner.name == nil"), "- A B C D Set");
    EXPECT_EQ(inFile(u"shelf.books.@count == 0"), "- A C Set");
}

}  // namespace
}  // namespace corvane
