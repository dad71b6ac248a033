// The tokens of a predicate text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/store/PredicateKeywords.h"
#include "platform/store/Value.h"

namespace corvane {

struct Token {
    enum class Kind {
        kWord,         ///< a keyword or a key path
        kLiteral,      ///< a number or a quoted text: `value`
        kVariable,     ///< $NAME: `text` without the "$"
        kPlaceholder,  ///< %@: `text` without the "%"
        kSymbol,       ///< operators, brackets, the comma
        kEnd,
        kError,  ///< `message` says what is wrong at `position`
    };

    Kind kind = Kind::kEnd;
    std::size_t position = 0;  ///< code units from the start of the text
    std::u16string_view text = {};
    std::optional<Keyword> keyword = std::nullopt;
    Value value = {};
    const char* message = "";

    bool isSymbol(std::u16string_view symbol) const { return kind == Kind::kSymbol && text == symbol; }
};

class PredicateLexer {
  public:
    explicit PredicateLexer(std::u16string_view text) : text_(text) {}

    /// The next token; at the end of the text, kEnd again and again.
    Token next();

  private:
    Token word();
    Token number();
    Token quotedText();
    Token variable();
    Token placeholder();
    Token symbol();

    std::u16string_view rest() const { return text_.substr(position_); }
    Token token(Token::Kind kind, std::size_t length);
    Token error(std::size_t position, const char* message);

    std::u16string_view text_;
    std::size_t position_ = 0;
};

}  // namespace corvane
