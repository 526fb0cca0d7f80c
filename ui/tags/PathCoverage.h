#pragma once

#include <QImage>
#include <QPainterPath>

namespace ui {

// How much of each pixel of an image of that size the inside of a path covers, by the odd-even rule: its
// area, as Alpha8. For small pictures that are waited for: the toolkit's own fills start threads for more
// than a few lines, and wait for them, which on a busy machine takes longer than all the rest.
[[nodiscard]] QImage pathCoverage(const QPainterPath& path, const QSize& size);

}  // namespace ui
