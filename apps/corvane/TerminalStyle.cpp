#include "apps/corvane/TerminalStyle.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "apps/corvane/TerminalText.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

std::optional<std::size_t> terminalWidth() {
    winsize size = {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
    const std::string columns = processVariable("COLUMNS").value_or("");
    std::size_t width = 0;
    const auto [end, error] = std::from_chars(columns.data(), columns.data() + columns.size(), width);
    const bool isNumber = error == std::errc() && end == columns.data() + columns.size();
    return isNumber && width > 0 ? std::optional(width) : std::nullopt;
}

bool isChosen(When when, bool automatic) {
    return when == When::kAlways || (when == When::kAuto && automatic);
}

// The console of the kernel shows nothing where a link would be.
bool knowsLinks() { return processVariable("TERM") != "linux"; }

std::string number(double component) {
    const double level = std::isnan(component) ? 0 : std::clamp(component, 0.0, 1.0);
    return std::to_string(std::lround(level * 255));
}

// A URL inside an escape sequence may hold visible ASCII only.
std::string escapedUrl(std::u16string_view url) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char c : utf8FromText(url)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x20 && byte < 0x7F) {
            result.push_back(c);
        } else {
            result.append({'%', kDigits[byte >> 4], kDigits[byte & 0xF]});
        }
    }
    return result;
}

}  // namespace

TerminalStyle TerminalStyle::ofOutput(When colors, When links) {
    const bool isTerminal = isOutputTerminal();
    TerminalStyle style;
    style.colors = isChosen(colors, isTerminal && !processVariable("NO_COLOR"));
    style.links = isChosen(links, isTerminal && knowsLinks());
    style.asciiOnly = !isUtf8Locale();
    if (isatty(STDOUT_FILENO)) style.width = terminalWidth();
    return style;
}

std::string TerminalStyle::dressed(std::string_view text, std::string_view attribute) const {
    if (!colors || text.empty()) return std::string(text);
    return "\033[" + std::string(attribute) + "m" + std::string(text) + "\033[0m";
}

std::string TerminalStyle::colored(std::string_view text, const Color& color) const {
    return dressed(text, "38;2;" + number(color.red) + ";" + number(color.green) + ";" + number(color.blue));
}

std::string TerminalStyle::linked(std::string_view text, std::u16string_view url, std::string_view id) const {
    if (!links || text.empty()) return std::string(text);
    const std::string parameters = id.empty() ? "" : "id=" + std::string(id);
    return "\033]8;" + parameters + ";" + escapedUrl(url) + "\033\\" + std::string(text) + "\033]8;;\033\\";
}

bool isOutputTerminal() {
    return isatty(STDOUT_FILENO) && processVariable("TERM").value_or("dumb") != "dumb";
}

}  // namespace corvane
