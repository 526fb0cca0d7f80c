#pragma once

#include <QColor>

namespace ui {

// What WCAG 2.1 asks of text (criterion 1.4.3) and of the shapes that carry a meaning (1.4.11).
inline constexpr double kTextContrast = 4.5;
inline constexpr double kShapeContrast = 3;

// How much two opaque colours differ in lightness, from 1 to 21, as WCAG 2.1 defines it.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);
// What is seen of a colour that may be translucent, on a ground.
[[nodiscard]] QColor over(const QColor& ground, const QColor& color);
// The same, lighter still or darker still by no more than it takes to reach that contrast; on the ground's
// other side where its own has no room for it.
[[nodiscard]] QColor legible(const QColor& ground, const QColor& color, double atLeast);

}  // namespace ui
