#pragma once

#include <optional>
#include <string_view>

#include "platform/Keys.h"
#include "platform/x11/input/KeyShortcut.h"
#include "platform/x11/input/X11Keyboard.h"

namespace platform::x11 {

// The keys of an accelerator as GTK writes them, "<Primary><Alt>Left"; absent when the text is none.
[[nodiscard]] std::optional<KeyShortcut> shortcutOfAccelerator(std::string_view accelerator);
// The same of keys that are pressed, by the layout in effect; absent for a key without a symbol.
[[nodiscard]] std::optional<KeyShortcut> shortcutOfKeys(const KeyEvent& keys, const X11Keyboard& keyboard);

}  // namespace platform::x11
