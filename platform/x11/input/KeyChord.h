#pragma once

#include <xcb/xcb.h>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/Keys.h"
#include "platform/x11/input/X11Keyboard.h"

namespace platform::x11 {

// A key with modifiers, by the symbol that the key has in the user's layout.
struct KeyChord {
    enum class When : std::uint8_t {
        Pressed,
        Tapped  // pressed and let go with nothing in between
    };
    xcb_keysym_t symbol = XCB_NO_SYMBOL;  // XKB_KEY_…; a letter in lower case
    std::uint64_t modifierFlags = 0;      // exactly these of Shift, Control, Option and Command
    When when = When::Pressed;
    bool operator==(const KeyChord&) const = default;
};

// A shortcut of the desktop's, with the key that means the same to the application.
struct TranslatedShortcut {
    KeyChord chord;
    KeyEvent meaning;
};

// A tap on either Super key.
[[nodiscard]] std::vector<KeyChord> superTaps();
// The chord of an accelerator as GTK writes it, "<Primary><Alt>Left"; absent when the text is none.
[[nodiscard]] std::optional<KeyChord> chordOfAccelerator(std::string_view accelerator);
// The chord of pressed keys in the layout that is in effect; absent for a key without a symbol.
[[nodiscard]] std::optional<KeyChord> chordOfKeys(const KeyEvent& keys, const X11Keyboard& keyboard);

}  // namespace platform::x11
