#pragma once

namespace ui {

// Whether the user's desktop is light or dark, as far as it says.
enum class ColorScheme { Unknown, Light, Dark };

// Makes the application's windows light or dark. The toolkit's own colours stay where they are so already, or
// the desktop does not say.
void applyColorScheme(ColorScheme scheme);

}  // namespace ui
