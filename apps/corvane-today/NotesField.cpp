#include "apps/corvane-today/NotesField.h"

#include <utility>

#include <QTextDocument>

namespace corvane {

NotesField::NotesField(Taker taker, QWidget* parent) : QPlainTextEdit(parent), taker_(std::move(taker)) {
    setTabChangesFocus(true);
}

// The document's plain text would turn no-break spaces into blanks.
QString NotesField::text() const {
    return document()->toRawText().replace(QChar::ParagraphSeparator, QChar::LineFeed);
}

void NotesField::showStored(const QString& text) {
    if (isBeingTyped()) return;
    if (text != stored_ || text != this->text()) setPlainText(text);
    stored_ = text;
    document()->setModified(false);
}

bool NotesField::isBeingTyped() const { return document()->isModified(); }

void NotesField::takeTyped() {
    if (!isBeingTyped()) return;
    document()->setModified(false);
    if (text() == stored_) return;
    if (!taker_(text())) document()->setModified(true);
}

void NotesField::forgetTyping() {
    document()->setModified(false);
    showStored(stored_);
}

QSize NotesField::sizeHint() const {
    constexpr int kLines = 4;
    constexpr int kFrame = 16;
    return {fontMetrics().averageCharWidth() * 30, fontMetrics().lineSpacing() * kLines + kFrame};
}

void NotesField::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) takeTyped();
}

}  // namespace corvane
