#include "apps/corvane-today/DesktopAlerts.h"

#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/WindowSettings.h"
#include "text/UrlEncoding.h"

namespace corvane {

DesktopAlerts::DesktopAlerts(Application& application, bool isSilent)
    : application_(application),
      notifications_(QDBusConnection::sessionBus()),
      notifier_(application.actions(), notifications_) {
    notifier_.setEnabled(!isSilent && areAlertsChosen());
    notifier_.setPrivate(application.isPrivate());
    // After the rows have been painted.
    connect(&application, &Application::refreshed, &notifier_, &AlertNotifier::plan, Qt::QueuedConnection);
    connect(&notifier_, &AlertNotifier::openWanted, this, &DesktopAlerts::open);
    connectWindow();
    notifier_.plan();
}

void DesktopAlerts::connectWindow() {
    WidgetWindow& window = application_.window();
    window.setReminderText([this](const std::string& taskid) { return notifier_.reminderText(taskid); });
    connect(&window, &WidgetWindow::privacyChanged, &notifier_, &AlertNotifier::setPrivate);
    connect(&window, &WidgetWindow::reminderWanted, &notifier_, &AlertNotifier::remindLater);
    connect(&notifier_, &AlertNotifier::remindersChanged, &window, &WidgetWindow::showRefresh);
    connect(&notifier_, &AlertNotifier::failed, &window, &WidgetWindow::showMessage);
}

void DesktopAlerts::fillMenu(QMenu* menu) {
    QAction* alerts = menu->addAction(translated("Alerts"));
    alerts->setCheckable(true);
    alerts->setChecked(notifier_.isEnabled());
    connect(alerts, &QAction::toggled, this, &DesktopAlerts::choose);
}

void DesktopAlerts::choose(bool isEnabled) {
    chooseAlerts(isEnabled);
    notifier_.setEnabled(isEnabled);
}

void DesktopAlerts::open(const QString& taskid) {
    const std::u16string today = application_.host().controller().todayUrl();
    if (taskid.isEmpty()) return application_.openUrl(qtText(today));
    const std::u16string encoded = stringByURLEncodingStringParameter(coreText(taskid));
    application_.openUrl(qtText(today + u"?taskid=" + encoded));
}

}  // namespace corvane
