#pragma once

#include <QSize>

class QPainter;
class QStyleOptionMenuItem;

namespace ui::menu_rows {

// How the rows of every menu look: a column for checkmarks beside the one for icons, which most styles let
// share one place. A menu without one or the other has no column for it.

inline constexpr int kEdge = 5;  // around a menu's rows

[[nodiscard]] QSize sizeOf(const QStyleOptionMenuItem& item);
void draw(const QStyleOptionMenuItem& item, QPainter& painter);

}  // namespace ui::menu_rows
