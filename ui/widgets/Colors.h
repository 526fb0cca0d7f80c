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
// What is seen of a colour that may be translucent, on a ground.
[[nodiscard]] QColor over(const QColor& ground, const QColor& color);
// The same, lighter still or darker still by no more than it takes to reach that contrast; on the ground's
// other side where its own has no room for it.
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

// What is chosen or on is filled with the accent, which the palette's highlighted text can be read on.
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
// What outlines the shapes that can be told from a window by it alone.
[[nodiscard]] inline QColor outlineColor(const QPalette& palette) {
    auto color = labelColor(palette);
    color.setAlphaF(0.3F);
    return legible(windowColor(palette), color, kShapeContrast);
}

// A text as markup for a label: bold what is between two asterisks each, in the font of one width what is
// between two backticks. Everything else is shown as it is.
[[nodiscard]] QString emphasized(std::string_view text);
// The same as it is read aloud.
[[nodiscard]] QString withoutEmphasis(std::string_view text);

}  // namespace ui
