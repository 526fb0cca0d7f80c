#include "ui/status/StatusIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "orvellos/menu/StatusItemController.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Symbols.h"

namespace ui {

namespace {

constexpr double kTurn = 30;  // degrees, clockwise on the screen: the hole comes to the upper left
constexpr double kLength = 0.82;
constexpr double kHeight = 0.52;
constexpr double kEdge = 9;  // that part of the square
constexpr double kLine = 1.6;
constexpr double kSlashGap = 0.7;
constexpr double kDotRadius = 0.2;
constexpr double kDotGap = 1;
const QColor kDark(28, 28, 32);

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

// The colour that can be told from that one.
QColor opposite(const QColor& color) {
    return contrast(Qt::white, color) > contrast(kDark, color) ? QColor(Qt::white) : kDark;
}

// Fills of a drawing and the line around them, which is transparent where none is needed.
struct Colors {
    QColor fill;
    QColor edge = Qt::transparent;
};

Colors colorsFor(const std::optional<QColor>& tag, const std::optional<QColor>& ground) {
    const auto fill = tag ? *tag : ground ? opposite(*ground) : QColor(Qt::white);
    if (!ground) return {fill, opposite(fill)};
    const bool isTold = contrast(fill, *ground) >= kShapeContrast;
    return {fill, isTold ? QColor(Qt::transparent) : opposite(*ground)};
}

void drawTag(QPainter& painter, const Colors& colors, double points) {
    painter.save();
    painter.translate(points / 2, points / 2);
    painter.rotate(kTurn);
    const double length = kLength * points;
    const double height = kHeight * points;
    const auto body = tagBody(length, height);
    if (colors.edge.alpha() > 0) painter.strokePath(body, QPen(colors.edge, points / kEdge));
    painter.fillPath(body, colors.fill);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const QPointF hole(-length / 2 + 0.36 * height, 0);
    const double radius = 0.12 * height;
    painter.drawEllipse(hole, radius, radius);
    if (colors.edge.alpha() > 0) {
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setPen(QPen(colors.edge, points / (2 * kEdge)));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(hole, radius, radius);
    }
    painter.restore();
}

QPainterPath stroked(const QPainterPath& path, double width) {
    QPainterPathStroker stroker;
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    stroker.setWidth(width);
    return stroker.createStroke(path);
}

// An eye with a slash, on a grid of 16.
QPainterPath closedEye() {
    QPainterPath lids(QPointF(1, 8));
    lids.quadTo(QPointF(8, -0.4), QPointF(15, 8));
    lids.quadTo(QPointF(8, 16.4), QPointF(1, 8));
    QPainterPath pupil;
    pupil.addEllipse(QPointF(8, 8), 2.4, 2.4);
    QPainterPath slash(QPointF(2.6, 13.8));
    slash.lineTo(13.4, 2.2);
    return stroked(lids, kLine)
        .united(pupil)
        .subtracted(stroked(slash, kLine + 2 * kSlashGap))
        .united(stroked(slash, kLine));
}

void drawClosedEye(QPainter& painter, const Colors& colors, double points) {
    painter.save();
    painter.scale(points / 16, points / 16);
    const auto eye = closedEye();
    if (colors.edge.alpha() > 0) painter.strokePath(eye, QPen(colors.edge, 16 / kEdge));
    painter.fillPath(eye, colors.fill);
    painter.restore();
}

// In the lower right corner, with a gap around it.
void drawDot(QPainter& painter, const Colors& colors, double points) {
    const double radius = kDotRadius * points;
    const QPointF center(points - radius - kDotGap / 2, points - radius - kDotGap / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.drawEllipse(center, radius + kDotGap, radius + kDotGap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(colors.edge, 1));
    painter.setBrush(colors.fill);
    painter.drawEllipse(center, radius, radius);
}

}  // namespace

QPixmap statusIcon(const QColor& color, double points, double devicePixelRatio) {
    auto pixmap = transparentPixmap(points, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    drawTag(painter, {color}, points);
    return pixmap;
}

QPixmap statusIcon(const platform::StatusTitle& title, const std::optional<QColor>& ground, double points,
                   double devicePixelRatio) {
    auto pixmap = transparentPixmap(points, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto tag = title.label ? std::optional(toQColor(title.label->dot)) : std::nullopt;
    if (!title.hasHiddenSymbol) {
        drawTag(painter, colorsFor(tag, ground), points);
        return pixmap;
    }
    drawClosedEye(painter, colorsFor({}, ground), points);
    if (tag) drawDot(painter, colorsFor(tag, ground), points);
    return pixmap;
}

QString statusWords(const platform::StatusTitle& title) {
    QStringList parts{toQString(orvellos::StatusItemController::kAccessibilityDescription)};
    if (title.label) parts << toQString(title.label->text);
    if (title.hasHiddenSymbol) parts << toQString(orvellos::StatusItemController::kHiddenDescription);
    return parts.join(QStringLiteral(" — "));
}

void describeStatusItem(QWidget& widget, const platform::StatusTitle& title) {
    const auto name = toQString(orvellos::StatusItemController::kAccessibilityDescription);
    const auto words = statusWords(title);
    widget.setWindowTitle(name);  // by which some trays remember what the user has put where
    widget.setAccessibleName(words);
    setHelp(widget, words.toStdString());
}

}  // namespace ui
