#include "ui/Symbols.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "ui/QtColor.h"

namespace ui {

namespace {

constexpr double kGrid = 16;  // every symbol is drawn in a square of this size
constexpr double kStroke = 1.35;

// Strokes and fills of one symbol, on the grid.
struct Drawing {
    QPainterPath stroked;
    QPainterPath filled;
};

QPainterPath line(std::initializer_list<QPointF> points) {
    QPainterPath path(*points.begin());
    for (const auto* point = points.begin() + 1; point != points.end(); ++point) path.lineTo(*point);
    return path;
}

QPainterPath circle(double x, double y, double radius) {
    QPainterPath path;
    path.addEllipse(QPointF(x, y), radius, radius);
    return path;
}

QPainterPath operator<<(QPainterPath path, const QPainterPath& other) {
    path.addPath(other);
    return path;
}

// A disc with something cut out of it.
QPainterPath disc(const QPainterPath& cutOut) {
    QPainterPathStroker stroker;
    stroker.setWidth(1.6);
    stroker.setCapStyle(Qt::RoundCap);
    return circle(8, 8, 6.6).subtracted(stroker.createStroke(cutOut));
}

QPainterPath eye() {
    QPainterPath path(QPointF(1.2, 8));
    path.quadTo(QPointF(8, 0.9), QPointF(14.8, 8));
    path.quadTo(QPointF(8, 15.1), QPointF(1.2, 8));
    return path << circle(8, 8, 2.1);
}

QPainterPath pencil() {
    QPainterPath path(QPointF(2.6, 13.4));
    path.lineTo(3.4, 10.2);
    path.lineTo(10.9, 2.7);
    path.lineTo(13.3, 5.1);
    path.lineTo(5.8, 12.6);
    path.closeSubpath();
    return path << line({{9.2, 4.4}, {11.6, 6.8}});
}

QPainterPath gear() {
    QPainterPath path = circle(8, 8, 2.2) << circle(8, 8, 4.7);
    for (int tooth = 0; tooth < 8; ++tooth) {
        const double angle = tooth * M_PI / 4;
        const QPointF direction(std::cos(angle), std::sin(angle));
        path = path << line({QPointF(8, 8) + direction * 4.9, QPointF(8, 8) + direction * 6.6});
    }
    return path;
}

QPainterPath linkOfChain() {
    QPainterPath path;
    path.addRoundedRect(-5.9, -2.1, 6.6, 4.2, 2.1, 2.1);
    path.addRoundedRect(-0.7, -2.1, 6.6, 4.2, 2.1, 2.1);
    return QTransform().translate(8, 8).rotate(-45).map(path);
}

QPainterPath trash() {
    return line({{2.6, 4.2}, {13.4, 4.2}})
           << line({{6.2, 4}, {6.2, 2.2}, {9.8, 2.2}, {9.8, 4}})
           << line({{3.9, 4.4}, {4.6, 13.8}, {11.4, 13.8}, {12.1, 4.4}}) << line({{6.6, 6.8}, {6.8, 11.4}})
           << line({{9.4, 6.8}, {9.2, 11.4}});
}

QPainterPath tag() {
    QPainterPath path(QPointF(1.4, 8));
    path.lineTo(5, 4.2);
    path.lineTo(14.2, 4.2);
    path.lineTo(14.2, 11.8);
    path.lineTo(5, 11.8);
    path.closeSubpath();
    return path;
}

QPainterPath dots(double radius) {
    return circle(5, 8, radius) << circle(8, 8, radius) << circle(11, 8, radius);
}

struct Symbol {
    std::string_view name;
    Drawing (*draw)();
};
const std::array kSymbols = {
    Symbol{"eye.slash",
           [] {
               return Drawing{eye() << line({{2.6, 13.4}, {13.4, 2.6}}), {}};
           }},
    Symbol{"minus.circle.fill",
           [] {
               return Drawing{{}, disc(line({{5, 8}, {11, 8}}))};
           }},
    Symbol{"plus.circle.fill",
           [] {
               return Drawing{{}, disc(line({{5, 8}, {11, 8}}) << line({{8, 5}, {8, 11}}))};
           }},
    Symbol{"magnifyingglass",
           [] {
               return Drawing{circle(6.8, 6.8, 4.4) << line({{10.1, 10.1}, {13.8, 13.8}}), {}};
           }},
    Symbol{"arrow.down.circle",
           [] {
               return Drawing{circle(8, 8, 6.3)
                                  << line({{8, 4.8}, {8, 11}}) << line({{5.4, 8.5}, {8, 11.1}, {10.6, 8.5}}),
                              {}};
           }},
    Symbol{"square.and.arrow.up",
           [] {
               return Drawing{line({{5, 6.4}, {3.2, 6.4}, {3.2, 14}, {12.8, 14}, {12.8, 6.4}, {11, 6.4}})
                                  << line({{8, 10}, {8, 1.9}}) << line({{5.4, 4.4}, {8, 1.8}, {10.6, 4.4}}),
                              {}};
           }},
    Symbol{"info.circle",
           [] {
               return Drawing{circle(8, 8, 6.3) << line({{8, 7.6}, {8, 11.2}}), circle(8, 4.9, 0.95)};
           }},
    Symbol{"gearshape",
           [] {
               return Drawing{gear(), {}};
           }},
    Symbol{"pencil",
           [] {
               return Drawing{pencil(), {}};
           }},
    Symbol{"arrow.right.circle",
           [] {
               return Drawing{circle(8, 8, 6.3)
                                  << line({{4.9, 8}, {11, 8}}) << line({{8.5, 5.4}, {11.1, 8}, {8.5, 10.6}}),
                              {}};
           }},
    Symbol{"ellipsis.circle",
           [] {
               return Drawing{circle(8, 8, 6.3), dots(0.95)};
           }},
    Symbol{"trash",
           [] {
               return Drawing{trash(), {}};
           }},
    Symbol{"arrow.down.to.line",
           [] {
               return Drawing{line({{8, 2}, {8, 10.2}}) << line({{4.8, 7.2}, {8, 10.4}, {11.2, 7.2}})
                                                        << line({{3.4, 13.6}, {12.6, 13.6}}),
                              {}};
           }},
    Symbol{"tag.slash",
           [] {
               return Drawing{tag() << line({{2.2, 13.8}, {13.8, 2.2}}), circle(5, 8, 0.9)};
           }},
    Symbol{"dot.scope",
           [] {
               return Drawing{circle(8, 8, 4.9) << line({{8, 1.2}, {8, 4.6}}) << line({{8, 11.4}, {8, 14.8}})
                                                << line({{1.2, 8}, {4.6, 8}}) << line({{11.4, 8}, {14.8, 8}}),
                              circle(8, 8, 1.3)};
           }},
    Symbol{"link",
           [] {
               return Drawing{linkOfChain(), {}};
           }},
    Symbol{"checkmark",
           [] {
               return Drawing{line({{3, 8.6}, {6.4, 12}, {13, 4.4}}), {}};
           }},
    Symbol{"exclamationmark.triangle",
           [] {
               auto triangle = line({{8, 2}, {14.6, 13.6}, {1.4, 13.6}});
               triangle.closeSubpath();
               return Drawing{triangle << line({{8, 6.2}, {8, 9.6}}), circle(8, 11.6, 0.9)};
           }},
};

const Symbol* find(std::string_view name) {
    const auto* found = std::ranges::find(kSymbols, name, &Symbol::name);
    return found == kSymbols.end() ? nullptr : found;
}

void paint(const Symbol& symbol, const QColor& color, const QRectF& square, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / kGrid, square.height() / kGrid);
    const auto drawing = symbol.draw();
    painter.fillPath(drawing.filled, color);
    painter.strokePath(drawing.stroked, QPen(color, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
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
    explicit SymbolIcon(const Symbol& symbol) : symbol_(symbol) {}
    [[nodiscard]] QIconEngine* clone() const override { return new SymbolIcon(symbol_); }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        const auto palette = QGuiApplication::palette();
        const auto color = mode == QIcon::Disabled ? tertiaryLabelColor(palette)
                           : mode == QIcon::Selected
                               ? palette.color(QPalette::Active, QPalette::HighlightedText)
                               : labelColor(palette);
        ui::paint(symbol_, color, rect, *painter);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        auto pixmap = transparentPixmap(size.width(), 1);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

  private:
    const Symbol& symbol_;
};

}  // namespace

QPixmap symbolPixmap(std::string_view name, const QColor& color, double points, double devicePixelRatio) {
    const auto* symbol = find(name);
    if (!symbol) return {};
    auto pixmap = transparentPixmap(points, devicePixelRatio);
    QPainter painter(&pixmap);
    paint(*symbol, color, QRectF(0, 0, points, points), painter);
    return pixmap;
}

QIcon symbolIcon(std::string_view name) {
    const auto* symbol = find(name);
    return symbol ? QIcon(new SymbolIcon(*symbol)) : QIcon();
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
