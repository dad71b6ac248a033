#include "platform/store/QueryFunctions.h"

#include <memory>
#include <optional>
#include <string>

#include <sqlite3.h>

#include "platform/foundation/Locale.h"
#include "platform/foundation/Text.h"
#include "platform/store/PredicateOperators.h"
#include "platform/store/SqlQuery.h"

namespace corvane {

namespace {

constexpr int kArguments = 3;  // left, right, options
constexpr int kRight = 1;

std::string_view utf8Of(sqlite3_value* value) {
    // The text comes first: asking for it may convert the value and so change its length.
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

// An argument of a function, with its text in UTF-16.
class Argument {
  public:
    explicit Argument(sqlite3_value* value) {
        switch (sqlite3_value_type(value)) {
            case SQLITE_INTEGER:
                view_ = static_cast<std::int64_t>(sqlite3_value_int64(value));
                break;
            case SQLITE_FLOAT:
                view_ = sqlite3_value_double(value);
                break;
            case SQLITE_TEXT:
                text_ = textFromUtf8(utf8Of(value));
                view_ = std::u16string_view(text_);
                break;
            case SQLITE_BLOB: {
                const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(value));
                view_ = std::span(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
                break;
            }
            default:
                break;
        }
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;

    const ValueView& view() const { return view_; }
    const std::u16string* text() const {
        return std::holds_alternative<std::u16string_view>(view_) ? &text_ : nullptr;
    }

  private:
    std::u16string text_;
    ValueView view_;
};

TextOptions optionsOf(sqlite3_value* value) {
    const int bits = sqlite3_value_int(value);
    return {.ignoresCase = (bits & kIgnoresCaseBit) != 0,
            .ignoresDiacritics = (bits & kIgnoresDiacriticsBit) != 0};
}

void setResult(sqlite3_context* context, Truth truth) {
    if (truth != Truth::kUnknown) sqlite3_result_int(context, truth == Truth::kTrue ? 1 : 0);
}

// The right side is most often a parameter: SQLite keeps the test made for it from row to row.
void applyToArguments(sqlite3_context* context, PredicateOperator op, sqlite3_value** arguments) {
    const TextOptions options = optionsOf(arguments[2]);
    const Argument left(arguments[0]);
    if (const auto* kept = static_cast<const TextTest*>(sqlite3_get_auxdata(context, kRight))) {
        // Only a text is kept, and a view of any text does for it.
        return setResult(context, applyOperator(op, options, left.view(), std::u16string_view(), kept));
    }
    const Argument right(arguments[kRight]);
    if (!right.text() || !(isTextOperator(op) || options.any())) {
        return setResult(context, applyOperator(op, options, left.view(), right.view()));
    }
    auto test = std::make_unique<TextTest>(op, options, *right.text());
    setResult(context, applyOperator(op, options, left.view(), right.view(), test.get()));
    sqlite3_set_auxdata(context, kRight, test.release(),
                        [](void* kept) { delete static_cast<TextTest*>(kept); });
}

extern "C" void corvaneOperatorFunction(sqlite3_context* context, int, sqlite3_value** arguments) {
    try {
        const auto* names = static_cast<const OperatorNames*>(sqlite3_user_data(context));
        applyToArguments(context, names->op, arguments);
    } catch (...) {
        sqlite3_result_error_nomem(context);
    }
}

extern "C" int corvaneLocalizedCollation(void*, int aLength, const void* a, int bLength, const void* b) {
    const std::string_view aUtf8(static_cast<const char*>(a), static_cast<std::size_t>(aLength));
    const std::string_view bUtf8(static_cast<const char*>(b), static_cast<std::size_t>(bLength));
    try {
        return Locale::current().localizedCaseInsensitiveCompare(textFromUtf8(aUtf8), textFromUtf8(bUtf8));
    } catch (...) {
        return aUtf8.compare(bUtf8);
    }
}

}  // namespace

void registerQueryFunctions(sqlite3* database) {
    // Only our own statements may call them, no view or trigger that a file brings along.
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    for (const OperatorNames& names : operatorNames()) {
        if (*names.function == '\0') continue;
        sqlite3_create_function_v2(database, names.function, kArguments, kFlags,
                                   const_cast<OperatorNames*>(&names), corvaneOperatorFunction, nullptr,
                                   nullptr, nullptr);
    }
    sqlite3_create_collation_v2(database, kLocalizedCollation, SQLITE_UTF8, nullptr,
                                corvaneLocalizedCollation, nullptr);
}

}  // namespace corvane
