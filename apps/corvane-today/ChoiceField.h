// A choice from a list that a turn of the wheel over the page leaves alone.
#pragma once

#include <QComboBox>

namespace corvane {

class ChoiceField : public QComboBox {
    Q_OBJECT
  public:
    explicit ChoiceField(QWidget* parent);

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane
