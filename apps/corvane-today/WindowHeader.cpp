#include "apps/corvane-today/WindowHeader.h"

#include <QFontMetricsF>
#include <QPainter>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/TemplateImages.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

constexpr double kMargin = 14;
constexpr double kGap = 8;
constexpr double kButtonSize = 30;
constexpr double kIconSize = 18;

}  // namespace

WindowHeader::WindowHeader(const WidgetLook& look, QWidget* parent)
    : QWidget(parent),
      look_(look),
      menuButton_(addButton(textKey("Menu"))),
      modeButton_(addButton(textKey("Show less"))),
      addButton_(addButton(textKey("Add Task"))) {
    connect(addButton_, &QToolButton::clicked, this, &WindowHeader::addWanted);
    connect(modeButton_, &QToolButton::clicked, this, &WindowHeader::modeWanted);
    connect(menuButton_, &QToolButton::clicked, this,
            [this] { Q_EMIT menuWanted(menuButton_->mapToGlobal(menuButton_->rect().bottomLeft())); });
}

QToolButton* WindowHeader::addButton(const char* text) {
    auto* button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(translated(text));
    button->setAccessibleName(translated(text));
    return button;
}

void WindowHeader::show(const QString& date, const Button& addTask, DisplayMode mode, bool canExpand) {
    date_ = date;
    addTask_ = addTask;
    mode_ = mode;
    const QString change = mode == DisplayMode::kExpanded ? translated("Show less") : translated("Show more");
    modeButton_->setToolTip(change);
    modeButton_->setAccessibleName(change);
    modeButton_->setVisible(canExpand);
    updateIcons();
    placeButtons();
    update();
}

void WindowHeader::setNotice(const QString& notice) {
    notice_ = notice;
    update();
}

void WindowHeader::updateLook() {
    updateIcons();
    placeButtons();
    update();
}

void WindowHeader::updateIcons() {
    const QColor quiet = look_.palette.quietText();
    const bool isExpanded = mode_ == DisplayMode::kExpanded;
    const int size = look_.wholePixels(kIconSize);
    menuButton_->setIcon(templateIcon("Window-Menu", quiet));
    modeButton_->setIcon(templateIcon(isExpanded ? "Window-Collapse" : "Window-Expand", quiet));
    if (addTask_.image) {
        const QColor tint = look_.palette.readable(addTask_.tintColor, look_.palette.accent());
        addButton_->setIcon(templateIcon(addTask_.image->name, tint));
    }
    for (QToolButton* button : {menuButton_, modeButton_}) button->setIconSize({size, size});
    const int addSize = look_.wholePixels(addTask_.image ? addTask_.image->size.width : kIconSize);
    addButton_->setIconSize({addSize, addSize});
}

void WindowHeader::placeButtons() {
    const int size = look_.wholePixels(kButtonSize);
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    int end = width() - look_.wholePixels(kGap);
    for (QToolButton* button : {addButton_, modeButton_, menuButton_}) {
        if (button->isHidden()) continue;
        end -= size;
        button->setGeometry(isRightToLeft ? width() - end - size : end, (height() - size) / 2, size, size);
    }
}

void WindowHeader::resizeEvent(QResizeEvent*) { placeButtons(); }

void WindowHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QFont heading = look_.fonts().qtFont(look_.fonts().heading());
    const QFont small = look_.fonts().qtFont(look_.fonts().details());
    const QString title = translated("Today");
    const QString beside = notice_.isEmpty() ? date_ : notice_;
    const double titleWidth = QFontMetricsF(heading).horizontalAdvance(title);
    const double baseline = (height() + QFontMetricsF(heading).capHeight()) / 2;
    const double smallWidth = QFontMetricsF(small).horizontalAdvance(beside);
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    const double margin = look_.pixels(kMargin);
    const double next = margin + titleWidth + look_.pixels(kGap);
    painter.setFont(heading);
    painter.setPen(look_.palette.text());
    painter.drawText(QPointF(isRightToLeft ? width() - margin - titleWidth : margin, baseline), title);
    painter.setFont(small);
    painter.setPen(notice_.isEmpty() ? look_.palette.quietText() : look_.palette.accent());
    painter.drawText(QPointF(isRightToLeft ? width() - next - smallWidth : next, baseline), beside);
}

}  // namespace corvane
