#include "apps/corvane-today/WidgetWindow.h"

#include "apps/corvane-today/QtText.h"

namespace corvane {

WidgetWindow::WidgetWindow(WidgetHost& host, QtTextMeasuring& measuring)
    : host_(host), measuring_(measuring) {
    setWindowTitle(translated("Corvane Today"));
    resize(359, 110);
}

void WidgetWindow::showRefresh() {
    const Size size = host_.controller().preferredContentSize();
    const double scale = measuring_.fonts().pixelsPerPoint();
    resize(qRound(size.width * scale), qRound(size.height * scale));
    update();
}

void WidgetWindow::setPrivate(bool isPrivate) {
    if (isPrivate_ == isPrivate) return;
    isPrivate_ = isPrivate;
    showRefresh();
    Q_EMIT privacyChanged(isPrivate);
}

}  // namespace corvane
