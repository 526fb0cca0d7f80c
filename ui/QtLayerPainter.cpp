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
#include "ui/QtColor.h"
#include "ui/QtText.h"

namespace ui {

namespace {

using platform::PathElement;
using platform::x11::PaintGeometry;
using platform::x11::PixelRect;

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
        : layers_(layers), geometry_(geometry), translucent_(translucent) {
        toPixels_.translate(geometry_.width / 2.0, geometry_.height / 2.0);
        toPixels_.scale(geometry_.contentScale, geometry_.contentScale);
        toPixels_.translate(-geometry_.width / 2.0, -geometry_.height / 2.0);
        toPixels_.scale(geometry_.scale, geometry_.scale);
        tint_ = flipped(layers.tintLayer.frame, geometry.height / geometry.scale);
        outline_ = toQPath(layers.tintLayer.path, tint_.height()).translated(tint_.topLeft());
    }

    QImage run() {
        image_ = QImage(geometry_.width, geometry_.height, QImage::Format_ARGB32_Premultiplied);
        image_.fill(translucent_ ? QColor(Qt::transparent) : toQColor(layers_.tintLayer.fill));
        if (translucent_) paintShape();
        paintHighlight();
        paintSwatch();
        paintText();
        return image_;
    }

    // How much of each pixel the outline covers.
    [[nodiscard]] QImage coverage() const {
        return alphaOf({0, 0, geometry_.width, geometry_.height},
                       [this](QPainter& p) { p.fillPath(outline_, Qt::black); });
    }

  private:
    // One line of text: where its baseline starts, in device pixels before the content's scale.
    struct TextLine {
        QString text;
        QFont font;
        QPointF start;
        QRectF bounds;  // points
    };

    [[nodiscard]] static QRectF flipped(const platform::Rect& rect, double height) {
        return {rect.x, height - rect.maxY(), rect.width, rect.height};
    }
    // A frame inside the tint layer.
    [[nodiscard]] QRectF inTint(const platform::Rect& rect) const {
        return flipped(rect, tint_.height()).translated(tint_.topLeft());
    }

    void prepare(QPainter& painter) const {
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.setTransform(toPixels_, true);
    }

    // The opacity of a drawing in a part of the window, given in pixels.
    template <typename Draw>
    [[nodiscard]] QImage alphaOf(const QRect& part, Draw draw) const {
        QImage alpha(part.size(), QImage::Format_Alpha8);
        alpha.fill(0);
        QPainter painter(&alpha);
        painter.translate(-part.topLeft());
        prepare(painter);
        draw(painter);
        return alpha;
    }

    // The shadow of a drawing that lies within `bounds` (points).
    template <typename Draw>
    void paintShadow(const platform::Shadow& shadow, const QRectF& bounds, Draw draw) {
        if (shadow.opacity <= 0) return;
        const double sigma = shadow.radius * geometry_.scale;
        const int reach = static_cast<int>(std::ceil(3 * sigma)) + 1;
        const QRect part =
            toPixels_.mapRect(bounds).toAlignedRect().marginsAdded({reach, reach, reach, reach}) &
            image_.rect();
        if (part.isEmpty()) return;
        QImage alpha = alphaOf(part, draw);
        blurAlpha(alpha, sigma);
        QImage black(alpha.size(), QImage::Format_ARGB32_Premultiplied);
        black.fill(Qt::black);
        QPainter mask(&black);
        mask.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        mask.drawImage(0, 0, alpha);
        mask.end();
        QPainter painter(&image_);
        painter.setOpacity(shadow.opacity);
        const QPointF offset = QPointF(shadow.offset.x, -shadow.offset.y) * geometry_.scale;
        painter.drawImage(offset + part.topLeft(), black);
    }

    void paintShape() {
        paintShadow(layers_.tintLayer.shadow, tint_,
                    [this](QPainter& p) { p.fillPath(outline_, Qt::black); });
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
    [[nodiscard]] TextLine textLine() const {
        const auto& layer = layers_.textLayer;
        TextLine line;
        line.text = QString::fromUtf8(layer.string.data(), static_cast<qsizetype>(layer.string.size()));
        line.font = heavySystemFont(layer.fontSize * geometry_.scale);
        const QRectF frame = inTint(layer.frame);
        const QFontMetricsF metrics(line.font);
        const double width = metrics.horizontalAdvance(line.text) / geometry_.scale;
        const bool centered = layer.alignment == platform::TextLayer::Alignment::Center;
        const double x = centered ? frame.center().x() - width / 2 : frame.left();
        const double baseline = frame.center().y() + metrics.capHeight() / geometry_.scale / 2;
        line.start = QPointF(x, baseline) * geometry_.scale;
        const QRectF ink = metrics.boundingRect(line.text).translated(line.start);
        line.bounds = QRectF(ink.topLeft() / geometry_.scale, ink.size() / geometry_.scale);
        return line;
    }

    void drawText(QPainter& painter, const TextLine& line) const {
        painter.setFont(line.font);
        painter.setPen(toQColor(layers_.textLayer.foreground));
        painter.scale(1 / geometry_.scale, 1 / geometry_.scale);
        painter.drawText(line.start, line.text);
    }

    void paintText() {
        if (layers_.textLayer.string.empty()) return;
        const auto line = textLine();
        paintShadow(layers_.textLayer.shadow, line.bounds, [&](QPainter& p) { drawText(p, line); });
        QPainter painter(&image_);
        prepare(painter);
        drawText(painter, line);
    }

    const platform::TagLayers& layers_;
    const PaintGeometry& geometry_;
    const bool translucent_;
    QTransform toPixels_;  // of points with y downward
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
