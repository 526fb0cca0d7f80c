#pragma once

#include <QColor>
#include <QPixmap>

namespace ui {

// The application's mark in the desktop's bar: the silhouette of a luggage tag in a square of `points`.
[[nodiscard]] QPixmap statusIcon(const QColor& color, double points, double devicePixelRatio);
// The same in white with a dark edge, for a ground that is not known.
[[nodiscard]] QPixmap statusIconForAnyGround(double points, double devicePixelRatio);

}  // namespace ui
