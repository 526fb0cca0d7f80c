#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

#include "platform/Keys.h"

namespace platform::x11 {

// The application's virtual key code for a place on the keyboard, an X key code (evdev's code + 8), and back;
// absent where one side has no such key. Modifier keys have no virtual key code: they only show in the flags.
[[nodiscard]] std::optional<std::uint16_t> virtualKeyCode(std::uint32_t xKeyCode);
[[nodiscard]] std::optional<xcb_keycode_t> xKeyCode(std::uint16_t virtualKeyCode);

// The flags of platform::modifier in an X modifier state, and back. Option is Mod1 and Command is Mod4, as
// the keyboard rules of X have Alt and Super; other bits are left out.
[[nodiscard]] std::uint64_t modifierFlags(std::uint32_t xState);
[[nodiscard]] std::uint16_t xModifiers(std::uint64_t modifierFlags);

}  // namespace platform::x11
