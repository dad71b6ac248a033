// Texts from outside as a window shows them: plain, on one line where a row has one, nothing hidden in them.
#pragma once

#include <string_view>

#include <QString>

namespace corvane {

/// On one line: controls become blanks, characters that turn the writing direction become replacement
/// characters. Only the beginning of a very long text is taken.
QString shownLine(std::u16string_view text);

/// With its line breaks, for a tooltip: markup that Qt shows as the plain text it is. A long text is cut.
QString shownToolTip(std::u16string_view title, std::u16string_view notes);

/// For a place that guesses whether a text is markup: it reads the same and is taken for plain. A long text
/// is cut.
QString shownUnformatted(const QString& text);

}  // namespace corvane
