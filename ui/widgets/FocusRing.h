#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>

#include "ui/widgets/QtColor.h"

namespace ui {

// The one mark of what has the keyboard: a line along the inner side of an outline, set off from what it
// surrounds by a thinner one in the colour of the ground, so that it is seen around a shape in its own
// colour, too.
inline constexpr double kFocusRing = 2;
inline constexpr double kFocusGap = 1;
inline constexpr double kFocusRoom = kFocusRing + kFocusGap;

[[nodiscard]] inline QColor focusRingColor(const QPalette& palette) {
    return legible(windowColor(palette), accentColor(palette), kTextContrast);
}
void drawFocusRing(QPainter& painter, const QRectF& outline, double corner, const QPalette& palette);

}  // namespace ui
