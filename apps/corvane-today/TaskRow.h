// One row of the window: a widget of its own, so that keyboard, pointer and screen readers find it.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "apps/corvane-today/RowContent.h"
#include "apps/corvane-today/RowPainting.h"
#include "apps/corvane-today/WidgetLook.h"

namespace corvane {

/// A row's place in the list, for screen readers.
struct RowPosition {
    int number = 1;
    int count = 1;
};

class TaskRow : public QWidget {
    Q_OBJECT
  public:
    /// @param look  outlives the row
    TaskRow(const WidgetLook& look, QWidget* parent);

    const RowContent& content() const { return content_; }
    const std::string& taskid() const { return content_.taskid; }
    RowAct act() const { return act_; }
    /// What a screen reader says beside the row's name: "2 of 5".
    QString positionInWords() const;

    void present(const RowContent& content, RowAct act, RowPosition position);
    /// Draws itself in the look as it is now.
    void updateLook();

  Q_SIGNALS:
    void openWanted();
    void completionWanted();
    void undoWanted();
    void moveWanted();
    void menuWanted(const QPoint& globalPlace);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    void showToolTip(const QPoint& globalPlace);
    void placeUndoButton();

    const WidgetLook& look_;
    RowContent content_;
    RowAct act_ = RowAct::kNone;
    RowPosition position_;
    QToolButton* undoButton_;
};

/// Makes rows and their list known to screen readers, before there are any; once is enough.
void installRowAccessibility();

/// What holds the rows: a list to a screen reader.
class TaskList : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;
};

}  // namespace corvane
