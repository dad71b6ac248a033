#include "platform/store/PredicateParser.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/Localization.h"
#include "platform/store/PredicateLexer.h"

namespace corvane {

namespace {

using Conversion = PlaceholderExpression::Conversion;

struct OperatorSymbol {
    std::u16string_view text;
    PredicateOperator op;
};

constexpr OperatorSymbol kOperatorSymbols[] = {
    {u"==", PredicateOperator::kEqual         },
    {u"=",  PredicateOperator::kEqual         },
    {u"!=", PredicateOperator::kNotEqual      },
    {u"<>", PredicateOperator::kNotEqual      },
    {u"<",  PredicateOperator::kLess          },
    {u"<=", PredicateOperator::kLessOrEqual   },
    {u"=<", PredicateOperator::kLessOrEqual   },
    {u">",  PredicateOperator::kGreater       },
    {u">=", PredicateOperator::kGreaterOrEqual},
    {u"=>", PredicateOperator::kGreaterOrEqual},
};

struct OperatorKeyword {
    Keyword keyword;
    PredicateOperator op;
};

constexpr OperatorKeyword kOperatorKeywords[] = {
    {Keyword::kIn,         PredicateOperator::kIn        },
    {Keyword::kBetween,    PredicateOperator::kBetween   },
    {Keyword::kBeginsWith, PredicateOperator::kBeginsWith},
    {Keyword::kEndsWith,   PredicateOperator::kEndsWith  },
    {Keyword::kContains,   PredicateOperator::kContains  },
    {Keyword::kLike,       PredicateOperator::kLike      },
    {Keyword::kMatches,    PredicateOperator::kMatches   },
};

std::optional<PredicateOperator> operatorOf(const Token& token) {
    if (token.keyword) {
        const auto* const word =
            std::ranges::find(kOperatorKeywords, *token.keyword, &OperatorKeyword::keyword);
        if (word != std::end(kOperatorKeywords)) return word->op;
    }
    if (token.kind != Token::Kind::kSymbol) return std::nullopt;
    const auto* const symbol = std::ranges::find(kOperatorSymbols, token.text, &OperatorSymbol::text);
    if (symbol == std::end(kOperatorSymbols)) return std::nullopt;
    return symbol->op;
}

Quantifier quantifierOf(const Token& token) {
    if (token.keyword == Keyword::kAny) return Quantifier::kAny;
    if (token.keyword == Keyword::kAll) return Quantifier::kAll;
    if (token.keyword == Keyword::kNone) return Quantifier::kNone;
    return Quantifier::kPlain;
}

std::optional<Value> constantOf(Keyword keyword) {
    if (keyword == Keyword::kNil) return Value();
    if (keyword == Keyword::kYes) return Value(true);
    if (keyword == Keyword::kNo) return Value(false);
    return std::nullopt;
}

// The conversion of a placeholder by what follows its "%": the letters of printf for numbers.
std::optional<Conversion> conversionOf(std::u16string_view text) {
    if (text == u"@") return Conversion::kObject;
    if (text == u"K") return Conversion::kKeyPath;
    if (text == u"f" || text == u"lf" || text == u"g") return Conversion::kReal;
    if (text.empty() || std::u16string_view(u"diu").find(text.back()) == std::u16string_view::npos) return {};
    text.remove_suffix(1);
    constexpr std::u16string_view kLengths[] = {u"", u"h", u"hh", u"l", u"ll", u"q", u"z"};
    if (std::ranges::find(kLengths, text) == std::end(kLengths)) return std::nullopt;
    return Conversion::kInteger;
}

// Recursive descent. The first error ends the parsing: from then on every function returns at once.
class Parser {
  public:
    explicit Parser(std::u16string_view text) : lexer_(text) { advance(); }

    std::variant<PredicateNodePointer, PredicateError> parse() {
        const PredicateNodePointer node = disjunction();
        if (!error_ && current_.kind != Token::Kind::kEnd)
            fail(localizedUtf8("expected AND, OR or the end of the text"));
        if (error_) return *error_;
        return node;
    }

  private:
    // Conditions. Null after an error.
    PredicateNodePointer disjunction() {
        return chain(Compound::Kind::kOr, Keyword::kOr, u"||", &Parser::conjunction);
    }
    PredicateNodePointer conjunction() {
        return chain(Compound::Kind::kAnd, Keyword::kAnd, u"&&", &Parser::condition);
    }
    PredicateNodePointer chain(Compound::Kind kind, Keyword keyword, std::u16string_view symbol,
                               PredicateNodePointer (Parser::*operand)());
    PredicateNodePointer condition();
    PredicateNodePointer nested(PredicateNodePointer (Parser::*inner)());
    PredicateNodePointer negation();
    PredicateNodePointer parenthesis();
    PredicateNodePointer comparison();

