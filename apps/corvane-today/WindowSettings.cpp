#include "apps/corvane-today/WindowSettings.h"

#include <algorithm>
#include <array>

#include <fcntl.h>

#include <QSettings>

#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/UserDirectories.h"

namespace corvane {
namespace {

constexpr std::array<const char*, 3> kPaletteWords = {"auto", "light", "dark"};
constexpr Size kSmallest{200, 120};
constexpr Size kLargest{2000, 10'000};

std::filesystem::path settingsDirectory() { return userConfigDirectory() / "corvane"; }

QString settingsFile() { return QString::fromStdString((settingsDirectory() / "today.ini").string()); }

QString alertsKey() { return QStringLiteral("Alerts/enabled"); }
QString usedListKey() { return QStringLiteral("addTask/list"); }

QString placeKey(const QString& screen) {
    return QStringLiteral("places/") + QString::fromLatin1(screen.toUtf8().toHex());
}

double bounded(const QVariant& value, double fallback, double least, double most) {
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber && number >= least && number <= most ? number : fallback;
}

ColorScheme::Choice paletteFromWord(const QString& word) {
    const auto found = std::ranges::find_if(
        kPaletteWords, [&word](const char* candidate) { return word == QLatin1String(candidate); });
    if (found == kPaletteWords.end()) return ColorScheme::Choice::kAuto;
    return static_cast<ColorScheme::Choice>(found - kPaletteWords.begin());
}

std::optional<QPoint> placeIn(const QSettings& settings, const QString& screen) {
    const QVariant place = settings.value(placeKey(screen));
    return place.canConvert<QPoint>() ? std::optional(place.toPoint()) : std::nullopt;
}

bool makePrivateFile() {
    if (!makePrivateDirectories(settingsDirectory())) return false;
    const auto path = settingsDirectory() / "today.ini";
    const FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    return file.get() >= 0;
}

}  // namespace

WindowState readWindowState() {
    const QSettings settings(settingsFile(), QSettings::IniFormat);
    WindowState state;
    if (settings.value(QStringLiteral("window/mode")).toString() == QLatin1String("compact")) {
        state.mode = DisplayMode::kCompact;
    }
    state.maximumSize.width = bounded(settings.value(QStringLiteral("window/width")), state.maximumSize.width,
                                      kSmallest.width, kLargest.width);
    state.maximumSize.height = bounded(settings.value(QStringLiteral("window/height")),
                                       state.maximumSize.height, kSmallest.height, kLargest.height);
    state.palette = paletteFromWord(settings.value(QStringLiteral("window/palette")).toString());
    state.isDesktopDark = settings.value(QStringLiteral("window/desktopDark")).toBool();
    state.screen = settings.value(QStringLiteral("window/screen")).toString();
    state.place = placeIn(settings, state.screen);
    return state;
}

std::optional<QPoint> placeOnScreen(const QString& screen) {
    return placeIn(QSettings(settingsFile(), QSettings::IniFormat), screen);
}

bool areAlertsChosen() {
    return QSettings(settingsFile(), QSettings::IniFormat).value(alertsKey(), true).toBool();
}

void chooseAlerts(bool isEnabled) {
    if (!makePrivateFile()) return;
    QSettings(settingsFile(), QSettings::IniFormat).setValue(alertsKey(), isEnabled);
}

QString lastUsedList() {
    return QSettings(settingsFile(), QSettings::IniFormat).value(usedListKey()).toString();
}

void rememberUsedList(const QString& list) {
    if (lastUsedList() == list || !makePrivateFile()) return;
    QSettings(settingsFile(), QSettings::IniFormat).setValue(usedListKey(), list);
}

void keepWindowState(const WindowState& state) {
    if (readWindowState() == state || !makePrivateFile()) return;
    QSettings settings(settingsFile(), QSettings::IniFormat);
    const bool isCompact = state.mode == DisplayMode::kCompact;
    settings.setValue(QStringLiteral("window/mode"),
                      isCompact ? QStringLiteral("compact") : QStringLiteral("expanded"));
    settings.setValue(QStringLiteral("window/width"), state.maximumSize.width);
    settings.setValue(QStringLiteral("window/height"), state.maximumSize.height);
    settings.setValue(QStringLiteral("window/palette"),
                      QString::fromLatin1(kPaletteWords[static_cast<std::size_t>(state.palette)]));
    settings.setValue(QStringLiteral("window/desktopDark"), state.isDesktopDark);
    settings.setValue(QStringLiteral("window/screen"), state.screen);
    if (state.place) settings.setValue(placeKey(state.screen), *state.place);
}

}  // namespace corvane
