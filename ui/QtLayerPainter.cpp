#include "ui/QtLayerPainter.h"

#include <QFontMetricsF>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <cstring>
#include <numbers>

#include "ui/Blur.h"
#include "ui/QtText.h"

namespace ui {

namespace {

using platform::PathElement;
using platform::x11::PaintGeometry;
using platform::x11::PixelRect;

QColor toQColor(const platform::Color& color) {
    const auto component = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                            component(color.alpha));
}

// The outline in a box of the given height, turned over to y downward.
QPainterPath toQPath(const platform::Path& path, double height) {
    QPainterPath result;
    result.setFillRule(Qt::OddEvenFill);
    for (const auto& element : path.elements) {
        const QPointF to(element.to.x, height - element.to.y);
        if (element.kind == PathElement::Kind::Move) {
            result.moveTo(to);
        } else if (element.kind == PathElement::Kind::Line) {
            result.lineTo(to);
        } else if (element.kind == PathElement::Kind::Arc) {
            constexpr double degrees = 180 / std::numbers::pi;
            const double r = element.radius;
            const QRectF box(element.center.x - r, height - element.center.y - r, 2 * r, 2 * r);
            result.arcTo(box, element.startAngle * degrees, element.sweep * degrees);
        } else {
            result.closeSubpath();
        }
    }
    return result;
}

// Paints one set of layers; everything is drawn in points with y downward, the painter scales to pixels.
class Painting {
  public:
    Painting(const platform::TagLayers& layers, const PaintGeometry& geometry, bool translucent)
        : layers_(layers),
          geometry_(geometry),
          translucent_(translucent),
          image_(geometry.width, geometry.height, QImage::Format_ARGB32_Premultiplied) {
        image_.fill(translucent ? QColor(Qt::transparent) : toQColor(layers.tintLayer.fill));
        tint_ = flipped(layers.tintLayer.frame, geometry.height / geometry.scale);
        outline_ = toQPath(layers.tintLayer.path, tint_.height()).translated(tint_.topLeft());
    }

    QImage run() {
        if (translucent_) paintShape();
        paintHighlight();
        paintSwatch();
        paintText();
        return image_;
    }

    // How much of each pixel the outline covers.
    [[nodiscard]] QImage coverage() const {
        return alphaOf([this](QPainter& p) { p.fillPath(outline_, Qt::black); });
    }

  private:
    [[nodiscard]] static QRectF flipped(const platform::Rect& rect, double height) {
        return {rect.x, height - rect.maxY(), rect.width, rect.height};
    }
    // A frame inside the tint layer.
    [[nodiscard]] QRectF inTint(const platform::Rect& rect) const {
        return flipped(rect, tint_.height()).translated(tint_.topLeft());
    }

    void prepare(QPainter& painter) const {
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.translate(geometry_.width / 2.0, geometry_.height / 2.0);
        painter.scale(geometry_.contentScale, geometry_.contentScale);
        painter.translate(-geometry_.width / 2.0, -geometry_.height / 2.0);
        painter.scale(geometry_.scale, geometry_.scale);
    }

    template <typename Draw>
    [[nodiscard]] QImage alphaOf(Draw draw) const {
        QImage alpha(geometry_.width, geometry_.height, QImage::Format_Alpha8);
        alpha.fill(0);
        QPainter painter(&alpha);
        prepare(painter);
        draw(painter);
        return alpha;
    }

    template <typename Draw>
    void paintShadow(const platform::Shadow& shadow, Draw draw) {
        if (shadow.opacity <= 0) return;
        QImage alpha = alphaOf(draw);
        blurAlpha(alpha, shadow.radius * geometry_.scale / 2);  // a blur radius is two standard deviations
        QImage black(alpha.size(), QImage::Format_ARGB32_Premultiplied);
        black.fill(Qt::black);
        QPainter mask(&black);
        mask.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        mask.drawImage(0, 0, alpha);
        mask.end();
        QPainter painter(&image_);
        painter.setOpacity(shadow.opacity);
        painter.drawImage(QPointF(shadow.offset.x, -shadow.offset.y) * geometry_.scale, black);
    }

    void paintShape() {
        paintShadow(layers_.tintLayer.shadow, [this](QPainter& p) { p.fillPath(outline_, Qt::black); });
        QPainter painter(&image_);
        prepare(painter);
        painter.fillPath(outline_, toQColor(layers_.tintLayer.fill));
    }

