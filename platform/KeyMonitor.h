#pragma once

#include <cstdint>
#include <functional>

#include "platform/Subscription.h"

namespace platform {

// The modifiers of a key event.
namespace modifier {
inline constexpr std::uint64_t kCapsLock = 1U << 16;
inline constexpr std::uint64_t kShift = 1U << 17;
inline constexpr std::uint64_t kControl = 1U << 18;
inline constexpr std::uint64_t kOption = 1U << 19;
inline constexpr std::uint64_t kCommand = 1U << 20;
}  // namespace modifier

// The virtual key codes that mean something to the application. They name places on the keyboard, not
// characters.
namespace key {
inline constexpr std::uint16_t kReturn = 36;
inline constexpr std::uint16_t kTab = 48;
inline constexpr std::uint16_t kDelete = 51;  // to the left of the cursor
inline constexpr std::uint16_t kEscape = 53;
inline constexpr std::uint16_t kKeypadEnter = 76;
inline constexpr std::uint16_t kF3 = 99;
inline constexpr std::uint16_t kForwardDelete = 117;
inline constexpr std::uint16_t kLeftArrow = 123;
inline constexpr std::uint16_t kRightArrow = 124;
inline constexpr std::uint16_t kDownArrow = 125;
inline constexpr std::uint16_t kUpArrow = 126;
inline constexpr std::uint16_t kMissionControl = 160;
}  // namespace key

struct KeyEvent {
    std::uint16_t keyCode = 0;
    std::uint64_t modifierFlags = 0;
    bool operator==(const KeyEvent&) const = default;
};

// The keys that the user presses in other programs. The desktop's own shortcuts come as the keys that mean
// the same to the application: one that opens the overview as kMissionControl, one that switches the Space as
// Control with the left or the right arrow. Any other arrow and F3 are left out: these are the keys of the
// program that gets them.
class KeyMonitor {
  public:
    virtual ~KeyMonitor() = default;

    // Calls `handler` on the main thread for every such key that goes down, repeats included, while another
    // program has the keyboard. No program loses a key by it. The subscription is inactive where keys cannot
    // be seen.
    virtual Subscription addGlobalKeyDownMonitor(std::function<void(const KeyEvent&)> handler) = 0;
};

}  // namespace platform
