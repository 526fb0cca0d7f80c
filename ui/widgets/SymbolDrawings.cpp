#include "ui/widgets/SymbolDrawings.h"

#include <QTransform>
#include <algorithm>
#include <array>
#include <cmath>

namespace ui {

namespace {

using Drawing = SymbolDrawing;

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

QPainterPath widened(const QPainterPath& path, double width) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    return stroker.createStroke(path);
}

// A disc with something cut out of it.
QPainterPath disc(const QPainterPath& cutOut) {
    return circle(8, 8, 6.6).subtracted(widened(cutOut, 1.6));
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

QPainterPath triangle() {
    auto path = line({{8, 2}, {14.6, 13.6}, {1.4, 13.6}});
    path.closeSubpath();
    return path;
}

// Part of a circle, from one angle counter-clockwise to another, in degrees from the right.
QPainterPath arc(double x, double y, double radius, double from, double to) {
    const QRectF square(x - radius, y - radius, 2 * radius, 2 * radius);
    QPainterPath path;
    path.arcMoveTo(square, from);
    path.arcTo(square, from, to - from);
    return path;
}

QPainterPath dashedCircle() {
    QPainterPath path;
    for (int dash = 0; dash < 10; ++dash) path = path << arc(8, 8, 6.3, dash * 36, dash * 36 + 21);
    return path;
}

QPainterPath shield() {
    QPainterPath path(QPointF(8, 1.5));
    path.lineTo(13.4, 3.5);
    path.lineTo(13.4, 7.8);
    path.cubicTo(13.4, 11.2, 11.2, 13.4, 8, 14.6);
    path.cubicTo(4.8, 13.4, 2.6, 11.2, 2.6, 7.8);
    path.lineTo(2.6, 3.5);
    path.closeSubpath();
    return path;
}

QPainterPath bodyOfLock() {
    QPainterPath path;
    path.addRoundedRect(5.6, 7.3, 4.8, 3.9, 0.8, 0.8);
    return path;
}

QPainterPath shackle() {
    return line({{6.5, 7.4}, {6.5, 6.3}}) << arc(8, 6.3, 1.5, 0, 180) << line({{9.5, 6.3}, {9.5, 7.4}});
}

QPainterPath stackedRectangles() {
    QPainterPath front;
    front.addRoundedRect(5, 5.7, 9.4, 7.9, 1.5, 1.5);
    QPainterPath back(QPointF(11, 3.6));
    back.quadTo(QPointF(10.7, 2.4), QPointF(9.5, 2.4));
    back.lineTo(3.1, 2.4);
    back.quadTo(QPointF(1.6, 2.4), QPointF(1.6, 3.9));
    back.lineTo(1.6, 8.8);
    back.quadTo(QPointF(1.6, 10), QPointF(2.8, 10.3));
    return front << back;
}

QPainterPath pointer() {
    auto path = line({{6, 5.8}, {6, 14.2}, {8.1, 12.2}, {9.4, 15}, {10.9, 14.3}, {9.6, 11.6}, {12.4, 11.4}});
    path.closeSubpath();
    return path;
}

// A hand with its first finger up.
QPainterPath hand() {
    QPainterPath path(QPointF(4.9, 10.4));
    path.lineTo(4.9, 4.9);
    path.arcTo(QRectF(4.9, 3.8, 2.2, 2.2), 180, -180);
    path.lineTo(7.1, 8.6);
    path.lineTo(10.9, 9.4);
    path.quadTo(QPointF(12.3, 9.8), QPointF(12.1, 11.2));
    path.lineTo(11.7, 13.2);
    path.quadTo(QPointF(11.4, 14.6), QPointF(10, 14.6));
    path.lineTo(7.4, 14.6);
    path.quadTo(QPointF(6.3, 14.6), QPointF(5.7, 13.7));
    path.lineTo(3.3, 10.6);
    path.quadTo(QPointF(2.7, 9.5), QPointF(3.7, 9.3));
    path.quadTo(QPointF(4.4, 9.3), QPointF(4.9, 10.4));
    return path;
}

QPainterPath scribble() {
    QPainterPath path(QPointF(9.2, 5.4));
    path.cubicTo(11.4, 6.4, 14.8, 5.6, 13.9, 3.8);
    path.cubicTo(13.2, 2.5, 10.6, 4.4, 10.9, 1.6);
    return path;
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
               return Drawing{triangle() << line({{8, 6.2}, {8, 9.6}}), circle(8, 11.6, 0.9)};
           }},
    Symbol{"exclamationmark.triangle.fill",
           [] {
               const auto mark = widened(line({{8, 6.2}, {8, 9.4}}), 1.6) << circle(8, 11.7, 0.95);
               return Drawing{triangle(), triangle().subtracted(mark)};
           }},
    Symbol{"checkmark.circle.fill",
           [] {
               return Drawing{{}, disc(line({{5, 8.3}, {7.2, 10.5}, {11.1, 5.7}}))};
           }},
    Symbol{"xmark.circle.fill",
           [] {
               return Drawing{{}, disc(line({{5.7, 5.7}, {10.3, 10.3}}) << line({{10.3, 5.7}, {5.7, 10.3}}))};
           }},
    Symbol{"circle.dashed",
           [] {
               return Drawing{dashedCircle(), {}};
           }},
    Symbol{"lock.shield",
           [] {
               return Drawing{shield() << shackle(), bodyOfLock()};
           }},
    Symbol{"tag.fill",
           [] {
               return Drawing{tag(), tag().subtracted(circle(5.2, 8, 1.15))};
           }},
    Symbol{"rectangle.on.rectangle",
           [] {
               return Drawing{stackedRectangles(), {}};
           }},
    Symbol{"cursorarrow.click.2",
           [] {
               return Drawing{arc(6, 5.8, 2.7, 30, 240) << arc(6, 5.8, 5, 45, 225), pointer()};
           }},
    Symbol{"hand.draw",
           [] {
               return Drawing{hand() << scribble(), {}};
           }},
};

}  // namespace

std::optional<SymbolDrawing> drawingOf(std::string_view name) {
    const auto* found = std::ranges::find(kSymbols, name, &Symbol::name);
    return found == kSymbols.end() ? std::nullopt : std::optional(found->draw());
}

}  // namespace ui
