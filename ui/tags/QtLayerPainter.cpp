#include "ui/tags/QtLayerPainter.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

#include "ui/tags/Blur.h"
#include "ui/tags/PathCoverage.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"

namespace ui {

namespace {

using platform::PathElement;
using platform::x11::PaintGeometry;
using platform::x11::PixelRect;

// The system font in the heavy weight that tags are written in, at a size in pixels.
QFont heavySystemFont(double pixelSize) {
    QFont font = QGuiApplication::font();
    font.setWeight(QFont::ExtraBold);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
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

QImage alphaChannel(const QImage& drawing) {
    QImage alpha(drawing.size(), QImage::Format_Alpha8);
    for (int y = 0; y < drawing.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(drawing.constScanLine(y));
        std::transform(from, from + drawing.width(), alpha.scanLine(y),
                       [](QRgb pixel) { return static_cast<uchar>(qAlpha(pixel)); });
    }
    return alpha;
}

// Black of that opacity.
QImage blackOf(const QImage& alpha) {
    QImage black(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < alpha.height(); ++y) {
        const auto* from = alpha.constScanLine(y);
        std::transform(from, from + alpha.width(), reinterpret_cast<QRgb*>(black.scanLine(y)),
                       [](uchar opacity) { return qRgba(0, 0, 0, opacity); });
    }
    return black;
}

QRgb scaled(QRgb pixel, int part) {
    const auto scale = [part](int component) { return (component * part + 127) / 255; };
    return qRgba(scale(qRed(pixel)), scale(qGreen(pixel)), scale(qBlue(pixel)), scale(qAlpha(pixel)));
}

// Both colours premultiplied; the upper covers `coverage` of the pixel (of 255).
QRgb over(QRgb upper, int coverage, QRgb lower) {
    const auto seen = scaled(upper, coverage);
    return seen + scaled(lower, 255 - qAlpha(seen));
}

// The premultiplied colour at `way` (0…1) from one to the other.
QRgb between(const QColor& from, const QColor& to, double way) {
    const auto a = qPremultiply(from.rgba());
    const auto b = qPremultiply(to.rgba());
    const auto mix = [way](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * way)); };
    return qRgba(mix(qRed(a), qRed(b)), mix(qGreen(a), qGreen(b)), mix(qBlue(a), qBlue(b)),
                 mix(qAlpha(a), qAlpha(b)));
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
        return coverageOf(outline_, {0, 0, geometry_.width, geometry_.height});
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

    // How much a path covers of the pixels of a part of the window.
    [[nodiscard]] QImage coverageOf(const QPainterPath& path, const QRect& part) const {
        return pathCoverage(toPixels_.map(path).translated(-part.topLeft()), part.size());
    }

    // The coverage by a text.
    [[nodiscard]] QImage coverageOf(const TextLine& line, const QRect& part) const {
        QImage drawing(part.size(), QImage::Format_ARGB32_Premultiplied);
        drawing.fill(Qt::transparent);
        QPainter painter(&drawing);
        painter.translate(-part.topLeft());
        prepare(painter);
        drawText(painter, line);
        painter.end();
        return alphaChannel(drawing);
    }

    // Fills a path with the colours, premultiplied, that `colorOf` gives to the rows of pixels.
    template <typename ColorOf>
    void fill(const QPainterPath& path, ColorOf colorOf) {
        const QRect part = toPixels_.map(path).boundingRect().toAlignedRect() & image_.rect();
        if (part.isEmpty()) return;
        const QImage coverage = coverageOf(path, part);
        for (int y = 0; y < part.height(); ++y) {
            const QRgb color = colorOf(part.top() + y);
            const auto* covered = coverage.constScanLine(y);
            auto* pixels = reinterpret_cast<QRgb*>(image_.scanLine(part.top() + y)) + part.left();
            for (int x = 0; x < part.width(); ++x)
                if (covered[x] != 0) pixels[x] = over(color, covered[x], pixels[x]);
        }
    }
    void fill(const QPainterPath& path, const QColor& color) {
        fill(path, [premultiplied = qPremultiply(color.rgba())](int /*row*/) { return premultiplied; });
    }

    // The shadow of a drawing, a path or a text, that lies within `bounds` (points).
    template <typename Drawing>
    void paintShadow(const platform::Shadow& shadow, const QRectF& bounds, const Drawing& drawing) {
        if (shadow.opacity <= 0) return;
        const double sigma = shadow.radius * geometry_.scale;
        const int reach = static_cast<int>(std::ceil(3 * sigma)) + 1;
        const QRect part =
            toPixels_.mapRect(bounds).toAlignedRect().marginsAdded({reach, reach, reach, reach}) &
            image_.rect();
        if (part.isEmpty()) return;
        QImage alpha = coverageOf(drawing, part);
        blurAlpha(alpha, sigma);
        QPainter painter(&image_);
        painter.setOpacity(shadow.opacity);
        const QPointF offset = QPointF(shadow.offset.x, -shadow.offset.y) * geometry_.scale;
        painter.drawImage(offset + part.topLeft(), blackOf(alpha));
    }

    void paintShape() {
        paintShadow(layers_.tintLayer.shadow, tint_, outline_);
        fill(outline_, toQColor(layers_.tintLayer.fill));
    }

    void paintHighlight() {
        const auto& highlight = layers_.highlightLayer;
        if (highlight.hidden) return;
        QPainterPath path;
        if (translucent_)
            path = toQPath(highlight.mask, tint_.height()).translated(tint_.topLeft());
        else
            path.addRect(tint_);
        const double top = toPixels_.map(tint_.topLeft()).y();
        const double bottom = toPixels_.map(tint_.bottomLeft()).y();
        fill(path, [&, from = toQColor(highlight.top), to = toQColor(highlight.bottom)](int row) {
            return between(from, to, std::clamp((row + 0.5 - top) / (bottom - top), 0.0, 1.0));
        });
    }

    void paintSwatch() {
        const auto& swatch = layers_.swatchLayer;
        if (swatch.hidden) return;
        QPainterPath path;
        path.addRoundedRect(inTint(swatch.frame), swatch.cornerRadius, swatch.cornerRadius);
        fill(path, toQColor(swatch.background));
    }

    // The baseline is where the capitals stand centred in the frame: what the eye takes for the middle.
    [[nodiscard]] TextLine textLine() const {
        const auto& layer = layers_.textLayer;
        TextLine line;
        line.text = toQString(layer.string);
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
        paintShadow(layers_.textLayer.shadow, line.bounds, line);
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

double QtTextMeasurer::heavyTextWidth(std::string_view text, double fontSize) const {
    return QFontMetricsF(heavySystemFont(fontSize)).horizontalAdvance(toQString(text));
}

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
