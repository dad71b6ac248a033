#include "apps/corvane-today/ShowAllButton.h"

#include <QPainter>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/RowPainting.h"

namespace corvane {

ShowAllButton::ShowAllButton(const WidgetLook& look, QWidget* parent) : QAbstractButton(parent), look_(look) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void ShowAllButton::show(const Button& button) {
    cornerRadius_ = button.cornerRadius;
    setAccessibleName(qtText(button.title.value_or(std::u16string())));
    QWidget::show();
    update();
}

void ShowAllButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(underMouse() ? look_.palette.hoverGround() : look_.palette.buttonGround());
    painter.drawRoundedRect(rect(), look_.pixels(cornerRadius_), look_.pixels(cornerRadius_));
    if (hasFocus()) drawFocusFrame(painter, rect(), look_);
    painter.setFont(look_.fonts().qtFont(look_.fonts().details()));
    painter.setPen(look_.palette.accent());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, accessibleName());
}

}  // namespace corvane
