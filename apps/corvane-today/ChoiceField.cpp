#include "apps/corvane-today/ChoiceField.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QWheelEvent>

#include "apps/corvane-today/CompanionStyle.h"

namespace corvane {

ChoiceField::ChoiceField(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    constexpr int kLetters = 12;
    setMinimumContentsLength(kLetters);
}

void ChoiceField::wheelEvent(QWheelEvent* event) { event->ignore(); }

// A style sheet takes the arrow away, and knows none in the palette's colours.
void ChoiceField::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    const int size = spacing(*this, 1);
    const QRect place(width() - 3 * size, (height() - size / 2) / 2, size, size / 2);
    const QRectF arrow = QStyle::visualRect(layoutDirection(), rect(), place);
    QPainterPath path(arrow.topLeft());
    path.lineTo(arrow.center().x(), arrow.bottom());
    path.lineTo(arrow.topRight());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(paletteOf(*this).quietText(), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
}

}  // namespace corvane
