// The desktop program while it runs: the widget's host and its windows, kept up to date.
#pragma once

#include <memory>

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include "apps/corvane-today/ColorScheme.h"
#include "apps/corvane-today/DesktopOptions.h"
#include "apps/corvane-today/DesktopPresence.h"
#include "apps/corvane-today/MainQueueBridge.h"
#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/TerminationSignals.h"
#include "apps/corvane-today/UrlOpener.h"
#include "apps/corvane-today/WidgetWindow.h"
#include "apps/corvane-today/WindowSettings.h"
#include "apps/host/Follower.h"
#include "apps/host/WidgetHost.h"

namespace corvane {

class CompanionWindow;
class DesktopAlerts;

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
    /// Made when it is first asked for.
    CompanionWindow& companion();
    /// None before the first frame, and with a clock that stands still.
    DesktopAlerts* alerts() { return alerts_.get(); }
    bool isPrivate() const { return window_.isPrivate(); }
    /// Whether the program has taken its place on the desktop, after the first frame.
    bool hasStarted() const { return hasStarted_; }

    /// What the user wants whatever the desktop says.
    void chooseColors(ColorScheme::Choice choice);
    /// Ends the program when no window of it is open any more.
    void quitWhenUnseen();

  public Q_SLOTS:
    /// Where a tap leads: to the program that answers the URL's scheme, else to our own windows.
    void openUrl(const QString& url);
    /// Shows what a URL names in our own windows. The URL may come from outside.
    void answerUrl(const QString& url);
    void addTask();
    void showToday();
    void refresh();

  Q_SIGNALS:
    /// The widget shows the store as it is now.
    void refreshed();

  private:
    void connectParts();
    void useColors();
    void placeWindow();
    void keepArrangement();
    /// Shows what the widget will say at tomorrow's first minute.
    void preview(bool isPreview);
    /// What is not needed for the first frame.
    void finishStart();

    DesktopOptions options_;
    WindowState state_;
    ColorScheme scheme_;
    MainQueueBridge mainQueue_;
    QtTextMeasuring measuring_;
    WidgetHost host_;
    Follower follower_;
    TaskActions actions_;
    WidgetWindow window_;
    QSocketNotifier events_;
    UrlOpener opener_;
    DesktopPresence presence_;
    TerminationSignals signals_;
    std::unique_ptr<CompanionWindow> companion_;
    std::unique_ptr<DesktopAlerts> alerts_;
    bool isPreview_ = false;
    bool hasStarted_ = false;
};

}  // namespace corvane
