#include "platform/store/PredicateOperators.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "platform/foundation/Text.h"

namespace corvane {
namespace {

constexpr TextOptions kExact = {};
constexpr TextOptions kNoCase = {.ignoresCase = true};
constexpr TextOptions kNoMarks = {.ignoresDiacritics = true};
constexpr TextOptions kNeither = {.ignoresCase = true, .ignoresDiacritics = true};

TEST(PredicateOperators, CompareTexts) {
    using enum PredicateOperator;
    struct Row {
        std::u16string_view left;
        PredicateOperator op;
        TextOptions options;
        std::u16string_view right;
        bool expected;
    };
    constexpr std::u16string_view kNulAtTheEnd(u"a\0", 2);
    const Row rows[] = {
        {u"Milk",          kBeginsWith, kExact,   u"mi",          false},
        {u"Milk",          kEndsWith,   kNoCase,  u"LK",          true },
        {u"Milk",          kContains,   kExact,   u"",            true },
        {u"naive",         kContains,   kNoMarks, u"i\u0308v",    true },
        {u"na\u00efve",    kContains,   kNoCase,  u"IVE",         false},
 // Full case folding, and the capital I with a dot that folds to two characters
        {u"Stra\u00dfe",   kEqual,      kNoCase,  u"STRASSE",     true },
        {u"\u0130stanbul", kEqual,      kNeither, u"istanbul",    true },
        {u"\u0130stanbul", kEqual,      kNoCase,  u"istanbul",    false},
        {u"\u00e9",        kEqual,      kExact,   u"e\u0301",     false},
        {u"\u00e9",        kEqual,      kNoMarks, u"e\u0301",     true },
        {u"a",             kLess,       kExact,   u"B",           false},
        {u"a",             kLess,       kNoCase,  u"B",           true },
 // Code points, not code units: U+1F600 is above U+FF5E
        {u"\U0001F600",    kGreater,    kExact,   u"\uff5e",      true },
        {u"a",             kLess,       kExact,   kNulAtTheEnd,   true },
 // Wildcards
        {u"Milk",          kLike,       kNoCase,  u"m??K",        true },
        {u"Milk",          kLike,       kExact,   u"ilk",         false},
        {u"",              kLike,       kExact,   u"?",           false},
        {u"\U0001F600",    kLike,       kExact,   u"?",           true },
        {u"abcabd",        kLike,       kExact,   u"*ab?",        true },
        {u"abab",          kLike,       kExact,   u"a*ab*b",      false},
        {u"50*",           kLike,       kExact,   u"50\\*",       true },
        {u"500",           kLike,       kExact,   u"50\\*",       false},
        {u"a\\",           kLike,       kExact,   u"a\\",         true },
 // Regular expressions match the whole text
        {u"Milk 2",        kMatches,    kExact,   u"[A-Z][a-z]+", false},
        {u"MILK",          kMatches,    kNoCase,  u"m\\D+k",      true },
        {u"\u00c9t\u00e9", kMatches,    kNeither, u"\u00e9te",    true },
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(utf8FromText(std::u16string(row.left) + u" " + std::u16string(namesOf(row.op).text) +
                                  u" " + std::u16string(row.right)));
        EXPECT_EQ(applyOperator(row.op, row.options, row.left, row.right), truthOf(row.expected));
    }
}

TEST(PredicateOperators, LikeEndsQuicklyOnPatternsWithManyRuns) {
    std::u16string pattern;
    for (int i = 0; i < 2000; ++i) pattern += u"*a";
    const std::u16string text = std::u16string(4000, u'a') + u"b";
    EXPECT_EQ(applyOperator(PredicateOperator::kLike, kExact, text, pattern), Truth::kFalse);
}

TEST(PredicateOperators, NilAndNanAreUnknownToEveryOperator) {
    for (const ValueView& nil :
         {ValueView(), ValueView(std::nan("")), ValueView(Date(TimeInterval(std::nan(""))))}) {
        for (const OperatorNames& names : operatorNames().first(11)) {
            EXPECT_EQ(applyOperator(names.op, kExact, nil, u"x"), Truth::kUnknown);
            EXPECT_EQ(applyOperator(names.op, kNoCase, u"x", nil), Truth::kUnknown);
        }
    }
    EXPECT_EQ(applyOperator(PredicateOperator::kMatches, kExact, u"[", u"["), Truth::kUnknown);
    EXPECT_EQ(applyOperator(PredicateOperator::kContains, kExact, std::int64_t{12}, u"1"), Truth::kFalse);
}

}  // namespace
}  // namespace corvane
