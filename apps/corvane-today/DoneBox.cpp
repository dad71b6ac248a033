#include "apps/corvane-today/DoneBox.h"

#include <QPainter>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/TemplateImages.h"

namespace corvane {

DoneBox::DoneBox(QWidget* parent) : QCheckBox(parent) { setAccessibleName(translated("Done")); }

QSize DoneBox::sizeHint() const {
    const int size = spacing(*this, 4.4);
    return {size, size};
}

void DoneBox::paintEvent(QPaintEvent*) {
    const WidgetPalette palette = paletteOf(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = width() * 0.16;
    const QRectF circle = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    drawTemplateImage(painter, circle, isChecked() ? "Task-VChecked" : "Task-VUnchecked",
                      isChecked() ? palette.accent() : palette.quietText());
    if (!hasFocus()) return;
    painter.setPen(QPen(palette.accent(), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
}

}  // namespace corvane
