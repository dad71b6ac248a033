// What stands in the rows' place when nothing is due; a tap leads to today's list.
#pragma once

#include <QAbstractButton>

#include "apps/corvane-today/WidgetLook.h"
#include "platform/views/Label.h"

namespace corvane {

class EmptyView : public QAbstractButton {
    Q_OBJECT
  public:
    /// @param look  outlives the view
    EmptyView(const WidgetLook& look, QWidget* parent);

    void show(const Label& wellDone, const Label& noMoreTasks);

  protected:
    void paintEvent(QPaintEvent* event) override;
    QSize sizeHint() const override { return {200, 73}; }

  private:
    void drawLine(QPainter& painter, const Label& label, const Font& font, const QRectF& place);

    const WidgetLook& look_;
    Label wellDone_;
    Label noMoreTasks_;
};

}  // namespace corvane
