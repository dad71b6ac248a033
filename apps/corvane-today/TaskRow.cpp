#include "apps/corvane-today/TaskRow.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {

TaskRow::TaskRow(const WidgetLook& look, QWidget* parent)
    : QWidget(parent), look_(look), undoButton_(new QToolButton(this)) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    undoButton_->setText(translated("Undo"));
    undoButton_->setAutoRaise(true);
    undoButton_->setCursor(Qt::PointingHandCursor);
    undoButton_->hide();
    connect(undoButton_, &QToolButton::clicked, this, &TaskRow::undoWanted);
    updateLook();
}

QString TaskRow::positionInWords() const {
    const auto number = [](int value) { return textFromUtf8(std::to_string(value)); };
    return qtText(stringWithFormat(localizedString("Row %1$@ of %2$@"),
                                   {number(position_.number), number(position_.count)}));
}

void TaskRow::present(const RowContent& content, RowAct act, RowPosition position) {
    content_ = content;
    act_ = act;
    position_ = position;
    QString name = look_.isPrivate ? translated("Hidden task") : content.spoken;
    if (!content.reminder.isEmpty()) name += translated(", ") + content.reminder;
    if (act == RowAct::kCompleted) name = translated("Done: %@", name);
    if (act == RowAct::kMovedToTomorrow) name = translated("Moved to tomorrow: %@", name);
    setAccessibleName(name);
    setAccessibleDescription(positionInWords());
    undoButton_->setVisible(act != RowAct::kNone);
    placeUndoButton();
    update();
}

void TaskRow::updateLook() {
    undoButton_->setFont(look_.fonts().qtFont(look_.fonts().details()));
    QPalette palette = undoButton_->palette();
    palette.setColor(QPalette::ButtonText, look_.palette.accent());
    undoButton_->setPalette(palette);
    placeUndoButton();
    update();
}

void TaskRow::placeUndoButton() {
    const QSize size = undoButton_->sizeHint();
    const int y = (height() - size.height()) / 2;
    const int x = layoutDirection() == Qt::RightToLeft ? 0 : width() - size.width();
    undoButton_->setGeometry(QRect(QPoint(x, y), size));
}

bool TaskRow::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    showToolTip(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}

void TaskRow::showToolTip(const QPoint& globalPlace) {
    if (look_.isPrivate) return;
    std::u16string rest = content_.notes;
    if (!content_.reminder.isEmpty())
        rest = coreText(content_.reminder) + (rest.empty() ? u"" : u"\n") + rest;
    QToolTip::showText(globalPlace, shownToolTip(content_.title, rest), this);
}

void TaskRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    RowState state;
    state.act = act_;
    state.isHovered = underMouse();
    state.hasFocus = hasFocus();
    if (act_ != RowAct::kNone) state.rightInset = undoButton_->width();
    drawRow(painter, *this, content_, state, look_);
}

void TaskRow::resizeEvent(QResizeEvent*) { placeUndoButton(); }

// A press is taken, so that the release arrives here.
void TaskRow::mousePressEvent(QMouseEvent* event) { event->setAccepted(event->button() == Qt::LeftButton); }

void TaskRow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) return;
    if (act_ == RowAct::kNone) Q_EMIT openWanted();
}

void TaskRow::contextMenuEvent(QContextMenuEvent* event) {
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    Q_EMIT menuWanted(isByKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void TaskRow::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    const bool isByKey = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                         event->reason() == Qt::OtherFocusReason;
    if (isByKey && window()->isActiveWindow() && isRowCut(content_, look_)) {
        showToolTip(mapToGlobal(rect().bottomLeft()));
    }
}

}  // namespace corvane
