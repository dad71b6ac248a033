// Memory and SQL answer alike: random predicates over random stores, values of foreign kinds included.
#include <gtest/gtest.h>

#include <algorithm>

#include "RandomEdits.h"
#include "StoreTestFixture.h"
#include "platform/foundation/Text.h"
#include "platform/store/SqlQuery.h"

namespace corvane {
namespace {

// SQL literals for columns of each kind. The last ones are what only another program would write.
constexpr const char* kNumbers = "NULL 0 1 2 7 -3 2 2.5 1e18 9007199254740993 'abc' x'0102'";
constexpr const char* kDates = "NULL 0 700000000 700000000.5 -1 9e999 '2024-03-05' x'00'";
constexpr const char* kTexts =
    "NULL '' 'a' 'A' 'ab' 'Straße' 'STRASSE' 'é' 'e'||char(769) '😀' '～' 'a*b' 'a'||char(0)||'b' '12' x'61'";
constexpr const char* kBytes = "NULL x'' x'01' x'0102' 'text' 5";
constexpr const char* kReferences = "NULL 1 2 3 4 1 2 99 0 -1 2.5 'x'";

// A row of random values, with a version of 0 to 2 before them.
std::string rowOf(Dice& dice, std::initializer_list<const char*> literals) {
    std::string text = "(" + std::to_string(dice.below(3));
    for (const char* choices : literals) text += ", " + dice.word(choices);
    return text + ")";
}

void fillStore(const std::filesystem::path& file, Dice& dice) {
    PlainDatabase database(file);
    for (int i = 0; i < 3; ++i) {
        database.execute("INSERT INTO ZOWNER (Z_OPT, ZNAME, ZRANK) VALUES " +
                         rowOf(dice, {kTexts, kNumbers}));
        database.execute("INSERT INTO ZSHELF (Z_OPT, ZNAME, ZHIDDEN, ZNOTE, ZOWNER) VALUES " +
                         rowOf(dice, {kTexts, kNumbers, kTexts, kReferences}));
    }
    for (int i = 0; i < 12; ++i) {
        database.execute(
            "INSERT INTO ZBOOK (Z_OPT, ZTITLE, ZPAGES, ZCOPIES, ZSTAMP, ZISREAD, ZRATING, ZPRINTED, ZCOVER, "
            "ZWHOLE, ZSHELF) VALUES " +
            rowOf(dice, {kTexts, kNumbers, kNumbers, kNumbers, kNumbers, kNumbers, kDates, kBytes,
                         kReferences, kReferences}));
    }
}

// As an older program would have made it.
void dropColumns(const std::filesystem::path& file) {
    PlainDatabase(file).execute(
        "ALTER TABLE ZBOOK DROP COLUMN ZPAGES; ALTER TABLE ZBOOK DROP COLUMN ZPRINTED; "
        "ALTER TABLE ZSHELF DROP COLUMN ZHIDDEN; ALTER TABLE ZSHELF DROP COLUMN ZNOTE; "
        "DROP INDEX ZSHELF_ZOWNER_INDEX; ALTER TABLE ZSHELF DROP COLUMN ZOWNER");
}

constexpr const char* kNumberPaths =
    "pages copies stamp isRead rating printed whole.pages shelf.hidden shelf.owner.rank parts.@count "
    "shelf.books.@count whole.shelf.owner.shelves.@count";
constexpr const char* kTextPaths = "title shelf.name shelf.note shelf.owner.name whole.title";
constexpr const char* kBookPaths = "whole SELF whole.whole $BOOK nil $UNKNOWN";
constexpr const char* kShelfPaths = "shelf whole.shelf $SHELF nil";
constexpr const char* kMemberNumberPaths =
    "parts.pages shelf.books.rating parts.parts.@count shelf.owner.shelves.books.copies "
    "parts.shelf.owner.rank whole.parts.printed parts.shelf.books.@count";
constexpr const char* kMemberTextPaths = "parts.title parts.shelf.name shelf.owner.shelves.note";
constexpr const char* kMemberBookPaths = "parts shelf.books parts.whole.whole parts.parts";
constexpr const char* kNumberConstants =
    "0 1 2 2.5 -3 YES NO 700000000 9007199254740993 9007199254740992.0 $DATE $NUMBER $NIL nil "
    "CAST(0,'NSDate')";
constexpr const char* kTextConstants =
    "'' 'a' 'A' 'ab' 'strasse' 'é' 'E' '～' 'b' 'a?' '\u00e9*' '[a-z]+' $TEXT nil";
constexpr const char* kComparisons = "== != < <= > >=";
constexpr const char* kTextOperators = "BEGINSWITH ENDSWITH CONTAINS LIKE MATCHES";
constexpr const char* kOptions = "  [c] [d] [cd]";
constexpr const char* kQuantifiers = "ANY ALL NONE";

class PredicateWriter {
  public:
    explicit PredicateWriter(Dice& dice) : dice_(dice) {}