    void paintHighlight() {
        const auto& highlight = layers_.highlightLayer;
        if (highlight.hidden) return;
        QLinearGradient gradient(tint_.topLeft(), tint_.bottomLeft());
        gradient.setColorAt(0, toQColor(highlight.top));
        gradient.setColorAt(1, toQColor(highlight.bottom));
        QPainter painter(&image_);
        prepare(painter);
        if (translucent_) {
            painter.fillPath(toQPath(highlight.mask, tint_.height()).translated(tint_.topLeft()), gradient);
        } else {
            painter.fillRect(tint_, gradient);
        }
    }

    void paintSwatch() {
        const auto& swatch = layers_.swatchLayer;
        if (swatch.hidden) return;
        QPainter painter(&image_);
        prepare(painter);
        painter.setPen(Qt::NoPen);
        painter.setBrush(toQColor(swatch.background));
        painter.drawRoundedRect(inTint(swatch.frame), swatch.cornerRadius, swatch.cornerRadius);
    }

    // The baseline is where the capitals stand centred in the frame: what the eye takes for the middle.
    void drawText(QPainter& painter) const {
        const auto& layer = layers_.textLayer;
        const auto text = QString::fromUtf8(layer.string.data(), static_cast<qsizetype>(layer.string.size()));
        const QRectF frame = inTint(layer.frame);
        const QFont font = heavySystemFont(layer.fontSize * geometry_.scale);
        const QFontMetricsF metrics(font);
        const double width = metrics.horizontalAdvance(text) / geometry_.scale;
        const bool centered = layer.alignment == platform::TextLayer::Alignment::Center;
        const double x = centered ? frame.center().x() - width / 2 : frame.left();
        const double baseline = frame.center().y() + metrics.capHeight() / geometry_.scale / 2;
        painter.setFont(font);
        painter.setPen(toQColor(layer.foreground));
        const QPointF pixel(x * geometry_.scale, baseline * geometry_.scale);
        painter.scale(1 / geometry_.scale, 1 / geometry_.scale);
        painter.drawText(pixel, text);
    }

    void paintText() {
        if (layers_.textLayer.string.empty()) return;
        paintShadow(layers_.textLayer.shadow, [this](QPainter& p) { drawText(p); });
        QPainter painter(&image_);
        prepare(painter);
        drawText(painter);
    }

    const platform::TagLayers& layers_;
    const PaintGeometry& geometry_;
    const bool translucent_;
    QImage image_;
    QRectF tint_;
    QPainterPath outline_;
};

// Adds the runs of covered pixels of one row; a run equal to one that ends in the row above lengthens it
// instead.
void addRow(std::vector<PixelRect>& rectangles, const uchar* row, int y, int width) {
    const auto firstOfRowAbove = rectangles.size();
    for (int x = 0; x < width; ++x) {
        if (row[x] < 128) continue;
        const int start = x;
        while (x < width && row[x] >= 128) ++x;
        const auto above = std::find_if(
            rectangles.begin(), rectangles.begin() + static_cast<std::ptrdiff_t>(firstOfRowAbove),
            [&](const PixelRect& r) { return r.y + r.height == y && r.x == start && r.width == x - start; });
        if (above != rectangles.begin() + static_cast<std::ptrdiff_t>(firstOfRowAbove)) {
            ++above->height;
        } else {
            rectangles.push_back({start, y, x - start, 1});
        }
    }
}

}  // namespace

platform::x11::PixelImage QtLayerPainter::paint(const platform::TagLayers& layers,
                                                const PaintGeometry& geometry, bool translucent) {
    const QImage image = Painting(layers, geometry, translucent).run();
    platform::x11::PixelImage result{image.width(), image.height(), {}};
    const auto pixels = static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
    result.pixels.resize(pixels);
    std::memcpy(result.pixels.data(), image.constBits(), pixels * sizeof(std::uint32_t));
    return result;
}

std::vector<PixelRect> QtLayerPainter::silhouette(const platform::TagLayers& layers,
                                                  const PaintGeometry& geometry) {
    const QImage coverage = Painting(layers, geometry, true).coverage();
    std::vector<PixelRect> rectangles;
    for (int y = 0; y < coverage.height(); ++y)
        addRow(rectangles, coverage.constScanLine(y), y, coverage.width());
    return rectangles;
}

}  // namespace ui
