#include "apps/corvane-today/PngOutput.h"

#include <span>

#include <QApplication>
#include <QBuffer>
#include <QImage>

#include "apps/corvane-today/QtTextMeasuring.h"
#include "apps/corvane-today/TaskActions.h"
#include "apps/corvane-today/WidgetPalette.h"
#include "apps/corvane-today/WidgetSizes.h"
#include "apps/corvane-today/WidgetWindow.h"
#include "apps/host/WidgetHost.h"
#include "platform/foundation/FileContents.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

QImage pictureOf(QWidget& window) {
    const double scale = window.devicePixelRatioF();
    QImage image((QSizeF(window.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    window.render(&image);
    return image;
}

std::optional<std::string> write(const QImage& image, const std::filesystem::path& file) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
        return localizedUtf8("the picture cannot be drawn");
    }
    const auto* begin = reinterpret_cast<const std::uint8_t*>(bytes.constData());
    const auto error =
        writeFileAtomically(file, {begin, static_cast<std::size_t>(bytes.size())}, FileAccess::kByUmask);
    if (error) {
        return localizedUtf8("\"%1$@\" could not be written: %2$@",
                             {textFromUtf8(file.string()), textFromUtf8(error.message())});
    }
    return std::nullopt;
}

}  // namespace

void drawWithoutDisplay(double scale) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    for (const char* variable : {"QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI"}) qunsetenv(variable);
}

std::optional<std::string> writePng(const DesktopOptions& options) {
    QtTextMeasuring measuring(WidgetFonts(QApplication::font()));
    WidgetHost host(hostOptionsFor(options), measuring);
    TaskActions actions;
    WidgetWindow window(host, measuring, actions);
    window.setColors(options.png->isDark ? WidgetPalette::dark() : WidgetPalette::light());
    host.refresh();
    window.setPrivate(options.isPrivate);
    window.showRefresh();
    if (const auto problem = write(pictureOf(window), options.png->file)) return problem;
    return host.problem();
}

}  // namespace corvane
