#include "apps/corvane-today/Application.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include "apps/corvane-today/CompanionWindow.h"
#include "apps/corvane-today/DesktopAlerts.h"
#include "apps/corvane-today/HandOver.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/WidgetSizes.h"
#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

// A window that nobody can see is never painted; the tray icon must come all the same.
constexpr std::chrono::milliseconds kLongestWaitForFrame{1000};
constexpr TimeInterval kFirstMinute{60};
// What a window's frame and the desktop's bars take of a screen's height, in pixels.
constexpr double kScreenReserve = 60;

bool isPaletteDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

// The desktop's style may have said so already; else it is as it was the last time.
bool isDarkAtFirst(const WindowState& state) { return state.isDesktopDark || isPaletteDark(); }

Size fittingScreen(Size size, double pixelsPerPoint) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return size;
    const QSizeF available = screen->availableGeometry().size();
    const double height = (available.height() - kScreenReserve) / pixelsPerPoint - WindowHeader::kHeight;
    return {std::min(size.width, available.width() / pixelsPerPoint), std::min(size.height, height)};
}

WidgetHostOptions hostOptions(const DesktopOptions& options, const WindowState& state, double pixelsPerPoint,
                              Application& application) {
    WidgetHostOptions result = hostOptionsFor(options, state);
    result.expandedSize = fittingScreen(result.expandedSize, pixelsPerPoint);
    result.compactSize = fittingScreen(result.compactSize, pixelsPerPoint);
    result.openUrl = [&application](std::u16string_view url) { application.openUrl(qtText(url)); };
    return result;
}

bool isWayland() { return QGuiApplication::platformName().startsWith(QLatin1String("wayland")); }

QScreen* screenNamed(const QString& name) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found = std::ranges::find(screens, name, &QScreen::name);
    return found == screens.end() ? nullptr : *found;
}

}  // namespace

Application::Application(const DesktopOptions& options)
    : options_(options),
      state_(readWindowState()),
      scheme_(isDarkAtFirst(state_)),
      measuring_(WidgetFonts(QApplication::font())),
      host_(hostOptions(options, state_, measuring_.fonts().pixelsPerPoint(), *this), measuring_),
      follower_(host_),
      window_(host_, measuring_, actions_),
      events_(follower_.fileDescriptor(), QSocketNotifier::Read),
      presence_(*this, scheme_) {
    QApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setApplicationDisplayName(translated("Corvane Today"));
    scheme_.setChoice(state_.palette);
    connectParts();
    useColors();
    window_.setPrivate(options.isPrivate);
}

Application::~Application() = default;

void Application::connectParts() {
    connect(&events_, &QSocketNotifier::activated, this, [this] {
        if (follower_.takeEvents()) refresh();
    });
    connect(&actions_, &TaskActions::changed, this, &Application::refresh);
    connect(&actions_, &TaskActions::failed, &window_, &WidgetWindow::showMessage);
    connect(&window_, &WidgetWindow::refreshWanted, this, &Application::refresh);
    connect(&window_, &WidgetWindow::previewWanted, this, &Application::preview);
    connect(&window_, &WidgetWindow::arrangementChanged, this, &Application::keepArrangement);
    connect(&scheme_, &ColorScheme::changed, this, [this] {
        useColors();
        keepArrangement();
    });
    connect(&opener_, &UrlOpener::unanswered, this, &Application::answerUrl);
    // Windows are not asked: one that hides instead of closing would keep the program from ending.
    connect(&signals_, &TerminationSignals::received, qApp, [] { QApplication::exit(); });
    connect(qApp, &QApplication::aboutToQuit, this, [this] {
        if (companion_) companion_->taskPage().finishTyping();
    });
}

