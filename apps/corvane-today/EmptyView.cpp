#include "apps/corvane-today/EmptyView.h"

#include <QPainter>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/RowPainting.h"
#include "apps/corvane-today/ShownText.h"

namespace corvane {

EmptyView::EmptyView(const WidgetLook& look, QWidget* parent) : QAbstractButton(parent), look_(look) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void EmptyView::show(const Label& wellDone, const Label& noMoreTasks) {
    wellDone_ = wellDone;
    noMoreTasks_ = noMoreTasks;
    setAccessibleName(shownLine(wellDone.text.value_or(std::u16string())) + QChar(u' ') +
                      shownLine(noMoreTasks.text.value_or(std::u16string())));
    QWidget::show();
    update();
}

void EmptyView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(look_.palette.hoverGround());
        painter.drawRoundedRect(rect(), look_.pixels(6), look_.pixels(6));
    }
    if (hasFocus()) drawFocusFrame(painter, rect(), look_);
    const Font title = look_.fonts().heading();
    const Font details = look_.fonts().details();
    const double titleHeight = look_.pixels(look_.measuring.sizeOfText(u"X", title).height);
    const double detailsHeight = look_.pixels(look_.measuring.sizeOfText(u"X", details).height);
    const double top = (height() - titleHeight - detailsHeight) / 2;
    drawLine(painter, wellDone_, title, QRectF(0, top, width(), titleHeight));
    drawLine(painter, noMoreTasks_, details, QRectF(0, top + titleHeight, width(), detailsHeight));
}

void EmptyView::drawLine(QPainter& painter, const Label& label, const Font& font, const QRectF& place) {
    painter.setFont(look_.fonts().qtFont(font));
    painter.setPen(look_.palette.readable(label.textColor, look_.palette.quietText()));
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine,
                     shownLine(label.text.value_or(std::u16string())));
}

}  // namespace corvane
