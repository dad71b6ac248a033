#include "platform/store/PredicateKeywords.h"

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

struct Word {
    std::u16string_view text;
    Keyword keyword;
};

constexpr Word kWords[] = {
    {u"AND",            Keyword::kAnd           },
    {u"OR",             Keyword::kOr            },
    {u"NOT",            Keyword::kNot           },
    {u"ANY",            Keyword::kAny           },
    {u"SOME",           Keyword::kAny           },
    {u"ALL",            Keyword::kAll           },
    {u"NONE",           Keyword::kNone          },
    {u"IN",             Keyword::kIn            },
    {u"BETWEEN",        Keyword::kBetween       },
    {u"BEGINSWITH",     Keyword::kBeginsWith    },
    {u"ENDSWITH",       Keyword::kEndsWith      },
    {u"CONTAINS",       Keyword::kContains      },
    {u"LIKE",           Keyword::kLike          },
    {u"MATCHES",        Keyword::kMatches       },
    {u"NIL",            Keyword::kNil           },
    {u"NULL",           Keyword::kNil           },
    {u"YES",            Keyword::kYes           },
    {u"TRUE",           Keyword::kYes           },
    {u"NO",             Keyword::kNo            },
    {u"FALSE",          Keyword::kNo            },
    {u"SELF",           Keyword::kSelf          },
    {u"TRUEPREDICATE",  Keyword::kTruePredicate },
    {u"FALSEPREDICATE", Keyword::kFalsePredicate},
};

constexpr char16_t upperCase(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

}  // namespace

bool equalsIgnoringAsciiCase(std::u16string_view a, std::u16string_view b) {
    return std::ranges::equal(a, b, {}, upperCase, upperCase);
}

std::optional<Keyword> keywordFromText(std::u16string_view word) {
    const auto* const found = std::ranges::find_if(
        kWords, [word](const Word& entry) { return equalsIgnoringAsciiCase(entry.text, word); });
    if (found == std::end(kWords)) return std::nullopt;
    return found->keyword;
}

}  // namespace corvane
