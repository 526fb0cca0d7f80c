#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace platform::x11 {

// How the user opens the desktop's overview.
struct OverviewShortcut {
    enum class When : std::uint8_t {
        Pressed,
        Tapped  // pressed and let go with nothing in between
    };
    xcb_keysym_t symbol = XCB_NO_SYMBOL;  // a letter in lower case
    std::uint64_t modifierFlags = 0;      // exactly these of Shift, Control, Option and Command
    When when = When::Pressed;
    bool operator==(const OverviewShortcut&) const = default;
};

// Qt's key code with its modifiers, as KDE's programs exchange shortcuts; absent when no key gives it.
[[nodiscard]] std::optional<OverviewShortcut> shortcutOfQtKey(std::uint32_t qtKey);
// The same the other way round, for a shortcut that is pressed.
[[nodiscard]] std::optional<std::uint32_t> qtKeyOf(const OverviewShortcut& shortcut);
// Those of the keys that there are.
[[nodiscard]] std::vector<OverviewShortcut> shortcutsOfQtKeys(std::span<const std::uint32_t> qtKeys);
// GNOME Shell's: a tap on either Super key.
[[nodiscard]] std::vector<OverviewShortcut> superTaps();

}  // namespace platform::x11
