#pragma once

#include <optional>

namespace platform {

// The system's own keyboard shortcuts, known by number: 79 moves one Space to the left, 81 one to the right.
class SymbolicHotKeys {
  public:
    virtual ~SymbolicHotKeys() = default;
    // Absent when the system does not say.
    [[nodiscard]] virtual std::optional<bool> isEnabled(int number) const = 0;
};

}  // namespace platform
