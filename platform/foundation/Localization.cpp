#include "platform/foundation/Localization.h"

#include <libintl.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <optional>

#include "platform/foundation/Environment.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

constexpr const char* kDomain = "corvane";

// Where the catalogues of this program are: beside it where it is installed, or in its build folder.
std::string catalogueDirectory() {
    if (const auto directory = processVariable("CORVANE_LOCALE_DIR")) return *directory;
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    for (const char* place : {CORVANE_LOCALE_DIR_FROM_PROGRAM, CORVANE_LOCALE_DIR_FROM_BUILT_PROGRAM}) {
        const std::filesystem::path directory = program.parent_path() / place;
        if (std::filesystem::is_directory(directory, error)) return directory.string();
    }
    return CORVANE_LOCALE_DIR_DEFAULT;
}

// Binds the domain to its catalogues once; the process's locale settings choose the language at each call.
void bindCatalogues() {
    static const bool isBound = [] {
        bindtextdomain(kDomain, catalogueDirectory().c_str());
        bind_textdomain_codeset(kDomain, "UTF-8");
        return true;
    }();
    static_cast<void>(isBound);
}

bool isEnglish(std::string_view language) {
    const std::string_view name = language.substr(0, language.find_first_of("_.@:"));
    return name == "C" || name == "POSIX" || name == "en";
}

// Whether the keys are what the user wants to read. English has no catalogue, so that gettext would look for
// one at every start, and go on to the next language of a list.
bool wantsEnglish() {
    const char* const setting = std::setlocale(LC_MESSAGES, nullptr);
    const std::string_view locale = setting ? setting : "C";
    if (locale == "C" || locale == "POSIX") return true;
    const std::optional<std::string> languages = processVariable("LANGUAGE");
    return isEnglish(languages ? std::string_view(*languages) : locale);
}

// The absolute value, also of the smallest number: plural rules know no negative counts.
unsigned long pluralCount(std::int64_t count) {
    const auto bits = static_cast<std::uint64_t>(count);
    return count < 0 ? 0 - bits : bits;
}

std::string translation(const char* key, std::optional<std::int64_t> count) {
    if (*key == '\0') return {};  // the key of a catalogue's header
    if (const Translator& translate = Environment::current().translate) {
        return translate(key, count).value_or(key);
    }
    if (wantsEnglish()) return key;
    bindCatalogues();
    return count ? dngettext(kDomain, key, key, pluralCount(*count)) : dgettext(kDomain, key);
}

// One "%" of a format: what it asks for and how many code units it takes.
struct Placeholder {
    enum class Kind { kPercent, kInteger, kUnsigned, kText, kUnknown };
    Kind kind = Kind::kUnknown;
    std::size_t length = 1;
    std::optional<std::size_t> position;  ///< 1 for the first argument, none when the format does not say

    bool takesArgument() const { return kind != Kind::kUnknown && kind != Kind::kPercent; }
};

Placeholder::Kind kindOfConversion(char16_t conversion) {
    switch (conversion) {
        case u'd':
        case u'i':
            return Placeholder::Kind::kInteger;
        case u'u':
            return Placeholder::Kind::kUnsigned;
        case u'@':
            return Placeholder::Kind::kText;
        default:
            return Placeholder::Kind::kUnknown;
    }
}

// Takes a position of one or two digits, "1$", off the front.
std::optional<std::size_t> takePosition(std::u16string_view& rest) {
    std::size_t position = 0;
    for (std::size_t i = 0; i < rest.size() && i < 3; ++i) {
        const char16_t unit = rest[i];
        if (unit == u'$' && i > 0) {
            rest.remove_prefix(i + 1);
            return position;
        }
        if (unit < u'0' || unit > u'9') break;
        position = position * 10 + (unit - u'0');
    }
    return std::nullopt;
}

// Reads the placeholder at the start of `text`, which begins with "%".
Placeholder placeholderAtStart(std::u16string_view text) {
    if (text.starts_with(u"%%")) return {Placeholder::Kind::kPercent, 2, std::nullopt};
    Placeholder placeholder;
    std::u16string_view rest = text.substr(1);
    placeholder.position = takePosition(rest);
    while (rest.starts_with(u'l')) rest.remove_prefix(1);
    if (rest.empty()) return placeholder;
    placeholder.kind = kindOfConversion(rest.front());
    if (placeholder.kind != Placeholder::Kind::kUnknown) placeholder.length = text.size() - rest.size() + 1;
    return placeholder;
}

std::u16string decimalText(std::string_view digits) { return {digits.begin(), digits.end()}; }

// The text of an argument as a placeholder asks for it; none when it does not fit.
std::optional<std::u16string> textOfArgument(const FormatArgument& argument, Placeholder::Kind kind) {
    if (const auto* text = std::get_if<std::u16string>(&argument)) {
        return kind == Placeholder::Kind::kText ? std::optional(*text) : std::nullopt;
    }
    const std::int64_t number = std::get<std::int64_t>(argument);
    const bool fits =
        kind == Placeholder::Kind::kInteger || (kind == Placeholder::Kind::kUnsigned && number >= 0);
    return fits ? std::optional(decimalText(std::to_string(number))) : std::nullopt;
}

// What stands in the result for a placeholder.
std::u16string filledPlaceholder(const Placeholder& placeholder, std::u16string_view source,
                                 std::initializer_list<FormatArgument> arguments) {
    if (placeholder.kind == Placeholder::Kind::kPercent) return u"%";
    std::optional<std::u16string> text;
    const std::size_t position = placeholder.position.value_or(0);
    if (position >= 1 && position <= arguments.size()) {
        text = textOfArgument(arguments.begin()[position - 1], placeholder.kind);
    }
    return text.value_or(std::u16string(source));
}

}  // namespace

std::u16string localizedString(const char* key) { return textFromUtf8(translation(key, std::nullopt)); }

std::u16string localizedString(const char* key, std::int64_t count) {
    return textFromUtf8(translation(key, count));
}

std::u16string stringWithFormat(std::u16string_view format, std::initializer_list<FormatArgument> arguments) {
    std::u16string result;
    std::size_t nextPosition = 1;
    for (;;) {
        const std::size_t percent = std::min(format.find(u'%'), format.size());
        result += format.substr(0, percent);
        format.remove_prefix(percent);
        if (format.empty()) return result;
        Placeholder placeholder = placeholderAtStart(format);
        if (placeholder.takesArgument() && !placeholder.position) placeholder.position = nextPosition++;
        result += filledPlaceholder(placeholder, format.substr(0, placeholder.length), arguments);
        format.remove_prefix(placeholder.length);
    }
}

std::string localizedUtf8(const char* key, std::initializer_list<FormatArgument> arguments) {
    if (arguments.size() == 0) return utf8FromText(localizedString(key));
    const auto* const count = std::get_if<std::int64_t>(arguments.begin());
    return utf8FromText(
        stringWithFormat(count ? localizedString(key, *count) : localizedString(key), arguments));
}

}  // namespace corvane
