#include "apps/corvane-today/TrayIcon.h"

#include <QPainter>
#include <QPixmap>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/TemplateImages.h"

namespace corvane {
namespace {

// Readable on light and dark panels alike.
const QColor kBadge(38, 118, 205);
constexpr std::size_t kLargestNumber = 99;

void drawNumber(QPainter& painter, const QRectF& place, std::size_t count) {
    const bool isMore = count > kLargestNumber;
    const QString text =
        QString::number(std::min(count, kLargestNumber)) + (isMore ? QStringLiteral("+") : QString());
    QFont font;
    font.setWeight(QFont::Bold);
    constexpr double kHeightByLength[] = {0.72, 0.62, 0.46};
    font.setPixelSize(std::max(6, qRound(place.height() * kHeightByLength[text.size() - 1])));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter, text);
}

QPixmap badge(int size, std::size_t count) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place(0, 0, size, size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kBadge);
    painter.drawRoundedRect(place, size * 0.24, size * 0.24);
    if (count == 0) {
        drawTemplateImage(painter, place, "Tray", Qt::white);
    } else {
        drawNumber(painter, place, count);
    }
    return pixmap;
}

}  // namespace

QIcon trayIconOf(std::size_t count) {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64}) icon.addPixmap(badge(size, count));
    return icon;
}

TrayIcon::TrayIcon(QObject* parent) : QObject(parent) {
    connect(&icon_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) Q_EMIT toggleWanted();
    });
    connect(&menu_, &QMenu::aboutToShow, this, &TrayIcon::fillMenu);
    icon_.setContextMenu(&menu_);
    icon_.setIcon(trayIconOf(0));
    fillMenu();
    icon_.show();
}

void TrayIcon::showCount(std::size_t count, const QString& sentence) {
    icon_.setIcon(trayIconOf(count));
    icon_.setToolTip(shownUnformatted(sentence));
}

void TrayIcon::fillMenu() {
    menu_.clear();
    menu_.addAction(translated("Show or hide the window"), this, &TrayIcon::toggleWanted);
    menu_.addAction(translated("Add Task"), this, &TrayIcon::addWanted);
    menu_.addAction(translated("Today"), this, &TrayIcon::todayWanted);
    menu_.addSeparator();
    Q_EMIT menuOpening(&menu_);
}

}  // namespace corvane
