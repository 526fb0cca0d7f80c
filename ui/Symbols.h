#pragma once

#include <QColor>
#include <QIcon>
#include <string_view>

#include "ui/QtColor.h"

namespace ui {

// A system symbol drawn in one colour, in a square of `points`; a null pixmap for a name without one.
[[nodiscard]] QPixmap symbolPixmap(std::string_view name, const QColor& color, double points,
                                   double devicePixelRatio);
// The same as an icon in a colour of the application's palette, which it follows; fainter where it is
// disabled, and in the highlighted text's colour where it is selected.
[[nodiscard]] QIcon symbolIcon(std::string_view name, PaletteColor color = labelColor);
// A filled circle in the middle of a square.
[[nodiscard]] QPixmap dotPixmap(const QColor& color, double diameter, double square, double devicePixelRatio);

}  // namespace ui