    // Parts of a comparison
    TextOptions options();
    Expression rightSide(PredicateOperator op);
    Expression expression();
    Expression word();
    Expression castNumber();
    Expression placeholder();
    Expression list(PredicateOperator op);
    void checkQuantified(const Expression& left, std::size_t position);

    // Tokens
    void advance();
    bool skipSymbol(std::u16string_view symbol);
    bool skipKeyword(Keyword keyword);
    void expectSymbol(std::u16string_view symbol, const char* key);
    void fail(std::string message) { failAt(current_.position, std::move(message)); }
    void failAt(std::size_t position, std::string message);

    PredicateLexer lexer_;
    Token current_;
    std::size_t placeholders_ = 0;
    std::size_t depth_ = 0;
    std::optional<PredicateError> error_;
};

PredicateNodePointer Parser::chain(Compound::Kind kind, Keyword keyword, std::u16string_view symbol,
                                   PredicateNodePointer (Parser::*operand)()) {
    std::vector<PredicateNodePointer> operands;
    do {
        operands.push_back((this->*operand)());
        if (error_) return nullptr;
    } while (skipKeyword(keyword) || skipSymbol(symbol));
    return compoundNode(kind, operands);
}

PredicateNodePointer Parser::condition() {
    if (skipKeyword(Keyword::kNot) || skipSymbol(u"!")) return nested(&Parser::negation);
    if (skipSymbol(u"(")) return nested(&Parser::parenthesis);
    if (skipKeyword(Keyword::kTruePredicate)) return constantNode(true);
    if (skipKeyword(Keyword::kFalsePredicate)) return constantNode(false);
    return comparison();
}

PredicateNodePointer Parser::nested(PredicateNodePointer (Parser::*inner)()) {
    if (depth_ == kMaxPredicateDepth) {
        fail(localizedUtf8("nested too deeply: at most %d levels",
                           {static_cast<std::int64_t>(kMaxPredicateDepth)}));
        return nullptr;
    }
    ++depth_;
    PredicateNodePointer node = (this->*inner)();
    --depth_;
    return node;
}

PredicateNodePointer Parser::negation() {
    const PredicateNodePointer operand = condition();
    return operand ? negationNode(operand) : nullptr;
}

PredicateNodePointer Parser::parenthesis() {
    PredicateNodePointer inner = disjunction();
    expectSymbol(u")", textKey("expected AND, OR or )"));
    return error_ ? nullptr : inner;
}

PredicateNodePointer Parser::comparison() {
    Comparison comparison;
    comparison.quantifier = quantifierOf(current_);
    if (comparison.quantifier != Quantifier::kPlain) advance();
    const std::size_t leftPosition = current_.position;
    comparison.left = expression();
    if (comparison.quantifier != Quantifier::kPlain) checkQuantified(comparison.left, leftPosition);
    const std::optional<PredicateOperator> op = operatorOf(current_);
    if (!op) fail(localizedUtf8("expected a comparison operator"));
    if (error_) return nullptr;
    advance();
    comparison.op = *op;
    comparison.options = options();
    const std::size_t rightPosition = current_.position;
    comparison.right = rightSide(*op);
    if (error_) return nullptr;
    PredicateNodePointer node = comparisonNode(std::move(comparison));
    if (!hasValidTest(*node)) failAt(rightPosition, localizedUtf8(kInvalidExpressionMessage));
    return node;
}

TextOptions Parser::options() {
    TextOptions options;
    if (!skipSymbol(u"[")) return options;
    for (const char16_t letter : current_.text) {
        if (letter == u'c' || letter == u'C') {
            options.ignoresCase = true;
        } else if (letter == u'd' || letter == u'D') {
            options.ignoresDiacritics = true;
        } else {
            fail(localizedUtf8("expected [c], [d] or [cd]"));
        }
    }
    if (!options.any()) fail(localizedUtf8("expected [c], [d] or [cd]"));
    advance();
    expectSymbol(u"]", textKey("expected ]"));
    return options;
}

Expression Parser::rightSide(PredicateOperator op) {
    const bool takesList = op == PredicateOperator::kIn || op == PredicateOperator::kBetween;
    if (takesList && current_.isSymbol(u"{")) return list(op);
    const bool isFilledLater =
        current_.kind == Token::Kind::kVariable || current_.kind == Token::Kind::kPlaceholder;
    if (takesList && !isFilledLater &&
        (op == PredicateOperator::kBetween || current_.kind != Token::Kind::kWord)) {
        fail(localizedUtf8("expected { and values, or a placeholder or variable for a list"));
    }
    return expression();
}

Expression Parser::expression() {
    Expression result;
    switch (current_.kind) {
        case Token::Kind::kWord:
            return word();
        case Token::Kind::kPlaceholder:
            return placeholder();
        case Token::Kind::kLiteral:
            result.content = ConstantExpression{std::move(current_.value)};
            break;
        case Token::Kind::kVariable:
            result.content = VariableExpression{std::string(current_.text.begin(), current_.text.end())};
            break;
        case Token::Kind::kSymbol:
        case Token::Kind::kEnd:
        case Token::Kind::kError:
            fail(localizedUtf8("expected a key path or a value"));
            return result;
    }
    advance();
    return result;
}

Expression Parser::word() {
    const Token word = current_;
    advance();
    if (word.keyword && *word.keyword != Keyword::kSelf) {
        if (std::optional<Value> constant = constantOf(*word.keyword)) return {ConstantExpression{*constant}};
        failAt(word.position,
               localizedUtf8(
                   "expected a key path or a value; a key that is a word of the language has a # before it"));
        return {};
    }
    if (equalsIgnoringAsciiCase(word.text, u"CAST") && skipSymbol(u"(")) return castNumber();
    std::variant<KeyPath, PredicateError> path = keyPathFromText(word.text);
    if (const auto* error = std::get_if<PredicateError>(&path)) {
        failAt(word.position + error->position, error->message);
        return {};
    }
    return {std::get<KeyPath>(std::move(path))};
}

// CAST(733327200, "NSDate"): the seconds of a date since 2001.
Expression Parser::castNumber() {
    const auto* integer = std::get_if<std::int64_t>(&current_.value);
    const auto* real = std::get_if<double>(&current_.value);
    if (!integer && !real) fail(localizedUtf8("expected the seconds of a date since 2001"));
    const double seconds = integer ? static_cast<double>(*integer) : real ? *real : 0;
    advance();
    expectSymbol(u",", textKey("expected , and \"NSDate\""));
    if (current_.value != Value(u"NSDate")) fail(localizedUtf8("expected \"NSDate\""));
    advance();
    expectSymbol(u")", textKey("expected )"));
    return {ConstantExpression{Date(TimeInterval(seconds))}};
}

Expression Parser::placeholder() {
    const std::optional<Conversion> conversion = conversionOf(current_.text);
    if (!conversion) fail(localizedUtf8("expected a placeholder: %@, %K, %d, %i, %u, %ld, %lu, %lld or %f"));
    if (error_) return {};
    const PlaceholderExpression placeholder{*conversion, placeholders_++, current_.position};
    advance();
    return {placeholder};
}

Expression Parser::list(PredicateOperator op) {
    const std::size_t position = current_.position;
    advance();
    ListExpression list;
    if (!current_.isSymbol(u"}")) {
        do {
            list.elements.push_back(expression());
        } while (!error_ && skipSymbol(u","));
    }
    expectSymbol(u"}", textKey("expected , or }"));
    if (op == PredicateOperator::kBetween && list.elements.size() != 2)
        failAt(position, localizedUtf8(kBetweenMessage));
    return {std::move(list)};
}

void Parser::checkQuantified(const Expression& left, std::size_t position) {
    const auto* path = left.get<KeyPath>();
    const auto* placeholder = left.get<PlaceholderExpression>();
    if (path && !path->steps.empty()) return;
    if (placeholder && placeholder->conversion == Conversion::kKeyPath) return;
    failAt(position, localizedUtf8("expected a key path through a to-many relationship"));
}

void Parser::advance() {
    if (error_) return;
    current_ = lexer_.next();
    if (current_.kind == Token::Kind::kError) failAt(current_.position, localizedUtf8(current_.message));
}

bool Parser::skipSymbol(std::u16string_view symbol) {
    if (error_ || !current_.isSymbol(symbol)) return false;
    advance();
    return true;
}

bool Parser::skipKeyword(Keyword keyword) {
    if (error_ || current_.keyword != keyword) return false;
    advance();
    return true;
}

void Parser::expectSymbol(std::u16string_view symbol, const char* key) {
    if (!skipSymbol(symbol)) fail(localizedUtf8(key));
}

void Parser::failAt(std::size_t position, std::string message) {
    if (!error_) error_ = PredicateError{position, std::move(message)};
}

}  // namespace

std::variant<PredicateNodePointer, PredicateError> parsePredicate(std::u16string_view text) {
    return Parser(text).parse();
}

}  // namespace corvane
