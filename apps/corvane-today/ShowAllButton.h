// The button for the tasks that have no row.
#pragma once

#include <QAbstractButton>

#include "apps/corvane-today/WidgetLook.h"
#include "platform/views/Button.h"

namespace corvane {

class ShowAllButton : public QAbstractButton {
    Q_OBJECT
  public:
    /// @param look  outlives the button
    ShowAllButton(const WidgetLook& look, QWidget* parent);

    void show(const Button& button);

  protected:
    void paintEvent(QPaintEvent* event) override;
    QSize sizeHint() const override { return {200, 34}; }

  private:
    const WidgetLook& look_;
    double cornerRadius_ = 0;  ///< in points
};

}  // namespace corvane
