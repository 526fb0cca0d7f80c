#pragma once

#include <cstdint>
#include <functional>

#include "platform/KeyMonitor.h"
#include "platform/Subscription.h"

namespace platform {

// How a registration ended, in the numbers that the log and the user's bug reports have always had.
namespace hot_key_status {
inline constexpr std::int32_t kRegistered = 0;
inline constexpr std::int32_t kNoSuchKey = -50;
inline constexpr std::int32_t kAlreadyTaken = -9878;
}  // namespace hot_key_status

// A registered key that went down, or came up again.
struct HotKeyEvent {
    std::uint32_t id = 0;
    bool isPressed = false;
};

// Keys that reach the application whichever program has the keyboard.
class HotKeyService {
  public:
    virtual ~HotKeyService() = default;

    // Takes a key with exactly these modifiers, whatever Caps Lock and Num Lock say, for the application; no
    // other program sees it any more. `id` is a number of the caller's. Gives one of hot_key_status.
    [[nodiscard]] virtual std::int32_t registerHotKey(std::uint32_t id, const KeyEvent& keys) = 0;
    // Gives the key back. Nothing when there is no such registration.
    virtual void unregisterHotKey(std::uint32_t id) = 0;
    // Calls `handler` on the main thread once when a registered key goes down and once when it comes up,
    // however long it is held, and while a menu of the application is open, too.
    virtual Subscription onHotKey(std::function<void(const HotKeyEvent&)> handler) = 0;
};

}  // namespace platform
