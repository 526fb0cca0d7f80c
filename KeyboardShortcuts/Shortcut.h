#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Keys.h"

namespace keyboard_shortcuts {

// The bits of `Shortcut::carbonModifiers`.
namespace carbon {
inline constexpr std::int32_t kCommand = 0x100;
inline constexpr std::int32_t kShift = 0x200;
inline constexpr std::int32_t kOption = 0x800;
inline constexpr std::int32_t kControl = 0x1000;
}  // namespace carbon

// A key with modifiers, in the numbers in which shortcuts are stored.
struct Shortcut {
    std::int32_t carbonKeyCode = 0;
    std::int32_t carbonModifiers = 0;
    auto operator<=>(const Shortcut&) const = default;
};

[[nodiscard]] Shortcut shortcutOf(const platform::KeyEvent& event);
// Absent for a key code that no keyboard has.
[[nodiscard]] std::optional<platform::KeyEvent> keyEventOf(const Shortcut& shortcut);
// Whether it may be taken from every other program: one that types text may not, nor one that no key gives.
[[nodiscard]] bool isAllowed(const Shortcut& shortcut);

// The stored form, a JSON object with the fields' names as keys.
[[nodiscard]] std::string encode(const Shortcut& shortcut);
[[nodiscard]] std::optional<Shortcut> decode(std::string_view json);

// A shortcut as it is shown to the user: the modifiers in their fixed order and the key as the current layout
// names it, as in "⌃⌥⌘H". A key without a name is shown by its number.
[[nodiscard]] std::string displayForm(const Shortcut& shortcut, const platform::KeyNames& names);

// What a shortcut is recorded for.
struct Name {
    std::string_view rawValue;  // of a literal
    std::optional<Shortcut> defaultShortcut;
};

}  // namespace keyboard_shortcuts
