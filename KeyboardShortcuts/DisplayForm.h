#pragma once

#include <string>

#include "KeyboardShortcuts/Shortcut.h"
#include "platform/Keys.h"

namespace keyboard_shortcuts {

// A shortcut as it is shown to the user: the modifiers in their fixed order and the key as the current layout
// names it, as in "⌃⌥⌘H". A key without a name is shown by its number.
[[nodiscard]] std::string displayForm(const Shortcut& shortcut, const platform::KeyNames& names);

}  // namespace keyboard_shortcuts
