#pragma once

#include <QColor>
#include <QPixmap>

namespace ui {

// The application's mark in the desktop's bar: the silhouette of a luggage tag in a square of `points`, in
// one colour. With a `halo` it has a thin edge in that colour, to be seen on any ground.
[[nodiscard]] QPixmap statusIcon(const QColor& color, double points, double devicePixelRatio,
                                 const QColor& halo = Qt::transparent);

}  // namespace ui
