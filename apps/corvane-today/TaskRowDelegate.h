// Draws a task's row in a list: strip of the list's colour, box, priority, title; due text and notes below.
// Plain text only.
#pragma once

#include <QStyledItemDelegate>

#include "apps/corvane-today/TaskListModel.h"
#include "apps/corvane-today/WidgetPalette.h"

namespace corvane {

class TaskRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Where a row's box is, which is ticked by a click.
    static QRect boxOf(const QRect& row, const QFont& font, Qt::LayoutDirection direction);

  Q_SIGNALS:
    void boxClicked(const QModelIndex& index);

  protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
};

}  // namespace corvane
