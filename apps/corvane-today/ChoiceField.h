// A choice from a list that a turn of the wheel over the page leaves alone.
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace corvane {

class ChoiceField : public QComboBox {
    Q_OBJECT
  public:
    explicit ChoiceField(QWidget* parent) : QComboBox(parent) {
        setFocusPolicy(Qt::StrongFocus);
        setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        setMinimumContentsLength(12);
    }

  protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

}  // namespace corvane
