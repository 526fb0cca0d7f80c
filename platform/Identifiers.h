#pragma once

#include <compare>
#include <cstdint>

namespace platform {

// The window server's number for a window.
struct WindowNumber {
    std::int64_t value = 0;
    auto operator<=>(const WindowNumber&) const = default;
};

// The window server's number for a Space; 0 is never an id.
struct ManagedSpaceId {
    std::uint64_t value = 0;
    auto operator<=>(const ManagedSpaceId&) const = default;
};

// The window server's number for a display.
struct DisplayId {
    std::uint32_t value = 0;
    auto operator<=>(const DisplayId&) const = default;
};

}  // namespace platform
