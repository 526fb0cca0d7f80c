#pragma once

#include <QColor>
#include <QIcon>
#include <string_view>

namespace ui {

// A system symbol drawn in one colour, in a square of `points`; a null pixmap for a name without one.
[[nodiscard]] QPixmap symbolPixmap(std::string_view name, const QColor& color, double points,
                                   double devicePixelRatio);
// The same as an icon in the application's label colour, fainter where it is disabled, and in the highlighted
// text's colour where it is selected. It follows the application's palette.
[[nodiscard]] QIcon symbolIcon(std::string_view name);
// A filled circle in the middle of a square.
[[nodiscard]] QPixmap dotPixmap(const QColor& color, double diameter, double square, double devicePixelRatio);

}  // namespace ui
