#pragma once

#include <QPalette>

namespace ui {

// Whether the user's desktop is light or dark, as far as it says.
enum class ColorScheme { Unknown, Light, Dark };

// The palette with every text on its ground readable, which a desktop's own need not be.
[[nodiscard]] QPalette readable(QPalette palette);

// Makes the application's windows look as they should, light or dark. The toolkit's own colours stay where
// they are so already, or the desktop does not say; but no text stays too faint to be read.
void applyColorScheme(ColorScheme scheme);

}  // namespace ui
