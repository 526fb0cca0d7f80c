#pragma once

#include <optional>
#include <string_view>

#include "KeyboardShortcuts/Shortcut.h"

namespace keyboard_shortcuts {

// What a shortcut is recorded for.
struct Name {
    std::string_view rawValue;  // of a literal
    std::optional<Shortcut> defaultShortcut;
};

}  // namespace keyboard_shortcuts
