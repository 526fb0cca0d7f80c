#pragma once

#include <Qt>
#include <cstdint>
#include <optional>

#include "platform/x11/input/KeyChord.h"

namespace ui {

// The toolkit's modifiers for those of platform::modifier, key by key: Command is Meta. And back.
[[nodiscard]] Qt::KeyboardModifiers toolkitModifiers(std::uint64_t modifierFlags);
[[nodiscard]] std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers);

// The chord of a key code with its modifiers (QKeyCombination::toCombined), as KDE's programs exchange
// shortcuts; absent when no key gives it. And back.
[[nodiscard]] std::optional<platform::x11::KeyChord> chordOfQtKey(std::uint32_t qtKey);
[[nodiscard]] std::optional<std::uint32_t> qtKeyOf(const platform::x11::KeyChord& chord);

}  // namespace ui
