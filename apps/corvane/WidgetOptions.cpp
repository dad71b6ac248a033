#include "apps/corvane/WidgetOptions.h"

#include <charconv>
#include <optional>
#include <string_view>

#include <CLI/CLI.hpp>

#include "apps/corvane/CommandText.h"

namespace corvane {
namespace {

std::optional<double> lengthFromText(std::string_view text) {
    double length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return length >= 0 && length <= 1e6 ? std::optional(length) : std::nullopt;
}

std::optional<Size> sizeFromText(std::string_view text) {
    const std::size_t separator = text.find('x');
    if (separator == std::string_view::npos) return std::nullopt;
    const auto width = lengthFromText(text.substr(0, separator));
    const auto height = lengthFromText(text.substr(separator + 1));
    return width && height ? std::optional(Size{*width, *height}) : std::nullopt;
}

std::string whyNoSize(const std::string& text) {
    return sizeFromText(text) ? "" : translated("\"%@\" is no size like 359x110, in points", text);
}

void addSize(CLI::App& command, const std::string& name, std::string& value, const std::string& description) {
    command.add_option(name, value, description)
        ->check(CLI::Validator(whyNoSize, "", ""))
        ->option_text("WIDTHxHEIGHT");
}

}  // namespace

WidgetHostOptions WidgetOptions::hostOptions() const {
    WidgetHostOptions result;
    result.displayMode = mode == "compact" ? DisplayMode::kCompact : DisplayMode::kExpanded;
    result.compactSize = sizeFromText(compactSize).value_or(result.compactSize);
    result.expandedSize = sizeFromText(expandedSize).value_or(result.expandedSize);
    return result;
}

void addWidgetOptions(CLI::App& command, WidgetOptions& options) {
    addChoice(command, "--mode", options.mode, {"compact", "expanded"},
              translated("The widget's display mode (expanded)"));
    addSize(command, "--compact-size", options.compactSize,
            translated("Its size when compact, in points (359x110)"));
    addSize(command, "--expanded-size", options.expandedSize,
            translated("Its largest size when expanded, in points (359x600)"));
}

void addChoice(CLI::App& command, const std::string& name, std::string& value,
               const std::vector<std::string>& words, const std::string& description) {
    std::string choices;
    for (const std::string& word : words) choices += (choices.empty() ? "" : "|") + word;
    command.add_option(name, value, description)->check(CLI::IsMember(words))->option_text(choices);
}

}  // namespace corvane
