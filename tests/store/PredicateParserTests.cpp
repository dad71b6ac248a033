#include <gtest/gtest.h>

#include <cmath>

#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "platform/foundation/Text.h"
#include "platform/store/Predicate.h"

namespace corvane {
namespace {

using Result = std::variant<Predicate, PredicateError>;
using Arguments = std::vector<PredicateArgument>;

// The printed predicate, or "position: message".
std::string printed(const Result& result) {
    if (const auto* error = std::get_if<PredicateError>(&result)) {
        return std::to_string(error->position) + ": " + error->message;
    }
    return utf8FromText(std::get<Predicate>(result).predicateFormat());
}

std::string parsed(std::u16string_view text, const Arguments& arguments = {}) {
    return printed(predicateWithFormat(text, arguments));
}

std::u16string repeated(std::u16string_view part, int count) {
    std::u16string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

TEST(PredicateParser, ReadsTheWholeLanguage) {
    const std::pair<const char16_t*, const char*> rows[] = {
  // Operators and their other spellings
        {u"priority = 1",                                                                        "priority == 1"                               },
        {u"a<1 and b<=2 And c=<3 AND d>4 aNd e>=5 AND f=>6",
         "a < 1 AND b <= 2 AND c <= 3 AND d > 4 AND e >= 5 AND f >= 6"                                                                         },
        {u"a BETWEEN {1, $B}",                                                                   "a BETWEEN {1, $B}"                           },
        {u"a IN {}",                                                                             "a IN {}"                                     },
        {u"a in {1, 'x', nil, b.c}",                                                             R"(a IN {1, "x", nil, b.c})"                  },
        {u"name BEGINSWITH[c] 'a' OR name endswith[D] 'b' OR name Contains [dC] 'c'",
         R"(name BEGINSWITH[c] "a" OR name ENDSWITH[d] "b" OR name CONTAINS[cd] "c")"                                                          },
        {u"name LIKE '*a?' OR name MATCHES '[a-z]+'",                                            R"(name LIKE "*a?" OR name MATCHES "[a-z]+")" },
 // Logic
        {u"NOT a == 1 AND b == 2",                                                               "NOT (a == 1) AND b == 2"                     },
        {u"!(a == 1 OR b == 2)",                                                                 "NOT (a == 1 OR b == 2)"                      },
        {u"a == 1 AND (b == 2 AND (c == 3 AND d == 4))",                                         "a == 1 AND b == 2 AND c == 3 AND d == 4"     },
        {u"(((TRUEPREDICATE))) or falsepredicate",                                               "TRUEPREDICATE OR FALSEPREDICATE"             },
 // To-many
        {u"some subTasks.name in {'a'} AND all subTasks.priority > 1 AND NONE subTasks == SELF",
         R"(ANY subTasks.name IN {"a"} AND ALL subTasks.priority > 1 AND NONE subTasks == SELF)"                                               },
        {u"subTasks.@count > 3",                                                                 "subTasks.@count > 3"                         },
 // Values
        {u"a == nil OR a == NULL OR a == Nil",                                                   "a == nil OR a == nil OR a == nil"            },
        {u"a IN {YES, no, TRUE, false}",                                                         "a IN {YES, NO, YES, NO}"                     },
        {u"a IN {-1, +2, 0x1F, -0xff, -9223372036854775808}",                                    "a IN {-1, 2, 31, -255, -9223372036854775808}"},
        {u"a IN {1.0, .5, -2.25e-3, 1E3, 5.}",                                                   "a IN {1.0, 0.5, -0.00225, 1000.0, 5.0}"      },
        {u"a == CAST(733327200, \"NSDate\")",                                                    "a == CAST(733327200.0, \"NSDate\")"          },
        {u"a == 'it\\'s \"\\n\\t\\r\\\\ \\u00e9'",                                               R"(a == "it's \"\n\t\r\\ é")"                },
        {u"a == \"\\uD83D\\uDE00\\uD83D \\u0007\"",                                              "a == \"\U0001F600\\uD83D \\u0007\""          },
 // Keys
        {u"SELF == $X AND self.list.name == 'a'",                                                R"(SELF == $X AND list.name == "a")"          },
        {u"#in == 1 AND x.#and == 2 AND #a == 3",                                                "#in == 1 AND x.#and == 2 AND a == 3"         },
        {u"\t a\n==\r1 ",                                                                        "a == 1"                                      },
    };
    for (const auto& [text, expected] : rows) {
        SCOPED_TRACE(utf8FromText(text));
        const Result result = predicateWithFormat(text);
        EXPECT_EQ(printed(result), expected);
        if (const auto* predicate = std::get_if<Predicate>(&result)) {
            EXPECT_EQ(std::get<Predicate>(predicateWithFormat(predicate->predicateFormat())), *predicate);
        }
    }
}

TEST(PredicateParser, PutsArgumentsInTheirPlaces) {
    const Date date(TimeInterval(1.5));
    EXPECT_EQ(parsed(u"%K == %@ AND a == %d AND b == %lld AND c == %f AND d == %u",
                     {Value(u"list.name"), Value(u"x\"y"), Value(true), Value(std::int64_t{-7}),
                      Value(std::int64_t{2}), Value(std::int64_t{3})}),
              R"(list.name == "x\"y" AND a == 1 AND b == -7 AND c == 2.0 AND d == 3)");
    EXPECT_EQ(parsed(u"a < %@ AND b == %@ AND c != %@", {Value(date), Value(), Value(std::nan(""))}),
              "a < CAST(1.5, \"NSDate\") AND b == nil AND c != nil");
    EXPECT_EQ(parsed(u"a IN %@ AND b BETWEEN %@ AND ANY %K == 1",
                     {
                         std::vector<Value>{Value(true), Value()   },
                         std::vector<Value>{Value(1.0),  Value(2.0)},
                         Value(u"subTasks.priority")
    }),
              "a IN {YES, nil} AND b BETWEEN {1.0, 2.0} AND ANY subTasks.priority == 1");
}

TEST(PredicateParser, TellsWhereAndWhatIsWrong) {
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"",                         "0: expected a key path or a value"                                              },
        {u"removed",                  "7: expected a comparison operator"                                              },
        {u"a == 1 b == 2",            "7: expected AND, OR or the end of the text"                                     },
        {u"(a == 1",                  "7: expected AND, OR or )"                                                       },
        {u"a == and",
         "5: expected a key path or a value; a key that is a word of the language has a # before it"                   },
        {u"a @ 1",                    "2: expected a comparison operator"                                              },
        {u"a == 'x\\'",               "5: the quoted text does not end"                                                },
        {u"a == 'x\\u12G4'",          R"(7: expected an escape: \n \t \r \" \' \\ or \u and four hexadecimal digits)"  },
        {u"a == 12ab",                "5: expected a number"                                                           },
        {u"a == 9223372036854775808", "5: the integer does not fit in 64 bits"                                         },
        {u"a == 1e999",               "5: the number is beyond the range of reals"                                     },
        {u"a..b == 1",                "2: expected a key: letters, digits and _"                                       },
        {u"@count == 1",              "0: expected a key; the only collection operator is @count, after a relationship"},
        {u"a.@count.b == 1",          "9: @count is the end of a key path"                                             },
        {u"a == $1",                  "6: expected a name after $"                                                     },
        {u"a == %",                   "5: expected a placeholder: %@, %K, %d, %i, %u, %ld, %lu, %lld or %f"            },
        {u"a == %@",                  "5: argument 1 is missing"                                                       },
        {u"a IN 5",                   "5: expected { and values, or a placeholder or variable for a list"              },
        {u"a IN {1",                  "7: expected , or }"                                                             },
        {u"a BETWEEN {1}",            "10: expected two values between { and }"                                        },
        {u"a CONTAINS[x] 'b'",        "11: expected [c], [d] or [cd]"                                                  },
        {u"a MATCHES '['",            "10: expected a regular expression"                                              },
        {u"ANY 5 == 5",               "4: expected a key path through a to-many relationship"                          },
        {u"a == CAST(1, 'Date')",     "13: expected \"NSDate\""                                                        },
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parsed(text), expected) << utf8FromText(text);
}

TEST(PredicateParser, RefusesArgumentsThatDoNotFit) {
    EXPECT_EQ(parsed(u"a == %d", {Value(1.5)}), "5: argument 1 is no integer");
    EXPECT_EQ(parsed(u"a == 1 AND %K == 1", {Value(u"b c")}), "11: argument 1 is no key path");
    EXPECT_EQ(parsed(u"a == %@", {std::vector<Value>{}}), "5: expected one value, not a list");
    EXPECT_EQ(parsed(u"a IN %@", {Value(true)}), "5: expected a list of values");
    EXPECT_EQ(parsed(u"a BETWEEN %@", {std::vector<Value>{Value(true)}}),
              "10: expected two values between { and }");
}

TEST(PredicateParser, BoundsNestingButNotLength) {
    constexpr int kMany = 10000;
    EXPECT_EQ(parsed(repeated(u"(", kMany) + u"a == 1" + repeated(u")", kMany)),
              "501: nested too deeply: at most 500 levels");
    EXPECT_EQ(parsed(repeated(u"NOT ", kMany) + u"a == 1"), "2004: nested too deeply: at most 500 levels");
    EXPECT_EQ(parsed(repeated(u"(", 500) + u"a == 1" + repeated(u")", 500)), "a == 1");
    EXPECT_EQ(parsed(repeated(u"a.", 32) + u"b == 1"), "64: the key path has too many steps");
    const std::string chain = parsed(repeated(u"a == 1 AND ", kMany) + u"b == 2");
    EXPECT_EQ(chain, utf8FromText(repeated(u"a == 1 AND ", kMany)) + "b == 2");
}

// Random texts: pieces of the language in any order, and the program's own texts with changed units.
std::u16string randomText(std::mt19937& engine) {
    constexpr const char16_t* kPieces[] = {
        u"removed", u"list.name", u"==",      u"<",        u"&&",      u"OR",     u"NOT",
        u"!",       u"(",         u")",       u"{",        u"}",       u",",      u"[cd]",
        u"IN",      u"ANY",       u"BETWEEN", u"CONTAINS", u"MATCHES", u"nil",    u"YES",
        u"1",       u"-",         u"0x",      u"1e",       u"'a'",     u"'",      u"\\",
        u"$X",      u"$",         u"%@",      u"%K",       u"%",       u"SELF",   u"@count",
        u".",       u"#",         u"CAST(",   u"'NSDate'", u" ",       u"\xD800", u"TRUEPREDICATE"};
    const auto below = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(engine);
    };
    std::u16string text =
        below(2) == 0 ? u"" : u"removed == NO && name != '' && (list.user == $USER || a IN {1, 'b'})";
    if (text.empty()) {
        for (std::size_t i = below(14); i > 0; --i)
            text.append(kPieces[below(std::size(kPieces))]).append(u" ");
    }
    for (std::size_t i = below(4); i > 0 && !text.empty(); --i) {
        const std::size_t at = below(text.size());
        if (below(2) == 0) {
            text.erase(at, below(3));
        } else {
            text.insert(at, kPieces[below(std::size(kPieces))]);
        }
    }
    return text;
}

TEST(PredicateParser, EndsOnAnyTextAndPointsIntoIt) {
    constexpr int kTexts = 6000;
    std::mt19937 engine(20240305);
    int parsedTexts = 0;
    for (int i = 0; i < kTexts; ++i) {
        const std::u16string text = randomText(engine);
        SCOPED_TRACE(utf8FromText(text));
        const Result result = predicateWithFormat(text, Arguments{Value(u"a"), Value(true)});
        if (const auto* error = std::get_if<PredicateError>(&result)) {
            ASSERT_LE(error->position, text.size());
            ASSERT_FALSE(error->message.empty());
            continue;
        }
        ++parsedTexts;
        const auto& predicate = std::get<Predicate>(result);
        const Result again = predicateWithFormat(predicate.predicateFormat());
        ASSERT_TRUE(std::holds_alternative<Predicate>(again)) << printed(again);
        ASSERT_EQ(std::get<Predicate>(again), predicate);
    }
    EXPECT_GT(parsedTexts, kTexts / 20);
}

TEST(Predicate, FillsVariablesInAndLeavesTheOthers) {
    const Predicate predicate = fixedPredicate(u"a == $A AND (b IN {1, $B} OR c BETWEEN $C) AND NOT d == $D");
    const Predicate filled = predicate.withSubstitutionVariables({
        {"A", Value()                                   },
        {"B", Value(2.5)                                },
        {"C", std::vector<Value>{Value(1.0), Value(2.0)}},
        {"X", Value(true)                               }
    });
    EXPECT_EQ(utf8FromText(filled.predicateFormat()),
              "a == nil AND (b IN {1, 2.5} OR c BETWEEN {1.0, 2.0}) AND NOT (d == $D)");
}

TEST(Predicate, JoinsPredicates) {
    const Predicate a = fixedPredicate(u"a == 1 OR b == 2");
    const Predicate b = fixedPredicate(u"c == %ld AND d == 4", {Value(std::int64_t{3})});
    EXPECT_EQ(utf8FromText(andPredicateWithSubpredicates({a, b}).predicateFormat()),
              "(a == 1 OR b == 2) AND c == 3 AND d == 4");
    EXPECT_EQ(utf8FromText(andPredicateWithSubpredicates({}).predicateFormat()), "TRUEPREDICATE");
}

TEST(PredicateDeathTest, StopsAtAFixedTextThatDoesNotParse) {
    EXPECT_DEATH(fixedPredicate(u"a == "), "position 5: expected a key path or a value");
    EXPECT_DEATH(fixedPredicate(u"a == %@"), "arguments of its placeholders are missing");
}

}  // namespace
}  // namespace corvane
