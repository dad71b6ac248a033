#include "apps/corvane-today/Application.h"

#include <QApplication>
#include <QTimer>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/WidgetSizes.h"

namespace corvane {
namespace {

WidgetHostOptions hostOptions(const DesktopOptions& options, Application& application) {
    WidgetHostOptions result = hostOptionsFor(options);
    result.openUrl = [&application](std::u16string_view url) { application.openUrl(qtText(url)); };
    return result;
}

}  // namespace

Application::Application(const DesktopOptions& options)
    : options_(options),
      measuring_(WidgetFonts(QApplication::font())),
      host_(hostOptions(options, *this), measuring_),
      follower_(host_),
      window_(host_, measuring_, actions_),
      events_(follower_.fileDescriptor(), QSocketNotifier::Read) {
    window_.setPrivate(options.isPrivate);
    connect(&events_, &QSocketNotifier::activated, this, [this] {
        if (follower_.takeEvents()) refresh();
    });
    connect(&actions_, &TaskActions::changed, this, &Application::refresh);
    connect(&window_, &WidgetWindow::refreshWanted, this, &Application::refresh);
}

Application::~Application() = default;

void Application::start() {
    refresh();
    window_.show();
    QTimer::singleShot(0, this, &Application::finishStart);
}

void Application::finishStart() {
    if (!options_.openUrl.empty()) answerUrl(QString::fromStdString(options_.openUrl));
}

void Application::refresh() {
    follower_.refresh();
    window_.showRefresh();
    Q_EMIT refreshed();
}

void Application::openUrl(const QString& url) { answerUrl(url); }

void Application::answerUrl(const QString&) { window_.show(); }

}  // namespace corvane
