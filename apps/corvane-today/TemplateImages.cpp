#include "apps/corvane-today/TemplateImages.h"

#include <cmath>
#include <map>
#include <memory>

#include <QIconEngine>
#include <QPixmap>
#include <QSvgRenderer>

// A static library's resources are linked by name, from outside every namespace.
static void loadIcons() { Q_INIT_RESOURCE(icons); }

namespace corvane {
namespace {

// Parsed once: rows draw the same few images again and again.
QSvgRenderer* rendererOf(const std::string& name) {
    static std::map<std::string, std::unique_ptr<QSvgRenderer>> renderers;
    if (renderers.empty()) loadIcons();
    std::unique_ptr<QSvgRenderer>& renderer = renderers[name];
    if (!renderer) {
        const QString file =
            QStringLiteral(":/corvane/") + QString::fromStdString(name) + QStringLiteral(".svg");
        renderer = std::make_unique<QSvgRenderer>(file);
    }
    return renderer->isValid() ? renderer.get() : nullptr;
}

class TemplateIconEngine final : public QIconEngine {
  public:
    TemplateIconEngine(std::string name, const QColor& tint) : name_(std::move(name)), tint_(tint) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        QColor tint = tint_;
        if (mode == QIcon::Disabled) tint.setAlphaF(0.4F);
        drawTemplateImage(*painter, place, name_, tint);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new TemplateIconEngine(name_, tint_); }

  private:
    std::string name_;
    QColor tint_;
};

}  // namespace

void drawTemplateImage(QPainter& painter, const QRectF& place, const std::string& name, const QColor& tint) {
    QSvgRenderer* renderer = rendererOf(name);
    if (!renderer || place.isEmpty()) return;
    // That of a picture, where a window is drawn into one; negative where it is mirrored.
    const double scale = std::abs(painter.deviceTransform().m11());
    QImage image((place.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter into(&image);
    renderer->render(&into);
    into.setCompositionMode(QPainter::CompositionMode_SourceIn);
    into.fillRect(image.rect(), tint);
    into.end();
    image.setDevicePixelRatio(scale);
    painter.drawImage(place.topLeft(), image);
}

QIcon templateIcon(const std::string& name, const QColor& tint) {
    return QIcon(new TemplateIconEngine(name, tint));
}

}  // namespace corvane