void Application::start() {
    refresh();
    placeWindow();
    if (options_.startsInBackground) {
        presence_.waitForTray();
        QTimer::singleShot(0, this, &Application::finishStart);
        return;
    }
    constexpr auto kOnceAndLater =
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);
    connect(&window_, &WidgetWindow::painted, this, &Application::finishStart, kOnceAndLater);
    window_.show();
    QTimer::singleShot(kLongestWaitForFrame, this, &Application::finishStart);
}

void Application::finishStart() {
    if (std::exchange(hasStarted_, true)) return;
    if (!presence_.start(options_)) return QApplication::exit();
    if (options_.environment.now.empty()) alerts_ = std::make_unique<DesktopAlerts>(*this, options_.isSilent);
    if (!options_.openUrl.empty()) answerUrl(QString::fromStdString(options_.openUrl));
}

// What shows

void Application::refresh() {
    if (isPreview_) return;
    follower_.refresh();
    window_.showRefresh();
    Q_EMIT refreshed();
}

// The follower goes on waiting for the real day's moments.
void Application::preview(bool isPreview) {
    if (isPreview == std::exchange(isPreview_, isPreview)) return;
    window_.setPreview(isPreview);
    if (!isPreview) return refresh();
    auto& clock = Environment::current().now;
    const Date moment = host_.controller().dueDates().tomorrow + kFirstMinute;
    const auto real = std::exchange(clock, [moment] { return moment; });
    host_.refresh();
    window_.showRefresh();
    clock = real;
}

void Application::chooseColors(ColorScheme::Choice choice) {
    scheme_.setChoice(choice);
    keepArrangement();
}

void Application::useColors() {
    const WidgetPalette palette = scheme_.isDark() ? WidgetPalette::dark() : WidgetPalette::light();
    QApplication::setPalette(palette.qtPalette());
    window_.setColors(palette);
}

// Where the window is

void Application::placeWindow() {
    if (isWayland() || !state_.place) return;
    const QScreen* screen = screenNamed(state_.screen);
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QPoint wanted = placeOnScreen(screen->name()).value_or(*state_.place);
    const QRect room = screen->availableGeometry();
    const QPoint most = room.bottomRight() - QPoint(window_.width(), window_.height());
    const QPoint place = room.topLeft() + wanted;
    window_.move(std::clamp(place.x(), room.left(), std::max(room.left(), most.x())),
                 std::clamp(place.y(), room.top(), std::max(room.top(), most.y())));
}

void Application::keepArrangement() {
    if (!hasStarted_) return;
    state_.mode = host_.widgetActiveDisplayMode();
    state_.maximumSize = host_.widgetMaximumSizeForDisplayMode(DisplayMode::kExpanded);
    state_.palette = scheme_.choice();
    state_.isDesktopDark = scheme_.isDesktopDark();
    if (window_.isVisible() && !isWayland() && window_.screen()) {
        state_.screen = window_.screen()->name();
        state_.place = window_.pos() - window_.screen()->availableGeometry().topLeft();
    }
    keepWindowState(state_);
}

void Application::quitWhenUnseen() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool isSeen = std::ranges::any_of(
        windows, [](const QWidget* widget) { return widget->isWindow() && widget->isVisible(); });
    isSeen ? QApplication::setQuitOnLastWindowClosed(true) : QApplication::quit();
}

// Hand-over

CompanionWindow& Application::companion() {
    if (companion_) return *companion_;
    companion_ = std::make_unique<CompanionWindow>(actions_);
    companion_->setPrivate(isPrivate());
    connect(this, &Application::refreshed, companion_.get(), &CompanionWindow::refresh);
    connect(&window_, &WidgetWindow::privacyChanged, companion_.get(), &CompanionWindow::setPrivate);
    connect(companion_.get(), &CompanionWindow::refreshWanted, this, &Application::refresh);
    return *companion_;
}

void Application::openUrl(const QString& url) { opener_.open(url); }

void Application::answerUrl(const QString& url) { answerHandOver(url, companion()); }

void Application::addTask() { companion().showAddTask(); }

void Application::showToday() { companion().showToday(); }

}  // namespace corvane
