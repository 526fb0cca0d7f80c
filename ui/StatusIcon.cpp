#include "ui/StatusIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace ui {

namespace {

constexpr double kTurn = 30;  // degrees, clockwise on the screen: the hole comes to the upper left
constexpr double kLength = 0.82;
constexpr double kHeight = 0.52;
constexpr double kEdge = 9;  // that part of the square

// The body, lying along the x axis around the origin, its point to the left.
QPainterPath tagBody(double length, double height) {
    const double corner = 0.22 * height;
    const double shoulder = 0.14 * height;
    const double point = std::min(0.45 * length, 0.32 * height + shoulder);
    const double left = -length / 2;
    const double right = length / 2;
    const double top = -height / 2;
    const double bottom = height / 2;
    const double tip = 0.30 * height;  // half the height of the blunt end
    QPainterPath path(QPointF(left + point + shoulder, top));
    path.lineTo(right - corner, top);
    path.arcTo(QRectF(right - 2 * corner, top, 2 * corner, 2 * corner), 90, -90);
    path.lineTo(right, bottom - corner);
    path.arcTo(QRectF(right - 2 * corner, bottom - 2 * corner, 2 * corner, 2 * corner), 0, -90);
    path.lineTo(left + point + shoulder, bottom);
    path.quadTo(QPointF(left + point, bottom), QPointF(left + point - shoulder, bottom - shoulder));
    path.lineTo(left + shoulder, tip);
    path.quadTo(QPointF(left, 0), QPointF(left + shoulder, -tip));
    path.lineTo(left + point - shoulder, top + shoulder);
    path.quadTo(QPointF(left + point, top), QPointF(left + point + shoulder, top));
    path.setFillRule(Qt::WindingFill);
    return path;
}

QPixmap draw(const QColor& color, const QColor& edge, double points, double devicePixelRatio) {
    const int pixels = static_cast<int>(std::ceil(points * devicePixelRatio));
    QPixmap pixmap(pixels, pixels);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(points / 2, points / 2);
    painter.rotate(kTurn);
    const double length = kLength * points;
    const double height = kHeight * points;
    const auto body = tagBody(length, height);
    if (edge.alpha() > 0) painter.strokePath(body, QPen(edge, points / kEdge));
    painter.fillPath(body, color);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const QPointF hole(-length / 2 + 0.36 * height, 0);
    const double radius = 0.12 * height;
    painter.drawEllipse(hole, radius, radius);
    if (edge.alpha() == 0) return pixmap;
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(edge, points / (2 * kEdge)));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(hole, radius, radius);
    return pixmap;
}

}  // namespace

QPixmap statusIcon(const QColor& color, double points, double devicePixelRatio) {
    return draw(color, Qt::transparent, points, devicePixelRatio);
}

QPixmap statusIconForAnyGround(double points, double devicePixelRatio) {
    return draw(Qt::white, QColor(20, 20, 24, 210), points, devicePixelRatio);
}

}  // namespace ui
