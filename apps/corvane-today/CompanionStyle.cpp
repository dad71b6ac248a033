#include "apps/corvane-today/CompanionStyle.h"

#include <QFontMetricsF>

namespace corvane {
namespace {

constexpr Color kLate = Color::rgb(0.72, 0.13, 0.10);

QFont scaled(QFont font, double factor) {
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * factor);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * factor));
    }
    return font;
}

}  // namespace

WidgetPalette paletteOf(const QWidget& widget) {
    constexpr int kMiddle = 128;
    return widget.palette().color(QPalette::Base).lightness() < kMiddle ? WidgetPalette::dark()
                                                                        : WidgetPalette::light();
}

QColor problemColor(const WidgetPalette& palette) { return palette.readable(kLate); }

QFont headingFont(const QFont& font) {
    QFont heading = scaled(font, 1.35);
    heading.setWeight(QFont::DemiBold);
    return heading;
}

QFont titleFont(const QFont& font) { return scaled(font, 1.25); }

QFont detailsFont(const QFont& font) { return scaled(font, 0.9); }

int spacing(const QWidget& widget, double timesX) {
    return qRound(QFontMetricsF(widget.font()).xHeight() * timesX);
}

QString companionStyleSheet(const WidgetPalette& palette) {
    return QStringLiteral(
               "QLineEdit, QPlainTextEdit, QComboBox { background: %1; color: %2; border: 1px solid %3;"
               " border-radius: 6px; padding: 5px 8px; selection-background-color: %4;"
               " selection-color: %1; }"
               "QLineEdit:focus, QPlainTextEdit:focus, QComboBox:focus { border: 2px solid %4; padding: 4px "
               "7px; }"
               "QLineEdit:read-only, QPlainTextEdit:read-only, QComboBox:disabled { background: %5; }"
               "QComboBox::drop-down { border: none; width: 22px; }"
               "QPushButton { background: %6; color: %4; border: 1px solid transparent; border-radius: 6px;"
               " padding: 6px 14px; }"
               "QPushButton:hover, QPushButton:pressed { border-color: %4; }"
               "QPushButton:focus { border: 2px solid %4; padding: 5px 13px; }"
               "QPushButton:disabled { color: %7; }"
               "QPushButton[flat=\"true\"] { background: transparent; padding: 6px 8px; }"
               "QPushButton[flat=\"true\"]:focus { padding: 5px 7px; }")
        .arg(palette.ground().name(), palette.text().name(), palette.hairline().darker(115).name(),
             palette.accent().name(), palette.hoverGround().name(), palette.buttonGround().name(),
             palette.quietText().name());
}

}  // namespace corvane
