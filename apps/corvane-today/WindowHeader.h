// The line above the widget: the day, and the window's own buttons.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "apps/corvane-today/WidgetLook.h"
#include "platform/views/Button.h"
#include "platform/views/ExtensionContext.h"

namespace corvane {

class WindowHeader : public QWidget {
    Q_OBJECT
  public:
    /// In points.
    static constexpr double kHeight = 46;

    /// @param look  outlives the header
    WindowHeader(const WidgetLook& look, QWidget* parent);

    /// @param date         in the user's language
    /// @param addTask      as the controller has it
    /// @param canExpand    whether there is another display mode to go to
    void show(const QString& date, const Button& addTask, DisplayMode mode, bool canExpand);
    void updateLook();
    /// Shown in place of the date; empty: the date again.
    void setNotice(const QString& notice);

  Q_SIGNALS:
    void addWanted();
    void modeWanted();
    void menuWanted(const QPoint& globalPlace);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QToolButton* addButton(const char* text);
    void updateIcons();
    void placeButtons();

    const WidgetLook& look_;
    QString date_;
    QString notice_;
    Button addTask_;
    DisplayMode mode_ = DisplayMode::kExpanded;
    QToolButton* menuButton_;
    QToolButton* modeButton_;
    QToolButton* addButton_;
};

}  // namespace corvane
