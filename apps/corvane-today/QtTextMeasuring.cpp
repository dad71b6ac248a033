#include "apps/corvane-today/QtTextMeasuring.h"

#include <algorithm>

#include <QFontInfo>
#include <QFontMetricsF>

#include "apps/corvane-today/QtText.h"
#include "widget/WidgetLayout.h"

namespace corvane {
namespace {

// What a row takes for its two lines with the air above, between and below them.
constexpr double kRowShare = 1.2;
// A text that goes on beyond this is wider than every window.
constexpr std::size_t kLongestMeasured = 4000;

double lineHeight(const QFont& font) { return QFontMetricsF(font).height(); }

QFont sized(QFont font, double pixels) {
    font.setPixelSize(std::max(1, qRound(pixels)));
    return font;
}

}  // namespace

WidgetFonts::WidgetFonts(const QFont& desktop) : desktop_(desktop) {
    const double titlePixels = QFontInfo(desktop).pixelSize();
    const double lines =
        lineHeight(sized(desktop, titlePixels)) + lineHeight(sized(desktop, titlePixels * kDetailsShare));
    pixelsPerPoint_ = std::max(1.0, lines * kRowShare / kRowHeight);
    titleSize_ = titlePixels / pixelsPerPoint_;
}

QFont WidgetFonts::qtFont(const Font& font) const {
    QFont result = sized(desktop_, font.pointSize * pixelsPerPoint_);
    if (font.isBold) result.setWeight(QFont::DemiBold);
    return result;
}

Size QtTextMeasuring::sizeOfText(std::u16string_view text, const Font& font) const {
    const QFontMetricsF metrics(fonts_.qtFont(font));
    const double width = metrics.horizontalAdvance(qtText(text.substr(0, kLongestMeasured)));
    return {width / fonts_.pixelsPerPoint(), metrics.height() / fonts_.pixelsPerPoint()};
}

Size QtTextMeasuring::boundingSizeOfText(std::u16string_view text, Size available, const Font& font) const {
    const double scale = fonts_.pixelsPerPoint();
    const QRectF room(0, 0, available.width * scale, available.height * scale);
    const QRectF bounds =
        QFontMetricsF(fonts_.qtFont(font)).boundingRect(room, Qt::TextWordWrap, qtText(text));
    return {bounds.width() / scale, std::min(bounds.height() / scale, available.height)};
}

}  // namespace corvane
