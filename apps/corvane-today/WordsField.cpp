#include "apps/corvane-today/WordsField.h"

#include <limits>
#include <utility>

#include <QKeyEvent>
#include <QVBoxLayout>

#include "apps/corvane-today/QtText.h"

namespace corvane {

WordsField::WordsField(Reader reader, Taker taker, QWidget* parent)
    : QWidget(parent), reader_(std::move(reader)), taker_(std::move(taker)) {
    line_ = new QLineEdit(this);
    // A stored text is longer than people type; none of it may be lost.
    line_->setMaxLength(std::numeric_limits<int>::max());
    line_->installEventFilter(this);
    message_ = new MessageLine(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(line_);
    layout->addWidget(message_);
    setFocusProxy(line_);
    connect(line_, &QLineEdit::textEdited, this, &WordsField::showMeaning);
    connect(line_, &QLineEdit::editingFinished, this, &WordsField::takeTyped);
}

void WordsField::showStored(const QString& text, const QString& hint) {
    const bool hasChanged = text != stored_;
    stored_ = text;
    storedHint_ = hint;
    if (!isBeingTyped()) {
        giveUpTyping();
    } else if (hasChanged) {
        message_->showHint(translated("Changed elsewhere meanwhile. Escape shows what is stored."));
    }
}

bool WordsField::takeTyped() {
    if (isBeingTyped() && text() == stored_) giveUpTyping();
    if (!isBeingTyped()) return true;
    if (!check()) return false;
    // Taking the words may show the stored text again, which must not count as typed any more.
    line_->setModified(false);
    if (taker_(text())) return true;
    line_->setModified(true);
    return false;
}

bool WordsField::check() {
    const WordsReading reading = reader_(text());
    if (!reading.isUnderstood) message_->showProblem(reading.message);
    return reading.isUnderstood;
}

void WordsField::giveUpTyping() {
    if (line_->text() != stored_) {
        line_->setText(stored_);
        line_->setCursorPosition(0);
    }
    line_->setModified(false);
    message_->showHint(storedHint_);
}

void WordsField::showMeaning() {
    const WordsReading reading = reader_(text());
    message_->showHint(reading.isUnderstood ? reading.message : QString());
}

bool WordsField::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched != line_ || !isKey || !isBeingTyped() ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) {
        return QWidget::eventFilter(watched, event);
    }
    event->accept();
    if (event->type() == QEvent::KeyPress) giveUpTyping();
    return true;
}

}  // namespace corvane