    std::string condition(int depth) {
        if (depth == 0 || dice_.oneIn(3)) return comparison();
        if (dice_.oneIn(4)) return "NOT (" + condition(depth - 1) + ")";
        const char* const joint = dice_.oneIn(2) ? " AND " : " OR ";
        std::string text = "(" + condition(depth - 1);
        for (std::size_t i = dice_.below(3) + 1; i > 0; --i) text += joint + condition(depth - 1);
        return text + ")";
    }

  private:
    std::string comparison() {
        const bool isQuantified = dice_.oneIn(4);
        const std::string quantifier = isQuantified ? dice_.word(kQuantifiers) + " " : "";
        const std::size_t kind = dice_.below(9);
        if (kind < 3)
            return quantifier + numbers(dice_.word(isQuantified ? kMemberNumberPaths : kNumberPaths));
        if (kind < 6) return quantifier + texts(dice_.word(isQuantified ? kMemberTextPaths : kTextPaths));
        if (kind < 7) return quantifier + books(dice_.word(isQuantified ? kMemberBookPaths : kBookPaths));
        return kind < 8 ? dates() : others();
    }

    // Alternatives that bound the same date.
    std::string dates() { return "(" + dateBound() + " OR pages > 2 AND " + dateBound() + ")"; }
    std::string dateBound() {
        return "printed " + dice_.word("< <= > >=") + " " + dice_.word("$DATE CAST(0,'NSDate')");
    }

    std::string numbers(const std::string& left) {
        if (dice_.oneIn(5)) return left + " BETWEEN {" + number() + ", " + number() + "}";
        if (dice_.oneIn(5)) return left + " IN " + list(&PredicateWriter::number);
        return left + " " + dice_.word(kComparisons) + " " + number();
    }

    std::string texts(const std::string& left) {
        if (dice_.oneIn(6)) return left + " IN" + dice_.word(kOptions) + " " + list(&PredicateWriter::text);
        const std::string op = dice_.word(dice_.oneIn(2) ? kComparisons : kTextOperators);
        return left + " " + op + dice_.word(kOptions) + " " + text();
    }

    std::string books(const std::string& left) {
        if (dice_.oneIn(4)) return left + " IN " + dice_.word(kMemberBookPaths);
        if (dice_.oneIn(4)) return left + " IN {$BOOK, whole, " + dice_.word(kBookPaths) + "}";
        return left + (dice_.oneIn(2) ? " == " : " != ") + dice_.word(kBookPaths);
    }

    std::string others() {
        const std::string equality = dice_.word("== !=");
        switch (dice_.below(5)) {
            case 0:
                return "cover " + dice_.word(kComparisons) + (dice_.oneIn(3) ? " nil" : " $BYTES");
            case 1:
                return "shelf.owner " + equality + " nil";
            case 2:
                return "5 < " + number();
            case 3:
                return "$SHELF " + equality + " " + dice_.word(kShelfPaths);
            default:
                return dice_.oneIn(2) ? "TRUEPREDICATE" : "pages IN $LIST OR pages BETWEEN $LIST";
        }
    }

    std::string number() { return dice_.word(dice_.oneIn(3) ? kNumberPaths : kNumberConstants); }
    // Right sides of MATCHES are patterns: a path there would fail on most values.
    std::string text() { return dice_.word(dice_.oneIn(4) ? kTextPaths : kTextConstants); }
    std::string list(std::string (PredicateWriter::*element)()) {
        std::string text = "{";
        for (std::size_t i = dice_.below(4); i > 0; --i) text += (this->*element)() + (i > 1 ? ", " : "");
        return text + "}";
    }

