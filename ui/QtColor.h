#pragma once

#include <QColor>
#include <QPalette>
#include <algorithm>

#include "platform/Color.h"

namespace ui {

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

// The label colours of this palette, each fainter than the one before.
[[nodiscard]] inline QColor labelColor(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::WindowText);
}
[[nodiscard]] inline QColor secondaryLabelColor(const QPalette& palette) {
    auto color = labelColor(palette);
    color.setAlphaF(0.62F);
    return color;
}
[[nodiscard]] inline QColor tertiaryLabelColor(const QPalette& palette) {
    auto color = labelColor(palette);
    color.setAlphaF(0.42F);
    return color;
}
[[nodiscard]] inline bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Window).lightnessF() < 0.5F;
}
// An orange that can be read on the palette's windows.
[[nodiscard]] inline QColor warningColor(const QPalette& palette) {
    return isDark(palette) ? QColor(255, 179, 64) : QColor(180, 83, 9);
}

// A green that can be seen on them.
[[nodiscard]] inline QColor grantedColor(const QPalette& palette) {
    return isDark(palette) ? QColor(50, 215, 75) : QColor(32, 145, 60);
}

}  // namespace ui
