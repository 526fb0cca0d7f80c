#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "ui/widgets/Colors.h"

class QHBoxLayout;
class QPushButton;
class QScrollArea;
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
// A label so many times as large as the system font, and in another weight.
QLabel* inSize(QLabel* label, double factor, QFont::Weight weight);
// A system symbol in a square of so many points, or more with a larger font.
[[nodiscard]] QLabel* makeSymbol(std::string_view name, int points, PaletteColor color);
// A filled circle of so many points, likewise.
[[nodiscard]] QLabel* makeDot(const QColor& fill, int points);
// Lets content that is higher than its place be scrolled. The content takes the keyboard focus, not the area.
[[nodiscard]] QScrollArea* makeScrollArea(QWidget* content = nullptr);
// A rounded text field. Typed text is at most kLongestLabel characters long.
[[nodiscard]] QLineEdit* makeLabelField(const std::string& text);
inline constexpr int kLongestLabel = 10'000;
// A button that Return presses only when it is the default one of its window.
[[nodiscard]] QPushButton* makePushButton(std::string_view title);
// Buttons in a line at the lower edge of a form. The default one is the last.
[[nodiscard]] QHBoxLayout* makeButtonRow(const std::vector<QPushButton*>& atStart,
                                         const std::vector<QPushButton*>& atEnd);
// A flat button with a system symbol; the help is its tooltip and its accessible name.
[[nodiscard]] QToolButton* makeSymbolButton(std::string_view symbol, std::string_view help);

}  // namespace ui
