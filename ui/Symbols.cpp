#include "ui/Symbols.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <cmath>
#include <utility>

#include "ui/QtColor.h"
#include "ui/SymbolDrawings.h"

namespace ui {

namespace {

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

QPixmap transparentPixmap(double points, double devicePixelRatio) {
    const int pixels = static_cast<int>(std::ceil(points * devicePixelRatio));
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
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
        auto pixmap = transparentPixmap(size.width(), 1);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

  private:
    SymbolDrawing drawing_;
    PaletteColor color_;
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

QPixmap dotPixmap(const QColor& color, double diameter, double square, double devicePixelRatio) {
    auto pixmap = transparentPixmap(square, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(square / 2, square / 2), diameter / 2, diameter / 2);
    return pixmap;
}

}  // namespace ui
