#include "apps/corvane-today/DesktopPresence.h"

#include <QActionGroup>
#include <QApplication>

#include "apps/corvane-today/Application.h"
#include "apps/corvane-today/Autostart.h"
#include "apps/corvane-today/DesktopAlerts.h"
#include "apps/corvane-today/QtText.h"
#include "apps/host/Sentence.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

// A session that starts everything at once shows its tray late.
constexpr std::chrono::seconds kTrayQuestionInterval{1};
constexpr int kMostTrayQuestions = 30;

}  // namespace

DesktopPresence::DesktopPresence(Application& application, ColorScheme& scheme)
    : application_(application), scheme_(scheme) {
    trayPatience_.setInterval(kTrayQuestionInterval);
    connect(&trayPatience_, &QTimer::timeout, this, [this] {
        if (trayWatch_.isThere()) return trayPatience_.stop();
        if (++trayQuestions_ < kMostTrayQuestions) return;
        trayPatience_.stop();
        showWindow();
    });
    WidgetWindow& window = application.window();
    connect(&window, &WidgetWindow::hideWanted, this, &DesktopPresence::hideWindow);
    connect(&window, &WidgetWindow::closeWanted, this, &DesktopPresence::closeWindow);
    connect(&window, &WidgetWindow::menuOpening, this, &DesktopPresence::fillMenu);
    connect(&trayWatch_, &TrayWatch::came, this, &DesktopPresence::makeTrayIcon);
    connect(&trayWatch_, &TrayWatch::went, this, &DesktopPresence::loseTrayIcon);
    connect(&application, &Application::refreshed, this, &DesktopPresence::showCount);
    connect(&window, &WidgetWindow::privacyChanged, this, &DesktopPresence::showCount);
}

bool DesktopPresence::start(const DesktopOptions& options) {
    if (!options.standsAlone()) {
        connectBus();
        if (!bus_.take() && handOverStart(options)) return false;
    }
    trayWatch_.start();
    showCount();
    scheme_.follow();
    return true;
}

void DesktopPresence::connectBus() {
    connect(&bus_, &DesktopBus::activationWanted, this, &DesktopPresence::showWindow);
    connect(&bus_, &DesktopBus::openWanted, &application_, &Application::answerUrl);
    connect(&bus_, &DesktopBus::addTaskWanted, &application_, &Application::addTask);
    connect(&bus_, &DesktopBus::todayWanted, &application_, &Application::showToday);
    connect(&bus_, &DesktopBus::privacyWanted, this, [this] { application_.window().setPrivate(true); });
    connect(&bus_, &DesktopBus::modeWanted, &application_.window(), &WidgetWindow::setMode);
}

// Tray

void DesktopPresence::makeTrayIcon() {
    tray_ = std::make_unique<TrayIcon>();
    connect(tray_.get(), &TrayIcon::toggleWanted, this, &DesktopPresence::toggleWindow);
    connect(tray_.get(), &TrayIcon::addWanted, &application_, &Application::addTask);
    connect(tray_.get(), &TrayIcon::todayWanted, &application_, &Application::showToday);
    connect(tray_.get(), &TrayIcon::menuOpening, this, &DesktopPresence::fillMenu);
    showCount();
}

void DesktopPresence::loseTrayIcon() {
    tray_.reset();
    if (application_.window().isHidden()) waitForTray();
}

void DesktopPresence::showCount() {
    WidgetHost& host = application_.host();
    const std::size_t due = host.controller().todayTasks().size();
    const std::size_t overdue = host.overdueCount();
    const QString sentence = qtText(application_.isPrivate() ? dueCountText(due, overdue)
                                                             : widgetSentence(host.snapshot(), overdue));
    application_.window().describe(sentence);
    if (tray_) tray_->showCount(due, sentence);
}

void DesktopPresence::waitForTray() {
    trayQuestions_ = 0;
    if (!trayWatch_.isThere()) trayPatience_.start();
}

// Window

void DesktopPresence::showWindow() {
    trayPatience_.stop();
    WidgetWindow& window = application_.window();
    window.show();
    if (window.isMinimized()) window.showNormal();
    window.raise();
    window.activateWindow();
}

void DesktopPresence::hideWindow() {
    trayWatch_.settle();
    if (trayWatch_.isThere()) return application_.window().hide();
    application_.window().showMinimized();
}

void DesktopPresence::closeWindow() {
    trayWatch_.settle();
    if (trayWatch_.isThere()) return application_.window().hide();
    application_.window().hide();
    application_.quitWhenUnseen();
}

void DesktopPresence::toggleWindow() {
    const WidgetWindow& window = application_.window();
    const bool isInFront = window.isVisible() && !window.isMinimized() && window.isActiveWindow();
    isInFront ? hideWindow() : showWindow();
}

// Menus

void DesktopPresence::fillMenu(QMenu* menu) {
    menu->addSeparator();
    addColorChoices(menu);
    if (DesktopAlerts* alerts = application_.alerts()) alerts->fillMenu(menu);
    addAutostart(menu);
    menu->addSeparator();
    // Without asking the windows: with a tray, one that is asked hides and stays.
    menu->addAction(translated("Quit"), qApp, [] { QApplication::exit(); });
}

void DesktopPresence::addColorChoices(QMenu* menu) {
    struct Entry {
        const char* text;
        ColorScheme::Choice choice;
    };
    constexpr Entry kEntries[] = {
        {textKey("As the desktop"), ColorScheme::Choice::kAuto },
        {textKey("Light"),          ColorScheme::Choice::kLight},
        {textKey("Dark"),           ColorScheme::Choice::kDark },
    };
    QMenu* colors = menu->addMenu(translated("Colours"));
    auto* group = new QActionGroup(colors);
    for (const Entry& entry : kEntries) {
        QAction* action = colors->addAction(translated(entry.text), this,
                                            [this, entry] { application_.chooseColors(entry.choice); });
        action->setCheckable(true);
        action->setChecked(scheme_.choice() == entry.choice);
        group->addAction(action);
    }
}

void DesktopPresence::addAutostart(QMenu* menu) {
    QAction* action = menu->addAction(translated("Start with the session"), this, [this](bool isOn) {
        if (const auto problem = setAutostarted(isOn)) {
            application_.window().showMessage(QString::fromStdString(*problem));
        }
    });
    action->setCheckable(true);
    action->setChecked(isAutostarted());
}

}  // namespace corvane
