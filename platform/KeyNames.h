#pragma once

#include <cstdint>
#include <string>

namespace platform {

// What the keys say on the user's keyboard.
class KeyNames {
  public:
    virtual ~KeyNames() = default;

    // The text that a virtual key code types without modifiers in the current layout; empty when it types
    // none.
    [[nodiscard]] virtual std::string textOf(std::uint16_t keyCode) const = 0;
};

}  // namespace platform
