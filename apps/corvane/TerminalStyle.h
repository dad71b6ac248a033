// What the output's terminal takes: colours, links, a width; and texts dressed for it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/views/Color.h"

namespace corvane {

enum class When { kAuto, kAlways, kNever };

struct TerminalStyle {
    bool colors = false;
    bool links = false;
    bool asciiOnly = false;                           ///< our own signs in ASCII
    std::optional<std::size_t> width = std::nullopt;  ///< in cells; none: lines are as long as they are

    /// Standard output's. Automatic colours want a terminal, NO_COLOR unset or empty; automatic links a
    /// terminal that knows them. Only a terminal has a width, its own or $COLUMNS.
    static TerminalStyle ofOutput(When colors = When::kAuto, When links = When::kAuto);

    // UTF-8 texts without controls; without colours they come back as they are.
    std::string bold(std::string_view text) const { return dressed(text, "1"); }
    std::string faint(std::string_view text) const { return dressed(text, "2"); }
    std::string red(std::string_view text) const { return dressed(text, "31"); }
    std::string green(std::string_view text) const { return dressed(text, "32"); }
    std::string blue(std::string_view text) const { return dressed(text, "34"); }
    /// In 24-bit colour, components clamped.
    std::string colored(std::string_view text, const Color& color) const;

    /// A hyperlink (OSC 8) around a text that is dressed already. Parts of one link that stand apart share an
    /// identifier.
    std::string linked(std::string_view text, std::u16string_view url, std::string_view id = {}) const;

  private:
    std::string dressed(std::string_view text, std::string_view attribute) const;
};

/// Whether standard output is a terminal that takes escape sequences.
bool isOutputTerminal();

}  // namespace corvane
