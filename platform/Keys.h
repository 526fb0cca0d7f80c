#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/Observers.h"

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

// The system's own keyboard shortcuts that switch the Space, and how they are pressed.
class SpaceShortcuts {
  public:
    virtual ~SpaceShortcuts() = default;

    enum class Direction { Down, Up };

    // Known by number: 79 moves one Space to the left, 81 one to the right. Absent when the system does not
    // say.
    [[nodiscard]] virtual std::optional<bool> isEnabled(int number) const = 0;
    // Puts a key into the system as if the user had pressed it. False when there can be no such event;
    // whether anybody takes it does not show here.
    [[nodiscard]] virtual bool post(const KeyEvent& event, Direction direction) = 0;
};

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

// What the keys say on the user's keyboard.
class KeyNames {
  public:
    virtual ~KeyNames() = default;

    // The text that a virtual key code types without modifiers in the current layout; empty when it types
    // none.
    [[nodiscard]] virtual std::string textOf(std::uint16_t keyCode) const = 0;
};

// The desktop's own keyboard shortcuts.
class SystemShortcuts {
  public:
    // The name by which the user knows what the keys do, empty where it has none; absent when no enabled
    // shortcut uses them or the desktop does not say.
    using Answer = std::function<void(const std::optional<std::string>& action)>;

    virtual ~SystemShortcuts() = default;

    // Answers once, at a later turn of the main loop and within about a second; never when the subscription
    // ends before.
    virtual Subscription findUse(const KeyEvent& keys, Answer answer) = 0;
};

}  // namespace platform
