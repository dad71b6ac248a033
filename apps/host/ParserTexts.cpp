#include "apps/host/ParserTexts.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

// The parser fills its texts itself; they are taken apart by these, whose placeholders stand in order.
struct Reason {
    CLI::ExitCodes kind;
    const char* key;
};
constexpr Reason kReasons[] = {
    {CLI::ExitCodes::RequiredError,    textKey("%@ is required")                                    },
    {CLI::ExitCodes::RequiresError,    textKey("%1$@ requires %2$@")                                },
    {CLI::ExitCodes::ExcludesError,    textKey("%1$@ excludes %2$@")                                },
    {CLI::ExitCodes::ExtrasError,      textKey("The following argument was not expected: %@")       },
    {CLI::ExitCodes::ExtrasError,      textKey("The following arguments were not expected: %@")     },
    {CLI::ExitCodes::ConversionError,  textKey("Could not convert: %1$@ = %2$@")                    },
    {CLI::ExitCodes::ConversionError,  textKey("%@: Should be true/false or a number")              },
    {CLI::ExitCodes::ConversionError,  textKey("%@: too many inputs for a flag")                    },
    {CLI::ExitCodes::ValidationError,  textKey("%1$@: Value %2$@ not in range %3$@ to %4$@")        },
    {CLI::ExitCodes::ValidationError,  textKey("%1$@: Value %2$@ could not be converted")           },
    {CLI::ExitCodes::ValidationError,  textKey("%1$@: %2$@ not in %3$@")                            },
    {CLI::ExitCodes::ArgumentMismatch, textKey("%1$@: %2$@ required %3$@ missing")                  },
    {CLI::ExitCodes::ArgumentMismatch, textKey("%1$@: At least %2$@ required but received %3$@")    },
    {CLI::ExitCodes::ArgumentMismatch, textKey("%1$@: At Most %2$@ required but received %3$@")     },
    {CLI::ExitCodes::ArgumentMismatch, textKey("Expected at least %1$@ arguments to %2$@, got %3$@")},
    {CLI::ExitCodes::ArgumentMismatch, textKey("Expected exactly %1$@ arguments to %2$@, got %3$@") },
    {CLI::ExitCodes::ArgumentMismatch, textKey("%@ was given a disallowed flag override")           },
};

// The parser's names for the words of its help are those words.
constexpr const char* kHelpWords[] = {
    textKey("Usage"),    textKey("OPTIONS"), textKey("SUBCOMMAND"), textKey("Positionals"),
    textKey("REQUIRED"), textKey("Needs"),   textKey("Excludes"),
};

// Options are in groups by their English name, which commands give to some of theirs by themselves.
class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override {
        if (group == kOptions) group = localizedUtf8(kOptions);
        return CLI::Formatter::make_group(group, isPositional, options);
    }

  private:
    static constexpr const char* kOptions = textKey("Options");
};

constexpr std::size_t kMostArguments = 4;
using Arguments = std::array<std::u16string, kMostArguments>;

// Takes what stands before the next placeholder off the front of a key, and the placeholder with it.
std::string_view takePiece(std::string_view& key) {
    const std::size_t placeholder = key.find('%');
    const std::string_view piece = key.substr(0, placeholder);
    key.remove_prefix(placeholder == key.npos ? key.size() : key.find('@', placeholder) + 1);
    return piece;
}

// What the placeholders of a key stand for in a text; none when the text is another one.
std::optional<Arguments> argumentsOf(std::string_view text, std::string_view key) {
    const std::string_view beginning = takePiece(key);
    if (!text.starts_with(beginning)) return std::nullopt;
    text.remove_prefix(beginning.size());
    Arguments arguments;
    for (std::u16string& argument : arguments) {
        const bool isLast = key.find('%') == key.npos;
        const std::string_view piece = takePiece(key);
        if (isLast && !text.ends_with(piece)) return std::nullopt;
        const std::size_t end = isLast ? text.size() - piece.size() : text.find(piece);
        if (end == text.npos) return std::nullopt;
        argument = textFromUtf8(text.substr(0, end));
        text.remove_prefix(end + piece.size());
        if (isLast) return arguments;
    }
    return std::nullopt;
}

}  // namespace

void translateHelp(CLI::App& app) {
    const auto formatter = std::make_shared<HelpFormatter>();
    for (const char* key : kHelpWords) formatter->label(key, localizedUtf8(key));
    app.formatter(formatter);
    app.group(localizedUtf8("Subcommands"));
}

std::string translatedReason(const CLI::ParseError& error) {
    const std::string english = error.what();
    for (const Reason& reason : kReasons) {
        if (static_cast<int>(reason.kind) != error.get_exit_code()) continue;
        if (const auto arguments = argumentsOf(english, reason.key)) {
            const auto& [first, second, third, fourth] = *arguments;
            return localizedUtf8(reason.key, {first, second, third, fourth});
        }
    }
    return english;
}

}  // namespace corvane
