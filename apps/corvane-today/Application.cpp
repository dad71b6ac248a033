#include "apps/corvane-today/Application.h"

#include <QApplication>
#include <QTimer>

#include "apps/corvane-today/QtText.h"

namespace corvane {
namespace {

WidgetHostOptions hostOptions(const DesktopOptions& options, Application& application) {
    WidgetHostOptions result;
    result.displayMode = options.mode.value_or(result.displayMode);
    result.compactSize.width = options.width.value_or(result.compactSize.width);
    result.expandedSize.width = options.width.value_or(result.expandedSize.width);
    result.expandedSize.height = options.height.value_or(result.expandedSize.height);
    result.openUrl = [&application](std::u16string_view url) { application.openUrl(qtText(url)); };
    return result;
}

}  // namespace

Application::Application(const DesktopOptions& options)
    : options_(options),
      measuring_(WidgetFonts(QApplication::font())),
      host_(hostOptions(options, *this), measuring_),
      follower_(host_),
      window_(host_, measuring_),
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
