#pragma once

#include <xcb/xcb.h>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/Keys.h"
#include "platform/x11/input/X11Keyboard.h"

namespace platform::x11 {

// Keys that do something on the desktop, by the symbol that they have in the user's layout.
struct KeyShortcut {
    enum class When : std::uint8_t {
        Pressed,
        Tapped  // pressed and let go with nothing in between
    };
    xcb_keysym_t symbol = XCB_NO_SYMBOL;  // a letter in lower case
    std::uint64_t modifierFlags = 0;      // exactly these of Shift, Control, Option and Command
    When when = When::Pressed;
    bool operator==(const KeyShortcut&) const = default;
};

// One that means to the application what another key does.
struct TranslatedShortcut {
    KeyShortcut keys;
    KeyEvent meaning;
};

// Qt's key code with its modifiers, as KDE's programs exchange shortcuts; absent when no key gives it.
[[nodiscard]] std::optional<KeyShortcut> shortcutOfQtKey(std::uint32_t qtKey);
// The same the other way round, for a shortcut that is pressed.
[[nodiscard]] std::optional<std::uint32_t> qtKeyOf(const KeyShortcut& shortcut);
// A tap on either Super key.
[[nodiscard]] std::vector<KeyShortcut> superTaps();

// The keys of an accelerator as GTK writes them, "<Primary><Alt>Left"; absent when the text is none.
[[nodiscard]] std::optional<KeyShortcut> shortcutOfAccelerator(std::string_view accelerator);
// The same of keys that are pressed, by the layout in effect; absent for a key without a symbol.
[[nodiscard]] std::optional<KeyShortcut> shortcutOfKeys(const KeyEvent& keys, const X11Keyboard& keyboard);

}  // namespace platform::x11
