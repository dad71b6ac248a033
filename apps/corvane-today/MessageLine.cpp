#include "apps/corvane-today/MessageLine.h"

#include <QAccessible>
#include <QEvent>

#include "apps/corvane-today/CompanionStyle.h"

namespace corvane {

QLabel* plainLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

MessageLine::MessageLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setFont(detailsFont(font()));
    clearMessage();
}

void MessageLine::showHint(const QString& text) { showMessage(text, false); }

void MessageLine::showProblem(const QString& text) {
    const bool isSaid = text.isEmpty() || (isProblem_ && text == this->text());
    showMessage(text, true);
    if (isSaid) return;
    QAccessibleEvent announcement(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

void MessageLine::showMessage(const QString& text, bool isProblem) {
    isProblem_ = isProblem;
    setText(text);
    setVisible(!text.isEmpty());
    takeColor();
}

void MessageLine::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) takeColor();
}

// A palette that is set again comes back as a change of it.
void MessageLine::takeColor() {
    const WidgetPalette colors = paletteOf(*this);
    const QColor color = isProblem_ ? problemColor(colors) : colors.quietText();
    if (palette().color(QPalette::WindowText) == color) return;
    QPalette changed = palette();
    changed.setColor(QPalette::WindowText, color);
    setPalette(changed);
}

}  // namespace corvane
