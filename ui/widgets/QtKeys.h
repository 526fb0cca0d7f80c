#pragma once

#include <Qt>
#include <cstdint>

namespace ui {

// The toolkit's modifiers for those of platform::modifier, key by key: Command is Meta. And back.
[[nodiscard]] Qt::KeyboardModifiers toolkitModifiers(std::uint64_t modifierFlags);
[[nodiscard]] std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers);

}  // namespace ui