    Dice& dice_;
};

Predicate::Variables variables(const std::vector<ManagedObject*>& books,
                               const std::vector<ManagedObject*>& shelves, Dice& dice) {
    return {
        {"BOOK",   Value(dice.of(books))                                 },
        {"SHELF",  dice.oneIn(3) ? Value() : Value(dice.of(shelves))     },
        {"DATE",   Value(Date(TimeInterval(700000000)))                  },
        {"NUMBER", Value(static_cast<std::int64_t>(dice.below(9)))       },
        {"TEXT",   Value(u"Stra\u00dfe")                                 },
        {"BYTES",  Value(Bytes{1})                                       },
        {"LIST",   std::vector<Value>{Value(std::int64_t{1}), Value(7.0)}},
        {"NIL",    Value()                                               }
    };
}

std::string numbersOf(const std::vector<ManagedObject*>& objects) {
    std::string text;
    for (const ManagedObject* object : objects) text += " " + std::to_string(object->objectID().key);
    return text;
}

constexpr const char* kSortPaths = "title pages rating printed shelf.name whole.title shelf.owner.rank cover";

std::vector<SortDescriptor> sortKeys(Dice& dice) {
    std::vector<SortDescriptor> keys;
    for (std::size_t i = dice.below(3); i > 0; --i) {
        using enum SortDescriptor::Comparison;
        keys.push_back(
            {dice.word(kSortPaths), dice.oneIn(2), dice.oneIn(2) ? kPlain : kLocalizedCaseInsensitive});
    }
    return keys;
}

class PredicateAgreement : public BookStoreTest, public testing::WithParamInterface<unsigned> {
  protected:
    PredicateAgreement() { environment_->locale = "de_DE"; }

    static std::vector<ManagedObject*> fetched(BookStore& store, const FetchRequest& request) {
        const auto result = store.context().executeFetch(request);
        const auto* error = std::get_if<StoreError>(&result);
        EXPECT_FALSE(error) << error->message;
        return error ? std::vector<ManagedObject*>() : std::get<0>(result);
    }
    static std::vector<ManagedObject*> all(BookStore& store, std::string_view entity) {
        FetchRequest request;
        request.entityName = entity;
        return fetched(store, request);
    }

    static void expectExactSql(const FetchRequest& request) {
        std::string error;
        const auto query = sqlQueryForRequest(
            request, bookModel(), [](const EntityDescription&, PropertyIndex) { return true; }, error);
        EXPECT_TRUE(query && query->isExact) << error;
    }

    // Random questions and orders; what the fetch answers is what the objects answer one by one.
    static void expectAgreement(BookStore& store, const Predicate::Variables& variables, Dice& dice) {
        constexpr int kPredicates = 40;
        const std::vector<ManagedObject*> books = all(store, Book::kEntityName);
        for (int i = 0; i < kPredicates && !HasFailure(); ++i) {
            const std::string text = PredicateWriter(dice).condition(i % 4);
            SCOPED_TRACE(text);
            const auto parsed = predicateWithFormat(textFromUtf8(text));
            const auto* predicate = std::get_if<Predicate>(&parsed);
            ASSERT_TRUE(predicate) << std::get<PredicateError>(parsed).message;
            EXPECT_EQ(std::get<Predicate>(predicateWithFormat(predicate->predicateFormat())), *predicate);

            FetchRequest request;
            request.entityName = Book::kEntityName;
            request.predicate = predicate->withSubstitutionVariables(variables);
            request.sortDescriptors = sortKeys(dice);
            expectExactSql(request);
            std::vector<ManagedObject*> expected;
            std::ranges::copy_if(books, std::back_inserter(expected), [&](const ManagedObject* book) {
                return request.predicate->evaluate(*book);
            });
            std::ranges::sort(expected, ObjectOrder(request.sortDescriptors));
            EXPECT_EQ(numbersOf(fetched(store, request)), numbersOf(expected));
        }
    }
};

TEST_P(PredicateAgreement, OfMemoryAndSql) {
    Dice dice(GetParam());
    books_.save();
    fillStore(file_, dice);
    if (GetParam() % 4 == 0) dropColumns(file_);
    BookStore store(file_);
    const std::vector<ManagedObject*> books = all(store, Book::kEntityName);
    const std::vector<ManagedObject*> shelves = all(store, Shelf::kEntityName);
    const Predicate::Variables values = variables(books, shelves, dice);
    expectAgreement(store, values, dice);
    RandomEdits edits(store, dice);
    for (int i = 0; i < 8; ++i) edits.step();
    expectAgreement(store, values, dice);
}

INSTANTIATE_TEST_SUITE_P(Seeds, PredicateAgreement, testing::Range(1u, 17u));

}  // namespace
}  // namespace corvane
