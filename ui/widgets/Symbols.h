#pragma once

#include <QBrush>
#include <QColor>
#include <QIcon>
#include <string_view>

#include "ui/widgets/Colors.h"

class QPainter;

namespace ui {

// A square of `points` to draw in.
[[nodiscard]] QPixmap transparentPixmap(double points, double devicePixelRatio);
// A system symbol drawn in one colour, in a square of `points`; a null pixmap for a name without one.
[[nodiscard]] QPixmap symbolPixmap(std::string_view name, const QColor& color, double points,
                                   double devicePixelRatio);
// The same as an icon in a colour of the application's palette, which it follows; fainter where it is
// disabled, and in the highlighted text's colour where it is selected.
[[nodiscard]] QIcon symbolIcon(std::string_view name, PaletteColor color = labelColor);
// A filled circle. Where its colour can hardly be told from the ground, a rim can.
void drawDot(QPainter& painter, const QRectF& circle, const QBrush& fill, const QColor& ground);
[[nodiscard]] QPixmap dotOnGround(const QColor& color, const QColor& ground, double diameter,
                                  double devicePixelRatio);
// The same on the rows of a menu.
[[nodiscard]] QIcon dotIcon(const QColor& color, double diameter);

}  // namespace ui
