#pragma once

#include <QColor>
#include <QPalette>
#include <QString>
#include <algorithm>
#include <string_view>

#include "platform/Geometry.h"

namespace ui {

// What WCAG 2.1 asks of text (criterion 1.4.3) and of the shapes that carry a meaning (1.4.11).
inline constexpr double kTextContrast = 4.5;
inline constexpr double kShapeContrast = 3;

// How much two opaque colours differ in lightness, from 1 to 21, as WCAG 2.1 defines it.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);
// A colour, which may be translucent, as it appears on a ground.
[[nodiscard]] QColor over(const QColor& ground, const QColor& color);
// The same, made lighter or darker by no more than that contrast needs: away from the ground, or beyond it
// where there is no room on that side.
[[nodiscard]] QColor legible(const QColor& ground, const QColor& color, double atLeast);

[[nodiscard]] inline QColor toQColor(const platform::Color& color) {
    const auto component = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                            component(color.alpha));
}
[[nodiscard]] inline platform::Color toColor(const QColor& color) {
    return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

inline const QColor kSystemBlue(0, 122, 255);

// One of the colours that depend on a palette.
using PaletteColor = QColor (*)(const QPalette&);

[[nodiscard]] inline QColor windowColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Window);
}
[[nodiscard]] inline bool isDark(const QPalette& palette) {
    return windowColor(palette).lightnessF() < 0.5F;
}

// The label colours of this palette, each fainter than the one before, and none too faint to be read.
[[nodiscard]] inline QColor labelColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::WindowText);
}
[[nodiscard]] inline QColor fainterLabelColor(const QPalette& palette, float alpha) {
    auto color = labelColor(palette);
    color.setAlphaF(alpha);
    return legible(windowColor(palette), color, kTextContrast);
}
[[nodiscard]] inline QColor secondaryLabelColor(const QPalette& palette) {
    return fainterLabelColor(palette, 0.62F);
}
[[nodiscard]] inline QColor tertiaryLabelColor(const QPalette& palette) {
    return fainterLabelColor(palette, 0.42F);
}
// An orange that can be read on the palette's windows, and a green and a yellow that can be seen there.
[[nodiscard]] inline QColor warningColor(const QPalette& palette) {
    return legible(windowColor(palette), QColor(255, 159, 10), kTextContrast);
}
[[nodiscard]] inline QColor grantedColor(const QPalette& palette) {
    return legible(windowColor(palette), QColor(48, 209, 88), kShapeContrast);
}

// The accent fills chosen and switched-on controls; the palette's highlighted text can be read on it.
[[nodiscard]] inline QColor accentColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Highlight);
}
[[nodiscard]] inline QColor onAccentColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::HighlightedText);
}
// The accent as a shape of its own on a window.
[[nodiscard]] inline QColor accentShapeColor(const QPalette& palette) {
    return legible(windowColor(palette), accentColor(palette), kShapeContrast);
}
// The outline of shapes that could not be told from a window without it.
[[nodiscard]] inline QColor outlineColor(const QPalette& palette) {
    auto color = labelColor(palette);
    color.setAlphaF(0.3F);
    return legible(windowColor(palette), color, kShapeContrast);
}

// A text as markup for a label: words between **two asterisks** are bold, those between `backticks` have the
// monospaced font. Everything else is shown as it is.
[[nodiscard]] QString emphasized(std::string_view text);
// The same as it is read aloud.
[[nodiscard]] QString withoutEmphasis(std::string_view text);

}  // namespace ui
