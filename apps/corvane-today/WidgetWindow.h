// The widget's window: draws what the controller and its cells say.
#pragma once

#include <QWidget>

#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/host/WidgetHost.h"

namespace corvane {

class WidgetWindow : public QWidget {
    Q_OBJECT
  public:
    /// @param host, measuring  outlive the window
    WidgetWindow(WidgetHost& host, QtTextMeasuring& measuring);

    /// Takes over what the host's last refresh shows.
    void showRefresh();

    /// Private: titles and notes of tasks are hidden.
    bool isPrivate() const { return isPrivate_; }
    void setPrivate(bool isPrivate);

  Q_SIGNALS:
    void refreshWanted();
    void privacyChanged(bool isPrivate);
    /// A reminder of the task, which itself stays as it is.
    void reminderWanted(const QString& taskid, int minutes);

  private:
    WidgetHost& host_;
    QtTextMeasuring& measuring_;
    bool isPrivate_ = false;
};

}  // namespace corvane
