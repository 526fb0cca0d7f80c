#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <string>
#include <string_view>

#include "ui/QtColor.h"

class QPushButton;
class QToolButton;

namespace ui {

// What the forms are made of. Texts are shown as they are, never as markup; colours follow the application's
// palette.

[[nodiscard]] QLabel* makeHeading(std::string_view text);
// In the usual style; wraps.
[[nodiscard]] QLabel* makeText(std::string_view text);
// In the secondary style, or in another of the palette's colours; wraps.
[[nodiscard]] QLabel* makeSecondary(std::string_view text, QFont::Weight weight = QFont::Normal,
                                    PaletteColor color = secondaryLabelColor);
// A label in another size and weight.
QLabel* inSize(QLabel* label, int pixels, QFont::Weight weight);
// A system symbol in a square of so many points.
[[nodiscard]] QLabel* makeSymbol(std::string_view name, int points, PaletteColor color);
// The system's font of characters of one width, at a size in pixels.
[[nodiscard]] QFont fixedFont(int size);
// A rounded text field. Typed text is at most kLongestLabel characters long.
[[nodiscard]] QLineEdit* makeLabelField(const std::string& text);
inline constexpr int kLongestLabel = 10'000;
// A button that Return presses only when it is the default one of its window.
[[nodiscard]] QPushButton* makePushButton(std::string_view title);
// A flat button with a system symbol; the help is its tooltip and its accessible name.
[[nodiscard]] QToolButton* makeSymbolButton(std::string_view symbol, std::string_view help);

}  // namespace ui
