#include "apps/corvane-today/CompanionStyle.h"

#include <utility>

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
    QString style = QStringLiteral(
        "QLineEdit, QPlainTextEdit, QComboBox { background: @ground; color: @text; border: 1px solid @line;"
        " border-radius: 6px; padding: 5px 8px; selection-background-color: @accent;"
        " selection-color: @ground; }"
        "QLineEdit:focus, QPlainTextEdit:focus, QComboBox:focus { border: 2px solid @accent; padding: 4px "
        "7px; }"
        "QLineEdit:read-only, QPlainTextEdit:read-only, QComboBox:disabled { background: @hover; }"
        "QComboBox::drop-down { border: none; width: 22px; }"
        "QPushButton { background: @button; color: @accent; border: 1px solid transparent;"
        " border-radius: 6px; padding: 6px 14px; }"
        "QPushButton:hover, QPushButton:pressed { border-color: @accent; }"
        "QPushButton:focus { border: 2px solid @accent; padding: 5px 13px; }"
        "QPushButton:disabled { color: @quiet; }"
        "QPushButton[flat=\"true\"] { background: transparent; padding: 6px 8px; }"
        "QPushButton[flat=\"true\"]:focus { padding: 5px 7px; }"
        "QToolButton { background: transparent; border: 2px solid transparent; border-radius: 6px; }"
        "QToolButton:hover, QToolButton:pressed { background: @hover; }"
        "QToolButton:focus { border-color: @accent; }"
        "QCheckBox::indicator, QTreeView::indicator { width: 14px; height: 14px; border-radius: 4px;"
        " border: 1px solid @quiet; background: @ground; }"
        "QCheckBox::indicator { width: 1em; height: 1em; }"
        "QCheckBox::indicator:focus { border-color: @accent; }"
        "QCheckBox::indicator:checked, QTreeView::indicator:checked { border-color: @accent;"
        " background: @accent; image: url(:/corvane/@check.svg); }"
        "QTreeView::item { padding: 3px 2px; }"
        "QScrollBar { background: transparent; border: none; margin: 0; }"
        "QScrollBar:vertical { width: 10px; }"
        "QScrollBar:horizontal { height: 10px; }"
        "QScrollBar::handle { background: @line; border-radius: 3px; margin: 2px; min-height: 30px;"
        " min-width: 30px; }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }");
    const QColor line = palette.isDark() ? palette.hairline().lighter(150) : palette.hairline().darker(115);
    const std::pair<const char*, QString> values[] = {
        {"@ground", palette.ground().name()      },
        {"@text",   palette.text().name()        },
        {"@line",   line.name()                  },
        {"@accent", palette.accent().name()      },
        {"@hover",  palette.hoverGround().name() },
        {"@button", palette.buttonGround().name()},
        {"@quiet",  palette.quietText().name()   },
    };
    for (const auto& [name, value] : values) style.replace(QLatin1String(name), value);
    return style.replace(QStringLiteral("@check"),
                         palette.isDark() ? QStringLiteral("Check-Dark") : QStringLiteral("Check-Light"));
}

}  // namespace corvane
