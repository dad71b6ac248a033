#include "apps/corvane-today/ShownText.h"

#include "apps/corvane-today/QtText.h"
#include "apps/host/WritingDirection.h"

namespace corvane {
namespace {

// More than any window is wide; laying out a text takes time by its length.
constexpr std::size_t kLongestLine = 1500;
constexpr std::size_t kLongestToolTip = 3000;
constexpr qsizetype kLongestUnformatted = 500;
constexpr QChar kReplacement(0xFFFD);
constexpr QChar kEllipsis(0x2026);
constexpr QChar kWordJoiner(0x2060);

QString harmless(std::u16string_view text) {
    QString shown = qtText(text);
    for (QChar& c : shown) {
        if (turnsWritingDirection(c.unicode())) c = kReplacement;
        const bool isBreak = c == QChar(u'\n') || c == QChar(u'\t');
        if (!isBreak && c.category() == QChar::Other_Control) c = QChar(u' ');
    }
    return shown;
}

QString beginning(std::u16string_view text, std::size_t length) {
    if (text.size() <= length) return harmless(text);
    return harmless(text.substr(0, length)) + kEllipsis;
}

}  // namespace

QString shownLine(std::u16string_view text) {
    QString line = beginning(text, kLongestLine);
    for (QChar& c : line) {
        if (c == QChar(u'\n') || c == QChar(u'\t') || c.category() == QChar::Separator_Line ||
            c.category() == QChar::Separator_Paragraph) {
            c = QChar(u' ');
        }
    }
    return line;
}

QString shownToolTip(std::u16string_view title, std::u16string_view notes) {
    const QString head = beginning(title, kLongestToolTip).toHtmlEscaped();
    QString text = QStringLiteral("<div style=\"white-space: pre-wrap\"><b>") + head + QStringLiteral("</b>");
    if (!notes.empty()) {
        text += QStringLiteral("\n") + beginning(notes, kLongestToolTip).toHtmlEscaped();
    }
    return text + QStringLiteral("</div>");
}

QString shownUnformatted(const QString& text) {
    QString shown = text;
    if (text.size() > kLongestUnformatted) shown = text.left(kLongestUnformatted) + kEllipsis;
    // It takes no room, and what begins with it is no name of a tag or an entity.
    for (const QChar mark : {QChar(u'<'), QChar(u'&')}) shown.replace(mark, QString(mark) + kWordJoiner);
    return shown;
}

}  // namespace corvane
