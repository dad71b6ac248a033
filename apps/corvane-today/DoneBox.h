// The box of a task, drawn as in a row: a circle, ticked when the task is done.
#pragma once

#include <QCheckBox>

namespace corvane {

class DoneBox : public QCheckBox {
    Q_OBJECT
  public:
    explicit DoneBox(QWidget* parent);

    QSize sizeHint() const override;

  protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane
