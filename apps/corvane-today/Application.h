// The desktop program while it runs: the widget's host and its window, kept up to date.
#pragma once

#include <memory>

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include "apps/corvane-today/DesktopOptions.h"
#include "apps/corvane-today/MainQueueBridge.h"
#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/WidgetWindow.h"
#include "apps/host/Follower.h"
#include "apps/host/WidgetHost.h"

namespace corvane {

class Application : public QObject {
    Q_OBJECT
  public:
    /// Needs a QApplication.
    explicit Application(const DesktopOptions& options);
    ~Application() override;

    /// Refreshes and shows the window; the rest of the desktop comes after the first frame.
    void start();

    WidgetHost& host() { return host_; }
    TaskActions& actions() { return actions_; }
    WidgetWindow& window() { return window_; }
    bool isPrivate() const { return window_.isPrivate(); }

  public Q_SLOTS:
    /// Where a tap leads: to the program that answers the URL's scheme, else to our own windows.
    void openUrl(const QString& url);
    /// Shows what a URL names in our own windows. The URL may come from outside.
    void answerUrl(const QString& url);
    void refresh();

  Q_SIGNALS:
    /// The widget shows the store as it is now.
    void refreshed();

  private:
    /// What is not needed for the first frame.
    void finishStart();

    DesktopOptions options_;
    MainQueueBridge mainQueue_;
    QtTextMeasuring measuring_;
    WidgetHost host_;
    Follower follower_;
    TaskActions actions_;
    WidgetWindow window_;
    QSocketNotifier events_;
};

}  // namespace corvane
