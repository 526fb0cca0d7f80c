#include "ui/widgets/Symbols.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <cmath>
#include <utility>

#include "ui/widgets/Colors.h"
#include "ui/widgets/SymbolDrawings.h"

namespace ui {

QPixmap transparentPixmap(double points, double devicePixelRatio) {
    const int pixels = static_cast<int>(std::ceil(points * devicePixelRatio));
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

namespace {

constexpr double kRim = 1;
constexpr double kRimContrast = 1.2 * kShapeContrast;  // some of it is lost where it is smoothed

void paint(const SymbolDrawing& drawing, const QColor& color, const QRectF& square, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / kSymbolGrid, square.height() / kSymbolGrid);
    painter.fillPath(drawing.filled, color);
    painter.strokePath(drawing.stroked,
                       QPen(color, kSymbolStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.restore();
}

QPixmap drawn(QIconEngine& engine, const QSize& size, QIcon::Mode mode, QIcon::State state) {
    auto pixmap = transparentPixmap(size.width(), 1);
    QPainter painter(&pixmap);
    engine.paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
}

class SymbolIcon final : public QIconEngine {
  public:
    SymbolIcon(SymbolDrawing drawing, PaletteColor color) : drawing_(std::move(drawing)), color_(color) {}
    [[nodiscard]] QIconEngine* clone() const override { return new SymbolIcon(drawing_, color_); }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        const auto palette = QGuiApplication::palette();
        const auto color = mode == QIcon::Disabled ? tertiaryLabelColor(palette)
                           : mode == QIcon::Selected
                               ? palette.color(QPalette::Active, QPalette::HighlightedText)
                               : color_(palette);
        ui::paint(drawing_, color, rect, *painter);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return drawn(*this, size, mode, state);
    }

  private:
    SymbolDrawing drawing_;
    PaletteColor color_;
};

// In the middle of a menu's column.
class DotIcon final : public QIconEngine {
  public:
    DotIcon(const QColor& color, double diameter) : color_(color), diameter_(diameter) {}
    [[nodiscard]] QIconEngine* clone() const override { return new DotIcon(color_, diameter_); }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        const auto palette = QGuiApplication::palette();
        QRectF circle(0, 0, diameter_, diameter_);
        circle.moveCenter(QRectF(rect).center());
        if (mode == QIcon::Disabled) painter->setOpacity(kDisabled);
        drawDot(
            *painter, circle, color_,
            mode == QIcon::Selected ? accentColor(palette) : palette.color(QPalette::Active, QPalette::Base));
        painter->setOpacity(1);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return drawn(*this, size, mode, state);
    }

  private:
    static constexpr double kDisabled = 0.5;

    QColor color_;
    double diameter_;
};

}  // namespace

QPixmap symbolPixmap(std::string_view name, const QColor& color, double points, double devicePixelRatio) {
    const auto drawing = drawingOf(name);
    if (!drawing) return {};
    auto pixmap = transparentPixmap(points, devicePixelRatio);
    QPainter painter(&pixmap);
    paint(*drawing, color, QRectF(0, 0, points, points), painter);
    return pixmap;
}

QIcon symbolIcon(std::string_view name, PaletteColor color) {
    const auto drawing = drawingOf(name);
    return drawing ? QIcon(new SymbolIcon(*drawing, color)) : QIcon();
}

void drawDot(QPainter& painter, const QRectF& circle, const QBrush& fill, const QColor& ground) {
    const auto color = over(ground, fill.color());
    const bool needsRim = fill.style() == Qt::SolidPattern && contrast(color, ground) < kShapeContrast;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(needsRim ? QPen(legible(ground, color, kRimContrast), kRim) : QPen(Qt::NoPen));
    const double inset = needsRim ? kRim / 2 : 0;
    painter.drawEllipse(circle.adjusted(inset, inset, -inset, -inset));
    painter.restore();
}

QPixmap dotOnGround(const QColor& color, const QColor& ground, double diameter, double devicePixelRatio) {
    auto pixmap = transparentPixmap(diameter, devicePixelRatio);
    QPainter painter(&pixmap);
    drawDot(painter, QRectF(0, 0, diameter, diameter), color, ground);
    return pixmap;
}

QIcon dotIcon(const QColor& color, double diameter) {
    return QIcon(new DotIcon(color, diameter));
}

}  // namespace ui
