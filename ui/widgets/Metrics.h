#pragma once

#include <QFont>

namespace ui {

// Lengths and font sizes in the panels are given for a system font of 10 points, and grow with a larger one.

[[nodiscard]] int scaled(int length);
// The system font, so many times as large.
[[nodiscard]] QFont scaledFont(double factor, QFont::Weight weight = QFont::Normal);
// The system's font of characters of one width, likewise.
[[nodiscard]] QFont fixedFont(double factor);

namespace font_scale {

inline constexpr double kTitle = 1.6;
inline constexpr double kSearch = 1.35;
inline constexpr double kHeading = 1.15;
inline constexpr double kBody = 1;
inline constexpr double kSecondary = 0.92;
inline constexpr double kFineprint = 0.83;

}  // namespace font_scale

// The height of buttons, fields and pickers, which stand in one line.
[[nodiscard]] int controlHeight();
inline constexpr double kCorner = 6;

}  // namespace ui
